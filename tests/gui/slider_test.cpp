#include "gui/slider.h"

#include "gui/loaded.h"

using namespace norvane;
using namespace norvane::gui;

struct Sliders : LoadedGui {
    void SetUp() override {
        ASSERT_NE(load("<Slider_int name=\"volume\" x=\"100\" y=\"100\" width=\"200\" height=\"20\" min=\"0\" max=\"10\""
                       " value=\"10\" stepLarge=\"3\" trigger=\"menu.t1\" buttonsBefore=\"both\" buttonsAfter=\"both\"/>"
                       "<Slider_float name=\"level\" x=\"100\" y=\"200\" width=\"20\" height=\"200\" orientation=\"vertical\""
                       " size=\"-40\" min=\"0\" max=\"1\" stepSmall=\"0.25\" trigger=\"menu.t2\"/>"
                       "<Slider_int name=\"bad\" orientation=\"diagonal\" min=\"x\" value=\"abc\" buttonsBefore=\"some\"/>"),
                  nullptr);
        volume = get<Slider<int>>("volume"), level = get<Slider<float>>("level");
    }
    float x(const char* child) { return (*volume)[child]->getPos().x; }

    Slider<int>* volume;
    Slider<float>* level;
};

TEST_F(Sliders, StepButtonsFrameTheBarAndTheHandleTravelsWhatIsLeft) {
    const basic_Rect<float> bar = volume->getBar();
    EXPECT_EQ((std::vector<float>{bar.x, bar.width, x("bDecBefore"), x("bIncBefore"), x("bDecAfter"), x("bIncAfter")}),
              (std::vector<float>{40, 120, 0, 20, 160, 180}));
    volume->setButtonsBefore(BUTTONS_NONE), volume->setButtonsAfter(BUTTONS_NONE);
    volume->setDimensions(basic_Rect<float>{0, 0, 160, 20});
    volume->setValue(5);
    const basic_Rect<float> quarter = volume->getHandle();  // a quarter of 160, travelling 120
    volume->setHandleSize(-30);
    const basic_Rect<float> fixed = volume->getHandle();
    volume->setRange(4, 4);  // an empty range: the handle stays at the start
    EXPECT_EQ((std::vector<float>{quarter.width, quarter.x, fixed.width, fixed.x, volume->getHandle().x}),
              (std::vector<float>{40, 60, 30, 65, 0}));
    EXPECT_EQ(level->getHandle().height + level->getHandle().y, 40);  // vertical: the bar runs upward
    // Undecodable attributes are reported and leave the fields.
    EXPECT_TRUE(get<Slider<int>>("bad")->getValue() == 0 && !(*get<Slider<int>>("bad"))["bDecBefore"]);
    EXPECT_NE(log.find("Could not decode value for Slider.orientation: \"diagonal\"."), std::string::npos) << log;
}

TEST_F(Sliders, KeysJoystickWheelAndButtonsChangeTheValueAndAlwaysQueueTheTrigger) {
    volume->setFocused(true);
    for (const auto& [sym, value] : {std::pair{SDLK_RIGHT, 10} /* at the top already: still queued */, {SDLK_HOME, 0},
                                     {SDLK_PAGEUP, 3}, {SDLK_LEFT, 2}, {SDLK_END, 10}, {SDLK_PAGEDOWN, 7}}) {
        send(keyEvent(sym, true));
        EXPECT_EQ(volume->getValue(), value) << sym;
    }
    send(joyAxisEvent(0, 0, -30000));
    EXPECT_TRUE(volume->getValue() == 6 && behind.seen.empty());  // all used
    EXPECT_EQ(fired(), Codes(7, 1));
    volume->setValue(5);  // handle 30 long at 40 + 90 * 0.5 = 85
    click(volume, true, 50, 5);  // before the handle
    EXPECT_EQ(volume->getValue(), 2);
    click(volume, true, 150, 5);  // after it
    for (Uint8 wheel : {SDL_BUTTON_WHEELUP, SDL_BUTTON_WHEELUP, SDL_BUTTON_WHEELDOWN}) click(volume, true, 100, 5, wheel);
    EXPECT_EQ(volume->getValue(), 6);
    key(SDLK_UP);  // across a horizontal slider the arrows navigate, here wrapping to the last row
    EXPECT_TRUE(gui->getFocused() == gui->getChildren()[2] && fired().empty());

    level->setFocused(true);
    for (SDLKey sym : {SDLK_UP, SDLK_UP, SDLK_DOWN}) key(sym);
    EXPECT_FLOAT_EQ(level->getValue(), 0.25f);
    // A vertical slider takes axis 1 and passes axis 0 on to navigation.
    for (auto [axis, value] : {std::pair{1, 30000}, {1, 0}, {0, 30000}}) send(joyAxisEvent(0, axis, value));
    EXPECT_TRUE(level->getValue() == 0.5f && fired() == (Codes{2, 2, 2, 2}));

    // Step buttons are ordinary buttons; Tab walks into them and comes back to the slider.
    for (const char* button : {"bDecBefore", "bIncAfter", "bIncAfter"}) (*volume)[button]->setFocused(true), key(SDLK_SPACE, ' ');
    EXPECT_TRUE(volume->getValue() == 7 && callback.confirms == 3 && fired().empty());
    key(SDLK_TAB, '\t');
    EXPECT_EQ(gui->getFocused(), volume);
}

TEST_F(Sliders, DraggingMapsTheHandlePositionIntoTheRange) {
    level->setFocused(true);
    // The handle is 40 high on a 200 bar: 160 of travel. Grab it 10 above its bottom.
    click(level, true, 10, 10);
    EXPECT_EQ(gui->getMouseCaptured(), level);
    // Dragging needs the cursor: motion reaches the captured slider only with one.
    level->mouseDown(&q, {10, 10}, 1);
    level->mouseMove(&q, {10, 90});  // handle bottom at 80: half way
    EXPECT_FLOAT_EQ(level->getValue(), 0.5f);
    level->mouseMove(&q, {10, 500});
    send(mouseButtonEvent(1, false, 0, 0));
    level->mouseMove(&q, {10, 10});  // no longer dragging
    EXPECT_TRUE(level->getValue() == 1.0f && !gui->getMouseCaptured());
    volume->setRange(0, 3);
    volume->setValue(0);
    volume->setButtonsBefore(BUTTONS_NONE), volume->setButtonsAfter(BUTTONS_NONE);  // bar 200, handle 50, travel 150
    volume->mouseDown(&q, {10, 5}, 1);
    volume->mouseMove(&q, {85, 5});  // half way: 1.5 truncates to 1
    EXPECT_EQ(volume->getValue(), 1);
    volume->mouseMove(&q, {-500, 5});
    EXPECT_TRUE(volume->getValue() == 0 && fired().empty());
}
