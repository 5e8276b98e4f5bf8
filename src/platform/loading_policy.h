// What loaders ask of the loading policy: a budget check before any allocation
// sized by input, zero-filled blocks, and the strict mode's damage report.
#pragma once

#include <cstddef>
#include <cstdint>
#include <iosfwd>

class CArchive;

namespace gvplatform::detail {

/// What one heap block costs beyond its bytes (the allocator's header), so that a
/// block of exactly the budget is over it, as in a full 32-bit address space.
constexpr uint64_t kBlockOverhead = 16;

/// Raises CMemoryException when `count` items of `each` bytes, plus one block
/// header, exceed the memory budget. Overflow counts as exceeding.
void ChargeInput(uint64_t count, uint64_t each = 1);

/// A zero-filled block of `bytes` after ChargeInput(bytes): untouched pages of a
/// block announced by a short input cost no memory. Null for 0 bytes.
char* ZeroedBlock(uint64_t bytes);

/// Raises CArchiveException with `cause` and the offset; strict loading only.
[[noreturn]] void ThrowDamage(int cause, int64_t offset);

/// Offset of the next byte an archive or stream would deliver, -1 when unknown.
int64_t LoadOffset(CArchive const& ar);
int64_t LoadOffset(std::istream& is);

}  // namespace gvplatform::detail
