// CGVPath: volume limits through the one-entry cache, existence, full names, comparisons, relative paths.
#include "path/path_test_access.h"
#include "path/volume_fixture.h"

namespace {

class CGVPathVolume : public VolumeFixture {
protected:
    void SetUp() override {
        VolumeFixture::SetUp();
        MakeDir("long/dir/sub"), MakeDir("share/docs");
        for (const char* file : {"long/dir/report.txt", "long/dir/\xC3\x84rger.txt", "share/docs/a.htm"})
            Touch(file);  // the second is "A-umlaut rger.txt" in the host's UTF-8
    }
};

}  // namespace

TEST_F(CGVPathVolume, LimitsFollowTheVolume) {
    // No volume for a relative path or URL; Q: and \\server\ answer nothing: long names, extensions of 3 below 260.
    gvplatform::MapDrive('W', Host("spare"), Options(gvplatform::kDriveFixed, 260));
    gvplatform::MapDrive('X', Host("spare"), Options(gvplatform::kDriveFixed, 259));
    gvplatform::MapDrive('T', Host("spare"), Options(gvplatform::kDriveFixed, 13));
    struct Row { const char* path; uint32_t maxComponent, maxExtension; int longNames; } const rows[] = {
        {"dir\\x", 0, 3, 0}, {"http://host/x", 0, 3, 0}, {"Q:\\x", 256, 3, 1},   {"L:\\x", 255, 3, 1},
        {"S:\\x", 12, 3, 0}, {"s:", 12, 3, 0},            {"W:\\x", 260, 256, 1}, {"X:\\x", 259, 3, 1},
        {"T:\\x", 13, 3, 1}, {"\\\\server\\share\\x", 256, 3, 1}};
    for (const Row& row : rows) {
        SCOPED_TRACE(row.path);
        CGVPath path(row.path);
        EXPECT_EQ((std::vector<uint32_t>{row.maxComponent, row.maxExtension, uint32_t(row.longNames), 260u}),
                  (std::vector<uint32_t>{path.GetVolumeMaxComponent(), path.GetVolumeMaxExtension(),
                                         uint32_t(path.IsVolumeLongFileNameEnabled()), path.GetVolumeMaxPath()}));
    }
}

TEST_F(CGVPathVolume, OnlyFixedDrivesStayInTheOneEntryCache) {
    auto queriesFor = [](std::initializer_list<const char*> paths) {
        uint32_t before = gvplatform::VolumeQueryCount();
        for (const char* p : paths)
            CGVPath(p).GetVolumeMaxComponent();
        return gvplatform::VolumeQueryCount() - before;
    };
    // Removable drives: asked each time. The fixed entry: keyed by exact text, replaced by another root. Failures: not kept.
    EXPECT_EQ((std::vector<uint32_t>{1, 0, 2, 0, 2, 1, 2}),
              (std::vector<uint32_t>{queriesFor({"L:\\a", "L:\\b"}), queriesFor({"L:\\c"}), queriesFor({"R:\\a", "R:\\b"}),
                                     queriesFor({"L:\\d"}), queriesFor({"S:\\a", "L:\\a", "L:\\b"}), queriesFor({"l:\\a"}),
                                     queriesFor({"Q:\\a", "Q:\\a"})}));
}

TEST_F(CGVPathVolume, TheVolumeRecord) {
    gvplatform::VolumeOptions options = Options(gvplatform::kDriveFixed, 64);
    options.volumeName = "DATA", options.fileSystemName = "NTFS";
    options.serialNumber = 0x1234ABCDu, options.fileSystemFlags = 0x2Fu;
    gvplatform::MapDrive('V', Host("spare"), options);
    // The second answer comes from the cache.
    for (const char* volume : {"V:", "V:\\"}) {
        SCOPED_TRACE(volume);
        CGVPath::VolumeInfo info;
        uint32_t before = gvplatform::VolumeQueryCount();
        ASSERT_EQ(1, GVPathTestAccess::GetVolumeInfo(CGVPath(), volume, info));
        EXPECT_EQ(volume[2] ? 0u : 1u, gvplatform::VolumeQueryCount() - before);
        EXPECT_EQ("V:\\ DATA NTFS", Text(info.root) + " " + Text(info.volumeName) + " " + Text(info.fileSystemName));
        EXPECT_EQ((std::vector<uint32_t>{64u, 0x1234ABCDu, 0x2Fu}),
                  (std::vector<uint32_t>{info.maxComponentLength, info.serialNumber, info.fileSystemFlags}));
    }
    CGVPath::VolumeInfo info;  // a failed query clears the numbers
    info.maxComponentLength = info.serialNumber = info.fileSystemFlags = 1;
    EXPECT_EQ(0, GVPathTestAccess::GetVolumeInfo(CGVPath(), "Q:", info));
    EXPECT_EQ("Q:\\", Text(info.root));
    EXPECT_EQ(0u, info.maxComponentLength + info.serialNumber + info.fileSystemFlags);
}

TEST_F(CGVPathVolume, ExistenceOverTheMappedDrives) {
    struct Row { const char* path; int volume, file, directory, base; const char* available; } const rows[] = {
        {"L:", 1, 0, 1, 1, "L:"},     {"L:\\", 1, 0, 1, 1, "L:\\"}, {"l:/", 1, 0, 1, 1, "l:/"},
        {"L:\\dir", 0, 0, 1, 1, "L:\\dir"}, {"L:\\DIR\\", 0, 0, 1, 1, "L:\\DIR\\"},  // any case, a trailing delimiter
        {"L:\\\\", 0, 0, 0, 1, "L:\\"},  // too long for a volume; the status of L: alone fails
        {"L:\\dir\\REPORT.TXT", 0, 1, 0, 1, "L:\\dir\\REPORT.TXT"}, {"Q:", 0, 0, 0, 0, ""}, {"Q:\\dir\\x", 0, 0, 0, 0, ""},
        {"L:\\dir\\\xC4RGER.txt", 0, 1, 0, 1, "L:\\dir\\\xC4RGER.txt"},  // the ANSI spelling, any case
        {"L:\\dir\\\xE4rger.TXT", 0, 1, 0, 1, "L:\\dir\\\xE4rger.TXT"},  // any case beyond ASCII too
        {"L:\\dir\\missing\\file.txt", 0, 0, 0, 1, "L:\\dir"}, {"L:\\dir\\report.txt\\x", 0, 0, 0, 1, "L:\\dir"},
        {"\\\\server\\share\\docs", 0, 0, 1, 1, "\\\\server\\share\\docs"},
        {"\\\\server\\share\\docs\\a.htm", 0, 1, 0, 1, "\\\\server\\share\\docs\\a.htm"},
        {"\\\\other\\share\\docs", 0, 0, 0, 0, ""}};
    for (const Row& row : rows) {
        SCOPED_TRACE(row.path);
        CGVPath path(row.path);
        EXPECT_EQ((std::vector<int>{row.volume, row.file, row.directory, row.file || row.directory, row.base}),
                  (std::vector<int>{path.IsVolume(), path.IsFile(), path.IsDirectory(), path.IsAvailable(),
                                    path.IsBaseAvailable()}));
        EXPECT_EQ(row.available, Text(path.GetAvailable()));
    }
    gvplatform::UnmapDrive('L');
    EXPECT_EQ(0, CGVPath("L:\\").IsVolume());
}

TEST_F(CGVPathVolume, FullPathNameAgainstADirectory) {
    char before[MAX_PATH], after[MAX_PATH];
    ASSERT_GT(GetCurrentDirectoryA(MAX_PATH, before), 0u);
    const std::string tooLong = "L:\\" + std::string(300, 'a');
    struct Row { std::string path; const char* directory; std::string full; } const rows[] = {
        {"x.txt", "L:\\dir", "L:\\dir\\x.txt"}, {"..\\y", "L:\\dir\\sub", "L:\\dir\\y"}, {"\\z", "L:\\dir", "L:\\z"},
        {"L:/a/./b/../c", nullptr, "L:\\a\\c"}, {"S:\\k", "L:\\dir", "S:\\k"},
        {"", "L:\\dir", ""}, {tooLong, nullptr, tooLong}};  // the platform fails: the path comes back unchanged
    for (const Row& row : rows) {
        SCOPED_TRACE(row.path);
        EXPECT_EQ(row.full, Text(CGVPath(row.path.c_str()).GetFullPathNameA(row.directory)));
        EXPECT_STREQ(before, (GetCurrentDirectoryA(MAX_PATH, after), after));  // the current directory is back
    }
}

TEST_F(CGVPathVolume, FullPathNameMovesEvenWhenTheCurrentDirectoryCannotBeRead) {
    const std::filesystem::path host = std::filesystem::current_path();
    gvplatform::UnmapDrive('C');  // the host's directory has no drive letter left
    char current[MAX_PATH] = "";
    ASSERT_EQ(0u, GetCurrentDirectoryA(MAX_PATH, current));
    EXPECT_EQ("L:\\dir\\sub\\f.txt", Text(CGVPath("sub\\f.txt").GetFullPathNameA("L:\\dir")));
    // Nothing was read, so nothing is restored: the given directory stays current.
    EXPECT_EQ(std::filesystem::path(Host("long/dir")), std::filesystem::current_path());
    std::filesystem::current_path(host);
}

// Files by short names when both exist, else as text; volumes and directories without case; no volume first.
TEST_F(CGVPathVolume, ComparisonsOfFilesVolumesAndDirectories) {
    CGVPath drive("C:\\x");
    const int rows[][2] = {  // the answer, the one expected
        {CGVPath::CompareFiles("L:\\dir\\report.txt", "l:/DIR/Report.TXT"), 1},
        {CGVPath::CompareFiles("L:\\dir\\sub\\..\\report.txt", "L:\\dir\\report.txt"), 1},
        {CGVPath::CompareFiles("L:\\none", "l:\\NONE"), 1}, {CGVPath::CompareFiles("L:\\dir\\..\\none", "L:\\none"), 0},
        {CGVPath::CompareFiles("L:\\dir\\report.txt", nullptr), 0}, {CGVPath::CompareFiles(nullptr, ""), 1},
        {CGVPath("L:\\DIR\\report.txt").CompareFile("L:\\dir\\REPORT.txt"), 1},
        {CGVPath("C:\\a").CompareVolume("c:\\b"), 0}, {CGVPath("C:\\a").CompareVolume("D:\\a") != 0, 1},
        {CGVPath("\\\\server\\x\\y").CompareVolume("\\\\SERVER\\z"), 0}, {CGVPath("a\\b").CompareVolume("C:\\a") < 0, 1},
        {CGVPath("C:\\dir\\a.txt").IsInDirectoryOf("C:\\dir\\b.txt"), 1},
        {CGVPath("C:\\dir\\a.txt").IsInDirectoryOf("c:\\DIR\\"), 1}, {CGVPath("C:\\dir\\a.txt").IsInDirectoryOf("C:\\dir"), 0},
        {drive.MakeUNCSpecified(), 0}, {drive.Compare("C:\\x"), 0}, {CGVPath("\\\\server\\x").MakeUNCSpecified(), 1},
    };
    for (auto& row : rows)
        EXPECT_EQ(row[1], row[0]) << "row " << &row - rows;
}

// C: exists, D: and Q: do not. On one volume, the relative path from the base leads back to the target.
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
        // A root the cut never reaches (no drive, two servers, mixed delimiters): the count ends at the root.
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
