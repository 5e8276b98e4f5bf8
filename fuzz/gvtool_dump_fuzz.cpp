// gvtool dump on arbitrary file contents: the first byte picks the reading
// (text stream, or the binary archive of one class) and JSON or text output; the
// rest is the file. A Failure is the tool's defined answer to bad input.
#include <cstddef>
#include <cstdint>
#include <sstream>
#include <string>

#include "gvlib/platform/gvplatform.h"
#include "gvtool/commands.h"

extern "C" int LLVMFuzzerTestOneInput(uint8_t const* data, size_t size) {
    if (size == 0)
        return 0;
    // As the tool runs: strict loading names the damage, and a small budget
    // keeps a damaged count from costing more than the fuzzer's memory limit.
    gvplatform::SetStrictLoading(true);
    gvplatform::SetMemoryBudget(64u << 20);
    static char const* const kClasses[] = {"", "string", "long", "buffer", "long-array", "string-array", "array"};
    std::string archiveClass = kClasses[(data[0] & 0x7F) % 7];
    bool json = (data[0] & 0x80) != 0;
    std::string bytes(reinterpret_cast<char const*>(data + 1), size - 1);
    std::ostringstream out, notes;
    try {
        gvtool::Dump(bytes, archiveClass, json, out, notes);
    } catch (gvtool::Failure const&) {
        // bad input, reported with its byte offset
    }
    return 0;
}
