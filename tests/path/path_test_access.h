// What the path tests share: CGVPath's private members (through its friend), texts as bytes, lists.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "gvlib/array/GVStringArray.h"
#include "gvlib/path/GVPath.h"

using Texts = std::vector<std::string>;
using Cases = std::vector<std::pair<const char*, const char*>>;  // texts before and after an edit

inline std::string Text(CGVString const& s) { return std::string(s.GetString(), static_cast<size_t>(s.GetLength())); }

// The text of `text` after `edit`.
template <typename Edit> std::string After(std::string const& text, Edit edit) {
    CGVPath path;
    path.SetString(text.data(), static_cast<int>(text.size()));
    edit(path);
    return Text(path);
}

inline CGVStringArray List(std::vector<CGVString> items) {
    CGVStringArray list;
    for (CGVString& item : items)
        list.mAdd(&item);
    return list;
}

struct GVPathTestAccess {
    static int FindLastPathDelimiter(CGVPath const& p) { return p.FindLastPathDelimiter(); }
    static int FindPathDelimiter(CGVPath const& p) { return p.FindPathDelimiter(); }
    static int FindWhitespace(CGVPath const& p) { return p.FindWhitespace(); }
    static int FindLastTypeDelimiter(CGVPath const& p) { return p.FindLastTypeDelimiter(); }
    static int FindURLSchemeDelimiter(CGVPath const& p) { return p.FindURLSchemeDelimiter(); }
    static void PrivateTrimRightPath(CGVPath& p, char delimiter) { p.PrivateTrimRightPath(delimiter); }
    template <typename... A> static int PrivateReplace(CGVPath& p, A... a) { return p.PrivateReplace(a...); }
    template <typename... A> static int PrivateReplaceWhitespace(CGVPath& p, A... a) {
        return p.PrivateReplaceWhitespace(a...);
    }
    template <typename... A> static int PrivateReplaceCharacters(CGVPath& p, A... a) {
        return p.PrivateReplaceCharacters(a...);
    }
    template <typename... A> static int PrivateReplaceGroup(CGVPath& p, A... a) { return p.PrivateReplaceGroup(a...); }
    template <typename... A> static int GetVolumeInfo(CGVPath const& p, A&... a) { return p.GetVolumeInfo(a...); }
    static void PrivateMakeLegalComponents(CGVPath& p, CGVPath const& trimmed, uint32_t maxComponent) {
        p.PrivateMakeLegalComponents(trimmed, maxComponent);
    }
    template <typename... A> static int PrivateIsArrayElement(A... a) { return CGVPath::PrivateIsArrayElement(a...); }
};
