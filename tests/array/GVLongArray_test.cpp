// CGVLongArray: typed access, the growing index, archive bytes and the text form.
#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <numeric>
#include <sstream>
#include <string>
#include <vector>

#include "support/archive_bytes.h"
#include "support/buffer_content.h"
#include "gvlib/array/GVLongArray.h"
#include "gvlib/buffer/GVBuffer.h"
#include "gvlib/core/GVLong.h"
#include "gvlib/platform/afxexcept.h"

namespace {

using Ints = std::vector<int32_t>;

Ints Items(CGVLongArray const& a) {
    Ints out;
    for (int32_t i = 0; i < a.mGetNumItems(); ++i)
        out.push_back(a[i]);
    return out;
}

CGVLongArray Holding(Ints const& values, int32_t elementSize = 4) {
    CGVLongArray a;
    a.mInit(elementSize, 16);
    for (int32_t v : values)
        a.mAdd(&v);
    return a;
}

// A derived array sees the store of every append.
struct Spy : CGVLongArray {
    int32_t stores = 0;
    void mSetArrayItem(void const* item, int32_t index) override { ++stores, CGVLongArray::mSetArrayItem(item, index); }
};

std::string Text(CGVObject& object) {
    std::ostringstream os;
    return (os << object, os.str());
}

}  // namespace

// Every count around a growth step comes back from the archive whole.
TEST(CGVLongArray, ArchiveBytesAndGrowth) {
    CGVLongArray a = Holding({1, 2});
    std::vector<BYTE> expected = {4, 0, 0, 0, 16, 0, 16, 0, 0, 0, 2, 0, 0, 0, 1, 0, 0, 0, 2, 0, 0, 0};
    expected.resize(expected.size() + 56, 0);
    EXPECT_EQ(expected, gvtest::Stored(a));
    // items added, slots after adding, slots after one deletion
    struct Row { int32_t items, slots, slotsAfterDelete; } rows[] = {
        {0, 16, 16}, {16, 16, 16}, {17, 32, 32}, {33, 48, 48}, {48, 48, 48}, {49, 64, 64}, {10000, 10000, 10000}};
    for (auto const& row : rows) {
        SCOPED_TRACE(row.items);
        Ints values(static_cast<size_t>(row.items));
        std::iota(values.begin(), values.end(), -3);
        CGVLongArray grown = Holding(values), back = Holding({9});
        EXPECT_EQ(row.slots, grown.mGetAllocatedSlots());
        gvtest::Load(gvtest::Stored(grown), back);
        EXPECT_EQ(values, Items(back));
        grown.mDeleteItem(0);
        EXPECT_EQ((Ints{std::max(row.items - 1, 0), row.slotsAfterDelete}), (Ints{grown.mGetNumItems(), grown.mGetAllocatedSlots()}));
    }
    CGVLongArray many = Holding(Ints(10000, 1));
    for (int32_t k = 0; k < 9990; ++k)
        many.mDeleteItem(0);
    EXPECT_EQ(16, many.mGetAllocatedSlots());
}

TEST(CGVLongArray, IndexBeyondTheEndGrows) {
    CGVLongArray a, b, c;
    a[3] = 7, b[20] = 1, c[100] = 1;
    EXPECT_EQ((Ints{21, 32, 112}), (Ints{b.mGetNumItems(), b.mGetAllocatedSlots(), c.mGetAllocatedSlots()}));
    CGVLongArray const& constant = b;
    EXPECT_EQ((Ints{0, 0}), (Ints{constant[21], constant[-1]}));
    b.mDeleteItem(20);  // the slot behind the items still holds its 1
    EXPECT_EQ(0, constant[20]);
    EXPECT_THROW(a[-1], CInvalidArgException);
    EXPECT_THROW(a[INT32_MAX], CMemoryException);
    EXPECT_EQ((Ints{0, 0, 0, 7}), Items(a));
}

TEST(CGVLongArray, AddSearchAndCopy) {
    CGVLongArray a = Holding({3, 5, 5});
    CGVLong minus(-1);
    a.mAdd(&minus), a.mAdd(static_cast<int32_t const*>(nullptr));  // a zero item
    EXPECT_EQ((Ints{3, 5, 5, -1, 0}), Items(a));
    EXPECT_EQ((Ints{1, -1, 3, 4}), (Ints{a.mSearch(5), a.mSearch(4), a.mSearch(-1), a.mSearch(0)}));
    std::unique_ptr<CGVObject> copy(a.mCopy());  // a generic array
    ASSERT_NE(nullptr, copy);
    auto& generic = dynamic_cast<CGVArray&>(*copy);
    EXPECT_EQ((Ints{0, 4, 5}), (Ints{dynamic_cast<CGVLongArray*>(&generic) != nullptr, generic.mGetElementSize(), generic.mGetNumItems()}));
    Spy spy;
    spy.mAdd(&minus);
    EXPECT_EQ((Ints{1, -1}), (Ints{spy.stores, spy[0]}));
}

TEST(CGVLongArray, TextAndBufferFormsAppendOnReading) {
    CGVLongArray a = Holding({5, -1}), into = Holding({9});
    EXPECT_EQ("YU2 U5 U-1 ", Text(a));
    std::istringstream is("YU2 U1 U2 ");
    is >> into;
    EXPECT_EQ((Ints{9, 1, 2}), Items(into));
    CGVBuffer b;
    a.mSave(b);
    EXPECT_EQ("YU2 U5 U-1 ", gvtest::Content(b));
    into.mLoad(b);
    EXPECT_EQ((Ints{9, 1, 2, 5, -1}), Items(into));
}

// Found by fuzzing: elements of another size (an archive may announce them) wrote or read past a 4-byte value.
TEST(CGVLongArray, ElementsOfAnotherSizeReadAtMostFourBytes) {
    CGVLongArray wide = Holding({0x01020304, 7}, 8);
    int64_t big = 0x1122334455667788;
    wide.CGVArray::mAdd(&big);
    wide.mAdd(static_cast<int32_t const*>(nullptr));
    EXPECT_EQ((Ints{0x01020304, 7, 0x55667788, 0}), Items(wide));
    EXPECT_EQ((Ints{1, 2, -1}), (Ints{wide.mSearch(7), wide.mSearch(0x55667788), wide.mSearch(0x11223344)}));
    EXPECT_EQ("YU4 U16909060 U7 U1432778632 U0 ", Text(wide));
    // Narrow elements keep the low bytes of each value.
    CGVLongArray narrow = Holding({5, 7, 0x0102}, 2);
    EXPECT_EQ((Ints{5, 7, 0x0102}), Items(narrow));
    EXPECT_EQ((Ints{0, 1, 2, -1}), (Ints{narrow.mSearch(5), narrow.mSearch(7), narrow.mSearch(0x0102), narrow.mSearch(0)}));
    EXPECT_THROW((void)narrow[0], CInvalidArgException);
    EXPECT_EQ("YU3 U5 U7 U258 ", Text(narrow));
    CGVLongArray none = Holding({}, 0);
    EXPECT_THROW((void)none[2], CInvalidArgException);
}
