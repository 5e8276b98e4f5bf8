// Windows-1252, the ANSI code page, as tables drawn once from the ICU converter:
// the fast path of the code-page conversions and the decoder of the locale comparison.
#pragma once

#include <array>
#include <cstddef>
#include <string>

namespace gvplatform::detail {

/// The UTF-16 unit of every byte of Windows-1252. The five bytes the page leaves
/// undefined (0x81, 0x8D, 0x8F, 0x90, 0x9D) map to the C1 controls of the same
/// value, as on Windows, so every byte survives a round trip.
const std::array<char16_t, 256>& Cp1252ToUtf16Table();

/// The Windows-1252 byte for a code point, or -1 when the page has none.
/// Only round-trip mappings count: U+0101 has no byte, although 'a' looks like it.
int Utf32ToCp1252(char32_t c) noexcept;

/// Appends the UTF-16 form of `count` Windows-1252 bytes to `out`.
void AppendCp1252AsUtf16(const char* text, std::size_t count, std::u16string& out);

}  // namespace gvplatform::detail
