// Code-page conversion: Windows-1252 both ways, UTF-8, other ICU pages, and the
// Win32 conventions for sizes, short buffers and bad arguments.
#include <gtest/gtest.h>

#include <iterator>
#include <string>
#include <thread>
#include <utility>

#include "gvlib/platform/winnls.h"

namespace {

std::string ToNarrow(UINT page, const std::wstring& wide, BOOL* usedDefault = nullptr, LPCSTR defaultChar = nullptr) {
    const int size = static_cast<int>(wide.size());
    const int n = WideCharToMultiByte(page, 0, wide.data(), size, nullptr, 0, defaultChar, usedDefault);
    std::string out(static_cast<std::size_t>(n), '\0');
    EXPECT_EQ(n, n ? WideCharToMultiByte(page, 0, wide.data(), size, out.data(), n, defaultChar, usedDefault) : 0);
    return out;
}

std::wstring ToWide(UINT page, const std::string& narrow) {
    const int size = static_cast<int>(narrow.size());
    const int n = MultiByteToWideChar(page, 0, narrow.data(), size, nullptr, 0);
    std::wstring out(static_cast<std::size_t>(n), L'\0');
    EXPECT_EQ(n, n ? MultiByteToWideChar(page, 0, narrow.data(), size, out.data(), n) : 0);
    return out;
}

}  // namespace

TEST(CodePage, EveryByteOf1252SurvivesARoundTrip) {
    std::string all;
    for (int b = 0; b < 256; ++b)
        all.push_back(static_cast<char>(b));
    for (UINT page : {UINT{CP_ACP}, UINT{CP_THREAD_ACP}, UINT{1252}}) {
        SCOPED_TRACE(page);
        const std::wstring wide = ToWide(page, all);
        ASSERT_EQ(wide.size(), 256u);
        EXPECT_EQ(wide[0x80], L'\u20AC');
        EXPECT_EQ(wide[0x9F], L'\u0178');
        for (int hole : {0x81, 0x8D, 0x8F, 0x90, 0x9D})
            EXPECT_EQ(static_cast<int>(wide[static_cast<std::size_t>(hole)]), hole);
        BOOL used = TRUE;
        EXPECT_EQ(ToNarrow(page, wide, &used), all);
        EXPECT_FALSE(used);
    }
    EXPECT_EQ(GetACP(), 1252u);
}

TEST(CodePage, CharactersMissingFromThePageBecomeTheDefaultChar) {
    const struct { UINT page; wchar_t in; char out; BOOL used; } rows[] = {
        {CP_ACP, L'\u20AC', '\x80', FALSE}, {CP_ACP, L'\u00E4', '\xE4', FALSE}, {CP_ACP, L'\u0081', '\x81', FALSE},
        {CP_ACP, L'\u0101', '?', TRUE},     {CP_ACP, L'\u4E2D', '?', TRUE},
        {CP_ACP, static_cast<wchar_t>(0x1F600), '?', TRUE},  {CP_ACP, static_cast<wchar_t>(0xD800), '?', TRUE},
        {CP_ACP, static_cast<wchar_t>(0x110000), '?', TRUE}, {1251, L'\u0416', '\xC6', FALSE},
        {1251, L'\u00E4', '?', TRUE},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(static_cast<unsigned>(row.in));
        BOOL used = -1;
        EXPECT_EQ(ToNarrow(row.page, std::wstring(1, row.in), &used), std::string(1, row.out));
        EXPECT_EQ(used, row.used);
        EXPECT_EQ(ToNarrow(row.page, std::wstring(1, row.in), nullptr, "*"), std::string(1, row.used ? '*' : row.out));
    }
}

TEST(CodePage, Utf8AndOtherIcuPages) {
    const std::wstring text = {L'\u20AC', static_cast<wchar_t>(0x1F600), L'a'};
    EXPECT_EQ(ToNarrow(CP_UTF8, text), "\xE2\x82\xAC\xF0\x9F\x98\x80" "a");
    EXPECT_EQ(ToWide(CP_UTF8, "\xE2\x82\xAC\xF0\x9F\x98\x80" "a"), text);
    // Invalid UTF-8 becomes U+FFFD; an invalid code point becomes its UTF-8 form.
    EXPECT_EQ(ToWide(CP_UTF8, "a\xFF" "b"), std::wstring(L"a\uFFFDb"));
    EXPECT_EQ(ToNarrow(CP_UTF8, std::wstring(1, static_cast<wchar_t>(0xDC00))), "\xEF\xBF\xBD");
    EXPECT_EQ(ToWide(1251, "\xC6"), L"\u0416");
    EXPECT_EQ(ToWide(CP_OEMCP, "\x80"), L"\u00C7");
}

TEST(CodePage, SizesCountTheTerminatorOnlyForMinusOne) {
    EXPECT_EQ(WideCharToMultiByte(CP_ACP, 0, L"abc", -1, nullptr, 0, nullptr, nullptr), 4);
    EXPECT_EQ(WideCharToMultiByte(CP_ACP, 0, L"abc", 2, nullptr, 0, nullptr, nullptr), 2);
    EXPECT_EQ(MultiByteToWideChar(CP_ACP, 0, "abc", -1, nullptr, 0), 4);
    EXPECT_EQ(MultiByteToWideChar(CP_UTF8, 0, "\xE2\x82\xAC", -1, nullptr, 0), 2);
    EXPECT_EQ(WideCharToMultiByte(CP_UTF8, 0, L"\u20AC", -1, nullptr, 0, nullptr, nullptr), 4);
    char narrow[4] = {'x', 'x', 'x', 'x'};
    EXPECT_EQ(WideCharToMultiByte(CP_ACP, 0, L"ab", -1, narrow, 4, nullptr, nullptr), 3);
    EXPECT_STREQ(narrow, "ab");
    EXPECT_EQ(lstrlenW(L"abc"), 3);
    EXPECT_EQ(lstrlenW(nullptr), 0);
    // A short buffer fails, keeping the part that fits as Win32 leaves it.
    for (UINT page : {UINT{CP_ACP}, UINT{CP_UTF8}, UINT{1251}}) {
        SCOPED_TRACE(page);
        char two[2] = {};
        wchar_t wide[2] = {};
        SetLastError(0);
        EXPECT_EQ(WideCharToMultiByte(page, 0, L"abc", -1, two, 2, nullptr, nullptr), 0);
        EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_INSUFFICIENT_BUFFER));
        EXPECT_EQ(std::string(two, 2), "ab");
        SetLastError(0);
        EXPECT_EQ(MultiByteToWideChar(page, 0, "abc", 3, wide, 2), 0);
        EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_INSUFFICIENT_BUFFER));
    }
}

TEST(CodePage, BadArgumentsFailWithTheirError) {
    static char out[8];
    static wchar_t wout[8];
    static const wchar_t lone[] = {static_cast<wchar_t>(0xD800), 0};
    constexpr DWORD kParam = ERROR_INVALID_PARAMETER, kFlags = ERROR_INVALID_FLAGS,
                    kNoTranslation = ERROR_NO_UNICODE_TRANSLATION;
    const std::pair<int (*)(), DWORD> rows[] = {
        {[] { return WideCharToMultiByte(CP_ACP, 0, nullptr, 3, out, 8, nullptr, nullptr); }, kParam},
        {[] { return WideCharToMultiByte(CP_ACP, 0, L"a", 0, out, 8, nullptr, nullptr); }, kParam},
        {[] { return WideCharToMultiByte(CP_ACP, 0, L"a", 1, out, -1, nullptr, nullptr); }, kParam},
        {[] { return WideCharToMultiByte(CP_ACP, 0, L"a", 1, nullptr, 8, nullptr, nullptr); }, kParam},
        {[] { return WideCharToMultiByte(54321, 0, L"a", 1, out, 8, nullptr, nullptr); }, kParam},
        {[] { return WideCharToMultiByte(1200, 0, L"a", 1, out, 8, nullptr, nullptr); }, kParam},  // UTF-16
        {[] { return WideCharToMultiByte(CP_UTF8, 0, L"a", 1, out, 8, "?", nullptr); }, kParam},
        {[] { return WideCharToMultiByte(CP_ACP, 0x1, L"a", 1, out, 8, nullptr, nullptr); }, kFlags},
        {[] { return WideCharToMultiByte(CP_UTF8, WC_ERR_INVALID_CHARS, lone, 1, out, 8, nullptr, nullptr); },
         kNoTranslation},
        {[] { return MultiByteToWideChar(CP_ACP, 0, nullptr, 3, wout, 8); }, kParam},
        {[] { return MultiByteToWideChar(CP_ACP, 0, "a", 0, wout, 8); }, kParam},
        {[] { return MultiByteToWideChar(CP_ACP, 0, "a", 1, nullptr, 8); }, kParam},
        {[] { return MultiByteToWideChar(54321, 0, "a", 1, wout, 8); }, kParam},
        {[] { return MultiByteToWideChar(CP_UTF8, MB_PRECOMPOSED, "a", 1, wout, 8); }, kFlags},
        {[] { return MultiByteToWideChar(CP_UTF8, MB_ERR_INVALID_CHARS, "a\xFF", 2, wout, 8); }, kNoTranslation},
    };
    for (std::size_t i = 0; i < std::size(rows); ++i) {
        SCOPED_TRACE(i);
        SetLastError(0);
        EXPECT_EQ(rows[i].first(), 0);
        EXPECT_EQ(GetLastError(), rows[i].second);
    }
    // The last error belongs to the thread.
    SetLastError(42);
    DWORD seen = 0;
    std::thread([&seen] {
        SetLastError(7);
        seen = GetLastError();
    }).join();
    EXPECT_EQ(seen, 7u);
    EXPECT_EQ(GetLastError(), 42u);
}
