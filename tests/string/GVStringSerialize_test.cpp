// CGVString's text stream and archive forms.
#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

#include "gvlib/string/GVString.h"
#include "support/archive_bytes.h"

namespace {

std::string Written(CGVString& s) {
    std::ostringstream os;
    os << s;
    return os.str();
}

}  // namespace

TEST(CGVStringText, BodiesAreCountedSoAnyTextRoundTrips) {
    const std::string texts[] = {"", "a b", " lead", "trail ", "line\nend\r\n", "42 is a number", "\xFF\x80", "T3 x"};
    for (const std::string& text : texts) {
        SCOPED_TRACE(text);
        CGVString s(text.c_str());
        std::string form = Written(s);
        EXPECT_EQ("T" + std::to_string(text.size()) + " " + text + " ", form);
        std::istringstream is(form);
        CGVString back("old");
        is >> back;
        EXPECT_STREQ(text.c_str(), back);
        EXPECT_TRUE(is.good());
    }
}

TEST(CGVStringText, ExactForms) {
    CGVString empty;
    EXPECT_EQ("T0  ", Written(empty));
    CGVString withNul;
    withNul.SetString("ab\0cd", 5);
    EXPECT_EQ("T2 ab ", Written(withNul));
}

TEST(CGVStringArchive, FormKeepsEmbeddedNuls) {
    CGVString s;
    s.SetString("a\0b", 3);
    std::vector<unsigned char> want = {0x03, 'a', 0x00, 'b'};
    EXPECT_EQ(want, gvtest::Stored(s));
    CGVString back("old");
    gvtest::Load(want, back);
    ASSERT_EQ(3, back.GetLength());
    EXPECT_EQ('b', back.GetAt(2));
}
