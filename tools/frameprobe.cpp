// Preloaded into the real game by bench_menu: counts presented frames and heap allocations, and
// notes when the first frame was presented. The counters live in a file that the benchmark maps
// too (named by FRAMEPROBE_FILE), so the game needs no code of its own for being measured.
#include <SDL/SDL.h>
#include <dlfcn.h>
#include <fcntl.h>
#include <sys/mman.h>
#include <sys/syscall.h>
#include <time.h>
#include <unistd.h>

#include <cstdlib>
#include <new>

#include "frameprobe.h"

extern "C" void* __libc_malloc(size_t size);
extern "C" void* __libc_calloc(size_t count, size_t size);
extern "C" void* __libc_realloc(void* p, size_t size);

namespace {

FrameProbe* probe() {
    static FrameProbe* counters = [] {
        const char* path = std::getenv("FRAMEPROBE_FILE");
        if (!path) return static_cast<FrameProbe*>(nullptr);
        const int fd = open(path, O_RDWR);
        if (fd < 0) return static_cast<FrameProbe*>(nullptr);
        void* mapped = mmap(nullptr, sizeof(FrameProbe), PROT_READ | PROT_WRITE, MAP_SHARED, fd, 0);
        close(fd);
        return mapped == MAP_FAILED ? nullptr : static_cast<FrameProbe*>(mapped);
    }();
    return counters;
}

long long monotonicNs() {
    timespec now;
    clock_gettime(CLOCK_MONOTONIC, &now);
    return static_cast<long long>(now.tv_sec) * 1000000000LL + now.tv_nsec;
}

bool onMainThread() { return syscall(SYS_gettid) == getpid(); }

thread_local bool counting = false;  // not while the counter file is being mapped

void counted() {
    if (counting) return;
    counting = true;
    if (FrameProbe* p = probe()) {
        __atomic_add_fetch(&p->allocations, 1, __ATOMIC_RELAXED);
        if (onMainThread()) __atomic_add_fetch(&p->mainThreadAllocations, 1, __ATOMIC_RELAXED);
    }
    counting = false;
}

__attribute__((constructor)) void loaded() {
    if (FrameProbe* p = probe()) p->loadedNs = monotonicNs();
}

}  // namespace

// Mesa and OpenAL allocate with malloc; the game's own code and the standard library with new.
void* operator new(size_t size) {
    FrameProbe* p = probe();
    if (p && onMainThread()) __atomic_add_fetch(&p->mainThreadNews, 1, __ATOMIC_RELAXED);
    if (void* block = malloc(size ? size : 1)) return block;
    throw std::bad_alloc();
}

void operator delete(void* block) noexcept { free(block); }
void operator delete(void* block, size_t) noexcept { free(block); }

extern "C" void* malloc(size_t size) {
    counted();
    return __libc_malloc(size);
}

extern "C" void* calloc(size_t count, size_t size) {
    counted();
    return __libc_calloc(count, size);
}

extern "C" void* realloc(void* p, size_t size) {
    counted();
    return __libc_realloc(p, size);
}

extern "C" SDL_Surface* SDL_SetVideoMode(int width, int height, int bpp, Uint32 flags) {
    static auto* set = reinterpret_cast<SDL_Surface* (*)(int, int, int, Uint32)>(dlsym(RTLD_NEXT, "SDL_SetVideoMode"));
    SDL_Surface* surface = set(width, height, bpp, flags);
    FrameProbe* p = probe();
    if (p && p->videoModeNs == 0) p->videoModeNs = monotonicNs();
    return surface;
}

extern "C" void SDL_GL_SwapBuffers() {
    static auto* swap = reinterpret_cast<void (*)()>(dlsym(RTLD_NEXT, "SDL_GL_SwapBuffers"));
    swap();
    FrameProbe* p = probe();
    if (!p) return;
    if (p->frames == 0) p->firstFrameNs = monotonicNs();
    __atomic_add_fetch(&p->frames, 1, __ATOMIC_RELEASE);
}
