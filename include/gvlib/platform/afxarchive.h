// CArchive: the framework's buffered binary archive over a CFile, with its published
// count and string-length encodings (MFC 10 layout, 32-bit build).
#pragma once

#include <type_traits>

#include "gvlib/platform/afxexcept.h"
#include "gvlib/platform/afxfile.h"
#include "gvlib/platform/afxstr.h"
#include "gvlib/platform/export.h"
#include "gvlib/platform/wintypes.h"

namespace gvplatform::detail {
/// The 32- and 64-bit integer types that are none of LONG, DWORD, LONGLONG, ULONGLONG
/// (`long long`, and `long` where it is not int64_t); they map to the one of their width.
template <typename T>
constexpr bool kIsOtherArchiveInteger =
    std::is_integral_v<T> && (sizeof(T) == 4 || sizeof(T) == 8) && !std::is_same_v<T, LONG> &&
    !std::is_same_v<T, DWORD> && !std::is_same_v<T, LONGLONG> && !std::is_same_v<T, ULONGLONG> &&
    !std::is_same_v<T, wchar_t> && !std::is_same_v<T, char32_t>;
template <typename T>
using ArchiveIntegerFor = std::conditional_t<sizeof(T) == 4, std::conditional_t<std::is_signed_v<T>, LONG, DWORD>,
                                             std::conditional_t<std::is_signed_v<T>, LONGLONG, ULONGLONG>>;
}  // namespace gvplatform::detail

/// A buffered archive that either stores (writes) or loads (reads) a CFile. Every value
/// is written little-endian. Extraction from a storing archive raises CArchiveException
/// writeOnly (4), insertion into a loading one readOnly (2), both with m_strFileName;
/// extraction past the end of the file raises endOfFile (3) with no file name.
///
/// The framework's int/LONG and UINT/DWORD are one type each here (32-bit); other
/// integer types of 32 or 64 bits (`long long`, ...) are written at their own width.
/// Pointers are refused at compile time, so `ar << "text"` does not silently store a
/// bool: write a CString.
class GVLIB_API CArchive {
public:
    enum Mode { store = 0, load = 1, bNoFlushOnDelete = 2, bNoByteSwap = 4 };

    /// Archives pFile in direction nMode. A buffer lpBuf of nBufSize bytes is used in
    /// place when given and at least 128 bytes long; otherwise the archive allocates
    /// max(nBufSize, 128) bytes. m_strFileName takes pFile->GetFilePath().
    CArchive(CFile* pFile, UINT nMode, int nBufSize = 4096, void* lpBuf = nullptr);
    CArchive(const CArchive&) = delete;
    CArchive& operator=(const CArchive&) = delete;
    /// Closes a storing archive (writing what is buffered) unless bNoFlushOnDelete;
    /// errors at that point are dropped: call Close to see them.
    ~CArchive();

    BOOL IsLoading() const noexcept { return (m_nMode & load) != 0; }
    BOOL IsStoring() const noexcept { return (m_nMode & load) == 0; }
    BOOL IsByteSwapping() const noexcept { return FALSE; }
    /// TRUE when no loaded byte waits in the buffer (meaningful when loading).
    BOOL IsBufferEmpty() const noexcept { return m_lpBufCur == m_lpBufMax; }
    CFile* GetFile() const noexcept { return m_pFile; }
    /// Loading: the file offset of the next byte extraction delivers (the file's
    /// position less what is read ahead); -1 without a file. This library's own
    /// addition, for the offsets that strict loading reports.
    int64_t GetLoadOffset() const;

    /// Flushes and detaches from the file (the file stays open).
    void Close();
    /// Detaches from the file without flushing and releases the buffer.
    void Abort();
    /// Storing: writes the buffered bytes to the file. Loading: moves the file back over
    /// the bytes read ahead and not used, and empties the buffer.
    void Flush();
    /// Loading: makes nBytesNeeded bytes more than those already buffered available;
    /// raises endOfFile when the file cannot supply them.
    void FillBuffer(UINT nBytesNeeded);

    /// Reads up to nMax bytes; answers how many (fewer only at the end of the file).
    UINT Read(void* lpBuf, UINT nMax);
    void Write(const void* lpBuf, UINT nMax);
    /// The framework's count: 16-bit below 0xFFFF, else FF FF and 32 bits.
    void WriteCount(DWORD_PTR dwCount);
    DWORD_PTR ReadCount();
    /// Writes the text's bytes without a length or terminator (null writes nothing).
    void WriteString(LPCTSTR lpsz);

    // Insertion: little-endian; bool and char are one byte, wchar_t a 16-bit unit.
    CArchive& operator<<(BYTE by);
    CArchive& operator<<(WORD w);
    CArchive& operator<<(LONG l);
    CArchive& operator<<(DWORD dw);
    CArchive& operator<<(short w);
    CArchive& operator<<(char ch);
    CArchive& operator<<(bool b);
    CArchive& operator<<(wchar_t ch);
    CArchive& operator<<(float f);
    CArchive& operator<<(double d);
    CArchive& operator<<(LONGLONG dwdw);
    CArchive& operator<<(ULONGLONG dwdw);
    template <typename T, std::enable_if_t<gvplatform::detail::kIsOtherArchiveInteger<T>, int> = 0>
    CArchive& operator<<(T n) {
        return *this << static_cast<gvplatform::detail::ArchiveIntegerFor<T>>(n);
    }
    template <typename T>
    CArchive& operator<<(T*) = delete;

    // Extraction: the same layouts.
    CArchive& operator>>(BYTE& by);
    CArchive& operator>>(WORD& w);
    CArchive& operator>>(LONG& l);
    CArchive& operator>>(DWORD& dw);
    CArchive& operator>>(short& w);
    CArchive& operator>>(char& ch);
    CArchive& operator>>(bool& b);
    CArchive& operator>>(wchar_t& ch);
    CArchive& operator>>(float& f);
    CArchive& operator>>(double& d);
    CArchive& operator>>(LONGLONG& dwdw);
    CArchive& operator>>(ULONGLONG& dwdw);
    template <typename T, std::enable_if_t<gvplatform::detail::kIsOtherArchiveInteger<T>, int> = 0>
    CArchive& operator>>(T& n) {
        gvplatform::detail::ArchiveIntegerFor<T> v;
        *this >> v;
        n = static_cast<T>(v);
        return *this;
    }

    /// The archived file's path, used in the exceptions this archive raises.
    CString m_strFileName;

protected:
    UINT m_nMode;
    BOOL m_bUserBuf;
    int m_nBufSize;
    CFile* m_pFile;
    BYTE* m_lpBufCur;
    BYTE* m_lpBufMax;
    BYTE* m_lpBufStart;

private:
    BYTE* PrepareStore(UINT nBytes);
    const BYTE* PrepareLoad(UINT nBytes);
};

/// Writes a string length: for a wide string first FF FE FF; then below 255 one byte;
/// else FF and, below 0xFFFE, 16 bits; else FF FF FF and 32 bits.
/// 255 ⇒ FF FF 00; 65534 ⇒ FF FF FF FE FF 00 00 (0xFFFE is the wide marker).
GVLIB_API void AfxWriteStringLength(CArchive& ar, UINT_PTR nLength, BOOL bUnicode);
/// Reads a string length written by AfxWriteStringLength; nCharSize becomes 1 or 2
/// (wide). A 32-bit length of 0xFFFFFFFF (a later framework's 64-bit form) raises
/// CArchiveException genericException.
GVLIB_API UINT_PTR AfxReadStringLength(CArchive& ar, int& nCharSize);

/// Writes the length (narrow form) and the bytes, embedded NULs included.
GVLIB_API CArchive& operator<<(CArchive& ar, const CStringT<char>& str);
/// Reads a narrow string whole, or a wide (UTF-16LE) one converted to the ANSI code page.
/// A short archive raises endOfFile, a length above INT32_MAX genericException; either
/// way str is unchanged. Memory grows with the bytes actually read, not the announced length.
GVLIB_API CArchive& operator>>(CArchive& ar, CStringT<char>& str);
/// Writes the wide length form and the text as UTF-16LE.
GVLIB_API CArchive& operator<<(CArchive& ar, const CStringT<wchar_t>& str);
/// Reads a wide string (UTF-16LE), or a narrow one converted from the ANSI code page.
GVLIB_API CArchive& operator>>(CArchive& ar, CStringT<wchar_t>& str);
