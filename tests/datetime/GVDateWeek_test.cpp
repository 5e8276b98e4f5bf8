// CGVDate's calendar functions and week numbering.
#include <gtest/gtest.h>

#include <ctime>

#include "datetime/time_zone.h"
#include "gvlib/datetime/GVDate.h"

namespace {

class DateWeekTest : public ::testing::TestWithParam<const char*> {
protected:
    ScopedTimeZone zone{GetParam()};
};

// ISO 8601 week as the host's strftime computes it, with December days of
// week 1 counted as 53, the way the date numbers them.
int ExpectedWeek(int year, int month, int day) {
    std::tm t{};
    t.tm_year = year - 1900;
    t.tm_mon = month - 1;
    t.tm_mday = day;
    t.tm_hour = 12;
    t.tm_isdst = -1;
    std::mktime(&t);
    char text[8];
    std::strftime(text, sizeof text, "%V", &t);
    const int iso = std::atoi(text);
    return iso == 1 && month == 12 ? 53 : iso;
}

}  // namespace

INSTANTIATE_TEST_SUITE_P(Zones, DateWeekTest, ::testing::ValuesIn(kTestZones));

TEST(DateCalendar, LeapYearsAndMonthLengths) {
    struct Row {
        uint16_t year;
        int leap;
        uint16_t february;
    } const rows[] = {{1900, 0, 28}, {2000, 1, 29}, {2023, 0, 28}, {2024, 1, 29}, {2100, 0, 28}};
    for (const Row& row : rows) {
        SCOPED_TRACE(row.year);
        EXPECT_EQ(row.leap, CGVDate::mIsLeapYear(row.year));
        EXPECT_EQ(row.february, CGVDate::mDaysInMonth(2, row.year));
    }
    EXPECT_EQ(30, CGVDate::mDaysInMonth(4, 2023));
    EXPECT_EQ(31, CGVDate::mDaysInMonth(12, 2023));
    EXPECT_EQ(0, CGVDate::mDaysInMonth(13, 2023));  // outside the table
}

TEST_P(DateWeekTest, NamedDates) {
    struct Row {
        uint16_t year, month, day, week;
    } const rows[] = {
        {2021, 1, 4, 1},   {2021, 1, 1, 53},  {2022, 1, 1, 52}, {2023, 1, 1, 52},
        {2023, 1, 2, 1},   {2020, 12, 31, 53}, {2019, 12, 30, 53}, {2024, 12, 30, 53},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(testing::Message() << row.year << '-' << row.month << '-' << row.day);
        CGVDate d(row.year, row.month, row.day, 12, 0, 0);
        EXPECT_EQ(row.week, d.mWeekOf());
    }
}

TEST_P(DateWeekTest, EveryDayFrom2015To2030FollowsIsoWithTheDecemberException) {
    CGVDate d(2015, 1, 1, 12, 0, 0);
    int checked = 0;
    while (d.mGetYear() <= 2030) {
        const int y = d.mGetYear(), m = d.mGetMonth(), day = d.mGetDay();
        const int want = ExpectedWeek(y, m, day);
        if (d.mWeekOf() != want) {
            ADD_FAILURE() << y << '-' << m << '-' << day << ": " << d.mWeekOf() << " not " << want;
            break;
        }
        ++checked;
        d.mSetDay(static_cast<uint16_t>(day + 1));
    }
    EXPECT_EQ(5844, checked);
}

TEST_P(DateWeekTest, UnconvertibleDateComputesWithZeros) {
    CGVDate d;
    d = -1;
    EXPECT_LE(d.mWeekOf(), 53);  // defined, whatever the zeros give
}
