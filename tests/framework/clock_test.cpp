#include "tools/clock.h"

#include <SDL/SDL.h>
#include <gtest/gtest.h>

#include "math/random.h"

using namespace norvane;

TEST(Clock, FpsIsTheRoundedAverageOverTenFramesAndRandomIntegersCoverTheirRange) {
    for (int i = 0; i < 9; ++i) EXPECT_EQ(calcFPS(20), 0);
    EXPECT_EQ(calcFPS(20), 50);
    for (int i = 0; i < 9; ++i) EXPECT_EQ(calcFPS(30), 50);  // stands until the next ten are in
    EXPECT_EQ(calcFPS(30), 33);
    for (int i = 0; i < 10; ++i) calcFPS(0);
    EXPECT_EQ(calcFPS(15), 33);  // ten empty frames keep the estimate rather than divide by zero

    ASSERT_EQ(SDL_Init(SDL_INIT_TIMER), 0);
    getElapsedTicks();
    SDL_Delay(5);
    EXPECT_GE(getElapsedTicks(), 5u);  // a lower bound only: a busy machine may take longer
    SDL_Quit();

    std::srand(1);
    int seen[3] = {0, 0, 0};
    for (int i = 0; i < 3000; ++i) {
        const int v = random_int(3, 5);
        ASSERT_TRUE(v >= 3 && v <= 5) << v;
        ++seen[v - 3];
        ASSERT_EQ(random_int(0), 0);
        const float f = random(-2.0f, 3.0f);
        ASSERT_TRUE(f >= -2.0f && f < 3.0f) << f;
    }
    for (int count : seen) EXPECT_GT(count, 800);
}
