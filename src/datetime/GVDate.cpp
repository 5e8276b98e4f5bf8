// CGVDate: construction, assignment, arithmetic, day comparisons, getters and setters.
#include "gvlib/datetime/GVDate.h"

#include <ctime>

#include "platform/crt_time.h"

namespace {

__time32_t MakeLocal(int year, int month, int day, int hour, int minute, int second) {
    std::tm fields{};
    fields.tm_year = year - 1900;
    fields.tm_mon = month - 1;
    fields.tm_mday = day;
    fields.tm_hour = hour;
    fields.tm_min = minute;
    fields.tm_sec = second;
    fields.tm_isdst = -1;  // the zone decides
    return _mktime32(&fields);
}

}  // namespace

CGVDate::CGVDate() : timeValue(_time32(nullptr)), dateOnly(0), timeOnly(0) {}

CGVDate::CGVDate(uint16_t year, uint16_t month, uint16_t day)
    : timeValue(MakeLocal(year, month, day, 0, 0, 1)), dateOnly(0), timeOnly(0) {}

CGVDate::CGVDate(uint16_t year, uint16_t month, uint16_t day, uint16_t hour, uint16_t minute, uint16_t second)
    : timeValue(MakeLocal(year, month, day, hour, minute, second)), dateOnly(0), timeOnly(0) {}

CGVDate::CGVDate(CGVDate const& other) : CGVObject(other), timeValue(other.timeValue), dateOnly(0), timeOnly(0) {}

CGVDate::~CGVDate() = default;

CGVDate& CGVDate::operator=(CGVDate const& other) {
    timeValue = other.timeValue;
    return *this;
}

CGVDate& CGVDate::operator=(int32_t seconds) {
    timeValue = seconds;
    return *this;
}

uint32_t CGVDate::mGetDateAsLong() const { return static_cast<uint32_t>(timeValue); }

CGVObject& CGVDate::mCopy() { return *new CGVDate(*this); }

CGVObject& CGVDate::mNew() { return *new CGVDate(); }

// Wrap-around as on the 32-bit original, computed unsigned to stay defined.
CGVDate const& CGVDate::operator+=(uint32_t seconds) {
    timeValue = static_cast<__time32_t>(static_cast<uint32_t>(timeValue) + seconds);
    return *this;
}

CGVDate const& CGVDate::operator-=(uint32_t seconds) {
    timeValue = static_cast<__time32_t>(static_cast<uint32_t>(timeValue) - seconds);
    return *this;
}

int CGVDate::operator==(CGVDate const& other) const { return DayNumber() == other.DayNumber(); }
int CGVDate::operator!=(CGVDate const& other) const { return DayNumber() != other.DayNumber(); }
int CGVDate::operator<(CGVDate const& other) const { return DayNumber() < other.DayNumber(); }
int CGVDate::operator<=(CGVDate const& other) const { return DayNumber() <= other.DayNumber(); }
int CGVDate::operator>(CGVDate const& other) const { return DayNumber() > other.DayNumber(); }
int CGVDate::operator>=(CGVDate const& other) const { return DayNumber() >= other.DayNumber(); }
int CGVDate::operator==(int32_t day) const { return DayNumber() == day; }

bool CGVDate::LocalFields(std::tm& fields) const {
    const std::tm* local = gvplatform::detail::LocalFieldsOf(timeValue);
    if (local == nullptr)
        return false;
    fields = *local;
    return true;
}

namespace {

// A getter reads its one field straight from the remembered conversion.
template <typename Read>
uint16_t Field(__time32_t t, Read read) {
    const std::tm* f = gvplatform::detail::LocalFieldsOf(t);
    return f != nullptr ? static_cast<uint16_t>(read(*f)) : 0;
}

}  // namespace

uint16_t CGVDate::mGetYear() const {
    return Field(timeValue, [](std::tm const& f) { return f.tm_year + 1900; });
}
uint16_t CGVDate::mGetMonth() const {
    return Field(timeValue, [](std::tm const& f) { return f.tm_mon + 1; });
}
uint16_t CGVDate::mGetDay() const {
    return Field(timeValue, [](std::tm const& f) { return f.tm_mday; });
}
uint16_t CGVDate::mGetDayOfWeek() const {
    return Field(timeValue, [](std::tm const& f) { return f.tm_wday + 1; });
}
uint16_t CGVDate::mGetHour() const {
    return Field(timeValue, [](std::tm const& f) { return f.tm_hour; });
}
uint16_t CGVDate::mGetMinute() const {
    return Field(timeValue, [](std::tm const& f) { return f.tm_min; });
}
uint16_t CGVDate::mGetSecond() const {
    return Field(timeValue, [](std::tm const& f) { return f.tm_sec; });
}

// The daylight-saving flag of the conversion is passed on unchanged, so a
// setter that crosses a change moves the clock time by the difference, as the
// original did.
template <typename Change>
void CGVDate::ChangeFields(Change change) {
    std::tm fields;
    if (!LocalFields(fields))
        return;
    change(fields);
    timeValue = _mktime32(&fields);
}

void CGVDate::mSetYear(uint16_t year) {
    ChangeFields([&](std::tm& f) {
        int y = year;
        if (y == 1899) {  // an OLE date of a time alone carries the year 1899
            y = 1970;
            timeOnly = 1;
        }
        f.tm_year = y - 1900;
    });
}

void CGVDate::mSetMonth(uint16_t month) {
    ChangeFields([&](std::tm& f) { f.tm_mon = month - 1; });
}

void CGVDate::mSetDay(uint16_t day) {
    ChangeFields([&](std::tm& f) { f.tm_mday = day; });
}

void CGVDate::mSetHour(uint16_t hour) {
    ChangeFields([&](std::tm& f) {
        if (hour == 0)
            dateOnly = 1;
        f.tm_hour = hour;
    });
}

void CGVDate::mSetMinute(uint16_t minute) {
    ChangeFields([&](std::tm& f) { f.tm_min = minute; });
}

void CGVDate::mSetSecond(uint16_t second) {
    ChangeFields([&](std::tm& f) { f.tm_sec = second; });
}
