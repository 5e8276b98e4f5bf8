// COleVariant, and the counted string's conversion to a wide BSTR.
#include <cstring>
#include <string>

#include "gvlib/platform/afxdisp.h"
#include "gvlib/platform/afxexcept.h"
#include "gvlib/platform/winnls.h"

namespace {

// Windows-1252 text to UTF-16 units, through the platform's code-page conversion.
std::u16string ToUtf16(const char* text, int length) {
    std::u16string out;
    if (length <= 0)
        return out;
    int n = MultiByteToWideChar(CP_ACP, 0, text, length, nullptr, 0);
    std::wstring wide(static_cast<size_t>(n), L'\0');
    MultiByteToWideChar(CP_ACP, 0, text, length, &wide[0], n);
    out.reserve(wide.size());
    for (wchar_t c : wide) {
        auto u = static_cast<uint32_t>(c);
        if (u >= 0x10000) {
            u -= 0x10000;
            out.push_back(static_cast<char16_t>(0xD800 + (u >> 10)));
            out.push_back(static_cast<char16_t>(0xDC00 + (u & 0x3FF)));
        } else {
            out.push_back(static_cast<char16_t>(u));
        }
    }
    return out;
}

BSTR WideBstr(const char* text, int length) {
    std::u16string wide = ToUtf16(text, length);
    BSTR b = SysAllocStringLen(wide.data(), static_cast<UINT>(wide.size()));
    if (b == nullptr)
        AfxThrowMemoryException();
    return b;
}

}  // namespace

BSTR CStringT<char>::AllocSysString() const { return WideBstr(GetString(), GetLength()); }

COleVariant::COleVariant() { VariantInit(this); }

COleVariant::COleVariant(const VARIANT& varSrc) {
    VariantInit(this);
    Copy(varSrc);
}

COleVariant::COleVariant(LPCVARIANT pSrc) {
    VariantInit(this);
    if (pSrc != nullptr)
        Copy(*pSrc);
}

COleVariant::COleVariant(const COleVariant& varSrc) : tagVARIANT() {
    VariantInit(this);
    Copy(varSrc);
}

COleVariant::COleVariant(LPCTSTR lpszSrc) {
    VariantInit(this);
    *this = lpszSrc;
}

COleVariant::COleVariant(LPCTSTR lpszSrc, VARTYPE vtSrc) {
    VariantInit(this);
    if (vtSrc != VT_BSTR && vtSrc != VT_BSTRT)
        AfxThrowInvalidArgException();
    vt = VT_BSTR;
    bstrVal = nullptr;
    if (lpszSrc == nullptr)
        return;
    if (vtSrc == VT_BSTRT) {
        bstrVal = SysAllocStringByteLen(lpszSrc, static_cast<UINT>(std::strlen(lpszSrc)));
        if (bstrVal == nullptr)
            AfxThrowMemoryException();
    } else {
        SetWide(lpszSrc, static_cast<int>(std::strlen(lpszSrc)));
    }
}

COleVariant::COleVariant(const CString& strSrc) {
    VariantInit(this);
    *this = strSrc;
}

COleVariant::COleVariant(BYTE nSrc) {
    VariantInit(this);
    *this = nSrc;
}

COleVariant::COleVariant(short nSrc, VARTYPE vtSrc) {
    VariantInit(this);
    vt = vtSrc == VT_BOOL ? VT_BOOL : VT_I2;
    if (vt == VT_BOOL)
        boolVal = nSrc ? VARIANT_TRUE : VARIANT_FALSE;
    else
        iVal = nSrc;
}

// Like the 16-bit constructor, only the codes meant for a 32-bit integer are kept;
// any other code (a date, say) gives a plain VT_I4 holding the value.
COleVariant::COleVariant(LONG lSrc, VARTYPE vtSrc) {
    VariantInit(this);
    switch (vtSrc) {
    case VT_BOOL:
        vt = VT_BOOL;
        boolVal = lSrc ? VARIANT_TRUE : VARIANT_FALSE;
        return;
    case VT_ERROR:
    case VT_UI4:
    case VT_INT:
    case VT_UINT:
        vt = vtSrc;
        break;
    default:
        vt = VT_I4;
        break;
    }
    lVal = lSrc;  // the rest of the data stays zero
}

COleVariant::COleVariant(float fltSrc) {
    VariantInit(this);
    *this = fltSrc;
}

COleVariant::COleVariant(double dblSrc, VARTYPE vtSrc) {
    VariantInit(this);
    vt = vtSrc == VT_DATE ? VT_DATE : VT_R8;
    dblVal = dblSrc;
}

COleVariant::COleVariant(LONGLONG nSrc) {
    VariantInit(this);
    *this = nSrc;
}

COleVariant::COleVariant(ULONGLONG nSrc) {
    VariantInit(this);
    *this = nSrc;
}

COleVariant::~COleVariant() { VariantClear(this); }

void COleVariant::Copy(const VARIANT& varSrc) {
    HRESULT hr = VariantCopy(this, &varSrc);
    if (FAILED(hr)) {
        if (hr == E_OUTOFMEMORY)
            AfxThrowMemoryException();
        AfxThrowOleException(hr);
    }
}

void COleVariant::SetWide(LPCTSTR lpszSrc, int nLength) { bstrVal = WideBstr(lpszSrc, nLength); }

void COleVariant::Clear() { VariantClear(this); }

const COleVariant& COleVariant::operator=(const VARIANT& varSrc) {
    if (static_cast<const VARIANT*>(this) != &varSrc)
        Copy(varSrc);
    return *this;
}

const COleVariant& COleVariant::operator=(LPCVARIANT pSrc) {
    if (pSrc == nullptr)
        Clear();
    else
        *this = *pSrc;
    return *this;
}

const COleVariant& COleVariant::operator=(const COleVariant& varSrc) {
    return *this = static_cast<const VARIANT&>(varSrc);
}

const COleVariant& COleVariant::operator=(LPCTSTR lpszSrc) {
    Clear();
    vt = VT_BSTR;
    bstrVal = nullptr;
    if (lpszSrc != nullptr)
        SetWide(lpszSrc, static_cast<int>(std::strlen(lpszSrc)));
    return *this;
}

const COleVariant& COleVariant::operator=(const CString& strSrc) {
    BSTR b = strSrc.AllocSysString();
    Clear();
    vt = VT_BSTR;
    bstrVal = b;
    return *this;
}

const COleVariant& COleVariant::operator=(BYTE nSrc) {
    Clear();
    vt = VT_UI1;
    bVal = nSrc;
    return *this;
}

const COleVariant& COleVariant::operator=(short nSrc) {
    Clear();
    vt = VT_I2;
    iVal = nSrc;
    return *this;
}

const COleVariant& COleVariant::operator=(LONG lSrc) {
    Clear();
    vt = VT_I4;
    lVal = lSrc;
    return *this;
}

const COleVariant& COleVariant::operator=(float fltSrc) {
    Clear();
    vt = VT_R4;
    fltVal = fltSrc;
    return *this;
}

const COleVariant& COleVariant::operator=(double dblSrc) {
    Clear();
    vt = VT_R8;
    dblVal = dblSrc;
    return *this;
}

const COleVariant& COleVariant::operator=(LONGLONG nSrc) {
    Clear();
    vt = VT_I8;
    llVal = nSrc;
    return *this;
}

const COleVariant& COleVariant::operator=(ULONGLONG nSrc) {
    Clear();
    vt = VT_UI8;
    ullVal = nSrc;
    return *this;
}

bool COleVariant::operator==(LPCVARIANT pSrc) const { return pSrc != nullptr && *this == *pSrc; }

bool COleVariant::operator==(const VARIANT& varSrc) const {
    if (this == &varSrc)
        return true;
    if (vt != varSrc.vt)
        return false;
    switch (vt & VT_TYPEMASK) {
    case VT_EMPTY:
    case VT_NULL:
        return true;
    case VT_BOOL:
        return boolVal == varSrc.boolVal;
    case VT_UI1:
    case VT_I1:
        return bVal == varSrc.bVal;
    case VT_I2:
    case VT_UI2:
        return iVal == varSrc.iVal;
    case VT_I4:
    case VT_UI4:
    case VT_INT:
    case VT_UINT:
    case VT_ERROR:
        return lVal == varSrc.lVal;
    case VT_R4:
        return fltVal == varSrc.fltVal;
    case VT_R8:
    case VT_DATE:
        return dblVal == varSrc.dblVal;
    case VT_BSTR: {
        UINT n = SysStringByteLen(bstrVal);
        return n == SysStringByteLen(varSrc.bstrVal) &&
               (n == 0 || std::memcmp(bstrVal, varSrc.bstrVal, n) == 0);
    }
    default:
        return llVal == varSrc.llVal;
    }
}

void COleVariant::Attach(VARIANT& varSrc) {
    Clear();
    std::memcpy(static_cast<VARIANT*>(this), &varSrc, sizeof(VARIANT));
    varSrc.vt = VT_EMPTY;
}

VARIANT COleVariant::Detach() {
    VARIANT result = *this;
    vt = VT_EMPTY;
    return result;
}
