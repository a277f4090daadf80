#include "gui/slider.h"

#include <gtest/gtest.h>

#include "gui/loaded.h"

using namespace norvane;
using namespace norvane::gui;
using namespace probe;

namespace {

class Sliders : public loaded::LoadedGui {
protected:
    void SetUp() override {
        ASSERT_NE(load("<Slider_int name=\"volume\" x=\"100\" y=\"100\" width=\"200\" height=\"20\""
                       "            min=\"0\" max=\"10\" value=\"10\" stepLarge=\"3\" trigger=\"menu.t1\""
                       "            buttonsBefore=\"both\" buttonsAfter=\"both\"/>"
                       "<Slider_float name=\"level\" x=\"100\" y=\"200\" width=\"20\" height=\"200\""
                       "              orientation=\"vertical\" size=\"-40\" min=\"0\" max=\"1\" stepSmall=\"0.25\""
                       "              trigger=\"menu.t2\"/>"
                       "<Slider_int name=\"bad\" orientation=\"diagonal\" min=\"x\" value=\"abc\""
                       "            buttonsBefore=\"some\"/>"),
                  nullptr);
        volume = get<Slider<int>>("volume");
        level = get<Slider<float>>("level");
    }
    // Mouse button `b` at (dx, dy) inside slider `s`.
    void click(Uint8 type, const Component* s, float dx, float dy, Uint8 b = 1) {
        send(mouseButtonEvent(type, b, Uint16(s->getPos().x + dx), Uint16(480 - (s->getPos().y + dy))));
    }

    Slider<int>* volume;
    Slider<float>* level;
};

}  // namespace

TEST_F(Sliders, StepButtonsFrameTheBarAndTheHandleTravelsWhatIsLeft) {
    const basic_Rect<float> bar = volume->getBar();
    EXPECT_FLOAT_EQ(bar.x, 40);
    EXPECT_FLOAT_EQ(bar.width, 120);
    std::vector<float> xs;
    for (const char* name : {"bDecBefore", "bIncBefore", "bDecAfter", "bIncAfter"}) {
        xs.push_back((*volume)[name]->getPos().x);
    }
    EXPECT_EQ(xs, (std::vector<float>{0, 20, 160, 180}));
    EXPECT_EQ(dynamic_cast<Button*>((*volume)["bDecAfter"])->getCaption(), "<");

    volume->setButtonsBefore(BUTTONS_NONE);
    volume->setButtonsAfter(BUTTONS_NONE);
    EXPECT_EQ((*volume)["bDecBefore"], nullptr);
    EXPECT_FLOAT_EQ(volume->getBar().width, 200);
    volume->setDimensions(basic_Rect<float>{0, 0, 160, 20});
    volume->setValue(5);
    basic_Rect<float> handle = volume->getHandle();  // a quarter of 160, travelling 120
    EXPECT_FLOAT_EQ(handle.width, 40);
    EXPECT_FLOAT_EQ(handle.x, 60);
    volume->setHandleSize(-30);
    EXPECT_FLOAT_EQ(volume->getHandle().width, 30);
    EXPECT_FLOAT_EQ(volume->getHandle().x, 65);
    volume->setRange(4, 4);  // an empty range: the handle stays at the start
    EXPECT_FLOAT_EQ(volume->getHandle().x, 0);

    handle = level->getHandle();  // vertical: the bar runs upward
    EXPECT_FLOAT_EQ(handle.height, 40);
    EXPECT_FLOAT_EQ(handle.y, 0);
}

TEST_F(Sliders, KeysAndJoystickChangeTheValueAndAlwaysQueueTheTrigger) {
    volume->setFocused(true);
    key(SDLK_RIGHT);  // at the top already: still queued
    EXPECT_EQ(volume->getValue(), 10);
    key(SDLK_HOME);
    EXPECT_EQ(volume->getValue(), 0);
    key(SDLK_PAGEUP);
    EXPECT_EQ(volume->getValue(), 3);
    key(SDLK_LEFT);
    EXPECT_EQ(volume->getValue(), 2);
    key(SDLK_END);
    EXPECT_EQ(volume->getValue(), 10);
    send(joyAxisEvent(0, 0, -30000));
    EXPECT_EQ(volume->getValue(), 9);
    EXPECT_EQ(fired(), (std::vector<int>{1, 1, 1, 1, 1, 1}));
    key(SDLK_UP);  // across a horizontal slider the arrows navigate
    EXPECT_EQ(gui->getFocused(), gui->getChildren()[2]);  // wrapped to the last row
    EXPECT_TRUE(fired().empty());

    level->setFocused(true);
    key(SDLK_UP);
    key(SDLK_UP);
    key(SDLK_DOWN);
    EXPECT_FLOAT_EQ(level->getValue(), 0.25f);
    send(joyAxisEvent(0, 1, 30000));  // a vertical slider takes axis 1
    send(joyAxisEvent(0, 1, 0));
    EXPECT_FLOAT_EQ(level->getValue(), 0.5f);
    send(joyAxisEvent(0, 0, 30000));  // and passes axis 0 on to navigation
    EXPECT_FLOAT_EQ(level->getValue(), 0.5f);
    EXPECT_EQ(fired(), (std::vector<int>{2, 2, 2, 2}));
}

TEST_F(Sliders, MouseClicksBesideTheHandleWheelDragAndStepButtonsQueueNothing) {
    volume->setValue(5);  // handle 30 long at 40 + 90 * 0.5 = 85
    volume->setFocused(true);
    click(SDL_MOUSEBUTTONDOWN, volume, 50, 5);  // before the handle
    EXPECT_EQ(volume->getValue(), 2);
    click(SDL_MOUSEBUTTONDOWN, volume, 150, 5);  // after it
    EXPECT_EQ(volume->getValue(), 5);
    click(SDL_MOUSEBUTTONDOWN, volume, 100, 5, SDL_BUTTON_WHEELUP);
    click(SDL_MOUSEBUTTONDOWN, volume, 100, 5, SDL_BUTTON_WHEELUP);
    click(SDL_MOUSEBUTTONDOWN, volume, 100, 5, SDL_BUTTON_WHEELDOWN);
    EXPECT_EQ(volume->getValue(), 6);

    auto* dec = dynamic_cast<Button*>((*volume)["bDecBefore"]);
    dec->setFocused(true);
    key(SDLK_SPACE, ' ');
    EXPECT_EQ(volume->getValue(), 5);
    EXPECT_EQ(callback.confirms, 1);  // step buttons are ordinary buttons
    EXPECT_TRUE(fired().empty());

    // Tab walks into the step buttons and comes back to the slider.
    volume->setFocused(true);
    std::vector<std::string> order;
    for (int i = 0; i < 5; ++i) {
        key(SDLK_TAB, '\t');
        order.push_back(gui->getFocused()->getName());
    }
    EXPECT_EQ(order, (std::vector<std::string>{"bDecBefore", "bIncBefore", "bDecAfter", "bIncAfter", "volume"}));
}

TEST_F(Sliders, DraggingMapsTheHandlePositionIntoTheRange) {
    level->setFocused(true);
    // The handle is 40 high on a 200 bar: 160 of travel. Grab it 10 above its bottom.
    click(SDL_MOUSEBUTTONDOWN, level, 10, 10);
    EXPECT_EQ(gui->getMouseCaptured(), level);
    send(mouseButtonEvent(SDL_MOUSEBUTTONUP, 1, 0, 0));
    EXPECT_EQ(gui->getMouseCaptured(), nullptr);

    // Dragging needs the cursor: motion reaches the captured slider only with one.
    level->mouseDown(&q, {10, 10}, 1);
    level->mouseMove(&q, {10, 90});  // handle bottom at 80: half way
    EXPECT_FLOAT_EQ(level->getValue(), 0.5f);
    level->mouseMove(&q, {10, 500});
    EXPECT_FLOAT_EQ(level->getValue(), 1.0f);
    level->mouseUp(&q, {0, 0}, 1);
    level->mouseMove(&q, {10, 10});  // no longer dragging
    EXPECT_FLOAT_EQ(level->getValue(), 1.0f);

    volume->setRange(0, 3);
    volume->setValue(0);
    volume->setButtonsBefore(BUTTONS_NONE);
    volume->setButtonsAfter(BUTTONS_NONE);  // bar 200, handle 50, travel 150
    volume->mouseDown(&q, {10, 5}, 1);
    volume->mouseMove(&q, {85, 5});  // half way: 1.5 truncates to 1
    EXPECT_EQ(volume->getValue(), 1);
    volume->mouseMove(&q, {-500, 5});
    EXPECT_EQ(volume->getValue(), 0);
    EXPECT_TRUE(fired().empty());
}

TEST_F(Sliders, UndecodableAttributesAreReportedAndLeaveTheFields) {
    auto* bad = get<Slider<int>>("bad");
    ASSERT_NE(bad, nullptr);
    EXPECT_EQ(bad->getValue(), 0);
    EXPECT_EQ((*bad)["bDecBefore"], nullptr);
    for (const char* line : {"Could not decode value for Slider.orientation: \"diagonal\".",
                             "Could not decode value for Slider.min: \"x\".",
                             "Could not decode value for Slider.value: \"abc\".",
                             "Could not decode value for Slider.buttonsBefore: \"some\"."}) {
        EXPECT_NE(log.find(line), std::string::npos) << line << "\n" << log;
    }
    EXPECT_THROW(strTo<Orientation>("Horizontal"), std::string);
    EXPECT_EQ(strTo<SliderButtons>("inc"), BUTTONS_INC);
}
