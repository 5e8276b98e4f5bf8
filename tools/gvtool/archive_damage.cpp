// Where in an archive's layout the damage lies: the library reports only that
// loading stopped, so the tool walks the array layouts itself to name the item
// whose length runs past the end.
#include "gvtool/archive_io.h"

#include <cstdint>

namespace gvtool {
namespace {

uint32_t Le(std::string const& b, size_t at, int width) {
    uint32_t v = 0;
    for (int i = width - 1; i >= 0; --i)
        v = (v << 8) | static_cast<unsigned char>(b[at + static_cast<size_t>(i)]);
    return v;
}

std::string Offset(size_t at) { return " at byte offset " + std::to_string(at); }

// The length prefix of a saved string: one byte, 0xFF and 16 bits, or 0xFF
// 0xFFFF and 32 bits; 0xFF 0xFFFE first marks wide characters. Answers the
// prefix's size, or 0 when the file ends inside it.
size_t Prefix(std::string const& b, size_t at, uint64_t& bytes) {
    size_t used = 0;
    int charSize = 1;
    if (at + 3 <= b.size() && Le(b, at, 1) == 0xFF && Le(b, at + 1, 2) == 0xFFFE)
        used = 3, charSize = 2;
    if (at + used >= b.size())
        return 0;
    uint64_t length = Le(b, at + used, 1);
    if (length == 0xFF) {
        if (at + used + 3 > b.size())
            return 0;
        length = Le(b, at + used + 1, 2);
        used += 2;
        if (length == 0xFFFF) {
            if (at + used + 5 > b.size())
                return 0;
            length = Le(b, at + used + 1, 4);
            used += 4;
        }
    }
    bytes = length * static_cast<uint64_t>(charSize);
    return used + 1;
}

std::string StringItems(std::string const& b) {
    uint32_t count = Le(b, 14, 4);
    size_t at = 18;
    for (uint32_t i = 0; i < count; ++i) {
        uint64_t bytes = 0;
        size_t prefix = at < b.size() ? Prefix(b, at, bytes) : 0;
        if (prefix == 0)
            return "item " + std::to_string(i) + " of the " + std::to_string(count) + " announced" + Offset(at) +
                   " is missing";
        if (at + prefix + bytes > b.size())
            return "item " + std::to_string(i) + Offset(at) + " announces " + std::to_string(bytes) +
                   " bytes, more than the file holds";
        at += prefix + static_cast<size_t>(bytes);
    }
    return "";
}

}  // namespace

std::string DamagedPart(std::string const& bytes, std::string const& cls) {
    if (cls != "string-array" && cls != "long-array" && cls != "array")
        return "";
    if (bytes.size() < 14)
        return "the header (14 bytes) is incomplete";
    auto elementSize = static_cast<int32_t>(Le(bytes, 0, 4));
    if (elementSize < 0)
        return bytes.size() < 18 ? "the string count is incomplete" : StringItems(bytes);
    uint64_t block = static_cast<uint64_t>(elementSize) * static_cast<int32_t>(Le(bytes, 6, 4));
    if (14 + block > bytes.size())
        return "the element block" + Offset(14) + " announces " + std::to_string(block) +
               " bytes, more than the file holds";
    return "";
}

}  // namespace gvtool
