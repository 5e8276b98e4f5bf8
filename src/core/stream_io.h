// Helpers for the text stream bodies.
#pragma once

#include <cstdint>
#include <iosfwd>
#include <string>

namespace gvlib::detail {

/// Reads up to `count` bytes raw, in bounded chunks, so that a damaged length
/// announcing more than the stream holds costs no more memory than what is there.
std::string ReadRaw(std::istream& is, int64_t count);

/// Under strict loading, a body the stream could not deliver whole raises
/// CArchiveException endOfFile with the stream's offset; otherwise nothing.
void CheckBody(std::istream& is, bool whole = true);

}  // namespace gvlib::detail
