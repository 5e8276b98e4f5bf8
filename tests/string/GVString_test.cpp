// CGVString: element access, operators, substrings, value slots, conversions.
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "gvlib/core/GVLong.h"
#include "gvlib/platform/afxdb.h"
#include "gvlib/platform/afxdisp.h"
#include "gvlib/platform/afxexcept.h"
#include "gvlib/string/GVString.h"

TEST(CGVString, ElementAccessPastTheEndAnswersNul) {
    CGVString s("abc");
    EXPECT_EQ(std::string("\0\0\0c", 4), (std::string{s.GetAt(3), s[3], s.GetAt(1000), s[2]}));
    s.SetAt(3, 'x');
    s.SetAt(1000, 'x');
    s.SetAt(1, 'B');
    EXPECT_STREQ("aBc", s);
    EXPECT_THROW(s.GetAt(-1), CInvalidArgException);
    EXPECT_THROW(s[-1], CInvalidArgException);
    EXPECT_THROW(s.SetAt(-1, 'x'), CInvalidArgException);
}

TEST(CGVString, AllThirtyComparisonOperatorsFollowCompare) {
    const char* texts[] = {"", "a", "abc", "abd", "B", "\xE4"};
    for (const char* l : texts) {
        for (const char* r : texts) {
            SCOPED_TRACE(std::string(l) + " vs " + r);
            CGVString ls(l), rs(r);
            const CGVString& cls = ls;
            int c = ls.Compare(r);
            std::vector<int> want = {c == 0, c != 0, c < 0, c > 0, c <= 0, c >= 0};
            std::vector<int> members = {ls == rs, ls != rs, ls < rs, ls > rs, ls <= rs, ls >= rs};
            std::vector<int> memberText = {ls == r, ls != r, ls < r, ls > r, ls <= r, ls >= r};
            std::vector<int> freeBoth = {cls == rs, cls != rs, cls < rs, cls > rs, cls <= rs, cls >= rs};
            std::vector<int> freeText = {cls == r, cls != r, cls < r, cls > r, cls <= r, cls >= r};
            // With the text on the left the sense is reversed: "l < s" is "s > l".
            std::vector<int> textLeft = {l == rs, l != rs, l < rs, l > rs, l <= rs, l >= rs};
            int rc = rs.Compare(l);
            std::vector<int> wantLeft = {rc == 0, rc != 0, rc > 0, rc < 0, rc >= 0, rc <= 0};
            EXPECT_EQ(want, members);
            EXPECT_EQ(want, memberText);
            EXPECT_EQ(want, freeBoth);
            EXPECT_EQ(want, freeText);
            EXPECT_EQ(wantLeft, textLeft);
        }
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
    for (auto const& row : rows) {
        SCOPED_TRACE(&row - rows);
        EXPECT_EQ(row.second, std::string(row.first.GetString(), static_cast<size_t>(row.first.GetLength())));
    }
}

TEST(CGVString, ValueSlots) {
    CGVString s("text");
    s.mClear();  // clearing is the root's, which does nothing
    std::unique_ptr<CGVObject> copy(s.mCopy()), fresh(s.mNew());
    EXPECT_STREQ("text", dynamic_cast<CGVString&>(*copy));
    EXPECT_STREQ("", dynamic_cast<CGVString&>(*fresh));
    CGVObject& root = *fresh;
    root = CGVLong(5);  // another class leaves the text alone
    EXPECT_STREQ("", dynamic_cast<CGVString&>(*fresh));
    root = s;
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
        SCOPED_TRACE(row.want);
        CDBVariant v;
        row.set(v);
        CGVString s("keep");
        s.mConvertFromDBVariant(v);
        EXPECT_STREQ(row.want, s);
    }
}

TEST(CGVString, ConversionFromOleVariants) {
    COleVariant nullText;
    nullText.vt = VT_BSTR;
    nullText.bstrVal = nullptr;
    const std::pair<COleVariant, const char*> rows[] = {
        {COleVariant(int32_t{42}), "42"}, {COleVariant(2.25f), "2.3"}, {COleVariant(1.75), "1.8"},
        {COleVariant(short{5}), "keep"},  // VT_I2 is not converted
        {nullText, "keep"},               {COleVariant("AB"), "A"},  // wide text read as narrow stops early
    };
    for (auto const& row : rows) {
        SCOPED_TRACE(row.second);
        CGVString s("keep");
        s.mConvertFromOleVariant(row.first);
        EXPECT_STREQ(row.second, s);
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
