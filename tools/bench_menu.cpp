// Starts the real game on its title menu and measures it from outside, over 20 seconds once the
// images have loaded: CPU of the whole process (all threads, the GL driver's included) per frame
// and per second, frames per second, peak memory, the time from exec to the first presented frame,
// and heap allocations per frame. Run it under a display: xvfb-run -a tools/bench_menu.
#include <dirent.h>
#include <fcntl.h>
#include <signal.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <time.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

#include "files/sysdirs.h"
#include "frameprobe.h"

extern char** environ;

namespace {

const double SETTLE_S = 5.0;    // after the first frame: the images load meanwhile
const double WINDOW_S = 20.0;

double now() {
    timespec t;
    clock_gettime(CLOCK_MONOTONIC, &t);
    return static_cast<double>(t.tv_sec) + static_cast<double>(t.tv_nsec) * 1e-9;
}

// User plus system time of every thread of `pid`, in seconds.
double cpuSeconds(pid_t pid) {
    std::ifstream in("/proc/" + std::to_string(pid) + "/stat");
    std::string line;
    std::getline(in, line);
    std::istringstream fields(line.substr(line.rfind(')') + 2));
    std::string field;
    unsigned long long utime = 0, stime = 0;
    for (int i = 3; fields >> field; ++i) {
        if (i == 14) utime = std::stoull(field);
        if (i == 15) {
            stime = std::stoull(field);
            break;
        }
    }
    return static_cast<double>(utime + stime) / static_cast<double>(sysconf(_SC_CLK_TCK));
}

long peakRssKiB(pid_t pid) {
    std::ifstream in("/proc/" + std::to_string(pid) + "/status");
    for (std::string line; std::getline(in, line);) {
        if (line.rfind("VmHWM:", 0) == 0) return std::atol(line.c_str() + 6);
    }
    return -1;
}

// The game reads its data from the build's tree: each entry there a link to the repository's
// (links one by one, so that nothing written there can reach the repository).
void installData() {
    const std::string dir = norvane::SysDirManager("vantorix", norvane::sdcGame).getDir(norvane::sdData);
    norvane::mkdirs(dir);
    DIR* shipped = opendir(SOURCE_DIR "/data");
    if (!shipped) return;
    while (const dirent* entry = readdir(shipped)) {
        const std::string name = entry->d_name;
        if (name == "." || name == "..") continue;
        if (symlink((SOURCE_DIR "/data/" + name).c_str(), (dir + name).c_str()) != 0 && errno != EEXIST) {
            std::fprintf(stderr, "cannot install %s in %s: %s\n", name.c_str(), dir.c_str(), std::strerror(errno));
            std::exit(1);
        }
    }
    closedir(shipped);
}

}  // namespace

int main() {
    if (!std::getenv("DISPLAY")) {
        std::fprintf(stderr, "no display: run it as xvfb-run -a %s\n", "tools/bench_menu");
        return 1;
    }
    installData();
    char probePath[] = "/tmp/frameprobe-XXXXXX";
    const int fd = mkstemp(probePath);
    if (fd < 0 || ftruncate(fd, sizeof(FrameProbe)) != 0) return 1;
    auto* probe = static_cast<FrameProbe*>(mmap(nullptr, sizeof(FrameProbe), PROT_READ | PROT_WRITE, MAP_SHARED, fd, 0));
    close(fd);
    // No sound card needed: OpenAL mixes into a wave file that goes nowhere.
    const std::string alsoft = std::string(probePath) + ".conf";
    std::ofstream(alsoft) << "[general]\ndrivers = wave\n[wave]\nfile = /dev/null\n";

    std::vector<std::string> env;
    for (char** e = environ; *e; ++e) env.emplace_back(*e);
    env.push_back("LD_PRELOAD=" FRAMEPROBE_LIBRARY);
    env.push_back(std::string("FRAMEPROBE_FILE=") + probePath);
    env.push_back("ALSOFT_CONF=" + alsoft);
    env.push_back("SDL_VIDEODRIVER=x11");
    std::vector<char*> envp;
    for (std::string& e : env) envp.push_back(&e[0]);
    envp.push_back(nullptr);

    const double exec = now();
    const pid_t pid = fork();
    if (pid == 0) {
        freopen("/dev/null", "w", stdout);
        char* argv[] = {const_cast<char*>(VANTORIX_BINARY), nullptr};
        execve(VANTORIX_BINARY, argv, envp.data());
        _exit(127);
    }
    while (__atomic_load_n(&probe->frames, __ATOMIC_ACQUIRE) == 0) {
        if (waitpid(pid, nullptr, WNOHANG) == pid || now() - exec > 30.0) {
            std::fprintf(stderr, "the game drew no frame\n");
            return 1;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    const auto sinceExec = [&](long long ns) { return static_cast<double>(ns) * 1e-9 - exec; };
    std::this_thread::sleep_for(std::chrono::duration<double>(SETTLE_S));

    const double start = now();
    const double cpuStart = cpuSeconds(pid);
    const long long framesStart = probe->frames, allStart = probe->allocations;
    const long long mainStart = probe->mainThreadAllocations, newStart = probe->mainThreadNews;
    std::this_thread::sleep_for(std::chrono::duration<double>(WINDOW_S));
    const double seconds = now() - start;
    const double cpu = cpuSeconds(pid) - cpuStart;
    const long long frames = probe->frames - framesStart;
    const long long all = probe->allocations - allStart;
    const long long main = probe->mainThreadAllocations - mainStart;
    const long long news = probe->mainThreadNews - newStart;
    const long rss = peakRssKiB(pid);
    // Its shutdown is not measured.
    kill(pid, SIGKILL);
    waitpid(pid, nullptr, 0);
    unlink(probePath);
    unlink(alsoft.c_str());

    std::printf("title menu, 800 x 600, %.1f s measured from %.0f s after the first frame\n", seconds, SETTLE_S);
    std::printf("first frame presented      %8.3f s after exec (libraries loaded %.3f s, window %.3f s)\n",
                sinceExec(probe->firstFrameNs), sinceExec(probe->loadedNs), sinceExec(probe->videoModeNs));
    std::printf("frames per second          %8.1f\n", static_cast<double>(frames) / seconds);
    std::printf("CPU per frame              %8.3f ms (all threads)\n", frames ? cpu * 1000.0 / static_cast<double>(frames) : 0.0);
    std::printf("CPU of one core            %8.1f %%\n", cpu * 100.0 / seconds);
    std::printf("peak RSS                   %8.1f MiB\n", static_cast<double>(rss) / 1024.0);
    const auto perFrame = [&](long long n) { return frames ? static_cast<double>(n) / static_cast<double>(frames) : 0.0; };
    std::printf("allocations per frame      %8.2f by the game (operator new on its thread)\n", perFrame(news));
    std::printf("                           %8.2f malloc on its thread (GL driver included), %.2f in all threads\n",
                perFrame(main), perFrame(all));
    return 0;
}
