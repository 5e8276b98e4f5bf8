// CGVPath: legality tests and the legalisation of names and paths, on drives L: and S:.
#include "path/path_test_access.h"
#include "path/volume_fixture.h"

using CGVPathLegal = VolumeFixture;

static const std::string kPath260 = "L:\\" + std::string(257, 'a'), kPath261 = kPath260 + "a";

TEST_F(CGVPathLegal, IsLegalByItsRules) {
    struct Row { std::string path; const char* volume; int legal; } const rows[] = {
        {kPath260, nullptr, 1},                  {kPath261, nullptr, 0},
        {"L:\\a b \\c", nullptr, 0}, {" \\x", nullptr, 0},  // a component ending in a space, also the first
        {"ab:c", nullptr, 0},                    {"L:\\x:y", nullptr, 0},
        {"\\\\server\\share\\a.txt", nullptr, 1}, {"L:\\My Documents\\a.b.c.txt", nullptr, 1},
        {"S:\\My Documents\\a.b.c.txt", nullptr, 0}, {"L:\\dir\\\\file", nullptr, 0},  // an empty component
        {"L:\\My Documents\\a.b.c.txt", "S:\\", 0},  // the volume argument decides
        {"S:\\docs\\a.b.txt", nullptr, 0},       {"S:\\docs\\ab.txt", nullptr, 1},
        {"S:\\dir\\.hidden", nullptr, 0},        {"S:/dir/.hidden", nullptr, 0},
        {"S:\\a...b", nullptr, 0},               {"S:\\a+b.txt", nullptr, 0},
        {"L:\\a+b,[c]=d.txt", nullptr, 1},       {"L:\\a?b", nullptr, 0},
        {"a?b", "L:\\", 0}, {"a+b c", nullptr, 1},  // unqualified: the long set anyway, and only it
        {"dir.x\\name.txt", nullptr, 0},  // relative is short: the whole text has a second full stop
        {"dir.x\\name.txt", "L:\\", 1},          {"", nullptr, 1},
    };
    for (const Row& row : rows)
        EXPECT_EQ(row.legal, CGVPath(row.path.c_str()).IsLegal(row.volume)) << row.path << " on " << (row.volume ? row.volume : "-");
}

TEST_F(CGVPathLegal, LengthsAgainstTheVolumeLimits) {
    using Member = int (CGVPath::*)(int) const;
    const Member whole = &CGVPath::IsLegalLength, part = &CGVPath::IsLegalComponentLength,
                 extension = &CGVPath::IsLegalExtensionLength;
    struct Row { std::string path; Member member; int limit, legal; } const rows[] = {
        {kPath260, whole, -1, 1},                 {kPath261, whole, -1, 0},
        {"", whole, 260, 1},                      {"", whole, 261, 0},
        {kPath261, whole, 0, 1},  // a limit of 0 is measured, not the text
        {"S:\\x", part, 12, 1},                   {"S:\\x", part, 13, 0},
        {"L:\\page.html", extension, -1, 0},      {"L:\\page.htm", extension, -1, 1},
        {"dir\\page.htm", extension, -1, 1},      {"S:\\abcdefghijkl\\x", part, -1, 1},
        {"S:\\abcdefghijklm\\x", part, -1, 0},    {"S:\\x\\abcdefghijklm", part, -1, 0},
        {"S:/x/abcdefghijkl", part, -1, 1},       {"S:\\a\\\\abcdefghij", part, -1, 1},
        {"S:\\a\\\\abcdefghijklmnop", part, -1, 0},  // after an empty component the rest is one
        {"abcd\\x", part, -1, 0},  // relative: every component is too long
        {"ab", part, -1, 1},                      {"S:\\", part, -1, 1},
    };
    for (const Row& row : rows)
        EXPECT_EQ(row.legal, (CGVPath(row.path.c_str()).*row.member)(row.limit)) << row.path << " limit " << row.limit;
}

// A row without a directory is a whole path. A legal result stays as it is.
TEST_F(CGVPathLegal, NamesAndPathsMadeLegal) {
    const std::string dir249 = "L:\\" + std::string(246, 'd'), dir260 = "L:\\" + std::string(257, 'd');
    struct Row { const char* text; const char* directory; const char* legal; } const rows[] = {
        {"my file.name.html", "S:\\dir", "myfile-n.htm"},  // the space goes with the bad characters
        {"a:b\\c/d;e.txt", "S:\\", "abcde.txt"}, {"a:b\\c/d;e.txt", "L:\\", "abcd;e.txt"},
        {"abcdefgh.txt", dir249.c_str(), "a.txt"},  // only the extension fits: one character stays
        {"abcdefghijklmnop.txt", dir249.c_str(), "abcdefghij"},
        {"abcdefghijklmnop.txt", dir260.c_str(), "abcdefghijklmnop.txt"},
        {"long name.text", "", "longname.tex"},  // no volume: short rules
        {"a?b*.txt", "L:\\dir", "ab.txt"}, {"L:\\dir:x\\file?.txt", nullptr, "L:\\dirx\\file.txt"},
        {"S:\\My Documents\\report.final.text", nullptr, "S:\\MyDocume\\report-f.tex"},
        {"rel dir\\a.b.c  ", nullptr, "reldir\\a-b.c"}, {"L:\\..\\x", nullptr, "L:\\----\\x"},
        {"\\\\server\\share\\a?b", nullptr, "\\\\server\\share\\ab"}, {"", nullptr, ""},
        {".profile", "S:\\", "profile"}, {" \t ", "S:\\", "----"}, {"....", "L:\\", "----"}, {"", "L:\\", "----"},
        {"my file.name.html  ", "L:\\", "my file.name.html"}, {"abcdefghijk.text", "L:\\", "abcdefghijk.text"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(std::string(row.text) + " in " + (row.directory ? row.directory : "(a path)"));
        CGVPath made(row.text);
        for (int round = 0; round < 2; ++round) {
            EXPECT_EQ(1, row.directory ? made.MakeLegalName(row.directory) : made.MakeLegalPath());
            EXPECT_EQ(row.legal, Text(made));
        }
    }
}

// A long-name path is made legal in one pass; on random texts that pass must give
// what exploding, rewriting each component and imploding gives.
TEST_F(CGVPathLegal, OnePassMatchesTheStepByStepRewrite) {
    const std::string heads[] = {"L:\\", "L:", "L:/", "\\\\server\\share\\", "\\\\server\\share/",
                                "\\\\server/share\\", "L:\\\\", "\\\\", "/", ""};
    const char alphabet[] = {'a', 'b', ' ', '\t', '.', ':', '?', '*', '\\', '/', '\0', '\xE9', '-', '<'};
    uint32_t seed = 12345;
    auto next = [&seed] { return (seed = seed * 1103515245u + 12345u) >> 16; };
    for (int round = 0; round < 3000; ++round) {
        std::string text = heads[next() % (sizeof heads / sizeof *heads)];
        for (int n = static_cast<int>(next() % 24); n > 0; --n)
            text += alphabet[next() % sizeof alphabet];
        CGVPath fast, trimmed;
        fast.SetString(text.data(), static_cast<int>(text.size()));
        trimmed = fast;
        trimmed.CStringT<char>::TrimRight();
        CGVPath stepwise = fast;
        fast.MakeLegalPath();
        const uint32_t limit = CGVPath(trimmed).GetVolume().GetVolumeMaxComponent();
        GVPathTestAccess::PrivateMakeLegalComponents(stepwise, trimmed, limit);
        ASSERT_EQ(Text(stepwise), Text(fast)) << "from " << ::testing::PrintToString(text);
    }
}
