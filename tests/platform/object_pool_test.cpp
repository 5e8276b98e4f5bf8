// The value-object pool: blocks never overlap, come back in any order and from
// any thread, and the slabs go back to the C library when emptied.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <random>
#include <thread>
#include <vector>

#include "gvlib/platform/allocator.h"

namespace {

using gvplatform::detail::ObjectAlloc;
using gvplatform::detail::ObjectFree;
using gvplatform::detail::ObjectPoolBytes;

// Each block holds its own index in every byte it owns.
std::vector<void*> Fill(size_t count, size_t bytes) {
    std::vector<void*> blocks(count);
    for (size_t i = 0; i < count; ++i) {
        blocks[i] = ObjectAlloc(bytes);
        EXPECT_NE(nullptr, blocks[i]);
        std::memset(blocks[i], static_cast<int>(i & 0xFF), bytes);
    }
    return blocks;
}

void ExpectIntact(std::vector<void*> const& blocks, size_t bytes) {
    for (size_t i = 0; i < blocks.size(); ++i)
        for (size_t k = 0; k < bytes; ++k)
            ASSERT_EQ(static_cast<unsigned char>(i & 0xFF), static_cast<unsigned char*>(blocks[i])[k]) << i;
}

TEST(ObjectPool, BlocksOfEverySizeStayApartAndComeBackInAnyOrder) {
    std::mt19937 random(7);
    for (size_t bytes : {1u, 8u, 16u, 17u, 24u}) {
        std::vector<void*> blocks = Fill(20000, bytes);
        ExpectIntact(blocks, bytes);
        std::shuffle(blocks.begin(), blocks.end(), random);
        for (size_t i = 0; i < blocks.size(); i += 2)
            ObjectFree(blocks[i], bytes);
        std::vector<void*> kept;
        for (size_t i = 1; i < blocks.size(); i += 2)
            kept.push_back(blocks[i]);
        for (size_t i = 0; i < kept.size(); ++i)
            std::memset(kept[i], static_cast<int>(i & 0xFF), bytes);
        std::vector<void*> more = Fill(10000, bytes);
        ExpectIntact(kept, bytes);
        ExpectIntact(more, bytes);
        for (void* block : kept)
            ObjectFree(block, bytes);
        for (void* block : more)
            ObjectFree(block, bytes);
    }
}

TEST(ObjectPool, EmptiedSlabsGoBack) {
#if defined(__SANITIZE_ADDRESS__)
    GTEST_SKIP() << "objects go to the address sanitiser one by one";
#endif
    for (int round = 0; round < 3; ++round) {
        std::vector<void*> blocks = Fill(100000, 16);
        const size_t held = ObjectPoolBytes();
        EXPECT_GE(held, 100000u * 16);
        EXPECT_LE(held, 100000u * 16 + 256u * 1024) << "round " << round;  // one slab part used
        for (void* block : blocks)
            ObjectFree(block, 16);
        // The one slab with room that is kept, and the one that holds the
        // few cells the thread keeps for its next requests.
        EXPECT_LE(ObjectPoolBytes(), 2 * 256u * 1024) << "round " << round;
    }
}

// Blocks made on one thread and given back on another while both keep
// allocating; the thread sanitiser build checks the pool's locking.
TEST(ObjectPool, BlocksCrossThreads) {
    std::vector<void*> made = Fill(20000, 16);
    std::thread other([&made] {
        for (void* block : made)
            ObjectFree(block, 16);
        std::vector<void*> own = Fill(20000, 16);
        ExpectIntact(own, 16);
        for (void* block : own)
            ObjectFree(block, 16);
    });
    std::vector<void*> mine = Fill(20000, 16);
    ExpectIntact(mine, 16);
    other.join();
    for (void* block : mine)
        ObjectFree(block, 16);
}

}  // namespace
