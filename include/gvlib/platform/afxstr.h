// CStringT<char>: the framework's counted narrow string, copy-on-write.
#pragma once

#include <atomic>
#include <cstdarg>
#include <cstdint>
#include <string>

#include "gvlib/platform/export.h"
#include "gvlib/platform/wintypes.h"

[[noreturn]] GVLIB_API void AfxThrowMemoryException();
[[noreturn]] GVLIB_API void AfxThrowInvalidArgException();

template <typename BaseType>
class CStringT;

namespace gvplatform::detail {
/// The block behind every non-empty string: this header, then the text and a NUL.
/// nRefs counts the strings sharing it; -1 marks a block locked by LockBuffer.
struct CStringData {
    std::atomic<int32_t> nRefs;
    int32_t nDataLength;
    int32_t nAllocLength;

    char* data() noexcept { return reinterpret_cast<char*>(this + 1); }
};
}  // namespace gvplatform::detail

/// The counted narrow string. Copies share one block until either side changes
/// (so two copies report the same buffer address); text may hold NUL bytes.
/// Indexes and lengths are 32-bit. Out-of-range indexes raise CInvalidArgException.
template <>
class GVLIB_API CStringT<char> {
public:
    typedef char XCHAR;
    typedef char* PXSTR;
    typedef const char* PCXSTR;
    typedef wchar_t YCHAR;
    typedef const wchar_t* PCYSTR;

    CStringT() noexcept;
    CStringT(const CStringT& src) noexcept;
    CStringT(CStringT&& src) noexcept;
    CStringT(const char* psz);
    CStringT(const unsigned char* psz);
    CStringT(const wchar_t* psz);
    CStringT(const char* pch, int nLength);
    CStringT(const wchar_t* pch, int nLength);
    CStringT(char ch, int nRepeat = 1);
    ~CStringT();

    CStringT& operator=(const CStringT& src) noexcept;
    CStringT& operator=(CStringT&& src) noexcept;
    CStringT& operator=(const char* psz);
    CStringT& operator=(const unsigned char* psz);
    CStringT& operator=(const wchar_t* psz);
    CStringT& operator=(char ch);

    // Length and raw access.
    int GetLength() const noexcept { return GetData()->nDataLength; }
    bool IsEmpty() const noexcept { return GetLength() == 0; }
    void Empty() noexcept;
    operator PCXSTR() const noexcept { return m_pszData; }
    PCXSTR GetString() const noexcept { return m_pszData; }
    int GetAllocLength() const noexcept;
    void SetString(const char* psz);
    void SetString(const char* pch, int nLength);
    void Truncate(int nNewLength);

    // Elements: an index below 0 or beyond the length is refused.
    char GetAt(int iChar) const;
    char operator[](int iChar) const;
    void SetAt(int iChar, char ch);

    // Appending.
    CStringT& operator+=(const CStringT& str);
    CStringT& operator+=(const char* psz);
    CStringT& operator+=(char ch) {
        AppendChar(ch);
        return *this;
    }
    CStringT& operator+=(const wchar_t* psz);
    void Append(const CStringT& str);
    void Append(const char* psz);
    void Append(const char* pch, int nLength);
    /// Inline for the common case, a block of our own with room to spare.
    /// Everything is read before the first store: a char store may alias the
    /// header, and would make the compiler read it all again.
    void AppendChar(char ch) {
        char* text = m_pszData;
        Data* p = GetData();
        const int n = p->nDataLength;
        if (n < p->nAllocLength && p->nRefs.load(std::memory_order_relaxed) == 1) {
            p->nDataLength = n + 1;
            text[n] = ch;
            text[n + 1] = '\0';
            return;
        }
        AppendCharSlowly(ch);
    }

    // Comparison: byte order, ASCII case folding, or the C runtime's current-locale collation.
    int Compare(PCXSTR psz) const;
    int CompareNoCase(PCXSTR psz) const;
    int Collate(PCXSTR psz) const;
    int CollateNoCase(PCXSTR psz) const;

    // Substrings: negative arguments count as 0, arguments past the end stop at it.
    CStringT Mid(int iFirst) const;
    CStringT Mid(int iFirst, int nCount) const;
    CStringT Left(int nCount) const;
    CStringT Right(int nCount) const;
    CStringT SpanIncluding(PCXSTR pszCharSet) const;
    CStringT SpanExcluding(PCXSTR pszCharSet) const;
    CStringT Tokenize(PCXSTR pszTokens, int& iStart) const;

    // Searching: -1 when not found.
    int Find(char ch, int iStart = 0) const noexcept;
    int Find(PCXSTR pszSub, int iStart = 0) const noexcept;
    int FindOneOf(PCXSTR pszCharSet) const noexcept;
    int ReverseFind(char ch) const noexcept;

    // Editing in place.
    CStringT& TrimLeft();
    CStringT& TrimLeft(char chTarget);
    CStringT& TrimLeft(PCXSTR pszTargets);
    CStringT& TrimRight();
    CStringT& TrimRight(char chTarget);
    CStringT& TrimRight(PCXSTR pszTargets);
    CStringT& Trim();
    CStringT& Trim(char chTarget);
    CStringT& Trim(PCXSTR pszTargets);
    int Replace(char chOld, char chNew);
    int Replace(PCXSTR pszOld, PCXSTR pszNew);
    int Remove(char chRemove);
    int Insert(int iIndex, char ch);
    int Insert(int iIndex, PCXSTR psz);
    int Delete(int iIndex, int nCount = 1);
    CStringT& MakeLower();
    CStringT& MakeUpper();
    CStringT& MakeReverse();

    // Direct access to the block; ReleaseBuffer(-1) takes the length of the NUL-terminated text.
    PXSTR GetBuffer();
    PXSTR GetBuffer(int nMinBufferLength);
    PXSTR GetBufferSetLength(int nLength);
    void ReleaseBuffer(int nNewLength = -1);
    void ReleaseBufferSetLength(int nNewLength);
    void Preallocate(int nLength);
    void FreeExtra();
    PXSTR LockBuffer();
    void UnlockBuffer() noexcept;

    // printf-style formatting with the original C runtime's conventions.
    void Format(PCXSTR pszFormat, ...);
    void FormatV(PCXSTR pszFormat, va_list args);
    void AppendFormat(PCXSTR pszFormat, ...);
    void AppendFormatV(PCXSTR pszFormat, va_list args);

    /// The text converted to a new wide BSTR, which the caller frees with SysFreeString.
    BSTR AllocSysString() const;

    /// Replaces the text with string-table entry nID; 0 and unchanged when there is none.
    BOOL LoadString(UINT nID);

    friend GVLIB_API CStringT operator+(const CStringT& str1, const CStringT& str2);
    friend GVLIB_API CStringT operator+(const CStringT& str1, const char* psz2);
    friend GVLIB_API CStringT operator+(const char* psz1, const CStringT& str2);
    friend GVLIB_API CStringT operator+(const CStringT& str1, char ch2);
    friend GVLIB_API CStringT operator+(char ch1, const CStringT& str2);

    friend bool operator==(const CStringT& a, const CStringT& b) { return a.Compare(b) == 0; }
    friend bool operator==(const CStringT& a, const char* b) { return a.Compare(b) == 0; }
    friend bool operator==(const char* a, const CStringT& b) { return b.Compare(a) == 0; }
    friend bool operator!=(const CStringT& a, const CStringT& b) { return a.Compare(b) != 0; }
    friend bool operator!=(const CStringT& a, const char* b) { return a.Compare(b) != 0; }
    friend bool operator!=(const char* a, const CStringT& b) { return b.Compare(a) != 0; }
    friend bool operator<(const CStringT& a, const CStringT& b) { return a.Compare(b) < 0; }
    friend bool operator<(const CStringT& a, const char* b) { return a.Compare(b) < 0; }
    friend bool operator<(const char* a, const CStringT& b) { return b.Compare(a) > 0; }
    friend bool operator>(const CStringT& a, const CStringT& b) { return a.Compare(b) > 0; }
    friend bool operator>(const CStringT& a, const char* b) { return a.Compare(b) > 0; }
    friend bool operator>(const char* a, const CStringT& b) { return b.Compare(a) < 0; }

private:
    typedef gvplatform::detail::CStringData Data;
    Data* GetData() const noexcept { return reinterpret_cast<Data*>(m_pszData) - 1; }
    void Release() noexcept;
    void Attach(Data* pData) noexcept;
    PXSTR PrepareWrite(int nLength);
    void Fork(int nLength);
    void Reallocate(int nLength);
    void SetLength(int nLength);
    void Concatenate(const char* p1, int n1, const char* p2, int n2);
    /// AppendChar when the block is shared, locked or full. The character goes
    /// by value, so the inline caller keeps no copy of it in memory.
    void AppendCharSlowly(char ch);
    /// SetAt on a block shared with other strings: a block of its own first.
    void SetAtShared(int iChar, char ch);

    PXSTR m_pszData;  // text of a Data block, or of the shared empty block
};

typedef CStringT<char> CStringA;
typedef CStringT<char> CString;

/// A minimal wide counterpart, enough for the framework's record-set variant.
template <>
class GVLIB_API CStringT<wchar_t> {
public:
    CStringT() = default;
    CStringT(const wchar_t* psz) : m_str(psz ? psz : L"") {}
    CStringT(const wchar_t* pch, int nLength) : m_str(pch, nLength > 0 ? nLength : 0) {}
    int GetLength() const noexcept { return static_cast<int>(m_str.size()); }
    bool IsEmpty() const noexcept { return m_str.empty(); }
    operator const wchar_t*() const noexcept { return m_str.c_str(); }
    const wchar_t* GetString() const noexcept { return m_str.c_str(); }

private:
    std::wstring m_str;
};

typedef CStringT<wchar_t> CStringW;
