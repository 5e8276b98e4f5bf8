// COleCurrency and its text in a locale.
#include <gtest/gtest.h>

#include "gvlib/platform/afxcurrency.h"
#include "gvlib/platform/gvplatform.h"

TEST(OleCurrency, FormatsMinimalDigitsWithTheLocaleSeparator) {
    struct Row {
        LONGLONG count;
        LCID lcid;
        const char* want;
    } const rows[] = {
        {125000, 1033, "12.5"},   {125000, 1031, "12,5"},  {120000, 1033, "12"},
        {500, 1033, "0.05"},      {-2500, 1033, "-0.25"},  {-2500, 1031, "-0,25"},
        {0, 1033, "0"},           {1, 1033, "0.0001"},     {123456789012345, 1033, "12345678901.2345"},
        {INT64_MIN, 1033, "-922337203685477.5808"},          {125000, 0x7F, "12.5"},
        {125000, 0xFFFF, "12.5"}, {125000, 0x401, "12.5"}, {125000, 0x429, "12.5"},  // unknown, or beyond the page
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.want);
        CY cy;
        cy.int64 = row.count;
        EXPECT_STREQ(row.want, COleCurrency(cy).Format(0, row.lcid));
    }
}

// The user default locale is the host's setting; null or invalid gives empty text.
TEST(OleCurrency, UserDefaultAndStatus) {
    const COleCurrency cur(12, 5000);
    EXPECT_STREQ("12.5", cur.Format());
    gvplatform::SetUserDefaultLCID(1031);
    EXPECT_STREQ("12,5", cur.Format(0, LANG_USER_DEFAULT));
    gvplatform::SetUserDefaultLCID(1033);
    EXPECT_STREQ("12.5", cur.Format(0, 0x400));
    for (auto status : {COleCurrency::null, COleCurrency::invalid}) {
        COleCurrency other(cur);
        other.SetStatus(status);
        EXPECT_STREQ("", other.Format());
        other.SetCurrency(-1, -5000);
        EXPECT_STREQ("-1.5", other.Format());
    }
}
