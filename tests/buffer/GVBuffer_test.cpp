// CGVBuffer: filling, the lock protocol, replace-all, comparison and value slots.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <memory>
#include <sstream>
#include <string>

#include "gvlib/buffer/GVBuffer.h"
#include "gvlib/core/GVLong.h"
#include "gvlib/platform/afxdisp.h"
#include "gvlib/platform/afxexcept.h"
#include "gvlib/platform/afxfile.h"
#include "support/buffer_content.h"

namespace {

using gvtest::Content;
using gvtest::Fill;

// The most a buffer's block holds: while locked it cannot grow, so appending
// stops at the end of the block. The buffer is left with junk appended.
int32_t Room(CGVBuffer& b) {
    int32_t before = -1;
    b.mLockBuffer(0);
    while (before != b.mGetLength()) {
        before = b.mGetLength();
        b.mConcat("x", 1);
    }
    b.mUnlock(before);
    return before;
}

int32_t ReadFile(CGVBuffer& b, std::string bytes) {
    CMemFile file(reinterpret_cast<BYTE*>(bytes.data()), static_cast<UINT>(bytes.size()));
    return b.mReadFromFile(file);
}

struct FailingFile : CMemFile {
    UINT Read(void*, UINT) override { AfxThrowMemoryException(); }
};

}  // namespace

TEST(CGVBuffer, InitConcatAndNull) {
    CGVBuffer b, none;
    b.mInit("abc", 0);
    EXPECT_EQ(std::string("abc\0", 4), Content(b));
    b.mClearBuffer();
    EXPECT_EQ(0, b.mGetBuffer()[0]);
    b.mConcat("abc", 0);
    b += "";
    b += nullptr;
    b.mConcat("xyz", -2);
    EXPECT_EQ("abc", Content(b));
    b += "de";
    EXPECT_STREQ("abcde", static_cast<char const*>(b));
    // Counts that take the length past 32 bits are refused before p is read.
    EXPECT_THROW(b.mConcat("x", INT32_MAX), CMemoryException);
    EXPECT_EQ("abcde", Content(b));
    std::string big(70000, 'z');
    b.mConcat(big.data(), 70000);  // a step past 64 KiB takes a fresh block
    EXPECT_EQ("abcde" + big, Content(b));
    EXPECT_THROW(none.mInit(nullptr, INT32_MAX), CMemoryException);
    EXPECT_EQ(nullptr, static_cast<char const*>(none));
    EXPECT_EQ(1, none.mIsNull());
    none.mInit(nullptr, 3);
    EXPECT_EQ(std::string(3, '\0'), Content(none));
    EXPECT_EQ(1, none.mIsNull());
    none.mConcat("\x01", 1);
    EXPECT_EQ(0, none.mIsNull());
    EXPECT_EQ(std::string(5, '\0'), Content(CGVBuffer(5, 16)));
    none.mClear();
    EXPECT_EQ(nullptr, none.mGetBuffer());
}

TEST(CGVBuffer, AppendingItselfSurvivesTheBlockMoving) {
    CGVBuffer b(0, 4);
    b.mConcat("abcdef", 6);
    b.mConcat(b.mGetBuffer(), b.mGetLength());
    EXPECT_EQ("abcdefabcdef", Content(b));
    b.mInit(b.mGetBuffer() + 3, 4);
    EXPECT_EQ("defa", Content(b));
}

TEST(CGVBuffer, LockedBlockNeverMoves) {
    CGVBuffer w;
    w.mConcat("ab", 2);
    std::memcpy(w.mLockBuffer(10), "wxyz", 4);
    w.mUnlock(4);
    EXPECT_EQ("abwxyz", Content(w));
    CGVBuffer b(0, 16);
    b.mConcat("0123456789", 10);
    char* block = b.mGetBuffer();
    char* at = b.mLockBuffer(2);
    ASSERT_EQ(block + 10, at);
    EXPECT_EQ(1, b.mIsLocked());
    EXPECT_EQ(nullptr, b.mLockBuffer(2));
    std::string big(100, 'x');
    b.mConcat(big.data(), 100);  // no room: nothing happens
    b.mInit(big.data(), 100);
    EXPECT_EQ(0, b.mReplaceAll("1", "1111111111111111"));
    b.mClear();
    EXPECT_EQ(block, b.mGetBuffer());
    EXPECT_EQ("0123456789", Content(b));
    b.mConcat("ab", 2);                      // fits: appended in place
    EXPECT_EQ(1, b.mReplaceAll("a", "AA"));  // fits in the 16-byte block as well
    EXPECT_EQ("0123456789AAb", Content(b));
    EXPECT_EQ(16, ReadFile(b, std::string(16, 'f')));  // as big as the block: no byte past it
    EXPECT_EQ(block, b.mGetBuffer());
    EXPECT_EQ(14, b.mGetLength());  // the terminator still counts
    b.mUnlock(4);
    EXPECT_EQ(0, b.mIsLocked());
    EXPECT_EQ(18, b.mGetLength());
    b.mUnlock(1000);  // more than the block: readers keep inside it
    EXPECT_EQ(1018, b.mGetLength());
    EXPECT_LT(b.ContentLength(), 16);
}

// Every member that reads the content stays inside the block whatever length
// mRollBack set; the sanitiser build catches a read or write past it.
TEST(CGVBuffer, RolledBackLengthsStayInsideTheBlock) {
    for (int32_t length : {-5, 0, 3, 128, 200, 1 << 30}) {  // 128: the whole block
        SCOPED_TRACE(length);
        CGVBuffer b, r, none;
        none.mRollBack(length);  // no block: the length is set, there is no content
        EXPECT_EQ(0, none.ContentLength());
        Fill(r, "abcdef");
        r.mRollBack(length);
        FailingFile bad;
        CMemFile empty;
        EXPECT_THROW(r.mReadFromFile(bad), CMemoryException);
        EXPECT_EQ(length, r.mGetLength());
        EXPECT_EQ(0, r.mReadFromFile(empty));
        EXPECT_EQ(std::clamp(length, 0, 127) + 1, r.mGetLength());  // the terminator after the content
        Fill(b, "abcdef");
        b.mRollBack(length);
        EXPECT_EQ(std::clamp(length, 0, 127), b.ContentLength());
        EXPECT_NE(nullptr, static_cast<char const*>(b));
        EXPECT_EQ(length <= 0 ? 1 : 0, b.mIsNull());
        CGVBuffer copy;
        copy = b;
        copy.operator=(static_cast<CGVObject const&>(b));
        EXPECT_EQ(0, copy.mCompare(&b));
        COleVariant v;
        b.mConvertToOleVariant(&v);
        if (length < (1 << 20)) {
            std::ostringstream os;
            os << b;  // the length as set, the bytes beyond the block as zeros
            EXPECT_EQ(3 + std::to_string(length).size() + static_cast<size_t>(std::max(length, 0)), os.str().size());
        }
        b.mReplaceAll("a", "xyz");
        b.mConcat("gh", 2);
        char* at = b.mLockBuffer(4);
        ASSERT_NE(nullptr, at);
        std::memcpy(at, "ijkl", 4);
        b.mUnlock(4);
        EXPECT_LE(b.ContentLength(), b.mGetLength());
    }
}

TEST(CGVBuffer, ReplaceAll) {
    struct Row {
        std::string content, find, repl, want;
        int32_t count;
    } rows[] = {
        {"aaa", "a", "aa", "aaaaaa", 3},  {"abab", "ab", "", "", 2},    {"no match", "x", "y", "no match", 0},
        {"aaaa", "aa", "b", "bb", 2},     {"xaax", "aa", "a", "xax", 1}, {"a.b.c", ".", "--", "a--b--c", 2},
        {"end", "nd", "ND!", "eND!", 1},  {"ab", "abc", "z", "ab", 0},   {"abc", "", "z", "abc", 0},
        {std::string("a\0b", 3), "b", "cd", std::string("a\0cd", 4), 1},
        {"abac", "ac", "-", "ab-", 1},  // the first byte matches before the whole does
        {"x" + std::string(20, 'a'), "a", "bb", "x" + std::string(40, 'b'), 20},  // past the first guess at the size
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.content + " / " + row.find + " / " + row.repl);
        CGVBuffer b(0, 4);
        Fill(b, row.content);
        EXPECT_EQ(row.count, b.mReplaceAll(row.find.c_str(), row.repl.c_str()));
        EXPECT_EQ(row.want, Content(b));
        EXPECT_NE(nullptr, static_cast<char const*>(b));
    }
    CGVBuffer b;
    EXPECT_EQ(0, b.mReplaceAll("a", "b"));
    Fill(b, "abcb");
    EXPECT_EQ(2, b.mReplaceAll("b", nullptr));  // no replacement text: removed
    EXPECT_EQ("ac", Content(b));
}

TEST(CGVBuffer, CompareIsUnsignedThenByLength) {
    struct Row {
        std::string left, right;
        int32_t want;
    } rows[] = {{"ab", "abc", -1}, {"abc", "ab", 1}, {"ab", "ab", 0}, {"\x80", "\x7F", 1},
                {"", "", 0},       {"", "a", -1},    {"b", "abc", 1}};
    for (const Row& row : rows) {
        SCOPED_TRACE(row.left + " vs " + row.right);
        CGVBuffer a, b;
        Fill(a, row.left);
        Fill(b, row.right);
        EXPECT_EQ(row.want, a.mCompare(&b));
    }
    CGVLong number;
    EXPECT_EQ(-1, CGVBuffer().mCompare(&number));
}

// A copy or a new buffer takes the default step of 128, whatever the original's.
TEST(CGVBuffer, BlocksGrowInWholeStepsWithRoomForTheTerminator) {
    struct Row {
        int32_t step, length, room;
    } rows[] = {{4, 3, 3}, {4, 4, 7}, {4, 7, 7}, {4, 8, 11}, {128, 1, 127}, {5, 10, 14}, {1000, 3, 999}};
    for (auto const& row : rows) {
        SCOPED_TRACE(row.length);
        CGVBuffer b(0, row.step);
        Fill(b, std::string(static_cast<size_t>(row.length), 'r'));
        std::unique_ptr<CGVObject> copy(b.mCopy()), fresh(b.mNew());
        EXPECT_EQ(Content(b), Content(dynamic_cast<CGVBuffer&>(*copy)));
        EXPECT_EQ(row.room, Room(b));
        EXPECT_EQ(127, Room(dynamic_cast<CGVBuffer&>(*copy)));
        EXPECT_EQ(0, dynamic_cast<CGVBuffer&>(*fresh).mGetLength());
    }
}

TEST(CGVBuffer, Assignments) {
    CGVBuffer b, other, fresh;
    Fill(b, "self");
    b = b;
    CGVObject& base = b;
    base = static_cast<CGVObject const&>(b);
    EXPECT_EQ("self", Content(b));
    Fill(other, std::string(300, 'o'));
    base = static_cast<CGVObject const&>(other);
    EXPECT_EQ(std::string(300, 'o'), Content(b));
    base = CGVLong(4);
    EXPECT_EQ(300, b.mGetLength());
    b = CGVBuffer();
    EXPECT_EQ(0, b.mGetLength());
    fresh.operator=(static_cast<CGVObject const&>(CGVBuffer()));
    std::istringstream zero("0  ");
    fresh.Serialize(zero);
    EXPECT_EQ(nullptr, fresh.mGetBuffer());  // nothing to hold, no block
}

TEST(CGVBuffer, ReadFromFileCountsTheTerminator) {
    for (size_t size : {size_t{0}, size_t{5}, size_t{127}, size_t{512}, size_t{1500}}) {
        SCOPED_TRACE(size);
        std::string bytes(size, 'q');
        CGVBuffer b;
        EXPECT_EQ(static_cast<int32_t>(size), ReadFile(b, bytes));
        EXPECT_EQ(bytes + '\0', Content(b));
        EXPECT_NE(nullptr, static_cast<char const*>(b));
    }
    CGVBuffer b;
    Fill(b, "abcd");
    EXPECT_EQ(2, ReadFile(b, "xy"));
    ASSERT_EQ(7, b.mGetLength());
    EXPECT_EQ(std::string("ab\0dxy", 6), Content(b).substr(0, 6));
}
