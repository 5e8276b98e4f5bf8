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
    // A plain array takes each piece in place; a derived one through its mAdd.
    bool plain = parts.IsPlain();
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
            int piece = static_cast<int>(strnlen(text + start, static_cast<size_t>(i - start)));
            if (plain) {
                parts.AddText(text + start, piece);
                continue;
            }
            part.SetString(text + start, piece);
            parts.mAdd(&part);
        }
    }
}

void CGVPath::Implode(char const* volume, CGVStringArray const& parts) {
    gvpath::detail::KeepTextOnFailure keep(*this);
    CGVString::operator=(volume);
    // A plain array's strings are read where they lie, a derived one's through
    // its mGetArrayItem.
    bool plain = parts.IsPlain();
    for (int i = 0; i < parts.mGetNumItems(); ++i) {
        // An empty slot leaves the destination as it was: start each one empty.
        CGVString copy;
        CGVString const* part = plain ? parts.TextAt(i) : &copy;
        if (!plain)
            parts.mGetArrayItem(&copy, i);
        if (part == nullptr || part->IsEmpty())
            continue;
        if (IsEmpty())
            CGVString::operator=(*part);
        else
            AppendPath(*part, '\0', 0);
    }
}

