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

size_t CountOf(char kind) {
    return static_cast<size_t>(
        std::count_if(g_calls.begin(), g_calls.end(), [kind](std::string const& c) { return c[0] == kind; }));
}

std::vector<std::string> Swaps() {
    std::vector<std::string> out;
    for (auto const& c : g_calls)
        if (c[0] == 's')
            out.push_back(c);
    return out;
}

void Sort(std::vector<int32_t> values) {
    g_values = std::move(values);
    g_calls.clear();
    qsortplusplus(static_cast<uint32_t>(g_values.size()), LoggedSwap, LoggedCompare);
}

// A plain recursive transcription of the sort, as the reference for the call
// sequence of the library's bounded-stack version.
namespace reference {
std::vector<std::string> calls;
std::vector<int32_t> values;
int32_t Cmp(uint32_t i, uint32_t j) {
    calls.push_back("c" + std::to_string(i) + "," + std::to_string(j));
    return values[i] < values[j] ? -1 : (values[i] > values[j] ? 1 : 0);
}
void Swp(uint32_t i, uint32_t j) {
    calls.push_back("s" + std::to_string(i) + "," + std::to_string(j));
    std::swap(values[i], values[j]);
}
void Range(uint32_t lo, uint32_t hi) { gvtest::ReferenceRange(lo, hi, Cmp, Swp); }
}  // namespace reference

}  // namespace

TEST(QSortPlusPlus, CallCountsOfTheEdgeCases) {
    std::vector<int32_t> desc12, asc12, desc11;
    for (int32_t v = 12; v >= 1; --v) desc12.push_back(v);
    for (int32_t v = 1; v <= 12; ++v) asc12.push_back(v);
    for (int32_t v = 11; v >= 1; --v) desc11.push_back(v);
    struct Row {
        const char* name;
        std::vector<int32_t> input;
        size_t compares;
        size_t swaps;
    } rows[] = {
        {"12 descending", desc12, 47, 6},
        {"12 ascending", asc12, 43, 0},
        {"12 equal", std::vector<int32_t>(12, 7), 48, 9},
        {"11 descending", desc11, 55, 55},
    };
    for (auto const& row : rows) {
        SCOPED_TRACE(row.name);
        Sort(row.input);
        EXPECT_EQ(row.compares, CountOf('c'));
        EXPECT_EQ(row.swaps, CountOf('s'));
        EXPECT_TRUE(std::is_sorted(g_values.begin(), g_values.end()));
    }
    Sort(desc12);
    EXPECT_EQ((std::vector<std::string>{"s0,11", "s1,10", "s2,9", "s3,8", "s4,7", "s5,6"}), Swaps());
}

TEST(QSortPlusPlus, WorkedExampleAndTrivialCounts) {
    Sort({3, 1, 2});
    EXPECT_EQ((std::vector<std::string>{"c0,1", "s0,1", "c1,2", "s1,2", "c0,1"}), g_calls);
    Sort({});
    EXPECT_TRUE(g_calls.empty());
    Sort({5});
    EXPECT_TRUE(g_calls.empty());
}

TEST(QSortPlusPlus, EmptySortKeepsTheStoredCallbacks) {
    Sort({2, 1});
    qsortplusplus(0, nullptr, nullptr);
    EXPECT_EQ(&LoggedSwap, GVGetSortSwapProc());
    EXPECT_EQ(&LoggedCompare, GVGetSortCompareProc());
}

TEST(QSortPlusPlus, SequenceMatchesTheRecursiveSort) {
    std::mt19937 rng(4);
    for (int round = 0; round < 300; ++round) {
        size_t n = 1 + rng() % 300;
        int32_t spread = 1 + static_cast<int32_t>(rng() % 50);  // small spreads give runs of equal values
        std::vector<int32_t> input(n);
        for (auto& v : input)
            v = static_cast<int32_t>(rng() % static_cast<uint32_t>(spread));
        SCOPED_TRACE(testing::Message() << "round " << round << " n " << n);
        reference::values = input;
        reference::calls.clear();
        reference::Range(0, static_cast<uint32_t>(n - 1));
        Sort(input);
        ASSERT_EQ(reference::calls, g_calls);
        EXPECT_TRUE(std::is_sorted(g_values.begin(), g_values.end()));
    }
}

TEST(QSortPlusPlus, SortsOrderedReversedAndEqualInputs) {
    for (uint32_t n = 1; n <= 1000; n += (n < 40 ? 1 : 37)) {
        SCOPED_TRACE(n);
        std::vector<int32_t> up(n), down(n);
        for (uint32_t k = 0; k < n; ++k) {
            up[k] = static_cast<int32_t>(k);
            down[k] = static_cast<int32_t>(n - k);
        }
        for (auto const& input : {up, down, std::vector<int32_t>(n, 3)}) {
            Sort(input);
            EXPECT_TRUE(std::is_sorted(g_values.begin(), g_values.end()));
        }
    }
}
