// CompareStringA: the Windows word sort over ICU collation, locales, flags,
// counted lengths and failures.
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "gvlib/platform/gvplatform.h"
#include "gvlib/platform/winnls.h"

namespace {

int Compare(LCID lcid, const char* a, const char* b, DWORD flags = 0) {
    return CompareStringA(lcid, flags, a, -1, b, -1);
}

int Mirror(int result) { return 4 - result; }

struct OrderRow {
    const char* a;
    const char* b;
    int expected;
};

// The word sort of 1033, one rule per group of rows.
const OrderRow kWordSort[] = {
    // letters first without regard to case, lower case winning a tie
    {"a", "A", CSTR_LESS_THAN},
    {"A", "b", CSTR_LESS_THAN},
    {"a", "B", CSTR_LESS_THAN},
    {"ab", "Ab", CSTR_LESS_THAN},
    {"Ab", "ab", CSTR_GREATER_THAN},
    {"abc", "ABD", CSTR_LESS_THAN},
    {"abc", "abc", CSTR_EQUAL},
    {"", "", CSTR_EQUAL},
    {"", "a", CSTR_LESS_THAN},
    // punctuation and symbols before digits, digits before letters, by character
    {"!", "1", CSTR_LESS_THAN},
    {"$", "0", CSTR_LESS_THAN},
    {"+", "9", CSTR_LESS_THAN},
    {"9", "a", CSTR_LESS_THAN},
    {"10", "9", CSTR_LESS_THAN},
    {"a b", "ab", CSTR_LESS_THAN},
    // hyphen and apostrophe only break a tie, the string holding them after
    {"coop", "co-op", CSTR_LESS_THAN},
    {"co-op", "cop", CSTR_LESS_THAN},
    {"cars", "car's", CSTR_LESS_THAN},
    {"a", "a-", CSTR_LESS_THAN},
    {"'o", "-o", CSTR_LESS_THAN},
    {"co'op", "co-op", CSTR_LESS_THAN},
    {"a-b", "ab-", CSTR_LESS_THAN},
    {"-", "", CSTR_GREATER_THAN},
    {"-", "-", CSTR_EQUAL},
    // accents: after case-blind letters, before case
    {"e", "\xE9", CSTR_LESS_THAN},
    {"\xE9", "f", CSTR_LESS_THAN},
    {"\xE4", "b", CSTR_LESS_THAN},
    {"\xE5", "a", CSTR_GREATER_THAN},
};

}  // namespace

TEST(CompareString, WordSortOf1033) {
    for (const OrderRow& row : kWordSort) {
        SCOPED_TRACE(std::string(row.a) + " | " + row.b);
        EXPECT_EQ(Compare(1033, row.a, row.b), row.expected);
        EXPECT_EQ(Compare(1033, row.b, row.a), Mirror(row.expected));
    }
}

TEST(CompareString, SortingFollowsTheWordSort) {
    std::vector<std::string> words = {"b", "B", "co-op", "A", "coop", "10", "9", "!", "a", "car's", "cars", "-o", "'o"};
    std::sort(words.begin(), words.end(), [](const std::string& x, const std::string& y) {
        return Compare(1033, x.c_str(), y.c_str()) == CSTR_LESS_THAN;
    });
    const std::vector<std::string> expected = {"!", "10", "9",     "a",    "A",     "b",  "B",
                                               "cars", "car's", "coop", "co-op", "'o", "-o"};
    EXPECT_EQ(words, expected);
}

TEST(CompareString, LocalesDecideTheirOwnLetters) {
    struct Row {
        LCID lcid;
        const char* a;
        const char* b;
        int expected;
    };
    const Row rows[] = {
        {1053, "\xE4", "z", CSTR_GREATER_THAN}, {1053, "\xE5", "z", CSTR_GREATER_THAN},
        {1053, "\xF6", "z", CSTR_GREATER_THAN}, {1053, "\xE5", "\xE4", CSTR_LESS_THAN},
        {1033, "\xE4", "z", CSTR_LESS_THAN},    {1033, "\xE4", "b", CSTR_LESS_THAN},
        {LOCALE_INVARIANT, "a", "B", CSTR_LESS_THAN}, {LOCALE_USER_DEFAULT, "a", "B", CSTR_LESS_THAN},
        {LOCALE_SYSTEM_DEFAULT, "coop", "co-op", CSTR_LESS_THAN}, {0, "\xE4", "z", CSTR_LESS_THAN},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(std::to_string(row.lcid) + ": " + row.a + " | " + row.b);
        EXPECT_EQ(Compare(row.lcid, row.a, row.b), row.expected);
    }
}

TEST(CompareString, UserDefaultLocaleIsSettable) {
    EXPECT_EQ(GetUserDefaultLCID(), 1033u);
    gvplatform::SetUserDefaultLCID(1053);
    EXPECT_EQ(GetUserDefaultLCID(), 1053u);
    EXPECT_EQ(Compare(LOCALE_USER_DEFAULT, "\xE4", "z"), CSTR_GREATER_THAN);
    EXPECT_EQ(Compare(0, "\xE4", "z"), CSTR_GREATER_THAN);
    EXPECT_EQ(Compare(1033, "\xE4", "z"), CSTR_LESS_THAN);
    gvplatform::SetUserDefaultLCID(1033);
    EXPECT_EQ(Compare(LOCALE_USER_DEFAULT, "\xE4", "z"), CSTR_LESS_THAN);
}

TEST(CompareString, Flags) {
    struct Row {
        DWORD flags;
        const char* a;
        const char* b;
        int expected;
    };
    const Row rows[] = {
        {NORM_IGNORECASE, "a", "A", CSTR_EQUAL},
        {NORM_IGNORECASE, "a", "B", CSTR_LESS_THAN},
        {NORM_IGNORECASE, "e", "\xC9", CSTR_LESS_THAN},
        {NORM_IGNORENONSPACE, "e", "\xE9", CSTR_EQUAL},
        {NORM_IGNORENONSPACE, "a", "A", CSTR_LESS_THAN},
        {NORM_IGNORENONSPACE | NORM_IGNORECASE, "E", "\xE9", CSTR_EQUAL},
        {NORM_IGNORESYMBOLS, "a-b c$", "abc", CSTR_EQUAL},
        {NORM_IGNORESYMBOLS, "co-op", "coop", CSTR_EQUAL},
        {NORM_IGNORESYMBOLS, "a", "A", CSTR_LESS_THAN},
        {SORT_STRINGSORT, "co-op", "coop", CSTR_LESS_THAN},
        {SORT_STRINGSORT, "car's", "cars", CSTR_LESS_THAN},
        {SORT_STRINGSORT, "a", "B", CSTR_LESS_THAN},
        {NORM_IGNOREWIDTH | NORM_IGNOREKANATYPE, "a", "A", CSTR_LESS_THAN},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(std::to_string(row.flags) + ": " + row.a + " | " + row.b);
        EXPECT_EQ(Compare(1033, row.a, row.b, row.flags), row.expected);
        EXPECT_EQ(Compare(1033, row.b, row.a, row.flags), Mirror(row.expected));
    }
}

TEST(CompareString, CountsBoundTheText) {
    EXPECT_EQ(CompareStringA(1033, 0, "abcX", 3, "abc", -1), CSTR_EQUAL);
    EXPECT_EQ(CompareStringA(1033, 0, "ab", 1, "a", 1), CSTR_EQUAL);
    EXPECT_EQ(CompareStringA(1033, 0, "zzz", 0, "", -1), CSTR_EQUAL);
    EXPECT_EQ(CompareStringA(1033, 0, "abc", 2, "abc", 3), CSTR_LESS_THAN);
    EXPECT_EQ(CompareStringA(1033, 0, "abc", -5, "abc", -1), CSTR_EQUAL);  // any negative: NUL-terminated
    // A counted NUL is compared like the rest, and weighs nothing.
    EXPECT_EQ(CompareStringA(1033, 0, "a\0b", 3, "ab", 2), CSTR_EQUAL);
    EXPECT_EQ(CompareStringA(1033, 0, "a\0c", 3, "ab", 2), CSTR_GREATER_THAN);
}

TEST(CompareString, FailuresAnswerZeroWithTheirError) {
    struct Row {
        const char* what;
        LCID lcid;
        DWORD flags;
        const char* a;
        DWORD error;
    };
    const Row rows[] = {
        {"unknown LCID", 0x9999, 0, "a", ERROR_INVALID_PARAMETER},
        {"LCID known only by its language", 12345, 0, "a", ERROR_INVALID_PARAMETER},
        {"unknown flag", 1033, 0x80000000u, "a", ERROR_INVALID_FLAGS},
        {"digits as numbers are not supported", 1033, 0x8, "a", ERROR_INVALID_FLAGS},
        {"null text", 1033, 0, nullptr, ERROR_INVALID_PARAMETER},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.what);
        SetLastError(0);
        EXPECT_EQ(CompareStringA(row.lcid, row.flags, row.a, -1, "b", -1), 0);
        EXPECT_EQ(GetLastError(), row.error);
    }
}

TEST(CompareString, AwkwardInputsCompareConsistentlyUnderEveryFlag) {
    const std::string awkward[] = {"", "-", "'", "--'", "a-", "-a", "a'-b", std::string("a\0-", 3),
                                   "\x81\x8D", "\xFF", " ", "10", "A", "\xE4", "co-op"};
    const DWORD flagSets[] = {0, NORM_IGNORECASE, NORM_IGNORENONSPACE, NORM_IGNORESYMBOLS, SORT_STRINGSORT,
                              NORM_IGNORECASE | NORM_IGNORENONSPACE | NORM_IGNORESYMBOLS | SORT_STRINGSORT};
    for (DWORD flags : flagSets) {
        for (const std::string& a : awkward) {
            for (const std::string& b : awkward) {
                SCOPED_TRACE(std::to_string(flags) + ": " + a + " | " + b);
                const int ab = CompareStringA(1053, flags, a.data(), static_cast<int>(a.size()), b.data(),
                                              static_cast<int>(b.size()));
                const int ba = CompareStringA(1053, flags, b.data(), static_cast<int>(b.size()), a.data(),
                                              static_cast<int>(a.size()));
                ASSERT_NE(ab, 0);
                EXPECT_EQ(ab, Mirror(ba));
                if (a == b) {
                    EXPECT_EQ(ab, CSTR_EQUAL);
                }
            }
        }
    }
}
