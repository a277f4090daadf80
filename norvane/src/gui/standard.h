#ifndef NORVANE_GUI_STANDARD_H
#define NORVANE_GUI_STANDARD_H

#include "gui/core.h"

namespace norvane {
namespace gui {

// Records the next key, joystick button or joystick axis push, for redefining controls. The
// application enables it and gives it the focus; it disables itself once it has caught something,
// and swallows every key meanwhile, Tab and the arrows included.
class InputCaptor : public Component {
public:
    void getSelfFromNode(const Node* node, GUI* gui) override;
    bool keyDown(ControlQueue* queue, SDLKey key, SDLMod modifiers, unsigned short unicode) override;
    bool joyButtonDown(ControlQueue* queue, unsigned char joystick, unsigned char button) override;
    bool joyAxisMotion(ControlQueue* queue, unsigned char joystick, unsigned char axis, short value) override;

    SDLKey getKey() const { return key; }
    unsigned char getJoy() const { return joy; }
    unsigned char getJoyButton() const { return joyButton; }
    unsigned char getJoyAxis() const { return joyAxis; }
    short getJoyAxisDirection() const { return joyAxisDirection; }

    Trigger* triggerKey = nullptr;
    Trigger* triggerJoyButton = nullptr;
    Trigger* triggerJoyAxis = nullptr;

private:
    SDLKey key = SDLK_UNKNOWN;
    unsigned char joy = 0;
    unsigned char joyButton = 0;
    unsigned char joyAxis = 0;
    short joyAxisDirection = 0;  // -1 or 1 once an axis was caught
};

}  // namespace gui
}  // namespace norvane

#endif
