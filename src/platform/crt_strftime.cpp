// strftime with the original runtime's "C"-locale date-and-time form.
#include <clocale>
#include <cstring>
#include <string>

#include "platform/crt_time.h"

namespace gvplatform::detail {

namespace {

// "C.UTF-8" (what setlocale(LC_ALL, "") gives under many containers' LANG)
// formats times exactly as "C" does, so it takes the same rewrite.
bool TimeLocaleIsC() {
    const char* name = std::setlocale(LC_TIME, nullptr);
    return name == nullptr || std::strcmp(name, "C") == 0 || std::strcmp(name, "POSIX") == 0 ||
           std::strncmp(name, "C.", 2) == 0;
}

// Rewrites every %c into the original's "C" form; every other conversion is
// one the host formats the same way in the "C" locale.
std::string RewriteForC(const char* format) {
    std::string out;
    for (const char* p = format; *p != '\0'; ++p) {
        if (*p != '%') {
            out += *p;
            continue;
        }
        if (p[1] == 'c') {
            out += "%m/%d/%y %H:%M:%S";
            ++p;
        } else if (p[1] != '\0') {
            out += p[0];
            out += p[1];
            ++p;
        }
        // a lone '%' at the end is dropped: it converts nothing
    }
    return out;
}

}  // namespace

std::size_t CrtStrftime(char* buffer, std::size_t size, const char* format, const std::tm* time) {
    if (buffer == nullptr || size == 0 || format == nullptr || time == nullptr)
        return 0;
    const std::string rewritten = TimeLocaleIsC() ? RewriteForC(format) : std::string(format);
    if (rewritten.empty()) {
        buffer[0] = '\0';
        return 0;
    }
    const std::size_t n = std::strftime(buffer, size, rewritten.c_str(), time);
    if (n == 0)
        buffer[0] = '\0';  // the original left an empty text when the result did not fit
    return n;
}

}  // namespace gvplatform::detail
