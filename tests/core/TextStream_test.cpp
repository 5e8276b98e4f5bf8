// The text stream format across classes: exact forms, round trips through the
// factory, and every truncation of a valid form.
#include <gtest/gtest.h>

#include <map>
#include <memory>
#include <sstream>
#include <string>

#include "gvlib/array/GVLongArray.h"
#include "gvlib/array/GVStringArray.h"
#include "gvlib/buffer/GVBuffer.h"
#include "gvlib/core/GVLong.h"
#include "gvlib/datetime/GVDate.h"
#include "gvlib/platform/afxexcept.h"
#include "gvlib/string/GVString.h"
#include "support/archive_bytes.h"

namespace {

std::string Written(CGVObject& obj) {
    std::ostringstream os;
    os << obj;
    return os.str();
}

std::unique_ptr<CGVObject> Read(std::string const& form, std::istringstream& is) {
    is.str(form);
    is.clear();
    return std::unique_ptr<CGVObject>(CGVObject::mNew(is));
}

}  // namespace

TEST(TextStream, ExactForms) {
    CGVLong minus(-15);
    EXPECT_EQ("U-15 ", Written(minus));
    CGVBuffer empty;
    EXPECT_EQ("V0  ", Written(empty));
    CGVBuffer bytes;
    bytes.mInit("\0 \n", 3);
    EXPECT_EQ(std::string("V3 \0 \n ", 7), Written(bytes));
    CGVDate date(2004, 3, 7, 14, 5, 9);
    EXPECT_EQ("W2004 3 7 14 5 9 ", Written(date));
}

TEST(TextStream, FactoryRoundTripsEveryClassBackToBack) {
    CGVString text("T3 looks like a tag\r\n");
    CGVLong number(-2147483647 - 1);
    CGVBuffer bytes;
    bytes.mInit("\xFF\0 V9 ", 6);
    CGVDate date(1999, 12, 31, 23, 59, 58);
    std::string all = Written(text) + Written(number) + Written(bytes) + Written(date);
    std::istringstream is(all);
    std::unique_ptr<CGVObject> objs[4];
    for (auto& obj : objs) {
        obj.reset(CGVObject::mNew(is));
        ASSERT_NE(nullptr, obj);
    }
    EXPECT_EQ(0, text.mCompare(objs[0].get()));
    EXPECT_EQ(0, number.mCompare(objs[1].get()));
    EXPECT_EQ(0, bytes.mCompare(objs[2].get()));
    EXPECT_EQ(0, date.mCompare(objs[3].get()));
    EXPECT_EQ(nullptr, CGVObject::mNew(is));
}

// Cutting a valid form anywhere after its tag leaves the stream failed, whatever
// the class; cutting it before the tag gives no object at all.
TEST(TextStream, EveryTruncationLeavesTheStreamFailed) {
    const std::string forms[] = {"T3 a b ",          "T0  ",         "U-15 ", std::string("V3 \0\1\2 ", 7),
                                 "V0  ",             "W2004 3 7 14 5 9 ", "XU2 T3 a b T0  ", "YU2 U5 U-1 ",
                                 "XU0 ",             "YU1 U7 "};
    for (std::string const& form : forms) {
        for (size_t cut = 0; cut < form.size(); ++cut) {
            SCOPED_TRACE(form.substr(0, cut));
            std::istringstream is;
            std::unique_ptr<CGVObject> obj = Read(form.substr(0, cut), is);
            EXPECT_EQ(cut > 0, obj != nullptr);
            EXPECT_TRUE(is.fail());
        }
        std::istringstream whole;
        EXPECT_NE(nullptr, Read(form, whole));
        EXPECT_FALSE(whole.fail());
    }
}

namespace {

// What a body read left in an object: its text form, shortened when long.
std::string Describe(CGVObject& obj) {
    std::string form = Written(obj);
    return form.size() <= 40 ? form : form.substr(0, 12) + "... " + std::to_string(form.size());
}

// A target that already holds something, of the class the tag names.
CGVObject* Prefilled(char tag) {
    static const std::map<char, std::string> forms = {
        {'T', "T3 old "}, {'U', "U9 "}, {'V', "V11 old content "}, {'X', "XU1 T4 keep "}, {'Y', "YU1 U9 "}};
    std::istringstream is(forms.at(tag));
    return CGVObject::mNew(is);
}

std::string ReadBody(std::string const& form, CGVObject& target) {
    std::istringstream is(form);
    try {
        is >> target;
    } catch (CArchiveException const& e) {
        return "archive " + std::to_string(e.m_cause);
    } catch (CMemoryException const&) {
        return "memory";
    }
    return Describe(target);
}

}  // namespace

TEST(TextStream, DamagedBodiesByDefaultAndStrictly) {
    struct Row {
        std::string form;
        std::string byDefault;  // Describe() after reading into a prefilled target
        std::string strictly;   // "same" as by default, or the exception raised
    } rows[] = {
        {"T5 ab", "T2 ab ", "archive 3"},
        {"Tx abc ", "T0  ", "archive 3"},
        {"T-5 abcdef", "T0  ", "archive 3"},
        {"T99999999999 ab", "T0  ", "archive 3"},
        {"T", "T0  ", "archive 3"},
        {"T200000000 0123456789", "T10 0123456789 ", "archive 3"},  // costs what arrived
        {"T2147483647 ab", "memory", "memory"},
        {"U", "U9 ", "archive 3"},  // exhausted: the extraction does not run
        {"Ux ", "U0 ", "archive 3"},
        {"V5 ab", "V5 abd c ", "archive 3"},  // read in place over the old content
        {"V", "V11 old content ", "archive 3"},
        {"V-5 abcdef", "V0  ", "archive 3"},
        {"Vx abc ", "V0  ", "archive 3"},
        {"V100000 ab", std::string("V100000 ab\0\0... 100009", 22), "archive 3"},  // the rest zero
        {"V2147483647 ab", "memory", "memory"},
        {"XU3 T1 a", "XU4 T4 keep T1 a T0  T0  ", "archive 3"},
        {"XU-3 T1 a ", "XU1 T4 keep ", "same"},
        {"XU2147483647 T1 a", "memory", "memory"},
        {"YU3 U7 ", "YU4 U9 U7 U0 U0 ", "archive 3"},
        {"YU536870912 U7 ", "memory", "memory"},
    };
    for (Row const& row : rows) {
        SCOPED_TRACE(row.form);
        std::unique_ptr<CGVObject> target(Prefilled(row.form[0]));
        EXPECT_EQ(row.byDefault, ReadBody(row.form, *target));
        gvtest::LoadingPolicy strict(true);
        std::unique_ptr<CGVObject> strictTarget(Prefilled(row.form[0])), untouched(Prefilled(row.form[0]));
        EXPECT_EQ(row.strictly == "same" ? row.byDefault : row.strictly, ReadBody(row.form, *strictTarget));
        if (row.strictly != "same") {
            EXPECT_EQ(Describe(*untouched), Describe(*strictTarget));
        }
    }
}

TEST(TextStream, WrongTagsAndWhiteSpace) {
    std::istringstream is;
    EXPECT_EQ(nullptr, Read("Z3 abc ", is));
    EXPECT_EQ(nullptr, Read("   ", is));
    EXPECT_EQ(nullptr, Read("", is));
    std::unique_ptr<CGVObject> obj = Read(" \n\tU7 ", is);
    ASSERT_NE(nullptr, dynamic_cast<CGVLong*>(obj.get()));
    EXPECT_EQ(7, static_cast<CGVLong*>(obj.get())->mGetValue());
    // A body of another class read through operator>>: its tag is taken unchecked.
    std::istringstream other("T2 42 ");
    CGVLong number(5);
    other >> number;
    EXPECT_EQ(2, number.mGetValue());
}

TEST(TextStream, ArraysRoundTripWithZeroOneAndManyElements) {
    for (int32_t n : {0, 1, 1000}) {
        SCOPED_TRACE(n);
        CGVStringArray strings;
        CGVLongArray numbers;
        for (int32_t i = 0; i < n; ++i) {
            CGVString text(i % 3 == 0 ? "" : "x y\n");
            text += CGVString('z', i % 7);
            strings.mAdd(&text);
            numbers.mAdd(&i);
        }
        std::string form = Written(strings) + Written(numbers);
        std::istringstream is(form);
        std::unique_ptr<CGVObject> s(CGVObject::mNew(is)), l(CGVObject::mNew(is));
        auto* backStrings = dynamic_cast<CGVStringArray*>(s.get());
        auto* backNumbers = dynamic_cast<CGVLongArray*>(l.get());
        ASSERT_NE(nullptr, backStrings);
        ASSERT_NE(nullptr, backNumbers);
        ASSERT_EQ(n, backStrings->mGetNumItems());
        ASSERT_EQ(n, backNumbers->mGetNumItems());
        EXPECT_EQ(form, Written(*backStrings) + Written(*backNumbers));
    }
}
