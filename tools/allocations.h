#ifndef TOOLS_ALLOCATIONS_H
#define TOOLS_ALLOCATIONS_H

// Counts every allocation of a benchmark program, to show that per-frame code makes none once its
// buffers are sized. Include it in exactly one file of a program: it replaces the global operators.
// Mesa and OpenAL call malloc themselves and are not counted.
#include <atomic>
#include <cstddef>
#include <cstdlib>
#include <new>

inline std::atomic<size_t> allocations{0};  // by every thread
inline thread_local size_t threadAllocations = 0;  // by the thread that reads it

#pragma GCC diagnostic ignored "-Wmismatched-new-delete"
void* operator new(size_t size) {
    ++allocations;
    ++threadAllocations;
    if (void* p = std::malloc(size ? size : 1)) return p;
    throw std::bad_alloc();
}
void operator delete(void* p) noexcept { std::free(p); }
void operator delete(void* p, size_t) noexcept { std::free(p); }

#endif
