// CGVArray: the array of fixed-size elements kept by value in one raw block.
#pragma once

#include <cstdint>

#include "gvlib/array/GVSort.h"
#include "gvlib/core/GVObject.h"
#include "gvlib/platform/export.h"

class CGVBuffer;

/// Items of `elementSize` bytes, back to back from the start of one block that
/// grows and shrinks by whole growth steps (`allocatedSlots` reports them). It
/// knows nothing of what an element means. No text form of its own: a generic
/// array saves into an empty buffer.
class GVLIB_API CGVArray : public CGVObject {
public:
    /// mInit(elementSize, growStep): growStep slots, zero-filled; no block when
    /// elementSize is below 1.
    CGVArray(int32_t elementSize = 0, int16_t growStep = 16);
    /// Keeps the whole block, slots beyond the item count included.
    CGVArray(CGVArray const& other);
    ~CGVArray() override;

    // Value-object slots. mCopy and mNew always give a plain CGVArray.
    CGVObject* mCopy() const override;
    CGVObject* mNew() const override;
    /// mInit with the array's own element size and growth step.
    void mClear() override;
    /// Element size, growth step, slots, count, then the whole block.
    void Serialize(CArchive& ar) override;
    using CGVObject::Serialize;
    using CGVObject::mNew;
    using CGVObject::operator=;

    /// Exchanges two elements' bytes (mGetElementSize of them). Indexes outside
    /// the block are ignored.
    virtual void mSwap(uint32_t i, uint32_t j);
    /// Sorts through qsortplusplus; null callbacks become mSwap2 and mCompareElms,
    /// which serve arrays of pointers to value objects.
    virtual void mSort(SORTORDER order, GVSWAPPROC swap = nullptr, GVCOMPAREPROC compare = nullptr);
    /// Discards the items and re-shapes the array.
    virtual void mInit(int32_t elementSize, int16_t growStep);
    /// Appends one element copied from `item`.
    virtual void mAdd(void const* item);
    /// Removes one item; shrinks by one growth step when more than a step is free.
    virtual void mDeleteItem(int32_t index);
    /// Ignored unless 0 <= index < count.
    virtual void mSetArrayItem(void const* item, int32_t index);
    /// First index whose element gives 0 with the callback (called with the element's
    /// address and the key); without one, whose value equals the key pointer. -1 when none.
    virtual int32_t mSearch(void const* key, GVSEARCHPROC compare = nullptr);
    /// Copies the whole block; assigning an array to itself changes nothing.
    virtual void operator=(CGVArray& other);
    virtual int32_t mGetNumItems() const;
    virtual int32_t mGetElementSize() const;
    /// Leaves `item` as it was unless 0 <= index < count.
    virtual void mGetArrayItem(void* item, int32_t index) const;
    /// Order by mSize only, whatever the items.
    virtual int operator>(CGVArray const& other) const;
    virtual int operator<(CGVArray const& other) const;
    /// growth step × element size: the bytes of one growth step.
    virtual int32_t mSize() const;

    int32_t mItemOffset(int32_t index) const;
    void* mItemPtr(int32_t index) const;
    /// Sets the reported slots; the item count is not touched.
    void mResize(int32_t slots);
    void mMoreSlots();
    /// Opens a slot at index (unset bytes); beyond the count it only raises the
    /// count. A negative index raises CInvalidArgException.
    void mInsertItem(int32_t index);
    void mInsertAtIndex(void const* item, int32_t index);

    /// The text stream form (empty for a generic array) copied into the buffer.
    /// A failure raises its exception and leaves the buffer unchanged.
    void mSave(CGVBuffer& buffer) const;
    /// Reads what mSave wrote through Serialize(std::istream&); an empty buffer clears.
    /// A failure part-way raises its exception; the array keeps the items it had.
    void mLoad(CGVBuffer const& buffer);

    /// The exchange of mSwap on the current sort array.
    static void mSwap2(uint32_t i, uint32_t j);
    /// mCompare of the objects that elements i and j point to, in the direction
    /// of the running sort. 0 outside a sort or when elements are not pointers.
    static int32_t mCompareElms(uint32_t i, uint32_t j);
    /// Reads both elements as mCompareElms does; every pair compares equal.
    static int32_t mCmpMoney(uint32_t i, uint32_t j);
    /// Each argument addresses a slot holding a CGVObject pointer; fits mSearch.
    static int mComparison(void const* a, void const* b);

    int16_t mGetGrowStep() const { return m_growStep; }
    int32_t mGetAllocatedSlots() const { return m_allocatedSlots; }

protected:
    /// Element size × slots in bytes, refusing what cannot be addressed.
    static int64_t BlockBytes(int32_t elementSize, int64_t slots);
    /// Makes the real block hold at least `slots` elements (it may hold more than
    /// the reported slots, so that growth by small steps does not copy each time).
    void EnsureBlock(int64_t slots);
    /// Takes over a malloc'ed block of `slots` elements.
    void AdoptBlock(char* block, int64_t slots);
    void FreeBlock();
    /// Copies the other's fields and whole block.
    void CopyFrom(CGVArray const& other);
    /// The effect of mInsertItem(index) repeated until the count is index + 1,
    /// computed in whole growth steps rather than one item at a time.
    void GrowItemsTo(int32_t index);

    char* m_elements = nullptr;
    int16_t m_growStep = 16;
    int32_t m_allocatedSlots = 0;
    int32_t m_elementSize = 0;
    int32_t m_itemCount = 0;

    /// Growth and shrink use a step of at least one slot, so a damaged or careless
    /// step can never leave an insertion without room.
    int32_t EffectiveStep() const { return m_growStep > 0 ? m_growStep : 1; }
    int64_t m_blockSlots = 0;  // real capacity of m_elements, in elements
};
