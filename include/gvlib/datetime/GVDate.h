// CGVDate: a date and time held as the runtime's 32-bit time value.
#pragma once

#include <cstdint>

#include "gvlib/core/GVObject.h"
#include "gvlib/platform/crttime.h"
#include "gvlib/platform/export.h"

class CGVString;
struct tm;

/// One instant read and changed through its local-time calendar fields. Values
/// the runtime cannot convert (negative, or past 2038-01-18 23:59:59 UTC) give 0
/// from every getter and are left alone by the setters and the text forms.
class GVLIB_API CGVDate : public CGVObject {
public:
    /// The current time.
    CGVDate();
    /// The local instant year-month-day 00:00:01 (one second past midnight).
    CGVDate(uint16_t year, uint16_t month, uint16_t day);
    /// Out-of-range fields carry over: (2023, 2, 29, ...) is 1 March 2023.
    CGVDate(uint16_t year, uint16_t month, uint16_t day, uint16_t hour, uint16_t minute, uint16_t second);
    /// Copies the instant; the flags start at 0.
    CGVDate(CGVDate const& other);
    ~CGVDate() override;

    /// Copies the instant only; this date's flags stay.
    CGVDate& operator=(CGVDate const& other);
    CGVDate& operator=(int32_t seconds);
    uint32_t mGetDateAsLong() const;

    // The base's const mCopy/mNew stay reachable (and answer null); a call on a
    // non-const CGVDate picks these two, which add slots of their own.
    using CGVObject::mCopy;
    using CGVObject::mNew;
    /// A new heap copy (flags 0) owned by the caller.
    virtual CGVObject& mCopy();
    /// A new heap date holding the current time, owned by the caller.
    virtual CGVObject& mNew();

    uint16_t mGetYear() const;
    uint16_t mGetMonth() const;      ///< 1 to 12
    uint16_t mGetDay() const;        ///< 1 to 31
    uint16_t mGetDayOfWeek() const;  ///< 1 = Sunday ... 7 = Saturday
    uint16_t mGetHour() const;
    uint16_t mGetMinute() const;
    uint16_t mGetSecond() const;

    /// 1899 stores 1970 and marks the date as a time alone.
    void mSetYear(uint16_t year);
    /// 0 is December of the year before, 13 January of the year after.
    void mSetMonth(uint16_t month);
    /// 0 is the last day of the month before.
    void mSetDay(uint16_t day);
    /// 0 marks the date as a date alone.
    void mSetHour(uint16_t hour);
    void mSetMinute(uint16_t minute);
    void mSetSecond(uint16_t second);

    static int mIsLeapYear(uint16_t year);
    /// Month first; the month must lie in 1 to 12.
    static uint16_t mDaysInMonth(uint16_t month, uint16_t year);

    /// Whole seconds with 32-bit wrap-around and no range check.
    CGVDate const& operator+=(uint32_t seconds);
    CGVDate const& operator-=(uint32_t seconds);

    // Comparisons of UTC day numbers (the time value divided by 86400).
    int operator==(CGVDate const& other) const;
    int operator!=(CGVDate const& other) const;
    int operator<(CGVDate const& other) const;
    int operator<=(CGVDate const& other) const;
    int operator>(CGVDate const& other) const;
    int operator>=(CGVDate const& other) const;
    /// Compares with a day number, not a time value: 19723 is 2024-01-01 UTC.
    int operator==(int32_t day) const;

    /// ISO 8601 week (Monday first), except that 29 to 31 December days that
    /// ISO puts into week 1 of the next year give 53.
    uint16_t mWeekOf();

    // Text forms: each replaces s, or leaves it alone for an unconvertible date.
    void mDate2Str(CGVString& s);
    void mTime2Str(CGVString& s);
    void mDateTime2Str(CGVString& s);
    void mGetMonthStr(CGVString& s);
    void mGetYearStr(CGVString& s);
    void mGetDayStr(CGVString& s);
    void mGetDayPlanStr(CGVString& s);
    void mGetWeekDayStr(CGVString& s);
    /// "Mar 5": the abbreviated month, a space, the day without a leading zero.
    void mGetMonthDateStr(CGVString& s);
    /// The time alone when marked so, else the date alone when marked so, else both.
    void mGetStr(CGVString& s);

    /// Copies the instant of another date; other classes change nothing.
    CGVObject& operator=(CGVObject const& other) override;
    /// -1, 0, 1 by day number; -1 for a null or a non-date.
    int32_t mCompare(CGVObject const* other) const override;
    /// DBVT_DATE only: applied field by field through the setters.
    void mConvertFromDBVariant(CDBVariant const& variant) override;
    /// VT_DATE only: split by VariantTimeToSystemTime, applied through the setters.
    void mConvertFromOleVariant(COleVariant const& variant) override;
    /// The raw 32-bit time value through the variant's (long, VT_DATE) constructor,
    /// which, as the framework's does, gives VT_I4 for a code it does not take.
    void mConvertToOleVariant(COleVariant* variant) const override;
    /// "W", then year, month, day, hour, minute, second each followed by a space.
    void Serialize(std::ostream& os) override;
    /// Reads the six fields and applies each through its setter as it is read.
    void Serialize(std::istream& is) override;
    using CGVObject::Serialize;

protected:
    int32_t DayNumber() const { return timeValue / 86400; }
    bool LocalFields(struct tm& fields) const;
    /// Steps shared by every setter: local fields, the change, normalisation.
    template <typename Change>
    void ChangeFields(Change change);
    void FormatInto(CGVString& s, const char* format);

    __time32_t timeValue;
    int dateOnly;
    int timeOnly;
};
