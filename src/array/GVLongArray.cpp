// CGVLongArray: typed add, search, the growing index and the text form (tag Y).
#include "gvlib/array/GVLongArray.h"

#include <algorithm>
#include <cstring>
#include <istream>
#include <ostream>
#include <typeinfo>
#include <vector>

#include "gvlib/core/GVLong.h"
#include "gvlib/platform/afxarchive.h"
#include "gvlib/platform/afxexcept.h"
#include "gvlib/platform/afxstr.h"
#include "gvlib/platform/gvplatform.h"
#include "platform/loading_policy.h"

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

void CGVLongArray::AddSlowly(int32_t const* value) {
    if (value != nullptr && m_elementSize > 4) {
        // A loaded archive may give wider elements: the value fills the first 4
        // bytes of a zeroed element, so the copy reads nothing beyond it.
        std::vector<char> element(static_cast<size_t>(m_elementSize), 0);
        std::memcpy(element.data(), value, 4);
        CGVArray::mAdd(element.data());
        return;
    }
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

int32_t CGVLongArray::mSearch(int32_t value) {
    if (m_elementSize == 4)
        return CGVArray::mSearch(&value, LongComparison);
    // Elements of another size (a loaded archive may give them) are compared by
    // the values operator[] reads, never by 4 bytes that may run past the block.
    CGVLongArray const& items = *this;
    for (int32_t i = 0; i < m_itemCount; ++i)
        if (items[i] == value)
            return i;
    return -1;
}

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
    int32_t n = count.mGetValue();
    if (n <= 0)
        return;
    // Count times a value is read into a fresh CGVLong and added, as the original
    // did: a read that fails adds 0. The items announced must fit the budget
    // first; they are added only once all are read, so an exception (strict
    // loading's short body) leaves the array as it was.
    gvplatform::detail::ChargeInput(static_cast<uint64_t>(n), 4);
    std::vector<int32_t> read;
    for (int32_t i = 0; i < n; ++i) {
        // Once the stream has failed every further read adds 0: add them at once
        // rather than read a failed stream up to two billion times.
        if (is.fail()) {
            read.resize(static_cast<size_t>(n), 0);
            break;
        }
        CGVLong item;
        is >> item;
        read.push_back(item.mGetValue());
    }
    for (int32_t value : read)
        mAdd(&value);
}

void CGVLongArray::Serialize(CArchive& ar) {
    if (ar.IsStoring()) {
        CGVArray::Serialize(ar);
        return;
    }
    // The original took any element size a long array's archive announced, and
    // the typed members read at most 4 bytes of an element; strict loading
    // refuses any size but 4.
    CGVArray loaded;
    loaded.Serialize(ar);
    if (loaded.mGetElementSize() != 4 && gvplatform::StrictLoading())
        gvplatform::detail::ThrowDamage(CArchiveException::badIndex, gvplatform::detail::LoadOffset(ar));
    CopyFrom(loaded);
}
