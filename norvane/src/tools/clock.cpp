#include "tools/clock.h"

#include <SDL/SDL.h>

namespace norvane {

int fpsResolution = 10;

unsigned int getElapsedTicks() {
    static unsigned int last = 0;
    const unsigned int now = SDL_GetTicks();
    const unsigned int elapsed = now - last;
    last = now;
    return elapsed;
}

unsigned int getCurrentTicks() { return SDL_GetTicks(); }

int calcFPS(int ticks) {
    static int fps = 0;
    static int tickCount = 0;
    static int sampleCount = 0;
    ++sampleCount;
    tickCount += ticks;
    if (sampleCount >= fpsResolution) {
        sampleCount -= fpsResolution;
        // Ten frames of 0 ms would divide by zero; keep the last estimate then.
        if (tickCount > 0) fps = static_cast<int>(fpsResolution * 1000.0 / tickCount + 0.5);
        tickCount = 0;
    }
    return fps;
}

}  // namespace norvane
