#include "audio/core.h"

#include <cstdlib>

#include "helpers.h"

using namespace norvane::audio;

TEST(AudioCore, NoSoundCardGivesTheAlcErrorName) {
    setenv("ALSOFT_DRIVERS", "nosuchdriver", 1);
    try {
        init("", testaudio::RATE);
        FAIL() << "nothing thrown";
    } catch (const std::string& text) {
        EXPECT_EQ(text, "ALC_INVALID_VALUE");
    }
    EXPECT_EQ(context, nullptr);
    cleanUp();
}

TEST(AudioCore, OneContextOnly) {
    enabled = false;  // no device needed to test the guard
    init("", testaudio::RATE);
    ASSERT_TRUE(context);
    try {
        Context second(testaudio::RATE);
        FAIL() << "nothing thrown";
    } catch (const std::string& text) {
        EXPECT_EQ(text, "Cannot create more than one audio context.");
    }
    cleanUp();
    EXPECT_EQ(context, nullptr);
    enabled = true;
}
