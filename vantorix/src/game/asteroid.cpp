#include "game/asteroid.h"

#include "game/explosion.h"
#include "game/game.h"
#include "game/laser.h"
#include "math/random.h"
#include "resources/resources.h"
#include "specs.h"
#include "vantorix.h"

namespace vantorix {

Asteroid::Asteroid(AsteroidType type, int energy, bool counted) : type(type), energy(energy), counted(counted) {
    setAnimationIfAny(this, type == atLarge ? resources->animAsteroidLarge : resources->animAsteroidSmall,
                      0.5f + norvane::random(1.0f));
    updateColor();
    visible = true;
    collidable = true;
}

void Asteroid::updateColor() {
    const float white = 1.0f - 0.1f * static_cast<float>(energy);
    color = norvane::Color(white, white, 1.0f, 1.0f);
}

void Asteroid::perform(float t) {
    if (exploded) {
        visible = false;
        collidable = false;
        deleteMe();
        return;
    }
    position.x += t * velocity.x;
    position.y += t * velocity.y;
    ImageSprite::perform(t);
    // Aimed ones may start beside the screen: only heading away does a side count as left.
    const bool goneLeft = position.x < hotspot.x - size.x && velocity.x <= 0.0f;
    const bool goneRight = position.x > hotspot.x + 800.0f && velocity.x >= 0.0f;
    if (position.y < -hotspot.y || goneLeft || goneRight) deleteMe();
}

void Asteroid::onCollision(Sprite* other) {
    auto* laser = dynamic_cast<Laser*>(other);
    // A spent laser may still overlap a second asteroid in the same pass.
    if (!laser || laser->deleted || exploded) return;
    if (energy <= 0) {
        if (Player* ship = game->shipOf(laser->owner)) game->destroyedAsteroid(ship, this);
        explode(false);
    } else {
        --energy;
        updateColor();
    }
    laser->deleteMe();
}

void Asteroid::explode(bool byShield) {
    if (!visible || exploded) return;
    if (type == atLarge && !byShield) {
        for (float side : {-1.0f, 1.0f}) {
            auto* fragment = new Asteroid(atSmall, energy, false);
            fragment->position = position;
            fragment->velocity = {velocity.x + side * specs.fragmentSpeed, velocity.y};
            game->asteroidEngine.addFront(fragment);
        }
    }
    auto* explosion = new ExplosionSprite(resources->animExplosionFast, false);
    explosion->position = position;
    explosion->drift = {velocity.x, velocity.y - game->levelSpeed};
    game->asteroidEngine.addFront(explosion);
    playSound(resources->sampleExplosion, position);
    exploded = true;
    collidable = false;  // a ship or a second laser touching it in the same pass finds nothing
}

}  // namespace vantorix
