#include "gfx/imagebank.h"
#include "gui/probe.h"
#include "sprites/sprites.h"
#include "support/manager.h"
#include "support/window.h"

using namespace norvane;
using namespace norvane::gui;

static void writeImage(const std::string& name, int size, Uint32 rgba) {
    SurfacePtr surface = makeRgbaSurface(size, size);
    SDL_FillRect(surface.get(), nullptr, SDL_MapRGBA(surface->format, rgba >> 24, rgba >> 16 & 0xFF, rgba >> 8 & 0xFF, rgba & 0xFF));
    savePng(surface.get(), scratchPath(name).c_str());
}

// A 10 x 10 half-red square above and right of its position, added to what lies below it.
struct AddingCursor : sprites::Sprite {
    AddingCursor() : Sprite({250, 530}, true) { blendMode = BLEND_ADDITIVE; }
    void drawSelf() override {
        glDisable(GL_TEXTURE_2D);
        glColor4f(0.5f, 0.0f, 0.0f, 1.0f);
        glRectf(position.x, position.y, position.x + 10, position.y + 10);
    }
};

// One flat colour per state, a bevel on the resting ones; checked boxes in darker mixes.
static std::string styles() {
    std::string s;
    for (const auto& [name, colour, label] : {std::tuple{"Down", "800000", true}, {"UpHot", "008000", false}, {"DownHot", "000080", true},
                                              {"OnUp", "606000", true}, {"OnUpHot", "006060", true}, {"OnDownHot", "600060", true},
                                              {"Bar", "303030", false}}) {
        s += std::string("<PlainRectStyle name=\"r") + name + "\" color=\"" + colour + "FF\"/>";
        if (label) s += std::string("<LabelStyle name=\"l") + name + "\" rect=\"r" + name + "\"/>";
    }
    return s + "<PlainRectStyle name=\"rUp\" color=\"404040FF\" border=\"2\" colorBorder1=\"FFFFFFFF\" colorBorder2=\"000000FF\"/>"
               "<TexturedRectStyle name=\"frame\" color=\"FFFFFFFF\" stretch=\"stretch\" center=\"center\" upperLeft=\"edge\""
               " upper=\"edge\" upperRight=\"edge\" left=\"edge\" right=\"edge\" lowerLeft=\"edge\" lower=\"edge\" lowerRight=\"edge\"/>"
               "<SimpleFontStyle name=\"fText\" family=\"blocks\" size=\"8\" horizontal=\"left\"/>"
               "<LabelStyle name=\"lUp\" rect=\"rUp\" font=\"fText\"/><LabelStyle name=\"lUpHot\" rect=\"rUpHot\" font=\"fText\"/>"
               "<ButtonStyle name=\"bs\" up=\"lUp\" down=\"lDown\" upHot=\"lUpHot\" downHot=\"lDownHot\"/>"
               "<ButtonStyle name=\"bsOn\" up=\"lOnUp\" upHot=\"lOnUpHot\" downHot=\"lOnDownHot\"/>"
               "<CheckboxStyle name=\"cs\" checked=\"bsOn\" unchecked=\"bs\"/>"
               "<DropdownListStyle name=\"ds\" up=\"lUp\" upHot=\"lUpHot\" downHot=\"lDownHot\" image=\"marker\"/>";
}

// A 120 x 30 widget in column c (resting, pressed, hot, pressed and hot) and row r from the top.
static std::string cell(const std::string& type, const std::string& name, int c, int r, const std::string& more) {
    return "<" + type + " name=\"" + name + std::to_string(c) + "\" x=\"" + std::to_string(20 + 160 * c) + "\" y=\"" +
           std::to_string(500 - 60 * r) + "\" width=\"120\" height=\"30\" " + more + "/>";
}

static std::string widgets() {
    std::string w = "<Pane name=\"pane\" x=\"20\" y=\"20\" width=\"760\" height=\"560\" style=\"frame\">" +
                    cell("Button", "b", 0, 0, "style=\"bs\" caption=\"AB\"") + cell("Button", "b", 1, 0, "style=\"bs\" repeat=\"true\"") +
                    "<DropdownList name=\"d0\" x=\"20\" y=\"320\" width=\"120\" height=\"30\" style=\"ds\"><Item caption=\"A\"/>"
                    "</DropdownList>" + cell("Textfield", "t", 0, 5, "style=\"lUp\" caption=\"C\"") +
                    cell("Textfield", "t", 2, 5, "style=\"lUpHot\" caption=\"C\"") +
                    cell("Label", "label", 0, 6, "style=\"lLeft\" image=\"marker\" caption=\"AB\"") +
                    cell("Label", "fontless", 3, 6, "style=\"lCentred\" image=\"marker\"") + cell("InputCaptor", "captor", 2, 6, "");
    for (int c : {2, 3}) w += cell("Button", "b", c, 0, "style=\"bs\"") + cell("DropdownList", "d", c, 3, "style=\"ds\"");
    for (int c : {0, 2, 3}) w += cell("Checkbox", "c", c, 1, "style=\"cs\"") + cell("Checkbox", "k", c, 2, "style=\"cs\" checked=\"true\"");
    const std::string bars = " barStyle=\"rBar\" handleStyle=\"bs\" min=\"0\" max=\"10\" y=\"260\" width=\"280\" height=\"20\"";
    return w + "<Slider_int name=\"s0\" x=\"20\" buttonStyle=\"bs\" buttonsBefore=\"dec\" buttonsAfter=\"inc\" value=\"0\"" + bars +
               "/><Slider_int name=\"s2\" x=\"340\" value=\"10\"" + bars + "/><Slider_float name=\"s3\" x=\"660\" y=\"200\" width=\"20\""
               " height=\"330\" orientation=\"vertical\" barStyle=\"rBar\" handleStyle=\"bs\" min=\"0\" max=\"1\" value=\"0.5\"/>"
               "<Pane name=\"clip\" x=\"20\" y=\"60\" width=\"100\" height=\"40\" style=\"rBar\"><Button name=\"overflow\" x=\"60\""
               " y=\"5\" width=\"80\" height=\"30\" style=\"bs\"/></Pane></Pane><LabelStyle name=\"lLeft\" rect=\"rBar\" font=\"fText\""
               " imageHorizontal=\"left\"/><LabelStyle name=\"lCentred\" rect=\"rBar\" imageHorizontal=\"left\"/>";
}

TEST_F(WindowTest, EveryWidgetInEveryStateLooksAsItsStyleSays) {
    writeImage("edge.png", 8, 0x0000FFFF);
    writeImage("center.png", 16, 0x102010FF);
    writeImage("marker.png", 8, 0xFFFF00FF);
    // A font whose glyphs A, B, C, _ and 0 are solid 6 x 8 blocks, one unit apart.
    writeImage("font/glyphs.png", 48, 0xFFFFFFFF);
    writeFile("font/bitmapfont.xml", "<bitmapfont name=\"blocks\" size=\"8\" height=\"8\" spacing=\"1\" width=\"6\" hPadding=\"2\">"
                                     "<image file=\"glyphs.png\"><line index=\"1\"><char char=\"A\"/><char char=\"B\"/>"
                                     "<char char=\"C\"/><char char=\"_\"/><char char=\"0\"/></line></image></bitmapfont>");
    std::string images = "<images name=\"guiImages\">";
    for (const char* name : {"edge", "center", "marker"}) images += std::string("<image name=\"") + name + "\" filename=\"" + name + ".png\"/>";
    OwningManager manager;
    manager.load(writeFile("resources.xml", "<resources><fonts name=\"guiFonts\"><bitmapfont dir=\"font/\"/></fonts>" + images +
                                                "</images><gui name=\"gui\" fonts=\"guiFonts\" images=\"guiImages\" cursor=\"marker\""
                                                " width=\"800\" height=\"600\" visible=\"true\">" + styles() + widgets() +
                                                "</gui></resources>"), "");
    manager.get<gfx::ImageBank>("guiImages")->refresh(nullptr);
    GUI* gui = manager.get<GUI>("gui");
    ASSERT_NE(gui, nullptr);
    gui->setActive(true);
    ControlQueue q;
    auto at = [&](const std::string& name) { return (*gui)[name]; };
    // Draws `c` alone, focused, where the GUI would: only one widget can be hot at a time.
    auto drawHot = [&](Component* c, bool pressed) {
        c->setFocused(true);
        if (pressed) c->mouseDown(&q, {1, 1}, 1);
        glPushMatrix();
        for (Component* p = c->getParent(); p; p = p->getParent()) glTranslatef(p->getPos().x, p->getPos().y, 0);
        c->draw();
        glPopMatrix();
        if (pressed) c->mouseUp(&q, {-100, -100}, 1);
    };
    auto pixel = [](int x, int y) {
        unsigned char rgb[3];
        glReadPixels(x, y, 1, 1, GL_RGB, GL_UNSIGNED_BYTE, rgb);
        return Uint32(rgb[0]) << 16 | Uint32(rgb[1]) << 8 | rgb[2];
    };
    begin2D(Color(0, 0, 0, 1));
    resetCursor();
    at("b1")->mouseDown(&q, {1, 1}, 1);  // a repeating button stays down without the focus
    auto* fromDefinition = dynamic_cast<sprites::ImageSprite*>(gui->getMouseCursor());
    ASSERT_TRUE(fromDefinition && fromDefinition->image == gui->getImages()->find("marker"));
    EXPECT_FLOAT_EQ(fromDefinition->position.x, 400);
    gui->setMouseCursor(new AddingCursor);
    gui->draw();
    for (const char* name : {"b2", "c2", "k2", "d2", "s2", "t2"}) drawHot(at(name), false);
    for (const char* name : {"b3", "c3", "k3", "d3"}) drawHot(at(name), true);
    screenshot("widgets.png");

    // Widget centres, in window pixels: the pane sits at (20, 20).
    auto centre = [&](const char* name) {
        const Component* c = at(name);
        return std::pair{int(20 + c->getPos().x + c->getDimensions().x / 2), int(20 + c->getPos().y + c->getDimensions().y / 2)};
    };
    // Rows: buttons, boxes, lists (marker in the middle), text fields; s3's handle half way; a fontless label's image.
    for (const auto& [name, colour] : {std::pair{"b0", 0x404040}, {"b1", 0x800000}, {"b2", 0x008000}, {"b3", 0x000080},
                                       {"c0", 0x404040}, {"c2", 0x008000}, {"c3", 0x000080}, {"k0", 0x606000}, {"k2", 0x006060},
                                       {"k3", 0x600060}, {"d0", 0xFFFF00}, {"t0", 0x404040}, {"t2", 0x008000}, {"s3", 0x404040},
                                       {"fontless3", 0xFFFF00}})
        EXPECT_EQ(pixel(centre(name).first, centre(name).second), Uint32(colour)) << name;
    // The cursor over everything, beside it b1; the bevel; lists' boxes; s0's bar and handle after its dec button, s2's
    // hot at 10, s3's bar; centred text with a unit between glyphs, the focused field's "_"; the label's marker left of its
    // text; the frame's edges outside the pane, its stretched centre inside; a child clipped at its container's edge.
    for (const auto& [x, y, colour] : {std::tuple{255, 535, 0xFF0000}, {270, 535, 0x800000}, {39, 535, 0xFFFFFF}, {100, 519, 0x000000},
        {centre("d0").first - 10, centre("d0").second, 0x404040}, {centre("d3").first - 10, centre("d3").second, 0x000080},
        {190, 290, 0x303030}, {70, 290, 0x404040}, {63, 290, 0xFFFFFF}, {630, 290, 0x008000}, {690, 230, 0x303030},
        {43, 535, 0xFFFFFF}, {46, 535, 0x404040}, {50, 535, 0xFFFFFF}, {43, 528, 0x404040}, {363, 235, 0xFFFFFF},
        {370, 235, 0xFFFFFF}, {50, 235, 0x404040}, {44, 175, 0xFFFF00}, {51, 175, 0xFFFFFF}, {16, 300, 0x0000FF},
        {400, 584, 0x0000FF}, {16, 16, 0x0000FF}, {400, 30, 0x102010}, {130, 100, 0x404040}, {150, 100, 0x102010}})
        EXPECT_EQ(pixel(x, y), Uint32(colour)) << x << "," << y;
    // A hover, a click and Return on b0 through SDL's own queue (emptied first) confirm it twice.
    for (SDL_Event e; SDL_PollEvent(&e);) continue;
    Callback callback;
    gui->setCallback(&callback);
    q.push(gui);
    const Uint16 x = Uint16(centre("b0").first), y = Uint16(600 - centre("b0").second);
    for (SDL_Event e : {mouseMotionEvent(x, y), mouseButtonEvent(1, true, x, y), mouseButtonEvent(1, false, x, y),
                        keyEvent(SDLK_RETURN, true, '\r')})
        ASSERT_EQ(SDL_PushEvent(&e), 0);
    EXPECT_TRUE(q.readEvents() && gui->getFocused() == at("b0") && callback.confirms == 2);
}
