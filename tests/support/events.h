#ifndef TESTS_SUPPORT_EVENTS_H
#define TESTS_SUPPORT_EVENTS_H

#include <SDL/SDL.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <vector>

#include "controls/queue.h"

// Builders for the events the tests offer, and a reader of the trigger FIFO.
inline SDL_Event keyEvent(SDLKey key, bool down, Uint16 unicode = 0) {
    SDL_Event e{};
    e.type = down ? SDL_KEYDOWN : SDL_KEYUP;
    e.key.keysym.sym = key;
    e.key.keysym.unicode = unicode;
    return e;
}

inline SDL_Event joyButtonEvent(Uint8 joystick, Uint8 button, bool down = true) {
    SDL_Event e{};
    e.type = down ? SDL_JOYBUTTONDOWN : SDL_JOYBUTTONUP;
    e.jbutton.which = joystick;
    e.jbutton.button = button;
    return e;
}

inline SDL_Event joyAxisEvent(Uint8 joystick, Uint8 axis, Sint16 value) {
    SDL_Event e{};
    e.type = SDL_JOYAXISMOTION;
    e.jaxis.which = joystick;
    e.jaxis.axis = axis;
    e.jaxis.value = value;
    return e;
}

inline SDL_Event mouseMotionEvent(Uint16 x, Uint16 y, Sint16 xrel = 0, Sint16 yrel = 0) {
    SDL_Event e{};
    e.type = SDL_MOUSEMOTION;
    e.motion.x = x;
    e.motion.y = y;
    e.motion.xrel = xrel;
    e.motion.yrel = yrel;
    return e;
}

inline SDL_Event mouseButtonEvent(Uint8 button, bool down, Uint16 x, Uint16 y) {
    SDL_Event e{};
    e.type = down ? SDL_MOUSEBUTTONDOWN : SDL_MOUSEBUTTONUP;
    e.button.button = button;
    e.button.x = x;
    e.button.y = y;
    return e;
}

// A distinct trigger pointer for queues that never look inside.
inline norvane::Trigger* fakeTrigger(uintptr_t id) { return reinterpret_cast<norvane::Trigger*>(id); }

inline std::vector<norvane::Trigger*> drain(norvane::ControlQueue& q) {
    std::vector<norvane::Trigger*> out;
    norvane::Trigger* t = nullptr;
    while (q >> t, t) out.push_back(t);
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
