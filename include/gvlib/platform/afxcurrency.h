// COleCurrency: the framework's wrapper around an OLE currency value.
#pragma once

#include "gvlib/platform/afxstr.h"
#include "gvlib/platform/export.h"
#include "gvlib/platform/oleauto.h"

#ifndef LANG_USER_DEFAULT
#define LANG_USER_DEFAULT 0x0400
#endif

/// A currency amount: a 64-bit count of ten-thousandths with a status.
class GVLIB_API COleCurrency {
public:
    enum CurrencyStatus { valid = 0, invalid = 1, null = 2 };

    COleCurrency();
    COleCurrency(CY cySrc);
    /// nUnits whole units and nFractionalUnits ten-thousandths: (12, 5000) is 12.5.
    COleCurrency(LONG nUnits, LONG nFractionalUnits);

    CurrencyStatus GetStatus() const;
    void SetStatus(CurrencyStatus status);
    void SetCurrency(LONG nUnits, LONG nFractionalUnits);

    /// The amount as the variant conversion writes it in the locale `lcid`
    /// (0x400: the user's default locale): a '-' for a negative amount, no
    /// grouping, no currency symbol, the locale's decimal separator and only the
    /// fraction digits needed: 12.5 gives "12.5" (1033) or "12,5" (1031), 12 "12".
    /// A null or invalid currency gives an empty text. dwFlags is not used.
    CString Format(DWORD dwFlags = 0, LCID lcid = LANG_USER_DEFAULT) const;

    CY m_cur;
    CurrencyStatus m_status;
};
