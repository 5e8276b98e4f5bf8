// The private members of CGVPath, reached by the path tests through the friend
// declaration the class grants them.
#pragma once

#include "gvlib/path/GVPath.h"

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
