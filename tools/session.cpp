#include "session.h"

#include <dirent.h>
#include <unistd.h>

#include <cerrno>
#include <fstream>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

#include "audio/core.h"
#include "files/sysdirs.h"
#include "menu/menu.h"
#include "norvane.h"
#include "resources/resources.h"
#include "specs.h"
#include "tools/clock.h"
#include "vantorix.h"

namespace session {

namespace {

[[noreturn]] void fail(const std::string& text) {
    std::fprintf(stderr, "%s\n", text.c_str());
    std::exit(EXIT_FAILURE);
}

// A build with a throwaway root gets the shipped data linked into it; a normal build uses the
// installed game's data.
void installData() {
    if (std::string(NORVANE_FS_ROOT).empty()) return;
    const std::string shipped = std::string(SOURCE_DIR) + "/data/";
    const std::string dir = vantorix::dirManager.getSubDir(norvane::sdData, "", true);
    DIR* entries = opendir(shipped.c_str());
    if (!entries) fail("Couldn't read " + shipped);
    while (const dirent* entry = readdir(entries)) {
        const std::string name = entry->d_name;
        if (name == "." || name == "..") continue;
        if (symlink((shipped + name).c_str(), (dir + name).c_str()) != 0 && errno != EEXIST) {
            fail("Couldn't link " + dir + name);
        }
    }
    closedir(entries);
}

// The value after `field` in /proc/self/status, in kB.
size_t statusKiB(const char* field) {
    FILE* file = std::fopen("/proc/self/status", "r");
    if (!file) return 0;
    char line[256];
    size_t value = 0;
    const size_t length = std::strlen(field);
    while (std::fgets(line, sizeof line, file)) {
        if (std::strncmp(line, field, length) == 0) value = std::strtoul(line + length, nullptr, 10);
    }
    std::fclose(file);
    return value;
}

}  // namespace

norvane::FrameRateLimitedApplication* loop() {
    // Destroying an application ends the process: it lives to the end.
    static auto* app = [] {
        auto* created = new norvane::FrameRateLimitedApplication;
        created->maxTicks = vantorix::specs.maxFrameTime;
        created->minTicks = vantorix::specs.minFrameTime - vantorix::specs.minFrameTimeOffset;
        return created;
    }();
    return app;
}

void start() {
    setenv("SDL_VIDEODRIVER", "x11", 0);
    // No sound card needed; OpenAL still mixes every source, as it would for one.
    setenv("ALSOFT_DRIVERS", "null", 0);
    if (!std::getenv("DISPLAY")) fail("No display: run under xvfb-run -a -s \"-screen 0 1024x768x24\".");
    installData();
    loop();  // states activate themselves in the application
    try {
        norvane::init(norvane::SUBSYSTEM_VIDEO | norvane::SUBSYSTEM_JOYSTICK, false);
        vantorix::resources = new vantorix::Resources;
        norvane::audio::init("", 44100);
        vantorix::resources->setResolution(800, 600, 32, false);
        vantorix::resources->init();
    } catch (const std::string& text) {
        fail("The game did not start: " + text);
    }
    vantorix::menu = new vantorix::Menu;
    vantorix::menu->activate();
    loop()->queue = vantorix::resources->queue;
    norvane::getElapsedTicks();
    for (int i = 0; i < 6000 && !vantorix::resources->loaded; ++i) frame();
    if (!vantorix::resources->loaded) fail("The game images did not load within a minute.");
}

void frame() { loop()->perform(norvane::getElapsedTicks()); }

void key(SDLKey sym, bool down) {
    SDL_Event event{};
    event.key.type = down ? SDL_KEYDOWN : SDL_KEYUP;
    event.key.state = down ? SDL_PRESSED : SDL_RELEASED;
    event.key.keysym.sym = sym;
    if (down && sym < 128) event.key.keysym.unicode = static_cast<Uint16>(sym);
    SDL_PushEvent(&event);
}

namespace {

// utime + stime of a stat file of /proc.
double statSeconds(const std::string& path) {
    FILE* file = std::fopen(path.c_str(), "r");
    if (!file) return 0.0;
    char text[1024] = {};
    const size_t length = std::fread(text, 1, sizeof text - 1, file);
    std::fclose(file);
    text[length] = '\0';
    // The command name may hold spaces and parentheses: fields are counted after its last ')'.
    const char* p = std::strrchr(text, ')');
    if (!p) return 0.0;
    unsigned long utime = 0, stime = 0;
    if (std::sscanf(p + 2, "%*c %*d %*d %*d %*d %*d %*u %*u %*u %*u %*u %lu %lu", &utime, &stime) != 2) return 0.0;
    return static_cast<double>(utime + stime) / static_cast<double>(sysconf(_SC_CLK_TCK));
}

}  // namespace

double cpuSeconds() { return statSeconds("/proc/self/stat"); }

std::map<std::string, double> threadCpuSeconds() {
    std::map<std::string, double> seconds;
    DIR* tasks = opendir("/proc/self/task");
    if (!tasks) return seconds;
    while (const dirent* entry = readdir(tasks)) {
        if (entry->d_name[0] == '.') continue;
        const std::string dir = std::string("/proc/self/task/") + entry->d_name + "/";
        std::string name;
        std::getline(std::ifstream(dir + "comm"), name);
        // llvmpipe-0, llvmpipe-1, ...: one figure for the renderer's threads. Threads that did not
        // name themselves (OpenAL's mixer, the music) carry the program's name.
        const size_t digits = name.find_last_not_of("0123456789");
        if (digits != std::string::npos && digits + 1 < name.size() && name[digits] == '-') name.erase(digits);
        if (std::strtol(entry->d_name, nullptr, 10) == getpid()) {
            name = "main";
        } else if (name == program_invocation_short_name) {
            name = "unnamed";
        }
        seconds[name] += statSeconds(dir + "stat");
    }
    closedir(tasks);
    return seconds;
}

size_t rssKiB() { return statusKiB("VmRSS:"); }

size_t peakRssKiB() { return statusKiB("VmHWM:"); }

double loadAverage() {
    double load = 0.0;
    if (FILE* file = std::fopen("/proc/loadavg", "r")) {
        if (std::fscanf(file, "%lf", &load) != 1) load = 0.0;
        std::fclose(file);
    }
    return load;
}

}  // namespace session
