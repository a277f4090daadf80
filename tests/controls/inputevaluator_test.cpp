#include "controls/inputevaluator.h"

#include <gtest/gtest.h>

#include <memory>

#include "controls/translators.h"
#include "support/events.h"

using namespace norvane;

namespace {

using Evaluators = EventQueueTest;
using Fired = std::vector<Trigger*>;

Trigger* bindKey(InputEvaluator& e, const char* name, SDLKey key) {
    Trigger* t = new Trigger(&e, 1, name, "", ksDown);
    new KeyTranslator(t, key, ksDefault, 1.0f);
    return t;
}

}  // namespace

TEST_F(Evaluators, OnlyTheFrontEnabledEvaluatorFiresAndHeldTriggersRepeatUntilFlushed) {
    InputEvaluator back, front, empty;
    Trigger* backFire = bindKey(back, "fire", SDLK_SPACE);
    Trigger* frontFire = bindKey(front, "fire", SDLK_SPACE);
    Trigger* frontAlso = bindKey(front, "also", SDLK_SPACE);
    Trigger* held = new Trigger(&back, 2, "x", "", 1.0f);  // not queued, held all the same
    new KeyTranslator(held, SDLK_RIGHT, ksDefault, 1.0f);
    q.push(&back);
    q.push(&front);
    q.push(&empty);
    EXPECT_EQ(deliver(keyEvent(SDLK_SPACE, true)), (Fired{frontFire, frontAlso}));  // every binding of the front one
    front.enabled = false;
    EXPECT_EQ(deliver(keyEvent(SDLK_SPACE, true)), (Fired{backFire}));
    EXPECT_TRUE(deliver(keyEvent(SDLK_q, true)).empty());
    EXPECT_FALSE(back.evaluate(SDL_Event{SDL_VIDEOEXPOSE}, &q));  // left to the evaluators behind

    EXPECT_TRUE(deliver(keyEvent(SDLK_RIGHT, true)).empty());
    q.perform(16);
    q.perform(16);
    EXPECT_EQ(drain(q), (Fired{held, held}));
    back.enabled = false;  // switched off: no repeats, but a flush still reaches it
    q.perform(16);
    q.flush();
    EXPECT_EQ(held->value, 0.0f);
    back.enabled = true;
    q.perform(16);
    EXPECT_TRUE(q.isEmpty());
}

TEST_F(Evaluators, ExactJoystickButtonsBeatWildcardsAndTheLastWildcardWins) {
    InputEvaluator e;
    const struct {
        int joystick, button;
        KeyState state;
    } bindings[] = {{-1, -1, ksDown}, {0, -1, ksDown}, {0, 3, ksDown}, {-1, 3, ksUp}};
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

TEST(InputEvaluator, ClonesAreIndependentCopiesUntilApplied) {
    InputEvaluator source;
    Trigger* fire = new Trigger(&source, 204, "fire", "Fire", ksPressed);
    fire->dataString = "ship";
    new KeyTranslator(fire, SDLK_LCTRL, ksDefault, 1.0f);
    new JoyAxisTranslator(fire, 0, 1, -1, 4000, 30000);
    new Trigger(&source, 201, "x", "", 2.0f);

    std::unique_ptr<InputEvaluator> copy(source.clone());
    copy->setDataOnAllTriggers(1);
    Trigger* copied = copy->find("fire");
    ASSERT_TRUE(copied);
    EXPECT_EQ(copied->dataString, "ship");
    EXPECT_EQ(copied->defaultKeyState, ksPressed);
    EXPECT_EQ(copy->find("x")->maxValue, 2.0f);
    EXPECT_EQ(copy->joyAxisTranslators.size(), 1u);
    // Rebinding the copy, as the controls dialog does, leaves the source alone until applied.
    copied->clearKeyTranslators(0);
    new KeyTranslator(copied, SDLK_f, ksDefault, 1.0f);
    EXPECT_EQ(fire->keysToString(0), "lctrl");
    EXPECT_EQ(fire->data, 0);
    source.copyFrom(copy.get());
    source.copyFrom(&source);
    EXPECT_EQ(source.find("fire")->keysToString(0), "f");
    EXPECT_EQ(source.keyTranslators.size(), 1u);
}
