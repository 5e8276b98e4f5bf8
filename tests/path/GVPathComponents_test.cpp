// CGVPath: names, extensions, directories, volumes, joining and cutting, Explode and Implode.
#include <random>

#include "gvlib/platform/gvplatform.h"
#include "path/path_test_access.h"

namespace {

struct Row {
    const char *text, *name, *extension, *directory, *parent, *volume;
    const char* trimmedPath;  // after TrimRightPath
};

const Row kRows[] = {
    {"", "", "", "", "", "", ""}, {"C:", "C:", "", "C:\\", "C:\\", "C:", "C:"},
    {"C:x", "C:x", "", "C:\\", "C:x\\", "C:", "C:x"}, {"C:\\", "", "", "C:", "C:\\", "C:", "C:\\"},
    {"C:/file", "file", "", "C:", "C:\\", "C:", "C:\\"},
    {"C:\\dir\\file.txt", "file.txt", "txt", "C:\\dir", "C:\\dir\\", "C:", "C:\\dir"},
    {"C:\\dir\\sub\\", "", "", "C:\\dir\\sub", "C:\\dir\\", "C:", "C:\\dir\\sub"},
    {"C:\\dir", "dir", "", "C:", "C:\\", "C:", "C:\\"},
    {"C:file.txt", "C:file.txt", "txt", "C:\\", "C:file.txt\\", "C:", "C:file.txt"},
    {"\\\\server\\share\\x", "x", "", "\\\\server\\share", "\\\\server\\share\\", "\\\\server\\", "\\\\server\\share"},
    {"\\\\server\\share", "share", "", "\\\\server", "\\\\server\\", "\\\\server\\", "\\\\server\\"},
    {"\\\\server", "server", "", "\\", "\\", "\\\\server", "\\"}, {"\\file", "file", "", "", "", "", ""},
    {"a\\b", "b", "", "a", "a\\", "", "a\\"}, {"a/b/", "", "", "a/b", "a\\", "", "a/b/"},
    {"\\/a\\/", "/", "", "\\/a", "", "", "\\/a/"}, {"name", "name", "", "", "name\\", "", "name"},
    {"name.", "name.", "", "", "name.\\", "", "name."}, {"dir.x\\name", "name", "", "dir.x", "dir.x\\", "", "dir.x\\"},
    {"archive.tar.gz", "archive.tar.gz", "gz", "", "archive.tar.gz\\", "", "archive.tar.gz"},
    {"\xE4\\\xFF.\xA0", "\xFF.\xA0", "\xA0", "\xE4", "\xE4\\", "", "\xE4\\"},
    {"http://host/a", "a", "", "http://host", "http://host/", "", "http://host"},
    {"1ab://host/x", "x", "", "1ab://host", "1ab://host/", "1ab://host/", "1ab://host"},
    {"/ab:c", "ab:c", "", "", "", "/ab:c", ""},
};

}  // namespace

TEST(CGVPathComponents, Getters) {
    for (const Row& row : kRows) {
        SCOPED_TRACE(row.text);
        CGVPath path(row.text), nameOnly = path.GetName();
        nameOnly.TrimExtension();
        const std::string volume = row.volume;
        EXPECT_EQ((Texts{row.name, row.extension, row.directory, row.parent, row.volume, row.trimmedPath, row.text,
                         std::string(row.text).substr(volume.size()), Text(nameOnly)}),
                  (Texts{Text(path.GetName()), Text(path.GetExtension()), Text(path.GetDirectory()),
                         Text(path.GetParentDirectory()), Text(path.GetVolume()),
                         After(row.text, [](CGVPath& p) { p.TrimRightPath(); }), Text(path),
                         After(row.text, [](CGVPath& p) { p.TrimVolume(); }), Text(path.GetNameOnly())}));
    }
}

TEST(CGVPathComponents, EditsAndJoints) {
    gvplatform::SetStringResource(7101, "htm");
    gvplatform::SetStringResource(7102, "\\sub");
    struct Edit { void (*edit)(CGVPath&); Cases cases; } const rows[] = {
        {[](CGVPath& p) { p.AppendExtension(""); }, {{"a", "a."}}},
        {[](CGVPath& p) { p.AppendExtension(nullptr); }, {{"a", "a."}}},
        {[](CGVPath& p) { p.AppendExtension(".txt"); }, {{"a", "a..txt"}}},
        // The path's own text as the extension: the text as it was before the ".".
        {[](CGVPath& p) { p.AppendExtension(p.GetString()); }, {{"aaa", "aaa.aaa"}, {"report", "report.report"}}},
        {[](CGVPath& p) { p.AppendExtension(p.GetString() + 1); }, {{"abc", "abc.bc"}}},
        {[](CGVPath& p) { p.SetExtension("txt"); }, {{"a.b.c", "a.b.txt"}, {"dir.x\\name", "dir.x\\name.txt"}}},
        {[](CGVPath& p) { p.SetExtension(""); }, {{"a.b.c", "a.b.c"}}},
        {[](CGVPath& p) { p.SetExtension(static_cast<char const*>(nullptr)); }, {{"a.b.c", "a.b.c"}}},
        {[](CGVPath& p) { p.SetExtension(7101); }, {{"a.txt", "a.htm"}}},
        {[](CGVPath& p) { p.SetExtension(7199); }, {{"a.txt", "a.txt"}}},  // no such entry: empty
        {[](CGVPath& p) { p.TrimExtension(); }, {{"name.", "name"}, {"archive.tar.gz", "archive.tar"}, {".profile", ""}}},
        {[](CGVPath& p) { p.AppendDelimiter("\\"); }, {{"C:", "C:\\"}, {"C:\\\\/", "C:/"}, {"", ""}}},
        {[](CGVPath& p) { p.AppendWildcard(); }, {{"C:\\d", "C:\\d\\*.*"}, {"C:\\d\\", "C:\\d\\*.*"}, {"a/", "a/*.*"}}},
        {[](CGVPath& p) { p.AppendPath(7102, '\0', 0); }, {{"C:\\dir", "C:\\dir\\sub"}}},
        {[](CGVPath& p) { p.AppendPath(7199, '\0', 0); }, {{"C:\\dir", "C:\\dir\\"}}},
        // White space stops the trailing run.
        {[](CGVPath& p) { p.MakeDelimitersCanonical(); }, {{"C:\\a\\b/\\\\", "C:/a/b"}, {"a\\b\\ ", "a/b/ "}}},
        {[](CGVPath& p) { p = p.FormatFilePathDelimiters(); }, {{"a/b/", "a\\b\\"}}},
        // Only an existing volume is replaced.
        {[](CGVPath& p) { p.SetVolume("D:"); }, {{"C:\\d\\f", "D:\\d\\f"}, {"C:", "D:\\"}, {"", ""}, {"d\\f", "d\\f"}}},
        {[](CGVPath& p) { p.SetVolume(""); }, {{"C:\\dir\\f", ""}}},
        {[](CGVPath& p) { p.SetVolume(nullptr); }, {{"C:\\dir\\f", ""}}},
        {[](CGVPath& p) { p.SetVolume("E:"); }, {{"\\\\srv\\share\\x", "E:\\share\\x"}}},
        {[](CGVPath& p) { p.SetVolume("\\\\srv"); }, {{"c:/a/b", "\\\\srv\\a/b"}}},
        // A tail taken from the path itself is read before the path is cut.
        {[](CGVPath& p) { p.AppendPath(p.GetString(), '\0', 0); }, {{"ab\\/", "ab/ab\\/"}}},
        {[](CGVPath& p) { p.AppendPath(p.GetString() + 1, '\0', 0); }, {{"ab\\/", "ab/b\\/"}}},
    };
    for (const Edit& row : rows)
        for (auto const& c : row.cases)
            EXPECT_EQ(c.second, After(c.first, row.edit)) << c.first;
    gvplatform::SetStringResource(7101, nullptr);
    gvplatform::SetStringResource(7102, nullptr);
}

// The common join is done in place; trimming absent white space, the general join gives the same.
TEST(CGVPathComponents, AppendPathChoosesAndTrimsTheJoint) {
    struct Join { const char *path, *tail; char delimiter; int whitespace; const char* expected; } const rows[] = {
        {"", "x", '\0', 0, ""},                           {"C:\\dir\\", "\\sub", '\0', 0, "C:\\dir\\sub"},
        {"a/b", "c", '\0', 0, "a/b/c"},                   {"C:\\dir", "sub", '/', 0, "C:\\dir/sub"},
        {"C:\\dir", "", '\0', 0, "C:\\dir\\"},            {"C:\\dir", nullptr, '\0', 0, "C:\\dir\\"},
        {"a/b\\c", "d", '\0', 0, "a/b\\c\\d"},            {"a\\b/c", "d", '\0', 0, "a\\b/c/d"},
        {"C:\\dir \\ ", " sub", '\0', 1, "C:\\dir\\sub"}, {"C:\\dir \\ ", " sub", '\0', 0, "C:\\dir \\ \\ sub"},
        {"x//", "//y//", '/', 0, "x/y//"},                {"x\\/", "/y", '/', 0, "x\\/y"},
        {"x \\", "\\ y", '\\', 1, "x\\y"},                {"\xE4", "\xFF", '\0', 0, "\xE4\\\xFF"},
        {"\\", "\\", '\0', 0, "\\"},                      {"/x", "y", '\0', 0, "/x/y"},
        {"x", "y", '\0', 0, "x\\y"},                      {"x/\\", "/\\y", '\0', 0, "x\\y"},
    };
    for (const Join& row : rows) {
        SCOPED_TRACE(&row - rows);
        auto join = [&](int w) { return After(row.path, [&](CGVPath& p) { p.AppendPath(row.tail, row.delimiter, w); }); };
        EXPECT_EQ(row.expected, join(row.whitespace));
        if (row.whitespace == 0 && CGVPath(row.expected).Find(' ') < 0) {
            EXPECT_EQ(row.expected, join(1));
        }
    }
}

static Texts Items(CGVStringArray const& array) {
    Texts items;
    for (CGVString item; static_cast<int>(items.size()) < array.mGetNumItems(); items.push_back(Text(item)))
        array.mGetArrayItem(&item, static_cast<int>(items.size()));
    return items;
}

// Explode clears the array; Implode normalises the delimiters, and explodes back to the same pieces.
TEST(CGVPathExplode, SplitsAtEveryDelimiterRunAndJoinsBackNormalised) {
    struct Row { std::string text; const char* volume; std::vector<std::string> parts; const char* imploded; };
    const Row rows[] = {
        {"", "", {}, ""}, {"C:", "C:", {}, "C:"}, {"a", "", {"a"}, "a"}, {"\\/\\", "", {}, ""},
        {"C:\\dir\\\\sub\\file.txt", "C:", {"dir", "sub", "file.txt"}, "C:\\dir\\sub\\file.txt"},
        {"C:\\dir\\\\sub\\", "C:", {"dir", "sub"}, "C:\\dir\\sub"},
        {"a/b/", "", {"a", "b"}, "a\\b"}, {"\\dir\\file", "", {"dir", "file"}, "dir\\file"},
        {"C:/a/b", "C:", {"a", "b"}, "C:\\a\\b"},
        {"\\\\server\\share\\x", "\\\\server\\", {"share", "x"}, "\\\\server\\share\\x"},
        {"1ab://host/x/y", "1ab://host/", {"x", "y"}, "1ab://host/x/y"},
        {"\xE4/\xFF", "", {"\xE4", "\xFF"}, "\xE4\\\xFF"},
        {std::string("ab\0c\\d", 6), "", {"ab", "d"}, "ab\\d"},  // a piece ends at a NUL inside it
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(testing::PrintToString(row.text));
        CGVPath volume("stale"), joined("old"), again;
        CGVStringArray parts = List({"stale"}), againParts;
        After(row.text, [&](CGVPath& p) { p.Explode(volume, parts); });
        joined.Implode(volume, parts);
        joined.Explode(again, againParts);
        EXPECT_EQ((Texts{row.volume, row.imploded, row.volume}), (Texts{Text(volume), Text(joined), Text(again)}));
        EXPECT_EQ((std::vector<Texts>{row.parts, row.parts}), (std::vector<Texts>{Items(parts), Items(againParts)}));
    }
}

TEST(CGVPathExplode, ImplodeSkipsEmptyParts) {
    CGVStringArray parts = List({"a", "", "b"});
    for (const char* volume : {"", static_cast<const char*>(nullptr), "x:/"})
        EXPECT_EQ(volume && *volume ? "x:/a/b" : "a\\b", After("old", [&](CGVPath& p) { p.Implode(volume, parts); }));
}

// Parts with delimiters of their own join as AppendPath joins them one by one.
TEST(CGVPathExplode, ImplodeJoinsLikeAppendingEachPart) {
    struct Row { const char* volume; std::vector<CGVString> parts; std::string joined; };
    const Row rows[] = {
        {"C:", {"a/b", "c"}, "C:\\a/b/c"}, {"C:", {"x\\", "\\y"}, "C:\\x\\y"},
        {"", {"\\a", "c"}, "\\a\\c"}, {nullptr, {"", ""}, ""},
    };
    for (const Row& row : rows) {
        CGVPath p("old");
        p.Implode(row.volume, List(row.parts));
        EXPECT_EQ(row.joined, Text(p));
    }
    CGVPath self("D:\\");  // the volume may be the path's own text
    self.Implode(self.GetString(), List({"e", "f"}));
    EXPECT_EQ("D:\\e\\f", Text(self));
}

// A plain array is joined in one block, a derived one part by part: the same text.
TEST(CGVPathExplode, ImplodeOfADerivedArrayGivesTheSameText) {
    struct Derived : CGVStringArray {};
    std::mt19937 rng(7);
    auto word = [&rng](unsigned max) { std::string s(rng() % (max + 1), ' '); for (char& c : s) c = "ab\\/: ."[rng() % 7]; return s; };
    for (int round = 0; round < 3000; ++round) {
        const std::string volume = word(4), start = word(3);
        CGVStringArray plain;
        Derived derived;
        for (unsigned i = 0, n = rng() % 4; i < n; ++i) {
            CGVString part(word(4).c_str());
            plain.mAdd(&part), derived.mAdd(&part);
        }
        CGVPath a(start.c_str()), b(start.c_str());
        a.Implode(round % 8 ? volume.c_str() : nullptr, plain), b.Implode(round % 8 ? volume.c_str() : nullptr, derived);
        ASSERT_EQ(Text(b), Text(a)) << volume << " onto " << start;
    }
}
