#include <gtest/gtest.h>

#include "game/foe.h"
#include "game/laser.h"
#include "specs.h"
#include "vantorix.h"
#include "world.h"

using namespace vantorix;

namespace {

// Shots fired in `ms` by a pirate that hovers near its target and never dives.
int shotsIn(Foe* foe, unsigned int ms) {
    int shots = 0;
    for (unsigned int t = 0; t < ms; t += 10) {
        const int before = game->foeLaserEngine.size();
        foe->attacking = false;
        foe->floorTimer = 1;
        foe->perform(10.0f);
        shots += game->foeLaserEngine.size() - before;
    }
    return shots;
}

}  // namespace

TEST_F(GameWorld, PiratesTakeTheirSidesTurnAbout) {
    start(gtSingleA);
    EXPECT_TRUE(game->spawnFoe(-1));
    EXPECT_FALSE(game->foes[1]);
    EXPECT_TRUE(game->spawnFoe(0));
    ASSERT_TRUE(game->foes[1]) << "the free side";
    EXPECT_TRUE(game->foes[1]->rightSide);
    EXPECT_FALSE(game->spawnFoe(0));
    EXPECT_FALSE(game->spawnFoe(1));
    game->foes[0]->explode();
    run(10);
    EXPECT_FALSE(game->foes[0]) << "its slot is free again";
}

TEST_F(GameWorld, PiratesFireVolleysAcrossTheScreen) {
    struct Case {
        unsigned int level;
        int volley;      // shots after the first
        int fireDelay;   // ms between volleys
        int volleyDelay;
    };
    for (const Case& c : {Case{4, 0, 2166, 0}, Case{9, 2, 0, 0}}) {
        SCOPED_TRACE(c.level);
        start(gtSingleA);
        game->initLevel(c.level);
        game->spawnFoe(1);
        Foe* foe = game->foes[1];
        foe->volleyCount = c.volley;
        EXPECT_EQ(static_cast<int>(foe->fireDelay), specs.getFoeFireDelay(static_cast<short>(c.level)));
        if (c.fireDelay) {
            EXPECT_EQ(static_cast<int>(foe->fireDelay), c.fireDelay);
        }
        const unsigned int cycle = foe->fireDelay + static_cast<unsigned int>(c.volley) * foe->volleyDelay;
        EXPECT_EQ(shotsIn(foe, 10), 1);
        EXPECT_EQ(shotsIn(foe, cycle - 10), c.volley) << "the rest of the volley";
        EXPECT_EQ(shotsIn(foe, 10), 1) << "the next volley";
        auto* laser = static_cast<Laser*>(game->foeLaserEngine.sprites.front());
        EXPECT_LT(laser->velocity.x, 0.0f) << "from the right edge to the left";
        EXPECT_FLOAT_EQ(laser->velocity.y, 0.4f * foe->velocity);
    }
}

TEST_F(GameWorld, PiratesTakeFiftyHitsAtLevelThreeAndGoWhenTheShipsAreGone) {
    start(gtSingleA);
    game->initLevel(3);
    game->spawnFoe(-1);
    Foe* foe = game->foes[0];
    EXPECT_EQ(foe->hull, 50);
    Player* ship = game->ships[0];
    for (int i = 0; i < 49; ++i) {
        addLaser(ship, foe->position.x, foe->position.y);
        collide(game->shipLaserEngine, game->foeEngine);
    }
    EXPECT_TRUE(foe->alive);
    EXPECT_EQ(ship->score, 0u);
    addLaser(ship, foe->position.x, foe->position.y);
    collide(game->shipLaserEngine, game->foeEngine);
    EXPECT_FALSE(game->foes[0]);
    EXPECT_EQ(ship->score, 1500u);

    // With the last ship gone the other pirate stops firing and flies down and out.
    game->spawnFoe(1);
    foe = game->foes[1];
    foe->position.y = 300.0f;
    ship->explode();
    const int shots = game->foeLaserEngine.size();
    run(3000);
    EXPECT_EQ(game->foeLaserEngine.size(), shots);
    EXPECT_FALSE(game->foes[1]);
}
