// Volume information, drive types and the spelling of paths on disk.
#include <sys/stat.h>
#include <sys/statfs.h>
#include <sys/statvfs.h>

#include <cstring>
#include <string>

#include "gvlib/platform/volumes.h"
#include "gvlib/platform/winnls.h"
#include "platform/volume_map.h"

namespace {

using gvplatform::detail::MappedVolume;
using gvplatform::detail::WindowsPath;

// A root as the volume calls take it: "C:\" or "\\server\share\", nothing more.
bool ParseRoot(LPCSTR text, std::string& root) {
    if (text == nullptr) {
        WindowsPath current;
        if (!gvplatform::detail::FullWindowsPath(".", current))
            return false;
        root = current.root;
        return true;
    }
    std::string s(text);
    if (s.empty() || (s.back() != '\\' && s.back() != '/'))
        return false;
    WindowsPath path;
    if (!gvplatform::detail::FullWindowsPath(s, path) || !path.components.empty())
        return false;
    root = path.root;
    return true;
}

std::string FileSystemName(long type) {
    switch (static_cast<unsigned long>(type)) {
    case 0xEF53:
        return "ext4";
    case 0x01021994:
        return "tmpfs";
    case 0x58465342:
        return "xfs";
    case 0x9123683E:
        return "btrfs";
    case 0x794C7630:
        return "overlay";
    case 0x6969:
        return "nfs";
    case 0x65735546:
        return "fuse";
    default:
        return "unknown";
    }
}

bool CopyOut(std::string const& text, LPSTR buffer, DWORD size) {
    if (buffer == nullptr)
        return true;
    if (text.size() + 1 > size)
        return false;
    std::memcpy(buffer, text.c_str(), text.size() + 1);
    return true;
}

// The usual length convention: the length written, or the size needed with the NUL.
DWORD Answer(std::string const& text, LPSTR buffer, DWORD size) {
    if (buffer == nullptr || text.size() + 1 > size)
        return static_cast<DWORD>(text.size() + 1);
    std::memcpy(buffer, text.c_str(), text.size() + 1);
    return static_cast<DWORD>(text.size());
}

}  // namespace

BOOL GetVolumeInformationA(LPCSTR lpRootPathName, LPSTR lpVolumeNameBuffer, DWORD nVolumeNameSize,
                           DWORD* lpVolumeSerialNumber, DWORD* lpMaximumComponentLength, DWORD* lpFileSystemFlags,
                           LPSTR lpFileSystemNameBuffer, DWORD nFileSystemNameSize) {
    gvplatform::detail::CountVolumeQuery();
    std::string root;
    MappedVolume volume;
    if (!ParseRoot(lpRootPathName, root)) {
        SetLastError(ERROR_INVALID_NAME);
        return FALSE;
    }
    struct statvfs vfs;
    struct statfs fs;
    struct stat st;
    if (!gvplatform::detail::FindVolume(root, volume) || statvfs(volume.host.c_str(), &vfs) != 0 ||
        statfs(volume.host.c_str(), &fs) != 0 || stat(volume.host.c_str(), &st) != 0 || !S_ISDIR(st.st_mode)) {
        SetLastError(ERROR_PATH_NOT_FOUND);
        return FALSE;
    }
    gvplatform::VolumeOptions const& o = volume.options;
    DWORD flags = o.fileSystemFlags;
    if (flags == 0) {
        flags = FILE_CASE_SENSITIVE_SEARCH | FILE_CASE_PRESERVED_NAMES | FILE_UNICODE_ON_DISK;
        if (vfs.f_flag & ST_RDONLY)
            flags |= FILE_READ_ONLY_VOLUME;
    }
    if (!CopyOut(o.volumeName, lpVolumeNameBuffer, nVolumeNameSize) ||
        !CopyOut(o.fileSystemName.empty() ? FileSystemName(fs.f_type) : o.fileSystemName, lpFileSystemNameBuffer,
                 nFileSystemNameSize)) {
        SetLastError(ERROR_INSUFFICIENT_BUFFER);
        return FALSE;
    }
    if (lpVolumeSerialNumber != nullptr)
        *lpVolumeSerialNumber = o.serialNumber ? o.serialNumber : static_cast<DWORD>(st.st_dev);
    if (lpMaximumComponentLength != nullptr)
        *lpMaximumComponentLength = o.maxComponentLength ? o.maxComponentLength : static_cast<DWORD>(vfs.f_namemax);
    if (lpFileSystemFlags != nullptr)
        *lpFileSystemFlags = flags;
    return TRUE;
}

UINT GetDriveTypeA(LPCSTR lpRootPathName) {
    std::string root;
    MappedVolume volume;
    struct stat st;
    if (!ParseRoot(lpRootPathName, root) || !gvplatform::detail::FindVolume(root, volume) ||
        stat(volume.host.c_str(), &st) != 0 || !S_ISDIR(st.st_mode))
        return DRIVE_NO_ROOT_DIR;
    return volume.options.driveType;
}

DWORD GetShortPathNameA(LPCSTR lpszLongPath, LPSTR lpszShortPath, DWORD cchBuffer) {
    WindowsPath path;
    std::string host;
    std::vector<std::string> onDisk;
    bool exists = false;
    if (lpszLongPath == nullptr || !gvplatform::detail::FullWindowsPath(lpszLongPath, path) ||
        !gvplatform::detail::ResolveHostPath(path, host, &onDisk, &exists) || !exists) {
        SetLastError(ERROR_FILE_NOT_FOUND);
        return 0;
    }
    path.components = onDisk;
    return Answer(path.Text(), lpszShortPath, cchBuffer);
}
