#ifndef VANTORIX_SPECS_H
#define VANTORIX_SPECS_H

#include "gfx/color.h"
#include "math/geometry.h"

namespace vantorix {

// Every tuning number of the game, and the values that follow from the level or the upgrades.
// Times are in ms, positions in the 800 x 600 game space, speeds in units/ms.
class Specs {
public:
    unsigned int maxFrameTime = 100;
    unsigned int minFrameTime = 10;
    unsigned int minFrameTimeOffset = 0;
    float playerMinX = 20.0f;  // the right limit is the screen width minus this
    float playerStartY = -50.0f;
    float playerMinY = 50.0f;
    float playerRangeY = 500.0f;
    float playerRangeYModeB = 500.0f;
    int playerGapX = 90;  // two ships may not be closer than this horizontally and playerGapY vertically
    int playerGapY = 75;
    float verticalInputFactor = 0.8f;
    float containerSpeed = 0.2f;
    float playerBaseSpeed = 0.35f;
    float playerSpeedPerUpgrade = 0.04f;
    int energyExtraMinUpgrade = 1;  // compared with the ship's smallest upgrade level
    int timeWarpExtraMinUpgrade = 2;
    float fragmentSpeed = 0.2f;
    unsigned int starCount = 1500;
    float starfieldFactor = 0.8f;
    int maxSpeedUpgrades = 5;
    int maxFireRate = 5;
    int maxLaserType = 4;
    float containerSpeedFactor = 1.0f;
    float extraFallFactor = 0.7f;
    float extraFadeRate = 0.003f;  // fraction of colour and opacity lost per ms
    int neutralFrame = 5;
    float energyPerExtra = 2500.0f;
    float maxEnergy = 15000.0f;
    int maxTimeWarps = 2;
    float shieldFadeIn = 0.01f;  // opacity per ms
    float shieldFadeOut = 0.001f;
    float shieldBreakFade = 0.02f;
    float timeWarpSpeed = 0.4f;  // game speed
    float timeWarpSlowRate = 0.001f;  // game speed per ms
    float timeWarpRecoverRate = 0.001f;
    unsigned int timeWarpDuration = 7000;
    unsigned int bonusScore = 5000;
    float idleStarfieldSpeed = 0.03f;
    float starfieldSpeedRate = 0.0002f;
    float lostExtraSpeed = 0.3f;
    unsigned int modeBCrystalInterval = 5000;
    unsigned int modeBExtraInterval = 10000;
    unsigned int modeBStepScore = 1;
    float modeBStepSpeed = 0.001f;
    unsigned int modeBStepInterval = 1;
    unsigned int modeBMinInterval = 80;
    float modeBChanceLarge = 0.05f;
    unsigned int lostExtraDelay = 200;
    unsigned int extraLimitReduction = 0;
    float asteroidAimHeight = 200.0f;
    float hudBlinkInterval = 250.0f;
    int hudBlinkCount = 10;
    float shieldEnergyUse = 2.0f;  // per ms
    float gameOverDelay = 2000.0f;
    unsigned int crystalScore = 500;
    unsigned int foeScore = 1500;
    unsigned int smallAsteroidScore = 50;
    unsigned int largeAsteroidScore = 100;
    unsigned int stageBonus = 5000;
    unsigned int foeStartLevel = 3;
    float foeSpeed = 0.3f;
    float foeLaserSpeed = 0.4f;
    float foeLaserVerticalFactor = 0.4f;
    float foeHoverHeight = 450.0f;
    float foeFloorHeight = 60.0f;
    float foeLaserFadeRate = 0.005f;
    float modeBStartSpeed = 0.4f;
    unsigned int modeBStartInterval = 400;
    unsigned int menuIdleTime = 30000;
    unsigned int highscorePageTime = 20000;
    unsigned int helpPageTime = 60000;
    norvane::basic_Vector2D<float> hudPosition1{740.0f, 540.0f};
    norvane::basic_Vector2D<float> hudPosition2{740.0f, 540.0f};
    norvane::Color hudDimColor{0.25f, 0.25f, 0.25f, 1.0f};
    norvane::Color hudLightColor{0.75f, 0.75f, 0.75f, 1.0f};

    // `level` is the stage number from 1, `n` an upgrade count from 0.
    unsigned int getAsteroidInterval(unsigned int level) const;  // ms
    float getSpeedForLevel(unsigned int level) const;
    unsigned int getKillsForLevel(unsigned int level) const;
    unsigned int speedupInterval(float speed) const;  // ms, mode B
    float getLaserDelay(short n) const;               // ms
    float getLaserSpeed(short n) const;
    float getChanceLargeAsteroid(short level) const;
    float getChanceAsteroidEnergy(short level) const;
    int getMaxAsteroidEnergy(short level) const;
    int getFoeFireDelay(short level) const;  // ms
    int getFoeVolleyCount(short level) const;
    int getFoeVolleyDelay(short level) const;  // ms
    int getFoeHull(short level) const;
    int getFoeLaserTtl(short level) const;  // ms
    int getFoeFloorChance(short level) const;     // one in N per pass
    int getFoeFloorDuration(short level) const;   // ms
    int getFoeKamikazeChance(short level) const;  // one in N per pass
    float getFoeAcceleration(short level) const;
    float getFoeDistanceSpeedFactor(short level) const;
    norvane::basic_Vector2D<float> getAsteroidVelocity(float speed) const;
};

extern const Specs specs;

}  // namespace vantorix

#endif
