// CGVPath: free names by numbering, on the long-name drive L: and the short-name drive S:.
#include <unistd.h>

#include "gvlib/platform/gvplatform.h"
#include "path/path_test_access.h"
#include "path/volume_fixture.h"

namespace {

// String-table ids of the patterns the tests install.
enum : uint32_t { kFirst = 9101, kNumbered = 9102, kMissing = 9199 };

using Result = std::pair<int, std::string>;

class CGVPathUnique : public VolumeFixture {
protected:
    void SetUp() override {
        VolumeFixture::SetUp();
        MakeDir("long/dir"), MakeDir("short/dir");
        Touch("long/dir/report.txt"), Touch("long/dir/report (2).txt");
        for (int n = 0; n <= 99; ++n)
            Touch("short/dir/report" + (n ? std::to_string(n) : "") + ".txt");
    }
    void TearDown() override {
        gvplatform::SetStringResource(kFirst, nullptr), gvplatform::SetStringResource(kNumbered, nullptr);
        VolumeFixture::TearDown();
    }

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

// Every name found free is free there. The current directory is L:\dir.
TEST_F(CGVPathUnique, MakeUniqueAndIsUnique) {
    CGVStringArray taken = List({"NEW.TXT", "new (2).txt"}), reusable = List({"Report.TXT"}),
                   shortTaken = List({"new.txt", "NEW1.TXT"}), hash = List({"a#b.txt"});
    // M: (components of 64) numbers short with long names: every try at a.b.txt is a.txt.
    gvplatform::MapDrive('M', Host("long"), Options(gvplatform::kDriveFixed, 64));
    Touch("long/dir/a.b.txt"), Touch("long/dir/a.txt");
    // T: (components of 20, a base of 16): one to nine are swallowed by the extension, ten cuts the stop off.
    gvplatform::MapDrive('T', Host("long"), Options(gvplatform::kDriveFixed, 20));
    Touch("long/dir/abcdefghijklmn.p.txt"), Touch("long/dir/abcdefghijklmn.txt");
    const char *L = "L:\\dir", *S = "S:\\dir";
    struct Row {
        const char *name, *directory, *expected;
        int result = 1;
        const char *first = nullptr, *numbered = nullptr;  // string-table entries
        CGVStringArray const *taken = nullptr, *reusable = nullptr;
        bool url = false;
    } const rows[] = {
        {"report.txt", L, "report (3).txt"},   {"REPORT.TXT", "L:\\DIR", "REPORT (3).TXT"},
        {"REPORT.TXT", S, "REPOR100.TXT"},     {"C:\\elsewhere\\fresh.txt", L, "fresh.txt"},  // only the name counts
        {"my file.name.html", S, "myfile-n.htm"},  // legal for 8.3 first
        // Without a directory the path's own, or the current one, is used and kept.
        {"L:\\dir\\report.txt", nullptr, "L:\\dir\\report (3).txt"},
        {"S:\\dir\\Report.txt", nullptr, "S:\\dir\\Repor100.txt"},
        {"report.txt", nullptr, "L:\\dir\\report (3).txt"}, {"other.txt", nullptr, "L:\\dir\\other.txt"},
        {"new.txt", L, "new (3).txt", 1, {}, {}, &taken}, {"new.txt", S, "new2.txt", 1, {}, {}, &shortTaken},
        {"report.txt", L, "report.txt", 1, {}, {}, nullptr, &reusable},
        {"report.txt", L, "report (3).txt", 1, {}, {}, &reusable, &reusable},
        // Legal URL names for numbered candidates only.
        {"a#b.txt", L, "a#b.txt", 1, {}, {}, nullptr, nullptr, true},
        {"a#b.txt", L, "a-b (2).txt", 1, {}, {}, &hash, nullptr, true},
        {"a#b.txt", S, "a-b.txt", 1, {}, {}, nullptr, nullptr, true},
        // "." has no volume: short names, no room for the base. The directories after "" are files.
        {"report.txt", ".", "report1.txt"}, {"", L, "", 0}, {"x.txt", "", "x.txt", 0},
        {"x.txt", "L:\\dir\\report.txt", "x.txt", 0}, {"x.txt", "S:\\dir\\report.txt", "x.txt", 0},
        {"M:\\dir\\a.b.txt", nullptr, "", 0},  // as when the numbers run out
        {"abcdefghijklmn.p.txt", "T:\\dir", "abcdefghijklmn10.txt"},
        {"report.txt", L, "Copy of report.txt", 1, "Copy of %s"},
        {"report.txt", L, "report (3).txt", 1, ""},  // an empty first pattern is skipped
        {"report.txt", L, "report (3).txt", 1, "report"},  // a first pattern that names a file that exists
        {"report.txt", L, "2 - report.txt", 1, {}, "%d - %s"},  // the number first
        {"report.txt", L, "report_2.txt", 1, {}, "%s_%d"}, {"report.txt", L, "report (2.txt", 1, {}, "%s (%d"},
        {"report.txt", L, "%n%xreport%s2%d%%5d%.txt", 1, {}, "%n%x%s%s%d%d%%%5d%"},  // one %s, one %d
        // Widths and precisions are formatted when the conversions are the arguments, in their order.
        {"report.txt", L, "report_002.txt", 1, {}, "%s_%03d"}, {"report.txt", L, "rep (2).txt", 1, {}, "%.3s (%d)"},
        {"report.txt", L, "Copy of rep.txt", 1, "Copy of %.3s"},
        {"report.txt", L, "%04d-report.txt", 1, {}, "%04d-%s"},  // no "%d": the base first, which does not fit
        // No %d: the one candidate is taken, give up.
        {"report.txt", L, "report.txt", 0, {}, "report"}, {"report.txt", L, "report.txt", 0, {}, "%s"},
        {"report.txt", L, "report (3).txt", 1, {}, ""},  // an empty entry reads as none: the default
    };
    char saved[MAX_PATH];
    ASSERT_GT(GetCurrentDirectoryA(MAX_PATH, saved), 0u);
    ASSERT_TRUE(SetCurrentDirectoryA(L));
    for (const Row& row : rows) {
        SCOPED_TRACE(&row - rows);
        gvplatform::SetStringResource(kFirst, row.first);
        gvplatform::SetStringResource(kNumbered, row.numbered);
        Result made = Unique(row.name, row.directory, kFirst, kNumbered, row.taken, row.reusable, row.url);
        EXPECT_EQ(Result(row.result, row.expected), made);
        if (made.first && row.reusable == nullptr) {
            EXPECT_EQ(1, CGVPath(made.second.c_str()).IsUnique(row.directory));
        }
    }
    struct Free { const char *path, *directory; int unique; } const free[] = {
        {"C:\\elsewhere\\REPORT.TXT", L, 0}, {"L:\\dir\\other.txt", L, 1}, {"L:\\dir\\report (2).txt", nullptr, 0},
        {"L:\\dir", nullptr, 0}, {"report.txt", nullptr, 0}, {"other.txt", nullptr, 1}};  // L:\dir is current
    for (const Free& row : free)
        EXPECT_EQ(row.unique, CGVPath(row.path).IsUnique(row.directory)) << row.path;
    ASSERT_TRUE(SetCurrentDirectoryA(saved));
}

// Past a few candidates the listing is matched case-blind; directories count, links to nothing do not.
TEST_F(CGVPathUnique, ManyNamesStoredInOtherCases) {
    MakeDir("long/many/\xC3\x84RENDE (7).txt");
    for (const char* name : {"\xC3\xA4rende.txt", "\xC3\x84RENDE (2).TXT", "\xC3\xA4Rende (3).txt",
                             "\xC3\xA4rende (4).Txt", "\xC3\x84rende (5).txt", "\xC3\xA4rende (6).txt"})
        Touch(std::string("long/many/") + name);
    ASSERT_EQ(0, symlink("nowhere", Host("long/many/\xC3\xA4rende (8).txt").c_str()));
    CGVStringArray taken = List({"\xC4RENDE (8).TXT"}), reusable = List({"\xC4RENDE (6).TXT"});
    struct Row { const char* name; CGVStringArray const *taken, *reusable; const char* expected; } const rows[] = {
        {"\xC4RENDE.TXT", nullptr, nullptr, "\xC4RENDE (8).TXT"}, {"\xE4rende.txt", nullptr, nullptr, "\xE4rende (8).txt"},
        {"\xC4RENDE.TXT", &taken, nullptr, "\xC4RENDE (9).TXT"},  {"\xC4RENDE.TXT", nullptr, &reusable, "\xC4RENDE (6).TXT"}};
    for (const Row& row : rows)
        EXPECT_EQ(Result(1, row.expected), Unique(row.name, "L:\\many", 0, 0, row.taken, row.reusable)) << row.name;
    for (int n = 2; n <= 8; ++n)
        EXPECT_EQ(n == 8, CGVPath(("\xE4RENDE (" + std::to_string(n) + ").txt").c_str()).IsUnique("L:\\many")) << n;
}

// For a full path of 260 characters, past the listing, the status query decides.
TEST_F(CGVPathUnique, NamesTheListingCannotAnswer) {
    const std::string base(243, 'b');
    MakeDir("long/many");
    for (int n = 1; n <= 10; ++n)
        Touch("long/many/" + base + (n == 1 ? "" : " (" + std::to_string(n) + ")") + ".txt");
    EXPECT_EQ(Result(1, base + " (10).txt"), Unique((base + ".txt").c_str(), "L:\\many"));
}

TEST_F(CGVPathUnique, PrivateIsArrayElementReadsEmptySlotsAsEmpty) {
    using A = GVPathTestAccess;
    CGVStringArray slots = List({"a"});
    slots.mInsertItem(0);
    EXPECT_EQ((std::vector<int>{1, 1, 0, 0}),
              (std::vector<int>{A::PrivateIsArrayElement(&slots, "", 1), A::PrivateIsArrayElement(&slots, "A", 0),
                                A::PrivateIsArrayElement(&slots, "A", 1), A::PrivateIsArrayElement(nullptr, "", 0)}));
}
