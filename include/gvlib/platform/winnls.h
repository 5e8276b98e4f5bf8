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

#define MB_PRECOMPOSED 0x00000001
#define MB_ERR_INVALID_CHARS 0x00000008
#define WC_ERR_INVALID_CHARS 0x00000080
#define WC_NO_BEST_FIT_CHARS 0x00000400

/// Converts wide text to a code page. CP_ACP, CP_THREAD_ACP and 1252 are Windows-1252,
/// CP_OEMCP is 437, CP_UTF8 is UTF-8; any other number ICU knows as "windows-N" or
/// "cpN" works too. Characters the page lacks become the default character ('?', or
/// *lpDefaultChar) and set *lpUsedDefaultChar; there is no best-fit look-alike, so
/// U+0101 gives '?', not 'a'. cchWideChar -1 converts through the terminator and
/// counts it. With cbMultiByte 0 answers the size needed. Answers 0 on failure, with
/// GetLastError: ERROR_INSUFFICIENT_BUFFER (the part that fits is written),
/// ERROR_INVALID_PARAMETER (null text, zero count, unknown page, a default character
/// with UTF-8), ERROR_INVALID_FLAGS, or ERROR_NO_UNICODE_TRANSLATION (an invalid code
/// point under WC_ERR_INVALID_CHARS, UTF-8 only).
/// Counts of wide text are counts of wchar_t, which is UTF-32 here: a character
/// outside the BMP is one unit, and a surrogate code point is invalid (U+FFFD).
GVLIB_API int WideCharToMultiByte(UINT CodePage, DWORD dwFlags, LPCWSTR lpWideCharStr, int cchWideChar,
                                  LPSTR lpMultiByteStr, int cbMultiByte, LPCSTR lpDefaultChar,
                                  BOOL* lpUsedDefaultChar);
/// Converts code-page text to wide text; the same pages and conventions as
/// WideCharToMultiByte. Every byte of Windows-1252 has a character (the five holes of
/// the page give U+0081, U+008D, U+008F, U+0090, U+009D). Undecodable input of other
/// pages becomes U+FFFD, or fails with ERROR_NO_UNICODE_TRANSLATION under
/// MB_ERR_INVALID_CHARS. Flags: MB_PRECOMPOSED (no effect) and MB_ERR_INVALID_CHARS;
/// UTF-8 takes only the latter.
GVLIB_API int MultiByteToWideChar(UINT CodePage, DWORD dwFlags, LPCSTR lpMultiByteStr, int cbMultiByte,
                                  LPWSTR lpWideCharStr, int cchWideChar);
/// Characters before the terminator; 0 for a null pointer.
GVLIB_API int lstrlenW(LPCWSTR lpString);
/// The calling thread's last error, as the functions above set it.
GVLIB_API DWORD GetLastError();
GVLIB_API void SetLastError(DWORD dwErrCode);
/// The ANSI code page: 1252.
GVLIB_API UINT GetACP();

/// Compares two Windows-1252 texts in the locale's order. Answers CSTR_LESS_THAN,
/// CSTR_EQUAL or CSTR_GREATER_THAN, or 0 with GetLastError ERROR_INVALID_PARAMETER
/// (an LCID that names no locale, a null text) or ERROR_INVALID_FLAGS.
///
/// The default word sort: letters compare case-blind first, then by accent, then lower
/// case before upper ("a" < "A" < "b"); punctuation and symbols come before digits,
/// digits before letters, digits one by one ("10" < "9"). Hyphen and apostrophe only
/// break an otherwise equal tie, by position and with apostrophe first; the text
/// holding them sorts after ("coop" < "co-op" < "cop", "'o" < "-o").
/// Flags: NORM_IGNORECASE, NORM_IGNORENONSPACE, NORM_IGNORESYMBOLS (spaces,
/// punctuation and symbols, hyphen and apostrophe among them), SORT_STRINGSORT
/// (hyphen and apostrophe are ordinary punctuation); NORM_IGNOREKANATYPE and
/// NORM_IGNOREWIDTH are accepted and change nothing in Windows-1252 text.
/// Locale: LOCALE_USER_DEFAULT, LOCALE_SYSTEM_DEFAULT and 0 are the user default
/// (gvplatform::SetUserDefaultLCID), LOCALE_INVARIANT the root order.
/// A negative count means NUL-terminated; otherwise exactly the counted bytes are
/// compared, an embedded NUL among them weighing nothing ("a\0b",3 equals "ab",2).
GVLIB_API int CompareStringA(LCID Locale, DWORD dwCmpFlags, LPCSTR lpString1, int cchCount1, LPCSTR lpString2,
                             int cchCount2);
/// Both answer the user default locale (1033 until gvplatform::SetUserDefaultLCID).
GVLIB_API LCID GetUserDefaultLCID();
GVLIB_API LCID GetSystemDefaultLCID();
