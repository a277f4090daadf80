#include "norvane.h"

#include <gtest/gtest.h>
#include <sys/mman.h>

#include <csignal>
#include <functional>
#include <string>

#include "../../norvane/src/buildinfo.h"
#include "debug/log.h"

namespace {

// Runs `onDelete` when the clean-up deletes it.
struct Task : norvane::BackgroundTask {
    explicit Task(std::function<void()> onDelete) : BackgroundTask(nullptr), onDelete(std::move(onDelete)) {}
    ~Task() override { onDelete(); }
    void perform(unsigned int) override {}
    std::function<void()> onDelete;
};

}  // namespace

// The crash handler ends the process, so each case runs in a child of its own.
TEST(Lifecycle, CrashHandlerPrintsEachSignalAndQuitFreesTasksOnceAndExitsWithStatusZero) {
    const std::pair<std::function<void()>, const char*> cases[] = {
        {[] { raise(SIGINT); }, "Interactive attention."},
        {[] { raise(SIGTERM); }, "Termination request."},
        {[] { raise(SIGABRT); }, "Abnormal termination \\(abort\\)."},
        {[] { raise(SIGILL); }, "Illegal instruction."},
        {[] { raise(SIGFPE); }, "Floating point exception."},
        {[] { norvane::handleSignal(10); }, "Signal #10."},
        // A page without access: a real fault that no sanitizer intercepts first.
        {[] { *static_cast<volatile int*>(mmap(nullptr, 4096, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0)) = 1; },
         "Segmentation fault."},
    };
    for (const auto& [crash, text] : cases) {
        EXPECT_EXIT((norvane::init(0, true), crash()), testing::ExitedWithCode(0),
                    std::string("^Norvane parachute deployed: ") + text + "\n$");
    }
    // A fault during the handler's clean-up takes the recursive path once.
    EXPECT_EXIT(
        {
            std::setvbuf(stdout, nullptr, _IONBF, 0);
            dup2(STDERR_FILENO, STDOUT_FILENO);
            norvane::init(0, true);
            norvane::backgroundTasks.push_back(new Task([] { raise(SIGTERM); }));
            raise(SIGINT);
        },
        testing::ExitedWithCode(0),
        "^[^\n]*Norvane version[^\n]*\nNorvane parachute deployed: Interactive attention.\n"
        "Norvane parachute deployed: Recursive call.\n\\[norvane:core\\] \\(warning\\) Quit called again.\n$");
    // A clean-up that never returns, as SDL_Quit waiting for the Xlib lock that the signal interrupted.
    EXPECT_EXIT(
        {
            norvane::init(0, true);
            norvane::backgroundTasks.push_back(new Task([] { for (;;) pause(); }));
            raise(SIGTERM);
        },
        testing::ExitedWithCode(0), "Termination request.");

    testing::internal::CaptureStdout();
    norvane::init(0, false);
    EXPECT_EQ(testing::internal::GetCapturedStdout(),
              "[norvane:core] (info) Norvane version " + norvane::getFullVersion() + ".\n");
    EXPECT_TRUE(norvane::debug::groups[norvane::dbgResources].name == "norvane:resources" && !SDL_WasInit(SDL_INIT_EVERYTHING));
    EXPECT_EXIT(
        {
            setenv("SDL_VIDEODRIVER", "dummy", 1);
            norvane::init(norvane::SUBSYSTEM_VIDEO, false);
            if (SDL_WasInit(SDL_INIT_VIDEO) == 0) _exit(3);
            norvane::backgroundTasks.push_back(new Task([] { std::fputs("deleted\n", stderr); }));
            norvane::cleanUp();
            norvane::quitting = true;  // as if a handler had begun shutting down
            norvane::quit();
        },
        testing::ExitedWithCode(0), "^deleted\n$");
}
