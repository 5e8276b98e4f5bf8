// CGVPath: legality tests and the legalisation of names and paths, on a
// long-name drive L: and a short-name drive S: (12-character components).
#include <gtest/gtest.h>

#include <string>

#include "gvlib/path/GVPath.h"
#include "path/path_test_access.h"
#include "path/volume_fixture.h"

namespace {

std::string Text(CGVString const& s) { return std::string(s.GetString(), static_cast<size_t>(s.GetLength())); }

using CGVPathLegal = VolumeFixture;

const std::string kPath260 = "L:\\" + std::string(257, 'a');
const std::string kPath261 = kPath260 + "a";

}  // namespace

TEST_F(CGVPathLegal, IsLegalByItsRules) {
    struct Row {
        std::string path;
        const char* volume;
        int legal;
    } rows[] = {
        {kPath260, nullptr, 1},
        {kPath261, nullptr, 0},
        {"L:\\a b \\c", nullptr, 0},  // a component ending in a space
        {"ab:c", nullptr, 0},
        {"L:\\x:y", nullptr, 0},
        {"L:\\dir\\\\file", nullptr, 0},  // an empty component
        {"\\\\server\\share\\a.txt", nullptr, 1},
        {"L:\\My Documents\\a.b.c.txt", nullptr, 1},
        {"S:\\My Documents\\a.b.c.txt", nullptr, 0},
        {"L:\\My Documents\\a.b.c.txt", "S:\\", 0},  // the volume argument decides
        {"S:\\docs\\a.b.txt", nullptr, 0},
        {"S:\\docs\\ab.txt", nullptr, 1},
        {"S:\\dir\\.hidden", nullptr, 0},
        {"S:/dir/.hidden", nullptr, 0},
        {"S:\\a...b", nullptr, 0},
        {"S:\\a+b.txt", nullptr, 0},
        {"L:\\a+b,[c]=d.txt", nullptr, 1},
        {"L:\\a?b", nullptr, 0},
        {"a?b", "L:\\", 0},               // unqualified: the long set anyway
        {"a+b c", nullptr, 1},            // and only the long set
        {"dir.x\\name.txt", nullptr, 0},  // relative is short: the whole text has a second full stop
        {"dir.x\\name.txt", "L:\\", 1},
        {"", nullptr, 1},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.path + " on " + (row.volume ? row.volume : "its own volume"));
        EXPECT_EQ(row.legal, CGVPath(row.path.c_str()).IsLegal(row.volume));
    }
}

TEST_F(CGVPathLegal, LengthsAgainstTheVolumeLimits) {
    EXPECT_EQ(1, CGVPath(kPath260.c_str()).IsLegalLength(-1));
    EXPECT_EQ(0, CGVPath(kPath261.c_str()).IsLegalLength(-1));
    EXPECT_EQ(1, CGVPath().IsLegalLength(260));
    EXPECT_EQ(0, CGVPath().IsLegalLength(261));
    EXPECT_EQ(1, CGVPath("S:\\x").IsLegalComponentLength(12));
    EXPECT_EQ(0, CGVPath("S:\\x").IsLegalComponentLength(13));
    EXPECT_EQ(0, CGVPath("L:\\page.html").IsLegalExtensionLength(-1));
    EXPECT_EQ(1, CGVPath("L:\\page.htm").IsLegalExtensionLength(-1));
    EXPECT_EQ(1, CGVPath("dir\\page.htm").IsLegalExtensionLength(-1));

    struct Row {
        const char* path;
        int legal;
    } rows[] = {
        {"S:\\abcdefghijkl\\x", 1},
        {"S:\\abcdefghijklm\\x", 0},
        {"S:\\x\\abcdefghijklm", 0},
        {"S:/x/abcdefghijkl", 1},
        {"S:\\a\\\\abcdefghijklmnop", 0},  // after an empty component the rest is one
        {"S:\\a\\\\abcdefghij", 1},
        {"abcd\\x", 0},  // relative: every component is too long
        {"ab", 1},
        {"S:\\", 1},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.path);
        EXPECT_EQ(row.legal, CGVPath(row.path).IsLegalComponentLength(-1));
    }
}

TEST_F(CGVPathLegal, TheSharedNameRewrite) {
    struct Row {
        const char* name;
        uint32_t maxComponent;
        const char* legal;
    } rows[] = {
        {"my file.name.html", 12, "my-file-.htm"},
        {"my file.name.html  ", 255, "my file.name.html"},
        {"....", 12, "----"},
        {"....", 255, "----"},
        {" \t ", 12, "----"},
        {".profile", 12, "profile"},
        {"abcdefghijk.text", 12, "abcdefgh.tex"},
        {"abcdefghijk.text", 255, "abcdefghijk.text"},
        {"a.b", 0, "a.b"},
        {"", 255, "----"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        CGVPath name(row.name);
        GVPathTestAccess::PrivateMakeLegal(name, row.maxComponent, 3);
        EXPECT_EQ(row.legal, Text(name));
    }
}

TEST_F(CGVPathLegal, NamesAndPathsMadeLegal) {
    const std::string dir249 = "L:\\" + std::string(246, 'd');
    const std::string dir260 = "L:\\" + std::string(257, 'd');
    struct Row {
        const char* name;
        std::string directory;
        const char* legal;
    } names[] = {
        {"a?b*.txt", "L:\\dir", "ab.txt"},
        {"my file.name.html", "S:\\dir", "myfile-n.htm"},  // the space goes with the bad characters
        {"a:b\\c/d;e.txt", "S:\\", "abcde.txt"},
        {"a:b\\c/d;e.txt", "L:\\", "abcd;e.txt"},
        {"abcdefgh.txt", dir249, "a.txt"},  // only the extension fits: one character stays
        {"abcdefghijklmnop.txt", dir249, "abcdefghij"},
        {"abcdefghijklmnop.txt", dir260, "abcdefghijklmnop.txt"},
        {"long name.text", "", "longname.tex"},  // no volume: short rules
    };
    for (const Row& row : names) {
        SCOPED_TRACE(std::string(row.name) + " in " + row.directory);
        CGVPath name(row.name);
        EXPECT_EQ(1, name.MakeLegalName(row.directory.c_str()));
        EXPECT_EQ(row.legal, Text(name));
        EXPECT_EQ(1, name.MakeLegalName(row.directory.c_str()));
        EXPECT_EQ(row.legal, Text(name));  // a legal name stays as it is
    }

    struct PathRow {
        const char* path;
        const char* legal;
    } paths[] = {
        {"L:\\dir:x\\file?.txt", "L:\\dirx\\file.txt"},
        {"S:\\My Documents\\report.final.text", "S:\\MyDocume\\report-f.tex"},
        {"rel dir\\a.b.c  ", "reldir\\a-b.c"},
        {"L:\\..\\x", "L:\\----\\x"},
        {"\\\\server\\share\\a?b", "\\\\server\\share\\ab"},
        {"", ""},
    };
    for (const PathRow& row : paths) {
        SCOPED_TRACE(row.path);
        CGVPath path(row.path);
        EXPECT_EQ(1, path.MakeLegalPath());
        EXPECT_EQ(row.legal, Text(path));
        path.MakeLegalPath();
        EXPECT_EQ(row.legal, Text(path));
    }
}

TEST_F(CGVPathLegal, EveryMemberOverAwkwardTexts) {
    const char* texts[] = {"", ".", "..", " ", "\\", "\\\\", "L:", "S:", "S:\\", "S:\\ \\", "L:\\...", ":::",
                           "\xE4\xFF.\xA0", "S:\\\xE4 b.c.d", "*?\"<>|", "L:\\a\\\\\\"};
    for (const char* text : texts) {
        SCOPED_TRACE(text);
        CGVPath path(text);
        path.IsLegal(nullptr);
        path.IsLegal(text);
        path.IsLegalComponentLength(-1);
        path.IsLegalExtensionLength(-1);
        CGVPath name(text);
        name.MakeLegalName("S:\\dir");
        // A short name keeps to 8.3 and holds none of the forbidden characters.
        EXPECT_LE(name.GetLength(), 12);
        EXPECT_EQ(-1, name.FindOneOf(name.GetBadNameCharacters(0)));
        EXPECT_EQ(1, CGVPath(("S:\\dir\\" + Text(name)).c_str()).IsLegal(nullptr));
        CGVPath whole(text);
        whole.MakeLegalPath();
    }
}
