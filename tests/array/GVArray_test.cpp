// CGVArray: shape, growth and shrink steps, insertion rules, copies and persistence.
#include <gtest/gtest.h>

#include <cstring>
#include <memory>
#include <vector>

#include "support/archive_bytes.h"
#include "gvlib/array/GVArray.h"
#include "gvlib/buffer/GVBuffer.h"
#include "gvlib/platform/afxexcept.h"

namespace {

std::vector<int32_t> Items(CGVArray const& a) {
    std::vector<int32_t> out;
    for (int32_t i = 0; i < a.mGetNumItems(); ++i) {
        int32_t v = -99;
        a.mGetArrayItem(&v, i);
        out.push_back(v);
    }
    return out;
}

void AddAll(CGVArray& a, std::vector<int32_t> const& values) {
    for (int32_t v : values)
        a.mAdd(&v);
}

// The growth the long array's subscript uses, reached through a derived class.
struct GrowProbe : CGVArray {
    using CGVArray::CGVArray;
    using CGVArray::GrowItemsTo;
};

}  // namespace

TEST(CGVArray, NewArrays) {
    CGVArray ints(4, 16);
    EXPECT_EQ(16, ints.mGetAllocatedSlots());
    EXPECT_EQ(0, ints.mGetNumItems());
    EXPECT_EQ(64, ints.mSize());
    EXPECT_EQ(std::vector<char>(64, 0), std::vector<char>(static_cast<char*>(ints.mItemPtr(0)),
                                                          static_cast<char*>(ints.mItemPtr(0)) + 64));
    CGVArray plain;
    EXPECT_EQ((std::vector<int32_t>{0, 16, 16}),
              (std::vector<int32_t>{plain.mGetElementSize(), plain.mGetGrowStep(), plain.mGetAllocatedSlots()}));
    EXPECT_EQ(nullptr, plain.mItemPtr(0));
}

TEST(CGVArray, GrowsAndShrinksByWholeSteps) {
    CGVArray a(4, 16);
    std::vector<int32_t> sixteen(16, 1);
    AddAll(a, sixteen);
    EXPECT_EQ(16, a.mGetAllocatedSlots());
    AddAll(a, {17});
    EXPECT_EQ(32, a.mGetAllocatedSlots());
    struct Row {
        int32_t items, slotsAfterDelete;
    } rows[] = {{16, 16}, {17, 32}, {33, 48}, {34, 48}};
    for (auto const& row : rows) {
        SCOPED_TRACE(row.items);
        CGVArray b(4, 16);
        AddAll(b, std::vector<int32_t>(static_cast<size_t>(row.items), 5));
        if (row.items == 16)
            b.mResize(32);  // 32 slots holding 16 items
        b.mDeleteItem(0);
        EXPECT_EQ(row.items - 1, b.mGetNumItems());
        EXPECT_EQ(row.slotsAfterDelete, b.mGetAllocatedSlots());
    }
}

TEST(CGVArray, GrowingToAnIndexIsInsertingUntilThere) {
    struct Row {
        int16_t step;
        int32_t items, resized, index;
    } rows[] = {
        {16, 3, 16, 15}, {16, 3, 16, 16}, {16, 3, 16, 31}, {16, 3, 16, 32}, {16, 3, 16, 2},
        // Reported slots below the count: each insertion adds one step.
        {1, 5, 2, 7}, {4, 5, 2, 6}, {4, 9, 2, 40}, {0, 3, 1, 9}, {-3, 2, 2, 5},
    };
    for (auto const& row : rows) {
        SCOPED_TRACE(testing::Message() << row.step << " " << row.index);
        GrowProbe grown(4, row.step);
        CGVArray inserted(4, row.step);
        for (CGVArray* a : {static_cast<CGVArray*>(&grown), &inserted}) {
            AddAll(*a, std::vector<int32_t>(static_cast<size_t>(row.items), 5));
            a->mResize(row.resized);
        }
        grown.GrowItemsTo(row.index);
        while (inserted.mGetNumItems() <= row.index)
            inserted.mInsertItem(inserted.mGetNumItems());
        EXPECT_EQ(inserted.mGetNumItems(), grown.mGetNumItems());
        EXPECT_EQ(inserted.mGetAllocatedSlots(), grown.mGetAllocatedSlots());
    }
    // A block past 2 GiB is refused before anything changes.
    GrowProbe wide(65540, 1);
    EXPECT_THROW(wide.GrowItemsTo(40000), CMemoryException);
    EXPECT_EQ(0, wide.mGetNumItems());
    EXPECT_EQ(1, wide.mGetAllocatedSlots());
    // Items without bytes may count up to the 32-bit limit.
    GrowProbe empty(0, 1);
    empty.GrowItemsTo(INT32_MAX - 1);
    EXPECT_EQ(INT32_MAX, empty.mGetNumItems());
    EXPECT_EQ(INT32_MAX, empty.mGetAllocatedSlots());
}

TEST(CGVArray, InsertionAndDeletionIndexRules) {
    CGVArray a(4, 16);
    AddAll(a, {1, 2, 3});
    a.mInsertItem(0);
    int32_t zero = 0;
    a.mSetArrayItem(&zero, 0);
    EXPECT_EQ((std::vector<int32_t>{0, 1, 2, 3}), Items(a));
    int32_t nine = 9;
    a.mInsertAtIndex(&nine, 4);  // at the count: appends
    a.mInsertAtIndex(&nine, 7);  // beyond: the count rises, nothing is stored
    EXPECT_EQ(6, a.mGetNumItems());
    EXPECT_EQ(9, Items(a)[4]);
    a.mDeleteItem(6);
    a.mDeleteItem(-1);
    EXPECT_EQ(6, a.mGetNumItems());
    a.mDeleteItem(1);
    std::vector<int32_t> left = Items(a);
    left.resize(4);
    EXPECT_EQ((std::vector<int32_t>{0, 2, 3, 9}), left);
    int32_t keep = 42;
    a.mGetArrayItem(&keep, a.mGetNumItems());
    a.mGetArrayItem(&keep, -1);
    EXPECT_EQ(42, keep);
    EXPECT_THROW(a.mInsertItem(-1), CInvalidArgException);
    EXPECT_THROW(CGVArray(65540, 32767), CMemoryException);  // a block just past 2 GiB
}

TEST(CGVArray, CopiesKeepTheWholeBlock) {
    CGVArray a(4, 16);
    AddAll(a, {7, 8});
    a.mDeleteItem(1);  // 8 stays in the block past the count
    CGVArray copy(a);
    EXPECT_EQ(0, std::memcmp(a.mItemPtr(0), copy.mItemPtr(0), 64));
    EXPECT_EQ(8, *static_cast<int32_t*>(copy.mItemPtr(1)));
    int32_t six = 6;
    copy.mSetArrayItem(&six, 1);  // past the count: not stored
    EXPECT_EQ(8, *static_cast<int32_t*>(copy.mItemPtr(1)));
    CGVArray assigned(1, 3);
    assigned = a;
    EXPECT_EQ(4, assigned.mGetElementSize());
    EXPECT_EQ(16, assigned.mGetAllocatedSlots());
    assigned = assigned;
    EXPECT_EQ((std::vector<int32_t>{7}), Items(assigned));
    std::unique_ptr<CGVObject> dup(a.mCopy());
    auto* array = dynamic_cast<CGVArray*>(dup.get());
    ASSERT_NE(nullptr, array);
    EXPECT_EQ((std::vector<int32_t>{7}), Items(*array));
    CGVArray shrunk(4, 16);
    AddAll(shrunk, {3, 4});
    shrunk.mResize(0);  // no slots reported, the items still there
    EXPECT_EQ((std::vector<int32_t>{3, 4}), Items(CGVArray(shrunk)));
    CGVArray empty(0, 16);
    empty.mResize(0);
    CGVArray emptyCopy(empty);
    EXPECT_EQ(nullptr, emptyCopy.mItemPtr(0));
}

TEST(CGVArray, ComparesBySizeOfOneStep) {
    CGVArray a(4, 16), b(4, 16), c(8, 16);
    AddAll(a, {1, 2, 3});
    EXPECT_EQ((std::vector<int>{0, 0, 1, 1}), (std::vector<int>{a < b, a > b, a < c, c > b}));
    EXPECT_EQ(0, a.mCompare(&c));
    EXPECT_THROW(a = static_cast<CGVObject const&>(c), char const*);
}

TEST(CGVArray, ArchiveRoundTripIsByteExact) {
    CGVArray a(2, 3);
    int16_t v[] = {0x0102, 0x0304, 0x0506, 0x0708};
    for (auto& x : v)
        a.mAdd(&x);
    std::vector<BYTE> expected = gvtest::Header(2, 3, 6, 4);
    for (BYTE b : {0x02, 0x01, 0x04, 0x03, 0x06, 0x05, 0x08, 0x07, 0x00, 0x00, 0x00, 0x00})
        expected.push_back(b);
    EXPECT_EQ(expected, gvtest::Stored(a));
    CGVArray back;
    gvtest::Load(expected, back);
    EXPECT_EQ(expected, gvtest::Stored(back));
    EXPECT_EQ(4, back.mGetNumItems());
}

TEST(CGVArray, DamagedArchivesLeaveTheArrayAsItWas) {
    struct Row {
        const char* name;
        std::vector<BYTE> bytes;
        int cause;
    } rows[] = {
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
        EXPECT_EQ((std::vector<int32_t>{1, 2}), Items(a));
        EXPECT_EQ(16, a.mGetAllocatedSlots());
    }
}

TEST(CGVArray, BufferFormOfAGenericArrayIsEmpty) {
    CGVArray a(4, 16);
    AddAll(a, {1, 2});
    CGVBuffer b;
    b.mInit("old", 3);
    a.mSave(b);
    EXPECT_EQ(0, b.mGetLength());
    a.mLoad(b);
    EXPECT_EQ(0, a.mGetNumItems());
    EXPECT_EQ(16, a.mGetAllocatedSlots());
}

TEST(CGVArray, CarelessGrowthStepsStayInsideTheBlock) {
    for (int16_t step : {int16_t{0}, int16_t{-5}}) {
        SCOPED_TRACE(step);
        CGVArray a(4, step);
        AddAll(a, {1, 2, 3, 4, 5});
        a.mInsertItem(0);
        a.mDeleteItem(0);
        EXPECT_EQ((std::vector<int32_t>{1, 2, 3, 4, 5}), Items(a));
    }
}
