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

// Prefixed with the test's name: ctest runs the tests of this folder side by side.
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

std::string stored(const InputEvaluator& evaluator) {
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
  </axis>
  <trigger code="204" name="fire" defaultKeyState="pressed" data="3" dataString="left">
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

    // Returns the log lines that reading `text` with `read` printed.
    template <typename Read>
    std::vector<std::string> logOf(const std::string& text, Read read) {
        std::unique_ptr<Node> root = parse(text);
        EXPECT_TRUE(root);
        testing::internal::CaptureStdout();
        if (root) read(root.get());
        return lines(testing::internal::GetCapturedStdout());
    }
    std::vector<std::string> define(const std::string& text) {
        return logOf(text, [this](const Node* n) { evaluator.getFromNode(n, ""); });
    }
    std::vector<std::string> restore(const std::string& text) {
        return logOf(text, [this](const Node* n) { evaluator.getTranslatorsFromNode(n); });
    }

    InputEvaluator evaluator;
};

const std::string WARNING = "[norvane:controls] (warning) ";

}  // namespace

TEST_F(Bindings, DefinitionBuildsTriggersWithTheirDefaults) {
    EXPECT_TRUE(define(DEFINITION).empty());
    ASSERT_EQ(evaluator.size(), 3);
    const Trigger* x = evaluator.find("x");
    EXPECT_EQ(x->code, 201);
    EXPECT_EQ(x->description, "Move sideways");
    EXPECT_FALSE(x->digital || x->queued);
    EXPECT_EQ(x->maxValue, 2.5f);
    const Trigger* fire = evaluator.find("fire");
    EXPECT_TRUE(fire->digital && fire->queued);
    EXPECT_EQ(fire->data, 3);
    EXPECT_EQ(fire->dataString, "left");
    // Bindings without a state take the element's own default, read before them.
    ASSERT_EQ(fire->translators.size(), 3u);
    EXPECT_EQ(static_cast<KeyTranslator*>(fire->translators[0])->state, ksPressed);
    EXPECT_EQ(static_cast<JoyButtonTranslator*>(fire->translators[1])->joystick, -1);
    EXPECT_EQ(static_cast<MouseButtonTranslator*>(fire->translators[2])->state, ksDown);
    EXPECT_FALSE(evaluator.find("shield")->queued);
}

TEST_F(Bindings, StoredBindingsReadBackAsTheSameTranslators) {
    define(DEFINITION);
    const std::string original = stored(evaluator);
    EXPECT_EQ(lines(original)[2], "    <keyTranslator key=\"lctrl\" value=\"1\"/>");  // the default state is left out
    EXPECT_NE(original.find("<keyTranslator key=\"space\" state=\"up\" value=\"0.5\"/>"), std::string::npos);
    EXPECT_NE(original.find("<joyAxisTranslator axis=\"0\" direction=\"-1\" joy=\"0\" max=\"30000\" min=\"4000\"/>"),
              std::string::npos);

    // Rebind every device class, then take the stored form back.
    evaluator.find("fire")->clearTranslators();
    evaluator.find("x")->clearKeyTranslators(-1);
    new KeyTranslator(evaluator.find("shield"), SDLK_TAB, ksDown, 1.0f);
    new JoyButtonTranslator(evaluator.find("x"), 1, 1, ksDefault, 1.0f);
    EXPECT_TRUE(restore(original).empty());
    EXPECT_EQ(stored(evaluator), original);
}

TEST_F(Bindings, StoredBindingsOnlyTouchTheTriggersTheyName) {
    define(DEFINITION);
    EXPECT_EQ(restore(R"(<controls name="single">
      <trigger name="fire"><keyTranslator key="f" value="1"/></trigger>
      <axis name="ghost"><keyTranslator key="g"/></axis>
      <binding name="x"/>
    </controls>)"),
              (std::vector<std::string>{WARNING + "Stored bindings for unknown trigger \"ghost\" skipped.",
                                        WARNING + "Unknown element \"binding\" in stored bindings skipped."}));
    EXPECT_EQ(evaluator.find("fire")->keysToString(0), "f");
    EXPECT_TRUE(evaluator.mouseButtonTranslators.empty() && evaluator.joyButtonTranslators.empty());
    EXPECT_EQ(evaluator.find("x")->translators.size(), 3u);
}

TEST_F(Bindings, BadKeyNamesAreReportedAndTheOtherBindingsStillLoad) {
    EXPECT_EQ(define(R"(<inputEvaluator><trigger code="1" name="t">
        <keyTranslator/><keyTranslator key="]"/><keyTranslator key="a"/>
      </trigger></inputEvaluator>)"),
              (std::vector<std::string>{WARNING + " is no valid key identifier.",
                                        WARNING + "] is no valid key identifier."}));
    Trigger* t = evaluator.find("t");
    EXPECT_EQ(t->keysToString(0), "a");

    // A captured key without a name is stored with an empty name and dropped when read back.
    new KeyTranslator(t, static_cast<SDLKey>(200), ksDefault, 1.0f);
    EXPECT_EQ(t->keysToString(0), "a;");
    const std::string withUnnamed = stored(evaluator);
    EXPECT_NE(withUnnamed.find("<keyTranslator key=\"\" value=\"1\"/>"), std::string::npos);
    EXPECT_EQ(restore(withUnnamed), (std::vector<std::string>{WARNING + " is no valid key identifier."}));
    EXPECT_EQ(t->keysToString(0), "a");
}

TEST_F(Bindings, LabelsJoinTheSelectedBindings) {
    Trigger* x = new Trigger(&evaluator, 1, "x", "", 1.0f);
    new KeyTranslator(x, SDLK_LEFT, ksDefault, -1.0f);
    new KeyTranslator(x, SDLK_a, ksDefault, -1.0f);
    new KeyTranslator(x, SDLK_RIGHT, ksDefault, 1.0f);
    EXPECT_EQ(x->joyToString(0, 0), "");
    new JoyAxisTranslator(x, 0, 1, -1, 4000, 30000);
    new JoyButtonTranslator(x, 0, 3, ksDefault, 1.0f);
    new JoyAxisTranslator(x, 1, 2, 0, 4000, 30000);
    EXPECT_EQ(x->keysToString(-1), "left;a");
    EXPECT_EQ(x->keysToString(1), "right");
    EXPECT_EQ(x->joyToString(-1, 0), "Joy 0; Axis 1 -;Joy 0; Btn 3");
    EXPECT_EQ(x->joyToString(1, 1), "Joy 0; Btn 3");
    EXPECT_EQ(x->joyAxisToString(0), "Joy 0; Axis 1 -;Joy 1; Axis 2");
}

TEST_F(Bindings, HostileDefinitionsAreReportedAndNeverHalfApplied) {
    const std::vector<std::string> log = define(R"(<inputEvaluator>
      <trigger><keyTranslator key="a" value="nan"/></trigger>
      <trigger code="99999999999" name="huge"/>
      <axis name="wild" max="inf" defaultKeyState="sideways" data="12345678901234">
        <joyAxisTranslator joy="70000" axis="1"/>
        <joyAxisTranslator axis="300"/>
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
    ASSERT_EQ(log.size(), 15u);
    EXPECT_EQ(log[0], WARNING + "Input definition: trigger without a name.");
    EXPECT_EQ(log[1], WARNING + "Trigger \"\": keyTranslator value is not a number, binding skipped.");
    EXPECT_EQ(log[2], WARNING + "Trigger \"huge\": code 99999999999 is out of range, element skipped.");
    EXPECT_EQ(log[5], WARNING + "Trigger \"wild\": joyAxisTranslator joy 70000 is out of range, binding skipped.");
    EXPECT_EQ(log[10], WARNING + "Trigger \"wild\": joyAxisTranslator min -9223372036854775808 is out of range, "
                                 "binding skipped.");
    EXPECT_EQ(log[12], WARNING + "Trigger \"wild\": unknown binding element \"rumble\" skipped.");
    EXPECT_EQ(log[14], WARNING + "Unknown element \"loop\" in input definition skipped.");

    EXPECT_EQ(evaluator.size(), 2);
    const Trigger* wild = evaluator.find("wild");
    EXPECT_EQ(wild->maxValue, 1.0f);
    EXPECT_EQ(wild->data, 0);
    // Left: the key in state "default" (which never fires) and the junk mouse axis read as 0..0,
    // which saturates instead of dividing by zero.
    ASSERT_EQ(wild->translators.size(), 2u);
    ControlQueue q;
    SDL_Event motion{};
    motion.type = SDL_MOUSEMOTION;
    motion.motion.xrel = 7;
    EXPECT_TRUE(evaluator.evaluate(motion, &q));
    EXPECT_EQ(wild->value, 1.0f);
}

TEST_F(Bindings, ResourceManagerMakesInputEvaluatorsFromTheirElement) {
    ResourceManager manager;
    manager.load(writeFile("resources.xml", std::string("<resources>") + DEFINITION + "</resources>"), "");
    auto* loaded = dynamic_cast<InputEvaluator*>(manager.banks["evaluatorGamePlayer"]);
    ASSERT_TRUE(loaded);
    EXPECT_EQ(loaded->size(), 3);
    EXPECT_EQ(resourceBankGenerator.generateBank("InputEvaluator"), nullptr);
    delete loaded;  // the manager never destroys its banks
}
