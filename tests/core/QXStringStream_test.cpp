// TQXStringStream: write block growth, the rewinding sync and the private read copy.
#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <tuple>

#include "gvlib/core/QXStringStream.h"
#include "gvlib/platform/afxexcept.h"

namespace {

// Exposes the size of the write block: its put area ends one byte before its end.
class ProbedBuf : public TQXStringStreamBuf {
public:
    std::ptrdiff_t BlockSize() { return mWrittenData() ? epptr() - mWrittenData() + 1 : 0; }
    using TQXStringStreamBuf::overflow;
};

TQXStringStreamBuf& BufOf(TQXStringStream& s) { return *static_cast<TQXStringStreamBuf*>(s.rdbuf()); }

std::string Written(TQXStringStreamBuf& b) { return std::string(b.mWrittenData(), b.mWrittenLength()); }

}  // namespace

TEST(TQXStringStream, BlockGrowsInStepsOf10000) {
    ProbedBuf buf;
    EXPECT_TRUE(buf.mWrittenLength() == 0 && buf.mWrittenData() == nullptr);
    std::ostream os(&buf);
    os.put('x');
    const std::ptrdiff_t first = buf.BlockSize();
    std::string text(9999, 'a');
    os.write(text.data(), 9999);
    const std::ptrdiff_t full = buf.BlockSize();
    os.put('!');  // the 10001st character
    EXPECT_EQ(std::make_tuple(10001, 10001, 20001), std::make_tuple(first, full, buf.BlockSize()));
    EXPECT_EQ('x' + text + '!', Written(buf));
    ProbedBuf direct;  // a direct call with end-of-file grows and stores it like any character
    EXPECT_EQ(0, direct.overflow(std::char_traits<char>::eof()));
    EXPECT_EQ(std::make_tuple(10001, std::string(1, '\xFF')), std::make_tuple(direct.BlockSize(), Written(direct)));
}

TEST(TQXStringStream, WritesExactlyAndSyncRewinds) {
    TQXStringStream s;
    s << "abc";
    EXPECT_EQ("abc", Written(BufOf(s)));  // no terminator counted
    s.flush();
    s << "xy";
    EXPECT_EQ("xyc", Written(BufOf(s)) + std::string(BufOf(s).mWrittenData() + 2, 1));
}

TEST(TQXStringStream, ReadsAPrivateCopyThatSyncRewinds) {
    char source[] = "ab cd", c = 0;
    TQXStringStream s;
    EXPECT_FALSE(s.get(c));  // nothing to read yet
    s.clear();
    BufOf(s).mSetReadData(source, 5);
    std::memset(source, 'Z', 5);
    std::string first, second;
    s >> first >> second;
    EXPECT_EQ("ab cd", first + " " + second);
    EXPECT_EQ(std::char_traits<char>::eof(), s.peek());
    s.clear();
    s.rdbuf()->pubsync();
    s >> second;  // was "cd": a failed read would leave it so
    EXPECT_EQ("ab", second);
    // Bytes announced without a source: refused, and the copy read so far stays.
    EXPECT_THROW(BufOf(s).mSetReadData(nullptr, 3), CInvalidArgException);
    s >> second;
    EXPECT_EQ("cd", second);
    BufOf(s).mSetReadData(nullptr, 0);
    EXPECT_FALSE(s.get(c));
}
