#include <set>

#include "game/container.h"
#include "world.h"

using namespace vantorix;

namespace {

bool isContainer(const Sprite* s) { return dynamic_cast<const Container*>(s); }

}  // namespace

// The bonus shrinks with the asteroids spent on the quota; a cleared stage pays it out and starts the next.
TEST_F(GameWorld, ClearedStagePaysItsBonusAndKillsBringContainersAndThePirate) {
    for (auto [kills, spawned, bonus] : {std::tuple{40, 40, 5000u}, {40, 60, 5000u}, {40, 80, 3333u}, {40, 90, 2500u},
                                         {40, 119, 83u}, {40, 120, 0u}, {40, 200, 0u}, {56, 84, 5000u}}) {
        EXPECT_EQ(Game::stageBonusFor(kills, spawned), bonus) << kills << " of " << spawned;
    }
    for (GameType type : {gtSingleA, gtMulti}) {
        SCOPED_TRACE(type);
        start(type);
        EXPECT_EQ(game->killsLeft, type == gtMulti ? 80 : 40);
        Player* ship = game->ships[0];
        game->killsLeft = 1;
        game->spawnedAsteroids = 80;
        run(10);
        shootAsteroid(ship);
        EXPECT_TRUE(game->stageCleared);
        const unsigned int before = ship->score;
        run(1000);  // the last explosion dies away
        EXPECT_EQ(std::make_tuple(game->stagePhase, game->bonus, game->firingAllowed),
                  std::make_tuple(+spComplete, 3333u, false));
        run(3000 + 1700);  // text, then the payout at 2 points a millisecond
        EXPECT_EQ(game->stagePhase, spPause);
        EXPECT_EQ(ship->score, before + 3333);
        EXPECT_EQ(game->stageTextColor.alpha, 1.0f);
        run(3000 + 1500);
        EXPECT_EQ(std::make_tuple(game->level, game->stagePhase, game->killsLeft, game->firingAllowed),
                  std::make_tuple(2u, +spPlay, type == gtMulti ? 82 : 41, true));
        EXPECT_EQ(game->stageTextColor.alpha, 0.0f);
    }

    start(gtSingleA);
    game->initLevel(3);  // 44 asteroids: a container every 17, the pirate after 22
    Player* ship = game->ships[0];
    ship->collidable = false;
    for (int kill = 1; kill <= 22; ++kill) {
        shootAsteroid(ship);
        EXPECT_EQ(count(game->asteroidEngine, isContainer), kill >= 17 ? 1 : 0) << kill;
        EXPECT_EQ(game->foes[0] || game->foes[1], kill == 22) << kill;
    }
    EXPECT_EQ(game->killsLeft, 44 - 22);

    // Each time the score passes another 5000 a container is queued for the next kill.
    ship->score = 4990;
    shootAsteroid(ship);
    EXPECT_EQ(ship->nextBonus, 10000u);
    EXPECT_EQ(count(game->asteroidEngine, isContainer), 2);
}

TEST_F(GameWorld, ExtrasGoToWhatTheShipsLackModeBSpeedsUpAndFireRestartsAfterTwoSeconds) {
    // Upgrades: each of speed, fire rate and laser type. At level 1 the cap is 1; warps want two of each.
    for (auto [type, level, upgrades, possible] :
         {std::tuple{gtSingleA, 1u, 0, std::set<int>{etLaserType, etSpeed, etFireRate}}, {gtSingleA, 1u, 1, {etEnergy}},
          {gtSingleA, 4u, 3, {etEnergy, etTimeWarp}}, {gtSingleB, 1u, 2, {etSpeed}}, {gtSingleB, 1u, 5, {etCrystal}}}) {
        SCOPED_TRACE(testing::Message() << type << " level " << level << " upgrades " << upgrades);
        start(type);
        game->level = level;
        game->ships[0]->setSpeedupCount(upgrades);
        game->ships[0]->setFireRateCount(upgrades);
        game->ships[0]->laserType = static_cast<short>(upgrades);
        std::set<int> drawn;
        for (int i = 0; i < 200; ++i) drawn.insert(game->getExtraType());
        EXPECT_EQ(drawn, possible);
    }

    start(gtSingleB);
    game->ships[0]->collidable = false;
    EXPECT_FALSE(game->firingAllowed);
    run(1100);  // the first steps come 332, 334 and 336 ms apart
    EXPECT_NEAR(game->levelSpeed, 0.403f, 1e-6f);
    EXPECT_EQ(game->ships[0]->score, 3u);
    EXPECT_EQ(game->asteroidInterval, 397u);
    EXPECT_EQ(game->extraEngine.size(), 0);
    run(1500);
    ASSERT_EQ(game->extraEngine.size(), 1) << "the first crystal after 2.5 s";
    EXPECT_EQ(static_cast<Extra*>(game->extraEngine.sprites.front())->type, etCrystal);
    run(7500);
    int weighed = 0;
    for (Sprite* s : game->extraEngine.sprites) weighed += static_cast<Extra*>(s)->type == etSpeed;
    EXPECT_EQ(weighed, 1) << "a speed-up, all a ship lacks in this mode, after 10 s";

    // Fire restarts a finished game only after two seconds; confirm at once.
    for (SDLKey restart : {SDLK_SPACE, SDLK_RETURN}) {
        start(gtSingleA);
        game->ships[0]->explode();
        frames(100);
        ASSERT_EQ(game->stagePhase, spGameOver) << "no name for a score of 0";
        key(restart, true);
        frames(1800);
        key(restart, false);
        frames(10);
        EXPECT_EQ(game->livingShips, restart == SDLK_RETURN ? 1u : 0u) << "confirm restarts at once";
        if (restart == SDLK_RETURN) continue;
        frames(200);
        tap(SDLK_SPACE);
        EXPECT_EQ(game->livingShips, 1u);
        EXPECT_EQ(game->stagePhase, spPlay);
    }
}

TEST_F(GameWorld, EqualScoresShareARankAndEnterOneBelowTheOther) {
    start(gtMulti);
    for (Player* ship : game->ships) {
        ship->score = 60000;
        ship->explode();
    }
    frames(10);
    EXPECT_EQ(std::make_tuple(game->highscoreRank[0], game->highscoreRank[1], int{game->nameEntryIndex}),
              std::make_tuple(1, 1, 0));
    ASSERT_EQ(game->stagePhase, spNameEntry);
    for (SDLKey letter : {SDLK_r, SDLK_RETURN}) tap(letter);
    ASSERT_EQ(game->nameEntryIndex, 1);
    tap(SDLK_RETURN);
    EXPECT_EQ(game->stagePhase, spNameEntry) << "an empty name is not taken";
    for (SDLKey letter : {SDLK_b, SDLK_RETURN}) tap(letter);
    EXPECT_EQ(game->stagePhase, spGameOver);
    const auto& table = resources->highscores.multi;
    EXPECT_EQ(table[1].name + table[2].name, "rb");
    EXPECT_EQ(table[3].score, 50000u);
    EXPECT_EQ(previousName[0], "r") << "to fill the field next time";
}
