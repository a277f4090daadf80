#include "debug/log.h"

#include <gtest/gtest.h>

#include <fstream>

#include "files/sysdirs.h"
#include "norvane.h"

namespace debug = norvane::debug;

namespace {

std::string captured(const std::function<void()>& body) {
    testing::internal::CaptureStdout();
    body();
    return testing::internal::GetCapturedStdout();
}

class Log : public testing::Test {
protected:
    void SetUp() override {
        debug::groups.clear();
        captured([] { norvane::init(0, false); });
    }
};

}  // namespace

TEST_F(Log, PrintsByGroupAndThresholdButNeverDebug) {
    EXPECT_EQ(captured([] { debug::error(norvane::dbgImages, "x %d", 5); }), "[norvane:images] (error) x 5\n");
    EXPECT_EQ(captured([] { debug::info(norvane::dbgAudio, "%s", "up"); }), "[norvane:audio] (info) up\n");
    EXPECT_EQ(captured([] { debug::critical(norvane::dbgGui, "bad"); }), "[norvane:gui] (critical) bad\n");

    debug::groups[norvane::dbgAudio].level = debug::LEVEL_WARNING;
    debug::groups[norvane::dbgGui].level = debug::LEVEL_NONE;
    debug::groups[norvane::dbgXml].level = debug::LEVEL_DEBUG;
    EXPECT_EQ(captured([] { debug::info(norvane::dbgAudio, "quiet"); }), "");
    EXPECT_EQ(captured([] { debug::warning(norvane::dbgAudio, "w"); }), "[norvane:audio] (warning) w\n");
    EXPECT_EQ(captured([] { debug::critical(norvane::dbgGui, "silenced"); }), "");
    EXPECT_EQ(captured([] { debug::debug(norvane::dbgXml, "never"); }), "");
    EXPECT_EQ(captured([] { debug::error(norvane::dbgXml, nullptr); }), "");
}

TEST_F(Log, UnregisteredGroupPrintsAsUndefinedAndIsRemembered) {
    EXPECT_EQ(captured([] { debug::warning(42, "hi"); }), "[undefined] (warning) hi\n");
    ASSERT_EQ(debug::groups.count(42), 1u);
    EXPECT_EQ(debug::groups[42].level, debug::LEVEL_INFO);
}

TEST_F(Log, InitKeepsThresholdsOfGroupsAlreadyThere) {
    debug::groups[norvane::dbgCore].level = debug::LEVEL_ERROR;
    captured([] { norvane::init(0, false); });
    EXPECT_EQ(debug::groups[norvane::dbgCore].level, debug::LEVEL_ERROR);
}

TEST_F(Log, LevelNamesAreExact) {
    EXPECT_EQ(debug::debugLevel("debug"), debug::LEVEL_DEBUG);
    EXPECT_EQ(debug::debugLevel("critical"), debug::LEVEL_CRITICAL);
    EXPECT_EQ(debug::debugLevel("Warning"), debug::LEVEL_NONE);
    EXPECT_EQ(debug::debugLevel(""), debug::LEVEL_NONE);
}

TEST_F(Log, SettingsDocumentChangesOnlyNamedGroups) {
    norvane::mkdirs(TEST_TMP_DIR "/");
    const std::string path = TEST_TMP_DIR "/debug.xml";
    std::ofstream(path) << "<debug><group name=\"norvane:audio\" level=\"error\"/>"
                           "<group name=\"norvane:gui\" level=\"loud\"/>"
                           "<group name=\"norvane:xml\"/><other name=\"norvane:core\" level=\"none\"/>"
                           "<group name=\"nobody\" level=\"none\"/></debug>";
    const size_t before = debug::groups.size();
    debug::groups.loadSettings(path.c_str());
    EXPECT_EQ(debug::groups[norvane::dbgAudio].level, debug::LEVEL_ERROR);
    EXPECT_EQ(debug::groups[norvane::dbgGui].level, debug::LEVEL_NONE);  // unknown word silences
    EXPECT_EQ(debug::groups[norvane::dbgXml].level, debug::LEVEL_INFO);
    EXPECT_EQ(debug::groups[norvane::dbgCore].level, debug::LEVEL_INFO);
    EXPECT_EQ(debug::groups.size(), before);
    EXPECT_EQ(captured([] { debug::warning(norvane::dbgAudio, "w"); }), "");
    EXPECT_EQ(captured([] { debug::error(norvane::dbgAudio, "e"); }), "[norvane:audio] (error) e\n");

    std::ofstream(path) << "<settings><group name=\"norvane:core\" level=\"none\"/></settings>";
    debug::groups.loadSettings(path.c_str());
    EXPECT_EQ(debug::groups[norvane::dbgCore].level, debug::LEVEL_INFO);

    std::ofstream(path, std::ios::trunc).flush();
    EXPECT_NO_THROW(debug::groups.loadSettings(path.c_str()));
    EXPECT_THROW(debug::groups.loadSettings(TEST_TMP_DIR "/missing.xml"), std::string);
}
