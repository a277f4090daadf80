#include "controls/translators.h"

#include <gtest/gtest.h>

#include "controls/inputevaluator.h"
#include "support/events.h"

using namespace norvane;

namespace {

using Fired = std::vector<Trigger*>;

class Translation : public ::testing::Test {
protected:
    bool offer(const SDL_Event& event) { return evaluator.evaluate(event, &q); }
    bool press(SDLKey key, bool down) { return offer(keyEvent(key, down)); }

    InputEvaluator evaluator;
    ControlQueue q;
};

}  // namespace

// A "pressed" button of any device holds its trigger from its press, queued by every frame, until
// its own release, which queues it once more.
TEST_F(Translation, PressedButtonsHoldUntilTheirOwnReleaseAndAxesScaleBetweenDeadZoneAndSaturation) {
    Trigger* x = new Trigger(&evaluator, 1, "x", "", ksPressed);
    new KeyTranslator(x, SDLK_LEFT, ksDefault, -1.0f);
    new MouseButtonTranslator(x, 1, ksDefault, -1.0f);
    new JoyButtonTranslator(x, 0, 3, ksDefault, -1.0f);
    new KeyTranslator(x, SDLK_RIGHT, ksDefault, 1.0f);
    const std::pair<SDL_Event, SDL_Event> buttons[] = {
        {keyEvent(SDLK_LEFT, true), keyEvent(SDLK_LEFT, false)},
        {mouseButtonEvent(1, true, 0, 0), mouseButtonEvent(1, false, 0, 0)},
        {joyButtonEvent(0, 3, true), joyButtonEvent(0, 3, false)},
    };
    for (const auto& [down, up] : buttons) {
        EXPECT_TRUE(offer(down) && x->value == -1.0f && q.isEmpty()) << int(down.type);
        evaluator.perform(16, &q);
        EXPECT_EQ(drain(q), (Fired{x}));
        EXPECT_TRUE(offer(up) && x->value == 0.0f && evaluator.pressedTriggers.empty()) << int(up.type);
        EXPECT_EQ(drain(q), (Fired{x}));
    }
    // Left and right on one axis: releasing left after pressing right must not stop the ship.
    press(SDLK_LEFT, true);
    press(SDLK_RIGHT, true);
    press(SDLK_LEFT, false);
    EXPECT_EQ(x->value, 1.0f);
    press(SDLK_RIGHT, false);
    EXPECT_EQ(x->value, 0.0f);
    EXPECT_EQ(drain(q), (Fired{x}));

    // Other states fire on their edge alone; a binding takes its trigger's default when built.
    Trigger* menu = new Trigger(&evaluator, 3, "menu", "", ksUp);
    new KeyTranslator(menu, SDLK_ESCAPE, ksDefault, 2.0f);
    menu->defaultKeyState = ksDefault;  // a binding left in "default" never fires
    new KeyTranslator(menu, SDLK_b, ksDefault, 1.0f);
    new KeyTranslator(new Trigger(&evaluator, 4, "axis", "", 1.0f), SDLK_a, ksDown, 0.5f);
    EXPECT_FALSE(press(SDLK_ESCAPE, true) || press(SDLK_b, true));
    EXPECT_TRUE(press(SDLK_ESCAPE, false) && press(SDLK_a, true));
    EXPECT_EQ(menu->value + evaluator.find("axis")->value, 2.5f);
    EXPECT_EQ(drain(q), (Fired{menu}));  // the analog trigger is not queued

    Trigger* analog = new Trigger(&evaluator, 1, "y", "", 1.0f);
    auto* up = new JoyAxisTranslator(analog, 0, 1, +1, 4000, 30000);
    const struct { Sint16 v; bool consumed; float value; } cases[] = {
        {2000, true, 0.0f}, {17000, true, 0.5f}, {32767, true, 1.0f}, {-20000, false, 1.0f}, {0, true, 0.0f}};
    for (const auto& c : cases) {
        EXPECT_EQ(up->translate(joyAxisEvent(0, 1, c.v), &q), c.consumed) << c.v;
        EXPECT_FLOAT_EQ(analog->value, c.value) << c.v;
    }
    // The lower half's binding is told of the centred stick too, or its value would stay.
    auto* down = new JoyAxisTranslator(analog, 0, 1, -1, 4000, 30000);
    EXPECT_FALSE(down->translate(joyAxisEvent(0, 1, 20000), &q));
    EXPECT_TRUE(down->translate(joyAxisEvent(0, 1, -20000), &q) && down->translate(joyAxisEvent(0, 1, 0), &q));
    EXPECT_TRUE(analog->value == 0.0f && q.isEmpty());

    // A digital trigger only asks whether the dead zone is left, in either direction.
    Trigger* digital = new Trigger(&evaluator, 2, "fire", "", ksDown);
    auto* stick = new JoyAxisTranslator(digital, 0, 1, +1, 4000, 30000);
    for (Sint16 v : {-20000, -20000, 3000}) stick->translate(joyAxisEvent(0, 1, v), &q);  // the repeat is no change
    EXPECT_EQ(drain(q), (Fired{digital, digital}));

    Trigger* mouseY = new Trigger(&evaluator, 3, "mouseY", "", 2.0f);
    new MouseAxisTranslator(mouseY, 1, 0, 0, 10);
    EXPECT_TRUE(offer(mouseMotionEvent(0, 0, 30, -5)));
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
