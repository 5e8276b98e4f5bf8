// CStringT<char>: sharing, bounds, substrings, searching, editing, resources.
#include <gtest/gtest.h>

#include <string>

#include <functional>
#include <iterator>

#include "gvlib/platform/afxexcept.h"
#include "gvlib/platform/afxstr.h"
#include "gvlib/platform/gvplatform.h"

TEST(CStringT, CopiesShareStorageUntilOneChanges) {
    CString a("shared text"), b(a), c, d(a);
    c = b;
    EXPECT_EQ(a.GetString(), c.GetString());
    b.SetAt(0, 'S');
    c += "!";
    d.GetBuffer(10)[0] = 'x';
    d.ReleaseBuffer();
    EXPECT_STREQ("shared text", a);
    EXPECT_STREQ("Shared text", b);
    EXPECT_STREQ("shared text!", c);
    EXPECT_STREQ("xhared text", d);
    CString locked("locked");
    locked.LockBuffer();
    EXPECT_STREQ("locked", locked.GetBuffer(4096));  // a grown block keeps the text and stays locked
    locked.ReleaseBuffer();
    CString copy(locked);
    EXPECT_NE(copy.GetString(), locked.GetString());
    EXPECT_STREQ("locked", copy);
    const char* block = locked.GetString();
    locked.SetAt(0, 'L');  // a locked block is changed in place
    EXPECT_TRUE(block == locked.GetString() && std::string("Locked") == locked.GetString());
    locked.UnlockBuffer();
    CString empty;
    EXPECT_NE(nullptr, empty.GetBuffer(0));  // a block of its own even for no text
    empty.ReleaseBuffer();
    EXPECT_EQ(0, empty.GetLength());
}

// Each share given up is counted: the string left alone with a block writes
// into it in place, and an unlocked block is shared by copies again.
TEST(CStringT, TheLastOwnerWritesInPlace) {
    CString a("text");
    const char* block = a.GetString();
    {
        CString forked(a), dropped(a);
        forked.SetAt(0, 'n');
    }
    a.SetAt(0, 'T');
    EXPECT_EQ(block, a.GetString());
    a.LockBuffer();
    a.UnlockBuffer();
    CString copy(a);
    EXPECT_EQ(block, copy.GetString());
    copy.UnlockBuffer();  // never locked: its share still counts
    copy.SetAt(0, 'C');
    EXPECT_STREQ("Text", a);
    a.LockBuffer();
    a = "new";  // a locked block keeps its text in place
    EXPECT_TRUE(block == a.GetString() && std::string("new") == a.GetString());
    a.UnlockBuffer();
}

TEST(CStringT, BadIndexesAndCountsAreRefused) {
    CString s("abc");
    EXPECT_EQ('\0', s.GetAt(3));  // the terminator may be read, but a search from it finds nothing
    EXPECT_EQ(-1, s.Find('\0', 3));
    int start = -1;
    const std::function<void()> refused[] = {
        [&] { s.GetAt(4); },        [&] { s.GetAt(-1); },           [&] { s[-1]; },
        [&] { s.SetAt(3, 'x'); },   [&] { s.SetAt(-1, 'x'); },      [&] { s.Truncate(4); },
        [&] { s.SetString("x", -1); }, [&] { s.Append("x", -1); }, [&] { s.Append(nullptr, 3); },
        [&] { s.ReleaseBufferSetLength(-1); }, [&] { s.ReleaseBufferSetLength(1 << 20); },
        [&] { s.Tokenize(" ", start); }, [&] { s.AppendFormat(nullptr); }, [&] { s.Format(nullptr); },
    };
    for (size_t i = 0; i < std::size(refused); ++i) {
        SCOPED_TRACE(i);
        EXPECT_THROW(refused[i](), CInvalidArgException);
        EXPECT_STREQ("abc", s);
    }
}

TEST(CStringT, SubstringsAndSearchesClampTheirArguments) {
    const CString s("abcdef"), t("a.b.c");
    const std::pair<CString, const char*> rows[] = {  // the string value's table has the other clamps
        {s.Mid(1, 2), "bc"}, {s.Mid(1, -3), ""}, {s.Mid(4, 100), "ef"}, {s.Left(99), "abcdef"}, {s.Right(99), "abcdef"},
        {s.Right(-5), ""}};
    for (const auto& row : rows)
        EXPECT_STREQ(row.second, row.first);
    const int found[] = {t.Find('.'),      t.Find('.', 2),  t.Find('.', 5),         t.Find('.', -1),
                         t.Find("b."),     t.Find("b.", 3), t.FindOneOf("c."),      t.FindOneOf("xyz"),
                         t.ReverseFind('.'), t.ReverseFind('z')};
    const int want[] = {1, 3, -1, -1, 2, -1, 1, -1, 3, -1};
    for (size_t i = 0; i < std::size(want); ++i)
        EXPECT_EQ(want[i], found[i]) << "search " << i;
    // Tokens, then an empty result with the position set to -1; no tokens: the rest.
    CString got;
    int start = 0;
    for (CString token = t.Tokenize(". ", start); start != -1; token = t.Tokenize(". ", start))
        got += token + "|";
    EXPECT_STREQ("a|b|c|", got);
    EXPECT_STREQ(".c", t.Tokenize("", start = 3));
    EXPECT_EQ(3, start);
    EXPECT_STREQ("", t.Tokenize("", start = 5));
    EXPECT_EQ(-1, start);
    CString nuls("ab\0cd", 5);
    nuls.SetString(nullptr, 3);  // no source: empty, whatever the count
    EXPECT_EQ(0, nuls.GetLength());
}

TEST(CStringT, Editing) {
    CString s(" \t x_y \r\n");
    EXPECT_STREQ("x_y \r\n", s.TrimLeft());
    EXPECT_STREQ("x_y", s.TrimRight());
    EXPECT_EQ(1, s.Replace('_', ' '));
    EXPECT_STREQ("x y", s);
    CString t("aXbXc");
    EXPECT_EQ(2, t.Replace("X", "--"));
    EXPECT_EQ(0, t.Replace("", "z"));
    EXPECT_STREQ("a--b--c", t);
    EXPECT_EQ(4, t.Remove('-'));
    EXPECT_EQ(std::string("abc"), std::string(t.GetString(), static_cast<size_t>(t.GetLength())));
    CString u("AzZa@[`{ \xC4"), v("abcd"), w("..x.."), nuls("\0\0", 2);
    EXPECT_STREQ("azza@[`{ \xC4", u.MakeLower());  // case mapping of the "C" locale: ASCII only
    EXPECT_STREQ("AZZA@[`{ \xC4", u.MakeUpper());
    EXPECT_STREQ("\xC4 {`[@AZZA", u.MakeReverse());
    v.Insert(1, "XY");
    EXPECT_EQ(4, v.Delete(0, 2));
    EXPECT_EQ(4, v.Delete(1, -1));  // a negative count deletes nothing
    EXPECT_EQ(1, v.Delete(1, 99));  // the count stops at the end
    EXPECT_STREQ("Y", v);
    EXPECT_STREQ("x", w.Trim('.'));
    EXPECT_EQ(0, nuls.TrimRight('\0').GetLength());  // stops at the start, whatever lies before it
    const struct {
        const char *text, *set, *left, *right;
    } rows[] = {{"xyaxy", "yx", "axy", "xya"}, {"xx", "x", "", ""}, {"ab", "x", "ab", "ab"}, {"ab", "", "ab", "ab"},
                {"ab", nullptr, "ab", "ab"}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.text);
        CString left(row.text), right(row.text);
        EXPECT_STREQ(row.left, left.TrimLeft(row.set));
        EXPECT_STREQ(row.right, right.TrimRight(row.set));
    }
}

TEST(CStringT, ComparisonIsByUnsignedBytes) {
    const struct {
        const char *a, *b;
        int cmp, nocase, collate;  // signs
    } rows[] = {
        {"abc", "abc", 0, 0, 0}, {"abc", "abd", -1, -1, -1}, {"abc", "ABC", 1, 0, 1}, {"abc", "abc\xE4", -1, -1, -1},
        {"a", "_", 1, 1, 1},  // case folding goes to lower case: '_' (95) sorts before 'a' (97)
        {"B", "a", -1, 1, -1},  // byte order in the "C" locale
    };
    auto sign = [](int v) { return (v > 0) - (v < 0); };
    for (const auto& row : rows) {
        SCOPED_TRACE(std::string(row.a) + " " + row.b);
        const CString a(row.a);
        EXPECT_EQ(row.cmp, sign(a.Compare(row.b)));
        EXPECT_EQ(row.nocase, sign(a.CompareNoCase(row.b)));
        EXPECT_EQ(row.collate, sign(a.Collate(row.b)));
    }
    EXPECT_EQ(1, sign(CString("a").CompareNoCase(nullptr)));  // no text compares as empty
}

TEST(CStringT, FormatLoadAndWideText) {
    CString s("old");
    s.AppendFormat("%d", -7);
    EXPECT_STREQ("old-7", s);
    gvplatform::ClearStringResources();
    gvplatform::SetStringResource(101, "Text files");
    gvplatform::SetStringResource(102, "");
    EXPECT_FALSE(s.LoadString(100));
    EXPECT_FALSE(s.LoadString(102));  // an empty entry does not exist
    EXPECT_STREQ("old-7", s);
    EXPECT_TRUE(s.LoadString(101));
    EXPECT_STREQ("Text files", s);
    gvplatform::SetStringResource(101, nullptr);
    EXPECT_FALSE(s.LoadString(101));
    gvplatform::ClearStringResources();
    EXPECT_STREQ("caf\xE9 \x80", CString(L"caf\u00e9 \u20ac"));  // to the ANSI code page
    EXPECT_STREQ("ab", CString(L"abc", 2));
    EXPECT_TRUE(CString(L"abc", 0).IsEmpty());
    CString wide("was");
    wide = static_cast<const wchar_t*>(nullptr);
    EXPECT_TRUE(wide.IsEmpty());
    EXPECT_STREQ("xxx", CString('x', 3));
    EXPECT_STREQ("ab-cd", "a" + CString("b") + CString("-") + "c" + CString("d"));
}
