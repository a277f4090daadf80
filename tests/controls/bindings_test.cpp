#include <gtest/gtest.h>

#include <fstream>
#include <memory>

#include "controls/inputevaluator.h"
#include "controls/queue.h"
#include "controls/translators.h"
#include "files/sysdirs.h"
#include "norvane.h"
#include "xml/xml.h"

using namespace norvane;
using norvane::xml::Node;

namespace {

// Prefixed with the test's name: ctest runs tests of this folder side by side.
std::string writeFile(const std::string& name, const std::string& content) {
    norvane::mkdirs(TEST_TMP_DIR "/");
    const std::string path = std::string(TEST_TMP_DIR) + "/" +
                             ::testing::UnitTest::GetInstance()->current_test_info()->name() + "-" + name;
    std::ofstream(path, std::ios::binary) << content;
    return path;
}

std::unique_ptr<Node> parse(const std::string& text) {
    return std::unique_ptr<Node>(xml::loadXML(writeFile("parse.xml", text).c_str()));
}

// The stored form of every trigger, as the settings file would get it.
std::string bindingsText(const InputEvaluator& evaluator) {
    Node root;
    root.name = "controls";
    evaluator.addTranslatorsToTree(&root);
    return root.toString(0);
}

std::vector<std::string> lines(const std::string& text) {
    std::vector<std::string> out;
    size_t start = 0;
    for (size_t end; (end = text.find('\n', start)) != std::string::npos; start = end + 1) {
        out.push_back(text.substr(start, end - start));
    }
    return out;
}

const char* const DEFINITION = R"(<inputEvaluator name="evaluatorGamePlayer">
  <axis code="201" name="x" description="Move sideways" max="2.5">
    <keyTranslator key="left" value="-1"/>
    <keyTranslator key="right" value="1"/>
    <joyAxisTranslator joy="0" axis="0" direction="-1" min="4000" max="30000"/>
    <joyAxisTranslator joy="0" axis="0" direction="1" min="4000" max="30000"/>
  </axis>
  <trigger code="204" name="fire" description="Fire" defaultKeyState="pressed" data="3" dataString="left">
    <keyTranslator key="lctrl"/>
    <joyButtonTranslator joy="-1" button="0"/>
    <mouseButtonTranslator button="1" state="down"/>
  </trigger>
  <trigger code="205" name="shield" queue="false">
    <keyTranslator key="space" state="up" value="0.5"/>
    <mouseAxisTranslator axis="1" min="2" max="40"/>
  </trigger>
</inputEvaluator>)";

class Bindings : public ::testing::Test {
protected:
    void SetUp() override { norvane::init(0, false); }  // names the log groups

    void load(InputEvaluator& evaluator, const std::string& text) {
        std::unique_ptr<Node> root = parse(text);
        ASSERT_TRUE(root);
        evaluator.getFromNode(root.get(), "");
    }
    std::vector<std::string> loadLogging(InputEvaluator& evaluator, const std::string& text) {
        testing::internal::CaptureStdout();
        load(evaluator, text);
        return lines(testing::internal::GetCapturedStdout());
    }
};

}  // namespace

TEST_F(Bindings, DefinitionBuildsTriggersAndTheirDefaultBindings) {
    InputEvaluator evaluator;
    EXPECT_TRUE(loadLogging(evaluator, DEFINITION).empty());
    ASSERT_EQ(evaluator.size(), 3);

    const Trigger* x = evaluator.find("x");
    ASSERT_TRUE(x);
    EXPECT_EQ(x->code, 201);
    EXPECT_EQ(x->description, "Move sideways");
    EXPECT_FALSE(x->digital);
    EXPECT_FALSE(x->queued);
    EXPECT_EQ(x->maxValue, 2.5f);
    EXPECT_EQ(x->keysToString(-1), "left");
    EXPECT_EQ(x->keysToString(0), "left;right");
    EXPECT_EQ(x->joyToString(-1, -1), "Joy 0; Axis 0 -");

    const Trigger* fire = evaluator.find("fire");
    ASSERT_TRUE(fire);
    EXPECT_TRUE(fire->digital);
    EXPECT_TRUE(fire->queued);
    EXPECT_EQ(fire->data, 3);
    EXPECT_EQ(fire->dataString, "left");
    ASSERT_EQ(fire->translators.size(), 3u);
    // Translators without a state take the element's own default, read before them.
    EXPECT_EQ(static_cast<KeyTranslator*>(fire->translators[0])->state, ksPressed);
    auto* joy = static_cast<JoyButtonTranslator*>(fire->translators[1]);
    EXPECT_EQ(joy->joystick, -1);
    EXPECT_EQ(joy->state, ksPressed);
    EXPECT_EQ(static_cast<MouseButtonTranslator*>(fire->translators[2])->state, ksDown);

    const Trigger* shield = evaluator.find("shield");
    ASSERT_TRUE(shield);
    EXPECT_FALSE(shield->queued);
    EXPECT_EQ(shield->defaultKeyState, ksDown);
    EXPECT_EQ(evaluator.keyTranslators.size(), 4u);
    EXPECT_EQ(evaluator.mouseAxisTranslators.size(), 1u);
}

TEST_F(Bindings, StoredBindingsReadBackAsTheSameTranslators) {
    InputEvaluator original;
    load(original, DEFINITION);
    const std::string stored = bindingsText(original);
    EXPECT_EQ(lines(stored)[1], "  <trigger name=\"fire\">");
    EXPECT_EQ(lines(stored)[2], "    <keyTranslator key=\"lctrl\" value=\"1\"/>");  // state as the default: omitted
    EXPECT_NE(stored.find("<mouseButtonTranslator button=\"1\" state=\"down\" value=\"1\"/>"), std::string::npos);
    EXPECT_NE(stored.find("<keyTranslator key=\"space\" state=\"up\" value=\"0.5\"/>"), std::string::npos);
    EXPECT_NE(stored.find("<mouseAxisTranslator axis=\"1\" max=\"40\" min=\"2\"/>"), std::string::npos);

    // Another evaluator from the same definition with its bindings changed takes them back.
    InputEvaluator restored;
    load(restored, DEFINITION);
    restored.find("fire")->clearTranslators();
    restored.find("x")->clearKeyTranslators(-1);
    new KeyTranslator(restored.find("shield"), SDLK_TAB, ksDown, 1.0f);
    std::unique_ptr<Node> root = parse(stored);
    testing::internal::CaptureStdout();
    restored.getTranslatorsFromNode(root.get());
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
    EXPECT_EQ(bindingsText(restored), stored);
    EXPECT_EQ(restored.keyTranslators.size(), original.keyTranslators.size());
}

TEST_F(Bindings, StoredBindingsReplaceEveryDeviceClassOfTheTriggersTheyName) {
    InputEvaluator evaluator;
    load(evaluator, DEFINITION);
    std::unique_ptr<Node> root = parse(R"(<controls name="single">
      <trigger name="fire"><keyTranslator key="f" value="1"/></trigger>
      <axis name="ghost"><keyTranslator key="g"/></axis>
      <binding name="x"/>
    </controls>)");
    testing::internal::CaptureStdout();
    evaluator.getTranslatorsFromNode(root.get());
    const std::vector<std::string> log = lines(testing::internal::GetCapturedStdout());
    EXPECT_EQ(log, (std::vector<std::string>{
                       "[norvane:controls] (warning) Stored bindings for unknown trigger \"ghost\" skipped.",
                       "[norvane:controls] (warning) Unknown element \"binding\" in stored bindings skipped."}));
    const Trigger* fire = evaluator.find("fire");
    EXPECT_EQ(fire->keysToString(0), "f");
    EXPECT_EQ(fire->joyToString(0, 0), "");
    EXPECT_TRUE(evaluator.mouseButtonTranslators.empty());
    EXPECT_EQ(evaluator.find("x")->translators.size(), 4u);  // not named: kept
}

TEST_F(Bindings, BadKeyNamesAreReportedAndTheRestOfTheTriggerStillLoads) {
    InputEvaluator evaluator;
    const std::vector<std::string> log = loadLogging(evaluator, R"(<inputEvaluator>
      <trigger code="1" name="t">
        <keyTranslator/>
        <keyTranslator key="]"/>
        <keyTranslator key="a"/>
      </trigger>
    </inputEvaluator>)");
    EXPECT_EQ(log, (std::vector<std::string>{"[norvane:controls] (warning)  is no valid key identifier.",
                                             "[norvane:controls] (warning) ] is no valid key identifier."}));
    EXPECT_EQ(evaluator.find("t")->keysToString(0), "a");

    // A captured key without a name is stored with an empty name and dropped when read back.
    Trigger* t = evaluator.find("t");
    new KeyTranslator(t, static_cast<SDLKey>(200), ksDefault, 1.0f);
    EXPECT_EQ(t->keysToString(0), "a;");
    const std::string stored = bindingsText(evaluator);
    EXPECT_NE(stored.find("<keyTranslator key=\"\" value=\"1\"/>"), std::string::npos);
    std::unique_ptr<Node> root = parse(stored);
    testing::internal::CaptureStdout();
    evaluator.getTranslatorsFromNode(root.get());
    EXPECT_EQ(lines(testing::internal::GetCapturedStdout()),
              (std::vector<std::string>{"[norvane:controls] (warning)  is no valid key identifier."}));
    EXPECT_EQ(t->keysToString(0), "a");
}

TEST_F(Bindings, LabelsJoinTheSelectedBindings) {
    InputEvaluator evaluator;
    Trigger* x = new Trigger(&evaluator, 1, "x", "", 1.0f);
    new KeyTranslator(x, SDLK_LEFT, ksDefault, -1.0f);
    new KeyTranslator(x, SDLK_a, ksDefault, -1.0f);
    new KeyTranslator(x, SDLK_RIGHT, ksDefault, 1.0f);
    new JoyAxisTranslator(x, 0, 1, -1, 4000, 30000);
    new JoyButtonTranslator(x, 0, 3, ksDefault, 1.0f);
    new JoyAxisTranslator(x, 1, 2, 0, 4000, 30000);
    EXPECT_EQ(x->keysToString(-1), "left;a");
    EXPECT_EQ(x->keysToString(1), "right");
    EXPECT_EQ(x->joyToString(-1, 0), "Joy 0; Axis 1 -;Joy 0; Btn 3");
    EXPECT_EQ(x->joyToString(1, 1), "Joy 0; Btn 3");
    EXPECT_EQ(x->joyAxisToString(0), "Joy 0; Axis 1 -;Joy 1; Axis 2");
    EXPECT_EQ(x->joyButtonsToString(-1), "");
}

TEST_F(Bindings, HostileDefinitionsAreReportedAndNeverHalfApplied) {
    InputEvaluator evaluator;
    const std::vector<std::string> log = loadLogging(evaluator, R"(<inputEvaluator>
      <trigger>
        <keyTranslator key="a" value="nan"/>
      </trigger>
      <trigger code="99999999999" name="huge"/>
      <axis name="wild" max="inf" defaultKeyState="sideways" data="12345678901234">
        <joyAxisTranslator joy="70000" axis="1"/>
        <joyAxisTranslator joy="1" axis="300"/>
        <mouseAxisTranslator direction="5"/>
        <joyButtonTranslator button="-40000"/>
        <mouseButtonTranslator button="256"/>
        <joyAxisTranslator min="-99999999999999999999"/>
        <keyTranslator key="b" state="upwards"/>
        <rumble strength="11"/>
        <mouseAxisTranslator min="junk" max="junk"/>
      </axis>
      <loop var="i" from="0" to="9"/>
    </inputEvaluator>)");
    const std::vector<std::string> expected = {
        "[norvane:controls] (warning) Input definition: trigger without a name.",
        "[norvane:controls] (warning) Trigger \"\": keyTranslator value is not a number, binding skipped.",
        "[norvane:controls] (warning) Trigger \"huge\": code 99999999999 is out of range, element skipped.",
        "[norvane:controls] (warning) Trigger \"wild\": max is not a number, using 1.",
        "[norvane:controls] (warning) Trigger \"wild\": unknown key state \"sideways\", using the default.",
        "[norvane:controls] (warning) Trigger \"wild\": joyAxisTranslator joy 70000 is out of range, binding skipped.",
        "[norvane:controls] (warning) Trigger \"wild\": joyAxisTranslator axis 300 is out of range, binding skipped.",
        "[norvane:controls] (warning) Trigger \"wild\": mouseAxisTranslator direction 5 is out of range, binding "
        "skipped.",
        "[norvane:controls] (warning) Trigger \"wild\": joyButtonTranslator button -40000 is out of range, binding "
        "skipped.",
        "[norvane:controls] (warning) Trigger \"wild\": mouseButtonTranslator button 256 is out of range, binding "
        "skipped.",
        "[norvane:controls] (warning) Trigger \"wild\": joyAxisTranslator min -9223372036854775808 is out of range, "
        "binding skipped.",
        "[norvane:controls] (warning) Trigger \"wild\": unknown key state \"upwards\", using the default.",
        "[norvane:controls] (warning) Trigger \"wild\": unknown binding element \"rumble\" skipped.",
        "[norvane:controls] (warning) Trigger \"wild\": data 12345678901234 is out of range, using 0.",
        "[norvane:controls] (warning) Unknown element \"loop\" in input definition skipped.",
    };
    EXPECT_EQ(log, expected);
    EXPECT_EQ(evaluator.size(), 2);
    EXPECT_EQ(evaluator.find("huge"), nullptr);
    const Trigger* wild = evaluator.find("wild");
    ASSERT_TRUE(wild);
    EXPECT_EQ(wild->maxValue, 1.0f);
    EXPECT_EQ(wild->data, 0);
    // Left: the key in state "default" (which never fires) and the junk mouse axis, read as 0.
    ASSERT_EQ(wild->translators.size(), 2u);
    auto* mouse = static_cast<MouseAxisTranslator*>(wild->translators[1]);
    EXPECT_EQ(mouse->min, 0);
    EXPECT_EQ(mouse->max, 0);
    ControlQueue q;
    SDL_Event motion{};
    motion.type = SDL_MOUSEMOTION;
    motion.motion.xrel = 7;
    EXPECT_TRUE(evaluator.evaluate(motion, &q));  // min = max = 0 saturates instead of dividing by zero
    EXPECT_EQ(wild->value, 1.0f);
}

TEST_F(Bindings, ResourceManagerMakesInputEvaluatorsFromTheirElement) {
    const std::string path = writeFile("resources.xml", std::string("<resources>") + DEFINITION + "</resources>");
    ResourceManager manager;
    manager.load(path, "");
    ASSERT_EQ(manager.banks.count("evaluatorGamePlayer"), 1u);
    auto* evaluator = dynamic_cast<InputEvaluator*>(manager.banks["evaluatorGamePlayer"]);
    ASSERT_TRUE(evaluator);
    EXPECT_EQ(evaluator->size(), 3);
    EXPECT_EQ(evaluator->manager, &manager);
    EXPECT_EQ(resourceBankGenerator.generateBank("InputEvaluator"), nullptr);
    delete evaluator;  // the manager never destroys its banks
}
