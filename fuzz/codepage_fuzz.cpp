// The code-page conversions on any bytes, pages and flags: the size asked for is
// the size written, a short buffer never overflows, and single-byte pages give
// one character per byte.
#include <gvlib/gvlib.h>
#include <gvlib/platform/winnls.h>

#include <cstddef>
#include <cstdint>
#include <vector>

namespace {

constexpr UINT kPages[] = {CP_ACP, CP_OEMCP, CP_UTF8, 1252, 437, 850, 1250, 1251, 932, 12345};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(uint8_t const* data, size_t size) {
    if (size < 3)
        return 0;
    UINT page = kPages[data[0] % (sizeof kPages / sizeof kPages[0])];
    DWORD mbFlags = (data[1] & 1) ? MB_ERR_INVALID_CHARS : 0;
    DWORD wcFlags = (data[1] & 2) ? WC_ERR_INVALID_CHARS : 0;
    int shortBy = data[2] % 4;
    auto const* text = reinterpret_cast<char const*>(data + 3);
    int n = static_cast<int>(size - 3);
    if (n == 0)
        return 0;

    int wide = MultiByteToWideChar(page, mbFlags, text, n, nullptr, 0);
    if (wide <= 0)
        return 0;
    if ((page == CP_ACP || page == 1252 || page == 437) && wide != n)
        __builtin_trap();  // single-byte pages: one character per byte
    std::vector<wchar_t> w(static_cast<size_t>(wide) + 4, L'\x5A5A');
    if (MultiByteToWideChar(page, mbFlags, text, n, w.data(), wide) != wide)
        __builtin_trap();
    // A buffer too short writes at most its size and fails.
    if (shortBy > 0 && wide > shortBy) {
        std::vector<wchar_t> cut(static_cast<size_t>(wide), L'\x5A5A');
        if (MultiByteToWideChar(page, mbFlags, text, n, cut.data(), wide - shortBy) != 0 ||
            cut[static_cast<size_t>(wide - shortBy)] != L'\x5A5A')
            __builtin_trap();
    }

    BOOL usedDefault = FALSE;
    BOOL* pUsed = page == CP_UTF8 ? nullptr : &usedDefault;
    int narrow = WideCharToMultiByte(page, wcFlags, w.data(), wide, nullptr, 0, nullptr, pUsed);
    if (narrow <= 0)
        return 0;
    std::vector<char> back(static_cast<size_t>(narrow) + 4, '\x5A');
    if (WideCharToMultiByte(page, wcFlags, w.data(), wide, back.data(), narrow, nullptr, pUsed) != narrow ||
        back[static_cast<size_t>(narrow)] != '\x5A')
        __builtin_trap();
    return 0;
}
