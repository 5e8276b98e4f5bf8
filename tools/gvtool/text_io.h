// Reading a text-stream file object by object, with the byte offset, the
// object and the item where decoding stopped.
#pragma once

#include <gvlib/gvlib.h>

#include <istream>
#include <memory>
#include <string>
#include <vector>

namespace gvtool {

/// Reads the objects of a text stream one at a time, so that a long file is
/// never held whole.
class TextReader {
public:
    explicit TextReader(std::istream& in) : in_(in) {}
    /// The next object, or null at the end. Damage raises Failure naming the
    /// byte offset, the object's index and, inside an array, the item's index.
    std::unique_ptr<CGVObject> Next();
    /// How many objects were read.
    size_t Count() const { return count_; }

private:
    size_t Offset();
    std::istream& in_;
    size_t count_ = 0;
};

/// Every object of `bytes` (see TextReader).
std::vector<std::unique_ptr<CGVObject>> ReadTextObjects(std::string const& bytes);
/// The text-stream form of obj.
std::string WriteText(CGVObject& obj);

}  // namespace gvtool
