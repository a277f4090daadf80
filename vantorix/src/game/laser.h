#ifndef VANTORIX_GAME_LASER_H
#define VANTORIX_GAME_LASER_H

#include "game/vantorixsprite.h"

namespace norvane {
namespace gfx {
class Image;
}
}  // namespace norvane

namespace vantorix {

// A shot of a ship or a pirate. Flies until it leaves the screen at the top or a side (not at the
// bottom), hits something, or fades out once its time to live has run out.
class Laser : public VantorixSprite {
public:
    Laser(norvane::gfx::Image* image, VantorixSprite* owner, float ttl, float fadeRate);  // at the owner

    void perform(float t) override;

    VantorixSprite* owner;  // not owned; compared with the ships, never followed once it may be gone
    basic_Vector2D<float> velocity;
    float ttl;       // ms of flight before fading; negative: never fades
    float fadeRate;  // opacity lost per ms once ttl has run out
};

}  // namespace vantorix

#endif
