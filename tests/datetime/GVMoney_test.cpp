// CGVMoney: setting, carry and borrow, division edges, text and variants.
#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <memory>
#include <sstream>
#include <utility>
#include <vector>

#include "gvlib/datetime/GVMoney.h"
#include "gvlib/platform/afxdb.h"
#include "gvlib/platform/afxdisp.h"
#include "gvlib/platform/gvplatform.h"
#include "gvlib/string/GVString.h"

namespace {

CGVMoney Of(int32_t whole, int32_t fraction) {
    CGVMoney m;
    return m.mSetWholeAmount(whole), m.mSetFractionalAmount(fraction), m;
}

void ExpectParts(int32_t whole, int32_t fraction, CGVMoney const& m) {
    EXPECT_EQ(std::make_pair(whole, fraction), std::make_pair(m.mGetWholeAmount(), m.mGetFractionalAmount()));
}

}  // namespace

// Each text is read as strtod reads it (the end position unused); its number set directly gives the same parts.
TEST(Money, AmountsFromNumbersAndText) {
    struct Row { const char* text; int32_t whole, fraction; } const rows[] = {
        {"12.34", 12, 34},          {"-1.25", -1, -25},          {"0.29", 0, 28},        {"1.005", 1, 0},
        {"21474836.47", 21474836, 47}, {"21474836.48", 21474836, 48}, {"50000000.25", 50000000, 25},
        {"-21474836.48", -21474836, -48}, {"1e300", INT32_MIN, INT32_MIN}, {"7.5xyz", 7, 50}, {"abc", 0, 0},
        {"  -2.25", -2, -25},       {"0x10", 0, 0}, {"inf", 0, 0}, {"1d2", 100, 0}, {"3e", 3, 0}, {"", 0, 0}};
    for (const Row& row : rows) {
        SCOPED_TRACE(row.text);
        ExpectParts(row.whole, row.fraction, CGVMoney(CGVString(row.text)));
        if (std::strspn(row.text, " -.0123456789e") < std::strlen(row.text))
            continue;  // this runtime's strtod reads these texts otherwise
        const double amount = std::strtod(row.text, nullptr);
        CGVMoney m;
        EXPECT_EQ(amount, m.mSetAmount(amount));
        ExpectParts(row.whole, row.fraction, m);
    }
    ExpectParts(7, 0, CGVMoney(7));
}

// Each row runs the binary form (a new heap result, the operand unchanged) and the compound form (in place).
TEST(Money, OperatorsCarryAndBorrowOnTheHundredths) {
    struct Row { int32_t whole, fraction; char op; int32_t otherFraction, n, wantWhole, wantFraction; } const rows[] = {
        {1, 50, '+', 75, 0, 2, 25},  {0, -25, '+', -90, 0, 0, -115}, {0, 50, '+', 50, 0, 1, 0}, {1, 50, '-', 75, 0, 0, 75},
        {1, 20, '-', 10, 0, 1, 10},  {1, 50, '*', 0, 3, 4, 50},      {0, 35, '*', 0, 3, 1, 5},
        {1, 50, '/', 0, 4, 0, 37},   {1, 50, '/', 0, 0, 1, 50},      {10, 0, '/', 0, 3, 3, 33},
        {-10, 0, '/', 0, 3, -3, -33}, {-21474836, -48, '/', 0, -1, -21474836, -48},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(testing::Message() << row.whole << '.' << row.fraction << row.op << row.n);
        CGVMoney a = Of(row.whole, row.fraction), other = Of(0, row.otherFraction);
        std::unique_ptr<CGVMoney> result(
            &(row.op == '+' ? a + other : row.op == '-' ? a - other : row.op == '*' ? a * row.n : a / row.n));
        ExpectParts(row.wantWhole, row.wantFraction, *result);
        ExpectParts(row.whole, row.fraction, a);
        CGVMoney& same =
            row.op == '+' ? a += other : row.op == '-' ? a -= other : row.op == '*' ? a *= row.n : a /= row.n;
        EXPECT_EQ(&a, &same);
        ExpectParts(row.wantWhole, row.wantFraction, a);
    }
}

TEST(Money, TextNumbersComparisonsAndAssignment) {
    struct Row { int32_t whole, fraction; const char* text; } const rows[] = {
        {12, 50, "12.50"}, {12, 0, "12"}, {0, 5, "0.05"}, {0, -25, "-0.25"}, {-3, 0, "-3"}, {0, 0, "0"}};
    for (const Row& row : rows) {
        SCOPED_TRACE(row.text);
        EXPECT_STREQ(row.text, static_cast<CGVString>(Of(row.whole, row.fraction)));
    }
    EXPECT_EQ((std::vector<int32_t>{3, -3}), (std::vector<int32_t>{CGVMoney(3.99), CGVMoney(-3.99)}));
    std::ostringstream os;
    os << *std::make_unique<CGVMoney>(1.5);
    EXPECT_EQ("", os.str());  // no text stream form
    CGVMoney a(1.10), b(1.20), split = Of(0, 110);
    CGVString text("1.10");
    EXPECT_EQ((std::vector<int32_t>{1, 1, 0, 0, -1, 0, 1, -1}), (std::vector<int32_t>{a == split, a < b, a > b,
              a > split, a.mCompare(&b), a.mCompare(&a), b.mCompare(&a), a.mCompare(&text)}));
    CGVObject& base = a;
    base = text;  // another class changes nothing
    ExpectParts(1, 10, a);
    std::unique_ptr<CGVObject> copy(base.mCopy());
    EXPECT_EQ(0, a.mCompare(copy.get()));
    split = b;
    ExpectParts(1, 20, split);
}

TEST(Money, VariantConversions) {
    CGVMoney m = Of(3, 50);
    CDBVariant db;  // in order, on one value: the integer types keep the hundredths
    const auto fromDb = [&](auto set) { return set(db), m.mConvertFromDBVariant(db), m; };
    ExpectParts(-2, 50, fromDb([](CDBVariant& v) { v.m_dwType = DBVT_SHORT, v.m_iVal = -2; }));
    ExpectParts(7, 50, fromDb([](CDBVariant& v) { v.m_dwType = DBVT_LONG, v.m_lVal = 7; }));
    ExpectParts(7, 0, fromDb([](CDBVariant& v) { v.m_dwType = DBVT_DOUBLE, v.m_dblVal = 7.0; }));
    COleVariant cy;
    cy.vt = VT_CY, cy.cyVal.int64 = 125000;  // 12.5
    // In order, on one value: VT_I4 changes nothing, VT_I2 sets the whole part only.
    struct Row { COleVariant v; LCID lcid; int32_t whole, fraction; } const rows[] = {
        {cy, 1033, 12, 50}, {cy, 1031, 12, 0},  // a decimal comma stops strtod
        {COleVariant(int32_t{99}), 1033, 12, 0}, {COleVariant(2.25), 1033, 2, 25},
        {COleVariant(0.5f), 1033, 0, 50}, {COleVariant(short{-4}), 1033, -4, 50}};
    for (const Row& row : rows) {
        SCOPED_TRACE(row.v.vt);
        gvplatform::SetUserDefaultLCID(row.lcid);
        m.mConvertFromOleVariant(row.v);
        gvplatform::SetUserDefaultLCID(1033);
        ExpectParts(row.whole, row.fraction, m);
    }
    COleVariant out;
    Of(-1, -15).mConvertToOleVariant(&out);
    EXPECT_EQ(VT_R8, out.vt);
    EXPECT_DOUBLE_EQ(-1.15, out.dblVal);
}
