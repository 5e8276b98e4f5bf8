// Reading text-stream files object by object.
#include "gvtool/text_io.h"

#include <cctype>
#include <sstream>

#include "gvtool/commands.h"

namespace gvtool {

std::vector<std::unique_ptr<CGVObject>> ReadTextObjects(std::string const& bytes) {
    std::istringstream is(bytes);
    std::vector<std::unique_ptr<CGVObject>> objects;
    for (;;) {
        while (is.peek() != EOF && std::isspace(is.peek()))
            is.get();
        if (is.peek() == EOF)
            break;
        auto start = static_cast<size_t>(is.tellg());
        char tag = static_cast<char>(is.peek());
        std::unique_ptr<CGVObject> obj(CGVObject::mNew(is));
        if (!obj)
            throw Failure{"decoding stopped at byte offset " + std::to_string(start) + ": unknown type tag '" +
                          std::string(1, std::isprint(static_cast<unsigned char>(tag)) ? tag : '?') + "'"};
        if (is.fail()) {
            is.clear();
            auto at = is.tellg() < 0 ? bytes.size() : static_cast<size_t>(is.tellg());
            throw Failure{"decoding stopped at byte offset " + std::to_string(at) + ": the " + std::string(1, tag) +
                          " object that starts at byte " + std::to_string(start) + " is truncated or damaged"};
        }
        objects.push_back(std::move(obj));
    }
    return objects;
}

std::string WriteText(CGVObject& obj) {
    std::ostringstream os;
    os << obj;
    return os.str();
}

}  // namespace gvtool
