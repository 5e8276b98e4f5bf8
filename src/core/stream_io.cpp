// Helpers for the text stream bodies.
#include "core/stream_io.h"

#include <istream>
#include <locale>
#include <streambuf>

#include "gvlib/platform/afxexcept.h"
#include "gvlib/platform/gvplatform.h"
#include "platform/loading_policy.h"

namespace gvlib::detail {

namespace {

// The buffered input of any stream buffer, reached through its protected members.
struct GetArea : std::streambuf {
    static char* Next(std::streambuf* b) { return (b->*&GetArea::gptr)(); }
    static char* End(std::streambuf* b) { return (b->*&GetArea::egptr)(); }
    static void Skip(std::streambuf* b, int n) { (b->*&GetArea::gbump)(n); }
};

bool IsSpace(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }

}  // namespace

std::string ReadRaw(std::istream& is, int64_t count) {
    constexpr int64_t kChunk = 64 * 1024;
    std::string out;
    while (count > 0 && is) {
        int64_t want = count < kChunk ? count : kChunk;
        size_t old = out.size();
        out.resize(old + static_cast<size_t>(want));
        is.read(&out[old], static_cast<std::streamsize>(want));
        out.resize(old + static_cast<size_t>(is.gcount()));
        count -= is.gcount();
        if (is.gcount() < want)
            break;
    }
    return out;
}

void CheckBody(std::istream& is, bool whole) {
    if ((is.fail() || !whole) && gvplatform::StrictLoading())
        gvplatform::detail::ThrowDamage(CArchiveException::endOfFile, gvplatform::detail::LoadOffset(is));
}

bool PlainStream(std::ios const& s) {
    constexpr auto kFlags = std::ios_base::basefield | std::ios_base::showpos | std::ios_base::skipws;
    return s.good() && s.tie() == nullptr && s.width() == 0 && s.rdbuf() != nullptr &&
           (s.flags() & kFlags) == (std::ios_base::dec | std::ios_base::skipws) && s.getloc() == std::locale::classic();
}

void AppendCounted(std::string& out, char const* text, int32_t length) {
    char digits[12];
    char* d = digits + sizeof digits;
    uint32_t n = static_cast<uint32_t>(length);
    do {
        *--d = static_cast<char>('0' + n % 10);
        n /= 10;
    } while (n != 0);
    out += 'T';
    out.append(d, static_cast<size_t>(digits + sizeof digits - d));
    out += ' ';
    out.append(text, static_cast<size_t>(length));
    out += ' ';
}

bool PeekCounted(std::istream& is, CountedText& out) {
    std::streambuf* buf = is.rdbuf();
    char const* p = GetArea::Next(buf);
    char const* end = GetArea::End(buf);
    if (p == nullptr || end - p < 4 || IsSpace(*p))
        return false;
    char const* start = p++;  // the tag, taken as it is
    int64_t value = 0;
    char const* digits = p;
    while (p < end && *p >= '0' && *p <= '9' && p - digits < 10)
        value = value * 10 + (*p++ - '0');
    if (p == digits || p == end || (*p >= '0' && *p <= '9') || value > INT32_MAX)
        return false;
    int64_t consumed = (p - start) + 1 + value + 1;
    if (consumed > end - start || consumed > INT32_MAX)
        return false;
    out = {p + 1, static_cast<int32_t>(value), static_cast<int32_t>(consumed)};
    return true;
}

void SkipCounted(std::istream& is, CountedText const& found) { GetArea::Skip(is.rdbuf(), found.consumed); }

}  // namespace gvlib::detail
