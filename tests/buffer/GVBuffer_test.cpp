// CGVBuffer: filling, the lock protocol, replace-all, comparison and value slots.
#include <gtest/gtest.h>

#include <cstring>
#include <memory>
#include <string>

#include "gvlib/buffer/GVBuffer.h"
#include "gvlib/core/GVLong.h"
#include "gvlib/core/GVObjectVisitor.h"
#include "gvlib/platform/afxfile.h"
#include "support/buffer_content.h"

namespace {

using gvtest::Content;
using gvtest::Fill;

class BufferVisitor final : public CGVObjectVisitor {
public:
    int32_t mVisitBuffer(CGVBuffer* b, int32_t param) override { return b->mGetLength() * 10 + param; }
    int32_t mVisitLong(CGVLong*, int32_t) override { return -1; }
    int32_t mVisitString(CGVString*, int32_t) override { return -1; }
};

// The most a buffer's block holds: while locked it cannot grow, so appending
// stops at the end of the block.
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

}  // namespace

TEST(CGVBuffer, InitAndConcatTextLengths) {
    CGVBuffer b;
    b.mInit("abc", 0);
    EXPECT_EQ(std::string("abc\0", 4), Content(b));
    CGVBuffer c;
    c.mConcat("abc", 0);
    EXPECT_EQ("abc", Content(c));
    c += "";
    c += nullptr;
    c.mConcat("xyz", -2);
    EXPECT_EQ("abc", Content(c));
    c += "de";
    EXPECT_EQ("abcde", Content(c));
    EXPECT_STREQ("abcde", static_cast<char const*>(c));
    CGVBuffer none;
    EXPECT_EQ(nullptr, static_cast<char const*>(none));
}

TEST(CGVBuffer, NullInitGivesZeroBytes) {
    CGVBuffer b;
    EXPECT_EQ(1, b.mIsNull());
    b.mInit(nullptr, 3);
    EXPECT_EQ(std::string(3, '\0'), Content(b));
    EXPECT_EQ(1, b.mIsNull());
    b.mConcat("\x01", 1);
    EXPECT_EQ(0, b.mIsNull());
    CGVBuffer sized(5, 16);
    EXPECT_EQ(std::string(5, '\0'), Content(sized));
}

TEST(CGVBuffer, AppendingItselfSurvivesTheBlockMoving) {
    CGVBuffer b(0, 4);
    b.mConcat("abcdef", 6);
    b.mConcat(b.mGetBuffer(), b.mGetLength());
    EXPECT_EQ("abcdefabcdef", Content(b));
    b.mInit(b.mGetBuffer() + 3, 4);
    EXPECT_EQ("defa", Content(b));
}

TEST(CGVBuffer, LockProtocol) {
    CGVBuffer b;
    b.mConcat("ab", 2);
    char* at = b.mLockBuffer(10);
    ASSERT_NE(nullptr, at);
    EXPECT_EQ(b.mGetBuffer() + 2, at);
    EXPECT_EQ(1, b.mIsLocked());
    EXPECT_EQ(nullptr, b.mLockBuffer(10));
    std::memcpy(at, "wxyz", 4);
    b.mUnlock(4);
    EXPECT_EQ(0, b.mIsLocked());
    EXPECT_EQ("abwxyz", Content(b));
}

TEST(CGVBuffer, LockedBlockNeverMoves) {
    CGVBuffer b(0, 16);
    b.mConcat("0123456789", 10);
    char* block = b.mGetBuffer();
    ASSERT_NE(nullptr, b.mLockBuffer(2));
    std::string big(100, 'x');
    b.mConcat(big.data(), 100);           // no room: nothing happens
    b.mInit(big.data(), 100);
    EXPECT_EQ(0, b.mReplaceAll("1", "1111111111111111"));
    b.mClear();
    EXPECT_EQ(block, b.mGetBuffer());
    EXPECT_EQ("0123456789", Content(b));
    b.mConcat("ab", 2);                   // fits: appended in place
    EXPECT_EQ(1, b.mReplaceAll("a", "AA")); // fits in the 16-byte block as well
    EXPECT_EQ(block, b.mGetBuffer());
    EXPECT_EQ("0123456789AAb", Content(b));
    b.mUnlock(1000);                      // more than the block: readers keep inside it
    EXPECT_EQ(1013, b.mGetLength());
    EXPECT_LT(b.ContentLength(), 16);
    EXPECT_NE(nullptr, static_cast<char const*>(b));
}

TEST(CGVBuffer, ReplaceAll) {
    struct Row {
        std::string content, find, repl, want;
        int32_t count;
    } rows[] = {
        {"aaa", "a", "aa", "aaaaaa", 3},
        {"abab", "ab", "", "", 2},
        {"no match", "x", "y", "no match", 0},
        {"aaaa", "aa", "b", "bb", 2},
        {"xaax", "aa", "a", "xax", 1},
        {"a.b.c", ".", "--", "a--b--c", 2},
        {"end", "nd", "ND!", "eND!", 1},
        {"ab", "abc", "z", "ab", 0},
        {std::string("a\0b", 3), "b", "cd", std::string("a\0cd", 4), 1},
        {"abc", "", "z", "abc", 0},
        {"abac", "ac", "-", "ab-", 1},  // the first byte matches before the whole does
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.content + " / " + row.find + " / " + row.repl);
        CGVBuffer b(0, 4);
        Fill(b, row.content);
        EXPECT_EQ(row.count, b.mReplaceAll(row.find.c_str(), row.repl.c_str()));
        EXPECT_EQ(row.want, Content(b));
        EXPECT_NE(nullptr, static_cast<char const*>(b));
    }
    CGVBuffer empty;
    EXPECT_EQ(0, empty.mReplaceAll("a", "b"));
}

TEST(CGVBuffer, CompareIsUnsignedThenByLength) {
    struct Row {
        std::string left, right;
        int32_t want;
    } rows[] = {
        {"ab", "abc", -1}, {"abc", "ab", 1}, {"ab", "ab", 0}, {"\x80", "\x7F", 1},
        {"", "", 0}, {"", "a", -1}, {"b", "abc", 1},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.left + " vs " + row.right);
        CGVBuffer a, b;
        Fill(a, row.left);
        Fill(b, row.right);
        EXPECT_EQ(row.want, a.mCompare(&b));
    }
    CGVBuffer a;
    CGVLong number;
    EXPECT_EQ(-1, a.mCompare(&number));
}

TEST(CGVBuffer, BlocksGrowInWholeStepsWithRoomForTheTerminator) {
    struct Row {
        int32_t step, length, room;
    } rows[] = {{4, 3, 3}, {4, 4, 7}, {4, 7, 7}, {4, 8, 11}, {128, 1, 127}, {5, 10, 14}};
    for (auto const& row : rows) {
        SCOPED_TRACE(row.length);
        CGVBuffer b(0, row.step);
        Fill(b, std::string(static_cast<size_t>(row.length), 'r'));
        EXPECT_EQ(row.room, Room(b));
    }
}

TEST(CGVBuffer, CopyResetsTheStepAndKeepsTheContent) {
    CGVBuffer b(0, 1000);
    b.mConcat("xyz", 3);
    std::unique_ptr<CGVObject> copy(b.mCopy());
    auto& c = dynamic_cast<CGVBuffer&>(*copy);
    EXPECT_EQ("xyz", Content(c));
    // While locked the block cannot grow, which shows its size: a step of 128 holds
    // 127 content bytes and the terminator room; the original's 1000 would hold more.
    ASSERT_NE(nullptr, c.mLockBuffer(0));
    std::string more(125, 'm');
    c.mConcat(more.data(), 125);
    EXPECT_EQ(3, c.mGetLength());
    c.mConcat(more.data(), 124);
    EXPECT_EQ(127, c.mGetLength());
    c.mUnlock(0);
    std::unique_ptr<CGVObject> fresh(b.mNew());
    EXPECT_EQ(0, dynamic_cast<CGVBuffer&>(*fresh).mGetLength());
}

TEST(CGVBuffer, Assignments) {
    CGVBuffer b, other;
    Fill(b, "self");
    b = b;
    CGVObject& base = b;
    base = static_cast<CGVObject const&>(b);
    EXPECT_EQ("self", Content(b));
    Fill(other, std::string(300, 'o'));
    base = static_cast<CGVObject const&>(other);
    EXPECT_EQ(std::string(300, 'o'), Content(b));
    CGVLong number(4);
    base = number;
    EXPECT_EQ(300, b.mGetLength());
    CGVBuffer empty;
    b = empty;
    EXPECT_EQ(0, b.mGetLength());
}

TEST(CGVBuffer, ClearAndRollBack) {
    CGVBuffer b;
    Fill(b, "abcdef");
    CGVBuffer none;
    none.mRollBack(3);  // no block: the length is kept, the content stays empty
    EXPECT_EQ(3, none.mGetLength());
    EXPECT_EQ(0, none.ContentLength());
    b.mRollBack(2);
    EXPECT_EQ("ab", Content(b));
    b.mRollBack(-5);  // any length, without a check
    EXPECT_EQ(-5, b.mGetLength());
    EXPECT_EQ(0, b.ContentLength());
    b.mClearBuffer();
    EXPECT_EQ(0, b.mGetLength());
    EXPECT_NE(nullptr, b.mGetBuffer());
    b.mClear();
    EXPECT_EQ(nullptr, b.mGetBuffer());
}

TEST(CGVBuffer, VisitCallsTheBufferSlot) {
    CGVBuffer b;
    Fill(b, "abc");
    BufferVisitor visitor;
    EXPECT_EQ(31, b.mVisit(&visitor, 1));
}

TEST(CGVBuffer, ReadFromFileCountsTheTerminator) {
    for (size_t size : {size_t{0}, size_t{5}, size_t{127}, size_t{512}, size_t{1500}}) {
        SCOPED_TRACE(size);
        std::string bytes(size, 'q');
        CMemFile file(reinterpret_cast<BYTE*>(bytes.data()), static_cast<UINT>(size));
        CGVBuffer b;
        EXPECT_EQ(static_cast<int32_t>(size), b.mReadFromFile(file));
        EXPECT_EQ(bytes + '\0', Content(b));
        EXPECT_NE(nullptr, static_cast<char const*>(b));
    }
    std::string bytes = "xy";
    CMemFile file(reinterpret_cast<BYTE*>(bytes.data()), 2);
    CGVBuffer b;
    Fill(b, "abcd");
    EXPECT_EQ(2, b.mReadFromFile(file));
    ASSERT_EQ(7, b.mGetLength());
    EXPECT_EQ(std::string("ab\0dxy", 6), Content(b).substr(0, 6));
}
