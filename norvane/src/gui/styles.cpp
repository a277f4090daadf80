#include "gui/styles.h"

#include <GL/gl.h>

#include <cassert>
#include <cstdlib>

#include "gfx/fonts.h"
#include "gfx/imagebank.h"
#include "xml/xml.h"

namespace norvane {
namespace gui {

namespace {
const char* const XML_NAME = "name";
const char* const XML_BORDER = "border";
const char* const XML_COLOR = "color";
const char* const XML_COLOR_BORDER1 = "colorBorder1";
const char* const XML_COLOR_BORDER2 = "colorBorder2";
const char* const XML_HORIZONTAL = "horizontal";
const char* const XML_VERTICAL = "vertical";
const char* const XML_COLOR_BORDER = "colorBorder";
const char* const XML_STRETCH = "stretch";
const char* const XML_STRETCH_UPPER = "stretchUpper";
const char* const XML_STRETCH_LOWER = "stretchLower";
const char* const XML_STRETCH_LEFT = "stretchLeft";
const char* const XML_STRETCH_RIGHT = "stretchRight";
const char* const XML_STRETCH_CENTER = "stretchCenter";
// Indexed by TexturedRectStyle::Part.
const char* const XML_PARTS[] = {"upperLeft", "upper", "upperRight", "left", "center",
                                 "right", "lowerLeft", "lower", "lowerRight"};
const char* const XML_FAMILY = "family";
const char* const XML_SIZE = "size";
const char* const XML_RECT = "rect";
const char* const XML_FONT = "font";
const char* const XML_IMAGE_HORIZONTAL = "imageHorizontal";
const char* const XML_IMAGE_VERTICAL = "imageVertical";
const char* const XML_IMAGE_COLOR = "imageColor";
const char* const XML_UP = "up";
const char* const XML_DOWN = "down";
const char* const XML_UP_HOT = "upHot";
const char* const XML_DOWN_HOT = "downHot";
const char* const XML_CHECKED = "checked";
const char* const XML_UNCHECKED = "unchecked";
const char* const XML_IMAGE = "image";
const char* const STR_STRETCH_MODE[] = {"single", "repeat", "stretch"};

StretchMode readStretch(const Node* node, const char* attribute, StretchMode current) {
    const std::string* word = node->getAttribute(attribute);
    return word ? stretchMode(*word) : current;
}

// Draws `image` over `area` as the mode says; a single image sits at the area's lower-left corner.
void drawPart(const gfx::Image* image, const basic_Rect<float>& area, StretchMode mode) {
    if (!image) return;
    switch (mode) {
    case STRETCH_SINGLE: image->draw(basic_Vector2D<float>{area.x, area.y}, BLEND_DEFAULT); break;
    case STRETCH_REPEAT: image->draw(area, BLEND_DEFAULT); break;
    case STRETCH_STRETCH: image->drawStretched(area, BLEND_DEFAULT); break;
    }
}

template <typename T>
T* readStyleOf(const Node* node, const char* attribute, GUI* gui, T* current) {
    return readStyle(node, attribute, gui, current, node->getAttribute(XML_NAME, std::string()));
}

void quad(float x0, float y0, float x1, float y1, float x2, float y2, float x3, float y3) {
    glVertex2f(x0, y0);
    glVertex2f(x1, y1);
    glVertex2f(x2, y2);
    glVertex2f(x3, y3);
}

// A justification word; an unknown one is reported and `current` stays.
template <typename J>
J readJustification(const Node* node, const std::string& attribute, J current, J (*convert)(const char*),
                    const char* const words[]) {
    const std::string word = node->getAttribute(attribute, words[current]);
    try {
        return convert(word.c_str());
    } catch (const std::string& message) {
        debug::warning(dbgGui, "Style \"%s\": %s Keeping \"%s\".",
                       node->getAttribute(XML_NAME, std::string()).c_str(), message.c_str(), words[current]);
        return current;
    }
}

}  // namespace

Style* createStyle(const std::string& element) {
    if (element == "PlainRectStyle") return new PlainRectStyle;
    if (element == "TexturedRectStyle") return new TexturedRectStyle;
    if (element == "SimpleFontStyle") return new SimpleFontStyle;
    if (element == "LabelStyle") return new LabelStyle;
    if (element == "ButtonStyle") return new ButtonStyle;
    if (element == "DropdownListStyle") return new DropdownListStyle;
    if (element == "CheckboxStyle") return new CheckboxStyle;
    return nullptr;
}

gfx::Image* findImage(const GUI* gui, const std::string& imageName) {
    gfx::ImageBank* bank = gui ? gui->getImages() : nullptr;
    return bank ? bank->find(imageName) : nullptr;
}

StretchMode stretchMode(const std::string& word) {
    for (int mode = STRETCH_SINGLE; mode <= STRETCH_STRETCH; ++mode) {
        if (word == STR_STRETCH_MODE[mode]) return StretchMode(mode);
    }
    throw word;
}

void warnNoStyle(const std::string& styleName, const std::string& owner) {
    debug::warning(dbgGui, "Could not find matching style \"%s\" for \"%s\".", styleName.c_str(), owner.c_str());
}

Color readColor(const Node* node, const std::string& attribute, const Color& def) {
    const std::string* code = node->getAttribute(attribute);
    if (!code) return def;
    const unsigned long value = std::strtoul(code->c_str(), nullptr, 16);
    return {float((value >> 24) & 0xFF) / 255.0f, float((value >> 16) & 0xFF) / 255.0f,
            float((value >> 8) & 0xFF) / 255.0f, float(value & 0xFF) / 255.0f};
}

void Style::getFromNode(const Node* node, GUI*) {
    const std::string* styleName = node->getAttribute(XML_NAME);
    if (!styleName) debug::error(dbgGui, "No name specified for style. Using empty name.");
    name = styleName ? *styleName : std::string();
}

void PlainRectStyle::getFromNode(const Node* node, GUI* gui) {
    Style::getFromNode(node, gui);
    border = node->getAttributeFloat(XML_BORDER, border);
    color = readColor(node, XML_COLOR, color);
    colorBorder1 = readColor(node, XML_COLOR_BORDER1, colorBorder1);
    colorBorder2 = readColor(node, XML_COLOR_BORDER2, colorBorder2);
}

void PlainRectStyle::draw(const basic_Rect<float>& r) {
    glPushAttrib(GL_CURRENT_BIT | GL_ENABLE_BIT | GL_TEXTURE_BIT);
    glDisable(GL_TEXTURE_2D);
    const float x = r.x, y = r.y, w = r.width, h = r.height, b = border;
    glBegin(GL_QUADS);
    color.apply();
    quad(x, y, x + w, y, x + w, y + h, x, y + h);
    if (b != 0.0f) {
        colorBorder1.apply();
        quad(x - b, y + h + b, x + w + b, y + h + b, x + w, y + h, x - b, y + h);  // top
        quad(x - b, y + h, x, y + h, x, y, x - b, y - b);                          // left
        colorBorder2.apply();
        quad(x, y, x + w + b, y, x + w + b, y - b, x - b, y - b);              // bottom
        quad(x + w, y + h, x + w + b, y + h + b, x + w + b, y, x + w, y);      // right
    }
    glEnd();
    glPopAttrib();
}

void FontStyle::getFromNode(const Node* node, GUI* gui) {
    Style::getFromNode(node, gui);
    horizontal = readJustification(node, XML_HORIZONTAL, horizontal, justificationHorizontal,
                                   STR_JUSTIFICATION_HORIZONTAL);
    vertical = readJustification(node, XML_VERTICAL, vertical, justificationVertical, STR_JUSTIFICATION_VERTICAL);
}

void TexturedRectStyle::getFromNode(const Node* node, GUI* gui) {
    Style::getFromNode(node, gui);
    const StretchMode all = readStretch(node, XML_STRETCH, stretchCenter);
    if (node->getAttribute(XML_STRETCH)) stretchUpper = stretchLower = stretchLeft = stretchRight = stretchCenter = all;
    stretchUpper = readStretch(node, XML_STRETCH_UPPER, stretchUpper);
    stretchLower = readStretch(node, XML_STRETCH_LOWER, stretchLower);
    stretchLeft = readStretch(node, XML_STRETCH_LEFT, stretchLeft);
    stretchRight = readStretch(node, XML_STRETCH_RIGHT, stretchRight);
    stretchCenter = readStretch(node, XML_STRETCH_CENTER, stretchCenter);
    color = readColor(node, XML_COLOR, color);
    colorBorder = readColor(node, XML_COLOR_BORDER, colorBorder);
    for (int part = 0; part < PART_COUNT; ++part) {
        if (const std::string* imageName = node->getAttribute(XML_PARTS[part])) images[part] = findImage(gui, *imageName);
    }
}

void TexturedRectStyle::draw(const basic_Rect<float>& r) {
    glPushAttrib(GL_CURRENT_BIT | GL_ENABLE_BIT | GL_TEXTURE_BIT);
    glEnable(GL_TEXTURE_2D);
    color.apply();
    auto w = [this](Part part) { return images[part] ? float(images[part]->getWidth()) : 0.0f; };
    auto h = [this](Part part) { return images[part] ? float(images[part]->getHeight()) : 0.0f; };
    const float top = r.y + r.height, right = r.x + r.width;
    drawPart(images[UPPER_LEFT], {r.x - w(UPPER_LEFT), top, 0, 0}, STRETCH_SINGLE);
    drawPart(images[UPPER], {r.x, top, r.width, h(UPPER)}, stretchUpper);
    drawPart(images[UPPER_RIGHT], {right, top, 0, 0}, STRETCH_SINGLE);
    drawPart(images[LEFT], {r.x - w(LEFT), r.y, w(LEFT), r.height}, stretchLeft);
    drawPart(images[CENTER], r, stretchCenter);
    drawPart(images[RIGHT], {right, r.y, w(RIGHT), r.height}, stretchRight);
    drawPart(images[LOWER_LEFT], {r.x - w(LOWER_LEFT), r.y - h(LOWER_LEFT), 0, 0}, STRETCH_SINGLE);
    drawPart(images[LOWER], {r.x, r.y - h(LOWER), r.width, h(LOWER)}, stretchLower);
    drawPart(images[LOWER_RIGHT], {right, r.y - h(LOWER_RIGHT), 0, 0}, STRETCH_SINGLE);
    glPopAttrib();
}

void SimpleFontStyle::getFromNode(const Node* node, GUI* gui) {
    FontStyle::getFromNode(node, gui);
    color = readColor(node, XML_COLOR, color);
    if (const std::string* family = node->getAttribute(XML_FAMILY)) {
        const long size = node->getAttributeLong(XML_SIZE, 0);
        fonts::FontBank* bank = gui ? gui->getFonts() : nullptr;
        font = bank ? bank->find(fonts::FontDescriptor(*family, static_cast<unsigned int>(size), fonts::FontStyle(0)))
                    : nullptr;
    }
}

void SimpleFontStyle::print(const basic_Rect<float>& r, const char* text) {
    if (!font) return;
    glPushAttrib(GL_CURRENT_BIT | GL_ENABLE_BIT | GL_TEXTURE_BIT);
    color.apply();
    font->print(r, horizontal, vertical, text);
    glPopAttrib();
}

void LabelStyle::getFromNode(const Node* node, GUI* gui) {
    Style::getFromNode(node, gui);
    rect = readStyleOf(node, XML_RECT, gui, rect);
    font = readStyleOf(node, XML_FONT, gui, font);
    imageHorizontal = readJustification(node, XML_IMAGE_HORIZONTAL, imageHorizontal, justificationHorizontal,
                                        STR_JUSTIFICATION_HORIZONTAL);
    imageVertical =
        readJustification(node, XML_IMAGE_VERTICAL, imageVertical, justificationVertical, STR_JUSTIFICATION_VERTICAL);
    imageColor = readColor(node, XML_IMAGE_COLOR, imageColor);
}

void LabelStyle::draw(const basic_Rect<float>& r) {
    if (rect) rect->draw(r);
}

void LabelStyle::print(const basic_Rect<float>& r, const char* text, const gfx::Image* image) {
    basic_Rect<float> textRect = r;
    if (image) {
        const float w = float(image->getWidth()), h = float(image->getHeight());
        // Without a font style there is no text side to keep clear: the image goes in the middle.
        const JustificationHorizontal alongX = font ? imageHorizontal : JH_CENTER;
        const JustificationVertical alongY = font ? imageVertical : JV_CENTER;
        basic_Vector2D<float> at;
        switch (alongX) {
        case JH_CENTER: at.x = r.x + r.width / 2 - w / 2; break;
        case JH_RIGHT:
            at.x = r.x + r.width - w;
            if (font->horizontal == JH_RIGHT) textRect.width -= w;
            break;
        case JH_LEFT:
            at.x = r.x;
            if (font->horizontal == JH_LEFT) {
                textRect.x += w;
                textRect.width -= w;
            }
            break;
        default: assert(!"bad justification");
        }
        switch (alongY) {
        case JV_CENTER: at.y = r.y + r.height / 2 - h / 2; break;
        case JV_BOTTOM:
            at.y = r.y;
            if (font->vertical == JV_BOTTOM) {
                textRect.y += h;
                textRect.height -= h;
            }
            break;
        case JV_TOP:
            at.y = r.y + r.height - h;
            if (font->vertical == JV_TOP) textRect.height -= h;
            break;
        default: assert(!"bad justification");
        }
        imageColor.apply();
        image->draw(at, BLEND_DEFAULT);
    }
    if (font) font->print(textRect, text);
}

void ButtonStyle::getFromNode(const Node* node, GUI* gui) {
    Style::getFromNode(node, gui);
    up = readStyleOf(node, XML_UP, gui, up);
    down = readStyleOf(node, XML_DOWN, gui, down);
    upHot = readStyleOf(node, XML_UP_HOT, gui, upHot);
    downHot = readStyleOf(node, XML_DOWN_HOT, gui, downHot);
}

LabelStyle* ButtonStyle::getStyle(ButtonState state) const {
    if (state.down) return state.hot ? downHot : down;
    return state.hot ? upHot : up;
}

void ButtonStyle::draw(const basic_Rect<float>& r, ButtonState state) {
    if (LabelStyle* label = getStyle(state)) label->draw(r);
}

void ButtonStyle::print(const basic_Rect<float>& r, ButtonState state, const char* text, const gfx::Image* image) {
    if (LabelStyle* label = getStyle(state)) label->print(r, text, image);
}

void CheckboxStyle::getFromNode(const Node* node, GUI* gui) {
    Style::getFromNode(node, gui);
    checked = readStyleOf(node, XML_CHECKED, gui, checked);
    unchecked = readStyleOf(node, XML_UNCHECKED, gui, unchecked);
}

LabelStyle* CheckboxStyle::getStyle(ButtonState state, bool isChecked) const {
    ButtonStyle* button = getStyle(isChecked);
    return button ? button->getStyle(state) : nullptr;
}

void CheckboxStyle::draw(const basic_Rect<float>& r, ButtonState state, bool isChecked) {
    if (ButtonStyle* button = getStyle(isChecked)) button->draw(r, state);
}

void CheckboxStyle::print(const basic_Rect<float>& r, ButtonState state, bool isChecked, const char* text,
                          const gfx::Image* image) {
    if (ButtonStyle* button = getStyle(isChecked)) button->print(r, state, text, image);
}

void DropdownListStyle::getFromNode(const Node* node, GUI* gui) {
    ButtonStyle::getFromNode(node, gui);
    if (const std::string* imageName = node->getAttribute(XML_IMAGE)) image = findImage(gui, *imageName);
}

void DropdownListStyle::print(const basic_Rect<float>& r, ButtonState state, const char* text) {
    ButtonStyle::print(r, state, text, image);
}

}  // namespace gui
}  // namespace norvane
