#include "controls/keynames.h"

#include <gtest/gtest.h>

#include "controls/trigger.h"
#include "support/files.h"

using namespace norvane;

TEST(KeyNames, EveryNamedKeySurvivesTheRoundTripAndUnknownNamesThrow) {
    EXPECT_EQ(getKeyNameMap().size(), 133u);
    EXPECT_EQ(getNameKeyMap().size(), 133u);  // no name is used twice
    for (const auto& entry : getKeyNameMap()) EXPECT_EQ(strTo<SDLKey>(entry.second), entry.first) << entry.second;
    const std::pair<int, const char*> samples[] = {{13, "return"}, {59, ";"},    {93, "}"},     {256, "pad_0"},
                                                   {271, "enter"}, {296, "f15"}, {311, "lwin"}, {321, "euro"},
                                                   {37, ""},       {160, ""},    {314, ""}};
    for (const auto& s : samples) EXPECT_EQ(toStr<SDLKey>(static_cast<SDLKey>(s.first)), s.second) << s.first;
    for (const std::string name : {"]", "", "A"}) {
        EXPECT_EQ(thrownBy([&] { strTo<SDLKey>(name); }), name + " is no valid key identifier.");
    }
    EXPECT_EQ(strTo<KeyState>("pressed"), ksPressed);
    EXPECT_EQ(strTo<KeyState>("Down"), ksDefault);
    EXPECT_EQ(toStr<KeyState>(static_cast<KeyState>(7)), "default");
}
