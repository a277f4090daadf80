#ifndef NORVANE_GFX_FONTS_H
#define NORVANE_GFX_FONTS_H

#include <memory>
#include <string>
#include <vector>

#include "gfx/justification.h"
#include "math/geometry.h"
#include "resources/manager.h"

namespace norvane {

namespace gfx {
class ImageBank;
class SingleTextureImage;
}  // namespace gfx

namespace fonts {

class FontBank;

using FontStyle = int;  // bitmap fonts leave it 0

// The key of a font in its bank.
struct FontDescriptor {
    FontDescriptor() = default;
    FontDescriptor(std::string family, unsigned int size, FontStyle style)
        : family(std::move(family)), size(size), style(style) {}
    bool operator<(const FontDescriptor& other) const;

    std::string family;
    unsigned int size = 0;
    FontStyle style = 0;
};

// Prints at the current model-view origin, in pixels of the 2D render context, baseline at y = 0,
// and leaves the matrix moved to the end of the text.
class Font : public NamedResource<FontBank, FontDescriptor> {
public:
    virtual unsigned char getHeight() = 0;
    virtual unsigned short getWidth(const char* text) = 0;  // advance of the whole text
    virtual void print(const char* text) = 0;
    virtual void refresh();  // release(), then load()
    virtual void release() = 0;
    virtual void load() = 0;

    // Centred text starts half its width (rounded up) to the left; right-justified text ends here.
    void print(JustificationHorizontal justification, const char* text);
    // Places the text in `rect`; only the advance of the text stays in the matrix.
    void print(const basic_Rect<float>& rect, JustificationHorizontal horizontal, JustificationVertical vertical,
               const char* text);
    // Formatted into 1024 bytes; longer output is cut.
    void printf(const char* format, ...) __attribute__((format(printf, 2, 3)));
    void printf(JustificationHorizontal justification, const char* format, ...)
        __attribute__((format(printf, 3, 4)));
    void printf(const basic_Rect<float>& rect, JustificationHorizontal horizontal, JustificationVertical vertical,
                const char* format, ...) __attribute__((format(printf, 5, 6)));

    signed char yHotSpot = 0;  // default lowering of glyphs below the baseline
};

// One character while a font is read.
struct BitmapFontCharacterData {
    BitmapFontCharacterData() = default;
    explicit BitmapFontCharacterData(gfx::SingleTextureImage* image) : image(image) {}

    gfx::SingleTextureImage* image = nullptr;  // null for a blank
    unsigned short x = 0, y = 0;     // the glyph's upper-left pixel in the image
    unsigned char width = 0, height = 0;
    signed char yHotSpot = 0;
};

// A font directory: glyph images plus "bitmapfont.xml", compiled into one display list per
// character. Character codes are signed bytes, as printing hands them to GL.
class BitmapFont : public Font {
public:
    // Loaded at once; throws when the description or a glyph image does not load.
    explicit BitmapFont(std::string dir);
    ~BitmapFont() override;

    unsigned char getHeight() override { return height; }
    unsigned short getWidth(const char* text) override;
    using Font::print;
    void print(const char* text) override;
    void release() override;  // also deletes the glyph textures
    void load() override;  // a failed load leaves the font empty
    void getFromNode(const Node* root, const std::string& fontDir);

    std::string dir;  // ends with "/"
    signed char firstChar = 0;
    int charCount = 0;
    unsigned char height = 0;
    unsigned char spacing = 0;  // extra advance after every character
    unsigned int listBase = 0;
    std::vector<unsigned char> widths;
    gfx::SingleTextureImage* singleImage = nullptr;  // bound once per print when it is the only image
    std::unique_ptr<gfx::ImageBank> images;

private:
    void setDescriptor(const FontDescriptor& descriptor);
    bool inRange(char c) const { return static_cast<unsigned>(c - firstChar) < static_cast<unsigned>(charCount); }
};

class FontBank : public NamedResourceBank<Font, FontDescriptor> {
public:
    std::string getNodeName() override;
    void getFromNode(const Node* node, const std::string& dir) override;
    void refresh();
};

class FontResourceBankGenerator : public ResourceBankGenerator {
public:
    BasicResourceBank* generateBank(const std::string& type) const override;
};

extern const FontResourceBankGenerator resourceBankGenerator;

}  // namespace fonts
}  // namespace norvane

#endif
