#include "game/explosion.h"

#include "game/game.h"
#include "gfx/animations.h"
#include "vantorix.h"

namespace vantorix {

ExplosionSprite::ExplosionSprite(norvane::gfx::Animation* animation, bool fixed)
    : fixed(fixed), animation(setAnimationIfAny(this, animation)) {
    blendMode = norvane::BLEND_ADDITIVE;
    visible = true;
}

void ExplosionSprite::perform(float t) {
    ImageSprite::perform(t);
    if (!fixed) {
        position.x += game->levelSpeed * drift.x * t;
        position.y += game->levelSpeed * drift.y * t;
    }
    if (!animation || animation->isFinished()) deleteMe();
}

}  // namespace vantorix
