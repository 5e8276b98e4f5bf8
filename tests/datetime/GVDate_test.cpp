// CGVDate: construction, setters and their flags, day comparisons, variants, text forms, weeks.
#include <gtest/gtest.h>

#include <clocale>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include "datetime/time_zone.h"
#include "gvlib/datetime/GVDate.h"
#include "gvlib/platform/afxdb.h"
#include "gvlib/platform/afxdisp.h"
#include "gvlib/string/GVString.h"

namespace {

class DateTest : public ::testing::TestWithParam<const char*> {
protected:
    ScopedTimeZone zone{GetParam()};
};

void ExpectFields(CGVDate const& d, std::vector<int> const& want) {
    EXPECT_EQ(want, (std::vector<int>{d.mGetYear(), d.mGetMonth(), d.mGetDay(), d.mGetHour(), d.mGetMinute(),
                                      d.mGetSecond()}));
}

// The flags are protected: expose them, date-only as tens and time-only as ones.
struct Probe : CGVDate {
    using CGVDate::CGVDate;
    int Flags() const { return dateOnly * 10 + timeOnly; }
};

Probe After(Probe d, void (*change)(Probe&)) { return change(d), d; }

class DateWeekTest : public DateTest {};

int MondayFirst(CGVDate const& d) { return d.mGetDayOfWeek() == 1 ? 7 : d.mGetDayOfWeek() - 1; }

// The week by the steps the date is specified to take, through its public getters and constructors only.
int SpecifiedWeek(CGVDate const& d) {
    const uint16_t year = d.mGetYear(), before = static_cast<uint16_t>(year - 1);
    int t = d.mGetDay();
    for (uint16_t i = 1; i < d.mGetMonth(); ++i)
        t += CGVDate::mDaysInMonth(i, year);
    const int a = MondayFirst(CGVDate(year, 1, 1)), w = (t + a - MondayFirst(d) + 7) / 7 - (a >= 5);
    // An unbuildable 1 January (weekday 0, counted -1) is not Monday to Thursday.
    const int first = MondayFirst(CGVDate(before, 1, 1)), last = MondayFirst(CGVDate(before, 12, 31));
    return w != 0 ? w : first >= 1 && first <= 4 && last >= 4 ? 53 : 52;
}

}  // namespace

INSTANTIATE_TEST_SUITE_P(Zones, DateTest, ::testing::ValuesIn(kTestZones));
// Zones west and east of UTC, with and without daylight saving: east of UTC 1 January 1970 cannot be built.
INSTANTIATE_TEST_SUITE_P(Zones, DateWeekTest, ::testing::Values("UTC0", "EST5EDT,M3.2.0,M11.1.0", "JST-9",
                                                                "NZST-12NZDT,M9.5.0,M4.1.0/3", "<-11>11"));

TEST_P(DateTest, ConstructorsAndSettersNormaliseLocalFields) {
    // The setters pass on the old instant's daylight-saving flag: 10:30 summer time moved into winter reads 09:30.
    const int moved = std::string(GetParam()).find("EDT") != std::string::npos ? 9 : 10;
    const Probe jan(2024, 1, 15, 10, 30, 0), mar(2024, 3, 15, 10, 30, 0);
    struct Row { const char* what; Probe d; std::vector<int> want; } const rows[] = {
        {"leap day", Probe(2024, 2, 29), {2024, 2, 29, 0, 0, 1}},
        {"no leap day", Probe(2023, 2, 29), {2023, 3, 1, 0, 0, 1}},
        {"month 13", Probe(2024, 13, 1), {2025, 1, 1, 0, 0, 1}},
        {"all fields", Probe(2024, 3, 5, 14, 7, 9), {2024, 3, 5, 14, 7, 9}},
        {"month 0", After(mar, [](Probe& d) { d.mSetMonth(0); }), {2023, 12, 15, moved, 30, 0}},
        {"day 0", After(jan, [](Probe& d) { d.mSetDay(0); }), {2023, 12, 31, 10, 30, 0}},
        {"hour 0", After(jan, [](Probe& d) { d.mSetHour(0); }), {2024, 1, 15, 0, 30, 0}},
        {"year 1899", After(jan, [](Probe& d) { d.mSetYear(1899); }), {1970, 1, 15, 10, 30, 0}},
        {"minute 61", After(jan, [](Probe& d) { d.mSetMinute(61), d.mSetSecond(5); }), {2024, 1, 15, 11, 1, 5}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.what);
        ExpectFields(row.d, row.want);
    }
    EXPECT_EQ(3, CGVDate(2024, 3, 5).mGetDayOfWeek());  // Tuesday, Sunday being 1
    // The flags pick mGetStr's form, the time first; a copy starts with clear flags, an assignment keeps the target's.
    struct Flag { void (*change)(Probe&); int flags; const char* text; } const flagRows[] = {
        {[](Probe& d) { d.mSetMonth(0), d.mSetDay(0); }, 0, "11/30/23 10:30:00"},
        {[](Probe& d) { d.mSetHour(0), d.mSetHour(9); }, 10, "01/15/24"},
        {[](Probe& d) { d.mSetYear(1899); }, 1, "10:30:00"},
        {[](Probe& d) { d.mSetHour(0), d.mSetYear(1899); }, 11, "00:30:00"}};
    for (const Flag& row : flagRows) {
        Probe d(jan);
        row.change(d);
        CGVString s;
        d.mGetStr(s);
        EXPECT_STREQ(row.text, s);
        const int flags = d.Flags(), copied = Probe(d).Flags();
        static_cast<CGVDate&>(d) = CGVDate(2021, 1, 1);
        EXPECT_EQ((std::vector<int>{row.flags, 0, row.flags}), (std::vector<int>{flags, copied, d.Flags()}));
    }
}

TEST_P(DateTest, OutOfRangeGivesMinusOneAndZeroGetters) {
    for (CGVDate d : {CGVDate(1969, 6, 1), CGVDate(2038, 2, 1), CGVDate(65535, 65535, 65535)}) {
        EXPECT_EQ(0xFFFFFFFFu, d.mGetDateAsLong());
        ExpectFields(d, {0, 0, 0, 0, 0, 0});
        d.mSetYear(2000);  // a setter cannot bring it back
        EXPECT_EQ(0xFFFFFFFFu, d.mGetDateAsLong());
    }
}

// Instants compare by their UTC day number, whatever their clock times.
TEST_P(DateTest, ArithmeticAndDayComparisons) {
    CGVDate d(2024, 1, 10, 12, 0, 0), early, late, dayBefore, first, last, next;
    ExpectFields(d += 86400, {2024, 1, 11, 12, 0, 0});
    ExpectFields(d -= 86400, {2024, 1, 10, 12, 0, 0});
    early = 1704880800, late = 1704916800, dayBefore = 1704844799;  // 01-10 10:00, 20:00 and 01-09 23:59:59
    first = 1704067200, last = 1704153599, next = 1704153600;       // day 19723 and the next one
    EXPECT_EQ((std::vector<int32_t>{1, 1, 1, 0, 1, 1, -1, 1, 1, 1, 0}),
              (std::vector<int32_t>{early == late, early <= late, early >= late, early.mCompare(&late),
                                    early > dayBefore, dayBefore < early,
                                    dayBefore.mCompare(&late), late.mCompare(&dayBefore), first == 19723,
                                    last == 19723, next == 19723}));
}

TEST_P(DateTest, CopySlotsAndAssignmentThroughTheBase) {
    CGVDate d(2024, 3, 5);
    CGVObject& base = d;
    EXPECT_EQ((std::vector<CGVObject*>{nullptr, nullptr}), (std::vector<CGVObject*>{base.mCopy(), base.mNew()}));
    std::unique_ptr<CGVObject> copy(&d.mCopy()), fresh(&d.mNew());
    EXPECT_EQ(d.mGetDateAsLong(), static_cast<CGVDate&>(*copy).mGetDateAsLong());
    EXPECT_GT(static_cast<CGVDate&>(*fresh).mGetYear(), 2023);
    base = CGVDate(2000, 1, 1);
    EXPECT_EQ(2000, d.mGetYear());
}

TEST_P(DateTest, VariantsAndTextReadApplyFieldsThroughTheSetters) {
    Probe d(2024, 3, 31, 8, 0, 0);
    CDBVariant db;
    db.m_dwType = DBVT_LONG, db.m_lVal = 4;
    d.mConvertFromDBVariant(db);
    ExpectFields(d, {2024, 3, 31, 8, 0, 0});
    db.m_dwType = DBVT_DATE, db.m_pdate = new TIMESTAMP_STRUCT{2021, 4, 30, 17, 45, 3, 0};  // the variant owns it
    d.mConvertFromDBVariant(db);
    ExpectFields(d, {2021, 4, 30, 17, 45, 3});
    d.mConvertFromOleVariant(COleVariant(45356.588298611, VT_DATE));
    ExpectFields(d, {2024, 3, 5, 14, 7, 9});
    d.mConvertFromOleVariant(COleVariant(0.75, VT_DATE));  // a time alone
    EXPECT_EQ(1, d.Flags());
    ExpectFields(d, {1970, 12, 30, 18, 0, 0});  // the date part is 1899-12-30
    d.mConvertFromOleVariant(COleVariant(1e9, VT_DATE));
    EXPECT_EQ(0xFFFFFFFFu, d.mGetDateAsLong());
    COleVariant out;
    CGVDate jan(2024, 1, 1);
    jan.mConvertToOleVariant(&out);  // the raw time value; the 32-bit constructor makes it VT_I4
    EXPECT_EQ((std::vector<LONG>{VT_I4, static_cast<LONG>(jan.mGetDateAsLong())}), (std::vector<LONG>{out.vt, out.lVal}));
    CGVDate same(jan);
    same.mConvertFromOleVariant(out);  // not a date variant: nothing changes
    EXPECT_EQ(jan.mGetDateAsLong(), same.mGetDateAsLong());
    std::istringstream wide("W70000 1 1 0 0 0 "), timeAlone("W1899 12 30 6 30 0 ");
    Probe probe(2020, 5, 5), t(2020, 5, 5);
    wide >> probe, timeAlone >> t;
    EXPECT_EQ(0xFFFFFFFFu, probe.mGetDateAsLong());  // 70000 reaches the setter as 4464, which cannot be normalised
    EXPECT_EQ(1, t.Flags());
    ExpectFields(t, {1970, 12, 30, 6, 30, 0});
}

// Each form replaces a target of any length; an unconvertible date leaves it.
TEST_P(DateTest, TextFormsReplaceTheTarget) {
    const struct Row { void (CGVDate::*member)(CGVString&); const char* want; } rows[] = {
        {&CGVDate::mDate2Str, "03/05/24"},          {&CGVDate::mTime2Str, "14:07:09"},
        {&CGVDate::mDateTime2Str, "03/05/24 14:07:09"}, {&CGVDate::mGetMonthStr, "March"},
        {&CGVDate::mGetYearStr, "2024"},            {&CGVDate::mGetDayStr, "05"},
        {&CGVDate::mGetDayPlanStr, "Day Plan March 05, 2024"}, {&CGVDate::mGetWeekDayStr, "Tue"},
        {&CGVDate::mGetMonthDateStr, "Mar 5"},      {&CGVDate::mGetStr, "03/05/24 14:07:09"}};
    CGVDate d(2024, 3, 5, 14, 7, 9), bad;
    bad = -1;
    for (const Row& row : rows) {
        SCOPED_TRACE(row.want);
        for (const std::string& before : {std::string(), std::string(200, 'x')}) {
            CGVString s(before.c_str());
            (d.*row.member)(s);
            EXPECT_STREQ(row.want, s);
            (bad.*row.member)(s);
            EXPECT_STREQ(row.want, s);
        }
    }
}

// Host names of the "C" locale format as "C" does; the host's own %c form never shows.
TEST(DateText, EveryNameOfTheCLocaleKeepsTheOriginalForm) {
    const std::string before = setlocale(LC_TIME, nullptr);
    for (const char* name : {"C", "POSIX", "C.UTF-8", "C.utf8"}) {
        if (setlocale(LC_TIME, name) == nullptr)
            continue;  // not installed here
        SCOPED_TRACE(name);
        CGVString s;
        CGVDate(2024, 3, 5, 14, 7, 9).mDateTime2Str(s);
        EXPECT_STREQ("03/05/24 14:07:09", s);
    }
    setlocale(LC_TIME, before.c_str());
}

TEST(DateCalendar, LeapYearsAndMonthLengths) {
    struct Row { uint16_t month, year, leap, days; } const rows[] = {
        {2, 1900, 0, 28}, {2, 2000, 1, 29}, {2, 2023, 0, 28}, {2, 2024, 1, 29}, {2, 2100, 0, 28},
        {4, 2023, 0, 30}, {12, 2023, 0, 31}, {13, 2024, 1, 0}, {13, 2023, 0, 0}, {0, 2024, 1, 0}};  // outside
    for (const Row& row : rows) {
        SCOPED_TRACE(testing::Message() << row.month << '/' << row.year);
        EXPECT_EQ(row.leap, CGVDate::mIsLeapYear(row.year));
        EXPECT_EQ(row.days, CGVDate::mDaysInMonth(row.month, row.year));
    }
}

// The named dates, then steps of 23 hours that reach every local day of the 32-bit range at drifting clock times.
TEST_P(DateWeekTest, NamedDatesAndEveryDayOfTheRange) {
    struct Row { uint16_t year, month, day, week; } const rows[] = {
        {2021, 1, 4, 1}, {2021, 1, 1, 53}, {2022, 1, 1, 52}, {2023, 1, 1, 52},
        {2023, 1, 2, 1},    {2020, 12, 31, 53}, {2019, 12, 30, 53}, {2024, 12, 30, 53}};
    for (const Row& row : rows) {
        SCOPED_TRACE(testing::Message() << row.year << '-' << row.month << '-' << row.day);
        EXPECT_EQ(row.week, CGVDate(row.year, row.month, row.day, 12, 0, 0).mWeekOf());
    }
    CGVDate d;
    d = -1;
    EXPECT_LE(d.mWeekOf(), 53);  // defined, whatever the zeros give
    for (int64_t t = 0; t <= _MAX__TIME32_T; t += 23 * 3600) {
        d = static_cast<int32_t>(t);
        if (d.mWeekOf() != SpecifiedWeek(d)) {
            ADD_FAILURE() << t << ": " << d.mWeekOf() << " not " << SpecifiedWeek(d);
            break;
        }
    }
}
