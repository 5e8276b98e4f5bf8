// CGVPath: URL schemes, hosts, legal characters, file URLs and comparison.
#include <cctype>
#include <cstring>

#include "path/path_test_access.h"

namespace {

struct Row {
    const char* text;
    int isURL;
    const char* scheme;
    int schemeDelimiter;
    const char *withoutScheme, *host;
    int legal;
    const char* madeLegal;
} const kRows[] = {
    {"", 0, "", -1, "", "", 1, ""},                 {"ftp:x", 1, "ftp", 3, "x", "x", 1, "ftp:x"},
    {"ab:x", 0, "ab", 2, "x", "x", 1, "ab:x"},      {"news", 0, "", -1, "news", "news", 1, "news"},
    {"C:\\dir", 0, "", -1, "C:\\dir", "C:", 1, "C:\\dir"},
    {"HTTP://Host", 1, "http", 4, "Host", "Host", 1, "HTTP://Host"},
    {"dir/a:b", 1, "dir/a", -1, "dir/a:b", "dir", 1, "dir/a:b"}, {"/ab:c", 1, "/ab", -1, "/ab:c", "/ab:c", 1, "/ab:c"},
    {"mailto:x", 1, "mailto", 6, "x", "x", 1, "mailto:x"}, {"http://", 1, "http", 4, "", "", 1, "http://"},
    {"//host/x", 0, "", -1, "host/x", "host", 1, "//host/x"},
    {"http://host", 1, "http", 4, "host", "host", 1, "http://host"},
    {"http://host/dir/p.htm", 1, "http", 4, "host/dir/p.htm", "host", 1, "http://host/dir/p.htm"},
    {"file:///C:/x", 1, "file", 4, "/C:/x", "/C:/x", 0, "file:///C-/x"},
    {"http://host/dir\\p", 1, "http", 4, "host/dir\\p", "host/dir", 1, "http://host/dir\\p"},
    {"http://host/x y", 1, "http", 4, "host/x y", "host", 1, "http://host/x y"},
    {"http://host/x?y", 1, "http", 4, "host/x?y", "host", 0, "http://host/x-y"},
    {"a%20b", 0, "", -1, "a%20b", "a%20b", 0, "a-20b"},
    {"http://host/a#b?c=d", 1, "http", 4, "host/a#b?c=d", "host", 0, "http://host/a-b-c-d"},
    {"my page.htm", 0, "", -1, "my page.htm", "my page.htm", 1, "my page.htm"},
    {"\xE4", 0, "", -1, "\xE4", "\xE4", 0, "-"},              {"x:\xFF:", 0, "", -1, "x:\xFF:", "x:\xFF:", 0, "x:--"},
    {"\\\\srv\\a", 0, "", -1, "\\\\srv\\a", "\\\\srv\\a", 1, "\\\\srv\\a"},
    {"user@host:8080/x", 1, "user@host", 9, "8080/x", "8080", 1, "user@host:8080/x"},
};

}  // namespace

TEST(CGVPathURL, SchemeRulesAndHostsOverTheTable) {
    for (const Row& row : kRows) {
        SCOPED_TRACE(row.text);
        CGVPath url(row.text);
        EXPECT_EQ((std::vector<int>{row.isURL, row.schemeDelimiter, row.legal, 1}),
                  (std::vector<int>{url.IsURL(), GVPathTestAccess::FindURLSchemeDelimiter(url), url.IsLegalURL(nullptr),
                                    CGVPath(row.madeLegal).IsLegalURL("")}));
        EXPECT_EQ((Texts{row.scheme, row.host, row.withoutScheme, row.madeLegal, row.text}),
                  (Texts{Text(url.GetURLScheme()), Text(url.GetURLHost()),
                         After(row.text, [](CGVPath& p) { p.TrimURLScheme(); }),
                         After(row.text, [](CGVPath& p) { EXPECT_EQ(1, p.MakeLegalURL(nullptr, 0)); }), Text(url)}));
    }
    // Name and directory of a URL are the path's own.
    EXPECT_EQ("b/c.htm", Text(CGVPath("http://host/a\\b/c.htm").GetURLName()));
    EXPECT_EQ("http://host/a", Text(CGVPath("http://host/a\\b/c.htm").GetURLDirectory()));
}

TEST(CGVPathURL, LegalCharacterSet) {
    CGVString set = CGVPath().GetLegalURLCharacters();
    EXPECT_EQ(76, set.GetLength());
    for (int c = 1; c < 256; ++c) {
        bool legal = isalnum(c) || strchr("\\/$-_.+!*'(), ", c) != nullptr;
        EXPECT_EQ(legal, set.Find(static_cast<char>(c)) >= 0) << c;
        EXPECT_EQ(legal, CGVPath(std::string(":").append(1, static_cast<char>(c)).c_str()).IsLegalURL(nullptr)) << c;
    }
}

TEST(CGVPathURL, MakeLegalURLPutsASchemeInFrontUnexamined) {
    EXPECT_EQ("http://host/a-b", After("host/a&b", [](CGVPath& p) { EXPECT_EQ(1, p.MakeLegalURL("http", 0)); }));
    EXPECT_EQ("ftp://http-//x", After("http://x", [](CGVPath& p) { p.MakeLegalURL("ftp", 1); }));
    EXPECT_EQ("://", After("", [](CGVPath& p) { p.MakeLegalURL("", 0); }));
}

TEST(CGVPathURL, CreateFileSchemeTurnsBackslashesAndLeavesThePath) {
    const char* const rows[][2] = {
        {"C:\\dir\\a b.htm", "file:///C:/dir/a b.htm"}, {"\\\\srv\\share\\a.htm", "file:////srv/share/a.htm"},
        {"dir\\a.htm", "file:///dir/a.htm"}, {"", "file:///"}, {"\\\\", "file://///"}, {"a/b\\\xE4", "file:///a/b/\xE4"}};
    for (auto& row : rows) {
        CGVPath path(row[0]);
        EXPECT_EQ((Texts{row[1], row[0]}), (Texts{Text(path.CreateFileScheme()), Text(path)}));
    }
}

TEST(CGVPathURL, CompareURLIgnoresCaseSpacesSchemeAndOneTrailingDelimiter) {
    struct Case { const char *self, *other; int result; } const cases[] = {  // result 1: any positive
        {"http://host/", "HOST", 0}, {"x", "http://x", 0},         {"http://x", "x", 0},          {"ftp://x", "http://x", -1},
        {"http://x", "ftp://x", -1}, {"ftp://x", "x", -1},         {"x", "ftp://x", -1},          {" x ", "x", 0},
        {"a", "b", 1},               {"", nullptr, 0},             {"http://", nullptr, 0},       {"x", nullptr, -1},
        {"HTTP://X/", "http://x", 0}, {" ftp://x", "ftp://x", -1}, {"http://x//", "x/", -1},      {"x\\", "X/", 0},
        {"\xE4", "\xC4", -1},        {"b", "a", -1},               {"ftp://x", "FTP://x", 0},
    };
    for (const Case& c : cases) {
        int result = CGVPath(c.self).CompareURL(c.other);
        EXPECT_EQ(c.result, c.result == 1 ? (result > 0) : result) << c.self << " vs " << (c.other ? c.other : "-");
    }
}
