// Internal: per-collator weight tables for Windows-1252 bytes, so that most
// comparisons of real text need no decoding and no pass through the collator.
#pragma once

#include <unicode/ucol.h>

#include <array>
#include <cstdint>
#include <memory>

namespace gvplatform::detail {

/// The collation weights of every "simple" byte of Windows-1252 under one
/// configured collator: a byte that collates as itself wherever it stands
/// (no contraction or context involves it, its weights do not depend on its
/// neighbours) and gives one collation element with a primary weight. Bytes
/// that give one primary weight and more elements (accented letters) are in
/// the primary table only. Hyphen and apostrophe never count, as the word
/// sort sets them apart.
class CollationWeights {
public:
    /// The tables of `collator` as configured; checked against the collator
    /// itself before use, so that a collator whose keys the tables cannot
    /// reproduce only loses the fast path.
    static std::unique_ptr<CollationWeights> Build(const UCollator* collator);

    /// Whether text may be cut just after this byte without changing how
    /// either side collates.
    bool IsSafeEnd(unsigned char byte) const { return safe_[byte]; }
    /// Whether a common prefix may be skipped at all (not with the French
    /// backwards secondary level, where the prefix can still decide).
    bool CanSkipPrefix() const { return canSkipPrefix_; }

    /// CSTR_LESS_THAN, CSTR_EQUAL or CSTR_GREATER_THAN as the collator would
    /// answer, or 0 when a byte that is not simple must be looked at.
    /// `wordSort`: hyphen and apostrophe stand outside the main comparison.
    int Compare(const unsigned char* a, int32_t na, const unsigned char* b, int32_t nb, bool wordSort) const;

    struct Weight {
        uint32_t bytes = 0;  // left-aligned, most significant byte first
        uint8_t length = 0;
    };

private:
    static constexpr int kMaxLevels = 3;

    // Whether the byte at `i` begins a contraction with the byte after it.
    bool StartsContraction(const unsigned char* text, int32_t i, int32_t length) const {
        return starts_[text[i]] && i + 1 < length && continues_[text[i + 1]];
    }
    struct Cursor;
    int NextByte(Cursor& cursor, int level) const;

    bool Fill(const UCollator* collator, const std::array<bool, 256>& candidates);
    bool AgreesWith(const UCollator* collator) const;
    int CompareTables(const unsigned char* a, int32_t na, const unsigned char* b, int32_t nb, bool wordSort) const;
    int CompareLevel(int level, const unsigned char* a, int32_t na, const unsigned char* b, int32_t nb,
                     bool skipMarks) const;

    std::array<bool, 256> safe_{};
    std::array<bool, 256> starts_{};     // first of a contraction or context
    std::array<bool, 256> continues_{};  // later in one
    std::array<bool, 256> simple_{};   // every level in the tables
    std::array<bool, 256> primary_{};  // the primary level in the tables
    std::array<std::array<Weight, 256>, kMaxLevels> weights_{};
    int levels_ = 0;
    bool fast_ = false;
    bool canSkipPrefix_ = false;
};

}  // namespace gvplatform::detail
