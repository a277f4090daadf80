#include "game/shield.h"

#include "game/asteroid.h"
#include "game/container.h"
#include "game/laser.h"
#include "game/vantorixsprite.h"
#include "resources/resources.h"
#include "vantorix.h"

namespace vantorix {

Shield::Shield(Player* player) : ImageSprite(basic_Vector2D<float>{}, false, nullptr), player(player) {
    setAnimationIfAny(this, resources->animShield);
    blendMode = norvane::BLEND_ADDITIVE;
    color.alpha = 0.0f;
}

void Shield::onCollision(Sprite* other) {
    if (auto* asteroid = dynamic_cast<Asteroid*>(other)) {
        asteroid->explode(true);
    } else if (auto* container = dynamic_cast<Container*>(other)) {
        container->explode();
    } else if (auto* laser = dynamic_cast<Laser*>(other)) {
        laser->deleteMe();
    }
}

}  // namespace vantorix
