#include <GL/gl.h>
#include <gtest/gtest.h>

#include <cstdio>
#include <string>

#include "files/sysdirs.h"
#include "gfx/fonts.h"
#include "gfx/imagebank.h"
#include "screenshot.h"
#include "support/surfaces.h"
#include "support/window.h"

using norvane::fonts::BitmapFont;
using norvane::fonts::FontBank;

namespace {

const char* const ONE_GLYPH = R"(<bitmapfont name="one" spacing="1" height="8">
  <image file="glyph.png"><line index="1"><char char="A" width="6"/></line></image>
</bitmapfont>)";

const std::string GLYPHS = std::string(TEST_TMP_DIR) + "/glyphs/";

void writeText(const std::string& path, const char* text) {
    FILE* out = std::fopen(path.c_str(), "w");
    std::fputs(text, out);
    std::fclose(out);
}

// GLYPHS/<name>/ with the description and, when asked for, its glyph image.
std::string fontDir(const std::string& name, bool withImage) {
    const std::string dir = GLYPHS + name + "/";
    norvane::mkdirs(dir);
    std::remove((dir + "glyph.png").c_str());
    if (withImage) norvane::savePng(makeRgbaSurface(8, 8).get(), (dir + "glyph.png").c_str());
    writeText(dir + "bitmapfont.xml", ONE_GLYPH);
    return dir;
}

}  // namespace

// The game's start-up reports a font it cannot show and ends, so a missing glyph image must reach it.
TEST_F(WindowTest, AGlyphImageThatWillNotLoadThrowsAndLeavesNoFont) {
    const std::string dir = fontDir("missing", false);
    EXPECT_THROW(BitmapFont font(dir), std::string);
    writeText(GLYPHS + "fonts.xml", "<fonts><bitmapfont dir=\"missing\"/></fonts>");
    FontBank bank;
    EXPECT_THROW(bank.load(GLYPHS + "fonts.xml", ""), std::string);
    EXPECT_EQ(bank.size(), 0);

    // A refresh that fails on the way leaves the font empty rather than half made.
    BitmapFont font(fontDir("vanishing", true));
    EXPECT_EQ(font.getWidth("AA"), 14);
    fontDir("vanishing", false);
    EXPECT_THROW(font.refresh(), std::string);
    EXPECT_EQ(font.charCount, 0);
    EXPECT_EQ(font.listBase, 0u);
    EXPECT_EQ(font.getWidth("AA"), 2);  // the spacing only
    font.print("AA");
    EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
}
