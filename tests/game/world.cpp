#include "world.h"

#include <SDL/SDL_image.h>

#include <algorithm>
#include <string>

#include "audio/core.h"
#include "files/sysdirs.h"
#include "framework/application.h"
#include "game/foe.h"
#include "gui/root.h"
#include "math/random.h"
#include "norvane.h"
#include "resources/resources.h"
#include "screenshot.h"
#include "support/captured.h"
#include "support/gamedata.h"
#include "tools/clock.h"
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
    while (!resources->loaded) norvane::perform(norvane::getCurrentTicks() + 1000);
    resources->pMainMenu->setVisible(false);  // as the menu leaves it when a game starts
    resources->gui->setVisible(false);
    norvane::mkdirs(TEST_TMP_DIR "/");
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

void GameWorld::frames(unsigned int ms, unsigned int step) {
    for (unsigned int t = 0; t < ms && game; t += step) norvane::application->perform(step);
}

void GameWorld::key(SDLKey key, bool down) {
    SDL_Event event{};
    event.type = down ? SDL_KEYDOWN : SDL_KEYUP;
    event.key.type = event.type;
    event.key.state = down ? SDL_PRESSED : SDL_RELEASED;
    event.key.keysym.sym = key;
    event.key.keysym.unicode = key < 128 ? static_cast<Uint16>(key) : 0;  // typing needs the character
    SDL_PushEvent(&event);
}

void GameWorld::tap(SDLKey k) {
    key(k, true);
    frames(10);
    key(k, false);
    frames(10);
}

SurfacePtr GameWorld::shot(const std::string& name) {
    const std::string path = std::string(TEST_TMP_DIR) + "/" + name + ".png";
    game->draw();
    norvane::saveScreenshot(path.c_str());
    return SurfacePtr(IMG_Load(path.c_str()));
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
