// CGVBuffer: construction, step growth, the lock protocol and filling.
#include "gvlib/buffer/GVBuffer.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <memory>

#include "buffer/buffer_block.h"
#include "gvlib/platform/afxstr.h"
#include "platform/loading_policy.h"
#include "gvlib/platform/allocator.h"


namespace {

constexpr int32_t kDefaultGrowBy = 128;

// When p points into the block, its offset, so that it can be found again after
// the block moves; -1 otherwise.
int64_t OffsetIn(char const* block, int32_t capacity, char const* p) {
    if (block == nullptr || p == nullptr)
        return -1;
    auto base = reinterpret_cast<uintptr_t>(block);
    auto at = reinterpret_cast<uintptr_t>(p);
    return at >= base && at < base + static_cast<uint32_t>(capacity) ? static_cast<int64_t>(at - base) : -1;
}

}  // namespace

CGVBuffer::CGVBuffer(int32_t nSize, int32_t nGrowBy) : m_growBy(nGrowBy > 0 ? nGrowBy : kDefaultGrowBy) {
    if (nSize > 0) {
        mReserve(nSize);
        std::memset(m_data, 0, static_cast<size_t>(nSize));
        m_length = nSize;
    }
}

CGVBuffer::~CGVBuffer() { gvplatform::detail::MemFree(m_data); }

int32_t CGVBuffer::StepSize(int64_t n) const {
    if (n <= m_capacity)
        return m_capacity;
    int64_t steps = (n - m_capacity + m_growBy - 1) / m_growBy;
    int64_t size = m_capacity + steps * m_growBy;
    // Lengths and capacities are 32-bit; a block beyond that cannot be described.
    if (size > INT32_MAX)
        AfxThrowMemoryException();
    return static_cast<int32_t>(size);
}

void CGVBuffer::InstallBlock(char* block, int32_t capacity) {
    m_data = block;
    m_capacity = capacity;
}

void CGVBuffer::mReserve(int32_t n) {
    if (m_locked)
        return;
    int32_t size = StepSize(int64_t{n} + 1);
    if (size == m_capacity)
        return;
    // realloc keeps the content and often extends the block in place, which keeps
    // appends in small steps cheap. The bytes it adds are zeroed: a length set
    // beyond the content (mRollBack) then reads zeros, never stale memory.
    int32_t used = m_data == nullptr ? 0 : std::max(m_capacity, 0);
    char* block = gvlib::detail::GrowZeroed(m_data, static_cast<size_t>(used), static_cast<size_t>(size));
    InstallBlock(block, size);
}

void CGVBuffer::ReplaceBlockFor(int32_t n) {
    if (HasRoomFor(n))
        return;
    int32_t size = StepSize(int64_t{n} + 1);
    // The old content is not kept, so a fresh block spares realloc's copy; it is
    // zero-filled, so that bytes a short input does not deliver are zero and
    // cost no memory until written.
    char* block = gvplatform::detail::ZeroedBlock(static_cast<uint64_t>(size));
    gvplatform::detail::MemFree(m_data);
    InstallBlock(block, size);
}

int32_t CGVBuffer::ContentLength() const {
    if (m_data == nullptr || m_length <= 0)
        return 0;
    return std::min(m_length, m_capacity - 1);
}

CGVBuffer::operator char const*() {
    if (m_data == nullptr)
        return nullptr;
    m_data[ContentLength()] = 0;
    return m_data;
}

int CGVBuffer::mIsNull() const {
    int32_t content = ContentLength();
    for (int32_t i = 0; i < content; ++i)
        if (m_data[i] != 0)
            return 0;
    return 1;
}

void CGVBuffer::mInit(char const* p, int32_t n) {
    if (n < 1 && p != nullptr)
        n = static_cast<int32_t>(std::strlen(p)) + 1;
    if (n < 0)
        n = 0;  // zero bytes cannot be a negative count
    int64_t inside = OffsetIn(m_data, m_capacity, p);
    mReserve(n);
    if (!HasRoomFor(n))
        return;  // locked without room: the block must not move
    if (inside >= 0)
        p = m_data + inside;
    if (p == nullptr)
        std::memset(m_data, 0, static_cast<size_t>(n));
    else
        std::memmove(m_data, p, static_cast<size_t>(n));
    m_length = n;
}

void CGVBuffer::mConcat(char const* p, int32_t n) {
    if (n == 0 && p != nullptr)
        n = static_cast<int32_t>(std::strlen(p));
    if (n <= 0 || p == nullptr)
        return;
    KeepLengthForAppending();
    int64_t need = int64_t{m_length} + n;
    if (need >= INT32_MAX)
        AfxThrowMemoryException();
    if (!HasRoomFor(need)) {
        // Appending a part of the buffer to itself must survive the block moving.
        int64_t inside = OffsetIn(m_data, m_capacity, p);
        mReserve(static_cast<int32_t>(need));
        if (!HasRoomFor(need))
            return;  // locked without room
        if (inside >= 0)
            p = m_data + inside;
    }
    std::memmove(m_data + m_length, p, static_cast<size_t>(n));
    m_length = static_cast<int32_t>(need);
}

CGVBuffer const& CGVBuffer::operator+=(char const* p) {
    mConcat(p, 0);
    return *this;
}

CGVBuffer& CGVBuffer::operator=(CGVBuffer const& other) {
    if (other.ContentLength() == 0)
        mInit(nullptr, 0);
    else
        mInit(other.m_data, other.ContentLength());
    return *this;
}

void CGVBuffer::mClearBuffer() {
    m_length = 0;
    if (m_data != nullptr)
        m_data[0] = 0;
}

// Appending goes on from a length mRollBack set, also one past the block: the
// block grows to hold it, and the bytes between the old block and that length
// are zeros. Only a negative length cannot be appended to; it starts at 0.
void CGVBuffer::KeepLengthForAppending() {
    if (m_length < 0)
        m_length = 0;
}

void CGVBuffer::mRollBack(int32_t n) {
    // Any length, as the original set it; the members that read the content keep
    // to ContentLength(), so a length outside the block reads nothing outside it.
    m_length = n;
}

char* CGVBuffer::mLockBuffer(int32_t n) {
    if (m_locked)
        return nullptr;
    if (n < 0)
        n = 0;
    KeepLengthForAppending();
    int64_t need = int64_t{m_length} + n;
    if (need >= INT32_MAX)
        AfxThrowMemoryException();
    mReserve(static_cast<int32_t>(need));
    m_locked = 1;
    return m_data + m_length;
}

void CGVBuffer::mUnlock(int32_t n) {
    m_locked = 0;
    mRollBack(static_cast<int32_t>(
        std::max<int64_t>(INT32_MIN, std::min<int64_t>(INT32_MAX, int64_t{m_length} + n))));
}

CGVObject* CGVBuffer::mCopy() const {
    std::unique_ptr<CGVBuffer> copy(new CGVBuffer(0, kDefaultGrowBy));
    *copy = *this;  // may run out of memory: the new buffer then goes again
    return copy.release();
}

CGVObject* CGVBuffer::mNew() const { return new CGVBuffer(0, kDefaultGrowBy); }

void CGVBuffer::mClear() {
    if (m_locked)
        return;
    gvplatform::detail::MemFree(m_data);
    m_data = nullptr;
    m_length = 0;
    m_capacity = 0;
}
