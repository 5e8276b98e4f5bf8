// GetFullPathNameA and the current directory through the volume map.
#include <gtest/gtest.h>

#include <string>
#include <utility>

#include "gvlib/platform/volumes.h"
#include "gvlib/platform/winnls.h"

namespace {

std::string Full(const char* text) {
    char buf[MAX_PATH];
    DWORD n = GetFullPathNameA(text, MAX_PATH, buf, nullptr);
    return n == 0 || n >= MAX_PATH ? std::string("<fail>") : std::string(buf, n);
}

}  // namespace

TEST(FullPathName, LexicalRulesAndBufferSizes) {
    const std::pair<const char*, const char*> rows[] = {
        {"c:/test/..", "c:\\"},                       {"c:///test\\..\\file\\..\\//", "c:\\"},
        {"C:\\a\\.\\b\\..\\c", "C:\\a\\c"},           {"C:\\..\\..\\x", "C:\\x"},
        {"C:\\dir\\name. . ", "C:\\dir\\name"},         {"C:\\dir\\", "C:\\dir\\"},
        {"C:\\a.\\b", "C:\\a\\b"},                    {"C:\\...\\b", "C:\\...\\b"},
        {"\\\\server\\share\\a\\..\\b", "\\\\server\\share\\b"}, {"\\\\server\\share\\..\\..", "\\\\server\\share"},
        {"D:\\", "D:\\"},                             {"//", "\\\\"},
        {"\\\\", "\\\\"},  // the bare UNC prefix is no drive root: no delimiter added
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.first);
        EXPECT_EQ(row.second, Full(row.first));
    }
    SetLastError(0);
    EXPECT_EQ(0u, GetFullPathNameA("", MAX_PATH, nullptr, nullptr));
    EXPECT_EQ(static_cast<DWORD>(ERROR_INVALID_NAME), GetLastError());
    char buf[MAX_PATH];
    char* part = nullptr;
    EXPECT_EQ(7u, GetFullPathNameA("C:\\abc", 6, buf, nullptr));  // too small: the size needed
    EXPECT_EQ(6u, GetFullPathNameA("C:\\abc", 7, buf, nullptr));
    EXPECT_STREQ("C:\\abc", buf);
    EXPECT_EQ(10u, GetFullPathNameA("C:\\d\\f.txt", MAX_PATH, buf, &part));
    EXPECT_STREQ("f.txt", part);
    EXPECT_EQ(5u, GetFullPathNameA("C:\\d\\", MAX_PATH, buf, &part));
    EXPECT_EQ(nullptr, part);  // no file part after a final delimiter
}

TEST(FullPathName, RelativeFormsUseTheCurrentDirectories) {
    gvplatform::ResetVolumes();
    char saved[MAX_PATH];
    ASSERT_GT(GetCurrentDirectoryA(MAX_PATH, saved), 0u);
    ASSERT_TRUE(SetCurrentDirectoryA("C:\\usr"));
    char cwd[MAX_PATH];
    GetCurrentDirectoryA(MAX_PATH, cwd);
    EXPECT_STREQ("C:\\usr", cwd);
    EXPECT_EQ("C:\\usr\\lib\\x", Full("lib\\x"));
    EXPECT_EQ("C:\\x", Full("\\x"));
    EXPECT_EQ("C:\\usr\\x", Full("C:x"));
    EXPECT_EQ("D:\\x", Full("D:x"));  // a drive never visited: its root
    gvplatform::MapDrive('T', ::testing::TempDir());
    ASSERT_TRUE(SetCurrentDirectoryA("T:\\"));
    EXPECT_EQ("C:\\usr\\x", Full("C:x"));  // each drive keeps its own directory
    EXPECT_FALSE(SetCurrentDirectoryA("C:\\no\\such\\directory"));
    ASSERT_TRUE(SetCurrentDirectoryA(saved));
    gvplatform::ResetVolumes();
}
