// Helpers for the text stream bodies.
#include "core/stream_io.h"

#include <istream>

namespace gvlib::detail {

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

}  // namespace gvlib::detail
