// The C runtime's atol with the 32-bit long of the original platform.
#include "core/crt_atol.h"

#include <climits>

namespace gvlib::detail {

namespace {

bool IsCSpace(char c) {
    return c == ' ' || c == '\t' || c == '\n' || c == '\v' || c == '\f' || c == '\r';
}

}  // namespace

int32_t Atol32(char const* text) {
    if (text == nullptr)
        return 0;
    while (IsCSpace(*text))
        ++text;
    bool negative = false;
    if (*text == '+' || *text == '-')
        negative = *text++ == '-';
    // The magnitude saturates one past INT32_MAX so that INT32_MIN stays reachable
    // and an arbitrarily long run of digits cannot overflow the accumulator.
    constexpr int64_t kLimit = int64_t{INT32_MAX} + 1;
    int64_t magnitude = 0;
    for (; *text >= '0' && *text <= '9'; ++text) {
        magnitude = magnitude * 10 + (*text - '0');
        if (magnitude > kLimit)
            magnitude = kLimit + 1;
    }
    if (negative)
        return magnitude > kLimit ? INT32_MIN : static_cast<int32_t>(-magnitude);
    return magnitude > INT32_MAX ? INT32_MAX : static_cast<int32_t>(magnitude);
}

}  // namespace gvlib::detail
