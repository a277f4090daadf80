#ifndef NORVANE_GUI_STYLES_H
#define NORVANE_GUI_STYLES_H

#include <string>

#include "gfx/color.h"
#include "gfx/justification.h"
#include "gui/root.h"
#include "math/geometry.h"
#include "xml/xml.h"
#include "resources/manager.h"

namespace norvane {
namespace gui {

class GUI;
class StyleBank;

// How widgets look; named in a GUI definition and looked up by widgets at load time. Styles,
// fonts and images they name are borrowed. Rectangles are (x, y, width, height) with (x, y) the
// lower-left corner, in GUI units.
class Style : public NamedResource<StyleBank, std::string> {
public:
    virtual void getFromNode(const Node* node, GUI* gui);
};

class StyleBank : public NamedResourceBank<Style> {};

// A box behind a widget.
class RectStyle : public Style {
public:
    virtual void draw(const basic_Rect<float>& rect) = 0;
};

// A flat box with an optional bevel: colorBorder1 on the top and left bands, colorBorder2 on the
// bottom and right ones, meeting diagonally at the upper-right and lower-left outer corners.
class PlainRectStyle : public RectStyle {
public:
    void getFromNode(const Node* node, GUI* gui) override;
    void draw(const basic_Rect<float>& rect) override;

    Color color{0, 0, 0, 0};
    Color colorBorder1{0, 0, 0, 0};
    Color colorBorder2{0, 0, 0, 0};
    float border = 0.0f;  // drawn outside the rectangle
};

// Text in a rectangle.
class FontStyle : public Style {
public:
    void getFromNode(const Node* node, GUI* gui) override;
    virtual void print(const basic_Rect<float>& rect, const char* text) = 0;

    JustificationHorizontal horizontal = JH_LEFT;
    JustificationVertical vertical = JV_CENTER;
};

void warnNoStyle(const std::string& styleName, const std::string& owner);

// A colour attribute: eight hexadecimal digits RRGGBBAA; `def` when absent.
Color readColor(const Node* node, const std::string& attribute, const Color& def);

// The style of that name in the GUI's bank when it is of kind T, else null.
template <typename T>
T* findStyle(const GUI* gui, const std::string& styleName) {
    return gui ? dynamic_cast<T*>(gui->getStyles()->find(styleName)) : nullptr;
}

// The style named by `attribute`, `current` when the attribute is absent. A name without a style
// of kind T is reported for `owner` and gives null.
template <typename T>
T* readStyle(const Node* node, const char* attribute, const GUI* gui, T* current, const std::string& owner) {
    const std::string* styleName = node->getAttribute(attribute);
    if (!styleName) return current;
    T* style = findStyle<T>(gui, *styleName);
    if (!style) warnNoStyle(*styleName, owner);
    return style;
}

}  // namespace gui
}  // namespace norvane

#endif
