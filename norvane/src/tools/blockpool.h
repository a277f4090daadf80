#ifndef NORVANE_TOOLS_BLOCKPOOL_H
#define NORVANE_TOOLS_BLOCKPOOL_H

#include <cstddef>
#include <vector>

namespace norvane {

// Memory blocks of one size kept for reuse by objects made and dropped while the game runs
// (a sprite's animation, a played sound), so that a running program stops calling the heap once
// it has seen its busiest moment. Under ASan a kept block is poisoned: a use after deletion is
// still reported. Make pools static: one that goes away leaks what it kept.
class BlockPool {
public:
    explicit BlockPool(std::size_t blockSize);
    BlockPool(const BlockPool&) = delete;
    BlockPool& operator=(const BlockPool&) = delete;

    void* take();
    void give(void* block);
    void reserve(std::size_t count);  // keeps at least `count` blocks, so that a scene starts without the heap

private:
    std::size_t blockSize;
    // Never destroyed, and outside the blocks (the leak checker does not look into poisoned
    // memory): kept blocks stay reachable to the end.
    std::vector<void*>* const blocks;
};

}  // namespace norvane

#endif
