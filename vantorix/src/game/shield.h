#ifndef VANTORIX_GAME_SHIELD_H
#define VANTORIX_GAME_SHIELD_H

#include "sprites/sprites.h"

namespace vantorix {

class Player;

// A ship's shield. Its ship raises and lowers it; while it is solid it destroys what it touches
// (a large asteroid without splitting) and stops lasers.
class Shield : public norvane::sprites::ImageSprite {
public:
    explicit Shield(Player* player);

    void onCollision(norvane::sprites::Sprite* other) override;

    Player* player;  // the ship it protects, its owner
};

}  // namespace vantorix

#endif
