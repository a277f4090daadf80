#ifndef TESTS_CONTROLS_EVENTS_H
#define TESTS_CONTROLS_EVENTS_H

#include <SDL/SDL.h>

#include <vector>

#include "controls/queue.h"

// Builders for the SDL events the tests feed to evaluators, and a FIFO reader.
inline SDL_Event keyEvent(SDLKey key, bool down) {
    SDL_Event e{};
    e.type = down ? SDL_KEYDOWN : SDL_KEYUP;
    e.key.state = down ? SDL_PRESSED : SDL_RELEASED;
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

inline SDL_Event joyAxisEvent(Uint8 joystick, Uint8 axis, Sint16 value) {
    SDL_Event e{};
    e.type = SDL_JOYAXISMOTION;
    e.jaxis.which = joystick;
    e.jaxis.axis = axis;
    e.jaxis.value = value;
    return e;
}

inline SDL_Event mouseButtonEvent(Uint8 button, bool down) {
    SDL_Event e{};
    e.type = down ? SDL_MOUSEBUTTONDOWN : SDL_MOUSEBUTTONUP;
    e.button.button = button;
    return e;
}

inline SDL_Event mouseMotionEvent(Sint16 xrel, Sint16 yrel) {
    SDL_Event e{};
    e.type = SDL_MOUSEMOTION;
    e.motion.xrel = xrel;
    e.motion.yrel = yrel;
    return e;
}

inline std::vector<norvane::Trigger*> drain(norvane::ControlQueue& q) {
    std::vector<norvane::Trigger*> out;
    norvane::Trigger* t = nullptr;
    while (q >> t, t) out.push_back(t);
    return out;
}

#endif
