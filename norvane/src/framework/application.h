#ifndef NORVANE_FRAMEWORK_APPLICATION_H
#define NORVANE_FRAMEWORK_APPLICATION_H

#include "framework/state.h"

namespace norvane {

class ControlQueue;

// The main loop: each pass reads events, hands the fired triggers to the active state, then lets it
// perform and draw. Destroying the application ends the process.
class Application {
public:
    Application();  // becomes norvane::application
    Application(const Application&) = delete;
    Application& operator=(const Application&) = delete;

    virtual void handleEvents(ControlQueue* queue);
    virtual void perform(unsigned int ticks);  // one pass advancing the state by `ticks` ms
    virtual ~Application();                    // calls quit(): never returns
    virtual void run();                        // returns when no state is active

    ApplicationState* state = nullptr;
    ControlQueue* queue = nullptr;  // not owned; no events are read while null
};

// Caps the time one pass may advance the state and pads short passes by sleeping.
class FrameRateLimitedApplication : public Application {
public:
    void perform(unsigned int ticks) override;

    unsigned int maxTicks = 0;  // 0: no cap
    unsigned int minTicks = 0;  // 0: no padding

protected:
    virtual void sleep(unsigned int ms);  // SDL_Delay; tests count the calls
};

// Advances the state in steps of exactly `interval` ms, drawing once per pass.
class FixedRateApplication : public Application {
public:
    void perform(unsigned int ticks) override;

    unsigned int accumulated = 0;  // ms received and not yet performed
    unsigned int interval = 100;
};

extern Application* application;

}  // namespace norvane

#endif
