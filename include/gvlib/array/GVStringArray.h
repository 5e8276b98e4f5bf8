// CGVStringArray: owned CGVString items kept in a pointer array.
#pragma once

#include <cstdint>

#include "gvlib/array/GVArray.h"
#include "gvlib/platform/afxtempl.h"
#include "gvlib/platform/export.h"
#include "gvlib/string/GVString.h"

/// The slots of a string array; each non-null pointer belongs to the string array.
class GVLIB_API CGVStringPtrArray : public CArray<CGVString*, CGVString*> {
public:
    /// The slot count, then each slot's counted string (an empty slot as "").
    void Serialize(CArchive& ar) override;
};

/// An ordered list of strings that owns copies of what it is given. An empty
/// slot (made by mInsertItem, or by adding an object whose copy is not a string)
/// holds no string. Slot access outside the pointer array raises CInvalidArgException.
class GVLIB_API CGVStringArray : public CGVArray {
public:
    /// Element size field -1 (the string layout in archives), 16 slots.
    CGVStringArray();
    /// Keeps empty slots.
    CGVStringArray(CGVStringArray const& other);
    ~CGVStringArray() override;

    /// Null: a string array makes no copy of itself through the generic interface.
    CGVObject* mCopy() const override;
    /// A new empty plain CGVArray.
    CGVObject* mNew() const override;
    void mClear() override;
    /// "X", the count as "U", each string as "T" (an empty slot as "T0  ").
    void Serialize(std::ostream& os) override;
    /// Appends the strings read after the existing items.
    void Serialize(std::istream& is) override;
    /// Header with element size -1, the slot count, then the strings; loading
    /// also reads the older layout of fixed records (text 4 bytes into each).
    void Serialize(CArchive& ar) override;
    using CGVObject::mNew;

    /// Without callbacks, sorts the strings by mCompare (collation under gvSortLCID)
    /// in the requested direction; empty slots first.
    void mSort(SORTORDER order, GVSWAPPROC swap = nullptr, GVCOMPAREPROC compare = nullptr) override;
    /// Deletes every string; the arguments are ignored.
    void mInit(int32_t elementSize, int16_t growStep) override;
    /// Appends a copy of a CGVString (or CGVPath); null adds nothing.
    void mAdd(void const* item) override;
    void mDeleteItem(int32_t index) override;
    void mSetArrayItem(void const* item, int32_t index) override;
    /// Without a callback, the first slot equal to the CGVString key (byte order);
    /// with one, the first string for which callback(string, key) gives 0. -1 when none.
    int32_t mSearch(void const* key, GVSEARCHPROC compare = nullptr) override;
    int32_t mGetNumItems() const override;
    /// Always 0.
    int32_t mGetElementSize() const override;
    /// Assigns the slot's text to the CGVString at `item`; an empty slot leaves it.
    void mGetArrayItem(void* item, int32_t index) const override;
    using CGVArray::operator=;
    /// Clears, then adds the other's strings (empty slots are dropped). Assigning
    /// an array to itself therefore empties it. Out of memory, the array keeps its strings.
    virtual void operator=(CGVStringArray& other);
    /// An empty slot at index; a negative index raises CInvalidArgException.
    virtual void mInsertItem(int32_t index);

    /// A copy of item inserted at index < count; index == count does nothing.
    void mInsertAtIndex(void const* item, int32_t index);
    /// An index at or beyond the count means 0; an empty slot gets an empty string.
    CGVString& operator[](int32_t index);
    /// First index whose string equals text (case-sensitive), or -1.
    int32_t mFindString(CGVString const& text);

private:
    // The path class splits into and joins from string arrays in place.
    friend class CGVPath;
    /// Whether this object is a plain string array, whose members the path class
    /// may bypass (a derived class may override them).
    bool IsPlain() const;
    /// Appends a new string made from `length` bytes of text, as mAdd of a string
    /// holding them would, without the copy.
    void AddText(char const* text, int length);
    /// The string in slot index (0 <= index < count); null for an empty slot.
    CGVString* TextAt(int32_t index) const { return m_strings.GetAt(index); }
    static void SwapSlots(uint32_t i, uint32_t j);
    static int32_t CompareSlots(uint32_t i, uint32_t j);
    /// Deletes every string and slot; the item count becomes 0. Never raises.
    void FreeStrings();
    /// operator= for a derived class: its own mInit, then its own mAdd per slot.
    void AssignThroughVirtuals(CGVStringArray& other);
    /// Reads `count` strings of the text form into a derived array through mAdd.
    void ReadThroughAdd(std::istream& is, int32_t count);
    void LoadStringLayout(CArchive& ar, int32_t count);
    void LoadRecordLayout(CArchive& ar, int32_t elementSize, int32_t slots, int32_t count);
    /// Moves the strings read behind the existing slots; the item count becomes `count`.
    void AdoptStrings(CGVStringPtrArray& read, int32_t count);
    /// A new string from record i of an older fixed-record block of `bytes` bytes.
    static CGVString* RecordText(char const* block, int64_t bytes, int32_t elementSize, int32_t i);

    CGVStringPtrArray m_strings;
};
