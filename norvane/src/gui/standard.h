#ifndef NORVANE_GUI_STANDARD_H
#define NORVANE_GUI_STANDARD_H

#include <string>

#include "gui/core.h"
#include "gui/styles.h"

namespace norvane {

namespace gfx {
class Image;
}

namespace gui {

// The text and image a widget shows. The image is borrowed from the GUI's images bank.
class CaptionedObject {
public:
    virtual ~CaptionedObject() = default;
    virtual void getSelfFromNode(const Node* node, GUI* gui);
    virtual void setCaption(const std::string& text) { caption = text; }
    virtual void setImage(gfx::Image* newImage) { image = newImage; }
    virtual std::string getCaption() const { return caption; }
    virtual gfx::Image* getImage() const { return image; }

protected:
    std::string caption;  // ISO-8859-1 bytes, as the fonts index them
    gfx::Image* image = nullptr;
};

class ClickEventHandler {
public:
    virtual ~ClickEventHandler() = default;
    virtual void handleClickEvent(Component* clicked) = 0;
};

class Label : public Component, public CaptionedObject {
public:
    void getSelfFromNode(const Node* node, GUI* gui) override;
    void drawSelf() override;

    void setStyle(LabelStyle* newStyle) { style = newStyle; }
    LabelStyle* getStyle() const { return style; }

private:
    LabelStyle* style = nullptr;
};

// Clicks on release of mouse button 1 while the cursor is still on it, on Return or space, and on
// joystick button 0. A repeating button clicks on press, every keyRepeat ms after keyDelay while
// held, and once more on release.
class Button : public Component, public CaptionedObject {
public:
    Button();
    void getSelfFromNode(const Node* node, GUI* gui) override;
    void drawSelf() override;
    void mouseDown(ControlQueue* queue, const basic_Vector2D<float>& position, unsigned char button) override;
    void mouseUp(ControlQueue* queue, const basic_Vector2D<float>& position, unsigned char button) override;
    void performSelf(ControlQueue* queue, float ms) override;
    bool keyDown(ControlQueue* queue, SDLKey key, SDLMod modifiers, unsigned short unicode) override;
    bool joyButtonDown(ControlQueue* queue, unsigned char joystick, unsigned char button) override;

    // Tells the callback, then the click handler, then queues the trigger.
    void doClick(ControlQueue* queue);
    void setRepeat(bool isRepeating);
    bool isDown() const { return pressed && (repeat || focused); }
    ButtonState getState() const { return {isDown(), focused}; }
    void setStyle(ButtonStyle* newStyle) { style = newStyle; }
    ButtonStyle* getStyle() const { return style; }
    void setTrigger(Trigger* newTrigger) { trigger = newTrigger; }
    Trigger* getTrigger() const { return trigger; }
    void setOnClick(ClickEventHandler* handler) { onClick = handler; }
    ClickEventHandler* getOnClick() const { return onClick; }

private:
    bool pressed = false;  // mouse button 1 went down on it and has not come up
    ButtonStyle* style = nullptr;
    Trigger* trigger = nullptr;
    ClickEventHandler* onClick = nullptr;  // borrowed
    bool repeat = false;
    float repeatTimer = 0.0f;  // ms to the next automatic click; 0 when not repeating
};

// Toggles on release of mouse button 1 over it, on the Return or space key (by key symbol, so
// not on keypad Enter) and on joystick button 0.
class Checkbox : public Component, public CaptionedObject {
public:
    Checkbox();
    void getSelfFromNode(const Node* node, GUI* gui) override;
    void drawSelf() override;
    void mouseDown(ControlQueue* queue, const basic_Vector2D<float>& position, unsigned char button) override;
    void mouseUp(ControlQueue* queue, const basic_Vector2D<float>& position, unsigned char button) override;
    bool keyDown(ControlQueue* queue, SDLKey key, SDLMod modifiers, unsigned short unicode) override;
    bool joyButtonDown(ControlQueue* queue, unsigned char joystick, unsigned char button) override;

    // Tells the callback, toggles, and queues triggerOn or triggerOff for the new state.
    void doClick(ControlQueue* queue);
    void setChecked(bool isChecked) { checked = isChecked; }
    bool getChecked() const { return checked; }
    ButtonState getState() const { return {pressed && focused, focused}; }
    void setStyle(CheckboxStyle* newStyle) { style = newStyle; }
    CheckboxStyle* getStyle() const { return style; }
    void setTriggerOn(Trigger* t) { triggerOn = t; }
    Trigger* getTriggerOn() const { return triggerOn; }
    void setTriggerOff(Trigger* t) { triggerOff = t; }
    Trigger* getTriggerOff() const { return triggerOff; }

private:
    bool pressed = false;
    bool checked = false;
    CheckboxStyle* style = nullptr;
    Trigger* triggerOn = nullptr;
    Trigger* triggerOff = nullptr;
};

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
