#include <algorithm>
#include <tuple>
#include <cmath>

#include "game/container.h"
#include "game/explosion.h"
#include "game/shield.h"
#include "world.h"

using namespace vantorix;

namespace {

bool isFragment(const Sprite* s) {
    auto* a = dynamic_cast<const Asteroid*>(s);
    return a && a->type == atSmall && !a->counted && !a->exploded;
}
bool isExplosion(const Sprite* s) { return dynamic_cast<const ExplosionSprite*>(s); }

// Shots fired in `ms` by a pirate that hovers near its target and never dives.
int shotsIn(Foe* foe, unsigned int ms) {
    const int before = game->foeLaserEngine.size();
    for (unsigned int t = 0; t < ms; t += 10) {
        foe->attacking = false;
        foe->floorTimer = 1;
        foe->perform(10.0f);
    }
    return game->foeLaserEngine.size() - before;
}

}  // namespace

TEST_F(GameWorld, LasersWearAsteroidsDownThenDestroyThemAndLargeOnesSplit) {
    for (auto [type, energy, points, fragments] : {std::tuple{atSmall, 0, 50u, 0}, {atLarge, 2, 100u, 2}, {atSmall, 3, 50u, 0}}) {
        SCOPED_TRACE(energy);
        start(gtSingleA);
        Player* ship = game->ships[0];
        Asteroid* rock = addAsteroid(type, energy, 400, 300);
        rock->velocity = {0.05f, -0.1f};
        for (int left = energy - 1; left >= -1; --left) {
            addLaser(ship, 400, 300);
            collide(game->shipLaserEngine, game->asteroidEngine);
            EXPECT_EQ(game->shipLaserEngine.size(), 0) << "the laser is spent";
            EXPECT_EQ(rock->exploded, left < 0);
            EXPECT_FLOAT_EQ(rock->color.red, left < 0 ? 1.0f : 1.0f - 0.1f * static_cast<float>(left));
        }
        EXPECT_EQ(std::make_tuple(ship->score, game->killsLeft, count(game->asteroidEngine, isExplosion)),
                  std::make_tuple(points, 39, 1));
        EXPECT_EQ(count(game->asteroidEngine, isFragment), fragments);
        Asteroid* fragment = nullptr;  // they fly apart; the right one, added last, comes first
        for (Sprite* s : game->asteroidEngine.sprites) {
            if (!isFragment(s)) continue;
            EXPECT_EQ(static_cast<Asteroid*>(s)->energy, 0);
            EXPECT_FLOAT_EQ(static_cast<Asteroid*>(s)->velocity.x, fragment ? 0.05f - 0.2f : 0.05f + 0.2f);
            if (!fragment) fragment = static_cast<Asteroid*>(s);
        }
        if (!fragment) continue;
        // Fragments score but do not count toward the stage.
        run(10);
        addLaser(ship, fragment->position.x, fragment->position.y);
        collide(game->shipLaserEngine, game->asteroidEngine);
        EXPECT_EQ(std::make_tuple(fragment->exploded, ship->score, game->killsLeft), std::make_tuple(true, points + 50, 39));
    }
}

// Only the ships' lasers score; a shield destroys a large asteroid whole; a container gives up its
// extra to whatever destroys it.
TEST_F(GameWorld, WhatDestroysAsteroidsAndContainersDecidesTheScoreAndTheSplit) {
    enum By { byShipLaser, byPirateLaser, byShield, byHull };
    for (By by : {byShipLaser, byPirateLaser, byShield, byHull}) {
        for (bool box : {true, false}) {
            SCOPED_TRACE(testing::Message() << by << (box ? " container" : " asteroid"));
            start(gtSingleA);
            Player* ship = game->ships[0];
            auto* container = box ? new Container() : nullptr;
            VantorixSprite* target = box ? static_cast<VantorixSprite*>(container) : addAsteroid(atLarge, 0, 300, 300);
            if (box) game->asteroidEngine.addFront(container);
            const ExtraType inside = box ? container->extraType : etAny;
            target->position = {300.0f, 300.0f};
            if (by == byShipLaser) addLaser(ship, 300, 300);
            if (by == byPirateLaser) addLaser(game->foes[1] = new Foe(true), 300, 300);
            if (by == byShield) {
                ship->energy = 1000.0f;
                ship->shield->collidable = true;
                ship->shield->position = {300.0f, 300.0f};
            }
            if (by == byHull) {
                ship->setSpeedupCount(1);
                ship->position = {300.0f, 300.0f};
            }
            collide(by == byPirateLaser ? game->foeLaserEngine
                    : by == byShipLaser ? game->shipLaserEngine
                                        : game->shipEngine,
                    game->asteroidEngine);
            EXPECT_EQ(game->shipLaserEngine.size() + game->foeLaserEngine.size(), 0) << "the laser is spent";
            EXPECT_TRUE(ship->alive);
            EXPECT_EQ(ship->score, by == byShipLaser && !box ? 100u : 0u);
            EXPECT_EQ(game->killsLeft, by == byShipLaser && !box ? 39 : 40);
            if (!box) {
                EXPECT_TRUE(static_cast<Asteroid*>(target)->exploded);
                EXPECT_EQ(count(game->asteroidEngine, isFragment), by == byShield ? 0 : 2);
                continue;
            }
            EXPECT_FALSE(std::count(game->asteroidEngine.sprites.begin(), game->asteroidEngine.sprites.end(), target));
            const int released = static_cast<int>(std::count_if(
                game->extraEngine.sprites.begin(), game->extraEngine.sprites.end(), [&](const Sprite* s) {
                    auto* extra = static_cast<const Extra*>(s);
                    return extra->lostTimer == 0 && extra->type == inside;
                }));
            EXPECT_EQ(released, 1);
        }
    }
}

TEST_F(GameWorld, ExtrasRaiseUpgradesToTheirLimitsOnceFallWithTheWorldAndFade) {
    // The upgrade the extra raises, before and after.
    for (auto [type, before, after] : {std::tuple{etLaserType, 0, 1}, {etLaserType, 4, 4}, {etSpeed, 4, 5}, {etSpeed, 5, 5},
                                       {etFireRate, 5, 5}, {etTimeWarp, 2, 2}, {etTimeWarp, 0, 1}, {etEnergy, 14000, 15000},
                                       {etEnergy, 0, 2500}, {etCrystal, 0, 0}}) {
        SCOPED_TRACE(testing::Message() << type << " from " << before);
        start(gtSingleA);
        Player* ship = game->ships[0];
        ship->laserType = static_cast<short>(type == etLaserType ? before : 0);
        ship->setSpeedupCount(type == etSpeed ? before : 0);
        ship->setFireRateCount(type == etFireRate ? before : 0);
        ship->energy = static_cast<float>(type == etEnergy ? before : 0);
        ship->timeWarps = type == etTimeWarp ? before : 0;
        Extra* extra = addExtra(type, ship->position.x, ship->position.y);
        EXPECT_TRUE(ship->collectExtra(extra));
        EXPECT_FALSE(ship->collectExtra(extra)) << "collected once only";
        const int values[] = {ship->laserType, ship->speedUpgrades, ship->fireRate, int(ship->energy), ship->timeWarps, 0};
        EXPECT_EQ(values[type], after);
        EXPECT_EQ(ship->hudBlinkCount > 0, type != etEnergy && type != etCrystal);
        EXPECT_EQ(ship->score, type == etCrystal ? 500u : 0u);
        EXPECT_FLOAT_EQ(ship->speed, 0.35f + 0.04f * static_cast<float>(ship->speedUpgrades));
        EXPECT_FLOAT_EQ(ship->laserDelay, specs.getLaserDelay(static_cast<short>(ship->fireRate)));
    }

    start(gtSingleA);
    Extra* extra = addExtra(etSpeed, 400, 600);
    run(100);
    EXPECT_NEAR(extra->position.y, 600.0f - 100.0f * game->levelSpeed * 0.7f, 0.01f);
    extra->collected = true;
    run(100);
    EXPECT_NEAR(extra->color.alpha, std::pow(1.0f - 0.003f * 10.0f, 10.0f), 0.001f);
    EXPECT_NEAR(extra->position.y, 600.0f - 200.0f * game->levelSpeed * 0.7f, 0.01f) << "it falls on";
    extra->position.y = -40.0f;
    run(50);
    EXPECT_EQ(game->extraEngine.size(), 0) << "gone below the screen";

    // Knocked off a ship: its own course, and out of reach for 200 ms.
    Extra* lost = addExtra(etFireRate, 400, 300);
    lost->knockOff({-0.3f, -0.7f});
    run(190);
    EXPECT_FALSE(lost->collidable);
    EXPECT_NEAR(lost->position.x, 400.0f - 190.0f * 0.3f * 0.3f, 0.01f);
    run(10);
    EXPECT_TRUE(lost->collidable);
    lost->deleteMe();
    lost->deleteMe();
    EXPECT_EQ(deleteQueue.size(), 1u) << "queued twice, deleted once";
}

TEST_F(GameWorld, PiratesFireVolleysTakeTheirHitsAndGoWhenTheShipsAreGone) {
    for (const auto& [level, volley] : {std::pair{4u, 0}, std::pair{9u, 2}}) {
        SCOPED_TRACE(level);
        start(gtSingleA);
        game->initLevel(level);
        EXPECT_TRUE(game->spawnFoe(1));
        EXPECT_FALSE(game->spawnFoe(1)) << "one pirate a side";
        Foe* foe = game->foes[1];
        EXPECT_TRUE(foe->rightSide);
        foe->volleyCount = volley;
        EXPECT_EQ(static_cast<int>(foe->fireDelay), level == 4 ? 2166 : specs.getFoeFireDelay(9));
        const unsigned int cycle = foe->fireDelay + static_cast<unsigned int>(volley) * foe->volleyDelay;
        EXPECT_EQ(shotsIn(foe, 10), 1);
        EXPECT_EQ(shotsIn(foe, cycle - 10), volley) << "the rest of the volley";
        EXPECT_EQ(shotsIn(foe, 10), 1) << "the next volley";
        auto* laser = static_cast<Laser*>(game->foeLaserEngine.sprites.front());
        EXPECT_LT(laser->velocity.x, 0.0f) << "from the right edge to the left";
        EXPECT_FLOAT_EQ(laser->velocity.y, 0.4f * foe->velocity);
    }

    // Fifty hits at level 3; with the ships gone, they go.
    start(gtSingleA);
    game->initLevel(3);
    EXPECT_TRUE(game->spawnFoe(-1));
    EXPECT_TRUE(game->spawnFoe(0)) << "the free side";
    EXPECT_FALSE(game->spawnFoe(0));
    Foe* foe = game->foes[0];
    EXPECT_EQ(foe->hull, 50);
    Player* ship = game->ships[0];
    for (int i = 1; i <= 50; ++i) {
        EXPECT_TRUE(foe->alive && ship->score == 0) << i;
        addLaser(ship, foe->position.x, foe->position.y);
        collide(game->shipLaserEngine, game->foeEngine);
    }
    EXPECT_FALSE(game->foes[0]) << "its slot is free again";
    EXPECT_EQ(ship->score, 1500u);

    // With the last ship gone the other pirate stops firing and flies down and out.
    game->foes[1]->position.y = 300.0f;
    ship->explode();
    const int shots = game->foeLaserEngine.size();
    run(3000);
    EXPECT_EQ(game->foeLaserEngine.size(), shots);
    EXPECT_FALSE(game->foes[1]);
}
