// CGVMoney: the amount, its arithmetic and comparisons.
#include "gvlib/datetime/GVMoney.h"

#include <cmath>
#include <cstdint>

namespace {

// Double to 32-bit integer as the original's x86 conversion did: out of range
// and NaN give the "integer indefinite" 0x80000000 instead of undefined behaviour.
int32_t TruncToInt32(double value) {
    if (!(value > -2147483649.0 && value < 2147483648.0))
        return INT32_MIN;
    return static_cast<int32_t>(value);
}

// 32-bit wrap-around, as the original's arithmetic had it.
int32_t Wrap(int64_t value) { return static_cast<int32_t>(static_cast<uint32_t>(value)); }

}  // namespace

CGVMoney::CGVMoney() : wholeAmount(0), fractionalAmount(0) {}
CGVMoney::CGVMoney(int32_t amount) : CGVMoney() { mSetAmount(amount); }
CGVMoney::CGVMoney(double amount) : CGVMoney() { mSetAmount(amount); }
CGVMoney::CGVMoney(CGVMoney const& other)
    : CGVObject(other), wholeAmount(other.wholeAmount), fractionalAmount(other.fractionalAmount) {}
CGVMoney::~CGVMoney() = default;

CGVMoney& CGVMoney::operator=(CGVMoney const& other) {
    wholeAmount = other.wholeAmount;
    fractionalAmount = other.fractionalAmount;
    return *this;
}

double CGVMoney::mGetAmount() const { return fractionalAmount / 100.0 + wholeAmount; }

double CGVMoney::mSetAmount(double amount) {
    if (amount >= -21474836.48 && amount <= 21474836.47) {
        // Truncation, not rounding: 0.29 * 100.0 lies just below 29.
        const int32_t hundredths = TruncToInt32(amount * 100.0);
        wholeAmount = hundredths / 100;
        fractionalAmount = hundredths % 100;
    } else {
        wholeAmount = TruncToInt32(amount);
        fractionalAmount = TruncToInt32((amount - wholeAmount) * 100.0);
    }
    return amount;
}

int32_t CGVMoney::mGetWholeAmount() const { return wholeAmount; }
int32_t CGVMoney::mGetFractionalAmount() const { return fractionalAmount; }

int32_t CGVMoney::mSetWholeAmount(int32_t whole) {
    wholeAmount = whole;
    return whole;
}

int32_t CGVMoney::mSetFractionalAmount(int32_t fraction) {
    fractionalAmount = fraction;
    return fraction;
}

// One carry of 100 at most, and none for a negative sum of hundredths.
CGVMoney& CGVMoney::operator+(CGVMoney const& other) {
    CGVMoney* result = new CGVMoney;
    const int32_t sum = Wrap(int64_t{fractionalAmount} + other.fractionalAmount);
    const int32_t whole = Wrap(int64_t{wholeAmount} + other.wholeAmount);
    if (sum < 100) {
        result->wholeAmount = whole;
        result->fractionalAmount = sum;
    } else {
        result->wholeAmount = Wrap(int64_t{whole} + 1);
        result->fractionalAmount = sum - 100;
    }
    return *result;
}

CGVMoney& CGVMoney::operator-(CGVMoney const& other) {
    CGVMoney* result = new CGVMoney;
    const int32_t whole = Wrap(int64_t{wholeAmount} - other.wholeAmount);
    const int32_t fraction = Wrap(int64_t{fractionalAmount} - other.fractionalAmount);
    if (other.fractionalAmount <= fractionalAmount) {
        result->wholeAmount = whole;
        result->fractionalAmount = fraction;
    } else {
        result->wholeAmount = Wrap(int64_t{whole} - 1);
        result->fractionalAmount = Wrap(int64_t{fraction} + 100);
    }
    return *result;
}

CGVMoney& CGVMoney::operator*(int32_t factor) {
    CGVMoney* result = new CGVMoney;
    const int32_t f = Wrap(int64_t{fractionalAmount} * factor);
    const int32_t carry = f / 100;
    result->fractionalAmount = f - carry * 100;
    result->wholeAmount = Wrap(int64_t{Wrap(int64_t{wholeAmount} * factor)} + carry);
    return *result;
}

CGVMoney& CGVMoney::operator/(int32_t divisor) {
    const int32_t total = Wrap(int64_t{wholeAmount} * 100 + fractionalAmount);
    // Outside the contract: division by 0 and INT32_MIN / -1, which traps on x86.
    if (divisor == 0 || (total == INT32_MIN && divisor == -1))
        return *new CGVMoney(*this);
    CGVMoney* result = new CGVMoney;
    const int32_t q = total / divisor;
    result->fractionalAmount = static_cast<int32_t>(std::fmod(q, 100.0));
    result->wholeAmount = q / 100;
    return *result;
}

// The compound forms take the value of the binary form and free its result.
namespace {

template <typename Op>
CGVMoney& Assign(CGVMoney& self, Op op) {
    CGVMoney& result = op();
    self = result;
    delete &result;
    return self;
}

}  // namespace

CGVMoney& CGVMoney::operator+=(CGVMoney const& other) {
    return Assign(*this, [&]() -> CGVMoney& { return *this + other; });
}
CGVMoney& CGVMoney::operator-=(CGVMoney const& other) {
    return Assign(*this, [&]() -> CGVMoney& { return *this - other; });
}
CGVMoney& CGVMoney::operator*=(int32_t factor) {
    return Assign(*this, [&]() -> CGVMoney& { return *this * factor; });
}
CGVMoney& CGVMoney::operator/=(int32_t divisor) {
    return Assign(*this, [&]() -> CGVMoney& { return *this / divisor; });
}

int CGVMoney::operator==(CGVMoney const& other) { return mGetAmount() == other.mGetAmount(); }
int CGVMoney::operator!=(CGVMoney const& other) { return mGetAmount() != other.mGetAmount(); }
int CGVMoney::operator<(CGVMoney const& other) { return mGetAmount() < other.mGetAmount(); }
int CGVMoney::operator<=(CGVMoney const& other) { return mGetAmount() <= other.mGetAmount(); }
int CGVMoney::operator>(CGVMoney const& other) { return mGetAmount() > other.mGetAmount(); }
int CGVMoney::operator>=(CGVMoney const& other) { return mGetAmount() >= other.mGetAmount(); }

CGVMoney::operator int32_t() const { return TruncToInt32(mGetAmount()); }
CGVMoney::operator double() const { return mGetAmount(); }
