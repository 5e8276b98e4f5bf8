// CArray<CGVString*, CGVString*>: slots, growth, insertion and removal.
#include <gtest/gtest.h>

#include "gvlib/platform/afxexcept.h"
#include "gvlib/platform/afxtempl.h"
#include "gvlib/string/GVString.h"

namespace {

using PtrArray = CArray<CGVString*, CGVString*>;

CGVString g_a("a"), g_b("b"), g_c("c");

}  // namespace

TEST(CArray, StoringPastTheEndGrowsWithNullSlots) {
    PtrArray array;
    array.SetAtGrow(3, &g_a);
    ASSERT_EQ(4, array.GetSize());
    EXPECT_EQ(nullptr, array[0]);
    EXPECT_EQ(nullptr, array[2]);
    EXPECT_EQ(&g_a, array[3]);
    EXPECT_EQ(4, array.Add(&g_b));
    EXPECT_EQ(4, array.GetUpperBound());
}

TEST(CArray, InsertAndRemoveMoveLaterSlots) {
    PtrArray array;
    array.Add(&g_a);
    array.Add(&g_c);
    array.InsertAt(1, &g_b);
    ASSERT_EQ(3, array.GetSize());
    EXPECT_EQ(&g_b, array[1]);
    EXPECT_EQ(&g_c, array[2]);
    array.InsertAt(5, &g_a, 2);  // past the end: grows to the index, gap null
    ASSERT_EQ(7, array.GetSize());
    EXPECT_EQ(nullptr, array[3]);
    EXPECT_EQ(&g_a, array[6]);
    array.RemoveAt(0, 2);
    EXPECT_EQ(5, array.GetSize());
    EXPECT_EQ(&g_c, array[0]);
    array.RemoveAll();
    EXPECT_EQ(0, array.GetSize());
    EXPECT_EQ(nullptr, array.GetData());
}

TEST(CArray, IndexesOutsideTheRangeAreRefused) {
    PtrArray array;
    array.Add(&g_a);
    EXPECT_THROW(array.GetAt(1), CInvalidArgException);
    EXPECT_THROW(array.GetAt(-1), CInvalidArgException);
    EXPECT_THROW(array.SetAt(1, &g_b), CInvalidArgException);
    EXPECT_THROW(array.SetAtGrow(-1, &g_b), CInvalidArgException);
    EXPECT_THROW(array.InsertAt(-1, &g_b), CInvalidArgException);
    EXPECT_THROW(array.RemoveAt(0, 2), CInvalidArgException);
    EXPECT_THROW(array.SetSize(-1), CInvalidArgException);
    EXPECT_EQ(1, array.GetSize());
}

TEST(CArray, ManyAppendsKeepEveryElement) {
    CArray<int32_t, int32_t> numbers;
    for (int32_t i = 0; i < 100000; ++i)
        numbers.Add(i);
    ASSERT_EQ(100000, numbers.GetSize());
    EXPECT_EQ(99999, numbers[99999]);
    numbers.SetSize(10);
    numbers.FreeExtra();
    EXPECT_EQ(9, numbers[9]);
}
