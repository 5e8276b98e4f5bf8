// The date's text members and its text stream body on any fields and any text:
// every member answers without reading or writing out of bounds. (A date read
// back need not equal the date written: the reader applies the fields one by one
// through the setters, which normalise each against the fields set so far.)
#include <gvlib/gvlib.h>

#include <cstddef>
#include <cstdint>
#include <sstream>
#include <string>

namespace {

uint16_t Field(uint8_t const*& data, size_t& size) {
    uint16_t v = 0;
    for (int i = 0; i < 2 && size > 0; ++i, --size)
        v = static_cast<uint16_t>(v | (*data++ << (8 * i)));
    return v;
}

void AllTexts(CGVDate& date) {
    CGVString s;
    date.mDate2Str(s);
    date.mTime2Str(s);
    date.mDateTime2Str(s);
    date.mGetMonthStr(s);
    date.mGetYearStr(s);
    date.mGetDayStr(s);
    date.mGetDayPlanStr(s);
    date.mGetWeekDayStr(s);
    date.mGetMonthDateStr(s);
    date.mGetStr(s);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(uint8_t const* data, size_t size) {
    uint16_t f[6];
    for (uint16_t& v : f)
        v = Field(data, size);
    CGVDate date(f[0], f[1], f[2], f[3], f[4], f[5]);
    AllTexts(date);

    std::ostringstream written;
    written << date;
    std::istringstream back(written.str());
    CGVDate again;
    back >> again;
    AllTexts(again);

    // The rest of the input as a text stream body.
    std::istringstream body(std::string(reinterpret_cast<char const*>(data), size));
    CGVDate read;
    read.Serialize(body);
    AllTexts(read);
    return 0;
}
