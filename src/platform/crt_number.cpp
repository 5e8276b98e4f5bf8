// strtod and atol reading only what the original runtime read.
#include "platform/crt_number.h"

#include <clocale>
#include <cstdlib>
#include <locale.h>
#include <string>

namespace gvplatform::detail {

namespace {

bool IsSpace(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }
bool IsDigit(char c) { return c >= '0' && c <= '9'; }

// The decimal point is '.' whatever the host's LC_NUMERIC says.
locale_t CLocale() {
    static const locale_t c = newlocale(LC_ALL_MASK, "C", static_cast<locale_t>(nullptr));
    return c;
}

}  // namespace

double CrtStrtod(const char* text, char** end) {
    if (text == nullptr) {
        if (end != nullptr)
            *end = nullptr;
        return 0.0;
    }
    const char* p = text;
    while (IsSpace(*p))
        ++p;
    std::string number;  // the accepted part, spelled so that the host reads it the same
    if (*p == '+' || *p == '-')
        number += *p++;
    bool digits = false;
    while (IsDigit(*p)) {
        number += *p++;
        digits = true;
    }
    if (*p == '.') {
        number += *p++;
        while (IsDigit(*p)) {
            number += *p++;
            digits = true;
        }
    }
    if (!digits) {
        if (end != nullptr)
            *end = const_cast<char*>(text);
        return 0.0;
    }
    // An exponent counts only when digits follow its optional sign.
    if (*p == 'e' || *p == 'E' || *p == 'd' || *p == 'D') {
        const char* q = p + 1;
        std::string exponent = "e";
        if (*q == '+' || *q == '-')
            exponent += *q++;
        if (IsDigit(*q)) {
            while (IsDigit(*q))
                exponent += *q++;
            number += exponent;
            p = q;
        }
    }
    if (end != nullptr)
        *end = const_cast<char*>(p);
    return strtod_l(number.c_str(), nullptr, CLocale());
}

int32_t CrtAtol(const char* text) {
    if (text == nullptr)
        return 0;
    const char* p = text;
    while (IsSpace(*p))
        ++p;
    const bool negative = *p == '-';
    if (*p == '+' || *p == '-')
        ++p;
    int64_t value = 0;
    const int64_t limit = negative ? int64_t{2147483648} : int64_t{2147483647};
    for (; IsDigit(*p); ++p) {
        value = value * 10 + (*p - '0');
        if (value > limit)
            value = limit;  // keeps the accumulator bounded on endless digits
    }
    return static_cast<int32_t>(negative ? -value : value);
}

}  // namespace gvplatform::detail
