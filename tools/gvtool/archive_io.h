// Loading and storing a value object in the binary archive form, with the byte
// offset where loading stopped.
#pragma once

#include <gvlib/gvlib.h>

#include <string>

namespace gvtool {

/// Loads obj from `bytes`; on damage raises Failure naming the byte offset
/// where decoding stopped. Answers the number of bytes the object took.
size_t LoadArchive(std::string const& bytes, CGVObject& obj);
/// The archive form of obj.
std::string StoreArchive(CGVObject& obj);

}  // namespace gvtool
