// CGVDate: construction, setters and their flags, day comparisons, variants, text stream.
#include <gtest/gtest.h>

#include <sstream>

#include "datetime/time_zone.h"
#include "gvlib/datetime/GVDate.h"
#include "gvlib/platform/afxdb.h"
#include "gvlib/platform/afxdisp.h"

namespace {

class DateTest : public ::testing::TestWithParam<const char*> {
protected:
    ScopedTimeZone zone{GetParam()};
};

void ExpectFields(CGVDate const& d, int y, int mo, int da, int h, int mi, int s) {
    EXPECT_EQ(y, d.mGetYear());
    EXPECT_EQ(mo, d.mGetMonth());
    EXPECT_EQ(da, d.mGetDay());
    EXPECT_EQ(h, d.mGetHour());
    EXPECT_EQ(mi, d.mGetMinute());
    EXPECT_EQ(s, d.mGetSecond());
}

// The flags are protected; mGetStr shows which one is set.
struct Probe : CGVDate {
    using CGVDate::CGVDate;
    int DateOnly() const { return dateOnly; }
    int TimeOnly() const { return timeOnly; }
};

}  // namespace

INSTANTIATE_TEST_SUITE_P(Zones, DateTest, ::testing::ValuesIn(kTestZones));

TEST_P(DateTest, ConstructorsNormaliseLocalFields) {
    ExpectFields(CGVDate(2024, 2, 29), 2024, 2, 29, 0, 0, 1);
    ExpectFields(CGVDate(2023, 2, 29), 2023, 3, 1, 0, 0, 1);
    ExpectFields(CGVDate(2024, 13, 1), 2025, 1, 1, 0, 0, 1);
    ExpectFields(CGVDate(2024, 3, 5, 14, 7, 9), 2024, 3, 5, 14, 7, 9);
    EXPECT_EQ(3, CGVDate(2024, 3, 5).mGetDayOfWeek());  // Tuesday, Sunday being 1
}

TEST_P(DateTest, OutOfRangeGivesMinusOneAndZeroGetters) {
    for (CGVDate d : {CGVDate(1969, 6, 1), CGVDate(2038, 2, 1), CGVDate(65535, 65535, 65535)}) {
        EXPECT_EQ(0xFFFFFFFFu, d.mGetDateAsLong());
        ExpectFields(d, 0, 0, 0, 0, 0, 0);
        d.mSetYear(2000);  // a setter cannot bring it back
        EXPECT_EQ(0xFFFFFFFFu, d.mGetDateAsLong());
    }
}

TEST_P(DateTest, SettersCarryOverAndSetFlags) {
    Probe d(2024, 1, 15, 10, 30, 0);
    d.mSetMonth(0);
    ExpectFields(d, 2023, 12, 15, 10, 30, 0);
    d.mSetDay(0);
    ExpectFields(d, 2023, 11, 30, 10, 30, 0);
    EXPECT_EQ(0, d.DateOnly());
    d.mSetHour(0);
    EXPECT_EQ(1, d.DateOnly());
    d.mSetHour(9);
    EXPECT_EQ(1, d.DateOnly());
    EXPECT_EQ(9, d.mGetHour());
    d.mSetYear(1899);
    EXPECT_EQ(1970, d.mGetYear());
    EXPECT_EQ(1, d.TimeOnly());
    Probe copy(d);  // a copy starts with clear flags
    EXPECT_EQ(0, copy.DateOnly());
    EXPECT_EQ(0, copy.TimeOnly());
    Probe target(2020, 1, 1);
    target.mSetHour(0);
    static_cast<CGVDate&>(target) = CGVDate(2021, 1, 1);  // assignment keeps the target's flags
    EXPECT_EQ(1, target.DateOnly());
}

TEST_P(DateTest, SetterAcrossDaylightSavingKeepsTheOldFlag) {
    // The setters pass on the daylight-saving flag of the old instant, so 10:30
    // summer time moved into winter reads as 09:30 standard time.
    CGVDate d(2024, 3, 15, 10, 30, 0);
    d.mSetMonth(0);
    const bool daylightZone = std::string(GetParam()).find("EDT") != std::string::npos;
    ExpectFields(d, 2023, 12, 15, daylightZone ? 9 : 10, 30, 0);
}

TEST_P(DateTest, ArithmeticAndDayComparisons) {
    CGVDate d(2024, 1, 10, 12, 0, 0);
    d += 86400;
    ExpectFields(d, 2024, 1, 11, 12, 0, 0);
    d -= 86400;
    ExpectFields(d, 2024, 1, 10, 12, 0, 0);
    CGVDate early, late, dayBefore;
    early = 1704880800;      // 2024-01-10 10:00 UTC
    late = 1704916800;       // 2024-01-10 20:00 UTC
    dayBefore = 1704844799;  // 2024-01-09 23:59:59 UTC, a day number lower
    EXPECT_EQ(1, early == late);
    EXPECT_EQ(0, early.mCompare(&late));
    EXPECT_EQ(1, early > dayBefore);
    EXPECT_EQ(1, dayBefore < early);
    EXPECT_EQ(1, dayBefore.mCompare(&late) < 0);
    EXPECT_EQ(1, late.mCompare(&dayBefore));
    for (int32_t t : {1704067200, 1704110000, 1704153599}) {
        CGVDate instant;
        instant = t;
        EXPECT_EQ(1, instant == 19723);
    }
    CGVDate next;
    next = 1704153600;
    EXPECT_EQ(0, next == 19723);
}

TEST_P(DateTest, CopySlotsAndAssignmentThroughTheBase) {
    CGVDate d(2024, 3, 5);
    CGVObject& base = d;
    EXPECT_EQ(nullptr, base.mCopy());
    EXPECT_EQ(nullptr, base.mNew());
    CGVObject& copy = d.mCopy();
    EXPECT_EQ(d.mGetDateAsLong(), static_cast<CGVDate&>(copy).mGetDateAsLong());
    delete &copy;
    CGVObject& fresh = d.mNew();
    EXPECT_GT(static_cast<CGVDate&>(fresh).mGetYear(), 2023);
    delete &fresh;
    CGVDate other(2000, 1, 1);
    base = other;
    EXPECT_EQ(2000, d.mGetYear());
}

TEST_P(DateTest, VariantsApplyFieldsThroughTheSetters) {
    CGVDate d(2024, 3, 31, 8, 0, 0);
    CDBVariant db;
    db.m_dwType = DBVT_LONG;
    db.m_lVal = 4;
    d.mConvertFromDBVariant(db);
    ExpectFields(d, 2024, 3, 31, 8, 0, 0);
    TIMESTAMP_STRUCT* ts = new TIMESTAMP_STRUCT{2021, 4, 30, 17, 45, 3, 0};  // the variant owns it
    db.m_dwType = DBVT_DATE;
    db.m_pdate = ts;
    d.mConvertFromDBVariant(db);
    ExpectFields(d, 2021, 4, 30, 17, 45, 3);

    COleVariant ole(45356.588298611, VT_DATE);  // 2024-03-05 14:07:09
    d.mConvertFromOleVariant(ole);
    ExpectFields(d, 2024, 3, 5, 14, 7, 9);
    Probe timeAlone(2024, 1, 1);
    timeAlone.mConvertFromOleVariant(COleVariant(0.75, VT_DATE));
    EXPECT_EQ(1, timeAlone.TimeOnly());
    EXPECT_EQ(1970, timeAlone.mGetYear());
    EXPECT_EQ(18, timeAlone.mGetHour());
    CGVDate bad(2024, 1, 1);
    bad.mConvertFromOleVariant(COleVariant(1e9, VT_DATE));
    EXPECT_EQ(0xFFFFFFFFu, bad.mGetDateAsLong());

    COleVariant out;
    CGVDate(2024, 1, 1).mConvertToOleVariant(&out);
    EXPECT_EQ(VT_DATE, out.vt);
}

TEST_P(DateTest, TextStreamWritesLocalFieldsAndReadsThroughSetters) {
    CGVDate d(2004, 3, 7, 14, 5, 9);
    std::ostringstream os;
    os << d;
    EXPECT_EQ("W2004 3 7 14 5 9 ", os.str());

    std::istringstream is(os.str());
    CGVObject* read = CGVObject::mNew(is);
    ASSERT_NE(nullptr, read);
    ExpectFields(*static_cast<CGVDate*>(read), 2004, 3, 7, 14, 5, 9);
    delete read;

    std::istringstream wide("W70000 1 1 0 0 0 ");  // 70000 reaches the setter as 4464
    Probe probe(2020, 5, 5);
    wide >> probe;
    EXPECT_EQ(0u, probe.mGetDateAsLong() + 1);  // 4464 cannot be normalised
    std::istringstream timeAlone("W1899 12 30 6 30 0 ");
    Probe t(2020, 5, 5);
    timeAlone >> t;
    EXPECT_EQ(1, t.TimeOnly());
    ExpectFields(t, 1970, 12, 30, 6, 30, 0);
}
