// CGVBuffer: variant conversions, the text stream body (tag V) and the archive form.
#include <algorithm>
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
#include "gvlib/platform/gvplatform.h"
#include "gvlib/platform/winnls.h"
#include "platform/loading_policy.h"

namespace {

char const kZeros[256] = {};

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
    int32_t content = ContentLength();
    if (content > 0) {
        auto const* nul = static_cast<char const*>(std::memchr(m_data, 0, static_cast<size_t>(content)));
        text = nul != nullptr ? static_cast<size_t>(nul - m_data) : static_cast<size_t>(content);
    }
    CString shown(m_data != nullptr ? m_data : "", static_cast<int>(text));
    *variant = shown;
}

void CGVBuffer::WriteContent(std::ostream& os) const {
    // A length that mRollBack set beyond the block is written in full, the bytes
    // beyond the block as zeros, so that the form reads back as written.
    int32_t content = ContentLength();
    os.write(m_data, content);
    for (int32_t rest = m_length - content; rest > 0; rest -= std::min<int32_t>(rest, sizeof kZeros))
        os.write(kZeros, std::min<int32_t>(rest, sizeof kZeros));
}

void CGVBuffer::Serialize(std::ostream& os) {
    os << 'V' << m_length << ' ';
    WriteContent(os);
    os << ' ';
}

void CGVBuffer::Serialize(std::istream& is) {
    // The length is read straight into the buffer's own: on a stream that is
    // already exhausted the extraction does not run, and the buffer keeps its
    // length and content (the reads below deliver nothing either).
    int32_t length = m_length;
    is >> length;
    if (gvplatform::StrictLoading()) {
        ReadStrictBody(is, length);
        return;
    }
    // A negative length (only damage holds one) reads nothing and empties.
    if (length < 0)
        length = 0;
    gvplatform::detail::ChargeInput(static_cast<uint64_t>(length) + 1);
    if (length > 0)
        ReplaceBlockFor(length);
    m_length = length;
    is.get();
    // Bytes the stream does not deliver keep what the block held: zeros in a
    // fresh block.
    if (length > 0)
        is.read(m_data, length);
    is.get();
}

void CGVBuffer::ReadStrictBody(std::istream& is, int32_t length) {
    std::string body;
    if (!is.fail() && length >= 0) {
        gvplatform::detail::ChargeInput(static_cast<uint64_t>(length) + 1);
        is.get();
        body = gvlib::detail::ReadRaw(is, length);
        is.get();
    }
    if (is.fail() || length < 0 || static_cast<int64_t>(body.size()) != length)
        gvplatform::detail::ThrowDamage(CArchiveException::endOfFile, gvplatform::detail::LoadOffset(is));
    SetFromBytes(body.data(), length);
}

void CGVBuffer::Serialize(CArchive& ar) {
    if (!ar.IsLoading()) {
        ar.WriteCount(static_cast<DWORD_PTR>(static_cast<uint32_t>(m_length)));
        if (m_length > 0)
            WriteContent(ar);
        return;
    }
    DWORD_PTR count = ar.ReadCount();
    // The count announced is allocated, as the original did; one beyond the
    // budget (or the 32-bit length) raises the memory exception first.
    gvplatform::detail::ChargeInput(static_cast<uint64_t>(count) + 1);
    if (count >= INT32_MAX)
        AfxThrowMemoryException();
    auto length = static_cast<int32_t>(count);
    if (gvplatform::StrictLoading()) {
        std::vector<char> body(static_cast<size_t>(length));
        if (length > 0 && ar.Read(body.data(), static_cast<UINT>(length)) != static_cast<UINT>(length))
            gvplatform::detail::ThrowDamage(CArchiveException::endOfFile, gvplatform::detail::LoadOffset(ar));
        SetFromBytes(body.data(), length);
        return;
    }
    if (length == 0) {
        m_length = 0;
        return;
    }
    bool reused = HasRoomFor(length);
    ReplaceBlockFor(length);  // a failed allocation leaves the buffer as it was
    m_length = length;
    // The count Read returns is not checked; the bytes not delivered are zero.
    // A fresh block is zero-filled already, and left untouched its pages cost
    // no memory.
    UINT got = ar.Read(m_data, static_cast<UINT>(length));
    if (reused)
        std::memset(m_data + got, 0, static_cast<size_t>(length) - got);
}

void CGVBuffer::WriteContent(CArchive& ar) const {
    int32_t content = ContentLength();
    ar.Write(m_data, static_cast<UINT>(content));
    for (int32_t rest = m_length - content; rest > 0; rest -= std::min<int32_t>(rest, sizeof kZeros))
        ar.Write(kZeros, static_cast<UINT>(std::min<int32_t>(rest, sizeof kZeros)));
}
