// CGVStringArray: owned string slots, their editing, search and sort callbacks.
#include "gvlib/array/GVStringArray.h"

#include <memory>
#include <utility>
#include <typeinfo>

#include "array/sort_state.h"
#include "gvlib/platform/afxexcept.h"

namespace {

// A copy of an item is the object's own mCopy, kept only when it is a string.
CGVString* CopyOf(void const* item) {
    if (item == nullptr)
        return nullptr;
    std::unique_ptr<CGVObject> copy(static_cast<CGVObject const*>(item)->mCopy());
    auto* text = dynamic_cast<CGVString*>(copy.get());
    if (text != nullptr)
        copy.release();
    return text;
}

}  // namespace

CGVStringArray::CGVStringArray() : CGVArray(8, 16) { m_elementSize = -1; }

CGVStringArray::CGVStringArray(CGVStringArray const& other) : CGVArray(0, 16) {
    m_strings.SetSize(other.m_itemCount);
    m_itemCount = other.m_itemCount;
    for (int32_t i = 0; i < other.m_itemCount; ++i)
        m_strings.SetAt(i, CopyOf(other.m_strings.GetAt(i)));
    m_elementSize = -1;
}

CGVStringArray::~CGVStringArray() { FreeStrings(); }

CGVObject* CGVStringArray::mCopy() const { return nullptr; }

CGVObject* CGVStringArray::mNew() const { return CGVArray::mNew(); }

void CGVStringArray::mClear() { mInit(0, 16); }

void CGVStringArray::mInit(int32_t, int16_t) {
    // An archive may announce more items than it held strings; walking the items
    // then reaches a slot beyond the pointer array, which raises. The array is
    // emptied first, so it stays usable (and its destructor has nothing left).
    const bool slotsMissing = m_itemCount > m_strings.GetSize();
    FreeStrings();
    if (slotsMissing)
        AfxThrowInvalidArgException();
}

void CGVStringArray::FreeStrings() {
    // Every slot owns its string, also those past the item count: an archive may
    // hold more strings than items, and the array is destroyed with all of them.
    for (INT_PTR i = 0; i < m_strings.GetSize(); ++i)
        delete m_strings.GetAt(i);
    m_strings.SetSize(0);
    m_itemCount = 0;
}

int32_t CGVStringArray::mGetNumItems() const { return m_itemCount; }

int32_t CGVStringArray::mGetElementSize() const { return 0; }

void CGVStringArray::mAdd(void const* item) {
    if (item == nullptr)
        return;
    std::unique_ptr<CGVString> copy(CopyOf(item));
    m_strings.Add(copy.get());
    copy.release();
    ++m_itemCount;
}

bool CGVStringArray::IsPlain() const { return typeid(*this) == typeid(CGVStringArray); }

void CGVStringArray::AddText(char const* text, int length) {
    auto made = std::make_unique<CGVString>();
    made->SetString(text, length);
    m_strings.Add(made.get());
    made.release();
    ++m_itemCount;
}

void CGVStringArray::mInsertAtIndex(void const* item, int32_t index) {
    if (index >= m_itemCount || item == nullptr)
        return;
    std::unique_ptr<CGVString> copy(CopyOf(item));
    m_strings.InsertAt(index, copy.get());
    copy.release();
    ++m_itemCount;
}

void CGVStringArray::mInsertItem(int32_t index) {
    m_strings.InsertAt(index, nullptr);
    ++m_itemCount;
}

void CGVStringArray::mDeleteItem(int32_t index) {
    if (index >= m_itemCount)
        return;
    delete m_strings.GetAt(index);
    m_strings.RemoveAt(index);
    --m_itemCount;
}

void CGVStringArray::mSetArrayItem(void const* item, int32_t index) {
    if (index >= m_itemCount)
        return;
    CGVString*& slot = m_strings.ElementAt(index);  // raises for a bad index first
    CGVString* copy = CopyOf(item);
    delete slot;
    slot = copy;
}

void CGVStringArray::mGetArrayItem(void* item, int32_t index) const {
    if (index >= m_itemCount)
        return;
    CGVString const* text = m_strings.GetAt(index);
    if (text != nullptr && item != nullptr)
        *static_cast<CGVString*>(item) = *text;
}

CGVString& CGVStringArray::operator[](int32_t index) {
    if (index >= m_itemCount)
        index = 0;
    CGVString*& slot = m_strings.ElementAt(index);
    if (slot == nullptr)
        slot = new CGVString;
    return *slot;
}

void CGVStringArray::operator=(CGVStringArray& other) {
    if (!IsPlain()) {
        AssignThroughVirtuals(other);
        return;
    }
    // Every copy is made before the old strings go, so running out of memory
    // leaves this array as it was. Assigning an array to itself empties it.
    CGVStringArray copies;
    if (&other != this) {
        for (int32_t i = 0; i < other.m_itemCount; ++i)
            copies.mAdd(other.m_strings.GetAt(i));
    }
    mInit(0, 16);
    m_strings.Swap(copies.m_strings);
    std::swap(m_itemCount, copies.m_itemCount);
    m_elementSize = -1;
}

// A derived array is cleared and filled through its own mInit and mAdd, as the
// original did for every array; empty slots are dropped on the way.
void CGVStringArray::AssignThroughVirtuals(CGVStringArray& other) {
    mInit(0, 16);
    for (int32_t i = 0; i < other.m_itemCount; ++i)
        mAdd(other.m_strings.GetAt(i));
    m_elementSize = -1;
}

int32_t CGVStringArray::mFindString(CGVString const& text) {
    CGVString working;
    for (int32_t i = 0; i < mGetNumItems(); ++i) {
        mGetArrayItem(&working, i);
        if (working == text)
            return i;
    }
    return -1;
}

int32_t CGVStringArray::mSearch(void const* key, GVSEARCHPROC compare) {
    if (compare == nullptr && key == nullptr)
        return -1;
    for (int32_t i = 0; i < m_itemCount; ++i) {
        CGVString const* text = m_strings.GetAt(i);
        if (text == nullptr)
            continue;  // an empty slot holds no string to offer
        if (compare != nullptr ? compare(text, key) == 0 : *text == *static_cast<CGVString const*>(key))
            return i;
    }
    return -1;
}

void CGVStringArray::mSort(SORTORDER order, GVSWAPPROC swap, GVCOMPAREPROC compare) {
    // The generic defaults read pointer-width elements from the generic block,
    // which a string array does not use; these reach the slots instead.
    CGVArray::mSort(order, swap ? swap : SwapSlots, compare ? compare : CompareSlots);
}

void CGVStringArray::SwapSlots(uint32_t i, uint32_t j) {
    auto* array = dynamic_cast<CGVStringArray*>(gvlib::detail::g_sortState.array);
    if (array == nullptr)
        return;
    CGVString*& a = array->m_strings.ElementAt(static_cast<INT_PTR>(i));
    CGVString*& b = array->m_strings.ElementAt(static_cast<INT_PTR>(j));
    std::swap(a, b);
}

int32_t CGVStringArray::CompareSlots(uint32_t i, uint32_t j) {
    auto* array = dynamic_cast<CGVStringArray*>(gvlib::detail::g_sortState.array);
    if (array == nullptr)
        return 0;
    CGVObject const* a = array->m_strings.GetAt(static_cast<INT_PTR>(i));
    CGVObject const* b = array->m_strings.GetAt(static_cast<INT_PTR>(j));
    if (gvlib::detail::g_sortState.ascending == 0)
        std::swap(a, b);
    if (a == nullptr || b == nullptr)
        return a == b ? 0 : (a == nullptr ? -1 : 1);
    return a->mCompare(b);
}
