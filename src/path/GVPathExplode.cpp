// CGVPath: splitting a path into its volume and components, and joining them.
// Kept apart because it needs the string array.
#include "gvlib/array/GVStringArray.h"
#include "gvlib/path/GVPath.h"
#include "path/path_internal.h"

using gvpath::detail::IsDelimiter;

void CGVPath::Explode(CGVPath& volume, CGVStringArray& parts) const {
    // GetVolume is not const; it reads a copy.
    volume = CGVPath(*this).GetVolume();
    parts.mClear();
    char const* text = GetString();
    int length = GetLength();
    int i = volume.GetLength();
    CGVString part;
    while (i < length) {
        // Runs of delimiters, leading or trailing, make no empty parts.
        while (i < length && IsDelimiter(text[i]))
            ++i;
        int start = i;
        while (i < length && !IsDelimiter(text[i]))
            ++i;
        if (i > start) {
            // What Mid gives, without its temporaries: the piece up to an
            // embedded NUL, if it holds one.
            part.SetString(text + start, static_cast<int>(strnlen(text + start, static_cast<size_t>(i - start))));
            parts.mAdd(&part);
        }
    }
}

void CGVPath::Implode(char const* volume, CGVStringArray const& parts) {
    gvpath::detail::KeepTextOnFailure keep(*this);
    CGVString::operator=(volume);
    for (int i = 0; i < parts.mGetNumItems(); ++i) {
        // An empty slot leaves the destination as it was: start each one empty.
        CGVString part;
        parts.mGetArrayItem(&part, i);
        if (part.IsEmpty())
            continue;
        if (IsEmpty())
            CGVString::operator=(part);
        else
            AppendPath(part, '\0', 0);
    }
}
