#include <gtest/gtest.h>

#include <regex>

#include "../../norvane/src/buildinfo.h"
#include "buildinfo.h"

TEST(BuildInfo, VersionsAndBuildStampsHaveTheirForm) {
    EXPECT_EQ(norvane::getVersion(), "1.0");
    EXPECT_EQ(vantorix::getVersion(), "1.0");
    // A one-digit day keeps its blank: "Mar  5 2024".
    const std::regex date("[A-Z][a-z]{2} [ 1-3][0-9] [0-9]{4}");
    const std::regex time("[0-9]{2}:[0-9]{2}:[0-9]{2}");
    for (const std::string& d : {norvane::getBuildDate(), vantorix::getBuildDate()}) EXPECT_TRUE(std::regex_match(d, date)) << d;
    for (const std::string& t : {norvane::getBuildTime(), vantorix::getBuildTime()}) EXPECT_TRUE(std::regex_match(t, time)) << t;
    EXPECT_EQ(vantorix::getFullVersion(), "1.0 (" + vantorix::getBuildDate() + ", " + vantorix::getBuildTime() + ")");
    EXPECT_EQ(norvane::getFullVersion(), "1.0 (" + norvane::getBuildDate() + ", " + norvane::getBuildTime() + ")");
}
