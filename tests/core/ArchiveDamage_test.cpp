// Archive loaders over truncated and damaged data, by default and strictly.
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "gvlib/array/GVLongArray.h"
#include "gvlib/array/GVStringArray.h"
#include "gvlib/buffer/GVBuffer.h"
#include "gvlib/platform/afxexcept.h"
#include "gvlib/string/GVString.h"
#include "support/archive_bytes.h"

namespace {

using Bytes = std::vector<BYTE>;
using gvtest::Header;

// Loads `bytes` into obj; answers "ok", "memory" or the archive exception as "cause@offset".
std::string Load(Bytes bytes, CGVObject& obj) {
    try {
        gvtest::Load(std::move(bytes), obj);
    } catch (CArchiveException const& e) {
        return std::to_string(e.m_cause) + "@" + std::to_string(e.m_lOffset);
    } catch (CMemoryException const&) {
        return "memory";
    }
    return "ok";
}

std::string Hex(void const* p, int32_t n) {
    std::string out;
    for (int32_t i = 0; i < n; ++i)
        for (int shift : {4, 0})
            out += "0123456789abcdef"[(static_cast<BYTE const*>(p)[i] >> shift) & 15];
    return out;
}

// What a loader left in an object, as text to compare.
std::string Describe(CGVObject& obj) {
    if (auto* b = dynamic_cast<CGVBuffer*>(&obj))
        return "len " + std::to_string(b->mGetLength()) + ":" + Hex(b->mGetBuffer(), b->ContentLength());
    if (auto* s = dynamic_cast<CGVStringArray*>(&obj)) {
        std::string out = std::to_string(s->mGetNumItems()) + " items:";
        for (int32_t i = 0; i < s->mGetNumItems(); ++i) {
            CGVString text("<none>");
            try {
                s->mGetArrayItem(&text, i);
            } catch (CInvalidArgException const&) {
                text = "<beyond>";
            }
            out += "[" + std::string(text) + "]";
        }
        return out;
    }
    auto& a = dynamic_cast<CGVArray&>(obj);
    std::string out = std::to_string(a.mGetElementSize()) + "x" + std::to_string(a.mGetAllocatedSlots()) + " " +
                      std::to_string(a.mGetNumItems()) + " items:";
    for (int32_t i = 0; i < a.mGetNumItems(); ++i)
        out += Hex(a.mItemPtr(i), a.mGetElementSize()) + ",";
    return out;
}

Bytes Cat(Bytes a, Bytes const& b) {
    a.insert(a.end(), b.begin(), b.end());
    return a;
}

// A target that already holds something; what a default load leaves in it (Describe()) or
// raises; what strict loading raises, or "same" as by default.
struct Row { const char* name; CGVObject* (*make)(); Bytes bytes; std::string byDefault, strictly; };

CGVObject* Numbers() { auto* a = new CGVLongArray; int32_t seven = 7; a->mAdd(&seven); return a; }
CGVObject* Generic() { return new CGVArray(4, 16); }
CGVObject* Strings() { return new CGVStringArray; }
CGVObject* Buffer() { auto* b = new CGVBuffer; b->mInit("old", 3); return b; }

const Bytes kRecord = {9, 9, 9, 9, 'a', 'b', 'c', 0};  // an older string array's 8-byte record

const std::vector<Row> kDamageRows = {
    {"generic block short", Generic, Cat(Header(4, 16, 4, 2), {1, 0, 0, 0, 2, 0}),
     "4x4 2 items:01000000,02000000,", "3@20"},
    {"long array block short", Numbers, Cat(Header(4, 16, 2, 2), {5, 0, 0}), "4x2 2 items:05000000,00000000,", "3@17"},
    {"long array of 2-byte elements", Numbers, Cat(Header(2, 16, 2, 2), {1, 0, 2, 0}), "2x2 2 items:0100,0200,",
     "5@18"},
    {"records fewer than announced", Strings, Cat(Header(8, 16, 2, 2), kRecord), "2 items:[abc][]", "3@22"},
    {"records of size 0", Strings, Header(0, 16, 0, 3), "3 items:[][][]", "5@14"},
    {"items beyond the records", Strings, Cat(Header(8, 16, 1, 2), kRecord), "2 items:[abc][]", "5@14"},
    {"negative string count", Strings, Cat(Header(-1, 16, 16, 0), {0xFD, 0xFF, 0xFF, 0xFF}), "0 items:", "5@18"},
    {"negative item count", Strings, Cat(Header(-1, 16, 16, -2), {0, 0, 0, 0}), "-2 items:", "5@14"},
    {"items beyond the strings", Strings, Cat(Header(-1, 16, 16, 2), {1, 0, 0, 0, 1, 'a'}),
     "2 items:[a][<beyond>]", "5@20"},
    {"buffer count beyond the bytes", Buffer, {5, 0, 'a', 'b'}, "len 5:6162000000", "3@4"},
    {"string cut", Strings, Cat(Header(-1, 16, 16, 1), {1, 0, 0, 0, 3, 'a'}), "3@-1", "3@-1"},
    {"older record layout", Strings,
     Cat(Header(8, 3, 3, 2), {9, 9, 9, 9, 'h', 'i', 0, 'x', 0, 0, 0, 0, 'f', 'u', 'l', 'l', 0, 0, 0, 0, 0, 0, 0, 0}),
     "2 items:[hi][full]", "same"},
    // Found by fuzzing: strings beyond the items leaked (the sanitiser build's leak check).
    {"strings beyond the items", Strings, Cat(Header(-1, 16, 16, 0), {2, 0, 0, 0, 3, 'a', ' ', 'b', 0}),
     "0 items:", "same"},
    // Sizes beyond the budget raise the memory exception before allocating, in both modes.
    {"buffer of 2^31-1 bytes", Buffer, Cat({0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0x7F}, Bytes(10, 'z')), "memory", "memory"},
    {"block of 2^31-1 bytes", Generic, Cat(Header(1, 16, 0x7FFFFFFF, 1), Bytes(10, 'z')), "memory", "memory"},
    {"2^31-1 strings", Strings, Cat(Header(-1, 16, 16, 1), {0xFF, 0xFF, 0xFF, 0x7F, 1, 'a'}), "memory", "memory"},
    {"2^31-1 records", Strings, Cat(Header(0, 16, 0x7FFFFFFF, 0x7FFFFFFF), Bytes(10, 'z')), "memory", "5@14"},
};

}  // namespace

TEST(ArchiveDamage, DefaultGivesTheOriginalsOutcomeStrictRaisesAndKeepsTheTarget) {
    for (Row const& row : kDamageRows) {
        SCOPED_TRACE(row.name);
        for (bool strict : {false, true}) {
            gvtest::LoadingPolicy policy(strict);
            bool same = !strict || row.strictly == "same";
            std::unique_ptr<CGVObject> target(row.make()), untouched(row.make());
            std::string got = Load(row.bytes, *target);
            EXPECT_EQ(same ? row.byDefault : row.strictly, got == "ok" ? Describe(*target) : got);
            EXPECT_EQ(Describe(*untouched), Describe(same ? *untouched : *target));
        }
    }
}
