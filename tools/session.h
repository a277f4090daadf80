#ifndef TOOLS_SESSION_H
#define TOOLS_SESSION_H

// The game brought up in a tool's own process as the program brings it up (data, audio, an
// 800 x 600 window, resources, the title menu), then run by the framework's own loop with the
// game's frame limits and fed SDL events through the real control queue.
#include <SDL/SDL.h>

#include <cstddef>
#include <map>
#include <string>

#include "framework/application.h"

namespace session {

// Exits with a message when the game cannot start. Returns once the game images are loaded.
void start();
norvane::FrameRateLimitedApplication* loop();
void frame();  // one pass of the loop at the real pacing

void key(SDLKey sym, bool down);

// Whole process, every thread (Mesa's and OpenAL's included).
double cpuSeconds();   // utime + stime from /proc/self/stat
size_t rssKiB();       // VmRSS
size_t peakRssKiB();   // VmHWM
double loadAverage();  // over the last minute
// CPU seconds by thread name (the main thread, Mesa's llvmpipe threads, OpenAL's mixer, the music).
std::map<std::string, double> threadCpuSeconds();

}  // namespace session

#endif
