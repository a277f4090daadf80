#include "framework/application.h"

#include <SDL/SDL.h>

#include "controls/queue.h"
#include "norvane.h"
#include "tools/clock.h"

namespace norvane {

Application* application = nullptr;

Application::Application() { application = this; }

Application::~Application() { quit(); }

void Application::handleEvents(ControlQueue* queue) {
    if (!queue->readEvents()) {
        // The window was closed: ending the active state ends the loop.
        if (!state) return;
        delete state;
    }
    Trigger* trigger = nullptr;
    // `state` is read anew for every trigger: a handler may activate another state.
    while (state) {
        *queue >> trigger;
        if (!trigger) break;
        state->handleEvent(trigger);
    }
}

void Application::perform(unsigned int ticks) {
    if (!state) return;
    if (queue) {
        handleEvents(queue);
        if (!state) return;
    }
    state->perform(ticks);
    if (state) state->draw();
}

void Application::run() {
    getElapsedTicks();  // the first pass must not see the start-up time
    while (state) perform(getElapsedTicks());
}

void FrameRateLimitedApplication::sleep(unsigned int ms) { SDL_Delay(ms); }

void FrameRateLimitedApplication::perform(unsigned int ticks) {
    if (maxTicks != 0 && ticks > maxTicks) {
        sleep(1);  // gives the system a breath after a long frame
        ticks = maxTicks;
    } else if (minTicks != 0 && ticks < minTicks) {
        sleep(minTicks - ticks);
        ticks += getElapsedTicks();  // what the sleep really took; the next pass starts after it
    }
    Application::perform(ticks);
}

void FixedRateApplication::perform(unsigned int ticks) {
    accumulated += ticks;
    while (interval != 0 && accumulated >= interval) {  // an interval of 0 would never end
        accumulated -= interval;
        if (!state) continue;
        if (queue) {
            handleEvents(queue);
            if (!state) continue;
        }
        state->perform(interval);
    }
    if (state) state->draw();
}

}  // namespace norvane
