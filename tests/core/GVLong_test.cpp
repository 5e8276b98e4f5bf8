// CGVLong: assignment from other objects, comparison, variants and the archive form.
// Its text form is checked with the other classes' in TextStream_test.
#include <gtest/gtest.h>

#include <climits>
#include <memory>
#include <vector>

#include "gvlib/buffer/GVBuffer.h"
#include "gvlib/core/GVLong.h"
#include "gvlib/platform/afxdb.h"
#include "gvlib/platform/afxdisp.h"
#include "gvlib/string/GVString.h"
#include "support/archive_bytes.h"

TEST(CGVLong, EmptyStatesAndBits) {
    CGVLong seven(7);
    std::unique_ptr<CGVObject> fresh(seven.mNew()), copy(seven.mCopy());
    EXPECT_EQ(0, dynamic_cast<CGVLong&>(*fresh).mGetValue());
    EXPECT_EQ(7, dynamic_cast<CGVLong&>(*copy).mGetValue());
    seven.mClear();
    EXPECT_EQ(0, static_cast<int32_t>(seven));
    EXPECT_EQ(0, CGVLong().mGetValue());
    CGVLong v(0x0F);
    v |= 0x30;
    EXPECT_EQ(0x3F, v.mGetValue());
    v &= 0x12;
    EXPECT_EQ(0x12, v.mGetValue());
}

TEST(CGVLong, AssignFromStringReadsLikeAtol) {
    struct Row {
        const char* text;
        int32_t want;
    } rows[] = {
        {"  42abc", 42}, {"abc", 0}, {"", 0}, {"\t\n-17", -17}, {"+8", 8}, {"- 3", 0}, {"0x10", 0},
        {"2147483647", INT32_MAX}, {"2147483648", INT32_MAX}, {"-2147483648", INT32_MIN}, {"-2147483649", INT32_MIN},
        {"99999999999999999999999", INT32_MAX},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.text);
        CGVLong v(5);
        v = static_cast<CGVObject const&>(CGVString(row.text));
        EXPECT_EQ(row.want, v.mGetValue());
    }
}

TEST(CGVLong, AssignAndCompareAcrossClasses) {
    CGVLong v(5), nine(9), minus(-3);
    CGVObject& base = v;
    base = static_cast<CGVObject const&>(nine);
    EXPECT_EQ(9, v.mGetValue());
    nine = CGVLong(8);
    EXPECT_EQ(8, nine.mGetValue());
    EXPECT_NO_THROW(base = CGVBuffer(2));  // another class changes nothing
    EXPECT_EQ(9, v.mGetValue());
    CGVLong five(5);
    for (auto [left, right] : {std::pair<CGVLong*, CGVLong*>{&v, &nine}, {&five, &minus}}) {
        EXPECT_EQ(1, left->mCompare(right));
        EXPECT_EQ(-1, right->mCompare(left));
        EXPECT_EQ(0, left->mCompare(left));
    }
    CGVString text("9");
    EXPECT_EQ(-1, v.mCompare(&text));
    EXPECT_EQ(-1, v.mCompare(nullptr));
}

TEST(CGVLong, Variants) {
    struct Row {
        COleVariant variant;
        int32_t want;
    } rows[] = {
        {COleVariant(-2.7f), -2},         {COleVariant(3.9), 11},  // R8 unchanged
        {COleVariant(short{-300}), -300}, {COleVariant(BYTE{200}), 200},
        {COleVariant(short{-1}, VT_BOOL), 1}, {COleVariant(LONG{123456}), 123456},
        {COleVariant(3e10f), INT32_MIN},  // out of range: the x86 "integer indefinite"
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.variant.vt);
        CGVLong v(11);
        v.mConvertFromOleVariant(row.variant);
        EXPECT_EQ(row.want, v.mGetValue());
    }
    COleVariant out;
    CGVLong(-9).mConvertToOleVariant(&out);
    EXPECT_EQ(VT_I4, out.vt);
    EXPECT_EQ(-9, out.lVal);
    struct DBRow {
        DWORD type;
        int32_t set, want;
    } dbRows[] = {{DBVT_BOOL, -1, -1},         {DBVT_BOOL, 2, 0},          {DBVT_BOOL, 1, 1},
                  {DBVT_UCHAR, 0x7FF0, 0xF0},  {DBVT_SHORT, 0x1FFFE, -2},  {DBVT_LONG, -70000, -70000},
                  {DBVT_DOUBLE, 4, 11}};
    for (const DBRow& row : dbRows) {
        SCOPED_TRACE(row.want);
        CDBVariant variant;
        variant.m_dwType = row.type;
        variant.m_lVal = row.set;  // the narrower members read its low bytes
        CGVLong v(11);
        v.mConvertFromDBVariant(variant);
        EXPECT_EQ(row.want, v.mGetValue());
    }
}

TEST(CGVLong, ArchiveFormIsFourLittleEndianBytes) {
    struct Row {
        int32_t value;
        std::vector<BYTE> bytes;
    } rows[] = {{1, {0x01, 0x00, 0x00, 0x00}}, {-2, {0xFE, 0xFF, 0xFF, 0xFF}}, {0x12345678, {0x78, 0x56, 0x34, 0x12}}};
    for (const Row& row : rows) {
        SCOPED_TRACE(row.value);
        CGVLong value(row.value);
        EXPECT_EQ(row.bytes, gvtest::Stored(value));
        CGVLong back;
        gvtest::Load(row.bytes, back);
        EXPECT_EQ(row.value, back.mGetValue());
    }
}
