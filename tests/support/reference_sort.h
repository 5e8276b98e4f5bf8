// The index sort's range sort, small sort and partition, plainly recursive: the reference for the call
// sequence of the library's bounded-stack version (tests) and the floor for its speed (benchmarks).
#pragma once

#include <cstdint>

namespace gvtest {

template <typename Compare, typename Swap>
uint32_t ReferencePartition(uint32_t lo, uint32_t hi, Compare& compare, Swap& swap) {
    uint32_t p = (lo + hi) >> 1, i = lo - 1, j = hi + 1;
    for (;;) {
        while (compare(--j, p) > 0) {}
        while (compare(++i, p) < 0) {}
        if (i >= j)
            return p == hi ? p - 1 : p;
        if (i > p)
            p = i;
        if (j < p)
            p = j;
        swap(i, j);
        if (i == p)
            p = j++;
        else if (j == p)
            p = i--;
    }
}

template <typename Compare, typename Swap>
void ReferenceRange(uint32_t lo, uint32_t hi, Compare&& compare, Swap&& swap) {
    if (hi - lo <= 10) {  // the small sort: bubble passes over the range
        for (; lo < hi; --hi)
            for (uint32_t i = lo; i < hi; ++i)
                if (compare(i, i + 1) > 0)
                    swap(i, i + 1);
        return;
    }
    if (lo > hi)
        return;
    do {  // the first range is wider than 10, the later ones are partitioned whatever their width
        const uint32_t p = ReferencePartition(lo, hi, compare, swap);
        ReferenceRange(lo, p, compare, swap);
        lo = p + 1;
    } while (lo < hi);
}

}  // namespace gvtest
