// CGVLongArray: the generic array with 4-byte elements and typed access.
#pragma once

#include <cstdint>
#include <cstring>
#include <typeinfo>

#include "gvlib/array/GVArray.h"
#include "gvlib/platform/export.h"

class CGVLong;

/// 32-bit signed integers, little-endian in the generic block. Copies made by
/// mCopy are plain CGVArray objects; sorting needs caller-supplied callbacks.
class GVLIB_API CGVLongArray : public CGVArray {
public:
    CGVLongArray();
    ~CGVLongArray() override;

    using CGVArray::mAdd;
    /// Appends a copy of the integer through the generic append.
    void mAdd(int32_t const* value) {
        // Where the slot is already reported and reserved and no subclass can
        // have changed what the generic append calls, appending is a store;
        // inline, since the call would cost more than the store.
        if (value != nullptr && m_itemCount < m_allocatedSlots && m_itemCount < m_blockSlots && m_elementSize == 4 &&
            &typeid(*this) == &typeid(CGVLongArray)) {
            std::memcpy(m_elements + 4 * static_cast<std::size_t>(m_itemCount), value, 4);
            ++m_itemCount;
            return;
        }
        AddSlowly(value);
    }
    void mAdd(CGVLong* value);
    using CGVArray::mSearch;
    /// First index holding value, or -1.
    int32_t mSearch(int32_t value);

    /// The item, or 0 outside the items.
    int32_t operator[](int32_t index) const;
    /// Grows the array to index + 1 items first when needed (new items hold the
    /// slot's bytes: 0 in a fresh block). Empty array, a[3] = 7 ⇒ 0, 0, 0, 7.
    /// A negative index raises CInvalidArgException.
    int32_t& operator[](int32_t index);

    /// "Y", the count as "U", each value as "U": {5, -1} ⇒ "YU2 U5 U-1 ".
    void Serialize(std::ostream& os) override;
    /// Appends the values read after the existing items.
    void Serialize(std::istream& is) override;
    void Serialize(CArchive& ar) override;

private:
    bool IsPlainLongArray() const;
    void AddSlowly(int32_t const* value);
};
