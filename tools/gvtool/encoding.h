// The one place where the library's Windows-1252 text meets the user's
// encoding: terminals, files and arguments in UTF-8 (or Windows-1252).
#pragma once

#include <string>
#include <string_view>

namespace gvtool {

enum class Encoding { kUtf8, kCp1252 };

/// The encoding of everything the user reads and writes; set by --encoding,
/// otherwise taken from the locale (LC_ALL, LC_CTYPE, LANG), UTF-8 when unset.
Encoding& UserEncoding();
Encoding LocaleEncoding();

/// Library text in the user's encoding. A byte Windows-1252 leaves undefined
/// (0x81 0x8D 0x8F 0x90 0x9D) becomes U+FFFD in UTF-8 and is counted for a warning.
std::string ToUser(std::string_view cp1252);
/// User text for the library; raises Failure naming `what` and the byte offset for
/// text that is not valid UTF-8 or a character Windows-1252 lacks.
std::string FromUser(std::string_view text, std::string const& what);

/// A JSON string literal: ASCII, other characters as \uXXXX of their code
/// points, undefined bytes as \ufffd (counted for the warning).
std::string JsonQuoted(std::string_view cp1252);
/// A quoted string for reading on a terminal: control characters and undefined
/// bytes escaped (\n, \x81), everything else in the user's encoding.
std::string TextQuoted(std::string_view cp1252);

/// Prints the warning about undefined bytes shown, if there were any.
void WarnUndefinedBytes();

}  // namespace gvtool
