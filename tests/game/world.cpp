#include "world.h"

#include <algorithm>
#include <string>

#include "audio/core.h"
#include "controls/trigger.h"
#include "game/foe.h"
#include "gui/root.h"
#include "math/random.h"
#include "resources/resources.h"
#include "support/captured.h"
#include "support/gamedata.h"
#include "vantorix.h"

using namespace vantorix;

void GameWorld::SetUp() {
    WindowTest::SetUp();
    if (std::string(NORVANE_FS_ROOT).empty()) GTEST_SKIP() << "needs a build with NORVANE_FS_ROOT";
    if (resources) return;
    installData();
    const std::string log = captured([] {
        try {
            norvane::audio::init("", 44100);
            resources = new Resources();
            resources->init();
        } catch (const std::string& text) {
            ADD_FAILURE() << text;
        }
    });
    ASSERT_TRUE(resources) << log;
}

void GameWorld::TearDown() {
    if (!game) return;
    for (Trigger** slot : {game->xTrigger, game->yTrigger, game->shieldTrigger}) {
        for (int i = 0; i < 2; ++i) {
            if (slot[i]) slot[i]->value = 0.0f;  // the evaluators outlive the game
        }
    }
    delete game;
}

void GameWorld::start(GameType type, unsigned int seed) {
    delete game;
    norvane::randomize(seed);
    new Game(type);
}

void GameWorld::run(unsigned int ms, unsigned int step) {
    for (unsigned int t = 0; t < ms && game; t += step) game->perform(step);
}

Asteroid* GameWorld::addAsteroid(AsteroidType type, int energy, float x, float y, bool counted) {
    auto* asteroid = new Asteroid(type, energy, counted);
    asteroid->position = {x, y};
    game->asteroidEngine.addFront(asteroid);
    return asteroid;
}

Laser* GameWorld::addLaser(VantorixSprite* owner, float x, float y) {
    const bool pirate = dynamic_cast<Foe*>(owner) != nullptr;
    auto* laser = new Laser(pirate ? resources->imageLaserRoundRed : resources->imageLaserRayGreen, owner, -1.0f, 0.0f);
    laser->position = {x, y};
    (pirate ? game->foeLaserEngine : game->shipLaserEngine).addFront(laser);
    return laser;
}

void GameWorld::shootAsteroid(Player* ship) {
    Asteroid* rock = addAsteroid(atSmall, 0, 400, 400);
    addLaser(ship, 400, 400);
    collide(game->shipLaserEngine, game->asteroidEngine);
    EXPECT_TRUE(rock->exploded);
}

void GameWorld::collide(SpriteEngine& a, SpriteEngine& b) {
    a.testCollisions(&b);
    destroyQueuedSprites();
}

int GameWorld::count(const SpriteEngine& engine, bool (*is)(const Sprite*)) const {
    return static_cast<int>(std::count_if(engine.sprites.begin(), engine.sprites.end(), is));
}
