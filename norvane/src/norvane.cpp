#include "norvane.h"

#include <algorithm>
#include <unistd.h>

#include <csignal>
#include <cstdio>
#include <cstdlib>

#include "buildinfo.h"
#include "debug/log.h"

namespace norvane {

bool quitting = false;
SDL_Surface* screen = nullptr;
bool fullscreen = false;
std::list<BackgroundTask*> backgroundTasks;
basic_Rect<float>* currentViewport = nullptr;

namespace {

const int FATAL_SIGNALS[] = {SIGSEGV, SIGILL, SIGFPE, SIGINT, SIGTERM, SIGABRT};
const unsigned int SHUTDOWN_GRACE_S = 2;

[[noreturn]] void shutDown() {
    if (!quitting) {
        quitting = true;
        cleanUp();
    } else {
        debug::warning(dbgCore, "Quit called again.");
    }
    SDL_Quit();
    std::exit(0);
}

}  // namespace

void init(SubSystem subsystems, bool installSignalHandlers) {
    currentViewport = nullptr;
    for (const DebugGroupDef* def = defDebugGroups; def->id != 0; ++def) {
        debug::groups[def->id].name = std::string("norvane:") + def->shortName;
    }
    debug::init();
    if (installSignalHandlers) {
        for (int sig : FATAL_SIGNALS) std::signal(sig, handleSignal);
    }
    debug::info(dbgCore, "Norvane version %s.", getFullVersion().c_str());
    fullscreen = false;
    if (subsystems < 1) return;
    if (SDL_Init(subsystems | SDL_INIT_NOPARACHUTE) < 0) throw std::string(SDL_GetError());
    SDL_EnableUNICODE(1);
}

void quit() { shutDown(); }

void cleanUp() {
    SDL_ShowCursor(SDL_ENABLE);
    while (!backgroundTasks.empty()) {
        delete backgroundTasks.front();
        backgroundTasks.pop_front();
    }
}

void handleSignal(int signal) {
    static int count = 0;
    std::fputs("Norvane parachute deployed: ", stderr);
    if (count++ >= 1) {
        for (int sig : FATAL_SIGNALS) std::signal(sig, SIG_DFL);
        std::fputs("Recursive call.\n", stderr);
    } else {
        switch (signal) {
            case SIGINT: std::fputs("Interactive attention.\n", stderr); break;
            case SIGILL: std::fputs("Illegal instruction.\n", stderr); break;
            case SIGABRT: std::fputs("Abnormal termination (abort).\n", stderr); break;
            case SIGFPE: std::fputs("Floating point exception.\n", stderr); break;
            case SIGSEGV: std::fputs("Segmentation fault.\n", stderr); break;
            case SIGTERM: std::fputs("Termination request.\n", stderr); break;
            default: std::fprintf(stderr, "Signal #%d.\n", signal);
        }
    }
    std::fflush(stderr);
    // SDL_Quit waits for Xlib's lock, which the interrupted code may hold: end even then.
    std::signal(SIGALRM, [](int) { _exit(0); });
    alarm(SHUTDOWN_GRACE_S);
    shutDown();
}

void perform(unsigned int deadline) {
    static std::list<BackgroundTask*> finishedTasks;
    for (BackgroundTask* task : backgroundTasks) {
        if (SDL_GetTicks() >= deadline) break;
        task->perform(deadline);
        if (task->isFinished()) finishedTasks.push_back(task);
    }
    for (BackgroundTask* task : finishedTasks) {
        backgroundTasks.remove(task);
        delete task;
    }
    finishedTasks.clear();
}

SDL_Joystick* initJoystick(int index) { return SDL_JoystickOpen(index); }
void cleanUpJoystick(SDL_Joystick* joystick) { SDL_JoystickClose(joystick); }

}  // namespace norvane
