// CStringT<char>: storage, copy-on-write and the editing operations.
#include "gvlib/platform/afxstr.h"

#include <atomic>
#include <climits>
#include <clocale>
#include <cstdlib>
#include <cstring>
#include <new>
#include <string>

#include "gvlib/platform/allocator.h"
#include "gvlib/platform/winnls.h"
#include "platform/crt_format.h"
#include "platform/crt_text.h"
#include "platform/one_thread.h"
#include "platform/string_table.h"

namespace {

using Data = gvplatform::detail::CStringData;

// The empty string of every default-constructed CStringT. Constant-initialised, so
// strings built by other static constructors can use it whatever the order.
struct NilBlock {
    Data header;
    char text[4];
};
NilBlock g_nil{{{2}, 0, 0}, {0, 0, 0, 0}};

constexpr int32_t kLocked = -1;
constexpr int32_t kMaxLength = INT_MAX - 64;

int SafeLength(const char* psz) {
    if (psz == nullptr)
        return 0;
    size_t n = std::strlen(psz);
    if (n > static_cast<size_t>(kMaxLength))
        AfxThrowMemoryException();
    return static_cast<int>(n);
}

bool IsNil(Data* p) noexcept { return p == &g_nil.header; }

// While the process runs one thread no other can see a count, so plain
// arithmetic keeps it and the locked operations, which cost as much as a small
// copy, are spared.
using gvplatform::detail::OneThread;

void Share(Data* p) noexcept {
    if (OneThread())
        p->nRefs.store(p->nRefs.load(std::memory_order_relaxed) + 1, std::memory_order_relaxed);
    else
        p->nRefs.fetch_add(1);
}

// One owner fewer; true when it was the last.
bool Unshare(Data* p) noexcept {
    if (!OneThread())
        return p->nRefs.fetch_sub(1, std::memory_order_acq_rel) == 1;
    const int32_t left = p->nRefs.load(std::memory_order_relaxed) - 1;
    p->nRefs.store(left, std::memory_order_relaxed);
    return left == 0;
}

// The capacity for nLength characters, rounded up to a multiple of 8 as the
// framework's allocator did.
int Capacity(int nLength) {
    if (nLength < 0 || nLength > kMaxLength)
        AfxThrowMemoryException();
    int nAlloc = (nLength + 8) & ~7;
    return nAlloc > kMaxLength ? kMaxLength : nAlloc;
}

size_t BlockBytes(int nAlloc) { return sizeof(Data) + static_cast<size_t>(nAlloc) + 1; }

Data* Allocate(int nLength) {
    const int nAlloc = Capacity(nLength);
    void* block = gvplatform::detail::MemAlloc(BlockBytes(nAlloc));
    if (block == nullptr)
        AfxThrowMemoryException();
    Data* p = static_cast<Data*>(block);
    new (&p->nRefs) std::atomic<int32_t>(1);
    p->nDataLength = 0;
    p->nAllocLength = nAlloc;
    p->data()[0] = '\0';
    return p;
}

void Free(Data* p) noexcept {
    if (!IsNil(p))
        gvplatform::detail::MemFreeSized(p, BlockBytes(p->nAllocLength));
}

}  // namespace

void CStringT<char>::Attach(Data* pData) noexcept { m_pszData = pData->data(); }

void CStringT<char>::Release() noexcept {
    Data* p = GetData();
    if (IsNil(p))
        return;
    // A block with one owner cannot gain another while it is being released
    // (that would need this very object), so the sole owner frees it without
    // the locked decrement, which costs as much as a small copy.
    const int32_t refs = p->nRefs.load(std::memory_order_acquire);
    if (refs == kLocked || refs == 1 || Unshare(p))
        Free(p);
}

// ---- construction and assignment ------------------------------------------------

CStringT<char>::CStringT() noexcept : m_pszData(g_nil.text) {}

CStringT<char>::CStringT(const CStringT& src) noexcept : m_pszData(src.m_pszData) {
    Data* p = GetData();
    if (IsNil(p))
        return;
    if (p->nRefs.load(std::memory_order_relaxed) != kLocked) {
        Share(p);
        return;
    }
    // A locked block belongs to its string alone: the copy takes the text.
    m_pszData = g_nil.text;
    *this = src;
}

CStringT<char>::CStringT(CStringT&& src) noexcept : m_pszData(src.m_pszData) { src.m_pszData = g_nil.text; }

CStringT<char>::CStringT(const char* psz) : m_pszData(g_nil.text) { SetString(psz); }

CStringT<char>::CStringT(const unsigned char* psz) : m_pszData(g_nil.text) {
    SetString(reinterpret_cast<const char*>(psz));
}

CStringT<char>::CStringT(const wchar_t* psz) : m_pszData(g_nil.text) { *this = psz; }

CStringT<char>::CStringT(const char* pch, int nLength) : m_pszData(g_nil.text) { SetString(pch, nLength); }

CStringT<char>::CStringT(const wchar_t* pch, int nLength) : m_pszData(g_nil.text) {
    if (nLength < 0)
        AfxThrowInvalidArgException();
    if (nLength == 0)
        return;
    if (pch == nullptr)
        AfxThrowInvalidArgException();
    int nBytes = WideCharToMultiByte(CP_ACP, 0, pch, nLength, nullptr, 0, nullptr, nullptr);
    PXSTR p = GetBuffer(nBytes);
    WideCharToMultiByte(CP_ACP, 0, pch, nLength, p, nBytes, nullptr, nullptr);
    ReleaseBufferSetLength(nBytes);
}

CStringT<char>::CStringT(char ch, int nRepeat) : m_pszData(g_nil.text) {
    if (nRepeat > 0) {
        PXSTR p = GetBuffer(nRepeat);
        std::memset(p, ch, static_cast<size_t>(nRepeat));
        ReleaseBufferSetLength(nRepeat);
    }
}

CStringT<char>::~CStringT() { Release(); }

CStringT<char>& CStringT<char>::operator=(const CStringT& src) noexcept {
    Data* pSrc = src.GetData();
    Data* pOld = GetData();
    if (pSrc == pOld)
        return *this;
    if (pSrc->nRefs.load() == kLocked) {
        // A locked block belongs to its string alone: copy the text instead.
        try {
            SetString(src.m_pszData, pSrc->nDataLength);
        } catch (...) {
            // Keeping the noexcept of the framework's copy: an allocation failure on
            // copying from a locked block leaves this string as it was.
        }
        return *this;
    }
    if (!IsNil(pSrc))
        Share(pSrc);
    Release();
    Attach(pSrc);
    return *this;
}

CStringT<char>& CStringT<char>::operator=(CStringT&& src) noexcept {
    if (this != &src) {
        if (src.GetData()->nRefs.load() == kLocked)
            return *this = static_cast<const CStringT&>(src);
        Release();
        m_pszData = src.m_pszData;
        src.m_pszData = g_nil.text;
    }
    return *this;
}

CStringT<char>& CStringT<char>::operator=(const char* psz) {
    SetString(psz);
    return *this;
}

CStringT<char>& CStringT<char>::operator=(const unsigned char* psz) {
    SetString(reinterpret_cast<const char*>(psz));
    return *this;
}

CStringT<char>& CStringT<char>::operator=(const wchar_t* psz) {
    if (psz == nullptr) {
        Empty();
        return *this;
    }
    CStringT converted(psz, lstrlenW(psz));
    return *this = converted;
}

CStringT<char>& CStringT<char>::operator=(char ch) {
    SetString(&ch, 1);
    return *this;
}

// ---- storage ----------------------------------------------------------------------

int CStringT<char>::GetAllocLength() const noexcept { return GetData()->nAllocLength; }

void CStringT<char>::Empty() noexcept {
    Data* p = GetData();
    if (p->nDataLength == 0)
        return;
    if (p->nRefs.load() == kLocked) {
        SetLength(0);
        return;
    }
    Release();
    m_pszData = g_nil.text;
}

void CStringT<char>::Fork(int nLength) {
    Data* pOld = GetData();
    int nCopy = pOld->nDataLength < nLength ? pOld->nDataLength : nLength;
    Data* pNew = Allocate(nLength);
    std::memcpy(pNew->data(), pOld->data(), static_cast<size_t>(nCopy));
    pNew->nDataLength = nCopy;
    pNew->data()[nCopy] = '\0';
    // Only the shared empty block or a shared one is forked: give up this
    // string's share of it.
    if (!IsNil(pOld) && Unshare(pOld))
        Free(pOld);
    Attach(pNew);
}

void CStringT<char>::Reallocate(int nLength) {
    Data* pOld = GetData();
    if (nLength <= pOld->nAllocLength)
        return;
    // The block is this string's alone (PrepareWrite forks a shared one), so it
    // grows in place where the heap has room behind it; a failed realloc leaves
    // it whole, and with it the string. Header, text and lock state move along.
    const int nAlloc = Capacity(nLength);
    void* block = gvplatform::detail::MemRealloc(pOld, BlockBytes(nAlloc));
    if (block == nullptr)
        AfxThrowMemoryException();
    Data* pNew = static_cast<Data*>(block);
    pNew->nAllocLength = nAlloc;
    Attach(pNew);
}

CStringT<char>::PXSTR CStringT<char>::PrepareWrite(int nLength) {
    if (nLength < 0)
        AfxThrowInvalidArgException();
    Data* pOld = GetData();
    int32_t refs = pOld->nRefs.load();
    if (IsNil(pOld) || refs > 1) {
        Fork(nLength);
    } else if (pOld->nAllocLength < nLength) {
        // Double, so that repeated appends stay linear and copy each byte
        // about once, as std::string does.
        int64_t nNew = static_cast<int64_t>(pOld->nAllocLength) * 2;
        if (nNew < nLength)
            nNew = nLength;
        if (nNew > kMaxLength)
            nNew = nLength;
        Reallocate(static_cast<int>(nNew));
    }
    return m_pszData;
}

void CStringT<char>::SetLength(int nLength) {
    Data* p = GetData();
    if (IsNil(p))
        return;
    p->nDataLength = nLength;
    m_pszData[nLength] = '\0';
}

void CStringT<char>::SetString(const char* psz) { SetString(psz, SafeLength(psz)); }

void CStringT<char>::SetString(const char* pch, int nLength) {
    if (nLength == 0 || (pch == nullptr && nLength >= 0)) {
        Empty();
        return;
    }
    if (nLength < 0)
        AfxThrowInvalidArgException();
    // The source may lie inside this string's own block: keep it alive until copied.
    Data* pOld = GetData();
    const char* pBase = pOld->data();
    if (pch >= pBase && pch <= pBase + pOld->nDataLength) {
        CStringT fresh;
        std::memcpy(fresh.PrepareWrite(nLength), pch, static_cast<size_t>(nLength));
        fresh.SetLength(nLength);
        *this = fresh;
        return;
    }
    PXSTR p = PrepareWrite(nLength);
    std::memcpy(p, pch, static_cast<size_t>(nLength));
    SetLength(nLength);
}

void CStringT<char>::Truncate(int nNewLength) {
    if (nNewLength < 0 || nNewLength > GetLength())
        AfxThrowInvalidArgException();
    if (nNewLength == GetLength())
        return;
    GetBuffer(nNewLength);
    ReleaseBufferSetLength(nNewLength);
}

CStringT<char>::PXSTR CStringT<char>::GetBuffer() { return PrepareWrite(GetLength()); }

CStringT<char>::PXSTR CStringT<char>::GetBuffer(int nMinBufferLength) {
    int nLength = GetLength();
    return PrepareWrite(nMinBufferLength > nLength ? nMinBufferLength : nLength);
}

CStringT<char>::PXSTR CStringT<char>::GetBufferSetLength(int nLength) {
    PXSTR p = GetBuffer(nLength);
    SetLength(nLength);
    return p;
}

void CStringT<char>::ReleaseBuffer(int nNewLength) {
    if (nNewLength == -1) {
        Data* p = GetData();
        nNewLength = static_cast<int>(strnlen(m_pszData, static_cast<size_t>(p->nAllocLength)));
    }
    ReleaseBufferSetLength(nNewLength);
}

void CStringT<char>::ReleaseBufferSetLength(int nNewLength) {
    if (nNewLength < 0 || nNewLength > GetAllocLength())
        AfxThrowInvalidArgException();
    SetLength(nNewLength);
}

void CStringT<char>::Preallocate(int nLength) { PrepareWrite(nLength > GetLength() ? nLength : GetLength()); }

void CStringT<char>::FreeExtra() {
    Data* p = GetData();
    if (IsNil(p) || p->nAllocLength <= p->nDataLength + 8)
        return;
    CStringT copy(m_pszData, p->nDataLength);
    *this = copy;
}

CStringT<char>::PXSTR CStringT<char>::LockBuffer() {
    PXSTR p = GetBuffer();
    Data* pData = GetData();
    if (!IsNil(pData))
        pData->nRefs.store(kLocked);
    return p;
}

void CStringT<char>::UnlockBuffer() noexcept {
    Data* p = GetData();
    if (!IsNil(p) && p->nRefs.load() == kLocked)
        p->nRefs.store(1);
}

// ---- elements ---------------------------------------------------------------------

char CStringT<char>::GetAt(int iChar) const {
    if (iChar < 0 || iChar > GetLength())
        AfxThrowInvalidArgException();
    return m_pszData[iChar];
}

char CStringT<char>::operator[](int iChar) const { return GetAt(iChar); }

void CStringT<char>::SetAt(int iChar, char ch) {
    if (iChar < 0 || iChar >= GetLength())
        AfxThrowInvalidArgException();
    // A block with one owner, or locked, is this string's to change in place;
    // the index lies inside the text, so it has room.
    if (GetData()->nRefs.load(std::memory_order_relaxed) <= 1) {
        m_pszData[iChar] = ch;
        return;
    }
    SetAtShared(iChar, ch);
}

void CStringT<char>::SetAtShared(int iChar, char ch) {
    Fork(GetLength());
    m_pszData[iChar] = ch;
}

// ---- appending --------------------------------------------------------------------

void CStringT<char>::Append(const char* pch, int nLength) {
    if (nLength < 0)
        AfxThrowInvalidArgException();
    if (nLength == 0)
        return;
    if (pch == nullptr)
        AfxThrowInvalidArgException();
    int nOld = GetLength();
    if (nLength > kMaxLength - nOld)
        AfxThrowMemoryException();
    // Appending a piece of this string to itself: the block may move on growing.
    const char* pBase = m_pszData;
    if (pch >= pBase && pch <= pBase + nOld) {
        CStringT piece(pch, nLength);
        Append(piece.m_pszData, nLength);
        return;
    }
    PXSTR p = PrepareWrite(nOld + nLength);
    std::memcpy(p + nOld, pch, static_cast<size_t>(nLength));
    SetLength(nOld + nLength);
}

void CStringT<char>::AppendCharSlowly(char ch) { Append(&ch, 1); }

void CStringT<char>::Append(const char* psz) { Append(psz, SafeLength(psz)); }

void CStringT<char>::Append(const CStringT& str) { Append(str.m_pszData, str.GetLength()); }

CStringT<char>& CStringT<char>::operator+=(const CStringT& str) {
    Append(str);
    return *this;
}

CStringT<char>& CStringT<char>::operator+=(const char* psz) {
    Append(psz);
    return *this;
}

CStringT<char>& CStringT<char>::operator+=(const wchar_t* psz) {
    Append(CStringT(psz));
    return *this;
}

void CStringT<char>::Concatenate(const char* p1, int n1, const char* p2, int n2) {
    if (n2 > kMaxLength - n1)
        AfxThrowMemoryException();
    PXSTR p = GetBuffer(n1 + n2);
    std::memcpy(p, p1, static_cast<size_t>(n1));
    std::memcpy(p + n1, p2, static_cast<size_t>(n2));
    ReleaseBufferSetLength(n1 + n2);
}

CStringT<char> operator+(const CStringT<char>& str1, const CStringT<char>& str2) {
    CStringT<char> s;
    s.Concatenate(str1.m_pszData, str1.GetLength(), str2.m_pszData, str2.GetLength());
    return s;
}

CStringT<char> operator+(const CStringT<char>& str1, const char* psz2) {
    CStringT<char> s;
    s.Concatenate(str1.m_pszData, str1.GetLength(), psz2 ? psz2 : "", SafeLength(psz2));
    return s;
}

CStringT<char> operator+(const char* psz1, const CStringT<char>& str2) {
    CStringT<char> s;
    s.Concatenate(psz1 ? psz1 : "", SafeLength(psz1), str2.m_pszData, str2.GetLength());
    return s;
}

CStringT<char> operator+(const CStringT<char>& str1, char ch2) {
    CStringT<char> s;
    s.Concatenate(str1.m_pszData, str1.GetLength(), &ch2, 1);
    return s;
}

CStringT<char> operator+(char ch1, const CStringT<char>& str2) {
    CStringT<char> s;
    s.Concatenate(&ch1, 1, str2.m_pszData, str2.GetLength());
    return s;
}

// ---- comparison -------------------------------------------------------------------

int CStringT<char>::Compare(PCXSTR psz) const { return gvplatform::detail::ByteCompare(m_pszData, psz); }

int CStringT<char>::CompareNoCase(PCXSTR psz) const { return gvplatform::detail::ByteCompareNoCase(m_pszData, psz); }

int CStringT<char>::Collate(PCXSTR psz) const { return gvplatform::detail::LocaleCollate(m_pszData, psz, false); }

int CStringT<char>::CollateNoCase(PCXSTR psz) const {
    return gvplatform::detail::LocaleCollate(m_pszData, psz, true);
}

// ---- substrings -------------------------------------------------------------------

CStringT<char> CStringT<char>::Mid(int iFirst) const { return Mid(iFirst, GetLength()); }

CStringT<char> CStringT<char>::Mid(int iFirst, int nCount) const {
    int nLength = GetLength();
    if (iFirst < 0)
        iFirst = 0;
    if (nCount < 0)
        nCount = 0;
    if (iFirst > nLength)
        iFirst = nLength;
    if (nCount > nLength - iFirst)
        nCount = nLength - iFirst;
    if (iFirst == 0 && nCount == nLength)
        return *this;
    return CStringT(m_pszData + iFirst, nCount);
}

CStringT<char> CStringT<char>::Left(int nCount) const { return Mid(0, nCount); }

CStringT<char> CStringT<char>::Right(int nCount) const {
    int nLength = GetLength();
    if (nCount < 0)
        nCount = 0;
    if (nCount > nLength)
        nCount = nLength;
    return Mid(nLength - nCount, nCount);
}

CStringT<char> CStringT<char>::SpanIncluding(PCXSTR pszCharSet) const {
    return Left(static_cast<int>(std::strspn(m_pszData, pszCharSet ? pszCharSet : "")));
}

CStringT<char> CStringT<char>::SpanExcluding(PCXSTR pszCharSet) const {
    return Left(static_cast<int>(std::strcspn(m_pszData, pszCharSet ? pszCharSet : "")));
}

CStringT<char> CStringT<char>::Tokenize(PCXSTR pszTokens, int& iStart) const {
    if (iStart < 0)
        AfxThrowInvalidArgException();
    const char* tokens = pszTokens ? pszTokens : "";
    if (*tokens == '\0') {
        if (iStart < GetLength())
            return Mid(iStart);
    } else if (iStart < GetLength()) {
        const char* pPlace = m_pszData + iStart;
        const char* pEnd = m_pszData + GetLength();
        pPlace += std::strspn(pPlace, tokens);
        if (pPlace < pEnd) {
            int nIncluding = static_cast<int>(pPlace - m_pszData);
            int nExcluding = static_cast<int>(std::strcspn(pPlace, tokens));
            iStart = nIncluding + nExcluding + 1;
            return Mid(nIncluding, nExcluding);
        }
    }
    iStart = -1;
    return CStringT();
}

// ---- searching --------------------------------------------------------------------

int CStringT<char>::Find(char ch, int iStart) const noexcept {
    if (iStart < 0 || iStart >= GetLength())
        return -1;
    // As the C runtime's strchr: the search ends at the first NUL.
    const char* p = std::strchr(m_pszData + iStart, ch);
    return p ? static_cast<int>(p - m_pszData) : -1;
}

int CStringT<char>::Find(PCXSTR pszSub, int iStart) const noexcept {
    if (pszSub == nullptr)
        return -1;
    int nLength = GetLength();
    if (iStart < 0 || iStart > nLength)
        return -1;
    const char* p = std::strstr(m_pszData + iStart, pszSub);
    return p ? static_cast<int>(p - m_pszData) : -1;
}

int CStringT<char>::FindOneOf(PCXSTR pszCharSet) const noexcept {
    if (pszCharSet == nullptr)
        return -1;
    const char* p = std::strpbrk(m_pszData, pszCharSet);
    return p ? static_cast<int>(p - m_pszData) : -1;
}

int CStringT<char>::ReverseFind(char ch) const noexcept {
    const char* p = std::strrchr(m_pszData, ch);
    return p ? static_cast<int>(p - m_pszData) : -1;
}

// ---- editing ----------------------------------------------------------------------

CStringT<char>& CStringT<char>::TrimLeft() {
    int n = 0;
    int nLength = GetLength();
    while (n < nLength && gvplatform::detail::IsSpace(m_pszData[n]))
        ++n;
    return n ? (*this = Mid(n)) : *this;
}

CStringT<char>& CStringT<char>::TrimLeft(char chTarget) {
    int n = 0;
    int nLength = GetLength();
    while (n < nLength && m_pszData[n] == chTarget)
        ++n;
    return n ? (*this = Mid(n)) : *this;
}

CStringT<char>& CStringT<char>::TrimLeft(PCXSTR pszTargets) {
    if (pszTargets == nullptr || *pszTargets == '\0')
        return *this;
    int n = 0;
    int nLength = GetLength();
    while (n < nLength && m_pszData[n] != '\0' && std::strchr(pszTargets, m_pszData[n]))
        ++n;
    return n ? (*this = Mid(n)) : *this;
}

CStringT<char>& CStringT<char>::TrimRight() {
    int n = GetLength();
    while (n > 0 && gvplatform::detail::IsSpace(m_pszData[n - 1]))
        --n;
    if (n != GetLength())
        Truncate(n);
    return *this;
}

CStringT<char>& CStringT<char>::TrimRight(char chTarget) {
    int n = GetLength();
    while (n > 0 && m_pszData[n - 1] == chTarget)
        --n;
    if (n != GetLength())
        Truncate(n);
    return *this;
}

CStringT<char>& CStringT<char>::TrimRight(PCXSTR pszTargets) {
    if (pszTargets == nullptr || *pszTargets == '\0')
        return *this;
    int n = GetLength();
    while (n > 0 && m_pszData[n - 1] != '\0' && std::strchr(pszTargets, m_pszData[n - 1]))
        --n;
    if (n != GetLength())
        Truncate(n);
    return *this;
}

CStringT<char>& CStringT<char>::Trim() { return TrimRight().TrimLeft(); }

CStringT<char>& CStringT<char>::Trim(char chTarget) { return TrimRight(chTarget).TrimLeft(chTarget); }

CStringT<char>& CStringT<char>::Trim(PCXSTR pszTargets) { return TrimRight(pszTargets).TrimLeft(pszTargets); }

int CStringT<char>::Replace(char chOld, char chNew) {
    if (chOld == chNew)
        return 0;
    int nLength = GetLength();
    int nCount = 0;
    for (int i = 0; i < nLength; ++i) {
        if (m_pszData[i] == chOld) {
            if (nCount == 0)
                GetBuffer();
            m_pszData[i] = chNew;
            ++nCount;
        }
    }
    return nCount;
}

int CStringT<char>::Replace(PCXSTR pszOld, PCXSTR pszNew) {
    int nOld = SafeLength(pszOld);
    if (nOld == 0)
        return 0;
    int nNew = SafeLength(pszNew);
    int nLength = GetLength();
    // One pass builds the result, so the work stays linear in the text.
    std::string out;
    out.reserve(static_cast<size_t>(nLength));
    int nCount = 0;
    const char* p = m_pszData;
    const char* pEnd = m_pszData + nLength;
    while (p < pEnd) {
        const char* hit = std::strstr(p, pszOld);
        if (hit == nullptr) {
            size_t run = std::strlen(p);
            out.append(p, run);
            p += run;
            if (p < pEnd)
                out.push_back(*p++);  // an embedded NUL: carry on past it
            continue;
        }
        out.append(p, static_cast<size_t>(hit - p));
        out.append(pszNew ? pszNew : "", static_cast<size_t>(nNew));
        p = hit + nOld;
        ++nCount;
    }
    if (nCount > 0) {
        if (out.size() > static_cast<size_t>(kMaxLength))
            AfxThrowMemoryException();
        SetString(out.data(), static_cast<int>(out.size()));
    }
    return nCount;
}

int CStringT<char>::Remove(char chRemove) {
    int nLength = GetLength();
    if (std::memchr(m_pszData, chRemove, static_cast<size_t>(nLength)) == nullptr)
        return 0;
    PXSTR p = GetBuffer();
    int nKept = 0;
    for (int i = 0; i < nLength; ++i) {
        if (p[i] != chRemove)
            p[nKept++] = p[i];
    }
    ReleaseBufferSetLength(nKept);
    return nLength - nKept;
}

int CStringT<char>::Insert(int iIndex, char ch) {
    return Insert(iIndex, CStringT(ch).m_pszData);
}

int CStringT<char>::Insert(int iIndex, PCXSTR psz) {
    int nLength = GetLength();
    if (iIndex < 0)
        iIndex = 0;
    if (iIndex > nLength)
        iIndex = nLength;
    int nInsert = SafeLength(psz);
    if (nInsert == 0)
        return nLength;
    CStringT piece(psz, nInsert);
    if (nInsert > kMaxLength - nLength)
        AfxThrowMemoryException();
    PXSTR p = GetBuffer(nLength + nInsert);
    std::memmove(p + iIndex + nInsert, p + iIndex, static_cast<size_t>(nLength - iIndex));
    std::memcpy(p + iIndex, piece.m_pszData, static_cast<size_t>(nInsert));
    ReleaseBufferSetLength(nLength + nInsert);
    return nLength + nInsert;
}

int CStringT<char>::Delete(int iIndex, int nCount) {
    int nLength = GetLength();
    if (iIndex < 0)
        iIndex = 0;
    if (nCount < 0)
        nCount = 0;
    if (iIndex >= nLength || nCount == 0)
        return nLength;
    if (nCount > nLength - iIndex)
        nCount = nLength - iIndex;
    PXSTR p = GetBuffer();
    std::memmove(p + iIndex, p + iIndex + nCount, static_cast<size_t>(nLength - iIndex - nCount));
    ReleaseBufferSetLength(nLength - nCount);
    return nLength - nCount;
}

CStringT<char>& CStringT<char>::MakeLower() {
    int nLength = GetLength();
    PXSTR p = GetBuffer();
    for (int i = 0; i < nLength; ++i)
        p[i] = gvplatform::detail::ToLower(p[i]);
    return *this;
}

CStringT<char>& CStringT<char>::MakeUpper() {
    int nLength = GetLength();
    PXSTR p = GetBuffer();
    for (int i = 0; i < nLength; ++i)
        p[i] = gvplatform::detail::ToUpper(p[i]);
    return *this;
}

CStringT<char>& CStringT<char>::MakeReverse() {
    int nLength = GetLength();
    PXSTR p = GetBuffer();
    for (int i = 0, j = nLength - 1; i < j; ++i, --j) {
        char t = p[i];
        p[i] = p[j];
        p[j] = t;
    }
    return *this;
}

// ---- formatting and resources -----------------------------------------------------

void CStringT<char>::FormatV(PCXSTR pszFormat, va_list args) {
    if (pszFormat == nullptr)
        AfxThrowInvalidArgException();
    std::string text = gvplatform::detail::FormatV(pszFormat, args);
    SetString(text.data(), static_cast<int>(text.size()));
}

void CStringT<char>::Format(PCXSTR pszFormat, ...) {
    va_list args;
    va_start(args, pszFormat);
    try {
        FormatV(pszFormat, args);
    } catch (...) {
        va_end(args);
        throw;
    }
    va_end(args);
}

void CStringT<char>::AppendFormatV(PCXSTR pszFormat, va_list args) {
    if (pszFormat == nullptr)
        AfxThrowInvalidArgException();
    std::string text = gvplatform::detail::FormatV(pszFormat, args);
    Append(text.data(), static_cast<int>(text.size()));
}

void CStringT<char>::AppendFormat(PCXSTR pszFormat, ...) {
    va_list args;
    va_start(args, pszFormat);
    try {
        AppendFormatV(pszFormat, args);
    } catch (...) {
        va_end(args);
        throw;
    }
    va_end(args);
}

BOOL CStringT<char>::LoadString(UINT nID) {
    std::string text;
    if (!gvplatform::detail::LookUpStringResource(nID, text))
        return FALSE;
    SetString(text.data(), static_cast<int>(text.size()));
    return TRUE;
}
