// printf-style formatting as the original runtime produced it.
#include <gtest/gtest.h>

#include <cstring>
#include <limits>
#include <string>

#include "gvlib/platform/afxstr.h"

namespace {

struct Row { const char* format; double value; const char* want; };

double Bits(uint64_t bits) {
    double d;
    std::memcpy(&d, &bits, sizeof d);
    return d;
}

}  // namespace

TEST(CrtFormat, FloatsRoundHalfUpOnSeventeenDigits) {
    const double inf = std::numeric_limits<double>::infinity();
    const Row rows[] = {
        {"%.1f", 0.25, "0.3"},      {"%.2f", 0.125, "0.13"},     {"%.0f", 2.5, "3"},
        {"%.0f", 0.5, "1"},         {"%.1f", 0.05, "0.1"},       {"%.1f", 0.15, "0.1"},
        {"%.1f", 0.35, "0.3"},      {"%.1f", -0.25, "-0.3"},     {"%.1f", 0.0, "0.0"},
        {"%.1f", 9.96, "10.0"},     {"%.2f", 1e-9, "0.00"},      {"%.1f", 0.04, "0.0"},
        {"%f", 1.0 / 3, "0.333333"}, {"%.1f", 123456.75, "123456.8"}, {"%.3f", 1e20, "100000000000000000000.000"},
        {"%e", 1.0, "1.000000e+000"}, {"%.2e", 12345.0, "1.23e+004"}, {"%.0e", 2.0, "2e+000"}, {"%E", 1e-300, "1.000000E-300"},
        {"%g", 0.0001, "0.0001"},    {"%g", 0.00001, "1e-005"},   {"%g", 1234567.0, "1.23457e+006"},
        {"%g", 100.0, "100"},  {"%.2g", 9.96, "10"},        {"%.1f", 0.5, "0.5"},        {"%8.2f", 3.14159, "    3.14"},
        {"%-8.1f|", 2.0, "2.0     |"}, {"%+.1f", 1.0, "+1.0"},  {"%.1e", 9.96, "1.0e+001"},     {"%08.2f", -1.5, "-0001.50"},
        {"%05.1f", 2.25, "002.3"},
        // Special values keep the original spelling.
        {"%f", inf, "1.#INF00"},   {"%.2f", inf, "1.#J"},   {"%f", -inf, "-1.#INF00"},
        {"%.1f", std::numeric_limits<double>::quiet_NaN(), "1.$"},
        {"%f", Bits(0x7FF8000000000000ull), "1.#QNAN0"},  {"%f", Bits(0xFFF8000000000000ull), "-1.#IND00"},
        {"%f", Bits(0xFFF8000000000001ull), "-1.#QNAN0"}, {"%f", Bits(0x7FF0000000000001ull), "1.#SNAN0"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(std::string(row.format) + " -> " + row.want);
        CString s;
        s.Format(row.format, row.value);
        EXPECT_STREQ(row.want, s);
    }
}

TEST(CrtFormat, IntegerSizesFollowTheOriginalPlatform) {
    CString s;
    // 'l' is 32-bit there; a 32-bit value passed for %ld must print as itself.
    s.Format("%ld|%lu|%hd|%I64d|%lld|%x|%05d|%-4d|%+d", int32_t{-5}, uint32_t{4000000000u}, 70000,
             static_cast<long long>(-9000000000LL), 1LL, 255, 42, 7, 3);
    EXPECT_STREQ("-5|4000000000|4464|-9000000000|1|ff|00042|7   |+3", s);
    s.Format("%s|%.2s|%.0s|%5s|%c|%%|%S", "abc", "abc", "abc", "ab", 'z', L"w\u00e9");
    EXPECT_STREQ("abc|ab||   ab|z|%|w\xE9", s);
    s.Format("%lld|%llu|%hhd|%Id|%I32d|%.*f|%*d|%*d|", 0x100000001LL, -1LL, 300, 5, -6, 2, 1.0, 3, 5, -3, 4);
    EXPECT_STREQ("4294967297|18446744073709551615|44|5|-6|1.00|  5|4  |", s);
    s.Format("%10d|%3s|%2s|", 7, "abc", "abc");  // a zero in the width; a field exactly filled or overrun
    EXPECT_STREQ("         7|abc|abc|", s);
    s.Format("%s|%i|%018p|", static_cast<const char*>(nullptr), -2, reinterpret_cast<void*>(0xAB));
    EXPECT_STREQ("(null)|-2|  00000000000000AB|", s);  // a pointer is never zero-padded
}
