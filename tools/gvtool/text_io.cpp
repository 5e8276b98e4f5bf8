// Reading text-stream files object by object.
#include "gvtool/text_io.h"

#include <cctype>
#include <cstdio>
#include <sstream>

#include "gvtool/commands.h"
#include "gvtool/describe.h"

namespace gvtool {
namespace {

std::string TagText(char tag) {
    auto c = static_cast<unsigned char>(tag);
    if (std::isprint(c))
        return std::string("'") + tag + "'";
    char buf[8];
    std::snprintf(buf, sizeof buf, "0x%02x", c);
    return buf;
}

// An array body read item by item, as the library reads it, but stopping at
// the first item the stream could not give: the library would go on adding
// empty items up to the announced count, which hides where the damage lies and
// lets a damaged count make a huge array. Answers the damaged item's index, or
// -1 when the whole body was read.
template <class Array, class Item>
int32_t ReadItems(std::istream& in, Array& array, std::function<void(size_t)> const& progress) {
    CGVLong count(0);
    if (!(in >> count))
        return -1;
    for (int32_t i = 0; i < count.mGetValue(); ++i) {
        Item item;
        // Strict loading raises on a short body; either way the item is the damage.
        try {
            if (!(in >> item))
                return i;
        } catch (CArchiveException const&) {
            in.setstate(std::ios::failbit);
            return i;
        }
        array.mAdd(&item);
        if (progress && (i & 0xFFFF) == 0)
            progress(static_cast<size_t>(i));
    }
    return -1;
}

std::unique_ptr<CGVObject> ReadArray(std::istream& in, char tag, int32_t& damagedItem,
                                     std::function<void(size_t)> const& progress) {
    in.get();  // the tag
    if (tag == 'X') {
        auto array = std::make_unique<CGVStringArray>();
        damagedItem = ReadItems<CGVStringArray, CGVString>(in, *array, progress);
        return array;
    }
    auto array = std::make_unique<CGVLongArray>();
    damagedItem = ReadItems<CGVLongArray, CGVLong>(in, *array, progress);
    return array;
}

}  // namespace

size_t TextReader::Offset() {
    in_.clear();
    auto at = in_.tellg();
    return at < 0 ? 0 : static_cast<size_t>(at);
}

std::unique_ptr<CGVObject> TextReader::Next() {
    while (in_.peek() != EOF && std::isspace(in_.peek()))
        in_.get();
    if (in_.peek() == EOF)
        return nullptr;
    size_t start = Offset();
    char tag = static_cast<char>(in_.peek());
    std::string where = "object " + std::to_string(count_) + " (starting at byte " + std::to_string(start) + ")";
    std::unique_ptr<CGVObject> obj;
    int32_t damagedItem = -1;
    try {
        if (tag == 'X' || tag == 'Y')
            obj = ReadArray(in_, tag, damagedItem, progress_);
        else
            obj.reset(CGVObject::mNew(in_));
    } catch (CArchiveException const&) {
        throw Failure{"decoding stopped at byte offset " + std::to_string(Offset()) + " in " + where +
                      ": it is truncated or damaged"};
    } catch (CMemoryException const&) {
        throw Failure{"decoding stopped at byte offset " + std::to_string(Offset()) + " in " + where +
                      ": it announces more memory than may be allocated (a damaged length or count?)"};
    }
    if (!obj) {
        std::string hint = count_ == 0 && !std::isprint(static_cast<unsigned char>(tag))
                               ? "; this looks like binary data: read an archive with --archive CLASS (string, long, "
                                 "buffer, long-array, string-array, array)"
                               : "";
        throw Failure{"decoding stopped at byte offset " + std::to_string(start) + ": unknown type tag " +
                      TagText(tag) + hint};
    }
    if (in_.fail())
        throw Failure{"decoding stopped at byte offset " + std::to_string(Offset()) + " in " + where + ", a " +
                      ClassOf(*obj) + (damagedItem < 0 ? "" : ", item " + std::to_string(damagedItem)) +
                      ": truncated or damaged"};
    if ((++count_ & 0xFFFF) == 0 && progress_)
        progress_(count_);
    return obj;
}

std::vector<std::unique_ptr<CGVObject>> ReadTextObjects(std::string const& bytes) {
    std::istringstream is(bytes);
    TextReader reader(is);
    std::vector<std::unique_ptr<CGVObject>> objects;
    while (auto obj = reader.Next())
        objects.push_back(std::move(obj));
    return objects;
}

std::string WriteText(CGVObject& obj) {
    std::ostringstream os;
    os << obj;
    return os.str();
}

}  // namespace gvtool
