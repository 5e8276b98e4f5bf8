// CGVLong: members, value-object slots and serializations.
#include "gvlib/core/GVLong.h"

#include <istream>
#include <ostream>

#include "core/stream_io.h"
#include "platform/crt_number.h"
#include "gvlib/core/GVObjectVisitor.h"
#include "gvlib/platform/afxarchive.h"
#include "gvlib/string/GVString.h"

CGVLong::~CGVLong() = default;

CGVLong& CGVLong::operator=(int32_t value) {
    m_value = value;
    return *this;
}

CGVLong& CGVLong::operator=(CGVLong const& other) {
    m_value = other.m_value;
    return *this;
}

CGVLong& CGVLong::operator|=(int32_t value) {
    m_value |= value;
    return *this;
}

CGVLong& CGVLong::operator&=(int32_t value) {
    m_value &= value;
    return *this;
}

CGVObject* CGVLong::mCopy() const { return new CGVLong(m_value); }

CGVObject* CGVLong::mNew() const { return new CGVLong(0); }

void CGVLong::mClear() { m_value = 0; }

CGVObject& CGVLong::operator=(CGVObject const& other) {
    if (auto const* number = dynamic_cast<CGVLong const*>(&other))
        m_value = number->m_value;
    else if (auto const* text = dynamic_cast<CGVString const*>(&other))
        m_value = gvplatform::detail::CrtAtol(text->GetString());
    return *this;
}

int32_t CGVLong::mCompare(CGVObject const* other) const {
    auto const* number = dynamic_cast<CGVLong const*>(other);
    if (number == nullptr)
        return -1;
    if (m_value < number->m_value)
        return -1;
    return m_value > number->m_value ? 1 : 0;
}

int32_t CGVLong::mVisit(CGVObjectVisitor* visitor, int32_t param) {
    return visitor ? visitor->mVisitLong(this, param) : 0;
}

void CGVLong::Serialize(std::ostream& os) {
    os << 'U' << m_value << ' ';
}

void CGVLong::Serialize(std::istream& is) {
    // Read straight into the value: an exhausted stream leaves it, a number that
    // cannot be read gives 0, as the standard extraction does. Strict loading
    // raises instead and keeps the value.
    int32_t value = m_value;
    is >> value;
    is.get();
    gvlib::detail::CheckBody(is);
    m_value = value;
}

void CGVLong::Serialize(CArchive& ar) {
    LONG value = m_value;
    if (ar.IsLoading()) {
        ar >> value;
        m_value = value;
    } else {
        ar << value;
    }
}
