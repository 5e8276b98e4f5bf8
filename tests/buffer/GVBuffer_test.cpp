// CGVBuffer: filling, the lock protocol, replace-all, comparison and value slots.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <memory>
#include <sstream>
#include <string>
#include <tuple>

#include "gvlib/buffer/GVBuffer.h"
#include "gvlib/core/GVLong.h"
#include "gvlib/platform/afxdisp.h"
#include "gvlib/platform/afxexcept.h"
#include "gvlib/platform/afxfile.h"
#include "support/buffer_content.h"

namespace {

using gvtest::Content;
using gvtest::Fill;

// The most a block holds: a locked block cannot grow, so appending (junk) stops at its end.
int32_t Room(CGVBuffer& b) {
    int32_t before = -1;
    for (b.mLockBuffer(0); before != b.mGetLength(); b.mConcat("x", 1))
        before = b.mGetLength();
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
    b += "de";
    EXPECT_STREQ("abcde", static_cast<char const*>(b));
    // Counts that take the length past 32 bits are refused before p is read.
    EXPECT_THROW(b.mConcat("x", INT32_MAX), CMemoryException);
    std::string big(70000, 'z');
    b.mConcat(big.data(), 70000);  // a step past 64 KiB takes a fresh block
    EXPECT_EQ("abcde" + big, Content(b));
    EXPECT_THROW(none.mInit(nullptr, INT32_MAX), CMemoryException);
    EXPECT_TRUE(static_cast<char const*>(none) == nullptr && none.mIsNull() == 1);
    none.mInit(nullptr, 3);
    EXPECT_EQ(std::make_pair(std::string(3, '\0'), 1), std::make_pair(Content(none), none.mIsNull()));
    none.mConcat("\x01", 1);
    EXPECT_EQ(0, none.mIsNull());
    EXPECT_EQ(std::string(5, '\0'), Content(CGVBuffer(5, 16)));
    none.mClear();
    EXPECT_EQ(nullptr, none.mGetBuffer());
    CGVBuffer self(0, 4);  // appending itself survives the block moving
    self.mConcat("abcdef", 6);
    self.mConcat(self.mGetBuffer(), self.mGetLength());
    EXPECT_EQ("abcdefabcdef", Content(self));
    self.mInit(self.mGetBuffer() + 3, 4);
    EXPECT_EQ("defa", Content(self));
}

TEST(CGVBuffer, LockedBlockNeverMoves) {
    CGVBuffer w, b(0, 16);
    w.mConcat("ab", 2);
    std::memcpy(w.mLockBuffer(10), "wxyz", 4);
    w.mUnlock(4);
    EXPECT_EQ("abwxyz", Content(w));
    b.mConcat("0123456789", 10);
    char* block = b.mGetBuffer();
    ASSERT_EQ(block + 10, b.mLockBuffer(2));
    EXPECT_TRUE(b.mIsLocked() == 1 && b.mLockBuffer(2) == nullptr);
    std::string big(100, 'x');
    b.mConcat(big.data(), 100);  // no room: nothing happens
    b.mInit(big.data(), 100);
    EXPECT_EQ(0, b.mReplaceAll("1", "1111111111111111"));
    b.mClear();
    EXPECT_EQ(std::make_pair(block, std::string("0123456789")), std::make_pair(b.mGetBuffer(), Content(b)));
    b.mConcat("ab", 2);                      // fits: appended in place
    EXPECT_EQ(1, b.mReplaceAll("a", "AA"));  // fits in the 16-byte block as well
    EXPECT_EQ("0123456789AAb", Content(b));
    EXPECT_EQ(16, ReadFile(b, std::string(16, 'f')));  // as big as the block: no byte past it
    EXPECT_EQ(std::make_pair(block, 14), std::make_pair(b.mGetBuffer(), b.mGetLength()));  // with the terminator
    b.mUnlock(4);
    EXPECT_EQ(std::make_pair(0, 18), std::make_pair(b.mIsLocked(), b.mGetLength()));
    b.mUnlock(1000);  // more than the block: readers keep inside it
    EXPECT_TRUE(b.mGetLength() == 1018 && b.ContentLength() < 16);
}

// Every member that reads the content stays inside the block whatever length
// mRollBack set; the sanitiser build catches a read or write past it.
TEST(CGVBuffer, RolledBackLengthsStayInsideTheBlock) {
    for (int32_t length : {-5, 0, 3, 128, 200, 1 << 30}) {  // 128: the whole block
        SCOPED_TRACE(length);
        CGVBuffer b, r, none, copy;
        none.mRollBack(length);  // no block: the length is set, there is no content
        EXPECT_EQ(0, none.ContentLength());
        Fill(r, "abcdef");
        r.mRollBack(length);
        FailingFile bad;
        CMemFile empty;
        EXPECT_THROW(r.mReadFromFile(bad), CMemoryException);
        EXPECT_EQ(length, r.mGetLength());
        EXPECT_EQ(0, r.mReadFromFile(empty));
        EXPECT_EQ(std::max(length, 0) + 1, r.mGetLength());  // the terminator counted, past the block too
        Fill(b, "abcdef");
        b.mRollBack(length);
        EXPECT_EQ(std::make_tuple(std::clamp(length, 0, 127), length <= 0 ? 1 : 0, true),
                  std::make_tuple(b.ContentLength(), b.mIsNull(), static_cast<char const*>(b) != nullptr));
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

// Appending goes on from the length mRollBack set, past the block too: the
// block grows to hold it and the bytes it never held read as zeros.
TEST(CGVBuffer, AppendsFollowALengthRolledPastTheBlock) {
    CGVBuffer b;
    Fill(b, "abcdef");
    b.mRollBack(1000);
    b.mConcat("xy", 2);
    EXPECT_EQ(1002, b.mGetLength());
    EXPECT_EQ(std::string("abcdef") + std::string(994, '\0') + "xy", std::string(b, 1002));
    b.mRollBack(1500);
    char* at = b.mLockBuffer(4);
    ASSERT_NE(nullptr, at);
    std::memcpy(at, "ijkl", 4);
    b.mUnlock(4);
    EXPECT_EQ(std::make_tuple(1504, std::ptrdiff_t{1500}),
              std::make_tuple(b.mGetLength(), at - static_cast<char const*>(b)));
    EXPECT_EQ("ijkl", std::string(static_cast<char const*>(b) + 1500, 4));
    CGVBuffer full;
    full.mRollBack(INT32_MAX);
    CMemFile nothing;
    EXPECT_EQ(0, full.mReadFromFile(nothing));
    EXPECT_EQ(INT32_MAX, full.mGetLength());  // no room to count a terminator: the length stays
    CGVBuffer empty;
    empty.mRollBack(-3);  // a negative length appends from the start
    empty.mConcat("q", 1);
    EXPECT_EQ(1, empty.mGetLength());
}

TEST(CGVBuffer, ReplaceAll) {
    const std::tuple<std::string, const char*, const char*, std::string, int32_t> rows[] = {
        {"aaa", "a", "aa", "aaaaaa", 3},  {"abab", "ab", "", "", 2},    {"no match", "x", "y", "no match", 0},
        {"aaaa", "aa", "b", "bb", 2},     {"xaax", "aa", "a", "xax", 1}, {"a.b.c", ".", "--", "a--b--c", 2},
        {"end", "nd", "ND!", "eND!", 1},  {"ab", "abc", "z", "ab", 0},   {"abc", "", "z", "abc", 0},
        {std::string("a\0b", 3), "b", "cd", std::string("a\0cd", 4), 1},
        {"abac", "ac", "-", "ab-", 1},  // the first byte matches before the whole does
        {"x" + std::string(20, 'a'), "a", "bb", "x" + std::string(40, 'b'), 20},  // past the first guess at the size
        {"abcb", "b", nullptr, "ac", 2},  // no replacement text: removed
    };
    for (auto const& [content, find, repl, want, count] : rows) {
        SCOPED_TRACE(content + " / " + find);
        CGVBuffer b(0, 4);
        Fill(b, content);
        EXPECT_EQ(count, b.mReplaceAll(find, repl));
        EXPECT_EQ(std::make_pair(want, true), std::make_pair(Content(b), static_cast<char const*>(b) != nullptr));
    }
    EXPECT_EQ(0, CGVBuffer().mReplaceAll("a", "b"));
}

TEST(CGVBuffer, CompareIsUnsignedThenByLength) {
    const std::tuple<std::string, std::string, int32_t> rows[] = {
        {"ab", "abc", -1}, {"abc", "ab", 1}, {"ab", "ab", 0}, {"\x80", "\x7F", 1}, {"", "", 0}, {"", "a", -1},
        {"b", "abc", 1}};
    for (auto const& [left, right, want] : rows) {
        CGVBuffer a, b;
        Fill(a, left);
        Fill(b, right);
        EXPECT_EQ(want, a.mCompare(&b)) << left << " vs " << right;
    }
    CGVLong number;
    EXPECT_EQ(-1, CGVBuffer().mCompare(&number));
}

// A copy or a new buffer takes the default step of 128, whatever the original's.
TEST(CGVBuffer, BlocksGrowInWholeStepsWithRoomForTheTerminator) {
    const std::tuple<int32_t, int32_t, int32_t> rows[] = {{4, 3, 3},     {4, 4, 7},   {4, 7, 7},    {4, 8, 11},
                                                          {128, 1, 127}, {5, 10, 14}, {1000, 3, 999}};
    for (auto const& [step, length, room] : rows) {
        SCOPED_TRACE(length);
        CGVBuffer b(0, step);
        Fill(b, std::string(static_cast<size_t>(length), 'r'));
        std::unique_ptr<CGVObject> copy(b.mCopy()), fresh(b.mNew());
        auto& c = dynamic_cast<CGVBuffer&>(*copy);
        EXPECT_EQ(Content(b), Content(c));
        EXPECT_EQ(std::make_tuple(room, 127, 0),
                  std::make_tuple(Room(b), Room(c), dynamic_cast<CGVBuffer&>(*fresh).mGetLength()));
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
    base = CGVLong(4);  // another class changes nothing
    EXPECT_EQ(std::string(300, 'o'), Content(b));
    b = CGVBuffer();
    EXPECT_EQ(0, b.mGetLength());
    fresh.operator=(static_cast<CGVObject const&>(CGVBuffer()));
    std::istringstream zero("0  ");
    fresh.Serialize(zero);
    EXPECT_EQ(nullptr, fresh.mGetBuffer());  // nothing to hold, no block
}

TEST(CGVBuffer, ReadFromFileCountsTheTerminator) {
    for (size_t size : {size_t{0}, size_t{5}, size_t{127}, size_t{512}, size_t{1500}}) {
        std::string bytes(size, 'q');
        CGVBuffer b;
        EXPECT_EQ(static_cast<int32_t>(size), ReadFile(b, bytes));
        EXPECT_EQ(std::make_pair(bytes + '\0', true),
                  std::make_pair(Content(b), static_cast<char const*>(b) != nullptr)) << size;
    }
    CGVBuffer b;
    Fill(b, "abcd");
    EXPECT_EQ(2, ReadFile(b, "xy"));
    ASSERT_EQ(7, b.mGetLength());
    EXPECT_EQ(std::string("ab\0dxy", 6), Content(b).substr(0, 6));
}
