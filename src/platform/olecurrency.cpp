// COleCurrency and its locale-dependent text form.
#include <unicode/dcfmtsym.h>
#include <unicode/locid.h>
#include <unicode/uloc.h>

#include <string>

#include "gvlib/platform/afxcurrency.h"
#include "gvlib/platform/winnls.h"

namespace {

// The locale's decimal separator as one Windows-1252 byte; '.' when the locale
// is unknown or its separator has no single byte in that code page.
char DecimalSeparator(LCID lcid) {
    if (lcid == LOCALE_USER_DEFAULT || lcid == LOCALE_NEUTRAL)
        lcid = GetUserDefaultLCID();
    if (lcid == LOCALE_INVARIANT)
        return '.';
    UErrorCode status = U_ZERO_ERROR;
    char name[ULOC_FULLNAME_CAPACITY] = {};
    uloc_getLocaleForLCID(lcid, name, sizeof name, &status);
    if (U_FAILURE(status) || name[0] == '\0')
        return '.';
    const icu::DecimalFormatSymbols symbols(icu::Locale(name), status);
    if (U_FAILURE(status))
        return '.';
    const icu::UnicodeString& sep = symbols.getConstSymbol(icu::DecimalFormatSymbols::kDecimalSeparatorSymbol);
    if (sep.length() != 1 || sep.charAt(0) > 0xFF)
        return '.';
    return static_cast<char>(sep.charAt(0));
}

}  // namespace

COleCurrency::COleCurrency() : m_status(valid) { m_cur.int64 = 0; }

COleCurrency::COleCurrency(CY cySrc) : m_cur(cySrc), m_status(valid) {}

COleCurrency::COleCurrency(LONG nUnits, LONG nFractionalUnits) : m_status(valid) {
    SetCurrency(nUnits, nFractionalUnits);
}

COleCurrency::CurrencyStatus COleCurrency::GetStatus() const { return m_status; }

void COleCurrency::SetStatus(CurrencyStatus status) { m_status = status; }

void COleCurrency::SetCurrency(LONG nUnits, LONG nFractionalUnits) {
    m_cur.int64 = static_cast<LONGLONG>(nUnits) * 10000 + nFractionalUnits;
    m_status = valid;
}

CString COleCurrency::Format(DWORD /*dwFlags*/, LCID lcid) const {
    if (m_status != valid)
        return CString();
    const bool negative = m_cur.int64 < 0;
    // The magnitude in unsigned arithmetic, so that the smallest value has one too.
    const ULONGLONG magnitude = negative ? 0 - static_cast<ULONGLONG>(m_cur.int64) : static_cast<ULONGLONG>(m_cur.int64);
    std::string text = negative ? "-" : "";
    text += std::to_string(magnitude / 10000);
    unsigned fraction = static_cast<unsigned>(magnitude % 10000);
    if (fraction != 0) {
        std::string digits = std::to_string(10000 + fraction).substr(1);
        digits.erase(digits.find_last_not_of('0') + 1);
        text += DecimalSeparator(lcid);
        text += digits;
    }
    return CString(text.c_str(), static_cast<int>(text.size()));
}
