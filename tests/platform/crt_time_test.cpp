// _time32, _localtime32, _gmtime32 and _mktime32 on the 32-bit time value.
#include <gtest/gtest.h>

#include <cstring>
#include <vector>

#include "datetime/time_zone.h"
#include "gvlib/platform/crttime.h"

namespace {

std::tm Fields(int year, int month, int day, int hour, int minute, int second) {
    std::tm t{};
    t.tm_year = year - 1900, t.tm_mon = month - 1, t.tm_mday = day;
    t.tm_hour = hour, t.tm_min = minute, t.tm_sec = second, t.tm_isdst = -1;
    return t;
}

std::vector<int> Of(std::tm const& t) {
    return {t.tm_year + 1900, t.tm_mon + 1, t.tm_mday, t.tm_hour, t.tm_min, t.tm_sec};
}

}  // namespace

// Inside the range every value goes to fields and back to itself; outside it
// nothing converts, and _mktime32 leaves the fields it was given.
TEST(CrtTime, ConversionsAcceptOnlyTheOriginalRange) {
    ScopedTimeZone utc("UTC0");
    struct Row { __time32_t value; std::tm fields; } const rows[] = {
        {0, Fields(1970, 1, 1, 0, 0, 0)}, {1709647629, Fields(2024, 3, 5, 14, 7, 9)},
        {2147471999, Fields(2038, 1, 18, 23, 59, 59)}, {-1, Fields(1969, 12, 31, 23, 59, 59)},
        {-1, Fields(2038, 1, 19, 0, 0, 0)}, {-1, Fields(65535, 1, 1, 0, 0, 0)},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.value);
        std::tm t = row.fields;
        EXPECT_EQ(row.value, _mktime32(&t));
        EXPECT_EQ(Of(row.fields), Of(t));
        if (row.value != -1) {
            EXPECT_EQ(Of(row.fields), Of(*_localtime32(&row.value)));
            EXPECT_EQ(Of(row.fields), Of(*_gmtime32(&row.value)));
        }
    }
    for (__time32_t value : {-1, INT32_MIN, 2147472000, INT32_MAX}) {
        SCOPED_TRACE(value);
        EXPECT_EQ(nullptr, _localtime32(&value));
        EXPECT_EQ(nullptr, _gmtime32(&value));
    }
    EXPECT_EQ(nullptr, _localtime32(nullptr));
    const __time32_t zero = 0;  // each remembered conversion answers for its own value only
    EXPECT_EQ(70, _localtime32(&zero)->tm_year);
    // Out-of-range fields are normalised.
    for (auto row : {std::make_pair(Fields(2023, 2, 29, 0, 0, 1), Fields(2023, 3, 1, 0, 0, 1)),
                     std::make_pair(Fields(2024, 13, 1, 25, -1, 60), Fields(2025, 1, 2, 1, 0, 0))}) {
        ASSERT_NE(-1, _mktime32(&row.first));
        EXPECT_EQ(Of(row.second), Of(row.first));
    }
}

// Every way a host can change TZ between two calls must be seen by the next
// conversion, including those that keep the environment array in place.
TEST(CrtTime, LocalTimeFollowsTzChangedBetweenCalls) {
    ScopedTimeZone restore("UTC0");
    const __time32_t noon = 1709640000;  // 2024-03-05 12:00 UTC
    static char inPlace[32] = "TZ=UTC0";
    struct Row { const char* how; void (*change)(); int hour; } const rows[] = {
        {"setenv", [] { setenv("TZ", "EST5", 1); }, 7},
        {"unset", [] { unsetenv("TZ"); }, -1},  // the host's own zone
        {"setenv back", [] { setenv("TZ", "UTC0", 1); }, 12},
        {"putenv", [] { putenv(inPlace); }, 12},
        {"same buffer rewritten", [] { std::memcpy(inPlace, "TZ=EST5", 8); }, 7},
        // Rewrites that differ from the last text only in its final bytes or
        // past its terminator, for texts of every length class.
        {"rewritten shorter", [] { std::memcpy(inPlace, "TZ=EST1", 8); }, 11},
        {"rewritten longer", [] { std::memcpy(inPlace, "TZ=EST10", 9); }, 2},
        {"shorter again", [] { inPlace[7] = '\0'; }, 11},
        {"medium text", [] { std::memcpy(inPlace, "TZ=<ABCDEFG>3", 14); }, 9},
        {"medium text, last byte", [] { inPlace[12] = '4'; }, 8},
        {"long text", [] { std::memcpy(inPlace, "TZ=<ABCDEFGHIJKL>1", 19); }, 11},
        {"long text, longer", [] { std::memcpy(inPlace, "TZ=<ABCDEFGHIJKL>10", 20); }, 2},
        {"another variable added", [] { setenv("GVLIB_CRT_TIME_TEST", "1", 1); setenv("TZ", "CET-1", 1); }, 13},
        {"earlier variable removed", [] { unsetenv("GVLIB_CRT_TIME_TEST"); setenv("TZ", "MSK-3", 1); }, 15},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.how);
        row.change();
        std::tm* fields = _localtime32(&noon);
        ASSERT_NE(nullptr, fields);
        std::tm host{};
        const time_t t = noon;
        tzset(), localtime_r(&t, &host);
        EXPECT_EQ(row.hour < 0 ? host.tm_hour : row.hour, fields->tm_hour);
    }
    // A text of under 8 bytes, asked twice: the second answer compares it.
    setenv("TZ", "UTC", 1);
    EXPECT_EQ(_localtime32(&noon)->tm_hour, _localtime32(&noon)->tm_hour);
    ScopedTimeZone est("EST5EDT,M3.2.0,M11.1.0");
    const __time32_t summer = 1720440000;  // 2024-07-08 12:00 UTC
    EXPECT_TRUE(_localtime32(&summer)->tm_hour == 8 && _localtime32(&summer)->tm_isdst == 1);
    // The same local fields in both seasons, the zone deciding daylight saving.
    std::tm winter = Fields(2024, 1, 10, 9, 0, 0), june = Fields(2024, 6, 10, 9, 0, 0);
    EXPECT_EQ(1704895200, _mktime32(&winter));
    EXPECT_EQ(1718024400, _mktime32(&june));
    __time32_t stored = 0;
    EXPECT_EQ(_time32(&stored), stored);
    EXPECT_GT(stored, 1700000000);
}
