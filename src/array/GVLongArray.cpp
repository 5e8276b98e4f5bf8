// CGVLongArray: typed add, search, the growing index and the text form (tag Y).
#include "gvlib/array/GVLongArray.h"

#include <algorithm>
#include <cstring>
#include <istream>
#include <ostream>
#include <typeinfo>

#include "gvlib/core/GVLong.h"
#include "gvlib/platform/afxarchive.h"
#include "gvlib/platform/afxexcept.h"
#include "gvlib/platform/afxstr.h"

namespace {

int LongComparison(void const* a, void const* b) {
    if (a == nullptr)
        return -1;
    if (b == nullptr)
        return 1;
    int32_t x;
    int32_t y;
    std::memcpy(&x, a, sizeof x);
    std::memcpy(&y, b, sizeof y);
    if (x == y)
        return 0;
    return x > y ? 1 : -1;
}

}  // namespace

CGVLongArray::CGVLongArray() : CGVArray(4, 16) {}

CGVLongArray::~CGVLongArray() = default;

bool CGVLongArray::IsPlainLongArray() const {
    // The generic mAdd reaches the count and the store through virtual calls; when
    // nothing overrides them and the elements are still 4 bytes, the append can be
    // done here directly with the same effect.
    return typeid(*this) == typeid(CGVLongArray) && m_elementSize == 4 && m_elements != nullptr;
}

void CGVLongArray::mAdd(int32_t const* value) {
    if (value == nullptr || !IsPlainLongArray()) {
        CGVArray::mAdd(value);
        return;
    }
    if (m_itemCount >= m_allocatedSlots || m_itemCount >= m_blockSlots)
        mInsertItem(m_itemCount);
    else
        ++m_itemCount;
    std::memcpy(m_elements + 4 * static_cast<size_t>(m_itemCount - 1), value, 4);
}

void CGVLongArray::mAdd(CGVLong* value) {
    int32_t v = value != nullptr ? value->mGetValue() : 0;
    mAdd(&v);
}

int32_t CGVLongArray::mSearch(int32_t value) { return CGVArray::mSearch(&value, LongComparison); }

int32_t CGVLongArray::operator[](int32_t index) const {
    int32_t value = 0;  // outside the items nothing is read
    if (index < 0 || index >= m_itemCount || m_elements == nullptr)
        return value;
    // An array re-shaped by mInit (or loaded so) may hold elements of another
    // size: read at most the 4 bytes the value has room for.
    std::memcpy(&value, mItemPtr(index), static_cast<size_t>(std::min(m_elementSize, int32_t{4})));
    return value;
}

int32_t& CGVLongArray::operator[](int32_t index) {
    if (index < 0)
        AfxThrowInvalidArgException();
    if (index >= m_itemCount)
        GrowItemsTo(index);
    // Elements narrower than a value (or no block at all) give no 4 bytes to refer to.
    if (m_elementSize < 4 || m_elements == nullptr)
        AfxThrowInvalidArgException();
    return *static_cast<int32_t*>(mItemPtr(index));
}

void CGVLongArray::Serialize(std::ostream& os) {
    os << 'Y';
    CGVLong count(m_itemCount);
    os << count;
    CGVLongArray const& items = *this;
    for (int32_t i = 0; i < m_itemCount; ++i) {
        CGVLong item(items[i]);
        os << item;
    }
}

void CGVLongArray::Serialize(std::istream& is) {
    CGVLong count;
    is >> count;
    for (int32_t i = 0; i < count.mGetValue(); ++i) {
        // Each value read takes at least its tag from the stream, so a damaged
        // count cannot add more items than the stream has characters.
        if (!(is >> std::ws) || is.peek() == std::char_traits<char>::eof())
            break;
        CGVLong item;
        is >> item;
        int32_t value = item.mGetValue();
        CGVArray::mAdd(&value);
    }
}

void CGVLongArray::Serialize(CArchive& ar) {
    if (ar.IsStoring()) {
        CGVArray::Serialize(ar);
        return;
    }
    // A long array's archive has 4-byte elements; any other size is damage. An
    // element size of 0 in particular would give any count of items without a
    // byte of data behind them.
    CGVArray loaded;
    loaded.Serialize(ar);
    if (loaded.mGetElementSize() != 4)
        AfxThrowArchiveException(CArchiveException::badIndex);
    CopyFrom(loaded);
}
