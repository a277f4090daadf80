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

    void deliver(SDL_Event event) {
        ASSERT_EQ(SDL_PushEvent(&event), 0);
        ASSERT_TRUE(q.readEvents());
    }

    ControlQueue q;
};

}  // namespace

TEST_F(Evaluators, OnlyTheFrontEvaluatorFiresForAKeyBothBind) {
    InputEvaluator back, front;
    Trigger* backFire = new Trigger(&back, 1, "fire", "", ksDown);
    Trigger* frontFire = new Trigger(&front, 2, "fire", "", ksDown);
    Trigger* frontAlso = new Trigger(&front, 3, "also", "", ksDown);
    new KeyTranslator(backFire, SDLK_SPACE, ksDefault, 1.0f);
    new KeyTranslator(frontFire, SDLK_SPACE, ksDefault, 1.0f);
    new KeyTranslator(frontAlso, SDLK_SPACE, ksDefault, 1.0f);
    q.push(&back);
    q.push(&front);
    deliver(keyEvent(SDLK_SPACE, true));
    // Both bindings of the front evaluator get the one press.
    EXPECT_EQ(drain(q), (std::vector<Trigger*>{frontFire, frontAlso}));
    EXPECT_EQ(backFire->value, 0.0f);

    front.enabled = false;
    deliver(keyEvent(SDLK_SPACE, true));
    EXPECT_EQ(drain(q), (std::vector<Trigger*>{backFire}));

    // Events that no binding takes pass on: keys, focus and empty evaluators.
    InputEvaluator empty;
    q.push(&empty);
    front.enabled = true;
    deliver(keyEvent(SDLK_q, true));
    EXPECT_TRUE(q.isEmpty());
    EXPECT_FALSE(empty.evaluate(keyEvent(SDLK_SPACE, true), &q));
    SDL_Event focus{};
    focus.type = SDL_ACTIVEEVENT;
    EXPECT_FALSE(front.evaluate(focus, &q));
}

TEST_F(Evaluators, ExactJoystickButtonsBeatWildcardsAndTheLastWildcardWins) {
    InputEvaluator evaluator;
    Trigger* any = new Trigger(&evaluator, 1, "any", "", ksDown);
    Trigger* anyButton = new Trigger(&evaluator, 2, "anyButton", "", ksDown);
    Trigger* exact = new Trigger(&evaluator, 3, "exact", "", ksDown);
    new JoyButtonTranslator(any, -1, -1, ksDefault, 1.0f);
    new JoyButtonTranslator(anyButton, 0, -1, ksDefault, 1.0f);
    new JoyButtonTranslator(exact, 0, 3, ksDefault, 1.0f);
    Trigger* released = new Trigger(&evaluator, 4, "released", "", ksUp);
    new JoyButtonTranslator(released, -1, 3, ksDefault, 1.0f);
    q.push(&evaluator);

    deliver(joyButtonEvent(0, 3, true));
    EXPECT_EQ(drain(q), (std::vector<Trigger*>{exact}));
    deliver(joyButtonEvent(0, 4, true));
    EXPECT_EQ(drain(q), (std::vector<Trigger*>{anyButton}));
    deliver(joyButtonEvent(1, 3, true));
    EXPECT_EQ(drain(q), (std::vector<Trigger*>{any}));
    // An exact binding that ignores this edge leaves the event to the wildcards.
    deliver(joyButtonEvent(0, 3, false));
    EXPECT_EQ(drain(q), (std::vector<Trigger*>{released}));
}

TEST_F(Evaluators, HeldTriggersRepeatEveryFrameUntilFlushed) {
    InputEvaluator evaluator;
    Trigger* x = new Trigger(&evaluator, 1, "x", "", 1.0f);  // not queued
    new KeyTranslator(x, SDLK_RIGHT, ksDefault, 1.0f);
    q.push(&evaluator);
    deliver(keyEvent(SDLK_RIGHT, true));
    q.perform(16);
    q.perform(16);
    EXPECT_EQ(drain(q), (std::vector<Trigger*>{x, x}));

    evaluator.enabled = false;  // switched off: no repeats, but a flush still reaches it
    q.perform(16);
    EXPECT_TRUE(q.isEmpty());
    q.flush();
    EXPECT_EQ(x->value, 0.0f);
    evaluator.enabled = true;
    q.perform(16);
    EXPECT_TRUE(q.isEmpty());
}

TEST_F(Evaluators, ClonesAreIndependentCopies) {
    InputEvaluator source;
    Trigger* fire = new Trigger(&source, 204, "fire", "Fire", ksPressed);
    fire->dataString = "ship";
    new KeyTranslator(fire, SDLK_LCTRL, ksDefault, 1.0f);
    new JoyAxisTranslator(fire, 0, 1, -1, 4000, 30000);
    Trigger* x = new Trigger(&source, 201, "x", "", 2.0f);
    new KeyTranslator(x, SDLK_LEFT, ksDown, -1.0f);

    std::unique_ptr<InputEvaluator> copy(source.clone());
    copy->setDataOnAllTriggers(1);
    Trigger* copiedFire = copy->find("fire");
    ASSERT_TRUE(copiedFire);
    EXPECT_NE(copiedFire, fire);
    EXPECT_EQ(copiedFire->code, 204);
    EXPECT_EQ(copiedFire->dataString, "ship");
    EXPECT_EQ(copiedFire->defaultKeyState, ksPressed);
    EXPECT_FALSE(copy->find("x")->digital);
    EXPECT_EQ(copy->find("x")->maxValue, 2.0f);
    EXPECT_EQ(copy->keyTranslators.size(), 2u);
    EXPECT_EQ(copy->joyAxisTranslators.size(), 1u);

    // Rebinding the copy, as the controls dialog does, leaves the source alone.
    copiedFire->clearKeyTranslators(0);
    new KeyTranslator(copiedFire, SDLK_f, ksDefault, 1.0f);
    EXPECT_EQ(fire->keysToString(0), "lctrl");
    EXPECT_EQ(copiedFire->keysToString(0), "f");
    EXPECT_EQ(fire->data, 0);
    EXPECT_EQ(copiedFire->data, 1);

    // Applying the copy back replaces the source's triggers.
    source.copyFrom(copy.get());
    EXPECT_EQ(source.find("fire")->keysToString(0), "f");
    EXPECT_EQ(source.keyTranslators.size(), 2u);
    source.copyFrom(&source);
    EXPECT_EQ(source.size(), 2);
}
