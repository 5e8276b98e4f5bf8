// OLE automation data: BSTR, CY, SAFEARRAY and VARIANT with their API calls.
#pragma once

#include "gvlib/platform/export.h"
#include "gvlib/platform/wintypes.h"

enum VARENUM : VARTYPE {
    VT_EMPTY = 0,
    VT_NULL = 1,
    VT_I2 = 2,
    VT_I4 = 3,
    VT_R4 = 4,
    VT_R8 = 5,
    VT_CY = 6,
    VT_DATE = 7,
    VT_BSTR = 8,
    VT_DISPATCH = 9,
    VT_ERROR = 10,
    VT_BOOL = 11,
    VT_VARIANT = 12,
    VT_UNKNOWN = 13,
    VT_DECIMAL = 14,
    VT_I1 = 16,
    VT_UI1 = 17,
    VT_UI2 = 18,
    VT_UI4 = 19,
    VT_I8 = 20,
    VT_UI8 = 21,
    VT_INT = 22,
    VT_UINT = 23,
    VT_ARRAY = 0x2000,
    VT_BYREF = 0x4000,
    VT_TYPEMASK = 0x0FFF
};

/// Currency: a 64-bit count of ten-thousandths.
union CY {
    struct {
        ULONG Lo;
        LONG Hi;
    };
    LONGLONG int64;
};

struct SAFEARRAYBOUND {
    ULONG cElements;
    LONG lLbound;
};

/// A safe array descriptor. As on the original platform the bounds are stored
/// last dimension first, so rgsabound[0] of a vector is its only dimension.
struct SAFEARRAY {
    USHORT cDims;
    USHORT fFeatures;
    ULONG cbElements;
    ULONG cLocks;
    void* pvData;
    SAFEARRAYBOUND rgsabound[1];
};

#define FADF_AUTO 0x0001
#define FADF_STATIC 0x0002
#define FADF_EMBEDDED 0x0004
#define FADF_FIXEDSIZE 0x0010
#define FADF_HAVEVARTYPE 0x0080

struct tagVARIANT {
    VARTYPE vt;
    WORD wReserved1;
    WORD wReserved2;
    WORD wReserved3;
    union {
        LONGLONG llVal;
        LONG lVal;
        BYTE bVal;
        SHORT iVal;
        float fltVal;
        double dblVal;
        VARIANT_BOOL boolVal;
        SCODE scode;
        CY cyVal;
        DATE date;
        BSTR bstrVal;
        SAFEARRAY* parray;
        CHAR cVal;
        USHORT uiVal;
        ULONG ulVal;
        ULONGLONG ullVal;
        INT intVal;
        UINT uintVal;
        void* byref;
    };
};
typedef tagVARIANT VARIANT;
typedef VARIANT* LPVARIANT;
typedef const VARIANT* LPCVARIANT;
typedef VARIANT VARIANTARG;

// BSTR: a 32-bit byte count, the bytes, then a 16-bit NUL. The pointer is to the bytes.
GVLIB_API BSTR SysAllocString(const OLECHAR* psz);
GVLIB_API BSTR SysAllocStringLen(const OLECHAR* pch, UINT cch);
/// Stores the bytes unconverted: how a narrow text travels in a BSTR.
GVLIB_API BSTR SysAllocStringByteLen(LPCSTR psz, UINT len);
GVLIB_API void SysFreeString(BSTR bstr);
GVLIB_API UINT SysStringLen(BSTR bstr);
GVLIB_API UINT SysStringByteLen(BSTR bstr);

GVLIB_API SAFEARRAY* SafeArrayCreate(VARTYPE vt, UINT cDims, SAFEARRAYBOUND* rgsabound);
GVLIB_API SAFEARRAY* SafeArrayCreateVector(VARTYPE vt, LONG lLbound, ULONG cElements);
GVLIB_API HRESULT SafeArrayDestroy(SAFEARRAY* psa);
GVLIB_API HRESULT SafeArrayCopy(SAFEARRAY* psa, SAFEARRAY** ppsaOut);
GVLIB_API HRESULT SafeArrayLock(SAFEARRAY* psa);
GVLIB_API HRESULT SafeArrayUnlock(SAFEARRAY* psa);
/// Locks the array and gives its elements; 0 (S_OK) on success.
GVLIB_API HRESULT SafeArrayAccessData(SAFEARRAY* psa, void** ppvData);
GVLIB_API HRESULT SafeArrayUnaccessData(SAFEARRAY* psa);
GVLIB_API UINT SafeArrayGetDim(SAFEARRAY* psa);
GVLIB_API UINT SafeArrayGetElemsize(SAFEARRAY* psa);
GVLIB_API HRESULT SafeArrayGetLBound(SAFEARRAY* psa, UINT nDim, LONG* plLbound);
GVLIB_API HRESULT SafeArrayGetUBound(SAFEARRAY* psa, UINT nDim, LONG* plUbound);
GVLIB_API HRESULT SafeArrayGetVartype(SAFEARRAY* psa, VARTYPE* pvt);

GVLIB_API void VariantInit(VARIANTARG* pvarg);
/// Releases what the variant owns (string, array) and leaves it VT_EMPTY.
GVLIB_API HRESULT VariantClear(VARIANTARG* pvarg);
/// Deep copy: strings keep their bytes, arrays are duplicated.
GVLIB_API HRESULT VariantCopy(VARIANTARG* pvargDest, const VARIANTARG* pvargSrc);
