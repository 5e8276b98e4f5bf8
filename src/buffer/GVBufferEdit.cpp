// CGVBuffer: replace-all, reading a file, assignment from an object and comparison.
#include <algorithm>
#include <cstdlib>
#include <cstring>

#include "buffer/buffer_block.h"
#include "gvlib/buffer/GVBuffer.h"
#include "gvlib/core/GVObjectVisitor.h"
#include "gvlib/platform/afxfile.h"
#include "gvlib/platform/afxstr.h"
#include "gvlib/platform/allocator.h"

using gvlib::detail::FindBytes;
using gvlib::detail::ReallocBlock;

int32_t CGVBuffer::mReplaceAll(char const* find, char const* repl) {
    if (m_data == nullptr || find == nullptr)
        return 0;
    auto f = static_cast<int32_t>(std::strlen(find));
    auto r = repl != nullptr ? static_cast<int32_t>(std::strlen(repl)) : 0;
    // An empty search text would match everywhere without advancing: it ends at once.
    if (f == 0)
        return 0;
    if (repl == nullptr)
        repl = "";
    m_length = ContentLength();  // a length set by mRollBack is searched inside the block
    return r <= f ? ReplaceShrinking(find, f, repl, r) : ReplaceGrowing(find, f, repl, r);
}

// The result is never longer than the content, so it is compacted in place in one
// pass: the write position never overtakes the read position.
int32_t CGVBuffer::ReplaceShrinking(char const* find, int32_t f, char const* repl, int32_t r) {
    int32_t count = 0;
    int64_t read = 0;
    int64_t write = 0;
    for (;;) {
        int64_t at = FindBytes(m_data, m_length, read, find, f);
        int64_t end = at < 0 ? m_length : at;
        if (write != read)
            std::memmove(m_data + write, m_data + read, static_cast<size_t>(end - read));
        write += end - read;
        if (at < 0)
            break;
        std::memcpy(m_data + write, repl, static_cast<size_t>(r));
        write += r;
        read = at + f;
        ++count;
    }
    m_length = static_cast<int32_t>(write);
    return count;
}

// The result grows: it is built once into a new block that doubles as needed (the
// move-the-tail-per-match form would be quadratic), then trimmed to the block the
// step rule gives for the final length, which is what growing match by match gives.
int32_t CGVBuffer::ReplaceGrowing(char const* find, int32_t f, char const* repl, int32_t r) {
    int64_t at = FindBytes(m_data, m_length, 0, find, f);
    if (at < 0)
        return 0;
    size_t size = static_cast<size_t>(m_length) + static_cast<size_t>(r - f) * 16 + 1;
    char* out = ReallocBlock(nullptr, size);
    size_t used = 0;
    int32_t count = 0;
    int64_t read = 0;
    auto append = [&](char const* p, size_t n) {
        if (used + n + 1 > size) {
            size_t grown = std::max(used + n + 1, size * 2);
            try {
                out = ReallocBlock(out, grown);
            } catch (...) {
                gvplatform::detail::MemFree(out);
                throw;
            }
            size = grown;
        }
        std::memcpy(out + used, p, n);
        used += n;
    };
    while (at >= 0) {
        append(m_data + read, static_cast<size_t>(at - read));
        append(repl, static_cast<size_t>(r));
        read = at + f;
        ++count;
        at = FindBytes(m_data, m_length, read, find, f);
    }
    append(m_data + read, static_cast<size_t>(m_length - read));
    if (used >= INT32_MAX) {
        gvplatform::detail::MemFree(out);
        AfxThrowMemoryException();
    }
    auto length = static_cast<int32_t>(used);
    if (m_locked) {
        // The block must not move: the result is taken only when it fits.
        if (HasRoomFor(length))
            std::memcpy(m_data, out, used);
        gvplatform::detail::MemFree(out);
        if (!HasRoomFor(length))
            return 0;
        m_length = length;
        return count;
    }
    int32_t capacity;
    try {
        capacity = StepSize(int64_t{length} + 1);
        // Zero past the result, so that a length rolled forward later reads zeros.
        out = gvlib::detail::GrowZeroed(out, used, static_cast<size_t>(capacity));
    } catch (...) {
        gvplatform::detail::MemFree(out);
        throw;
    }
    gvplatform::detail::MemFree(m_data);
    InstallBlock(out, capacity);
    m_length = length;
    return count;
}

int32_t CGVBuffer::mReadFromFile(CFile& file) {
    // A read or allocation failing part-way leaves the buffer as it was: what the
    // chunks appended is dropped again, and the byte the first one overwrote is
    // put back, so no partial file passes for the whole.
    int32_t const oldLength = m_length;
    bool const inBlock = m_data != nullptr && oldLength >= 0 && oldLength < m_capacity;  // rolled back: any length
    char const oldEnd = inBlock ? m_data[oldLength] : 0;
    try {
        return ReadChunks(file);
    } catch (...) {
        m_length = oldLength;
        if (inBlock)
            m_data[oldLength] = oldEnd;
        throw;
    }
}

int32_t CGVBuffer::ReadChunks(CFile& file) {
    char chunk[512];
    int32_t sum = 0;
    KeepLengthForAppending();
    for (;;) {
        UINT got = file.Read(chunk, sizeof chunk);
        if (got == 0)
            break;
        if (sum > INT32_MAX - static_cast<int32_t>(sizeof chunk))
            AfxThrowMemoryException();  // the count read is a 32-bit result
        mConcat(chunk, static_cast<int32_t>(got));
        sum += static_cast<int32_t>(got);
    }
    if (sum >= m_capacity)
        mReserve(sum + 1);
    // The terminator is counted in the length. Content inside the block keeps one
    // more byte of room, so that the text view's own terminator stays inside it;
    // a length mRollBack set past the block only counts it.
    const bool inside = m_length < m_capacity;
    if (inside)
        mReserve(m_length + 1);
    if (sum < m_capacity)
        m_data[sum] = 0;
    if (inside ? HasRoomFor(int64_t{m_length} + 1) : m_length < INT32_MAX)
        ++m_length;
    return sum;
}

CGVObject& CGVBuffer::operator=(CGVObject const& other) {
    auto const* source = dynamic_cast<CGVBuffer const*>(&other);
    if (source == nullptr || source == this)
        return *this;
    SetFromBytes(source->m_data, source->ContentLength());
    return *this;
}

void CGVBuffer::SetFromBytes(char const* p, int32_t n) {
    if (n < 0)
        n = 0;
    if (n > 0)
        ReplaceBlockFor(n);
    if (n > 0)
        std::memcpy(m_data, p, static_cast<size_t>(n));
    m_length = n;
}

int32_t CGVBuffer::mCompare(CGVObject const* other) const {
    auto const* source = dynamic_cast<CGVBuffer const*>(other);
    if (source == nullptr)
        return -1;
    int32_t mine = ContentLength();
    int32_t theirs = source->ContentLength();
    int32_t common = std::min(mine, theirs);
    int order = common > 0 ? std::memcmp(m_data, source->m_data, static_cast<size_t>(common)) : 0;
    if (order != 0)
        return order < 0 ? -1 : 1;
    if (mine == theirs)
        return 0;
    return mine < theirs ? -1 : 1;
}

int32_t CGVBuffer::mVisit(CGVObjectVisitor* visitor, int32_t param) {
    return visitor ? visitor->mVisitBuffer(this, param) : 0;
}
