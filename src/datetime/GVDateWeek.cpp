// CGVDate's calendar functions and week of the year.
#include "gvlib/datetime/GVDate.h"

namespace {

const uint16_t kDaysCommon[12] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
const uint16_t kDaysLeap[12] = {31, 29, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};

// Monday = 1 ... Sunday = 7 from the getter's Sunday = 1 ... Saturday = 7.
int MondayFirst(uint16_t dayOfWeek) { return dayOfWeek == 1 ? 7 : dayOfWeek - 1; }

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

uint16_t CGVDate::mWeekOf() {
    const uint16_t year = mGetYear();
    int dayOfYear = mGetDay();
    for (uint16_t i = 1; i + 1 <= mGetMonth(); ++i)
        dayOfYear += mDaysInMonth(i, year);
    const int firstWeekday = MondayFirst(CGVDate(year, 1, 1).mGetDayOfWeek());
    const int weekday = MondayFirst(mGetDayOfWeek());
    int week = (dayOfYear + firstWeekday - weekday + 7) / 7;
    if (firstWeekday >= 5)  // 1 January on Friday to Sunday belongs to the year before
        --week;
    if (week != 0)
        return static_cast<uint16_t>(week);
    const uint16_t before = static_cast<uint16_t>(year - 1);
    const int firstBefore = MondayFirst(CGVDate(before, 1, 1).mGetDayOfWeek());
    const int lastBefore = MondayFirst(CGVDate(before, 12, 31).mGetDayOfWeek());
    return firstBefore <= 4 && lastBefore >= 4 ? 53 : 52;
}
