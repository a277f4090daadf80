#include "gui/standard.h"

#include "controls/queue.h"
#include "gui/root.h"
#include "xml/xml.h"

namespace norvane {
namespace gui {

namespace {
const char* const XML_TRIGGER_KEY = "triggerKey";
const char* const XML_TRIGGER_JOY_BUTTON = "triggerJoyButton";
const char* const XML_TRIGGER_JOY_AXIS = "triggerJoyAxis";
}  // namespace

void InputCaptor::getSelfFromNode(const Node* node, GUI* gui) {
    Component::getSelfFromNode(node, gui);
    triggerKey = readTrigger(node, XML_TRIGGER_KEY, gui, triggerKey);
    triggerJoyButton = readTrigger(node, XML_TRIGGER_JOY_BUTTON, gui, triggerJoyButton);
    triggerJoyAxis = readTrigger(node, XML_TRIGGER_JOY_AXIS, gui, triggerJoyAxis);
}

bool InputCaptor::keyDown(ControlQueue* queue, SDLKey pressed, SDLMod, unsigned short) {
    if (!enabled) return true;
    key = pressed;
    if (triggerKey) *queue << triggerKey;
    setEnabled(false);
    return true;
}

bool InputCaptor::joyButtonDown(ControlQueue* queue, unsigned char joystick, unsigned char button) {
    if (!enabled) return true;
    joy = joystick;
    joyButton = button;
    if (triggerJoyButton) *queue << triggerJoyButton;
    setEnabled(false);
    return true;
}

bool InputCaptor::joyAxisMotion(ControlQueue* queue, unsigned char joystick, unsigned char axis, short value) {
    if (value == 0 || !enabled) return true;
    joy = joystick;
    joyAxis = axis;
    joyAxisDirection = value;
    if (triggerJoyAxis) *queue << triggerJoyAxis;
    setEnabled(false);
    return true;
}

}  // namespace gui
}  // namespace norvane
