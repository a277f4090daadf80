#include "controls/translators.h"

#include <gtest/gtest.h>

#include "controls/inputevaluator.h"
#include "support/events.h"

using namespace norvane;

namespace {

class Translation : public ::testing::Test {
protected:
    bool press(SDLKey key, bool down) { return evaluator.evaluate(keyEvent(key, down), &q); }

    InputEvaluator evaluator;
    ControlQueue q;
};

}  // namespace

TEST_F(Translation, PressedBindingsHoldUntilTheirOwnReleaseAndEdgesQueueOnce) {
    // Left and right on one axis: releasing left after pressing right must not stop the ship.
    Trigger* x = new Trigger(&evaluator, 1, "x", "", ksPressed);
    new KeyTranslator(x, SDLK_LEFT, ksDefault, -1.0f);
    new KeyTranslator(x, SDLK_RIGHT, ksDefault, 1.0f);
    EXPECT_TRUE(press(SDLK_LEFT, true));
    EXPECT_EQ(x->value, -1.0f);
    press(SDLK_RIGHT, true);
    press(SDLK_LEFT, false);
    EXPECT_EQ(x->value, 1.0f);
    EXPECT_TRUE(q.isEmpty());  // held triggers are queued by perform, not by the press
    press(SDLK_RIGHT, false);
    EXPECT_EQ(x->value, 0.0f);
    EXPECT_EQ(drain(q), (std::vector<Trigger*>{x}));  // the release, once
    EXPECT_TRUE(evaluator.pressedTriggers.empty());

    Trigger* menu = new Trigger(&evaluator, 3, "menu", "", ksUp);
    auto* early = new KeyTranslator(menu, SDLK_ESCAPE, ksDefault, 2.0f);
    menu->defaultKeyState = ksDown;  // reaches bindings built later only
    Trigger* axis = new Trigger(&evaluator, 4, "axis", "", 1.0f);
    new KeyTranslator(axis, SDLK_a, ksDown, 0.5f);
    EXPECT_EQ(early->state, ksUp);
    EXPECT_FALSE(press(SDLK_ESCAPE, true));
    EXPECT_TRUE(press(SDLK_ESCAPE, false));
    EXPECT_EQ(menu->value, 2.0f);  // and stays so
    EXPECT_TRUE(press(SDLK_a, true));
    EXPECT_EQ(axis->value, 0.5f);
    EXPECT_EQ(drain(q), (std::vector<Trigger*>{menu}));  // the analog trigger is not queued
    menu->defaultKeyState = ksDefault;  // a binding left in "default" never fires
    new KeyTranslator(menu, SDLK_b, ksDefault, 1.0f);
    EXPECT_FALSE(press(SDLK_b, true));
}

TEST_F(Translation, AxesScaleBetweenDeadZoneAndSaturation) {
    Trigger* analog = new Trigger(&evaluator, 1, "y", "", 1.0f);
    auto* up = new JoyAxisTranslator(analog, 0, 1, +1, 4000, 30000);
    const struct {
        Sint16 v;
        bool consumed;
        float value;
    } cases[] = {{2000, true, 0.0f}, {17000, true, 0.5f}, {32767, true, 1.0f}, {-20000, false, 1.0f}, {0, true, 0.0f}};
    for (const auto& c : cases) {
        EXPECT_EQ(up->translate(joyAxisEvent(0, 1, c.v), &q), c.consumed) << c.v;
        EXPECT_FLOAT_EQ(analog->value, c.value) << c.v;
    }
    // The lower half's binding is told of the centred stick too, or its value would stay.
    auto* down = new JoyAxisTranslator(analog, 0, 1, -1, 4000, 30000);
    EXPECT_FALSE(down->translate(joyAxisEvent(0, 1, 20000), &q));
    EXPECT_TRUE(down->translate(joyAxisEvent(0, 1, -20000), &q) && down->translate(joyAxisEvent(0, 1, 0), &q));
    EXPECT_EQ(analog->value, 0.0f);
    EXPECT_TRUE(q.isEmpty());

    // A digital trigger only asks whether the dead zone is left, in either direction.
    Trigger* digital = new Trigger(&evaluator, 2, "fire", "", ksDown);
    auto* stick = new JoyAxisTranslator(digital, 0, 1, +1, 4000, 30000);
    for (Sint16 v : {-20000, -20000, 3000}) stick->translate(joyAxisEvent(0, 1, v), &q);  // the repeat is no change
    EXPECT_EQ(drain(q), (std::vector<Trigger*>{digital, digital}));

    Trigger* mouseY = new Trigger(&evaluator, 3, "mouseY", "", 2.0f);
    new MouseAxisTranslator(mouseY, 1, 0, 0, 10);
    EXPECT_TRUE(evaluator.evaluate(mouseMotionEvent(0, 0, 30, -5), &q));
    EXPECT_FLOAT_EQ(mouseY->value, -1.0f);  // axis 1 is vertical
}

TEST_F(Translation, DestroyedBindingsAndTriggersLeaveEveryIndex) {
    Trigger* first = new Trigger(&evaluator, 1, "fire", "", ksPressed);
    new KeyTranslator(first, SDLK_SPACE, ksDefault, 1.0f);
    new JoyButtonTranslator(first, 0, 3, ksDefault, 1.0f);
    new MouseButtonTranslator(first, 1, ksDefault, 1.0f);
    press(SDLK_SPACE, true);
    // The same name again replaces the held trigger with all its bindings.
    Trigger* second = new Trigger(&evaluator, 2, "fire", "", ksDown);
    EXPECT_EQ(evaluator.find("fire"), second);
    EXPECT_TRUE(evaluator.keyTranslators.empty() && evaluator.joyButtonTranslators.empty() &&
                evaluator.mouseButtonTranslators.empty());
    evaluator.perform(16, &q);  // would queue a dangling pointer had the held trigger stayed listed
    EXPECT_TRUE(q.isEmpty());

    auto* keep = new JoyAxisTranslator(second, 0, 0, +1, 0, 1);
    new JoyAxisTranslator(second, 0, 0, -1, 0, 1);
    new JoyAxisTranslator(second, 0, 1, -1, 0, 1);
    second->clearJoyAxisTranslators(-1);
    EXPECT_EQ(second->translators, (std::vector<Translator*>{keep}));
    EXPECT_EQ(evaluator.joyAxisTranslators, (std::vector<JoyAxisTranslator*>{keep}));
}
