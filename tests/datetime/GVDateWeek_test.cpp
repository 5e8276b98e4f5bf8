// CGVDate's calendar functions and week numbering.
#include <gtest/gtest.h>

#include <map>

#include "datetime/time_zone.h"
#include "gvlib/datetime/GVDate.h"

namespace {

class DateWeekTest : public ::testing::TestWithParam<const char*> {
protected:
    ScopedTimeZone zone{GetParam()};
};

// The week by the steps the date is specified to take, through its public
// getters and constructors only; the weekdays of the dates it builds are
// looked up once per year, as they cannot change within one zone.
class SpecifiedWeek {
public:
    int Of(CGVDate const& d) {
        const uint16_t year = d.mGetYear();
        int t = d.mGetDay();
        for (uint16_t i = 1; i + 1 <= d.mGetMonth(); ++i)
            t += CGVDate::mDaysInMonth(i, year);
        const int a = Weekday(year, 1, 1), b = MondayFirst(d.mGetDayOfWeek());
        int w = (t + a - b + 7) / 7;
        if (a >= 5)
            --w;
        if (w != 0)
            return w;
        const uint16_t before = static_cast<uint16_t>(year - 1);
        return Weekday(before, 1, 1) <= 4 && Weekday(before, 12, 31) >= 4 ? 53 : 52;
    }

private:
    static int MondayFirst(int v) { return v == 1 ? 7 : v - 1; }
    int Weekday(uint16_t year, uint16_t month, uint16_t day) {
        auto [it, added] = seen_.try_emplace(year * 10000 + month * 100 + day, 0);
        if (added)
            it->second = MondayFirst(CGVDate(year, month, day).mGetDayOfWeek());
        return it->second;
    }
    std::map<int, int> seen_;
};

// Zones west and east of UTC, with and without daylight saving: east of UTC the
// first hours of 1970 cannot be built, which the week must survive.
const char* const kWeekZones[] = {"UTC0", "EST5EDT,M3.2.0,M11.1.0", "JST-9", "NZST-12NZDT,M9.5.0,M4.1.0/3",
                                  "<-11>11"};

}  // namespace

INSTANTIATE_TEST_SUITE_P(Zones, DateWeekTest, ::testing::ValuesIn(kWeekZones));

TEST(DateCalendar, LeapYearsAndMonthLengths) {
    struct Row { uint16_t month, year, leap, days; } const rows[] = {
        {2, 1900, 0, 28}, {2, 2000, 1, 29}, {2, 2023, 0, 28}, {2, 2024, 1, 29}, {2, 2100, 0, 28},
        {4, 2023, 0, 30}, {12, 2023, 0, 31}, {13, 2024, 1, 0}, {13, 2023, 0, 0}, {0, 2024, 1, 0}};  // outside
    for (const Row& row : rows) {
        SCOPED_TRACE(testing::Message() << row.month << '/' << row.year);
        EXPECT_EQ(row.leap, CGVDate::mIsLeapYear(row.year));
        EXPECT_EQ(row.days, CGVDate::mDaysInMonth(row.month, row.year));
    }
}

TEST_P(DateWeekTest, NamedDates) {
    struct Row { uint16_t year, month, day, week; } const rows[] = {
        {2021, 1, 4, 1}, {2021, 1, 1, 53}, {2022, 1, 1, 52}, {2023, 1, 1, 52},
        {2023, 1, 2, 1},    {2020, 12, 31, 53}, {2019, 12, 30, 53}, {2024, 12, 30, 53}};
    for (const Row& row : rows) {
        SCOPED_TRACE(testing::Message() << row.year << '-' << row.month << '-' << row.day);
        EXPECT_EQ(row.week, CGVDate(row.year, row.month, row.day, 12, 0, 0).mWeekOf());
    }
    CGVDate unconvertible;
    unconvertible = -1;
    EXPECT_LE(unconvertible.mWeekOf(), 53);  // defined, whatever the zeros give
}

// Steps of 23 hours reach every local day of the 32-bit range at drifting clock times.
TEST_P(DateWeekTest, EveryDayOfTheRangeFollowsTheSpecifiedSteps) {
    SpecifiedWeek want;
    CGVDate d;
    for (int64_t t = 0; t <= _MAX__TIME32_T; t += 23 * 3600) {
        d = static_cast<int32_t>(t);
        if (d.mWeekOf() != want.Of(d)) {
            ADD_FAILURE() << t << ": " << d.mWeekOf() << " not " << want.Of(d);
            break;
        }
    }
}
