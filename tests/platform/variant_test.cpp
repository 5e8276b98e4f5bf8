// VARIANT, BSTR, SAFEARRAY, COleVariant, CDBVariant, variant time and COleCurrency.
#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <functional>
#include <new>
#include <vector>

#include "gvlib/platform/afxcurrency.h"
#include "gvlib/platform/allocator.h"
#include "gvlib/platform/afxdb.h"
#include "gvlib/platform/afxdisp.h"
#include "gvlib/platform/afxexcept.h"
#include "gvlib/platform/gvplatform.h"
#include "gvlib/platform/oledate.h"

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
    const struct { COleVariant made; std::function<void()> assign; VARTYPE vt; ULONGLONG bits; } rows[] = {
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
    // The 32-bit codes stay; any other becomes VT_I4, the value in the low half of the data.
    for (VARTYPE code : {VT_ERROR, VT_UI4, VT_INT, VT_UINT})
        EXPECT_EQ(code, COleVariant(int32_t{-2}, code).vt);
    COleVariant date(int32_t{0x12345678}, VT_DATE);
    EXPECT_EQ(VT_I4, date.vt);
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
    std::vector<SAFEARRAYBOUND> most(64, {1, 0});  // 64 dimensions is the limit, not past it
    SAFEARRAY* deep = SafeArrayCreate(VT_UI1, 64, most.data());
    EXPECT_NE(nullptr, deep);
    SafeArrayDestroy(deep);
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
    CDBVariant blob;
    blob.m_dwType = DBVT_BINARY, blob.m_pbinary = new CLongBinary;
    blob.m_pbinary->m_hData = gvplatform::detail::MemAlloc(3), blob.m_pbinary->m_dwDataLength = 3;
    std::memcpy(blob.m_pbinary->m_hData, "xyz", 3);
    EXPECT_EQ(0, std::memcmp(CDBVariant(blob).m_pbinary->m_hData, "xyz", 3));
}

TEST(VariantTime, SplitsDayAndPositiveTimeOfDayInsideTheRange) {
    struct Row { double date; int year, month, day, hour, minute, second, weekday; } const rows[] = {
        {0.0, 1899, 12, 30, 0, 0, 0, 6},    {-5.25, 1899, 12, 25, 6, 0, 0, 1},   {1.5, 1899, 12, 31, 12, 0, 0, 0},
        {25569.0, 1970, 1, 1, 0, 0, 0, 4},  {60.0, 1900, 2, 28, 0, 0, 0, 3},     {61.0, 1900, 3, 1, 0, 0, 0, 4},
        {-657434.0, 100, 1, 1, 0, 0, 0, 5}, {2958465.5, 9999, 12, 31, 12, 0, 0, 5},
        {45356.588298611, 2024, 3, 5, 14, 7, 9, 2},  // rounded to the nearest second
        {2.99999999, 1900, 1, 2, 0, 0, 0, 2},        // 23:59:59.9991 rounds into the next day
        // Outside the range nothing converts and the record is left as it was.
        {-657434.5, 77, 0, 0, 0, 0, 0, 0}, {2958466.5, 77, 0, 0, 0, 0, 0, 0}, {1e300, 77, 0, 0, 0, 0, 0, 0},
        {-1e300, 77, 0, 0, 0, 0, 0, 0},    {std::nan(""), 77, 0, 0, 0, 0, 0, 0},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.date);
        SYSTEMTIME st{};
        st.wYear = 77;
        EXPECT_EQ(row.year != 77, VariantTimeToSystemTime(row.date, &st) != 0);
        const std::vector<int> got = {st.wYear, st.wMonth,  st.wDay,       st.wHour,
                                      st.wMinute, st.wSecond, st.wDayOfWeek, st.wMilliseconds};
        EXPECT_EQ(got, (std::vector<int>{row.year, row.month, row.day, row.hour, row.minute, row.second, row.weekday, 0}));
    }
    EXPECT_FALSE(VariantTimeToSystemTime(0.0, nullptr));
}

TEST(OleCurrency, FormatsMinimalDigitsWithTheLocaleSeparator) {
    struct Row { LONGLONG count; LCID lcid; const char* want; } const rows[] = {
        {125000, 1033, "12.5"},   {125000, 1031, "12,5"},  {120000, 1033, "12"},
        {500, 1033, "0.05"},      {-2500, 1033, "-0.25"},  {-2500, 1031, "-0,25"},
        {0, 1033, "0"},           {1, 1033, "0.0001"},     {123456789012345, 1033, "12345678901.2345"},
        {INT64_MIN, 1033, "-922337203685477.5808"},          {125000, 0x7F, "12.5"},
        {125000, 0xFFFF, "12.5"}, {125000, 0x401, "12.5"}, {125000, 0x429, "12.5"},  // unknown, or beyond the page
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.want);
        CY cy;
        cy.int64 = row.count;
        EXPECT_STREQ(row.want, COleCurrency(cy).Format(0, row.lcid));
    }
}

// The user default locale is the host's setting; null or invalid gives empty text.
TEST(OleCurrency, UserDefaultAndStatus) {
    const COleCurrency cur(12, 5000);
    EXPECT_STREQ("12.5", cur.Format());
    gvplatform::SetUserDefaultLCID(1031);
    EXPECT_STREQ("12,5", cur.Format(0, LANG_USER_DEFAULT));
    gvplatform::SetUserDefaultLCID(1033);
    EXPECT_STREQ("12.5", cur.Format(0, 0x400));
    for (auto status : {COleCurrency::null, COleCurrency::invalid}) {
        COleCurrency other(cur);
        other.SetStatus(status);
        EXPECT_STREQ("", other.Format());
        other.SetCurrency(-1, -5000);
        EXPECT_STREQ("-1.5", other.Format());
    }
}
