// CFile::GetStatus: the status of a file named by a Windows path.
#include <dirent.h>
#include <sys/stat.h>

#include <cstring>
#include <string>
#include <vector>

#include "gvlib/platform/afxfile.h"
#include "gvlib/platform/volumes.h"
#include "platform/crt_text.h"
#include "platform/volume_map.h"

namespace {

using gvplatform::detail::WindowsPath;

// DOS wildcard match without regard to case: '*' any run, '?' one character.
bool WildcardMatch(const char* pattern, const char* name) {
    const char* star = nullptr;
    const char* resume = nullptr;
    while (*name) {
        if (*pattern == '*') {
            star = pattern++;
            resume = name;
        } else if (*pattern == '?' ||
                   gvplatform::detail::ToLower(*pattern) == gvplatform::detail::ToLower(*name)) {
            ++pattern;
            ++name;
        } else if (star) {
            pattern = star + 1;
            name = ++resume;
        } else {
            return false;
        }
    }
    while (*pattern == '*')
        ++pattern;
    return *pattern == '\0';
}

// The first entry (in byte order) of a host directory matching a wildcard.
bool FindWildcard(std::string const& directory, std::string const& pattern, std::string& found) {
    DIR* dir = opendir(directory.c_str());
    if (dir == nullptr)
        return false;
    bool any = false;
    while (dirent* entry = readdir(dir)) {
        std::string name = entry->d_name;
        if (name == "." || name == "..")
            continue;
        std::string ansi = gvplatform::detail::HostNameToAnsi(name);
        if (WildcardMatch(pattern.c_str(), ansi.c_str()) && (!any || ansi < found)) {
            found = ansi;
            any = true;
        }
    }
    closedir(dir);
    return any;
}

BYTE Attributes(struct stat const& st) {
    BYTE attribute = S_ISDIR(st.st_mode) ? CFile::directory : CFile::archive;
    if ((st.st_mode & S_IWUSR) == 0)
        attribute |= CFile::readOnly;
    return attribute;
}

}  // namespace

BOOL CFile::GetStatus(LPCTSTR lpszFileName, CFileStatus& rStatus) {
    rStatus = CFileStatus();
    WindowsPath path;
    if (lpszFileName == nullptr || !gvplatform::detail::FullWindowsPath(lpszFileName, path))
        return FALSE;
    std::string full = path.Text();
    if (full.size() >= sizeof rStatus.m_szFullName)
        return FALSE;
    std::memcpy(rStatus.m_szFullName, full.c_str(), full.size() + 1);
    // A directory search finds no root and no name that ends in a delimiter.
    std::string given(lpszFileName);
    if (path.components.empty() || given.back() == '\\' || given.back() == '/')
        return FALSE;
    std::string last = path.components.back();
    if (last.find_first_of("*?") != std::string::npos) {
        WindowsPath parent = path;
        parent.components.pop_back();
        std::string hostParent;
        bool parentExists = false;
        if (!gvplatform::detail::ResolveHostPath(parent, hostParent, nullptr, &parentExists) || !parentExists ||
            !FindWildcard(hostParent, last, last))
            return FALSE;
        path.components.back() = last;
    }
    std::string host;
    std::vector<std::string> onDisk;
    bool exists = false;
    struct stat st;
    if (!gvplatform::detail::ResolveHostPath(path, host, &onDisk, &exists) || !exists || stat(host.c_str(), &st) != 0)
        return FALSE;
    rStatus.m_attribute = Attributes(st);
    rStatus.m_size = S_ISDIR(st.st_mode) ? 0 : static_cast<ULONGLONG>(st.st_size);
    rStatus.m_ctime = st.st_ctime;
    rStatus.m_mtime = st.st_mtime;
    rStatus.m_atime = st.st_atime;
    // The name as the directory search found it, in its stored spelling.
    path.components.back() = onDisk.back();
    full = path.Text();
    if (full.size() < sizeof rStatus.m_szFullName)
        std::memcpy(rStatus.m_szFullName, full.c_str(), full.size() + 1);
    return TRUE;
}
