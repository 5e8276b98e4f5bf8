// Reading an array's archive header and raw element block.
#pragma once

#include <cstdint>

class CArchive;

namespace gvlib::detail {

/// What one loaded string costs the memory budget: its slot, its object and
/// the object's heap block, before any text.
constexpr uint64_t kStringItemCost = 40;

/// The four header fields every array archive starts with.
struct ArrayHeader {
    int32_t elementSize = 0;
    int16_t growStep = 0;
    int32_t slots = 0;
    int32_t count = 0;
};

/// Reads the header; a cut header raises CArchiveException endOfFile.
ArrayHeader ReadArrayHeader(CArchive& ar);

/// Reads `bytes` raw bytes into a new zero-filled malloc'ed block (null for 0
/// bytes), charged against the memory budget first. A short read is not detected
/// by default: the block keeps what arrived and zeros behind it. Strict loading
/// raises endOfFile instead and frees the block.
char* ReadArchiveBlock(CArchive& ar, int64_t bytes);

}  // namespace gvlib::detail
