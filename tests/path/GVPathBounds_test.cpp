// CGVPath: every member over generated texts, for the sanitizer build; the checks hold for any text.
#include "path/path_test_access.h"
#include "path/volume_fixture.h"

namespace {

using Access = GVPathTestAccess;

// The bytes paths go wrong on; some texts carry a NUL inside them too.
const char kAlphabet[] = "\\\\\\///::..\"  \tCchtpx*?#%-\x80\xA0\xE4\xFF";

// A fixed generator: the same texts everywhere, mostly short, some up to 300.
std::string Generated(uint32_t& state, int i) {
    auto next = [&state] { return (state = state * 1664525u + 1013904223u) >> 8; };
    size_t length = (i % 10 == 0) ? next() % 301 : next() % 12;
    std::string text;
    for (size_t j = 0; j < length; ++j)
        text += kAlphabet[next() % (sizeof(kAlphabet) - 1)];
    if (i % 97 == 0 && !text.empty())
        text[next() % text.size()] = '\0';
    return text;
}

using Edit = void (*)(CGVPath&);
const Edit kEdits[] = {
    [](CGVPath& p) { p.MakeDelimitersCanonical(); }, [](CGVPath& p) { p.SetExtension("f"); },
    [](CGVPath& p) { p.SetExtension(-1); },          [](CGVPath& p) { p.AppendPath(-1, '\0', 0); },
    [](CGVPath& p) { p.TrimRightPath(); },           [](CGVPath& p) { p.SetVolume("D:"); },
    [](CGVPath& p) { p.TrimQuotes(0); },             [](CGVPath& p) { p.Capitalize(); },
    [](CGVPath& p) { p.TrimLeftCharacters("\\:\xE4", 1); }, [](CGVPath& p) { p.TrimRightCharacters("\\:\xE4", 0); },
    [](CGVPath& p) { Access::PrivateReplace(p, '.', '_', 5); },
    [](CGVPath& p) { Access::PrivateReplaceWhitespace(p, '_'); },
    [](CGVPath& p) { Access::PrivateReplaceGroup(p, '\x80', '\x7F', '.', 0); },
    [](CGVPath& p) { Access::PrivateReplaceGroup(p, '.', ':', '/', 3); },
    [](CGVPath& p) { p.MakeLegalURL("\xE4:", 0); },  [](CGVPath& p) { p.TrimURLScheme(); },
};

void EveryMember(CGVPath& path) {
    int n = path.GetLength();
    path.IsUNCSpecified(), path.IsDriveSpecified(), path.IsFullPathName(), path.IsURL(), path.IsQualified();
    path.GetDriveLetter(), path.GetUNCVolume(), path.IsTypeShortcut(), path.IsHTMLFile();
    path.IsType("txt"), path.IsType(""), path.IsType(" .x "), path.IsType(-1);
    path.GetLegalURLCharacters(), path.IsLegalURL(nullptr), path.GetURLScheme(), path.GetURLHost();
    path.GetURLName(), path.GetURLDirectory(), path.CreateFileScheme(), path.FormatFilePathDelimiters();
    path.CompareURL(path), path.CompareURL(nullptr), path.CompareURL("http://C:\\");
    for (char const* base : {"C:\\", "\\\\s\\x\\", path.GetString()}) {
        // Nothing of the target's text is lost or invented beyond the steps up.
        ASSERT_LE(path.GetRelativePath(base).GetLength(), n + 3 * (n + 4));
        ASSERT_EQ(-1, path.GetUrlRelativePath(base).Find('\\'));
    }
    for (int i : {Access::FindLastPathDelimiter(path), Access::FindPathDelimiter(path), Access::FindWhitespace(path),
                  Access::FindLastTypeDelimiter(path), Access::FindURLSchemeDelimiter(path)})
        ASSERT_TRUE(i >= -1 && i < n) << i;
    // Getters give at most the text and a root delimiter.
    for (CGVPath const& part : {path.GetName(), path.GetNameOnly(), path.GetExtension(), path.GetDirectory(),
                                path.GetParentDirectory(), path.GetVolume()})
        ASSERT_LE(part.GetLength(), n + 1);
    for (Edit edit : kEdits)
        After(Text(path), edit);
    for (char delimiter : {'\0', '\\', '/', ':', '\xE4'}) {
        After(Text(path), [delimiter](CGVPath& p) { p.AppendPath("\\ /x\\", delimiter, 1); });
        After(Text(path), [delimiter](CGVPath& p) { Access::PrivateTrimRightPath(p, delimiter); });
    }
    for (int p : {-n - 1, -n, -1, 0, 1, n - 1, n, n + 1})
        ASSERT_LE(After(Text(path), [p](CGVPath& c) { c.TrimLeft(p); }).size() +
                      After(Text(path), [p](CGVPath& c) { c.TrimRight(p); }).size(), 2u * n);
    for (int start : {-1, 0, n / 2, n, n + 1})
        for (const char* set : {static_cast<const char*>(nullptr), "", "\\/"})
            for (int keep : {0, 1})
                After(Text(path), [&](CGVPath& p) {
                    ASSERT_LE(Access::PrivateReplaceCharacters(p, set, keep ? '\0' : '-', keep, start), n);
                });
    CGVPath legal(path), name(path);
    legal.MakeLegalURL(nullptr, 0);
    ASSERT_EQ(1, legal.IsLegalURL(nullptr));
    path.IsLegal(nullptr), path.IsLegal("L:\\"), path.IsLegalComponentLength(-1), path.IsLegalExtensionLength(-1);
    After(Text(path), [](CGVPath& p) { p.MakeLegalPath(); });
    // A name made for a short-name directory is a legal 8.3 name.
    name.MakeLegalName("S:\\dir");
    ASSERT_LE(name.GetLength(), 12);
    ASSERT_EQ(-1, name.FindOneOf(name.GetBadNameCharacters(0)));
    ASSERT_EQ(1, CGVPath(("S:\\dir\\" + Text(name)).c_str()).IsLegal(nullptr));
}

}  // namespace

using CGVPathBounds = VolumeFixture;

TEST_F(CGVPathBounds, EveryMemberOverGeneratedTexts) {
    std::vector<std::string> texts = {"", "C:", "C:x", "\\\\server\\share", "\\\\", "//", "\"", ":", ".", "\xFF",
                                      "C:\\..\\..", "C:\\a b\\ c", "\\\\\\", "c:\\A/\\b"};
    uint32_t state = 7;
    for (int i = 0; i < 3000; ++i)
        texts.push_back(Generated(state, i));
    for (std::string const& text : texts) {
        SCOPED_TRACE(testing::PrintToString(text));
        ASSERT_EQ(text, After(text, [](CGVPath& p) { EveryMember(p); }));
    }
}
