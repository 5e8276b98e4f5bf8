// CGVDate's text forms through the runtime's strftime.
#include <ctime>

#include "gvlib/datetime/GVDate.h"
#include "gvlib/string/GVString.h"
#include "platform/crt_time.h"

namespace {

constexpr std::size_t kTextSize = 80;  // the original's buffer, terminator included

}  // namespace

void CGVDate::FormatInto(CGVString& s, const char* format) {
    std::tm fields;
    if (!LocalFields(fields))
        return;
    char text[kTextSize];
    const std::size_t n = gvplatform::detail::CrtStrftime(text, sizeof text, format, &fields);
    // A text that does not fit gives an empty target, as the runtime's empty
    // buffer did.
    s.SetString(text, static_cast<int>(n));
}

void CGVDate::mDate2Str(CGVString& s) { FormatInto(s, "%x"); }
void CGVDate::mTime2Str(CGVString& s) { FormatInto(s, "%X"); }
void CGVDate::mDateTime2Str(CGVString& s) { FormatInto(s, "%c"); }
void CGVDate::mGetMonthStr(CGVString& s) { FormatInto(s, "%B"); }
void CGVDate::mGetYearStr(CGVString& s) { FormatInto(s, "%Y"); }
void CGVDate::mGetDayStr(CGVString& s) { FormatInto(s, "%d"); }
void CGVDate::mGetDayPlanStr(CGVString& s) { FormatInto(s, "Day Plan %B %d, %Y"); }
void CGVDate::mGetWeekDayStr(CGVString& s) { FormatInto(s, "%a"); }

void CGVDate::mGetMonthDateStr(CGVString& s) {
    std::tm fields;
    if (!LocalFields(fields))
        return;
    char month[kTextSize];
    gvplatform::detail::CrtStrftime(month, sizeof month, "%b ", &fields);
    s.Format("%s%d", month, static_cast<int>(mGetDay()));
}

void CGVDate::mGetStr(CGVString& s) {
    if (timeOnly)
        mTime2Str(s);
    else if (dateOnly)
        mDate2Str(s);
    else
        mDateTime2Str(s);
}
