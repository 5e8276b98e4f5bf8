// CGVPath: position, character-set and delimiter trims, quotes, capitalisation
// and the private replacement members.
#include <gtest/gtest.h>

#include "path/path_test_access.h"

TEST(CGVPathTrim, PositionTrimsAreMirrorImages) {
    struct Row { int position; const char *left, *right; } const rows[] = {
        {3, "def", "abc"},       {-3, "def", "abc"},       {0, "abcdef", ""},       {6, "", "abcdef"},
        {7, "abcdef", "abcdef"}, {-7, "abcdef", "abcdef"}, {-6, "abcdef", ""},      {1, "bcdef", "a"},
        {INT32_MIN, "abcdef", "abcdef"},                   {INT32_MAX, "abcdef", "abcdef"}};
    for (const Row& row : rows) {
        SCOPED_TRACE(row.position);
        EXPECT_EQ(row.left, After("abcdef", [&](CGVPath& p) { p.TrimLeft(row.position); }));
        EXPECT_EQ(row.right, After("abcdef", [&](CGVPath& p) { p.TrimRight(row.position); }));
    }
}

TEST(CGVPathTrim, DelimiterCharacterAndCaseEdits) {
    struct Row { const char* text; void (*edit)(CGVPath&); const char* expected; } const rows[] = {
        {"C:\\dir\\ ", [](CGVPath& p) { p.TrimRightDelimiters(1); }, "C:\\dir"},
        {"C:\\dir\\ ", [](CGVPath& p) { p.TrimRightDelimiters(0); }, "C:\\dir\\ "},
        {"\\\\server\\x", [](CGVPath& p) { p.TrimLeftDelimiters(0); }, "server\\x"},
        {" \t/\\x", [](CGVPath& p) { p.TrimLeftDelimiters(1); }, "x"},
        {"/a/b/", [](CGVPath& p) { p.TrimDelimiters(); }, "/a/b"},
        {"\\/\\", [](CGVPath& p) { p.TrimDelimiters(); }, ""},
        {"a\\b/c", [](CGVPath& p) { p.TrimCharacters("\\/", 1); }, "abc"},
        {"a\\b/c", [](CGVPath& p) { p.TrimCharacters("\\/", 0); }, "\\/"},
        {"a\\b/c", [](CGVPath& p) { p.TrimCharacters("", 0); }, ""},
        {"a\\b/c", [](CGVPath& p) { p.TrimCharacters("", 1); }, "a\\b/c"},
        {"xxaxx", [](CGVPath& p) { p.TrimLeftCharacters("x", 0); }, "axx"},
        {"xxaxx", [](CGVPath& p) { p.TrimRightCharacters("x", 0); }, "xxa"},
        {" x a", [](CGVPath& p) { p.TrimLeftCharacters("x", 1); }, "a"},
        {"a x ", [](CGVPath& p) { p.TrimRightCharacters("x", 1); }, "a"},
        {"a\xA0", [](CGVPath& p) { p.TrimRightCharacters("", 1); }, "a\xA0"},
        {"\xE4\xE4z", [](CGVPath& p) { p.TrimLeftCharacters("\xE4", 0); }, "z"},
        {"ab", [](CGVPath& p) { p.TrimLeftCharacters(nullptr, 0); }, "ab"},
        {"xx", [](CGVPath& p) { p.TrimRightCharacters("x", 0); }, ""}, {" \ta\n ", [](CGVPath& p) { p.Trim(); }, "a"},
        // Capitalising shifts the first byte by 32 whatever it is.
        {"abc", [](CGVPath& p) { p.Capitalize(); }, "Abc"}, {"Abc", [](CGVPath& p) { p.Capitalize(); }, "!bc"},
        {"", [](CGVPath& p) { p.Capitalize(); }, ""}, {"\xFF", [](CGVPath& p) { p.Capitalize(); }, "\xDF"},
        {"\x10", [](CGVPath& p) { p.Capitalize(); }, "\xF0"},
    };
    for (const Row& row : rows)
        EXPECT_EQ(row.expected, After(row.text, row.edit)) << row.text;
}

// Quoting twice gives what quoting once does.
TEST(CGVPathTrim, QuotesComeOffInRunsAndGoOnInOnePair) {
    const char* const rows[][3] = {  // text, quotes trimmed, quotes added
        {"\"\"x\"\"", "x", "\"x\""}, {"x", "x", "\"x\""},         {"\"", "", "\"\""},         {"", "", "\"\""},
        {"\"x", "x", "\"x\""},       {"a\"b", "a\"b", "\"a\"b\""}, {"\"\"\"\"", "", "\"\""},
        {" \"x\" ", " \"x\" ", "\" \"x\" \""}, {"\"x\"", "x", "\"x\""}};
    for (auto& row : rows) {
        SCOPED_TRACE(row[0]);
        EXPECT_EQ(row[1], After(row[0], [](CGVPath& p) { p.TrimQuotes(0); }));
        EXPECT_EQ(row[2], After(row[0], [](CGVPath& p) { p.AddQuotes(); }));
        EXPECT_EQ(row[2], After(row[2], [](CGVPath& p) { p.AddQuotes(); }));
    }
}

// The private replacement members: count of replacements and the text after.
TEST(CGVPathTrim, PrivateReplacements) {
    using A = GVPathTestAccess;
    struct Row { const char* text; int (*replace)(CGVPath&); int count; const char* expected; } const rows[] = {
        {"a.b.c.d", [](CGVPath& p) { return A::PrivateReplace(p, '.', '-', 4); }, 2, "a-b-c.d"},
        {"a.b.c.d", [](CGVPath& p) { return A::PrivateReplace(p, '.', '-', -1); }, 3, "a-b-c-d"},
        {"a.b.c.d", [](CGVPath& p) { return A::PrivateReplace(p, '.', '-', 7); }, 3, "a-b-c-d"},
        {".x", [](CGVPath& p) { return A::PrivateReplace(p, '.', '_', 1); }, 1, "_x"},
        {".x", [](CGVPath& p) { return A::PrivateReplace(p, 'x', '_', 1); }, 0, ".x"},  // x stands at the limit
        {".x", [](CGVPath& p) { return A::PrivateReplace(p, '.', '_', 0); }, 0, ".x"},
        {"", [](CGVPath& p) { return A::PrivateReplace(p, '.', '-', -1); }, 0, ""},
        {" a\tb\xA0\r", [](CGVPath& p) { return A::PrivateReplaceWhitespace(p, '_'); }, 3, "_a_b\xA0_"},
        {"", [](CGVPath& p) { return A::PrivateReplaceWhitespace(p, '_'); }, 0, ""},
        {"a\\b/c", [](CGVPath& p) { return A::PrivateReplaceCharacters(p, "\\/", '\0', 0, 0); }, 2, "abc"},
        {"a\\b/c", [](CGVPath& p) { return A::PrivateReplaceCharacters(p, "\\/", '\0', 1, 0); }, 3, "\\/"},
        {"abcdef", [](CGVPath& p) { return A::PrivateReplaceCharacters(p, "", '-', 1, 2); }, 4, "ab----"},
        {"abcdef", [](CGVPath& p) { return A::PrivateReplaceCharacters(p, nullptr, '\0', 1, 2); }, 4, "ab"},
        {"abcdef", [](CGVPath& p) { return A::PrivateReplaceCharacters(p, "", '-', 0, 0); }, 0, "abcdef"},
        {"abcdef", [](CGVPath& p) { return A::PrivateReplaceCharacters(p, "", '-', 1, 6); }, 0, "abcdef"},
        {"abcdef", [](CGVPath& p) { return A::PrivateReplaceCharacters(p, "", '-', 1, 5); }, 1, "abcde-"},
        {"a#b?c", [](CGVPath& p) { return A::PrivateReplaceCharacters(p, "abc", '-', 1, 2); }, 1, "a#b-c"},
        {"\xE4x\xE4", [](CGVPath& p) { return A::PrivateReplaceCharacters(p, "x", '\0', 1, 0); }, 2, "x"},
        {"", [](CGVPath& p) { return A::PrivateReplaceCharacters(p, "x", '-', 0, 0); }, 0, ""},
        {"abc", [](CGVPath& p) { return A::PrivateReplaceCharacters(p, "b", '-', 0, 3); }, 0, "abc"},
        // A start outside the text changes nothing.
        {"abc", [](CGVPath& p) { return A::PrivateReplaceCharacters(p, "b", '-', 0, 7); }, 0, "abc"},
        {"abc", [](CGVPath& p) { return A::PrivateReplaceCharacters(p, "b", '-', 0, -1); }, 0, "abc"},
        {"a1b22c333", [](CGVPath& p) { return A::PrivateReplaceGroup(p, '1', '3', '#', 0); }, 6, "a#b##c###"},
        {"1a11", [](CGVPath& p) { return A::PrivateReplaceGroup(p, '1', '1', '#', 3); }, 2, "#a#1"},
        {"abc", [](CGVPath& p) { return A::PrivateReplaceGroup(p, 'c', 'a', '#', 0); }, 0, "abc"},
        // Signed bytes: 0x80..0xFF come before 0x00..0x7F, so this range is empty...
        {"\xE4z", [](CGVPath& p) { return A::PrivateReplaceGroup(p, 'a', '\xFF', '#', 0); }, 0, "\xE4z"},
        // ...and this one holds every high byte and the ASCII range up to 'z'.
        {"\xE4z", [](CGVPath& p) { return A::PrivateReplaceGroup(p, '\x80', 'z', '\x7F', 0); }, 2, "\x7F\x7F"},
        {"~\x7F", [](CGVPath& p) { return A::PrivateReplaceGroup(p, '~', '\x7F', '_', 0); }, 2, "__"},  // ends at 127
        // Replacing a by a finds the same a again for ever; the guard lets 102
        // replacements happen, then every later code of the range is hit once.
        {"abbb", [](CGVPath& p) { return A::PrivateReplaceGroup(p, 'a', 'b', 'a', 0); }, 102 + 1, "aabb"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(testing::PrintToString(std::string(row.text)) + " row " + std::to_string(&row - rows));
        CGVPath path(row.text);
        EXPECT_EQ(row.count, row.replace(path));
        EXPECT_EQ(row.expected, Text(path));
    }
}
