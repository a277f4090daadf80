#ifndef TESTS_GUI_PROBE_H
#define TESTS_GUI_PROBE_H

#include <SDL/SDL.h>

#include <string>
#include <vector>

#include "gui/core.h"
#include "gui/root.h"

namespace probe {

using norvane::ControlQueue;
using norvane::Trigger;
using norvane::basic_Vector2D;
using norvane::gui::Component;

// A component that writes every event it gets into a shared journal as "name call x,y".
class Probe : public Component {
public:
    Probe(std::vector<std::string>& journal, const std::string& probeName, bool isFocusable = true);
    void enter(ControlQueue*, const basic_Vector2D<float>& p) override { log("enter", p); }
    void leave(ControlQueue*, const basic_Vector2D<float>& p) override { log("leave", p); }
    void mouseDown(ControlQueue*, const basic_Vector2D<float>& p, unsigned char b) override;
    void mouseUp(ControlQueue*, const basic_Vector2D<float>& p, unsigned char b) override;
    void mouseMove(ControlQueue*, const basic_Vector2D<float>& p) override { log("move", p); }
    bool keyDown(ControlQueue* q, SDLKey key, SDLMod mod, unsigned short unicode) override;
    bool joyButtonDown(ControlQueue*, unsigned char joystick, unsigned char button) override;
    bool joyAxisMotion(ControlQueue* q, unsigned char joystick, unsigned char axis, short value) override;
    void performSelf(ControlQueue*, float) override { journal.push_back(name + " perform"); }

    std::vector<std::string>& journal;

private:
    void log(const std::string& call, const basic_Vector2D<float>& p);
};

// Counts the callback's calls.
struct Callback : norvane::gui::GUICallback {
    void onMove() override { ++moves; }
    void onConfirm() override { ++confirms; }
    int moves = 0;
    int confirms = 0;
};

Trigger* fakeTrigger(uintptr_t id);
std::vector<Trigger*> drain(ControlQueue& queue);

SDL_Event keyEvent(Uint8 type, SDLKey key, Uint16 unicode = 0);
SDL_Event joyAxisEvent(Uint8 joystick, Uint8 axis, Sint16 value);
SDL_Event joyButtonEvent(Uint8 type, Uint8 joystick, Uint8 button);
SDL_Event mouseMotionEvent(Uint16 x, Uint16 y);
SDL_Event mouseButtonEvent(Uint8 type, Uint8 button, Uint16 x, Uint16 y);

}  // namespace probe

#endif
