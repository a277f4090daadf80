#include <gtest/gtest.h>
#include <sys/wait.h>

#include <cstdio>

#include "buildinfo.h"

// Without a display the game says why it could not start; on SDL's dummy driver it starts. Either
// way the log opens with the version, and the status is 0.
TEST(Vantorix, StartsWithTheVersionLineAndEndsWithStatusZeroWithOrWithoutADisplay) {
    for (const char* environment : {"-u DISPLAY SDL_VIDEODRIVER=x11", "SDL_VIDEODRIVER=dummy"}) {
        SCOPED_TRACE(environment);
        FILE* pipe = popen(("env " + std::string(environment) + " '" VANTORIX_BINARY "' 2>/dev/null").c_str(), "r");
        ASSERT_TRUE(pipe);
        std::string out;
        char buffer[512];
        for (size_t n; (n = fread(buffer, 1, sizeof buffer, pipe)) > 0;) out.append(buffer, n);
        const int status = pclose(pipe);
        EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0) << status;
        EXPECT_EQ(out.rfind("[vantorix:core] (info) Vantorix version " + vantorix::getFullVersion() + ".\n", 0), 0u) << out;
        const size_t failed = out.find("\n[vantorix:core] (critical) Init() failed: ");
        EXPECT_EQ(failed != std::string::npos, environment[0] == '-') << out;
        EXPECT_TRUE(failed == std::string::npos || out[failed + 43] != '\n') << "SDL's reason is missing";
    }
}
