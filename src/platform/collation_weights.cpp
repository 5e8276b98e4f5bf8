// Weight tables of Windows-1252 bytes drawn once from a configured collator.
// A level of a collation key is the concatenation of the level weights of the
// text's collation elements; for bytes that give exactly one element and take
// part in no contraction, comparing those concatenations level by level is
// what the collator does, without decoding and without the collator's setup.
#include "platform/collation_weights.h"

#include <unicode/ucoleitr.h>
#include <unicode/uset.h>

#include <cctype>
#include <cstring>
#include <vector>

#include "gvlib/platform/winnls.h"
#include "platform/codepage.h"

namespace gvplatform::detail {
namespace {

constexpr int kEnd = -1;        // the text's level ran out
constexpr int kNotSimple = -2;  // a byte the tables do not cover

const std::array<char16_t, 256>& Units() { return Cp1252ToUtf16Table(); }

// The bytes that take part in contractions and contexts the text can hold
// (every character of the sequence in the code page): the first of such a
// sequence, and the later ones. A starter collates as itself unless a later
// one follows it.
struct Contractions {
    std::array<bool, 256> starts{};
    std::array<bool, 256> continues{};
};

Contractions ContractionBytes(const UCollator* collator) {
    Contractions found;
    std::vector<int16_t> byteOf(0x10000, -1);
    for (int byte = 0; byte < 256; ++byte)
        byteOf[Units()[byte]] = static_cast<int16_t>(byte);
    UErrorCode err = U_ZERO_ERROR;
    USet* set = uset_openEmpty();
    ucol_getContractionsAndExpansions(collator, set, nullptr, true, &err);
    const int32_t items = U_SUCCESS(err) ? uset_getItemCount(set) : 0;
    bool complete = U_SUCCESS(err);
    for (int32_t item = 0; item < items && complete; ++item) {
        UChar32 start = 0, end = 0;
        UChar text[64];
        const int32_t length = uset_getItem(set, item, &start, &end, text, 64, &err);
        complete = U_SUCCESS(err) && length >= 2;  // a range or a lone character: not understood
        bool inPage = complete;
        for (int32_t i = 0; i < length && inPage; ++i)
            inPage = byteOf[text[i]] >= 0;
        for (int32_t i = 0; i < length && inPage; ++i)
            (i == 0 ? found.starts : found.continues)[static_cast<std::size_t>(byteOf[text[i]])] = true;
    }
    uset_close(set);
    if (!complete)
        found.continues.fill(true);
    return found;
}

// How many collation elements a character gives, and how many of them carry a
// primary weight (an element split in two for a long weight counts twice).
struct ElementCount {
    int32_t all = -1;
    int32_t primary = 0;
};

ElementCount CountElements(const UCollator* collator, UChar unit) {
    UErrorCode err = U_ZERO_ERROR;
    UCollationElements* elements = ucol_openElements(collator, &unit, 1, &err);
    ElementCount count{0, 0};
    for (int32_t order; U_SUCCESS(err) && count.all < 4 && (order = ucol_next(elements, &err)) != UCOL_NULLORDER;) {
        ++count.all;
        const bool continuation = (order & 0xC0) == 0xC0;
        if (ucol_primaryOrder(order) != 0 || continuation)
            ++count.primary;
    }
    ucol_closeElements(elements);
    return U_SUCCESS(err) ? count : ElementCount{};
}

// Splits a one-character key into its level weights. Answers how many levels
// from the first were read whole: a level longer than a table entry holds
// ends the reading.
int SplitKey(const uint8_t* key, int32_t length, int levels, CollationWeights::Weight* out) {
    int level = 0;
    for (int32_t i = 0; i < length && key[i] != 0; ++i) {
        if (key[i] == 1) {
            if (++level >= levels)
                return 0;
            continue;
        }
        CollationWeights::Weight& w = out[level];
        if (w.length == 4)
            return level;
        w.bytes |= static_cast<uint32_t>(key[i]) << (24 - 8 * w.length);
        ++w.length;
    }
    return level == levels - 1 && out[0].length > 0 ? levels : 0;
}

bool IsMark(unsigned char byte) { return byte == '-' || byte == '\''; }

}  // namespace

struct CollationWeights::Cursor {
    const unsigned char* text;
    int32_t length;
    bool skipMarks;
    int32_t index = 0;
    int offset = 0;
};

int CollationWeights::NextByte(Cursor& c, int level) const {
    const std::array<bool, 256>& covered = level == 0 ? primary_ : simple_;
    while (c.index < c.length) {
        const unsigned char byte = c.text[c.index];
        if (c.skipMarks && IsMark(byte)) {
            ++c.index;
            continue;
        }
        if (!covered[byte] || StartsContraction(c.text, c.index, c.length))
            return kNotSimple;
        const Weight& w = weights_[level][byte];
        if (c.offset < w.length)
            return static_cast<int>((w.bytes >> (24 - 8 * c.offset++)) & 0xFF);
        ++c.index;
        c.offset = 0;
    }
    return kEnd;
}

namespace {

int ToCstr(int sign) {
    if (sign < 0)
        return CSTR_LESS_THAN;
    return sign == 0 ? CSTR_EQUAL : CSTR_GREATER_THAN;
}

int Collate(const UCollator* collator, const std::vector<unsigned char>& a, const std::vector<unsigned char>& b) {
    std::u16string ua, ub;
    for (unsigned char byte : a)
        ua += Units()[byte];
    for (unsigned char byte : b)
        ub += Units()[byte];
    const UCollationResult r = ucol_strcoll(collator, reinterpret_cast<const UChar*>(ua.data()),
                                            static_cast<int32_t>(ua.size()), reinterpret_cast<const UChar*>(ub.data()),
                                            static_cast<int32_t>(ub.size()));
    return ToCstr(r == UCOL_LESS ? -1 : r == UCOL_EQUAL ? 0 : 1);
}

}  // namespace

std::unique_ptr<CollationWeights> CollationWeights::Build(const UCollator* collator) {
    std::unique_ptr<CollationWeights> table(new CollationWeights);
    UErrorCode err = U_ZERO_ERROR;
    const bool french = ucol_getAttribute(collator, UCOL_FRENCH_COLLATION, &err) == UCOL_ON;
    const bool caseLevel = ucol_getAttribute(collator, UCOL_CASE_LEVEL, &err) == UCOL_ON;
    const UColAttributeValue strength = ucol_getStrength(collator);
    table->canSkipPrefix_ = U_SUCCESS(err) && !french;
    const Contractions contractions = ContractionBytes(collator);
    table->starts_ = contractions.starts;
    table->continues_ = contractions.continues;
    std::array<bool, 256> candidates{};
    for (int byte = 0; byte < 256; ++byte) {
        candidates[byte] = !contractions.continues[byte] && !IsMark(static_cast<unsigned char>(byte));
        table->safe_[byte] = candidates[byte] && !contractions.starts[byte];
    }
    if (!table->canSkipPrefix_ || caseLevel || strength > UCOL_TERTIARY)
        return table;
    table->levels_ = static_cast<int>(strength) + 1;
    // Letters, digits and the space of ASCII are what most text holds; when
    // the collator's keys defeat the tables for other bytes, these still serve.
    std::array<bool, 256> ascii{};
    for (int byte = 0; byte < 128; ++byte)
        ascii[byte] = candidates[byte] && (std::isalnum(byte) != 0 || byte == ' ');
    table->fast_ = (table->Fill(collator, candidates) && table->AgreesWith(collator)) ||
                   (table->Fill(collator, ascii) && table->AgreesWith(collator));
    return table;
}

bool CollationWeights::Fill(const UCollator* collator, const std::array<bool, 256>& candidates) {
    bool any = false;
    for (int byte = 0; byte < 256; ++byte) {
        simple_[byte] = primary_[byte] = false;
        Weight w[kMaxLevels] = {};
        const UChar unit = Units()[byte];
        const ElementCount count = candidates[byte] ? CountElements(collator, unit) : ElementCount{};
        if (count.primary != 1)
            continue;
        uint8_t key[64];
        const int32_t length = ucol_getSortKey(collator, &unit, 1, key, sizeof key);
        const int whole = length > 0 && length <= static_cast<int32_t>(sizeof key) ? SplitKey(key, length, levels_, w) : 0;
        for (int level = 0; level < whole; ++level)
            weights_[level][byte] = w[level];
        // An accented letter (a letter and a mark) has one primary weight: it
        // serves where the primary level decides.
        primary_[byte] = whole >= 1;
        simple_[byte] = whole == levels_ && count.all == 1;
        any = any || simple_[byte];
    }
    return any;
}

// Every pair of simple bytes, and short texts over them, against the collator:
// the tables serve only a collator whose keys they reproduce.
bool CollationWeights::AgreesWith(const UCollator* collator) const {
    std::vector<unsigned char> bytes;
    for (int byte = 0; byte < 256; ++byte)
        if (primary_[byte])
            bytes.push_back(static_cast<unsigned char>(byte));
    auto agree = [&](const std::vector<unsigned char>& a, const std::vector<unsigned char>& b) {
        const int mine = CompareTables(a.data(), static_cast<int32_t>(a.size()), b.data(),
                                       static_cast<int32_t>(b.size()), false);
        return mine == 0 || mine == Collate(collator, a, b);
    };
    for (unsigned char x : bytes)
        for (unsigned char y : bytes)
            if (!agree({x}, {y}))
                return false;
    // Mostly ties at the primary level, so that the later levels are reached.
    uint32_t seed = 12345;
    auto next = [&seed](std::size_t bound) {
        seed = seed * 1103515245u + 12345u;
        return static_cast<std::size_t>((seed >> 8) % bound);
    };
    for (int round = 0; round < 4000; ++round) {
        std::vector<unsigned char> a, b;
        const std::size_t length = 1 + next(5);
        for (std::size_t i = 0; i < length; ++i) {
            a.push_back(bytes[next(bytes.size())]);
            b.push_back(next(3) == 0 ? bytes[next(bytes.size())] : a.back());
        }
        if (next(4) == 0)
            b.push_back(bytes[next(bytes.size())]);
        if (!agree(a, b))
            return false;
    }
    return true;
}

int CollationWeights::CompareLevel(int level, const unsigned char* a, int32_t na, const unsigned char* b,
                                   int32_t nb, bool skipMarks) const {
    Cursor x{a, na, skipMarks}, y{b, nb, skipMarks};
    for (;;) {
        const int p = NextByte(x, level);
        const int q = NextByte(y, level);
        if (p == kNotSimple || q == kNotSimple)
            return 0;
        if (p != q)
            return ToCstr(p - q);  // an ended level sorts first
        if (p == kEnd)
            return CSTR_EQUAL;
    }
}

int CollationWeights::Compare(const unsigned char* a, int32_t na, const unsigned char* b, int32_t nb,
                              bool wordSort) const {
    return fast_ ? CompareTables(a, na, b, nb, wordSort) : 0;
}

// In the word sort hyphen and apostrophe stand outside the main comparison:
// the primary level passes over them, and a tie is left to the full path,
// which orders the marks.
int CollationWeights::CompareTables(const unsigned char* a, int32_t na, const unsigned char* b, int32_t nb,
                                    bool wordSort) const {
    // The primary level a character at a time: most pairs differ there, and
    // bytes past the first difference never need to be simple.
    const std::array<Weight, 256>& primary = weights_[0];
    int32_t i = 0, j = 0;
    for (;; ++i, ++j) {
        while (wordSort && i < na && IsMark(a[i]))
            ++i;
        while (wordSort && j < nb && IsMark(b[j]))
            ++j;
        if (i == na || j == nb)
            break;
        const unsigned char ca = a[i], cb = b[j];
        if (!primary_[ca] || !primary_[cb] || StartsContraction(a, i, na) || StartsContraction(b, j, nb))
            return 0;
        const Weight wa = primary[ca], wb = primary[cb];
        if (wa.bytes == wb.bytes && wa.length == wb.length)
            continue;
        // Weights differ inside both: their left-aligned values decide. One
        // that is a prefix of the other leaves it to the next characters.
        const uint32_t shorter = wa.length < wb.length ? wa.length : wb.length;
        const uint32_t mask = shorter >= 4 ? ~0u : ~(~0u >> (8 * shorter));
        if ((wa.bytes & mask) != (wb.bytes & mask))
            return ToCstr(wa.bytes < wb.bytes ? -1 : 1);
        break;
    }
    int result = CompareLevel(0, a + i, na - i, b + j, nb - j, wordSort);
    if (result != CSTR_EQUAL)
        return result;
    if (wordSort && (std::memchr(a, '-', na) || std::memchr(a, '\'', na) || std::memchr(b, '-', nb) ||
                     std::memchr(b, '\'', nb)))
        return 0;
    for (int level = 1; result == CSTR_EQUAL && level < levels_; ++level)
        result = CompareLevel(level, a, na, b, nb, false);
    return result;
}

}  // namespace gvplatform::detail
