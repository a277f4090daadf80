#include "controls/inputevaluator.h"

#include <gtest/gtest.h>

#include "controls/translators.h"
#include "support/events.h"

using namespace norvane;

namespace {

using Evaluators = EventQueueTest;
using Fired = std::vector<Trigger*>;

Trigger* bindKey(InputEvaluator& e, const char* name, SDLKey key, KeyState state = ksDown) {
    Trigger* t = new Trigger(&e, 1, name, "", state);
    new KeyTranslator(t, key, ksDefault, 1.0f);
    return t;
}

}  // namespace

TEST(InputEvaluator, EveryMatchingBindingFiresHeldTriggersRepeatUntilFlushedAndACloneReplacesItsOriginal) {
    InputEvaluator e;
    ControlQueue q;
    Trigger* fire = bindKey(e, "fire", SDLK_SPACE);
    Trigger* also = bindKey(e, "also", SDLK_SPACE);
    Trigger* held = new Trigger(&e, 2, "x", "", 1.0f);  // not queued, held all the same
    new KeyTranslator(held, SDLK_RIGHT, ksDefault, 1.0f);
    EXPECT_TRUE(e.evaluate(keyEvent(SDLK_SPACE, true), &q));
    EXPECT_FALSE(e.evaluate(keyEvent(SDLK_q, true), &q) || e.evaluate(SDL_Event{SDL_VIDEOEXPOSE}, &q));
    EXPECT_TRUE(e.evaluate(keyEvent(SDLK_RIGHT, true), &q));
    e.perform(16, &q);
    e.perform(16, &q);
    EXPECT_EQ(drain(q), (Fired{fire, also, held, held}));
    e.flush();
    e.perform(16, &q);
    EXPECT_TRUE(held->value == 0.0f && q.isEmpty());

    // Cloned into its own evaluator, a trigger replaces the original, which leaves every index, held
    // triggers included; the copy keeps the settings and live bindings.
    InputEvaluator evaluator;
    Trigger* ship = bindKey(evaluator, "fire", SDLK_LCTRL, ksPressed);
    ship->dataString = "ship";
    ship->queued = false;
    new JoyAxisTranslator(ship, 0, 1, -1, 4000, 30000);
    ASSERT_TRUE(evaluator.evaluate(keyEvent(SDLK_LCTRL, true), &q));
    Trigger* copy = ship->clone(&evaluator);
    EXPECT_TRUE(evaluator.find("fire") == copy && copy->value == 0.0f && copy->dataString == "ship" && !copy->queued);
    ASSERT_TRUE(evaluator.keyTranslators.size() == 1u && evaluator.joyAxisTranslators.size() == 1u);
    EXPECT_TRUE(evaluator.keyTranslators[0]->trigger == copy && evaluator.pressedTriggers.empty());
    evaluator.evaluate(keyEvent(SDLK_LCTRL, true), &q);
    evaluator.perform(16.0f, &q);
    EXPECT_EQ(drain(q), (Fired{copy}));
    evaluator.copyFrom(&evaluator);  // nothing to copy from once cleared
    EXPECT_EQ(evaluator.find("fire"), copy);
}

TEST_F(Evaluators, ExactJoystickButtonsBeatWildcardsAndTheLastWildcardWins) {
    InputEvaluator e;
    const struct { int joystick, button; KeyState state; } bindings[] = {{-1, -1, ksDown}, {0, -1, ksDown}, {0, 3, ksDown}, {-1, 3, ksUp}};
    Fired t;
    for (const auto& b : bindings) {
        t.push_back(new Trigger(&e, static_cast<int>(t.size()), std::to_string(t.size()), "", b.state));
        new JoyButtonTranslator(t.back(), b.joystick, b.button, ksDefault, 1.0f);
    }
    q.push(&e);
    EXPECT_EQ(deliver(joyButtonEvent(0, 3)), (Fired{t[2]}));
    EXPECT_EQ(deliver(joyButtonEvent(0, 4)), (Fired{t[1]}));
    EXPECT_EQ(deliver(joyButtonEvent(1, 3)), (Fired{t[0]}));
    // An exact binding that ignores this edge leaves the event to the wildcards.
    EXPECT_EQ(deliver(joyButtonEvent(0, 3, false)), (Fired{t[3]}));
}
