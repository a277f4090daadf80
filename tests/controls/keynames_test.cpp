#include "controls/keynames.h"

#include <gtest/gtest.h>

#include "controls/trigger.h"

using namespace norvane;

TEST(KeyNames, EveryNamedKeySurvivesTheRoundTripBothWays) {
    const auto& names = getKeyNameMap();
    EXPECT_EQ(names.size(), 133u);
    EXPECT_EQ(getNameKeyMap().size(), 133u);  // no name is used twice
    for (const auto& entry : names) {
        EXPECT_EQ(toStr<SDLKey>(entry.first), entry.second);
        EXPECT_EQ(strTo<SDLKey>(entry.second), entry.first) << entry.second;
    }
    const std::pair<int, const char*> samples[] = {{13, "return"}, {59, ";"},      {93, "}"},    {256, "pad_0"},
                                                   {271, "enter"}, {296, "f15"},   {311, "lwin"}, {321, "euro"},
                                                   {37, ""},       {160, ""},      {314, ""}};
    for (const auto& s : samples) EXPECT_EQ(toStr<SDLKey>(static_cast<SDLKey>(s.first)), s.second) << s.first;
}

TEST(KeyNames, UnknownNamesThrowTheWarningText) {
    for (const std::string name : {"]", "", "A"}) {
        try {
            strTo<SDLKey>(name);
            ADD_FAILURE() << name;
        } catch (const std::string& text) {
            EXPECT_EQ(text, name + " is no valid key identifier.");
        }
    }
    EXPECT_EQ(strTo<KeyState>("pressed"), ksPressed);
    EXPECT_EQ(strTo<KeyState>("Down"), ksDefault);
    EXPECT_EQ(toStr<KeyState>(static_cast<KeyState>(7)), "default");
}
