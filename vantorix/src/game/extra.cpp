#include "game/extra.h"

#include <algorithm>

#include "game/game.h"
#include "resources/resources.h"
#include "specs.h"
#include "vantorix.h"

namespace vantorix {

namespace {

norvane::gfx::Animation* animationOf(ExtraType type) {
    switch (type) {
    case etLaserType: return resources->animExtraLaserType;
    case etSpeed: return resources->animExtraSpeedup;
    case etFireRate: return resources->animExtraFireRate;
    case etEnergy: return resources->animExtraShield;
    case etTimeWarp: return resources->animExtraTimeWarp;
    default: return resources->animExtraScore;
    }
}

}  // namespace

Extra::Extra(ExtraType type, basic_Vector2D<float> position) : type(type) {
    setAnimationIfAny(this, animationOf(type));
    blendMode = norvane::BLEND_ADDITIVE;
    this->position = position;
    visible = true;
    collidable = true;
}

void Extra::knockOff(basic_Vector2D<float> v) {
    velocity = v;
    lostTimer = 1;
    collidable = false;
}

void Extra::perform(float t) {
    ImageSprite::perform(t);
    if (lostTimer != 0) {
        lostTimer += static_cast<unsigned int>(t);
        if (lostTimer >= specs.lostExtraDelay) {
            lostTimer = 0;
            collidable = true;
        }
    }
    if (velocity.y == 0.0f) {
        position.y -= game->levelSpeed * specs.extraFallFactor * t;
    } else {
        position.x += t * velocity.x * specs.lostExtraSpeed;
        position.y += t * velocity.y * specs.lostExtraSpeed;
    }
    if (position.y < -50.0f) deleteMe();
    if (collected) {
        const float keep = std::max(0.0f, 1.0f - t * specs.extraFadeRate);
        color.red *= keep;
        color.green *= keep;
        color.blue *= keep;
        color.alpha *= keep;
    }
}

}  // namespace vantorix
