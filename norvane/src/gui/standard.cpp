#include "gui/standard.h"

#include <GL/gl.h>

#include "controls/queue.h"
#include "gui/root.h"
#include "xml/xml.h"

namespace norvane {
namespace gui {

namespace {
const char* const XML_CAPTION = "caption";
const char* const XML_IMAGE = "image";
const char* const XML_STYLE = "style";
const char* const XML_TRIGGER = "trigger";
const char* const XML_REPEAT = "repeat";
const char* const XML_CHECKED = "checked";
const char* const XML_TRIGGER_ON = "triggerOn";
const char* const XML_TRIGGER_OFF = "triggerOff";
const char* const XML_TRIGGER_KEY = "triggerKey";
const char* const XML_TRIGGER_JOY_BUTTON = "triggerJoyButton";
const char* const XML_TRIGGER_JOY_AXIS = "triggerJoyAxis";
}  // namespace

void CaptionedObject::getSelfFromNode(const Node* node, GUI* gui) {
    caption = node->getAttribute(XML_CAPTION, caption);
    if (const std::string* imageName = node->getAttribute(XML_IMAGE)) {
        setImage(findImage(gui, *imageName));
        debug::debug(dbgGui, "Attached image \"%s\": %p (%s)", imageName->c_str(), static_cast<void*>(image),
                     caption.c_str());
    }
}

void Label::getSelfFromNode(const Node* node, GUI* gui) {
    Component::getSelfFromNode(node, gui);
    CaptionedObject::getSelfFromNode(node, gui);
    style = readStyle(node, XML_STYLE, gui, style, name);
}

void Label::drawSelf() {
    if (!style) return;
    const basic_Rect<float> rect{0.0f, 0.0f, dimensions.width, dimensions.height};
    style->draw(rect);
    glPushMatrix();  // printing leaves the cursor after the text
    style->print(rect, caption.c_str(), image);
    glPopMatrix();
}

Button::Button() { focusable = true; }

void Button::getSelfFromNode(const Node* node, GUI* gui) {
    Component::getSelfFromNode(node, gui);
    CaptionedObject::getSelfFromNode(node, gui);
    setRepeat(node->getAttributeBool(XML_REPEAT, repeat));
    style = readStyle(node, XML_STYLE, gui, style, name);
    trigger = readTrigger(node, XML_TRIGGER, gui, trigger);
}

void Button::drawSelf() {
    if (!style) return;
    const basic_Rect<float> rect{0.0f, 0.0f, dimensions.width, dimensions.height};
    style->draw(rect, getState());
    glPushMatrix();
    style->print(rect, getState(), caption.c_str(), image);
    glPopMatrix();
}

void Button::doClick(ControlQueue* queue) {
    if (GUI* root = getRoot()) root->doConfirm();
    if (onClick) onClick->handleClickEvent(this);
    if (trigger) *queue << trigger;
}

void Button::setRepeat(bool isRepeating) {
    repeat = isRepeating;
    repeatTimer = 0.0f;
}

void Button::mouseDown(ControlQueue* queue, const basic_Vector2D<float>&, unsigned char button) {
    if (button != SDL_BUTTON_LEFT) return;
    captureMouse(true);
    pressed = true;
    if (!repeat) return;
    doClick(queue);
    GUI* root = getRoot();
    repeatTimer = root ? root->getKeyDelay() : 0.0f;
}

void Button::mouseUp(ControlQueue* queue, const basic_Vector2D<float>&, unsigned char button) {
    if (button != SDL_BUTTON_LEFT) return;
    if (isDown()) doClick(queue);
    repeatTimer = 0.0f;
    pressed = false;
    captureMouse(false);
}

void Button::performSelf(ControlQueue* queue, float ms) {
    if (repeatTimer == 0.0f) return;
    GUI* root = getRoot();
    if (!root) return;
    repeatTimer -= ms;
    while (repeatTimer <= 0.0f) {
        repeatTimer += root->getKeyRepeat();
        doClick(queue);
    }
}

bool Button::keyDown(ControlQueue* queue, SDLKey key, SDLMod modifiers, unsigned short unicode) {
    if (unicode == '\r' || unicode == ' ') {
        doClick(queue);
        return true;
    }
    return Component::keyDown(queue, key, modifiers, unicode);
}

bool Button::joyButtonDown(ControlQueue* queue, unsigned char, unsigned char button) {
    if (button != 0) return false;
    doClick(queue);
    return true;
}

Checkbox::Checkbox() { focusable = true; }

void Checkbox::getSelfFromNode(const Node* node, GUI* gui) {
    Component::getSelfFromNode(node, gui);
    CaptionedObject::getSelfFromNode(node, gui);
    checked = node->getAttributeBool(XML_CHECKED, checked);
    style = readStyle(node, XML_STYLE, gui, style, name);
    triggerOn = triggerOff = readTrigger(node, XML_TRIGGER, gui, triggerOn);
    triggerOn = readTrigger(node, XML_TRIGGER_ON, gui, triggerOn);
    triggerOff = readTrigger(node, XML_TRIGGER_OFF, gui, triggerOff);
}

void Checkbox::drawSelf() {
    if (!style) return;
    const basic_Rect<float> rect{0.0f, 0.0f, dimensions.width, dimensions.height};
    style->draw(rect, getState(), checked);
    glPushMatrix();
    style->print(rect, getState(), checked, caption.c_str(), image);
    glPopMatrix();
}

void Checkbox::doClick(ControlQueue* queue) {
    if (GUI* root = getRoot()) root->doConfirm();
    checked = !checked;
    if (Trigger* t = checked ? triggerOn : triggerOff) *queue << t;
}

void Checkbox::mouseDown(ControlQueue*, const basic_Vector2D<float>&, unsigned char button) {
    if (button != SDL_BUTTON_LEFT) return;
    captureMouse(true);
    pressed = true;
}

void Checkbox::mouseUp(ControlQueue* queue, const basic_Vector2D<float>&, unsigned char button) {
    if (button != SDL_BUTTON_LEFT) return;
    if (pressed && focused) doClick(queue);
    pressed = false;
    captureMouse(false);
}

bool Checkbox::keyDown(ControlQueue* queue, SDLKey key, SDLMod modifiers, unsigned short unicode) {
    if (key == SDLK_RETURN || key == SDLK_SPACE) {
        doClick(queue);
        return true;
    }
    return Component::keyDown(queue, key, modifiers, unicode);
}

bool Checkbox::joyButtonDown(ControlQueue* queue, unsigned char, unsigned char button) {
    if (button != 0) return false;
    doClick(queue);
    return true;
}

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
