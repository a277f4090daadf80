#ifndef NORVANE_GFX_COLOR_H
#define NORVANE_GFX_COLOR_H

namespace norvane {

namespace xml {
class Node;
}

extern const char* const XML_COLOR_CODE;
extern const char* const XML_COLOR_RED;
extern const char* const XML_COLOR_GREEN;
extern const char* const XML_COLOR_BLUE;
extern const char* const XML_COLOR_ALPHA;

// Components 0..1, contiguous so that OpenGL can take the colour as a 4-float array.
struct Color {
    Color() = default;
    Color(float red, float green, float blue, float alpha = 1.0f) : red(red), green(green), blue(blue), alpha(alpha) {}
    // "code" (hex RRGGBBAA, read as strtoul does) wins over "red", "green", "blue" and "alpha".
    explicit Color(const xml::Node* node);

    void apply() const;  // glColor4fv
    const float* data() const { return &red; }

    float red = 0.0f;
    float green = 0.0f;
    float blue = 0.0f;
    float alpha = 1.0f;
};

}  // namespace norvane

#endif
