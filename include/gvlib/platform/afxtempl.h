// CArray: the framework's growable array template.
#pragma once

#include <cstring>
#include <new>
#include <utility>

#include "gvlib/platform/afxarchive.h"
#include "gvlib/platform/afxobject.h"
#include "gvlib/platform/afxstr.h"
#include "gvlib/platform/allocator.h"

/// A growable array with 32-bit indexes. Index errors raise CInvalidArgException;
/// new slots are value-initialised (null for pointers).
template <class TYPE, class ARG_TYPE = const TYPE&>
class CArray : public CObject {
public:
    CArray() = default;
    CArray(const CArray&) = delete;
    CArray& operator=(const CArray&) = delete;
    ~CArray() override { SetSize(0, -1); }

    INT_PTR GetSize() const { return m_nSize; }
    INT_PTR GetCount() const { return m_nSize; }
    BOOL IsEmpty() const { return m_nSize == 0; }
    INT_PTR GetUpperBound() const { return m_nSize - 1; }

    /// Sets the number of slots; 0 releases the storage. nGrowBy -1 keeps the step.
    void SetSize(INT_PTR nNewSize, INT_PTR nGrowBy = -1) {
        if (nNewSize < 0)
            AfxThrowInvalidArgException();
        if (nGrowBy >= 0)
            m_nGrowBy = nGrowBy;
        if (nNewSize == 0) {
            Destroy(0, m_nSize);
            gvplatform::detail::MemFree(m_pData);
            m_pData = nullptr;
            m_nSize = m_nMaxSize = 0;
            return;
        }
        if (nNewSize > m_nMaxSize)
            Grow(nNewSize);
        if (nNewSize > m_nSize) {
            for (INT_PTR i = m_nSize; i < nNewSize; ++i)
                ::new (&m_pData[i]) TYPE();
        } else {
            Destroy(nNewSize, m_nSize);
        }
        m_nSize = nNewSize;
    }

    /// Exchanges the slots and the growth step of two arrays; allocates nothing.
    void Swap(CArray& other) noexcept {
        std::swap(m_pData, other.m_pData);
        std::swap(m_nSize, other.m_nSize);
        std::swap(m_nMaxSize, other.m_nMaxSize);
        std::swap(m_nGrowBy, other.m_nGrowBy);
    }

    void FreeExtra() {
        if (m_nSize != m_nMaxSize && m_nSize > 0)
            Reallocate(m_nSize);
    }
    void RemoveAll() { SetSize(0, -1); }

    const TYPE& GetAt(INT_PTR nIndex) const { return m_pData[Checked(nIndex)]; }
    TYPE& GetAt(INT_PTR nIndex) { return m_pData[Checked(nIndex)]; }
    void SetAt(INT_PTR nIndex, ARG_TYPE newElement) { m_pData[Checked(nIndex)] = newElement; }
    const TYPE& ElementAt(INT_PTR nIndex) const { return m_pData[Checked(nIndex)]; }
    TYPE& ElementAt(INT_PTR nIndex) { return m_pData[Checked(nIndex)]; }
    const TYPE* GetData() const { return m_pData; }
    TYPE* GetData() { return m_pData; }
    const TYPE& operator[](INT_PTR nIndex) const { return GetAt(nIndex); }
    TYPE& operator[](INT_PTR nIndex) { return ElementAt(nIndex); }

    /// Stores at nIndex, growing the array to nIndex + 1 when needed.
    void SetAtGrow(INT_PTR nIndex, ARG_TYPE newElement) {
        if (nIndex < 0)
            AfxThrowInvalidArgException();
        if (nIndex >= m_nSize) {
            TYPE keep(newElement);  // newElement may refer into this array
            SetSize(nIndex + 1, -1);
            m_pData[nIndex] = std::move(keep);
            return;
        }
        m_pData[nIndex] = newElement;
    }
    INT_PTR Add(ARG_TYPE newElement) {
        INT_PTR nIndex = m_nSize;
        SetAtGrow(nIndex, newElement);
        return nIndex;
    }
    INT_PTR Append(const CArray& src) {
        if (this == &src)
            AfxThrowInvalidArgException();
        INT_PTR nOldSize = m_nSize;
        SetSize(m_nSize + src.m_nSize);
        for (INT_PTR i = 0; i < src.m_nSize; ++i)
            m_pData[nOldSize + i] = src.m_pData[i];
        return nOldSize;
    }
    void Copy(const CArray& src) {
        if (this == &src)
            return;
        SetSize(src.m_nSize);
        for (INT_PTR i = 0; i < src.m_nSize; ++i)
            m_pData[i] = src.m_pData[i];
    }

    /// Inserts nCount copies at nIndex; an index past the end grows the array to it.
    void InsertAt(INT_PTR nIndex, ARG_TYPE newElement, INT_PTR nCount = 1) {
        if (nIndex < 0 || nCount <= 0)
            AfxThrowInvalidArgException();
        TYPE keep(newElement);
        if (nIndex >= m_nSize) {
            SetSize(nIndex + nCount, -1);
        } else {
            INT_PTR nOldSize = m_nSize;
            SetSize(m_nSize + nCount, -1);
            for (INT_PTR i = nOldSize - 1; i >= nIndex; --i)
                m_pData[i + nCount] = std::move(m_pData[i]);
        }
        for (INT_PTR i = 0; i < nCount; ++i)
            m_pData[nIndex + i] = keep;
    }
    /// Removes nCount slots at nIndex; later slots move down.
    void RemoveAt(INT_PTR nIndex, INT_PTR nCount = 1) {
        if (nIndex < 0 || nCount < 0 || nIndex > m_nSize - nCount)
            AfxThrowInvalidArgException();
        for (INT_PTR i = nIndex; i + nCount < m_nSize; ++i)
            m_pData[i] = std::move(m_pData[i + nCount]);
        Destroy(m_nSize - nCount, m_nSize);
        m_nSize -= nCount;
    }

    /// The framework's layout: the count, then the elements' bytes.
    void Serialize(CArchive& ar) override {
        if (ar.IsStoring()) {
            ar.WriteCount(static_cast<DWORD_PTR>(m_nSize));
        } else {
            DWORD_PTR nCount = ar.ReadCount();
            if (nCount > 0x7FFFFFFFu / sizeof(TYPE))
                AfxThrowArchiveException(CArchiveException::badIndex);
            SetSize(0, -1);
            // Grow while reading so a damaged count costs no more than the data present.
            TYPE element{};
            for (DWORD_PTR i = 0; i < nCount; ++i) {
                if (ar.Read(&element, sizeof(TYPE)) != sizeof(TYPE))
                    AfxThrowArchiveException(CArchiveException::endOfFile);
                Add(element);
            }
            return;
        }
        if (m_nSize > 0)
            ar.Write(m_pData, static_cast<UINT>(m_nSize * sizeof(TYPE)));
    }

protected:
    TYPE* m_pData = nullptr;
    INT_PTR m_nSize = 0;
    INT_PTR m_nMaxSize = 0;
    INT_PTR m_nGrowBy = 0;

private:
    INT_PTR Checked(INT_PTR nIndex) const {
        if (nIndex < 0 || nIndex >= m_nSize)
            AfxThrowInvalidArgException();
        return nIndex;
    }
    void Destroy(INT_PTR from, INT_PTR to) {
        for (INT_PTR i = from; i < to; ++i)
            m_pData[i].~TYPE();
    }
    void Grow(INT_PTR nNewSize) {
        // The framework's step: an eighth of the size, at least 4 and at most 1024.
        INT_PTR nGrowBy = m_nGrowBy;
        if (nGrowBy == 0) {
            nGrowBy = m_nSize / 8;
            nGrowBy = nGrowBy < 4 ? 4 : (nGrowBy > 1024 ? 1024 : nGrowBy);
        }
        INT_PTR nNewMax = m_nMaxSize + nGrowBy;
        if (nNewMax < nNewSize || nNewMax < m_nMaxSize)
            nNewMax = nNewSize;
        Reallocate(nNewMax);
    }
    void Reallocate(INT_PTR nNewMax) {
        if (static_cast<size_t>(nNewMax) > 0x7FFFFFFFu / sizeof(TYPE))
            AfxThrowMemoryException();
        TYPE* pNew = static_cast<TYPE*>(gvplatform::detail::MemAlloc(static_cast<size_t>(nNewMax) * sizeof(TYPE)));
        if (pNew == nullptr)
            AfxThrowMemoryException();
        for (INT_PTR i = 0; i < m_nSize; ++i) {
            ::new (&pNew[i]) TYPE(std::move(m_pData[i]));
            m_pData[i].~TYPE();
        }
        gvplatform::detail::MemFree(m_pData);
        m_pData = pNew;
        m_nMaxSize = nNewMax;
    }
};
