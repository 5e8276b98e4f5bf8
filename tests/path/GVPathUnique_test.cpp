// CGVPath: free names by numbering, on the long-name drive L:, the short-name
// drive S: and a drive M: of 64-character components (short scheme, long names).
#include <gtest/gtest.h>

#include <unistd.h>

#include <vector>

#include "gvlib/array/GVStringArray.h"
#include "gvlib/platform/gvplatform.h"
#include "path/path_test_access.h"
#include "path/volume_fixture.h"

namespace {

CGVStringArray List(std::vector<const char*> const& names) {
    CGVStringArray list;
    for (const char* name : names) {
        CGVString item(name);
        list.mAdd(&item);
    }
    return list;
}

// String-table ids of the patterns the tests install.
enum : uint32_t { kFirst = 9101, kNumbered = 9102, kMissing = 9199 };

using Result = std::pair<int, std::string>;

class CGVPathUnique : public VolumeFixture {
protected:
    void SetUp() override {
        VolumeFixture::SetUp();
        MakeDir("long/dir");
        MakeDir("short/dir");
        Touch("long/dir/report.txt");
        Touch("long/dir/report (2).txt");
        Touch("short/dir/report.txt");
        for (int n = 1; n <= 99; ++n)
            Touch("short/dir/report" + std::to_string(n) + ".txt");
    }
    void TearDown() override {
        gvplatform::SetStringResource(kFirst, nullptr);
        gvplatform::SetStringResource(kNumbered, nullptr);
        VolumeFixture::TearDown();
    }

    // MakeUnique of `name` in `directory`: the result and the name left.
    static Result Unique(const char* name, const char* directory, int first = 0, int numbered = 0,
                         CGVStringArray const* taken = nullptr, CGVStringArray const* reusable = nullptr,
                         bool legalURL = false) {
        CGVPath path(name);
        int result = legalURL ? path.MakeUniqueLegalURL(directory, first, numbered, taken, reusable)
                              : path.MakeUnique(directory, first, numbered, taken, reusable);
        return {result, Text(path)};
    }
};

}  // namespace

TEST_F(CGVPathUnique, NumbersPastWhatExistsInAnyCase) {
    EXPECT_EQ(Result(1, "report (3).txt"), Unique("report.txt", "L:\\dir"));
    EXPECT_EQ(Result(1, "REPORT (3).TXT"), Unique("REPORT.TXT", "L:\\DIR"));
    EXPECT_EQ(Result(1, "fresh.txt"), Unique("C:\\elsewhere\\fresh.txt", "L:\\dir"));  // only the name counts
    EXPECT_EQ(Result(1, "REPOR100.TXT"), Unique("REPORT.TXT", "S:\\dir"));
    EXPECT_EQ(Result(1, "myfile-n.htm"), Unique("my file.name.html", "S:\\dir"));  // legal for 8.3 first

    // Without a directory the path's own directory is used and kept.
    CGVPath full("L:\\dir\\report.txt");
    EXPECT_EQ(1, full.MakeUnique(0, 0, nullptr, nullptr));
    EXPECT_EQ("L:\\dir\\report (3).txt", Text(full));
    CGVPath shortFull("S:\\dir\\Report.txt");
    EXPECT_EQ(1, shortFull.MakeUnique(0, 0, nullptr, nullptr));
    EXPECT_EQ("S:\\dir\\Repor100.txt", Text(shortFull));
}

// Past the first few candidates the folder's names are read once and matched
// case-blind for every letter of the code page; the answers stay those of one
// status query per candidate: directories count, links to nothing do not.
TEST_F(CGVPathUnique, ManyNamesStoredInOtherCases) {
    MakeDir("long/many/\xC3\x84RENDE (7).txt");
    for (const char* name : {"\xC3\xA4rende.txt", "\xC3\x84RENDE (2).TXT", "\xC3\xA4Rende (3).txt",
                             "\xC3\xA4rende (4).Txt", "\xC3\x84rende (5).txt", "\xC3\xA4rende (6).txt"})
        Touch(std::string("long/many/") + name);
    ASSERT_EQ(0, symlink("nowhere", Host("long/many/\xC3\xA4rende (8).txt").c_str()));
    CGVStringArray taken = List({"\xC4RENDE (8).TXT"});
    CGVStringArray reusable = List({"\xC4RENDE (6).TXT"});
    struct Row { const char* name; CGVStringArray const *taken, *reusable; const char* expected; } const rows[] = {
        {"\xC4RENDE.TXT", nullptr, nullptr, "\xC4RENDE (8).TXT"},
        {"\xE4rende.txt", nullptr, nullptr, "\xE4rende (8).txt"},
        {"\xC4RENDE.TXT", &taken, nullptr, "\xC4RENDE (9).TXT"},
        {"\xC4RENDE.TXT", nullptr, &reusable, "\xC4RENDE (6).TXT"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(Result(1, row.expected), Unique(row.name, "L:\\many", 0, 0, row.taken, row.reusable));
    }
    for (int n = 2; n <= 8; ++n) {
        SCOPED_TRACE(n);
        EXPECT_EQ(n == 8 ? 1 : 0, CGVPath(("\xE4RENDE (" + std::to_string(n) + ").txt").c_str()).IsUnique("L:\\many"));
    }
}

// Past the folder's listing, the status query still decides for a full path of
// 260 characters, which it never finds.
TEST_F(CGVPathUnique, NamesTheListingCannotAnswer) {
    const std::string base(243, 'b');
    MakeDir("long/many");
    for (int n = 1; n <= 10; ++n)
        Touch("long/many/" + base + (n == 1 ? "" : " (" + std::to_string(n) + ")") + ".txt");
    EXPECT_EQ(Result(1, base + " (10).txt"), Unique((base + ".txt").c_str(), "L:\\many"));
}

TEST_F(CGVPathUnique, TakenAndReusableNames) {
    CGVStringArray taken = List({"NEW.TXT", "new (2).txt"});
    CGVStringArray reusable = List({"Report.TXT"});
    EXPECT_EQ(Result(1, "new (3).txt"), Unique("new.txt", "L:\\dir", 0, 0, &taken));
    EXPECT_EQ(Result(1, "report.txt"), Unique("report.txt", "L:\\dir", 0, 0, nullptr, &reusable));
    EXPECT_EQ(Result(1, "report (3).txt"), Unique("report.txt", "L:\\dir", 0, 0, &reusable, &reusable));
    CGVStringArray shortTaken = List({"new.txt", "NEW1.TXT"});
    EXPECT_EQ(Result(1, "new2.txt"), Unique("new.txt", "S:\\dir", 0, 0, &shortTaken));

    CGVStringArray withEmptySlot = List({"a"});
    withEmptySlot.mInsertItem(0);
    EXPECT_EQ(1, GVPathTestAccess::PrivateIsArrayElement(&withEmptySlot, "", 1));
    EXPECT_EQ(1, GVPathTestAccess::PrivateIsArrayElement(&withEmptySlot, "A", 0));
    EXPECT_EQ(0, GVPathTestAccess::PrivateIsArrayElement(&withEmptySlot, "A", 1));
    EXPECT_EQ(0, GVPathTestAccess::PrivateIsArrayElement(nullptr, "", 0));
}

TEST_F(CGVPathUnique, PatternsFromTheStringTable) {
    struct Row { const char *first, *numbered, *name; int result; } const rows[] = {  // null: no entry
        {"Copy of %s", nullptr, "Copy of report.txt", 1},
        {"", nullptr, "report (3).txt", 1},  // an empty first pattern is skipped
        {"report", nullptr, "report (3).txt", 1},  // a first pattern that names a file that exists
        {nullptr, "%d - %s", "2 - report.txt", 1},  // the number first
        {nullptr, "%s_%d", "report_2.txt", 1},
        {nullptr, "%s (%d", "report (2.txt", 1},
        {nullptr, "%n%x%s%s%d%d%%%5d%", "%n%xreport%s2%d%%5d%.txt", 1},  // hostile: only one %s, one %d
        {nullptr, "report", "report.txt", 0},  // no %d: the one candidate is taken, give up
        {nullptr, "%s", "report.txt", 0},
        {nullptr, "", "report (3).txt", 1},  // an empty entry reads as none: the default
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(std::string(row.first ? row.first : "-") + " / " + (row.numbered ? row.numbered : "-"));
        gvplatform::SetStringResource(kFirst, row.first);
        gvplatform::SetStringResource(kNumbered, row.numbered);
        EXPECT_EQ(Result(row.result, row.name), Unique("report.txt", "L:\\dir", kFirst, kNumbered));
    }
    EXPECT_EQ(Result(1, "report (3).txt"), Unique("report.txt", "L:\\dir", kMissing, kMissing));
}

TEST_F(CGVPathUnique, LegalURLNamesForNumberedCandidatesOnly) {
    EXPECT_EQ(Result(1, "a#b.txt"), Unique("a#b.txt", "L:\\dir", 0, 0, nullptr, nullptr, true));
    CGVStringArray taken = List({"a#b.txt"});
    EXPECT_EQ(Result(1, "a-b (2).txt"), Unique("a#b.txt", "L:\\dir", 0, 0, &taken, nullptr, true));
    EXPECT_EQ(Result(1, "a-b.txt"), Unique("a#b.txt", "S:\\dir", 0, 0, nullptr, nullptr, true));
}

TEST_F(CGVPathUnique, FailuresLeaveADefinedPath) {
    EXPECT_EQ(Result(0, ""), Unique("", "L:\\dir"));
    EXPECT_EQ(Result(0, "x.txt"), Unique("x.txt", ""));
    EXPECT_EQ(Result(0, "x.txt"), Unique("x.txt", "L:\\dir\\report.txt"));  // the directory is a file
    EXPECT_EQ(Result(0, "x.txt"), Unique("x.txt", "S:\\dir\\report.txt"));

    // Components of 64: the short scheme with long names, where the extension
    // swallows the number of a base holding a full stop. Every try is a.txt.
    gvplatform::MapDrive('M', Host("long"), Options(gvplatform::kDriveFixed, 64));
    Touch("long/dir/a.b.txt");
    Touch("long/dir/a.txt");
    CGVPath path("M:\\dir\\a.b.txt");
    EXPECT_EQ(0, path.MakeUnique(0, 0, nullptr, nullptr));
    EXPECT_EQ("", Text(path));  // as when the numbers run out
}

TEST_F(CGVPathUnique, IsUniqueLooksAtTheNameWhereAsked) {
    EXPECT_EQ(0, CGVPath("C:\\elsewhere\\REPORT.TXT").IsUnique("L:\\dir"));
    EXPECT_EQ(1, CGVPath("L:\\dir\\other.txt").IsUnique("L:\\dir"));
    EXPECT_EQ(0, CGVPath("L:\\dir\\report (2).txt").IsUnique(nullptr));
    EXPECT_EQ(0, CGVPath("L:\\dir").IsUnique(nullptr));

    char saved[MAX_PATH];
    ASSERT_GT(GetCurrentDirectoryA(MAX_PATH, saved), 0u);
    ASSERT_TRUE(SetCurrentDirectoryA("L:\\dir"));
    EXPECT_EQ(0, CGVPath("report.txt").IsUnique(nullptr));
    EXPECT_EQ(1, CGVPath("other.txt").IsUnique(nullptr));
    EXPECT_EQ(Result(1, "L:\\dir\\other.txt"), Unique("other.txt", nullptr));
    CGVPath relative("report.txt");
    EXPECT_EQ(1, relative.MakeUnique(0, 0, nullptr, nullptr));
    EXPECT_EQ("L:\\dir\\report (3).txt", Text(relative));
    ASSERT_TRUE(SetCurrentDirectoryA(saved));
}

TEST_F(CGVPathUnique, WhatIsFoundFreeIsFreeForAnyName) {
    const std::string longName(300, 'n');
    const char* names[] = {"", ".", "..", "\\", "C:", "a:b", "%s%d%n", "x\\", "\xE4\xFF.\xA0", " .txt",
                           "report.txt", "REPORT", "a/b/report.txt", longName.c_str()};
    for (const char* directory : {"L:\\dir", "S:\\dir"}) {
        for (const char* name : names) {
            SCOPED_TRACE(std::string(name) + " in " + directory);
            CGVPath path(name);
            if (path.MakeUnique(directory, 0, 0, nullptr, nullptr)) {
                EXPECT_EQ(1, path.IsUnique(directory));
            }
            CGVPath url(name);
            if (url.MakeUniqueLegalURL(directory, 0, 0, nullptr, nullptr)) {
                EXPECT_EQ(1, url.IsUnique(directory));
            }
        }
    }
}
