// Reading a text-stream file object by object, with the byte offset, the
// object and the item where decoding stopped.
#pragma once

#include <gvlib/gvlib.h>

#include <functional>
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
    /// Called now and then with the number of objects and array items read so far.
    void OnProgress(std::function<void(size_t)> progress) { progress_ = std::move(progress); }

private:
    size_t Offset();
    std::istream& in_;
    size_t count_ = 0;
    std::function<void(size_t)> progress_;
};

/// Every object of `bytes` (see TextReader).
std::vector<std::unique_ptr<CGVObject>> ReadTextObjects(std::string const& bytes);
/// The text-stream form of obj.
std::string WriteText(CGVObject& obj);

}  // namespace gvtool
