#include "particles/starfield.h"

#include <GL/gl.h>
#include <SDL/SDL_image.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <memory>

#include "files/sysdirs.h"
#include "rendercontext.h"
#include "screen.h"
#include "screenshot.h"
#include "support/surfaces.h"
#include "support/window.h"

using norvane::Color;
using norvane::particles::StarClass;
using norvane::particles::Starfield;
using norvane::particles::StarfieldProperties;

namespace {

StarfieldProperties threeClasses() {
    StarfieldProperties properties;
    properties.width = 800;
    properties.height = 600;
    properties.classes = {{5, 0.01f, Color(0.5f, 0.5f, 0.5f)}, {0, 1.0f, Color(1, 0, 0)}, {3, 0.1f, Color(1, 1, 1)}};
    return properties;
}

}  // namespace

TEST(Starfield, ScattersEveryClassInsideTheArea) {
    std::srand(3);
    std::unique_ptr<Starfield> field(threeClasses().create());
    ASSERT_EQ(field->starCount, 8);
    ASSERT_EQ(field->stars.size(), 8u);
    EXPECT_EQ(field->speed, 1.0f);
    for (const auto& star : field->stars) {
        EXPECT_GE(star.x, 0.0f);
        EXPECT_LT(star.x, 800.0f);
        EXPECT_GE(star.y, 0.0f);
        EXPECT_LT(star.y, 600.0f);
    }
}

TEST(Starfield, ClassesMoveAtTheirOwnSpeedAndReenterAtTheTop) {
    std::unique_ptr<Starfield> field(threeClasses().create());
    for (auto& star : field->stars) star = {100, 300};
    field->stars[5] = {100, 5};  // first star of the last class: the empty class takes no room
    field->speed = 2.0f;
    field->perform(50);
    EXPECT_FLOAT_EQ(field->stars[0].y, 299.0f);  // 2 x 50 x 0.01
    EXPECT_FLOAT_EQ(field->stars[4].y, 299.0f);
    EXPECT_FLOAT_EQ(field->stars[6].y, 290.0f);  // 2 x 50 x 0.1
    EXPECT_FLOAT_EQ(field->stars[5].y, 595.0f);  // 5 - 10 overshoots by 5 below the bottom
    EXPECT_GE(field->stars[5].x, 0.0f);
    EXPECT_LT(field->stars[5].x, 800.0f);

    field->speed = 0.0f;
    const auto before = field->stars;
    field->perform(1000);
    for (size_t i = 0; i < before.size(); ++i) EXPECT_EQ(field->stars[i].y, before[i].y);

    // a step longer than the whole area still lands inside it
    field->speed = 1.0f;
    field->perform(100000);
    for (const auto& star : field->stars) {
        EXPECT_GE(star.y, 0.0f);
        EXPECT_LE(star.y, 600.0f);
    }
}

TEST(Starfield, ReleasedFieldDoesNothingUntilInit) {
    std::unique_ptr<Starfield> field(threeClasses().create());
    field->release();
    EXPECT_EQ(field->starCount, 0);
    EXPECT_TRUE(field->stars.empty());
    field->perform(100);  // nothing to move, nothing to touch
    field->init();
    EXPECT_EQ(field->starCount, 8);
    field->classes[2].count = 1000;  // changed since init(): moved only as far as the stars reach
    field->perform(100);
}

TEST_F(WindowTest, StarfieldDrawsEachClassInItsColour) {
    std::unique_ptr<Starfield> field(threeClasses().create());
    field->classes[0].color = Color(0, 1, 0);
    field->stars = {{10.5f, 590.5f}, {20.5f, 10.5f}, {30.5f, 10.5f}, {40.5f, 10.5f}, {50.5f, 10.5f},  // green
                    {400.5f, 300.5f}, {700.5f, 50.5f}, {0.5f, 0.5f}};  // white
    field->classes[2].count = 1000;  // changed since init(): drawn only as far as the stars reach
    norvane::RenderContext2D context(norvane::basic_Vector2D<float>{800, 600});
    context.apply();
    norvane::setClearColor(Color(0, 0, 0, 1));
    norvane::clearScreen();
    field->draw();
    field->release();
    field->draw();  // nothing left to draw
    glFinish();
    norvane::mkdirs(TEST_TMP_DIR);
    const std::string file = std::string(TEST_TMP_DIR) + "/starfield.png";
    norvane::saveScreenshot(file.c_str());
    SurfacePtr shot(IMG_Load(file.c_str()));
    ASSERT_TRUE(shot);
    // window rows run top down, the field's y upwards
    EXPECT_TRUE(near(pixelAt(shot.get(), 10, 9), 0, 255, 0, 255)) << pixelAt(shot.get(), 10, 9);
    EXPECT_TRUE(near(pixelAt(shot.get(), 400, 299), 255, 255, 255, 255)) << pixelAt(shot.get(), 400, 299);
    EXPECT_TRUE(near(pixelAt(shot.get(), 700, 549), 255, 255, 255, 255)) << pixelAt(shot.get(), 700, 549);
    EXPECT_TRUE(near(pixelAt(shot.get(), 11, 9), 0, 0, 0, 255)) << pixelAt(shot.get(), 11, 9);
}
