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
