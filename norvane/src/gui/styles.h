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

namespace fonts {
class Font;
}
namespace gfx {
class Image;
}

namespace gui {

class GUI;
class StyleBank;

// How a button-like widget is shown: "down" while pressed, "hot" while it holds the focus.
struct ButtonState {
    bool down = false;
    bool hot = false;
};

enum StretchMode { STRETCH_SINGLE = 0, STRETCH_REPEAT = 1, STRETCH_STRETCH = 2 };

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

// A nine-part frame: the center covers the rectangle, edges and corners lie outside it.
class TexturedRectStyle : public RectStyle {
public:
    enum Part { UPPER_LEFT, UPPER, UPPER_RIGHT, LEFT, CENTER, RIGHT, LOWER_LEFT, LOWER, LOWER_RIGHT, PART_COUNT };

    void getFromNode(const Node* node, GUI* gui) override;
    void draw(const basic_Rect<float>& rect) override;

    Color color{0, 0, 0, 0};        // modulates every part
    Color colorBorder{0, 0, 0, 0};  // read, not drawn
    gfx::Image* images[PART_COUNT] = {};
    StretchMode stretchUpper = STRETCH_REPEAT;
    StretchMode stretchLower = STRETCH_REPEAT;
    StretchMode stretchLeft = STRETCH_REPEAT;
    StretchMode stretchRight = STRETCH_REPEAT;
    StretchMode stretchCenter = STRETCH_REPEAT;
};

// Text in a rectangle.
class FontStyle : public Style {
public:
    void getFromNode(const Node* node, GUI* gui) override;
    virtual void print(const basic_Rect<float>& rect, const char* text) = 0;

    JustificationHorizontal horizontal = JH_LEFT;
    JustificationVertical vertical = JV_CENTER;
};

class SimpleFontStyle : public FontStyle {
public:
    void getFromNode(const Node* node, GUI* gui) override;
    void print(const basic_Rect<float>& rect, const char* text) override;  // nothing without a font

    fonts::Font* font = nullptr;
    Color color{1, 1, 1, 1};
};

// A box, a font, and where an image goes beside the text.
class LabelStyle : public Style {
public:
    void getFromNode(const Node* node, GUI* gui) override;
    void draw(const basic_Rect<float>& rect);
    // Text and image justified to the same side do not overlap: the text gives way.
    void print(const basic_Rect<float>& rect, const char* text, const gfx::Image* image);

    RectStyle* rect = nullptr;
    FontStyle* font = nullptr;
    JustificationHorizontal imageHorizontal = JH_CENTER;
    JustificationVertical imageVertical = JV_CENTER;
    Color imageColor{1, 1, 1, 1};
};

// One label style per button state; a missing one draws nothing in that state.
class ButtonStyle : public Style {
public:
    void getFromNode(const Node* node, GUI* gui) override;
    LabelStyle* getStyle(ButtonState state) const;
    void draw(const basic_Rect<float>& rect, ButtonState state);
    void print(const basic_Rect<float>& rect, ButtonState state, const char* text, const gfx::Image* image);

    LabelStyle* up = nullptr;
    LabelStyle* down = nullptr;
    LabelStyle* upHot = nullptr;
    LabelStyle* downHot = nullptr;
};

class CheckboxStyle : public Style {
public:
    void getFromNode(const Node* node, GUI* gui) override;
    ButtonStyle* getStyle(bool isChecked) const { return isChecked ? checked : unchecked; }
    LabelStyle* getStyle(ButtonState state, bool isChecked) const;
    void draw(const basic_Rect<float>& rect, ButtonState state, bool isChecked);
    void print(const basic_Rect<float>& rect, ButtonState state, bool isChecked, const char* text,
               const gfx::Image* image);

    ButtonStyle* checked = nullptr;
    ButtonStyle* unchecked = nullptr;
};

// A button style whose text carries a marker image.
class DropdownListStyle : public ButtonStyle {
public:
    void getFromNode(const Node* node, GUI* gui) override;
    void print(const basic_Rect<float>& rect, ButtonState state, const char* text);

    gfx::Image* image = nullptr;
};

void warnNoStyle(const std::string& styleName, const std::string& owner);

// A new, empty style for a style element of a GUI definition; null for any other element.
Style* createStyle(const std::string& element);

// The image of that name in the GUI's images bank, or null.
gfx::Image* findImage(const GUI* gui, const std::string& imageName);

// "single", "repeat" or "stretch"; anything else throws the word itself.
StretchMode stretchMode(const std::string& word);

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
