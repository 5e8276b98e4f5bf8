// Character classification and comparison as the original C runtime did them
// in its default "C" locale, plus the current-locale collation.
#pragma once

namespace gvplatform::detail {

/// isspace of the "C" locale: space, \t, \n, \v, \f, \r. Bytes above 127 are not space.
bool IsSpace(char c) noexcept;
/// ASCII-only case mapping, as _strlwr/_strupr in the "C" locale.
char ToLower(char c) noexcept;
char ToUpper(char c) noexcept;
/// strcmp on unsigned bytes, answering -1, 0 or 1.
int ByteCompare(const char* a, const char* b) noexcept;
/// _stricmp: both sides folded to lower case, then compared as unsigned bytes.
int ByteCompareNoCase(const char* a, const char* b) noexcept;
/// strcoll/_stricoll in the C runtime's current locale (byte order in "C").
int LocaleCollate(const char* a, const char* b, bool ignoreCase);

}  // namespace gvplatform::detail
