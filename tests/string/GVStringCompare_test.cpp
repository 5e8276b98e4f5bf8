// CGVString::mCompare and the collation locale.
#include <gtest/gtest.h>

#include "gvlib/string/GVString.h"

namespace {

class SortLcid : public ::testing::Test {
protected:
    void TearDown() override { GVSetSortLCID(1033); }
};

class Other : public CGVObject {};

}  // namespace

TEST_F(SortLcid, StartsAtEnglishAndComparesByLocale) {
    EXPECT_EQ(1033u, gvSortLCID);
    CGVString a("a"), b("B");
    EXPECT_EQ(-1, a.mCompare(&b));
    EXPECT_EQ(1, b.mCompare(&a));
    EXPECT_EQ(0, a.mCompare(&a));
    EXPECT_LT(b.Compare(a), 0);  // byte order puts 'B' first
}

TEST_F(SortLcid, WordSortRules) {
    struct Row {
        const char* left;
        const char* right;
        int want;
    } rows[] = {
        {"a", "A", -1},      {"A", "b", -1},       {"b", "B", -1},        {"10", "9", -1},
        {"!", "0", -1},      {"9", "a", -1},       {"coop", "co-op", -1}, {"cars", "car's", -1},
        {"a", "a-", -1},     {"'o", "-o", -1},     {"co-op", "cop", -1},  {"abc", "abc", 0},
        {"\xE4", "b", -1},   {"", "a", -1},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(std::string(row.left) + " vs " + row.right);
        CGVString l(row.left), r(row.right);
        EXPECT_EQ(row.want, l.mCompare(&r));
        EXPECT_EQ(-row.want, r.mCompare(&l));
    }
}

TEST_F(SortLcid, SwedishSortsAUmlautAfterZ) {
    CGVString ae("\xE4"), z("z");
    EXPECT_EQ(-1, ae.mCompare(&z));
    GVSetSortLCID(1053);
    EXPECT_EQ(1053u, gvSortLCID);
    EXPECT_EQ(1, ae.mCompare(&z));
}

TEST_F(SortLcid, FailuresAndOtherClasses) {
    CGVString a("a"), b("b");
    Other other;
    EXPECT_EQ(-1, a.mCompare(&other));
    EXPECT_EQ(-1, a.mCompare(nullptr));
    GVSetSortLCID(0x9999);
    EXPECT_EQ(-2, a.mCompare(&b));
}
