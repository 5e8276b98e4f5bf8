// CGVArray: the binary archive layout and the buffer form through the string stream.
#include <algorithm>
#include <cstdlib>
#include <istream>
#include <memory>
#include <ostream>

#include "array/array_archive.h"
#include "gvlib/array/GVArray.h"
#include "gvlib/buffer/GVBuffer.h"
#include "gvlib/core/QXStringStream.h"
#include "gvlib/platform/afxarchive.h"
#include "gvlib/platform/gvplatform.h"
#include "platform/loading_policy.h"
#include "gvlib/platform/allocator.h"

namespace gvlib::detail {

ArrayHeader ReadArrayHeader(CArchive& ar) {
    LONG elementSize = 0;
    short growStep = 0;
    LONG slots = 0;
    LONG count = 0;
    ar >> elementSize >> growStep >> slots >> count;
    return {elementSize, growStep, slots, count};
}

char* ReadArchiveBlock(CArchive& ar, int64_t bytes) {
    struct Free {
        void operator()(char* p) const { gvplatform::detail::MemFree(p); }
    };
    std::unique_ptr<char, Free> block(gvplatform::detail::ZeroedBlock(static_cast<uint64_t>(bytes)));
    UINT got = bytes > 0 ? ar.Read(block.get(), static_cast<UINT>(bytes)) : 0;
    if (got < bytes && gvplatform::StrictLoading())
        gvplatform::detail::ThrowDamage(CArchiveException::endOfFile, gvplatform::detail::LoadOffset(ar));
    return block.release();
}

}  // namespace gvlib::detail

void CGVArray::Serialize(CArchive& ar) {
    if (ar.IsStoring()) {
        ar << static_cast<LONG>(m_elementSize) << static_cast<short>(m_growStep)
           << static_cast<LONG>(m_allocatedSlots) << static_cast<LONG>(m_itemCount);
        int64_t bytes = m_elements != nullptr ? BlockBytes(m_elementSize, m_allocatedSlots) : 0;
        if (bytes > 0)
            ar.Write(m_elements, static_cast<UINT>(bytes));
        return;
    }
    gvlib::detail::ArrayHeader header = gvlib::detail::ReadArrayHeader(ar);
    // Serialize writes no such header, and the original could not have survived
    // one (a negative block, items beyond the block): refused in every mode.
    if (header.elementSize < 0 || header.slots < 0 || header.count < 0 || header.count > header.slots)
        AfxThrowArchiveException(CArchiveException::badIndex);
    // Read everything before touching the array, which stays as it was on failure.
    int64_t bytes = BlockBytes(header.elementSize, header.slots);
    char* block = gvlib::detail::ReadArchiveBlock(ar, bytes);
    AdoptBlock(block, header.slots);
    m_elementSize = header.elementSize;
    m_growStep = header.growStep;
    m_allocatedSlots = header.slots;
    m_itemCount = header.count;
}

void CGVArray::mSave(CGVBuffer& buffer) const {
    TQXStringStream stream;
    // The stream would swallow the memory exception of its growing block and
    // leave a truncated text: let it reach the caller instead.
    stream.exceptions(std::ios::badbit);
    stream << const_cast<CGVArray&>(*this);
    auto* written = static_cast<TQXStringStreamBuf*>(stream.rdbuf());
    // A stream that received nothing gives null and 0: an empty buffer.
    buffer.mInit(written->mWrittenData(), written->mWrittenLength());
}

void CGVArray::mLoad(CGVBuffer const& buffer) {
    if (buffer.ContentLength() <= 0) {
        mClear();
        return;
    }
    TQXStringStream stream;
    static_cast<TQXStringStreamBuf*>(stream.rdbuf())
        ->mSetReadData(buffer.mGetBuffer(), static_cast<unsigned>(buffer.ContentLength()));
    // Items arrive one by one: on a failure part-way, those appended go again.
    int32_t const before = mGetNumItems();
    try {
        stream >> *this;
    } catch (...) {
        while (mGetNumItems() > before)
            mDeleteItem(mGetNumItems() - 1);
        throw;
    }
}
