#include "framework/application.h"

#include <SDL/SDL.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/events.h"
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
        note("event", reinterpret_cast<uintptr_t>(t));
        if (next) next->activate();
    }
    void doPerform(int layer, unsigned int ticks) override {
        note("perform " + std::to_string(layer), ticks);
        destroyPending = destroyInLayer == layer;
    }
    void doDraw(int layer) override { note("draw", layer); }
    void note(const std::string& what, long n = -1) {
        journal.push_back(name + " " + what + (n < 0 ? "" : " " + std::to_string(n)));
    }

    Journal& journal;
    std::string name;
    int destroyInLayer = -1;
    Recorder* next = nullptr;  // activated by the first trigger
};

class SleepCounter : public FrameRateLimitedApplication {
public:
    void sleep(unsigned int ms) override {
        sleeps.push_back(ms);
        FrameRateLimitedApplication::sleep(ms);
    }
    std::vector<unsigned int> sleeps;
};

// Destroying an application ends the process, so the tests leave theirs alive.
class Loop : public EventQueueTest {
protected:
    Journal journal;
};

}  // namespace

TEST_F(Loop, PassHandsTriggersToTheActiveStateThenPerformsAndDrawsAtTheRateItIsTold) {
    static Application* app = new Application;  // kept reachable: destroying it would end the process
    auto* a = new Recorder(journal, "a", 2);
    auto* b = new Recorder(journal, "b", 1);
    a->activate();
    a->next = b;  // the following triggers go to b
    app->queue = &q;
    q << fakeTrigger(1) << fakeTrigger(2);
    app->perform(16);
    EXPECT_EQ(journal, (Journal{"a event 1", "a deactivate", "b event 2", "b perform 0 16", "b draw 0"}));
    a->next = nullptr;
    journal.clear();
    a->activate();
    app->queue = nullptr;  // without a queue no events are read
    q << fakeTrigger(3);
    app->perform(7);
    delete a;  // a stays alive when deactivated
    EXPECT_EQ(app->state, nullptr);
    delete b;
    EXPECT_EQ(journal, (Journal{"b deactivate", "a perform 0 7", "a perform 1 7", "a draw 0", "a draw 1", "a deleted",
                                "b deleted"}));

    // A quit request deletes the active state, which ends the run.
    app->queue = &q;
    (new Recorder(journal, "c", 1))->activate();
    push(SDL_Event{SDL_QUIT});
    app->run();
    EXPECT_EQ(journal.back(), "c deleted");
    // So does a state destroyed in layer 0, which skips its later layers.
    app->queue = nullptr;
    auto* d = new Recorder(journal, "d", 3);
    d->destroyInLayer = 0;
    d->activate();
    journal.clear();
    app->run();
    ASSERT_EQ(journal.size(), 2u);
    EXPECT_EQ(journal[1], "d deleted");

    // A frame rate limit caps long passes and pads short ones; fixed-rate steps read the events per
    // step and draw once per pass.
    static auto* limited = new SleepCounter;
    a = new Recorder(journal, "a", 1);
    a->activate();
    journal.clear();
    limited->perform(400);  // no limits: passed through
    limited->maxTicks = 50;
    for (unsigned int ticks : {400, 50}) limited->perform(ticks);  // 50 is at the cap: not capped
    EXPECT_EQ(journal,
              (Journal{"a perform 0 400", "a draw 0", "a perform 0 50", "a draw 0", "a perform 0 50", "a draw 0"}));
    limited->minTicks = 20;
    journal.clear();
    getElapsedTicks();
    for (unsigned int ticks : {5, 20}) limited->perform(ticks);  // 20 is at the floor: no padding
    EXPECT_EQ(limited->sleeps, (std::vector<unsigned int>{1, 15}));
    // What the sleep really took is added: never less than asked, more on a busy machine.
    EXPECT_GE(std::stoul(journal.at(0).substr(std::string("a perform 0 ").size())), 20u);

    auto* fixed = new FixedRateApplication;
    a->activate();  // in the new application
    fixed->queue = &q;  // still holding the trigger sent while no queue was read
    journal.clear();
    fixed->perform(250);
    fixed->perform(40);
    EXPECT_EQ(fixed->accumulated, 90u);
    a->destroyInLayer = 0;  // ending itself in the first step, it gets no second step and no draw
    fixed->perform(310);
    EXPECT_EQ(journal, (Journal{"a event 3", "a perform 0 100", "a perform 0 100", "a draw 0", "a draw 0",
                                "a perform 0 100", "a deleted"}));
    EXPECT_EQ(fixed->accumulated, 0u);
}

TEST(Application, DestroyingItEndsTheProcessWithStatusZero) {
    EXPECT_EXIT(delete new Application, ::testing::ExitedWithCode(0), "");
}
