#include "controls/keynames.h"

#include <gtest/gtest.h>

#include <set>

#include "controls/trigger.h"

using namespace norvane;

TEST(KeyNames, EveryNamedKeySurvivesTheRoundTripBothWays) {
    const auto& names = getKeyNameMap();
    EXPECT_EQ(names.size(), 133u);
    EXPECT_EQ(getNameKeyMap().size(), 133u);  // no name is used twice
    for (const auto& entry : names) {
        EXPECT_EQ(toStr<SDLKey>(entry.first), entry.second);
        EXPECT_EQ(strTo<SDLKey>(entry.second), entry.first) << entry.second;
        for (char c : entry.second) EXPECT_FALSE(c >= 'A' && c <= 'Z') << entry.second;
    }
}

TEST(KeyNames, TableMatchesTheStoredNames) {
    const struct {
        int key;
        const char* name;
    } table[] = {
        {8, "backspace"}, {13, "return"}, {27, "esc"}, {32, "space"}, {33, "!"}, {49, "1"}, {59, ";"},
        {64, "@"}, {91, "["}, {93, "}"}, {97, "a"}, {122, "z"}, {127, "del"}, {256, "pad_0"}, {265, "pad_9"},
        {266, "pad_."}, {271, "enter"}, {272, "pad_="}, {273, "up"}, {276, "left"}, {281, "pgdn"}, {282, "f1"},
        {296, "f15"}, {302, "scrollock"}, {304, "lshift"}, {311, "lwin"}, {313, "mode"}, {316, "printscreen"},
        {321, "euro"},
    };
    for (const auto& row : table) EXPECT_EQ(toStr<SDLKey>(static_cast<SDLKey>(row.key)), row.name) << row.key;
    // Keys without a name: '%', the international keys, compose, undo.
    for (int key : {37, 160, 255, 314, 322}) EXPECT_EQ(toStr<SDLKey>(static_cast<SDLKey>(key)), "") << key;
}

TEST(KeyNames, UnknownNamesThrowTheWarningText) {
    auto message = [](const std::string& name) {
        try {
            strTo<SDLKey>(name);
        } catch (const std::string& text) {
            return text;
        }
        return std::string("no exception");
    };
    EXPECT_EQ(message("]"), "] is no valid key identifier.");
    EXPECT_EQ(message(""), " is no valid key identifier.");
    EXPECT_EQ(message("A"), "A is no valid key identifier.");  // names are case-sensitive
}

TEST(KeyNames, KeyStatesHaveTheirTextForms) {
    const struct {
        KeyState state;
        const char* text;
    } table[] = {{ksDefault, "default"}, {ksDown, "down"}, {ksUp, "up"}, {ksPressed, "pressed"}};
    for (const auto& row : table) {
        EXPECT_EQ(toStr<KeyState>(row.state), row.text);
        EXPECT_EQ(strTo<KeyState>(row.text), row.state);
    }
    EXPECT_EQ(toStr<KeyState>(static_cast<KeyState>(7)), "default");
    EXPECT_EQ(strTo<KeyState>("Down"), ksDefault);
}
