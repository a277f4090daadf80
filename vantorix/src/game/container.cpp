#include "game/container.h"

#include "game/explosion.h"
#include "game/game.h"
#include "game/laser.h"
#include "math/random.h"
#include "resources/resources.h"
#include "specs.h"
#include "vantorix.h"

namespace vantorix {

Container::Container() : extraType(game->getExtraType()) {
    const int look = extraType == etEnergy ? 1 : extraType == etTimeWarp ? 2 : 0;
    setAnimationIfAny(this, resources->animContainer[look]);
    position = {specs.playerMinX + norvane::random(800.0f - 2.0f * specs.playerMinX), 600.0f + 50.0f};
    visible = true;
    collidable = true;
}

void Container::perform(float t) {
    ImageSprite::perform(t);
    position.y -= specs.containerSpeed * specs.containerSpeedFactor * t;
    if (position.y < -50.0f) deleteMe();
}

void Container::onCollision(Sprite* other) {
    auto* laser = dynamic_cast<Laser*>(other);
    if (!laser || laser->deleted || deleted) return;
    explode();
    laser->deleteMe();
}

void Container::explode() {
    if (deleted) return;
    game->extraEngine.addFront(new Extra(extraType, position));
    auto* explosion = new ExplosionSprite(resources->animExplosionFast, false);
    explosion->position = position;
    explosion->drift = {0.0f, -specs.containerSpeed * specs.containerSpeedFactor};
    game->asteroidEngine.addFront(explosion);
    playSound(resources->sampleExplosion, position);
    deleteMe();
    visible = false;
    collidable = false;
}

}  // namespace vantorix
