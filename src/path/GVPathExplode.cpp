// CGVPath: splitting a path into its volume and components, and joining them.
// Kept apart because it needs the string array.
#include "gvlib/array/GVStringArray.h"
#include "gvlib/path/GVPath.h"
#include "path/path_internal.h"

#include <cstdint>
#include <cstring>
#include <utility>

using gvpath::detail::IsDelimiter;

void CGVPath::Explode(CGVPath& volume, CGVStringArray& parts) const {
    // GetVolume is not const; it reads a copy.
    volume = CGVPath(*this).GetVolume();
    parts.mClear();
    // A plain array takes each piece in place; a derived one through its mAdd.
    bool plain = parts.IsPlain();
    CGVString part;
    gvpath::detail::ForEachComponent(GetString(), GetLength(), volume.GetLength(), [&](char const* piece, int size) {
        if (plain) {
            parts.AddText(piece, size);
            return;
        }
        part.SetString(piece, size);
        parts.mAdd(&part);
    });
}

namespace {

// The join of a plain array's strings written straight into one block sized
// for all of them; the result is what the step-by-step join below gives. The
// block is taken before anything changes, so a failed allocation leaves the
// path as it was without keeping a copy. False when the text could be too
// long for the one block, which the general join then handles.
// `partAt(i)` gives the array's string i where it lies (null for an empty slot).
template <typename PartAt>
bool ImplodeInOneBlock(CStringT<char>& path, char const* volume, int count, PartAt partAt) {
    const size_t head = volume != nullptr ? std::strlen(volume) : 0;
    int64_t bound = static_cast<int64_t>(head);
    for (int i = 0; i < count; ++i)
        if (CGVString const* part = partAt(i); part != nullptr && !part->IsEmpty())
            bound += 1 + part->GetLength();
    if (bound > INT32_MAX / 2)
        return false;
    if (bound == 0) {
        path.Empty();  // nothing to join, and nothing to allocate
        return true;
    }
    CStringT<char> out;
    char* text = out.GetBuffer(static_cast<int>(bound));
    if (head > 0)
        std::memcpy(text, volume, head);
    size_t n = head;
    char joint = CGVPath::CHAR_PATH_DELIMITER;  // the delimiter nearest the end so far
    auto note = [&joint](char const* from, size_t size) {
        for (size_t k = size; k-- > 0;)
            if (IsDelimiter(from[k])) {
                joint = from[k] == CGVPath::CHAR_UNIX_DELIMITER ? CGVPath::CHAR_UNIX_DELIMITER
                                                                : CGVPath::CHAR_PATH_DELIMITER;
                return;
            }
    };
    note(text, n);
    for (int i = 0; i < count; ++i) {
        CGVString const* part = partAt(i);
        if (part == nullptr || part->IsEmpty())
            continue;
        if (n == 0) {
            // An empty path takes the first part whole, embedded NULs included.
            std::memcpy(text, part->GetString(), static_cast<size_t>(part->GetLength()));
            n = static_cast<size_t>(part->GetLength());
            note(text, n);
            continue;
        }
        // Later parts as C text: trailing delimiters cut, leading ones skipped.
        while (n > 0 && IsDelimiter(text[n - 1]))
            --n;
        char const* tail = part->GetString();
        while (IsDelimiter(*tail))
            ++tail;
        const size_t rest = std::strlen(tail);
        text[n++] = joint;
        std::memcpy(text + n, tail, rest);
        n += rest;
        note(tail, rest);
    }
    out.ReleaseBufferSetLength(static_cast<int>(n));
    path = std::move(out);
    return true;
}

}  // namespace

void CGVPath::Implode(char const* volume, CGVStringArray const& parts) {
    if (parts.IsPlain() &&
        ImplodeInOneBlock(*this, volume, parts.mGetNumItems(), [&parts](int i) { return parts.TextAt(i); }))
        return;
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

