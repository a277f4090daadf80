#ifndef VANTORIX_GAME_EXTRA_H
#define VANTORIX_GAME_EXTRA_H

#include "game/vantorixsprite.h"

namespace vantorix {

enum ExtraType {
    etAny = -1,  // to spawners: let the running game weigh what the ships lack
    etLaserType = 0,
    etSpeed = 1,
    etFireRate = 2,
    etEnergy = 3,
    etTimeWarp = 4,
    etCrystal = 5,  // points
};

// A power-up falling with the world. One knocked off a ship flies off on its own course and can
// be caught again only after a moment. A collected one fades out while it falls on.
class Extra : public VantorixSprite {
public:
    Extra(ExtraType type, basic_Vector2D<float> position);

    void perform(float t) override;
    void knockOff(basic_Vector2D<float> velocity);  // flies off, not collectable for a moment

    ExtraType type;
    bool collected = false;
    basic_Vector2D<float> velocity;  // (0, 0): falls with the world
    unsigned int lostTimer = 0;      // ms since it was knocked off; 0 when collectable
};

}  // namespace vantorix

#endif
