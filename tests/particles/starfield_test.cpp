#include "particles/starfield.h"

#include <GL/gl.h>
#include <SDL/SDL_image.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "files/sysdirs.h"
#include "rendercontext.h"
#include "screen.h"
#include "screenshot.h"
#include "support/surfaces.h"
#include "support/window.h"

using norvane::Color;
using norvane::particles::Starfield;

namespace {

// 5 grey stars, an empty red class, 3 white stars.
std::unique_ptr<Starfield> threeClasses() {
    norvane::particles::StarfieldProperties properties;
    properties.width = 800;
    properties.height = 600;
    properties.classes = {{5, 0.01f, Color(0.5f, 0.5f, 0.5f)}, {0, 1.0f, Color(1, 0, 0)}, {3, 0.1f, Color(1, 1, 1)}};
    return std::unique_ptr<Starfield>(properties.create());
}

void expectInside(const Starfield& field) {
    for (const auto& star : field.stars) {
        EXPECT_TRUE(star.x >= 0 && star.x < 800 && star.y >= 0 && star.y <= 600) << star.x << ", " << star.y;
    }
}

}  // namespace

TEST(Starfield, ClassesMoveAtTheirOwnSpeedAndReenterAtTheTop) {
    auto field = threeClasses();
    ASSERT_EQ(field->starCount, 8);
    expectInside(*field);
    for (auto& star : field->stars) star = {100, 300};
    field->stars[5] = {100, 5};  // first star of the last class: the empty class takes no room
    field->speed = 2.0f;
    field->perform(50);
    EXPECT_FLOAT_EQ(field->stars[4].y, 299.0f);  // 2 x 50 x 0.01
    EXPECT_FLOAT_EQ(field->stars[6].y, 290.0f);  // 2 x 50 x 0.1
    EXPECT_FLOAT_EQ(field->stars[5].y, 595.0f);  // 5 - 10 overshoots by 5 below the bottom
    expectInside(*field);

    field->speed = 0.0f;
    const auto before = field->stars;
    field->perform(1000);
    EXPECT_EQ(field->stars[0].y, before[0].y);
    EXPECT_EQ(field->stars[7].y, before[7].y);

    field->speed = 1.0f;
    field->perform(100000);  // a step longer than the whole area still lands inside it
    expectInside(*field);
}

TEST(Starfield, ReleasedFieldDoesNothingUntilInit) {
    auto field = threeClasses();
    field->release();
    EXPECT_EQ(field->starCount, 0);
    EXPECT_TRUE(field->stars.empty());
    field->perform(100);
    field->init();
    EXPECT_EQ(field->starCount, 8);
    field->classes[2].count = 1000;  // changed since init(): moved only as far as the stars reach
    field->perform(100);
}

TEST_F(WindowTest, StarfieldDrawsEachClassInItsColour) {
    auto field = threeClasses();
    field->classes[0].color = Color(0, 1, 0);
    field->stars = {{10.5f, 590.5f}, {20.5f, 10.5f}, {30.5f, 10.5f}, {40.5f, 10.5f}, {50.5f, 10.5f},  // green
                    {400.5f, 300.5f}, {700.5f, 50.5f}, {0.5f, 0.5f}};                             // white
    field->classes[2].count = 1000;  // changed since init(): drawn only as far as the stars reach
    norvane::RenderContext2D(norvane::basic_Vector2D<float>{800, 600}).apply();
    norvane::setClearColor(Color(0, 0, 0, 1));
    norvane::clearScreen();
    field->draw();
    field->release();
    field->draw();  // nothing left to draw
    glFinish();
    norvane::mkdirs(TEST_TMP_DIR "/");
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
