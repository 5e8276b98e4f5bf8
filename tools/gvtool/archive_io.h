// Loading and storing a value object in the binary archive form, with the byte
// offset where loading stopped.
#pragma once

#include <gvlib/gvlib.h>

#include <string>

namespace gvtool {

/// Loads obj from `bytes`; on damage raises Failure naming the byte offset
/// where decoding stopped. Answers the number of bytes the object took.
size_t LoadArchive(std::string const& bytes, CGVObject& obj);
/// For an array archive that failed to load: the part of its layout that does
/// not fit the file ("item 3 at byte offset 57 announces 61440 bytes, ..."),
/// or empty when that cannot be told.
std::string DamagedPart(std::string const& bytes, std::string const& cls);
/// The archive form of obj.
std::string StoreArchive(CGVObject& obj);

}  // namespace gvtool
