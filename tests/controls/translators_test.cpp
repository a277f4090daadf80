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

TEST_F(Translation, PressedKeyHoldsTheTriggerUntilReleased) {
    Trigger* fire = new Trigger(&evaluator, 204, "fire", "Fire", ksPressed);
    new KeyTranslator(fire, SDLK_SPACE, ksDefault, 1.0f);
    evaluator.evaluate(keyEvent(SDLK_SPACE, true), &q);
    EXPECT_EQ(fire->value, 1.0f);
    EXPECT_TRUE(q.isEmpty());  // held triggers are queued by perform, not by the press
    evaluator.perform(16, &q);
    evaluator.perform(16, &q);
    EXPECT_EQ(drain(q), (std::vector<Trigger*>{fire, fire}));
    evaluator.evaluate(keyEvent(SDLK_SPACE, false), &q);
    EXPECT_EQ(fire->value, 0.0f);
    EXPECT_EQ(drain(q), (std::vector<Trigger*>{fire}));  // the release is queued once
    evaluator.perform(16, &q);
    EXPECT_TRUE(q.isEmpty());
}

TEST_F(Translation, ReleasingASupersededDirectionKeepsTheOtherHeld) {
    Trigger* x = new Trigger(&evaluator, 1, "x", "", 1.0f);
    new KeyTranslator(x, SDLK_LEFT, ksPressed, -1.0f);
    new KeyTranslator(x, SDLK_RIGHT, ksPressed, 1.0f);
    evaluator.evaluate(keyEvent(SDLK_LEFT, true), &q);
    evaluator.evaluate(keyEvent(SDLK_RIGHT, true), &q);
    evaluator.evaluate(keyEvent(SDLK_LEFT, false), &q);
    EXPECT_EQ(x->value, 1.0f);
    EXPECT_EQ(evaluator.pressedTriggers.count(x), 1u);
    evaluator.evaluate(keyEvent(SDLK_RIGHT, false), &q);
    EXPECT_EQ(x->value, 0.0f);
    EXPECT_TRUE(evaluator.pressedTriggers.empty());
    EXPECT_TRUE(q.isEmpty());  // an axis is not queued: only perform reports it while held
}

TEST_F(Translation, DownAndUpEdgesSetTheValueAndQueueOnlyQueuedTriggers) {
    Trigger* menu = new Trigger(&evaluator, 3, "menu", "", ksDown);
    new KeyTranslator(menu, SDLK_ESCAPE, ksUp, 2.0f);
    Trigger* axis = new Trigger(&evaluator, 4, "axis", "", 1.0f);
    new KeyTranslator(axis, SDLK_a, ksDown, 0.5f);

    EXPECT_FALSE(evaluator.evaluate(keyEvent(SDLK_ESCAPE, true), &q));  // "up" ignores the press
    EXPECT_TRUE(evaluator.evaluate(keyEvent(SDLK_ESCAPE, false), &q));
    EXPECT_EQ(menu->value, 2.0f);  // not reset afterwards
    EXPECT_TRUE(evaluator.evaluate(keyEvent(SDLK_a, true), &q));
    EXPECT_EQ(axis->value, 0.5f);
    EXPECT_EQ(drain(q), (std::vector<Trigger*>{menu}));
}

TEST_F(Translation, JoystickAxisScalesBetweenDeadZoneAndSaturation) {
    Trigger* analog = new Trigger(&evaluator, 1, "y", "", 1.0f);
    auto* up = new JoyAxisTranslator(analog, 0, 1, +1, 4000, 30000);
    struct Case {
        Sint16 v;
        bool consumed;
        float value;
    };
    const Case cases[] = {{2000, true, 0.0f}, {17000, true, 0.5f}, {32767, true, 1.0f}, {-20000, false, 1.0f},
                          {0, true, 0.0f}};
    for (const Case& c : cases) {
        EXPECT_EQ(up->translate(joyAxisEvent(0, 1, c.v), &q), c.consumed) << c.v;
        EXPECT_FLOAT_EQ(analog->value, c.value) << c.v;
    }
    EXPECT_TRUE(q.isEmpty());

    // A digital trigger only asks whether the dead zone is left, in either direction.
    Trigger* digital = new Trigger(&evaluator, 2, "fire", "", ksDown);
    auto* stick = new JoyAxisTranslator(digital, 0, 1, +1, 4000, 30000);
    EXPECT_TRUE(stick->translate(joyAxisEvent(0, 1, -20000), &q));
    EXPECT_EQ(digital->value, 1.0f);
    stick->translate(joyAxisEvent(0, 1, -20000), &q);  // unchanged: queued once only
    stick->translate(joyAxisEvent(0, 1, 3000), &q);
    EXPECT_EQ(digital->value, 0.0f);
    EXPECT_EQ(drain(q), (std::vector<Trigger*>{digital, digital}));
}

TEST_F(Translation, MouseAxisReadsTheRelativeMotionOfItsAxis) {
    Trigger* x = new Trigger(&evaluator, 1, "x", "", 2.0f);
    Trigger* y = new Trigger(&evaluator, 2, "y", "", 2.0f);
    new MouseAxisTranslator(x, 0, 0, 0, 10);
    new MouseAxisTranslator(y, 1, 0, 0, 10);
    EXPECT_TRUE(evaluator.evaluate(mouseMotionEvent(5, -20), &q));
    EXPECT_FLOAT_EQ(x->value, 1.0f);
    EXPECT_FLOAT_EQ(y->value, -2.0f);
}

TEST_F(Translation, TriggersAndTranslatorsLeaveEveryIndexWhenDestroyed) {
    Trigger* first = new Trigger(&evaluator, 1, "fire", "", ksPressed);
    new KeyTranslator(first, SDLK_SPACE, ksDefault, 1.0f);
    new JoyButtonTranslator(first, 0, 3, ksDefault, 1.0f);
    new MouseButtonTranslator(first, 1, ksDefault, 1.0f);
    evaluator.evaluate(keyEvent(SDLK_SPACE, true), &q);
    ASSERT_EQ(evaluator.pressedTriggers.count(first), 1u);

    // Same name again: the held first trigger goes, bindings and all.
    Trigger* second = new Trigger(&evaluator, 2, "fire", "", ksDown);
    EXPECT_EQ(evaluator.find("fire"), second);
    EXPECT_EQ(evaluator.size(), 1);
    EXPECT_TRUE(evaluator.keyTranslators.empty());
    EXPECT_TRUE(evaluator.joyButtonTranslators.empty());
    EXPECT_TRUE(evaluator.mouseButtonTranslators.empty());
    EXPECT_TRUE(evaluator.pressedTriggers.empty());
    evaluator.perform(16, &q);  // would queue a dangling pointer if the held trigger had stayed listed
    EXPECT_TRUE(q.isEmpty());

    auto* keep = new JoyAxisTranslator(second, 0, 0, +1, 0, 1);
    new JoyAxisTranslator(second, 0, 0, -1, 0, 1);
    new JoyAxisTranslator(second, 0, 1, -1, 0, 1);
    second->clearJoyAxisTranslators(-1);
    EXPECT_EQ(second->translators, (std::vector<Translator*>{keep}));
    EXPECT_EQ(evaluator.joyAxisTranslators, (std::vector<JoyAxisTranslator*>{keep}));
    second->clearJoyAxisTranslators(0);
    EXPECT_TRUE(evaluator.joyAxisTranslators.empty());
}

TEST_F(Translation, DefaultStateIsFixedWhenTheBindingIsBuilt) {
    Trigger* t = new Trigger(&evaluator, 1, "t", "", ksUp);
    auto* early = new KeyTranslator(t, SDLK_a, ksDefault, 1.0f);
    t->defaultKeyState = ksPressed;
    auto* late = new MouseButtonTranslator(t, 1, ksDefault, 1.0f);
    EXPECT_EQ(early->state, ksUp);
    EXPECT_EQ(late->state, ksPressed);

    // A translator left in "default" never fires.
    t->defaultKeyState = ksDefault;
    new KeyTranslator(t, SDLK_b, ksDefault, 1.0f);
    EXPECT_FALSE(evaluator.evaluate(keyEvent(SDLK_b, true), &q));
    EXPECT_FALSE(evaluator.evaluate(keyEvent(SDLK_b, false), &q));
}
