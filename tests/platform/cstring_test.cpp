// CStringT<char>: sharing, bounds, substrings, searching, editing, resources.
#include <gtest/gtest.h>

#include "gvlib/platform/afxexcept.h"
#include "gvlib/platform/afxstr.h"
#include "gvlib/platform/gvplatform.h"

TEST(CStringT, CopiesShareStorageUntilOneChanges) {
    CString a("shared text");
    CString b(a);
    CString c;
    c = b;
    EXPECT_EQ(a.GetString(), b.GetString());
    EXPECT_EQ(a.GetString(), c.GetString());
    b.SetAt(0, 'S');
    EXPECT_NE(a.GetString(), b.GetString());
    EXPECT_STREQ("shared text", a);
    EXPECT_STREQ("Shared text", b);
    EXPECT_EQ(a.GetString(), c.GetString());
    c += "!";
    EXPECT_STREQ("shared text", a);
    EXPECT_STREQ("shared text!", c);
}

TEST(CStringT, GetBufferOnASharedCopyDoesNotChangeTheOther) {
    CString a("abc");
    CString b(a);
    char* p = b.GetBuffer(10);
    p[0] = 'x';
    b.ReleaseBuffer();
    EXPECT_STREQ("abc", a);
    EXPECT_STREQ("xbc", b);
    CString locked("locked");
    locked.LockBuffer();
    locked.GetBuffer(100);  // a new block stays locked
    locked.ReleaseBuffer();
    CString copy(locked);
    EXPECT_NE(copy.GetString(), locked.GetString());
    locked.UnlockBuffer();
}

TEST(CStringT, IndexesOutsideTheTextAreRefused) {
    CString s("abc");
    EXPECT_EQ('\0', s.GetAt(3));  // the terminator may be read
    EXPECT_THROW(s.GetAt(4), CInvalidArgException);
    EXPECT_THROW(s.GetAt(-1), CInvalidArgException);
    EXPECT_THROW(s[-1], CInvalidArgException);
    EXPECT_THROW(s.SetAt(3, 'x'), CInvalidArgException);
    EXPECT_THROW(s.SetAt(-1, 'x'), CInvalidArgException);
    EXPECT_THROW(s.Truncate(4), CInvalidArgException);
    EXPECT_THROW(s.ReleaseBufferSetLength(-1), CInvalidArgException);
    EXPECT_THROW(s.SetString("x", -1), CInvalidArgException);
    EXPECT_THROW(s.Append("x", -1), CInvalidArgException);
    EXPECT_THROW(s.Append(nullptr, 3), CInvalidArgException);
    EXPECT_THROW(s.ReleaseBufferSetLength(1 << 20), CInvalidArgException);
    EXPECT_STREQ("abc", s);
}

TEST(CStringT, SubstringsClampTheirArguments) {
    CString s("abcdef");
    struct Row {
        CString got;
        const char* want;
    } rows[] = {
        {s.Mid(-2), "abcdef"}, {s.Mid(2), "cdef"},       {s.Mid(9), ""},          {s.Mid(1, 2), "bc"},
        {s.Mid(1, -3), ""},    {s.Mid(4, 100), "ef"},    {s.Left(-1), ""},        {s.Left(3), "abc"},
        {s.Left(99), "abcdef"}, {s.Right(2), "ef"},      {s.Right(99), "abcdef"}, {s.Right(-5), ""},
    };
    for (auto& row : rows)
        EXPECT_STREQ(row.want, row.got);
}

TEST(CStringT, EmbeddedNulsAreKeptByCountedOperations) {
    CString s("ab\0cd", 5);
    EXPECT_EQ(5, s.GetLength());
    CString copy(s);
    EXPECT_EQ(5, copy.GetLength());
    CString joined = s + "x";
    EXPECT_EQ(6, joined.GetLength());
    EXPECT_EQ('x', joined.GetAt(5));
    EXPECT_EQ(3, s.Mid(2).GetLength());
    s.SetString(nullptr, 3);  // no source: empty, whatever the count
    EXPECT_EQ(0, s.GetLength());
}

TEST(CStringT, Searching) {
    CString s("a.b.c");
    EXPECT_EQ(1, s.Find('.'));
    EXPECT_EQ(3, s.Find('.', 2));
    EXPECT_EQ(-1, s.Find('.', 5));
    EXPECT_EQ(-1, s.Find('.', -1));
    EXPECT_EQ(2, s.Find("b."));
    EXPECT_EQ(-1, s.Find("b.", 3));
    EXPECT_EQ(1, s.FindOneOf("c."));
    EXPECT_EQ(-1, s.FindOneOf("xyz"));
    EXPECT_EQ(3, s.ReverseFind('.'));
    EXPECT_EQ(-1, s.ReverseFind('z'));
}

TEST(CStringT, Editing) {
    CString s(" \t x y \r\n");
    s.TrimLeft();
    EXPECT_STREQ("x y \r\n", s);
    s.TrimRight();
    EXPECT_STREQ("x y", s);
    EXPECT_EQ(1, s.Replace(' ', '_'));
    EXPECT_STREQ("x_y", s);
    CString t("aXbXc");
    EXPECT_EQ(2, t.Replace("X", "--"));
    EXPECT_STREQ("a--b--c", t);
    EXPECT_EQ(0, t.Replace("", "z"));
    CString u("MiXeD \xC4");
    u.MakeLower();
    EXPECT_STREQ("mixed \xC4", u);  // case mapping of the "C" locale: ASCII only
    EXPECT_STREQ("MIXED \xC4", u.MakeUpper());
    EXPECT_STREQ("\xC4 DEXIM", u.MakeReverse());
    CString v("abc");
    v.Insert(1, "XY");
    EXPECT_STREQ("aXYbc", v);
    v.Delete(0, 2);
    EXPECT_STREQ("Ybc", v);
    CString w("..x..");
    w.Trim('.');
    EXPECT_STREQ("x", w);
    struct Row {
        const char* text;
        const char* set;
        const char* left;
        const char* right;
    } rows[] = {
        {"xyaxy", "yx", "axy", "xya"}, {"xx", "x", "", ""}, {"ab", "x", "ab", "ab"},
        {"ab", "", "ab", "ab"},       {"ab", nullptr, "ab", "ab"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.text);
        CString left(row.text), right(row.text);
        EXPECT_STREQ(row.left, left.TrimLeft(row.set));
        EXPECT_STREQ(row.right, right.TrimRight(row.set));
    }
}

TEST(CStringT, ComparisonIsByUnsignedBytes) {
    CString s("abc");
    EXPECT_EQ(0, s.Compare("abc"));
    EXPECT_LT(s.Compare("abd"), 0);
    EXPECT_GT(s.Compare("ABC"), 0);
    EXPECT_LT(s.Compare("abc\xE4"), 0);
    EXPECT_EQ(0, s.CompareNoCase("ABC"));
    // Case folding goes to lower case, so '_' (95) sorts before 'a' (97).
    EXPECT_GT(CString("a").CompareNoCase("_"), 0);
    EXPECT_EQ(0, s.Collate("abc"));
    EXPECT_LT(CString("B").Collate("a"), 0);  // byte order in the "C" locale
}

TEST(CStringT, FormatReplacesTheText) {
    CString s("old");
    s.Format("%d-%s-%c", -7, "x", 'y');
    EXPECT_STREQ("-7-x-y", s);
    s.AppendFormat("%05.1f", 2.25);
    EXPECT_STREQ("-7-x-y002.3", s);
}

TEST(CStringT, LoadStringReadsTheHostStringTable) {
    gvplatform::ClearStringResources();
    gvplatform::SetStringResource(101, "Text files");
    gvplatform::SetStringResource(102, "");
    CString s("keep");
    EXPECT_FALSE(s.LoadString(100));
    EXPECT_STREQ("keep", s);
    EXPECT_FALSE(s.LoadString(102));  // an empty entry does not exist
    EXPECT_TRUE(s.LoadString(101));
    EXPECT_STREQ("Text files", s);
    gvplatform::SetStringResource(101, nullptr);
    EXPECT_FALSE(s.LoadString(101));
    gvplatform::ClearStringResources();
}

TEST(CStringT, WideTextIsConvertedToTheAnsiCodePage) {
    CString s(L"caf\u00e9 \u20ac");
    EXPECT_STREQ("caf\xE9 \x80", s);
    CString counted(L"abc", 2);
    EXPECT_STREQ("ab", counted);
}
