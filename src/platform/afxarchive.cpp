// CArchive: buffering, scalar layouts, counts and the string-length encoding.
#include "gvlib/platform/afxarchive.h"

#include <cstdint>
#include <cstring>
#include <limits>
#include <new>
#include <string>

#include "gvlib/platform/winnls.h"
#include "platform/loading_policy.h"

namespace {

// The framework forces a private buffer of this size when the caller's is smaller.
constexpr int kMinBufSize = 128;

// String bodies are read at most this many bytes at a time, so a damaged length costs
// memory in proportion to the bytes actually present, not to the length announced.
constexpr UINT kStringChunk = 64 * 1024;

template <typename U>
void StoreLittleEndian(BYTE* p, U v) {
    for (size_t i = 0; i < sizeof(U); ++i)
        p[i] = static_cast<BYTE>(v >> (8 * i));
}

template <typename U>
U LoadLittleEndian(const BYTE* p) {
    U v = 0;
    for (size_t i = 0; i < sizeof(U); ++i)
        v = static_cast<U>(v | static_cast<U>(static_cast<U>(p[i]) << (8 * i)));
    return v;
}

}  // namespace

// ---------------------------------------------------------------------------------------
// Life cycle and buffering

CArchive::CArchive(CFile* pFile, UINT nMode, int nBufSize, void* lpBuf)
    : m_nMode(nMode),
      m_bUserBuf(TRUE),
      m_nBufSize(nBufSize),
      m_pFile(pFile),
      m_lpBufCur(nullptr),
      m_lpBufMax(nullptr),
      m_lpBufStart(static_cast<BYTE*>(lpBuf)) {
    if (pFile == nullptr)
        AfxThrowInvalidArgException();
    m_strFileName = pFile->GetFilePath();
    if (m_nBufSize < kMinBufSize) {
        m_nBufSize = kMinBufSize;
        m_lpBufStart = nullptr;
    }
    if (m_lpBufStart == nullptr) {
        m_lpBufStart = new (std::nothrow) BYTE[static_cast<size_t>(m_nBufSize)];
        if (m_lpBufStart == nullptr)
            AfxThrowMemoryException();
        m_bUserBuf = FALSE;
    }
    m_lpBufMax = m_lpBufStart + m_nBufSize;
    m_lpBufCur = IsLoading() ? m_lpBufMax : m_lpBufStart;
}

CArchive::~CArchive() {
    if (m_pFile != nullptr && !(m_nMode & bNoFlushOnDelete)) {
        // A destructor cannot report: errors here are dropped, as documented.
        try {
            Close();
        } catch (...) {
        }
    }
    Abort();
}

void CArchive::Close() {
    if (m_pFile == nullptr)
        return;
    Flush();
    m_pFile = nullptr;
}

void CArchive::Abort() {
    m_pFile = nullptr;
    if (!m_bUserBuf) {
        delete[] m_lpBufStart;
        m_lpBufStart = nullptr;
        m_lpBufCur = nullptr;
        m_lpBufMax = nullptr;
    }
}

void CArchive::Flush() {
    if (m_pFile == nullptr)
        AfxThrowArchiveException(CArchiveException::genericException, m_strFileName);
    if (IsLoading()) {
        // Hand the bytes read ahead back to the file, so its position is what was used.
        if (m_lpBufMax != m_lpBufCur)
            m_pFile->Seek(-static_cast<LONGLONG>(m_lpBufMax - m_lpBufCur), CFile::current);
        m_lpBufCur = m_lpBufMax;
    } else {
        if (m_lpBufCur != m_lpBufStart)
            m_pFile->Write(m_lpBufStart, static_cast<UINT>(m_lpBufCur - m_lpBufStart));
        m_lpBufCur = m_lpBufStart;
    }
}

int64_t CArchive::GetLoadOffset() const {
    if (m_pFile == nullptr)
        return -1;
    return static_cast<int64_t>(m_pFile->GetPosition()) - (m_lpBufMax - m_lpBufCur);
}

void CArchive::FillBuffer(UINT nBytesNeeded) {
    if (!IsLoading())
        AfxThrowArchiveException(CArchiveException::writeOnly, m_strFileName);
    if (m_pFile == nullptr)
        AfxThrowArchiveException(CArchiveException::genericException, m_strFileName);
    UINT nUnused = static_cast<UINT>(m_lpBufMax - m_lpBufCur);
    uint64_t nTotalNeeded = static_cast<uint64_t>(nBytesNeeded) + nUnused;
    if (nTotalNeeded > static_cast<uint64_t>(m_nBufSize))
        AfxThrowArchiveException(CArchiveException::bufferFull, m_strFileName);

    if (m_lpBufCur > m_lpBufStart) {
        if (nUnused > 0)
            std::memmove(m_lpBufStart, m_lpBufCur, nUnused);
        m_lpBufCur = m_lpBufStart;
        m_lpBufMax = m_lpBufStart + nUnused;
    }
    // Read ahead as far as the buffer goes; stop at the end of the file.
    UINT nRead = nUnused;
    UINT nLeft = static_cast<UINT>(m_nBufSize) - nUnused;
    BYTE* lpTemp = m_lpBufStart + nUnused;
    UINT nBytes;
    do {
        nBytes = m_pFile->Read(lpTemp, nLeft);
        lpTemp += nBytes;
        nRead += nBytes;
        nLeft -= nBytes;
    } while (nBytes > 0 && nLeft > 0 && nRead < nTotalNeeded);
    m_lpBufCur = m_lpBufStart;
    m_lpBufMax = m_lpBufStart + nRead;

    if (static_cast<uint64_t>(m_lpBufMax - m_lpBufCur) < nTotalNeeded)
        AfxThrowArchiveException(CArchiveException::endOfFile);
}

UINT CArchive::Read(void* lpBuf, UINT nMax) {
    if (nMax == 0)
        return 0;
    if (lpBuf == nullptr)
        AfxThrowInvalidArgException();
    if (!IsLoading())
        AfxThrowArchiveException(CArchiveException::writeOnly, m_strFileName);
    BYTE* lpOut = static_cast<BYTE*>(lpBuf);

    // First what the buffer holds.
    UINT nAvailable = static_cast<UINT>(m_lpBufMax - m_lpBufCur);
    UINT nTemp = nMax < nAvailable ? nMax : nAvailable;
    if (nTemp > 0)
        std::memcpy(lpOut, m_lpBufCur, nTemp);
    m_lpBufCur += nTemp;
    lpOut += nTemp;
    UINT nLeft = nMax - nTemp;
    if (nLeft == 0)
        return nMax;
    if (m_pFile == nullptr)
        AfxThrowArchiveException(CArchiveException::genericException, m_strFileName);

    // Then whole buffer-size chunks straight from the file.
    UINT nDirect = nLeft - nLeft % static_cast<UINT>(m_nBufSize);
    UINT nRead = 0;
    while (nRead < nDirect) {
        UINT nBytes = m_pFile->Read(lpOut, nDirect - nRead);
        if (nBytes == 0)
            break;
        lpOut += nBytes;
        nRead += nBytes;
    }
    nLeft -= nRead;
    if (nRead < nDirect || nLeft == 0)
        return nMax - nLeft;

    // Then the tail through a refilled buffer.
    UINT nFilled = 0;
    UINT nBytes;
    do {
        nBytes = m_pFile->Read(m_lpBufStart + nFilled, static_cast<UINT>(m_nBufSize) - nFilled);
        nFilled += nBytes;
    } while (nBytes > 0 && nFilled < nLeft);
    m_lpBufCur = m_lpBufStart;
    m_lpBufMax = m_lpBufStart + nFilled;
    nTemp = nLeft < nFilled ? nLeft : nFilled;
    std::memcpy(lpOut, m_lpBufCur, nTemp);
    m_lpBufCur += nTemp;
    nLeft -= nTemp;
    return nMax - nLeft;
}

void CArchive::Write(const void* lpBuf, UINT nMax) {
    if (nMax == 0)
        return;
    if (lpBuf == nullptr)
        AfxThrowInvalidArgException();
    if (!IsStoring())
        AfxThrowArchiveException(CArchiveException::readOnly, m_strFileName);
    const BYTE* lpIn = static_cast<const BYTE*>(lpBuf);

    UINT nFree = static_cast<UINT>(m_lpBufMax - m_lpBufCur);
    UINT nTemp = nMax < nFree ? nMax : nFree;
    if (nTemp > 0)
        std::memcpy(m_lpBufCur, lpIn, nTemp);
    m_lpBufCur += nTemp;
    lpIn += nTemp;
    UINT nLeft = nMax - nTemp;
    if (nLeft == 0)
        return;

    Flush();
    // Whole buffer-size chunks go straight to the file; the rest waits in the buffer.
    UINT nDirect = nLeft - nLeft % static_cast<UINT>(m_nBufSize);
    if (nDirect > 0) {
        m_pFile->Write(lpIn, nDirect);
        lpIn += nDirect;
        nLeft -= nDirect;
    }
    if (nLeft > 0)
        std::memcpy(m_lpBufCur, lpIn, nLeft);
    m_lpBufCur += nLeft;
}

BYTE* CArchive::PrepareStore(UINT nBytes) {
    if (!IsStoring())
        AfxThrowArchiveException(CArchiveException::readOnly, m_strFileName);
    if (static_cast<UINT>(m_lpBufMax - m_lpBufCur) < nBytes)
        Flush();
    BYTE* p = m_lpBufCur;
    m_lpBufCur += nBytes;
    return p;
}

const BYTE* CArchive::PrepareLoad(UINT nBytes) {
    if (!IsLoading())
        AfxThrowArchiveException(CArchiveException::writeOnly, m_strFileName);
    UINT nAvailable = static_cast<UINT>(m_lpBufMax - m_lpBufCur);
    if (nAvailable < nBytes)
        FillBuffer(nBytes - nAvailable);
    const BYTE* p = m_lpBufCur;
    m_lpBufCur += nBytes;
    return p;
}

// ---------------------------------------------------------------------------------------
// Scalars

CArchive& CArchive::operator<<(BYTE by) {
    *PrepareStore(1) = by;
    return *this;
}

CArchive& CArchive::operator<<(WORD w) {
    StoreLittleEndian(PrepareStore(2), w);
    return *this;
}

CArchive& CArchive::operator<<(LONG l) { return *this << static_cast<DWORD>(l); }

CArchive& CArchive::operator<<(DWORD dw) {
    StoreLittleEndian(PrepareStore(4), dw);
    return *this;
}

CArchive& CArchive::operator<<(short w) { return *this << static_cast<WORD>(w); }

CArchive& CArchive::operator<<(char ch) { return *this << static_cast<BYTE>(ch); }

CArchive& CArchive::operator<<(bool b) { return *this << static_cast<BYTE>(b ? 1 : 0); }

CArchive& CArchive::operator<<(wchar_t ch) { return *this << static_cast<WORD>(ch); }

CArchive& CArchive::operator<<(float f) {
    uint32_t bits;
    std::memcpy(&bits, &f, sizeof bits);
    return *this << static_cast<DWORD>(bits);
}

CArchive& CArchive::operator<<(double d) {
    uint64_t bits;
    std::memcpy(&bits, &d, sizeof bits);
    return *this << static_cast<ULONGLONG>(bits);
}

CArchive& CArchive::operator<<(LONGLONG dwdw) { return *this << static_cast<ULONGLONG>(dwdw); }

CArchive& CArchive::operator<<(ULONGLONG dwdw) {
    StoreLittleEndian(PrepareStore(8), dwdw);
    return *this;
}

CArchive& CArchive::operator>>(BYTE& by) {
    by = *PrepareLoad(1);
    return *this;
}

CArchive& CArchive::operator>>(WORD& w) {
    w = LoadLittleEndian<WORD>(PrepareLoad(2));
    return *this;
}

CArchive& CArchive::operator>>(LONG& l) {
    DWORD dw;
    *this >> dw;
    l = static_cast<LONG>(dw);
    return *this;
}

CArchive& CArchive::operator>>(DWORD& dw) {
    dw = LoadLittleEndian<DWORD>(PrepareLoad(4));
    return *this;
}

CArchive& CArchive::operator>>(short& w) {
    WORD u;
    *this >> u;
    w = static_cast<short>(u);
    return *this;
}

CArchive& CArchive::operator>>(char& ch) {
    BYTE by;
    *this >> by;
    ch = static_cast<char>(by);
    return *this;
}

CArchive& CArchive::operator>>(bool& b) {
    BYTE by;
    *this >> by;
    b = by != 0;
    return *this;
}

CArchive& CArchive::operator>>(wchar_t& ch) {
    WORD w;
    *this >> w;
    ch = static_cast<wchar_t>(w);
    return *this;
}

CArchive& CArchive::operator>>(float& f) {
    DWORD bits;
    *this >> bits;
    std::memcpy(&f, &bits, sizeof f);
    return *this;
}

CArchive& CArchive::operator>>(double& d) {
    ULONGLONG bits;
    *this >> bits;
    std::memcpy(&d, &bits, sizeof d);
    return *this;
}

CArchive& CArchive::operator>>(LONGLONG& dwdw) {
    ULONGLONG u;
    *this >> u;
    dwdw = static_cast<LONGLONG>(u);
    return *this;
}

CArchive& CArchive::operator>>(ULONGLONG& dwdw) {
    dwdw = LoadLittleEndian<ULONGLONG>(PrepareLoad(8));
    return *this;
}

// ---------------------------------------------------------------------------------------
// Counts and raw text

void CArchive::WriteCount(DWORD_PTR dwCount) {
    if (dwCount < 0xFFFF) {
        *this << static_cast<WORD>(dwCount);
    } else {
        *this << static_cast<WORD>(0xFFFF);
        *this << static_cast<DWORD>(dwCount);
    }
}

DWORD_PTR CArchive::ReadCount() {
    WORD wCount;
    *this >> wCount;
    if (wCount != 0xFFFF)
        return wCount;
    DWORD dwCount;
    *this >> dwCount;
    return dwCount;
}

void CArchive::WriteString(LPCTSTR lpsz) {
    if (lpsz != nullptr)
        Write(lpsz, static_cast<UINT>(std::strlen(lpsz)));
}

// ---------------------------------------------------------------------------------------
// String lengths and strings

void AfxWriteStringLength(CArchive& ar, UINT_PTR nLength, BOOL bUnicode) {
    if (bUnicode) {
        // The wide marker: a byte escape followed by 0xFFFE, which no 16-bit length uses.
        ar << static_cast<BYTE>(0xFF);
        ar << static_cast<WORD>(0xFFFE);
    }
    if (nLength < 0xFF) {
        ar << static_cast<BYTE>(nLength);
    } else if (nLength < 0xFFFE) {
        ar << static_cast<BYTE>(0xFF);
        ar << static_cast<WORD>(nLength);
    } else {
        ar << static_cast<BYTE>(0xFF);
        ar << static_cast<WORD>(0xFFFF);
        ar << static_cast<DWORD>(nLength);
    }
}

UINT_PTR AfxReadStringLength(CArchive& ar, int& nCharSize) {
    nCharSize = 1;
    BYTE bLength;
    ar >> bLength;
    if (bLength < 0xFF)
        return bLength;
    WORD wLength;
    ar >> wLength;
    if (wLength == 0xFFFE) {
        // Wide string: the length starts over after the marker.
        nCharSize = 2;
        ar >> bLength;
        if (bLength < 0xFF)
            return bLength;
        ar >> wLength;
    }
    if (wLength < 0xFFFF)
        return wLength;
    DWORD dwLength;
    ar >> dwLength;
    // 0xFFFFFFFF announces a 64-bit length (later framework versions): it cannot fit.
    if (dwLength == 0xFFFFFFFF)
        AfxThrowArchiveException(CArchiveException::genericException);
    return dwLength;
}

namespace {

// Reads nBytes of string body. The buffer grows with the bytes actually delivered, in
// chunks of at most kStringChunk, so a damaged length over a short archive fails after
// allocating about the archive's size instead of the length announced.
std::string ReadStringBody(CArchive& ar, uint64_t nBytes) {
    std::string body;
    try {
        while (body.size() < nBytes) {
            uint64_t nRest = nBytes - body.size();
            UINT nChunk = nRest < kStringChunk ? static_cast<UINT>(nRest) : kStringChunk;
            size_t nOld = body.size();
            body.resize(nOld + nChunk);
            if (ar.Read(&body[nOld], nChunk) != nChunk)
                AfxThrowArchiveException(CArchiveException::endOfFile);
        }
    } catch (const std::bad_alloc&) {
        AfxThrowMemoryException();
    }
    return body;
}

// UTF-16LE bytes to host wide characters; surrogate pairs become one character and a
// lone surrogate becomes U+FFFD (which the ANSI code page shows as '?').
std::wstring DecodeUtf16Le(const std::string& bytes) {
    std::wstring text;
    try {
        text.reserve(bytes.size() / 2);
        const size_t nUnits = bytes.size() / 2;
        auto unit = [&](size_t i) -> uint32_t {
            return static_cast<uint32_t>(static_cast<BYTE>(bytes[2 * i])) |
                   static_cast<uint32_t>(static_cast<BYTE>(bytes[2 * i + 1])) << 8;
        };
        for (size_t i = 0; i < nUnits; ++i) {
            uint32_t u = unit(i);
            if (u >= 0xD800 && u <= 0xDBFF && i + 1 < nUnits && unit(i + 1) >= 0xDC00 && unit(i + 1) <= 0xDFFF) {
                u = 0x10000 + ((u - 0xD800) << 10) + (unit(i + 1) - 0xDC00);
                ++i;
            } else if (u >= 0xD800 && u <= 0xDFFF) {
                u = 0xFFFD;
            }
            text.push_back(static_cast<wchar_t>(u));
        }
    } catch (const std::bad_alloc&) {
        AfxThrowMemoryException();
    }
    return text;
}

// Host wide characters to UTF-16LE units; values beyond U+10FFFF become U+FFFD.
std::u16string EncodeUtf16(const wchar_t* psz, int nLength) {
    std::u16string units;
    try {
        units.reserve(static_cast<size_t>(nLength));
        for (int i = 0; i < nLength; ++i) {
            uint32_t c = static_cast<uint32_t>(psz[i]);
            if (c > 0x10FFFF)
                c = 0xFFFD;
            if (c >= 0x10000) {
                c -= 0x10000;
                units.push_back(static_cast<char16_t>(0xD800 + (c >> 10)));
                units.push_back(static_cast<char16_t>(0xDC00 + (c & 0x3FF)));
            } else {
                units.push_back(static_cast<char16_t>(c));
            }
        }
    } catch (const std::bad_alloc&) {
        AfxThrowMemoryException();
    }
    return units;
}

// A length the string classes (32-bit signed lengths) cannot hold.
void CheckStringLength(UINT_PTR nLength) {
    if (nLength > static_cast<UINT_PTR>(std::numeric_limits<int32_t>::max()))
        AfxThrowArchiveException(CArchiveException::genericException);
}

}  // namespace

CArchive& operator<<(CArchive& ar, const CStringT<char>& str) {
    UINT nLength = static_cast<UINT>(str.GetLength());
    AfxWriteStringLength(ar, nLength, FALSE);
    ar.Write(str.GetString(), nLength);
    return ar;
}

CArchive& operator>>(CArchive& ar, CStringT<char>& str) {
    int nCharSize;
    UINT_PTR nLength = AfxReadStringLength(ar, nCharSize);
    CheckStringLength(nLength);
    // The text the length announces, with its terminator, must fit the budget.
    gvplatform::detail::ChargeInput(static_cast<uint64_t>(nLength) + 1, static_cast<uint64_t>(nCharSize));
    std::string body = ReadStringBody(ar, static_cast<uint64_t>(nLength) * static_cast<uint64_t>(nCharSize));
    if (nCharSize == 1) {
        str = CStringT<char>(body.data(), static_cast<int>(body.size()));
    } else {
        std::wstring wide = DecodeUtf16Le(body);
        body = std::string();
        str = CStringT<char>(wide.data(), static_cast<int>(wide.size()));
    }
    return ar;
}

CArchive& operator<<(CArchive& ar, const CStringT<wchar_t>& str) {
    std::u16string units = EncodeUtf16(str.GetString(), str.GetLength());
    AfxWriteStringLength(ar, static_cast<UINT_PTR>(units.size()), TRUE);
    BYTE bytes[2];
    for (char16_t u : units) {
        bytes[0] = static_cast<BYTE>(u);
        bytes[1] = static_cast<BYTE>(u >> 8);
        ar.Write(bytes, 2);
    }
    return ar;
}

CArchive& operator>>(CArchive& ar, CStringT<wchar_t>& str) {
    int nCharSize;
    UINT_PTR nLength = AfxReadStringLength(ar, nCharSize);
    CheckStringLength(nLength);
    // The text the length announces, with its terminator, must fit the budget.
    gvplatform::detail::ChargeInput(static_cast<uint64_t>(nLength) + 1, static_cast<uint64_t>(nCharSize));
    std::string body = ReadStringBody(ar, static_cast<uint64_t>(nLength) * static_cast<uint64_t>(nCharSize));
    if (nCharSize == 2) {
        std::wstring wide = DecodeUtf16Le(body);
        str = CStringT<wchar_t>(wide.data(), static_cast<int>(wide.size()));
        return ar;
    }
    // Narrow text is widened from the ANSI code page.
    int nBytes = static_cast<int>(body.size());
    if (nBytes == 0) {
        str = CStringT<wchar_t>();
        return ar;
    }
    int nChars = MultiByteToWideChar(CP_ACP, 0, body.data(), nBytes, nullptr, 0);
    std::wstring wide;
    try {
        wide.resize(static_cast<size_t>(nChars > 0 ? nChars : 0));
    } catch (const std::bad_alloc&) {
        AfxThrowMemoryException();
    }
    if (nChars <= 0 || MultiByteToWideChar(CP_ACP, 0, body.data(), nBytes, &wide[0], nChars) != nChars)
        AfxThrowOleException(static_cast<SCODE>(0x80070000u | (GetLastError() & 0xFFFFu)));
    str = CStringT<wchar_t>(wide.data(), nChars);
    return ar;
}
