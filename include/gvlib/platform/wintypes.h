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
typedef int64_t LONGLONG;
typedef uint64_t ULONGLONG;
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
