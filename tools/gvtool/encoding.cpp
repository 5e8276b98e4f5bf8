// Windows-1252 <-> UTF-8 for the tool's input and output.
#include "gvtool/encoding.h"

#include <cctype>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <iostream>

#include "gvtool/commands.h"

namespace gvtool {
namespace {

// Code points of 0x80..0x9F; 0 marks the bytes the code page leaves undefined.
// The other bytes are their own code points (ASCII and Latin-1).
constexpr char16_t kHigh[32] = {
    0x20AC, 0,      0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0,      0x017D, 0,      0,      0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0,      0x017E, 0x0178};
constexpr uint32_t kReplacement = 0xFFFD;

struct Undefined {
    size_t count = 0;
    unsigned char first = 0;
};
Undefined& Seen() {
    static Undefined seen;
    return seen;
}

// The code point of a byte; 0 for an undefined byte (which is then counted).
uint32_t CodePoint(unsigned char c) {
    if (c < 0x80 || c >= 0xA0)
        return c;
    if (kHigh[c - 0x80] == 0) {
        if (Seen().count++ == 0)
            Seen().first = c;
        return 0;
    }
    return kHigh[c - 0x80];
}

int ByteOf(uint32_t cp) {
    if (cp < 0x80 || (cp >= 0xA0 && cp <= 0xFF))
        return static_cast<int>(cp);
    for (int i = 0; i < 32; ++i)
        if (kHigh[i] != 0 && kHigh[i] == cp)
            return 0x80 + i;
    return -1;
}

void AppendUtf8(std::string& out, uint32_t cp) {
    if (cp < 0x80) {
        out += static_cast<char>(cp);
    } else if (cp < 0x800) {
        out += static_cast<char>(0xC0 | (cp >> 6));
        out += static_cast<char>(0x80 | (cp & 0x3F));
    } else {
        out += static_cast<char>(0xE0 | (cp >> 12));
        out += static_cast<char>(0x80 | ((cp >> 6) & 0x3F));
        out += static_cast<char>(0x80 | (cp & 0x3F));
    }
}

// Decodes one UTF-8 sequence at text[i], advancing i; false when the bytes
// there are not well-formed (overlong forms and surrogates included).
bool NextUtf8(std::string_view text, size_t& i, uint32_t& cp) {
    auto c = static_cast<unsigned char>(text[i]);
    int more = c < 0x80 ? 0 : (c >> 5) == 6 ? 1 : (c >> 4) == 14 ? 2 : (c >> 3) == 30 ? 3 : -1;
    if (more < 0 || text.size() - i <= static_cast<size_t>(more))
        return false;
    cp = more == 0 ? c : c & (0x3F >> more);
    for (int k = 1; k <= more; ++k) {
        auto t = static_cast<unsigned char>(text[i + static_cast<size_t>(k)]);
        if ((t & 0xC0) != 0x80)
            return false;
        cp = (cp << 6) | (t & 0x3F);
    }
    static constexpr uint32_t kLeast[4] = {0, 0x80, 0x800, 0x10000};
    if (cp < kLeast[more] || cp > 0x10FFFF || (cp >= 0xD800 && cp <= 0xDFFF))
        return false;
    i += static_cast<size_t>(more) + 1;
    return true;
}

std::string Hex2(unsigned char c) {
    char buf[8];
    std::snprintf(buf, sizeof buf, "%02x", c);
    return buf;
}

const char* ShortEscape(unsigned char c) {
    switch (c) {
    case '"': return "\\\"";
    case '\\': return "\\\\";
    case '\n': return "\\n";
    case '\r': return "\\r";
    case '\t': return "\\t";
    default: return nullptr;
    }
}

}  // namespace

Encoding& UserEncoding() {
    static Encoding encoding = LocaleEncoding();
    return encoding;
}

Encoding LocaleEncoding() {
    for (const char* name : {"LC_ALL", "LC_CTYPE", "LANG"}) {
        const char* value = std::getenv(name);
        if (value == nullptr || *value == '\0')
            continue;
        std::string locale(value);
        for (char& ch : locale)
            ch = static_cast<char>(std::tolower(static_cast<unsigned char>(ch)));
        bool cp1252 = locale.find("1252") != std::string::npos;
        return cp1252 ? Encoding::kCp1252 : Encoding::kUtf8;
    }
    return Encoding::kUtf8;
}

std::string ToUser(std::string_view cp1252) {
    if (UserEncoding() == Encoding::kCp1252)
        return std::string(cp1252);
    std::string out;
    out.reserve(cp1252.size());
    for (char ch : cp1252) {
        uint32_t cp = CodePoint(static_cast<unsigned char>(ch));
        AppendUtf8(out, cp == 0 && ch != '\0' ? kReplacement : cp);
    }
    return out;
}

std::string FromUser(std::string_view text, std::string const& what) {
    if (UserEncoding() == Encoding::kCp1252)
        return std::string(text);
    std::string out;
    out.reserve(text.size());
    for (size_t i = 0; i < text.size();) {
        size_t at = i;
        uint32_t cp = 0;
        if (!NextUtf8(text, i, cp))
            throw Failure{what + ": byte offset " + std::to_string(at) + ": not UTF-8 (byte 0x" +
                          Hex2(static_cast<unsigned char>(text[at])) + "); give --encoding cp1252 for Windows-1252 text"};
        int byte = ByteOf(cp);
        if (byte < 0)
            throw Failure{what + ": byte offset " + std::to_string(at) + ": '" + std::string(text.substr(at, i - at)) +
                          "' has no Windows-1252 form"};
        out += static_cast<char>(byte);
    }
    return out;
}

std::string JsonQuoted(std::string_view cp1252) {
    std::string out = "\"";
    for (char ch : cp1252) {
        auto c = static_cast<unsigned char>(ch);
        if (const char* esc = ShortEscape(c)) {
            out += esc;
        } else if (c >= 0x20 && c < 0x7F) {
            out += ch;
        } else {
            uint32_t cp = CodePoint(c);
            char buf[8];
            std::snprintf(buf, sizeof buf, "\\u%04x", static_cast<unsigned>(cp == 0 && c != 0 ? kReplacement : cp));
            out += buf;
        }
    }
    return out + "\"";
}

std::string TextQuoted(std::string_view cp1252) {
    std::string out = "\"";
    for (char ch : cp1252) {
        auto c = static_cast<unsigned char>(ch);
        if (const char* esc = ShortEscape(c))
            out += esc;
        else if (c < 0x20 || c == 0x7F || (c >= 0x80 && c < 0xA0 && kHigh[c - 0x80] == 0))
            out += "\\x" + Hex2(c);
        else
            out += ToUser(std::string_view(&ch, 1));
    }
    return out + "\"";
}

void WarnUndefinedBytes() {
    if (Seen().count == 0)
        return;
    std::cerr << "gvtool: warning: " << Seen().count << " byte(s) with no character in Windows-1252 (the first 0x"
              << Hex2(Seen().first) << ") shown as U+FFFD\n";
}

}  // namespace gvtool
