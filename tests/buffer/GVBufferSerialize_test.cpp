// CGVBuffer: archive form and variant conversions; its text form is checked in TextStream_test.
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "gvlib/buffer/GVBuffer.h"
#include "gvlib/platform/afxdb.h"
#include "gvlib/platform/afxdisp.h"
#include "gvlib/platform/afxexcept.h"
#include "support/archive_bytes.h"
#include "support/buffer_content.h"

namespace {

using gvtest::Content;
using gvtest::Fill;

COleVariant ByteArray(std::string const& bytes) {
    VARIANT raw;
    VariantInit(&raw);
    raw.vt = VT_ARRAY | VT_UI1;
    raw.parray = SafeArrayCreateVector(VT_UI1, 0, static_cast<ULONG>(bytes.size()));
    std::copy(bytes.begin(), bytes.end(), static_cast<char*>(raw.parray->pvData));
    COleVariant out(raw);
    VariantClear(&raw);
    return out;
}

}  // namespace

TEST(CGVBufferArchive, ExactBytes) {
    // 70000 does not fit the 16-bit count: FFFF, then 32 bits.
    std::vector<BYTE> long70000 = {0xFF, 0xFF, 0x70, 0x11, 0x01, 0x00};
    long70000.resize(70006, 'z');
    const std::pair<std::string, std::vector<BYTE>> rows[] = {
        {"", {0x00, 0x00}}, {"ab", {0x02, 0x00, 0x61, 0x62}}, {std::string("\0\xFF", 2), {0x02, 0x00, 0x00, 0xFF}},
        {std::string(70000, 'z'), long70000}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.first.size());
        CGVBuffer b, back;
        Fill(b, row.first);
        Fill(back, "previous");
        gvtest::Load(row.second, back);
        EXPECT_EQ(std::make_pair(row.second, row.first), std::make_pair(gvtest::Stored(b), Content(back)));
    }
    // A count beyond 32-bit lengths is refused even where the budget allows it.
    gvtest::LoadingPolicy roomy(false, uint64_t{1} << 40);
    for (BYTE top : {0x80, 0xFF}) {
        CGVBuffer kept;
        Fill(kept, "kept");
        EXPECT_THROW(gvtest::Load({0xFF, 0xFF, 0xFF, 0xFF, 0xFF, top, 'z'}, kept), CMemoryException);
        EXPECT_EQ("kept", Content(kept));
    }
}

TEST(CGVBufferVariant, Conversions) {
    CGVBuffer b;
    COleVariant hi("hi", VT_BSTRT), bytes = ByteArray(std::string("\x01\x00\x02", 3)), none = ByteArray(""),
                                    weightless = ByteArray("abc"), number(LONG{0x1234});
    weightless.parray->cbElements = 0;  // elements of no size hold no bytes
    const std::pair<COleVariant const*, std::string> rows[] = {
        {&hi, std::string("hi\0", 3)}, {&bytes, std::string("\x01\x00\x02", 3)},
        {&number, "old"},  // not an array: unchanged
        {&none, ""}, {&weightless, ""}};
    for (auto const& [variant, want] : rows) {
        Fill(b, "old");
        b.mConvertFromOleVariant(*variant);
        EXPECT_EQ(want, Content(b)) << variant->vt;
    }
    weightless.parray->cbElements = 1;
    weightless.parray->rgsabound[0].cElements = INT32_MAX;  // 2 GiB announced: refused before reading
    EXPECT_THROW(b.mConvertFromOleVariant(weightless), CMemoryException);
    EXPECT_TRUE(weightless.parray->cLocks == 0 && b.mGetLength() == 0);  // the access was given back
    weightless.parray->rgsabound[0].cElements = 3;

    Fill(b, std::string("ab\0cd", 5));
    COleVariant out;
    b.mConvertToOleVariant(&out);
    ASSERT_EQ(VT_BSTR, out.vt);
    EXPECT_EQ(u"ab", std::u16string(out.bstrVal, SysStringLen(out.bstrVal)));
    CGVBuffer().mConvertToOleVariant(&out);
    EXPECT_EQ(0u, SysStringLen(out.bstrVal));

    for (DWORD type : {DBVT_STRING, DBVT_ASCII, DBVT_WSTRING, DBVT_LONG}) {
        SCOPED_TRACE(type);
        CDBVariant v;
        v.m_dwType = type;
        if (type == DBVT_WSTRING)
            v.m_pstringW = new CStringW(L"\u00e9t\u00e9");
        else if (type != DBVT_LONG)
            v.m_pstring = new CString("\xE9t\xE9");
        Fill(b, "kept");
        b.mConvertFromDBVariant(v);  // a number leaves the buffer as it was
        EXPECT_EQ(type == DBVT_LONG ? "kept" : std::string("\xE9t\xE9\0", 4), Content(b));
    }
}
