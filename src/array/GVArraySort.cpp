// CGVArray sorting and searching: mSort, the swaps, the static comparisons, mSearch,
// and the module-wide sort state.
#include <cstring>
#include <vector>

#include "array/sort_state.h"
#include "gvlib/array/GVArray.h"

namespace gvlib::detail {

SortState g_sortState;

}  // namespace gvlib::detail

using gvlib::detail::g_sortState;

GVSWAPPROC GVGetSortSwapProc() { return g_sortState.swap; }
GVCOMPAREPROC GVGetSortCompareProc() { return g_sortState.compare; }
CGVArray* GVGetSortArray() { return g_sortState.array; }
int32_t GVGetSortDirection() { return g_sortState.ascending; }

namespace {

// The default callbacks serve arrays of pointers to value objects. Elements of
// another width hold no pointer: reading them as one would follow garbage.
bool ReadObjectPointer(CGVArray const* array, uint32_t index, CGVObject const*& object) {
    if (array == nullptr || array->mGetElementSize() != static_cast<int32_t>(sizeof(void*)))
        return false;
    void* slot = nullptr;
    array->mGetArrayItem(&slot, static_cast<int32_t>(index));
    object = static_cast<CGVObject const*>(slot);
    return true;
}

// An empty slot sorts before any object.
int32_t CompareObjects(CGVObject const* a, CGVObject const* b) {
    if (a == nullptr || b == nullptr)
        return a == b ? 0 : (a == nullptr ? -1 : 1);
    return a->mCompare(b);
}

int32_t InDirection(CGVObject const* a, CGVObject const* b) {
    return g_sortState.ascending != 0 ? CompareObjects(a, b) : CompareObjects(b, a);
}

// Resets the current sort array also when a callback throws.
struct SortArrayScope {
    explicit SortArrayScope(CGVArray* array) { g_sortState.array = array; }
    ~SortArrayScope() { g_sortState.array = nullptr; }
    SortArrayScope(SortArrayScope const&) = delete;
    SortArrayScope& operator=(SortArrayScope const&) = delete;
};

}  // namespace

void CGVArray::mSort(SORTORDER order, GVSWAPPROC swap, GVCOMPAREPROC compare) {
    g_sortState.ascending = order == SORT_ASCENDING ? 1 : 0;
    SortArrayScope scope(this);
    qsortplusplus(m_itemCount > 0 ? static_cast<uint32_t>(m_itemCount) : 0u, swap ? swap : mSwap2,
                  compare ? compare : mCompareElms);
}

void CGVArray::mSwap(uint32_t i, uint32_t j) {
    int32_t size = mGetElementSize();
    if (size < 1 || i == j || m_elements == nullptr)
        return;
    // The block's real extent bounds the exchange; the caller's indexes are not checked.
    if (static_cast<int64_t>(i) >= m_blockSlots || static_cast<int64_t>(j) >= m_blockSlots ||
        size > m_elementSize)
        return;
    char* a = m_elements + static_cast<size_t>(size) * i;
    char* b = m_elements + static_cast<size_t>(size) * j;
    if (size == 4) {
        char t[4];
        std::memcpy(t, a, 4);
        std::memcpy(a, b, 4);
        std::memcpy(b, t, 4);
        return;
    }
    char t[256];
    for (int32_t done = 0; done < size;) {
        size_t n = static_cast<size_t>(size - done) < sizeof t ? static_cast<size_t>(size - done) : sizeof t;
        std::memcpy(t, a + done, n);
        std::memcpy(a + done, b + done, n);
        std::memcpy(b + done, t, n);
        done += static_cast<int32_t>(n);
    }
}

void CGVArray::mSwap2(uint32_t i, uint32_t j) {
    if (g_sortState.array != nullptr)
        g_sortState.array->CGVArray::mSwap(i, j);
}

int32_t CGVArray::mCompareElms(uint32_t i, uint32_t j) {
    CGVObject const* a = nullptr;
    CGVObject const* b = nullptr;
    if (!ReadObjectPointer(g_sortState.array, i, a) || !ReadObjectPointer(g_sortState.array, j, b))
        return 0;
    return InDirection(a, b);
}

int32_t CGVArray::mCmpMoney(uint32_t i, uint32_t j) {
    CGVObject const* a = nullptr;
    CGVObject const* b = nullptr;
    ReadObjectPointer(g_sortState.array, i, a);
    ReadObjectPointer(g_sortState.array, j, b);
    return 0;
}

int CGVArray::mComparison(void const* a, void const* b) {
    CGVObject const* first = a != nullptr ? *static_cast<CGVObject* const*>(a) : nullptr;
    CGVObject const* second = b != nullptr ? *static_cast<CGVObject* const*>(b) : nullptr;
    return InDirection(first, second);
}

int32_t CGVArray::mSearch(void const* key, GVSEARCHPROC compare) {
    int32_t size = mGetElementSize();
    // Without a callback, elements are read as pointer-width values and compared
    // with the key itself; a narrower element is compared with the key's low bytes
    // (a 32-bit value passed as the key), a wider one by its first pointer's width.
    uintptr_t want = reinterpret_cast<uintptr_t>(key);
    if (size > 0 && static_cast<size_t>(size) < sizeof want)
        want &= (uintptr_t{1} << (8 * size)) - 1;
    std::vector<char> wide(size > static_cast<int32_t>(sizeof want) ? static_cast<size_t>(size) : 0);
    for (int32_t i = 0; i < mGetNumItems(); ++i) {
        if (compare != nullptr) {
            if (compare(mItemPtr(i), key) == 0)
                return i;
            continue;
        }
        uintptr_t value = 0;
        if (!wide.empty()) {
            mGetArrayItem(wide.data(), i);
            std::memcpy(&value, wide.data(), sizeof value);
        } else if (size > 0) {
            mGetArrayItem(&value, i);
        }
        if (value == want)
            return i;
    }
    return -1;
}
