// CGVString's value-object slots, variant conversions and text stream form.
#include <cstring>
#include <istream>
#include <ostream>
#include <string>
#include <typeinfo>

#include "core/stream_io.h"
#include "platform/loading_policy.h"
#include "gvlib/core/GVObjectVisitor.h"
#include "gvlib/platform/afxdb.h"
#include "gvlib/platform/afxdisp.h"
#include "gvlib/platform/winnls.h"
#include "gvlib/string/GVString.h"

CGVObject* CGVString::mCopy() const { return new CGVString(*this); }

CGVObject* CGVString::mNew() const { return new CGVString; }

CGVObject& CGVString::operator=(CGVObject const& other) {
    if (auto const* text = dynamic_cast<CGVString const*>(&other))
        CStringT<char>::operator=(*text);
    return *this;
}

int32_t CGVString::mCompare(CGVObject const* other) const {
    // An exact type check first: it is a pointer comparison, where the cast
    // walks the class hierarchy on every comparison of a sort.
    auto const* text = (other != nullptr && typeid(*other) == typeid(CGVString))
                           ? static_cast<CGVString const*>(other)
                           : dynamic_cast<CGVString const*>(other);
    if (text == nullptr)
        return -1;
    // CSTR_LESS_THAN (1), CSTR_EQUAL (2), CSTR_GREATER_THAN (3), or 0 on failure.
    return CompareStringA(gvSortLCID, 0, GetString(), -1, text->GetString(), -1) - 2;
}

int32_t CGVString::mVisit(CGVObjectVisitor* visitor, int32_t param) {
    return visitor ? visitor->mVisitString(this, param) : 0;
}

void CGVString::mConvertFromDBVariant(CDBVariant const& variant) {
    switch (variant.m_dwType) {
    case DBVT_SHORT:
        Format("%d", static_cast<int>(variant.m_iVal));
        break;
    case DBVT_LONG:
        Format("%d", static_cast<int>(variant.m_lVal));
        break;
    case DBVT_SINGLE:
        Format("%.1f", static_cast<double>(variant.m_fltVal));
        break;
    case DBVT_DOUBLE:
        Format("%.1f", variant.m_dblVal);
        break;
    case DBVT_STRING:
    case DBVT_ASCII:
        if (variant.m_pstring != nullptr)
            *this = variant.m_pstring->GetString();
        break;
    case DBVT_WSTRING:
        if (variant.m_pstringW != nullptr)
            *this = variant.m_pstringW->GetString();
        break;
    default:
        break;
    }
}

void CGVString::mConvertFromOleVariant(COleVariant const& variant) {
    switch (variant.vt) {
    case VT_I4:
        Format("%d", static_cast<int>(variant.lVal));
        break;
    case VT_R4:
        Format("%.1f", static_cast<double>(variant.fltVal));
        break;
    case VT_R8:
        Format("%.1f", variant.dblVal);
        break;
    case VT_BSTR:
        // Read as narrow text, the form mConvertToOleVariant produces; a BSTR
        // always ends in NUL bytes, so the read stays inside it.
        if (variant.bstrVal != nullptr)
            *this = reinterpret_cast<char const*>(variant.bstrVal);
        break;
    default:
        break;
    }
}

void CGVString::mConvertToOleVariant(COleVariant* variant) const {
    if (variant == nullptr)
        return;
    COleVariant narrow(GetString(), VT_BSTRT);
    *variant = narrow;
    VariantClear(&narrow);
}

void CGVString::Serialize(std::ostream& os) {
    // The body is counted, so spaces and line ends survive; a NUL ends the text.
    int32_t length = static_cast<int32_t>(std::strlen(GetString()));
    os << 'T' << length << ' ';
    os.write(GetString(), length);
    os << ' ';
}

void CGVString::Serialize(std::istream& is) {
    int32_t length = 0;
    is >> length;
    is.get();
    // A negative length (damaged data) reads nothing, nor does a failed stream.
    // The text announced must fit the budget; it is read in chunks, so a short
    // body costs what arrived.
    if (length > 0 && !is.fail())
        gvplatform::detail::ChargeInput(static_cast<uint64_t>(length) + 1);
    std::string text = gvlib::detail::ReadRaw(is, length);
    is.get();
    gvlib::detail::CheckBody(is, length >= 0 && static_cast<int64_t>(text.size()) == length);
    SetString(text.data(), static_cast<int>(text.size()));
}
