// CGVString's text stream and archive forms.
#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

#include "gvlib/platform/afxarchive.h"
#include "gvlib/platform/afxexcept.h"
#include "gvlib/platform/afxfile.h"

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

TEST(CGVStringText, DamagedBodies) {
    struct Row {
        const char* input;
        const char* want;
        bool failed;
    } rows[] = {
        {"Tx abc ", "", true},            // no length: empty, stream failed
        {"T-5 abcdef", "", false},        // negative length reads nothing
        {"T5 ab", "ab", true},            // truncated: what was there
        {"T2000000000 0123456789", "0123456789", true},  // huge length: no huge allocation
        {"T99999999999 ab", "", true},    // length out of range
        {"T", "", true},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.input);
        std::istringstream is(row.input);
        CGVString s("old");
        is >> s;
        EXPECT_STREQ(row.want, s);
        EXPECT_EQ(row.failed, is.fail());
    }
}

namespace {

void Load(std::vector<unsigned char> const& bytes, CGVString& s) {
    CMemFile file;
    file.Write(bytes.data(), static_cast<UINT>(bytes.size()));
    file.SeekToBegin();
    CArchive ar(&file, CArchive::load);
    s.Serialize(ar);
}

}  // namespace

TEST(CGVStringArchive, FormKeepsEmbeddedNuls) {
    CGVString s;
    s.SetString("a\0b", 3);
    std::vector<unsigned char> want = {0x03, 'a', 0x00, 'b'};
    EXPECT_EQ(want, gvtest::Stored(s));
    CGVString back("old");
    Load(want, back);
    ASSERT_EQ(3, back.GetLength());
    EXPECT_EQ('b', back.GetAt(2));
}

TEST(CGVStringArchive, LongLengthsTakeTheLongerPrefixes) {
    CGVString s('x', 300);
    std::vector<unsigned char> bytes = gvtest::Stored(s);
    ASSERT_EQ(303u, bytes.size());
    EXPECT_EQ((std::vector<unsigned char>{0xFF, 0x2C, 0x01}), std::vector<unsigned char>(bytes.begin(), bytes.begin() + 3));
    CGVString back;
    Load(bytes, back);
    EXPECT_EQ(0, back.Compare(s));
}

TEST(CGVStringArchive, TruncatedDataRaisesEndOfFileAndKeepsTheText) {
    CGVString s("old");
    try {
        Load({0x05, 'a', 'b'}, s);
        FAIL() << "no exception";
    } catch (CArchiveException const& e) {
        EXPECT_EQ(CArchiveException::endOfFile, e.m_cause);
    }
    EXPECT_STREQ("old", s);
}
