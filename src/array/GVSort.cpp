// qsortplusplus: the range sort, small sort and partition over index callbacks.
#include <cstddef>
#include <vector>

#include "array/sort_state.h"
#include "gvlib/array/GVSort.h"

namespace {

using gvlib::detail::g_sortState;

// The steps call through the module-wide slots, not through copies, so that a
// sort started from inside a callback replaces the callbacks of the outer one.
inline int32_t Compare(uint32_t i, uint32_t j) { return g_sortState.compare(i, j); }
inline void Swap(uint32_t i, uint32_t j) { g_sortState.swap(i, j); }

// Exchange sort with a shrinking upper end; passes never stop early.
void SmallSort(uint32_t lo, uint32_t hi) {
    while (lo < hi) {
        for (uint32_t i = lo; i < hi; ++i) {
            if (Compare(i, i + 1) > 0)
                Swap(i, i + 1);
        }
        --hi;
    }
}

// Index arithmetic is 32-bit unsigned; i = lo - 1 and j = hi + 1 may wrap, but
// both move before they are used.
uint32_t Partition(uint32_t lo, uint32_t hi) {
    uint32_t p = (lo + hi) >> 1;
    uint32_t i = lo - 1;
    uint32_t j = hi + 1;
    for (;;) {
        do
            --j;
        while (Compare(j, p) > 0);
        do
            ++i;
        while (Compare(i, p) < 0);
        if (i >= j)
            break;
        if (i > p)
            p = i;
        if (j < p)
            p = j;
        Swap(i, j);
        // The pivot element moved: follow it, and look again at the place it left.
        if (i == p) {
            p = j;
            ++j;
        } else if (j == p) {
            p = i;
            --i;
        }
    }
    return p == hi ? p - 1 : p;
}

// The ranges still to do. The sort recurses into the left part of every
// partition and loops over the right part; an input that keeps the pivot at the
// end of each range would recurse as deep as it is long. Instead, the loop that
// would resume after the recursion is kept here as a pending range, and the
// stack is only touched for ranges of two or more elements. Most inputs stay
// within the fixed part; the rest spills to the heap.
class PendingRanges {
public:
    bool Empty() const { return m_size == 0; }
    void Push(uint32_t lo, uint32_t hi) {
        if (m_size < kFixed) {
            m_fixed[m_size] = {lo, hi};
        } else {
            m_spill.push_back({lo, hi});
        }
        ++m_size;
    }
    void Pop(uint32_t& lo, uint32_t& hi) {
        --m_size;
        Range r;
        if (m_size < kFixed) {
            r = m_fixed[m_size];
        } else {
            r = m_spill.back();
            m_spill.pop_back();
        }
        lo = r.lo;
        hi = r.hi;
    }

private:
    struct Range {
        uint32_t lo, hi;
    };
    static constexpr size_t kFixed = 64;
    Range m_fixed[kFixed];
    std::vector<Range> m_spill;
    size_t m_size = 0;
};

// Range sort (lo, hi): small ranges go to the small sort; larger ones are
// partitioned, the left part sorted first, then the right part partitioned again
// without the small-range test, until lo reaches hi.
void RangeSort(uint32_t lo, uint32_t hi) {
    PendingRanges pending;
    for (;;) {
        // A fresh range sort call on (lo, hi).
        if (hi - lo <= 10) {
            SmallSort(lo, hi);
        } else if (lo < hi) {
            uint32_t p = Partition(lo, hi);
            if (p + 1 < hi)
                pending.Push(p + 1, hi);
            hi = p;
            continue;
        }
        // Back in the loop of the innermost range whose left part is done.
        if (pending.Empty())
            return;
        pending.Pop(lo, hi);
        uint32_t p = Partition(lo, hi);
        if (p + 1 < hi)
            pending.Push(p + 1, hi);
        hi = p;
    }
}

}  // namespace

void qsortplusplus(uint32_t count, GVSWAPPROC swap, GVCOMPAREPROC compare) {
    if (count == 0)
        return;
    g_sortState.swap = swap;
    g_sortState.compare = compare;
    RangeSort(0, count - 1);
}
