// CString::Format and AppendFormat with the runtime's conversions: the input
// spells one conversion after another (flags, width, precision, size prefix and
// type, then a value), and each is formatted with an argument of the type the
// conversion takes, so every format the runtime accepts is reached without the
// undefined behaviour of a mismatched argument.
#include <gvlib/gvlib.h>

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>

#include "byte_reader.h"

namespace {

using Reader = ByteReader;

// One conversion directive without its type letter: flags, width, precision
// (bounded, so the output stays small) and a size prefix fit for `kind`.
std::string Directive(Reader& in, char kind) {
    static char const kFlags[] = "-+ #0";
    std::string directive = "%";
    uint8_t flags = in.Byte();
    for (int i = 0; i < 5; ++i)
        if (flags & (1 << i))
            directive += kFlags[i];
    if (flags & 0x20)
        directive += std::to_string(in.Byte() % 40);
    if (flags & 0x40)
        directive += "." + std::to_string(in.Byte() % 40);
    if (kind == 'i' && (flags & 0x80))
        directive += (in.Byte() & 1) ? "I64" : "l";
    else if (kind == 'i' && (in.Byte() & 3) == 1)
        directive += "h";
    return directive;
}

void One(CString& out, Reader& in) {
    static char const kInts[] = "diouxX";
    static char const kReals[] = "feEgG";
    uint8_t pick = in.Byte();
    switch (pick % 5) {
    case 0: {
        std::string directive = Directive(in, 'i');
        directive += kInts[in.Byte() % 6];
        uint64_t v = in.Bits(8);
        if (directive.find("I64") != std::string::npos)
            out.AppendFormat(directive.c_str(), static_cast<long long>(v));
        else
            out.AppendFormat(directive.c_str(), static_cast<int32_t>(v));
        break;
    }
    case 1: {
        std::string directive = Directive(in, 'r') + kReals[in.Byte() % 5];
        double d;
        uint64_t bits = in.Bits(8);
        std::memcpy(&d, &bits, sizeof d);  // any double: NaNs, infinities, denormals
        out.AppendFormat(directive.c_str(), d);
        break;
    }
    case 2: {
        std::string directive = Directive(in, 's') + "s";
        char text[32] = {};
        for (size_t i = 0; i + 1 < sizeof text && in.size > 0; ++i)
            if ((text[i] = static_cast<char>(in.Byte())) == 0)
                break;
        out.AppendFormat(directive.c_str(), (pick & 0x80) ? text : nullptr);
        break;
    }
    case 3:
        out.AppendFormat((Directive(in, 'c') + "c").c_str(), static_cast<int>(in.Byte()));
        break;
    default:
        out.Format("%s%%", out.Left(in.Byte()).GetString());
        break;
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(uint8_t const* data, size_t size) {
    Reader in{data, size};
    CString out;
    for (int steps = 0; in.size > 0 && steps < 64; ++steps) {
        One(out, in);
        if (out.GetLength() > 1 << 16)
            out.Empty();
    }
    if (static_cast<size_t>(out.GetLength()) < std::strlen(out.GetString()))
        __builtin_trap();  // the length must cover the text up to its terminator
    return 0;
}
