// TQXStringStream: write block growth, the rewinding sync and the private read copy.
#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "gvlib/core/GVLong.h"
#include "gvlib/core/QXStringStream.h"
#include "gvlib/string/GVString.h"

namespace {

// Exposes the size of the write block: its put area ends one byte before its end.
class ProbedBuf : public TQXStringStreamBuf {
public:
    std::ptrdiff_t BlockSize() { return mWrittenData() ? epptr() - mWrittenData() + 1 : 0; }
};

TQXStringStreamBuf& BufOf(TQXStringStream& s) { return *static_cast<TQXStringStreamBuf*>(s.rdbuf()); }

}  // namespace

TEST(TQXStringStream, FreshStreamHasWrittenNothing) {
    TQXStringStream s;
    EXPECT_TRUE(s.good());
    EXPECT_EQ(0, BufOf(s).mWrittenLength());
    EXPECT_EQ(nullptr, BufOf(s).mWrittenData());
    char c = 0;
    EXPECT_FALSE(s.get(c));
    EXPECT_TRUE(s.eof());
}

TEST(TQXStringStream, BlockGrowsInStepsOf10000) {
    ProbedBuf buf;
    std::ostream os(&buf);
    os.put('x');
    EXPECT_EQ(10001, buf.BlockSize());
    std::string text;
    for (int i = 0; i < 10000; ++i)
        text += static_cast<char>('a' + i % 26);
    os.write(text.data(), 9999);
    EXPECT_EQ(10001, buf.BlockSize());
    EXPECT_EQ(10000, buf.mWrittenLength());
    os.put('!');  // the 10001st character
    EXPECT_EQ(20001, buf.BlockSize());
    ASSERT_EQ(10001, buf.mWrittenLength());
    EXPECT_EQ('x' + text.substr(0, 9999) + '!', std::string(buf.mWrittenData(), 10001));
}

TEST(TQXStringStream, WritesExactlyWhatWasWritten) {
    TQXStringStream s;
    CGVLong count(2);
    CGVString a("a b");
    s << count << a;
    s.write("\0z", 2);
    std::string want("U2 T3 a b \0z", 12);
    ASSERT_EQ(12, BufOf(s).mWrittenLength());
    EXPECT_EQ(want, std::string(BufOf(s).mWrittenData(), 12));
}

TEST(TQXStringStream, SyncRewindsTheWritePosition) {
    TQXStringStream s;
    s << "abc";
    s.flush();
    s << "xy";
    EXPECT_EQ(2, BufOf(s).mWrittenLength());
    EXPECT_EQ(0, std::memcmp("xyc", BufOf(s).mWrittenData(), 3));
}

TEST(TQXStringStream, ReadsAPrivateCopy) {
    char source[] = "U7 T2 hi ";
    TQXStringStream s;
    BufOf(s).mSetReadData(source, sizeof source - 1);
    std::memset(source, 'Z', sizeof source - 1);
    CGVLong v;
    CGVString text;
    s >> v >> text;
    EXPECT_EQ(7, v.mGetValue());
    EXPECT_STREQ("hi", text);
    EXPECT_EQ(std::char_traits<char>::eof(), s.peek());
}

TEST(TQXStringStream, EmptyReadDataEndsTheStream) {
    TQXStringStream s;
    BufOf(s).mSetReadData("hello", 5);
    BufOf(s).mSetReadData(nullptr, 0);
    char c = 0;
    EXPECT_FALSE(s.get(c));
    EXPECT_TRUE(s.eof());
}

TEST(TQXStringStream, SyncRewindsTheReadCopy) {
    TQXStringStream s;
    BufOf(s).mSetReadData("ab", 2);
    std::string first;
    s >> first;
    EXPECT_EQ("ab", first);
    s.clear();
    s.rdbuf()->pubsync();
    std::string again;
    s >> again;
    EXPECT_EQ("ab", again);
}
