#include "particles/starfield.h"

#include <gtest/gtest.h>

#include <memory>

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
    EXPECT_EQ((std::vector<float>{field->stars[4].y, field->stars[6].y, field->stars[5].y}),
              (std::vector<float>{299.0f, 290.0f, 595.0f}));  // 2 x 50 x 0.01, 2 x 50 x 0.1, 5 - 10 from the top
    field->speed = 0.0f;
    field->perform(1000);
    EXPECT_EQ(field->stars[0].y, 299.0f);
    field->speed = 1.0f;
    field->perform(100000);  // a step longer than the whole area still lands inside it
    expectInside(*field);
    field->release();
    EXPECT_EQ(field->starCount, 0);
    field->perform(100);  // released: nothing to move until init
    field->init();
    EXPECT_EQ(field->starCount, 8);
}

TEST_F(WindowTest, StarfieldDrawsEachClassInItsColour) {
    auto field = threeClasses();
    field->classes[0].color = Color(0, 1, 0);
    field->stars = {{10.5f, 590.5f}, {20.5f, 10.5f}, {30.5f, 10.5f}, {40.5f, 10.5f}, {50.5f, 10.5f},  // green
                    {400.5f, 300.5f}, {700.5f, 50.5f}, {0.5f, 0.5f}};                             // white
    field->classes[2].count = 1000;  // changed since init(): used only as far as the stars reach
    field->perform(0);
    begin2D(Color(0, 0, 0, 1));
    field->draw();
    field->release();
    field->draw();  // nothing left to draw
    SurfacePtr shot = screenshot("starfield.png");
    ASSERT_TRUE(shot);
    for (const auto& [x, y, c] : {std::tuple{10, 590, 0}, {400, 300, 255}, {700, 50, 255}, {11, 590, -1}}) {
        const Rgba got = up(shot.get(), x, y);
        EXPECT_TRUE(c < 0 ? near(got, 0, 0, 0, 255) : near(got, c, 255, c, 255)) << x << "," << y << ": " << got;
    }
}
