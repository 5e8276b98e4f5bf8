// CGVBuffer: text stream body, archive form and variant conversions.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include "gvlib/buffer/GVBuffer.h"
#include "gvlib/platform/afxarchive.h"
#include "gvlib/platform/afxdb.h"
#include "gvlib/platform/afxdisp.h"
#include "gvlib/platform/afxfile.h"
#include "support/buffer_content.h"
#include "support/archive_bytes.h"

namespace {

using gvtest::Content;
using gvtest::Fill;

using gvtest::Load;
using gvtest::Stored;

}  // namespace

TEST(CGVBufferText, RoundTripsAnyBytes) {
    const std::string contents[] = {"", std::string("a\0 b\n", 5), " ", "V3 xyz", std::string(70000, '\xFF')};
    for (const std::string& content : contents) {
        SCOPED_TRACE(content.size());
        CGVBuffer b;
        Fill(b, content);
        std::ostringstream os;
        os << b;
        EXPECT_EQ("V" + std::to_string(content.size()) + " " + content + " ", os.str());
        std::istringstream is(os.str() + "U1 ");
        std::unique_ptr<CGVObject> back(CGVObject::mNew(is));
        auto* buffer = dynamic_cast<CGVBuffer*>(back.get());
        ASSERT_NE(nullptr, buffer);
        EXPECT_EQ(content, Content(*buffer));
        EXPECT_EQ('U', is.peek());
    }
}

// Every member that reads the content stays inside the block whatever length
// mRollBack set; the sanitiser build catches a read or write past it.
TEST(CGVBuffer, RolledBackLengthsStayInsideTheBlock) {
    for (int32_t length : {-5, 0, 3, 200, 1 << 30}) {
        SCOPED_TRACE(length);
        CGVBuffer b;
        Fill(b, "abcdef");
        b.mRollBack(length);
        EXPECT_EQ(length, b.mGetLength());
        EXPECT_NE(nullptr, static_cast<char const*>(b));
        b.mIsNull();
        CGVBuffer copy;
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

TEST(CGVBufferArchive, ExactBytes) {
    // 70000 does not fit the 16-bit count: FFFF, then 32 bits.
    std::vector<BYTE> long70000 = {0xFF, 0xFF, 0x70, 0x11, 0x01, 0x00};
    long70000.resize(70006, 'z');
    const std::pair<std::string, std::vector<BYTE>> rows[] = {
        {"", {0x00, 0x00}},
        {"ab", {0x02, 0x00, 0x61, 0x62}},
        {std::string("\0\xFF", 2), {0x02, 0x00, 0x00, 0xFF}},
        {std::string(70000, 'z'), long70000},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.first.size());
        CGVBuffer b;
        Fill(b, row.first);
        EXPECT_EQ(row.second, Stored(b));
        CGVBuffer back;
        Fill(back, "previous");
        Load(row.second, back);
        EXPECT_EQ(row.first, Content(back));
    }
}

TEST(CGVBufferVariant, FromOleVariant) {
    CGVBuffer b;
    COleVariant text("hi", VT_BSTRT);
    b.mConvertFromOleVariant(text);
    EXPECT_EQ(std::string("hi\0", 3), Content(b));

    SAFEARRAY* array = SafeArrayCreateVector(VT_UI1, 0, 3);
    void* data = nullptr;
    ASSERT_EQ(S_OK, SafeArrayAccessData(array, &data));
    std::memcpy(data, "\x01\x00\x02", 3);
    SafeArrayUnaccessData(array);
    VARIANT raw;
    VariantInit(&raw);
    raw.vt = VT_ARRAY | VT_UI1;
    raw.parray = array;
    COleVariant bytes(raw);
    VariantClear(&raw);
    b.mConvertFromOleVariant(bytes);
    EXPECT_EQ(std::string("\x01\x00\x02", 3), Content(b));

    VARIANT emptyRaw;
    VariantInit(&emptyRaw);
    emptyRaw.vt = VT_ARRAY | VT_UI1;
    emptyRaw.parray = SafeArrayCreateVector(VT_UI1, 0, 0);
    COleVariant empty(emptyRaw);
    VariantClear(&emptyRaw);
    b.mConvertFromOleVariant(empty);
    EXPECT_EQ(0, b.mGetLength());

    Fill(b, "kept");
    COleVariant number(LONG{0x1234});
    b.mConvertFromOleVariant(number);  // not an array: unchanged
    EXPECT_EQ("kept", Content(b));
}

TEST(CGVBufferVariant, ToOleVariantStopsAtTheFirstNul) {
    CGVBuffer b;
    Fill(b, std::string("ab\0cd", 5));
    COleVariant out;
    b.mConvertToOleVariant(&out);
    ASSERT_EQ(VT_BSTR, out.vt);
    EXPECT_EQ(2u, SysStringLen(out.bstrVal));
    CGVBuffer none;
    none.mConvertToOleVariant(&out);
    EXPECT_EQ(0u, SysStringLen(out.bstrVal));
}

TEST(CGVBufferVariant, FromDBVariant) {
    CGVBuffer b;
    CDBVariant narrow;
    narrow.m_dwType = DBVT_STRING;
    narrow.m_pstring = new CString("abc");
    b.mConvertFromDBVariant(narrow);
    EXPECT_EQ(std::string("abc\0", 4), Content(b));
    CDBVariant wide;
    wide.m_dwType = DBVT_WSTRING;
    wide.m_pstringW = new CStringW(L"\u00e9t\u00e9");
    b.mConvertFromDBVariant(wide);
    EXPECT_EQ(std::string("\xE9t\xE9\0", 4), Content(b));
    CDBVariant number;
    number.m_dwType = DBVT_LONG;
    number.m_lVal = 5;
    b.mConvertFromDBVariant(number);
    EXPECT_EQ(std::string("\xE9t\xE9\0", 4), Content(b));
}
