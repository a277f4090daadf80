#include "controls/queue.h"

#include <gtest/gtest.h>

#include <string>

#include "support/events.h"

using namespace norvane;

namespace {

using Journal = std::vector<std::string>;

// Notes every call in `journal`, fires `fires` for every event and claims the event when told to.
struct Recorder : Evaluator {
    Recorder(std::string name, Journal& journal, Trigger* fires, bool claims)
        : name(std::move(name)), journal(journal), fires(fires), claims(claims) {}
    bool evaluate(const SDL_Event& event, ControlQueue* queue) override {
        journal.push_back(name + (event.type == SDL_KEYDOWN ? " down" : " up"));
        if (fires) *queue << fires;
        return claims;
    }
    void perform(float, ControlQueue*) override { journal.push_back(name + " perform"); }
    void flush() override { journal.push_back(name + " flush"); }

    std::string name;
    Journal& journal;
    Trigger* fires;
    bool claims;
};

SDL_Event focusEvent(Uint8 state, Uint8 gain) { return makeEvent(&SDL_Event::active, {SDL_ACTIVEEVENT, gain, state}); }

using Queue = EventQueueTest;
using Fired = std::vector<Trigger*>;

}  // namespace

TEST_F(Queue, FirstEnabledConsumerWinsQuitIsOnlyReportedAndFlushReachesEveryone) {
    Journal journal;
    Recorder back("back", journal, fakeTrigger(1), true), front("front", journal, fakeTrigger(2), true);
    Recorder passing("passing", journal, nullptr, false);
    for (Recorder* r : {&back, &front, &passing}) q.push(r);  // the last added is asked first
    push(keyEvent(SDLK_a, true));
    push(SDL_Event{SDL_QUIT});
    push(keyEvent(SDLK_a, true));  // still read after the quit
    EXPECT_FALSE(q.readEvents());
    front.enabled = false;
    EXPECT_EQ(deliver(keyEvent(SDLK_a, false)), (Fired{fakeTrigger(2), fakeTrigger(2), fakeTrigger(1)}));
    q.perform(16.0f);
    q.flush();
    EXPECT_EQ(journal, (Journal{"passing down", "front down", "passing down", "front down", "passing up", "back up",
                                "passing perform", "back perform", "passing flush", "front flush", "back flush"}));

    // Focus triggers come before what the evaluators fire for the same event.
    back.claims = passing.claims = false;
    back.fires = fakeTrigger(7);
    q.focusLostTrigger = fakeTrigger(1);
    q.focusGainedTrigger = fakeTrigger(2);
    push(focusEvent(SDL_APPINPUTFOCUS, 0));
    push(focusEvent(SDL_APPACTIVE, 1));
    EXPECT_EQ(deliver(focusEvent(SDL_APPMOUSEFOCUS, 0)),  // the pointer leaving is no loss of focus
              (Fired{fakeTrigger(1), fakeTrigger(7), fakeTrigger(2), fakeTrigger(7), fakeTrigger(7)}));
    q.focusLostTrigger = nullptr;
    EXPECT_EQ(deliver(focusEvent(SDL_APPINPUTFOCUS | SDL_APPACTIVE, 0)), (Fired{fakeTrigger(7)}));
}
