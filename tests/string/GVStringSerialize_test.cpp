// CGVString's text stream and archive forms.
#include <gtest/gtest.h>

#include <sstream>

#include "gvlib/platform/afxexcept.h"
#include "gvlib/string/GVString.h"
#include "support/archive_bytes.h"

TEST(CGVStringText, BodiesAreCountedSoAnyTextRoundTrips) {
    const std::string texts[] = {"", "a b", " lead", "trail ", "line\nend\r\n", "42 is a number", "\xFF\x80", "T3 x"};
    for (const std::string& text : texts) {
        SCOPED_TRACE(text);
        std::ostringstream os;
        CGVString s(text.c_str()), back("old");
        os << s;
        EXPECT_EQ("T" + std::to_string(text.size()) + " " + text + " ", os.str());
        std::istringstream is(os.str());
        is >> back;
        EXPECT_STREQ(text.c_str(), back);
        EXPECT_TRUE(is.good());
    }
    std::ostringstream os;
    CGVString withNul;
    withNul.SetString("ab\0cd", 5);
    os << withNul;
    EXPECT_EQ("T2 ab ", os.str());
}

// An announced body and its terminator must fit the memory budget beyond one
// block header; an empty body costs nothing.
TEST(CGVStringText, AnnouncedLengthAgainstTheBudget) {
    struct Row { uint64_t budget; const char* form; bool fits; } const rows[] = {
        {16, "T0  ", true}, {26, "T9 abcdefghi ", true}, {26, "T10 abcdefghij ", false}};
    for (const Row& row : rows) {
        SCOPED_TRACE(row.form);
        gvtest::LoadingPolicy policy(false, row.budget);
        std::istringstream is(row.form);
        CGVString s;
        if (row.fits)
            EXPECT_NO_THROW(is >> s);
        else
            EXPECT_THROW(is >> s, CMemoryException);
    }
}

TEST(CGVStringArchive, FormKeepsEmbeddedNuls) {
    CGVString s, back("old");
    s.SetString("a\0b", 3);
    std::vector<unsigned char> want = {0x03, 'a', 0x00, 'b'};
    EXPECT_EQ(want, gvtest::Stored(s));
    gvtest::Load(want, back);
    ASSERT_EQ(3, back.GetLength());
    EXPECT_EQ('b', back.GetAt(2));
}
