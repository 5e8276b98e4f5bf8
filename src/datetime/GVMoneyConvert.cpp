// CGVMoney's conversions: text, value-object slots and variants.
#include "gvlib/datetime/GVMoney.h"
#include "gvlib/platform/afxcurrency.h"
#include "gvlib/platform/afxdb.h"
#include "gvlib/platform/afxdisp.h"
#include "gvlib/string/GVString.h"
#include "platform/crt_number.h"

CGVMoney::CGVMoney(CGVString const& text) : CGVMoney() {
    mSetAmount(gvplatform::detail::CrtStrtod(text.GetString(), nullptr));
}

CGVMoney::operator CGVString() const {
    CGVString text;
    if (fractionalAmount != 0)
        text.Format("%.2f", mGetAmount());
    else
        text.Format("%d", static_cast<int>(wholeAmount));
    return text;
}

CGVObject* CGVMoney::mCopy() const { return new CGVMoney(*this); }
CGVObject* CGVMoney::mNew() const { return new CGVMoney(); }

CGVObject& CGVMoney::operator=(CGVObject const& other) {
    if (const auto* money = dynamic_cast<CGVMoney const*>(&other))
        *this = *money;
    return *this;
}

int32_t CGVMoney::mCompare(CGVObject const* other) const {
    const auto* money = dynamic_cast<CGVMoney const*>(other);
    if (money == nullptr)
        return -1;
    if (mGetAmount() < money->mGetAmount())
        return -1;
    return mGetAmount() > money->mGetAmount() ? 1 : 0;
}

void CGVMoney::mConvertFromDBVariant(CDBVariant const& variant) {
    switch (variant.m_dwType) {
    case DBVT_SHORT:
        wholeAmount = variant.m_iVal;  // the hundredths stay
        break;
    case DBVT_LONG:
        wholeAmount = variant.m_lVal;
        break;
    case DBVT_SINGLE:
        mSetAmount(variant.m_fltVal);
        break;
    case DBVT_DOUBLE:
        mSetAmount(variant.m_dblVal);
        break;
    default:
        break;
    }
}

void CGVMoney::mConvertFromOleVariant(COleVariant const& variant) {
    switch (variant.vt) {
    case VT_CY: {
        const CString text = COleCurrency(variant.cyVal).Format(0, LANG_USER_DEFAULT);
        mSetAmount(gvplatform::detail::CrtStrtod(text.GetString(), nullptr));
        break;
    }
    case VT_I2:
        wholeAmount = variant.iVal;
        break;
    case VT_R4:
        mSetAmount(variant.fltVal);
        break;
    case VT_R8:
        mSetAmount(variant.dblVal);
        break;
    default:
        break;
    }
}

void CGVMoney::mConvertToOleVariant(COleVariant* variant) const {
    if (variant == nullptr)
        return;
    COleVariant temporary(mGetAmount());
    *variant = temporary;
    VariantClear(&temporary);
}
