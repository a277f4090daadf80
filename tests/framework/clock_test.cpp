#include "tools/clock.h"

#include <SDL/SDL.h>
#include <gtest/gtest.h>

#include "math/random.h"

using namespace norvane;

TEST(Clock, ElapsedTicksCountFromThePreviousCall) {
    ASSERT_EQ(SDL_Init(SDL_INIT_TIMER), 0);
    getElapsedTicks();
    SDL_Delay(5);
    EXPECT_GE(getElapsedTicks(), 5u);  // a lower bound only: a busy machine may take longer
    SDL_Quit();
}

TEST(Clock, FpsIsTheRoundedAverageOverTenFrames) {
    for (int i = 0; i < 9; ++i) EXPECT_EQ(calcFPS(20), 0);
    EXPECT_EQ(calcFPS(20), 50);
    // The estimate stands until the next ten frames are in.
    for (int i = 0; i < 9; ++i) EXPECT_EQ(calcFPS(30), 50);
    EXPECT_EQ(calcFPS(30), 33);
    for (int i = 0; i < 10; ++i) calcFPS(0);
    EXPECT_EQ(calcFPS(15), 33);  // ten empty frames keep the last estimate rather than dividing by zero
}

TEST(Random, IntegersCoverTheInclusiveRangeAndNothingElse) {
    std::srand(1);
    int seen[3] = {0, 0, 0};
    for (int i = 0; i < 3000; ++i) {
        const int v = random_int(3, 5);
        ASSERT_GE(v, 3);
        ASSERT_LE(v, 5);
        ++seen[v - 3];
        ASSERT_EQ(random_int(0), 0);
        const int w = random(2);
        ASSERT_TRUE(w >= 0 && w <= 2);
    }
    for (int count : seen) EXPECT_GT(count, 800);
    for (int i = 0; i < 1000; ++i) {
        const float f = random(-2.0f, 3.0f);
        ASSERT_GE(f, -2.0f);
        ASSERT_LT(f, 3.0f);
        const float g = random(4.0f);
        ASSERT_GE(g, 0.0f);
        ASSERT_LT(g, 4.0f);
    }
}
