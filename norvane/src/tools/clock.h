#ifndef NORVANE_TOOLS_CLOCK_H
#define NORVANE_TOOLS_CLOCK_H

namespace norvane {

extern int fpsResolution;  // frames averaged by calcFPS

// Milliseconds since the previous call (since SDL started, the first time); wraps with SDL's clock.
unsigned int getElapsedTicks();
unsigned int getCurrentTicks();
// Fed with every frame's milliseconds; the rounded rate over the last fpsResolution frames, 0 before that.
int calcFPS(int ticks);

}  // namespace norvane

#endif
