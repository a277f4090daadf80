#ifndef VANTORIX_GAME_PLAYER_H
#define VANTORIX_GAME_PLAYER_H

#include "game/vantorixsprite.h"

namespace vantorix {

class Extra;
class Shield;

enum PlayerType {
    ptSingle = 0,  // starts at the centre
    ptLeft = 1,    // the left ship of two: slot 1, player 2 of the name entry
    ptRight = 2,   // the right ship of two: slot 0, player 1
};

// Indexes of Player::hudValues.
enum HudValue { hvSpeed = 0, hvFireRate = 1, hvLaserType = 2, hvTimeWarps = 3 };

// A ship: flies in a box near the bottom, fires a pattern that grows with its upgrades, burns
// energy for its shield, stores time warps, and loses upgrades when hit; with none left to lose
// it explodes. It stays in its engine, invisible, until the game restarts or ends.
class Player : public VantorixSprite {
public:
    explicit Player(PlayerType type);  // joins the living ships; its flame and shield join the ships engine
    ~Player() override;                // takes the flame and the shield with it

    void perform(float t) override;
    void onCollision(Sprite* other) override;

    void fire();
    void setDirection(basic_Vector2D<float> direction);  // each component -1..1; also banks the ship
    void setShield(bool on);
    void startTimeWarp();
    void addScore(unsigned int points);  // queues a bonus container each time nextBonus is passed
    void setSpeedupCount(int n);
    void setFireRateCount(int n);
    bool collectExtra(Extra* extra);  // false when it was collected before
    void hit(VantorixSprite* by);     // by an asteroid, container, foe or foe laser, or null
    void explode();
    void updateHud(bool blink);  // remembers the upgrades the HUD shows while blinking off
    void performHud(float t);    // the HUD's energy gauge and blinking, once per pass

    bool alive = true;
    ImageSprite* flame;  // owned
    Shield* shield;      // owned
    basic_Vector2D<float> direction;
    unsigned int score = 0;
    unsigned int nextBonus;
    float laserDelay;  // ms between main shots
    float laserSpeed;
    short laserType = 0;
    float speed;
    int speedUpgrades = 0;
    int fireRate = 0;
    float mainCooldown = 0.0f;  // ms
    float sideCooldown = 0.0f;  // ms
    float minX, maxX;
    norvane::gfx::AnimationReference* animation;  // its frame shows the banking; null without resources
    float energy = 0.0f;
    int timeWarps = 0;
    bool shieldHeld = false;
    // Set when the energy ran out under a raised shield: it then collapses at the faster fade rate
    // instead of lingering, solid, with nothing left to burn.
    bool shieldCollapsing = false;
    unsigned int timeWarpTimer = 0;  // ms of real time left of the warp this ship started
    bool flameChanged = false;       // the flame stutters: no upgrade left
    int hudValues[4] = {};           // by HudValue
    float hudEnergy = 0.0f;
    float hudBlinkTimer = 0.0f;  // ms to the next toggle
    int hudBlinkCount = 0;       // toggles left
    bool hudBlinkOn = false;     // off: the HUD shows hudValues, the values before the change

private:
    void dropExtra(int kind, basic_Vector2D<float> offset, basic_Vector2D<float> velocity);
    void fireLaser(norvane::gfx::Image* image, basic_Vector2D<float> offset, basic_Vector2D<float> velocity);
};

}  // namespace vantorix

#endif
