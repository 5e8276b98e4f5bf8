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
#include "gvlib/platform/allocator.h"

namespace gvlib::detail {

char* ReadArchiveBlock(CArchive& ar, int64_t bytes) {
    constexpr int64_t kChunk = 1 << 20;
    struct Free {
        void operator()(char* p) const { gvplatform::detail::MemFree(p); }
    };
    std::unique_ptr<char, Free> block;
    int64_t have = 0;
    int64_t room = 0;
    while (have < bytes) {
        int64_t want = std::min(bytes - have, kChunk);
        if (have + want > room) {
            room = std::min(bytes, std::max(have + want, room * 2));
            auto* grown = static_cast<char*>(gvplatform::detail::MemRealloc(block.get(), static_cast<size_t>(room)));
            if (grown == nullptr)
                AfxThrowMemoryException();
            block.release();
            block.reset(grown);
        }
        UINT got = ar.Read(block.get() + have, static_cast<UINT>(want));
        have += got;
        if (got < want)
            AfxThrowArchiveException(CArchiveException::endOfFile);
    }
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
    LONG elementSize = 0;
    short growStep = 0;
    LONG slots = 0;
    LONG count = 0;
    ar >> elementSize >> growStep >> slots >> count;
    // Archives come from Serialize; a header no array can have is damage.
    int64_t bytes = static_cast<int64_t>(elementSize) * slots;
    if (elementSize < 0 || slots < 0 || count < 0 || count > slots || bytes > INT32_MAX)
        AfxThrowArchiveException(CArchiveException::badIndex);
    // Read everything before touching the array, which stays as it was on failure.
    char* block = gvlib::detail::ReadArchiveBlock(ar, bytes);
    AdoptBlock(block, slots);
    m_elementSize = elementSize;
    m_growStep = growStep;
    m_allocatedSlots = slots;
    m_itemCount = count;
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
    if (buffer.mGetLength() <= 0) {
        mClear();
        return;
    }
    TQXStringStream stream;
    static_cast<TQXStringStreamBuf*>(stream.rdbuf())
        ->mSetReadData(buffer.mGetBuffer(), static_cast<unsigned>(buffer.mGetLength()));
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
