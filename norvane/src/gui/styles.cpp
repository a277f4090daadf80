#include "gui/styles.h"

#include <GL/gl.h>

#include <cstdlib>

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

}  // namespace gui
}  // namespace norvane
