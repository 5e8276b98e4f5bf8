// CompareStringA: the Windows word sort over ICU collation, the locales' own
// orders, flags, counted lengths, failures, and the shortcuts against the full path.
#include <gtest/gtest.h>

#include <memory>
#include <random>
#include <string>

#include "gvlib/platform/gvplatform.h"
#include "gvlib/platform/winnls.h"

namespace {

int Compare(LCID lcid, const std::string& a, const std::string& b, DWORD flags = 0) {
    return CompareStringA(lcid, flags, a.data(), static_cast<int>(a.size()), b.data(), static_cast<int>(b.size()));
}

int Mirror(int result) { return 4 - result; }

constexpr int LT = CSTR_LESS_THAN, EQ = CSTR_EQUAL, GT = CSTR_GREATER_THAN;

struct Row { LCID lcid; DWORD flags; const char* a; const char* b; int expected; };

// Pairs the string value's own locale table already checks are left to it.
const Row kOrders[] = {
    // the word sort of 1033: letters without regard to case first, lower case winning a tie
    {1033, 0, "a", "A", LT}, {1033, 0, "Ab", "ab", GT}, {1033, 0, "abc", "ABD", LT}, {1033, 0, "", "", EQ},
    {1033, 0, "", "a", LT},
    // punctuation, then digits by character, then letters; a space sorts before letters
    {1033, 0, "!", "1", LT}, {1033, 0, "9", "a", LT}, {1033, 0, "10", "9", LT}, {1033, 0, "a b", "ab", LT},
    // hyphen and apostrophe only break a tie, the string holding them after
    {1033, 0, "co-op", "cop", LT}, {1033, 0, "cars", "car's", LT}, {1033, 0, "a", "a-", LT}, {1033, 0, "'o", "-o", LT},
    {1033, 0, "co'op", "co-op", LT}, {1033, 0, "a-b", "ab-", LT}, {1033, 0, "-", "", GT}, {1033, 0, "xa-b", "xab-", LT},
    // accents after case-blind letters, before case
    {1033, 0, "e", "\xE9", LT}, {1033, 0, "\xE9", "f", LT}, {1033, 0, "\xE5", "a", GT}, {1033, 0, "ab\xE9", "abe", GT},
    {1033, 0, "abe", "abF", LT},
    // the locales' own letters and the alternative sorts of their sort ids
    {1053, 0, "\xE5", "\xE4", LT}, {1053, 0, "\xF6", "z", GT}, {1053, 0, "wb", "va", GT}, {1053, 0, "va", "wa", LT},
    {1035, 0, "vb", "wa", GT}, {2077, 0, "vb", "wa", GT}, {1033, 0, "vb", "wa", LT}, {1034, 0, "luz", "llama", LT},
    {3082, 0, "luz", "llama", GT}, {1031, 0, "\xE4", "ad", LT}, {0x10407, 0, "\xE4", "ad", GT},
    {0x10407, 0, "\xE4", "af", LT}, {1038, 0, "cz", "csa", LT}, {0x1040E, 0, "cz", "csa", GT}, {1030, 0, "aa", "z", GT},
    {1033, 0, "aa", "z", LT}, {LOCALE_INVARIANT, 0, "a", "B", LT}, {LOCALE_SYSTEM_DEFAULT, 0, "coop", "co-op", LT},
    {0, 0, "\xE4", "z", LT},
    // flags
    {1033, NORM_IGNORECASE, "a", "A", EQ}, {1033, NORM_IGNORECASE, "e", "\xC9", LT},
    {1033, NORM_IGNORENONSPACE, "e", "\xE9", EQ}, {1033, NORM_IGNORENONSPACE, "a", "A", LT},
    {1033, NORM_IGNORENONSPACE | NORM_IGNORECASE, "E", "\xE9", EQ}, {1033, NORM_IGNORESYMBOLS, "a-b c$", "abc", EQ},
    {1033, NORM_IGNORESYMBOLS, "co-op", "coop", EQ}, {1033, NORM_IGNORESYMBOLS, "a", "A", LT},
    {1033, SORT_STRINGSORT, "co-op", "coop", LT}, {1033, SORT_STRINGSORT, "car's", "cars", LT},
    {1033, NORM_IGNOREWIDTH | NORM_IGNOREKANATYPE, "a", "A", LT},
    // the common prefix must not split a contraction or hide a mark
    {1034, 0, "ach", "acz", GT}, {1034, 0, "ac-h", "acz", GT}, {1038, 0, "ddzs", "ddz", GT}, {1030, 0, "baa", "bz", GT},
};

}  // namespace

TEST(CompareString, Orders) {
    for (const Row& row : kOrders) {
        SCOPED_TRACE(std::to_string(row.lcid) + "/" + std::to_string(row.flags) + ": " + row.a + " | " + row.b);
        EXPECT_EQ(Compare(row.lcid, row.a, row.b, row.flags), row.expected);
        EXPECT_EQ(Compare(row.lcid, row.b, row.a, row.flags), Mirror(row.expected));
    }
}

TEST(CompareString, LocalesCountsAndFailures) {
    EXPECT_EQ(GetUserDefaultLCID(), 1033u);
    gvplatform::SetUserDefaultLCID(1053);
    EXPECT_EQ(GetUserDefaultLCID(), 1053u);
    EXPECT_EQ(Compare(LOCALE_USER_DEFAULT, "\xE4", "z"), GT);
    gvplatform::SetUserDefaultLCID(1033);
    EXPECT_EQ(Compare(LOCALE_USER_DEFAULT, "\xE4", "z"), LT);
    EXPECT_EQ(CompareStringA(1033, 0, "abcX", 3, "abc", -1), EQ);
    EXPECT_EQ(CompareStringA(1033, 0, "zzz", 0, "", -1), EQ);
    EXPECT_EQ(CompareStringA(1033, 0, "abc", 2, "abc", 3), LT);
    EXPECT_EQ(CompareStringA(1033, 0, "abc", -5, "abc", -1), EQ);  // any negative: NUL-terminated
    // A counted NUL is compared like the rest, and weighs nothing.
    EXPECT_EQ(CompareStringA(1033, 0, "a\0b", 3, "ab", 2), EQ);
    EXPECT_EQ(CompareStringA(1033, 0, "a\0c", 3, "ab", 2), GT);
    // Counted blocks with nothing around them: the prefix walk stops at their start.
    const std::unique_ptr<char[]> ch(new char[2]{'c', 'h'}), cz(new char[2]{'c', 'z'});
    EXPECT_EQ(CompareStringA(1034, 0, ch.get(), 2, cz.get(), 2), GT);
    const struct { LCID lcid; DWORD flags; const char* a; DWORD error; } failures[] = {
        {0x9999, 0, "a", ERROR_INVALID_PARAMETER},      // unknown
        {12345, 0, "a", ERROR_INVALID_PARAMETER},       // known only by its language
        {1033, 0x80000000u, "a", ERROR_INVALID_FLAGS},  // unknown flag
        {1033, 0x8, "a", ERROR_INVALID_FLAGS},          // digits as numbers
        {1033, 0, nullptr, ERROR_INVALID_PARAMETER},
    };
    for (const auto& row : failures) {
        SCOPED_TRACE(row.lcid);
        SetLastError(0);
        EXPECT_EQ(CompareStringA(row.lcid, row.flags, row.a, -1, "b", -1), 0);
        EXPECT_EQ(GetLastError(), row.error);
    }
}

// The prefix skip and the weight tables must answer what the full path answers,
// for every locale with an order of its own and every flag that shapes the
// collator: random texts over the awkward bytes, mostly sharing a prefix.
TEST(CompareString, ShortcutsAnswerAsTheFullPath) {
    const char letters[] = "aAbBcChHlLvVwWzZdDsSeE049 -'!.\xB7\xE4\xC4\xE5\xE9\xF6\xFC\xDF\x8A\x9F\xFF\xA0\x81";
    const std::string alphabet(letters, sizeof letters);  // with the NUL
    const LCID locales[] = {1033, 1053, 1035, 1034, 3082, 1031, 0x10407, 1038, 0x1040E, 1030, 1036, 3084, 1055,
                            LOCALE_INVARIANT};
    const DWORD flagSets[] = {0, NORM_IGNORECASE, NORM_IGNORENONSPACE, NORM_IGNORESYMBOLS, SORT_STRINGSORT,
                              NORM_IGNORECASE | NORM_IGNORENONSPACE};
    std::mt19937 random(7);
    auto text = [&](std::size_t length) {
        std::string s;
        for (std::size_t i = 0; i < length; ++i)
            s += alphabet[random() % alphabet.size()];
        return s;
    };
    for (LCID lcid : locales) {
        for (DWORD flags : flagSets) {
            for (int round = 0; round < 300; ++round) {
                const std::string prefix = text(random() % 4);
                const std::string a = prefix + text(random() % 5), b = prefix + text(random() % 5);
                gvplatform::SetCollationShortcuts(true);
                const int fast = Compare(lcid, a, b, flags);
                gvplatform::SetCollationShortcuts(false);
                const int full = Compare(lcid, a, b, flags);
                gvplatform::SetCollationShortcuts(true);
                ASSERT_EQ(fast, full) << lcid << "/" << flags << ": " << a << " | " << b;
                ASSERT_EQ(Compare(lcid, b, a, flags), Mirror(full));
                ASSERT_TRUE(a != b || full == CSTR_EQUAL);
            }
        }
    }
}
