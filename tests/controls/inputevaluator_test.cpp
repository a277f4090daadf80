#include "controls/inputevaluator.h"

#include <gtest/gtest.h>

#include <memory>

#include "controls/translators.h"
#include "events.h"

using namespace norvane;

namespace {

// Events go through SDL's own queue and readEvents, as in the game.
class Evaluators : public ::testing::Test {
protected:
    void SetUp() override { ASSERT_EQ(SDL_Init(SDL_INIT_VIDEO), 0) << SDL_GetError(); }
    void TearDown() override { SDL_Quit(); }

    std::vector<Trigger*> deliver(SDL_Event event) {
        EXPECT_EQ(SDL_PushEvent(&event), 0);
        EXPECT_TRUE(q.readEvents());
        return drain(q);
    }

    ControlQueue q;
};

Trigger* bindKey(InputEvaluator& e, const char* name, SDLKey key) {
    Trigger* t = new Trigger(&e, 1, name, "", ksDown);
    new KeyTranslator(t, key, ksDefault, 1.0f);
    return t;
}

}  // namespace

TEST_F(Evaluators, OnlyTheFrontEnabledEvaluatorFiresForAKeyBothBind) {
    InputEvaluator back, front, empty;
    Trigger* backFire = bindKey(back, "fire", SDLK_SPACE);
    Trigger* frontFire = bindKey(front, "fire", SDLK_SPACE);
    Trigger* frontAlso = bindKey(front, "also", SDLK_SPACE);
    q.push(&back);
    q.push(&front);
    q.push(&empty);
    // Both bindings of the front evaluator get the one press.
    EXPECT_EQ(deliver(keyEvent(SDLK_SPACE, true)), (std::vector<Trigger*>{frontFire, frontAlso}));
    front.enabled = false;
    EXPECT_EQ(deliver(keyEvent(SDLK_SPACE, true)), (std::vector<Trigger*>{backFire}));
    EXPECT_TRUE(deliver(keyEvent(SDLK_q, true)).empty());
}

TEST_F(Evaluators, ExactJoystickButtonsBeatWildcardsAndTheLastWildcardWins) {
    InputEvaluator e;
    Trigger* any = new Trigger(&e, 1, "any", "", ksDown);
    Trigger* anyButton = new Trigger(&e, 2, "anyButton", "", ksDown);
    Trigger* exact = new Trigger(&e, 3, "exact", "", ksDown);
    Trigger* released = new Trigger(&e, 4, "released", "", ksUp);
    new JoyButtonTranslator(any, -1, -1, ksDefault, 1.0f);
    new JoyButtonTranslator(anyButton, 0, -1, ksDefault, 1.0f);
    new JoyButtonTranslator(exact, 0, 3, ksDefault, 1.0f);
    new JoyButtonTranslator(released, -1, 3, ksDefault, 1.0f);
    q.push(&e);
    EXPECT_EQ(deliver(joyButtonEvent(0, 3, true)), (std::vector<Trigger*>{exact}));
    EXPECT_EQ(deliver(joyButtonEvent(0, 4, true)), (std::vector<Trigger*>{anyButton}));
    EXPECT_EQ(deliver(joyButtonEvent(1, 3, true)), (std::vector<Trigger*>{any}));
    // An exact binding that ignores this edge leaves the event to the wildcards.
    EXPECT_EQ(deliver(joyButtonEvent(0, 3, false)), (std::vector<Trigger*>{released}));
}

TEST_F(Evaluators, HeldTriggersRepeatEveryFrameUntilFlushed) {
    InputEvaluator e;
    Trigger* x = new Trigger(&e, 1, "x", "", 1.0f);  // not queued, held all the same
    new KeyTranslator(x, SDLK_RIGHT, ksDefault, 1.0f);
    q.push(&e);
    EXPECT_TRUE(deliver(keyEvent(SDLK_RIGHT, true)).empty());
    q.perform(16);
    q.perform(16);
    EXPECT_EQ(drain(q), (std::vector<Trigger*>{x, x}));
    e.enabled = false;  // switched off: no repeats, but a flush still reaches it
    q.perform(16);
    q.flush();
    EXPECT_EQ(x->value, 0.0f);
    e.enabled = true;
    q.perform(16);
    EXPECT_TRUE(q.isEmpty());
}

TEST_F(Evaluators, ClonesAreIndependentCopies) {
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
    EXPECT_EQ(source.find("fire")->keysToString(0), "f");
    EXPECT_EQ(source.keyTranslators.size(), 1u);
}
