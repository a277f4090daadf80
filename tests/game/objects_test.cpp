#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "game/container.h"
#include "game/explosion.h"
#include "game/extra.h"
#include "game/foe.h"
#include "game/shield.h"
#include "specs.h"
#include "vantorix.h"
#include "world.h"

using namespace vantorix;

namespace {

bool isFragment(const Sprite* s) {
    auto* a = dynamic_cast<const Asteroid*>(s);
    return a && a->type == atSmall && !a->counted && !a->exploded;
}
bool isExplosion(const Sprite* s) { return dynamic_cast<const ExplosionSprite*>(s); }

}  // namespace

TEST_F(GameWorld, LasersWearAsteroidsDownThenDestroyThemAndLargeOnesSplit) {
    struct Case {
        AsteroidType type;
        int energy;
        unsigned int points;
        int fragments;
    };
    for (const Case& c : {Case{atSmall, 0, 50, 0}, Case{atLarge, 2, 100, 2}, Case{atSmall, 3, 50, 0}}) {
        SCOPED_TRACE(c.energy);
        start(gtSingleA);
        Player* ship = game->ships[0];
        Asteroid* rock = addAsteroid(c.type, c.energy, 400, 300);
        rock->velocity = {0.05f, -0.1f};
        for (int left = c.energy - 1; left >= -1; --left) {
            Laser* laser = addLaser(ship, 400, 300);
            collide(game->shipLaserEngine, game->asteroidEngine);
            EXPECT_EQ(game->shipLaserEngine.size(), 0) << "the laser is spent";
            EXPECT_EQ(rock->exploded, left < 0);
            EXPECT_FLOAT_EQ(rock->color.red, left < 0 ? 1.0f : 1.0f - 0.1f * static_cast<float>(left));
            (void)laser;
        }
        EXPECT_EQ(ship->score, c.points);
        EXPECT_EQ(game->killsLeft, 39);
        EXPECT_EQ(count(game->asteroidEngine, isFragment), c.fragments);
        EXPECT_EQ(count(game->asteroidEngine, isExplosion), 1);
        if (c.fragments == 0) continue;
        std::vector<float> speeds;
        for (Sprite* s : game->asteroidEngine.sprites) {
            if (isFragment(s)) {
                auto* fragment = static_cast<Asteroid*>(s);
                EXPECT_EQ(fragment->energy, 0);
                speeds.push_back(fragment->velocity.x);
            }
        }
        std::sort(speeds.begin(), speeds.end());
        EXPECT_FLOAT_EQ(speeds[0], 0.05f - 0.2f);
        EXPECT_FLOAT_EQ(speeds[1], 0.05f + 0.2f);

        // Fragments score but do not count toward the stage.
        run(10);
        auto* fragment = static_cast<Asteroid*>(*std::find_if(game->asteroidEngine.sprites.begin(),
                                                               game->asteroidEngine.sprites.end(), isFragment));
        addLaser(ship, fragment->position.x, fragment->position.y);
        collide(game->shipLaserEngine, game->asteroidEngine);
        EXPECT_TRUE(fragment->exploded);
        EXPECT_EQ(ship->score, c.points + 50);
        EXPECT_EQ(game->killsLeft, 39);
    }
}

TEST_F(GameWorld, ShieldsAndPirateLasersDestroyAsteroidsWithoutScoring) {
    start(gtSingleA);
    Player* ship = game->ships[0];
    game->foes[0] = new Foe(false);
    Asteroid* shot = addAsteroid(atLarge, 0, 200, 300);
    addLaser(game->foes[0], 200, 300);
    collide(game->foeLaserEngine, game->asteroidEngine);
    EXPECT_TRUE(shot->exploded);
    EXPECT_EQ(count(game->asteroidEngine, isFragment), 2) << "a pirate's shot still splits it";

    Asteroid* rammed = addAsteroid(atLarge, 0, 600, 300);
    ship->energy = 1000.0f;
    game->shieldTrigger[0]->value = 1.0f;
    run(60);  // up and solid, far from the asteroid
    ship->position = {600.0f, 300.0f};
    run(10);
    EXPECT_TRUE(ship->shield->collidable);
    EXPECT_TRUE(rammed->exploded);
    EXPECT_EQ(count(game->asteroidEngine, isFragment), 2) << "no split under a shield";
    EXPECT_EQ(ship->score, 0u);
    EXPECT_EQ(game->killsLeft, 40);
    EXPECT_TRUE(ship->alive);
}

TEST_F(GameWorld, ContainersReleaseTheirExtraWhateverDestroysThem) {
    enum By { byShipLaser, byPirateLaser, byShield, byHull };
    for (By by : {byShipLaser, byPirateLaser, byShield, byHull}) {
        SCOPED_TRACE(by);
        start(gtSingleA);
        Player* ship = game->ships[0];
        auto* box = new Container();
        game->asteroidEngine.addFront(box);
        box->position = {300.0f, 300.0f};
        const ExtraType inside = box->extraType;
        switch (by) {
        case byShipLaser: addLaser(ship, 300, 300); break;
        case byPirateLaser:
            game->foes[1] = new Foe(true);
            addLaser(game->foes[1], 300, 300);
            break;
        case byShield:
            ship->energy = 1000.0f;
            ship->shield->collidable = true;
            ship->shield->position = {300.0f, 300.0f};
            break;
        case byHull:
            ship->setSpeedupCount(1);
            ship->position = {300.0f, 300.0f};
            break;
        }
        collide(by == byPirateLaser ? game->foeLaserEngine : by == byShipLaser ? game->shipLaserEngine : game->shipEngine,
                game->asteroidEngine);
        EXPECT_FALSE(std::count(game->asteroidEngine.sprites.begin(), game->asteroidEngine.sprites.end(), box));
        EXPECT_EQ(game->shipLaserEngine.size() + game->foeLaserEngine.size(), 0) << "the laser is spent";
        int released = 0;
        for (Sprite* s : game->extraEngine.sprites) {
            auto* extra = static_cast<Extra*>(s);
            if (extra->lostTimer == 0 && extra->type == inside) ++released;
        }
        EXPECT_EQ(released, 1);
        EXPECT_EQ(ship->score, 0u);
        EXPECT_TRUE(ship->alive);
    }
}

TEST_F(GameWorld, ExtrasRaiseUpgradesToTheirLimitsOnce) {
    struct Case {
        ExtraType type;
        int before;  // of the upgrade the extra raises
        int after;
        bool blinks;
        unsigned int points;
    };
    const Case cases[] = {
        {etLaserType, 0, 1, true, 0}, {etLaserType, 4, 4, true, 0}, {etSpeed, 4, 5, true, 0},
        {etSpeed, 5, 5, true, 0},     {etFireRate, 5, 5, true, 0},  {etTimeWarp, 2, 2, true, 0},
        {etTimeWarp, 0, 1, true, 0},  {etEnergy, 14000, 15000, false, 0}, {etEnergy, 0, 2500, false, 0},
        {etCrystal, 0, 0, false, 500},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(testing::Message() << c.type << " from " << c.before);
        start(gtSingleA);
        Player* ship = game->ships[0];
        int* value[] = {nullptr, &ship->speedUpgrades, &ship->fireRate, nullptr, &ship->timeWarps, nullptr};
        switch (c.type) {
        case etLaserType: ship->laserType = static_cast<short>(c.before); break;
        case etSpeed: ship->setSpeedupCount(c.before); break;
        case etFireRate: ship->setFireRateCount(c.before); break;
        case etEnergy: ship->energy = static_cast<float>(c.before); break;
        default: if (value[c.type]) *value[c.type] = c.before;
        }
        auto* extra = new Extra(c.type, ship->position);
        game->extraEngine.addFront(extra);
        EXPECT_TRUE(ship->collectExtra(extra));
        EXPECT_FALSE(ship->collectExtra(extra)) << "collected once only";
        const int now = c.type == etLaserType ? ship->laserType
                        : c.type == etEnergy  ? static_cast<int>(ship->energy)
                        : value[c.type]       ? *value[c.type]
                                              : 0;
        EXPECT_EQ(now, c.after);
        EXPECT_EQ(ship->hudBlinkCount > 0, c.blinks);
        EXPECT_EQ(ship->score, c.points);
        if (c.type == etSpeed) {
            EXPECT_FLOAT_EQ(ship->speed, 0.35f + 0.04f * static_cast<float>(c.after));
        }
        if (c.type == etFireRate) {
            EXPECT_FLOAT_EQ(ship->laserDelay, specs.getLaserDelay(5));
        }
    }
}

TEST_F(GameWorld, ExtrasFallWithTheWorldAndFadeOnceCollected) {
    start(gtSingleA);
    auto* extra = new Extra(etSpeed, {400.0f, 600.0f});
    game->extraEngine.addFront(extra);
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
    auto* lost = new Extra(etFireRate, {400.0f, 300.0f});
    game->extraEngine.addFront(lost);
    lost->knockOff({-0.3f, -0.7f});
    run(190);
    EXPECT_FALSE(lost->collidable);
    EXPECT_NEAR(lost->position.x, 400.0f - 190.0f * 0.3f * 0.3f, 0.01f);
    run(10);
    EXPECT_TRUE(lost->collidable);
}

TEST_F(GameWorld, SpriteQueuedTwiceIsDeletedOnce) {
    start(gtSingleA);
    Asteroid* rock = addAsteroid(atSmall, 0, 100, 100);
    rock->deleteMe();
    rock->deleteMe();
    EXPECT_EQ(deleteQueue.size(), 1u);
    destroyQueuedSprites();
    EXPECT_EQ(game->asteroidEngine.size(), 0);
}
