#include "specs.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>

using vantorix::specs;

namespace {

// The running total goes through double and is rounded to float after every term.
double roundedSum(int n, int power) {
    float sum = 0.0f;
    for (int i = 1; i <= n; ++i) sum = static_cast<float>(sum + 1.0 / std::pow(i, power));
    return sum;
}

void expectLevel(int level) {
    SCOPED_TRACE(level);
    const auto l = static_cast<short>(level);
    const double h = roundedSum(level, 1);
    EXPECT_EQ(specs.getAsteroidInterval(level), static_cast<unsigned int>(550 - 230 * roundedSum(level, 2)));
    EXPECT_EQ(specs.getKillsForLevel(level), static_cast<unsigned int>((level - 1) * (level - 1) + 40));
    EXPECT_FLOAT_EQ(specs.getSpeedForLevel(level), 0.3 + 0.027 * level);
    EXPECT_FLOAT_EQ(specs.getLaserDelay(l), 500 - 120 * h);
    EXPECT_FLOAT_EQ(specs.getLaserSpeed(l), 0.5 + 0.13 * h);
    EXPECT_FLOAT_EQ(specs.getChanceLargeAsteroid(l), level < 4 ? 0 : 0.07 * (level - 3));
    EXPECT_FLOAT_EQ(specs.getChanceAsteroidEnergy(l), level <= 5 ? 0 : 0.3 * roundedSum(level - 5, 1));
    EXPECT_EQ(specs.getMaxAsteroidEnergy(l), level < 5 ? 0 : std::min(level - 3, 10));
    EXPECT_EQ(specs.getFoeFireDelay(l), static_cast<int>(3000 - 400 * h));
    EXPECT_EQ(specs.getFoeVolleyDelay(l), static_cast<int>(1500 - 400 * h));  // below 0 from level 24
    EXPECT_EQ(specs.getFoeFloorChance(l), std::max(1500 - 20 * level, 200));
    EXPECT_EQ(specs.getFoeKamikazeChance(l), std::max(1500 - 20 * level, 200));
}

}  // namespace

TEST(Specs, LevelTablesMatchTheirFormulasInAnyCallOrder) {
    // Up, down, then each level twice: a remembered result must never answer another level.
    // Level 0 gives the values without upgrades.
    for (int level = 0; level <= 30; ++level) expectLevel(level);
    for (int level = 30; level >= 0; --level) expectLevel(level), expectLevel(level);
    // A sum kept in double would give 2020 and 520.
    EXPECT_EQ(specs.getFoeFireDelay(6), 2019);
    EXPECT_EQ(specs.getFoeVolleyDelay(6), 519);
    EXPECT_EQ(specs.getFoeFloorChance(100), 200);
    for (float speed : {0.1f, 0.25f, 0.3f, 0.4f, 0.5f, 1.0f}) {
        EXPECT_EQ(specs.speedupInterval(speed), static_cast<unsigned int>(75 * std::pow(4.0 * speed, 3)) + 25) << speed;
    }
}

// Many draws stay within [lo, hi] and come within 2 % of both ends (integer ranges: onto them).
template <typename Draw>
void expectRange(Draw draw, double lo, double hi) {
    double least = draw(), most = least;
    for (int i = 0; i < 3000; ++i) {
        const double value = draw();
        least = std::min(least, value), most = std::max(most, value);
    }
    const double slack = 0.02 * (hi - lo);
    EXPECT_TRUE(least >= lo && least <= lo + slack && most <= hi && most >= hi - slack) << least << " " << most;
}

TEST(Specs, RandomValuesStayInTheirRangesAndReachTheirEnds) {
    std::srand(7);
    for (short level = 1; level <= 30; ++level) {
        SCOPED_TRACE(level);
        const float speed = specs.getSpeedForLevel(level);
        expectRange([&] { return specs.getFoeHull(level); }, 50, level < 4 ? 50 : level * 10 + 10);
        expectRange([&] { return specs.getFoeVolleyCount(level); }, 0, level < 5 ? 0 : (level - 5) / 2);
        expectRange([&] { return specs.getFoeLaserTtl(level); }, 400, std::min(400 + level * 70, 1500));
        expectRange([&] { return specs.getFoeFloorDuration(level); }, 0, level * 1000);
        expectRange([&] { return specs.getFoeAcceleration(level); }, 0.002f, 0.004f);
        expectRange([&] { return specs.getFoeDistanceSpeedFactor(level); }, 5.0f, 5.0f + 2.0f * level);
        expectRange([&] { return specs.getAsteroidVelocity(speed).x; }, -0.5f * speed, 0.5f * speed);
        expectRange([&] { return specs.getAsteroidVelocity(speed).y; }, -speed, -0.03f);
    }
}
