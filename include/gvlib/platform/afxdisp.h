// COleVariant: the framework's owning wrapper around an OLE VARIANT.
#pragma once

#include "gvlib/platform/afxstr.h"
#include "gvlib/platform/export.h"
#include "gvlib/platform/oleauto.h"

/// The framework's narrow-string variant code: with COleVariant(text, VT_BSTRT) the
/// BSTR holds the narrow bytes unconverted (the code shares its value with VT_DECIMAL).
#define VT_BSTRA 14
#define VT_BSTRT VT_BSTRA

/// A VARIANT that owns its string or array and releases it on destruction.
class GVLIB_API COleVariant : public tagVARIANT {
public:
    COleVariant();
    COleVariant(const VARIANT& varSrc);
    COleVariant(LPCVARIANT pSrc);
    COleVariant(const COleVariant& varSrc);
    /// VT_BSTR holding the text in the 16-bit wide form.
    COleVariant(LPCTSTR lpszSrc);
    /// vtSrc VT_BSTR: the wide form; VT_BSTRT (14): VT_BSTR holding the narrow bytes.
    COleVariant(LPCTSTR lpszSrc, VARTYPE vtSrc);
    COleVariant(const CString& strSrc);
    COleVariant(BYTE nSrc);
    COleVariant(short nSrc, VARTYPE vtSrc = VT_I2);
    /// vtSrc is VT_I4, VT_ERROR, VT_BOOL, VT_UI4, VT_INT or VT_UINT; any other code
    /// gives VT_I4. The value fills the low 32 bits of the data, the rest stays zero.
    COleVariant(LONG lSrc, VARTYPE vtSrc = VT_I4);
    COleVariant(float fltSrc);
    COleVariant(double dblSrc, VARTYPE vtSrc = VT_R8);
    COleVariant(LONGLONG nSrc);
    COleVariant(ULONGLONG nSrc);
    ~COleVariant();

    const COleVariant& operator=(const VARIANT& varSrc);
    const COleVariant& operator=(LPCVARIANT pSrc);
    const COleVariant& operator=(const COleVariant& varSrc);
    const COleVariant& operator=(LPCTSTR lpszSrc);
    /// VT_BSTR holding the text in the framework's wide form.
    const COleVariant& operator=(const CString& strSrc);
    const COleVariant& operator=(BYTE nSrc);
    const COleVariant& operator=(short nSrc);
    const COleVariant& operator=(LONG lSrc);
    const COleVariant& operator=(float fltSrc);
    const COleVariant& operator=(double dblSrc);
    const COleVariant& operator=(LONGLONG nSrc);
    const COleVariant& operator=(ULONGLONG nSrc);

    bool operator==(const VARIANT& varSrc) const;
    bool operator==(LPCVARIANT pSrc) const;

    void Clear();
    void Attach(VARIANT& varSrc);
    VARIANT Detach();
    operator LPVARIANT() { return this; }
    operator LPCVARIANT() const { return this; }

private:
    void Copy(const VARIANT& varSrc);
    void SetWide(LPCTSTR lpszSrc, int nLength);
};
