#include "menu/program.h"

#include <X11/Xlib.h>
#include <fcntl.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <sstream>
#include <thread>

#include "files/sysdirs.h"

extern char** environ;

namespace {

double since(std::chrono::steady_clock::time_point start) {
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

}  // namespace

Program::Program(const std::string& workDir, std::vector<std::string> environment,
                 std::vector<std::string> command)
    : dir(workDir) {
    norvane::mkdirs(dir + "/");
    std::remove((dir + "/output.txt").c_str());
    std::vector<std::string> entries;
    // The game's banks live until the process ends, by design: no leak report for the program.
    environment.insert(environment.begin(), "ASAN_OPTIONS=detect_leaks=0");
    for (char** e = environ; *e; ++e) {
        const std::string entry = *e;
        bool replaced = false;
        for (const std::string& extra : environment) {
            replaced = replaced || entry.compare(0, extra.find('=') + 1, extra, 0, extra.find('=') + 1) == 0;
        }
        if (!replaced) entries.push_back(entry);
    }
    entries.insert(entries.end(), environment.begin(), environment.end());
    pid = fork();
    if (pid == 0) {
        const int out = open((dir + "/output.txt").c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
        dup2(out, STDOUT_FILENO);
        dup2(out, STDERR_FILENO);
        if (chdir(dir.c_str()) != 0) _exit(127);
        std::vector<char*> env;
        for (std::string& entry : entries) env.push_back(&entry[0]);
        env.push_back(nullptr);
        std::vector<char*> argv;
        for (std::string& word : command) argv.push_back(&word[0]);
        argv.push_back(nullptr);
        execve(argv[0], argv.data(), env.data());
        _exit(127);
    }
}

Program::~Program() {
    if (pid > 0 && waitpid(pid, nullptr, WNOHANG) == 0) {
        kill(pid, SIGKILL);
        waitpid(pid, nullptr, 0);
    }
}

int Program::wait(double seconds) {
    const auto start = std::chrono::steady_clock::now();
    while (pid > 0) {
        int status = 0;
        const pid_t done = waitpid(pid, &status, WNOHANG);
        if (done == pid) {
            pid = -1;
            return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
        }
        if (since(start) > seconds) return -1;
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
    }
    return -1;
}

std::string Program::output() const {
    std::ifstream in(dir + "/output.txt");
    std::stringstream text;
    text << in.rdbuf();
    return text.str();
}

std::string Program::window(double seconds) {
    const auto start = std::chrono::steady_clock::now();
    // By the process, not only the name: the window of a game that has just ended may linger.
    const std::string command = "timeout 5 xdotool search --sync --onlyvisible --pid " + std::to_string(pid) +
                                " --name '^Vantorix$' 2>/dev/null";
    while (windowId.empty() && since(start) < seconds && pid > 0) {
        FILE* pipe = popen(command.c_str(), "r");
        if (!pipe) break;
        char line[64] = {};
        if (fgets(line, sizeof line, pipe)) windowId = std::to_string(std::strtoul(line, nullptr, 10));
        pclose(pipe);
        if (!windowId.empty() && !xdotool("windowfocus --sync " + windowId)) windowId.clear();
    }
    return windowId;
}

void Program::requestClose() {
    Display* display = XOpenDisplay(nullptr);
    if (!display || window().empty()) return;
    XEvent event{};
    event.xclient.type = ClientMessage;
    event.xclient.window = std::strtoul(windowId.c_str(), nullptr, 10);
    event.xclient.message_type = XInternAtom(display, "WM_PROTOCOLS", False);
    event.xclient.format = 32;
    event.xclient.data.l[0] = static_cast<long>(XInternAtom(display, "WM_DELETE_WINDOW", False));
    event.xclient.data.l[1] = CurrentTime;
    XSendEvent(display, event.xclient.window, False, NoEventMask, &event);
    XCloseDisplay(display);
}

bool xdotool(const std::string& arguments) {
    return std::system(("timeout 30 xdotool " + arguments).c_str()) == 0;
}
