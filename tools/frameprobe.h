#ifndef TOOLS_FRAMEPROBE_H
#define TOOLS_FRAMEPROBE_H

// What the preloaded frame probe counts in the measured program, shared through a mapped file.
struct FrameProbe {
    long long frames;                 // buffer swaps
    long long allocations;            // malloc, calloc and realloc calls of every thread
    long long mainThreadAllocations;  // those of the thread that draws
    long long mainThreadNews;         // operator new calls of the thread that draws: the game's own
    long long loadedNs;               // CLOCK_MONOTONIC once the dynamic linker is done
    long long videoModeNs;            // once the window and its GL context are there
    long long firstFrameNs;           // of the first swap
};

#endif
