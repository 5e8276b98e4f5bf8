// CGVStringArray: the text form (tag X) and both binary archive layouts.
#include <istream>
#include <memory>
#include <ostream>
#include <vector>

#include "array/array_archive.h"
#include "gvlib/array/GVStringArray.h"
#include "gvlib/core/GVLong.h"

void CGVStringArray::Serialize(std::ostream& os) {
    os << 'X';
    CGVLong count(m_itemCount);
    os << count;
    CGVString empty;
    for (int32_t i = 0; i < m_itemCount; ++i) {
        CGVString* text = m_strings.GetAt(i);
        os << (text != nullptr ? *text : empty);
    }
}

void CGVStringArray::Serialize(std::istream& is) {
    CGVLong count;
    is >> count;
    CGVString working;
    for (int32_t i = 0; i < count.mGetValue(); ++i) {
        // Each string read takes at least its tag from the stream, so a damaged
        // count cannot add more items than the stream has characters.
        if (!(is >> std::ws) || is.peek() == std::char_traits<char>::eof())
            break;
        is >> working;
        mAdd(&working);
    }
}

void CGVStringArray::Serialize(CArchive& ar) {
    if (ar.IsStoring()) {
        m_elementSize = -1;
        ar << static_cast<LONG>(m_elementSize) << static_cast<short>(m_growStep)
           << static_cast<LONG>(m_allocatedSlots) << static_cast<LONG>(m_itemCount);
        m_strings.Serialize(ar);
        return;
    }
    LONG elementSize = 0;
    short growStep = 0;
    LONG slots = 0;
    LONG count = 0;
    ar >> elementSize >> growStep >> slots >> count;
    if (count < 0)
        AfxThrowArchiveException(CArchiveException::badIndex);
    if (elementSize < 0)
        LoadStringLayout(ar, count);
    else
        LoadRecordLayout(ar, elementSize, slots, count);
    m_elementSize = elementSize;
    m_growStep = growStep;
    m_allocatedSlots = slots;
}

void CGVStringArray::LoadStringLayout(CArchive& ar, int32_t count) {
    CGVStringPtrArray read;
    try {
        read.Serialize(ar);
        // Every item must have its slot: a count above the strings is damage.
        if (count > read.GetSize())
            AfxThrowArchiveException(CArchiveException::badIndex);
        // Room first, so that moving the strings over cannot fail half-way.
        INT_PTR const base = m_strings.GetSize();
        m_strings.SetSize(base + read.GetSize());
        for (INT_PTR i = 0; i < read.GetSize(); ++i) {
            m_strings.SetAt(base + i, read.GetAt(i));
            read.SetAt(i, nullptr);
        }
    } catch (...) {
        for (INT_PTR i = 0; i < read.GetSize(); ++i)
            delete read.GetAt(i);
        throw;
    }
    m_itemCount = count;
}

void CGVStringArray::LoadRecordLayout(CArchive& ar, int32_t elementSize, int32_t slots, int32_t count) {
    int64_t bytes = static_cast<int64_t>(elementSize) * slots;
    // Records of no size hold no text and cost no archive bytes: a count of them
    // cannot be checked against the data, so such a header is refused.
    if (slots < 0 || count > slots || bytes > INT32_MAX || (elementSize == 0 && count > 0))
        AfxThrowArchiveException(CArchiveException::badIndex);
    char* block = gvlib::detail::ReadArchiveBlock(ar, bytes);
    AdoptBlock(block, slots);
    std::vector<std::unique_ptr<CGVString>> read;
    for (int32_t i = 0; i < count; ++i) {
        // The text starts 4 bytes into its record and ends at a 0 byte or the record's end.
        char const* record = block + static_cast<size_t>(elementSize) * i;
        int32_t length = 0;
        while (4 + length < elementSize && record[4 + length] != 0)
            ++length;
        read.push_back(std::make_unique<CGVString>());
        if (length > 0)
            read.back()->SetString(record + 4, length);
    }
    for (auto& text : read) {
        m_strings.Add(text.get());
        text.release();
    }
    m_itemCount = count;
}
