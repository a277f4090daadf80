#include <gtest/gtest.h>

#include "tools/blockpool.h"

TEST(BlockPool, HandsOutKeptBlocksBeforeAskingTheHeap) {
    static norvane::BlockPool pool(32);  // pools live to the end, as the program's do
    void* a = pool.take();
    void* b = pool.take();
    EXPECT_NE(a, b);
    pool.give(a);
    pool.give(b);
    EXPECT_EQ(pool.take(), b);
    EXPECT_EQ(pool.take(), a);
    pool.give(nullptr);  // as delete of a null pointer does
    void* c = pool.take();
    EXPECT_NE(c, a);
    EXPECT_NE(c, b);
    for (void* block : {a, b, c}) pool.give(block);

    pool.reserve(5);  // the three kept, and two more
    void* taken[5];
    for (void*& block : taken) block = pool.take();
    EXPECT_EQ(taken[2], c);
    EXPECT_EQ(taken[4], a);
    for (void* block : taken) pool.give(block);
}
