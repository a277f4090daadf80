// The running game. Sections:
//   life cycle   construction, new game, stages, activation, music, leaving
//   spawning     asteroids, containers, extras, pirates, and what the ships are credited
//   frame        the pass: spawners, stage sequence, time warp, sprites and collisions
//   drawing      playfield, HUD, stage and game-over texts
//   events       triggers, pause, name entry and the end of a game
#include "game/game.h"

#include <algorithm>
#include <cstdlib>
#include <string>

#include "audio/core.h"
#include "audio/music.h"
#include "controls/inputevaluator.h"
#include "controls/queue.h"
#include "debug/log.h"
#include "game/asteroid.h"
#include "game/container.h"
#include "game/explosion.h"
#include "game/foe.h"
#include "game/laser.h"
#include "game/player.h"
#include "gfx/animations.h"
#include "gfx/image.h"
#include "gui/standard.h"
#include "gui/text.h"
#include "math/random.h"
#include "menu/menu.h"
#include "particles/starfield.h"
#include "resources/resources.h"
#include "screen.h"
#include "specs.h"
#include "vantorix.h"

namespace vantorix {

using norvane::Color;
using norvane::audio::MusicManager;
using norvane::audio::StreamedSample;

std::string previousName[2];

namespace {

enum TriggerCode {
    tcBack = 1,
    tcConfirm = 2,
    tcPause = 5,
    tcQuitGame = 201,
    tcFire = 204,
    tcTimeWarp = 206,
};

// In [0, 1), as the C library's generator gives it.
float unitRandom() { return static_cast<float>(std::rand() * (1.0 / 2147483648.0)); }

// Queues intro and loop; plays them at once, or after what plays now when `afterCurrent`.
void queueMusic(StreamedSample* intro, StreamedSample* loop, bool clear, bool skip) {
    MusicManager* music = resources->musicManager;
    if (!music || !norvane::audio::enabled) return;
    if (clear) music->clearQueue();
    for (StreamedSample* piece : {intro, loop}) {
        if (piece) music->addAsLast(piece);
    }
    try {
        if (!music->isPlaying()) {
            music->play();
        } else if (skip) {
            music->skipToNext();
        }
    } catch (const std::string& text) {
        norvane::debug::warning(dbgVantorixGame, "Could not play music: %s", text.c_str());
    }
}

void stopMusic() {
    if (resources->musicManager) resources->musicManager->stop();
}

Trigger* findTrigger(InputEvaluator* evaluator, const char* name, int slot) {
    Trigger* trigger = evaluator ? evaluator->find(name) : nullptr;
    if (!trigger) {
        norvane::debug::warning(dbgVantorixGame, "The controls of player %d lack \"%s\"; that input does nothing.",
                                slot + 1, name);
    }
    return trigger;
}

}  // namespace

// [SECTION] life cycle

Game::Game(GameType type) : type(type) {
    resources->initGame();
    game = this;
    // The busiest late stage, so that playing it allocates nothing.
    VantorixSprite::reserve(sizeof(Laser), 192);
    VantorixSprite::reserve(sizeof(Asteroid), 128);
    VantorixSprite::reserve(sizeof(ExplosionSprite), 128);
    VantorixSprite::reserve(sizeof(Extra), 48);
    VantorixSprite::reserve(sizeof(Container), 16);
    VantorixSprite::reserve(sizeof(Foe), 4);
    VantorixSprite::reserve(sizeof(Player), 2);
    deleteQueue.reserve(256);
    norvane::gfx::AnimationReference::reserve(256);
    for (SpriteEngine* engine :
         {&shipEngine, &shipLaserEngine, &asteroidEngine, &extraEngine, &foeEngine, &foeLaserEngine}) {
        engine->reserve(256);
    }
    init();
}

Game::~Game() {
    uninit();
    releaseSprites();
    // Left while paused or entering a name: those panels must not stay over the menu.
    resources->pInGame->setVisible(false);
    resources->pEnterName->setVisible(false);
    resources->uninitGame();
    enableShipControls(false);
    resources->evaluatorGameCore->enabled = false;
    ApplicationState::deactivate();
    if (menu) menu->activate();
    game = nullptr;
}

void Game::releaseSprites() {
    destroyQueuedSprites();
    for (SpriteEngine* engine :
         {&shipEngine, &shipLaserEngine, &asteroidEngine, &extraEngine, &foeEngine, &foeLaserEngine}) {
        // Only game objects are left once the ships took their flames and shields.
        while (!engine->sprites.empty()) delete engine->sprites.back();
    }
}

void Game::init() {
    highscoreRank[0] = highscoreRank[1] = -1;
    abandoned = false;
    releaseSprites();
    gameOverShown = leaveRequested = stageCleared = false;
    gameSpeed = targetSpeed = 1.0f;
    level = 0;
    stagePhase = spNotStarted;
    phaseTimer = 0.0f;
    firingAllowed = false;
    timeWarpTimer = 0;
    queuedContainers = 0;
    asteroidTimer = stepTimer = extraTimer = 0;
    crystalTimer = specs.modeBCrystalInterval / 2;
    gameOverTimer = 0;
    livingShips = 0;
    ships[0] = ships[1] = nullptr;
    foes[0] = foes[1] = nullptr;

    shipCount = type == gtMulti ? 2 : 1;
    controls[0] = type == gtMulti ? resources->evaluatorGamePlayerMulti[0] : resources->evaluatorGamePlayerSingle;
    controls[1] = type == gtMulti ? resources->evaluatorGamePlayerMulti[1] : nullptr;
    findTriggers();

    ships[0] = new Player(type == gtMulti ? ptRight : ptSingle);
    shipEngine.addFront(ships[0]);
    if (type == gtMulti) {
        ships[1] = new Player(ptLeft);
        shipEngine.addFront(ships[1]);
    }
    extraEngine.blendMode = norvane::BLEND_ADDITIVE;
    initLevel(1);
    startMusic();
    resources->queue->flush();
}

void Game::findTriggers() {
    for (int i = 0; i < 2; ++i) {
        const bool used = static_cast<unsigned int>(i) < shipCount;
        xTrigger[i] = used ? findTrigger(controls[i], "x", i) : nullptr;
        yTrigger[i] = used ? findTrigger(controls[i], "y", i) : nullptr;
        shieldTrigger[i] = used ? findTrigger(controls[i], "shield", i) : nullptr;
    }
}

void Game::initLevel(unsigned int n) {
    level = n;
    stageCleared = false;
    stageKills = static_cast<int>(specs.getKillsForLevel(n));
    killsLeft = type == gtMulti ? 2 * stageKills : stageKills;
    containerCountdown = static_cast<int>(static_cast<float>(stageKills) * 0.4f);
    foeCountdown = n >= specs.foeStartLevel ? stageKills / 2 : 0;
    spawnQueued();
    if (type == gtSingleB) {
        levelSpeed = specs.modeBStartSpeed;
        asteroidInterval = specs.modeBStartInterval;
    } else {
        levelSpeed = specs.getSpeedForLevel(n);
        asteroidInterval = specs.getAsteroidInterval(n);
    }
    stagePhase = spPlay;
    spawnedAsteroids = 0;
    firingAllowed = type != gtSingleB;
}

void Game::enableShipControls(bool on) {
    for (InputEvaluator* evaluator : controls) {
        if (evaluator) evaluator->enabled = on;
    }
}

void Game::activate() {
    ApplicationState::activate();
    enableShipControls(true);
    resources->evaluatorGameCore->enabled = true;
    resources->evaluatorMenu->enabled = false;
    resources->gui->setActive(false);
}

void Game::deactivate() {
    enableShipControls(false);
    resources->evaluatorGameCore->enabled = false;
    ApplicationState::deactivate();
    if (menu) menu->activate();
}

void Game::startMusic() {
    if (type == gtSingleB) {
        queueMusic(resources->musicGameBIntro, resources->musicGameBLoop, true, true);
    } else {
        queueMusic(resources->musicGameAIntro, resources->musicGameALoop, true, true);
    }
}

norvane::HighscoreTable<HighscoreEntry, 10>* Game::getHighscores() {
    switch (type) {
    case gtSingleA: return &resources->highscores.singleA;
    case gtSingleB: return &resources->highscores.singleB;
    default: return &resources->highscores.multi;
    }
}

void Game::uninit() {
    stopMusic();
    for (Player*& ship : ships) {
        delete ship;
        ship = nullptr;
    }
}

void Game::restart() {
    uninit();
    init();
}

// [SECTION] spawning

bool Game::spawnFoe(int side) {
    if (foes[0] && foes[1]) return false;
    bool right;
    if (side != 0) {
        right = side > 0;
    } else if (foes[0]) {
        right = true;
    } else if (foes[1]) {
        right = false;
    } else {
        right = norvane::random_int(0, 1) == 0;
    }
    if (foes[right]) return false;
    foes[right] = new Foe(right);
    return true;
}

void Game::spawnContainer() {
    if (livingShips > 0) asteroidEngine.addFront(new Container());
}

void Game::spawnQueued() {
    if (queuedContainers == 0) return;
    spawnContainer();
    --queuedContainers;
}

void Game::spawnExtra(ExtraType kind) {
    if (kind == etAny) kind = getExtraType();
    const float x = specs.playerMinX + norvane::random(800.0f - 2.0f * specs.playerMinX);
    extraEngine.addFront(new Extra(kind, {x, 650.0f}));
}

void Game::spawnAsteroid() {
    if (livingShips == 0) return;
    const short stage = static_cast<short>(level);
    const float chanceLarge = type == gtSingleB ? specs.modeBChanceLarge : specs.getChanceLargeAsteroid(stage);
    const bool large = norvane::random(1.0f) < chanceLarge;
    int energy = 0;
    if (unitRandom() < specs.getChanceAsteroidEnergy(stage)) {
        energy = norvane::random_int(specs.getMaxAsteroidEnergy(stage));
    }
    auto* asteroid = new Asteroid(large ? atLarge : atSmall, energy, true);
    const float y = 600.0f + asteroid->size.y + unitRandom() * 600.0f * 0.3f;
    asteroid->velocity = specs.getAsteroidVelocity(levelSpeed);
    // Aimed so that it is within the screen's width once it has come down to the aim height.
    const float drift = (-(y - specs.asteroidAimHeight) / asteroid->velocity.y) * asteroid->velocity.x;
    asteroid->position = {-drift + norvane::random(800.0f), y};
    asteroidEngine.addFront(asteroid);
    ++spawnedAsteroids;
}

ExtraType Game::getExtraType() {
    // What the ships lack, weighed by the last living ship; kept between calls when none lives.
    static float remaining[5] = {};
    static float p[5] = {};
    for (unsigned int i = 0; i < shipCount; ++i) {
        const Player* ship = ships[i];
        if (!ship || !ship->alive) continue;
        std::fill(std::begin(remaining), std::end(remaining), 0.0f);
        if (type == gtSingleB) {
            remaining[etSpeed] = static_cast<float>(specs.maxSpeedUpgrades - ship->speedUpgrades);
            continue;
        }
        const int cap = static_cast<int>(level / 2 + 1);
        const int reduction = static_cast<int>(specs.extraLimitReduction);
        const auto lacking = [cap, reduction](int limit, int have) {
            return static_cast<float>(std::max(0, std::min(limit - reduction, cap) - have));
        };
        const int least = std::min({ship->speedUpgrades, ship->fireRate, static_cast<int>(ship->laserType)});
        remaining[etLaserType] = lacking(specs.maxLaserType, ship->laserType);
        remaining[etSpeed] = lacking(specs.maxSpeedUpgrades, ship->speedUpgrades);
        remaining[etFireRate] = lacking(specs.maxFireRate, ship->fireRate);
        remaining[etEnergy] =
            least >= specs.energyExtraMinUpgrade ? (specs.maxEnergy - ship->energy) / specs.energyPerExtra : 0.0f;
        remaining[etTimeWarp] = least >= specs.timeWarpExtraMinUpgrade
                                    ? static_cast<float>(specs.maxTimeWarps - ship->timeWarps)
                                    : 0.0f;
    }
    float total = 0.0f;
    for (float weight : remaining) total += weight;
    if (total <= 0.0f) return etCrystal;
    for (int k = 0; k < 5; ++k) p[k] = remaining[k] / total;
    const double r = std::rand() / 2147483647.0;
    double sum = 0.0;
    for (int k = 0; k < 5; ++k) {
        sum += p[k];
        if (sum >= r) return static_cast<ExtraType>(k);
    }
    return etCrystal;
}

Player* Game::shipOf(const VantorixSprite* sprite) const {
    for (Player* ship : ships) {
        if (ship && ship == sprite) return ship;
    }
    return nullptr;
}

void Game::destroyedAsteroid(Player* ship, Asteroid* asteroid) {
    ship->addScore(asteroid->type == atLarge ? specs.largeAsteroidScore : specs.smallAsteroidScore);
    if (asteroid->counted && killsLeft > 0 && --killsLeft == 0) stageCleared = true;
    if (--containerCountdown < 1) {
        containerCountdown += static_cast<int>(static_cast<float>(stageKills) * 0.4f);
        ++queuedContainers;
    }
    if (foeCountdown > 0 && --foeCountdown == 0) spawnFoe(0);
    spawnQueued();
}

void Game::destroyedFoe(Player* ship, Foe*) {
    ship->addScore(specs.foeScore);
    spawnQueued();
}

// [SECTION] frame

void Game::doPerform(int layer, unsigned int ticks) {
    if (layer != 1) {
        GameState::doPerform(layer, ticks);
        return;
    }
    if (paused) return;
    const unsigned int scaled = static_cast<unsigned int>(static_cast<float>(ticks) * gameSpeed);
    performSpawners(scaled);
    steerShips();
    performStage(ticks);
    performTimeWarp(ticks);
    performSprites(gameSpeed * static_cast<float>(ticks));
    performStarfield(ticks);
    for (Player* ship : ships) {
        if (ship && ship->alive) ship->performHud(static_cast<float>(ticks));
    }
    if (livingShips == 0 && !gameOverShown) gameOver();
    if (gameOverShown && leaveRequested) destroyPending = true;
}

void Game::performSpawners(unsigned int ticks) {
    if (!stageCleared) {
        asteroidTimer += ticks;
        while (asteroidTimer > asteroidInterval) {
            asteroidTimer -= asteroidInterval;
            spawnAsteroid();
        }
    }
    Player* ship = ships[0];
    if (type != gtSingleB || stageCleared || !ship || !ship->alive) return;
    stepTimer += ticks;
    for (unsigned int step = specs.speedupInterval(levelSpeed); stepTimer > step;
         step = specs.speedupInterval(levelSpeed)) {
        stepTimer -= step;
        levelSpeed += specs.modeBStepSpeed;
        ship->score += specs.modeBStepScore;  // no bonus container for these
        if (asteroidInterval > specs.modeBMinInterval) {
            asteroidInterval -= std::min(specs.modeBStepInterval, asteroidInterval - specs.modeBMinInterval);
        }
    }
    crystalTimer += ticks;
    while (crystalTimer > specs.modeBCrystalInterval) {
        crystalTimer -= specs.modeBCrystalInterval;
        spawnExtra(etCrystal);
    }
    extraTimer += ticks;
    while (extraTimer > specs.modeBExtraInterval) {
        extraTimer -= specs.modeBExtraInterval;
        spawnExtra(etAny);
    }
}

void Game::steerShips() {
    for (unsigned int i = 0; i < shipCount; ++i) {
        Player* ship = ships[i];
        if (!ship || !ship->alive) continue;
        const float x = xTrigger[i] ? xTrigger[i]->value : 0.0f;
        const float y = yTrigger[i] ? -yTrigger[i]->value * specs.verticalInputFactor : 0.0f;
        ship->setDirection({x, y});
        ship->setShield(shieldTrigger[i] && shieldTrigger[i]->isActive());
    }
}

unsigned int Game::stageBonusFor(int kills, int spawned) {
    const float quota = static_cast<float>(kills);
    if (static_cast<float>(spawned) <= 1.5f * quota) return specs.stageBonus;
    if (spawned >= 3 * kills) return 0;
    return static_cast<unsigned int>(static_cast<float>(specs.stageBonus) * (3.0f * quota - static_cast<float>(spawned)) /
                                     (1.5f * quota));
}

void Game::performStage(unsigned int ticks) {
    const float ms = static_cast<float>(ticks);
    switch (stagePhase) {
    case spPlay:
        if (!stageCleared || asteroidEngine.size() > 0) break;
        bonus = stageBonusFor(stageKills, spawnedAsteroids);
        showBonus = bonus > 0;
        pingTimer = 0;
        firingAllowed = false;
        stagePhase = spComplete;
        phaseTimer = 3000.0f;
        break;
    case spComplete:
        stageTextColor.alpha = std::min(1.0f, stageTextColor.alpha + ms / 1000.0f);
        phaseTimer -= ms;
        if (phaseTimer <= 0.0f) stagePhase = spBonus;
        break;
    case spBonus:
        if (bonus > 0) {
            pingTimer -= static_cast<int>(ticks);
            if (pingTimer < 0) {
                pingTimer += 50;
                playSound(resources->samplePing);
            }
            const unsigned int paid = std::min(2 * ticks, bonus);
            for (Player* ship : ships) {
                if (ship && ship->alive) ship->addScore(paid);
            }
            bonus -= paid;
        }
        if (bonus == 0) {
            stagePhase = spPause;
            phaseTimer = 3000.0f;
        }
        break;
    case spPause:
        phaseTimer -= ms;
        if (phaseTimer <= 0.0f) {
            stagePhase = spFadeOut;
            phaseTimer = 1500.0f;
        }
        break;
    case spFadeOut:
        stageTextColor.alpha = std::max(0.0f, stageTextColor.alpha - ms / 1000.0f);
        phaseTimer -= ms;
        if (phaseTimer <= 0.0f) initLevel(level + 1);
        break;
    case spGameOver:
        if (static_cast<float>(gameOverTimer) < specs.gameOverDelay) gameOverTimer += static_cast<int>(ticks);
        break;
    default: break;
    }
}

void Game::performTimeWarp(unsigned int ticks) {
    if (timeWarpTimer > 0) {
        timeWarpTimer -= std::min(timeWarpTimer, ticks);
        if (timeWarpTimer == 0) targetSpeed = 1.0f;
    }
    const float rate = timeWarpTimer > 0 ? specs.timeWarpSlowRate : specs.timeWarpRecoverRate;
    const float step = static_cast<float>(ticks) * rate;
    gameSpeed = gameSpeed > targetSpeed ? std::max(targetSpeed, gameSpeed - step) : std::min(targetSpeed, gameSpeed + step);
}

void Game::performSprites(float t) {
    shipEngine.perform(t);
    asteroidEngine.perform(t);
    extraEngine.perform(t);
    foeEngine.perform(t);
    foeLaserEngine.perform(t);
    // Fast lasers would fly through a pirate's narrow hull between two tests.
    shipLaserEngine.perform(t / 2.0f);
    shipLaserEngine.testCollisions(&foeEngine);
    shipLaserEngine.perform(t / 2.0f);

    shipEngine.testCollisions(&asteroidEngine);
    shipEngine.testCollisions(&extraEngine);
    shipEngine.testCollisions(&foeEngine);
    shipLaserEngine.testCollisions(&asteroidEngine);
    shipLaserEngine.testCollisions(&foeEngine);
    foeLaserEngine.testCollisions(&asteroidEngine);
    foeLaserEngine.testCollisions(&shipEngine);
}

void Game::performStarfield(unsigned int ticks) {
    norvane::particles::Starfield* stars = resources->starfield;
    if (!stars) return;
    if (stagePhase < spNameEntry) {
        stars->speed = specs.starfieldFactor * levelSpeed * gameSpeed;
        return;
    }
    const float step = specs.starfieldSpeedRate * static_cast<float>(ticks);
    stars->speed = std::clamp(specs.idleStarfieldSpeed, stars->speed - step, stars->speed + step);
}

// [SECTION] drawing

void Game::doDraw(int layer) {
    if (layer != 1) {
        GameState::doDraw(layer);
        return;
    }
    for (SpriteEngine* engine :
         {&extraEngine, &shipLaserEngine, &foeLaserEngine, &shipEngine, &foeEngine, &asteroidEngine}) {
        engine->draw();
    }

    resources->rcHud.apply();
    const Color white(1.0f, 1.0f, 1.0f, 1.0f);
    if (Player* ship = ships[0]) {
        print(770.0f, 450.0f, norvane::JH_RIGHT, Color(1.0f, 0.0f, 0.0f, 1.0f), "%5u", ship->score);
        if (ship->alive) drawHud(ship->hudBlinkOn ? specs.hudPosition1 : specs.hudPosition2, ship);
    }
    if (Player* ship = ships[1]) {
        print(30.0f, 450.0f, norvane::JH_LEFT, Color(0.0f, 0.0f, 1.0f, 1.0f), "%5u", ship->score);
        if (ship->alive) drawHud({60.0f, 540.0f}, ship);
    }
    if (stagePhase >= spComplete && stagePhase <= spFadeOut) {
        print(400.0f, 320.0f, norvane::JH_CENTER, stageTextColor, "Stage %u complete.", level);
        if (showBonus) print(400.0f, 280.0f, norvane::JH_CENTER, stageTextColor, "Bonus: %u", bonus);
    }
    if (stagePhase == spGameOver) {
        print(400.0f, 530.0f, norvane::JH_CENTER, Color(1.0f, 0.3f, 0.3f, 1.0f), "G A M E   O V E R");
        print(400.0f, 70.0f, norvane::JH_CENTER, white, "Press fire to start a new game.");
        displayHighscores(400.0f, 300.0f, getHighscores(), highscoreRank[0], highscoreRank[1]);
    }
    white.apply();
}

void Game::drawHud(const basic_Vector2D<float>& position, const Player* ship) {
    const bool current = ship->hudBlinkOn;
    const int speedUps = current ? ship->speedUpgrades : ship->hudValues[hvSpeed];
    const int laserType = current ? ship->laserType : ship->hudValues[hvLaserType];
    const int fireRate = current ? ship->fireRate : ship->hudValues[hvFireRate];
    const int timeWarps = current ? ship->timeWarps : ship->hudValues[hvTimeWarps];
    const float energy = ship->hudEnergy / specs.maxEnergy;

    norvane::resetCursor();  // printing the score moved it
    specs.hudDimColor.apply();
    if (resources->imageFull) resources->imageFull->draw(position, norvane::BLEND_DEFAULT);
    specs.hudLightColor.apply();
    if (norvane::gfx::Image* gauge = resources->imageShield; gauge && energy > 0.0f) {
        // The gauge covers the upper rows of the place where the whole image would be.
        const float height = static_cast<float>(gauge->getHeight());
        const float rows = static_cast<float>(static_cast<int>(height * energy));
        const basic_Vector2D<float>& hot = gauge->getHotspot();
        gauge->draw(norvane::basic_Rect<float>{position.x - hot.x, position.y + hot.y + height - rows,
                                               static_cast<float>(gauge->getWidth()), rows},
                    norvane::BLEND_DEFAULT);
    }
    const auto drawIf = [&position](norvane::gfx::Image* image) {
        if (image) image->draw(position, norvane::BLEND_DEFAULT);
    };
    if (speedUps > 0 && speedUps <= 5) drawIf(resources->imageSpeed[speedUps - 1]);
    if (laserType >= 0 && laserType < 5 && fireRate >= 0 && fireRate < 6) drawIf(resources->imageFire[laserType][fireRate]);
    if (timeWarps > 0 && static_cast<size_t>(timeWarps) <= resources->imageTimeWarp.size()) {
        drawIf(resources->imageTimeWarp[static_cast<size_t>(timeWarps) - 1]);
    }
}

// [SECTION] events

void Game::handleEvent(const Trigger* trigger) {
    const bool nameEntry = stagePhase == spNameEntry;
    switch (trigger->code) {
    case tcBack:
        if (closeWindows(false) || nameEntry) return;
        if (livingShips == 0) {
            if (resources->musicManager && resources->musicManager->isPlaying()) {
                leaveRequested = true;
            } else {
                delete this;  // the menu takes over; nothing of this state may be touched any more
            }
        } else if (paused) {
            resume(true);
        } else {
            pause();
        }
        return;
    case tcConfirm:
        if (closeWindows(true)) return;
        if (nameEntry) {
            enterName();
        } else if (livingShips == 0) {
            restart();
        }
        return;
    case tcPause:
        if (!nameEntry && livingShips > 0 && !paused) pause();
        return;
    case tcQuitGame:
        if (nameEntry) return;
        resources->pInGame->setVisible(false);
        abandoned = true;
        for (Player* ship : ships) {
            if (ship) ship->explode();
        }
        resume(false);
        return;
    case tcFire:
        if (livingShips > 0) {
            if (!paused && trigger->data >= 0 && trigger->data < 2 && ships[trigger->data]) ships[trigger->data]->fire();
        } else if (stagePhase == spGameOver && static_cast<float>(gameOverTimer) >= specs.gameOverDelay) {
            restart();
        }
        return;
    case tcTimeWarp:
        if (!paused && trigger->data >= 0 && trigger->data < 2 && ships[trigger->data]) {
            ships[trigger->data]->startTimeWarp();
        }
        return;
    default: GameState::handleEvent(trigger);
    }
}

void Game::pause() {
    resources->pInGame->setVisible(true);
    resources->gui->setVisible(true);
    resources->gui->setActive(true);
    resources->btnContinue->setFocused(true);
    paused = true;
    enableShipControls(false);
}

void Game::resume(bool flush) {
    resources->pInGame->setVisible(false);
    resources->gui->setVisible(false);
    resources->gui->setActive(false);
    paused = false;
    enableShipControls(true);
    if (flush) resources->queue->flush();
}

void Game::closeWindowSoundSettings(bool apply) {
    GameState::closeWindowSoundSettings(apply);
    resources->pInGame->setVisible(true);
    resources->btnInGameSoundSettings->setFocused(true);
}

void Game::closeWindowControls(bool apply) {
    InputEvaluator* edited = editedEvaluator;
    GameState::closeWindowControls(apply);
    findTriggers();  // applied edits replace the evaluator's triggers
    resources->pInGame->setVisible(true);
    if (edited == resources->evaluatorGamePlayerMulti[0]) {
        resources->btnInGameControlsMultiplayer1->setFocused(true);
    } else if (edited == resources->evaluatorGamePlayerMulti[1]) {
        resources->btnInGameControlsMultiplayer2->setFocused(true);
    } else {
        resources->btnInGameControlsSinglePlayer->setFocused(true);
    }
}

void Game::gameOver() {
    gameOverShown = true;
    if (abandoned) {
        setHighscoresChecked(static_cast<unsigned char>(shipCount));
        resources->queue->flush();
        return;
    }
    const norvane::HighscoreTable<HighscoreEntry, 10>* table = getHighscores();
    for (unsigned int i = 0; i < shipCount; ++i) {
        highscoreRank[i] = ships[i] ? table->rankOf(HighscoreEntry(std::string(), ships[i]->score)) : -1;
    }
    if (shipCount == 2 && ships[0] && ships[1]) {
        // Both ranks were taken against the table without the other ship's entry.
        const auto below = [](int rank) { return rank + 1 < 10 ? rank + 1 : -1; };
        if (ships[0]->score < ships[1]->score && highscoreRank[0] >= 0) highscoreRank[0] = below(highscoreRank[0]);
        if (ships[1]->score < ships[0]->score && highscoreRank[1] >= 0) highscoreRank[1] = below(highscoreRank[1]);
    }
    setHighscoresChecked(0);
    resources->queue->flush();
}

void Game::setHighscoresChecked(unsigned char index) {
    nameEntryIndex = index;
    while (nameEntryIndex < shipCount && highscoreRank[nameEntryIndex] < 0) ++nameEntryIndex;
    if (nameEntryIndex < shipCount) {
        stagePhase = spNameEntry;
        norvane::gui::GUI* gui = resources->gui;
        resources->pEnterName->setVisible(true);
        if (auto* label = dynamic_cast<norvane::gui::Label*>((*gui)["lEnterName"])) {
            label->setCaption("Enter your name, player " + std::to_string(nameEntryIndex + 1) + ":");
        }
        if (auto* field = dynamic_cast<norvane::gui::Textfield*>((*gui)["tfEnterName"])) {
            field->setCaption(previousName[nameEntryIndex]);
            field->setStyle(nameEntryIndex == 0 ? resources->lsTextfieldRed : resources->lsTextfieldBlue);
            field->setFocused(true);
        }
        gui->setVisible(true);
        gui->setActive(true);
        enableShipControls(false);
        return;
    }
    resources->saveHighscores();
    resources->queue->flush();
    gameOverTimer = 0;
    stagePhase = spGameOver;
    resources->queue->flush();
    if (highscoreRank[0] < 0 && highscoreRank[1] < 0) {
        queueMusic(resources->musicGameOverIntro, resources->musicGameOverLoop, false, false);
    } else {
        queueMusic(resources->musicHighscoresIntro, resources->musicHighscoresLoop, false, true);
    }
}

void Game::enterName() {
    auto* field = dynamic_cast<norvane::gui::Textfield*>((*resources->gui)["tfEnterName"]);
    const std::string name = field ? field->getCaption() : std::string();
    if (name.empty()) return;
    const unsigned char slot = nameEntryIndex;
    previousName[slot] = name;
    if (ships[slot]) getHighscores()->add(HighscoreEntry(name, ships[slot]->score));
    resources->pEnterName->setVisible(false);
    resources->gui->setVisible(false);
    resources->gui->setActive(false);
    enableShipControls(true);
    setHighscoresChecked(static_cast<unsigned char>(slot + 1));
}
}  // namespace vantorix
