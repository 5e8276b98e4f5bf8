// CGVDate's text forms in the runtime's "C" locale.
#include <gtest/gtest.h>

#include "datetime/time_zone.h"
#include "gvlib/datetime/GVDate.h"
#include "gvlib/string/GVString.h"

namespace {

class DateTextTest : public ::testing::TestWithParam<const char*> {
protected:
    ScopedTimeZone zone{GetParam()};
};

using Member = void (CGVDate::*)(CGVString&);

struct Row {
    const char* name;
    Member member;
    const char* want;
};

const Row kForms[] = {
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

TEST_P(DateTextTest, FormsReplaceTheTarget) {
    CGVDate d(2024, 3, 5, 14, 7, 9);
    for (const Row& row : kForms) {
        SCOPED_TRACE(row.name);
        CGVString empty;
        (d.*row.member)(empty);
        EXPECT_STREQ(row.want, empty);
        CGVString full(std::string(200, 'x').c_str());
        (d.*row.member)(full);
        EXPECT_STREQ(row.want, full);
    }
}

TEST_P(DateTextTest, UnconvertibleDateLeavesTheTarget) {
    CGVDate d;
    d = -1;
    for (const Row& row : kForms) {
        SCOPED_TRACE(row.name);
        CGVString s("keep");
        (d.*row.member)(s);
        EXPECT_STREQ("keep", s);
    }
}

TEST_P(DateTextTest, GetStrFollowsTheFlagsTimeFirst) {
    CGVDate d(2024, 3, 5, 14, 7, 9);
    CGVString s, want;
    d.mSetHour(0);
    d.mGetStr(s);
    d.mDate2Str(want);
    EXPECT_STREQ(want, s);
    d.mSetYear(1899);  // both flags now: the time wins
    d.mGetStr(s);
    d.mTime2Str(want);
    EXPECT_STREQ(want, s);
    EXPECT_STREQ("00:07:09", s);
}
