#include "specs.h"

#include <algorithm>

#include "math/random.h"

namespace vantorix {

const Specs specs;

namespace {

// The last argument and result of one operation; callers ask for the same level many times a stage.
template <typename Arg, typename Result>
struct LastCall {
    bool isSet = false;
    Arg lastLevel{};
    Result result{};

    bool has(Arg level) const { return isSet && lastLevel == level; }
    Result remember(Arg level, Result value) {
        isSet = true;
        lastLevel = level;
        result = value;
        return value;
    }
};

// 1 + 1/2 + ... + 1/n with the running total in single precision, as the tables were tuned; the
// formulas around it work in double.
float harmonic(int n) {
    float sum = 0.0f;
    for (int i = 1; i <= n; ++i) sum += 1.0f / static_cast<float>(i);
    return sum;
}

}  // namespace

unsigned int Specs::getAsteroidInterval(unsigned int level) const {
    static LastCall<unsigned int, unsigned int> lastInterval;
    if (lastInterval.has(level)) return lastInterval.result;
    if (level == 0) return lastInterval.remember(level, 550);
    float sum = 0.0f;
    for (unsigned int i = 1; i <= level; ++i) sum += 1.0f / static_cast<float>(i * i);
    return lastInterval.remember(level, static_cast<unsigned int>(550.0 - 230.0 * sum));
}

float Specs::getSpeedForLevel(unsigned int level) const { return static_cast<float>(level * 0.027 + 0.3); }

unsigned int Specs::getKillsForLevel(unsigned int level) const { return (level - 1) * (level - 1) + 40; }

unsigned int Specs::speedupInterval(float speed) const {
    const float base = 4.0f * speed;
    return static_cast<unsigned int>(75.0f * base * base * base) + 25;
}

float Specs::getLaserDelay(short n) const {
    static LastCall<short, float> lastDelay;
    if (lastDelay.has(n)) return lastDelay.result;
    return lastDelay.remember(n, n <= 0 ? 500.0f : static_cast<float>(500.0 - 120.0 * harmonic(n)));
}

float Specs::getLaserSpeed(short n) const {
    static LastCall<short, float> lastSpeed;
    if (lastSpeed.has(n)) return lastSpeed.result;
    return lastSpeed.remember(n, n <= 0 ? 0.5f : static_cast<float>(0.5 + 0.13 * harmonic(n)));
}

float Specs::getChanceLargeAsteroid(short level) const {
    return level < 4 ? 0.0f : static_cast<float>((level - 3) * 0.07);
}

float Specs::getChanceAsteroidEnergy(short level) const {
    static LastCall<short, float> lastChance;
    if (lastChance.has(level)) return lastChance.result;
    return lastChance.remember(level, level <= 5 ? 0.0f : static_cast<float>(0.3 * harmonic(level - 5)));
}

int Specs::getMaxAsteroidEnergy(short level) const { return level < 5 ? 0 : std::min(level - 3, 10); }

int Specs::getFoeFireDelay(short level) const {
    static LastCall<short, int> lastDelay;
    if (lastDelay.has(level)) return lastDelay.result;
    return lastDelay.remember(level, level <= 0 ? 3000 : static_cast<int>(3000.0 - 400.0 * harmonic(level)));
}

int Specs::getFoeVolleyCount(short level) const { return level < 5 ? 0 : norvane::random_int((level - 5) / 2); }

int Specs::getFoeVolleyDelay(short level) const {
    static LastCall<short, int> lastDelay;
    if (lastDelay.has(level)) return lastDelay.result;
    return lastDelay.remember(level, level <= 0 ? 1500 : static_cast<int>(1500.0 - 400.0 * harmonic(level)));
}

int Specs::getFoeHull(short level) const { return level < 4 ? 50 : 50 + norvane::random_int(level * 10 - 40); }

int Specs::getFoeLaserTtl(short level) const { return std::min(400 + norvane::random_int(level * 70), 1500); }

int Specs::getFoeFloorChance(short level) const { return std::max(1500 - 20 * level, 200); }

int Specs::getFoeFloorDuration(short level) const { return norvane::random_int(level * 1000); }

int Specs::getFoeKamikazeChance(short level) const { return std::max(1500 - 20 * level, 200); }

float Specs::getFoeAcceleration(short) const { return 0.002f + norvane::random(0.002f); }

float Specs::getFoeDistanceSpeedFactor(short level) const { return 5.0f + norvane::random(1.0f) * 2.0f * level; }

norvane::basic_Vector2D<float> Specs::getAsteroidVelocity(float speed) const {
    const float x = norvane::random(speed) - 0.5f * speed;
    const float y = -(0.03f + norvane::random(speed - 0.03f));
    return {x, y};
}

}  // namespace vantorix
