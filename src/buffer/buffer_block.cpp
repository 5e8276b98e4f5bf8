// Raw block helpers shared by the buffer's source files.
#include "buffer/buffer_block.h"

#include <cstdlib>
#include <cstring>

#include "gvlib/platform/afxstr.h"
#include "gvlib/platform/allocator.h"

namespace gvlib::detail {

char* ReallocBlock(char* block, size_t size) {
    auto* grown = static_cast<char*>(gvplatform::detail::MemRealloc(block, size));
    if (grown == nullptr)
        AfxThrowMemoryException();
    return grown;
}

char* GrowZeroed(char* block, size_t used, size_t size) {
    // A large step takes a fresh zero-filled block, whose untouched pages cost
    // nothing, instead of writing zeros over the whole new part.
    constexpr size_t kZeroInPlace = 64 * 1024;
    if (size - used > kZeroInPlace) {
        auto* fresh = static_cast<char*>(gvplatform::detail::MemCalloc(size, 1));
        if (fresh == nullptr)
            AfxThrowMemoryException();
        if (block != nullptr)
            std::memcpy(fresh, block, used);
        gvplatform::detail::MemFree(block);
        return fresh;
    }
    char* grown = ReallocBlock(block, size);
    std::memset(grown + used, 0, size - used);
    return grown;
}

int64_t FindBytes(char const* data, int64_t length, int64_t from, char const* find, int64_t f) {
    // memchr for the first byte, then a compare of the rest: linear on the inputs
    // this library sees, and as fast as the C library's scan.
    int64_t last = length - f;  // the last place that still holds f bytes
    while (from <= last) {
        auto const* hit = static_cast<char const*>(
            std::memchr(data + from, find[0], static_cast<size_t>(last - from + 1)));
        if (hit == nullptr)
            return -1;
        int64_t at = hit - data;
        if (std::memcmp(hit + 1, find + 1, static_cast<size_t>(f - 1)) == 0)
            return at;
        from = at + 1;
    }
    return -1;
}

}  // namespace gvlib::detail
