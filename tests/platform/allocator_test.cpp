// The allocator's per-thread block cache: every block it hands out, fresh or
// kept from an earlier free, has room for the whole request.
#include <gtest/gtest.h>

#include <malloc.h>

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

}  // namespace
