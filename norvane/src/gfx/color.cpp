#include "gfx/color.h"

#include <GL/gl.h>

#include <cstdlib>
#include <type_traits>

#include "xml/xml.h"

namespace norvane {

static_assert(std::is_standard_layout<Color>::value && sizeof(Color) == 4 * sizeof(float),
              "OpenGL reads a Color as four floats");

const char* const XML_COLOR_CODE = "code";
const char* const XML_COLOR_RED = "red";
const char* const XML_COLOR_GREEN = "green";
const char* const XML_COLOR_BLUE = "blue";
const char* const XML_COLOR_ALPHA = "alpha";

Color::Color(const xml::Node* node) {
    if (const std::string* code = node->getAttribute(XML_COLOR_CODE)) {
        const unsigned long value = std::strtoul(code->c_str(), nullptr, 16);
        red = static_cast<float>((value >> 24) & 0xFF) / 255.0f;
        green = static_cast<float>((value >> 16) & 0xFF) / 255.0f;
        blue = static_cast<float>((value >> 8) & 0xFF) / 255.0f;
        alpha = static_cast<float>(value & 0xFF) / 255.0f;
        return;
    }
    red = node->getAttributeFloat(XML_COLOR_RED, 0.0f);
    green = node->getAttributeFloat(XML_COLOR_GREEN, 0.0f);
    blue = node->getAttributeFloat(XML_COLOR_BLUE, 0.0f);
    alpha = node->getAttributeFloat(XML_COLOR_ALPHA, 1.0f);
}

void Color::apply() const { glColor4fv(data()); }

}  // namespace norvane
