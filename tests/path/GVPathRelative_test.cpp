// CGVPath: relative paths between full paths, for files and for URLs.
#include <gtest/gtest.h>

#include "gvlib/platform/volumes.h"
#include "path/path_test_access.h"

// C: is the default drive and exists; D: and Q: are not mapped. On one volume,
// following the relative path from the base leads back to the target, wherever
// the parent steps end.
TEST(CGVPathRelative, FromTheBaseToTheTarget) {
    struct Row { const char *target, *base, *files, *url; } const rows[] = {
        {"C:\\site\\pages\\a.htm", "C:\\site\\img", "..\\pages\\a.htm", "../pages/a.htm"},
        {"C:\\a\\x.htm", "C:\\a", "x.htm", "x.htm"}, {"C:\\a\\x.htm", "C:\\a\\", "x.htm", "x.htm"},
        {"C:\\a\\x.htm", "C:\\a\\b\\c", "..\\..\\x.htm", "../../x.htm"},
        {"C:\\a\\b\\c.htm", "C:\\x\\y", "..\\..\\a\\b\\c.htm", "../../a/b/c.htm"},
        {"C:\\a\\bc\\x.htm", "C:\\a\\bd", "..\\bc\\x.htm", "../bc/x.htm"},
        {"C:\\Site\\a.htm", "c:\\site\\img", "..\\a.htm", "../a.htm"}, {"C:\\a\\x.htm", "D:\\a", "", ""},
        {"http://host/a.htm", "C:\\a", "", ""}, {"dir\\a.htm", "C:\\a", "", ""}, {"C:\\a\\x.htm", "a\\b", "", ""},
        {"C:\\a\\x.htm", nullptr, "", ""},       {"C:\\a\\x.htm", "C:", "", ""}, {"C:a\\x.htm", "C:\\", "", ""},
        {"\\\\srv\\sh\\a\\x.htm", "\\\\srv\\sh\\b", "..\\a\\x.htm", "../a/x.htm"}, {"C:\\a\\b\\", "C:\\a", "b\\", "b"},
        {"C:/site/pages/a.htm", "C:/site/img", "..\\pages/a.htm", "../pages/a.htm"},
        // A root the cut never reaches: a drive that does not exist, two servers,
        // a base mixing delimiters. The count ends at the root.
        {"Q:\\a\\b\\c.htm", "Q:\\x\\y", "..\\..\\a\\b\\c.htm", "../../a/b/c.htm"},
        {"C:\\ab\\x", "C:\\ac", "..\\ab\\x", "../ab/x"},
        {"\\\\s1\\sh\\x", "\\\\s2\\sh\\y", "..\\..\\s1\\sh\\x", "../../s1/sh/x"},
        {"C:\\a\\b\\x", "C:\\a/c\\d", "..\\..\\b\\x", "../../b/x"}, {"C:\\x", "C:\\", "x", "x"},
        {"C:\\", "C:\\", "", ""}, {"C:\\a", "C:\\a\\", "..\\a", "../a"},  // the base is always a directory
        {"C:\\a\\b\\\\f", "C:\\a\\b\\\\", "f", "f"},  // the common part ends in a delimiter run
    };
    gvplatform::ResetVolumes();
    for (const Row& row : rows) {
        SCOPED_TRACE(std::string(row.target) + " from " + (row.base ? row.base : "(null)"));
        CGVPath target(row.target);
        EXPECT_EQ(row.files, Text(target.GetRelativePath(row.base)));
        EXPECT_EQ(row.url, Text(target.GetUrlRelativePath(row.base)));
        EXPECT_EQ(row.target, Text(target));
        if (*row.files == '\0' || target.CompareVolume(row.base) != 0)
            continue;
        CGVPath joined(row.base);
        joined.AppendPath(row.files, '\0', 0);
        EXPECT_EQ(0, joined.GetFullPathNameA(nullptr).CompareNoCase(target.GetFullPathNameA(nullptr)));
    }
}
