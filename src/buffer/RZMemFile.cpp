// CRZMemFile: a memory file that can work in place on a CGVBuffer's block.
#include "gvlib/buffer/RZMemFile.h"

#include <cstdint>

#include "gvlib/buffer/GVBuffer.h"

CRZMemFile::CRZMemFile() : CMemFile(65536) {}

CRZMemFile::~CRZMemFile() {
    // The block belongs to the buffer: take it out before the memory file frees
    // what it owns.
    if (m_attachedBuffer != nullptr)
        Detach();
}

void CRZMemFile::mAttachBuffer(CGVBuffer* b) {
    if (b == nullptr)
        return;
    m_attachedBuffer = b;
    Attach(reinterpret_cast<BYTE*>(b->mGetBuffer()), static_cast<UINT>(b->ContentLength()), 0);
}

unsigned char* CRZMemFile::mGetBuffer() { return m_lpBuffer; }

void CRZMemFile::mGetBufferCopy(CGVBuffer* out) {
    if (out == nullptr)
        return;
    auto length = static_cast<uint32_t>(GetLength());
    // Length 0 would make mInit read the block as text, past what the file holds.
    if (length == 0 || m_lpBuffer == nullptr) {
        out->mInit(nullptr, 0);
        return;
    }
    if (length >= static_cast<uint32_t>(INT32_MAX))
        AfxThrowMemoryException();
    out->mInit(reinterpret_cast<char const*>(m_lpBuffer), static_cast<int32_t>(length));
}
