// CGVString: access, operators, substrings, value slots, conversions, collation, text and archive forms.
#include <gtest/gtest.h>

#include <cstring>
#include <memory>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "gvlib/platform/afxdb.h"
#include "gvlib/platform/afxdisp.h"
#include "gvlib/platform/afxexcept.h"
#include "gvlib/string/GVString.h"
#include "support/archive_bytes.h"

namespace {

class Other : public CGVObject {};
struct Derived : CGVString { using CGVString::CGVString; };

}  // namespace

TEST(CGVString, ElementAccessPastTheEndAnswersNul) {
    CGVString s("abc");
    EXPECT_EQ(std::string("\0\0\0c", 4), (std::string{s.GetAt(3), s[3], s.GetAt(1000), s[2]}));
    s.SetAt(3, 'x'), s.SetAt(1000, 'x'), s.SetAt(1, 'B');
    EXPECT_STREQ("aBc", s);
    EXPECT_THROW(s.GetAt(-1), CInvalidArgException);
    EXPECT_THROW(s[-1], CInvalidArgException);
    EXPECT_THROW(s.SetAt(-1, 'x'), CInvalidArgException);
}

TEST(CGVString, AllThirtyComparisonOperatorsFollowCompare) {
    const char* texts[] = {"", "a", "abc", "abd", "B", "\xE4"};
    // Forwarding keeps the non-const and the const operands apart.
    auto ops = [](auto&& a, auto&& b) { return std::vector<int>{a == b, a != b, a < b, a > b, a <= b, a >= b}; };
    for (const char* l : texts)
        for (const char* r : texts) {
            SCOPED_TRACE(std::string(l) + " vs " + r);
            CGVString ls(l), rs(r);
            const CGVString& cls = ls;
            int c = ls.Compare(r), rc = rs.Compare(l);
            std::vector<int> want = {c == 0, c != 0, c < 0, c > 0, c <= 0, c >= 0};
            EXPECT_EQ((std::vector<std::vector<int>>{want, want, want, want}),
                      (std::vector<std::vector<int>>{ops(ls, rs), ops(ls, r), ops(cls, rs), ops(cls, r)}));
            // With the text on the left the sense is reversed: "l < s" is "s > l".
            EXPECT_EQ((std::vector<int>{rc == 0, rc != 0, rc > 0, rc < 0, rc >= 0, rc <= 0}), ops(l, rs));
        }
}

// Substrings clamp like the platform's and, with concatenations, stop at the first NUL.
TEST(CGVString, SubstringsAndConcatenations) {
    CGVString s("abcdef"), nul;
    nul.SetString("ab\0cd", 5);
    ASSERT_EQ(5, CGVString(nul).GetLength());
    const std::pair<CGVString, const char*> rows[] = {
        {s.Mid(2), "cdef"}, {s.Mid(-1), "abcdef"}, {s.Mid(10, 2), ""}, {s.Right(2), "ef"}, {s.Left(-4), ""},
        {nul.Mid(0), "ab"}, {nul.Mid(2, 2), ""}, {nul.Left(5), "ab"}, {nul.Right(2), "cd"}, {nul + "x", "ab"},
        {"x" + nul, "xab"}, {nul + 'x', "ab"}, {'x' + nul, "xab"}, {nul + CGVString("z").Left(0), "ab"},
    };
    for (auto const& row : rows)
        EXPECT_EQ(row.second, std::string(row.first.GetString(), static_cast<size_t>(row.first.GetLength()))) << &row - rows;
}

TEST(CGVString, ValueSlots) {
    CGVString s("text");
    s.mClear();  // clearing is the root's, which does nothing
    std::unique_ptr<CGVObject> copy(s.mCopy()), fresh(s.mNew());
    *copy = Other();  // another class leaves the text alone
    EXPECT_STREQ("text", dynamic_cast<CGVString&>(*copy));
    EXPECT_STREQ("", dynamic_cast<CGVString&>(*fresh));
    *fresh = s;
    EXPECT_STREQ("text", dynamic_cast<CGVString&>(*fresh));
}

TEST(CGVString, ConversionFromDatabaseVariants) {
    struct Row { void (*set)(CDBVariant&); const char* want; } const rows[] = {
        {[](CDBVariant& v) { v.m_dwType = DBVT_SHORT, v.m_iVal = -3; }, "-3"},
        {[](CDBVariant& v) { v.m_dwType = DBVT_LONG, v.m_lVal = -7; }, "-7"},
        {[](CDBVariant& v) { v.m_dwType = DBVT_SINGLE, v.m_fltVal = 0.5f; }, "0.5"},
        {[](CDBVariant& v) { v.m_dwType = DBVT_DOUBLE, v.m_dblVal = 0.25; }, "0.3"},
        {[](CDBVariant& v) { v.m_dwType = DBVT_BOOL, v.m_lVal = 1; }, "keep"},
        {[](CDBVariant& v) { v.m_dwType = DBVT_UCHAR, v.m_chVal = 9; }, "keep"},
        {[](CDBVariant& v) { v.m_dwType = DBVT_NULL; }, "keep"},
        {[](CDBVariant& v) { v.m_dwType = DBVT_STRING, v.m_pstring = new CString("s"); }, "s"},
        {[](CDBVariant& v) { v.m_dwType = DBVT_ASCII, v.m_pstring = new CString("a"); }, "a"},
        {[](CDBVariant& v) { v.m_dwType = DBVT_STRING, v.m_pstring = nullptr; }, "keep"},
        {[](CDBVariant& v) { v.m_dwType = DBVT_WSTRING, v.m_pstringW = new CStringW(L"\u20ac1"); }, "\x80" "1"},
    };
    for (const Row& row : rows) {
        CDBVariant v;
        CGVString s("keep");
        row.set(v), s.mConvertFromDBVariant(v);
        EXPECT_STREQ(row.want, s) << &row - rows;
    }
}

TEST(CGVString, ConversionFromOleVariants) {
    COleVariant nullText;
    nullText.vt = VT_BSTR, nullText.bstrVal = nullptr;
    const std::pair<COleVariant, const char*> rows[] = {
        {COleVariant(int32_t{42}), "42"}, {COleVariant(2.25f), "2.3"}, {COleVariant(1.75), "1.8"},
        {COleVariant(short{5}), "keep"},  // VT_I2 is not converted
        {nullText, "keep"},               {COleVariant("AB"), "A"},  // wide text read as narrow stops early
    };
    for (auto const& row : rows) {
        CGVString s("keep");
        s.mConvertFromOleVariant(row.first);
        EXPECT_STREQ(row.second, s) << &row - rows;
    }
    CGVString s("h\xE9 there"), back;
    COleVariant v(int32_t{1});
    s.mConvertToOleVariant(&v);
    s.mConvertToOleVariant(nullptr);
    ASSERT_EQ(VT_BSTR, v.vt);
    EXPECT_EQ(static_cast<UINT>(s.GetLength()), SysStringByteLen(v.bstrVal));
    back.mConvertFromOleVariant(v);
    EXPECT_STREQ(s, back);
}

// The platform comparison under gvSortLCID, minus 2: a derived string compares as a string; any other class first.
TEST(CGVString, CompareUnderTheCollationLocale) {
    struct Row { uint32_t lcid; const char *left, *right; int want; } const rows[] = {
        {1033, "a", "B", -1},    {1033, "abc", "abc", 0}, {1033, "coop", "co-op", -1}, {1033, "\xE4", "z", -1},
        {1053, "\xE4", "z", 1},  {1053, "vb", "wa", 1},   {1034, "cz", "ch", -1},      {3082, "cz", "ch", 1},
        {0x9999, "a", "b", -2},
    };
    EXPECT_EQ(1033u, gvSortLCID);
    for (const Row& row : rows) {
        SCOPED_TRACE(std::to_string(row.lcid) + ": " + row.left + " vs " + row.right);
        GVSetSortLCID(row.lcid);
        EXPECT_EQ(row.lcid, gvSortLCID);
        CGVString l(row.left), r(row.right);
        Derived d(row.right);
        EXPECT_EQ((std::vector<int>{row.want, row.want, row.want == -2 ? -2 : -row.want}),
                  (std::vector<int>{l.mCompare(&r), l.mCompare(&d), r.mCompare(&l)}));
    }
    GVSetSortLCID(1033);
    Other other;
    EXPECT_EQ(std::make_pair(-1, -1), std::make_pair(CGVString("a").mCompare(&other), CGVString("a").mCompare(nullptr)));
}

// The body is counted, so any text comes back; a NUL ends it.
TEST(CGVStringText, BodiesAreCountedSoAnyTextRoundTrips) {
    const std::string texts[] = {"", "a b", " lead", "trail ", "line\nend\r\n", "42 is a number", "\xFF\x80", "T3 x",
                                 std::string("ab\0cd", 5)};
    for (const std::string& text : texts) {
        SCOPED_TRACE(text);
        std::ostringstream os;
        CGVString s, back("old");
        s.SetString(text.data(), static_cast<int>(text.size()));
        os << s;
        EXPECT_EQ("T" + std::to_string(strlen(text.c_str())) + " " + text.c_str() + " ", os.str());
        std::istringstream is(os.str());
        is >> back;
        EXPECT_EQ(std::make_pair(std::string(text.c_str()), true), std::make_pair(std::string(back), is.good()));
    }
}

// An announced body and its terminator must fit the budget beyond one block header; an empty body costs nothing.
TEST(CGVStringText, AnnouncedLengthAgainstTheBudget) {
    struct Row { uint64_t budget; const char* form; bool fits; } const rows[] = {
        {16, "T0  ", true}, {26, "T9 abcdefghi ", true}, {26, "T10 abcdefghij ", false}};
    for (const Row& row : rows) {
        SCOPED_TRACE(row.form);
        gvtest::LoadingPolicy policy(false, row.budget);
        std::istringstream is(row.form);
        CGVString s;
        EXPECT_EQ(!row.fits, [&] { try { is >> s; } catch (CMemoryException&) { return true; } return false; }());
    }
}

TEST(CGVStringArchive, FormKeepsEmbeddedNuls) {
    CGVString s, back("old");
    s.SetString("a\0b", 3);
    std::vector<unsigned char> want = {0x03, 'a', 0x00, 'b'};
    EXPECT_EQ(want, gvtest::Stored(s));
    gvtest::Load(want, back);
    EXPECT_EQ(std::string("a\0b", 3), std::string(back.GetString(), static_cast<size_t>(back.GetLength())));
}
