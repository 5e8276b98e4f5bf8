// Full path names and the current directory, seen through the volume map.
#include <sys/stat.h>
#include <unistd.h>

#include <cstring>
#include <string>

#include "gvlib/platform/volumes.h"
#include "gvlib/platform/winnls.h"
#include "platform/volume_map.h"

namespace {

DWORD Answer(std::string const& text, LPSTR buffer, DWORD size) {
    if (buffer == nullptr || text.size() + 1 > size)
        return static_cast<DWORD>(text.size() + 1);
    std::memcpy(buffer, text.c_str(), text.size() + 1);
    return static_cast<DWORD>(text.size());
}

}  // namespace

DWORD GetFullPathNameA(LPCSTR lpFileName, DWORD nBufferLength, LPSTR lpBuffer, LPSTR* lpFilePart) {
    gvplatform::detail::WindowsPath path;
    if (lpFileName == nullptr || !gvplatform::detail::FullWindowsPath(lpFileName, path)) {
        SetLastError(ERROR_INVALID_NAME);
        return 0;
    }
    std::string text = path.Text();
    DWORD n = Answer(text, lpBuffer, nBufferLength);
    if (lpFilePart != nullptr && n < nBufferLength) {
        // The file part is the last component, or none when the path ends in a delimiter.
        size_t slash = text.rfind('\\');
        *lpFilePart = (slash == std::string::npos || slash + 1 == text.size()) ? nullptr : lpBuffer + slash + 1;
    }
    return n;
}

DWORD GetCurrentDirectoryA(DWORD nBufferLength, LPSTR lpBuffer) {
    char buf[4096];
    std::string windows = getcwd(buf, sizeof buf) ? gvplatform::HostToWindowsPath(buf) : std::string();
    if (windows.empty()) {
        SetLastError(ERROR_PATH_NOT_FOUND);
        return 0;
    }
    return Answer(windows, lpBuffer, nBufferLength);
}

BOOL SetCurrentDirectoryA(LPCSTR lpPathName) {
    gvplatform::detail::WindowsPath path;
    std::string host;
    bool exists = false;
    struct stat st;
    if (lpPathName == nullptr || !gvplatform::detail::FullWindowsPath(lpPathName, path) ||
        !gvplatform::detail::ResolveHostPath(path, host, nullptr, &exists) || !exists) {
        SetLastError(ERROR_PATH_NOT_FOUND);
        return FALSE;
    }
    if (stat(host.c_str(), &st) != 0 || !S_ISDIR(st.st_mode)) {
        SetLastError(ERROR_DIRECTORY);
        return FALSE;
    }
    if (chdir(host.c_str()) != 0) {
        SetLastError(ERROR_PATH_NOT_FOUND);
        return FALSE;
    }
    path.trailingDelimiter = false;
    gvplatform::detail::NoteDriveDirectory(path);
    return TRUE;
}
