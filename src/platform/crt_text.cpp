// Character classification and comparison of the original C runtime.
#include "platform/crt_text.h"

#include <clocale>
#include <cstring>
#include <string>

namespace gvplatform::detail {

bool IsSpace(char c) noexcept { return c == ' ' || (c >= '\t' && c <= '\r'); }

char ToLower(char c) noexcept { return (c >= 'A' && c <= 'Z') ? static_cast<char>(c + ('a' - 'A')) : c; }

char ToUpper(char c) noexcept { return (c >= 'a' && c <= 'z') ? static_cast<char>(c - ('a' - 'A')) : c; }

namespace {
int Sign(int v) noexcept { return (v > 0) - (v < 0); }
}  // namespace

int ByteCompare(const char* a, const char* b) noexcept {
    if (a == nullptr)
        a = "";
    if (b == nullptr)
        b = "";
    return Sign(std::strcmp(a, b));
}

int ByteCompareNoCase(const char* a, const char* b) noexcept {
    if (a == nullptr)
        a = "";
    if (b == nullptr)
        b = "";
    const unsigned char* p = reinterpret_cast<const unsigned char*>(a);
    const unsigned char* q = reinterpret_cast<const unsigned char*>(b);
    for (;; ++p, ++q) {
        int c1 = static_cast<unsigned char>(ToLower(static_cast<char>(*p)));
        int c2 = static_cast<unsigned char>(ToLower(static_cast<char>(*q)));
        if (c1 != c2 || c1 == 0)
            return Sign(c1 - c2);
    }
}

int LocaleCollate(const char* a, const char* b, bool ignoreCase) {
    if (a == nullptr)
        a = "";
    if (b == nullptr)
        b = "";
    const char* collate = std::setlocale(LC_COLLATE, nullptr);
    bool cLocale = collate == nullptr || std::strcmp(collate, "C") == 0 || std::strcmp(collate, "POSIX") == 0;
    if (cLocale)
        return ignoreCase ? ByteCompareNoCase(a, b) : ByteCompare(a, b);
    if (!ignoreCase)
        return Sign(std::strcoll(a, b));
    std::string la(a), lb(b);
    for (char& c : la)
        c = ToLower(c);
    for (char& c : lb)
        c = ToLower(c);
    return Sign(std::strcoll(la.c_str(), lb.c_str()));
}

}  // namespace gvplatform::detail
