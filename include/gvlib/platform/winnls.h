// Win32 national-language services: code-page conversion and locale comparison.
// The ANSI code page is Windows-1252; wide text is wchar_t (UTF-32 on this host).
#pragma once

#include "gvlib/platform/export.h"
#include "gvlib/platform/wintypes.h"

#define CP_ACP 0
#define CP_OEMCP 1
#define CP_THREAD_ACP 3
#define CP_UTF8 65001

#define CSTR_LESS_THAN 1
#define CSTR_EQUAL 2
#define CSTR_GREATER_THAN 3

#define NORM_IGNORECASE 0x00000001
#define NORM_IGNORENONSPACE 0x00000002
#define NORM_IGNORESYMBOLS 0x00000004
#define NORM_IGNOREKANATYPE 0x00010000
#define NORM_IGNOREWIDTH 0x00020000
#define SORT_STRINGSORT 0x00001000

#define LOCALE_NEUTRAL 0x0000
#define LOCALE_USER_DEFAULT 0x0400
#define LOCALE_SYSTEM_DEFAULT 0x0800
#define LOCALE_INVARIANT 0x007F

#define ERROR_INSUFFICIENT_BUFFER 122
#define ERROR_INVALID_FLAGS 1004
#define ERROR_INVALID_PARAMETER 87
#define ERROR_NO_UNICODE_TRANSLATION 1113

/// Converts wide text to a code page; characters the page lacks become the default
/// character ('?'). cchWideChar -1 converts through the terminator. With cbMultiByte 0
/// answers the size needed. Answers 0 on failure (GetLastError tells why).
GVLIB_API int WideCharToMultiByte(UINT CodePage, DWORD dwFlags, LPCWSTR lpWideCharStr, int cchWideChar,
                                  LPSTR lpMultiByteStr, int cbMultiByte, LPCSTR lpDefaultChar,
                                  BOOL* lpUsedDefaultChar);
/// Converts code-page text to wide text; the same conventions as WideCharToMultiByte.
GVLIB_API int MultiByteToWideChar(UINT CodePage, DWORD dwFlags, LPCSTR lpMultiByteStr, int cbMultiByte,
                                  LPWSTR lpWideCharStr, int cchWideChar);
GVLIB_API int lstrlenW(LPCWSTR lpString);
GVLIB_API DWORD GetLastError();
GVLIB_API void SetLastError(DWORD dwErrCode);
GVLIB_API UINT GetACP();

/// Compares two Windows-1252 texts in the locale's word-sort order. Answers
/// CSTR_LESS_THAN, CSTR_EQUAL or CSTR_GREATER_THAN, or 0 when the locale is unknown
/// or the flags are not supported. A count of -1 means NUL-terminated.
GVLIB_API int CompareStringA(LCID Locale, DWORD dwCmpFlags, LPCSTR lpString1, int cchCount1, LPCSTR lpString2,
                             int cchCount2);
GVLIB_API LCID GetUserDefaultLCID();
GVLIB_API LCID GetSystemDefaultLCID();
