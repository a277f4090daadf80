#include <gtest/gtest.h>

#include <regex>

#include "../../norvane/src/buildinfo.h"
#include "buildinfo.h"

TEST(BuildInfo, VersionsAndBuildStampsHaveTheirForm) {
    // A one-digit day keeps its blank: "Mar  5 2024".
    const std::regex full(R"(1\.0 \([A-Z][a-z]{2} [ 1-3][0-9] [0-9]{4}, [0-9]{2}:[0-9]{2}:[0-9]{2}\))");
    EXPECT_TRUE(std::regex_match(norvane::getFullVersion(), full)) << norvane::getFullVersion();
    EXPECT_EQ(vantorix::getFullVersion(), "1.0 (" + vantorix::getBuildDate() + ", " + vantorix::getBuildTime() + ")");
}
