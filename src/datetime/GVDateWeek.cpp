// CGVDate's calendar functions and week of the year.
#include "gvlib/datetime/GVDate.h"

#include "platform/crt_time.h"

namespace {

const uint16_t kDaysCommon[12] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
const uint16_t kDaysLeap[12] = {31, 29, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};

// Monday = 1 ... Sunday = 7 from the getter's Sunday = 1 ... Saturday = 7.
int MondayFirst(uint16_t dayOfWeek) { return dayOfWeek == 1 ? 7 : dayOfWeek - 1; }

// Days from 1970-01-01 to 1 January of `year`, for 1970 to 2099, where every
// fourth year from 1972 is a leap year (2000 included).
int32_t DaysToNewYear(int32_t year) { return 365 * (year - 1970) + (year - 1969) / 4; }

// The getter's weekday of CGVDate(year, 1, 1) or CGVDate(year, 12, 31). From
// 1971 to 2037 the instant 00:00:01 local of any day lies inside the 32-bit
// range whatever the zone's offset, so the weekday is the calendar's and needs
// no conversion; nearer the ends the date is built, and may fail (0), as the
// original's did.
uint16_t WeekdayOf(uint16_t year, bool lastDay) {
    if (year >= 1971 && year <= 2037) {
        const int32_t days = lastDay ? DaysToNewYear(year + 1) - 1 : DaysToNewYear(year);
        return static_cast<uint16_t>((days + 4) % 7 + 1);  // 1970-01-01 was a Thursday
    }
    return lastDay ? CGVDate(year, 12, 31).mGetDayOfWeek() : CGVDate(year, 1, 1).mGetDayOfWeek();
}

}  // namespace

int CGVDate::mIsLeapYear(uint16_t year) {
    return (year % 4 == 0 && year % 100 != 0) || year % 400 == 0 ? 1 : 0;
}

uint16_t CGVDate::mDaysInMonth(uint16_t month, uint16_t year) {
    // Outside 1 to 12 the original read past its table; 0 keeps us inside ours.
    if (month < 1 || month > 12)
        return 0;
    return (mIsLeapYear(year) ? kDaysLeap : kDaysCommon)[month - 1];
}

// One conversion gives every field the week needs: the day of the year is the
// day plus the lengths of the months before it, which is the runtime's own
// day of the year. A date that cannot be converted computes with the getters'
// zeros.
uint16_t CGVDate::mWeekOf() {
    const std::tm* f = gvplatform::detail::LocalFieldsOf(timeValue);
    const uint16_t year = f != nullptr ? static_cast<uint16_t>(f->tm_year + 1900) : 0;
    const int dayOfYear = f != nullptr ? f->tm_yday + 1 : 0;
    const int weekday = MondayFirst(f != nullptr ? static_cast<uint16_t>(f->tm_wday + 1) : 0);
    const int firstWeekday = MondayFirst(WeekdayOf(year, false));
    int week = (dayOfYear + firstWeekday - weekday + 7) / 7;
    if (firstWeekday >= 5)  // 1 January on Friday to Sunday belongs to the year before
        --week;
    if (week != 0)
        return static_cast<uint16_t>(week);
    const uint16_t before = static_cast<uint16_t>(year - 1);
    const int firstBefore = MondayFirst(WeekdayOf(before, false));
    const int lastBefore = MondayFirst(WeekdayOf(before, true));
    // A 1 January that cannot be built (weekday 0, here -1) is no weekday at all.
    const bool mondayToThursday = firstBefore >= 1 && firstBefore <= 4;
    const bool thursdayToSunday = lastBefore >= 4 && lastBefore <= 7;
    return mondayToThursday && thursdayToSunday ? 53 : 52;
}
