// qsortplusplus on the input that makes every partition as unbalanced as it can
// be, running on a thread with a small stack.
#include <gtest/gtest.h>
#include <pthread.h>

#include <algorithm>
#include <cstdint>
#include <numeric>
#include <vector>

#include "gvlib/array/GVSort.h"

namespace {

std::vector<int32_t> g_values;
uint64_t g_compares = 0;

int32_t CountedCompare(uint32_t i, uint32_t j) {
    ++g_compares;
    return g_values[i] < g_values[j] ? -1 : (g_values[i] > g_values[j] ? 1 : 0);
}

void PlainSwap(uint32_t i, uint32_t j) { std::swap(g_values[i], g_values[j]); }

// Replays the partitions backwards: in every range (0, hi) the middle element is
// the largest, the partition moves it to hi and hands (0, hi - 1) on.
std::vector<int32_t> MiddleIsLargest(uint32_t n) {
    std::vector<uint32_t> at(n);  // at[k]: which input element stands at position k
    std::iota(at.begin(), at.end(), 0u);
    std::vector<int32_t> values(n);
    uint32_t hi = n - 1;
    for (; hi > 10; --hi) {
        values[at[hi / 2]] = static_cast<int32_t>(hi);
        std::swap(at[hi / 2], at[hi]);
    }
    for (uint32_t k = 0; k <= hi; ++k)
        values[at[k]] = static_cast<int32_t>(hi - k);
    return values;
}

void* SortOnThread(void*) {
    qsortplusplus(static_cast<uint32_t>(g_values.size()), PlainSwap, CountedCompare);
    return nullptr;
}

}  // namespace

TEST(QSortPlusPlusDeep, QuadraticInputOnA256KiBStack) {
    constexpr uint32_t kCount = 50000;
    g_values = MiddleIsLargest(kCount);
    g_compares = 0;

    pthread_attr_t attr;
    ASSERT_EQ(0, pthread_attr_init(&attr));
    ASSERT_EQ(0, pthread_attr_setstacksize(&attr, 256 * 1024));
    pthread_t thread;
    ASSERT_EQ(0, pthread_create(&thread, &attr, SortOnThread, nullptr));
    ASSERT_EQ(0, pthread_join(thread, nullptr));
    pthread_attr_destroy(&attr);

    EXPECT_TRUE(std::is_sorted(g_values.begin(), g_values.end()));
    // The input really is the worst case: every partition peeled one element off.
    EXPECT_GT(g_compares, uint64_t{kCount} * kCount / 4);
}
