// VARIANT, BSTR, SAFEARRAY, COleVariant and CDBVariant.
#include <gtest/gtest.h>

#include <cstring>

#include "gvlib/platform/afxdb.h"
#include "gvlib/platform/afxdisp.h"

TEST(Bstr, NarrowBytesTravelUnconverted) {
    COleVariant v("h\xE9llo", VT_BSTRT);
    ASSERT_EQ(VT_BSTR, v.vt);
    EXPECT_EQ(5u, SysStringByteLen(v.bstrVal));
    EXPECT_STREQ("h\xE9llo", reinterpret_cast<const char*>(v.bstrVal));
    COleVariant copy;
    copy = v;  // a copy keeps the bytes as they are
    EXPECT_EQ(5u, SysStringByteLen(copy.bstrVal));
    EXPECT_EQ(0, std::memcmp(copy.bstrVal, "h\xE9llo", 5));
    EXPECT_TRUE(copy == v);
    EXPECT_FALSE(COleVariant(int32_t{1}) == COleVariant(int32_t{2}));
}

TEST(Bstr, CountedStringsTakeTheSixteenBitWideForm) {
    BSTR plain = SysAllocString(u"abc");
    EXPECT_EQ(3u, SysStringLen(plain));
    SysFreeString(plain);
    COleVariant v;
    v = CString("A\x80");
    ASSERT_EQ(VT_BSTR, v.vt);
    ASSERT_EQ(2u, SysStringLen(v.bstrVal));
    EXPECT_EQ(u'A', v.bstrVal[0]);
    EXPECT_EQ(u'\u20AC', v.bstrVal[1]);
    EXPECT_EQ(0, v.bstrVal[2]);
    COleVariant w("A\x80");
    EXPECT_TRUE(w == v);
}

TEST(OleVariant, ScalarConstructorsSetTypeAndValue) {
    EXPECT_EQ(VT_I4, COleVariant(int32_t{-3}).vt);
    EXPECT_EQ(VT_I2, COleVariant(short{2}).vt);
    EXPECT_EQ(VT_UI1, COleVariant(BYTE{2}).vt);
    EXPECT_EQ(VT_R4, COleVariant(1.5f).vt);
    EXPECT_EQ(VT_R8, COleVariant(1.5).vt);
    COleVariant flag(int32_t{5}, VT_BOOL);
    EXPECT_EQ(VARIANT_TRUE, flag.boolVal);
    // Any other code keeps the 32 bits as given in the low half of the data.
    COleVariant date(int32_t{0x12345678}, VT_DATE);
    EXPECT_EQ(VT_DATE, date.vt);
    EXPECT_EQ(0x12345678LL, date.llVal);
}

TEST(OleVariant, ClearReleasesAndEmpties) {
    COleVariant v("text");
    EXPECT_EQ(S_OK, VariantClear(&v));
    EXPECT_EQ(VT_EMPTY, v.vt);
    EXPECT_EQ(S_OK, VariantClear(&v));
}

TEST(SafeArray, AccessIsBalancedAndLocksTheArray) {
    SAFEARRAY* psa = SafeArrayCreateVector(VT_UI1, 0, 4);
    ASSERT_NE(nullptr, psa);
    EXPECT_EQ(4u, psa->rgsabound[0].cElements);
    LONG bound = -7;
    VARTYPE vt = VT_EMPTY;
    EXPECT_EQ(S_OK, SafeArrayGetLBound(psa, 1, &bound));
    EXPECT_EQ(0, bound);
    EXPECT_EQ(S_OK, SafeArrayGetVartype(psa, &vt));
    EXPECT_EQ(VT_UI1, vt);
    EXPECT_EQ(E_INVALIDARG, SafeArrayGetVartype(psa, nullptr));
    void* data = nullptr;
    ASSERT_EQ(S_OK, SafeArrayAccessData(psa, &data));
    std::memcpy(data, "wxyz", 4);
    EXPECT_EQ(DISP_E_ARRAYISLOCKED, SafeArrayDestroy(psa));
    EXPECT_EQ(S_OK, SafeArrayUnaccessData(psa));
    EXPECT_EQ(E_UNEXPECTED, SafeArrayUnaccessData(psa));
    COleVariant v;
    v.vt = VT_ARRAY | VT_UI1;
    v.parray = psa;
    COleVariant copy(v);
    EXPECT_NE(psa, copy.parray);
    EXPECT_EQ(0, std::memcmp(copy.parray->pvData, "wxyz", 4));
    EXPECT_EQ(nullptr, SafeArrayCreateVector(VT_BSTR, 0, 1));  // unsupported element type
    EXPECT_NE(S_OK, SafeArrayAccessData(nullptr, &data));
}

TEST(DBVariant, OwnsAndCopiesItsValues) {
    CDBVariant v;
    v.m_dwType = DBVT_STRING;
    v.m_pstring = new CString("abc");
    CDBVariant copy(v);
    EXPECT_NE(v.m_pstring, copy.m_pstring);
    EXPECT_STREQ("abc", *copy.m_pstring);
    v.Clear();
    EXPECT_EQ(DBVT_NULL, v.m_dwType);
    CDBVariant wide;
    wide.m_dwType = DBVT_WSTRING;
    wide.m_pstringW = new CStringW(L"w");
    CDBVariant date;
    date.m_dwType = DBVT_DATE;
    date.m_pdate = new TIMESTAMP_STRUCT{2004, 3, 7, 14, 5, 9, 0};
    date = wide;
    EXPECT_STREQ(L"w", *date.m_pstringW);
}
