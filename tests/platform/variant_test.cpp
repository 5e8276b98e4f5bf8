// VARIANT, BSTR, SAFEARRAY, COleVariant and CDBVariant.
#include <gtest/gtest.h>

#include <cstring>
#include <functional>
#include <new>

#include "gvlib/platform/afxdb.h"
#include "gvlib/platform/afxdisp.h"
#include "gvlib/platform/afxexcept.h"

TEST(Bstr, NarrowBytesTravelUnconvertedAndCountedTextWidens) {
    COleVariant v("h\xE9llo", VT_BSTRT);
    ASSERT_EQ(VT_BSTR, v.vt);
    COleVariant copy;
    copy = v;  // a copy keeps the bytes as they are
    EXPECT_EQ(5u, SysStringByteLen(copy.bstrVal));
    EXPECT_EQ(0, std::memcmp(copy.bstrVal, "h\xE9llo", 6));
    EXPECT_TRUE(copy == v);
    EXPECT_FALSE(COleVariant(int32_t{1}) == COleVariant(int32_t{2}));
    BSTR plain = SysAllocString(u"abc");
    EXPECT_EQ(3u, SysStringLen(plain));
    SysFreeString(plain);
    COleVariant w("old", VT_BSTRT);
    w = CString("A\x80");  // the old string is released
    ASSERT_EQ(VT_BSTR, w.vt);
    ASSERT_EQ(2u, SysStringLen(w.bstrVal));
    EXPECT_EQ(0, std::memcmp(w.bstrVal, u"A\u20AC", 6));
    EXPECT_TRUE(COleVariant("A\x80") == w);
    EXPECT_TRUE(w == static_cast<LPCVARIANT>(&w));
    EXPECT_FALSE(w == static_cast<LPCVARIANT>(nullptr));
    EXPECT_EQ(S_OK, VariantClear(&w));
    EXPECT_TRUE(w.vt == VT_EMPTY && VariantClear(&w) == S_OK);
}

TEST(OleVariant, ScalarConstructorsSetTypeAndValue) {
    // A new variant is empty whatever the memory held before.
    alignas(COleVariant) unsigned char raw[sizeof(COleVariant)];
    std::memset(raw, 0xA5, sizeof raw);
    EXPECT_EQ(VT_EMPTY, (new (raw) COleVariant)->vt);
    // Each row narrower than the one before, so a stale wider value would show.
    COleVariant v("text");
    const struct {
        COleVariant made;
        std::function<void()> assign;
        VARTYPE vt;
        ULONGLONG bits;
    } rows[] = {
        {COleVariant(1.5), [&] { v = 1.5; }, VT_R8, 0x3FF8000000000000ull},
        {COleVariant(LONGLONG{-2}), [&] { v = LONGLONG{-2}; }, VT_I8, ~1ull},
        {COleVariant(int32_t{-2}), [&] { v = LONG{-2}; }, VT_I4, 0xFFFFFFFEull},
        {COleVariant(1.5f), [&] { v = 1.5f; }, VT_R4, 0x3FC00000ull},
        {COleVariant(short{-2}), [&] { v = short{-2}; }, VT_I2, 0xFFFEull},
        {COleVariant(BYTE{0x7F}), [&] { v = BYTE{0x7F}; }, VT_UI1, 0x7Full},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.vt);
        row.assign();
        for (const COleVariant* got : {&row.made, static_cast<const COleVariant*>(&v)})
            EXPECT_TRUE(got->vt == row.vt && got->ullVal == row.bits);
        EXPECT_TRUE(COleVariant(static_cast<LPCVARIANT>(&v)) == v);
        EXPECT_FALSE(v == COleVariant());
    }
    v = ULONGLONG{5};
    VARIANT handed = v.Detach();  // hands the value over and leaves the variant empty
    EXPECT_EQ(VT_EMPTY, v.vt);
    v.Attach(handed);
    EXPECT_TRUE(handed.vt == VT_EMPTY && v.vt == VT_UI8 && v.ullVal == 5u);
    EXPECT_EQ(VARIANT_TRUE, COleVariant(int32_t{5}, VT_BOOL).boolVal);
    // Any other code keeps the 32 bits as given in the low half of the data.
    COleVariant date(int32_t{0x12345678}, VT_DATE);
    EXPECT_EQ(VT_DATE, date.vt);
    EXPECT_EQ(0x12345678LL, date.llVal);
}

TEST(SafeArray, AccessIsBalancedAndLocksTheArray) {
    SAFEARRAY* psa = SafeArrayCreateVector(VT_UI1, 0, 4);
    ASSERT_NE(nullptr, psa);
    EXPECT_EQ(4u, psa->rgsabound[0].cElements);
    LONG bound = -7;
    VARTYPE vt = VT_EMPTY;
    EXPECT_TRUE(SafeArrayGetLBound(psa, 1, &bound) == S_OK && bound == 0);
    EXPECT_TRUE(SafeArrayGetVartype(psa, &vt) == S_OK && vt == VT_UI1);
    EXPECT_EQ(E_INVALIDARG, SafeArrayGetVartype(psa, nullptr));
    EXPECT_EQ(E_INVALIDARG, SafeArrayGetLBound(nullptr, 1, &bound));
    EXPECT_EQ(E_INVALIDARG, SafeArrayGetLBound(psa, 1, nullptr));
    COleVariant v, grid;
    v.vt = grid.vt = VT_ARRAY | VT_UI1;
    v.parray = psa;
    void* data = nullptr;
    ASSERT_EQ(S_OK, SafeArrayAccessData(psa, &data));
    std::memcpy(data, "wxyz", 4);
    EXPECT_EQ(DISP_E_ARRAYISLOCKED, SafeArrayDestroy(psa));
    EXPECT_THROW(v = COleVariant(1.5), COleException);  // nor can a variant drop it
    EXPECT_EQ(psa, v.parray);
    EXPECT_EQ(S_OK, SafeArrayUnaccessData(psa));
    EXPECT_EQ(E_UNEXPECTED, SafeArrayUnaccessData(psa));
    COleVariant copy(v);
    EXPECT_NE(psa, copy.parray);
    EXPECT_EQ(0, std::memcmp(copy.parray->pvData, "wxyz", 4));
    SAFEARRAYBOUND dims[] = {{2, 0}, {3, 1}};  // a copy takes every dimension's elements
    grid.parray = SafeArrayCreate(VT_UI1, 2, dims);
    ASSERT_NE(nullptr, grid.parray);
    std::memcpy(grid.parray->pvData, "abcdef", 6);
    EXPECT_EQ(0, std::memcmp(COleVariant(grid).parray->pvData, "abcdef", 6));
    EXPECT_EQ(nullptr, SafeArrayCreateVector(VT_BSTR, 0, 1));  // unsupported element type
    EXPECT_NE(S_OK, SafeArrayAccessData(nullptr, &data));
}

TEST(DBVariant, OwnsAndCopiesItsValues) {
    CDBVariant v;
    v.m_dwType = DBVT_STRING, v.m_pstring = new CString("abc");
    CDBVariant copy(v);
    EXPECT_NE(v.m_pstring, copy.m_pstring);
    EXPECT_STREQ("abc", *copy.m_pstring);
    v.Clear();
    EXPECT_EQ(DBVT_NULL, v.m_dwType);
    EXPECT_EQ(0.0, v.m_dblVal);  // no dangling pointer left behind
    CDBVariant number, wide, date;
    number.m_dwType = DBVT_DOUBLE, number.m_dblVal = 2.5;
    EXPECT_EQ(2.5, CDBVariant(number).m_dblVal);
    wide.m_dwType = DBVT_WSTRING, wide.m_pstringW = new CStringW(L"w");
    date.m_dwType = DBVT_DATE;
    date.m_pdate = new TIMESTAMP_STRUCT{2004, 3, 7, 14, 5, 9, 0};
    date = wide;
    EXPECT_STREQ(L"w", *date.m_pstringW);
}
