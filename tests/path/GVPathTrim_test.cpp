// CGVPath: trims by position, characters and delimiters, quotes, capitals, private replacements.
#include "path/path_test_access.h"

TEST(CGVPathTrim, PositionTrimsAreMirrorImages) {
    struct Row { int position; const char *left, *right; } const rows[] = {
        {3, "def", "abc"},       {-3, "def", "abc"},       {0, "abcdef", ""},       {6, "", "abcdef"},
        {7, "abcdef", "abcdef"}, {-7, "abcdef", "abcdef"}, {-6, "abcdef", ""},      {1, "bcdef", "a"},
        {INT32_MIN, "abcdef", "abcdef"},                   {INT32_MAX, "abcdef", "abcdef"}};
    for (const Row& row : rows)
        EXPECT_EQ((Texts{row.left, row.right}), (Texts{After("abcdef", [&](CGVPath& p) { p.TrimLeft(row.position); }),
                                                       After("abcdef", [&](CGVPath& p) { p.TrimRight(row.position); })}))
            << row.position;
}

TEST(CGVPathTrim, DelimiterCharacterAndCaseEdits) {
    struct Edit { void (*edit)(CGVPath&); Cases cases; } const rows[] = {
        {[](CGVPath& p) { p.TrimRightDelimiters(1); }, {{"C:\\dir\\ ", "C:\\dir"}}},
        {[](CGVPath& p) { p.TrimRightDelimiters(0); }, {{"C:\\dir\\ ", "C:\\dir\\ "}}},
        {[](CGVPath& p) { p.TrimLeftDelimiters(0); }, {{"\\\\server\\x", "server\\x"}}},
        {[](CGVPath& p) { p.TrimLeftDelimiters(1); }, {{" \t/\\x", "x"}}},
        {[](CGVPath& p) { p.TrimDelimiters(); }, {{"/a/b/", "/a/b"}, {"\\/\\", ""}}},
        {[](CGVPath& p) { p.TrimCharacters("\\/", 1); }, {{"a\\b/c", "abc"}}},
        {[](CGVPath& p) { p.TrimCharacters("\\/", 0); }, {{"a\\b/c", "\\/"}}},
        {[](CGVPath& p) { p.TrimCharacters("", 0); }, {{"a\\b/c", ""}}},
        {[](CGVPath& p) { p.TrimCharacters("", 1); }, {{"a\\b/c", "a\\b/c"}}},
        {[](CGVPath& p) { p.TrimLeftCharacters("x", 0); }, {{"xxaxx", "axx"}}},
        {[](CGVPath& p) { p.TrimRightCharacters("x", 0); }, {{"xxaxx", "xxa"}, {"xx", ""}}},
        {[](CGVPath& p) { p.TrimLeftCharacters("x", 1); }, {{" x a", "a"}}},
        {[](CGVPath& p) { p.TrimRightCharacters("x", 1); }, {{"a x ", "a"}}},
        {[](CGVPath& p) { p.TrimRightCharacters("", 1); }, {{"a\xA0", "a\xA0"}}},
        {[](CGVPath& p) { p.TrimLeftCharacters("\xE4", 0); }, {{"\xE4\xE4z", "z"}}},
        {[](CGVPath& p) { p.TrimLeftCharacters(nullptr, 0); }, {{"ab", "ab"}}},
        {[](CGVPath& p) { p.Trim(); }, {{" \ta\n ", "a"}}},
        // Capitalising shifts the first byte by 32 whatever it is.
        {[](CGVPath& p) { p.Capitalize(); }, {{"abc", "Abc"}, {"Abc", "!bc"}, {"", ""}, {"\xFF", "\xDF"}, {"\x10", "\xF0"}}},
    };
    for (const Edit& row : rows)
        for (auto const& c : row.cases)
            EXPECT_EQ(c.second, After(c.first, row.edit)) << c.first;
}

// Quoting twice gives what quoting once does.
TEST(CGVPathTrim, QuotesComeOffInRunsAndGoOnInOnePair) {
    const char* const rows[][3] = {  // text, quotes trimmed, quotes added
        {"\"\"x\"\"", "x", "\"x\""}, {"x", "x", "\"x\""},         {"\"", "", "\"\""},         {"", "", "\"\""},
        {"\"x", "x", "\"x\""},       {"a\"b", "a\"b", "\"a\"b\""}, {"\"\"\"\"", "", "\"\""},
        {" \"x\" ", " \"x\" ", "\" \"x\" \""}, {"\"x\"", "x", "\"x\""}};
    for (auto& row : rows)
        EXPECT_EQ((Texts{row[1], row[2], row[2]}), (Texts{After(row[0], [](CGVPath& p) { p.TrimQuotes(0); }),
                                                          After(row[0], [](CGVPath& p) { p.AddQuotes(); }),
                                                          After(row[2], [](CGVPath& p) { p.AddQuotes(); })}))
            << row[0];
}

// The private replacement members: count of replacements and the text after.
TEST(CGVPathTrim, PrivateReplacements) {
    using A = GVPathTestAccess;
    auto check = [](const char* text, int count, const char* expected, auto replace) {
        SCOPED_TRACE(testing::PrintToString(std::string(text)));
        CGVPath path(text);
        EXPECT_EQ(count, replace(path));
        EXPECT_EQ(expected, Text(path));
    };
    struct Plain { const char* text; char from, to; int limit, count; const char* expected; } const plain[] = {
        {"a.b.c.d", '.', '-', 4, 2, "a-b-c.d"}, {"a.b.c.d", '.', '-', -1, 3, "a-b-c-d"}, {".x", '.', '_', 0, 0, ".x"},
        {"a.b.c.d", '.', '-', 7, 3, "a-b-c-d"}, {".x", '.', '_', 1, 1, "_x"}, {"", '.', '-', -1, 0, ""},
        {".x", 'x', '_', 1, 0, ".x"}};  // x stands at the limit
    for (const Plain& r : plain)
        check(r.text, r.count, r.expected, [&](CGVPath& p) { return A::PrivateReplace(p, r.from, r.to, r.limit); });
    check(" a\tb\xA0\r", 3, "_a_b\xA0_", [](CGVPath& p) { return A::PrivateReplaceWhitespace(p, '_'); });
    check("", 0, "", [](CGVPath& p) { return A::PrivateReplaceWhitespace(p, '_'); });
    // A start outside the text changes nothing.
    struct Set { const char *text, *set; char with; int keep, start, count; const char* expected; } const sets[] = {
        {"a\\b/c", "\\/", '\0', 0, 0, 2, "abc"},  {"a\\b/c", "\\/", '\0', 1, 0, 3, "\\/"},
        {"abcdef", "", '-', 1, 2, 4, "ab----"},      {"abcdef", nullptr, '\0', 1, 2, 4, "ab"},
        {"abcdef", "", '-', 0, 0, 0, "abcdef"},      {"abcdef", "", '-', 1, 6, 0, "abcdef"},
        {"abcdef", "", '-', 1, 5, 1, "abcde-"},      {"a#b?c", "abc", '-', 1, 2, 1, "a#b-c"},
        {"\xE4x\xE4", "x", '\0', 1, 0, 2, "x"},      {"", "x", '-', 0, 0, 0, ""},
        {"abc", "b", '-', 0, 3, 0, "abc"},           {"abc", "b", '-', 0, 7, 0, "abc"}, {"abc", "b", '-', 0, -1, 0, "abc"}};
    for (const Set& r : sets)
        check(r.text, r.count, r.expected,
              [&](CGVPath& p) { return A::PrivateReplaceCharacters(p, r.set, r.with, r.keep, r.start); });
    // Signed bytes: 'a'..0xFF is empty, 0x80..'z' holds every high byte. Replacing a by a
    // finds it for ever: the guard allows 102 replacements, then each later code is hit once.
    struct Group { const char* text; char low, high, with; int start, count; const char* expected; } const groups[] = {
        {"a1b22c333", '1', '3', '#', 0, 6, "a#b##c###"}, {"1a11", '1', '1', '#', 3, 2, "#a#1"},
        {"abc", 'c', 'a', '#', 0, 0, "abc"},             {"\xE4z", 'a', '\xFF', '#', 0, 0, "\xE4z"},
        {"\xE4z", '\x80', 'z', '\x7F', 0, 2, "\x7F\x7F"}, {"~\x7F", '~', '\x7F', '_', 0, 2, "__"},  // ends at 127
        {"abbb", 'a', 'b', 'a', 0, 102 + 1, "aabb"}};
    for (const Group& r : groups)
        check(r.text, r.count, r.expected,
              [&](CGVPath& p) { return A::PrivateReplaceGroup(p, r.low, r.high, r.with, r.start); });
}
