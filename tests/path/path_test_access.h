// What the path tests share: the private members of CGVPath, reached through the
// friend declaration the class grants them, and the text of a path as bytes.
#pragma once

#include <string>

#include "gvlib/path/GVPath.h"

inline std::string Text(CGVString const& s) { return std::string(s.GetString(), static_cast<size_t>(s.GetLength())); }

// The text of `text` after `edit`.
template <typename Edit>
std::string After(std::string const& text, Edit edit) {
    CGVPath path;
    path.SetString(text.data(), static_cast<int>(text.size()));
    edit(path);
    return Text(path);
}

struct GVPathTestAccess {
    static int FindLastPathDelimiter(CGVPath const& p) { return p.FindLastPathDelimiter(); }
    static int FindPathDelimiter(CGVPath const& p) { return p.FindPathDelimiter(); }
    static int FindWhitespace(CGVPath const& p) { return p.FindWhitespace(); }
    static int FindLastTypeDelimiter(CGVPath const& p) { return p.FindLastTypeDelimiter(); }
    static int FindURLSchemeDelimiter(CGVPath const& p) { return p.FindURLSchemeDelimiter(); }
    static void PrivateTrimRightPath(CGVPath& p, char delimiter) { p.PrivateTrimRightPath(delimiter); }
    static int PrivateReplace(CGVPath& p, char from, char to, int limit) {
        return p.PrivateReplace(from, to, limit);
    }
    static int PrivateReplaceWhitespace(CGVPath& p, char to) { return p.PrivateReplaceWhitespace(to); }
    static int PrivateReplaceCharacters(CGVPath& p, char const* set, char replacement, int keepSet, int start) {
        return p.PrivateReplaceCharacters(set, replacement, keepSet, start);
    }
    static int PrivateReplaceGroup(CGVPath& p, char first, char last, char replacement, int limit) {
        return p.PrivateReplaceGroup(first, last, replacement, limit);
    }
    static int GetVolumeInfo(CGVPath const& p, char const* volume, CGVPath::VolumeInfo& info) {
        return p.GetVolumeInfo(volume, info);
    }
    static void PrivateMakeLegal(CGVPath& p, uint32_t maxComponent, uint32_t maxExtension) {
        p.PrivateMakeLegal(maxComponent, maxExtension);
    }
    static int PrivateIsArrayElement(CGVStringArray const* array, char const* text, int matchCase) {
        return CGVPath::PrivateIsArrayElement(array, text, matchCase);
    }
};
