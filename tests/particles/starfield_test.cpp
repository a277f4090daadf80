#include "particles/starfield.h"

#include "support/window.h"

using norvane::Color;

// 5 slow green stars, an empty red class and 3 fast white ones: moved, then drawn in a real window.
TEST_F(WindowTest, StarfieldMovesEachClassAtItsSpeedAndDrawsItInItsColour) {
    norvane::particles::StarfieldProperties properties;
    properties.width = 800, properties.height = 600;
    properties.classes = {{5, 0.01f, Color(0, 1, 0)}, {0, 1.0f, Color(1, 0, 0)}, {3, 0.1f, Color(1, 1, 1)}};
    std::unique_ptr<norvane::particles::Starfield> field(properties.create());
    ASSERT_EQ(field->starCount, 8);
    for (auto& star : field->stars) star = {100, 300};
    field->stars[5] = {100, 5};  // first of the last class: the empty class takes no room
    field->speed = 2.0f;
    field->perform(50);  // 2 x 50 x 0.01, 2 x 50 x 0.1, and 5 - 10 wraps to the top
    EXPECT_EQ((std::vector<float>{field->stars[4].y, field->stars[6].y, field->stars[5].y}), (std::vector<float>{299, 290, 595}));
    field->perform(100000);  // a step longer than the whole area still lands inside it
    for (const auto& s : field->stars) EXPECT_TRUE(s.x >= 0 && s.x < 800 && s.y >= 0 && s.y <= 600) << s.x << "," << s.y;

    field->stars = {{10.5f, 590.5f}, {20.5f, 10.5f}, {30.5f, 10.5f}, {40.5f, 10.5f}, {50.5f, 10.5f},
                    {400.5f, 300.5f}, {700.5f, 50.5f}, {0.5f, 0.5f}};
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
