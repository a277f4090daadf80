#include <gtest/gtest.h>

#include <memory>

#include "controls/inputevaluator.h"
#include "controls/keynames.h"
#include "controls/translators.h"
#include "norvane.h"
#include "support/events.h"
#include "support/files.h"
#include "xml/xml.h"

using namespace norvane;
using norvane::xml::Node;

namespace {

const char* const DEFINITION = R"(<inputEvaluator name="evaluatorGamePlayer">
  <axis code="201" name="x" description="Move sideways" max="2.5"><keyTranslator key="left" value="-1"/>
    <keyTranslator key="right" value="1"/><joyAxisTranslator joy="0" axis="0" direction="-1" min="4000" max="30000"/>
  </axis><trigger code="204" name="fire" defaultKeyState="pressed" data="3" dataString="left"><keyTranslator key="lctrl"/>
    <joyButtonTranslator joy="-1" button="0"/><mouseButtonTranslator button="1" state="down"/></trigger>
  <trigger code="205" name="shield" queue="false"><keyTranslator key="space" state="up" value="0.5"/>
    <mouseAxisTranslator axis="1" min="2" max="40"/></trigger></inputEvaluator>)";

const std::string WARNING = "[norvane:controls] (warning) ";

class Bindings : public ::testing::Test {
protected:
    void SetUp() override { captured([] { norvane::init(0, false); }); }  // names the log groups

    // The log of reading `text` as a definition, or as stored bindings.
    std::string define(const std::string& text) {
        std::unique_ptr<Node> root(xml::loadXML(writeFile("definition.xml", text).c_str()));
        return captured([&] { evaluator.getFromNode(root.get(), ""); });
    }
    std::string restore(const std::string& text) {
        std::unique_ptr<Node> root(xml::loadXML(writeFile("stored.xml", text).c_str()));
        return captured([&] { evaluator.getTranslatorsFromNode(root.get()); });
    }
    std::string stored() const {
        Node root("controls", nullptr);
        evaluator.addTranslatorsToTree(&root);
        return root.toString(0);
    }

    InputEvaluator evaluator;
};

}  // namespace

TEST_F(Bindings, DefinitionBuildsTriggersAndStoredBindingsReadBackAsTheSame) {
    EXPECT_EQ(define(DEFINITION), "");
    ASSERT_EQ(evaluator.size(), 3);
    const Trigger* x = evaluator.find("x");
    const Trigger* fire = evaluator.find("fire");
    EXPECT_TRUE(x->code == 201 && x->description == "Move sideways" && !x->digital && !x->queued && x->maxValue == 2.5f);
    EXPECT_TRUE(fire->digital && fire->queued && fire->data == 3 && fire->dataString == "left" &&
                !evaluator.find("shield")->queued);
    // Bindings without a state take the element's own default, read before them, and are stored
    // without it.
    const std::string original = stored();
    for (const char* line : {"\n    <keyTranslator key=\"lctrl\" value=\"1\"/>\n    <joyButtonTranslator button=\"0\" "
                             "joy=\"-1\" value=\"1\"/>\n    <mouseButtonTranslator button=\"1\" state=\"down\"",
                             "<keyTranslator key=\"space\" state=\"up\" value=\"0.5\"/>",
                             "<joyAxisTranslator axis=\"0\" direction=\"-1\" joy=\"0\" max=\"30000\" min=\"4000\"/>"}) {
        EXPECT_NE(original.find(line), std::string::npos) << line << original;
    }
    // Rebind every device class, then take the stored form back.
    evaluator.find("fire")->clearTranslators();
    evaluator.find("x")->clearKeyTranslators(-1);
    new KeyTranslator(evaluator.find("shield"), SDLK_TAB, ksDown, 1.0f);
    new JoyButtonTranslator(evaluator.find("x"), 1, 1, ksDefault, 1.0f);
    EXPECT_EQ(restore(original), "");
    EXPECT_EQ(stored(), original);

    // Stored bindings only touch the triggers they name.
    EXPECT_EQ(restore(R"(<controls><trigger name="fire"><keyTranslator key="f" value="1"/></trigger>
      <axis name="ghost"><keyTranslator key="g"/></axis><binding name="x"/></controls>)"),
              WARNING + "Stored bindings for unknown trigger \"ghost\" skipped.\n");
    EXPECT_EQ(evaluator.find("fire")->keysToString(0), "f");
    EXPECT_TRUE(evaluator.mouseButtonTranslators.empty() && evaluator.joyButtonTranslators.empty());
    EXPECT_EQ(evaluator.find("x")->translators.size(), 3u);
}

// Bad entries are reported and skipped, numbers are narrowed to their fields, and labels join the
// selected bindings.
TEST_F(Bindings, BadEntriesAreReportedAndLabelsJoinTheSelectedBindings) {
    EXPECT_EQ(define(R"(<inputEvaluator>
      <trigger><keyTranslator key="a" value="nan"/></trigger>
      <axis code="4294967297" name="x" max="inf" data="4294967298">
        <keyTranslator/><keyTranslator key="]"/><keyTranslator key="left" value="-1"/><keyTranslator key="a" value="-1"/>
        <joyAxisTranslator joy="70000" axis="257" direction="-65537" min="-99999999999999999999" max="65537"/>
        <rumble strength="11"/><mouseAxisTranslator min="junk" max="junk"/>
      </axis><loop var="i" from="0" to="9"/></inputEvaluator>)"),
              WARNING + "Trigger \"\": keyTranslator value is not a number, binding skipped.\n" + WARNING +
                  "Trigger \"x\": max is not a number, using 1.\n" + WARNING + " is no valid key identifier.\n" +
                  WARNING + "] is no valid key identifier.\n");
    ASSERT_EQ(evaluator.size(), 2);
    Trigger* x = evaluator.find("x");
    EXPECT_EQ(x->code + x->data, 1 + 2);
    new JoyButtonTranslator(x, 0, 3, ksDefault, 1.0f);
    EXPECT_EQ(x->joyToString(-1, 0), "Joy 4464; Axis 1 -;Joy 0; Btn 3");
    // The junk mouse axis reads as 0..0, which saturates instead of dividing by zero.
    ControlQueue q;
    EXPECT_TRUE(evaluator.evaluate(mouseMotionEvent(0, 0, 7, 0), &q));
    EXPECT_EQ(x->value, 1.0f);


    // A captured key without a name is stored with an empty name and dropped when read back.
    x->clearTranslators();
    new KeyTranslator(x, SDLK_a, ksDefault, 1.0f);
    new KeyTranslator(x, static_cast<SDLKey>(200), ksDefault, 1.0f);
    EXPECT_EQ(x->keysToString(0), "a;");
    EXPECT_EQ(restore(stored()), WARNING + " is no valid key identifier.\n");
    EXPECT_EQ(x->keysToString(0), "a");
}

TEST(KeyNames, EveryNamedKeySurvivesTheRoundTripAndUnknownNamesThrow) {
    EXPECT_EQ(getKeyNameMap().size() + getNameKeyMap().size(), 2 * 133u);  // no name is used twice
    for (const auto& entry : getKeyNameMap()) EXPECT_EQ(strTo<SDLKey>(entry.second), entry.first) << entry.second;
    const std::pair<int, const char*> samples[] = {{13, "return"}, {59, ";"},    {93, "}"},     {256, "pad_0"},
                                                   {271, "enter"}, {296, "f15"}, {311, "lwin"}, {321, "euro"},
                                                   {37, ""},       {160, ""},    {314, ""}};
    for (const auto& s : samples) EXPECT_EQ(toStr<SDLKey>(static_cast<SDLKey>(s.first)), s.second) << s.first;
    for (const std::string name : {"]", "", "A"}) {
        EXPECT_EQ(thrownBy([&] { strTo<SDLKey>(name); }), name + " is no valid key identifier.");
    }
    EXPECT_TRUE(strTo<KeyState>("pressed") == ksPressed && strTo<KeyState>("Down") == ksDefault);
    EXPECT_EQ(toStr<KeyState>(static_cast<KeyState>(7)), "default");
}
