// CGVArray: the element block, its growth and shrink steps, insertion and deletion.
#include "gvlib/array/GVArray.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <memory>

#include "gvlib/platform/afxexcept.h"
#include "gvlib/platform/afxstr.h"
#include "gvlib/platform/allocator.h"

namespace {

// The original lived in a 32-bit address space: no block could reach 2 GiB.
constexpr int64_t kMaxBlockBytes = INT32_MAX;

}  // namespace

CGVArray::CGVArray(int32_t elementSize, int16_t growStep) { mInit(elementSize, growStep); }

CGVArray::CGVArray(CGVArray const& other) : CGVObject(other) { CopyFrom(other); }

CGVArray::~CGVArray() { FreeBlock(); }

int64_t CGVArray::BlockBytes(int32_t elementSize, int64_t slots) {
    if (elementSize < 1 || slots < 1)
        return 0;
    int64_t bytes = static_cast<int64_t>(elementSize) * slots;
    if (slots > kMaxBlockBytes || bytes > kMaxBlockBytes)
        AfxThrowMemoryException();
    return bytes;
}

void CGVArray::FreeBlock() {
    gvplatform::detail::MemFree(m_elements);
    m_elements = nullptr;
    m_blockSlots = 0;
}

void CGVArray::AdoptBlock(char* block, int64_t slots) {
    FreeBlock();
    m_elements = block;
    m_blockSlots = block != nullptr ? slots : 0;
}

void CGVArray::EnsureBlock(int64_t slots) {
    if (m_elementSize < 1 || slots <= m_blockSlots)
        return;
    int64_t need = BlockBytes(m_elementSize, slots);
    // Room grows geometrically behind the reported slots, so that a long run of
    // one-step growths costs amortised constant time per element.
    int64_t roomy = std::max(slots, m_blockSlots * 2);
    int64_t bytes = roomy * m_elementSize <= kMaxBlockBytes ? roomy * m_elementSize : need;
    auto* block = static_cast<char*>(gvplatform::detail::MemRealloc(m_elements, static_cast<size_t>(bytes)));
    if (block == nullptr)
        AfxThrowMemoryException();  // the old block stays
    int64_t old = m_blockSlots * m_elementSize;
    std::memset(block + old, 0, static_cast<size_t>(bytes - old));
    m_elements = block;
    m_blockSlots = bytes / m_elementSize;
}

void CGVArray::CopyFrom(CGVArray const& other) {
    char* block = nullptr;
    int64_t slots = std::max<int64_t>(other.m_allocatedSlots, other.m_itemCount);
    bool empty = other.m_itemCount == 0 && other.m_allocatedSlots == 0;
    int64_t bytes = empty ? 0 : BlockBytes(other.m_elementSize, slots);
    if (bytes > 0 && other.m_elements != nullptr) {
        block = static_cast<char*>(gvplatform::detail::MemAlloc(static_cast<size_t>(bytes)));
        if (block == nullptr)
            AfxThrowMemoryException();
        std::memcpy(block, other.m_elements, static_cast<size_t>(bytes));
    }
    AdoptBlock(block, slots);
    m_elementSize = other.m_elementSize;
    m_growStep = other.m_growStep;
    m_allocatedSlots = other.m_allocatedSlots;
    m_itemCount = other.m_itemCount;
}

void CGVArray::mInit(int32_t elementSize, int16_t growStep) {
    // The new block first: when it cannot be had, the array is left as it was.
    int64_t bytes = BlockBytes(elementSize, growStep);
    char* block = nullptr;
    if (bytes > 0) {
        block = static_cast<char*>(gvplatform::detail::MemCalloc(static_cast<size_t>(bytes), 1));
        if (block == nullptr)
            AfxThrowMemoryException();
    }
    AdoptBlock(block, growStep);
    m_elementSize = elementSize;
    m_growStep = growStep;
    m_itemCount = 0;
    m_allocatedSlots = growStep;
}

void CGVArray::mClear() { mInit(m_elementSize, m_growStep); }

CGVObject* CGVArray::mCopy() const {
    std::unique_ptr<CGVArray> copy(new CGVArray(0, 16));
    *copy = const_cast<CGVArray&>(*this);  // may run out of memory: the copy then goes again
    return copy.release();
}

CGVObject* CGVArray::mNew() const { return new CGVArray(0, 16); }

void CGVArray::operator=(CGVArray& other) {
    if (&other != this)
        CopyFrom(other);
}

int32_t CGVArray::mGetNumItems() const { return m_itemCount; }

int32_t CGVArray::mGetElementSize() const { return m_elementSize; }

int32_t CGVArray::mItemOffset(int32_t index) const {
    return static_cast<int32_t>(static_cast<int64_t>(m_elementSize) * index);
}

void* CGVArray::mItemPtr(int32_t index) const {
    if (m_elements == nullptr)
        return nullptr;
    return m_elements + static_cast<int64_t>(m_elementSize) * index;
}

void CGVArray::mResize(int32_t slots) {
    int64_t keep = std::max<int64_t>(slots, m_itemCount);
    EnsureBlock(keep);  // may throw: the reported slots change only once the room is there
    m_allocatedSlots = slots;
    // Give memory back once the hidden room is far beyond what is reported.
    if (m_elements != nullptr && m_blockSlots > 4 * keep && m_blockSlots > 256 && keep > 0) {
        auto* block = static_cast<char*>(gvplatform::detail::MemRealloc(m_elements, static_cast<size_t>(keep * m_elementSize)));
        if (block != nullptr) {
            m_elements = block;
            m_blockSlots = keep;
        }
    }
}

void CGVArray::mMoreSlots() {
    int64_t slots = static_cast<int64_t>(m_allocatedSlots) + EffectiveStep();
    if (slots > INT32_MAX)
        AfxThrowMemoryException();
    mResize(static_cast<int32_t>(slots));
}

void CGVArray::mInsertItem(int32_t index) {
    if (index < 0)
        AfxThrowInvalidArgException();
    if (m_itemCount == INT32_MAX)
        AfxThrowMemoryException();
    if (m_itemCount >= m_allocatedSlots)
        mMoreSlots();
    // A growth step that does not cover the count (a caller's mResize) still
    // must not let the move run past the block.
    EnsureBlock(static_cast<int64_t>(m_itemCount) + 1);
    // A string array's element size is -1: called through the generic class it
    // has no records to move.
    if (index <= m_itemCount && m_elements != nullptr && m_elementSize > 0) {
        size_t size = static_cast<size_t>(m_elementSize);
        std::memmove(m_elements + size * (index + 1), m_elements + size * index, size * (m_itemCount - index));
    }
    ++m_itemCount;
}

void CGVArray::mInsertAtIndex(void const* item, int32_t index) {
    mInsertItem(index);
    mSetArrayItem(item, index);
}

void CGVArray::mAdd(void const* item) { mInsertAtIndex(item, mGetNumItems()); }

void CGVArray::mDeleteItem(int32_t index) {
    if (index < 0 || index >= m_itemCount)
        return;
    --m_itemCount;
    if (m_elements != nullptr && m_elementSize > 0) {
        size_t size = static_cast<size_t>(m_elementSize);
        std::memmove(m_elements + size * index, m_elements + size * (index + 1), size * (m_itemCount - index));
    }
    // At most one step per deletion; up to one step of free slots is kept.
    if (static_cast<int64_t>(m_allocatedSlots) > static_cast<int64_t>(m_itemCount) + EffectiveStep())
        mResize(m_allocatedSlots - EffectiveStep());
}

void CGVArray::mSetArrayItem(void const* item, int32_t index) {
    if (index < 0 || index >= m_itemCount || item == nullptr || m_elements == nullptr)
        return;
    std::memcpy(mItemPtr(index), item, static_cast<size_t>(m_elementSize));
}

void CGVArray::mGetArrayItem(void* item, int32_t index) const {
    if (index < 0 || index >= m_itemCount || item == nullptr || m_elements == nullptr)
        return;
    std::memcpy(item, mItemPtr(index), static_cast<size_t>(m_elementSize));
}

int32_t CGVArray::mSize() const {
    // Wraps as the original's 32-bit product did.
    return static_cast<int32_t>(static_cast<uint32_t>(static_cast<int64_t>(m_growStep) * m_elementSize));
}

int CGVArray::operator>(CGVArray const& other) const { return mSize() > other.mSize() ? 1 : 0; }

int CGVArray::operator<(CGVArray const& other) const { return mSize() < other.mSize() ? 1 : 0; }

void CGVArray::GrowItemsTo(int32_t index) {
    int64_t target = static_cast<int64_t>(index) + 1;
    int64_t count = m_itemCount;
    int64_t slots = m_allocatedSlots;
    int64_t step = EffectiveStep();
    if (count >= target)
        return;
    BlockBytes(m_elementSize, target);  // refuses a size no block can have, before any work
    // Reported slots below the count (a caller's mResize): each insertion adds a step.
    while (count < target && count >= slots) {
        slots += step;
        ++count;
    }
    // Otherwise the free slots fill first, then every insertion that finds the
    // block full adds one step.
    if (count < target && slots < target)
        slots += step * ((target - slots + step - 1) / step);
    if (slots > INT32_MAX)
        AfxThrowMemoryException();
    mResize(static_cast<int32_t>(slots));
    EnsureBlock(target);
    m_itemCount = static_cast<int32_t>(target);
}
