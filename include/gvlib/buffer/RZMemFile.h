// CRZMemFile: a memory file that can work in place on a CGVBuffer's block.
#pragma once

#include "gvlib/platform/afxfile.h"
#include "gvlib/platform/export.h"

class CGVBuffer;

/// An ordinary memory file growing in steps of 65536 bytes, until a buffer is
/// attached: from then on reads, writes and seeks go to the buffer's own block,
/// whose length is the file's fixed size (a write past it raises CMemoryException).
/// The buffer must outlive the file and its block must not move while attached.
class GVLIB_API CRZMemFile : public CMemFile {
public:
    CRZMemFile();
    /// Hands an attached block back to its buffer untouched, then closes.
    ~CRZMemFile() override;

    /// Works on b's block from now on; its length is not changed by the file. Null
    /// attaches nothing.
    void mAttachBuffer(CGVBuffer* b);
    /// The file's current block (the attached buffer's after mAttachBuffer).
    unsigned char* mGetBuffer();
    /// out receives a copy of the file's content (an empty file gives an empty buffer).
    void mGetBufferCopy(CGVBuffer* out);

private:
    CGVBuffer* m_attachedBuffer = nullptr;
};
