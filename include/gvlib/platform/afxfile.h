// CFile, CMemFile and CFileStatus: the framework's binary files (MFC 10 names and widths).
// CFile opens host paths as POSIX file descriptors; CMemFile keeps its bytes in memory.
#pragma once

#include "gvlib/platform/afxexcept.h"
#include "gvlib/platform/afxstr.h"
#include "gvlib/platform/export.h"
#include "gvlib/platform/wintypes.h"

#ifndef _MAX_PATH
#define _MAX_PATH 260
#endif

/// What CFile::GetStatus reports about a file. The three times are the seconds since
/// 1970 that the framework's CTime would hold.
struct CFileStatus {
    LONGLONG m_ctime = 0;      // creation time
    LONGLONG m_mtime = 0;      // last modification time
    LONGLONG m_atime = 0;      // last access time
    ULONGLONG m_size = 0;      // length in bytes
    BYTE m_attribute = 0;      // CFile::Attribute bits (0x10 directory, 0x08 volume label)
    BYTE _m_padding = 0;
    TCHAR m_szFullName[_MAX_PATH] = {};  // absolute path
};

/// A file on the host. Every failure raises CFileException with the cause mapped from
/// errno, except Open(name, flags, pError), which answers FALSE and fills *pError.
/// The share flags are accepted and not enforced (the host has no mandatory locking);
/// typeText and typeBinary are accepted and ignored, as the framework's CFile does.
/// Names are host paths, or Windows paths (C:\dir\a.txt, \\server\share\a.txt)
/// resolved through the volume map.
class GVLIB_API CFile {
public:
    enum OpenFlags : UINT {
        modeRead = 0x0000,
        modeWrite = 0x0001,
        modeReadWrite = 0x0002,
        shareCompat = 0x0000,
        shareExclusive = 0x0010,
        shareDenyWrite = 0x0020,
        shareDenyRead = 0x0030,
        shareDenyNone = 0x0040,
        modeNoInherit = 0x0080,
        modeCreate = 0x1000,
        modeNoTruncate = 0x2000,
        typeText = 0x4000,
        typeBinary = 0x8000
    };
#if defined(__clang__)
// The framework's name "system" shadows the C library's system(); it stays.
#pragma clang diagnostic push
#pragma clang diagnostic ignored "-Wshadow"
#endif
    enum Attribute : BYTE {
        normal = 0x00,
        readOnly = 0x01,
        hidden = 0x02,
        system = 0x04,
        volume = 0x08,
        directory = 0x10,
        archive = 0x20
    };
#if defined(__clang__)
#pragma clang diagnostic pop
#endif
    enum SeekPosition : UINT { begin = 0x0, current = 0x1, end = 0x2 };

    /// The status of the file a Windows path names, as the framework found it: by
    /// directory search, so a root or a name ending in a delimiter is not found
    /// and a wildcard in the last component finds the first match.
    static BOOL GetStatus(LPCTSTR lpszFileName, CFileStatus& rStatus);

    /// The handle of a closed file. Handles are host file descriptors.
    static constexpr int hFileNull = -1;

    CFile() noexcept;
    /// Opens the file; raises CFileException when it cannot.
    CFile(LPCTSTR lpszFileName, UINT nOpenFlags);
    CFile(const CFile&) = delete;
    CFile& operator=(const CFile&) = delete;
    /// Closes the file it opened, dropping any error (call Close to see them).
    virtual ~CFile();

    /// Opens a host path. modeCreate creates the file and, without modeNoTruncate,
    /// empties it. Answers FALSE and fills *pError (cause, errno, name) on failure.
    /// A file that is already open is closed first.
    virtual BOOL Open(LPCTSTR lpszFileName, UINT nOpenFlags, CFileException* pError = nullptr);
    /// Closes the file and forgets its name; raises CFileException when the host reports an error.
    virtual void Close();
    /// Closes the file ignoring every error.
    virtual void Abort();
    /// Forces written data to the device.
    virtual void Flush();

    /// Reads up to nCount bytes from the current position; answers how many (0 at the end).
    virtual UINT Read(void* lpBuf, UINT nCount);
    /// Writes all nCount bytes; a device that takes fewer raises cause diskFull.
    virtual void Write(const void* lpBuf, UINT nCount);
    /// Moves the position by lOff from begin, current or end and answers the new position.
    /// A position before the start raises cause badSeek.
    virtual ULONGLONG Seek(LONGLONG lOff, UINT nFrom);
    void SeekToBegin() { Seek(0, begin); }
    ULONGLONG SeekToEnd() { return Seek(0, end); }
    virtual ULONGLONG GetLength() const;
    /// Cuts or extends (with zeros) the file; the position moves to the new length.
    virtual void SetLength(ULONGLONG dwNewLen);
    virtual ULONGLONG GetPosition() const;

    /// The name part of the path: /home/me/a.dat ⇒ a.dat.
    virtual CString GetFileName() const;
    /// The name without its extension: /home/me/a.dat ⇒ a.
    virtual CString GetFileTitle() const;
    /// The full path the file was opened with (relative names are made absolute).
    virtual CString GetFilePath() const;
    /// Sets the path reported by GetFilePath without opening anything.
    virtual void SetFilePath(LPCTSTR lpszNewName);

    int m_hFile;

protected:
    BOOL m_bCloseOnDelete;
    CString m_strFileName;
};

/// A file held in a memory block. Growth is in whole steps of m_nGrowBytes: the new
/// block size is the old one plus as many steps as cover the need (grow 1024: writing 1
/// byte gives a 1024-byte block, writing 1025 bytes a 2048-byte one). A growth step of 0
/// means the block cannot grow: a write past its end raises CMemoryException and writes
/// nothing. Seeking past the end is allowed; a later write fills the gap with zeros.
/// Blocks the file allocates itself come from malloc; sizes above 32 bits are refused
/// with CMemoryException, seeks beyond 32 bits with CFileException badSeek.
class GVLIB_API CMemFile : public CFile {
public:
    CMemFile(UINT nGrowBytes = 1024);
    /// Works on the caller's block: see Attach.
    CMemFile(BYTE* lpBuffer, UINT nBufferSize, UINT nGrowBytes = 0);
    /// Frees the block when the file owns it.
    ~CMemFile() override;

    /// Takes the caller's block. With nGrowBytes 0 the file's content is the block's
    /// nBufferSize bytes, read and written in place, and the block never moves. With
    /// nGrowBytes > 0 the file starts empty and the block (which must then come from
    /// malloc) may be reallocated. The file never frees an attached block: Detach it.
    /// A block the file owned before is freed.
    void Attach(BYTE* lpBuffer, UINT nBufferSize, UINT nGrowBytes = 0);
    /// Gives up the block without freeing it and empties the file. A block the file
    /// allocated itself is the caller's to free() afterwards.
    BYTE* Detach();

    UINT Read(void* lpBuf, UINT nCount) override;
    void Write(const void* lpBuf, UINT nCount) override;
    ULONGLONG Seek(LONGLONG lOff, UINT nFrom) override;
    ULONGLONG GetLength() const override;
    /// Cuts or extends (with zeros) the file; the position moves back only when it was
    /// beyond the new length.
    void SetLength(ULONGLONG dwNewLen) override;
    ULONGLONG GetPosition() const override;
    /// Empties the file, freeing the block when the file owns it.
    void Close() override;
    void Abort() override;
    void Flush() override;

protected:
    virtual BYTE* Alloc(UINT nBytes);
    virtual BYTE* Realloc(BYTE* lpMem, UINT nBytes);
    virtual BYTE* Memcpy(BYTE* lpMemTarget, const BYTE* lpMemSource, UINT nBytes);
    virtual void Free(BYTE* lpMem);
    /// Makes the block at least dwNewLen bytes long (the file length is unchanged).
    virtual void GrowFile(ULONGLONG dwNewLen);

    UINT m_nGrowBytes;
    UINT m_nPosition;
    UINT m_nBufferSize;
    UINT m_nFileSize;
    BYTE* m_lpBuffer;
    BOOL m_bAutoDelete;
};
