#include <GL/gl.h>
#include <SDL/SDL.h>
#include <gtest/gtest.h>

#include <fstream>
#include <memory>

#include "controls/queue.h"
#include "files/sysdirs.h"
#include "gfx/imagebank.h"
#include "gui/containers.h"
#include "gui/lists.h"
#include "gui/slider.h"
#include "gui/standard.h"
#include "gui/text.h"
#include "rendercontext.h"
#include "screenshot.h"
#include "sprites/sprites.h"
#include "support/window.h"

using namespace norvane;
using namespace norvane::gui;

namespace {

const std::string DIR = TEST_TMP_DIR "/gui/drawing/";

// A solid RGBA image file of the given size.
void writeImage(const std::string& name, int size, Uint32 rgba) {
    std::unique_ptr<SDL_Surface, decltype(&SDL_FreeSurface)> surface(
        SDL_CreateRGBSurface(SDL_SWSURFACE, size, size, 32, 0x000000FF, 0x0000FF00, 0x00FF0000, 0xFF000000),
        SDL_FreeSurface);
    SDL_FillRect(surface.get(), nullptr,
                 SDL_MapRGBA(surface->format, rgba >> 24, (rgba >> 16) & 0xFF, (rgba >> 8) & 0xFF, rgba & 0xFF));
    savePng(surface.get(), (DIR + name).c_str());
}

// A 10 x 10 half-red square above and right of its position, added to what lies below it.
class AddingCursor : public sprites::Sprite {
public:
    AddingCursor() : Sprite({250, 530}, true) { blendMode = BLEND_ADDITIVE; }
    void drawSelf() override {
        glDisable(GL_TEXTURE_2D);
        glColor4f(0.5f, 0.0f, 0.0f, 1.0f);
        glRectf(position.x, position.y, position.x + 10, position.y + 10);
    }
};

// One flat box colour per state, a bevel on the resting ones: unchecked (and plain) widgets in
// greys and primaries, checked boxes in darker mixes.
const char* const STYLES =
    "<PlainRectStyle name=\"rUp\" color=\"404040FF\" border=\"2\" colorBorder1=\"FFFFFFFF\" colorBorder2=\"000000FF\"/>"
    "<PlainRectStyle name=\"rDown\" color=\"800000FF\"/>"
    "<PlainRectStyle name=\"rUpHot\" color=\"008000FF\"/>"
    "<PlainRectStyle name=\"rDownHot\" color=\"000080FF\"/>"
    "<PlainRectStyle name=\"rOnUp\" color=\"606000FF\"/>"
    "<PlainRectStyle name=\"rOnUpHot\" color=\"006060FF\"/>"
    "<PlainRectStyle name=\"rOnDownHot\" color=\"600060FF\"/>"
    "<PlainRectStyle name=\"rBar\" color=\"303030FF\"/>"
    "<TexturedRectStyle name=\"frame\" color=\"FFFFFFFF\" stretch=\"stretch\" center=\"center\""
    "  upperLeft=\"edge\" upper=\"edge\" upperRight=\"edge\" left=\"edge\" right=\"edge\""
    "  lowerLeft=\"edge\" lower=\"edge\" lowerRight=\"edge\"/>"
    "<SimpleFontStyle name=\"fText\" family=\"blocks\" size=\"8\" horizontal=\"left\"/>"
    "<LabelStyle name=\"lUp\" rect=\"rUp\" font=\"fText\"/><LabelStyle name=\"lDown\" rect=\"rDown\"/>"
    "<LabelStyle name=\"lUpHot\" rect=\"rUpHot\" font=\"fText\"/><LabelStyle name=\"lDownHot\" rect=\"rDownHot\"/>"
    "<LabelStyle name=\"lOnUp\" rect=\"rOnUp\"/><LabelStyle name=\"lOnUpHot\" rect=\"rOnUpHot\"/>"
    "<LabelStyle name=\"lOnDownHot\" rect=\"rOnDownHot\"/>"
    "<ButtonStyle name=\"bs\" up=\"lUp\" down=\"lDown\" upHot=\"lUpHot\" downHot=\"lDownHot\"/>"
    "<ButtonStyle name=\"bsOn\" up=\"lOnUp\" upHot=\"lOnUpHot\" downHot=\"lOnDownHot\"/>"
    "<CheckboxStyle name=\"cs\" checked=\"bsOn\" unchecked=\"bs\"/>"
    "<DropdownListStyle name=\"ds\" up=\"lUp\" upHot=\"lUpHot\" downHot=\"lDownHot\" image=\"marker\"/>";

// Every widget in every state it can show, on a textured pane in a real window.
class Drawing : public WindowTest {
protected:
    void SetUp() override {
        WindowTest::SetUp();
        mkdirs(DIR);
        writeImage("edge.png", 8, 0x0000FFFF);
        writeImage("center.png", 16, 0x102010FF);
        writeImage("marker.png", 8, 0xFFFF00FF);
        // A font whose glyphs A, B, C and _ are solid 6 x 8 blocks, one unit apart.
        mkdirs(DIR + "font/");
        writeImage("font/glyphs.png", 32, 0xFFFFFFFF);
        std::ofstream(DIR + "font/bitmapfont.xml")
            << "<bitmapfont name=\"blocks\" size=\"8\" height=\"8\" spacing=\"1\" width=\"6\" hPadding=\"2\">"
               "<image file=\"glyphs.png\"><line index=\"1\"><char char=\"A\"/><char char=\"B\"/>"
               "<char char=\"C\"/><char char=\"_\"/></line></image></bitmapfont>";
        std::ofstream(DIR + "resources.xml")
            << "<resources><fonts name=\"guiFonts\"><bitmapfont dir=\"font/\"/></fonts>"
               "<images name=\"guiImages\"><image name=\"edge\" filename=\"edge.png\"/>"
               "<image name=\"center\" filename=\"center.png\"/><image name=\"marker\" filename=\"marker.png\"/>"
               "</images><gui name=\"gui\" fonts=\"guiFonts\" images=\"guiImages\" cursor=\"marker\" width=\"800\" height=\"600\" visible=\"true\">"
            << STYLES << WIDGETS << "</gui></resources>";
        manager.load(DIR + "resources.xml", "");
        dynamic_cast<gfx::ImageBank*>(manager.banks["guiImages"])->refresh(nullptr);
        gui = dynamic_cast<GUI*>(manager.banks["gui"]);
        ASSERT_NE(gui, nullptr);
        gui->setActive(true);
    }
    void TearDown() override {
        dynamic_cast<gfx::ImageBank*>(manager.banks["guiImages"])->release();
        for (auto& bank : manager.banks) delete bank.second;
    }

    // Draws `c` alone where the whole GUI would draw it, after giving it the focus: only one
    // widget can be hot at a time.
    void drawHot(Component* c, bool pressed) {
        c->setFocused(true);
        if (pressed) c->mouseDown(&q, {1, 1}, 1);
        glPushAttrib(GL_ALL_ATTRIB_BITS);
        glEnable(GL_BLEND);
        glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
        glPushMatrix();
        for (Component* p = c->getParent(); p; p = p->getParent()) glTranslatef(p->getPos().x, p->getPos().y, 0);
        c->draw();
        glPopMatrix();
        glPopAttrib();
        if (pressed) c->mouseUp(&q, {-100, -100}, 1);
    }
    Uint32 pixel(int x, int y) {
        unsigned char rgb[3];
        glReadPixels(x, y, 1, 1, GL_RGB, GL_UNSIGNED_BYTE, rgb);
        return Uint32(rgb[0]) << 16 | Uint32(rgb[1]) << 8 | rgb[2];
    }
    Component* at(const std::string& name) { return (*gui)[name]; }

    // Rows from the top; columns: resting, pressed, hot, pressed and hot.
    static constexpr const char* WIDGETS =
        "<Pane name=\"pane\" x=\"20\" y=\"20\" width=\"760\" height=\"560\" style=\"frame\">"
        "<Button name=\"b0\" x=\"20\" y=\"500\" width=\"120\" height=\"30\" style=\"bs\" caption=\"AB\"/>"
        "<Button name=\"b1\" x=\"180\" y=\"500\" width=\"120\" height=\"30\" style=\"bs\" repeat=\"true\"/>"
        "<Button name=\"b2\" x=\"340\" y=\"500\" width=\"120\" height=\"30\" style=\"bs\"/>"
        "<Button name=\"b3\" x=\"500\" y=\"500\" width=\"120\" height=\"30\" style=\"bs\"/>"
        "<Checkbox name=\"c0\" x=\"20\" y=\"440\" width=\"120\" height=\"30\" style=\"cs\"/>"
        "<Checkbox name=\"c2\" x=\"340\" y=\"440\" width=\"120\" height=\"30\" style=\"cs\"/>"
        "<Checkbox name=\"c3\" x=\"500\" y=\"440\" width=\"120\" height=\"30\" style=\"cs\"/>"
        "<Checkbox name=\"k0\" x=\"20\" y=\"380\" width=\"120\" height=\"30\" style=\"cs\" checked=\"true\"/>"
        "<Checkbox name=\"k2\" x=\"340\" y=\"380\" width=\"120\" height=\"30\" style=\"cs\" checked=\"true\"/>"
        "<Checkbox name=\"k3\" x=\"500\" y=\"380\" width=\"120\" height=\"30\" style=\"cs\" checked=\"true\"/>"
        "<DropdownList name=\"d0\" x=\"20\" y=\"320\" width=\"120\" height=\"30\" style=\"ds\"><Item caption=\"A\"/>"
        "</DropdownList>"
        "<DropdownList name=\"d2\" x=\"340\" y=\"320\" width=\"120\" height=\"30\" style=\"ds\"/>"
        "<DropdownList name=\"d3\" x=\"500\" y=\"320\" width=\"120\" height=\"30\" style=\"ds\"/>"
        "<Slider_int name=\"s0\" x=\"20\" y=\"260\" width=\"280\" height=\"20\" barStyle=\"rBar\" handleStyle=\"bs\""
        "  buttonStyle=\"bs\" buttonsBefore=\"dec\" buttonsAfter=\"inc\" min=\"0\" max=\"10\" value=\"0\"/>"
        "<Slider_int name=\"s2\" x=\"340\" y=\"260\" width=\"280\" height=\"20\" barStyle=\"rBar\" handleStyle=\"bs\""
        "  min=\"0\" max=\"10\" value=\"10\"/>"
        "<Slider_float name=\"s3\" x=\"660\" y=\"200\" width=\"20\" height=\"330\" orientation=\"vertical\""
        "  barStyle=\"rBar\" handleStyle=\"bs\" min=\"0\" max=\"1\" value=\"0.5\"/>"
        "<Textfield name=\"t0\" x=\"20\" y=\"200\" width=\"120\" height=\"30\" style=\"lUp\" caption=\"C\"/>"
        "<Textfield name=\"t2\" x=\"340\" y=\"200\" width=\"120\" height=\"30\" style=\"lUpHot\" caption=\"C\"/>"
        "<Label name=\"label\" x=\"20\" y=\"140\" width=\"120\" height=\"30\" style=\"lLeft\" image=\"marker\""
        "  caption=\"AB\"/>"
        "<Label name=\"fontless\" x=\"500\" y=\"140\" width=\"120\" height=\"30\" style=\"lCentred\""
        "  image=\"marker\"/>"
        "<InputCaptor name=\"captor\" x=\"340\" y=\"140\" width=\"120\" height=\"30\"/>"
        "<Pane name=\"clip\" x=\"20\" y=\"60\" width=\"100\" height=\"40\" style=\"rBar\">"
        "  <Button name=\"overflow\" x=\"60\" y=\"5\" width=\"80\" height=\"30\" style=\"bs\"/>"
        "</Pane>"
        "</Pane>"
        "<LabelStyle name=\"lLeft\" rect=\"rBar\" font=\"fText\" imageHorizontal=\"left\"/>"
        "<LabelStyle name=\"lCentred\" rect=\"rBar\" imageHorizontal=\"left\"/>";

    ResourceManager manager;
    GUI* gui = nullptr;
    ControlQueue q;
};

}  // namespace

TEST_F(Drawing, EveryWidgetInEveryStateLooksAsItsStyleSays) {
    RenderContext2D context({800, 600});
    context.apply();
    setClearColor(Color(0, 0, 0, 1));
    clearScreen();
    resetCursor();
    at("b1")->mouseDown(&q, {1, 1}, 1);  // a repeating button stays down without the focus
    auto* fromDefinition = dynamic_cast<sprites::ImageSprite*>(gui->getMouseCursor());
    ASSERT_NE(fromDefinition, nullptr);
    EXPECT_EQ(fromDefinition->image, gui->getImages()->find("marker"));
    EXPECT_FLOAT_EQ(fromDefinition->position.x, 400);
    gui->setMouseCursor(new AddingCursor);
    gui->draw();
    drawHot(at("b2"), false);
    drawHot(at("b3"), true);
    drawHot(at("c2"), false);
    drawHot(at("c3"), true);
    drawHot(at("k2"), false);
    drawHot(at("k3"), true);
    drawHot(at("d2"), false);
    drawHot(at("d3"), true);
    drawHot(at("s2"), false);
    drawHot(at("t2"), false);
    glFinish();
    saveScreenshot((DIR + "widgets.png").c_str());

    // Widget centres, in window pixels: the pane sits at (20, 20).
    auto centre = [&](const char* name) {
        const Component* c = at(name);
        return std::pair<int, int>(int(20 + c->getPos().x + c->getDimensions().x / 2),
                                   int(20 + c->getPos().y + c->getDimensions().y / 2));
    };
    auto colourAt = [&](const char* name) {
        const auto [x, y] = centre(name);
        return pixel(x, y);
    };
    EXPECT_EQ(colourAt("b0"), 0x404040u);
    EXPECT_EQ(colourAt("b1"), 0x800000u);
    EXPECT_EQ(pixel(255, 535), 0xFF0000u);  // the cursor, over everything, with its own blending
    EXPECT_EQ(pixel(270, 535), 0x800000u);
    EXPECT_EQ(colourAt("b2"), 0x008000u);
    EXPECT_EQ(colourAt("b3"), 0x000080u);
    EXPECT_EQ(pixel(20 + 20 - 1, 20 + 515), 0xFFFFFFu);  // the bevel: light on the left
    EXPECT_EQ(pixel(20 + 80, 20 + 500 - 1), 0x000000u);  // dark below
    EXPECT_EQ(colourAt("c0"), 0x404040u);
    EXPECT_EQ(colourAt("c2"), 0x008000u);
    EXPECT_EQ(colourAt("c3"), 0x000080u);
    EXPECT_EQ(colourAt("k0"), 0x606000u);
    EXPECT_EQ(colourAt("k2"), 0x006060u);
    EXPECT_EQ(colourAt("k3"), 0x600060u);
    // Dropdown lists carry the 8 x 8 marker in the middle of their box.
    EXPECT_EQ(colourAt("d0"), 0xFFFF00u);
    EXPECT_EQ(pixel(centre("d0").first - 10, centre("d0").second), 0x404040u);
    EXPECT_EQ(pixel(centre("d3").first - 10, centre("d3").second), 0x000080u);
    // Sliders: the bar, the handle at each end, and the step buttons' boxes.
    EXPECT_EQ(pixel(20 + 20 + 150, 20 + 270), 0x303030u);
    EXPECT_EQ(pixel(20 + 20 + 30, 20 + 270), 0x404040u);   // s0's handle at 0, after the dec button
    EXPECT_EQ(pixel(20 + 340 + 270, 20 + 270), 0x008000u);  // s2's at 10, hot
    EXPECT_EQ(colourAt("s3"), 0x404040u);                   // the vertical one half way up
    EXPECT_EQ(pixel(20 + 670, 20 + 210), 0x303030u);
    EXPECT_EQ(colourAt("t0"), 0x404040u);
    EXPECT_EQ(colourAt("t2"), 0x008000u);
    // Text, vertically centred: "AB" of b0 at its left edge, "C" and the focused field's "_".
    EXPECT_EQ(pixel(40 + 3, 520 + 15), 0xFFFFFFu);
    EXPECT_EQ(pixel(40 + 6, 520 + 15), 0x404040u);  // the unit between the glyphs
    EXPECT_EQ(pixel(40 + 10, 520 + 15), 0xFFFFFFu);
    EXPECT_EQ(pixel(40 + 3, 520 + 8), 0x404040u);  // below the glyphs
    EXPECT_EQ(pixel(360 + 3, 220 + 15), 0xFFFFFFu);
    EXPECT_EQ(pixel(360 + 10, 220 + 15), 0xFFFFFFu);
    EXPECT_EQ(pixel(40 + 10, 220 + 15), 0x404040u);  // no "_" without the focus
    // The label's marker at its left edge, its text right of it; without a font style the
    // marker goes in the middle.
    EXPECT_EQ(pixel(40 + 4, 160 + 15), 0xFFFF00u);
    EXPECT_EQ(pixel(40 + 8 + 3, 160 + 15), 0xFFFFFFu);
    EXPECT_EQ(colourAt("fontless"), 0xFFFF00u);
    // The textured frame: blue edges outside the pane, the stretched centre inside.
    EXPECT_EQ(pixel(16, 300), 0x0000FFu);
    EXPECT_EQ(pixel(400, 584), 0x0000FFu);
    EXPECT_EQ(pixel(16, 16), 0x0000FFu);
    EXPECT_EQ(pixel(400, 30), 0x102010u);
    // A child is clipped to its container: the button stops at the small pane's right edge.
    EXPECT_EQ(pixel(20 + 20 + 90, 20 + 80), 0x404040u);
    EXPECT_EQ(pixel(20 + 20 + 110, 20 + 80), 0x102010u);
}
