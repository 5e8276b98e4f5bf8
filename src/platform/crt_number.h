// Internal: the original runtime's strtod and atol, which read decimal forms only.
#pragma once

#include <cstdint>

namespace gvplatform::detail {

/// strtod as the original runtime read numbers: white space, a sign, digits with
/// an optional '.', and an exponent led by e, E, d or D. No hex floats, no
/// "inf" or "nan". No number gives 0 with *end at the start of the text.
/// Overflow gives +-HUGE_VAL, underflow 0, as ISO C says.
double CrtStrtod(const char* text, char** end);

/// atol of a 32-bit long: white space, a sign, digits; clamped to the 32-bit
/// range when it overflows; 0 when no number starts the text.
int32_t CrtAtol(const char* text);

}  // namespace gvplatform::detail
