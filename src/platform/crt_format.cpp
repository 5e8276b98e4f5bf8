// printf-style formatting with the original runtime's conventions. Integers and
// strings go through the host's snprintf with a rebuilt pattern; floating
// values are rounded by our own digit code, since the host rounds differently.
#include "platform/crt_format.h"

#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <cwchar>
#include <string>

#include "gvlib/platform/afxstr.h"

namespace gvplatform::detail {
namespace {

// Decimal digits of a finite, non-negative value: digits[0] is the first
// significant digit, worth 10^exponent.
struct Decimal {
    std::string digits;
    int exponent = 0;
};

// Rounds a digit string half up to `count` digits (count may be 0 or below: the
// value rounds to a unit at that place or vanishes). Carries may add a digit.
void RoundHalfUp(Decimal& d, int count) {
    if (count >= static_cast<int>(d.digits.size()))
        return;
    if (count < 0) {
        d.digits = "0";
        return;
    }
    bool up = d.digits[static_cast<size_t>(count)] >= '5';
    d.digits.resize(static_cast<size_t>(count));
    if (!up) {
        if (d.digits.empty())
            d.digits = "0";
        return;
    }
    int i = count - 1;
    while (i >= 0 && d.digits[static_cast<size_t>(i)] == '9')
        d.digits[static_cast<size_t>(i--)] = '0';
    if (i >= 0) {
        ++d.digits[static_cast<size_t>(i)];
    } else {
        d.digits.insert(d.digits.begin(), '1');
        ++d.exponent;
        d.digits.pop_back();
        if (d.digits.empty())
            d.digits = "1";
    }
}

// The 17 significant digits the original runtime started from: the exact binary
// value rounded half up to 17 digits.
Decimal SeventeenDigits(double value) {
    Decimal d;
    if (value == 0.0) {
        d.digits = std::string(17, '0');
        return d;
    }
    char buf[80];
    std::snprintf(buf, sizeof buf, "%.40e", value);
    const char* e = std::strchr(buf, 'e');
    d.exponent = std::atoi(e + 1);
    d.digits.push_back(buf[0]);
    d.digits.append(buf + 2, static_cast<size_t>(e - (buf + 2)));
    RoundHalfUp(d, 17);
    if (d.digits.size() > 17)
        d.digits.resize(17);
    return d;
}

char DigitAt(const Decimal& d, int index) {
    return (index >= 0 && index < static_cast<int>(d.digits.size())) ? d.digits[static_cast<size_t>(index)] : '0';
}

std::string FixedDigits(double value, int precision, bool alternate) {
    Decimal d = SeventeenDigits(value);
    bool zero = value == 0.0;
    if (!zero) {
        int keep = d.exponent + 1 + precision;
        if (keep < 0) {
            zero = true;
        } else {
            RoundHalfUp(d, keep);
            zero = d.digits == "0";
        }
    }
    std::string out;
    if (zero || d.exponent < 0) {
        out = "0";
    } else {
        for (int i = 0; i <= d.exponent; ++i)
            out.push_back(DigitAt(d, i));
    }
    if (precision > 0 || alternate)
        out.push_back('.');
    for (int i = 0; i < precision; ++i)
        out.push_back(zero ? '0' : DigitAt(d, d.exponent + 1 + i));
    return out;
}

std::string ExponentText(int exponent, char e) {
    char buf[16];
    std::snprintf(buf, sizeof buf, "%c%c%03d", e, exponent < 0 ? '-' : '+', exponent < 0 ? -exponent : exponent);
    return buf;
}

std::string ScientificDigits(double value, int precision, bool alternate, char e) {
    Decimal d = SeventeenDigits(value);
    if (value != 0.0)
        RoundHalfUp(d, precision + 1);
    else
        d.exponent = 0;
    std::string out(1, DigitAt(d, 0));
    if (precision > 0 || alternate)
        out.push_back('.');
    for (int i = 1; i <= precision; ++i)
        out.push_back(DigitAt(d, i));
    return out + ExponentText(d.exponent, e);
}

void StripTrailingZeros(std::string& s) {
    size_t dot = s.find('.');
    if (dot == std::string::npos)
        return;
    size_t end = s.find_first_of("eE", dot);
    std::string tail = end == std::string::npos ? std::string() : s.substr(end);
    std::string head = s.substr(0, end);
    while (!head.empty() && head.back() == '0')
        head.pop_back();
    if (!head.empty() && head.back() == '.')
        head.pop_back();
    s = head + tail;
}

std::string GeneralDigits(double value, int precision, bool alternate, char e) {
    if (precision == 0)
        precision = 1;
    Decimal d = SeventeenDigits(value);
    int exponent = 0;
    if (value != 0.0) {
        RoundHalfUp(d, precision);
        exponent = d.exponent;
    }
    std::string out;
    if (exponent < -4 || exponent >= precision)
        out = ScientificDigits(value, precision - 1, alternate, e == 'G' ? 'E' : 'e');
    else
        out = FixedDigits(value, precision - 1 - exponent, alternate);
    if (!alternate)
        StripTrailingZeros(out);
    return out;
}

// The original runtime printed infinities and NaNs as "1.#INF", "1.#QNAN",
// "1.#SNAN" and "1.#IND" and then applied the precision to those characters as
// if they were digits, so "%.2f" of an infinity gives "1.#J".
std::string SpecialDigits(double value, int precision) {
    uint64_t bits;
    std::memcpy(&bits, &value, sizeof bits);
    uint64_t mantissa = bits & 0x000FFFFFFFFFFFFFull;
    const char* word = "#INF";
    if (std::isnan(value)) {
        bool quiet = (mantissa & 0x0008000000000000ull) != 0;
        bool negative = (bits >> 63) != 0;
        if (quiet && negative && mantissa == 0x0008000000000000ull)
            word = "#IND";
        else
            word = quiet ? "#QNAN" : "#SNAN";
    }
    std::string frac = word;
    std::string lead = "1";
    if (precision >= static_cast<int>(frac.size())) {
        frac.append(static_cast<size_t>(precision) - frac.size(), '0');
    } else {
        bool up = frac[static_cast<size_t>(precision)] >= '5';
        frac.resize(static_cast<size_t>(precision));
        if (up) {
            if (frac.empty())
                lead = "2";
            else
                ++frac.back();
        }
    }
    return precision > 0 ? lead + "." + frac : lead;
}

struct Field {
    std::string flags;
    int width = -1;
    int precision = -1;
    bool leftAlign = false;
    bool zeroPad = false;
    bool plus = false;
    bool space = false;
    bool alternate = false;
};

std::string Pad(std::string body, const Field& field, bool numeric) {
    if (field.width < 0 || static_cast<int>(body.size()) >= field.width)
        return body;
    size_t fill = static_cast<size_t>(field.width) - body.size();
    if (field.leftAlign)
        return body + std::string(fill, ' ');
    if (field.zeroPad && numeric) {
        size_t at = (!body.empty() && (body[0] == '-' || body[0] == '+' || body[0] == ' ')) ? 1 : 0;
        return body.insert(at, fill, '0');
    }
    return std::string(fill, ' ') + body;
}

std::string FormatFloating(double value, char conversion, const Field& field) {
    int precision = field.precision < 0 ? 6 : field.precision;
    bool negative = std::signbit(value);
    std::string digits;
    if (!std::isfinite(value)) {
        digits = SpecialDigits(value, precision);
    } else {
        double magnitude = std::fabs(value);
        switch (conversion) {
        case 'f':
            digits = FixedDigits(magnitude, precision, field.alternate);
            break;
        case 'e':
        case 'E':
            digits = ScientificDigits(magnitude, precision, field.alternate, conversion);
            break;
        default:
            digits = GeneralDigits(magnitude, precision, field.alternate, conversion);
            break;
        }
    }
    std::string sign = negative ? "-" : field.plus ? "+" : field.space ? " " : "";
    return Pad(sign + digits, field, std::isfinite(value));
}

// One integer through the host's printf with a rebuilt pattern.
template <typename T>
std::string CallHost(const std::string& pattern, T value) {
    int n = std::snprintf(nullptr, 0, pattern.c_str(), value);
    std::string out;
    if (n > 0) {
        out.resize(static_cast<size_t>(n) + 1);
        std::snprintf(&out[0], out.size(), pattern.c_str(), value);
        out.resize(static_cast<size_t>(n));
    }
    return out;
}

std::string WideToNarrow(const wchar_t* text, int count) {
    if (text == nullptr)
        return "(null)";
    int n = count < 0 ? static_cast<int>(std::wcslen(text)) : count;
    CStringT<char> narrow(text, n);
    return std::string(narrow.GetString(), static_cast<size_t>(narrow.GetLength()));
}

std::string HostPattern(const Field& field, const char* lengthModifier, char conversion) {
    std::string s = "%" + field.flags;
    if (field.width >= 0)
        s += std::to_string(field.width);
    if (field.precision >= 0)
        s += "." + std::to_string(field.precision);
    return s + lengthModifier + conversion;
}

enum class Size { Default, Short, Char, Long, LongLong, Wide, SizeT };

// Reads the size prefix at p; answers how many characters it took.
int ParseSize(const char* p, Size& size) {
    if (p[0] == 'I' && p[1] == '6' && p[2] == '4') {
        size = Size::LongLong;
        return 3;
    }
    if (p[0] == 'I' && p[1] == '3' && p[2] == '2') {
        size = Size::Default;
        return 3;
    }
    if (p[0] == 'l' && p[1] == 'l') {
        size = Size::LongLong;
        return 2;
    }
    if (p[0] == 'h' && p[1] == 'h') {
        size = Size::Char;
        return 2;
    }
    switch (p[0]) {
    case 'h':
        size = Size::Short;
        return 1;
    case 'l':
        size = Size::Long;
        return 1;
    case 'w':
        size = Size::Wide;
        return 1;
    case 'L':
    case 'I':  // pointer-sized on the original 32-bit platform
        size = Size::Default;
        return 1;
    case 'z':
    case 'j':
    case 't':
        size = Size::SizeT;
        return 1;
    default:
        size = Size::Default;
        return 0;
    }
}

std::string FormatInteger(char conversion, Size size, const Field& field, va_list& args) {
    bool isSigned = conversion == 'd' || conversion == 'i';
    if (size == Size::LongLong || size == Size::SizeT) {
        int64_t v = va_arg(args, int64_t);
        return isSigned ? CallHost(HostPattern(field, "ll", conversion), static_cast<long long>(v))
                        : CallHost(HostPattern(field, "ll", conversion), static_cast<unsigned long long>(v));
    }
    // 'l' is 32-bit on the original platform, so every other size reads an int.
    int v = va_arg(args, int);
    if (size == Size::Short)
        v = isSigned ? static_cast<int16_t>(v) : static_cast<uint16_t>(v);
    else if (size == Size::Char)
        v = isSigned ? static_cast<int8_t>(v) : static_cast<uint8_t>(v);
    return isSigned ? CallHost(HostPattern(field, "", conversion), v)
                    : CallHost(HostPattern(field, "", conversion), static_cast<unsigned>(v));
}

std::string FormatText(char conversion, Size size, const Field& field, va_list& args) {
    bool wide = conversion == 'S' || conversion == 'C' || size == Size::Long || size == Size::Wide;
    Field plain = field;
    plain.zeroPad = false;
    if (conversion == 'c' || conversion == 'C') {
        std::string body;
        if (wide) {
            wchar_t w = static_cast<wchar_t>(va_arg(args, wint_t));
            body = WideToNarrow(&w, 1);
        } else {
            body.push_back(static_cast<char>(va_arg(args, int)));
        }
        return Pad(body, plain, false);
    }
    std::string body;
    if (wide) {
        const wchar_t* w = va_arg(args, const wchar_t*);
        body = WideToNarrow(w, -1);
    } else {
        const char* s = va_arg(args, const char*);
        body = s ? s : "(null)";
    }
    if (field.precision >= 0 && static_cast<int>(body.size()) > field.precision)
        body.resize(static_cast<size_t>(field.precision));
    return Pad(body, plain, false);
}

// Reads flags, width and precision; answers the position after them.
const char* ParseField(const char* p, Field& field, va_list& args) {
    for (;; ++p) {
        if (*p == '-')
            field.leftAlign = true;
        else if (*p == '0')
            field.zeroPad = true;
        else if (*p == '+')
            field.plus = true;
        else if (*p == ' ')
            field.space = true;
        else if (*p == '#')
            field.alternate = true;
        else
            break;
        field.flags.push_back(*p);
    }
    if (*p == '*') {
        field.width = va_arg(args, int);
        if (field.width < 0) {
            field.leftAlign = true;
            field.flags.push_back('-');
            field.width = -field.width;
        }
        ++p;
    } else {
        while (*p >= '0' && *p <= '9')
            field.width = (field.width < 0 ? 0 : field.width * 10) + (*p++ - '0');
    }
    if (*p == '.') {
        ++p;
        field.precision = 0;
        if (*p == '*') {
            field.precision = va_arg(args, int);
            ++p;
        } else {
            while (*p >= '0' && *p <= '9')
                field.precision = field.precision * 10 + (*p++ - '0');
        }
    }
    if (field.width > 1 << 20)
        field.width = 1 << 20;  // keep a hostile width from asking for gigabytes
    if (field.precision > 1 << 20)
        field.precision = 1 << 20;
    return p;
}

}  // namespace

std::string FormatDouble(double value, char conversion, int precision, bool alternate) {
    Field field;
    field.precision = precision;
    field.alternate = alternate;
    return FormatFloating(value, conversion, field);
}

std::string FormatV(const char* format, va_list argsIn) {
    va_list args;
    va_copy(args, argsIn);
    std::string out;
    for (const char* p = format; *p;) {
        if (*p != '%') {
            const char* next = std::strchr(p, '%');
            size_t run = next ? static_cast<size_t>(next - p) : std::strlen(p);
            out.append(p, run);
            p += run;
            continue;
        }
        ++p;
        if (*p == '%') {
            out.push_back('%');
            ++p;
            continue;
        }
        Field field;
        p = ParseField(p, field, args);
        Size size;
        p += ParseSize(p, size);
        char conversion = *p;
        if (conversion == '\0')
            break;
        ++p;
        switch (conversion) {
        case 'd':
        case 'i':
        case 'u':
        case 'o':
        case 'x':
        case 'X':
            out += FormatInteger(conversion, size, field, args);
            break;
        case 'f':
        case 'e':
        case 'E':
        case 'g':
        case 'G':
            out += FormatFloating(va_arg(args, double), conversion, field);
            break;
        case 'c':
        case 'C':
        case 's':
        case 'S':
            out += FormatText(conversion, size, field, args);
            break;
        case 'p': {
            // Upper-case hex, zero-filled to the pointer's width, no 0x.
            char buf[32];
            std::snprintf(buf, sizeof buf, "%016llX",
                          static_cast<unsigned long long>(reinterpret_cast<uintptr_t>(va_arg(args, void*))));
            Field plain = field;
            plain.zeroPad = false;
            out += Pad(buf, plain, false);
            break;
        }
        case 'n':
            (void)va_arg(args, void*);  // disabled in the original runtime; writes nothing
            break;
        default:
            out.push_back(conversion);
            break;
        }
    }
    va_end(args);
    return out;
}

}  // namespace gvplatform::detail
