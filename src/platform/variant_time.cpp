// VariantTimeToSystemTime: OLE dates into calendar fields.
#include <cmath>
#include <cstdint>

#include "gvlib/platform/oledate.h"

namespace {

constexpr double kMinDate = -657434.0;  // 0100-01-01
constexpr double kMaxDate = 2958466.0;
constexpr int64_t kEpochOffset = 25569;  // days from 1899-12-30 to 1970-01-01

struct Civil {
    int64_t year;
    unsigned month;
    unsigned day;
};

// Proleptic Gregorian date of a day count from 1970-01-01 (H. Hinnant's method).
Civil CivilFromDays(int64_t z) {
    z += 719468;
    const int64_t era = (z >= 0 ? z : z - 146096) / 146097;
    const unsigned doe = static_cast<unsigned>(z - era * 146097);
    const unsigned yoe = (doe - doe / 1460 + doe / 36524 - doe / 146096) / 365;
    const unsigned doy = doe - (365 * yoe + yoe / 4 - yoe / 100);
    const unsigned mp = (5 * doy + 2) / 153;
    const unsigned d = doy - (153 * mp + 2) / 5 + 1;
    const unsigned m = mp < 10 ? mp + 3 : mp - 9;
    return {static_cast<int64_t>(yoe) + era * 400 + (m <= 2 ? 1 : 0), m, d};
}

}  // namespace

int VariantTimeToSystemTime(DATE vtime, LPSYSTEMTIME lpSystemTime) {
    if (lpSystemTime == nullptr || !(vtime >= kMinDate && vtime <= kMaxDate))
        return 0;
    double whole = std::trunc(vtime);
    int64_t day = static_cast<int64_t>(whole);
    int64_t seconds = std::llround(std::fabs(vtime - whole) * 86400.0);
    if (seconds >= 86400) {  // 23:59:59.6 rounds into the next day
        seconds -= 86400;
        ++day;
    }
    const int64_t epochDay = day - kEpochOffset;
    const Civil c = CivilFromDays(epochDay);
    // 1970-01-01 was a Thursday (4).
    const int64_t weekday = ((epochDay % 7) + 7 + 4) % 7;
    lpSystemTime->wYear = static_cast<WORD>(c.year);
    lpSystemTime->wMonth = static_cast<WORD>(c.month);
    lpSystemTime->wDayOfWeek = static_cast<WORD>(weekday);
    lpSystemTime->wDay = static_cast<WORD>(c.day);
    lpSystemTime->wHour = static_cast<WORD>(seconds / 3600);
    lpSystemTime->wMinute = static_cast<WORD>(seconds / 60 % 60);
    lpSystemTime->wSecond = static_cast<WORD>(seconds % 60);
    lpSystemTime->wMilliseconds = 0;
    return 1;
}
