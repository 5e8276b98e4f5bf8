// printf-style formatting as the original 32-bit C runtime produced it.
#pragma once

#include <cstdarg>
#include <string>

namespace gvplatform::detail {

/// Formats like the original runtime's vsprintf: 'l' and 'h' integers are 32/16-bit,
/// 'I64' and 'll' 64-bit; floating conversions round half up on 17 significant
/// digits (0.125 with "%.2f" gives 0.13) and exponents have at least three digits.
std::string FormatV(const char* format, va_list args);

/// The floating conversions alone: `conversion` is one of f, e, E, g, G.
/// `precision` below 0 means the default of 6.
std::string FormatDouble(double value, char conversion, int precision, bool alternate);

}  // namespace gvplatform::detail
