#include "gfx/fonts.h"

#include <cstdio>

#include "support/window.h"

using namespace norvane;
using namespace norvane::fonts;

// 16 x 32: "A" (5 wide, white) and "B" (7, red) on line 1; "C" (3, green) on line 2, two pixels lower; 10 high.
const char* const BLOCKS = R"(<bitmapfont name="blocks" size="10" height="10" spacing="1" width="5" hPadding="1" vPadding="2">
  <char width="4"/><image file="glyphs.png"><line index="1"><char char="A"/><char char="66" width="7"/></line>
  <line index="2"><char char="0x43" width="3" yHotSpot="2"/><char/></line></image></bitmapfont>)";

static std::string makeFontDir(const std::string& name, const std::string& description) {
    SurfacePtr sheet = makeRgbaSurface(16, 32);
    for (int y = 0; y < 32; ++y)
        for (int x = 0; x < 16; ++x) {
            const bool a = x < 5 && y < 10, b = x >= 6 && x < 13 && y < 10, c = x < 3 && y >= 12 && y < 22;
            setPixel(sheet.get(), x, y, a || b ? 255 : 0, a || c ? 255 : 0, a ? 255 : 0, a || b || c ? 255 : 0);
        }
    norvane::savePng(sheet.get(), scratchPath(name + "/glyphs.png").c_str());
    writeFile(name + "/bitmapfont.xml", description);
    return scratchPath(name + "/");
}

TEST_F(WindowTest, FontsPrintTextWhereItsJustificationPutsIt) {
    begin2D(norvane::Color(0, 0, 0, 1), true);
    std::unique_ptr<BitmapFont> made;
    const std::string log = captured([&] { made.reset(new BitmapFont(makeFontDir("blocks", BLOCKS))); });
    BitmapFont& font = *made;
    for (const char* line : {"No character index specified for blank character node. Using #32.",
                             "No character index specified for character node. Skipping character."})
        EXPECT_NE(log.find(line), std::string::npos) << log;
    EXPECT_EQ(font.name.family + std::to_string(font.name.size), "blocks10");
    // "AB" is 5 + 1 + 7 + 1; "!" is undefined inside the range, "z" outside it: spacing only.
    EXPECT_EQ((std::vector<int>{font.getWidth("AB"), font.getWidth(""), font.getWidth(" "), font.getWidth("A!z")}),
              (std::vector<int>{14, 0, 5, 8}));

    // In rectangles (100, y, 100, 20), text 14 wide and 10 high.
    font.print(basic_Rect<float>{100, 100, 100, 20}, JH_CENTER, JV_CENTER, "AB");
    GLfloat matrix[16];
    glGetFloatv(GL_MODELVIEW_MATRIX, matrix);
    EXPECT_EQ(matrix[12] + matrix[13], 14.0f);  // only the advance stays in the matrix
    glLoadIdentity();
    font.print(basic_Rect<float>{100, 300, 100, 20}, JH_RIGHT, JV_TOP, "AB");
    glLoadIdentity();
    font.printf(basic_Rect<float>{100, 500, 100, 20}, JH_LEFT, JV_BOTTOM, "%c%c", 'A', 'B');
    // At a point: centred text starts half its width (rounded up) to the left, right-justified ends there.
    for (auto [x, justification] : {std::pair{400, JH_CENTER}, {600, JH_RIGHT}}) {
        glLoadIdentity();
        glTranslatef(static_cast<float>(x), 50, 0);
        font.print(justification, "AB");
    }
    glLoadIdentity();
    glTranslatef(600, 200, 0);
    font.printf("%s", "CzA");  // C hangs two pixels below the baseline; z advances by the spacing only
    glLoadIdentity();

    SurfacePtr shot = screenshot("fonts.png");
    ASSERT_TRUE(shot);
    const Rgba white{255, 255, 255, 255}, red{255, 0, 0, 255}, green{0, 255, 0, 255}, black{0, 0, 0, 255};
    auto expectAt = [&](int x, int y, const Rgba& c) {
        EXPECT_TRUE(near(up(shot.get(), x, y), c.r, c.g, c.b, 255)) << x << "," << y << ": " << up(shot.get(), x, y);
    };
    // "AB" from (x, y): A over x .. x+4 and y .. y+9, B up to x+12; nothing left of or below it.
    for (const auto& [x, y] : {std::pair{143, 105}, {186, 310}, {100, 500}, {393, 50}, {586, 50}})
        for (const auto& [dx, dy, c] : {std::tuple{-1, 0, black}, {0, 0, white}, {2, -1, black}, {12, 9, red}, {5, 5, black}, {13, 5, black}})
            expectAt(x + dx, y + dy, c);
    // The vertical padding picked line 2 for C; A follows at 600 + 4 (C) + 1 (z).
    for (const auto& [x, y, c] : {std::tuple{600, 198, green}, {602, 207, green}, {600, 208, black}, {600, 197, black},
                                  {605, 200, white}, {604, 200, black}})
        expectAt(x, y, c);
}

TEST_F(WindowTest, FontBanksKeyFontsByDescriptorAndSurviveBadDescriptions) {
    // The bank's definition goes where the helper writes descriptions.
    const std::string dir = makeFontDir("bank", "<fonts><bitmapfont dir=\"one\"/><bitmapfont dir=\"two\"/><bitmapfont dir=\"other\"/>"
                                                "<bitmapfont dir=\"broken\"/><bitmapfont dir=\"one\"/><unknown/></fonts>");
    makeFontDir("bank/one", BLOCKS);
    makeFontDir("bank/two", R"(<bitmapfont size="12" width="3"><image file="glyphs.png"><line index="1"><char char="A"/></line></image></bitmapfont>)");
    makeFontDir("bank/other", R"(<notafont name="x"/>)");
    makeFontDir("bank/broken", R"(<bitmapfont name="broken"><image><line index="1"><char char="A" width="6"/></line></image></bitmapfont>)");
    FontBank bank;
    const std::string log = captured([&] { bank.load(dir + "bitmapfont.xml", dir); });
    for (const char* line : {"No name specified for font. Using directory name.", "No filename specified for font image. Skipping image."})
        EXPECT_NE(log.find(line), std::string::npos) << log;
    EXPECT_EQ(bank.size(), 4);  // "one" twice under the same descriptor: the later replaces the earlier
    auto* blocks = bank.find(FontDescriptor("blocks", 10, 0));
    auto* single = bank.find(FontDescriptor(dir + "two/", 12, 0));  // one glyph is a whole font
    auto* other = bank.find(FontDescriptor());  // a description of another kind leaves an empty font
    auto* broken = bank.find(FontDescriptor("broken", 0, 0));  // glyphs without a usable image still advance
    ASSERT_TRUE(blocks && single && other && broken);
    EXPECT_EQ((std::vector<int>{blocks->getWidth("AB"), single->getWidth("A"), single->getWidth("!"),
                                other->getWidth("AB"), broken->getWidth("AB")}), (std::vector<int>{14, 3, 0, 0, 6}));
    for (auto* font : {broken, other}) font->print("AB");
    bank.refresh();
    EXPECT_EQ(bank.find(FontDescriptor("blocks", 10, 0))->getWidth("AB"), 14);
    // Start-up must hear of a glyph image that will not load; the failed font is left empty, not half made.
    const GLuint lists = dynamic_cast<BitmapFont*>(blocks)->listBase;
    std::remove((dir + "one/glyphs.png").c_str());
    EXPECT_THROW(blocks->refresh(), std::string);
    EXPECT_TRUE(!glIsList(lists) && blocks->getWidth("AB") == 2);  // given back, not leaked; the spacing only
    blocks->print("AB");
    EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
    FontBank failing;
    EXPECT_THROW(failing.load(dir + "bitmapfont.xml", dir), std::string);
}
