// Win32 code-page conversion (WideCharToMultiByte, MultiByteToWideChar) over ICU
// converters, the thread's last-error value and the ANSI code page.
//
// Wide text is wchar_t, UTF-32 on this host: counts of wide text are counts of
// wchar_t, so a character outside the BMP is one unit here where Windows used two.
#include "platform/codepage.h"

#include <unicode/ucnv.h>
#include <unicode/ucnv_cb.h>

#include <algorithm>
#include <climits>
#include <cstring>
#include <cwchar>
#include <memory>
#include <string>
#include <unordered_map>
#include <utility>

#include "gvlib/platform/winnls.h"

namespace {

thread_local DWORD t_lastError = 0;

constexpr UINT kAnsiCodePage = 1252;
constexpr UINT kOemCodePage = 437;
constexpr char16_t kReplacement = 0xFFFD;

// ---- converters ---------------------------------------------------------------------

struct ConverterCloser {
    void operator()(UConverter* c) const noexcept { ucnv_close(c); }
};
using ConverterPtr = std::unique_ptr<UConverter, ConverterCloser>;

// UTF-16 and UTF-32 are wide encodings: Windows refuses them as multibyte pages.
bool IsWideEncoding(UConverter* c) {
    switch (ucnv_getType(c)) {
    case UCNV_UTF16_BigEndian:
    case UCNV_UTF16_LittleEndian:
    case UCNV_UTF32_BigEndian:
    case UCNV_UTF32_LittleEndian:
    case UCNV_UTF16:
    case UCNV_UTF32:
        return true;
    default:
        return false;
    }
}

ConverterPtr OpenByName(const std::string& name) {
    UErrorCode err = U_ZERO_ERROR;
    ConverterPtr c(ucnv_open(name.c_str(), &err));
    if (U_FAILURE(err) || !c || IsWideEncoding(c.get()))
        return nullptr;
    // Only round-trip mappings: a character the page lacks becomes the default
    // character rather than a look-alike.
    ucnv_setFallback(c.get(), false);
    return c;
}

ConverterPtr OpenCodePage(UINT codePage) {
    if (codePage == CP_UTF8)
        return OpenByName("UTF-8");
    const std::string number = std::to_string(codePage);
    if (ConverterPtr c = OpenByName("windows-" + number))
        return c;
    return OpenByName("cp" + number);
}

// ICU converters keep state and are not shared between threads; opening one is far
// slower than a short conversion, so each thread keeps those it has used. Only
// code pages that exist are kept, so the cache is bounded by ICU's own list.
UConverter* CachedConverter(UINT codePage) {
    thread_local std::unordered_map<UINT, ConverterPtr> cache;
    auto it = cache.find(codePage);
    if (it != cache.end()) {
        ucnv_reset(it->second.get());
        return it->second.get();
    }
    ConverterPtr c = OpenCodePage(codePage);
    if (!c)
        return nullptr;
    return cache.emplace(codePage, std::move(c)).first->second.get();
}

// ---- Windows-1252 tables ---------------------------------------------------------

std::array<char16_t, 256> BuildCp1252Table() {
    std::array<char16_t, 256> table{};
    for (std::size_t b = 0; b < table.size(); ++b)
        table[b] = static_cast<char16_t>(b);
    ConverterPtr c = OpenByName("windows-1252");
    if (!c)
        return table;
    UErrorCode err = U_ZERO_ERROR;
    ucnv_setToUCallBack(c.get(), UCNV_TO_U_CALLBACK_STOP, nullptr, nullptr, nullptr, &err);
    for (std::size_t b = 0; b < table.size(); ++b) {
        const char byte = static_cast<char>(b);
        UChar unit = 0;
        err = U_ZERO_ERROR;
        ucnv_reset(c.get());
        // A byte ICU leaves undefined keeps its own value: Windows maps the holes
        // of the page to the C1 controls.
        if (ucnv_toUChars(c.get(), &unit, 1, &byte, 1, &err) == 1 && U_SUCCESS(err))
            table[b] = unit;
    }
    return table;
}

// The inverse of the decoding table, sorted by code point for a binary search.
using EncodePair = std::pair<char16_t, unsigned char>;

std::array<EncodePair, 256> BuildCp1252Inverse() {
    const auto& table = gvplatform::detail::Cp1252ToUtf16Table();
    std::array<EncodePair, 256> inverse{};
    for (std::size_t b = 0; b < table.size(); ++b)
        inverse[b] = {table[b], static_cast<unsigned char>(b)};
    std::sort(inverse.begin(), inverse.end());
    return inverse;
}

// ---- shared helpers --------------------------------------------------------------

int Fail(DWORD error) {
    t_lastError = error;
    return 0;
}

bool IsValidScalar(wchar_t w) {
    const auto c = static_cast<uint32_t>(w);
    return c <= 0x10FFFF && (c < 0xD800 || c > 0xDFFF);
}

// Hands `produced` units over to the caller: a size query, a fitting copy, or the
// part that fits and ERROR_INSUFFICIENT_BUFFER, as Win32 does.
template <class Unit>
int Deliver(const Unit* produced, std::size_t count, Unit* out, int outSize) {
    if (count > static_cast<std::size_t>(INT_MAX))
        return Fail(ERROR_INVALID_PARAMETER);
    if (outSize == 0)
        return static_cast<int>(count);
    const std::size_t fits = std::min(count, static_cast<std::size_t>(outSize));
    std::copy(produced, produced + fits, out);
    if (fits < count)
        return Fail(ERROR_INSUFFICIENT_BUFFER);
    return static_cast<int>(count);
}

UINT ResolveCodePage(UINT codePage) {
    switch (codePage) {
    case CP_ACP:
    case CP_THREAD_ACP:
        return kAnsiCodePage;
    case CP_OEMCP:
        return kOemCodePage;
    default:
        return codePage;
    }
}

// ---- wide to narrow ------------------------------------------------------------------

int WideTo1252(LPCWSTR text, int count, LPSTR out, int outSize, char defaultChar, BOOL* usedDefault) {
    bool used = false;
    int written = 0;
    for (int i = 0; i < count; ++i) {
        const wchar_t c = text[i];
        const int byte = IsValidScalar(c) ? gvplatform::detail::Utf32ToCp1252(static_cast<char32_t>(c)) : -1;
        if (byte < 0)
            used = true;
        if (outSize != 0 && written < outSize)
            out[written] = byte < 0 ? defaultChar : static_cast<char>(byte);
        ++written;
    }
    if (usedDefault)
        *usedDefault = used ? TRUE : FALSE;
    if (outSize != 0 && written > outSize)
        return Fail(ERROR_INSUFFICIENT_BUFFER);
    return written;
}

// Substitutes as ICU's own callback does and notes that it had to.
void NoteSubstitution(const void* context, UConverterFromUnicodeArgs* args, const UChar* units, int32_t length,
                      UChar32 c, UConverterCallbackReason reason, UErrorCode* err) {
    if (reason <= UCNV_IRREGULAR)
        *static_cast<bool*>(const_cast<void*>(context)) = true;
    UCNV_FROM_U_CALLBACK_SUBSTITUTE(nullptr, args, units, length, c, reason, err);
}

// UTF-32 to UTF-16; an invalid code point becomes U+FFFD, or fails when `strict`.
bool WidenToUtf16(LPCWSTR text, int count, bool strict, std::u16string& out) {
    out.reserve(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i) {
        if (!IsValidScalar(text[i])) {
            if (strict)
                return false;
            out.push_back(kReplacement);
            continue;
        }
        const auto c = static_cast<uint32_t>(text[i]);
        if (c < 0x10000) {
            out.push_back(static_cast<char16_t>(c));
        } else {
            out.push_back(static_cast<char16_t>(0xD7C0 + (c >> 10)));
            out.push_back(static_cast<char16_t>(0xDC00 | (c & 0x3FF)));
        }
    }
    return true;
}

int WideToIcu(UConverter* cnv, LPCWSTR text, int count, bool strict, LPSTR out, int outSize, LPCSTR defaultChar,
              BOOL* usedDefault) {
    std::u16string units;
    if (!WidenToUtf16(text, count, strict, units))
        return Fail(ERROR_NO_UNICODE_TRANSLATION);
    UErrorCode err = U_ZERO_ERROR;
    const char* sub = defaultChar ? defaultChar : "?";
    // A single-byte page uses the first byte of the default character; a double-byte
    // page may take two. No more than that is read.
    const int32_t subLength = ucnv_getMaxCharSize(cnv) > 1 && sub[0] != '\0' && sub[1] != '\0' ? 2 : 1;
    ucnv_setSubstChars(cnv, sub, subLength, &err);
    if (U_FAILURE(err))
        return Fail(ERROR_INVALID_PARAMETER);
    bool used = false;
    ucnv_setFromUCallBack(cnv, NoteSubstitution, &used, nullptr, nullptr, &err);
    const std::size_t maxCharSize = static_cast<std::size_t>(ucnv_getMaxCharSize(cnv));
    if (units.size() > static_cast<std::size_t>(INT32_MAX) / maxCharSize - 16)
        return Fail(ERROR_INVALID_PARAMETER);
    const auto unitCount = static_cast<int32_t>(units.size());
    std::string bytes((units.size() + 10) * maxCharSize, '\0');
    const int32_t length = ucnv_fromUChars(cnv, bytes.data(), static_cast<int32_t>(bytes.size()),
                                           reinterpret_cast<const UChar*>(units.data()), unitCount, &err);
    if (U_FAILURE(err))
        return Fail(ERROR_NO_UNICODE_TRANSLATION);
    if (usedDefault)
        *usedDefault = used ? TRUE : FALSE;
    return Deliver(bytes.data(), static_cast<std::size_t>(length), out, outSize);
}

// ---- narrow to wide ------------------------------------------------------------------

int NarrowFrom1252(LPCSTR text, int count, LPWSTR out, int outSize) {
    const auto& table = gvplatform::detail::Cp1252ToUtf16Table();
    if (outSize == 0)
        return count;
    const int fits = std::min(count, outSize);
    for (int i = 0; i < fits; ++i)
        out[i] = static_cast<wchar_t>(table[static_cast<unsigned char>(text[i])]);
    return fits < count ? Fail(ERROR_INSUFFICIENT_BUFFER) : count;
}

// Undecodable input becomes U+FFFD, whatever ICU's own substitute for the page.
void SubstituteReplacement(const void*, UConverterToUnicodeArgs* args, const char*, int32_t,
                           UConverterCallbackReason reason, UErrorCode* err) {
    if (reason > UCNV_IRREGULAR)
        return;
    *err = U_ZERO_ERROR;
    const UChar replacement = kReplacement;
    ucnv_cbToUWriteUChars(args, &replacement, 1, 0, err);
}

std::wstring Utf16ToWide(const std::u16string& units) {
    std::wstring wide;
    wide.reserve(units.size());
    for (std::size_t i = 0; i < units.size(); ++i) {
        const char32_t u = units[i];
        const bool lead = u >= 0xD800 && u <= 0xDBFF;
        if (lead && i + 1 < units.size() && units[i + 1] >= 0xDC00 && units[i + 1] <= 0xDFFF) {
            wide.push_back(static_cast<wchar_t>(0x10000 + ((u - 0xD800) << 10) + (units[i + 1] - 0xDC00)));
            ++i;
        } else {
            wide.push_back(u >= 0xD800 && u <= 0xDFFF ? kReplacement : static_cast<wchar_t>(u));
        }
    }
    return wide;
}

int NarrowFromIcu(UConverter* cnv, LPCSTR text, int count, bool strict, LPWSTR out, int outSize) {
    UErrorCode err = U_ZERO_ERROR;
    if (strict)
        ucnv_setToUCallBack(cnv, UCNV_TO_U_CALLBACK_STOP, nullptr, nullptr, nullptr, &err);
    else
        ucnv_setToUCallBack(cnv, SubstituteReplacement, nullptr, nullptr, nullptr, &err);
    // A byte gives at most two UTF-16 units in every page ICU knows; should one give
    // more, the overflow tells the size needed and the call is repeated once.
    if (count > INT32_MAX / 2 - 1)
        return Fail(ERROR_INVALID_PARAMETER);
    std::u16string units(static_cast<std::size_t>(count) * 2 + 2, u'\0');
    int32_t length = ucnv_toUChars(cnv, reinterpret_cast<UChar*>(units.data()), static_cast<int32_t>(units.size()),
                                   text, count, &err);
    if (err == U_BUFFER_OVERFLOW_ERROR) {
        err = U_ZERO_ERROR;
        ucnv_reset(cnv);
        units.assign(static_cast<std::size_t>(length), u'\0');
        length = ucnv_toUChars(cnv, reinterpret_cast<UChar*>(units.data()), length, text, count, &err);
    }
    if (U_FAILURE(err))
        return Fail(strict ? ERROR_NO_UNICODE_TRANSLATION : ERROR_INVALID_PARAMETER);
    units.resize(static_cast<std::size_t>(length));
    const std::wstring wide = Utf16ToWide(units);
    return Deliver(wide.data(), wide.size(), out, outSize);
}

}  // namespace

// ---- internal interface ------------------------------------------------------------

namespace gvplatform::detail {

const std::array<char16_t, 256>& Cp1252ToUtf16Table() {
    static const std::array<char16_t, 256> table = BuildCp1252Table();
    return table;
}

int Utf32ToCp1252(char32_t c) noexcept {
    static const std::array<EncodePair, 256> inverse = BuildCp1252Inverse();
    if (c < 0x80)
        return static_cast<int>(c);
    if (c > 0xFFFF)
        return -1;
    const auto unit = static_cast<char16_t>(c);
    auto it = std::lower_bound(inverse.begin(), inverse.end(), EncodePair{unit, 0});
    return it != inverse.end() && it->first == unit ? it->second : -1;
}

void AppendCp1252AsUtf16(const char* text, std::size_t count, std::u16string& out) {
    const auto& table = Cp1252ToUtf16Table();
    for (std::size_t i = 0; i < count; ++i)
        out.push_back(table[static_cast<unsigned char>(text[i])]);
}

}  // namespace gvplatform::detail

// ---- Win32 interface -------------------------------------------------------------------

DWORD GetLastError() { return t_lastError; }

void SetLastError(DWORD dwErrCode) { t_lastError = dwErrCode; }

UINT GetACP() { return kAnsiCodePage; }

int lstrlenW(LPCWSTR lpString) { return lpString ? static_cast<int>(std::wcslen(lpString)) : 0; }

int WideCharToMultiByte(UINT CodePage, DWORD dwFlags, LPCWSTR lpWideCharStr, int cchWideChar, LPSTR lpMultiByteStr,
                        int cbMultiByte, LPCSTR lpDefaultChar, BOOL* lpUsedDefaultChar) {
    if (!lpWideCharStr || cchWideChar == 0 || cbMultiByte < 0 || (!lpMultiByteStr && cbMultiByte > 0) ||
        static_cast<const void*>(lpWideCharStr) == static_cast<const void*>(lpMultiByteStr))
        return Fail(ERROR_INVALID_PARAMETER);
    const UINT page = ResolveCodePage(CodePage);
    const bool utf8 = page == CP_UTF8;
    // The default character is a single-byte page's business; UTF-8 has no use for it.
    if (utf8 && (lpDefaultChar || lpUsedDefaultChar))
        return Fail(ERROR_INVALID_PARAMETER);
    const DWORD allowed = utf8 ? WC_ERR_INVALID_CHARS : WC_NO_BEST_FIT_CHARS;
    if ((dwFlags & ~allowed) != 0)
        return Fail(ERROR_INVALID_FLAGS);
    if (cchWideChar < 0) {
        const std::size_t length = std::wcslen(lpWideCharStr);
        if (length >= static_cast<std::size_t>(INT_MAX))
            return Fail(ERROR_INVALID_PARAMETER);
        cchWideChar = static_cast<int>(length) + 1;
    }
    if (page == kAnsiCodePage)
        return WideTo1252(lpWideCharStr, cchWideChar, lpMultiByteStr, cbMultiByte,
                          lpDefaultChar ? *lpDefaultChar : '?', lpUsedDefaultChar);
    UConverter* cnv = CachedConverter(page);
    if (!cnv)
        return Fail(ERROR_INVALID_PARAMETER);
    const bool strict = (dwFlags & WC_ERR_INVALID_CHARS) != 0;
    return WideToIcu(cnv, lpWideCharStr, cchWideChar, strict, lpMultiByteStr, cbMultiByte, lpDefaultChar,
                     lpUsedDefaultChar);
}

int MultiByteToWideChar(UINT CodePage, DWORD dwFlags, LPCSTR lpMultiByteStr, int cbMultiByte, LPWSTR lpWideCharStr,
                        int cchWideChar) {
    if (!lpMultiByteStr || cbMultiByte == 0 || cchWideChar < 0 || (!lpWideCharStr && cchWideChar > 0) ||
        static_cast<const void*>(lpMultiByteStr) == static_cast<const void*>(lpWideCharStr))
        return Fail(ERROR_INVALID_PARAMETER);
    const UINT page = ResolveCodePage(CodePage);
    const DWORD allowed = page == CP_UTF8 ? MB_ERR_INVALID_CHARS : (MB_PRECOMPOSED | MB_ERR_INVALID_CHARS);
    if ((dwFlags & ~allowed) != 0)
        return Fail(ERROR_INVALID_FLAGS);
    if (cbMultiByte < 0) {
        const std::size_t length = std::strlen(lpMultiByteStr);
        if (length >= static_cast<std::size_t>(INT_MAX))
            return Fail(ERROR_INVALID_PARAMETER);
        cbMultiByte = static_cast<int>(length) + 1;
    }
    // Every byte of 1252 is defined, so MB_ERR_INVALID_CHARS never fails there.
    if (page == kAnsiCodePage)
        return NarrowFrom1252(lpMultiByteStr, cbMultiByte, lpWideCharStr, cchWideChar);
    UConverter* cnv = CachedConverter(page);
    if (!cnv)
        return Fail(ERROR_INVALID_PARAMETER);
    return NarrowFromIcu(cnv, lpMultiByteStr, cbMultiByte, (dwFlags & MB_ERR_INVALID_CHARS) != 0, lpWideCharStr,
                         cchWideChar);
}
