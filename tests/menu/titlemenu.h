#ifndef TESTS_MENU_TITLEMENU_H
#define TESTS_MENU_TITLEMENU_H

#include <SDL/SDL.h>

#include <initializer_list>
#include <string>

#include "gameresources/gamedata.h"
#include "gui/core.h"

namespace vantorix {
class Menu;
}

// The title menu brought up in this process as the game does it, driven frame by frame with SDL
// events through the real control queue.
class TitleMenu : public GameWindow {
protected:
    void SetUp() override;
    void TearDown() override;

    void frames(int count = 1);  // whole passes of the loop, 10 ms each
    void finishLoading();
    void keys(std::initializer_list<SDLKey> syms);  // each pressed and released in a frame of its own
    void joyAxis(Uint8 axis, Sint16 value);         // joystick 0; the stick is let go afterwards
    void joyButtons(std::initializer_list<Uint8> buttons);  // joystick 0, each pressed and released
    void mouseTo(int x, int y);                     // window pixels, y downwards as SDL counts
    bool focusIs(const std::string& name) const;
    bool shown(const std::string& name) const;
    norvane::gui::Component* component(const std::string& name) const;
    std::string caption(const std::string& labelName) const;

    vantorix::Menu* menu = nullptr;
};

#endif
