#include "gfx/fonts.h"

#include <GL/gl.h>

#include <algorithm>
#include <array>
#include <cassert>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>

#include "debug/log.h"
#include "gfx/imagebank.h"
#include "gfx/simpleimage.h"
#include "xml/xml.h"

namespace norvane {
namespace fonts {

namespace {
const char* const XML_FONTS = "fonts";
const char* const XML_BITMAPFONT = "bitmapfont";
const char* const XML_DIR = "dir";
const char* const XML_NAME = "name";
const char* const XML_SIZE = "size";
const char* const XML_HEIGHT = "height";
const char* const XML_SPACING = "spacing";
const char* const XML_Y_HOT_SPOT = "yHotSpot";
const char* const XML_WIDTH = "width";
const char* const XML_H_PADDING = "hPadding";
const char* const XML_V_PADDING = "vPadding";
const char* const XML_CHAR = "char";
const char* const XML_IMAGE = "image";
const char* const XML_FILE = "file";
const char* const XML_LINE = "line";
const char* const XML_INDEX = "index";
const char* const DESCRIPTION_FILE = "bitmapfont.xml";
const size_t PRINTF_BUFFER = 1024;
// Glyph positions are 16-bit pixels: paddings and line numbers beyond them are hostile and would
// overflow the arithmetic that places the glyphs.
const long MAX_GLYPH_OFFSET = 0xFFFF;

// A single character stands for its own byte, anything else is a number ("65", "0x41").
int characterCode(const std::string& text) {
    const long code = text.size() == 1 ? text[0] : std::strtol(text.c_str(), nullptr, 0);
    return static_cast<signed char>(code);
}

}  // namespace

const FontResourceBankGenerator resourceBankGenerator;

BasicResourceBank* FontResourceBankGenerator::generateBank(const std::string& type) const {
    return type == XML_FONTS ? new FontBank() : nullptr;
}

bool FontDescriptor::operator<(const FontDescriptor& other) const {
    if (family != other.family) return family < other.family;
    if (size != other.size) return size < other.size;
    return style < other.style;
}

void Font::refresh() {
    release();
    load();
}

void Font::print(JustificationHorizontal justification, const char* text) {
    const int width = getWidth(text);
    switch (justification) {
        case JH_LEFT: break;
        case JH_CENTER: glTranslatef(-static_cast<float>((width + 1) / 2), 0.0f, 0.0f); break;
        case JH_RIGHT: glTranslatef(-static_cast<float>(width), 0.0f, 0.0f); break;
        default: assert(!"bad horizontal justification"); break;
    }
    print(text);
}

void Font::print(const basic_Rect<float>& rect, JustificationHorizontal horizontal, JustificationVertical vertical,
                 const char* text) {
    const int width = getWidth(text);
    const int height = getHeight();
    float x = rect.x;
    switch (horizontal) {
        case JH_LEFT: break;
        case JH_CENTER: x += rect.width / 2.0f - static_cast<float>(width / 2); break;
        case JH_RIGHT: x += rect.width - static_cast<float>(width); break;
        default: assert(!"bad horizontal justification"); break;
    }
    float y = rect.y;
    switch (vertical) {
        case JV_TOP: y += rect.height - static_cast<float>(height); break;
        case JV_CENTER: y += rect.height / 2.0f - static_cast<float>(height / 2); break;
        case JV_BOTTOM: break;
        default: assert(!"bad vertical justification"); break;
    }
    glTranslatef(x, y, 0.0f);
    print(text);
    glTranslatef(-x, -y, 0.0f);
}

void Font::printf(const char* format, ...) {
    char buffer[PRINTF_BUFFER];
    va_list args;
    va_start(args, format);
    std::vsnprintf(buffer, sizeof buffer, format, args);
    va_end(args);
    print(buffer);
}

void Font::printf(JustificationHorizontal justification, const char* format, ...) {
    char buffer[PRINTF_BUFFER];
    va_list args;
    va_start(args, format);
    std::vsnprintf(buffer, sizeof buffer, format, args);
    va_end(args);
    print(justification, buffer);
}

void Font::printf(const basic_Rect<float>& rect, JustificationHorizontal horizontal, JustificationVertical vertical,
                  const char* format, ...) {
    char buffer[PRINTF_BUFFER];
    va_list args;
    va_start(args, format);
    std::vsnprintf(buffer, sizeof buffer, format, args);
    va_end(args);
    print(rect, horizontal, vertical, buffer);
}

BitmapFont::BitmapFont(std::string fontDir) : dir(std::move(fontDir)) {
    if (dir.empty() || dir.back() != '/') dir += '/';
    release();
    load();
}

BitmapFont::~BitmapFont() { release(); }

unsigned short BitmapFont::getWidth(const char* text) {
    int width = 0;
    for (const char* c = text; *c; ++c) {
        if (inRange(*c)) width += widths[static_cast<size_t>(static_cast<signed char>(*c) - firstChar)];
        width += spacing;
    }
    return static_cast<unsigned short>(std::min(width, 0xFFFF));
}

void BitmapFont::print(const char* text) {
    glPushAttrib(GL_TEXTURE_BIT | GL_ENABLE_BIT | GL_CURRENT_BIT);
    glEnable(GL_TEXTURE_2D);
    if (singleImage) glBindTexture(GL_TEXTURE_2D, singleImage->getTextureName());
    glListBase(listBase - static_cast<GLuint>(static_cast<int>(firstChar)));
    // Characters outside the font would call lists of other fonts: they only advance by `spacing`.
    const char* run = text;
    for (const char* c = text;; ++c) {
        if (*c && inRange(*c)) continue;
        if (c > run) glCallLists(static_cast<GLsizei>(c - run), GL_BYTE, run);
        if (!*c) break;
        glTranslatef(spacing, 0.0f, 0.0f);
        run = c + 1;
    }
    glPopAttrib();
}

void BitmapFont::release() {
    widths.clear();
    if (listBase != 0) glDeleteLists(listBase, charCount);
    listBase = 0;
    charCount = 0;
    singleImage = nullptr;
    if (images) images->release();
    images.reset();
}

void BitmapFont::load() {
    std::unique_ptr<Node> root(xml::loadXML((dir + DESCRIPTION_FILE).c_str()));
    if (!root || root->name != XML_BITMAPFONT) return;
    try {
        getFromNode(root.get(), dir);
    } catch (...) {
        release();  // a half-read font would print through lists it never made
        throw;
    }
}

void BitmapFont::setDescriptor(const FontDescriptor& descriptor) {
    if (!bank) {
        name = descriptor;
        return;
    }
    FontBank* holder = bank;
    if (holder->resources.erase(name) == 0) {
        debug::warning(0, "Could not remove resource %p from bank %p.", static_cast<void*>(this),
                       static_cast<void*>(holder));
    }
    holder->add(descriptor, this);
}

void BitmapFont::getFromNode(const Node* root, const std::string& fontDir) {
    images.reset(new gfx::ImageBank());
    FontDescriptor descriptor = name;
    const std::string* family = root->getAttribute(XML_NAME);
    if (!family) debug::warning(dbgFonts, "No name specified for font. Using directory name.");
    descriptor.family = family ? *family : fontDir;
    descriptor.size = static_cast<unsigned int>(root->getAttributeLong(XML_SIZE, descriptor.size));
    setDescriptor(descriptor);
    height = static_cast<unsigned char>(root->getAttributeLong(XML_HEIGHT, height));
    spacing = static_cast<unsigned char>(root->getAttributeLong(XML_SPACING, spacing));
    yHotSpot = static_cast<signed char>(root->getAttributeLong(XML_Y_HOT_SPOT, yHotSpot));
    const long defaultWidth = root->getAttributeLong(XML_WIDTH, 0);
    auto padding = [&](const char* attribute) {
        const long v = root->getAttributeLong(attribute, 0);
        if (std::labs(v) <= MAX_GLYPH_OFFSET) return v;
        debug::warning(dbgFonts, "Font \"%s\": %s %ld is out of range, using 0.", descriptor.family.c_str(),
                       attribute, v);
        return 0L;
    };
    const long hPadding = padding(XML_H_PADDING);
    const long vPadding = padding(XML_V_PADDING);

    // Indexed by code + 128.
    std::array<BitmapFontCharacterData, 256> characters{};
    std::array<bool, 256> defined{};
    int lowest = 127, highest = -128;
    auto define = [&](int code, const BitmapFontCharacterData& data) {
        characters[static_cast<size_t>(code + 128)] = data;
        defined[static_cast<size_t>(code + 128)] = true;
        lowest = std::min(lowest, code);
        highest = std::max(highest, code);
    };

    for (const Node* child : root->children) {
        if (child->name == XML_CHAR) {
            const std::string* code = child->getAttribute(XML_CHAR);
            if (!code) debug::error(dbgFonts, "No character index specified for blank character node. Using #32.");
            BitmapFontCharacterData blank;
            blank.width = static_cast<unsigned char>(child->getAttributeLong(XML_WIDTH, 0));
            define(code ? characterCode(*code) : ' ', blank);
        } else if (child->name == XML_IMAGE) {
            const std::string* file = child->getAttribute(XML_FILE);
            gfx::SingleTextureImage* image = nullptr;
            if (!file) {
                // its characters become blanks of their width
                debug::error(dbgFonts, "No filename specified for font image. Skipping image.");
            } else {
                const std::string imageName = descriptor.family + *file;
                // Glyphs read before point to the image of an earlier element with this file:
                // replacing it would leave them dangling.
                image = static_cast<gfx::SimpleImage*>(images->find(imageName));
                if (!image) {
                    auto* simple = new gfx::SimpleImage(imageName, fontDir + *file);
                    images->add(imageName, simple);
                    image = simple;
                }
            }
            for (const Node* line : child->children) {
                if (line->name != XML_LINE) continue;
                const long index = line->getAttributeLong(XML_INDEX, 0);
                if (index < 0 || index > MAX_GLYPH_OFFSET) {
                    debug::error(dbgFonts, "Font \"%s\": line index %ld is out of range. Skipping line.",
                                 descriptor.family.c_str(), index);
                    continue;
                }
                const auto y = static_cast<unsigned short>((height + vPadding) * (index - 1));
                long x = 0;
                for (const Node* glyph : line->children) {
                    if (glyph->name != XML_CHAR) continue;
                    const std::string* code = glyph->getAttribute(XML_CHAR);
                    if (!code) {
                        debug::error(dbgFonts, "No character index specified for character node. Skipping character.");
                        continue;
                    }
                    BitmapFontCharacterData data(image);
                    data.x = static_cast<unsigned short>(x);
                    data.y = y;
                    data.width = static_cast<unsigned char>(glyph->getAttributeLong(XML_WIDTH, defaultWidth));
                    data.height = static_cast<unsigned char>(glyph->getAttributeLong(XML_HEIGHT, height));
                    data.yHotSpot = static_cast<signed char>(glyph->getAttributeLong(XML_Y_HOT_SPOT, yHotSpot));
                    define(characterCode(*code), data);
                    x += data.width + hPadding;
                }
            }
        }
    }
    if (lowest > highest) return;  // no characters
    firstChar = static_cast<signed char>(lowest);
    charCount = highest - lowest + 1;
    widths.assign(static_cast<size_t>(charCount), 0);

    images->refresh(nullptr);
    const bool oneImage = images->size() == 1;
    listBase = glGenLists(charCount);
    for (int i = 0; i < charCount; ++i) {
        const size_t slot = static_cast<size_t>(lowest + i + 128);
        const BitmapFontCharacterData data = defined[slot] ? characters[slot] : BitmapFontCharacterData();
        widths[static_cast<size_t>(i)] = data.width;
        glNewList(listBase + static_cast<GLuint>(i), GL_COMPILE);
        // Without a GL context the images wait, textureless and sizeless, for the next refresh.
        if (data.image && data.image->getTextureName() != 0) {
            if (oneImage) {
                singleImage = data.image;
            } else {
                glBindTexture(GL_TEXTURE_2D, data.image->getTextureName());
            }
            const float w = static_cast<float>(data.image->getWidth());
            const float h = static_cast<float>(data.image->getHeight());
            const float left = data.x / w, right = (data.x + data.width) / w;
            const float top = data.y / h, bottom = (data.y + data.height) / h;
            const float lower = -data.yHotSpot, upper = static_cast<float>(data.height - data.yHotSpot);
            glBegin(GL_QUADS);
            glTexCoord2f(left, bottom);
            glVertex2f(0.0f, lower);
            glTexCoord2f(left, top);
            glVertex2f(0.0f, upper);
            glTexCoord2f(right, top);
            glVertex2f(data.width, upper);
            glTexCoord2f(right, bottom);
            glVertex2f(data.width, lower);
            glEnd();
        }
        glTranslatef(static_cast<float>(data.width + spacing), 0.0f, 0.0f);
        glEndList();
    }
}

std::string FontBank::getNodeName() { return XML_FONTS; }

void FontBank::getFromNode(const Node* node, const std::string& dir) {
    for (const Node* child : node->children) {
        if (child->name != XML_BITMAPFONT) continue;
        BitmapFont* font = new BitmapFont(dir + child->getAttribute(XML_DIR, std::string()));
        add(font->name, font);
    }
}

void FontBank::refresh() {
    std::vector<Font*> fonts;
    for (auto& entry : resources) fonts.push_back(entry.second);
    for (Font* font : fonts) {
        // an earlier font may have taken this one's descriptor and so destroyed it
        const bool alive = std::any_of(resources.begin(), resources.end(),
                                       [font](const auto& entry) { return entry.second == font; });
        if (alive) font->refresh();
    }
}

}  // namespace fonts
}  // namespace norvane
