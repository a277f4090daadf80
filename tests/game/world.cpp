#include "world.h"

#include <algorithm>

#include "audio/core.h"
#include "framework/application.h"
#include "gui/root.h"
#include "math/random.h"
#include "support/events.h"
#include "support/gamedata.h"
#include "tools/clock.h"

using namespace vantorix;

void GameWorld::SetUp() {
    WindowTest::SetUp();
    if (std::string(NORVANE_FS_ROOT).empty()) GTEST_SKIP() << "needs a build with NORVANE_FS_ROOT";
    if (resources) return;
    installData();
    norvane::mkdirs(TEST_TMP_DIR "/");  // where the wave writer's file goes
    captured([] {
        norvane::audio::init("", 44100);
        resources = new Resources();
        resources->init();
    });
    while (!resources->loaded) norvane::perform(norvane::getCurrentTicks() + 1000);
    resources->pMainMenu->setVisible(false);  // as the menu leaves it when a game starts
    resources->gui->setVisible(false);
    // The loop the game runs in; it is never destroyed, as that would end the process.
    (new norvane::Application)->queue = resources->queue;
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
    resources->initHighscores();  // not what earlier runs left in the file
    norvane::randomize(seed);
    (new Game(type))->activate();
}

void GameWorld::run(unsigned int ms, unsigned int step) {
    for (unsigned int t = 0; t < ms && game; t += step) game->perform(step);
}

void GameWorld::frames(unsigned int ms) {
    for (unsigned int t = 0; t < ms && game; t += 10) norvane::application->perform(10);
}

void GameWorld::key(SDLKey key, bool down) {
    SDL_Event event = keyEvent(key, down, key < 128 ? static_cast<Uint16>(key) : 0);  // typing needs the character
    SDL_PushEvent(&event);
}

void GameWorld::tap(SDLKey k) {
    key(k, true);
    frames(10);
    key(k, false);
    frames(10);
}

SurfacePtr GameWorld::shot(const std::string& name) {
    game->draw();
    return screenshot(name + ".png");
}

Asteroid* GameWorld::addAsteroid(AsteroidType type, int energy, float x, float y) {
    auto* asteroid = new Asteroid(type, energy, true);
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

Extra* GameWorld::addExtra(ExtraType type, float x, float y) {
    auto* extra = new Extra(type, {x, y});
    game->extraEngine.addFront(extra);
    return extra;
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
