// BSTR, SAFEARRAY and VARIANT memory management.
#include "gvlib/platform/oleauto.h"

#include <cstdlib>
#include <cstring>
#include <new>

#include "gvlib/platform/allocator.h"

namespace {

// A BSTR block: the 32-bit byte count sits just before the pointer handed out,
// and two NUL bytes follow the content (plus one more for odd byte counts).
BSTR AllocateBstr(const void* bytes, UINT byteCount) {
    if (byteCount > 0x7FFFFFF0u)
        return nullptr;
    auto* block = static_cast<unsigned char*>(gvplatform::detail::MemAlloc(sizeof(uint32_t) + byteCount + 3));
    if (block == nullptr)
        return nullptr;
    uint32_t count = byteCount;
    std::memcpy(block, &count, sizeof count);
    unsigned char* data = block + sizeof(uint32_t);
    if (bytes != nullptr)
        std::memcpy(data, bytes, byteCount);
    else
        std::memset(data, 0, byteCount);
    data[byteCount] = data[byteCount + 1] = data[byteCount + 2] = 0;
    return reinterpret_cast<BSTR>(data);
}

unsigned char* BstrBlock(BSTR bstr) { return reinterpret_cast<unsigned char*>(bstr) - sizeof(uint32_t); }

UINT ElementSize(VARTYPE vt) {
    switch (vt) {
    case VT_I1:
    case VT_UI1:
        return 1;
    case VT_I2:
    case VT_UI2:
    case VT_BOOL:
        return 2;
    case VT_I4:
    case VT_UI4:
    case VT_R4:
    case VT_INT:
    case VT_UINT:
    case VT_ERROR:
        return 4;
    case VT_R8:
    case VT_CY:
    case VT_DATE:
    case VT_I8:
    case VT_UI8:
        return 8;
    default:
        return 0;  // strings, variants and interfaces are not supported as elements
    }
}

// The element type lives in a header in front of the descriptor, as the original did.
struct ArrayHeader {
    VARTYPE vt;
    uint16_t pad[3];
};

ArrayHeader* HeaderOf(SAFEARRAY* psa) { return reinterpret_cast<ArrayHeader*>(psa) - 1; }

}  // namespace

BSTR SysAllocString(const OLECHAR* psz) {
    if (psz == nullptr)
        return nullptr;
    UINT n = 0;
    while (psz[n] != 0)
        ++n;
    return SysAllocStringLen(psz, n);
}

BSTR SysAllocStringLen(const OLECHAR* pch, UINT cch) {
    if (cch > 0x3FFFFFF0u)
        return nullptr;
    return AllocateBstr(pch, cch * static_cast<UINT>(sizeof(OLECHAR)));
}

BSTR SysAllocStringByteLen(LPCSTR psz, UINT len) { return AllocateBstr(psz, len); }

void SysFreeString(BSTR bstr) {
    if (bstr != nullptr)
        gvplatform::detail::MemFree(BstrBlock(bstr));
}

UINT SysStringByteLen(BSTR bstr) {
    if (bstr == nullptr)
        return 0;
    uint32_t count;
    std::memcpy(&count, BstrBlock(bstr), sizeof count);
    return count;
}

UINT SysStringLen(BSTR bstr) { return SysStringByteLen(bstr) / static_cast<UINT>(sizeof(OLECHAR)); }

SAFEARRAY* SafeArrayCreate(VARTYPE vt, UINT cDims, SAFEARRAYBOUND* rgsabound) {
    UINT elementSize = ElementSize(vt);
    if (cDims == 0 || cDims > 64 || rgsabound == nullptr || elementSize == 0)
        return nullptr;
    uint64_t count = 1;
    for (UINT i = 0; i < cDims; ++i) {
        count *= rgsabound[i].cElements;
        if (count * elementSize > 0x7FFFFFFFull)
            return nullptr;
    }
    size_t descriptor = sizeof(ArrayHeader) + sizeof(SAFEARRAY) + (cDims - 1) * sizeof(SAFEARRAYBOUND);
    auto* block = static_cast<unsigned char*>(gvplatform::detail::MemCalloc(1, descriptor));
    if (block == nullptr)
        return nullptr;
    reinterpret_cast<ArrayHeader*>(block)->vt = vt;
    auto* psa = reinterpret_cast<SAFEARRAY*>(block + sizeof(ArrayHeader));
    psa->cDims = static_cast<USHORT>(cDims);
    psa->fFeatures = FADF_HAVEVARTYPE;
    psa->cbElements = elementSize;
    // Stored last dimension first.
    for (UINT i = 0; i < cDims; ++i)
        psa->rgsabound[i] = rgsabound[cDims - 1 - i];
    psa->pvData = gvplatform::detail::MemCalloc(count ? static_cast<size_t>(count) : 1, elementSize);
    if (psa->pvData == nullptr) {
        gvplatform::detail::MemFree(block);
        return nullptr;
    }
    return psa;
}

SAFEARRAY* SafeArrayCreateVector(VARTYPE vt, LONG lLbound, ULONG cElements) {
    SAFEARRAYBOUND bound{cElements, lLbound};
    return SafeArrayCreate(vt, 1, &bound);
}

HRESULT SafeArrayDestroy(SAFEARRAY* psa) {
    if (psa == nullptr)
        return S_OK;
    if (psa->cLocks != 0)
        return DISP_E_ARRAYISLOCKED;
    gvplatform::detail::MemFree(psa->pvData);
    gvplatform::detail::MemFree(HeaderOf(psa));
    return S_OK;
}

HRESULT SafeArrayCopy(SAFEARRAY* psa, SAFEARRAY** ppsaOut) {
    if (ppsaOut == nullptr)
        return E_INVALIDARG;
    *ppsaOut = nullptr;
    if (psa == nullptr)
        return S_OK;
    SAFEARRAYBOUND bounds[64];
    for (UINT i = 0; i < psa->cDims; ++i)
        bounds[i] = psa->rgsabound[psa->cDims - 1 - i];
    SAFEARRAY* copy = SafeArrayCreate(HeaderOf(psa)->vt, psa->cDims, bounds);
    if (copy == nullptr)
        return E_OUTOFMEMORY;
    size_t count = 1;
    for (UINT i = 0; i < psa->cDims; ++i)
        count *= psa->rgsabound[i].cElements;
    std::memcpy(copy->pvData, psa->pvData, count * psa->cbElements);
    *ppsaOut = copy;
    return S_OK;
}

HRESULT SafeArrayLock(SAFEARRAY* psa) {
    if (psa == nullptr)
        return E_INVALIDARG;
    if (psa->cLocks == 0xFFFF)
        return E_UNEXPECTED;
    ++psa->cLocks;
    return S_OK;
}

HRESULT SafeArrayUnlock(SAFEARRAY* psa) {
    if (psa == nullptr)
        return E_INVALIDARG;
    if (psa->cLocks == 0)
        return E_UNEXPECTED;
    --psa->cLocks;
    return S_OK;
}

HRESULT SafeArrayAccessData(SAFEARRAY* psa, void** ppvData) {
    if (psa == nullptr || ppvData == nullptr)
        return E_INVALIDARG;
    HRESULT hr = SafeArrayLock(psa);
    if (FAILED(hr))
        return hr;
    *ppvData = psa->pvData;
    return S_OK;
}

HRESULT SafeArrayUnaccessData(SAFEARRAY* psa) { return SafeArrayUnlock(psa); }

UINT SafeArrayGetDim(SAFEARRAY* psa) { return psa ? psa->cDims : 0; }

UINT SafeArrayGetElemsize(SAFEARRAY* psa) { return psa ? psa->cbElements : 0; }

HRESULT SafeArrayGetLBound(SAFEARRAY* psa, UINT nDim, LONG* plLbound) {
    if (psa == nullptr || plLbound == nullptr)
        return E_INVALIDARG;
    if (nDim == 0 || nDim > psa->cDims)
        return DISP_E_BADINDEX;
    *plLbound = psa->rgsabound[psa->cDims - nDim].lLbound;
    return S_OK;
}

HRESULT SafeArrayGetUBound(SAFEARRAY* psa, UINT nDim, LONG* plUbound) {
    if (psa == nullptr || plUbound == nullptr)
        return E_INVALIDARG;
    if (nDim == 0 || nDim > psa->cDims)
        return DISP_E_BADINDEX;
    const SAFEARRAYBOUND& bound = psa->rgsabound[psa->cDims - nDim];
    *plUbound = static_cast<LONG>(static_cast<int64_t>(bound.lLbound) + bound.cElements - 1);
    return S_OK;
}

HRESULT SafeArrayGetVartype(SAFEARRAY* psa, VARTYPE* pvt) {
    if (psa == nullptr || pvt == nullptr)
        return E_INVALIDARG;
    *pvt = HeaderOf(psa)->vt;
    return S_OK;
}

void VariantInit(VARIANTARG* pvarg) {
    if (pvarg != nullptr) {
        std::memset(static_cast<void*>(pvarg), 0, sizeof *pvarg);
        pvarg->vt = VT_EMPTY;
    }
}

HRESULT VariantClear(VARIANTARG* pvarg) {
    if (pvarg == nullptr)
        return E_INVALIDARG;
    if ((pvarg->vt & VT_BYREF) == 0) {
        if (pvarg->vt & VT_ARRAY) {
            if (pvarg->parray != nullptr && pvarg->parray->cLocks != 0)
                return DISP_E_ARRAYISLOCKED;
            SafeArrayDestroy(pvarg->parray);
        } else if (pvarg->vt == VT_BSTR) {
            SysFreeString(pvarg->bstrVal);
        }
    }
    pvarg->vt = VT_EMPTY;
    pvarg->llVal = 0;
    return S_OK;
}

HRESULT VariantCopy(VARIANTARG* pvargDest, const VARIANTARG* pvargSrc) {
    if (pvargDest == nullptr || pvargSrc == nullptr)
        return E_INVALIDARG;
    if (pvargDest == pvargSrc)
        return S_OK;
    HRESULT hr = VariantClear(pvargDest);
    if (FAILED(hr))
        return hr;
    VARIANT copy = *pvargSrc;
    if ((pvargSrc->vt & VT_BYREF) == 0) {
        if (pvargSrc->vt & VT_ARRAY) {
            hr = SafeArrayCopy(pvargSrc->parray, &copy.parray);
            if (FAILED(hr))
                return hr;
        } else if (pvargSrc->vt == VT_BSTR && pvargSrc->bstrVal != nullptr) {
            copy.bstrVal = SysAllocStringByteLen(reinterpret_cast<LPCSTR>(pvargSrc->bstrVal),
                                                 SysStringByteLen(pvargSrc->bstrVal));
            if (copy.bstrVal == nullptr)
                return E_OUTOFMEMORY;
        }
    }
    *pvargDest = copy;
    return S_OK;
}
