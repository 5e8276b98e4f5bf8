// OLE automation dates: SYSTEMTIME and VariantTimeToSystemTime.
#pragma once

#include "gvlib/platform/export.h"
#include "gvlib/platform/wintypes.h"

struct SYSTEMTIME {
    WORD wYear;
    WORD wMonth;
    WORD wDayOfWeek;  // 0 = Sunday
    WORD wDay;
    WORD wHour;
    WORD wMinute;
    WORD wSecond;
    WORD wMilliseconds;
};
typedef SYSTEMTIME* LPSYSTEMTIME;

/// Splits an OLE date: 0.0 is 1899-12-30 00:00; the integer part counts days and
/// the fraction is the time of day taken as a positive amount (-5.25 is
/// 1899-12-25 06:00), rounded to the nearest second. Answers 0 and leaves
/// *lpSystemTime alone outside -657434.0 to 2958466.0 (and for NaN).
GVLIB_API int VariantTimeToSystemTime(DATE vtime, LPSYSTEMTIME lpSystemTime);
