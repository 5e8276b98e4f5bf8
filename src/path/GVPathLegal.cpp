// CGVPath: whether a path or a name may be used on its volume, and rewriting
// names and paths so that they may. Long-name volumes (components of more than
// 12 characters) forbid little; short-name ones hold names to 8.3.
#include "gvlib/path/GVPath.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <utility>

#include "gvlib/array/GVStringArray.h"
#include "path/path_internal.h"

using gvpath::detail::BAD_NAME_CHARACTERS_LONG;
using gvpath::detail::BAD_NAME_CHARACTERS_SHORT;
using gvpath::detail::BAD_PATH_CHARACTERS_LONG;
using gvpath::detail::BAD_PATH_CHARACTERS_SHORT;
using gvpath::detail::ForEachComponent;
using gvpath::detail::IsDelimiter;
using gvpath::detail::SPACE_BEFORE_DELIMITER;
using gvpath::detail::TRIPLE_DOT;

namespace {

// The longest base name of the short 8.3 form.
constexpr int kShortBaseLength = 8;

// A volume limit as a count of characters to keep: limits far beyond any text
// keep everything.
int KeepCount(uint32_t limit) { return limit > 0x7FFFFFFFu ? 0x7FFFFFFF : static_cast<int>(limit); }

// GetVolumeMaxExtension from a maximum component already asked for, which
// spares a second volume query.
uint32_t MaxExtensionFor(uint32_t maxComponent) { return maxComponent < 260 ? 3 : 256; }

// ---- Long-name paths in one pass ------------------------------------------------
// On a long-name volume the rewrite of a component comes down to dropping the
// refused characters, then trailing whitespace, then trailing full stops; its
// extension is taken off and put back as it was. So a whole path is made legal
// straight into one block, with no array and no string per component, giving
// what Explode, the per-component rewrite and Implode give.

// The characters a long-name volume refuses in a name, by byte.
bool const* LongNameRefused() {
    static const std::array<bool, 256> refused = [] {
        std::array<bool, 256> table{};
        for (char const* c = BAD_NAME_CHARACTERS_LONG; *c != '\0'; ++c)
            table[static_cast<unsigned char>(*c)] = true;
        return table;
    }();
    return refused.data();
}

// The component [from, from + size) made legal into `to`, which has room for
// max(size, 4) characters; the length written.
size_t LegalLongName(char const* from, size_t size, char* to) {
    bool const* refused = LongNameRefused();
    size_t n = 0;
    for (size_t i = 0; i < size; ++i) {
        to[n] = from[i];
        n += refused[static_cast<unsigned char>(from[i])] ? 0 : 1;
    }
    while (n > 0 && gvpath::detail::IsSpace(to[n - 1]))
        --n;
    while (n > 0 && to[n - 1] == CGVPath::CHAR_TYPE_DELIMITER)
        --n;
    if (n > 0)
        return n;
    std::memcpy(to, "----", 4);
    return 4;
}

// The legal form of `trimmed` on a long-name volume, joined as Implode joins
// (the delimiter nearest the end of the volume between components), written
// to `path`. False, with nothing changed, when the text could outgrow one block.
bool JoinLegalLongNames(CStringT<char>& path, CGVPath const& trimmed, CGVPath const& volume) {
    char const* head = volume.GetString();
    const size_t headSize = std::strlen(head);
    int64_t bound = static_cast<int64_t>(headSize);
    ForEachComponent(trimmed.GetString(), trimmed.GetLength(), volume.GetLength(),
                     [&bound](char const*, int size) { bound += 1 + std::max<int64_t>(size, 4); });
    if (bound > INT32_MAX / 2)
        return false;
    if (bound == 0) {
        path.Empty();
        return true;
    }
    CStringT<char> out;
    char* text = out.GetBuffer(static_cast<int>(bound));
    std::memcpy(text, head, headSize);
    size_t n = headSize;
    char joint = CGVPath::CHAR_PATH_DELIMITER;
    for (size_t k = headSize; k-- > 0;)
        if (IsDelimiter(head[k])) {
            joint = head[k];
            break;
        }
    ForEachComponent(trimmed.GetString(), trimmed.GetLength(), volume.GetLength(), [&](char const* from, int size) {
        if (n > 0) {
            while (n > 0 && IsDelimiter(text[n - 1]))
                --n;
            text[n++] = joint;
        }
        n += LegalLongName(from, static_cast<size_t>(size), text + n);
    });
    out.ReleaseBufferSetLength(static_cast<int>(n));
    path = std::move(out);
    return true;
}

}  // namespace

CGVString CGVPath::GetBadPathCharacters(int longNames) const {
    return longNames ? BAD_PATH_CHARACTERS_LONG : BAD_PATH_CHARACTERS_SHORT;
}

CGVString CGVPath::GetBadNameCharacters(int longNames) const {
    return longNames ? BAD_NAME_CHARACTERS_LONG : BAD_NAME_CHARACTERS_SHORT;
}

// ---- Tests ------------------------------------------------------------------------------

int CGVPath::IsLegal(char const* volume) const {
    if (!IsLegalLength(-1) || Find(SPACE_BEFORE_DELIMITER) >= 0)
        return 0;
    int colon = ReverseFind(CHAR_DISK_DELIMITER);
    if (colon >= 0 && colon != 1)
        return 0;
    int longNames = volume != nullptr ? CGVPath(volume).IsVolumeLongFileNameEnabled() : IsVolumeLongFileNameEnabled();
    CGVPath name(*this);
    if (IsQualified()) {
        if (FindOneOf(GetBadPathCharacters(longNames)) >= 0)
            return 0;
        // An empty component; the pair that opens a UNC path is allowed.
        if (GetLength() > 2 && Find("\\\\", 1) >= 0)
            return 0;
        if (!longNames && (FindWhitespace() >= 0 || Find(TRIPLE_DOT) >= 0 || Find("\\.") >= 0 || Find("/.") >= 0))
            return 0;
        name = CGVPath(*this).GetName();
    } else if (FindOneOf(BAD_PATH_CHARACTERS_LONG) >= 0) {
        return 0;
    }
    // A short name has one full stop at most: the one before its extension.
    if (!longNames) {
        name.TrimExtension();
        if (name.Find(CHAR_TYPE_DELIMITER) >= 0)
            return 0;
    }
    return 1;
}

int CGVPath::IsLegalLength(int length) const {
    uint32_t n = static_cast<uint32_t>(length < 0 ? GetLength() : length);
    return n <= GetVolumeMaxPath() ? 1 : 0;
}

int CGVPath::IsLegalComponentLength(int length) const {
    uint32_t max = GetVolumeMaxComponent();
    if (length >= 0)
        return static_cast<uint32_t>(length) <= max ? 1 : 0;
    int end = GetLength();
    if (end < 4)
        return 1;
    // The first two characters (a drive or the UNC pair) are never measured.
    int start = gvpath::detail::IsDelimiter(GetAt(2)) ? 3 : 2;
    while (start < end) {
        int p = Find(CHAR_PATH_DELIMITER, start);
        if (p < 0)
            p = Find(CHAR_UNIX_DELIMITER, start);
        // No delimiter left, or an empty component: the rest counts as one.
        if (p < 0 || p == start)
            return static_cast<uint32_t>(end - start) <= max ? 1 : 0;
        if (static_cast<uint32_t>(p - start) > max)
            return 0;
        start = p + 1;
    }
    return 1;
}

int CGVPath::IsLegalExtensionLength(int length) const {
    uint32_t n = static_cast<uint32_t>(length < 0 ? CGVPath(*this).GetExtension().GetLength() : length);
    return n <= GetVolumeMaxExtension() ? 1 : 0;
}

// ---- Rewriting --------------------------------------------------------------------------

void CGVPath::PrivateMakeLegal(uint32_t maxComponent, uint32_t maxExtension) {
    bool shortNames = maxComponent <= 12;
    CStringT<char>::TrimRight();
    TrimRightCharacters(FILE_TYPE_DELIMITER, 0);
    if (shortNames) {
        PrivateReplaceWhitespace('-');
        TrimLeftCharacters(FILE_TYPE_DELIMITER, 0);
        // Every full stop but the one before the extension.
        PrivateReplace(CHAR_TYPE_DELIMITER, '-', FindLastTypeDelimiter());
    }
    CGVPath extension = GetExtension();
    TrimExtension();
    if (shortNames) {
        if (static_cast<uint32_t>(extension.GetLength()) > maxExtension)
            extension.TrimRight(KeepCount(maxExtension));
        if (GetLength() > kShortBaseLength)
            TrimRight(kShortBaseLength);
    }
    if (!extension.IsEmpty())
        AppendExtension(extension);
    if (IsEmpty())
        CGVString::operator=("----");
}

int CGVPath::MakeLegalName(char const* directory) {
    gvpath::detail::KeepTextOnFailure keep(*this);
    CGVPath folder(directory);
    uint32_t maxComponent = folder.GetVolumeMaxComponent();
    uint32_t maxExtension = MaxExtensionFor(maxComponent);
    TrimCharacters(GetBadNameCharacters(maxComponent > 12), 1);
    PrivateMakeLegal(maxComponent, maxExtension);
    // What the directory and the delimiter that joins them leave of the 260.
    int room = static_cast<int>(GetVolumeMaxPath()) - folder.GetLength() - FILE_PATH_DELIMITER.GetLength();
    if (folder.GetLength() < static_cast<int>(GetVolumeMaxPath()) && GetLength() > room) {
        CGVPath extension = GetExtension();
        TrimExtension();
        // A base that fits only without its extension keeps just one character.
        TrimRight(GetLength() > room ? room : 1);
        if (!extension.IsEmpty())
            AppendExtension(extension);
        if (GetLength() > room)
            TrimRight(room);
    }
    return 1;
}

int CGVPath::MakeLegalPath() {
    CGVPath trimmed(*this);
    trimmed.CStringT<char>::TrimRight();
    CGVPath volume = CGVPath(trimmed).GetVolume();
    uint32_t maxComponent = volume.GetVolumeMaxComponent();
    if (maxComponent <= 12 || !JoinLegalLongNames(*this, trimmed, volume))
        PrivateMakeLegalComponents(trimmed, maxComponent);
    return 1;
}

void CGVPath::PrivateMakeLegalComponents(CGVPath const& trimmed, uint32_t maxComponent) {
    // The join replaces this path's text only at the end, whole or not at all:
    // a failed allocation leaves the path as it was without a kept copy.
    CGVPath volume;
    CGVStringArray parts;
    trimmed.Explode(volume, parts);
    uint32_t maxExtension = MaxExtensionFor(maxComponent);
    CGVString bad = GetBadNameCharacters(maxComponent > 12);
    for (int32_t i = 0; i < parts.mGetNumItems(); ++i) {
        // Each component is made legal and put back into its own slot.
        CGVString* slot = parts.TextAt(i);
        CGVPath part(*slot);
        part.TrimCharacters(bad, 1);
        part.PrivateMakeLegal(maxComponent, maxExtension);
        *slot = part;
    }
    Implode(volume, parts);
}
