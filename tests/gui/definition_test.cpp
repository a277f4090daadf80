#include <gtest/gtest.h>

#include <fstream>
#include <functional>

#include "controls/inputevaluator.h"
#include "files/sysdirs.h"
#include "gui/containers.h"
#include "gui/root.h"
#include "gui/standard.h"
#include "gui/styles.h"
#include "support/captured.h"

using namespace norvane;
using namespace norvane::gui;

namespace {

// Loads `guiContent` as the bank "gui" beside an input evaluator "menu" with the triggers up and back.
class Definition : public ::testing::Test {
protected:
    void TearDown() override {
        for (auto& bank : manager.banks) delete bank.second;  // the manager leaves them alive
    }
    GUI* load(const std::string& guiContent, const std::string& guiAttributes = "") {
        // The scratch directory is shared by every test folder, and tests run in parallel.
        mkdirs(TEST_TMP_DIR "/gui/");
        const std::string path = std::string(TEST_TMP_DIR "/gui/") +
                                 ::testing::UnitTest::GetInstance()->current_test_info()->name() + ".xml";
        std::ofstream(path) << "<resources><inputEvaluator name=\"menu\">"
                               "<trigger code=\"1\" name=\"up\"/><trigger code=\"2\" name=\"back\"/>"
                               "</inputEvaluator><gui name=\"gui\""
                            << guiAttributes << ">"
                            << guiContent << "</gui></resources>";
        log = captured([&] { manager.load(path, ""); });
        return dynamic_cast<GUI*>(manager.banks["gui"]);
    }
    Trigger* trigger(const std::string& name) {
        return dynamic_cast<InputEvaluator*>(manager.banks["menu"])->find(name);
    }
    static std::vector<std::string> names(const Component* c) {
        std::vector<std::string> out;
        for (const Component* child : c->getChildren()) out.push_back(child->getName());
        return out;
    }

    ResourceManager manager;
    std::string log;
};

}  // namespace

TEST_F(Definition, NestedContainersLoadIntoTheTreeAndFaultyElementsAreSkipped) {
    GUI* gui = load(
        "<PlainRectStyle name=\"frame\" color=\"FF000080\" border=\"2\"/>"
        "<Pane name=\"pMain\" x=\"10\" y=\"20\" width=\"300\" height=\"200\" style=\"frame\" visible=\"false\">"
        "  <InputCaptor name=\"ic\" gridX=\"1\" gridY=\"2\" triggerKey=\"menu.up\""
        "               triggerJoyButton=\"menu.nothing\" triggerJoyAxis=\"nodot\"/>"
        "  <Pane name=\"pInner\" x=\"5\" y=\"5\" width=\"100\" height=\"50\" data=\"42\" dataString=\"inner\""
        "        triggerNorth=\"menu.back\" enabled=\"false\">"
        "    <InputCaptor name=\"deep\"/><Bogus name=\"ignored\"/>"
        "  </Pane>"
        "  <InputCaptor name=\"farAway\" gridX=\"99999\"><Pane name=\"lostWithIt\"/></InputCaptor>"
        "  <Pane name=\"spanless\" gridWidth=\"0\"/>"
        "  <Pane name=\"afterBad\" style=\"nosuch\" width=\"nan\"/>"
        "  <Pane name=\"last\" style=\"nosuch\"/>"
        "</Pane>"
        "<PlainRectStyle name=\"frame\" color=\"00FF00FF\"/>"
        "<Pane style=\"frame\"/>",
        " cursor=\"arrow\"");
    ASSERT_NE(gui, nullptr);
    EXPECT_EQ(names(gui), (std::vector<std::string>{"pMain", ""}));
    EXPECT_EQ(gui->getMouseCursor(), nullptr);  // no images bank to find it in
    Component* main = (*gui)["pMain"];
    EXPECT_EQ(names(main), (std::vector<std::string>{"ic", "pInner", "last"}));
    EXPECT_EQ(names((*gui)["pInner"]), (std::vector<std::string>{"deep"}));
    EXPECT_EQ((*gui)["lostWithIt"], nullptr);

    EXPECT_FALSE(main->getVisible());
    EXPECT_FLOAT_EQ(main->getDimensions().y, 200);
    Component* inner = (*gui)["pInner"];
    EXPECT_FALSE(inner->getEnabled());
    EXPECT_EQ(inner->data, 42);
    EXPECT_EQ(inner->dataString, "inner");
    EXPECT_EQ(inner->triggers[North], trigger("back"));
    EXPECT_EQ(inner->gridY, 1);  // unplaced: the next row of column 0

    auto* captor = dynamic_cast<InputCaptor*>((*gui)["ic"]);
    ASSERT_NE(captor, nullptr);
    EXPECT_EQ(captor->gridX, 1);
    EXPECT_EQ(captor->gridY, 2);
    EXPECT_EQ(captor->triggerKey, trigger("up"));
    EXPECT_EQ(captor->triggerJoyButton, nullptr);
    EXPECT_EQ(captor->triggerJoyAxis, nullptr);

    // Every style is read before any component, so the later "frame" is the one the panes see.
    auto* frame = dynamic_cast<PlainRectStyle*>(dynamic_cast<Pane*>(main)->getStyle());
    ASSERT_NE(frame, nullptr);
    EXPECT_EQ(gui->getStyles()->size(), 1);
    EXPECT_FLOAT_EQ(frame->color.green, 1.0f);
    EXPECT_FLOAT_EQ(frame->border, 0.0f);
    EXPECT_EQ(dynamic_cast<Pane*>((*gui)["last"])->getStyle(), nullptr);

    EXPECT_NE(log.find("InputCaptor \"farAway\": gridX 99999 is out of range. Element skipped."), std::string::npos)
        << log;
    EXPECT_NE(log.find("Pane \"spanless\": gridWidth 0 is out of range. Element skipped."), std::string::npos);
    EXPECT_NE(log.find("Pane \"afterBad\": width is not a number. Element skipped."), std::string::npos);
    EXPECT_NE(log.find("(critical) Not a fully qualified trigger name."), std::string::npos);
    EXPECT_NE(log.find("Could not find matching style \"nosuch\" for \"last\"."), std::string::npos);
    EXPECT_NE(log.find("(error) No name specified for component. Using empty name."), std::string::npos);
    EXPECT_NE(log.find("(warning) Unknown GUI element \"Bogus\" skipped."), std::string::npos);
    EXPECT_EQ(log.find("PlainRectStyle\" skipped"), std::string::npos);  // styles belong here
}

TEST_F(Definition, StylesReadTheirColoursAndNamesAndTriggersNeedAManager) {
    GUI* gui = load("<PlainRectStyle name=\"bevel\" color=\"FF000080\" colorBorder1=\"ffffffff\"/>"
                    "<PlainRectStyle color=\"00000000\"/>"
                    "<TexturedRectStyle name=\"tex\" stretch=\"single\" stretchLeft=\"stretch\"/>"
                    "<LabelStyle name=\"label\" imageHorizontal=\"middle\" imageVertical=\"top\"/>");
    auto* bevel = dynamic_cast<PlainRectStyle*>(gui->getStyles()->find("bevel"));
    ASSERT_NE(bevel, nullptr);
    EXPECT_NEAR(bevel->color.alpha, 0.502f, 0.001f);
    EXPECT_FLOAT_EQ(bevel->colorBorder2.alpha, 0.0f);  // absent: the default
    EXPECT_NE(gui->getStyles()->find(""), nullptr);
    EXPECT_NE(log.find("(error) No name specified for style. Using empty name."), std::string::npos);
    auto* tex = dynamic_cast<TexturedRectStyle*>(gui->getStyles()->find("tex"));
    EXPECT_EQ(tex->stretchCenter, STRETCH_SINGLE);
    EXPECT_EQ(tex->stretchLeft, STRETCH_STRETCH);
    // An unknown justification word keeps the current one; the rest of the element still counts.
    auto* label = dynamic_cast<LabelStyle*>(gui->getStyles()->find("label"));
    EXPECT_EQ(label->imageHorizontal, JH_CENTER);
    EXPECT_EQ(label->imageVertical, JV_TOP);
    EXPECT_NE(log.find("Style \"label\": middle is not a valid JustificationHorizontal value. Keeping \"center\"."),
              std::string::npos)
        << log;

    EXPECT_EQ(gui->findTrigger("menu.up"), trigger("up"));
    EXPECT_EQ(gui->findTrigger("gui.up"), nullptr);  // a bank, but no input evaluator
    EXPECT_EQ(gui->findTrigger("nobank.up"), nullptr);

    GUI loose;
    std::string message;
    const std::string out = captured([&] {
        try {
            loose.findTrigger("menu.up");
        } catch (const std::string& thrown) {
            message = thrown;
        }
    });
    EXPECT_EQ(message, "Manager not yet set!");
    EXPECT_NE(out.find("(critical) Manager not yet set!"), std::string::npos);

    // An unknown stretch mode ends the definition with the word as the message.
    try {
        load("<TexturedRectStyle name=\"t\" stretchUpper=\"tile\"/>");
        FAIL() << "the definition must not load";
    } catch (const std::string& thrown) {
        EXPECT_EQ(thrown, "tile");
    }
}
