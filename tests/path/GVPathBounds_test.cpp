// CGVPath: every text member over a few thousand generated texts. Run under the
// sanitizer build, this catches reads and writes outside the text that the
// example tables miss; the checks here are the few that hold for any text.
#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

#include "gvlib/path/GVPath.h"
#include "path/path_test_access.h"

namespace {

using Access = GVPathTestAccess;

// The bytes paths go wrong on: both delimiters, colon, dot, quote, white space,
// letters that make drives and schemes, bytes of 128 and more, and a NUL that
// some texts carry inside them.
const char kAlphabet[] = "\\\\\\///::..\"  \tCchtpx*?#%-\x80\xA0\xE4\xFF";

// A fixed linear congruential generator: the same texts on every platform.
struct Generator {
    uint32_t state;
    uint32_t Next() {
        state = state * 1664525u + 1013904223u;
        return state >> 8;
    }
};

std::vector<std::string> GeneratedTexts() {
    std::vector<std::string> texts = {"", "C:", "C:x", "\\\\server\\share", "\\\\", "//", "\"", ":", ".", "\xFF"};
    Generator gen{7};
    const size_t alphabet = sizeof(kAlphabet) - 1;
    for (int i = 0; i < 3000; ++i) {
        // Mostly short texts, where the boundary cases live, and some up to 300.
        size_t length = (i % 10 == 0) ? gen.Next() % 301 : gen.Next() % 12;
        std::string text;
        for (size_t j = 0; j < length; ++j)
            text += kAlphabet[gen.Next() % alphabet];
        if (i % 97 == 0 && !text.empty())
            text[gen.Next() % text.size()] = '\0';
        texts.push_back(text);
    }
    return texts;
}

CGVPath Make(std::string const& text) {
    CGVPath path;
    path.SetString(text.data(), static_cast<int>(text.size()));
    return path;
}

// Every position member gets the positions around both ends.
void Positions(CGVPath const& path) {
    int n = path.GetLength();
    for (int p : {-n - 1, -n, -1, 0, 1, n - 1, n, n + 1}) {
        CGVPath left(path), right(path);
        left.TrimLeft(p);
        right.TrimRight(p);
        ASSERT_LE(left.GetLength() + right.GetLength(), 2 * n);
    }
}

void Model(CGVPath& path) {
    path.IsUNCSpecified();
    path.IsDriveSpecified();
    path.IsFullPathName();
    path.IsURL();
    path.IsQualified();
    path.GetDriveLetter();
    path.GetUNCVolume();
    path.IsType("txt");
    path.IsType("");
    path.IsType(" .x ");
    path.IsType(-1);
    path.IsTypeShortcut();
    path.IsHTMLFile();
    path.FormatFilePathDelimiters();
    int n = path.GetLength();
    for (int i : {Access::FindLastPathDelimiter(path), Access::FindPathDelimiter(path),
                  Access::FindWhitespace(path), Access::FindLastTypeDelimiter(path),
                  Access::FindURLSchemeDelimiter(path)}) {
        ASSERT_GE(i, -1);
        ASSERT_LT(i, n);
    }
    CGVPath canonical(path);
    canonical.MakeDelimitersCanonical();
}

void Components(CGVPath& path) {
    int n = path.GetLength();
    // Getters give at most the text and a root delimiter.
    for (CGVPath const& part : {path.GetName(), path.GetNameOnly(), path.GetExtension(), path.GetDirectory(),
                                path.GetParentDirectory(), path.GetVolume()})
        ASSERT_LE(part.GetLength(), n + 1);
    for (char delimiter : {'\0', '\\', '/', ':', '\xE4'}) {
        CGVPath joined(path);
        joined.AppendPath("\\ /x\\", delimiter, 1);
        CGVPath cut(path);
        Access::PrivateTrimRightPath(cut, delimiter);
    }
    CGVPath edited(path);
    edited.AppendExtension("e");
    edited.SetExtension("f");
    edited.SetExtension(-1);
    edited.TrimExtension();
    edited.AppendPath(-1, '\0', 0);
    edited.AppendDelimiter(CGVPath::FILE_PATH_DELIMITER);
    edited.AppendWildcard();
    edited.TrimRightPath();
    edited.TrimVolume();
    edited.SetVolume("D:");
}

void Trims(CGVPath const& path) {
    Positions(path);
    std::vector<void (*)(CGVPath&)> edits = {
        [](CGVPath& p) { p.Trim(); },
        [](CGVPath& p) { p.TrimLeftCharacters("\\:\xE4", 1); },
        [](CGVPath& p) { p.TrimRightCharacters("\\:\xE4", 0); },
        [](CGVPath& p) { p.TrimCharacters(".\xFF", 1); },
        [](CGVPath& p) { p.TrimCharacters(".\xFF", 0); },
        [](CGVPath& p) { p.TrimLeftDelimiters(1); },
        [](CGVPath& p) { p.TrimRightDelimiters(0); },
        [](CGVPath& p) { p.TrimDelimiters(); },
        [](CGVPath& p) { p.TrimQuotes(0); },
        [](CGVPath& p) { p.AddQuotes(); },
        [](CGVPath& p) { p.Capitalize(); },
        [](CGVPath& p) { Access::PrivateReplace(p, '.', '_', 5); },
        [](CGVPath& p) { Access::PrivateReplace(p, '\\', '/', -1); },
        [](CGVPath& p) { Access::PrivateReplaceWhitespace(p, '_'); },
        [](CGVPath& p) { Access::PrivateReplaceGroup(p, '\x80', '\x7F', '.', 0); },
        [](CGVPath& p) { Access::PrivateReplaceGroup(p, '.', ':', '/', 3); },
    };
    for (auto edit : edits) {
        CGVPath copy(path);
        edit(copy);
    }
    int n = path.GetLength();
    for (int start : {-1, 0, n / 2, n, n + 1}) {
        for (const char* set : {static_cast<const char*>(nullptr), "", "\\/"}) {
            for (int keep : {0, 1}) {
                CGVPath copy(path);
                int count = Access::PrivateReplaceCharacters(copy, set, keep ? '\0' : '-', keep, start);
                ASSERT_LE(count, n);
            }
        }
    }
}

void URLs(CGVPath const& path) {
    path.GetLegalURLCharacters();
    path.IsLegalURL(nullptr);
    path.GetURLScheme();
    path.GetURLHost();
    path.GetURLName();
    path.GetURLDirectory();
    path.CompareURL(path);
    path.CompareURL(nullptr);
    path.CompareURL("http://C:\\");
    CGVPath legal(path);
    legal.MakeLegalURL(nullptr, 0);
    ASSERT_EQ(1, legal.IsLegalURL(nullptr));
    CGVPath schemed(path);
    schemed.MakeLegalURL("\xE4:", 0);
    CGVPath trimmed(path);
    trimmed.TrimURLScheme();
    CGVPath(path).CreateFileScheme();
}

}  // namespace

TEST(CGVPathBounds, EveryMemberOverGeneratedTexts) {
    for (std::string const& text : GeneratedTexts()) {
        SCOPED_TRACE(testing::PrintToString(text));
        CGVPath path = Make(text);
        ASSERT_NO_FATAL_FAILURE(Model(path));
        ASSERT_NO_FATAL_FAILURE(Components(path));
        ASSERT_NO_FATAL_FAILURE(Trims(path));
        ASSERT_NO_FATAL_FAILURE(URLs(path));
        ASSERT_EQ(text, std::string(path.GetString(), static_cast<size_t>(path.GetLength())));
    }
}
