#include "tools/blockpool.h"

#include <sanitizer/asan_interface.h>

#include <new>

namespace norvane {

BlockPool::BlockPool(std::size_t blockSize) : blockSize(blockSize), blocks(new std::vector<void*>) {}

void* BlockPool::take() {
    if (blocks->empty()) return ::operator new(blockSize);
    void* block = blocks->back();
    blocks->pop_back();
    ASAN_UNPOISON_MEMORY_REGION(block, blockSize);
    return block;
}

void BlockPool::give(void* block) {
    if (!block) return;
    blocks->push_back(block);
    ASAN_POISON_MEMORY_REGION(block, blockSize);
}

void BlockPool::reserve(std::size_t count) {
    blocks->reserve(count);
    while (blocks->size() < count) give(::operator new(blockSize));
}

}  // namespace norvane
