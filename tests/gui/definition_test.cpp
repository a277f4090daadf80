#include "gui/containers.h"
#include "gui/lists.h"
#include "gui/loaded.h"
#include "gui/standard.h"
#include "gui/styles.h"
#include "gui/text.h"

using namespace norvane;
using namespace norvane::gui;

using Definition = LoadedGui;

static std::string names(const Component* c) {
    std::string out;
    for (const Component* child : c->getChildren()) out += child->getName() + " ";
    return out;
}

TEST_F(Definition, NestedContainersLoadIntoTheTreeAndFaultyElementsAreSkipped) {
    ASSERT_NE(load("<PlainRectStyle name=\"frame\" color=\"FF000080\" border=\"2\"/>"
                   "<Pane name=\"pMain\" x=\"10\" y=\"20\" width=\"300\" height=\"200\" style=\"frame\" visible=\"false\">"
                   "<InputCaptor name=\"ic\" gridX=\"1\" gridY=\"2\" triggerKey=\"menu.t1\" triggerJoyButton=\"menu.nothing\""
                   " triggerJoyAxis=\"nodot\"/><Pane name=\"pInner\" x=\"5\" y=\"5\" width=\"100\" height=\"50\" data=\"42\""
                   " dataString=\"inner\" triggerNorth=\"menu.t2\" enabled=\"false\"><InputCaptor name=\"deep\"/><Bogus name=\"ignored\"/>"
                   "</Pane><InputCaptor name=\"farAway\" gridX=\"99999\"><Pane name=\"lostWithIt\"/></InputCaptor>"
                   "<Pane name=\"spanless\" gridWidth=\"0\"/><Pane name=\"afterBad\" style=\"nosuch\" width=\"nan\"/>"
                   "<Pane name=\"last\" style=\"nosuch\"/></Pane><PlainRectStyle name=\"frame\" color=\"00FF00FF\"/>"
                   "<Pane style=\"frame\"/><Slider_double name=\"odd\"/>"
                   "<Button name=\"go\" style=\"missing\" trigger=\"menu.t9\"/><Checkbox name=\"box\" style=\"frame\"/>"
                   "<DropdownList name=\"list\" style=\"frame\"><Item caption=\"only\"/></DropdownList>", " cursor=\"arrow\""), nullptr);
    Component *main = (*gui)["pMain"], *inner = (*gui)["pInner"];
    EXPECT_EQ(names(gui) + "| " + names(main) + names(inner), "pMain  go box list | ic pInner last deep ");
    EXPECT_EQ(gui->getMouseCursor(), nullptr);  // no images bank to find it in
    EXPECT_FALSE(main->getVisible() || inner->getEnabled());
    EXPECT_EQ(inner->dataString + std::to_string(inner->data) + std::to_string(int(main->getDimensions().y)), "inner42200");
    auto* captor = get<InputCaptor>("ic");
    ASSERT_TRUE(captor && captor->gridX == 1 && captor->gridY == 2);
    EXPECT_EQ((std::vector<Trigger*>{inner->triggers[North], captor->triggerKey, captor->triggerJoyButton, captor->triggerJoyAxis}),
              (std::vector<Trigger*>{trigger("t2"), trigger("t1"), nullptr, nullptr}));
    // Every style is read before any component, so the later "frame" is the one the panes see.
    auto* frame = dynamic_cast<PlainRectStyle*>(dynamic_cast<Pane*>(main)->getStyle());
    ASSERT_NE(frame, nullptr);
    EXPECT_EQ((std::vector<float>{float(gui->getStyles()->size()), frame->color.green, frame->border}), (std::vector<float>{1, 1, 0}));
    // A list works without its style; "frame" is no checkbox style.
    EXPECT_TRUE(!dynamic_cast<Pane*>((*gui)["last"])->getStyle() && get<DropdownList>("list")->getCaption() == "only");
    for (const char* line : {"InputCaptor \"farAway\": gridX 99999 is out of range. Element skipped.",
                             "(warning) Unknown GUI element \"Bogus\" skipped.", "Could not find matching style \"frame\" for \"box\"."})
        EXPECT_NE(log.find(line), std::string::npos) << line << "\n" << log;
    EXPECT_EQ(log.find("PlainRectStyle\" skipped"), std::string::npos);  // styles belong here
}

TEST_F(Definition, StylesReadTheirColoursAndNamesAndTriggersNeedAManager) {
    load("<PlainRectStyle name=\"bevel\" color=\"FF000080\" colorBorder1=\"ffffffff\"/>"
         "<PlainRectStyle color=\"00000000\"/>"
         "<TexturedRectStyle name=\"tex\" stretch=\"single\" stretchLeft=\"stretch\"/>"
         "<LabelStyle name=\"label\" imageHorizontal=\"middle\" imageVertical=\"top\"/>");
    auto* bevel = dynamic_cast<PlainRectStyle*>(gui->getStyles()->find("bevel"));
    ASSERT_NE(bevel, nullptr);
    // A colour absent keeps the default; a style without a name is kept under "".
    EXPECT_TRUE(std::abs(bevel->color.alpha - 0.502f) < 0.001f && bevel->colorBorder2.alpha == 0.0f && gui->getStyles()->find(""));
    auto* tex = dynamic_cast<TexturedRectStyle*>(gui->getStyles()->find("tex"));
    EXPECT_EQ(tex->stretchCenter * 10 + tex->stretchLeft, STRETCH_SINGLE * 10 + STRETCH_STRETCH);
    // An unknown justification word keeps the current one; the rest of the element still counts.
    auto* label = dynamic_cast<LabelStyle*>(gui->getStyles()->find("label"));
    EXPECT_EQ(label->imageHorizontal * 10 + label->imageVertical, JH_CENTER * 10 + JV_TOP);
    EXPECT_NE(log.find("Style \"label\": middle is not a valid JustificationHorizontal value. Keeping \"center\"."), std::string::npos);

    // "gui" is a bank, but no input evaluator.
    EXPECT_EQ((std::vector<Trigger*>{gui->findTrigger("menu.t1"), gui->findTrigger("gui.t1"), gui->findTrigger("nobank.t1")}),
              (std::vector<Trigger*>{trigger("t1"), nullptr, nullptr}));
    GUI loose;
    std::string message;
    const std::string logged = captured([&] { message = thrownBy([&] { loose.findTrigger("menu.t1"); }); });
    EXPECT_TRUE(message == "Manager not yet set!" && logged.find(message) != std::string::npos) << logged;
    // An unknown stretch mode ends the definition with the word as the message.
    EXPECT_EQ(thrownBy([&] { load("<TexturedRectStyle name=\"t\" stretchUpper=\"tile\"/>"); }), "tile");
}
