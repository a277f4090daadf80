#ifndef VANTORIX_GAME_ASTEROID_H
#define VANTORIX_GAME_ASTEROID_H

#include "game/vantorixsprite.h"

namespace vantorix {

enum AsteroidType { atSmall = 0, atLarge = 1 };

// Falls until it leaves the screen at the bottom or a side. Lasers wear its energy down, then
// destroy it; a large one splits into two small ones unless a shield destroyed it.
class Asteroid : public VantorixSprite {
public:
    Asteroid(AsteroidType type, int energy, bool counted);

    void perform(float t) override;
    void onCollision(Sprite* other) override;

    void explode(bool byShield);

    AsteroidType type;
    int energy;    // laser hits it absorbs before one destroys it
    bool counted;  // toward the stage's quota; fragments are not
    basic_Vector2D<float> velocity;
    bool exploded = false;  // gone at the next perform; hits meanwhile are ignored

private:
    void updateColor();  // energy tints it blue
};

}  // namespace vantorix

#endif
