// The kernel's volume, path and current-directory services, answered on the
// host by mapping Windows drive letters and UNC shares onto host directories.
#pragma once

#include <cstdint>
#include <string>

#include "gvlib/platform/export.h"
#include "gvlib/platform/wintypes.h"

#define MAX_PATH 260

#define DRIVE_UNKNOWN 0
#define DRIVE_NO_ROOT_DIR 1
#define DRIVE_REMOVABLE 2
#define DRIVE_FIXED 3
#define DRIVE_REMOTE 4
#define DRIVE_CDROM 5
#define DRIVE_RAMDISK 6

#define FILE_CASE_SENSITIVE_SEARCH 0x00000001
#define FILE_CASE_PRESERVED_NAMES 0x00000002
#define FILE_UNICODE_ON_DISK 0x00000004
#define FILE_READ_ONLY_VOLUME 0x00080000

#define ERROR_FILE_NOT_FOUND 2
#define ERROR_PATH_NOT_FOUND 3
#define ERROR_INVALID_NAME 123
#define ERROR_DIRECTORY 267

namespace gvplatform {

enum DriveType : uint32_t {
    kDriveUnknown = 0,
    kDriveNoRootDir = 1,
    kDriveRemovable = 2,
    kDriveFixed = 3,
    kDriveRemote = 4,
    kDriveCdRom = 5,
    kDriveRamDisk = 6
};

/// What a mapped volume reports. Zero and empty fields take what the host reports.
struct VolumeOptions {
    uint32_t driveType = kDriveFixed;
    uint32_t maxComponentLength = 0;  // 0: what the host reports
    std::string volumeName;
    std::string fileSystemName;
    uint32_t serialNumber = 0;
    uint32_t fileSystemFlags = 0;
};

/// Makes drive `letter` (either case) the host directory. By default C: is "/".
GVLIB_API void MapDrive(char letter, std::string const& hostDirectory, VolumeOptions const& options = VolumeOptions());
GVLIB_API void UnmapDrive(char letter);
/// Maps a share written \\server\share (compared without regard to case).
GVLIB_API void MapShare(std::string const& uncRoot, std::string const& hostDirectory,
                        VolumeOptions const& options = VolumeOptions());
/// Back to the default map: C: is the host root, nothing else is mapped.
GVLIB_API void ResetVolumes();
/// How many volume-information queries reached this layer so far.
GVLIB_API uint32_t VolumeQueryCount();

/// The Windows form of a host path (C:\home\me for /home/me), or empty when the
/// path lies outside every mapped volume. Relative host paths are taken from the
/// current directory.
GVLIB_API std::string HostToWindowsPath(std::string const& hostPath);
/// The host path of a Windows path, made absolute lexically and resolved without
/// regard to case where the exact spelling does not exist; empty when the path is
/// on no mapped volume. A path beginning with '/' is taken as a host path.
GVLIB_API std::string WindowsToHostPath(std::string const& windowsPath);

}  // namespace gvplatform

/// Answers for a root ending in a delimiter (C:\ or \\server\share\).
GVLIB_API BOOL GetVolumeInformationA(LPCSTR lpRootPathName, LPSTR lpVolumeNameBuffer, DWORD nVolumeNameSize,
                                     DWORD* lpVolumeSerialNumber, DWORD* lpMaximumComponentLength,
                                     DWORD* lpFileSystemFlags, LPSTR lpFileSystemNameBuffer,
                                     DWORD nFileSystemNameSize);
/// DRIVE_NO_ROOT_DIR for an unmapped drive or share.
GVLIB_API UINT GetDriveTypeA(LPCSTR lpRootPathName);
/// Lexical, as the kernel does it: c:/test/.. gives c:\. Answers the length
/// written, or the size needed (with the NUL) when the buffer is too small, or 0.
GVLIB_API DWORD GetFullPathNameA(LPCSTR lpFileName, DWORD nBufferLength, LPSTR lpBuffer, LPSTR* lpFilePart);
/// The spelling stored on disk for an existing path; 0 for a missing one.
GVLIB_API DWORD GetShortPathNameA(LPCSTR lpszLongPath, LPSTR lpszShortPath, DWORD cchBuffer);
GVLIB_API DWORD GetCurrentDirectoryA(DWORD nBufferLength, LPSTR lpBuffer);
GVLIB_API BOOL SetCurrentDirectoryA(LPCSTR lpPathName);
