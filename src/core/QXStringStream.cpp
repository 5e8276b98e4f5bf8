// TQXStringStream and its buffer: a write block grown in fixed steps and a read copy.
#include "gvlib/core/QXStringStream.h"

#include <cstdlib>
#include <cstring>

#include "gvlib/platform/afxstr.h"
#include "gvlib/platform/allocator.h"

namespace {

constexpr int32_t kWriteStep = 10000;

}  // namespace

TQXStringStreamBuf::~TQXStringStreamBuf() {
    sync();
    gvplatform::detail::MemFree(m_writeBlock);
    gvplatform::detail::MemFree(m_readBlock);
}

int32_t TQXStringStreamBuf::mWrittenLength() {
    return m_writeBlock != nullptr ? static_cast<int32_t>(pptr() - m_writeBlock) : 0;
}

char* TQXStringStreamBuf::mWrittenData() { return m_writeBlock; }

TQXStringStreamBuf::int_type TQXStringStreamBuf::overflow(int_type c) {
    // Every call grows and stores, end-of-file included (it lands as 0xFF): the
    // standard operations never pass it, and a direct caller sees the original's answer.
    int32_t used = mWrittenLength();
    // The usable size is a 32-bit count; refuse to grow past it rather than wrap.
    if (m_writeCapacity > INT32_MAX - kWriteStep)
        AfxThrowMemoryException();
    int32_t capacity = m_writeCapacity + kWriteStep;
    // realloc keeps the first `used` bytes (all the block holds that matters) and
    // usually extends a large block in place, so 10000-byte steps stay cheap.
    auto* block = static_cast<char*>(gvplatform::detail::MemRealloc(m_writeBlock, static_cast<size_t>(capacity) + 1));
    if (block == nullptr)
        AfxThrowMemoryException();  // the old block stays
    m_writeBlock = block;
    m_writeCapacity = capacity;
    block[used] = traits_type::to_char_type(c);
    // The usable part is `capacity` bytes; the block's last byte is spare, so the
    // 10001st character of a fresh stream is the one that grows it to 20001.
    setp(block + used + 1, block + capacity);
    return 0;
}

TQXStringStreamBuf::int_type TQXStringStreamBuf::underflow() {
    if (gptr() != nullptr && gptr() < egptr())
        return traits_type::to_int_type(*gptr());
    return traits_type::eof();
}

int TQXStringStreamBuf::sync() {
    if (m_writeBlock != nullptr)
        setp(m_writeBlock, m_writeBlock + m_writeCapacity);
    if (m_readBlock != nullptr)
        setg(m_readBlock, m_readBlock, m_readBlock + static_cast<uint32_t>(m_readLength));
    return 0;
}

void TQXStringStreamBuf::mSetReadData(void const* p, unsigned n) {
    if (p == nullptr && n != 0)
        AfxThrowInvalidArgException();  // nothing to copy from; the old copy stays
    char* copy = nullptr;
    if (n != 0) {
        copy = static_cast<char*>(gvplatform::detail::MemAlloc(n));
        if (copy == nullptr)
            AfxThrowMemoryException();  // the old copy stays
        std::memcpy(copy, p, n);
    }
    gvplatform::detail::MemFree(m_readBlock);
    m_readBlock = copy;
    m_readLength = static_cast<int32_t>(n);
    setg(copy, copy, copy == nullptr ? nullptr : copy + n);
}

TQXStringStream::TQXStringStream()
    : std::basic_iostream<char>(nullptr), m_buffer(new TQXStringStreamBuf) {
    rdbuf(m_buffer);  // also clears the bad state a null buffer set
}

TQXStringStream::~TQXStringStream() { delete m_buffer; }
