#ifndef VANTORIX_GAME_CONTAINER_H
#define VANTORIX_GAME_CONTAINER_H

#include "game/extra.h"
#include "game/vantorixsprite.h"

namespace vantorix {

// Falls from above the screen at its own pace and releases its extra when shot or rammed.
class Container : public VantorixSprite {
public:
    Container();  // the extra is chosen by what the ships lack

    void perform(float t) override;
    void onCollision(Sprite* other) override;

    void explode();

    ExtraType extraType;
};

}  // namespace vantorix

#endif
