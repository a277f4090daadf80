#include "debug/log.h"

#include <gtest/gtest.h>

#include "norvane.h"
#include "support/files.h"

namespace debug = norvane::debug;

TEST(Log, PrintsByGroupAndThresholdButNeverDebugAndSettingsChangeOnlyNamedGroups) {
    const auto fresh = [] {
        debug::groups.clear();
        captured([] { norvane::init(0, false); });
    };
    fresh();
    EXPECT_EQ(captured([] { debug::error(norvane::dbgImages, "x %d", 5); }), "[norvane:images] (error) x 5\n");
    EXPECT_EQ(captured([] { debug::critical(norvane::dbgGui, "bad"); }), "[norvane:gui] (critical) bad\n");
    EXPECT_EQ(captured([] { debug::warning(42, "hi"); }), "[undefined] (warning) hi\n");
    EXPECT_EQ(debug::groups[42].level, debug::LEVEL_INFO);  // remembered
    debug::groups[norvane::dbgAudio].level = debug::LEVEL_WARNING;
    debug::groups[norvane::dbgGui].level = debug::LEVEL_NONE;
    debug::groups[norvane::dbgXml].level = debug::LEVEL_DEBUG;
    debug::groups[norvane::dbgCore].level = debug::LEVEL_ERROR;
    EXPECT_EQ(captured([] {
                  debug::info(norvane::dbgAudio, "quiet");
                  debug::warning(norvane::dbgAudio, "w");
                  debug::critical(norvane::dbgGui, "silenced");
                  debug::debug(norvane::dbgXml, "never");
                  debug::error(norvane::dbgXml, nullptr);
                  norvane::init(0, false);  // keeps the thresholds of the groups already there
              }),
              "[norvane:audio] (warning) w\n");
    const std::pair<const char*, debug::DebugLevel> names[] = {
        {"debug", debug::LEVEL_DEBUG}, {"critical", debug::LEVEL_CRITICAL}, {"Warning", debug::LEVEL_NONE}, {"", debug::LEVEL_NONE}};
    for (const auto& [name, level] : names) EXPECT_EQ(debug::debugLevel(name), level) << name;

    fresh();
    const size_t before = debug::groups.size();
    debug::groups.loadSettings(writeFile("debug.xml", "<debug><group name=\"norvane:audio\" level=\"error\"/>"
                                                      "<group name=\"norvane:gui\" level=\"loud\"/>"
                                                      "<group name=\"norvane:xml\"/><other name=\"norvane:core\" level=\"none\"/>"
                                                      "<group name=\"nobody\" level=\"none\"/></debug>")
                                   .c_str());
    EXPECT_EQ(debug::groups[norvane::dbgAudio].level, debug::LEVEL_ERROR);
    EXPECT_EQ(debug::groups[norvane::dbgGui].level, debug::LEVEL_NONE);  // an unknown word silences
    EXPECT_TRUE(debug::groups[norvane::dbgXml].level == debug::LEVEL_INFO && debug::groups[norvane::dbgCore].level == debug::LEVEL_INFO);
    EXPECT_EQ(debug::groups.size(), before);
    debug::groups.loadSettings(writeFile("other.xml", "<settings><group name=\"norvane:core\" level=\"none\"/></settings>").c_str());
    EXPECT_EQ(debug::groups[norvane::dbgCore].level, debug::LEVEL_INFO);
    EXPECT_NO_THROW(debug::groups.loadSettings(writeFile("empty.xml", "").c_str()));
    EXPECT_THROW(debug::groups.loadSettings(scratchPath("missing.xml").c_str()), std::string);
}
