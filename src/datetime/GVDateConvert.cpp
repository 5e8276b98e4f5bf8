// CGVDate's value-object slots: assignment, comparison, variants and the text stream.
#include <istream>
#include <ostream>

#include "gvlib/datetime/GVDate.h"
#include "gvlib/platform/afxdb.h"
#include "gvlib/platform/afxdisp.h"
#include "gvlib/platform/oledate.h"

CGVObject& CGVDate::operator=(CGVObject const& other) {
    if (const auto* date = dynamic_cast<CGVDate const*>(&other))
        timeValue = date->timeValue;
    return *this;
}

int32_t CGVDate::mCompare(CGVObject const* other) const {
    const auto* date = dynamic_cast<CGVDate const*>(other);
    if (date == nullptr)
        return -1;
    if (DayNumber() < date->DayNumber())
        return -1;
    return DayNumber() > date->DayNumber() ? 1 : 0;
}

// The month goes to 0 first so that a day that the current month lacks (31 in
// a 30-day month) is not carried into the month after before the month is set.
void CGVDate::mConvertFromDBVariant(CDBVariant const& variant) {
    if (variant.m_dwType != DBVT_DATE || variant.m_pdate == nullptr)
        return;
    const TIMESTAMP_STRUCT& ts = *variant.m_pdate;
    mSetMonth(0);
    mSetDay(ts.day);
    mSetMonth(ts.month);
    mSetYear(static_cast<uint16_t>(ts.year));
    mSetHour(ts.hour);
    mSetMinute(ts.minute);
    mSetSecond(ts.second);
}

void CGVDate::mConvertFromOleVariant(COleVariant const& variant) {
    if (variant.vt != VT_DATE)
        return;
    SYSTEMTIME st;
    if (!VariantTimeToSystemTime(variant.date, &st)) {
        // Every field of a failed split is 65535, which no normalisation accepts.
        st.wYear = st.wMonth = st.wDay = st.wHour = st.wMinute = st.wSecond = 0xFFFF;
    }
    mSetMonth(0);
    mSetDay(st.wDay);
    mSetMonth(st.wMonth);
    mSetYear(st.wYear);
    mSetHour(st.wHour);
    mSetMinute(st.wMinute);
    mSetSecond(st.wSecond);
}

// The original passed the raw time value with the date's type code to the
// 32-bit constructor, which does not take that code: the host gets a VT_I4
// holding the time value.
void CGVDate::mConvertToOleVariant(COleVariant* variant) const {
    if (variant == nullptr)
        return;
    COleVariant temporary(static_cast<LONG>(timeValue), VT_DATE);
    *variant = temporary;
    VariantClear(&temporary);
}

void CGVDate::Serialize(std::ostream& os) {
    os << 'W' << mGetYear() << ' ' << mGetMonth() << ' ' << mGetDay() << ' ' << mGetHour() << ' ' << mGetMinute()
       << ' ' << mGetSecond() << ' ';
}

void CGVDate::Serialize(std::istream& is) {
    void (CGVDate::*const setters[])(uint16_t) = {&CGVDate::mSetYear, &CGVDate::mSetMonth, &CGVDate::mSetDay,
                                                  &CGVDate::mSetHour, &CGVDate::mSetMinute, &CGVDate::mSetSecond};
    for (auto setter : setters) {
        int32_t field = 0;
        is >> field;  // a field that cannot be read stays 0
        (this->*setter)(static_cast<uint16_t>(field));  // only the low 16 bits count
        is.get();
    }
}
