#include "controls/translators.h"

#include <gtest/gtest.h>

#include "controls/inputevaluator.h"
#include "events.h"

using namespace norvane;

namespace {

class Translation : public ::testing::Test {
protected:
    InputEvaluator evaluator;
    ControlQueue q;
};

}  // namespace

TEST_F(Translation, PressedBindingsHoldUntilTheirOwnRelease) {
    // Left and right on one axis: releasing left after pressing right must not stop the ship.
    Trigger* x = new Trigger(&evaluator, 1, "x", "", ksPressed);
    new KeyTranslator(x, SDLK_LEFT, ksDefault, -1.0f);
    new KeyTranslator(x, SDLK_RIGHT, ksDefault, 1.0f);
    evaluator.evaluate(keyEvent(SDLK_LEFT, true), &q);
    EXPECT_EQ(x->value, -1.0f);
    EXPECT_TRUE(q.isEmpty());  // held triggers are queued by perform, not by the press
    evaluator.evaluate(keyEvent(SDLK_RIGHT, true), &q);
    evaluator.evaluate(keyEvent(SDLK_LEFT, false), &q);
    EXPECT_EQ(x->value, 1.0f);
    EXPECT_TRUE(q.isEmpty());
    evaluator.evaluate(keyEvent(SDLK_RIGHT, false), &q);
    EXPECT_EQ(x->value, 0.0f);
    EXPECT_EQ(drain(q), (std::vector<Trigger*>{x}));  // the release, once
    EXPECT_TRUE(evaluator.pressedTriggers.empty());
}

TEST_F(Translation, EdgeBindingsSetTheirValueAndQueueOnlyQueuedTriggers) {
    Trigger* menu = new Trigger(&evaluator, 3, "menu", "", ksUp);
    auto* early = new KeyTranslator(menu, SDLK_ESCAPE, ksDefault, 2.0f);
    menu->defaultKeyState = ksDown;  // reaches bindings built later only
    Trigger* axis = new Trigger(&evaluator, 4, "axis", "", 1.0f);
    new KeyTranslator(axis, SDLK_a, ksDown, 0.5f);
    EXPECT_EQ(early->state, ksUp);

    EXPECT_FALSE(evaluator.evaluate(keyEvent(SDLK_ESCAPE, true), &q));
    EXPECT_TRUE(evaluator.evaluate(keyEvent(SDLK_ESCAPE, false), &q));
    EXPECT_EQ(menu->value, 2.0f);  // and stays so
    EXPECT_TRUE(evaluator.evaluate(keyEvent(SDLK_a, true), &q));
    EXPECT_EQ(axis->value, 0.5f);
    EXPECT_EQ(drain(q), (std::vector<Trigger*>{menu}));

    menu->defaultKeyState = ksDefault;  // a binding left in "default" never fires
    new KeyTranslator(menu, SDLK_b, ksDefault, 1.0f);
    EXPECT_FALSE(evaluator.evaluate(keyEvent(SDLK_b, true), &q));
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
        EXPECT_EQ(up->translate(joyAxisEvent(c.v), &q), c.consumed) << c.v;
        EXPECT_FLOAT_EQ(analog->value, c.value) << c.v;
    }
    EXPECT_TRUE(q.isEmpty());

    // A digital trigger only asks whether the dead zone is left, in either direction.
    Trigger* digital = new Trigger(&evaluator, 2, "fire", "", ksDown);
    auto* stick = new JoyAxisTranslator(digital, 0, 1, +1, 4000, 30000);
    stick->translate(joyAxisEvent(-20000), &q);
    EXPECT_EQ(digital->value, 1.0f);
    stick->translate(joyAxisEvent(-20000), &q);  // no change: not queued again
    stick->translate(joyAxisEvent(3000), &q);
    EXPECT_EQ(drain(q), (std::vector<Trigger*>{digital, digital}));

    Trigger* mouseY = new Trigger(&evaluator, 3, "mouseY", "", 2.0f);
    new MouseAxisTranslator(mouseY, 1, 0, 0, 10);
    SDL_Event motion{};
    motion.type = SDL_MOUSEMOTION;
    motion.motion.xrel = 30;
    motion.motion.yrel = -5;
    EXPECT_TRUE(evaluator.evaluate(motion, &q));
    EXPECT_FLOAT_EQ(mouseY->value, -1.0f);  // axis 1 is vertical
}

TEST_F(Translation, DestroyedBindingsAndTriggersLeaveEveryIndex) {
    Trigger* first = new Trigger(&evaluator, 1, "fire", "", ksPressed);
    new KeyTranslator(first, SDLK_SPACE, ksDefault, 1.0f);
    new JoyButtonTranslator(first, 0, 3, ksDefault, 1.0f);
    new MouseButtonTranslator(first, 1, ksDefault, 1.0f);
    evaluator.evaluate(keyEvent(SDLK_SPACE, true), &q);

    // The same name again replaces the held trigger with all its bindings.
    Trigger* second = new Trigger(&evaluator, 2, "fire", "", ksDown);
    EXPECT_EQ(evaluator.find("fire"), second);
    EXPECT_TRUE(evaluator.keyTranslators.empty());
    EXPECT_TRUE(evaluator.joyButtonTranslators.empty());
    EXPECT_TRUE(evaluator.mouseButtonTranslators.empty());
    evaluator.perform(16, &q);  // would queue a dangling pointer had the held trigger stayed listed
    EXPECT_TRUE(q.isEmpty());

    auto* keep = new JoyAxisTranslator(second, 0, 0, +1, 0, 1);
    new JoyAxisTranslator(second, 0, 0, -1, 0, 1);
    new JoyAxisTranslator(second, 0, 1, -1, 0, 1);
    second->clearJoyAxisTranslators(-1);
    EXPECT_EQ(second->translators, (std::vector<Translator*>{keep}));
    EXPECT_EQ(evaluator.joyAxisTranslators, (std::vector<JoyAxisTranslator*>{keep}));
}
