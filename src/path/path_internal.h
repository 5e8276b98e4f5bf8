// What the path sources share but the host never sees: the implementation's
// constant character sets and the byte tests every path member uses.
#pragma once

#include <cstring>
#include <exception>

#include "gvlib/string/GVString.h"
#include "platform/crt_text.h"

namespace gvpath::detail {

// Defined in GVPathModel.cpp, after the class's public constants, so that all of
// them are constructed in one translation unit in a fixed order.
extern CGVString const URL_DOUBLE_SLASH;           // "//"
extern CGVString const SPACE_BEFORE_DELIMITER;     // " \"
extern CGVString const TRIPLE_DOT;                 // "..."
extern CGVString const BAD_PATH_CHARACTERS_LONG;   // *?"<>|
extern CGVString const BAD_PATH_CHARACTERS_SHORT;  // *?"<>|+,[]= and a space
extern CGVString const BAD_NAME_CHARACTERS_LONG;   // \/: then *?"<>|
extern CGVString const BAD_NAME_CHARACTERS_SHORT;  // \/:; then *?"<>|+,[]= and a space
extern CGVString const LEGAL_URL_CHARACTERS;       // letters, digits, \/$-_.+!*'(), and a space

/// For editing members that build their result in several steps: the text they
/// started from is kept (a shared copy, so the edits below copy first) and put
/// back when an exception leaves the member, so a path is never left half-edited.
class KeepTextOnFailure {
public:
    explicit KeepTextOnFailure(CStringT<char>& text) noexcept
        : m_text(text), m_saved(text), m_pending(std::uncaught_exceptions()) {}
    KeepTextOnFailure(KeepTextOnFailure const&) = delete;
    KeepTextOnFailure& operator=(KeepTextOnFailure const&) = delete;
    ~KeepTextOnFailure() {
        if (std::uncaught_exceptions() > m_pending)
            m_text = m_saved;
    }

private:
    CStringT<char>& m_text;
    CStringT<char> const m_saved;
    int m_pending;
};

/// Whether `c` is one of the characters of `set`. The terminator is not a member
/// (strchr would say it is), and a null set is empty.
inline bool InSet(char const* set, char c) noexcept {
    return c != '\0' && set != nullptr && std::strchr(set, c) != nullptr;
}

/// isspace of the "C" locale: bytes of 128 and more are never white space.
inline bool IsSpace(char c) noexcept { return gvplatform::detail::IsSpace(c); }

inline bool IsDelimiter(char c) noexcept { return c == '\\' || c == '/'; }

/// Calls `visit(first, size)` for each component of `text[start, length)` as
/// Explode cuts them: runs of delimiters, leading or trailing, make no empty
/// components, and a component ends at an embedded NUL.
template <typename Visit>
void ForEachComponent(char const* text, int length, int start, Visit visit) {
    int i = start;
    while (i < length) {
        while (i < length && IsDelimiter(text[i]))
            ++i;
        int first = i;
        while (i < length && !IsDelimiter(text[i]))
            ++i;
        if (i > first)
            visit(text + first, static_cast<int>(strnlen(text + first, static_cast<size_t>(i - first))));
    }
}

}  // namespace gvpath::detail
