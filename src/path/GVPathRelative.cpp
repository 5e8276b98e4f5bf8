// CGVPath: the relative path from a base directory to this path, for the file
// system (backslashes) and for links in URLs (slashes).
#include "gvlib/path/GVPath.h"

#include <algorithm>

#include "path/path_internal.h"

using gvpath::detail::IsDelimiter;

namespace {

// How many leading characters agree, letters matched by the C runtime's toupper.
int CommonPrefixLength(CGVString const& a, CGVString const& b) {
    int limit = std::min(a.GetLength(), b.GetLength());
    int i = 0;
    while (i < limit && gvplatform::detail::ToUpper(a.GetAt(i)) == gvplatform::detail::ToUpper(b.GetAt(i)))
        ++i;
    return i;
}

// Whether the character at `k` of `text` ends a component there: the end of the
// text or a delimiter.
bool EndsComponent(CGVString const& text, int k) { return k >= text.GetLength() || IsDelimiter(text.GetAt(k)); }

// The largest index from `from` down to 1 holding a delimiter, or 0.
int LastDelimiterDownTo1(CGVString const& text, int from) {
    for (int j = from; j >= 1; --j) {
        if (IsDelimiter(text.GetAt(j)))
            return j;
    }
    return 0;
}

// How many components the base lies below the common directory. A common
// directory that the cut can never reach (C: without its delimiter, a bare
// server name, a base mixing delimiters) ends the count at the root instead:
// the cut stops changing there.
int StepsUp(CGVPath up, CGVString const& common) {
    if (!up.IsVolume())
        up.TrimDelimiters();
    int steps = 0;
    while (up.Compare(common) != 0) {
        CGVString before = up;
        up.TrimRightPath();
        if (up.Compare(before) == 0)
            break;
        ++steps;
    }
    return steps;
}

}  // namespace

CGVString CGVPath::GetRelativePath(char const* base) const { return PrivateGetRelativePath(base, CHAR_PATH_DELIMITER); }

CGVString CGVPath::GetUrlRelativePath(char const* base) const {
    return PrivateGetRelativePath(base, CHAR_UNIX_DELIMITER);
}

CGVString CGVPath::PrivateGetRelativePath(char const* base, char delimiter) const {
    CGVPath baseDir(base);
    if (!IsFullPathName() || !baseDir.IsFullPathName())
        return CGVString();
    CGVPath targetDir(*this);
    targetDir.PrivateTrimRightPath(delimiter);
    if (targetDir.IsEmpty() || baseDir.IsEmpty())
        return CGVString();
    int i = CommonPrefixLength(targetDir, baseDir);
    if (i == 0)
        return CGVString();

    // The common directory, written as the base writes it, and where the rest
    // of this path begins.
    CGVPath common(baseDir.Left(i));
    int rest = i;
    if (!common.IsVolume()) {
        common.TrimDelimiters();
        int k = common.GetLength();
        if (!EndsComponent(targetDir, k) || !EndsComponent(baseDir, k)) {
            // C:\a\b of C:\a\bc and C:\a\bd ends inside a component: back up to C:\a.
            int j = LastDelimiterDownTo1(common, k - 1);
            common.TrimRight(j);
            rest = j;
        }
    }

    int steps = StepsUp(baseDir, common);

    CGVPath remainder(Mid(rest));
    remainder.TrimLeftDelimiters(0);
    CGVString result;
    for (int n = 0; n < steps; ++n) {
        result += FILE_PARENT_DIR;
        result += delimiter;
    }
    if (delimiter == CHAR_UNIX_DELIMITER)
        remainder.MakeDelimitersCanonical();
    result += remainder;
    return result;
}
