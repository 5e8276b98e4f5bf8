// Value objects of up to 16 bytes (a string or a path is a table pointer and
// a text pointer; a date or a long a table pointer and a 32-bit value) are
// the library's most numerous blocks: a loaded array of a million strings
// holds a million of them. The C library gives each a 32-byte chunk; here
// they are cut from slabs with no header of their own, so each costs its 16
// bytes. A slab whose last object goes is given back, unless it is the only
// one with room. Slabs are mapped from the system at their own alignment:
// the C library's aligned allocation of a block this size would map twice
// the size and keep it all.
#include "gvlib/platform/allocator.h"

#include <sys/mman.h>

#include <atomic>
#include <cstdlib>
#include <cstdint>
#include <mutex>
#include <type_traits>

#include "platform/heap_policy.h"
#include "platform/one_thread.h"

namespace {

// The address sanitiser must see every object come and go to report a use
// after free; the thread sanitiser sees the pool's lock and so its reuse.
constexpr bool kPooling = !gvplatform::detail::kAddressSanitised;

constexpr std::size_t kCell = 16;
constexpr std::size_t kSlabBytes = 256 * 1024;
constexpr uint32_t kCells = kSlabBytes / kCell;

// The head of every slab, in its first cells; a cell finds its slab by
// rounding its address down to the slab size.
struct Slab {
    Slab* prev;
    Slab* next;
    void* freed;     // cells given back, linked through their first word
    uint32_t used;   // cells handed out and not given back
    uint32_t fresh;  // the first cell never handed out
};
constexpr uint32_t kFirstCell = (sizeof(Slab) + kCell - 1) / kCell;

struct SlabList {
    Slab* head = nullptr;

    void Add(Slab* s) noexcept {
        s->prev = nullptr;
        s->next = head;
        if (head != nullptr)
            head->prev = s;
        head = s;
    }
    void Remove(Slab* s) noexcept {
        (s->prev != nullptr ? s->prev->next : head) = s->next;
        if (s->next != nullptr)
            s->next->prev = s->prev;
    }
};

bool IsFull(Slab const* s) noexcept { return s->freed == nullptr && s->fresh == kCells; }

// Slabs with room, and full ones: every slab stays reachable from the pool.
struct Pool {
    std::mutex lock;
    SlabList open;
    SlabList full;
};

// Constant-initialised and with nothing to destroy: objects in static
// storage may come and go before and after every constructor and destructor
// of this library has run.
Pool g_pool;
static_assert(std::is_trivially_destructible_v<Pool>);

using gvplatform::detail::OneThread;

// While the process has one thread nobody else can reach the pool.
class PoolLock {
public:
    explicit PoolLock(std::mutex& m) : m_(OneThread() ? nullptr : &m) {
        if (m_ != nullptr)
            m_->lock();
    }
    ~PoolLock() {
        if (m_ != nullptr)
            m_->unlock();
    }
    PoolLock(PoolLock const&) = delete;
    PoolLock& operator=(PoolLock const&) = delete;

private:
    std::mutex* m_;
};

// Bytes of slabs mapped now, for the figures of a memory measurement.
std::atomic<std::size_t> g_mapped{0};

// Twice the size is mapped and all but the aligned middle given back.
Slab* NewSlab() noexcept {
    void* raw = mmap(nullptr, 2 * kSlabBytes, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (raw == MAP_FAILED)
        return nullptr;
    const uintptr_t at = reinterpret_cast<uintptr_t>(raw);
    const uintptr_t start = (at + kSlabBytes - 1) & ~(uintptr_t{kSlabBytes} - 1);
    if (start > at)
        munmap(raw, start - at);
    if (const std::size_t tail = kSlabBytes - (start - at); tail > 0)
        munmap(reinterpret_cast<void*>(start + kSlabBytes), tail);
    g_mapped.fetch_add(kSlabBytes, std::memory_order_relaxed);
    auto* s = reinterpret_cast<Slab*>(start);
    s->freed = nullptr;
    s->used = 0;
    s->fresh = kFirstCell;
    return s;
}

void* Take(Pool& pool) noexcept {
    Slab* s = pool.open.head;
    if (s == nullptr) {
        if ((s = NewSlab()) == nullptr)
            return nullptr;
        pool.open.Add(s);
    }
    void* cell;
    if (s->freed != nullptr) {
        cell = s->freed;
        s->freed = *static_cast<void**>(cell);
    } else {
        cell = reinterpret_cast<char*>(s) + std::size_t{s->fresh++} * kCell;
    }
    ++s->used;
    if (IsFull(s)) {
        pool.open.Remove(s);
        pool.full.Add(s);
    }
    return cell;
}

void Give(Pool& pool, void* cell) noexcept {
    auto* s = reinterpret_cast<Slab*>(reinterpret_cast<uintptr_t>(cell) & ~(uintptr_t{kSlabBytes} - 1));
    if (IsFull(s)) {
        pool.full.Remove(s);
        pool.open.Add(s);
    }
    *static_cast<void**>(cell) = s->freed;
    s->freed = cell;
    if (--s->used == 0 && (pool.open.head != s || s->next != nullptr)) {
        pool.open.Remove(s);
        munmap(s, kSlabBytes);
        g_mapped.fetch_sub(kSlabBytes, std::memory_order_relaxed);
    }
}

bool Pooled(std::size_t bytes) noexcept { return kPooling && bytes <= kCell; }

// Most objects die soon after they are made (every binary operator returns a
// new one), so each thread keeps a few freed cells for its next requests and
// reaches the pool only when it has none or too many. The cells go back to
// the pool when the thread ends; frees that come after that (other
// thread-local or static destructors) go straight to the pool.
constexpr unsigned kKept = 32;
struct KeptCells {
    void* cells[kKept];
    unsigned count;
};
// A plain pointer in static TLS: one load per call, and little of the static
// TLS reserve that a library loaded late must fit in.
thread_local KeptCells* t_kept __attribute__((tls_model("initial-exec"))) = nullptr;
thread_local bool t_keptEnded __attribute__((tls_model("initial-exec"))) = false;

struct KeptOwner {
    ~KeptOwner() {
        KeptCells* kept = t_kept;
        t_kept = nullptr;
        t_keptEnded = true;
        if (kept == nullptr)
            return;
        {
            PoolLock hold(g_pool.lock);
            while (kept->count > 0)
                Give(g_pool, kept->cells[--kept->count]);
        }
        std::free(kept);
    }
};
thread_local KeptOwner t_keptOwner;

// True when the thread took `cell`; the first one makes the thread's list
// and registers its return at thread exit.
bool Keep(void* cell) noexcept {
    KeptCells* kept = t_kept;
    if (kept == nullptr) {
        if (t_keptEnded)
            return false;
        (void)&t_keptOwner;
        kept = t_kept = static_cast<KeptCells*>(std::calloc(1, sizeof(KeptCells)));
        if (kept == nullptr)
            return false;
    }
    if (kept->count == kKept)
        return false;
    kept->cells[kept->count++] = cell;
    return true;
}

void* TakeKept() noexcept {
    KeptCells* kept = t_kept;
    return kept != nullptr && kept->count > 0 ? kept->cells[--kept->count] : nullptr;
}

}  // namespace

namespace gvplatform::detail {

void* ObjectAlloc(std::size_t bytes) noexcept {
    if (!Pooled(bytes))
        return MemAlloc(bytes);
    if (AllocationRefused())
        return nullptr;
    if (void* cell = TakeKept())
        return cell;
    PoolLock hold(g_pool.lock);
    return Take(g_pool);
}

void ObjectFree(void* block, std::size_t bytes) noexcept {
    if (block == nullptr)
        return;
    if (!Pooled(bytes)) {
        MemFreeSized(block, bytes);
        return;
    }
    if (Keep(block))
        return;
    PoolLock hold(g_pool.lock);
    Give(g_pool, block);
}

std::size_t ObjectPoolBytes() noexcept { return g_mapped.load(std::memory_order_relaxed); }

}  // namespace gvplatform::detail
