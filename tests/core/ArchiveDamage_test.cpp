// Archive loaders of the value classes over truncated and damaged data.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "gvlib/array/GVLongArray.h"
#include "gvlib/array/GVStringArray.h"
#include "gvlib/buffer/GVBuffer.h"
#include "gvlib/core/GVLong.h"
#include "gvlib/platform/afxarchive.h"
#include "gvlib/platform/afxexcept.h"
#include "gvlib/platform/afxfile.h"
#include "gvlib/string/GVString.h"
#include "support/archive_bytes.h"

namespace {

using Bytes = std::vector<BYTE>;
using gvtest::Stored;

// Loads `bytes` into obj; answers the archive exception's cause, or -1 when none.
template <typename T>
int Load(Bytes bytes, T& obj) {
    CMemFile file;
    file.Attach(bytes.data(), static_cast<UINT>(bytes.size()), 0);
    try {
        CArchive ar(&file, CArchive::load);
        obj.Serialize(ar);
    } catch (CArchiveException const& e) {
        file.Detach();
        return e.m_cause;
    }
    file.Detach();
    return -1;
}

// Cut points: every byte of a short form, a sample of a long one.
std::vector<size_t> Cuts(size_t size) {
    std::vector<size_t> cuts;
    for (size_t cut = 0; cut < size; cut += (cut < 16 || size - cut < 16) ? 1 : 997)
        cuts.push_back(cut);
    return cuts;
}

}  // namespace

TEST(ArchiveDamage, TruncatedStringsAndLongsRaiseEndOfFileAndKeepTheValue) {
    std::vector<CGVString> texts;
    texts.emplace_back("");
    texts.emplace_back("abc");
    texts.emplace_back(CGVString('x', 300));
    texts.emplace_back(CGVString('y', 70000));
    for (CGVString& text : texts) {
        Bytes whole = Stored(text);
        for (size_t cut : Cuts(whole.size())) {
            SCOPED_TRACE(std::to_string(text.GetLength()) + " cut at " + std::to_string(cut));
            CGVString loaded("keep");
            EXPECT_EQ(CArchiveException::endOfFile, Load(Bytes(whole.begin(), whole.begin() + cut), loaded));
            EXPECT_STREQ("keep", loaded);
        }
        CGVString loaded;
        EXPECT_EQ(-1, Load(whole, loaded));
        EXPECT_EQ(0, loaded.Compare(text));
    }
    CGVLong one(1);
    Bytes four = Stored(one);
    EXPECT_EQ((Bytes{1, 0, 0, 0}), four);
    for (size_t cut = 0; cut < 4; ++cut) {
        CGVLong loaded(9);
        EXPECT_EQ(CArchiveException::endOfFile, Load(Bytes(four.begin(), four.begin() + cut), loaded));
    }
}

TEST(ArchiveDamage, BufferCountsBeyondTheDataKeepWhatArrived) {
    CGVBuffer source;
    source.mInit("0123456789", 10);
    Bytes whole = Stored(source);
    ASSERT_EQ((Bytes{10, 0, '0', '1'}), Bytes(whole.begin(), whole.begin() + 4));
    for (size_t cut = 0; cut < whole.size(); ++cut) {
        SCOPED_TRACE(cut);
        CGVBuffer loaded;
        int cause = Load(Bytes(whole.begin(), whole.begin() + cut), loaded);
        if (cut < 2) {
            EXPECT_EQ(CArchiveException::endOfFile, cause);  // the count itself is cut
        } else {
            EXPECT_EQ(-1, cause);
            EXPECT_EQ(static_cast<int32_t>(cut - 2), loaded.mGetLength());
        }
    }
}

TEST(ArchiveDamage, HugeAnnouncedLengthsCostOnlyWhatIsThere) {
    // A string announcing 0xFFFFFFF0 characters and a buffer announcing
    // 0xFFFFFFFF bytes, each followed by ten bytes.
    Bytes hugeText = {0xFF, 0xFF, 0xFF, 0xF0, 0xFF, 0xFF, 0xFF};
    Bytes hugeBuffer = {0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF};
    for (Bytes* b : {&hugeText, &hugeBuffer})
        b->insert(b->end(), 10, 'z');
    CGVString text("keep");
    EXPECT_NE(-1, Load(hugeText, text));
    EXPECT_STREQ("keep", text);
    CGVBuffer buffer;
    Load(hugeBuffer, buffer);
    EXPECT_GE(buffer.mGetLength(), 0);
    EXPECT_LE(buffer.mGetLength(), 10);
}

// Arrays: a cut anywhere raises the archive exception and leaves the array as it was.
TEST(ArchiveDamage, TruncatedArraysRaiseAndKeepTheirItems) {
    CGVLongArray numbers;
    CGVStringArray strings;
    for (int32_t i = 0; i < 3; ++i) {
        numbers.mAdd(&i);
        CGVString text(CGVString('s', i * 100));
        strings.mAdd(&text);
    }
    Bytes numberBytes = Stored(numbers);
    Bytes stringBytes = Stored(strings);
    for (size_t cut : Cuts(numberBytes.size())) {
        SCOPED_TRACE("long array cut at " + std::to_string(cut));
        CGVLongArray loaded;
        int32_t keep = 42;
        loaded.mAdd(&keep);
        EXPECT_NE(-1, Load(Bytes(numberBytes.begin(), numberBytes.begin() + cut), loaded));
        ASSERT_EQ(1, loaded.mGetNumItems());
        EXPECT_EQ(42, loaded[0]);
    }
    for (size_t cut : Cuts(stringBytes.size())) {
        SCOPED_TRACE("string array cut at " + std::to_string(cut));
        CGVStringArray loaded;
        EXPECT_NE(-1, Load(Bytes(stringBytes.begin(), stringBytes.begin() + cut), loaded));
        EXPECT_EQ(0, loaded.mGetNumItems());
    }
    CGVStringArray whole;
    EXPECT_EQ(-1, Load(stringBytes, whole));
    EXPECT_EQ(3, whole.mGetNumItems());
}

TEST(ArchiveDamage, AbsurdArrayHeadersAreRefused) {
    // element size, growth step, allocated slots, item count (each 32-bit), then the block
    struct Row {
        const char* name;
        Bytes bytes;
    } rows[] = {
        {"negative element size", {0xFE, 0xFF, 0xFF, 0xFF, 16, 0, 0, 0, 16, 0, 0, 0, 1, 0, 0, 0}},
        {"more items than slots", {4, 0, 0, 0, 16, 0, 0, 0, 1, 0, 0, 0, 9, 0, 0, 0, 1, 0, 0, 0}},
        {"huge slot count", {4, 0, 0, 0, 16, 0, 0, 0, 0xFF, 0xFF, 0xFF, 0x7F, 1, 0, 0, 0, 7, 0, 0, 0}},
        {"negative item count", {4, 0, 0, 0, 16, 0, 0, 0, 16, 0, 0, 0, 0xFF, 0xFF, 0xFF, 0xFF}},
    };
    for (Row const& row : rows) {
        SCOPED_TRACE(row.name);
        CGVLongArray loaded;
        EXPECT_NE(-1, Load(row.bytes, loaded));
        EXPECT_EQ(0, loaded.mGetNumItems());
    }
}

// Found by fuzzing: an archive with more strings than items leaked the extra strings.
TEST(ArchiveDamage, StringsBeyondTheItemCountAreOwned) {
    Bytes bytes = {0xFF, 0xFF, 0xFF, 0xFF, 0x10, 0x00, 0x10, 0, 0, 0, 0, 0, 0, 0,  // item count 0
                   2, 0, 0, 0, 3, 'a', ' ', 'b', 0};                               // two strings
    CGVStringArray loaded;
    EXPECT_EQ(-1, Load(bytes, loaded));
    EXPECT_EQ(0, loaded.mGetNumItems());
}  // the sanitiser build's leak check fails here if the strings are dropped
