// The allocator's per-thread block cache: every block it hands out, fresh or
// kept from an earlier free, has room for the whole request.
#include <gtest/gtest.h>

#include <malloc.h>

#include <cstdint>
#include <cstring>

#include "gvlib/platform/allocator.h"

namespace {

using gvplatform::detail::MemAlloc;
using gvplatform::detail::MemFreeSized;

// Freed sizes are taken back by requests of other sizes in the same class, so
// a block kept for one size must hold every size that draws on it.
TEST(Allocator, CachedBlocksHoldEveryRequestOfTheirClass) {
    for (size_t size = 1; size <= 4200; ++size) {
        for (size_t other : {size, size + 1, size + 7, size + 15}) {
            void* block = MemAlloc(size);
            ASSERT_NE(nullptr, block);
            MemFreeSized(block, size);
            void* again = MemAlloc(other);
            ASSERT_NE(nullptr, again);
            ASSERT_GE(malloc_usable_size(again), other) << size << " then " << other;
            std::memset(again, 0xA5, other);
            MemFreeSized(again, other);
        }
    }
}

// A class keeps only a couple of freed blocks: the rest go back to the C
// library, or a program that frees many would keep them all.
TEST(Allocator, AFullClassGivesFurtherBlocksBack) {
    constexpr size_t kSize = 3000;
    void* first[3] = {MemAlloc(kSize), MemAlloc(kSize), MemAlloc(kSize)};
    for (void* block : first)
        MemFreeSized(block, kSize);  // the class is full, whatever it held before
    auto inUse = [] { return static_cast<int64_t>(mallinfo2().uordblks); };
    const int64_t empty = inUse();
    void* taken[8];
    for (void*& block : taken)
        block = MemAlloc(kSize);
    const int64_t before = inUse();
    for (void* block : taken)
        MemFreeSized(block, kSize);
    // Of the eight, all but the kept ones came from the C library.
    if (before - empty < 6 * static_cast<int64_t>(kSize))
        GTEST_SKIP() << "the C library's heap is not the one in use (a sanitiser or checker replaced it)";
    EXPECT_GE(before - inUse(), 6 * static_cast<int64_t>(kSize));
}

}  // namespace
