// The framework's exception classes and raisers. Exceptions are thrown by value.
#pragma once

#include <cstdint>
#include <exception>

#include "gvlib/platform/afxstr.h"
#include "gvlib/platform/export.h"
#include "gvlib/platform/wintypes.h"

/// Root of the framework's exceptions; catchable as std::exception too.
class GVLIB_API CException : public std::exception {
public:
    CException() = default;
    ~CException() override;
    /// Copies a description into lpszError (at most nMaxError bytes with the NUL).
    virtual BOOL GetErrorMessage(char* lpszError, UINT nMaxError, UINT* pnHelpContext = nullptr) const;
    /// Kept for host code written for heap-allocated framework exceptions; does nothing here.
    void Delete() {}
    const char* what() const noexcept override;
};

class GVLIB_API CMemoryException : public CException {
public:
    const char* what() const noexcept override;
};

class GVLIB_API CInvalidArgException : public CException {
public:
    const char* what() const noexcept override;
};

class GVLIB_API CNotSupportedException : public CException {
public:
    const char* what() const noexcept override;
};

class GVLIB_API CArchiveException : public CException {
public:
    enum {
        none,
        genericException,
        readOnly,   // 2: insertion into a loading archive
        endOfFile,  // 3: extraction past the end of the data
        writeOnly,  // 4: extraction from a storing archive
        badIndex,
        badClass,
        badSchema,
        bufferFull
    };
    explicit CArchiveException(int cause = none, LPCTSTR lpszArchiveName = nullptr);
    const char* what() const noexcept override;

    int m_cause;
    CStringT<char> m_strFileName;
    /// Byte offset in the loaded data where damage was found, -1 when the source
    /// cannot tell (set by strict loading; the framework has no such field).
    int64_t m_lOffset = -1;
};

class GVLIB_API CFileException : public CException {
public:
    enum {
        none,
        genericException,
        fileNotFound,
        badPath,
        tooManyOpenFiles,
        accessDenied,
        invalidFile,
        removeCurrentDir,
        directoryFull,
        badSeek,
        hardIO,
        sharingViolation,
        lockViolation,
        diskFull,
        endOfFile
    };
    explicit CFileException(int cause = none, LONG lOsError = -1, LPCTSTR lpszArchiveName = nullptr);
    const char* what() const noexcept override;
    /// Maps a host errno value to the nearest cause.
    static int OsErrorToException(LONG lOsError);

    int m_cause;
    LONG m_lOsError;
    CStringT<char> m_strFileName;
};

class GVLIB_API COleException : public CException {
public:
    explicit COleException(SCODE sc = 0) : m_sc(sc) {}
    const char* what() const noexcept override;

    SCODE m_sc;
};

[[noreturn]] GVLIB_API void AfxThrowArchiveException(int cause, LPCTSTR lpszArchiveName = nullptr);
[[noreturn]] GVLIB_API void AfxThrowFileException(int cause, LONG lOsError = -1, LPCTSTR lpszFileName = nullptr);
[[noreturn]] GVLIB_API void AfxThrowOleException(SCODE sc);
[[noreturn]] GVLIB_API void AfxThrowNotSupportedException();
// AfxThrowMemoryException and AfxThrowInvalidArgException are declared with the string.
