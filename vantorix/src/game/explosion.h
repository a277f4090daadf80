#ifndef VANTORIX_GAME_EXPLOSION_H
#define VANTORIX_GAME_EXPLOSION_H

#include "game/vantorixsprite.h"

namespace vantorix {

// Plays its animation once, drifting with the world unless fixed, then goes.
class ExplosionSprite : public VantorixSprite {
public:
    ExplosionSprite(norvane::gfx::Animation* animation, bool fixed);

    void perform(float t) override;

    bool fixed;
    basic_Vector2D<float> drift;  // scaled by the level speed
    norvane::gfx::AnimationReference* animation;  // null when the resources lack it
};

}  // namespace vantorix

#endif
