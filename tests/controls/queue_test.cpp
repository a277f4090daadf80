#include "controls/queue.h"

#include <SDL/SDL.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "events.h"

using namespace norvane;

namespace {

Trigger* fakeTrigger(uintptr_t id) { return reinterpret_cast<Trigger*>(id); }

// Fires its trigger for every event it sees and claims the event when told to.
class Recorder : public Evaluator {
public:
    Recorder(std::string name, std::vector<std::string>& journal, Trigger* fires, bool claims)
        : name(std::move(name)), journal(journal), fires(fires), claims(claims) {}
    bool evaluate(const SDL_Event& event, ControlQueue* queue) override {
        journal.push_back(name + " " + std::to_string(event.type));
        if (fires) *queue << fires;
        return claims;
    }
    void perform(float ms, ControlQueue*) override { journal.push_back(name + " perform " + std::to_string(int(ms))); }
    void flush() override { journal.push_back(name + " flush"); }

    std::string name;
    std::vector<std::string>& journal;
    Trigger* fires;
    bool claims;
};

void push(Uint8 type) {
    SDL_Event event{};
    event.type = type;
    ASSERT_EQ(SDL_PushEvent(&event), 0);
}

void pushActive(Uint8 state, Uint8 gain) {
    SDL_Event event{};
    event.type = SDL_ACTIVEEVENT;
    event.active.state = state;
    event.active.gain = gain;
    ASSERT_EQ(SDL_PushEvent(&event), 0);
}

class Queue : public ::testing::Test {
protected:
    void SetUp() override { ASSERT_EQ(SDL_Init(SDL_INIT_VIDEO), 0) << SDL_GetError(); }
    void TearDown() override { SDL_Quit(); }

    std::vector<std::string> journal;
    ControlQueue q;
};

const std::string KEYDOWN = std::to_string(SDL_KEYDOWN);
const std::string KEYUP = std::to_string(SDL_KEYUP);
const std::string ACTIVE = std::to_string(SDL_ACTIVEEVENT);

}  // namespace

TEST_F(Queue, QuitIsReportedButNeverOfferedAndTheOtherEventsStillArriveInOrder) {
    Recorder back("back", journal, fakeTrigger(1), true);
    q.push(&back);
    push(SDL_KEYDOWN);
    push(SDL_QUIT);
    push(SDL_KEYUP);
    EXPECT_FALSE(q.readEvents());
    EXPECT_EQ(journal, (std::vector<std::string>{"back " + KEYDOWN, "back " + KEYUP}));
    EXPECT_EQ(drain(q), (std::vector<Trigger*>{fakeTrigger(1), fakeTrigger(1)}));
    EXPECT_TRUE(q.readEvents());  // nothing pending
}

TEST_F(Queue, FocusTriggersComeBeforeWhatTheEvaluatorsFireForTheSameEvent) {
    Recorder back("back", journal, fakeTrigger(7), false);
    q.push(&back);
    q.focusLostTrigger = fakeTrigger(1);
    q.focusGainedTrigger = fakeTrigger(2);
    pushActive(SDL_APPINPUTFOCUS, 0);
    pushActive(SDL_APPACTIVE, 1);
    pushActive(SDL_APPMOUSEFOCUS, 0);  // the pointer leaving is no loss of focus
    EXPECT_TRUE(q.readEvents());
    EXPECT_EQ(drain(q), (std::vector<Trigger*>{fakeTrigger(1), fakeTrigger(7), fakeTrigger(2), fakeTrigger(7),
                                               fakeTrigger(7)}));
    EXPECT_EQ(journal.size(), 3u);  // every active event is still offered to the stack

    q.focusLostTrigger = nullptr;
    pushActive(SDL_APPINPUTFOCUS | SDL_APPACTIVE, 0);
    q.readEvents();
    EXPECT_EQ(drain(q), (std::vector<Trigger*>{fakeTrigger(7)}));
}

TEST_F(Queue, FirstEnabledConsumerWinsAndDisabledEvaluatorsAreSkipped) {
    Recorder back("back", journal, fakeTrigger(1), true);
    Recorder front("front", journal, fakeTrigger(2), true);
    Recorder passing("passing", journal, nullptr, false);
    q.push(&back);
    q.push(&front);
    q.push(&passing);  // added last: asked first
    push(SDL_KEYDOWN);
    q.readEvents();
    EXPECT_EQ(journal, (std::vector<std::string>{"passing " + KEYDOWN, "front " + KEYDOWN}));
    EXPECT_EQ(drain(q), (std::vector<Trigger*>{fakeTrigger(2)}));

    journal.clear();
    front.enabled = false;
    push(SDL_KEYUP);
    q.readEvents();
    EXPECT_EQ(journal, (std::vector<std::string>{"passing " + KEYUP, "back " + KEYUP}));
    EXPECT_EQ(drain(q), (std::vector<Trigger*>{fakeTrigger(1)}));
}

TEST_F(Queue, FlushReachesDisabledEvaluatorsButPerformDoesNot) {
    Recorder a("a", journal, nullptr, false);
    Recorder b("b", journal, nullptr, false);
    q.push(&a);
    q.push(&b);
    a.enabled = false;
    q << fakeTrigger(3);
    q.perform(16.0f);
    q.flush();
    EXPECT_EQ(journal, (std::vector<std::string>{"b perform 16", "b flush", "a flush"}));
    EXPECT_FALSE(q.isEmpty());  // flushing the evaluators leaves the waiting triggers alone
}

TEST_F(Queue, FifoKeepsOrderAcrossPartialDrains) {
    // A queue that is never drained to the end is compacted; order must survive that.
    uintptr_t next = 1, expected = 1;
    Trigger* t = nullptr;
    for (int round = 0; round < 50; ++round) {
        for (int i = 0; i < 7; ++i) q << fakeTrigger(next++);
        for (int i = 0; i < 5; ++i) {
            q >> t;
            ASSERT_EQ(t, fakeTrigger(expected++));
        }
    }
    while (q >> t, t) ASSERT_EQ(t, fakeTrigger(expected++));
    EXPECT_EQ(expected, next);
    EXPECT_TRUE(q.isEmpty());
    q >> t;
    EXPECT_EQ(t, nullptr);
}
