#ifndef TESTS_SUPPORT_EVENTS_H
#define TESTS_SUPPORT_EVENTS_H

#include <SDL/SDL.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <vector>

#include "controls/queue.h"

// Builders for the events the tests offer, and a reader of the trigger FIFO.
template <typename Part>
SDL_Event makeEvent(Part SDL_Event::*member, const Part& part) {
    SDL_Event e{};
    e.*member = part;
    return e;
}
inline SDL_Event keyEvent(SDLKey key, bool down, Uint16 unicode = 0) {
    return makeEvent(&SDL_Event::key, {Uint8(down ? SDL_KEYDOWN : SDL_KEYUP), 0, down, {0, key, KMOD_NONE, unicode}});
}
inline SDL_Event joyButtonEvent(Uint8 joystick, Uint8 button, bool down = true) {
    return makeEvent(&SDL_Event::jbutton, {Uint8(down ? SDL_JOYBUTTONDOWN : SDL_JOYBUTTONUP), joystick, button, down});
}
inline SDL_Event joyAxisEvent(Uint8 joystick, Uint8 axis, Sint16 value) {
    return makeEvent(&SDL_Event::jaxis, {SDL_JOYAXISMOTION, joystick, axis, value});
}
inline SDL_Event mouseMotionEvent(Uint16 x, Uint16 y, Sint16 xrel = 0, Sint16 yrel = 0) {
    return makeEvent(&SDL_Event::motion, {SDL_MOUSEMOTION, 0, 0, x, y, xrel, yrel});
}
inline SDL_Event mouseButtonEvent(Uint8 button, bool down, Uint16 x, Uint16 y) {
    return makeEvent(&SDL_Event::button, {Uint8(down ? SDL_MOUSEBUTTONDOWN : SDL_MOUSEBUTTONUP), 0, button, down, x, y});
}

// A distinct trigger pointer for queues that never look inside.
inline norvane::Trigger* fakeTrigger(uintptr_t id) { return reinterpret_cast<norvane::Trigger*>(id); }

inline std::vector<norvane::Trigger*> drain(norvane::ControlQueue& q) {
    std::vector<norvane::Trigger*> out;
    for (norvane::Trigger* t = nullptr; q >> t, t;) out.push_back(t);
    return out;
}

// Takes every event it is offered and notes its type: what the evaluators in front let through.
class CatchAll : public norvane::Evaluator {
public:
    bool evaluate(const SDL_Event& event, norvane::ControlQueue*) override {
        seen.push_back(event.type);
        return true;
    }
    std::vector<int> seen;
};

// SDL's own event queue (the dummy video driver will do) read by a control queue, as in the game.
class EventQueueTest : public testing::Test {
protected:
    void SetUp() override { ASSERT_EQ(SDL_Init(SDL_INIT_VIDEO), 0) << SDL_GetError(); }
    void TearDown() override { SDL_Quit(); }
    static void push(SDL_Event event) { ASSERT_EQ(SDL_PushEvent(&event), 0); }
    // What one event fired, read through SDL's queue.
    std::vector<norvane::Trigger*> deliver(const SDL_Event& event) {
        push(event);
        EXPECT_TRUE(q.readEvents());
        return drain(q);
    }

    norvane::ControlQueue q;
};

#endif
