// CGVPath: what the volumes and the file system say about a path — volume
// limits through the one-entry cache, existence tests, full and short names.
#include "gvlib/path/GVPath.h"

#include "gvlib/platform/afxfile.h"
#include "gvlib/platform/volumes.h"
#include "path/path_internal.h"

using gvpath::detail::IsDelimiter;

namespace {

// The last fixed drive or UNC root answered. Built on first use, never
// invalidated: a volume's limits are taken not to change while the library is
// loaded.
CGVPath::VolumeInfo& VolumeCache() {
    static CGVPath::VolumeInfo cache;
    return cache;
}

// A status query's attribute byte; false when nothing exists at `text`.
bool Status(char const* text, BYTE& attribute) {
    CFileStatus status;
    if (!CFile::GetStatus(text, status))
        return false;
    attribute = status.m_attribute;
    return true;
}

// A platform text result that fits the buffer: 1 to size - 1 characters.
bool Fits(DWORD length, DWORD size) { return length > 0 && length < size; }

}  // namespace

// ---- The volume query -------------------------------------------------------------------

int CGVPath::GetVolumeInfo(char const* volume, VolumeInfo& info) const {
    VolumeInfo& cache = VolumeCache();
    CGVPath root(volume);
    root.AppendDelimiter(FILE_PATH_DELIMITER);
    info.root = root;
    // The key is the exact text: C:\ and c:\ are two entries. An empty root
    // matches the fresh cache and answers its empty record.
    if (cache.root.Compare(info.root) == 0) {
        info = cache;
        return 1;
    }
    char label[MAX_PATH + 1] = "";
    char fileSystem[MAX_PATH + 1] = "";
    DWORD serial = 0, maxComponent = 0, flags = 0;
    if (!::GetVolumeInformationA(info.root, label, MAX_PATH, &serial, &maxComponent, &flags, fileSystem, MAX_PATH)) {
        info.maxComponentLength = info.serialNumber = info.fileSystemFlags = 0;
        return 0;
    }
    info.volumeName = label;
    info.fileSystemName = fileSystem;
    info.maxComponentLength = maxComponent;
    info.serialNumber = serial;
    info.fileSystemFlags = flags;
    // Removable, optical, remote and RAM drives may change under us: asked every time.
    if (root.IsUNCSpecified() || ::GetDriveTypeA(info.root) == DRIVE_FIXED)
        cache = info;
    return 1;
}

uint32_t CGVPath::GetVolumeMaxPath() const { return MAX_PATH; }

uint32_t CGVPath::GetVolumeMaxComponent() const {
    CGVPath volume = CGVPath(*this).GetVolume();
    if (volume.IsEmpty())
        return 0;
    volume.AppendDelimiter(FILE_PATH_DELIMITER);
    VolumeInfo info;
    // An unreachable volume is taken for a long-name one.
    return GetVolumeInfo(volume, info) ? info.maxComponentLength : 256;
}

uint32_t CGVPath::GetVolumeMaxExtension() const { return GetVolumeMaxComponent() < 260 ? 3 : 256; }

int CGVPath::IsVolumeLongFileNameEnabled() const { return GetVolumeMaxComponent() > 12 ? 1 : 0; }

// ---- Existence --------------------------------------------------------------------------

int CGVPath::IsVolume() const {
    int length = GetLength();
    if (length < 2)
        return 0;
    // \\server\share: never a volume here, whatever the share.
    if (length > 4 && GetAt(0) == CHAR_PATH_DELIMITER && GetAt(1) == CHAR_PATH_DELIMITER &&
        GetAt(2) != CHAR_PATH_DELIMITER)
        return 0;
    if (!IsLegalDriveLetter(GetAt(0)) || GetAt(1) != CHAR_DISK_DELIMITER)
        return 0;
    if (length > 3 || (length == 3 && !IsDelimiter(GetAt(2))))
        return 0;
    CGVPath root(*this);
    root.TrimDelimiters();
    root.AppendDelimiter(FILE_PATH_DELIMITER);
    UINT type = ::GetDriveTypeA(root);
    return type != DRIVE_UNKNOWN && type != DRIVE_NO_ROOT_DIR ? 1 : 0;
}

int CGVPath::IsFile() const {
    BYTE attribute = 0;
    return Status(*this, attribute) && (attribute & (CFile::directory | CFile::volume)) == 0 ? 1 : 0;
}

int CGVPath::IsDirectory() const {
    if (IsVolume())
        return 1;
    CGVPath copy(*this);
    copy.TrimDelimiters();
    // \\server alone: the status query wants it as \\server\.
    if (IsUNCSpecified() && copy.GetVolume().GetLength() == copy.GetLength())
        copy.AppendDelimiter(FILE_PATH_DELIMITER);
    BYTE attribute = 0;
    return Status(copy, attribute) && (attribute & CFile::directory) != 0 ? 1 : 0;
}

int CGVPath::IsAvailable() const { return IsFile() || IsDirectory() ? 1 : 0; }

int CGVPath::IsBaseAvailable() const {
    CGVPath copy(*this);
    int length = copy.GetLength();
    if (copy.IsDirectory())
        return length > 1 ? 1 : 0;
    for (;;) {
        length = copy.GetLength();
        copy.TrimRightPath();
        // A root keeps its delimiter, so the cut stops shrinking there.
        if (copy.GetLength() >= length)
            return 0;
        if (copy.IsDirectory())
            return length > 1 ? 1 : 0;
    }
}

CGVPath CGVPath::GetAvailable() {
    if (IsAvailable())
        return *this;
    CGVPath copy(*this);
    for (;;) {
        int length = copy.GetLength();
        copy.TrimRightPath();
        if (length == 0 || copy.GetLength() >= length)
            return CGVPath();
        if (copy.IsDirectory())
            return copy;
    }
}

// ---- Full names and comparisons ---------------------------------------------------------

CGVPath CGVPath::GetFullPathNameA(char const* directory) {
    char saved[MAX_PATH + 1] = "";
    bool restore = false;
    if (directory != nullptr) {
        // A current directory that cannot be read (none, or too long for the
        // buffer) is not restored afterwards: the given one stays current.
        restore = Fits(::GetCurrentDirectoryA(MAX_PATH, saved), MAX_PATH);
        ::SetCurrentDirectoryA(directory);
    }
    char full[MAX_PATH + 1] = "";
    DWORD length = ::GetFullPathNameA(*this, MAX_PATH, full, nullptr);
    if (restore)
        ::SetCurrentDirectoryA(saved);
    // A name longer than the buffer answers the size it needs: no name either.
    return Fits(length, MAX_PATH) ? CGVPath(full) : CGVPath(*this);
}

int CGVPath::CompareFiles(char const* first, char const* second) {
    char shortFirst[MAX_PATH + 1] = "";
    char shortSecond[MAX_PATH + 1] = "";
    bool haveFirst = first != nullptr && Fits(::GetShortPathNameA(first, shortFirst, MAX_PATH), MAX_PATH);
    bool haveSecond = second != nullptr && Fits(::GetShortPathNameA(second, shortSecond, MAX_PATH), MAX_PATH);
    if (haveFirst && haveSecond)
        return gvplatform::detail::ByteCompareNoCase(shortFirst, shortSecond) == 0 ? 1 : 0;
    return gvplatform::detail::ByteCompareNoCase(first ? first : "", second ? second : "") == 0 ? 1 : 0;
}

int CGVPath::CompareFile(char const* other) const { return CompareFiles(*this, other); }

int CGVPath::CompareVolume(char const* other) const {
    auto volumeOf = [](CGVPath path) {
        CGVPath volume = path.GetUNCVolume();
        return volume.IsEmpty() ? path.GetVolume() : volume;
    };
    return volumeOf(*this).CompareNoCase(volumeOf(CGVPath(other)));
}

int CGVPath::IsInDirectoryOf(char const* other) const {
    CGVPath mine(*this);
    CGVPath theirs(other);
    mine.TrimRightPath();
    theirs.TrimRightPath();
    return mine.CompareNoCase(theirs) == 0 ? 1 : 0;
}

int CGVPath::MakeUNCSpecified() {
    if (IsUNCSpecified())
        return 1;
    // A drive path would take its share's name here, but GetUNCVolume knows none.
    CGVPath volume = GetUNCVolume();
    if (volume.IsEmpty())
        return 0;
    SetVolume(volume);
    return 1;
}
