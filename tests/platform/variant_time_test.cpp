// VariantTimeToSystemTime.
#include <gtest/gtest.h>

#include <cmath>
#include <vector>

#include "gvlib/platform/oledate.h"

TEST(VariantTime, SplitsDayAndPositiveTimeOfDayInsideTheRange) {
    struct Row {
        double date;
        int year, month, day, hour, minute, second, weekday;
    } const rows[] = {
        {0.0, 1899, 12, 30, 0, 0, 0, 6},    {-5.25, 1899, 12, 25, 6, 0, 0, 1},   {1.5, 1899, 12, 31, 12, 0, 0, 0},
        {25569.0, 1970, 1, 1, 0, 0, 0, 4},  {60.0, 1900, 2, 28, 0, 0, 0, 3},     {61.0, 1900, 3, 1, 0, 0, 0, 4},
        {-657434.0, 100, 1, 1, 0, 0, 0, 5}, {2958465.5, 9999, 12, 31, 12, 0, 0, 5},
        {45356.588298611, 2024, 3, 5, 14, 7, 9, 2},  // rounded to the nearest second
        {2.99999999, 1900, 1, 2, 0, 0, 0, 2},        // 23:59:59.9991 rounds into the next day
        // Outside the range nothing converts and the record is left as it was.
        {-657434.5, 77, 0, 0, 0, 0, 0, 0}, {2958466.5, 77, 0, 0, 0, 0, 0, 0}, {1e300, 77, 0, 0, 0, 0, 0, 0},
        {-1e300, 77, 0, 0, 0, 0, 0, 0},    {std::nan(""), 77, 0, 0, 0, 0, 0, 0},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.date);
        SYSTEMTIME st{};
        st.wYear = 77;
        EXPECT_EQ(row.year != 77, VariantTimeToSystemTime(row.date, &st) != 0);
        const std::vector<int> got = {st.wYear, st.wMonth,  st.wDay,       st.wHour,
                                      st.wMinute, st.wSecond, st.wDayOfWeek, st.wMilliseconds};
        EXPECT_EQ(got, (std::vector<int>{row.year, row.month, row.day, row.hour, row.minute, row.second, row.weekday, 0}));
    }
    EXPECT_FALSE(VariantTimeToSystemTime(0.0, nullptr));
}
