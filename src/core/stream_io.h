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

/// True where the stream formats and parses numbers the plain way (decimal, no
/// sign or width, classic locale, white space skipped, nothing tied), so that
/// writing or reading the counted text by hand gives what the operators give.
bool PlainStream(std::ios const& s);

/// Appends one counted text as the string's operator writes it: "T<n> <text> ".
void AppendCounted(std::string& out, char const* text, int32_t length);

/// A counted text lying whole in the stream's buffered input, as read in place.
struct CountedText {
    char const* text;
    int32_t length;
    int32_t consumed;  // bytes from the read position through the closing byte
};

/// Finds the next counted text ("<tag><digits><byte><text><byte>") in the bytes
/// the stream has buffered, without consuming them. False where anything would
/// make the extraction operators take another path (white space before the
/// tag or the number, a sign, a number out of range, bytes not yet buffered):
/// the caller then reads through the operators. Call only on a PlainStream.
bool PeekCounted(std::istream& is, CountedText& out);

/// Consumes what PeekCounted found.
void SkipCounted(std::istream& is, CountedText const& found);

}  // namespace gvlib::detail
