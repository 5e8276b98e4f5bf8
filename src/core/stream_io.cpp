// Helpers for the text stream bodies.
#include "core/stream_io.h"

#include <istream>

#include "gvlib/platform/afxexcept.h"
#include "gvlib/platform/gvplatform.h"
#include "platform/loading_policy.h"

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

void CheckBody(std::istream& is, bool whole) {
    if ((is.fail() || !whole) && gvplatform::StrictLoading())
        gvplatform::detail::ThrowDamage(CArchiveException::endOfFile, gvplatform::detail::LoadOffset(is));
}

}  // namespace gvlib::detail
