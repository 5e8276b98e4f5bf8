// CGVString::mCompare and the collation locale.
#include <gtest/gtest.h>

#include "gvlib/string/GVString.h"

namespace {

class SortLcid : public ::testing::Test {
protected:
    void TearDown() override { GVSetSortLCID(1033); }
};

class Other : public CGVObject {};
class Derived : public CGVString {
public:
    using CGVString::CGVString;
};

}  // namespace

// mCompare is the platform comparison under gvSortLCID, minus 2; the rules
// themselves are the platform's and tested there. A derived string compares
// as a string; any other class sorts first.
TEST_F(SortLcid, ComparesUnderTheCurrentLocale) {
    struct Row { uint32_t lcid; const char *left, *right; int want; } const rows[] = {
        {1033, "a", "B", -1},    {1033, "abc", "abc", 0}, {1033, "coop", "co-op", -1}, {1033, "\xE4", "z", -1},
        {1053, "\xE4", "z", 1},  {1053, "vb", "wa", 1},   {1034, "cz", "ch", -1},      {3082, "cz", "ch", 1},
        {0x9999, "a", "b", -2},
    };
    EXPECT_EQ(1033u, gvSortLCID);
    for (const Row& row : rows) {
        SCOPED_TRACE(std::to_string(row.lcid) + ": " + row.left + " vs " + row.right);
        GVSetSortLCID(row.lcid);
        EXPECT_EQ(row.lcid, gvSortLCID);
        CGVString l(row.left), r(row.right);
        Derived d(row.right);
        EXPECT_EQ(row.want, l.mCompare(&r));
        EXPECT_EQ(row.want, l.mCompare(&d));
        EXPECT_EQ(row.want == -2 ? -2 : -row.want, r.mCompare(&l));
    }
    CGVString a("a");
    Other other;
    EXPECT_EQ(-1, a.mCompare(&other));
    EXPECT_EQ(-1, a.mCompare(nullptr));
}
