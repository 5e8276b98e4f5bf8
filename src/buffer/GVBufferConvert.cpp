// CGVBuffer: variant conversions, the text stream body (tag V) and the archive form.
#include <cstring>
#include <istream>
#include <ostream>
#include <string>
#include <vector>

#include "core/stream_io.h"
#include "gvlib/buffer/GVBuffer.h"
#include "gvlib/platform/afxarchive.h"
#include "gvlib/platform/afxdb.h"
#include "gvlib/platform/afxdisp.h"
#include "gvlib/platform/winnls.h"

namespace {

// Wide text in the thread's ANSI code page; a failed conversion raises the memory
// exception when it ran out of room, the OLE exception otherwise.
std::string ToAnsi(wchar_t const* wide) {
    int size = WideCharToMultiByte(CP_THREAD_ACP, 0, wide, -1, nullptr, 0, nullptr, nullptr);
    if (size <= 0)
        AfxThrowOleException(E_FAIL);
    std::string narrow(static_cast<size_t>(size), '\0');
    if (WideCharToMultiByte(CP_THREAD_ACP, 0, wide, -1, &narrow[0], size, nullptr, nullptr) == 0)
        AfxThrowOleException(E_FAIL);
    return narrow;
}

}  // namespace

void CGVBuffer::mConvertFromDBVariant(CDBVariant const& variant) {
    switch (variant.m_dwType) {
    case DBVT_STRING:
    case DBVT_ASCII:
        if (variant.m_pstring != nullptr)
            mInit(variant.m_pstring->GetString(), 0);
        break;
    case DBVT_WSTRING:
        if (variant.m_pstringW != nullptr)
            mInit(ToAnsi(variant.m_pstringW->GetString()).c_str(), 0);
        break;
    default:
        break;
    }
}

void CGVBuffer::mConvertFromOleVariant(COleVariant const& variant) {
    if (variant.vt == VT_BSTR) {
        // A BSTR ends in a 16-bit NUL, so reading it as narrow text stays inside it;
        // a null BSTR is the empty string.
        mInit(variant.bstrVal != nullptr ? reinterpret_cast<char const*>(variant.bstrVal) : "", 0);
        return;
    }
    // Only a real array handle is read as one; taking any other value as a handle
    // would read memory that is not an array.
    if ((variant.vt & VT_ARRAY) == 0 || (variant.vt & VT_BYREF) != 0 || variant.parray == nullptr)
        return;
    SAFEARRAY* array = variant.parray;
    void* elements = nullptr;
    if (SafeArrayAccessData(array, &elements) != S_OK)
        return;
    ULONG count = array->cDims > 0 ? array->rgsabound[0].cElements : 0;
    // An empty array (or one of empty elements) gives an empty buffer: its count 0
    // must not make the element pointer be read as text.
    if (count == 0 || array->cbElements == 0 || elements == nullptr) {
        mInit(nullptr, 0);
    } else if (count >= INT32_MAX) {
        SafeArrayUnaccessData(array);
        AfxThrowMemoryException();
    } else {
        mInit(static_cast<char const*>(elements), static_cast<int32_t>(count));
    }
    SafeArrayUnaccessData(array);
}

void CGVBuffer::mConvertToOleVariant(COleVariant* variant) const {
    if (variant == nullptr)
        return;
    size_t text = 0;
    if (m_data != nullptr && m_length > 0) {
        auto const* nul = static_cast<char const*>(std::memchr(m_data, 0, static_cast<size_t>(m_length)));
        text = nul != nullptr ? static_cast<size_t>(nul - m_data) : static_cast<size_t>(m_length);
    }
    CString content(m_data != nullptr ? m_data : "", static_cast<int>(text));
    *variant = content;
}

void CGVBuffer::Serialize(std::ostream& os) {
    os << 'V' << m_length << ' ';
    if (m_length > 0)
        os.write(m_data, m_length);
    os << ' ';
}

void CGVBuffer::Serialize(std::istream& is) {
    int32_t announced = 0;
    is >> announced;
    is.get();
    // Read in bounded chunks: a damaged length costs no more than the stream holds,
    // and the length is what actually arrived (never negative).
    std::string body = gvlib::detail::ReadRaw(is, announced);
    is.get();
    SetFromBytes(body.data(), static_cast<int32_t>(body.size()));
}

void CGVBuffer::Serialize(CArchive& ar) {
    if (!ar.IsLoading()) {
        ar.WriteCount(static_cast<DWORD_PTR>(m_length));
        if (m_length > 0)
            ar.Write(m_data, static_cast<UINT>(m_length));
        return;
    }
    DWORD_PTR announced = ar.ReadCount();
    // Chunked for the same reason as the text form: a damaged count does not
    // allocate what the file cannot deliver.
    constexpr DWORD_PTR kChunk = 64 * 1024;
    std::vector<char> body;
    while (announced > 0) {
        auto want = static_cast<size_t>(announced < kChunk ? announced : kChunk);
        size_t old = body.size();
        if (old + want >= static_cast<size_t>(INT32_MAX))
            AfxThrowMemoryException();
        body.resize(old + want);
        UINT got = ar.Read(body.data() + old, static_cast<UINT>(want));
        body.resize(old + got);
        announced -= got;
        if (got < want)
            break;
    }
    SetFromBytes(body.data(), static_cast<int32_t>(body.size()));
}
