// CArray<CGVString*, CGVString*>: slots, growth, insertion and removal.
#include <gtest/gtest.h>

#include <vector>

#include "gvlib/platform/afxexcept.h"
#include "gvlib/platform/afxtempl.h"
#include "gvlib/string/GVString.h"

namespace {

using PtrArray = CArray<CGVString*, CGVString*>;
CGVString g_a("a"), g_b("b"), g_c("c");

std::vector<CGVString*> Slots(const PtrArray& array) {
    return std::vector<CGVString*>(array.GetData(), array.GetData() + array.GetSize());
}

}  // namespace

TEST(CArray, SlotsMoveAndGrowWithNulls) {
    PtrArray array;
    array.SetAtGrow(2, &g_a);  // past the end: grows with null slots
    EXPECT_EQ(3, array.Add(&g_b));
    EXPECT_EQ(3, array.GetUpperBound());
    array.InsertAt(1, &g_c);
    EXPECT_EQ(Slots(array), (std::vector<CGVString*>{nullptr, &g_c, nullptr, &g_a, &g_b}));
    array.InsertAt(6, &g_a, 2);  // past the end: grows to the index, gap null
    array.RemoveAt(0, 2);
    EXPECT_EQ(Slots(array), (std::vector<CGVString*>{nullptr, &g_a, &g_b, nullptr, &g_a, &g_a}));
    EXPECT_THROW(array.GetAt(6), CInvalidArgException);
    EXPECT_THROW(array.GetAt(-1), CInvalidArgException);
    EXPECT_THROW(array.SetAt(6, &g_b), CInvalidArgException);
    EXPECT_THROW(array.SetAtGrow(-1, &g_b), CInvalidArgException);
    EXPECT_THROW(array.InsertAt(-1, &g_b), CInvalidArgException);
    EXPECT_THROW(array.RemoveAt(5, 2), CInvalidArgException);
    EXPECT_THROW(array.SetSize(-1), CInvalidArgException);
    EXPECT_EQ(6, array.GetSize());
    array.RemoveAll();
    EXPECT_EQ(0, array.GetSize());
    EXPECT_EQ(nullptr, array.GetData());
}

TEST(CArray, ManyAppendsKeepEveryElement) {
    CArray<int32_t, int32_t> numbers;
    for (int32_t i = 0; i < 100000; ++i)
        numbers.Add(i);
    EXPECT_EQ(99999, numbers[99999]);
    numbers.SetSize(10);
    numbers.FreeExtra();
    EXPECT_EQ(9, numbers[9]);
    EXPECT_EQ(10, numbers.GetSize());
}
