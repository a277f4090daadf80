#include "gui/slider.h"

#include <GL/gl.h>

#include <algorithm>
#include <cstdio>
#include <sstream>
#include <type_traits>

#include "controls/queue.h"
#include "gui/root.h"
#include "xml/xml.h"

namespace norvane {

namespace {
const char* const STR_ORIENTATION[] = {"horizontal", "vertical"};
const char* const STR_SLIDER_BUTTONS[] = {"none", "dec", "inc", "both"};
}  // namespace

template <>
gui::Orientation strTo<gui::Orientation>(const std::string& text) {
    for (int i = 0; i < 2; ++i) {
        if (text == STR_ORIENTATION[i]) return gui::Orientation(i);
    }
    throw text;
}

template <>
gui::SliderButtons strTo<gui::SliderButtons>(const std::string& text) {
    for (int i = 0; i < 4; ++i) {
        if (text == STR_SLIDER_BUTTONS[i]) return gui::SliderButtons(i);
    }
    throw text;
}

namespace gui {

namespace {

const char* const XML_BAR_STYLE = "barStyle";
const char* const XML_HANDLE_STYLE = "handleStyle";
const char* const XML_BUTTON_STYLE = "buttonStyle";
const char* const XML_ORIENTATION = "orientation";
const char* const XML_SIZE = "size";
const char* const XML_MIN = "min";
const char* const XML_MAX = "max";
const char* const XML_STEP_SMALL = "stepSmall";
const char* const XML_STEP_LARGE = "stepLarge";
const char* const XML_BUTTONS_BEFORE = "buttonsBefore";
const char* const XML_BUTTONS_AFTER = "buttonsAfter";
const char* const XML_VALUE = "value";
const char* const XML_TRIGGER = "trigger";

// Reads a number as a stream does, trailing characters ignored; false when none can be read.
template <typename T>
bool decodeNumber(const std::string& text, T& out) {
    std::istringstream in(text);
    T number{};
    if (!(in >> number)) return false;
    out = number;
    return true;
}

template <typename E>
bool decodeName(const std::string& text, E& out) {
    try {
        out = strTo<E>(text);
        return true;
    } catch (const std::string&) {
        return false;
    }
}

// Reads `attribute` into `field` when present; an undecodable text is reported and `field` stays.
template <typename F, typename Decode>
void readField(const Node* node, const char* attribute, F& field, Decode decode) {
    const std::string* text = node->getAttribute(attribute);
    if (text && !decode(*text, field)) {
        debug::warning(dbgGui, "Could not decode value for Slider.%s: \"%s\".", attribute, text->c_str());
    }
}

}  // namespace

template <typename T>
Slider<T>::Slider() {
    focusable = true;
    shownText[0] = '\0';
    shownValue = T(value + 1);  // differs: the first draw formats
}

template <typename T>
void Slider<T>::setDimensions(const basic_Rect<float>& rect) {
    Component::setDimensions(rect);
    calculateSizes();
}

template <typename T>
void Slider<T>::setValue(T newValue) {
    value = std::clamp(newValue, std::min(min, max), std::max(min, max));
}

template <typename T>
void Slider<T>::step(T amount, int sign) {
    const double wanted = double(value) + sign * double(amount);
    value = T(std::clamp(wanted, double(std::min(min, max)), double(std::max(min, max))));
}

template <typename T>
void Slider<T>::setRange(T newMin, T newMax) {
    min = newMin;
    max = newMax;
    setValue(value);
}

template <typename T>
void Slider<T>::setSteps(T small, T large) {
    stepSmall = small;
    stepLarge = large;
}

template <typename T>
void Slider<T>::setOrientation(Orientation newOrientation) {
    orientation = newOrientation;
    calculateSizes();
}

template <typename T>
void Slider<T>::setStyles(RectStyle* barStyleToUse, ButtonStyle* handleStyleToUse, ButtonStyle* buttons) {
    barStyle = barStyleToUse;
    handleStyle = handleStyleToUse;
    buttonStyle = buttons;
}

template <typename T>
Button*& Slider<T>::stepButton(bool isDecrement, bool isBefore) {
    if (isBefore) return isDecrement ? bDecBefore : bIncBefore;
    return isDecrement ? bDecAfter : bIncAfter;
}

template <typename T>
void Slider<T>::arrange(SliderButtons& current, SliderButtons wanted, bool isBefore) {
    if (wanted == current) return;
    for (bool isDecrement : {true, false}) {
        Button*& button = stepButton(isDecrement, isBefore);
        if (!(wanted & (isDecrement ? BUTTONS_DEC : BUTTONS_INC))) {
            delete button;
            button = nullptr;
        } else if (!button) {
            button = new Button;
            button->setName(std::string(isDecrement ? "bDec" : "bInc") + (isBefore ? "Before" : "After"));
            button->setCaption(isDecrement ? "<" : ">");
            button->setStyle(buttonStyle);
            button->setOnClick(this);
            button->setRepeat(true);
            *this += button;
        }
    }
    current = wanted;
    calculateSizes();
}

template <typename T>
void Slider<T>::setButtonsBefore(SliderButtons buttons) {
    arrange(buttonsBefore, buttons, true);
}

template <typename T>
void Slider<T>::setButtonsAfter(SliderButtons buttons) {
    arrange(buttonsAfter, buttons, false);
}

template <typename T>
void Slider<T>::calculateSizes() {
    const bool alongX = horizontal();
    const float s = alongX ? dimensions.height : dimensions.width;
    float start = 0.0f;
    float length = alongX ? dimensions.width : dimensions.height;
    auto square = [&](Button* button, float at) {
        button->setDimensions(alongX ? basic_Rect<float>{at, 0, s, s} : basic_Rect<float>{0, at, s, s});
    };
    for (Button* button : {bDecBefore, bIncBefore}) {
        if (!button) continue;
        square(button, start);
        start += s;
        length -= s;
    }
    for (Button* button : {bIncAfter, bDecAfter}) {
        if (!button) continue;
        square(button, start + length - s);
        length -= s;
    }
    bar = alongX ? basic_Rect<float>{start, 0, length, dimensions.height}
                 : basic_Rect<float>{0, start, dimensions.width, length};
}

template <typename T>
basic_Rect<float> Slider<T>::getHandle() const {
    const float barLength = horizontal() ? bar.width : bar.height;
    const float length = size > 0.0f ? size * barLength : -size;
    const float travel = barLength - length;
    // An empty range leaves the handle at the bar's start.
    const float fraction = max == min ? 0.0f : float((double(value) - double(min)) / (double(max) - double(min)));
    if (horizontal()) return {bar.x + travel * fraction, bar.y, length, dimensions.height};
    return {bar.x, bar.y + travel * fraction, dimensions.width, length};
}

template <typename T>
void Slider<T>::drawSelf() {
    if (barStyle) barStyle->draw(bar);
    if (!handleStyle) return;
    handle = getHandle();
    if (shownValue != value) {
        shownValue = value;
        if constexpr (std::is_integral<T>::value) {
            std::snprintf(shownText, sizeof shownText, "%d", int(value));
        } else {
            std::snprintf(shownText, sizeof shownText, "%g", double(value));  // as a stream prints it
        }
    }
    const ButtonState state{dragging && focused, focused};
    handleStyle->draw(handle, state);
    glPushMatrix();
    handleStyle->print(handle, state, shownText, nullptr);
    glPopMatrix();
}

template <typename T>
void Slider<T>::handleClickEvent(Component* clicked) {
    if (clicked == bDecBefore || clicked == bDecAfter) step(stepSmall, -1);
    if (clicked == bIncBefore || clicked == bIncAfter) step(stepSmall, 1);
}

template <typename T>
void Slider<T>::mouseDown(ControlQueue*, const basic_Vector2D<float>& position, unsigned char button) {
    switch (button) {
    case SDL_BUTTON_WHEELUP: step(stepSmall, 1); return;
    case SDL_BUTTON_WHEELDOWN: step(stepSmall, -1); return;
    case SDL_BUTTON_LEFT: break;
    default: return;
    }
    handle = getHandle();
    const float at = horizontal() ? position.x : position.y;
    const float start = horizontal() ? handle.x : handle.y;
    const float length = horizontal() ? handle.width : handle.height;
    if (at < start) {
        step(stepLarge, -1);
    } else if (at >= start + length) {
        step(stepLarge, 1);
    } else {
        dragging = true;
        captureMouse(true);
        dragOffset = {position.x - handle.x, position.y - handle.y};
    }
}

template <typename T>
void Slider<T>::mouseUp(ControlQueue*, const basic_Vector2D<float>&, unsigned char button) {
    if (button != SDL_BUTTON_LEFT) return;
    dragging = false;
    captureMouse(false);
}

template <typename T>
void Slider<T>::mouseMove(ControlQueue*, const basic_Vector2D<float>& position) {
    if (!dragging) return;
    const float barLength = horizontal() ? bar.width : bar.height;
    const float travel = barLength - (size > 0.0f ? size * barLength : -size);
    const float distance = horizontal() ? position.x - dragOffset.x - bar.x : position.y - dragOffset.y - bar.y;
    const float fraction = travel > 0.0f ? distance / travel : 0.0f;
    const double wanted = double(min) + (double(max) - double(min)) * fraction;
    value = T(std::clamp(wanted, double(std::min(min, max)), double(std::max(min, max))));
}

template <typename T>
bool Slider<T>::keyDown(ControlQueue* queue, SDLKey key, SDLMod modifiers, unsigned short unicode) {
    const SDLKey lower = horizontal() ? SDLK_LEFT : SDLK_DOWN;
    const SDLKey raise = horizontal() ? SDLK_RIGHT : SDLK_UP;
    if (key == SDLK_HOME) {
        setValue(min);
    } else if (key == SDLK_END) {
        setValue(max);
    } else if (key == lower) {
        step(stepSmall, -1);
    } else if (key == raise) {
        step(stepSmall, 1);
    } else if (key == SDLK_PAGEDOWN) {
        step(stepLarge, -1);
    } else if (key == SDLK_PAGEUP) {
        step(stepLarge, 1);
    } else {
        return Component::keyDown(queue, key, modifiers, unicode);
    }
    if (trigger) *queue << trigger;
    return true;
}

template <typename T>
bool Slider<T>::joyAxisMotion(ControlQueue* queue, unsigned char joystick, unsigned char axis, short axisValue) {
    if (axisValue == 0 || axis != (horizontal() ? 0 : 1)) {
        return Component::joyAxisMotion(queue, joystick, axis, axisValue);
    }
    step(stepSmall, axisValue < 0 ? -1 : 1);
    if (trigger) *queue << trigger;
    return true;
}

template <typename T>
void Slider<T>::getSelfFromNode(const Node* node, GUI* gui) {
    Component::getSelfFromNode(node, gui);
    barStyle = readStyle(node, XML_BAR_STYLE, gui, barStyle, name);
    handleStyle = readStyle(node, XML_HANDLE_STYLE, gui, handleStyle, name);
    buttonStyle = readStyle(node, XML_BUTTON_STYLE, gui, buttonStyle, name);
    Orientation newOrientation = orientation;
    readField(node, XML_ORIENTATION, newOrientation, decodeName<Orientation>);
    setOrientation(newOrientation);
    size = node->getAttributeFloat(XML_SIZE, size);
    readField(node, XML_MIN, min, decodeNumber<T>);
    readField(node, XML_MAX, max, decodeNumber<T>);
    readField(node, XML_STEP_SMALL, stepSmall, decodeNumber<T>);
    readField(node, XML_STEP_LARGE, stepLarge, decodeNumber<T>);
    SliderButtons before = buttonsBefore, after = buttonsAfter;
    readField(node, XML_BUTTONS_BEFORE, before, decodeName<SliderButtons>);
    readField(node, XML_BUTTONS_AFTER, after, decodeName<SliderButtons>);
    setButtonsBefore(before);
    setButtonsAfter(after);
    readField(node, XML_VALUE, value, decodeNumber<T>);  // as written, not clamped
    trigger = readTrigger(node, XML_TRIGGER, gui, trigger);
}

template class Slider<int>;
template class Slider<float>;

}  // namespace gui
}  // namespace norvane
