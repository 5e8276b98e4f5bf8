// CGVPath: constants, construction, delimiter searches, prefix and type tests.
#include <memory>

#include "gvlib/platform/gvplatform.h"
#include "path/path_test_access.h"

using Access = GVPathTestAccess;

TEST(CGVPathModel, IsAStringThroughTheValueInterface) {
    CGVPath path("C:\\dir");
    std::unique_ptr<CGVObject> copy(path.mCopy()), fresh(path.mNew());
    EXPECT_FALSE(dynamic_cast<CGVPath*>(copy.get()) || dynamic_cast<CGVPath*>(fresh.get()));  // plain strings
    EXPECT_STREQ("C:\\dir", *dynamic_cast<CGVString*>(copy.get()));
    CGVPath a, b, c, d, e;
    EXPECT_EQ("x w\xE4 u s C:\\dir ---", Text(a = 'x') + " " + Text(b = L"w\u00E4") + " " +
                                             Text(c = reinterpret_cast<unsigned char const*>("u")) + " " +
                                             Text(d = CGVString("s")) + " " + Text(e = path) + " " +
                                             Text(CGVPath('-', 3)));
    // The default scheme is bound to the constant itself, not to a copy of it.
    EXPECT_EQ(&CGVPath::URL_SCHEME_HTTP, &CGVPath::DEFAULT_URL_SCHEME);
}

// High bytes are never letters or white space in the "C" locale.
TEST(CGVPathModel, PrefixTests) {
    struct Row { const char* text; int unc, drive, full, url, qualified; } const rows[] = {
        {"", 0, 0, 0, 0, 0},          {"C", 0, 0, 0, 0, 0},     {"C:", 0, 1, 0, 0, 1},       {"C:x", 0, 0, 0, 0, 0},
        {"C:\\", 0, 1, 1, 0, 1},       {"C:/", 0, 1, 1, 0, 1},   {"z:\\dir\\", 0, 1, 1, 0, 1}, {"1:\\", 0, 0, 0, 0, 0},
        {"\xC4:\\", 0, 0, 0, 0, 0},    {"\\\\", 0, 0, 0, 0, 0},  {"\\\\s", 1, 0, 1, 0, 1},     {"//server", 0, 0, 0, 0, 0},
        {"\\\\server\\share", 1, 0, 1, 0, 1}, {"\\/x", 0, 0, 0, 0, 0}, {"http://x", 0, 0, 0, 1, 1}, {"ab:c", 0, 0, 0, 0, 0},
        {"ftp:x", 0, 0, 0, 1, 1},     {"C:\\x:y", 0, 1, 1, 0, 1}, {"\\dir:x", 0, 0, 0, 1, 1}, {"@:\\", 0, 0, 0, 0, 0},
        {"[:", 0, 0, 0, 0, 0},        {"`:", 0, 0, 0, 0, 0},    {"{:", 0, 0, 0, 0, 0},       {"Z:", 0, 1, 0, 0, 1}};
    for (const Row& row : rows) {
        SCOPED_TRACE(row.text);
        CGVPath path(row.text);
        EXPECT_EQ((std::vector<int>{row.unc, row.drive, row.full, row.url, row.qualified}),
                  (std::vector<int>{path.IsUNCSpecified(), path.IsDriveSpecified(), path.IsFullPathName(), path.IsURL(),
                                    path.IsQualified()}));
        // The drive letter comes exactly with the drive form, in its own case.
        EXPECT_EQ(row.drive ? std::string(row.text, 1) : "", Text(path.GetDriveLetter()) + Text(path.GetUNCVolume()));
    }
}

TEST(CGVPathModel, DelimiterSearchesPreferTheBackslash) {
    struct Row { const char* text; int last, first, space, type; } const rows[] = {
        {"", -1, -1, -1, -1},        {"a\\b/c", 1, 1, -1, -1},      {"a/b/c", 3, 1, -1, -1},
        {"a\\b.c/d", 1, 1, -1, 3},   {"dir.x\\name", 5, 5, -1, -1}, {"name.", -1, -1, -1, 4},
        {".profile", -1, -1, -1, 0}, {"a b\tc", -1, -1, 1, -1},     {"\xA0\x85.\xFF", -1, -1, -1, 2},
        {"x\v", -1, -1, 1, -1},      {"/a/b/", 4, 0, -1, -1},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.text);
        CGVPath path(row.text);
        EXPECT_EQ((std::vector<int>{row.last, row.first, row.space, row.type}),
                  (std::vector<int>{Access::FindLastPathDelimiter(path), Access::FindPathDelimiter(path),
                                    Access::FindWhitespace(path), Access::FindLastTypeDelimiter(path)}));
    }
    for (int c = 0; c < 256; ++c)
        EXPECT_EQ(c == '\\' || c == '/', CGVPath::IsCharPathDelimiter(static_cast<char>(c))) << c;
}

TEST(CGVPathModel, FileTypes) {
    struct Row { const char *path, *type; int expected; } const rows[] = {
        {"notes.txt", "txt", 1},  {"notes.txt", ".TXT", 1}, {"notes.txt", " txt\t", 1}, {"notestxt", "txt", 0},
        {"dir/txt", "txt", 0},    {"dir\\.txt", ".txt", 1}, {"name.", "", 1},           {"name", "", 0},
        {"name.", nullptr, 1},    {"", "", 0},              {"txt", "txt", 0},          {".txt", ".txt", 1},
        {"t", "txt", 0},          {"a.\xE4\xF6", "\xE4\xF6", 1}, {"a.\xE4", "\xC4", 0},  {"a.b", "  ", 0},
        {"x.tar.gz", "tar.gz", 1}, {"xtxt", "txt", 0},      {"a.TxT", "tXt", 1},        {"a.txu", "txt", 0},
    };
    for (const Row& row : rows)
        EXPECT_EQ(row.expected, CGVPath(row.path).IsType(row.type)) << row.path << " / " << (row.type ? row.type : "-");
    gvplatform::SetStringResource(7001, " htm ");  // 7002 is no entry
    EXPECT_EQ(1, CGVPath("index.HTM").IsType(7001) - CGVPath("index.HTM").IsType(7002));
    gvplatform::SetStringResource(7001, nullptr);
    EXPECT_EQ(0, CGVPath("index.HTM").IsType(7001));
    struct Kind { const char* path; int shortcut, html; } const kinds[] = {
        {"", 0, 0},           {"a.lnk", 1, 0},       {"a.PIF", 1, 0}, {"lnk", 0, 0},      {"index.HTM", 0, 1},
        {"index.html", 0, 1}, {"index.html5", 0, 0}, {"html", 0, 0},  {"a.htm\\b", 0, 0}, {"x/.htm", 0, 1},
    };
    for (const Kind& kind : kinds)
        EXPECT_EQ(std::make_pair(kind.shortcut, kind.html),
                  std::make_pair(CGVPath(kind.path).IsTypeShortcut(), CGVPath(kind.path).IsHTMLFile())) << kind.path;
}
