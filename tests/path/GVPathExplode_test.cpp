// CGVPath: Explode and Implode over the string array.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "gvlib/array/GVStringArray.h"
#include "gvlib/path/GVPath.h"

namespace {

std::string Text(CGVString const& s) { return std::string(s.GetString(), static_cast<size_t>(s.GetLength())); }

std::vector<std::string> Items(CGVStringArray const& array) {
    std::vector<std::string> items;
    for (int i = 0; i < array.mGetNumItems(); ++i) {
        CGVString item;
        array.mGetArrayItem(&item, i);
        items.push_back(Text(item));
    }
    return items;
}

struct Row {
    const char* text;
    const char* volume;
    std::vector<std::string> parts;
    const char* imploded;  // delimiters normalised to the kind AppendPath picks
};

const Row kRows[] = {
    {"", "", {}, ""},
    {"C:", "C:", {}, "C:"},
    {"C:\\dir\\\\sub\\file.txt", "C:", {"dir", "sub", "file.txt"}, "C:\\dir\\sub\\file.txt"},
    {"C:\\dir\\\\sub\\", "C:", {"dir", "sub"}, "C:\\dir\\sub"},
    {"a/b/", "", {"a", "b"}, "a\\b"},
    {"\\dir\\file", "", {"dir", "file"}, "dir\\file"},
    {"C:/a/b", "C:", {"a", "b"}, "C:\\a\\b"},
    {"\\\\server\\share\\x", "\\\\server\\", {"share", "x"}, "\\\\server\\share\\x"},
    {"1ab://host/x/y", "1ab://host/", {"x", "y"}, "1ab://host/x/y"},
    {"\xE4/\xFF", "", {"\xE4", "\xFF"}, "\xE4\\\xFF"},
    {"\\/\\", "", {}, ""},
    {"a", "", {"a"}, "a"},
};

}  // namespace

TEST(CGVPathExplode, SplitsAtEveryDelimiterRunAndJoinsBackNormalised) {
    for (const Row& row : kRows) {
        SCOPED_TRACE(row.text);
        CGVPath path(row.text);
        CGVPath volume("stale");
        CGVStringArray parts;
        CGVString stale("stale");
        parts.mAdd(&stale);  // Explode clears what the array held
        path.Explode(volume, parts);
        EXPECT_EQ(row.volume, Text(volume));
        EXPECT_EQ(row.parts, Items(parts));

        CGVPath joined("old");
        joined.Implode(volume, parts);
        EXPECT_EQ(row.imploded, Text(joined));
        // The normalised form explodes into the same pieces again.
        CGVPath again;
        CGVStringArray againParts;
        joined.Explode(again, againParts);
        EXPECT_EQ(Text(volume), Text(again));
        EXPECT_EQ(row.parts, Items(againParts));
    }
}

TEST(CGVPathExplode, ImplodeSkipsEmptyParts) {
    CGVStringArray parts;
    CGVString a("a"), empty, b("b");
    parts.mAdd(&a);
    parts.mAdd(&empty);
    parts.mAdd(&b);
    CGVPath path;
    path.Implode("", parts);
    EXPECT_STREQ("a\\b", path);
    path.Implode(nullptr, parts);
    EXPECT_STREQ("a\\b", path);
    path.Implode("x:/", parts);
    EXPECT_STREQ("x:/a/b", path);
}
