// CGVLong: one 32-bit signed integer as a value object.
#pragma once

#include <cstdint>

#include "gvlib/core/GVObject.h"
#include "gvlib/platform/export.h"

/// A 32-bit signed integer that takes part in generic copying, comparison,
/// visiting, variant conversion and serialization. The arrays write their counts
/// and integer elements with it in the text stream format ("U42 ").
class GVLIB_API CGVLong : public CGVObject {
public:
    CGVLong(int32_t value = 0) : m_value(value) {}
    CGVLong(CGVLong const& other) : CGVObject(other), m_value(other.m_value) {}
    ~CGVLong() override;

    CGVLong& operator=(int32_t value);
    /// Slot 13: copies the other's value.
    virtual CGVLong& operator=(CGVLong const& other);
    CGVLong& operator|=(int32_t value);
    CGVLong& operator&=(int32_t value);

    int32_t mGetValue() const { return m_value; }
    operator int32_t() const { return m_value; }
    void mSetValue(int32_t value) { m_value = value; }

    CGVObject* mCopy() const override;
    /// A CGVLong holding 0, whatever this one holds.
    CGVObject* mNew() const override;
    void mClear() override;
    /// From a CGVLong its value; from a CGVString (or path) the text read as the C
    /// runtime's atol reads it ("  42abc" ⇒ 42, "abc" ⇒ 0); any other class changes nothing.
    CGVObject& operator=(CGVObject const& other) override;
    /// -1 for another class; otherwise -1, 0 or 1 by signed order.
    int32_t mCompare(CGVObject const* other) const override;
    int32_t mVisit(CGVObjectVisitor* visitor, int32_t param) override;
    /// DBVT_BOOL, DBVT_UCHAR, DBVT_SHORT and DBVT_LONG; other types change nothing.
    void mConvertFromDBVariant(CDBVariant const& variant) override;
    /// VT_I4, VT_I2, VT_UI1, VT_R4 (truncated toward zero) and VT_BOOL (1 or 0);
    /// other types, VT_R8 included, change nothing.
    void mConvertFromOleVariant(COleVariant const& variant) override;
    /// Gives a VT_I4.
    void mConvertToOleVariant(COleVariant* variant) const override;
    /// "U", the value, a space: -15 ⇒ "U-15 ".
    void Serialize(std::ostream& os) override;
    void Serialize(std::istream& is) override;
    /// Four bytes, little-endian: 1 ⇒ 01 00 00 00.
    void Serialize(CArchive& ar) override;
    using CGVObject::mNew;

private:
    int32_t m_value;
};
