#include <memory>

#include "controls/inputevaluator.h"
#include "controls/translators.h"
#include "gamedata.h"

using norvane::InputEvaluator;
using norvane::xml::Node;
using vantorix::Resources;
using vantorix::Settings;

namespace {

std::string bindingsOf(const InputEvaluator* evaluator) {
    Node root;
    evaluator->addTranslatorsToTree(&root);
    return root.toString(0);
}

// The settings, then the bindings of the three players.
std::string textOf(const Resources& r) {
    const Settings& s = r.settings;
    return std::to_string(s.xRes) + "x" + std::to_string(s.yRes) + (s.fullscreen ? " full " : " window ") +
           std::to_string(s.volumeSfx) + "/" + std::to_string(s.volumeMusic) + "\n" +
           bindingsOf(r.evaluatorGamePlayerSingle) + bindingsOf(r.evaluatorGamePlayerMulti[0]) +
           bindingsOf(r.evaluatorGamePlayerMulti[1]);
}

}  // namespace

TEST_F(GameData, SettingsChangeOnlyWhatTheFileSaysAndBadFilesChangeNothing) {
    installData();
    const Resources shipped;
    const std::string bindings = textOf(shipped).substr(textOf(shipped).find('\n'));
    const std::string defaults = "800x600 window 70/100";
    const struct {
        std::string file, expected;
        bool fireOnF;         // the single player's; else the bindings stay
        const char* warning;  // null: nothing is logged
    } cases[] = {
        {R"(<settings><sound volumeSfx="100" volumeMusic="0"/></settings>)", "800x600 window 100/0", false, nullptr},
        {R"(<settings><controls name="multi 3"><trigger name="fire"><keyTranslator key="x"/></trigger></controls>
            <controls name="single"><trigger name="fire"><keyTranslator key="f"/></trigger></controls>
            <screen fullscreen="true" xRes="1024" yRes="768"/></settings>)",
         "1024x768 full 70/100", true, "(warning) Unknown control group \"multi 3\".\n"},
        // a window that cannot open would end every start-up, and each would save it again
        {R"(<settings><screen xRes="-5" yRes="99999999999"/><sound volumeSfx="101" volumeMusic="101"/></settings>)",
         defaults, false, "(warning) Settings: xRes -5 is not from 200 to 16384, keeping 800.\n"},
        {"", defaults, false, nullptr},  // no element: nothing to apply
        {R"(<settings><sound volumeSfx="5"></screen></settings>)", defaults, false, "Could not load settings: "},
        {R"(<settings><screen xRes="1024"/><sound volumeSfx="5" )", defaults, false, "Could not load settings: "},
        {std::string("\x89PNG\r\n\x1a\n\0\0\0\rIHDR\xff\xfe", 18), defaults, false, "Could not load settings: "},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.file);
        writeSettings(c.file);
        std::unique_ptr<Resources> r;
        const std::string log = captured([&] { r.reset(new Resources); });
        const std::string text = textOf(*r);
        EXPECT_EQ(text.substr(0, text.find('\n')), c.expected);
        if (c.fireOnF) {
            EXPECT_EQ(r->evaluatorGamePlayerSingle->find("fire")->keysToString(0), "f");
            EXPECT_EQ(bindingsOf(r->evaluatorGamePlayerMulti[0]), bindingsOf(shipped.evaluatorGamePlayerMulti[0]));
        } else {
            EXPECT_EQ(text.substr(text.find('\n')), bindings);
        }
        EXPECT_EQ(log.empty(), !c.warning);
        EXPECT_NE(log.find(c.warning ? c.warning : ""), std::string::npos) << log;
    }
}

TEST_F(GameData, BindingsOfAllThreePlayersSurviveASave) {
    installData();
    Resources saved;
    // Edits of each kind the controls dialog makes, one on each player.
    new norvane::KeyTranslator(saved.evaluatorGamePlayerSingle->find("fire"), SDLK_f, norvane::ksDefault, 1.0f);
    norvane::Trigger* x = saved.evaluatorGamePlayerMulti[0]->find("x");
    x->clearTranslators();
    new norvane::JoyAxisTranslator(x, 1, 3, -1, 4000, 30000);
    new norvane::JoyAxisTranslator(x, 1, 3, 1, 4000, 30000);
    norvane::Trigger* warp = saved.evaluatorGamePlayerMulti[1]->find("timewarp");
    warp->clearTranslators();
    new norvane::JoyButtonTranslator(warp, 1, 5, norvane::ksDefault, 1.0f);
    saved.settings = {1024, 768, true, 30, 0};
    saved.saveSettings();

    const Resources loaded;
    EXPECT_EQ(textOf(loaded), textOf(saved));
    EXPECT_EQ(loaded.evaluatorGamePlayerMulti[0]->find("x")->joyToString(-1, 0), "Joy 1; Axis 3 -");
    EXPECT_EQ(loaded.evaluatorGamePlayerMulti[1]->find("timewarp")->joyToString(0, 0), "Joy 1; Btn 5");
    std::unique_ptr<Node> root(norvane::xml::loadXML(settingsPath().c_str()));
    std::string order;
    for (const Node* child : root->children) order += child->name + "(" + child->getAttribute("name", "") + ") ";
    EXPECT_EQ(order, "screen() sound() controls(single) controls(multi 1) controls(multi 2) ");
}
