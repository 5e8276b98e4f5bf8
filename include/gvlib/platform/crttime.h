// The C runtime's 32-bit time functions as the original Windows runtime had them.
#pragma once

#include <cstdint>
#include <ctime>

#include "gvlib/platform/export.h"

/// Seconds since 1970-01-01 00:00:00 UTC in 32 bits.
typedef int32_t __time32_t;

/// The largest instant the original runtime's 32-bit conversions accept:
/// 2038-01-18 23:59:59 UTC, a day short of where the 32 bits run out.
#define _MAX__TIME32_T 2147471999

/// The current time; also stored through `t` when it is not null.
GVLIB_API __time32_t _time32(__time32_t* t);

/// Local broken-down time of *t in a per-thread block, or null for a negative
/// value or one beyond _MAX__TIME32_T. The host's TZ is re-read on every call.
GVLIB_API struct tm* _localtime32(const __time32_t* t);

/// The same as UTC broken-down time.
GVLIB_API struct tm* _gmtime32(const __time32_t* t);

/// Normalises *tm as ISO C mktime does (out-of-range fields carry over, tm_isdst
/// below 0 lets the zone decide) and answers its instant. Outside 1970-01-01 to
/// _MAX__TIME32_T it answers -1 and leaves *tm unchanged.
GVLIB_API __time32_t _mktime32(struct tm* tm);
