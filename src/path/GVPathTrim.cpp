// CGVPath: trims by position, by character set and of delimiters; quotes;
// capitalisation; the private replacement members.
#include <cstring>

#include "gvlib/path/GVPath.h"
#include "path/path_internal.h"

using gvpath::detail::InSet;
using gvpath::detail::IsSpace;

namespace {

// A position counted from the end when negative, as both position trims read it.
int FromStart(int position, int length) { return position >= 0 ? position : length + position; }

// The set the delimiter trims use, "\/", built from the public constants.
CGVString DelimiterSet() { return CGVPath::FILE_PATH_DELIMITER + CGVPath::FILE_UNIX_DELIMITER; }

}  // namespace

// ---- Positions ------------------------------------------------------------------------
// TrimLeft and TrimRight split the text at the same q, each keeping its side; the
// asymmetric bounds (0 < q <= L against 0 <= q < L) are what every caller expects.

void CGVPath::TrimLeft(int position) {
    int length = GetLength();
    int q = FromStart(position, length);
    if (q > 0 && q <= length)
        Delete(0, q);
}

void CGVPath::TrimRight(int position) {
    int length = GetLength();
    int q = FromStart(position, length);
    if (q >= 0 && q < length)
        Truncate(q);
}

void CGVPath::Trim() { CStringT<char>::Trim(); }

// ---- Character sets ---------------------------------------------------------------------

void CGVPath::TrimLeftCharacters(char const* set, int whitespace) {
    char const* text = GetString();
    int length = GetLength();
    int i = 0;
    while (i < length && (InSet(set, text[i]) || (whitespace && IsSpace(text[i]))))
        ++i;
    if (i > 0)
        Delete(0, i);
}

void CGVPath::TrimRightCharacters(char const* set, int whitespace) {
    char const* text = GetString();
    int end = GetLength();
    while (end > 0 && (InSet(set, text[end - 1]) || (whitespace && IsSpace(text[end - 1]))))
        --end;
    if (end < GetLength())
        Truncate(end);
}

void CGVPath::TrimCharacters(char const* set, int remove) {
    PrivateReplaceCharacters(set, '\0', remove ? 0 : 1, 0);
}

void CGVPath::TrimLeftDelimiters(int whitespace) { TrimLeftCharacters(DelimiterSet(), whitespace); }

void CGVPath::TrimRightDelimiters(int whitespace) { TrimRightCharacters(DelimiterSet(), whitespace); }

void CGVPath::TrimDelimiters() { TrimRightDelimiters(0); }

// ---- Quotes and case ----------------------------------------------------------------------

void CGVPath::TrimQuotes(int /*unused*/) {
    TrimLeftCharacters("\"", 0);
    TrimRightCharacters("\"", 0);
}

void CGVPath::AddQuotes() {
    TrimQuotes(1);
    CGVString quoted('"', 1);
    quoted += *this;
    quoted += '"';
    CGVString::operator=(quoted);
}

void CGVPath::Capitalize() {
    if (IsEmpty())
        return;
    // No test of the character: every first byte moves down 32 codes, modulo 256.
    SetAt(0, static_cast<char>(static_cast<unsigned char>(GetAt(0)) - 32u));
}

// ---- Replacement ----------------------------------------------------------------------------

int CGVPath::PrivateReplace(char from, char to, int limit) {
    int length = GetLength();
    if (limit < 0 || limit >= length)
        limit = length;
    if (limit < 1)
        return 0;
    char* text = GetBuffer();
    int count = 0;
    for (int i = 0; i < limit; ++i) {
        if (text[i] == from) {
            text[i] = to;
            ++count;
        }
    }
    ReleaseBufferSetLength(length);
    return count;
}

int CGVPath::PrivateReplaceWhitespace(char to) {
    int length = GetLength();
    if (length == 0)
        return 0;
    char* text = GetBuffer();
    int count = 0;
    for (int i = 0; i < length; ++i) {
        if (IsSpace(text[i])) {
            text[i] = to;
            ++count;
        }
    }
    ReleaseBufferSetLength(length);
    return count;
}

int CGVPath::PrivateReplaceCharacters(char const* set, char replacement, int keepSet, int start) {
    int length = GetLength();
    // Callers pass a start inside the text; any other start changes nothing.
    if (start < 0 || start > length)
        return 0;
    bool emptySet = set == nullptr || *set == '\0';
    if (emptySet && !keepSet)
        return 0;
    if (emptySet) {
        int n = length - start;
        if (n < 1)
            return 0;
        if (replacement == '\0') {
            Truncate(start);
            return n;
        }
        std::memset(GetBuffer() + start, replacement, static_cast<size_t>(n));
        ReleaseBufferSetLength(length);
        return n;
    }
    if (start == length)
        return 0;
    char* text = GetBuffer();
    int count = 0;
    int out = start;
    for (int i = start; i < length; ++i) {
        bool hit = InSet(set, text[i]) != (keepSet != 0);
        if (!hit) {
            text[out++] = text[i];
            continue;
        }
        ++count;
        if (replacement != '\0')
            text[out++] = replacement;
    }
    ReleaseBufferSetLength(out);
    return count;
}

int CGVPath::PrivateReplaceGroup(char first, char last, char replacement, int limit) {
    int from = static_cast<signed char>(first);
    int to = static_cast<signed char>(last);
    if (from > to)
        return 0;
    int count = 0;
    int guard = 0;
    // The codes are stepped as ints, so a range ending at 127 ends after 127
    // instead of wrapping round to -128 for ever.
    for (int code = from; code <= to; ++code) {
        char ch = static_cast<char>(code);
        for (;;) {
            // Each search starts again at index 0 and stays inside the text.
            char const* text = GetString();
            void const* hit = std::memchr(text, ch, static_cast<size_t>(GetLength()));
            if (hit == nullptr)
                break;
            int i = static_cast<int>(static_cast<char const*>(hit) - text);
            if (limit > 0 && i >= limit)
                break;
            SetAt(i, replacement);
            ++count;
            // A replacement inside the range would be found again for ever. Once
            // the guard has passed 100, each code's search ends after one hit.
            if (guard++ > 100)
                break;
        }
    }
    return count;
}
