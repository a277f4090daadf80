#include "game/player.h"

#include <algorithm>
#include <cmath>

#include "audio/core.h"
#include "audio/music.h"
#include "game/asteroid.h"
#include "game/container.h"
#include "game/explosion.h"
#include "game/extra.h"
#include "game/foe.h"
#include "game/game.h"
#include "game/laser.h"
#include "game/shield.h"
#include "gfx/animations.h"
#include "resources/resources.h"
#include "specs.h"
#include "vantorix.h"

namespace vantorix {

Player::Player(PlayerType type)
    : nextBonus(specs.bonusScore), minX(specs.playerMinX), maxX(800.0f - specs.playerMinX) {
    animation = setAnimationIfAny(this, type == ptLeft ? resources->animPlayer2 : resources->animPlayer1);
    showFrame(this, animation, specs.neutralFrame);
    blendMode = norvane::BLEND_ALPHA;
    setSpeedupCount(0);
    setFireRateCount(0);
    switch (type) {
    case ptSingle: position.x = (minX + maxX) / 2.0f; break;
    case ptLeft: position.x = (minX + maxX / 2.0f) / 2.0f; break;
    case ptRight: position.x = (maxX / 2.0f + minX) * 1.5f; break;
    }
    position.y = specs.playerStartY;
    visible = true;
    collidable = true;
    ++game->livingShips;

    flame = new ImageSprite(position, true, nullptr);
    setAnimationIfAny(flame, resources->animEngine);
    flame->blendMode = norvane::BLEND_ADDITIVE;
    game->shipEngine.addFront(flame);
    shield = new Shield(this);
    game->shipEngine.addBack(shield);
}

Player::~Player() {
    if (alive && game) --game->livingShips;
    delete flame;
    delete shield;
}

void Player::perform(float t) {
    if (timeWarpTimer > 0) {
        t /= game->gameSpeed;  // the ship keeps its pace while the world slows down
        timeWarpTimer -= std::min(timeWarpTimer, static_cast<unsigned int>(t));
    }

    norvane::Color& glow = shield->color;
    if (glow.alpha > 0.0f) {
        energy -= t * specs.shieldEnergyUse;
        if (energy < 0.0f) {
            energy = 0.0f;
            shieldCollapsing = true;
            if (alive) shieldHeld = false;
        }
    }
    if (shieldHeld) {
        if (!shield->visible) {
            shield->visible = true;
            glow.alpha = 0.0f;
        }
        shieldCollapsing = false;
        glow.alpha = std::min(1.0f, glow.alpha + t * specs.shieldFadeIn);
    } else if (glow.alpha > 0.0f) {
        glow.alpha -= t * (shieldCollapsing ? specs.shieldBreakFade : specs.shieldFadeOut);
        if (glow.alpha <= 0.0f) {
            glow.alpha = 0.0f;
            shield->visible = false;
            shieldCollapsing = false;
        }
    }
    shield->collidable = glow.alpha >= 0.5f;

    ImageSprite::perform(t);

    const basic_Vector2D<float> old = position;
    const float rangeY = game->type == gtSingleB ? specs.playerRangeYModeB : specs.playerRangeY;
    basic_Vector2D<float> next{std::clamp(old.x + t * direction.x * speed, minX, maxX),
                               std::clamp(old.y + t * direction.y * speed, specs.playerMinY, specs.playerMinY + rangeY)};
    const Player* other = game->ships[0] == this ? game->ships[1] : game->ships[0];
    if (alive && other && other->alive) {
        const auto tooClose = [other](const basic_Vector2D<float>& p) {
            return std::fabs(p.x - other->position.x) < specs.playerGapX &&
                   std::fabs(p.y - other->position.y) < specs.playerGapY;
        };
        if (tooClose(next)) {
            // Slide along the other ship rather than stick to it.
            if (std::fabs(next.x - other->position.x) < std::fabs(next.y - other->position.y)) {
                next.y = old.y;
            } else {
                next.x = old.x;
            }
            if (tooClose(next)) next = old;
        }
    }
    position = next;

    mainCooldown = std::max(0.0f, mainCooldown - t);
    sideCooldown = std::max(0.0f, sideCooldown - t);
    flame->position = position;
    shield->position = position;
}

void Player::setDirection(basic_Vector2D<float> d) {
    direction = d;
    const int frame = d.x == 0.0f ? specs.neutralFrame : static_cast<int>(d.x * 5.0f + 5.0f);
    showFrame(this, animation, frame);
}

void Player::setShield(bool on) {
    if (!alive || on == shieldHeld) return;
    if (!on) {
        shieldHeld = false;
    } else if (energy > 0.0f) {
        shieldHeld = true;
    }
}

void Player::fireLaser(norvane::gfx::Image* image, basic_Vector2D<float> offset, basic_Vector2D<float> velocity) {
    auto* laser = new Laser(image, this, -1.0f, 0.0f);
    laser->position.x += offset.x;
    laser->position.y += offset.y;
    laser->velocity = velocity;
    game->shipLaserEngine.addFront(laser);
}

void Player::fire() {
    if (!alive || !game->firingAllowed) return;
    bool fired = false;
    if (mainCooldown == 0.0f) {
        const float d = laserType == 0 ? 15.0f : laserType == 1 ? 25.0f : 7.0f;
        fireLaser(resources->imageLaserRayGreen, {-d, 0.0f}, {0.0f, laserSpeed});
        fireLaser(resources->imageLaserRayGreen, {d, 0.0f}, {0.0f, laserSpeed});
        mainCooldown = laserDelay;
        fired = true;
    }
    if (sideCooldown == 0.0f && laserType > 1) {
        const float spread = laserType == 2 ? 0.05f : 0.08f;
        const float rise = laserType == 2 ? 0.95f : 0.92f;
        norvane::gfx::Image* round = resources->imageLaserRoundGreen;
        fireLaser(round, {-25.0f, -10.0f}, {-spread * laserSpeed, rise * laserSpeed});
        fireLaser(round, {25.0f, -10.0f}, {spread * laserSpeed, rise * laserSpeed});
        if (laserType > 3) {
            fireLaser(round, {-35.0f, -15.0f}, {-0.9f * laserSpeed, -0.1f * laserSpeed});
            fireLaser(round, {35.0f, -15.0f}, {0.9f * laserSpeed, -0.1f * laserSpeed});
        }
        sideCooldown = laserDelay * (laserType == 2 ? 1.5f : laserType == 3 ? 1.3f : 1.1f);
        fired = true;
    }
    if (fired) playSound(resources->sampleLaser, position);
}

void Player::startTimeWarp() {
    if (!alive || timeWarps <= 0) return;
    --timeWarps;
    --hudValues[hvTimeWarps];
    game->targetSpeed = specs.timeWarpSpeed;
    timeWarpTimer = game->timeWarpTimer = specs.timeWarpDuration;
    playSound(resources->sampleTimeWarp);
}

void Player::addScore(unsigned int points) {
    if (!alive) return;
    score += points;
    if (score > nextBonus) {
        ++game->queuedContainers;
        nextBonus += specs.bonusScore;
    }
}

void Player::setSpeedupCount(int n) {
    speedUpgrades = n;
    speed = specs.playerBaseSpeed + static_cast<float>(n) * specs.playerSpeedPerUpgrade;
}

void Player::setFireRateCount(int n) {
    fireRate = n;
    laserDelay = specs.getLaserDelay(static_cast<short>(n));
    laserSpeed = specs.getLaserSpeed(static_cast<short>(n));
}

bool Player::collectExtra(Extra* extra) {
    if (extra->collected) return false;
    extra->collected = true;
    switch (extra->type) {
    case etLaserType:
        updateHud(true);
        laserType = static_cast<short>(std::min<int>(laserType + 1, specs.maxLaserType));
        break;
    case etSpeed:
        updateHud(true);
        setSpeedupCount(std::min(speedUpgrades + 1, specs.maxSpeedUpgrades));
        break;
    case etFireRate:
        updateHud(true);
        setFireRateCount(std::min(fireRate + 1, specs.maxFireRate));
        break;
    case etEnergy: energy = std::min(energy + specs.energyPerExtra, specs.maxEnergy); break;
    case etTimeWarp:
        updateHud(true);
        timeWarps = std::min(timeWarps + 1, specs.maxTimeWarps);
        break;
    default: addScore(specs.crystalScore); break;
    }
    const bool weapon = extra->type == etLaserType || extra->type == etSpeed || extra->type == etFireRate;
    if (weapon && flameChanged) {
        setAnimationIfAny(flame, resources->animEngine);
        flameChanged = false;
    }
    playSound(resources->sampleExtra, position);
    return true;
}

void Player::dropExtra(int kind, basic_Vector2D<float> offset, basic_Vector2D<float> velocity) {
    auto* extra = new Extra(static_cast<ExtraType>(kind), {position.x + offset.x, position.y + offset.y});
    extra->knockOff(velocity);
    game->extraEngine.addFront(extra);
}

void Player::hit(VantorixSprite* by) {
    auto* foe = dynamic_cast<Foe*>(by);
    const int damage = foe ? 2 : 1;
    if (speedUpgrades < damage && fireRate < damage && laserType < damage) {
        explode();
        return;
    }
    if (auto* asteroid = dynamic_cast<Asteroid*>(by)) {
        asteroid->explode(false);
    } else if (auto* container = dynamic_cast<Container*>(by)) {
        container->explode();
    } else if (foe) {
        foe->explode();
    }
    updateHud(true);
    if (speedUpgrades > 0) {
        setSpeedupCount(std::max(0, speedUpgrades - damage));
        dropExtra(etSpeed, {0.0f, -15.0f}, {0.0f, -1.0f});
    }
    if (fireRate > 0) {
        setFireRateCount(std::max(0, fireRate - damage));
        dropExtra(etFireRate, {-10.0f, -15.0f}, {-0.3f, -0.7f});
    }
    if (laserType > 0) {
        laserType = static_cast<short>(std::max(0, laserType - damage));
        dropExtra(etLaserType, {10.0f, -15.0f}, {0.3f, -0.7f});
    }
    if (speedUpgrades == 0 && fireRate == 0 && laserType == 0) {
        setAnimationIfAny(flame, resources->animEngineStutter);
        flameChanged = true;
    }
}

void Player::onCollision(Sprite* other) {
    if (!alive) return;  // a ship that exploded earlier in this pass
    if (auto* extra = dynamic_cast<Extra*>(other)) {
        collectExtra(extra);
        return;
    }
    if (shield->collidable) return;  // the shield takes it
    auto* laser = dynamic_cast<Laser*>(other);
    if (laser && laser->deleted) return;
    hit(dynamic_cast<VantorixSprite*>(other));
    if (laser) laser->deleteMe();
}

void Player::explode() {
    if (!alive) return;
    auto* explosion = new ExplosionSprite(resources->animExplosionSlow, true);
    explosion->position = position;
    game->shipEngine.addBack(explosion);

    shieldHeld = false;
    visible = flame->visible = shield->visible = false;
    collidable = false;
    // A dead ship's shield drops at once: invisible, it would still destroy what it touched.
    shield->color.alpha = 0.0f;
    shield->collidable = false;
    direction = {0.0f, 0.0f};
    alive = false;
    --game->livingShips;
    playSound(resources->sampleExplosion, position);

    norvane::audio::MusicManager* music = resources->musicManager;
    if (game->livingShips == 0 && norvane::audio::enabled && music && resources->musicDeath) {
        music->clearQueue();
        music->addAsLast(resources->musicDeath);
        music->skipToNext();
    }
}

void Player::updateHud(bool blink) {
    hudValues[hvSpeed] = speedUpgrades;
    hudValues[hvFireRate] = fireRate;
    hudValues[hvLaserType] = laserType;
    hudValues[hvTimeWarps] = timeWarps;
    if (!blink) return;
    hudBlinkOn = true;
    hudBlinkTimer = specs.hudBlinkInterval;
    hudBlinkCount = specs.hudBlinkCount;
}

void Player::performHud(float t) {
    hudEnergy = hudEnergy < energy ? std::min(energy, hudEnergy + 5.0f * t) : energy;
    while (hudBlinkCount > 0) {
        hudBlinkTimer -= t;
        t = 0.0f;
        if (hudBlinkTimer > 0.0f) break;
        hudBlinkOn = !hudBlinkOn;
        --hudBlinkCount;
        hudBlinkTimer += specs.hudBlinkInterval;
    }
}

}  // namespace vantorix
