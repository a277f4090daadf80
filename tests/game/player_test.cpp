#include <cmath>
#include <tuple>

#include "game/shield.h"
#include "world.h"

using namespace vantorix;

namespace {

// Speed, fire rate and laser type.
using Upgrades = std::tuple<int, int, int>;

Upgrades upgrades(const Player* ship) { return {ship->speedUpgrades, ship->fireRate, ship->laserType}; }

}  // namespace

TEST_F(GameWorld, HitsCostUpgradesAndDropThemUntilNoneIsLeftToLose) {
    // Before, hit by a pirate, survives, after, extras dropped.
    const std::tuple<Upgrades, bool, bool, Upgrades, int> cases[] = {
        {{0, 0, 0}, false, false, {0, 0, 0}, 0},  // a new ship explodes at once
        {{1, 0, 1}, true, false, {1, 0, 1}, 0},   // every upgrade below a pirate's damage of 2
        {{1, 0, 1}, false, true, {0, 0, 0}, 2},
        {{3, 2, 2}, true, true, {1, 0, 0}, 3},
        {{0, 5, 0}, false, true, {0, 4, 0}, 1},
    };
    for (const auto& [before, byPirate, survives, after, drops] : cases) {
        SCOPED_TRACE(testing::Message() << std::get<0>(before) << std::get<1>(before) << byPirate);
        start(gtSingleA);
        Player* ship = game->ships[0];
        ship->setSpeedupCount(std::get<0>(before));
        ship->setFireRateCount(std::get<1>(before));
        ship->laserType = static_cast<short>(std::get<2>(before));
        ship->position = {400.0f, 300.0f};
        if (byPirate) game->foes[1] = new Foe(true);
        VantorixSprite* by = byPirate ? static_cast<VantorixSprite*>(game->foes[1]) : addAsteroid(atLarge, 0, 400, 300);
        by->position = ship->position;
        collide(game->shipEngine, byPirate ? game->foeEngine : game->asteroidEngine);

        EXPECT_EQ(std::make_tuple(ship->alive, ship->visible, game->livingShips),
                  std::make_tuple(survives, survives, survives ? 1u : 0u));
        EXPECT_EQ(upgrades(ship), after);
        EXPECT_FLOAT_EQ(ship->speed, 0.35f + 0.04f * static_cast<float>(ship->speedUpgrades));
        EXPECT_FLOAT_EQ(ship->laserDelay, specs.getLaserDelay(static_cast<short>(ship->fireRate)));
        EXPECT_EQ(game->extraEngine.size(), drops);
        for (Sprite* s : game->extraEngine.sprites) EXPECT_FALSE(s->collidable) << "out of reach at first";
        const bool rammed = byPirate ? !game->foes[1] : static_cast<Asteroid*>(by)->exploded;
        EXPECT_EQ(rammed, survives) << "what hits a surviving ship explodes";
        EXPECT_EQ(ship->flameChanged, survives && after == Upgrades());
        if (survives) {
            EXPECT_EQ(ship->hudValues[hvSpeed], std::get<0>(before)) << "the HUD blinks the old";
        }

        // Catching a dropped upgrade again mends the flame.
        if (!ship->flameChanged) continue;
        run(200);
        EXPECT_TRUE(ship->collectExtra(static_cast<Extra*>(game->extraEngine.sprites.back())));
        EXPECT_FALSE(ship->flameChanged);
    }
}

TEST_F(GameWorld, ShieldBurnsTwoUnitsOfEnergyAMillisecondAndTimeWarpSparesItsShip) {
    start(gtSingleA);
    Player* ship = game->ships[0];
    Trigger* held = game->shieldTrigger[0];
    held->value = 1.0f;
    run(10);
    EXPECT_FALSE(ship->shieldHeld) << "no energy, no shield";

    ship->energy = 1000.0f;
    run(450);
    EXPECT_TRUE(ship->shield->collidable && ship->shield->visible);
    run(100);  // 1000 units last 500 ms of a raised shield; then it collapses at once
    EXPECT_EQ(ship->energy, 0.0f);
    EXPECT_FALSE(ship->shieldHeld || ship->shield->collidable);
    run(50);
    EXPECT_FALSE(ship->shield->visible);

    // Let go, it fades slowly and keeps burning while it glows.
    held->value = 0.0f;
    run(10);
    ship->energy = 5000.0f;
    held->value = 1.0f;
    run(100);
    held->value = 0.0f;
    run(400);
    EXPECT_TRUE(ship->shield->collidable);
    EXPECT_NEAR(ship->energy, 5000.0f - 2.0f * 490.0f, 1.0f);
    run(200);
    EXPECT_FALSE(ship->shield->collidable);

    // Time warp slows the world but not its ship.
    start(gtSingleA);
    ship = game->ships[0];
    ship->timeWarps = 1;
    run(10);
    ship->startTimeWarp();
    EXPECT_EQ(ship->timeWarps, 0);
    run(1000);  // the world slows to 0.4 within 600 ms
    EXPECT_FLOAT_EQ(game->gameSpeed, 0.4f);
    Asteroid* rock = addAsteroid(atSmall, 0, 100, 500);
    rock->velocity = {0.0f, -0.1f};
    ship->position = {400.0f, 100.0f};
    game->xTrigger[0]->value = 1.0f;
    run(100);
    EXPECT_NEAR(rock->position.y, 500.0f - 0.1f * 0.4f * 100.0f, 0.01f);
    EXPECT_NEAR(ship->position.x, 400.0f + 0.35f * 100.0f, 0.01f);
    game->xTrigger[0]->value = 0.0f;
    ship->collidable = false;  // out of the asteroids' way while the warp runs out
    run(6700);
    EXPECT_EQ(game->timeWarpTimer, 0u);
    EXPECT_FLOAT_EQ(game->gameSpeed, 1.0f);
}

TEST_F(GameWorld, FirePatternsGrowWithTheLaserTypeAndTwoShipsKeepTheirDistance) {
    const int lasers[] = {2, 2, 4, 4, 6, 0};  // by laser type; the last in mode B
    for (int type = 0; type <= 5; ++type) {
        SCOPED_TRACE(type);
        start(type == 5 ? gtSingleB : gtSingleA);
        Player* ship = game->ships[0];
        ship->laserType = static_cast<short>(std::min(type, 4));
        run(10);
        ship->fire();
        EXPECT_EQ(game->shipLaserEngine.size(), lasers[type]);
        if (type == 5) break;
        ship->fire();
        EXPECT_EQ(game->shipLaserEngine.size(), lasers[type]) << "cooling down";
        EXPECT_FLOAT_EQ(ship->mainCooldown, 500.0f);
        run(500);
        ship->fire();
        EXPECT_GT(game->shipLaserEngine.size(), lasers[type]);
    }

    start(gtMulti);
    Player* right = game->ships[0];
    Player* left = game->ships[1];
    game->stageCleared = true;  // nothing falls on them meanwhile
    run(10);
    // Steered by their controls toward each other, head-on and at angles.
    for (auto [x, y] : {std::pair{1.0f, 0.0f}, {1.0f, 0.5f}, {0.2f, 1.0f}}) {
        left->position = {300.0f, 100.0f};
        right->position = {500.0f, 100.0f + 60.0f * y};
        game->xTrigger[1]->value = x;
        game->yTrigger[1]->value = -y;
        game->xTrigger[0]->value = -x;
        for (int i = 0; i < 200; ++i) {
            run(10);
            ASSERT_FALSE(std::fabs(left->position.x - right->position.x) < 90.0f &&
                         std::fabs(left->position.y - right->position.y) < 75.0f)
                << i;
        }
        if (y == 0.0f) {
            EXPECT_LT(std::fabs(left->position.x - right->position.x), 100.0f) << "they met";
        }
    }
}
