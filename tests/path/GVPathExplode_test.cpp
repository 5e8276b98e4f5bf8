// CGVPath: Explode and Implode over the string array.
#include <gtest/gtest.h>

#include <vector>

#include "path/path_test_access.h"

static std::vector<std::string> Items(CGVStringArray const& array) {
    std::vector<std::string> items;
    for (int i = 0; i < array.mGetNumItems(); ++i) {
        CGVString item;
        array.mGetArrayItem(&item, i);
        items.push_back(Text(item));
    }
    return items;
}

// Each text explodes (clearing what the array held), implodes with delimiters
// normalised to the kind AppendPath picks, and the normalised form explodes
// into the same pieces again.
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
        EXPECT_EQ(row.volume, Text(volume));
        EXPECT_EQ(row.parts, Items(parts));
        joined.Implode(volume, parts);
        EXPECT_EQ(row.imploded, Text(joined));
        joined.Explode(again, againParts);
        EXPECT_EQ(Text(volume), Text(again));
        EXPECT_EQ(row.parts, Items(againParts));
    }
}

TEST(CGVPathExplode, ImplodeSkipsEmptyParts) {
    CGVStringArray parts = List({"a", "", "b"});
    for (const char* volume : {"", static_cast<const char*>(nullptr), "x:/"})
        EXPECT_EQ(volume && *volume ? "x:/a/b" : "a\\b", After("old", [&](CGVPath& p) { p.Implode(volume, parts); }));
}

// Parts that carry delimiters or NULs of their own join as AppendPath would join
// them one by one: the joint takes the delimiter kind nearest the end, runs of
// delimiters at a joint collapse, and a first part onto an empty path is taken whole.
TEST(CGVPathExplode, ImplodeJoinsLikeAppendingEachPart) {
    struct Row { const char* volume; std::vector<std::string> parts; std::string joined; };
    const Row rows[] = {
        {"C:", {"a/b", "c"}, "C:\\a/b/c"}, {"C:", {"x\\", "\\y"}, "C:\\x\\y"},
        {"", {"\\a", "c"}, "\\a\\c"}, {nullptr, {"", ""}, ""},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.joined);
        std::vector<CGVString> parts;
        for (const std::string& part : row.parts)
            parts.emplace_back(CString(part.data(), static_cast<int>(part.size())));
        CGVPath p("old");
        p.Implode(row.volume, List(parts));
        EXPECT_EQ(row.joined, std::string(p.GetString(), static_cast<size_t>(p.GetLength())));
    }
    CGVPath self("D:\\");  // the volume may be the path's own text
    self.Implode(self.GetString(), List({"e", "f"}));
    EXPECT_EQ("D:\\e\\f", Text(self));
}
