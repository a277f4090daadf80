#ifndef VANTORIX_GAME_GAME_H
#define VANTORIX_GAME_GAME_H

#include <string>

#include "game/extra.h"
#include "gfx/color.h"
#include "resources/highscores.h"
#include "resources/state.h"
#include "sprites/sprites.h"

namespace vantorix {

class Asteroid;
class Foe;
class Player;
class VantorixSprite;

enum GameType {
    gtSingleA = 0,  // one ship, stages
    gtSingleB = 1,  // one ship that cannot fire, an endlessly accelerating field
    gtMulti = 2,    // two ships, twice the asteroids per stage
};

// Values of Game::stagePhase.
enum StagePhase {
    spNotStarted = 0,
    spPlay = 1,
    spComplete = 2,  // the stage text fades in
    spBonus = 3,     // the bonus is paid out
    spPause = 4,
    spFadeOut = 5,  // then the next stage
    spNameEntry = 6,
    spGameOver = 7,
};

// The running game: owns the ships and six sprite engines, spawns what falls, runs the stages,
// the time warp, game over with the name entry, and draws the playfield and the HUD.
// Sprites other than the ships (and their flames and shields) belong to the game while they sit
// in its engines: a restart or the end of the game deletes them.
class Game : public GameState {
public:
    explicit Game(GameType type);
    ~Game() override;

    void activate() override;
    void deactivate() override;
    void handleEvent(const Trigger* trigger) override;
    void doPerform(int layer, unsigned int ticks) override;
    void doDraw(int layer) override;
    void startMusic() override;
    void closeWindowSoundSettings(bool apply) override;
    void closeWindowControls(bool apply) override;

    void init();  // a new game; also the restart
    void initLevel(unsigned int level);
    void restart();
    void uninit();
    norvane::HighscoreTable<HighscoreEntry, 10>* getHighscores();

    bool spawnFoe(int side);  // > 0 right, < 0 left, 0 either; false when that side is taken
    void spawnContainer();
    void spawnQueued();  // releases one queued bonus container
    void spawnExtra(ExtraType type);  // etAny: weighed by what the ships lack
    void spawnAsteroid();
    ExtraType getExtraType();
    // The ship in a slot that `sprite` is, or null: lasers ask whom to credit.
    Player* shipOf(const VantorixSprite* sprite) const;
    void destroyedAsteroid(Player* ship, Asteroid* asteroid);
    void destroyedFoe(Player* ship, Foe* foe);
    void gameOver();
    void setHighscoresChecked(unsigned char index);  // name entry from this slot on, else the table
    // The bonus for a stage of `kills` asteroids (the one-ship quota) in which `spawned` fell.
    static unsigned int stageBonusFor(int kills, int spawned);

    GameType type;
    InputEvaluator* controls[2] = {};  // slot 1 null with one ship
    bool stageCleared = false;  // the quota is met: no more asteroids
    bool gameOverShown = false;
    bool leaveRequested = false;  // leave once the death music lets go
    float levelSpeed = 0.0f;      // of the falling world
    int killsLeft = 0;
    unsigned int level = 0;
    unsigned int shipCount = 1;
    unsigned int livingShips = 0;
    unsigned int asteroidInterval = 0;  // ms
    unsigned int asteroidTimer = 0;
    unsigned int stepTimer = 0;
    unsigned int crystalTimer = 0;
    unsigned int extraTimer = 0;
    norvane::sprites::SpriteEngine shipEngine;  // ships with their flames and shields
    norvane::sprites::SpriteEngine shipLaserEngine;
    norvane::sprites::SpriteEngine asteroidEngine;  // with the containers
    norvane::sprites::SpriteEngine extraEngine;
    norvane::sprites::SpriteEngine foeEngine;
    norvane::sprites::SpriteEngine foeLaserEngine;
    Trigger* xTrigger[2] = {};  // null when the slot's evaluator lacks it
    Trigger* yTrigger[2] = {};
    Trigger* shieldTrigger[2] = {};
    Player* ships[2] = {};
    Foe* foes[2] = {};  // left, right
    int stagePhase = spNotStarted;
    float phaseTimer = 0.0f;  // ms left of a timed phase
    unsigned int bonus = 0;   // still to pay out
    norvane::Color stageTextColor{0.5f, 0.5f, 1.0f, 0.0f};  // its alpha fades the stage texts
    unsigned char nameEntryIndex = 0;
    bool firingAllowed = false;
    unsigned int timeWarpTimer = 0;  // ms
    float gameSpeed = 1.0f;
    float targetSpeed = 1.0f;
    int queuedContainers = 0;
    int pingTimer = 0;      // ms
    int gameOverTimer = 0;  // ms
    bool showBonus = false;
    int containerCountdown = 0;  // destroyed asteroids until the next container
    int foeCountdown = 0;        // destroyed asteroids until the stage's pirate
    int spawnedAsteroids = 0;
    int stageKills = 0;
    int highscoreRank[2] = {-1, -1};
    bool abandoned = false;

private:
    void releaseSprites();  // the queued ones and what is left in the engines
    void findTriggers();
    void enableShipControls(bool on);
    void performSpawners(unsigned int ticks);
    void steerShips();
    void performStage(unsigned int ticks);
    void performTimeWarp(unsigned int ticks);
    void performSprites(float t);
    void performStarfield(unsigned int ticks);
    void drawHud(const basic_Vector2D<float>& position, const Player* ship);
    void pause();
    void resume(bool flush);
    void enterName();
};

// The names the ships of slot 0 and 1 entered last; they prefill the name field.
extern std::string previousName[2];

}  // namespace vantorix

#endif
