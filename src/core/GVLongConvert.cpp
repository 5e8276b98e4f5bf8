// CGVLong's conversions from and to database and OLE variants.
#include "gvlib/core/GVLong.h"

#include "gvlib/platform/afxdb.h"
#include "gvlib/platform/afxdisp.h"

void CGVLong::mConvertFromDBVariant(CDBVariant const& variant) {
    switch (variant.m_dwType) {
    case DBVT_BOOL:
        // The framework's BOOL is a full int: -1 stays -1, 2 becomes 0.
        m_value = variant.m_boolVal % 2;
        break;
    case DBVT_UCHAR:
        m_value = variant.m_chVal;
        break;
    case DBVT_SHORT:
        m_value = variant.m_iVal;
        break;
    case DBVT_LONG:
        m_value = variant.m_lVal;
        break;
    default:
        break;
    }
}

namespace {

// Truncation toward zero as the original's float-to-long conversion; values that
// do not fit (and NaN) give the x86 "integer indefinite" INT32_MIN instead of UB.
int32_t TruncateFloat(float value) {
    if (!(value > -2147483904.0f && value < 2147483648.0f))
        return INT32_MIN;
    return static_cast<int32_t>(value);
}

}  // namespace

void CGVLong::mConvertFromOleVariant(COleVariant const& variant) {
    switch (variant.vt) {
    case VT_I4:
        m_value = variant.lVal;
        break;
    case VT_I2:
        m_value = variant.iVal;
        break;
    case VT_UI1:
        m_value = variant.bVal;
        break;
    case VT_R4:
        m_value = TruncateFloat(variant.fltVal);
        break;
    case VT_BOOL:
        m_value = variant.boolVal != 0 ? 1 : 0;
        break;
    default:
        break;
    }
}

void CGVLong::mConvertToOleVariant(COleVariant* variant) const {
    if (variant == nullptr)
        return;
    COleVariant temporary(static_cast<LONG>(m_value), VT_I4);
    *variant = temporary;
    VariantClear(&temporary);
}
