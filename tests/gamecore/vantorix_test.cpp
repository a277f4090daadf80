#include <gtest/gtest.h>
#include <sys/wait.h>

#include <cstdio>

#include "buildinfo.h"

namespace {

// Runs the built game with `environment` before it; returns its standard output and exit status.
std::pair<std::string, int> runGame(const std::string& environment) {
    FILE* pipe = popen(("env " + environment + " '" VANTORIX_BINARY "' 2>/dev/null").c_str(), "r");
    std::string out;
    char buffer[512];
    for (size_t n; pipe && (n = fread(buffer, 1, sizeof buffer, pipe)) > 0;) out.append(buffer, n);
    const int status = pipe ? pclose(pipe) : -1;
    return {out, WIFEXITED(status) ? WEXITSTATUS(status) : -1};
}

const std::string VERSION_LINE = "[vantorix:core] (info) Vantorix version " + vantorix::getFullVersion() + ".\n";

}  // namespace

TEST(Vantorix, StartsWithTheVersionLineAndEndsWithStatusZeroWithOrWithoutADisplay) {
    const auto [failedOut, failedStatus] = runGame("-u DISPLAY SDL_VIDEODRIVER=x11");
    EXPECT_EQ(failedOut.rfind(VERSION_LINE, 0), 0u) << failedOut;
    const std::string failed = "\n[vantorix:core] (critical) Init() failed: ";
    const size_t at = failedOut.find(failed);
    ASSERT_NE(at, std::string::npos) << failedOut;
    EXPECT_NE(failedOut[at + failed.size()], '\n') << "SDL's reason is missing";
    EXPECT_EQ(failedStatus, 0);

    const auto [out, status] = runGame("SDL_VIDEODRIVER=dummy");
    EXPECT_EQ(out.rfind(VERSION_LINE, 0), 0u) << out;
    EXPECT_EQ(out.find("Init() failed"), std::string::npos) << out;
    EXPECT_EQ(status, 0);
}
