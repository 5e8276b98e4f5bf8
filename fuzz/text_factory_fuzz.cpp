// Feeds arbitrary bytes to the text stream factory and to each class's reader,
// then writes back whatever was read.
#include <gvlib/gvlib.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <sstream>
#include <string>

namespace {

void WriteBack(CGVObject& obj) {
    std::ostringstream os;
    os << obj;
}

// Every object the factory can read from the stream, one after another.
void ReadAll(std::string const& input) {
    std::istringstream is(input);
    for (int i = 0; i < 256; ++i) {
        std::unique_ptr<CGVObject> obj(CGVObject::mNew(is));
        if (!obj)
            break;
        WriteBack(*obj);
    }
}

// The same bytes read as the body of one known class, as operator>> does.
template <typename T>
void ReadAs(std::string const& input) {
    std::istringstream is(input);
    T obj;
    is >> obj;
    WriteBack(obj);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(uint8_t const* data, size_t size) {
    std::string input(reinterpret_cast<char const*>(data), size);
    ReadAll(input);
    ReadAs<CGVString>(input);
    ReadAs<CGVLong>(input);
    ReadAs<CGVBuffer>(input);
    ReadAs<CGVDate>(input);
    ReadAs<CGVStringArray>(input);
    ReadAs<CGVLongArray>(input);
    return 0;
}
