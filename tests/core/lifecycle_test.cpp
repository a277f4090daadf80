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

namespace {

struct ChildResult {
    int status = -1;
    std::string err;
    std::string out;
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
    waitpid(pid, &result.status, 0);
    return result;
}

class Task : public norvane::BackgroundTask {
public:
    Task(norvane::BackgroundTaskCallback* callback, int workUnits, int* deleted, std::function<void()> onDelete = {})
        : BackgroundTask(callback), deleted(deleted), onDelete(std::move(onDelete)) {
        progressTotal = static_cast<unsigned int>(workUnits);
    }
    ~Task() override {
        if (deleted) ++*deleted;
        if (onDelete) onDelete();
    }
    void perform(unsigned int) override {
        ++turns;
        if (++progressDone >= progressTotal) finish();
    }
    int turns = 0;

private:
    int* deleted;
    std::function<void()> onDelete;
};

class Recorder : public norvane::BackgroundTaskCallback {
public:
    void onStart(norvane::BackgroundTask*) override { events += "start "; }
    void onFinish(norvane::BackgroundTask*) override { events += "finish "; }
    std::string events;
};

}  // namespace

TEST(CrashHandler, EachSignalPrintsItsTextAndExitsCleanly) {
    const struct {
        int signal;
        const char* text;
    } cases[] = {
        {SIGINT, "Interactive attention.\n"},
        {SIGTERM, "Termination request.\n"},
        {SIGSEGV, "Segmentation fault.\n"},
        {SIGABRT, "Abnormal termination (abort).\n"},
        {SIGILL, "Illegal instruction.\n"},
        {SIGFPE, "Floating point exception.\n"},
    };
    for (const auto& c : cases) {
        const ChildResult result = runInChild([&] {
            norvane::init(0, true);
            raise(c.signal);
        });
        EXPECT_EQ(result.err, std::string("Norvane parachute deployed: ") + c.text) << c.signal;
        ASSERT_TRUE(WIFEXITED(result.status)) << c.signal;
        EXPECT_EQ(WEXITSTATUS(result.status), 0) << c.signal;
    }
}

TEST(CrashHandler, UnknownSignalPrintsItsNumber) {
    const ChildResult result = runInChild([] {
        norvane::init(0, false);
        norvane::handleSignal(10);
    });
    EXPECT_EQ(result.err, "Norvane parachute deployed: Signal #10.\n");
    ASSERT_TRUE(WIFEXITED(result.status));
    EXPECT_EQ(WEXITSTATUS(result.status), 0);
}

TEST(CrashHandler, RealFaultIsCaught) {
    const ChildResult result = runInChild([] {
        norvane::init(0, true);
        // A page without access: a real fault that no sanitizer intercepts first.
        void* page = mmap(nullptr, 4096, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
        *static_cast<volatile int*>(page) = 1;
    });
    EXPECT_EQ(result.err, "Norvane parachute deployed: Segmentation fault.\n");
    ASSERT_TRUE(WIFEXITED(result.status));
    EXPECT_EQ(WEXITSTATUS(result.status), 0);
}

TEST(CrashHandler, FaultDuringCleanUpTakesTheRecursivePathOnce) {
    int deleted = 0;
    const ChildResult result = runInChild([&] {
        norvane::init(0, true);
        // The task's destructor runs inside the handler's clean-up and faults again.
        norvane::backgroundTasks.push_back(new Task(nullptr, 1, &deleted, [] { raise(SIGTERM); }));
        raise(SIGINT);
    });
    EXPECT_EQ(result.err,
              "Norvane parachute deployed: Interactive attention.\n"
              "Norvane parachute deployed: Recursive call.\n");
    EXPECT_NE(result.out.find("[norvane:core] (warning) Quit called again.\n"), std::string::npos);
    ASSERT_TRUE(WIFEXITED(result.status));
    EXPECT_EQ(WEXITSTATUS(result.status), 0);
}

TEST(Lifecycle, InitWithoutSubsystemsRegistersGroupsAndLogsVersion) {
    testing::internal::CaptureStdout();
    norvane::init(0, false);
    const std::string out = testing::internal::GetCapturedStdout();
    EXPECT_EQ(out, "[norvane:core] (info) Norvane version " + norvane::getFullVersion() + ".\n");
    EXPECT_EQ(norvane::debug::groups[norvane::dbgImages].name, "norvane:images");
    EXPECT_EQ(norvane::debug::groups[norvane::dbgResources].name, "norvane:resources");
    EXPECT_EQ(SDL_WasInit(SDL_INIT_EVERYTHING), 0u);
}

TEST(Lifecycle, InitStartsSdlAndQuitExitsWithStatusZero) {
    const ChildResult result = runInChild([] {
        setenv("SDL_VIDEODRIVER", "dummy", 1);
        norvane::init(norvane::SUBSYSTEM_VIDEO, false);
        if (SDL_WasInit(SDL_INIT_VIDEO) == 0) _exit(3);
        norvane::quit();
    });
    ASSERT_TRUE(WIFEXITED(result.status));
    EXPECT_EQ(WEXITSTATUS(result.status), 0);
}

TEST(Lifecycle, QuitFreesTasksOnceAndWarnsOnSecondCall) {
    const ChildResult result = runInChild([] {
        norvane::init(0, false);
        static int deleted = 0;
        norvane::backgroundTasks.push_back(new Task(nullptr, 1, &deleted, [] {
            std::printf("deleted\n");
        }));
        norvane::cleanUp();
        norvane::quitting = true;  // as if a handler had begun shutting down
        norvane::quit();
    });
    EXPECT_NE(result.out.find("deleted\n"), std::string::npos);
    EXPECT_NE(result.out.find("(warning) Quit called again."), std::string::npos);
    ASSERT_TRUE(WIFEXITED(result.status));
    EXPECT_EQ(WEXITSTATUS(result.status), 0);
}

TEST(BackgroundTasks, PerformGivesTurnsInOrderAndRetiresFinishedTasks) {
    ASSERT_EQ(SDL_Init(SDL_INIT_TIMER), 0);
    norvane::perform(SDL_GetTicks() + 1000);  // an empty list is fine

    Recorder recorder;
    int deleted = 0;
    auto* quick = new Task(&recorder, 1, &deleted);
    auto* slow = new Task(nullptr, 3, &deleted);
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
