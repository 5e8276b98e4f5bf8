// A plain recursive transcription of the index sort's range sort, small sort and
// partition: the reference for the call sequence of the library's bounded-stack
// version (in the tests) and the floor for its speed (in the benchmarks).
#pragma once

#include <cstdint>

namespace gvtest {

template <typename Compare, typename Swap>
class ReferenceSort {
public:
    ReferenceSort(Compare compare, Swap swap) : compare_(compare), swap_(swap) {}

    void Range(uint32_t lo, uint32_t hi) {
        if (hi - lo <= 10) {
            Small(lo, hi);
            return;
        }
        if (lo >= hi)
            return;
        do {
            uint32_t p = Partition(lo, hi);
            Range(lo, p);
            lo = p + 1;
        } while (lo < hi);
    }

private:
    void Small(uint32_t lo, uint32_t hi) {
        for (; lo < hi; --hi)
            for (uint32_t i = lo; i < hi; ++i)
                if (compare_(i, i + 1) > 0)
                    swap_(i, i + 1);
    }

    uint32_t Partition(uint32_t lo, uint32_t hi) {
        uint32_t p = (lo + hi) >> 1, i = lo - 1, j = hi + 1;
        for (;;) {
            do
                --j;
            while (compare_(j, p) > 0);
            do
                ++i;
            while (compare_(i, p) < 0);
            if (i >= j)
                break;
            if (i > p)
                p = i;
            if (j < p)
                p = j;
            swap_(i, j);
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

    Compare compare_;
    Swap swap_;
};

template <typename Compare, typename Swap>
void ReferenceRange(uint32_t lo, uint32_t hi, Compare compare, Swap swap) {
    ReferenceSort<Compare, Swap>(compare, swap).Range(lo, hi);
}

}  // namespace gvtest
