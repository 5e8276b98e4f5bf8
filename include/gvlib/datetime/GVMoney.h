// CGVMoney: a money amount in whole units and hundredths.
#pragma once

#include <cstdint>

#include "gvlib/core/GVObject.h"
#include "gvlib/platform/export.h"

class CGVString;

/// Whole units and hundredths, not kept in a normal form: -0.25 + -0.90 holds
/// 0 and -115. The arithmetic keeps the exact number of hundredths with 32-bit
/// wrap-around; everything that reads the amount as a number goes through
/// mGetAmount(). No text stream or archive form.
class GVLIB_API CGVMoney : public CGVObject {
public:
    CGVMoney();
    CGVMoney(int32_t amount);
    CGVMoney(double amount);
    /// The text read as the runtime's strtod reads it: "7.5xyz" is 7.50, "abc" 0.
    CGVMoney(CGVString const& text);
    CGVMoney(CGVMoney const& other);
    ~CGVMoney() override;

    CGVMoney& operator=(CGVMoney const& other);

    double mGetAmount() const;
    /// Truncates to hundredths within +-21474836.48: 0.29 holds 0 and 28.
    /// Returns `amount`.
    double mSetAmount(double amount);
    int32_t mGetWholeAmount() const;
    int32_t mGetFractionalAmount() const;
    int32_t mSetWholeAmount(int32_t whole);
    /// Stores any number, unchecked.
    int32_t mSetFractionalAmount(int32_t fraction);

    // A new heap result owned by the caller. Division by 0 (and the one
    // overflowing division) answers an unchanged copy.
    CGVMoney& operator+(CGVMoney const& other);
    CGVMoney& operator-(CGVMoney const& other);
    CGVMoney& operator*(int32_t factor);
    CGVMoney& operator/(int32_t divisor);
    CGVMoney& operator+=(CGVMoney const& other);
    CGVMoney& operator-=(CGVMoney const& other);
    CGVMoney& operator*=(int32_t factor);
    CGVMoney& operator/=(int32_t divisor);

    int operator==(CGVMoney const& other);
    int operator!=(CGVMoney const& other);
    int operator<(CGVMoney const& other);
    int operator<=(CGVMoney const& other);
    int operator>(CGVMoney const& other);
    int operator>=(CGVMoney const& other);

    /// Truncated toward zero: 3.99 gives 3, -3.99 gives -3.
    operator int32_t() const;
    operator double() const;
    /// "%.2f" when there are hundredths ("12.50", "-0.25"), else "%d" ("12").
    operator CGVString() const;

    CGVObject* mCopy() const override;
    CGVObject* mNew() const override;
    /// Copies another money value; other classes change nothing.
    CGVObject& operator=(CGVObject const& other) override;
    /// -1, 0, 1 by amount; -1 for a null or a non-money object.
    int32_t mCompare(CGVObject const* other) const override;
    void mConvertFromDBVariant(CDBVariant const& variant) override;
    /// VT_CY goes through the user locale's text and strtod, so a decimal
    /// comma loses the hundredths as it did on the original.
    void mConvertFromOleVariant(COleVariant const& variant) override;
    /// Always VT_R8.
    void mConvertToOleVariant(COleVariant* variant) const override;

private:
    int32_t wholeAmount;
    int32_t fractionalAmount;
};
