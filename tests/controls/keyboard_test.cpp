#include <gtest/gtest.h>

#include "controls/inputevaluator.h"
#include "controls/translators.h"
#include "support/events.h"
#include "support/xdotool.h"

using namespace norvane;

// Real key presses and focus changes from xdotool into a real window.
TEST_F(XdotoolTest, FocusChangesAndRealKeysReachTheirTriggers) {
    openWindow(160, 120);
    ControlQueue q;
    InputEvaluator evaluator;
    Trigger* fire = new Trigger(&evaluator, 204, "fire", "", ksPressed);
    new KeyTranslator(fire, SDLK_a, ksDefault, 1.0f);
    Trigger* pause = new Trigger(&evaluator, 101, "pause", "", ksDown);
    new KeyTranslator(pause, SDLK_p, ksDefault, 1.0f);
    q.push(&evaluator);
    q.focusLostTrigger = fakeTrigger(1);
    q.focusGainedTrigger = fakeTrigger(2);
    std::vector<Trigger*> fired;
    auto read = [&] { q.readEvents(); };
    auto firedSomething = [&] {
        fired = drain(q);
        return !fired.empty();
    };

    // SDL starts out believing it has the focus, so the first focusing reports nothing; moving the
    // focus to the root window and back shows both focus triggers.
    xdotool(window + " windowfocus --sync");
    q.readEvents();
    drain(q);
    xdotool("search --maxdepth 0 --name '' windowfocus --sync");
    ASSERT_TRUE(pumpUntil(read, firedSomething));
    EXPECT_EQ(fired, (std::vector<Trigger*>{fakeTrigger(1)}));
    xdotool(window + " windowfocus --sync");
    ASSERT_TRUE(pumpUntil(read, firedSomething));
    EXPECT_EQ(fired, (std::vector<Trigger*>{fakeTrigger(2)}));
    xdotool("key p");
    ASSERT_TRUE(pumpUntil(read, firedSomething));
    EXPECT_EQ(fired, (std::vector<Trigger*>{pause}));

    xdotool("keydown a");
    ASSERT_TRUE(pumpUntil(read, [&] { return fire->isActive(); }));
    EXPECT_TRUE(q.isEmpty());  // the press itself queues nothing; each frame does
    q.perform(16);
    q.perform(16);
    EXPECT_EQ(drain(q), (std::vector<Trigger*>{fire, fire}));
    xdotool("keyup a");
    ASSERT_TRUE(pumpUntil(read, [&] { return !fire->isActive(); }));
    EXPECT_EQ(drain(q), (std::vector<Trigger*>{fire}));  // the release, once
    q.perform(16);
    EXPECT_TRUE(q.isEmpty());
}
