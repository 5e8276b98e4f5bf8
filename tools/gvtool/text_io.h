// Reading every object of a text-stream file, with the byte offset where
// decoding stopped.
#pragma once

#include <gvlib/gvlib.h>

#include <memory>
#include <string>
#include <vector>

namespace gvtool {

/// Every object of `bytes`, one after another; a Failure names the byte offset
/// of an unknown tag or of a body that could not be read.
std::vector<std::unique_ptr<CGVObject>> ReadTextObjects(std::string const& bytes);
/// The text-stream form of obj.
std::string WriteText(CGVObject& obj);

}  // namespace gvtool
