#include "game/foe.h"

#include <algorithm>
#include <cmath>

#include "game/explosion.h"
#include "game/game.h"
#include "game/laser.h"
#include "game/player.h"
#include "math/random.h"
#include "resources/resources.h"
#include "specs.h"
#include "vantorix.h"

namespace vantorix {

Foe::Foe(bool rightSide) : rightSide(rightSide), velocity(specs.foeSpeed) {
    const short level = static_cast<short>(game->level);
    fireDelay = static_cast<unsigned int>(specs.getFoeFireDelay(level));
    volleyCount = specs.getFoeVolleyCount(level);
    volleyDelay = static_cast<unsigned int>(specs.getFoeVolleyDelay(level));
    acceleration = specs.getFoeAcceleration(level);
    distanceSpeedFactor = specs.getFoeDistanceSpeedFactor(level);
    hull = specs.getFoeHull(level);
    animation = setAnimationIfAny(this, rightSide ? resources->animFoeRight : resources->animFoeLeft);
    position = {rightSide ? 770.0f : 30.0f, 850.0f};
    visible = true;
    collidable = true;
    game->foeEngine.addBack(this);
}

Foe::~Foe() {
    if (game && game->foes[rightSide] == this) game->foes[rightSide] = nullptr;
}

void Foe::perform(float t) {
    ImageSprite::perform(t);
    if (!alive) return;
    if (game->livingShips == 0) {
        leaving = true;
        velocity = -1.0f;
    }
    if (!leaving) {
        const short level = static_cast<short>(game->level);
        fireCooldown = std::max(0.0f, fireCooldown - t);

        // Ships that exploded still count, where they exploded.
        const Player* target = game->ships[0];
        const Player* second = game->ships[1];
        if (!target || (second && std::fabs(second->position.x - position.x) <
                                      std::fabs(target->position.x - position.x))) {
            target = second;
        }
        const float dx = target ? std::fabs(target->position.x - position.x) : 0.0f;

        if (floorTimer == 0 && norvane::random_int(specs.getFoeFloorChance(level)) < 1) {
            floorTimer = static_cast<unsigned int>(specs.getFoeFloorDuration(level));
        }
        if (dx < 120.0f && !attacking && norvane::random_int(specs.getFoeKamikazeChance(level)) < 1) {
            attacking = true;
        }

        float height = specs.foeHoverHeight;
        if (floorTimer > 0) {
            height = specs.foeFloorHeight;
        } else if (target && (dx >= 90.0f || (attacking && !target->shieldHeld))) {
            height = target->position.y;
        }
        const float d = height - position.y;
        const float desired = d == 0.0f ? 0.0f : d * std::fabs(d) / distanceSpeedFactor;
        if (attacking && desired > 0.0f) attacking = false;  // rammed past the target
        const float step = t * acceleration;
        velocity = desired > velocity ? std::min(desired, velocity + step) : std::max(desired, velocity - step);
        velocity = std::clamp(velocity, -1.0f, 1.0f);
        floorTimer -= std::min(floorTimer, static_cast<unsigned int>(t));
        if (!attacking) fire();
    }

    int frame = 5;
    if (velocity > 0.0f) frame = 6 + static_cast<int>(5.0f * velocity + 0.5f);
    if (velocity < 0.0f) frame = 5 - static_cast<int>(-5.0f * velocity + 0.5f);
    showFrame(this, animation, frame);

    position.y += velocity * specs.foeSpeed * t;
    if (leaving && position.y < -50.0f) deleteMe();
}

void Foe::fire() {
    if (fireCooldown > 0.0f) return;
    const short level = static_cast<short>(game->level);
    auto* laser = new Laser(resources->imageLaserRoundRed, this, static_cast<float>(specs.getFoeLaserTtl(level)),
                            specs.foeLaserFadeRate);
    const float direction = rightSide ? -1.0f : 1.0f;
    laser->position.x += 20.0f * direction;
    laser->velocity = {specs.foeLaserSpeed * direction, specs.foeLaserVerticalFactor * velocity};
    game->foeLaserEngine.addFront(laser);
    playSound(resources->sampleLaser, position);

    if (shotsLeft == 0) {
        shotsLeft = volleyCount;
    } else {
        --shotsLeft;
    }
    fireCooldown = static_cast<float>(shotsLeft == 0 ? fireDelay : volleyDelay);
}

void Foe::onCollision(Sprite* other) {
    auto* laser = dynamic_cast<Laser*>(other);
    if (!alive || !laser || !laser->owner || laser->deleted) return;
    laser->deleteMe();
    if (--hull > 0) return;
    if (Player* ship = game->shipOf(laser->owner)) game->destroyedFoe(ship, this);
    explode();
}

void Foe::explode() {
    if (!alive) return;
    auto* explosion = new ExplosionSprite(resources->animExplosionSlow, true);
    explosion->position = position;
    game->foeEngine.addBack(explosion);
    visible = false;
    collidable = false;
    alive = false;
    deleteMe();
    playSound(resources->sampleExplosion, position);
}

}  // namespace vantorix
