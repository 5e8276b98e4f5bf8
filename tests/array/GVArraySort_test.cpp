// CGVArray sorting: default callbacks over pointers to value objects, the module
// state around a sort, the static comparisons and the generic search.
#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

#include "gvlib/array/GVArray.h"
#include "gvlib/array/GVLongArray.h"
#include "gvlib/core/GVLong.h"

namespace {

// An array of pointers to the given value objects, after the given number of empty slots.
CGVArray PointersTo(std::vector<CGVLong>& values, int empty = 0) {
    CGVArray a(static_cast<int32_t>(sizeof(void*)), 16);
    for (CGVObject* none = nullptr; empty-- > 0;)
        a.mAdd(&none);
    for (auto& v : values) {
        CGVObject* p = &v;
        a.mAdd(&p);
    }
    return a;
}

template <typename Array, typename Read>
std::vector<int32_t> Items(Array const& a, Read read) {
    std::vector<int32_t> out;
    for (int32_t i = 0; i < a.mGetNumItems(); ++i)
        out.push_back(read(a, i));
    return out;
}

int32_t Pointed(CGVArray const& a, int32_t i) {
    CGVObject* p = nullptr;
    a.mGetArrayItem(&p, i);
    return p ? static_cast<CGVLong*>(p)->mGetValue() : 0;  // 0: an empty slot
}

CGVArray* g_seenDuringSort = nullptr;
int32_t g_directionDuringSort = -1;

}  // namespace

TEST(CGVArraySort, DefaultCallbacksFollowMCompareInEitherDirection) {
    struct Row { SORTORDER order; std::vector<int32_t> want; int32_t direction; } rows[] = {
        {SORT_DESCENDING, {15, 4, 4, 1, -3, 0, 0}, 0},
        {static_cast<SORTORDER>(2), {15, 4, 4, 1, -3, 0, 0}, 0},
        {SORT_ASCENDING, {0, 0, -3, 1, 4, 4, 15}, 1},  // last: later suites find the usual direction
    };
    for (auto const& row : rows) {
        SCOPED_TRACE(row.order);
        std::vector<CGVLong> values = {4, 15, -3, 4, 1};
        CGVArray a = PointersTo(values, 2);  // empty slots sort before any object
        a.mSort(row.order, nullptr, [](uint32_t i, uint32_t j) {
            g_seenDuringSort = GVGetSortArray();
            g_directionDuringSort = GVGetSortDirection();
            EXPECT_EQ(0, CGVArray::mCmpMoney(i, j));
            return CGVArray::mCompareElms(i, j);
        });
        EXPECT_EQ(row.want, Items(a, Pointed));
        EXPECT_EQ(&a, g_seenDuringSort);
        EXPECT_EQ(row.direction, g_directionDuringSort);
        EXPECT_EQ(nullptr, GVGetSortArray());
        EXPECT_EQ(row.direction, GVGetSortDirection());  // kept after the sort
        CGVObject *low = &values[0], *high = &values[1];  // 4 and 15: the array sorted pointers only
        EXPECT_EQ(row.direction ? -1 : 1, CGVArray::mComparison(&low, &high));
    }
    EXPECT_EQ(0, CGVArray::mCompareElms(0, 1));  // no sort running
}

TEST(CGVArraySort, IntegerArrayWithCallerCallbacks) {
    CGVLongArray a;
    for (int32_t v : {5, -2, 9, 0, 5, 3, 8, 1, 7, 6, 4, 2, -7})
        a.mAdd(&v);
    const auto read = [](CGVLongArray const& array, int32_t i) { return array[i]; };
    // A caller's callbacks for an integer array, reaching it through the sort state.
    a.mSort(SORT_ASCENDING, [](uint32_t i, uint32_t j) { GVGetSortArray()->mSwap(i, j); },
            [](uint32_t i, uint32_t j) {
                auto& array = *static_cast<CGVLongArray*>(GVGetSortArray());
                return array[static_cast<int32_t>(i)] - array[static_cast<int32_t>(j)];
            });
    const std::vector<int32_t> sorted = Items(a, read);
    EXPECT_EQ((std::vector<int32_t>{-7, -2, 0, 1, 2, 3, 4, 5, 5, 6, 7, 8, 9}), sorted);
    // The default compare reads no pointers out of 4-byte elements: every pair is
    // equal, so the sort only exchanges equal-ranked items among themselves.
    a.mSort(SORT_ASCENDING);
    std::vector<int32_t> after = Items(a, read);
    std::sort(after.begin(), after.end());
    EXPECT_EQ(sorted, after);
}

TEST(CGVArraySort, GenericSearch) {
    std::vector<CGVLong> values = {1, 2, 3};
    CGVArray a = PointersTo(values), empty(8, 16);
    EXPECT_EQ(1, a.mSearch(&values[1]));
    EXPECT_EQ(-1, a.mSearch(nullptr));
    static int calls = 0;
    const auto never = [](void const*, void const*) { return ++calls, 1; };
    EXPECT_EQ(-1, a.mSearch(&values[0], never));
    EXPECT_EQ(-1, empty.mSearch(nullptr, never));
    EXPECT_EQ(3, calls);
    CGVObject* key = &values[2];
    EXPECT_EQ(2, a.mSearch(&key, CGVArray::mComparison));
    CGVLongArray longs;
    int32_t minus = -1;
    longs.mAdd(&minus);
    EXPECT_EQ(0, longs.CGVArray::mSearch(reinterpret_cast<void const*>(intptr_t{-1})));
}
