#include "controls/queue.h"

#include <gtest/gtest.h>

#include <string>

#include "events.h"

using namespace norvane;

namespace {

Trigger* fake(uintptr_t id) { return reinterpret_cast<Trigger*>(id); }

// Notes every call in `journal`, fires `fires` for every event and claims the event when told to.
class Recorder : public Evaluator {
public:
    Recorder(std::string name, std::vector<std::string>& journal, Trigger* fires, bool claims)
        : name(std::move(name)), journal(journal), fires(fires), claims(claims) {}
    bool evaluate(const SDL_Event& event, ControlQueue* queue) override {
        journal.push_back(name + " " + std::to_string(event.type));
        if (fires) *queue << fires;
        return claims;
    }
    void perform(float, ControlQueue*) override { journal.push_back(name + " perform"); }
    void flush() override { journal.push_back(name + " flush"); }

    std::string name;
    std::vector<std::string>& journal;
    Trigger* fires;
    bool claims;
};

void push(Uint8 type, Uint8 focusState = 0, Uint8 gain = 0) {
    SDL_Event event{};
    event.type = type;
    event.active.state = focusState;
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

}  // namespace

TEST_F(Queue, QuitIsReportedButNeverOfferedAndTheOtherEventsStillArriveInOrder) {
    Recorder back("back", journal, fake(1), true);
    q.push(&back);
    push(SDL_KEYDOWN);
    push(SDL_QUIT);
    push(SDL_KEYUP);
    EXPECT_FALSE(q.readEvents());
    EXPECT_EQ(journal, (std::vector<std::string>{"back " + KEYDOWN, "back " + KEYUP}));
    EXPECT_EQ(drain(q).size(), 2u);
    EXPECT_TRUE(q.readEvents());
}

TEST_F(Queue, FocusTriggersComeBeforeWhatTheEvaluatorsFireForTheSameEvent) {
    Recorder back("back", journal, fake(7), false);
    q.push(&back);
    q.focusLostTrigger = fake(1);
    q.focusGainedTrigger = fake(2);
    push(SDL_ACTIVEEVENT, SDL_APPINPUTFOCUS, 0);
    push(SDL_ACTIVEEVENT, SDL_APPACTIVE, 1);
    push(SDL_ACTIVEEVENT, SDL_APPMOUSEFOCUS, 0);  // the pointer leaving is no loss of focus
    q.readEvents();
    EXPECT_EQ(drain(q), (std::vector<Trigger*>{fake(1), fake(7), fake(2), fake(7), fake(7)}));

    q.focusLostTrigger = nullptr;
    push(SDL_ACTIVEEVENT, SDL_APPINPUTFOCUS | SDL_APPACTIVE, 0);
    q.readEvents();
    EXPECT_EQ(drain(q), (std::vector<Trigger*>{fake(7)}));
}

TEST_F(Queue, FirstEnabledConsumerWinsAndOnlyFlushReachesDisabledEvaluators) {
    Recorder back("back", journal, fake(1), true);
    Recorder front("front", journal, fake(2), true);
    Recorder passing("passing", journal, nullptr, false);
    q.push(&back);
    q.push(&front);
    q.push(&passing);  // added last: asked first
    push(SDL_KEYDOWN);
    q.readEvents();
    front.enabled = false;
    push(SDL_KEYUP);
    q.readEvents();
    q.perform(16.0f);
    q.flush();
    EXPECT_EQ(journal, (std::vector<std::string>{"passing " + KEYDOWN, "front " + KEYDOWN, "passing " + KEYUP,
                                                 "back " + KEYUP, "passing perform", "back perform", "passing flush",
                                                 "front flush", "back flush"}));
    EXPECT_EQ(drain(q), (std::vector<Trigger*>{fake(2), fake(1)}));  // flushing left the FIFO alone
}

TEST_F(Queue, FifoKeepsOrderWhenNeverDrainedToTheEnd) {
    // Such a queue is compacted now and then; the order must survive that.
    uintptr_t next = 1, expected = 1;
    Trigger* t = nullptr;
    for (int round = 0; round < 50; ++round) {
        for (int i = 0; i < 7; ++i) q << fake(next++);
        for (int i = 0; i < 5; ++i) {
            q >> t;
            ASSERT_EQ(t, fake(expected++));
        }
    }
    while (q >> t, t) ASSERT_EQ(t, fake(expected++));
    EXPECT_EQ(expected, next);
    EXPECT_TRUE(q.isEmpty());
}
