// TQXStringStream: the in-memory character stream the arrays save and load through.
#pragma once

#include <cstdint>
#include <istream>
#include <streambuf>

#include "gvlib/platform/export.h"

/// Writing grows one block by 10000 bytes at a time (the block is always one byte
/// larger than its usable part: 10001 bytes after the first character, 20001 after
/// the 10001st). Reading serves a private copy of the bytes given to mSetReadData.
/// sync() rewinds: after a flush, writes start again at the beginning of the block.
class GVLIB_API TQXStringStreamBuf : public std::basic_streambuf<char> {
public:
    TQXStringStreamBuf() = default;
    TQXStringStreamBuf(TQXStringStreamBuf const&) = delete;
    TQXStringStreamBuf& operator=(TQXStringStreamBuf const&) = delete;
    /// Rewinds (sync) and releases both blocks.
    ~TQXStringStreamBuf() override;

    /// Characters from the start of the write block to the put position; 0 before
    /// the first write.
    int32_t mWrittenLength();
    /// The write block, null before the first write. No terminator is added.
    char* mWrittenData();
    /// Replaces the bytes to be read with a private copy of n bytes from p; n 0
    /// leaves nothing to read.
    void mSetReadData(void const* p, unsigned n);

protected:
    int_type overflow(int_type c) override;
    int_type underflow() override;
    int sync() override;

private:
    char* m_writeBlock = nullptr;
    char* m_readBlock = nullptr;
    int32_t m_writeCapacity = 0;
    int32_t m_readLength = 0;
};

/// A standard input-output stream over its own TQXStringStreamBuf (see rdbuf()).
class GVLIB_API TQXStringStream : public std::basic_iostream<char> {
public:
    TQXStringStream();
    TQXStringStream(TQXStringStream const&) = delete;
    TQXStringStream& operator=(TQXStringStream const&) = delete;
    ~TQXStringStream() override;

private:
    TQXStringStreamBuf* m_buffer;
};
