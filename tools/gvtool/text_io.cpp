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

// Where inside an array the damage lies: the items the array holds were read whole.
std::string ItemOf(CGVObject* obj) {
    int32_t items = -1;
    if (auto* s = dynamic_cast<CGVStringArray*>(obj))
        items = s->mGetNumItems();
    else if (auto* l = dynamic_cast<CGVLongArray*>(obj))
        items = l->mGetNumItems();
    return items < 0 ? std::string() : ", item " + std::to_string(items);
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
    try {
        obj.reset(CGVObject::mNew(in_));
    } catch (CArchiveException const&) {
        throw Failure{"decoding stopped at byte offset " + std::to_string(Offset()) + " in " + where +
                      ": it is truncated or damaged"};
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
                      ClassOf(*obj) + ItemOf(obj.get()) + ": truncated or damaged"};
    ++count_;
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
