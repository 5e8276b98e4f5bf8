// Reading and filling a buffer's content as a std::string, for the buffer tests.
#pragma once

#include <string>

#include "gvlib/buffer/GVBuffer.h"

namespace gvtest {

inline std::string Content(CGVBuffer const& b) {
    return b.mGetLength() > 0 ? std::string(b.mGetBuffer(), static_cast<size_t>(b.mGetLength())) : std::string();
}

// mInit with a count of 0 would read the bytes as text, so empty content is cleared.
inline void Fill(CGVBuffer& b, std::string const& bytes) {
    if (bytes.empty())
        b.mClearBuffer();
    else
        b.mInit(bytes.data(), static_cast<int32_t>(bytes.size()));
}

}  // namespace gvtest
