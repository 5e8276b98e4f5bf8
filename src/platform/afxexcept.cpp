// The framework's exception classes and their raisers.
#include "gvlib/platform/afxexcept.h"

#include <cerrno>
#include <cstring>

CException::~CException() = default;

const char* CException::what() const noexcept { return "framework exception"; }

BOOL CException::GetErrorMessage(char* lpszError, UINT nMaxError, UINT* pnHelpContext) const {
    if (pnHelpContext != nullptr)
        *pnHelpContext = 0;
    if (lpszError == nullptr || nMaxError == 0)
        return FALSE;
    std::strncpy(lpszError, what(), nMaxError - 1);
    lpszError[nMaxError - 1] = '\0';
    return TRUE;
}

const char* CMemoryException::what() const noexcept { return "out of memory"; }

const char* CInvalidArgException::what() const noexcept { return "invalid argument"; }

const char* CNotSupportedException::what() const noexcept { return "not supported"; }

CArchiveException::CArchiveException(int cause, LPCTSTR lpszArchiveName)
    : m_cause(cause), m_strFileName(lpszArchiveName) {}

const char* CArchiveException::what() const noexcept {
    switch (m_cause) {
    case readOnly:
        return "archive: attempt to write to an archive opened for loading";
    case endOfFile:
        return "archive: unexpected end of file";
    case writeOnly:
        return "archive: attempt to read from an archive opened for storing";
    case badIndex:
        return "archive: invalid file format";
    case badClass:
        return "archive: object of unexpected type";
    case badSchema:
        return "archive: object of unexpected version";
    case bufferFull:
        return "archive: buffer full";
    default:
        return "archive: error";
    }
}

CFileException::CFileException(int cause, LONG lOsError, LPCTSTR lpszArchiveName)
    : m_cause(cause), m_lOsError(lOsError), m_strFileName(lpszArchiveName) {}

const char* CFileException::what() const noexcept {
    switch (m_cause) {
    case fileNotFound:
        return "file: not found";
    case badPath:
        return "file: bad path";
    case accessDenied:
        return "file: access denied";
    case badSeek:
        return "file: bad seek";
    case diskFull:
        return "file: disk full";
    case endOfFile:
        return "file: end of file";
    default:
        return "file: error";
    }
}

int CFileException::OsErrorToException(LONG lOsError) {
    switch (lOsError) {
    case 0:
        return none;
    case ENOENT:
        return fileNotFound;
    case ENOTDIR:
    case ENAMETOOLONG:
    case ELOOP:
        return badPath;
    case EMFILE:
    case ENFILE:
        return tooManyOpenFiles;
    case EACCES:
    case EPERM:
    case EROFS:
    case EISDIR:
        return accessDenied;
    case EBADF:
        return invalidFile;
    case ENOSPC:
        return diskFull;
    case EIO:
        return hardIO;
    case EINVAL:
        return badSeek;
    default:
        return genericException;
    }
}

const char* COleException::what() const noexcept { return "OLE error"; }

void AfxThrowMemoryException() { throw CMemoryException(); }

void AfxThrowInvalidArgException() { throw CInvalidArgException(); }

void AfxThrowNotSupportedException() { throw CNotSupportedException(); }

void AfxThrowArchiveException(int cause, LPCTSTR lpszArchiveName) { throw CArchiveException(cause, lpszArchiveName); }

void AfxThrowFileException(int cause, LONG lOsError, LPCTSTR lpszFileName) {
    throw CFileException(cause, lOsError, lpszFileName);
}

void AfxThrowOleException(SCODE sc) { throw COleException(sc); }
