// CGVLongArray: typed access, the growing index, archive bytes and the text form.
#include <gtest/gtest.h>

#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include "support/archive_bytes.h"
#include "gvlib/array/GVLongArray.h"
#include "gvlib/buffer/GVBuffer.h"
#include "gvlib/core/GVLong.h"
#include "gvlib/platform/afxexcept.h"

namespace {

std::vector<int32_t> Items(CGVLongArray const& a) {
    std::vector<int32_t> out;
    for (int32_t i = 0; i < a.mGetNumItems(); ++i)
        out.push_back(a[i]);
    return out;
}

CGVLongArray Holding(std::vector<int32_t> const& values) {
    CGVLongArray a;
    for (int32_t v : values)
        a.mAdd(&v);
    return a;
}

std::string Text(CGVObject& object) {
    std::ostringstream os;
    os << object;
    return os.str();
}

}  // namespace

TEST(CGVLongArray, ArchiveBytesOfOneAndTwo) {
    CGVLongArray a = Holding({1, 2});
    std::vector<BYTE> expected = {4, 0, 0, 0, 16, 0, 16, 0, 0, 0, 2, 0, 0, 0, 1, 0, 0, 0, 2, 0, 0, 0};
    expected.resize(expected.size() + 56, 0);
    EXPECT_EQ(expected, gvtest::Stored(a));
    CGVLongArray back = Holding({9});
    gvtest::Load(expected, back);
    EXPECT_EQ((std::vector<int32_t>{1, 2}), Items(back));
}

TEST(CGVLongArray, IndexBeyondTheEndGrows) {
    CGVLongArray a;
    a[3] = 7;
    EXPECT_EQ((std::vector<int32_t>{0, 0, 0, 7}), Items(a));
    CGVLongArray b;
    b[20] = 1;
    EXPECT_EQ(21, b.mGetNumItems());
    EXPECT_EQ(32, b.mGetAllocatedSlots());
    CGVLongArray c;
    c[100] = 1;
    EXPECT_EQ(112, c.mGetAllocatedSlots());
    CGVLongArray const& constant = b;
    EXPECT_EQ(0, constant[21]);
    EXPECT_EQ(0, constant[-1]);
    EXPECT_THROW(a[-1], CInvalidArgException);
    EXPECT_THROW(a[INT32_MAX], CMemoryException);
    EXPECT_EQ(4, a.mGetNumItems());
}

TEST(CGVLongArray, AddSearchAndCopy) {
    CGVLongArray a = Holding({3, 5, 5});
    CGVLong minus(-1);
    a.mAdd(&minus);
    EXPECT_EQ((std::vector<int32_t>{3, 5, 5, -1}), Items(a));
    EXPECT_EQ(1, a.mSearch(5));
    EXPECT_EQ(-1, a.mSearch(4));
    EXPECT_EQ(3, a.mSearch(-1));
    std::unique_ptr<CGVObject> copy(a.mCopy());
    EXPECT_EQ(nullptr, dynamic_cast<CGVLongArray*>(copy.get()));
    auto* generic = dynamic_cast<CGVArray*>(copy.get());
    ASSERT_NE(nullptr, generic);
    EXPECT_EQ(4, generic->mGetElementSize());
    EXPECT_EQ(4, generic->mGetNumItems());
}

TEST(CGVLongArray, AppendsAcrossManySteps) {
    CGVLongArray a;
    for (int32_t v = 0; v < 10000; ++v)
        a.mAdd(&v);
    EXPECT_EQ(10000, a.mGetAllocatedSlots());
    EXPECT_EQ(9999, a[9999]);
    for (int32_t k = 0; k < 9990; ++k)
        a.mDeleteItem(0);
    EXPECT_EQ((std::vector<int32_t>{9990, 9991, 9992, 9993, 9994, 9995, 9996, 9997, 9998, 9999}), Items(a));
    EXPECT_EQ(16, a.mGetAllocatedSlots());
}

TEST(CGVLongArray, TextAndBufferFormsAppendOnReading) {
    CGVLongArray a = Holding({5, -1});
    EXPECT_EQ("YU2 U5 U-1 ", Text(a));
    CGVLongArray into = Holding({9});
    std::istringstream is("YU2 U1 U2   YU1 U42 ");
    is >> into;
    EXPECT_EQ((std::vector<int32_t>{9, 1, 2}), Items(into));
    std::unique_ptr<CGVObject> made(CGVObject::mNew(is));  // white space before the tag skipped
    auto* longs = dynamic_cast<CGVLongArray*>(made.get());
    ASSERT_NE(nullptr, longs);
    EXPECT_EQ((std::vector<int32_t>{42}), Items(*longs));
    CGVBuffer b;
    a.mSave(b);
    EXPECT_EQ("YU2 U5 U-1 ", std::string(b.mGetBuffer(), static_cast<size_t>(b.mGetLength())));
    into.mLoad(b);
    EXPECT_EQ((std::vector<int32_t>{9, 1, 2, 5, -1}), Items(into));
}

// Found by fuzzing: elements of another size (an archive may announce them)
// wrote or read past a 4-byte value.
TEST(CGVLongArray, ElementsOfAnotherSizeReadAtMostFourBytes) {
    CGVLongArray wide;
    wide.mInit(8, 4);
    int64_t big = 0x1122334455667788;
    wide.mAdd(&big);
    EXPECT_EQ(0x55667788, static_cast<CGVLongArray const&>(wide)[0]);
    EXPECT_EQ(0x55667788, wide[0]);
    EXPECT_EQ("YU1 U1432778632 ", Text(wide));

    CGVLongArray narrow;
    narrow.mInit(1, 4);
    char one = 5;
    narrow.mAdd(&one);
    EXPECT_EQ(5, static_cast<CGVLongArray const&>(narrow)[0]);
    EXPECT_THROW((void)narrow[0], CInvalidArgException);
    EXPECT_EQ("YU1 U5 ", Text(narrow));

    CGVLongArray none;
    none.mInit(0, 4);
    EXPECT_THROW((void)none[2], CInvalidArgException);
}
