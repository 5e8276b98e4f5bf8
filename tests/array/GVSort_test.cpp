// qsortplusplus: the exact callback sequence, the sorted results, and the most unbalanced input on a small stack.
#include <gtest/gtest.h>
#include <pthread.h>

#include <algorithm>
#include <cstdint>
#include <numeric>
#include <random>
#include <string>
#include <vector>

#include "gvlib/array/GVSort.h"
#include "support/reference_sort.h"

namespace {

// The values the callbacks address, and every call made, in order, while logging.
std::vector<int32_t> g_values;
std::vector<std::string> g_calls;
bool g_log = true;
uint64_t g_compares = 0;

int32_t Compare(uint32_t i, uint32_t j) {
    ++g_compares;
    if (g_log) {
        g_calls.push_back("c" + std::to_string(i) + "," + std::to_string(j));
        g_values.at(std::max(i, j));  // an index past the end throws
    }
    return g_values[i] < g_values[j] ? -1 : (g_values[i] > g_values[j] ? 1 : 0);
}

void Swap(uint32_t i, uint32_t j) {
    if (g_log)
        g_calls.push_back("s" + std::to_string(i) + "," + std::to_string(j));
    std::swap(g_values.at(i), g_values.at(j));
}

void* Sort(void* values = nullptr) {
    if (values)
        g_values = *static_cast<std::vector<int32_t>*>(values);
    g_calls.clear();
    g_compares = 0;
    qsortplusplus(static_cast<uint32_t>(g_values.size()), Swap, Compare);
    return nullptr;
}

// Replays the partitions backwards: in every range (0, hi) the middle element is the largest, moved to hi.
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

}  // namespace

TEST(QSortPlusPlus, WorkedExampleAndEmptySorts) {
    std::vector<int32_t> input = {3, 1, 2};
    Sort(&input);
    EXPECT_EQ((std::vector<std::string>{"c0,1", "s0,1", "c1,2", "s1,2", "c0,1"}), g_calls);
    for (std::vector<int32_t> few : {std::vector<int32_t>{}, std::vector<int32_t>{5}})
        EXPECT_EQ(0u, (Sort(&few), g_calls.size()));
    qsortplusplus(0, nullptr, nullptr);  // an empty sort keeps the stored callbacks
    EXPECT_EQ(&Swap, GVGetSortSwapProc());
    EXPECT_EQ(&Compare, GVGetSortCompareProc());
}

// Call for call against the plain recursive sort: random values (with runs of equal ones), ordered, reversed, equal.
TEST(QSortPlusPlus, SequenceMatchesTheRecursiveSort) {
    std::mt19937 rng(4);
    std::vector<std::vector<int32_t>> inputs(300);
    for (auto& input : inputs) {
        input.resize(1 + rng() % 300);
        const uint32_t spread = 1 + rng() % 50;
        for (auto& v : input)
            v = static_cast<int32_t>(rng() % spread);
    }
    for (uint32_t n = 1; n <= 1000; n += (n < 40 ? 1 : 37)) {
        std::vector<int32_t> up(n);
        std::iota(up.begin(), up.end(), 0);
        inputs.insert(inputs.end(), {up, std::vector<int32_t>(up.rbegin(), up.rend()), std::vector<int32_t>(n, 3)});
    }
    for (auto& input : inputs) {
        SCOPED_TRACE(testing::Message() << "input " << &input - inputs.data() << " n " << input.size());
        g_values = input;
        g_calls.clear();
        gvtest::ReferenceRange(0, static_cast<uint32_t>(input.size() - 1), Compare, Swap);
        const std::vector<std::string> want = g_calls;
        Sort(&input);
        ASSERT_EQ(want, g_calls);
        ASSERT_TRUE(std::is_sorted(g_values.begin(), g_values.end()));
    }
}

TEST(QSortPlusPlusDeep, QuadraticInputOnA256KiBStack) {
    constexpr uint32_t kCount = 50000;
    g_values = MiddleIsLargest(kCount);
    g_log = false;
    pthread_attr_t attr;
    pthread_t thread;
    ASSERT_FALSE(pthread_attr_init(&attr) || pthread_attr_setstacksize(&attr, 256 * 1024) ||
                 pthread_create(&thread, &attr, Sort, nullptr) || pthread_join(thread, nullptr));
    pthread_attr_destroy(&attr);
    g_log = true;
    EXPECT_TRUE(std::is_sorted(g_values.begin(), g_values.end()));
    // The input really is the worst case: every partition peeled one element off.
    EXPECT_GT(g_compares, uint64_t{kCount} * kCount / 4);
}
