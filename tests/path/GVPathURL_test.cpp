// CGVPath: URL schemes, hosts, legal characters, file URLs and comparison.
#include <gtest/gtest.h>

#include <string>

#include "gvlib/path/GVPath.h"
#include "path/path_test_access.h"

namespace {

std::string Text(CGVString const& s) { return std::string(s.GetString(), static_cast<size_t>(s.GetLength())); }

// The shared table of URL-ish texts with what each scheme rule and the members
// built on them answer.
struct Row {
    const char* text;
    int isURL;
    const char* scheme;
    int schemeDelimiter;
    const char *withoutScheme, *host;
    int legal;
    const char* madeLegal;
};

const Row kRows[] = {
    {"", 0, "", -1, "", "", 1, ""},
    {"ftp:x", 1, "ftp", 3, "x", "x", 1, "ftp:x"},
    {"ab:x", 0, "ab", 2, "x", "x", 1, "ab:x"},
    {"C:\\dir", 0, "", -1, "C:\\dir", "C:", 1, "C:\\dir"},
    {"news", 0, "", -1, "news", "news", 1, "news"},
    {"HTTP://Host", 1, "http", 4, "Host", "Host", 1, "HTTP://Host"},
    {"dir/a:b", 1, "dir/a", -1, "dir/a:b", "dir", 1, "dir/a:b"},
    {"mailto:x", 1, "mailto", 6, "x", "x", 1, "mailto:x"},
    {"//host/x", 0, "", -1, "host/x", "host", 1, "//host/x"},
    {"http://", 1, "http", 4, "", "", 1, "http://"},
    {"http://host", 1, "http", 4, "host", "host", 1, "http://host"},
    {"http://host/dir/p.htm", 1, "http", 4, "host/dir/p.htm", "host", 1, "http://host/dir/p.htm"},
    {"file:///C:/x", 1, "file", 4, "/C:/x", "/C:/x", 0, "file:///C-/x"},
    {"http://host/dir\\p", 1, "http", 4, "host/dir\\p", "host/dir", 1, "http://host/dir\\p"},
    {"http://host/x y", 1, "http", 4, "host/x y", "host", 1, "http://host/x y"},
    {"http://host/x?y", 1, "http", 4, "host/x?y", "host", 0, "http://host/x-y"},
    {"a%20b", 0, "", -1, "a%20b", "a%20b", 0, "a-20b"},
    {"http://host/a#b?c=d", 1, "http", 4, "host/a#b?c=d", "host", 0, "http://host/a-b-c-d"},
    {"my page.htm", 0, "", -1, "my page.htm", "my page.htm", 1, "my page.htm"},
    {"\xE4", 0, "", -1, "\xE4", "\xE4", 0, "-"},
    {"x:\xFF:", 0, "", -1, "x:\xFF:", "x:\xFF:", 0, "x:--"},
    {"\\\\srv\\a", 0, "", -1, "\\\\srv\\a", "\\\\srv\\a", 1, "\\\\srv\\a"},
    {"user@host:8080/x", 1, "user@host", 9, "8080/x", "8080", 1, "user@host:8080/x"},
};

}  // namespace

TEST(CGVPathURL, SchemeRulesAndHostsOverTheTable) {
    for (const Row& row : kRows) {
        SCOPED_TRACE(row.text);
        CGVPath url(row.text);
        EXPECT_EQ(row.isURL, url.IsURL());
        EXPECT_EQ(row.scheme, Text(url.GetURLScheme()));
        EXPECT_EQ(row.schemeDelimiter, GVPathTestAccess::FindURLSchemeDelimiter(url));
        EXPECT_EQ(row.host, Text(url.GetURLHost()));
        EXPECT_EQ(row.legal, url.IsLegalURL(nullptr));
        CGVPath trimmed(url);
        trimmed.TrimURLScheme();
        EXPECT_EQ(row.withoutScheme, Text(trimmed));
        CGVPath legal(url);
        EXPECT_EQ(1, legal.MakeLegalURL(nullptr, 0));
        EXPECT_EQ(row.madeLegal, Text(legal));
        // Legalising keeps the length and leaves a legal URL behind.
        EXPECT_EQ(url.GetLength(), legal.GetLength());
        EXPECT_EQ(1, legal.IsLegalURL(""));
        // Name and directory of a URL are the path's own.
        CGVPath asPath(url);
        EXPECT_EQ(Text(asPath.GetName()), Text(url.GetURLName()));
        EXPECT_EQ(Text(asPath.GetDirectory()), Text(url.GetURLDirectory()));
        EXPECT_EQ(row.text, Text(url));
    }
    EXPECT_EQ("p.htm", Text(CGVPath("http://host/dir/p.htm").GetURLName()));
    EXPECT_EQ("http://host/dir", Text(CGVPath("http://host/dir/p.htm").GetURLDirectory()));
    EXPECT_EQ("b/c.htm", Text(CGVPath("http://host/a\\b/c.htm").GetURLName()));
}

TEST(CGVPathURL, LegalCharacterSet) {
    CGVString set = CGVPath().GetLegalURLCharacters();
    EXPECT_EQ(76, set.GetLength());
    EXPECT_EQ(' ', set.GetAt(75));
    for (char c : std::string("azAZ09\\/$-_.+!*'(), "))
        EXPECT_GE(set.Find(c), 0) << c;
    for (char c : std::string(":?#%&=@~;\"<>|[]{}^`\t"))
        EXPECT_LT(set.Find(c), 0) << c;
    for (int c = 128; c < 256; ++c)
        EXPECT_LT(set.Find(static_cast<char>(c)), 0) << c;
}

TEST(CGVPathURL, MakeLegalURLPutsASchemeInFrontUnexamined) {
    CGVPath path("host/a&b");
    EXPECT_EQ(1, path.MakeLegalURL("http", 0));
    EXPECT_STREQ("http://host/a-b", path);
    CGVPath twice("http://x");
    twice.MakeLegalURL("ftp", 1);
    EXPECT_STREQ("ftp://http-//x", twice);
    CGVPath empty;
    empty.MakeLegalURL("", 0);
    EXPECT_STREQ("://", empty);
}

TEST(CGVPathURL, CreateFileSchemeTurnsBackslashesAndLeavesThePath) {
    struct Case {
        const char *path, *url;
    };
    const Case cases[] = {
        {"C:\\dir\\a b.htm", "file:///C:/dir/a b.htm"}, {"\\\\srv\\share\\a.htm", "file:////srv/share/a.htm"},
        {"dir\\a.htm", "file:///dir/a.htm"},           {"", "file:///"},
        {"\\\\", "file://///"},                        {"a/b\\\xE4", "file:///a/b/\xE4"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.path);
        CGVPath path(c.path);
        EXPECT_EQ(c.url, Text(path.CreateFileScheme()));
        EXPECT_EQ(c.path, Text(path));
    }
}

TEST(CGVPathURL, CompareURLIgnoresCaseSpacesSchemeAndOneTrailingDelimiter) {
    struct Case {
        const char *self, *other;
        int sign;  // of the result
    };
    const Case cases[] = {
        {"http://host/", "HOST", 0},      {"x", "http://x", 0},          {"http://x", "x", 0},
        {"ftp://x", "http://x", -1},      {"http://x", "ftp://x", -1},   {"ftp://x", "x", -1},
        {"x", "ftp://x", -1},             {" x ", "x", 0},               {"a", "b", 1},
        {"b", "a", -1},                   {"", nullptr, 0},              {"http://", nullptr, 0},
        {"x", nullptr, -1},               {"HTTP://X/", "http://x", 0},  {" ftp://x", "ftp://x", -1},
        {"http://x//", "x/", -1},         {"x\\", "X/", 0},              {"\xE4", "\xC4", -1},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(std::string(c.self) + " vs " + (c.other ? c.other : "(null)"));
        int result = CGVPath(c.self).CompareURL(c.other);
        EXPECT_EQ(c.sign, (result > 0) - (result < 0));
        if (c.sign == 0 || result == -1) {
            EXPECT_EQ(c.sign, result);
        }
    }
}
