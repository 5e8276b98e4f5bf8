// CGVDate's text forms in the runtime's "C" locale.
#include <gtest/gtest.h>

#include <string>

#include "datetime/time_zone.h"
#include "gvlib/datetime/GVDate.h"
#include "gvlib/string/GVString.h"

namespace {

class DateTextTest : public ::testing::TestWithParam<const char*> {
protected:
    ScopedTimeZone zone{GetParam()};
};

const struct Row { const char* name; void (CGVDate::*member)(CGVString&); const char* want; } kForms[] = {
    {"mDate2Str", &CGVDate::mDate2Str, "03/05/24"},
    {"mTime2Str", &CGVDate::mTime2Str, "14:07:09"},
    {"mDateTime2Str", &CGVDate::mDateTime2Str, "03/05/24 14:07:09"},
    {"mGetMonthStr", &CGVDate::mGetMonthStr, "March"},
    {"mGetYearStr", &CGVDate::mGetYearStr, "2024"},
    {"mGetDayStr", &CGVDate::mGetDayStr, "05"},
    {"mGetDayPlanStr", &CGVDate::mGetDayPlanStr, "Day Plan March 05, 2024"},
    {"mGetWeekDayStr", &CGVDate::mGetWeekDayStr, "Tue"},
    {"mGetMonthDateStr", &CGVDate::mGetMonthDateStr, "Mar 5"},
    {"mGetStr", &CGVDate::mGetStr, "03/05/24 14:07:09"},
};

}  // namespace

INSTANTIATE_TEST_SUITE_P(Zones, DateTextTest, ::testing::ValuesIn(kTestZones));

// Each form replaces a target of any length; an unconvertible date leaves it.
TEST_P(DateTextTest, FormsReplaceTheTarget) {
    CGVDate d(2024, 3, 5, 14, 7, 9), bad;
    bad = -1;
    for (const Row& row : kForms) {
        SCOPED_TRACE(row.name);
        for (const std::string& before : {std::string(), std::string(200, 'x')}) {
            CGVString s(before.c_str());
            (d.*row.member)(s);
            EXPECT_STREQ(row.want, s);
            (bad.*row.member)(s);
            EXPECT_STREQ(row.want, s);
        }
    }
}

TEST_P(DateTextTest, GetStrFollowsTheFlagsTimeFirst) {
    CGVDate d(2024, 3, 5, 14, 7, 9);
    CGVString s;
    d.mSetHour(0);
    d.mGetStr(s);
    EXPECT_STREQ("03/05/24", s);
    d.mSetYear(1899);  // both flags now: the time wins
    d.mGetStr(s);
    EXPECT_STREQ("00:07:09", s);
}
