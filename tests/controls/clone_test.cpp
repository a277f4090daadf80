#include <gtest/gtest.h>

#include "controls/inputevaluator.h"
#include "controls/translators.h"
#include "support/events.h"

using namespace norvane;

// Cloned into the evaluator that holds it, a trigger is replaced by its copy: the original and its
// bindings leave every index, including the set of held triggers.
TEST(TriggerClone, IntoItsOwnEvaluatorReplacesTheOriginal) {
    InputEvaluator evaluator;
    Trigger* fire = new Trigger(&evaluator, 204, "fire", "Fire", ksPressed);
    fire->data = 3;
    fire->dataString = "ship";
    fire->maxValue = 2.0f;
    fire->queued = false;
    new KeyTranslator(fire, SDLK_LCTRL, ksDefault, 1.0f);
    new JoyAxisTranslator(fire, 0, 1, -1, 4000, 30000);
    ControlQueue q;
    ASSERT_TRUE(evaluator.evaluate(keyEvent(SDLK_LCTRL, true), &q));
    ASSERT_EQ(evaluator.pressedTriggers.size(), 1u);

    Trigger* copy = fire->clone(&evaluator);
    ASSERT_NE(copy, nullptr);
    EXPECT_EQ(evaluator.size(), 1);
    EXPECT_EQ(evaluator.find("fire"), copy);
    EXPECT_EQ(copy->bank, &evaluator);
    EXPECT_EQ(copy->code, 204);
    EXPECT_EQ(copy->description, "Fire");
    EXPECT_EQ(copy->data, 3);
    EXPECT_EQ(copy->dataString, "ship");
    EXPECT_EQ(copy->maxValue, 2.0f);
    EXPECT_FALSE(copy->queued);
    EXPECT_EQ(copy->value, 0.0f);
    EXPECT_EQ(copy->keysToString(0), "lctrl");
    EXPECT_EQ(copy->joyAxisToString(0), "Joy 0; Axis 1 -");
    EXPECT_TRUE(evaluator.pressedTriggers.empty());
    ASSERT_EQ(evaluator.keyTranslators.size(), 1u);
    EXPECT_EQ(evaluator.keyTranslators[0]->trigger, copy);
    EXPECT_EQ(evaluator.joyAxisTranslators.size(), 1u);

    // The copy's bindings are live: held again by the same key, and repeated every frame.
    evaluator.evaluate(keyEvent(SDLK_LCTRL, true), &q);
    EXPECT_EQ(copy->value, 1.0f);
    evaluator.perform(16.0f, &q);
    EXPECT_EQ(drain(q), (std::vector<Trigger*>{copy}));
}
