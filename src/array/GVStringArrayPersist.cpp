// CGVStringArray: the text form (tag X) and both binary archive layouts.
#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <istream>
#include <memory>
#include <ostream>
#include <string>
#include <vector>

#include "array/array_archive.h"
#include "core/stream_io.h"
#include "gvlib/array/GVStringArray.h"
#include "gvlib/core/GVLong.h"
#include "gvlib/platform/allocator.h"
#include "gvlib/platform/gvplatform.h"
#include "platform/loading_policy.h"

void CGVStringArray::Serialize(std::ostream& os) {
    os << 'X';
    CGVLong count(m_itemCount);
    os << count;
    if (!gvlib::detail::PlainStream(os)) {
        CGVString empty;
        for (int32_t i = 0; i < m_itemCount; ++i) {
            CGVString* text = m_strings.GetAt(i);
            os << (text != nullptr ? *text : empty);
        }
        return;
    }
    // The bytes the string's operator writes, gathered and handed over in chunks.
    constexpr size_t kChunk = 64 * 1024;
    std::string out;
    out.reserve(kChunk + 64);
    for (int32_t i = 0; i < m_itemCount; ++i) {
        CGVString* text = m_strings.GetAt(i);
        char const* chars = text != nullptr ? text->GetString() : "";
        gvlib::detail::AppendCounted(out, chars, static_cast<int32_t>(std::strlen(chars)));
        if (out.size() >= kChunk) {
            os.write(out.data(), static_cast<std::streamsize>(out.size()));
            out.clear();
        }
    }
    os.write(out.data(), static_cast<std::streamsize>(out.size()));
}

void CGVStringArray::Serialize(std::istream& is) {
    CGVLong count;
    is >> count;
    int32_t n = count.mGetValue();
    if (n <= 0)
        return;
    // Count times a string is read and added, as the original did: a read that
    // fails adds an empty string. The strings announced must fit the budget first.
    gvplatform::detail::ChargeInput(static_cast<uint64_t>(n), gvlib::detail::kStringItemCost);
    if (!IsPlain()) {
        ReadThroughAdd(is, n);
        return;
    }
    // A plain array gets its strings only once all are read, so an exception
    // (strict loading's short body, the memory exception) leaves it as it was.
    std::vector<std::unique_ptr<CGVString>> read;
    read.reserve(static_cast<size_t>(std::min(n, int32_t{1} << 16)));  // a damaged count grows as it reads
    CGVString working;
    bool plain = gvlib::detail::PlainStream(is);
    gvlib::detail::CountedText found{};
    for (int32_t i = 0; i < n; ++i) {
        // Well-formed text lying in the stream's buffer is taken in place; the
        // operator reads the rest, damaged text included.
        if (plain && gvlib::detail::PeekCounted(is, found)) {
            if (found.length > 0)
                gvplatform::detail::ChargeInput(static_cast<uint64_t>(found.length) + 1);
            auto text = std::make_unique<CGVString>();
            text->SetString(found.text, found.length);
            gvlib::detail::SkipCounted(is, found);
            read.push_back(std::move(text));
            continue;
        }
        is >> working;
        plain = plain && is.good();
        read.push_back(std::make_unique<CGVString>(working));
    }
    INT_PTR base = m_strings.GetSize();
    m_strings.SetSize(base + static_cast<INT_PTR>(read.size()));  // one step, not one per string
    for (size_t i = 0; i < read.size(); ++i)
        m_strings.SetAt(base + static_cast<INT_PTR>(i), read[i].release());
    m_itemCount += n;
}

// A derived array sees every string it is given through its own mAdd, one by
// one as they are read.
void CGVStringArray::ReadThroughAdd(std::istream& is, int32_t count) {
    CGVString working;
    for (int32_t i = 0; i < count; ++i) {
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
    gvlib::detail::ArrayHeader header = gvlib::detail::ReadArrayHeader(ar);
    // The original kept a negative item count; strict loading calls it damage.
    if (header.count < 0 && gvplatform::StrictLoading())
        gvplatform::detail::ThrowDamage(CArchiveException::badIndex, gvplatform::detail::LoadOffset(ar));
    if (header.elementSize < 0)
        LoadStringLayout(ar, header.count);
    else
        LoadRecordLayout(ar, header.elementSize, header.slots, header.count);
    m_elementSize = header.elementSize;
    m_growStep = header.growStep;
    m_allocatedSlots = header.slots;
}

void CGVStringArray::AdoptStrings(CGVStringPtrArray& read, int32_t count) {
    // The slots grow in one step: the framework's growth by at most 1024 slots
    // at a time would copy the slots once per thousand strings.
    INT_PTR base = m_strings.GetSize();
    m_strings.SetSize(base + read.GetSize());
    for (INT_PTR i = 0; i < read.GetSize(); ++i) {
        m_strings.SetAt(base + i, read.GetAt(i));
        read.SetAt(i, nullptr);
    }
    // The item count is the header's, also where it differs from the strings read:
    // the slots' range checks keep every member inside the strings there are.
    m_itemCount = count;
}

void CGVStringArray::LoadStringLayout(CArchive& ar, int32_t count) {
    CGVStringPtrArray read;
    try {
        read.Serialize(ar);
        // Every item must have its slot: strict loading calls fewer strings damage.
        if (count > read.GetSize() && gvplatform::StrictLoading())
            gvplatform::detail::ThrowDamage(CArchiveException::badIndex, gvplatform::detail::LoadOffset(ar));
        AdoptStrings(read, count);
    } catch (...) {
        for (INT_PTR i = 0; i < read.GetSize(); ++i)
            delete read.GetAt(i);
        throw;
    }
}

void CGVStringArray::LoadRecordLayout(CArchive& ar, int32_t elementSize, int32_t slots, int32_t count) {
    // A negative block could not be allocated by the original: refused in every mode.
    if (slots < 0)
        AfxThrowArchiveException(CArchiveException::badIndex);
    // Items beyond the records, or records of no size that hold no text, are the
    // original's empty strings; strict loading calls them damage.
    if ((count > slots || (elementSize == 0 && count > 0)) && gvplatform::StrictLoading())
        gvplatform::detail::ThrowDamage(CArchiveException::badIndex, gvplatform::detail::LoadOffset(ar));
    int64_t bytes = BlockBytes(elementSize, slots);
    std::unique_ptr<char, decltype(&gvplatform::detail::MemFree)> block(gvlib::detail::ReadArchiveBlock(ar, bytes),
                                                                      &gvplatform::detail::MemFree);
    CGVStringPtrArray read;
    try {
        if (count > 0) {
            gvplatform::detail::ChargeInput(static_cast<uint64_t>(count), gvlib::detail::kStringItemCost);
            read.SetSize(count);
        }
        for (int32_t i = 0; i < count; ++i)
            read.SetAt(i, RecordText(block.get(), bytes, elementSize, i));
        AdoptBlock(block.release(), slots);
        AdoptStrings(read, count);
    } catch (...) {
        for (INT_PTR i = 0; i < read.GetSize(); ++i)
            delete read.GetAt(i);
        throw;
    }
}

CGVString* CGVStringArray::RecordText(char const* block, int64_t bytes, int32_t elementSize, int32_t i) {
    // The text starts 4 bytes into its record and ends at a 0 byte or the record's
    // end; a record beyond the block reads as zero bytes (an empty string).
    auto text = std::make_unique<CGVString>();
    int64_t start = static_cast<int64_t>(elementSize) * i + 4;
    int64_t end = std::min(static_cast<int64_t>(elementSize) * (i + int64_t{1}), bytes);
    if (start < end) {
        auto const* from = block + start;
        auto const* nul = static_cast<char const*>(std::memchr(from, 0, static_cast<size_t>(end - start)));
        int64_t length = (nul != nullptr ? nul : block + end) - from;
        if (length > 0)
            text->SetString(from, static_cast<int>(length));
    }
    return text.release();
}
