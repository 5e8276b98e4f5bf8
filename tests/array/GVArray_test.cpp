// CGVArray: shape, growth and shrink steps, insertion rules, copies, persistence, sorting and search.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <memory>
#include <vector>

#include "support/archive_bytes.h"
#include "gvlib/array/GVLongArray.h"
#include "gvlib/buffer/GVBuffer.h"
#include "gvlib/core/GVLong.h"
#include "gvlib/platform/afxexcept.h"

namespace {

using Ints = std::vector<int32_t>;

// The 4-byte items, or for pointer-sized elements the values the items point to (0: an empty slot).
Ints Items(CGVArray const& a) {
    Ints out;
    for (int32_t i = 0; i < a.mGetNumItems(); ++i) {
        if (a.mGetElementSize() == static_cast<int32_t>(sizeof(void*))) {
            CGVObject* p = nullptr;
            a.mGetArrayItem(&p, i);
            out.push_back(p ? static_cast<CGVLong*>(p)->mGetValue() : 0);
            continue;
        }
        int32_t v = -99;
        a.mGetArrayItem(&v, i);
        out.push_back(v);
    }
    return out;
}

void AddAll(CGVArray& a, Ints const& values) {
    for (int32_t v : values)
        a.mAdd(&v);
}

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

// The growth the long array's subscript uses, reached through a derived class.
struct GrowProbe : CGVArray {
    using CGVArray::CGVArray;
    using CGVArray::GrowItemsTo;
};

CGVArray* g_seenDuringSort = nullptr;
int32_t g_directionDuringSort = -1;

}  // namespace

TEST(CGVArray, NewArraysAndStepGrowth) {
    CGVArray ints(4, 16), plain;
    EXPECT_EQ((Ints{16, 0, 64}), (Ints{ints.mGetAllocatedSlots(), ints.mGetNumItems(), ints.mSize()}));
    EXPECT_EQ(std::vector<char>(64, 0), std::vector<char>(static_cast<char*>(ints.mItemPtr(0)),
                                                          static_cast<char*>(ints.mItemPtr(0)) + 64));
    EXPECT_EQ((Ints{0, 16, 16}), (Ints{plain.mGetElementSize(), plain.mGetGrowStep(), plain.mGetAllocatedSlots()}));
    EXPECT_EQ(nullptr, plain.mItemPtr(0));
    EXPECT_THROW(CGVArray(65540, 32767), CMemoryException);  // a block just past 2 GiB
}

TEST(CGVArray, GrowingToAnIndexIsInsertingUntilThere) {
    struct Row { int16_t step; int32_t items, resized, index; } rows[] = {
        {16, 3, 16, 15}, {16, 3, 16, 16}, {16, 3, 16, 31}, {16, 3, 16, 32}, {16, 3, 16, 2},
        // Reported slots below the count: each insertion adds one step.
        {1, 5, 2, 7}, {4, 5, 2, 6}, {4, 9, 2, 40}, {0, 3, 1, 9}, {-3, 2, 2, 5},
    };
    for (auto const& row : rows) {
        SCOPED_TRACE(testing::Message() << row.step << " " << row.index);
        GrowProbe grown(4, row.step), inserted(4, row.step);
        for (CGVArray* a : {&grown, &inserted}) {
            AddAll(*a, Ints(static_cast<size_t>(row.items), 5));
            a->mResize(row.resized);
        }
        grown.GrowItemsTo(row.index);
        while (inserted.mGetNumItems() <= row.index)
            inserted.mInsertItem(inserted.mGetNumItems());
        EXPECT_EQ((Ints{inserted.mGetNumItems(), inserted.mGetAllocatedSlots()}),
                  (Ints{grown.mGetNumItems(), grown.mGetAllocatedSlots()}));
    }
    GrowProbe wide(65540, 1);  // a block past 2 GiB is refused before anything changes
    EXPECT_THROW(wide.GrowItemsTo(40000), CMemoryException);
    EXPECT_EQ((Ints{0, 1}), (Ints{wide.mGetNumItems(), wide.mGetAllocatedSlots()}));
    GrowProbe empty(0, 1);  // items without bytes may count up to the 32-bit limit
    empty.GrowItemsTo(INT32_MAX - 2);
    empty.mInsertItem(0);
    EXPECT_EQ((Ints{INT32_MAX, INT32_MAX}), (Ints{empty.mGetNumItems(), empty.mGetAllocatedSlots()}));
    EXPECT_THROW(empty.mInsertItem(0), CMemoryException);
}

// Exchanges stay inside the block: the same index, indexes past it, no block.
TEST(CGVArray, InsertionDeletionAndSwapIndexRules) {
    CGVArray a(4, 16);
    AddAll(a, {1, 2, 3});
    a.mInsertItem(0);
    int32_t zero = 0, nine = 9, keep = 42;
    a.mSetArrayItem(&zero, 0);
    EXPECT_EQ((Ints{0, 1, 2, 3}), Items(a));
    a.mInsertAtIndex(&nine, 4);  // at the count: appends
    a.mInsertAtIndex(&nine, 7);  // beyond: the count rises, nothing is stored
    EXPECT_EQ((Ints{6, 9}), (Ints{a.mGetNumItems(), Items(a)[4]}));
    a.mDeleteItem(6), a.mDeleteItem(-1), a.mDeleteItem(1);  // the first two name no item
    Ints left = Items(a);
    EXPECT_EQ((Ints{5, 0, 2, 3, 9}), (Ints{a.mGetNumItems(), left[0], left[1], left[2], left[3]}));
    a.mGetArrayItem(&keep, a.mGetNumItems()), a.mGetArrayItem(&keep, -1);
    EXPECT_EQ(42, keep);
    EXPECT_THROW(a.mInsertItem(-1), CInvalidArgException);
    for (int16_t step : {int16_t{0}, int16_t{-5}}) {  // careless steps stay inside the block
        SCOPED_TRACE(step);
        CGVArray c(4, 16);
        c.mInit(4, step);
        AddAll(c, {1, 2, 3, 4, 5});
        c.mInsertItem(0);
        c.mDeleteItem(0);
        EXPECT_EQ((Ints{1, 2, 3, 4, 5}), Items(c));
    }
    CGVArray wide(8, 2), none(0, 4);
    for (int64_t v : {1, 2})
        wide.mAdd(&v);
    wide.mSwap(0, 1), wide.mSwap(1, 1), wide.mSwap(0, 2), none.mSwap(0, 1);
    auto* items = static_cast<int64_t*>(wide.mItemPtr(0));
    EXPECT_EQ((std::vector<int64_t>{2, 1}), std::vector<int64_t>(items, items + 2));
}

TEST(CGVArray, CopiesKeepTheWholeBlock) {
    CGVArray a(4, 16);
    AddAll(a, {7, 8});
    a.mDeleteItem(1);  // 8 stays in the block past the count
    CGVArray copy(a);
    EXPECT_EQ(0, std::memcmp(a.mItemPtr(0), copy.mItemPtr(0), 64));
    int32_t six = 6;
    copy.mSetArrayItem(&six, 1);  // past the count: not stored
    EXPECT_EQ(8, *static_cast<int32_t*>(copy.mItemPtr(1)));
    AddAll(copy, Ints(16, 3));  // a copy's block grows with its items in place
    EXPECT_EQ(7, Items(copy)[0]);
    CGVArray assigned(1, 3);
    assigned = a, assigned = assigned;
    EXPECT_EQ((Ints{4, 16, 1, 7}), (Ints{assigned.mGetElementSize(), assigned.mGetAllocatedSlots(),
                                         assigned.mGetNumItems(), *static_cast<int32_t*>(assigned.mItemPtr(0))}));
    std::unique_ptr<CGVObject> dup(a.mCopy());
    ASSERT_NE(nullptr, dup);
    EXPECT_EQ((Ints{7}), Items(dynamic_cast<CGVArray&>(*dup)));
    CGVArray shrunk(4, 16), empty(0, 16);
    AddAll(shrunk, {3, 4});
    shrunk.mResize(0);  // no slots reported, the items still there
    EXPECT_EQ((Ints{3, 4}), Items(CGVArray(shrunk)));
    empty.mResize(0);
    EXPECT_EQ(nullptr, CGVArray(empty).mItemPtr(0));
    CGVArray b(4, 16), c(8, 16);  // ordered by the size of one step only
    EXPECT_EQ((Ints{0, 0, 1, 1, 0}), (Ints{a < b, a > b, a < c, c > b, a.mCompare(&c)}));
    EXPECT_THROW(a = static_cast<CGVObject const&>(c), char*);  // a plain character pointer
    try {
        a = static_cast<CGVObject const&>(c);
        ADD_FAILURE() << "nothing thrown";
    } catch (void* text) {  // or any pointer
        EXPECT_STREQ("unsupported conversion", static_cast<char*>(text));
    }
}

TEST(CGVArray, ArchiveRoundTripIsByteExact) {
    CGVArray a(2, 3);
    for (int16_t x : {0x0102, 0x0304, 0x0506, 0x0708})
        a.mAdd(&x);
    std::vector<BYTE> expected = gvtest::Header(2, 3, 6, 4);
    expected.insert(expected.end(), {0x02, 0x01, 0x04, 0x03, 0x06, 0x05, 0x08, 0x07, 0x00, 0x00, 0x00, 0x00});
    EXPECT_EQ(expected, gvtest::Stored(a));
    CGVArray back;
    gvtest::Load(expected, back);
    EXPECT_EQ(expected, gvtest::Stored(back));
    int16_t more = 0x090A;
    back.mAdd(&more);  // a loaded block grows with its items in place
    EXPECT_EQ((Ints{0x0102, 0x090A}), (Ints{*static_cast<int16_t*>(back.mItemPtr(0)), *static_cast<int16_t*>(back.mItemPtr(4))}));
    std::vector<BYTE> full = gvtest::Header(2, 3, 2, 2);  // every slot in use
    full.insert(full.end(), {1, 0, 2, 0});
    gvtest::Load(full, back);
    EXPECT_EQ(full, gvtest::Stored(back));
}

TEST(CGVArray, DamagedArchivesLeaveTheArrayAsItWas) {
    struct Row { const char* name; std::vector<BYTE> bytes; int cause; } rows[] = {
        {"negative element size", gvtest::Header(-4, 16, 16, 0), CArchiveException::badIndex},
        {"count above slots", gvtest::Header(4, 16, 2, 3), CArchiveException::badIndex},
        {"negative count", gvtest::Header(4, 16, 2, -1), CArchiveException::badIndex},
        {"block longer than the archive", gvtest::Header(1000, 16, 1000000, 1), CArchiveException::endOfFile},
        {"header cut short", {4, 0, 0, 0, 16}, CArchiveException::endOfFile},
    };
    gvtest::LoadingPolicy strict(true);  // by default a short block is kept, not raised
    for (auto const& row : rows) {
        SCOPED_TRACE(row.name);
        CGVArray a(4, 16);
        AddAll(a, {1, 2});
        try {
            gvtest::Load(row.bytes, a);
            ADD_FAILURE() << "no exception";
        } catch (CArchiveException const& e) {
            EXPECT_EQ(row.cause, e.m_cause);
        }
        EXPECT_EQ((Ints{1, 2, 16}), (Ints{Items(a)[0], Items(a)[1], a.mGetAllocatedSlots()}));
    }
    CGVBuffer b;  // the buffer form of a generic array is empty
    CGVArray a(4, 16);
    AddAll(a, {1, 2});
    b.mInit("old", 3), a.mSave(b);
    EXPECT_EQ(0, b.mGetLength());
    a.mLoad(b);
    EXPECT_EQ((Ints{0, 16}), (Ints{a.mGetNumItems(), a.mGetAllocatedSlots()}));
}

TEST(CGVArraySort, DefaultCallbacksFollowMCompareInEitherDirection) {
    struct Row { SORTORDER order; Ints want; int32_t direction; } rows[] = {
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
        EXPECT_EQ(row.want, Items(a));
        EXPECT_EQ((std::vector<CGVArray*>{&a, nullptr}), (std::vector<CGVArray*>{g_seenDuringSort, GVGetSortArray()}));
        CGVObject *low = &values[0], *high = &values[1];  // 4 and 15: the array sorted pointers only
        // the direction seen during the sort, kept after it, and applied to a comparison
        EXPECT_EQ((Ints{row.direction, row.direction, row.direction ? -1 : 1}),
                  (Ints{g_directionDuringSort, GVGetSortDirection(), CGVArray::mComparison(&low, &high)}));
    }
    EXPECT_EQ(0, CGVArray::mCompareElms(0, 1));  // no sort running
}

TEST(CGVArraySort, IntegerArrayWithCallerCallbacks) {
    CGVLongArray a;
    AddAll(a, {5, -2, 9, 0, 5, 3, 8, 1, 7, 6, 4, 2, -7});
    // A caller's callbacks for an integer array, reaching it through the sort state.
    a.mSort(SORT_ASCENDING, [](uint32_t i, uint32_t j) { GVGetSortArray()->mSwap(i, j); },
            [](uint32_t i, uint32_t j) {
                auto& array = *static_cast<CGVLongArray*>(GVGetSortArray());
                return array[static_cast<int32_t>(i)] - array[static_cast<int32_t>(j)];
            });
    const Ints sorted = Items(a);
    EXPECT_EQ((Ints{-7, -2, 0, 1, 2, 3, 4, 5, 5, 6, 7, 8, 9}), sorted);
    a.mSort(SORT_ASCENDING);  // the default compare reads no pointers out of 4-byte items: all are equal
    Ints after = Items(a);
    std::sort(after.begin(), after.end());
    EXPECT_EQ(sorted, after);
}

TEST(CGVArraySort, GenericSearch) {
    std::vector<CGVLong> values = {1, 2, 3};
    CGVArray a = PointersTo(values), empty(8, 16);
    static int calls = 0;
    const auto never = [](void const*, void const*) { return ++calls, 1; };
    CGVObject* key = &values[2];
    CGVLongArray longs;
    AddAll(longs, {-1});
    EXPECT_EQ((Ints{1, -1, -1, -1, 2, 0}),
              (Ints{a.mSearch(&values[1]), a.mSearch(nullptr), a.mSearch(&values[0], never),
                    empty.mSearch(nullptr, never), a.mSearch(&key, CGVArray::mComparison),
                    longs.CGVArray::mSearch(reinterpret_cast<void const*>(intptr_t{-1}))}));
    EXPECT_EQ(3, calls);
}
