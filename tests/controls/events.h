#ifndef TESTS_CONTROLS_EVENTS_H
#define TESTS_CONTROLS_EVENTS_H

#include <SDL/SDL.h>

#include <vector>

#include "controls/queue.h"

// Builders for the events the tests feed to evaluators, and a reader of the trigger FIFO.
inline SDL_Event keyEvent(SDLKey key, bool down) {
    SDL_Event e{};
    e.type = down ? SDL_KEYDOWN : SDL_KEYUP;
    e.key.keysym.sym = key;
    return e;
}

inline SDL_Event joyButtonEvent(Uint8 joystick, Uint8 button, bool down) {
    SDL_Event e{};
    e.type = down ? SDL_JOYBUTTONDOWN : SDL_JOYBUTTONUP;
    e.jbutton.which = joystick;
    e.jbutton.button = button;
    return e;
}

inline SDL_Event joyAxisEvent(Sint16 value) {
    SDL_Event e{};
    e.type = SDL_JOYAXISMOTION;
    e.jaxis.axis = 1;
    e.jaxis.value = value;
    return e;
}

inline std::vector<norvane::Trigger*> drain(norvane::ControlQueue& q) {
    std::vector<norvane::Trigger*> out;
    norvane::Trigger* t = nullptr;
    while (q >> t, t) out.push_back(t);
    return out;
}

#endif
