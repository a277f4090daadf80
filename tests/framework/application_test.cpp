#include "framework/application.h"

#include <SDL/SDL.h>
#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include "controls/queue.h"
#include "tools/clock.h"

using namespace norvane;

namespace {

using Journal = std::vector<std::string>;

// Notes every call in a journal shared by all states, so the order across states shows.
class Recorder : public ApplicationState {
public:
    Recorder(Journal& journal, std::string name, int layers) : journal(journal), name(std::move(name)) {
        performLayers = drawLayers = layers;
    }
    ~Recorder() override { note("deleted"); }
    void deactivate() override {
        note("deactivate");
        ApplicationState::deactivate();
    }
    void handleEvent(const Trigger* t) override {
        note("event " + std::to_string(reinterpret_cast<uintptr_t>(t)));
        if (onEvent) onEvent();
    }
    void doPerform(int layer, unsigned int ticks) override {
        note("perform " + std::to_string(layer) + " " + std::to_string(ticks));
        if (destroyInLayer == layer) destroyPending = true;
    }
    void doDraw(int layer) override { note("draw " + std::to_string(layer)); }
    void note(const std::string& what) { journal.push_back(name + " " + what); }

    Journal& journal;
    std::string name;
    int destroyInLayer = -1;
    std::function<void()> onEvent;
};

// Fires the trigger carried in the user data of each SDL_USEREVENT.
class UserEvents : public Evaluator {
public:
    bool evaluate(const SDL_Event& event, ControlQueue* queue) override {
        if (event.type != SDL_USEREVENT) return false;
        *queue << static_cast<Trigger*>(event.user.data1);
        return true;
    }
};

void push(Uint8 type, uintptr_t trigger = 0) {
    SDL_Event event{};
    event.type = type;
    event.user.data1 = reinterpret_cast<void*>(trigger);
    ASSERT_EQ(SDL_PushEvent(&event), 0);
}

class SleepCounter : public FrameRateLimitedApplication {
public:
    void sleep(unsigned int ms) override {
        sleeps.push_back(ms);
        FrameRateLimitedApplication::sleep(ms);
    }
    std::vector<unsigned int> sleeps;
};

// Destroying an application ends the process, so the tests leave theirs alive (reachable through
// `application`).
class Loop : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_EQ(SDL_Init(SDL_INIT_VIDEO), 0) << SDL_GetError();
        events.push(&userEvents);
    }
    void TearDown() override { SDL_Quit(); }

    Journal journal;
    UserEvents userEvents;
    ControlQueue events;
};

}  // namespace

TEST_F(Loop, PassHandsTriggersToTheActiveStateThenPerformsAndDraws) {
    Application* app = new Application;
    auto* a = new Recorder(journal, "a", 2);
    auto* b = new Recorder(journal, "b", 1);
    a->activate();
    a->onEvent = [b] { b->activate(); };  // the following triggers go to b
    app->queue = &events;
    push(SDL_USEREVENT, 1);
    push(SDL_USEREVENT, 2);
    app->perform(16);
    EXPECT_EQ(journal, (Journal{"a event 1", "a deactivate", "b event 2", "b perform 0 16", "b draw 0"}));
    EXPECT_EQ(app->state, b);
    delete a;  // a stayed alive after it was deactivated

    // Without a queue no events are read.
    a = new Recorder(journal, "a", 2);
    journal.clear();
    a->activate();
    app->queue = nullptr;
    push(SDL_USEREVENT, 3);
    app->perform(7);
    EXPECT_EQ(journal, (Journal{"b deactivate", "a perform 0 7", "a perform 1 7", "a draw 0", "a draw 1"}));
    delete a;
    EXPECT_EQ(app->state, nullptr);
    delete b;
}

TEST_F(Loop, QuitRequestDeletesTheActiveStateAndEndsTheRun) {
    Application* app = new Application;
    (new Recorder(journal, "a", 1))->activate();
    app->queue = &events;
    push(SDL_USEREVENT, 1);
    push(SDL_QUIT);
    app->run();  // returns only because the state is gone
    EXPECT_EQ(journal, (Journal{"a deleted"}));
}

TEST_F(Loop, StateDestroyedInLayerZeroSkipsLaterLayersAndEndsTheRun) {
    Application* app = new Application;
    auto* a = new Recorder(journal, "a", 3);
    a->destroyInLayer = 0;
    a->activate();
    app->run();
    ASSERT_EQ(journal.size(), 2u);
    EXPECT_EQ(journal[1], "a deleted");  // no layer 1, no draw
    EXPECT_EQ(app->state, nullptr);
}

TEST_F(Loop, FrameRateLimitCapsLongPassesAndPadsShortOnes) {
    auto* app = new SleepCounter;
    (new Recorder(journal, "a", 1))->activate();
    app->perform(400);  // no limits: passed through
    app->maxTicks = 50;
    app->perform(400);
    app->perform(50);  // at the cap: not capped
    EXPECT_EQ(journal, (Journal{"a perform 0 400", "a draw 0", "a perform 0 50", "a draw 0", "a perform 0 50",
                                "a draw 0"}));
    EXPECT_EQ(app->sleeps, (std::vector<unsigned int>{1}));

    app->minTicks = 20;
    app->sleeps.clear();
    journal.clear();
    getElapsedTicks();
    app->perform(5);
    EXPECT_EQ(app->sleeps, (std::vector<unsigned int>{15}));
    // What the sleep really took is added: never less than asked, more on a busy machine.
    ASSERT_EQ(journal.size(), 2u);
    EXPECT_GE(std::stoul(journal[0].substr(std::string("a perform 0 ").size())), 20u);
    app->perform(20);  // at the floor: no padding
    EXPECT_EQ(app->sleeps.size(), 1u);
}

TEST_F(Loop, FixedRateStepsReadEventsPerStepAndDrawOncePerPass) {
    auto* app = new FixedRateApplication;
    auto* a = new Recorder(journal, "a", 1);
    a->activate();
    app->queue = &events;
    push(SDL_USEREVENT, 1);
    app->perform(250);
    app->perform(40);
    EXPECT_EQ(journal, (Journal{"a event 1", "a perform 0 100", "a perform 0 100", "a draw 0", "a draw 0"}));
    EXPECT_EQ(app->accumulated, 90u);

    // A state that ends itself in the first step gets no second step and no draw.
    journal.clear();
    a->destroyInLayer = 0;
    app->perform(310);
    EXPECT_EQ(journal, (Journal{"a perform 0 100", "a deleted"}));
    EXPECT_EQ(app->accumulated, 0u);
}

TEST(Application, DestroyingItEndsTheProcessWithStatusZero) {
    EXPECT_EXIT(delete new Application, ::testing::ExitedWithCode(0), "");
}
