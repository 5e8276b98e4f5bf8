// The volume map: drives and shares on temporary directories.
#include <gtest/gtest.h>

#include <sys/stat.h>
#include <unistd.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>

#include "gvlib/platform/afxfile.h"
#include "gvlib/platform/volumes.h"
#include "gvlib/platform/winnls.h"

namespace {

class Volumes : public ::testing::Test {
protected:
    void SetUp() override {
        root_ = ::testing::TempDir() + "gvlib_volumes_XXXXXX";
        ASSERT_NE(nullptr, mkdtemp(&root_[0]));
        mkdir((root_ + "/Docs").c_str(), 0755);
        std::ofstream(root_ + "/Docs/report.txt") << "data";
        gvplatform::VolumeOptions shortNames, removable;
        shortNames.maxComponentLength = 12;
        shortNames.volumeName = "SHORT";
        removable.driveType = gvplatform::kDriveRemovable;
        gvplatform::MapDrive('s', root_, shortNames);
        gvplatform::MapDrive('R', root_, removable);
        gvplatform::MapShare("//server/share/", root_);  // kept without its trailing delimiters
    }
    void TearDown() override {
        gvplatform::ResetVolumes();
        std::error_code ignored;
        std::filesystem::remove_all(root_, ignored);
    }
    // Lets the file system's clock move on, so the listing is kept until the directory changes.
    static void Settle() { usleep(150'000); }
    // The name found in its stored spelling, "-" when none is.
    static std::string Stored(const char* path) {
        CFileStatus status;
        return CFile::GetStatus(path, status) ? status.m_szFullName : "-";
    }
    std::string root_;
};

}  // namespace

TEST_F(Volumes, VolumeInformationAndDriveTypes) {
    char name[MAX_PATH], fs[MAX_PATH];
    DWORD serial = 0, maxComponent = 0, flags = 0;
    uint32_t before = gvplatform::VolumeQueryCount();
    ASSERT_TRUE(GetVolumeInformationA("S:\\", name, MAX_PATH, &serial, &maxComponent, &flags, fs, MAX_PATH));
    EXPECT_STREQ("SHORT", name);
    EXPECT_EQ(12u, maxComponent);
    EXPECT_NE(0u, serial);
    ASSERT_TRUE(GetVolumeInformationA("\\\\SERVER\\share\\", nullptr, 0, nullptr, &maxComponent, nullptr, nullptr, 0));
    EXPECT_GE(maxComponent, 255u);  // what the host reports
    EXPECT_NE(0u, flags & FILE_CASE_PRESERVED_NAMES);
    for (auto row : {std::make_pair("S:", ERROR_INVALID_NAME), std::make_pair("Q:\\", ERROR_PATH_NOT_FOUND)}) {
        EXPECT_FALSE(GetVolumeInformationA(row.first, nullptr, 0, nullptr, nullptr, nullptr, nullptr, 0));
        EXPECT_EQ(static_cast<DWORD>(row.second), GetLastError());
    }
    EXPECT_EQ(before + 4, gvplatform::VolumeQueryCount());
    const std::pair<const char*, UINT> types[] = {{"s:\\", DRIVE_FIXED}, {"R:\\", DRIVE_REMOVABLE},
                                                  {"Q:\\", DRIVE_NO_ROOT_DIR}, {"C:\\", DRIVE_FIXED}};
    for (const auto& row : types)
        EXPECT_EQ(row.second, GetDriveTypeA(row.first)) << row.first;
    gvplatform::UnmapDrive('C');
    EXPECT_EQ(static_cast<UINT>(DRIVE_NO_ROOT_DIR), GetDriveTypeA("C:\\"));
}

TEST_F(Volumes, NamesResolveWithoutRegardToCase) {
    CFileStatus status;
    ASSERT_TRUE(CFile::GetStatus("S:\\DOCS\\REPORT.TXT", status));
    // As the framework does, only the name found takes its stored spelling.
    EXPECT_STREQ("S:\\DOCS\\report.txt", status.m_szFullName);
    EXPECT_EQ(4u, status.m_size);
    EXPECT_EQ(CFile::archive, status.m_attribute);  // a writable file
    ASSERT_TRUE(CFile::GetStatus("\\\\server\\share\\docs", status));
    EXPECT_NE(0, status.m_attribute & CFile::directory);
    EXPECT_FALSE(CFile::GetStatus("S:\\docs\\", status));  // a directory search refuses a trailing delimiter
    EXPECT_EQ(0u, status.m_size);  // a failure leaves nothing of the last answer
    for (const char* missing : {"S:\\", "S:\\docs\\missing.txt", "Q:\\docs"})
        EXPECT_EQ("-", Stored(missing)) << missing;
    for (const char* pattern : {"S:\\docs\\*.TXT", "S:\\docs\\REPORT.TXT**", "S:\\docs\\r?p*t"})
        EXPECT_EQ("S:\\docs\\report.txt", Stored(pattern)) << pattern;
    char shortName[MAX_PATH];
    ASSERT_GT(GetShortPathNameA("s:/DOCS/Report.Txt", shortName, MAX_PATH), 0u);
    EXPECT_STREQ("s:\\Docs\\report.txt", shortName);
    SetLastError(0);
    EXPECT_EQ(0u, GetShortPathNameA("S:\\docs\\none.txt", shortName, MAX_PATH));
    EXPECT_EQ(static_cast<DWORD>(ERROR_FILE_NOT_FOUND), GetLastError());
    CFile file;
    ASSERT_TRUE(file.Open("S:\\DOCS\\REPORT.TXT", CFile::modeRead));
    EXPECT_EQ(4u, file.GetLength());
    // Of names that differ only in case the first in byte order answers, whatever the listing order.
    for (const char* name : {"xa", "XA", "Xb", "xB", "xc", "XC", "XD", "xd", "xE", "Xe"})
        std::ofstream(root_ + "/Docs/" + name) << "x";
    for (const char* asked : {"xA=XA", "XB=Xb", "xC=XC", "xD=XD", "XE=Xe"})
        EXPECT_EQ("S:\\docs\\" + std::string(asked + 3), Stored(("S:\\docs\\" + std::string(asked, 2)).c_str()));
}

// Every letter of the code page matches its other case (simple case folding);
// the name found keeps its stored spelling.
TEST_F(Volumes, NamesBeyondAsciiResolveWithoutRegardToCase) {
    struct Row {
        const char* stored;  // UTF-8 on the host
        const char* asked;   // Windows-1252
        const char* found;   // the stored spelling in Windows-1252, or null
    } rows[] = {
        {"\xC3\x84rger.txt", "S:\\docs\\\xE4RGER.TXT", "S:\\docs\\\xC4rger.txt"},
        {"\xC3\xA4.txt", "S:\\Docs\\\xC4.TXT", "S:\\Docs\\\xE4.txt"},
        {"\xC5\x93uvre", "S:\\Docs\\\x8CUVRE", "S:\\Docs\\\x9Cuvre"},  // oe ligature, beyond Latin-1
        {"\xC3\xBF", "S:\\Docs\\\x9F", "S:\\Docs\\\xFF"},              // y diaeresis
        {"\xC3\xA9t\xC3\xA9", "S:\\Docs\\\xC9T\xC9", "S:\\Docs\\\xE9t\xE9"},
        {"stra\xC3\x9F" "e", "S:\\Docs\\STRASSE", nullptr},  // simple folding keeps sharp s
        {"\xC3\xA9", "S:\\Docs\\E", nullptr},                   // accents are not case
        {"\xE6\x97\xA5", "S:\\Docs\\?", nullptr},             // no code-page spelling
    };
    for (const Row& row : rows)
        std::ofstream(root_ + "/Docs/" + row.stored) << "x";
    for (const Row& row : rows) {
        SCOPED_TRACE(row.asked);
        EXPECT_EQ(row.found ? row.found : "-", Stored(row.asked));
    }
}

// A directory's folded names are kept while its modification time stands and
// read again when it moves: names added or removed are seen at once.
TEST_F(Volumes, TheFoldedIndexFollowsTheDirectory) {
    ASSERT_EQ(0, symlink("nowhere", (root_ + "/Docs/Dangling.txt").c_str()));
    Settle();
    EXPECT_EQ("-", Stored("S:\\docs\\\xC4.TXT"));
    EXPECT_EQ("-", Stored("S:\\docs\\DANGLING.TXT"));  // a link to nothing does not exist
    std::ofstream(root_ + "/Docs/\xC3\xA4.txt") << "x";
    EXPECT_NE("-", Stored("S:\\docs\\\xC4.TXT"));
    Settle();
    EXPECT_NE("-", Stored("S:\\docs\\\xC4.Txt"));
    ASSERT_EQ(0, std::remove((root_ + "/Docs/\xC3\xA4.txt").c_str()));
    EXPECT_EQ("-", Stored("S:\\docs\\\xC4.TXT"));
}

TEST_F(Volumes, HostAndWindowsPathsTranslate) {
    EXPECT_EQ("S:\\Docs", gvplatform::HostToWindowsPath(root_ + "/Docs"));  // the longest mapped prefix
    EXPECT_EQ("C:\\usr\\lib", gvplatform::HostToWindowsPath("/usr/lib"));
    EXPECT_EQ(root_ + "/Docs/report.txt", gvplatform::WindowsToHostPath("s:\\docs\\REPORT.txt"));
    EXPECT_EQ("", gvplatform::WindowsToHostPath("Q:\\x") + gvplatform::WindowsToHostPath("\\\\other\\share\\x"));
    gvplatform::UnmapDrive('C');
    EXPECT_EQ("", gvplatform::HostToWindowsPath("/usr/lib"));
}
