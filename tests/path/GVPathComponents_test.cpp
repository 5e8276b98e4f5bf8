// CGVPath: names, extensions, directories, volumes, joining and cutting.
#include <gtest/gtest.h>

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
        CGVPath path(row.text);
        EXPECT_EQ(row.name, Text(path.GetName()));
        EXPECT_EQ(row.extension, Text(path.GetExtension()));
        EXPECT_EQ(row.directory, Text(path.GetDirectory()));
        EXPECT_EQ(row.parent, Text(path.GetParentDirectory()));
        EXPECT_EQ(row.volume, Text(path.GetVolume()));
        EXPECT_EQ(row.trimmedPath, After(row.text, [](CGVPath& p) { p.TrimRightPath(); }));
        EXPECT_EQ(row.text, Text(path));
        std::string volume = row.volume;
        EXPECT_EQ(std::string(row.text).substr(volume.size()), After(row.text, [](CGVPath& p) { p.TrimVolume(); }));
        CGVPath nameOnly = path.GetName();
        nameOnly.TrimExtension();
        EXPECT_EQ(Text(nameOnly), Text(path.GetNameOnly()));
    }
}

TEST(CGVPathComponents, EditsAndJoints) {
    gvplatform::SetStringResource(7101, "htm");
    gvplatform::SetStringResource(7102, "\\sub");
    struct Edit { const char* path; void (*edit)(CGVPath&); const char* expected; } const rows[] = {
        {"a", [](CGVPath& p) { p.AppendExtension(""); }, "a."},
        {"a", [](CGVPath& p) { p.AppendExtension(nullptr); }, "a."},
        {"a", [](CGVPath& p) { p.AppendExtension(".txt"); }, "a..txt"},
        {"a.b.c", [](CGVPath& p) { p.SetExtension("txt"); }, "a.b.txt"},
        {"a.b.c", [](CGVPath& p) { p.SetExtension(""); }, "a.b.c"},
        {"a.b.c", [](CGVPath& p) { p.SetExtension(static_cast<char const*>(nullptr)); }, "a.b.c"},
        {"dir.x\\name", [](CGVPath& p) { p.SetExtension("txt"); }, "dir.x\\name.txt"},
        {"a.txt", [](CGVPath& p) { p.SetExtension(7101); }, "a.htm"},
        {"a.txt", [](CGVPath& p) { p.SetExtension(7199); }, "a.txt"},  // no such entry: empty
        {"name.", [](CGVPath& p) { p.TrimExtension(); }, "name"},
        {"archive.tar.gz", [](CGVPath& p) { p.TrimExtension(); }, "archive.tar"},
        {".profile", [](CGVPath& p) { p.TrimExtension(); }, ""},
        {"C:", [](CGVPath& p) { p.AppendDelimiter("\\"); }, "C:\\"},
        {"C:\\\\/", [](CGVPath& p) { p.AppendDelimiter("\\"); }, "C:/"},
        {"", [](CGVPath& p) { p.AppendDelimiter("\\"); }, ""},
        {"C:\\dir", [](CGVPath& p) { p.AppendWildcard(); }, "C:\\dir\\*.*"},
        {"C:\\dir\\", [](CGVPath& p) { p.AppendWildcard(); }, "C:\\dir\\*.*"},
        {"a/", [](CGVPath& p) { p.AppendWildcard(); }, "a/*.*"},
        {"C:\\dir", [](CGVPath& p) { p.AppendPath(7102, '\0', 0); }, "C:\\dir\\sub"},
        {"C:\\dir", [](CGVPath& p) { p.AppendPath(7199, '\0', 0); }, "C:\\dir\\"},
        // White space stops the trailing run.
        {"C:\\a\\b/\\\\", [](CGVPath& p) { p.MakeDelimitersCanonical(); }, "C:/a/b"},
        {"a\\b\\ ", [](CGVPath& p) { p.MakeDelimitersCanonical(); }, "a/b/ "},
        {"a/b/", [](CGVPath& p) { p = p.FormatFilePathDelimiters(); }, "a\\b\\"},
        {"C:\\dir\\f", [](CGVPath& p) { p.SetVolume("D:"); }, "D:\\dir\\f"},
        {"C:\\dir\\f", [](CGVPath& p) { p.SetVolume(""); }, ""}, {"C:", [](CGVPath& p) { p.SetVolume("D:"); }, "D:\\"},
        {"C:\\dir\\f", [](CGVPath& p) { p.SetVolume(nullptr); }, ""}, {"", [](CGVPath& p) { p.SetVolume("D:"); }, ""},
        {"dir\\f", [](CGVPath& p) { p.SetVolume("D:"); }, "dir\\f"},  // only an existing volume is replaced
        {"\\\\srv\\share\\x", [](CGVPath& p) { p.SetVolume("E:"); }, "E:\\share\\x"},
        {"c:/a/b", [](CGVPath& p) { p.SetVolume("\\\\srv"); }, "\\\\srv\\a/b"},
        // A tail taken from the path itself is read before the path is cut.
        {"ab\\/", [](CGVPath& p) { p.AppendPath(p.GetString(), '\0', 0); }, "ab/ab\\/"},
        {"ab\\/", [](CGVPath& p) { p.AppendPath(p.GetString() + 1, '\0', 0); }, "ab/b\\/"},
    };
    for (const Edit& row : rows)
        EXPECT_EQ(row.expected, After(row.path, row.edit)) << row.path;
    gvplatform::SetStringResource(7101, nullptr);
    gvplatform::SetStringResource(7102, nullptr);
}

// The common join is done in place; asked to trim white space that is not
// there, the general join must give the same.
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
        SCOPED_TRACE(std::string(row.path) + " + " + (row.tail ? row.tail : "(null)"));
        EXPECT_EQ(row.expected,
                  After(row.path, [&](CGVPath& p) { p.AppendPath(row.tail, row.delimiter, row.whitespace); }));
        if (row.whitespace == 0 && CGVPath(row.expected).Find(' ') < 0) {
            EXPECT_EQ(row.expected, After(row.path, [&](CGVPath& p) { p.AppendPath(row.tail, row.delimiter, 1); }));
        }
    }
}
