// The Win32 scalar type names, with the widths they had on 32-bit Windows.
#pragma once

#include <cstdint>

typedef uint8_t BYTE;
typedef uint16_t WORD;
typedef uint32_t DWORD;
typedef int32_t LONG;
typedef uint32_t ULONG;
typedef int32_t INT;
typedef uint32_t UINT;
typedef int16_t SHORT;
typedef uint16_t USHORT;
typedef long long LONGLONG;  // as on Windows, a type distinct from long
typedef unsigned long long ULONGLONG;
typedef int32_t BOOL;
typedef char CHAR;
typedef char TCHAR;
typedef wchar_t WCHAR;
typedef uint32_t LCID;
typedef int32_t HRESULT;
typedef int32_t SCODE;
// Pointer-sized integers of the original 32-bit platform.
typedef int32_t INT_PTR;
typedef uint32_t UINT_PTR;
typedef uint32_t DWORD_PTR;

typedef char* LPSTR;
typedef const char* LPCSTR;
typedef char* LPTSTR;
typedef const char* LPCTSTR;
typedef wchar_t* LPWSTR;
typedef const wchar_t* LPCWSTR;
typedef void* LPVOID;
typedef const void* LPCVOID;

#ifndef TRUE
#define TRUE 1
#endif
#ifndef FALSE
#define FALSE 0
#endif

// OLE automation's scalar types. OLECHAR is a 16-bit unit, as on the original
// platform, so that a BSTR holds the same bytes there and here.
typedef char16_t OLECHAR;
typedef OLECHAR* BSTR;
typedef const OLECHAR* LPCOLESTR;
typedef uint16_t VARTYPE;
typedef int16_t VARIANT_BOOL;
typedef double DATE;

#define VARIANT_TRUE ((VARIANT_BOOL)-1)
#define VARIANT_FALSE ((VARIANT_BOOL)0)

#define S_OK ((HRESULT)0)
#define S_FALSE ((HRESULT)1)
#define E_NOTIMPL ((HRESULT)0x80004001)
#define E_OUTOFMEMORY ((HRESULT)0x8007000E)
#define E_INVALIDARG ((HRESULT)0x80070057)
#define E_UNEXPECTED ((HRESULT)0x8000FFFF)
#define E_FAIL ((HRESULT)0x80004005)
#define DISP_E_TYPEMISMATCH ((HRESULT)0x80020005)
#define DISP_E_BADVARTYPE ((HRESULT)0x80020008)
#define DISP_E_OVERFLOW ((HRESULT)0x8002000A)
#define DISP_E_ARRAYISLOCKED ((HRESULT)0x8002000D)
#define DISP_E_BADINDEX ((HRESULT)0x8002000B)
#define SUCCEEDED(hr) (((HRESULT)(hr)) >= 0)
#define FAILED(hr) (((HRESULT)(hr)) < 0)
