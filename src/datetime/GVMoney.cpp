// CGVMoney: the amount, its arithmetic and comparisons.
#include "gvlib/datetime/GVMoney.h"

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

namespace {

// The arithmetic on the two fields, shared by the binary operators (which put
// the answer into a new heap object) and the compound ones (which store it in
// place and need no allocation).
struct Amount {
    int32_t whole;
    int32_t fraction;
};

Amount Of(CGVMoney const& m) { return {m.mGetWholeAmount(), m.mGetFractionalAmount()}; }

CGVMoney& Store(CGVMoney& m, Amount a) {
    m.mSetWholeAmount(a.whole);
    m.mSetFractionalAmount(a.fraction);
    return m;
}

CGVMoney& NewMoney(Amount a) { return Store(*new CGVMoney, a); }

// One carry of 100 at most, and none for a negative sum of hundredths.
Amount Sum(Amount a, Amount b) {
    const int32_t sum = Wrap(int64_t{a.fraction} + b.fraction);
    const int32_t whole = Wrap(int64_t{a.whole} + b.whole);
    if (sum < 100)
        return {whole, sum};
    return {Wrap(int64_t{whole} + 1), sum - 100};
}

Amount Difference(Amount a, Amount b) {
    const int32_t whole = Wrap(int64_t{a.whole} - b.whole);
    const int32_t fraction = Wrap(int64_t{a.fraction} - b.fraction);
    if (b.fraction <= a.fraction)
        return {whole, fraction};
    return {Wrap(int64_t{whole} - 1), Wrap(int64_t{fraction} + 100)};
}

Amount Product(Amount a, int32_t factor) {
    const int32_t f = Wrap(int64_t{a.fraction} * factor);
    const int32_t carry = f / 100;
    return {Wrap(int64_t{Wrap(int64_t{a.whole} * factor)} + carry), f - carry * 100};
}

// Outside the contract: division by 0 and INT32_MIN / -1, which traps on x86.
bool Divides(int32_t total, int32_t divisor) { return divisor != 0 && !(total == INT32_MIN && divisor == -1); }

int32_t Total(Amount a) { return Wrap(int64_t{a.whole} * 100 + a.fraction); }

Amount Quotient(int32_t total, int32_t divisor) {
    const int32_t q = total / divisor;
    // The original took fmod(q, 100.0); on a 32-bit integer that is exactly the
    // remainder, sign included, without the library call.
    return {q / 100, q % 100};
}

Amount Quotient(Amount a, int32_t divisor) { return Divides(Total(a), divisor) ? Quotient(Total(a), divisor) : a; }

// The amount answered unchanged, apart from the division's path: copied there
// as one pair, its two fields would be read as one 8-byte load, which stalls
// on the two 4-byte stores of the operator that usually made the amount just before.
[[gnu::noinline, gnu::cold]] CGVMoney& UnchangedCopy(CGVMoney const& m) { return NewMoney(Of(m)); }

}  // namespace

CGVMoney& CGVMoney::operator+(CGVMoney const& other) { return NewMoney(Sum(Of(*this), Of(other))); }
CGVMoney& CGVMoney::operator-(CGVMoney const& other) { return NewMoney(Difference(Of(*this), Of(other))); }
CGVMoney& CGVMoney::operator*(int32_t factor) { return NewMoney(Product(Of(*this), factor)); }
CGVMoney& CGVMoney::operator/(int32_t divisor) {
    const int32_t total = Total(Of(*this));
    return Divides(total, divisor) ? NewMoney(Quotient(total, divisor)) : UnchangedCopy(*this);
}

CGVMoney& CGVMoney::operator+=(CGVMoney const& other) { return Store(*this, Sum(Of(*this), Of(other))); }
CGVMoney& CGVMoney::operator-=(CGVMoney const& other) { return Store(*this, Difference(Of(*this), Of(other))); }
CGVMoney& CGVMoney::operator*=(int32_t factor) { return Store(*this, Product(Of(*this), factor)); }
CGVMoney& CGVMoney::operator/=(int32_t divisor) { return Store(*this, Quotient(Of(*this), divisor)); }

int CGVMoney::operator==(CGVMoney const& other) { return mGetAmount() == other.mGetAmount(); }
int CGVMoney::operator!=(CGVMoney const& other) { return mGetAmount() != other.mGetAmount(); }
int CGVMoney::operator<(CGVMoney const& other) { return mGetAmount() < other.mGetAmount(); }
int CGVMoney::operator<=(CGVMoney const& other) { return mGetAmount() <= other.mGetAmount(); }
int CGVMoney::operator>(CGVMoney const& other) { return mGetAmount() > other.mGetAmount(); }
int CGVMoney::operator>=(CGVMoney const& other) { return mGetAmount() >= other.mGetAmount(); }

CGVMoney::operator int32_t() const { return TruncToInt32(mGetAmount()); }
CGVMoney::operator double() const { return mGetAmount(); }
