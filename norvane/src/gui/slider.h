#ifndef NORVANE_GUI_SLIDER_H
#define NORVANE_GUI_SLIDER_H

#include <string>

#include "gui/standard.h"
#include "tools/convert.h"

namespace norvane {
namespace gui {

enum Orientation { ORIENTATION_HORIZONTAL = 0, ORIENTATION_VERTICAL = 1 };

// Bit 0: a decrement button, bit 1: an increment button.
enum SliderButtons { BUTTONS_NONE = 0, BUTTONS_DEC = 1, BUTTONS_INC = 2, BUTTONS_BOTH = 3 };

}  // namespace gui

// "horizontal", "vertical"; anything else throws the text.
template <>
gui::Orientation strTo<gui::Orientation>(const std::string& text);
// "none", "dec", "inc", "both"; anything else throws the text.
template <>
gui::SliderButtons strTo<gui::SliderButtons>(const std::string& text);

namespace gui {

// Picks a number in [min, max] by dragging a handle along a bar, clicking beside it, the wheel,
// the keyboard, a joystick axis, or step buttons at its ends. "Before" is left or bottom. Only
// keyboard and joystick changes queue the trigger. The handle shows the value.
template <typename T>
class Slider : public Component, public ClickEventHandler {
public:
    Slider();
    using Component::setDimensions;
    void setDimensions(const basic_Rect<float>& rect) override;
    void getSelfFromNode(const Node* node, GUI* gui) override;
    void drawSelf() override;
    void mouseDown(ControlQueue* queue, const basic_Vector2D<float>& position, unsigned char button) override;
    void mouseUp(ControlQueue* queue, const basic_Vector2D<float>& position, unsigned char button) override;
    void mouseMove(ControlQueue* queue, const basic_Vector2D<float>& position) override;
    bool keyDown(ControlQueue* queue, SDLKey key, SDLMod modifiers, unsigned short unicode) override;
    bool joyAxisMotion(ControlQueue* queue, unsigned char joystick, unsigned char axis, short axisValue) override;
    void handleClickEvent(Component* clicked) override;  // the step buttons

    void calculateSizes();
    void setButtonsBefore(SliderButtons buttons);
    void setButtonsAfter(SliderButtons buttons);

    T getValue() const { return value; }
    void setValue(T newValue);  // clamped
    void setRange(T newMin, T newMax);
    void setSteps(T small, T large);
    void setOrientation(Orientation newOrientation);
    // Above 0 a fraction of the bar's length, otherwise minus the length in units.
    void setHandleSize(float newSize) { size = newSize; }
    void setStyles(RectStyle* bar, ButtonStyle* handle, ButtonStyle* buttons);
    void setTrigger(Trigger* newTrigger) { trigger = newTrigger; }
    Trigger* getTrigger() const { return trigger; }
    const basic_Rect<float>& getBar() const { return bar; }
    basic_Rect<float> getHandle() const;  // where the handle is for the current value

private:
    bool horizontal() const { return orientation == ORIENTATION_HORIZONTAL; }
    // Moves the value by `amount` up (sign 1) or down (-1), within the range, without overflowing.
    void step(T amount, int sign);
    Button*& stepButton(bool isDecrement, bool isBefore);
    void arrange(SliderButtons& current, SliderButtons wanted, bool isBefore);

    basic_Rect<float> bar;     // what is left for the handle after the step buttons
    basic_Rect<float> handle;  // as last drawn or pressed
    bool dragging = false;
    basic_Vector2D<float> dragOffset;  // the cursor inside the handle when the drag began
    Button* bDecBefore = nullptr;      // children, when present
    Button* bIncBefore = nullptr;
    Button* bDecAfter = nullptr;
    Button* bIncAfter = nullptr;
    Trigger* trigger = nullptr;
    SliderButtons buttonsBefore = BUTTONS_NONE;
    SliderButtons buttonsAfter = BUTTONS_NONE;
    Orientation orientation = ORIENTATION_HORIZONTAL;
    float size = 0.25f;
    T min{0}, max{0}, stepSmall{1}, stepLarge{1}, value{0};
    RectStyle* barStyle = nullptr;
    ButtonStyle* handleStyle = nullptr;
    ButtonStyle* buttonStyle = nullptr;
    T shownValue{0};     // the value `shownText` was formatted for
    char shownText[32];  // formatted when the value changes, not on every draw
};

extern template class Slider<int>;
extern template class Slider<float>;

}  // namespace gui
}  // namespace norvane

#endif
