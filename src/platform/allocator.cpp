// The library's allocator: the malloc family behind one gate that test builds
// can close on a chosen call.
#include "gvlib/platform/allocator.h"

#include "platform/heap_policy.h"

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

namespace {

// Two kinds of block dominate the library's traffic: small ones (value
// objects, short texts), made and freed in pairs by every operator that
// returns a new object, and texts of about a kilobyte, which with their header
// and terminator land just past the 1032 bytes that glibc's own per-thread
// cache keeps; a bigger block goes back to the arena on every free and is
// searched for again on the next request, which costs several times the copy
// of a kilobyte. Blocks whose owner tells their size on freeing (MemFreeSized)
// are kept per thread for the next request of their class. Requests of both
// kinds are rounded up to their class so that every block of a class serves
// every request of it.
// The sanitisers keep their own account of every block, so with them each
// allocation reaches the C library unrounded.
constexpr bool kCaching = !gvplatform::detail::kAddressSanitised && !gvplatform::detail::kThreadSanitised;

// Small classes match glibc's chunk sizes (usable 24, 40, 56 and 72 bytes), so
// rounding a request up to its class costs no memory there.
constexpr std::size_t kSmallFirst = 24;
constexpr std::size_t kSmallStep = 16;
constexpr std::size_t kSmallClasses = 4;
constexpr std::size_t kSmallMax = kSmallFirst + kSmallStep * (kSmallClasses - 1);
constexpr std::size_t kSmallDepth = 32;

constexpr std::size_t kFirstUsable = 1048;  // glibc's own cache stops below this
constexpr std::size_t kLargeStep = 16;
constexpr std::size_t kLargeClasses = 192;  // usable sizes up to 4104 bytes
constexpr std::size_t kLargeDepth = 2;

struct BlockCache {
    void* small[kSmallClasses][kSmallDepth];
    void* large[kLargeClasses][kLargeDepth];
    unsigned char smallCount[kSmallClasses];
    unsigned char largeCount[kLargeClasses];
};

// The cache itself is a plain pointer in static TLS: one load per call, where
// a general dynamic variable would cost a call. A thread's cache is made on
// its first eligible free and emptied when the thread ends; frees that come
// after that (other thread-local or static destructors) go straight through.
thread_local BlockCache* t_cache __attribute__((tls_model("initial-exec"))) = nullptr;
thread_local bool t_closed __attribute__((tls_model("initial-exec"))) = false;

struct CacheOwner {
    ~CacheOwner() {
        BlockCache* cache = t_cache;
        t_cache = nullptr;
        t_closed = true;
        if (cache == nullptr)
            return;
        for (std::size_t c = 0; c < kSmallClasses; ++c)
            for (std::size_t i = 0; i < cache->smallCount[c]; ++i)
                std::free(cache->small[c][i]);
        for (std::size_t c = 0; c < kLargeClasses; ++c)
            for (std::size_t i = 0; i < cache->largeCount[c]; ++i)
                std::free(cache->large[c][i]);
        std::free(cache);
    }
};
thread_local CacheOwner t_owner;

BlockCache* Cache() noexcept {
    if (t_cache != nullptr || t_closed)
        return t_cache;
    (void)&t_owner;  // the first use registers the thread-exit cleanup
    t_cache = static_cast<BlockCache*>(std::calloc(1, sizeof(BlockCache)));
    return t_cache;
}

bool IsSmall(std::size_t bytes) noexcept { return kCaching && bytes != 0 && bytes <= kSmallMax; }
std::size_t SmallClass(std::size_t bytes) noexcept {
    return bytes <= kSmallFirst ? 0 : (bytes - kSmallFirst + kSmallStep - 1) / kSmallStep;
}
std::size_t ClassBytes(std::size_t c) noexcept { return kSmallFirst + c * kSmallStep; }

// Large requests are rounded up to the usable size of their class, which is
// what glibc hands out for them anyway; so a freed block's class follows from
// the size its owner tells, with no question to the C library.
constexpr std::size_t kLargeMax = kFirstUsable + kLargeStep * (kLargeClasses - 1);
bool IsLarge(std::size_t bytes) noexcept { return kCaching && bytes > kFirstUsable - kLargeStep && bytes <= kLargeMax; }
std::size_t LargeClass(std::size_t bytes) noexcept {
    return bytes <= kFirstUsable ? 0 : (bytes - kFirstUsable + kLargeStep - 1) / kLargeStep;
}
std::size_t LargeClassBytes(std::size_t c) noexcept { return kFirstUsable + c * kLargeStep; }

std::size_t Rounded(std::size_t bytes) noexcept {
    if (IsSmall(bytes))
        return ClassBytes(SmallClass(bytes));
    return IsLarge(bytes) ? LargeClassBytes(LargeClass(bytes)) : bytes;
}

void* TakeSmall(std::size_t bytes) noexcept {
    BlockCache* cache = t_cache;
    const std::size_t c = SmallClass(bytes);
    if (cache != nullptr && cache->smallCount[c] != 0)
        return cache->small[c][--cache->smallCount[c]];
    return std::malloc(ClassBytes(c));
}

// Both keepers find the thread's cache already made: the first free of a
// thread goes the slow way (FreeSlowly), which makes it.
bool KeepSmall(BlockCache* cache, void* block, std::size_t bytes) noexcept {
    const std::size_t c = SmallClass(bytes);
    if (cache->smallCount[c] == kSmallDepth)
        return false;
    cache->small[c][cache->smallCount[c]++] = block;
    return true;
}

void* TakeLarge(std::size_t bytes) noexcept {
    BlockCache* cache = t_cache;
    const std::size_t c = LargeClass(bytes);
    if (cache != nullptr && cache->largeCount[c] != 0)
        return cache->large[c][--cache->largeCount[c]];
    return std::malloc(LargeClassBytes(c));
}

bool KeepLarge(BlockCache* cache, void* block, std::size_t bytes) noexcept {
    const std::size_t c = LargeClass(bytes);
    if (cache->largeCount[c] == kLargeDepth)
        return false;
    cache->large[c][cache->largeCount[c]++] = block;
    return true;
}

bool Keep(BlockCache* cache, void* block, std::size_t bytes) noexcept {
    return IsSmall(bytes) ? KeepSmall(cache, block, bytes) : IsLarge(bytes) && KeepLarge(cache, block, bytes);
}

// A thread's first free, or a null block: out of line, so that keeping a
// block in a cache that exists saves no registers for the calls made here.
[[gnu::noinline]] void FreeSlowly(void* block, std::size_t bytes) noexcept {
    if (block == nullptr)
        return;
    if (BlockCache* cache = IsSmall(bytes) || IsLarge(bytes) ? Cache() : nullptr)
        if (Keep(cache, block, bytes))
            return;
    std::free(block);
}

}  // namespace

namespace gvplatform::detail {

#ifdef GVLIB_FAULT_INJECTION
bool AllocationRefused() noexcept { return AllocationFails(); }
#endif

void* MemAlloc(std::size_t bytes) noexcept {
    if (AllocationFails())
        return nullptr;
    if (IsSmall(bytes))
        return TakeSmall(bytes);
    if (IsLarge(bytes))
        return TakeLarge(bytes);
    return std::malloc(bytes);
}

void* MemCalloc(std::size_t count, std::size_t size) noexcept {
    return AllocationFails() ? nullptr : std::calloc(count, size);
}

void* MemRealloc(void* block, std::size_t bytes) noexcept {
    return AllocationFails() ? nullptr : std::realloc(block, Rounded(bytes));
}

void MemFree(void* block) noexcept { std::free(block); }

void MemFreeSized(void* block, std::size_t bytes) noexcept {
    BlockCache* cache = t_cache;
    if (cache == nullptr || block == nullptr) {
        FreeSlowly(block, bytes);
        return;
    }
    if (!Keep(cache, block, bytes))
        std::free(block);
}

}  // namespace gvplatform::detail
