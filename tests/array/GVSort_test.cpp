// qsortplusplus: the exact sequence of callback calls and sorted results.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <random>
#include <string>
#include <vector>

#include "gvlib/array/GVSort.h"
#include "support/reference_sort.h"

namespace {

// The values the callbacks address, and every call made, in order.
std::vector<int32_t> g_values;
std::vector<std::string> g_calls;

int32_t LoggedCompare(uint32_t i, uint32_t j) {
    g_calls.push_back("c" + std::to_string(i) + "," + std::to_string(j));
    return g_values.at(i) < g_values.at(j) ? -1 : (g_values.at(i) > g_values.at(j) ? 1 : 0);
}

void LoggedSwap(uint32_t i, uint32_t j) {
    g_calls.push_back("s" + std::to_string(i) + "," + std::to_string(j));
    std::swap(g_values.at(i), g_values.at(j));
}

std::vector<std::string> Swaps() {
    std::vector<std::string> out;
    std::copy_if(g_calls.begin(), g_calls.end(), std::back_inserter(out), [](auto const& c) { return c[0] == 's'; });
    return out;
}

void Sort(std::vector<int32_t> values) {
    g_values = std::move(values);
    g_calls.clear();
    qsortplusplus(static_cast<uint32_t>(g_values.size()), LoggedSwap, LoggedCompare);
}

std::vector<int32_t> Steps(int32_t from, int32_t step, uint32_t n) {
    std::vector<int32_t> out(n);
    for (auto& v : out)
        v = (from += step) - step;
    return out;
}

}  // namespace

TEST(QSortPlusPlus, CallCountsOfTheEdgeCases) {
    struct Row {
        const char* name;
        std::vector<int32_t> input;
        size_t compares, swaps;
    } const rows[] = {
        {"12 descending", Steps(12, -1, 12), 47, 6},
        {"12 ascending", Steps(1, 1, 12), 43, 0},
        {"12 equal", Steps(7, 0, 12), 48, 9},
        {"11 descending", Steps(11, -1, 11), 55, 55},
        {"empty", {}, 0, 0},
        {"one", {5}, 0, 0},
    };
    for (auto const& row : rows) {
        SCOPED_TRACE(row.name);
        Sort(row.input);
        EXPECT_EQ(row.compares, g_calls.size() - Swaps().size());
        EXPECT_EQ(row.swaps, Swaps().size());
        EXPECT_TRUE(std::is_sorted(g_values.begin(), g_values.end()));
    }
    Sort(Steps(12, -1, 12));
    EXPECT_EQ((std::vector<std::string>{"s0,11", "s1,10", "s2,9", "s3,8", "s4,7", "s5,6"}), Swaps());
    Sort({3, 1, 2});
    EXPECT_EQ((std::vector<std::string>{"c0,1", "s0,1", "c1,2", "s1,2", "c0,1"}), g_calls);
}

TEST(QSortPlusPlus, EmptySortKeepsTheStoredCallbacks) {
    Sort({2, 1});
    qsortplusplus(0, nullptr, nullptr);
    EXPECT_EQ(&LoggedSwap, GVGetSortSwapProc());
    EXPECT_EQ(&LoggedCompare, GVGetSortCompareProc());
}

// Against a plain recursive transcription of the steps, call for call.
TEST(QSortPlusPlus, SequenceMatchesTheRecursiveSort) {
    std::mt19937 rng(4);
    for (int round = 0; round < 300; ++round) {
        size_t n = 1 + rng() % 300;
        uint32_t spread = 1 + rng() % 50;  // small spreads give runs of equal values
        std::vector<int32_t> input(n);
        for (auto& v : input)
            v = static_cast<int32_t>(rng() % spread);
        SCOPED_TRACE(testing::Message() << "round " << round << " n " << n);
        g_values = input;
        g_calls.clear();
        gvtest::ReferenceRange(0, static_cast<uint32_t>(n - 1), LoggedCompare, LoggedSwap);
        const std::vector<std::string> want = g_calls;
        Sort(input);
        ASSERT_EQ(want, g_calls);
        EXPECT_TRUE(std::is_sorted(g_values.begin(), g_values.end()));
    }
}

TEST(QSortPlusPlus, SortsOrderedReversedAndEqualInputs) {
    for (uint32_t n = 1; n <= 1000; n += (n < 40 ? 1 : 37)) {
        SCOPED_TRACE(n);
        for (auto const& input : {Steps(0, 1, n), Steps(static_cast<int32_t>(n), -1, n), Steps(3, 0, n)}) {
            Sort(input);
            EXPECT_TRUE(std::is_sorted(g_values.begin(), g_values.end()));
        }
    }
}
