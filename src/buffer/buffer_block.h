// Raw block helpers shared by the buffer's source files.
#pragma once

#include <cstddef>
#include <cstdint>

namespace gvlib::detail {

/// realloc that raises the platform's memory exception instead of answering null;
/// the old block is then untouched.
char* ReallocBlock(char* block, size_t size);
/// Grows `block` (of which `used` bytes count) to `size` bytes with the added
/// bytes zero; raises CMemoryException and keeps `block` when it cannot.
char* GrowZeroed(char* block, size_t used, size_t size);

/// Index of the leftmost occurrence of the f bytes of find standing whole in
/// [from, length), or -1.
int64_t FindBytes(char const* data, int64_t length, int64_t from, char const* find, int64_t f);

}  // namespace gvlib::detail
