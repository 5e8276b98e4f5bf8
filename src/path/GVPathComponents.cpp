// CGVPath: names, extensions, directories and volumes; joining and cutting
// components. Explode and Implode live in GVPathExplode.cpp.
#include "gvlib/path/GVPath.h"

#include <algorithm>
#include <cstdint>
#include <cstring>

#include "gvlib/platform/afxstr.h"
#include "path/path_internal.h"

using gvpath::detail::IsDelimiter;

namespace {

// Whether p points into the text of s (a tail taken from the path itself).
bool Inside(CGVString const& s, char const* p) {
    return p >= s.GetString() && p <= s.GetString() + s.GetLength();
}

// Index of the first backslash or slash at or after `start`, or -1.
int FindAnyDelimiter(CGVString const& text, int start) {
    for (int i = start, n = text.GetLength(); i < n; ++i) {
        if (IsDelimiter(text.GetAt(i)))
            return i;
    }
    return -1;
}

// The text up to and including the delimiter at `delimiter`, or all of it.
CGVPath UpToDelimiter(CGVString const& text, int delimiter) {
    return CGVPath(delimiter < 0 ? text : text.Left(delimiter + 1));
}

}  // namespace

// ---- Names and extensions ---------------------------------------------------------------

CGVPath CGVPath::GetName() {
    int i = FindLastPathDelimiter();
    return i < 0 ? CGVPath(*this) : CGVPath(Mid(i + 1));
}

CGVPath CGVPath::GetNameOnly() {
    CGVPath name = GetName();
    name.TrimExtension();
    return name;
}

CGVPath CGVPath::GetExtension() {
    int i = FindLastTypeDelimiter();
    return i < 0 ? CGVPath() : CGVPath(Mid(i + 1));
}

void CGVPath::AppendExtension(char const* extension) {
    // An extension taken from this path's own text is read before the "." lands
    // after it (and before the append may move the block).
    if (extension != nullptr && Inside(*this, extension)) {
        const CGVString own(extension);
        AppendExtension(own.GetString());
        return;
    }
    CGVString::operator+=(FILE_TYPE_DELIMITER);
    if (extension != nullptr)
        CGVString::operator+=(extension);
}

void CGVPath::SetExtension(char const* extension) {
    gvpath::detail::KeepTextOnFailure keep(*this);
    if (extension == nullptr || *extension == '\0')
        return;
    TrimExtension();
    AppendExtension(extension);
}

void CGVPath::SetExtension(int id) {
    CString extension;
    extension.LoadString(static_cast<UINT>(id));
    SetExtension(extension.GetString());
}

void CGVPath::TrimExtension() {
    int i = FindLastTypeDelimiter();
    if (i >= 0)
        TrimRight(i);
}

// ---- Directories ------------------------------------------------------------------------

CGVPath CGVPath::GetDirectory() {
    int i = FindLastPathDelimiter();
    bool addDelimiter = false;
    if (i < 0) {
        // A drive-relative name such as C:name lives in the root of its drive.
        addDelimiter = ReverseFind(CHAR_DISK_DELIMITER) == 1;
        i = addDelimiter ? 2 : 0;
    }
    CGVPath directory(Left(i));
    if (addDelimiter)
        directory.AppendDelimiter(FILE_PATH_DELIMITER);
    return directory;
}

CGVPath CGVPath::GetParentDirectory() {
    CGVPath parent(*this);
    // An empty path has no last character to look at, and no parent.
    if (parent.IsEmpty())
        return parent;
    if (IsDelimiter(parent.GetAt(parent.GetLength() - 1)))
        parent.TrimRightDelimiters(0);
    parent.TrimRightPath();
    parent.AppendDelimiter(FILE_PATH_DELIMITER);
    return parent;
}

// ---- Joining ----------------------------------------------------------------------------

namespace {

// The common join (the path's own delimiter, no white space trimmed) is done
// in place: trailing delimiters cut, leading ones of the tail skipped, and the
// joint and the rest appended, with no temporary strings. The result is that
// of the general form below.
bool AppendInPlace(CGVPath& path, char const* tail) {
    if (tail != nullptr && Inside(path, tail))
        return false;
    char const* text = path.GetString();
    int end = path.GetLength();
    char joint = CGVPath::CHAR_PATH_DELIMITER;
    for (int i = end - 1; i >= 0; --i) {
        if (IsDelimiter(text[i])) {
            joint = text[i] == CGVPath::CHAR_UNIX_DELIMITER ? CGVPath::CHAR_UNIX_DELIMITER
                                                            : CGVPath::CHAR_PATH_DELIMITER;
            break;
        }
    }
    while (end > 0 && IsDelimiter(text[end - 1]))
        --end;
    if (tail == nullptr)
        tail = "";
    while (IsDelimiter(*tail))
        ++tail;
    size_t rest = std::strlen(tail);
    int64_t need = int64_t{end} + 1 + static_cast<int64_t>(rest);
    if (need > INT32_MAX / 2)
        return false;  // the general join raises what such a length raises
    // Room first (doubling, as appends grow): the one step that can fail comes
    // before any change, so a failure leaves the path as it was, and the edits
    // below neither allocate nor copy the block.
    int64_t room = need > path.GetAllocLength() ? std::max<int64_t>(need, int64_t{path.GetAllocLength()} * 2) : need;
    path.Preallocate(static_cast<int>(room));  // also makes a shared block this path's own
    if (end < path.GetLength())
        path.Truncate(end);
    path.AppendChar(joint);
    path.Append(tail, static_cast<int>(rest));
    return true;
}

}  // namespace

void CGVPath::AppendPath(char const* tail, char delimiter, int whitespace) {
    if (IsEmpty())
        return;
    if (delimiter == '\0' && whitespace == 0 && AppendInPlace(*this, tail))
        return;
    gvpath::detail::KeepTextOnFailure keep(*this);
    CGVString joint = FILE_PATH_DELIMITER;
    if (delimiter != '\0') {
        joint = delimiter;
    } else {
        // The path's own kind: the delimiter nearest its end decides.
        for (int i = GetLength() - 1; i >= 0; --i) {
            if (IsDelimiter(GetAt(i))) {
                joint = GetAt(i) == CHAR_UNIX_DELIMITER ? FILE_UNIX_DELIMITER : FILE_PATH_DELIMITER;
                break;
            }
        }
    }
    CGVPath rest(tail);
    if (delimiter != '\0') {
        char const set[] = {delimiter, '\0'};
        TrimRightCharacters(set, whitespace);
        rest.TrimLeftCharacters(set, whitespace);
    } else {
        TrimRightDelimiters(whitespace);
        rest.TrimLeftDelimiters(whitespace);
    }
    CGVString::operator+=(joint);
    CGVString::operator+=(rest);
}

void CGVPath::AppendPath(int id, char delimiter, int whitespace) {
    CString tail;
    tail.LoadString(static_cast<UINT>(id));
    AppendPath(tail.GetString(), delimiter, whitespace);
}

void CGVPath::AppendDelimiter(char const* text) { AppendPath(text, '\0', 0); }

void CGVPath::AppendWildcard() { AppendPath(FILE_WILDCARD, '\0', 0); }

// ---- Cutting the last component ------------------------------------------------------------

void CGVPath::TrimRightPath() { PrivateTrimRightPath('\0'); }

void CGVPath::PrivateTrimRightPath(char delimiter) {
    // A cut that leaves no such delimiter from index 2 on has reached a root
    // (C:, \\server, or a one-letter relative name), which keeps a delimiter.
    auto cutAt = [this](char at, CGVString const& rootDelimiter) {
        TrimRight(ReverseFind(at));
        if (Find(at, 2) < 0)
            AppendDelimiter(rootDelimiter);
    };
    if (delimiter != '\0' && Find(delimiter) >= 0)
        cutAt(delimiter, FILE_PATH_DELIMITER);
    else if (Find(CHAR_PATH_DELIMITER) >= 0)
        cutAt(CHAR_PATH_DELIMITER, FILE_PATH_DELIMITER);
    else if (Find(CHAR_UNIX_DELIMITER) >= 0)
        cutAt(CHAR_UNIX_DELIMITER, FILE_UNIX_DELIMITER);
}

// ---- Volumes ----------------------------------------------------------------------------

CGVPath CGVPath::GetVolume() {
    int length = GetLength();
    if (length == 0)
        return CGVPath();
    char first = GetAt(0);
    if (first == CHAR_PATH_DELIMITER && length >= 2) {
        if (GetAt(1) != CHAR_PATH_DELIMITER)
            return CGVPath();
        // \\server\share\x: the server and its delimiter, not the share.
        return UpToDelimiter(*this, FindAnyDelimiter(*this, 2));
    }
    if (IsLegalDriveLetter(first) && length >= 2)
        return GetAt(1) == CHAR_DISK_DELIMITER ? CGVPath(Left(2)) : CGVPath();
    if (IsURL()) {
        // A URL whose scheme begins with neither a letter nor a backslash: its
        // scheme, up to two slashes and the host, with the delimiter after it.
        int host = Find(CHAR_URL_SCHEME_DELIMITER) + 1;
        for (int skipped = 0; skipped < 2 && GetAt(host) == CHAR_URL_PATH_DELIMITER; ++skipped)
            ++host;
        return UpToDelimiter(*this, FindAnyDelimiter(*this, host));
    }
    return CGVPath();
}

void CGVPath::TrimVolume() {
    int n = GetVolume().GetLength();
    if (n > 0)
        TrimLeft(n);
}

void CGVPath::SetVolume(char const* volume) {
    int n = GetVolume().GetLength();
    if (n == 0)
        return;
    CGVPath rest(Mid(n));
    CGVString::operator=(volume);
    AppendPath(rest, '\0', 0);
}
