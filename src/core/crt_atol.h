// The C runtime's atol with the 32-bit long of the original platform.
#pragma once

#include <cstdint>

namespace gvlib::detail {

/// Leading white space (as isspace classifies it in the "C" locale), an optional
/// sign, then decimal digits up to the first other character; 0 when there are no
/// digits, and INT32_MAX or INT32_MIN when the number does not fit. Null gives 0.
int32_t Atol32(char const* text);

}  // namespace gvlib::detail
