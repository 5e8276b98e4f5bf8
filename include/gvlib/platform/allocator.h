// The one allocator behind every block the platform layer and the value classes
// own: the C library's malloc family, with a fault-injection point in test builds.
#pragma once

#include <cstddef>

#include "gvlib/platform/export.h"

namespace gvplatform::detail {

/// malloc's contract: a block of at least `bytes` bytes, or null when out of memory.
GVLIB_API void* MemAlloc(std::size_t bytes) noexcept;
/// calloc's contract: `count` zeroed elements of `size` bytes, or null.
GVLIB_API void* MemCalloc(std::size_t count, std::size_t size) noexcept;
/// realloc's contract: on null the old block is untouched and still owned by the caller.
GVLIB_API void* MemRealloc(void* block, std::size_t bytes) noexcept;
/// free's contract: null is allowed.
GVLIB_API void MemFree(void* block) noexcept;
/// free's contract for a block last sized to `bytes` by MemAlloc or MemRealloc
/// (`bytes` exactly as asked for then): the size lets the allocator keep blocks
/// of the sizes it caches for the thread's next request.
GVLIB_API void MemFreeSized(void* block, std::size_t bytes) noexcept;
/// A block for a value object of `bytes` bytes, or null when out of memory.
/// Objects of up to 16 bytes share slabs and carry no header of their own.
GVLIB_API void* ObjectAlloc(std::size_t bytes) noexcept;
/// Gives back a block from ObjectAlloc(`bytes`), with the same `bytes`; null is allowed.
GVLIB_API void ObjectFree(void* block, std::size_t bytes) noexcept;
/// Bytes the value-object slabs hold from the system now (they are mapped
/// apart from the C library's heap, so its statistics leave them out).
GVLIB_API std::size_t ObjectPoolBytes() noexcept;

}  // namespace gvplatform::detail
