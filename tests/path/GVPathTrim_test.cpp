// CGVPath: position, character-set and delimiter trims, quotes, capitalisation
// and the private replacement members.
#include <gtest/gtest.h>

#include <string>

#include "gvlib/path/GVPath.h"
#include "path/path_test_access.h"

namespace {

using Access = GVPathTestAccess;

// Awkward texts every trim is checked over: empty, one character, delimiters of
// both kinds at either end, white space, quotes and high bytes.
const char* const kTexts[] = {
    "",     "a",          "\\",          "/",        " ",         "\"",     "abcdef",
    "C:",   "C:x",        "\\\\server\\share", "C:\\dir\\ ", "/a/b/",  "\\/a\\/",
    "\"\"x\"\"", "\t\"q\" ", "\xE4\xA0\\\xFF", "a\\b/c",
};

std::string After(std::string text, void (*edit)(CGVPath&)) {
    CGVPath path(text.c_str());
    edit(path);
    return std::string(path.GetString(), static_cast<size_t>(path.GetLength()));
}

}  // namespace

TEST(CGVPathTrim, PositionTrimsAreMirrorImages) {
    struct Row {
        int position;
        const char* left;
        const char* right;
    };
    const Row rows[] = {
        {3, "def", "abc"},  {-3, "def", "abc"},     {0, "abcdef", ""},       {6, "", "abcdef"},
        {7, "abcdef", "abcdef"}, {-7, "abcdef", "abcdef"}, {-6, "abcdef", ""}, {1, "bcdef", "a"},
        {INT32_MIN, "abcdef", "abcdef"}, {INT32_MAX, "abcdef", "abcdef"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.position);
        CGVPath left("abcdef"), right("abcdef");
        left.TrimLeft(row.position);
        right.TrimRight(row.position);
        EXPECT_STREQ(row.left, left);
        EXPECT_STREQ(row.right, right);
    }
    // For every split point inside the text the two halves make the whole again.
    for (const char* text : kTexts) {
        CGVPath whole(text);
        for (int q = 1; q < whole.GetLength(); ++q) {
            SCOPED_TRACE(std::string(text) + " at " + std::to_string(q));
            CGVPath left(whole), right(whole);
            left.TrimLeft(q);
            right.TrimRight(q);
            EXPECT_STREQ(text, CGVString(right) + left);
        }
    }
}

TEST(CGVPathTrim, DelimiterAndCharacterTrims) {
    struct Row {
        const char* text;
        void (*edit)(CGVPath&);
        const char* expected;
    };
    const Row rows[] = {
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
        {"a\xA0", [](CGVPath& p) { p.TrimRightCharacters("", 1); }, "a\xA0"},
        {"\xE4\xE4z", [](CGVPath& p) { p.TrimLeftCharacters("\xE4", 0); }, "z"},
        {"ab", [](CGVPath& p) { p.TrimLeftCharacters(nullptr, 0); }, "ab"},
        {" \ta\n ", [](CGVPath& p) { p.Trim(); }, "a"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.text);
        EXPECT_EQ(row.expected, After(row.text, row.edit));
    }
}

TEST(CGVPathTrim, QuotesComeOffInRunsAndGoOnInOnePair) {
    struct Row {
        const char* text;
        const char* trimmed;
        const char* added;
    };
    const Row rows[] = {
        {"\"\"x\"\"", "x", "\"x\""}, {"x", "x", "\"x\""},     {"\"", "", "\"\""},
        {"", "", "\"\""},           {"\"x", "x", "\"x\""},   {"a\"b", "a\"b", "\"a\"b\""},
        {"\"\"\"\"", "", "\"\""},   {" \"x\" ", " \"x\" ", "\" \"x\" \""},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.text);
        EXPECT_EQ(row.trimmed, After(row.text, [](CGVPath& p) { p.TrimQuotes(0); }));
        EXPECT_EQ(row.added, After(row.text, [](CGVPath& p) { p.AddQuotes(); }));
    }
}

TEST(CGVPathTrim, CapitalizeShiftsTheFirstByteWhateverItIs) {
    EXPECT_EQ("Abc", After("abc", [](CGVPath& p) { p.Capitalize(); }));
    EXPECT_EQ("!bc", After("Abc", [](CGVPath& p) { p.Capitalize(); }));
    EXPECT_EQ("", After("", [](CGVPath& p) { p.Capitalize(); }));
    EXPECT_EQ("\xDF", After("\xFF", [](CGVPath& p) { p.Capitalize(); }));
}

TEST(CGVPathTrim, EveryTrimLeavesAPrefixSuffixOrSubsequence) {
    for (const char* text : kTexts) {
        SCOPED_TRACE(text);
        std::string whole(text);
        std::string left = After(text, [](CGVPath& p) { p.TrimLeftDelimiters(1); });
        std::string right = After(text, [](CGVPath& p) { p.TrimRightDelimiters(1); });
        std::string quoted = After(text, [](CGVPath& p) { p.TrimQuotes(0); });
        EXPECT_EQ(whole.substr(whole.size() - left.size()), left);
        EXPECT_EQ(0u, whole.find(right));
        EXPECT_NE(std::string::npos, whole.find(quoted));
        EXPECT_TRUE(left.empty() || (left[0] != '\\' && left[0] != '/'));
        EXPECT_TRUE(right.empty() || (right.back() != '\\' && right.back() != '/'));
        // Quoting twice gives what quoting once does.
        std::string once = After(text, [](CGVPath& p) { p.AddQuotes(); });
        EXPECT_EQ(once, After(once, [](CGVPath& p) { p.AddQuotes(); }));
    }
}

TEST(CGVPathTrim, PrivateReplaceAndWhitespace) {
    CGVPath dots("a.b.c.d");
    EXPECT_EQ(2, Access::PrivateReplace(dots, '.', '-', 4));
    EXPECT_STREQ("a-b-c.d", dots);
    CGVPath all("a.b.c.d");
    EXPECT_EQ(3, Access::PrivateReplace(all, '.', '-', -1));
    EXPECT_STREQ("a-b-c-d", all);
    CGVPath first(".x");
    EXPECT_EQ(1, Access::PrivateReplace(first, '.', '_', 1));
    EXPECT_EQ(0, Access::PrivateReplace(first, 'x', '_', 1));  // x stands at the limit
    CGVPath empty;
    EXPECT_EQ(0, Access::PrivateReplace(empty, '.', '-', -1));
    CGVPath spaced(" a\tb\xA0\r");
    EXPECT_EQ(3, Access::PrivateReplaceWhitespace(spaced, '_'));
    EXPECT_STREQ("_a_b\xA0_", spaced);
    EXPECT_EQ(0, Access::PrivateReplaceWhitespace(empty, '_'));
}

TEST(CGVPathTrim, PrivateReplaceCharacters) {
    struct Row {
        const char* text;
        const char* set;
        char replacement;
        int keepSet, start;
        int count;
        const char* expected;
    };
    const Row rows[] = {
        {"a\\b/c", "\\/", '\0', 0, 0, 2, "abc"},
        {"a\\b/c", "\\/", '\0', 1, 0, 3, "\\/"},
        {"abcdef", "", '-', 1, 2, 4, "ab----"},
        {"abcdef", nullptr, '\0', 1, 2, 4, "ab"},
        {"abcdef", "", '-', 0, 0, 0, "abcdef"},
        {"abcdef", "", '-', 1, 6, 0, "abcdef"},
        {"a#b?c", "abc", '-', 1, 2, 1, "a#b-c"},
        {"\xE4x\xE4", "x", '\0', 1, 0, 2, "x"},
        {"", "x", '-', 0, 0, 0, ""},
        {"abc", "b", '-', 0, 7, 0, "abc"},   // a start outside the text changes nothing
        {"abc", "b", '-', 0, -1, 0, "abc"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(std::string(row.text) + " / " + (row.set ? row.set : "(null)"));
        CGVPath path(row.text);
        EXPECT_EQ(row.count, Access::PrivateReplaceCharacters(path, row.set, row.replacement, row.keepSet, row.start));
        EXPECT_STREQ(row.expected, path);
    }
}

TEST(CGVPathTrim, PrivateReplaceGroupStepsThroughTheRange) {
    CGVPath digits("a1b22c333");
    EXPECT_EQ(6, Access::PrivateReplaceGroup(digits, '1', '3', '#', 0));
    EXPECT_STREQ("a#b##c###", digits);
    CGVPath limited("1a11");
    EXPECT_EQ(2, Access::PrivateReplaceGroup(limited, '1', '1', '#', 3));
    EXPECT_STREQ("#a#1", limited);
    CGVPath backwards("abc");
    EXPECT_EQ(0, Access::PrivateReplaceGroup(backwards, 'c', 'a', '#', 0));
    // Signed bytes: 0x80..0xFF come before 0x00..0x7F, so this range is empty...
    CGVPath high("\xE4z");
    EXPECT_EQ(0, Access::PrivateReplaceGroup(high, 'a', '\xFF', '#', 0));
    // ...and this one holds every high byte and the ASCII range up to 'z'.
    EXPECT_EQ(2, Access::PrivateReplaceGroup(high, '\x80', 'z', '\x7F', 0));
    EXPECT_STREQ("\x7F\x7F", high);
    // A range that ends at 127 ends.
    CGVPath top("~\x7F");
    EXPECT_EQ(2, Access::PrivateReplaceGroup(top, '~', '\x7F', '_', 0));
}

TEST(CGVPathTrim, PrivateReplaceGroupGuardStopsARunawayReplacement) {
    // Replacing a by a finds the same a again for ever; the guard lets 102
    // replacements happen, then every later code of the range is hit once.
    CGVPath text("abbb");
    EXPECT_EQ(102 + 1, Access::PrivateReplaceGroup(text, 'a', 'b', 'a', 0));
    EXPECT_STREQ("aabb", text);
}
