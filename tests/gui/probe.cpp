#include "gui/probe.h"

#include "controls/queue.h"

namespace probe {

Probe::Probe(std::vector<std::string>& journal, const std::string& probeName, bool isFocusable) : journal(journal) {
    name = probeName;
    focusable = isFocusable;
}

void Probe::log(const std::string& call, const basic_Vector2D<float>& p) {
    journal.push_back(name + " " + call + " " + std::to_string(int(p.x)) + "," + std::to_string(int(p.y)));
}

void Probe::mouseDown(ControlQueue*, const basic_Vector2D<float>& p, unsigned char b) {
    log("down" + std::to_string(b), p);
}

void Probe::mouseUp(ControlQueue*, const basic_Vector2D<float>& p, unsigned char b) { log("up" + std::to_string(b), p); }

bool Probe::keyDown(ControlQueue* q, SDLKey key, SDLMod mod, unsigned short unicode) {
    journal.push_back(name + " key " + std::to_string(key));
    return Component::keyDown(q, key, mod, unicode);
}

bool Probe::joyButtonDown(ControlQueue*, unsigned char joystick, unsigned char button) {
    journal.push_back(name + " joybutton " + std::to_string(joystick) + "," + std::to_string(button));
    return true;
}

bool Probe::joyAxisMotion(ControlQueue* q, unsigned char joystick, unsigned char axis, short value) {
    journal.push_back(name + " axis " + std::to_string(joystick) + "," + std::to_string(axis) + "," +
                      std::to_string(value));
    return Component::joyAxisMotion(q, joystick, axis, value);
}

Trigger* fakeTrigger(uintptr_t id) { return reinterpret_cast<Trigger*>(id); }

std::vector<Trigger*> drain(ControlQueue& queue) {
    std::vector<Trigger*> out;
    Trigger* t = nullptr;
    while (queue >> t, t) out.push_back(t);
    return out;
}

SDL_Event keyEvent(Uint8 type, SDLKey key, Uint16 unicode) {
    SDL_Event e{};
    e.type = type;
    e.key.keysym.sym = key;
    e.key.keysym.unicode = unicode;
    return e;
}

SDL_Event joyAxisEvent(Uint8 joystick, Uint8 axis, Sint16 value) {
    SDL_Event e{};
    e.type = SDL_JOYAXISMOTION;
    e.jaxis.which = joystick;
    e.jaxis.axis = axis;
    e.jaxis.value = value;
    return e;
}

SDL_Event joyButtonEvent(Uint8 type, Uint8 joystick, Uint8 button) {
    SDL_Event e{};
    e.type = type;
    e.jbutton.which = joystick;
    e.jbutton.button = button;
    return e;
}

SDL_Event mouseMotionEvent(Uint16 x, Uint16 y) {
    SDL_Event e{};
    e.type = SDL_MOUSEMOTION;
    e.motion.x = x;
    e.motion.y = y;
    return e;
}

SDL_Event mouseButtonEvent(Uint8 type, Uint8 button, Uint16 x, Uint16 y) {
    SDL_Event e{};
    e.type = type;
    e.button.button = button;
    e.button.x = x;
    e.button.y = y;
    return e;
}

}  // namespace probe
