// CFile over POSIX file descriptors, and CMemFile over a malloc'd or attached block.
#include "gvlib/platform/afxfile.h"
#include "gvlib/platform/volumes.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <string>

#include "gvlib/platform/allocator.h"
#ifdef GVLIB_FAULT_INJECTION
#include "platform/fault_injection.h"
#endif

namespace {

// Every system call of CFile goes through one of these gates, where test builds
// make a chosen call fail (with errno set) or transfer fewer bytes than asked.
#ifdef GVLIB_FAULT_INJECTION
using gvplatform::faults::FileCall;
bool Injected(FileCall call) {
    int nError = gvplatform::detail::InjectedFileError(call);
    if (nError != 0)
        errno = nError;
    return nError != 0;
}
size_t Capped(size_t n) { return gvplatform::detail::CappedTransfer(static_cast<unsigned>(n)); }
#define GV_INJECTED(call) Injected(FileCall::call)
#else
size_t Capped(size_t n) { return n; }
#define GV_INJECTED(call) false
#endif

int SysOpen(const char* name, int flags) { return GV_INJECTED(open) ? -1 : ::open(name, flags, 0666); }
ssize_t SysRead(int fd, void* p, size_t n) { return GV_INJECTED(read) ? -1 : ::read(fd, p, Capped(n)); }
ssize_t SysWrite(int fd, const void* p, size_t n) { return GV_INJECTED(write) ? -1 : ::write(fd, p, Capped(n)); }
off_t SysSeek(int fd, off_t off, int whence) { return GV_INJECTED(seek) ? -1 : ::lseek(fd, off, whence); }
int SysStat(int fd, struct stat* st) { return GV_INJECTED(stat) ? -1 : ::fstat(fd, st); }
int SysSync(int fd) { return GV_INJECTED(flush) ? -1 : ::fsync(fd); }
int SysClose(int fd) {
    // The descriptor is released even when the close reports an error, as on Linux.
    bool fail = GV_INJECTED(close);
    int saved = errno;
    int rc = ::close(fd);
    if (fail) {
        errno = saved;
        return -1;
    }
    return rc;
}
#undef GV_INJECTED

constexpr ULONGLONG kMaxMemFileSize = std::numeric_limits<UINT>::max();

[[noreturn]] void ThrowErrno(int nError, const CString& strFileName) {
    AfxThrowFileException(CFileException::OsErrorToException(nError), nError, strFileName);
}

// The framework keeps the full path; relative host names are anchored at the current
// directory, as its full-path helper does (without folding "." or "..").
CString FullPath(LPCTSTR lpszFileName) {
    std::string path(lpszFileName);
    if (!path.empty() && path[0] != '/') {
        std::string cwd(256, '\0');
        while (::getcwd(&cwd[0], cwd.size()) == nullptr) {
            if (errno != ERANGE)
                return CString(lpszFileName);
            cwd.resize(cwd.size() * 2);
        }
        cwd.resize(std::strlen(cwd.c_str()));
        if (cwd.empty() || cwd.back() != '/')
            cwd += '/';
        path = cwd + path;
    }
    return CString(path.data(), static_cast<int>(path.size()));
}

}  // namespace

// ---------------------------------------------------------------------------------------
// CFile

CFile::CFile() noexcept : m_hFile(hFileNull), m_bCloseOnDelete(FALSE) {}

CFile::CFile(LPCTSTR lpszFileName, UINT nOpenFlags) : CFile() {
    CFileException error;
    if (!Open(lpszFileName, nOpenFlags, &error))
        throw error;
}

CFile::~CFile() {
    if (m_hFile != hFileNull && m_bCloseOnDelete)
        Abort();
}

BOOL CFile::Open(LPCTSTR lpszFileName, UINT nOpenFlags, CFileException* pError) {
    if (m_hFile != hFileNull)
        Abort();
    m_strFileName.Empty();

    auto fail = [&](int nError) -> BOOL {
        if (pError != nullptr) {
            pError->m_cause = CFileException::OsErrorToException(nError);
            pError->m_lOsError = nError;
            pError->m_strFileName = lpszFileName;
        }
        return FALSE;
    };
    if (lpszFileName == nullptr || *lpszFileName == '\0')
        return fail(ENOENT);

    int flags = 0;
    switch (nOpenFlags & 3) {
    case modeRead:
        flags = O_RDONLY;
        break;
    case modeWrite:
        flags = O_WRONLY;
        break;
    case modeReadWrite:
        flags = O_RDWR;
        break;
    default:
        return fail(EINVAL);
    }
    if (nOpenFlags & modeCreate) {
        flags |= O_CREAT;
        if (!(nOpenFlags & modeNoTruncate))
            flags |= O_TRUNC;
    }
    if (nOpenFlags & modeNoInherit)
        flags |= O_CLOEXEC;

    // Windows names (drive letters, backslashes) go through the volume map; plain
    // host names are taken as they are.
    std::string name = lpszFileName;
    bool windowsForm = name.find('\\') != std::string::npos || (name.size() >= 2 && name[1] == ':');
    if (windowsForm && name[0] != '/') {
        name = gvplatform::WindowsToHostPath(name);
        if (name.empty())
            return fail(ENOENT);
    }
    int fd;
    do
        fd = SysOpen(name.c_str(), flags);
    while (fd < 0 && errno == EINTR);
    if (fd < 0)
        return fail(errno);
    // A directory opens read-only on the host; the framework refuses it.
    struct stat st;
    if (::fstat(fd, &st) == 0 && S_ISDIR(st.st_mode)) {
        ::close(fd);
        return fail(EISDIR);
    }
    m_hFile = fd;
    m_bCloseOnDelete = TRUE;
    m_strFileName = FullPath(lpszFileName);
    return TRUE;
}

void CFile::Close() {
    int nError = 0;
    if (m_hFile != hFileNull && SysClose(m_hFile) != 0 && errno != EINTR)
        nError = errno;
    m_hFile = hFileNull;
    m_bCloseOnDelete = FALSE;
    CString strFileName = m_strFileName;
    m_strFileName.Empty();
    if (nError != 0)
        ThrowErrno(nError, strFileName);
}

void CFile::Abort() {
    if (m_hFile != hFileNull)
        ::close(m_hFile);
    m_hFile = hFileNull;
    m_bCloseOnDelete = FALSE;
    m_strFileName.Empty();
}

void CFile::Flush() {
    if (m_hFile == hFileNull)
        return;
    // Pipes and character devices cannot be synchronised; there is nothing to flush.
    if (SysSync(m_hFile) != 0 && errno != EINVAL && errno != EROFS)
        ThrowErrno(errno, m_strFileName);
}

UINT CFile::Read(void* lpBuf, UINT nCount) {
    if (nCount == 0)
        return 0;
    if (lpBuf == nullptr)
        AfxThrowInvalidArgException();
    BYTE* p = static_cast<BYTE*>(lpBuf);
    UINT nRead = 0;
    while (nRead < nCount) {
        ssize_t n = SysRead(m_hFile, p + nRead, nCount - nRead);
        if (n < 0) {
            if (errno == EINTR)
                continue;
            ThrowErrno(errno, m_strFileName);
        }
        if (n == 0)
            break;
        nRead += static_cast<UINT>(n);
    }
    return nRead;
}

void CFile::Write(const void* lpBuf, UINT nCount) {
    if (nCount == 0)
        return;
    if (lpBuf == nullptr)
        AfxThrowInvalidArgException();
    const BYTE* p = static_cast<const BYTE*>(lpBuf);
    UINT nWritten = 0;
    while (nWritten < nCount) {
        ssize_t n = SysWrite(m_hFile, p + nWritten, nCount - nWritten);
        if (n < 0) {
            if (errno == EINTR)
                continue;
            ThrowErrno(errno, m_strFileName);
        }
        if (n == 0)
            AfxThrowFileException(CFileException::diskFull, ENOSPC, m_strFileName);
        nWritten += static_cast<UINT>(n);
    }
}

ULONGLONG CFile::Seek(LONGLONG lOff, UINT nFrom) {
    int whence;
    switch (nFrom) {
    case begin:
        whence = SEEK_SET;
        break;
    case current:
        whence = SEEK_CUR;
        break;
    case end:
        whence = SEEK_END;
        break;
    default:
        AfxThrowFileException(CFileException::badSeek, EINVAL, m_strFileName);
    }
    off_t pos = SysSeek(m_hFile, static_cast<off_t>(lOff), whence);
    if (pos < 0)
        ThrowErrno(errno, m_strFileName);
    return static_cast<ULONGLONG>(pos);
}

ULONGLONG CFile::GetLength() const {
    struct stat st;
    if (SysStat(m_hFile, &st) != 0)
        ThrowErrno(errno, m_strFileName);
    return static_cast<ULONGLONG>(st.st_size);
}

void CFile::SetLength(ULONGLONG dwNewLen) {
    if (dwNewLen > static_cast<ULONGLONG>(std::numeric_limits<off_t>::max()))
        AfxThrowFileException(CFileException::badSeek, EINVAL, m_strFileName);
    // The framework sets the end of file at the new length and leaves the position there.
    Seek(static_cast<LONGLONG>(dwNewLen), begin);
    if (::ftruncate(m_hFile, static_cast<off_t>(dwNewLen)) != 0)
        ThrowErrno(errno, m_strFileName);
}

ULONGLONG CFile::GetPosition() const {
    off_t pos = SysSeek(m_hFile, 0, SEEK_CUR);
    if (pos < 0)
        ThrowErrno(errno, m_strFileName);
    return static_cast<ULONGLONG>(pos);
}

CString CFile::GetFileName() const {
    int iSlash = m_strFileName.ReverseFind('/');
    return m_strFileName.Mid(iSlash + 1);
}

CString CFile::GetFileTitle() const {
    CString strName = GetFileName();
    int iDot = strName.ReverseFind('.');
    return iDot < 0 ? strName : strName.Left(iDot);
}

CString CFile::GetFilePath() const { return m_strFileName; }

void CFile::SetFilePath(LPCTSTR lpszNewName) { m_strFileName = lpszNewName; }

// ---------------------------------------------------------------------------------------
// CMemFile

CMemFile::CMemFile(UINT nGrowBytes)
    : m_nGrowBytes(nGrowBytes),
      m_nPosition(0),
      m_nBufferSize(0),
      m_nFileSize(0),
      m_lpBuffer(nullptr),
      m_bAutoDelete(TRUE) {}

CMemFile::CMemFile(BYTE* lpBuffer, UINT nBufferSize, UINT nGrowBytes) : CMemFile(nGrowBytes) {
    Attach(lpBuffer, nBufferSize, nGrowBytes);
}

CMemFile::~CMemFile() {
    if (m_lpBuffer != nullptr && m_bAutoDelete)
        Free(m_lpBuffer);
    m_lpBuffer = nullptr;
}

void CMemFile::Attach(BYTE* lpBuffer, UINT nBufferSize, UINT nGrowBytes) {
    if (lpBuffer == nullptr && nBufferSize != 0)
        AfxThrowInvalidArgException();
    if (m_lpBuffer != nullptr && m_bAutoDelete)
        Free(m_lpBuffer);
    m_nGrowBytes = nGrowBytes;
    m_nPosition = 0;
    m_nBufferSize = nBufferSize;
    m_nFileSize = nGrowBytes == 0 ? nBufferSize : 0;
    m_lpBuffer = lpBuffer;
    m_bAutoDelete = FALSE;
}

BYTE* CMemFile::Detach() {
    BYTE* lpBuffer = m_lpBuffer;
    m_lpBuffer = nullptr;
    m_nFileSize = 0;
    m_nBufferSize = 0;
    m_nPosition = 0;
    // Whatever block the file allocates from now on is its own again.
    m_bAutoDelete = TRUE;
    return lpBuffer;
}

UINT CMemFile::Read(void* lpBuf, UINT nCount) {
    if (nCount == 0)
        return 0;
    if (lpBuf == nullptr)
        AfxThrowInvalidArgException();
    if (m_nPosition >= m_nFileSize)
        return 0;
    UINT nAvailable = m_nFileSize - m_nPosition;
    UINT nRead = nCount < nAvailable ? nCount : nAvailable;
    Memcpy(static_cast<BYTE*>(lpBuf), m_lpBuffer + m_nPosition, nRead);
    m_nPosition += nRead;
    return nRead;
}

void CMemFile::Write(const void* lpBuf, UINT nCount) {
    if (nCount == 0)
        return;
    if (lpBuf == nullptr)
        AfxThrowInvalidArgException();
    ULONGLONG nEnd = static_cast<ULONGLONG>(m_nPosition) + nCount;
    if (nEnd > m_nBufferSize)
        GrowFile(nEnd);
    // A position left past the end by Seek: the bytes in between read as zeros.
    if (m_nPosition > m_nFileSize)
        std::memset(m_lpBuffer + m_nFileSize, 0, m_nPosition - m_nFileSize);
    Memcpy(m_lpBuffer + m_nPosition, static_cast<const BYTE*>(lpBuf), nCount);
    m_nPosition = static_cast<UINT>(nEnd);
    if (m_nPosition > m_nFileSize)
        m_nFileSize = m_nPosition;
}

ULONGLONG CMemFile::Seek(LONGLONG lOff, UINT nFrom) {
    LONGLONG lBase;
    switch (nFrom) {
    case begin:
        lBase = 0;
        break;
    case current:
        lBase = m_nPosition;
        break;
    case end:
        lBase = m_nFileSize;
        break;
    default:
        AfxThrowFileException(CFileException::badSeek, EINVAL, m_strFileName);
    }
    // Bounding the offset first keeps the sum below from overflowing.
    const LONGLONG lMax = static_cast<LONGLONG>(kMaxMemFileSize);
    if (lOff > lMax || lOff < -lMax)
        AfxThrowFileException(CFileException::badSeek, EINVAL, m_strFileName);
    LONGLONG lNewPos = lBase + lOff;
    if (lNewPos < 0 || lNewPos > lMax)
        AfxThrowFileException(CFileException::badSeek, EINVAL, m_strFileName);
    m_nPosition = static_cast<UINT>(lNewPos);
    return m_nPosition;
}

ULONGLONG CMemFile::GetLength() const { return m_nFileSize; }

void CMemFile::SetLength(ULONGLONG dwNewLen) {
    if (dwNewLen > m_nBufferSize)
        GrowFile(dwNewLen);
    UINT nNewLen = static_cast<UINT>(dwNewLen);
    if (nNewLen > m_nFileSize)
        std::memset(m_lpBuffer + m_nFileSize, 0, nNewLen - m_nFileSize);
    if (nNewLen < m_nPosition)
        m_nPosition = nNewLen;
    m_nFileSize = nNewLen;
}

ULONGLONG CMemFile::GetPosition() const { return m_nPosition; }

void CMemFile::Close() {
    m_nGrowBytes = 0;
    m_nPosition = 0;
    m_nBufferSize = 0;
    m_nFileSize = 0;
    if (m_lpBuffer != nullptr && m_bAutoDelete)
        Free(m_lpBuffer);
    m_lpBuffer = nullptr;
}

void CMemFile::Abort() { Close(); }

void CMemFile::Flush() {}

BYTE* CMemFile::Alloc(UINT nBytes) { return static_cast<BYTE*>(gvplatform::detail::MemAlloc(nBytes)); }

BYTE* CMemFile::Realloc(BYTE* lpMem, UINT nBytes) {
    if (nBytes == 0)
        return nullptr;
    return static_cast<BYTE*>(gvplatform::detail::MemRealloc(lpMem, nBytes));
}

BYTE* CMemFile::Memcpy(BYTE* lpMemTarget, const BYTE* lpMemSource, UINT nBytes) {
    if (nBytes != 0)
        std::memcpy(lpMemTarget, lpMemSource, nBytes);
    return lpMemTarget;
}

void CMemFile::Free(BYTE* lpMem) { gvplatform::detail::MemFree(lpMem); }

void CMemFile::GrowFile(ULONGLONG dwNewLen) {
    if (dwNewLen <= m_nBufferSize)
        return;
    // A growth step of 0 marks a block that cannot grow.
    if (m_nGrowBytes == 0 || dwNewLen > kMaxMemFileSize)
        AfxThrowMemoryException();
    ULONGLONG nSteps = (dwNewLen - m_nBufferSize + m_nGrowBytes - 1) / m_nGrowBytes;
    ULONGLONG nNewBufferSize = m_nBufferSize + nSteps * m_nGrowBytes;
    if (nNewBufferSize > kMaxMemFileSize)
        AfxThrowMemoryException();
    UINT nNewSize = static_cast<UINT>(nNewBufferSize);
    BYTE* lpNew = m_lpBuffer == nullptr ? Alloc(nNewSize) : Realloc(m_lpBuffer, nNewSize);
    if (lpNew == nullptr)
        AfxThrowMemoryException();
    m_lpBuffer = lpNew;
    m_nBufferSize = nNewSize;
}
