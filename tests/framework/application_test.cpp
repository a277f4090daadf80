#include "framework/application.h"

#include <SDL/SDL.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "controls/queue.h"
#include "tools/clock.h"

using namespace norvane;

namespace {

// Records every call in one shared journal so that tests can check the order across states.
struct Journal {
    std::vector<std::string> lines;
    void add(const std::string& line) { lines.push_back(line); }
};

class RecordingState : public ApplicationState {
public:
    RecordingState(Journal& journal, std::string name, int layers = 2)
        : journal(journal), name(std::move(name)) {
        performLayers = layers;
        drawLayers = layers;
    }
    ~RecordingState() override { journal.add(name + " deleted"); }
    void deactivate() override {
        journal.add(name + " deactivate");
        ApplicationState::deactivate();
    }
    void handleEvent(const Trigger* trigger) override {
        journal.add(name + " event " + std::to_string(reinterpret_cast<uintptr_t>(trigger) % 1000));
        if (onEvent) onEvent(trigger);
    }
    void doPerform(int layer, unsigned int ticks) override {
        journal.add(name + " perform " + std::to_string(layer) + " " + std::to_string(ticks));
        performed.push_back(ticks);
        if (destroyInLayer == layer) destroyPending = true;
    }
    void doDraw(int layer) override { journal.add(name + " draw " + std::to_string(layer)); }

    Journal& journal;
    std::string name;
    std::vector<unsigned int> performed;  // ticks of layer 0 and up, one entry per layer
    int destroyInLayer = -1;
    std::function<void(const Trigger*)> onEvent;
};

// Fires the trigger in the event's user data for every SDL_USEREVENT.
class UserEventEvaluator : public Evaluator {
public:
    bool evaluate(const SDL_Event& event, ControlQueue* queue) override {
        if (event.type != SDL_USEREVENT) return false;
        *queue << static_cast<Trigger*>(event.user.data1);
        return true;
    }
};

Trigger* fakeTrigger(uintptr_t id) { return reinterpret_cast<Trigger*>(id); }

void pushUserEvent(Trigger* trigger) {
    SDL_Event event{};
    event.type = SDL_USEREVENT;
    event.user.data1 = trigger;
    ASSERT_EQ(SDL_PushEvent(&event), 0);
}

void pushQuit() {
    SDL_Event event{};
    event.type = SDL_QUIT;
    ASSERT_EQ(SDL_PushEvent(&event), 0);
}

class FrameRateProbe : public FrameRateLimitedApplication {
public:
    void sleep(unsigned int ms) override {
        sleeps.push_back(ms);
        FrameRateLimitedApplication::sleep(ms);
    }
    std::vector<unsigned int> sleeps;
};

// Destroying an application ends the process, so the tests leave theirs alive; `application` keeps
// them reachable.
template <typename T>
T* makeApplication() {
    return new T;
}

class Loop : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_EQ(SDL_Init(SDL_INIT_VIDEO), 0) << SDL_GetError();
        evaluatorQueue.push(&evaluator);
    }
    void TearDown() override { SDL_Quit(); }

    Journal journal;
    UserEventEvaluator evaluator;
    ControlQueue evaluatorQueue;
};

}  // namespace

TEST_F(Loop, PassHandsTriggersToTheStateThenPerformsAndDraws) {
    Application* app = makeApplication<Application>();
    auto* state = new RecordingState(journal, "a");
    state->activate();
    app->queue = &evaluatorQueue;
    pushUserEvent(fakeTrigger(1));
    pushUserEvent(fakeTrigger(2));
    app->perform(16);
    EXPECT_EQ(journal.lines, (std::vector<std::string>{"a event 1", "a event 2", "a perform 0 16", "a perform 1 16",
                                                      "a draw 0", "a draw 1"}));

    // Without a queue nothing is read: the event stays in SDL's queue.
    journal.lines.clear();
    app->queue = nullptr;
    pushUserEvent(fakeTrigger(3));
    app->perform(7);
    EXPECT_EQ(journal.lines, (std::vector<std::string>{"a perform 0 7", "a perform 1 7", "a draw 0", "a draw 1"}));
    SDL_Event pending;
    EXPECT_EQ(SDL_PollEvent(&pending), 1);
    delete state;
}

TEST_F(Loop, ActivatingAnotherStateInsideHandleEventRedirectsTheRemainingTriggers) {
    Application* app = makeApplication<Application>();
    auto* a = new RecordingState(journal, "a", 1);
    auto* b = new RecordingState(journal, "b", 1);
    a->activate();
    a->onEvent = [b](const Trigger*) { b->activate(); };
    app->queue = &evaluatorQueue;
    pushUserEvent(fakeTrigger(1));
    pushUserEvent(fakeTrigger(2));
    app->perform(10);
    // a keeps living after it was deactivated; its owner decides when to delete it.
    EXPECT_EQ(journal.lines, (std::vector<std::string>{"a event 1", "a deactivate", "b event 2", "b perform 0 10",
                                                      "b draw 0"}));
    EXPECT_EQ(app->state, b);
    delete a;
    EXPECT_EQ(app->state, b);
    delete b;
    EXPECT_EQ(app->state, nullptr);
}

TEST_F(Loop, QuitRequestDeletesTheActiveStateAndEndsTheRun) {
    Application* app = makeApplication<Application>();
    auto* state = new RecordingState(journal, "a", 1);
    state->activate();
    app->queue = &evaluatorQueue;
    pushUserEvent(fakeTrigger(1));
    pushQuit();
    app->run();  // returns only because the state is gone
    EXPECT_EQ(journal.lines, (std::vector<std::string>{"a deleted"}));
    EXPECT_EQ(app->state, nullptr);
}

TEST_F(Loop, StateDestroyedInLayerZeroSkipsLaterLayersAndEndsTheRun) {
    Application* app = makeApplication<Application>();
    auto* state = new RecordingState(journal, "a", 3);
    state->destroyInLayer = 0;
    state->activate();
    app->run();
    EXPECT_EQ(journal.lines.size(), 2u);
    EXPECT_EQ(journal.lines[1], "a deleted");  // no layer 1, no draw
    EXPECT_EQ(app->state, nullptr);
}

TEST_F(Loop, DestroyPendingSetOutsidePerformDeletesBeforeAnyLayer) {
    makeApplication<Application>();
    auto* other = new RecordingState(journal, "other", 1);
    auto* state = new RecordingState(journal, "a", 2);
    other->activate();
    state->destroyPending = true;
    state->perform(5);  // an inactive state may end itself too; the active one stays
    EXPECT_EQ(journal.lines, (std::vector<std::string>{"a deleted"}));
    EXPECT_EQ(application->state, other);
    delete other;
}

TEST_F(Loop, FrameRateLimitCapsLongPassesAndPadsShortOnes) {
    FrameRateProbe* app = makeApplication<FrameRateProbe>();
    auto* state = new RecordingState(journal, "a", 1);
    state->activate();

    app->perform(400);  // no limits: passed through, no sleep
    app->maxTicks = 50;
    app->perform(400);
    app->perform(50);  // at the cap exactly: not capped
    EXPECT_EQ(state->performed, (std::vector<unsigned int>{400, 50, 50}));
    EXPECT_EQ(app->sleeps, (std::vector<unsigned int>{1}));

    app->minTicks = 20;
    app->sleeps.clear();
    state->performed.clear();
    getElapsedTicks();
    app->perform(5);
    ASSERT_EQ(app->sleeps, (std::vector<unsigned int>{15}));
    ASSERT_EQ(state->performed.size(), 1u);
    // What the sleep really took is added; it can be longer on a busy machine, never shorter.
    EXPECT_GE(state->performed[0], 20u);

    app->perform(20);  // at the floor exactly: no padding
    EXPECT_EQ(app->sleeps.size(), 1u);
    EXPECT_EQ(state->performed.back(), 20u);
    delete state;
}

TEST_F(Loop, FixedRateStepsReadEventsPerStepAndDrawOncePerPass) {
    FixedRateApplication* app = makeApplication<FixedRateApplication>();
    auto* state = new RecordingState(journal, "a", 1);
    state->activate();
    app->queue = &evaluatorQueue;
    pushUserEvent(fakeTrigger(1));
    app->perform(250);
    EXPECT_EQ(journal.lines, (std::vector<std::string>{"a event 1", "a perform 0 100", "a perform 0 100", "a draw 0"}));
    EXPECT_EQ(app->accumulated, 50u);

    journal.lines.clear();
    app->perform(40);
    EXPECT_EQ(journal.lines, (std::vector<std::string>{"a draw 0"}));
    EXPECT_EQ(app->accumulated, 90u);

    // A state that ends itself in the first step gets no second step and no draw.
    journal.lines.clear();
    state->destroyInLayer = 0;
    app->perform(310);
    EXPECT_EQ(journal.lines, (std::vector<std::string>{"a perform 0 100", "a deleted"}));
    EXPECT_EQ(app->accumulated, 0u);  // the steps are still counted down
}

TEST(Application, DestroyingItEndsTheProcessWithStatusZero) {
    EXPECT_EXIT(
        {
            Application* app = new Application;
            delete app;
        },
        ::testing::ExitedWithCode(0), "");
}
