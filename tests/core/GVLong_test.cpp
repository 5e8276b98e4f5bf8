// CGVLong: assignment from other objects, comparison, variants and the archive form.
// Its text form is checked with the other classes' in TextStream_test.
#include <gtest/gtest.h>

#include <climits>
#include <memory>
#include <tuple>
#include <vector>

#include "gvlib/buffer/GVBuffer.h"
#include "gvlib/core/GVLong.h"
#include "gvlib/platform/afxdb.h"
#include "gvlib/platform/afxdisp.h"
#include "gvlib/string/GVString.h"
#include "support/archive_bytes.h"

TEST(CGVLong, EmptyStatesAndBits) {
    CGVLong seven(7), v(0x0F);
    std::unique_ptr<CGVObject> fresh(seven.mNew()), copy(seven.mCopy());
    seven.mClear();
    v |= 0x30;
    const int32_t ored = v.mGetValue();
    v &= 0x12;
    EXPECT_EQ((std::vector<int32_t>{0, 7, 0, 0, 0x3F, 0x12}),
              (std::vector<int32_t>{dynamic_cast<CGVLong&>(*fresh).mGetValue(),
                                    dynamic_cast<CGVLong&>(*copy).mGetValue(), static_cast<int32_t>(seven),
                                    CGVLong().mGetValue(), ored, v.mGetValue()}));
}

TEST(CGVLong, AssignFromStringReadsLikeAtol) {
    const std::pair<const char*, int32_t> rows[] = {
        {"  42abc", 42}, {"abc", 0}, {"", 0}, {"\t\n-17", -17}, {"+8", 8}, {"- 3", 0}, {"0x10", 0},
        {"2147483647", INT32_MAX}, {"2147483648", INT32_MAX}, {"-2147483648", INT32_MIN}, {"-2147483649", INT32_MIN},
        {"99999999999999999999999", INT32_MAX},
    };
    for (auto const& [text, want] : rows) {
        CGVLong v(5);
        v = static_cast<CGVObject const&>(CGVString(text));
        EXPECT_EQ(want, v.mGetValue()) << text;
    }
}

TEST(CGVLong, AssignAndCompareAcrossClasses) {
    CGVLong v(5), nine(9), minus(-3), five(5);
    CGVObject& base = v;
    base = static_cast<CGVObject const&>(nine);
    nine = CGVLong(8);
    EXPECT_NO_THROW(base = CGVBuffer(2));  // another class changes nothing
    EXPECT_EQ(std::make_pair(9, 8), std::make_pair(v.mGetValue(), nine.mGetValue()));
    for (auto [left, right] : {std::pair<CGVLong*, CGVLong*>{&v, &nine}, {&five, &minus}})
        EXPECT_EQ(std::make_tuple(1, -1, 0),
                  std::make_tuple(left->mCompare(right), right->mCompare(left), left->mCompare(left)));
    CGVString text("9");
    EXPECT_EQ(std::make_pair(-1, -1), std::make_pair(v.mCompare(&text), v.mCompare(nullptr)));
}

TEST(CGVLong, Variants) {
    const std::pair<COleVariant, int32_t> rows[] = {
        {COleVariant(-2.7f), -2},         {COleVariant(3.9), 11},  // R8 unchanged
        {COleVariant(short{-300}), -300}, {COleVariant(BYTE{200}), 200},
        {COleVariant(short{-1}, VT_BOOL), 1}, {COleVariant(LONG{123456}), 123456},
        {COleVariant(3e10f), INT32_MIN},  // out of range: the x86 "integer indefinite"
    };
    for (auto const& [variant, want] : rows) {
        CGVLong v(11);
        v.mConvertFromOleVariant(variant);
        EXPECT_EQ(want, v.mGetValue()) << variant.vt;
    }
    COleVariant out;
    CGVLong(-9).mConvertToOleVariant(&out);
    EXPECT_TRUE(out.vt == VT_I4 && out.lVal == -9);
    const std::tuple<DWORD, int32_t, int32_t> dbRows[] = {
        {DBVT_BOOL, -1, -1},        {DBVT_BOOL, 2, 0},         {DBVT_BOOL, 1, 1},          {DBVT_UCHAR, 0x7FF0, 0xF0},
        {DBVT_SHORT, 0x1FFFE, -2}, {DBVT_LONG, -70000, -70000}, {DBVT_DOUBLE, 4, 11}};
    for (auto const& [type, set, want] : dbRows) {
        CDBVariant variant;
        variant.m_dwType = type;
        variant.m_lVal = set;  // the narrower members read its low bytes
        CGVLong v(11);
        v.mConvertFromDBVariant(variant);
        EXPECT_EQ(want, v.mGetValue()) << type << " " << set;
    }
}

TEST(CGVLong, ArchiveFormIsFourLittleEndianBytes) {
    const std::pair<int32_t, std::vector<BYTE>> rows[] = {
        {1, {0x01, 0x00, 0x00, 0x00}}, {-2, {0xFE, 0xFF, 0xFF, 0xFF}}, {0x12345678, {0x78, 0x56, 0x34, 0x12}}};
    for (auto const& [value, bytes] : rows) {
        CGVLong stored(value), back;
        gvtest::Load(bytes, back);
        EXPECT_EQ(std::make_pair(bytes, value), std::make_pair(gvtest::Stored(stored), back.mGetValue()));
    }
}
