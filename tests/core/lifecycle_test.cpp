#include "norvane.h"

#include <gtest/gtest.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <functional>
#include <string>

#include "../../norvane/src/buildinfo.h"
#include "debug/log.h"
#include "support/tasks.h"

namespace {

struct ChildResult {
    int exitCode = -1;  // -1 unless it exited
    std::string err, out;
};

std::string drain(int fd) {
    std::string text;
    char buffer[512];
    ssize_t n;
    while ((n = read(fd, buffer, sizeof buffer)) > 0) text.append(buffer, static_cast<size_t>(n));
    close(fd);
    return text;
}

// The crash handler ends the process, so each case runs in a child of its own.
ChildResult runInChild(const std::function<void()>& body) {
    int errPipe[2], outPipe[2];
    if (pipe(errPipe) != 0 || pipe(outPipe) != 0) return {};
    const pid_t pid = fork();
    if (pid == 0) {
        dup2(errPipe[1], STDERR_FILENO);
        dup2(outPipe[1], STDOUT_FILENO);
        close(errPipe[0]);
        close(outPipe[0]);
        body();
        _exit(99);  // the body was meant to end the process itself
    }
    close(errPipe[1]);
    close(outPipe[1]);
    ChildResult result;
    result.out = drain(outPipe[0]);
    result.err = drain(errPipe[0]);
    int status = 0;
    waitpid(pid, &status, 0);
    if (WIFEXITED(status)) result.exitCode = WEXITSTATUS(status);
    return result;
}

class Task : public norvane::BackgroundTask {
public:
    Task(norvane::BackgroundTaskCallback* callback, int workUnits, std::function<void()> onDelete)
        : BackgroundTask(callback), onDelete(std::move(onDelete)) {
        progressTotal = static_cast<unsigned int>(workUnits);
    }
    ~Task() override { onDelete(); }
    void perform(unsigned int) override {
        ++turns;
        if (++progressDone >= progressTotal) finish();
    }
    int turns = 0;
    std::function<void()> onDelete;
};


}  // namespace

TEST(CrashHandler, EachSignalPrintsItsTextAndExitsCleanly) {
    const std::pair<std::function<void()>, const char*> cases[] = {
        {[] { raise(SIGINT); }, "Interactive attention."},
        {[] { raise(SIGTERM); }, "Termination request."},
        {[] { raise(SIGABRT); }, "Abnormal termination (abort)."},
        {[] { raise(SIGILL); }, "Illegal instruction."},
        {[] { raise(SIGFPE); }, "Floating point exception."},
        {[] { norvane::handleSignal(10); }, "Signal #10."},
        // A page without access: a real fault that no sanitizer intercepts first.
        {[] { *static_cast<volatile int*>(mmap(nullptr, 4096, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0)) = 1; },
         "Segmentation fault."},
    };
    for (const auto& [crash, text] : cases) {
        const ChildResult result = runInChild([&] {
            norvane::init(0, true);
            crash();
        });
        EXPECT_EQ(result.err, std::string("Norvane parachute deployed: ") + text + "\n");
        EXPECT_EQ(result.exitCode, 0) << text;
    }
    // A fault during the handler's clean-up takes the recursive path once.
    const ChildResult result = runInChild([] {
        norvane::init(0, true);
        norvane::backgroundTasks.push_back(new Task(nullptr, 1, [] { raise(SIGTERM); }));
        raise(SIGINT);
    });
    EXPECT_EQ(result.err, "Norvane parachute deployed: Interactive attention.\n"
                          "Norvane parachute deployed: Recursive call.\n");
    EXPECT_NE(result.out.find("[norvane:core] (warning) Quit called again.\n"), std::string::npos);
    EXPECT_EQ(result.exitCode, 0);
}

TEST(Lifecycle, InitLogsTheVersionAndQuitFreesTasksOnceAndExitsWithStatusZero) {
    testing::internal::CaptureStdout();
    norvane::init(0, false);
    EXPECT_EQ(testing::internal::GetCapturedStdout(),
              "[norvane:core] (info) Norvane version " + norvane::getFullVersion() + ".\n");
    EXPECT_EQ(norvane::debug::groups[norvane::dbgResources].name, "norvane:resources");
    EXPECT_EQ(SDL_WasInit(SDL_INIT_EVERYTHING), 0u);
    const ChildResult result = runInChild([] {
        setenv("SDL_VIDEODRIVER", "dummy", 1);
        norvane::init(norvane::SUBSYSTEM_VIDEO, false);
        if (SDL_WasInit(SDL_INIT_VIDEO) == 0) _exit(3);
        norvane::backgroundTasks.push_back(new Task(nullptr, 1, [] { std::printf("deleted\n"); }));
        norvane::cleanUp();
        norvane::quitting = true;  // as if a handler had begun shutting down
        norvane::quit();
    });
    ASSERT_NE(result.out.find("deleted\n"), std::string::npos);
    EXPECT_EQ(result.out.find("deleted\n"), result.out.rfind("deleted\n"));  // once
    EXPECT_NE(result.out.find("(warning) Quit called again."), std::string::npos);
    EXPECT_EQ(result.exitCode, 0);
}

TEST(BackgroundTasks, PerformGivesTurnsInOrderAndRetiresFinishedTasks) {
    ASSERT_EQ(SDL_Init(SDL_INIT_TIMER), 0);
    norvane::perform(SDL_GetTicks() + 1000);  // an empty list is fine
    TaskEvents recorder;
    int deleted = 0;
    auto* quick = new Task(&recorder, 1, [&] { ++deleted; });
    auto* slow = new Task(nullptr, 3, [&] { ++deleted; });
    EXPECT_EQ(recorder.events, "start ");
    norvane::backgroundTasks = {quick, slow};
    norvane::perform(SDL_GetTicks() + 1000);
    EXPECT_EQ(recorder.events, "start finish ");
    EXPECT_EQ(deleted, 1);
    ASSERT_EQ(norvane::backgroundTasks.size(), 1u);
    EXPECT_DOUBLE_EQ(slow->getProgressRelative(), 1.0 / 3.0);
    norvane::perform(0);  // a deadline in the past gives nobody a turn
    EXPECT_EQ(slow->turns, 1);
    norvane::perform(SDL_GetTicks() + 1000);
    norvane::perform(SDL_GetTicks() + 1000);
    EXPECT_TRUE(norvane::backgroundTasks.empty());
    EXPECT_EQ(deleted, 2);
    SDL_Quit();
}
