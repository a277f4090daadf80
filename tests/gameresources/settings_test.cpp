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

std::string playersOf(const Resources& r) {
    return bindingsOf(r.evaluatorGamePlayerSingle) + bindingsOf(r.evaluatorGamePlayerMulti[0]) +
           bindingsOf(r.evaluatorGamePlayerMulti[1]);
}

void expectSettings(const Settings& actual, const Settings& expected) {
    EXPECT_EQ(actual.xRes, expected.xRes);
    EXPECT_EQ(actual.yRes, expected.yRes);
    EXPECT_EQ(actual.fullscreen, expected.fullscreen);
    EXPECT_EQ(actual.volumeSfx, expected.volumeSfx);
    EXPECT_EQ(actual.volumeMusic, expected.volumeMusic);
}

}  // namespace

TEST_F(GameData, SettingsChangeOnlyWhatTheFileSaysAndBadFilesChangeNothing) {
    installData();
    const Resources shipped;
    const Settings defaults;
    const struct {
        std::string file;
        Settings expected;
        const char* fire;     // the single player's fire keys, when the file changes them
        const char* warning;  // null: nothing is logged
    } cases[] = {
        {R"(<settings><sound volumeSfx="100" volumeMusic="0"/></settings>)", {800, 600, false, 100, 0}, nullptr, nullptr},
        {R"(<settings><controls name="multi 3"><trigger name="fire"><keyTranslator key="x"/></trigger></controls>
            <controls name="single"><trigger name="fire"><keyTranslator key="f"/></trigger></controls>
            <screen fullscreen="true" xRes="1024" yRes="768"/></settings>)",
         {1024, 768, true, 70, 100}, "f", "(warning) Unknown control group \"multi 3\".\n"},
        // a window that cannot open would end every start-up, and each would save it again
        {R"(<settings><screen xRes="-5" yRes="99999999999"/><sound volumeSfx="101" volumeMusic="101"/></settings>)",
         defaults, nullptr, "(warning) Settings: xRes -5 is not from 200 to 16384, keeping 800.\n"},
        {"", defaults, nullptr, nullptr},  // no element: nothing to apply
        {R"(<settings><sound volumeSfx="5"></screen></settings>)", defaults, nullptr, "Could not load settings: "},
        {R"(<settings><screen xRes="1024"/><sound volumeSfx="5" )", defaults, nullptr, "Could not load settings: "},
        {std::string("\x89PNG\r\n\x1a\n\0\0\0\rIHDR\xff\xfe", 18), defaults, nullptr, "Could not load settings: "},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.file);
        writeSettings(c.file);
        std::unique_ptr<Resources> r;
        const std::string log = captured([&] { r.reset(new Resources); });
        expectSettings(r->settings, c.expected);
        if (c.fire) {
            EXPECT_EQ(r->evaluatorGamePlayerSingle->find("fire")->keysToString(0), c.fire);
            EXPECT_EQ(bindingsOf(r->evaluatorGamePlayerMulti[0]), bindingsOf(shipped.evaluatorGamePlayerMulti[0]));
        } else {
            EXPECT_EQ(playersOf(*r), playersOf(shipped));
        }
        if (c.warning) {
            EXPECT_NE(log.find(c.warning), std::string::npos) << log;
        } else {
            EXPECT_EQ(log, "");
        }
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
    expectSettings(loaded.settings, saved.settings);
    EXPECT_EQ(playersOf(loaded), playersOf(saved));
    EXPECT_EQ(loaded.evaluatorGamePlayerMulti[0]->find("x")->joyToString(-1, 0), "Joy 1; Axis 3 -");
    EXPECT_EQ(loaded.evaluatorGamePlayerMulti[1]->find("timewarp")->joyToString(0, 0), "Joy 1; Btn 5");

    std::unique_ptr<Node> root(norvane::xml::loadXML(settingsPath().c_str()));
    std::string order;
    for (const Node* child : root->children) order += child->name + "(" + child->getAttribute("name", "") + ") ";
    EXPECT_EQ(order, "screen() sound() controls(single) controls(multi 1) controls(multi 2) ");
}
