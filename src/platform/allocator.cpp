// The library's allocator: the malloc family behind one gate that test builds
// can close on a chosen call.
#include "gvlib/platform/allocator.h"

#include <cstdlib>

#ifdef GVLIB_FAULT_INJECTION
#include <atomic>

#include "platform/fault_injection.h"

namespace {

// Allocations left before the armed failure; 0 when nothing is armed. Relaxed:
// arming and failing happen on the test's own thread.
std::atomic<int32_t> g_countdown{0};
std::atomic<bool> g_fired{false};

bool AllocationFails() noexcept {
    int32_t left = g_countdown.load(std::memory_order_relaxed);
    while (left > 0) {
        if (g_countdown.compare_exchange_weak(left, left - 1, std::memory_order_relaxed)) {
            if (left != 1)
                return false;
            g_fired.store(true, std::memory_order_relaxed);
            return true;
        }
    }
    return false;
}

}  // namespace

namespace gvplatform::faults {

void FailAllocation(int32_t nth) noexcept {
    g_fired.store(false, std::memory_order_relaxed);
    g_countdown.store(nth > 0 ? nth : 0, std::memory_order_relaxed);
}

bool AllocationFailureFired() noexcept { return g_fired.load(std::memory_order_relaxed); }

}  // namespace gvplatform::faults
#else
namespace {
constexpr bool AllocationFails() noexcept { return false; }
}  // namespace
#endif

namespace gvplatform::detail {

void* MemAlloc(std::size_t bytes) noexcept { return AllocationFails() ? nullptr : std::malloc(bytes); }

void* MemCalloc(std::size_t count, std::size_t size) noexcept {
    return AllocationFails() ? nullptr : std::calloc(count, size);
}

void* MemRealloc(void* block, std::size_t bytes) noexcept {
    return AllocationFails() ? nullptr : std::realloc(block, bytes);
}

void MemFree(void* block) noexcept { std::free(block); }

}  // namespace gvplatform::detail
