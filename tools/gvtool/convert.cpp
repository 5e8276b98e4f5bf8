// gvtool convert: between the text-stream form and the binary archive form.
#include <memory>

#include "gvtool/archive_io.h"
#include "gvtool/commands.h"
#include "gvtool/describe.h"
#include "gvtool/input.h"
#include "gvtool/output.h"
#include "gvtool/text_io.h"

namespace gvtool {
namespace {

struct Options {
    std::string in, out, from, to, cls;
};

// A text stream begins with a tag letter and holds no 0 byte early on; an
// archive of a string array or a buffer begins with a small binary count. A
// first byte that is a tag letter followed by binary bytes could be either.
std::string DetectForm(std::string const& bytes) {
    size_t first = bytes.find_first_not_of(" \t\r\n");
    bool tag = first != std::string::npos && bytes[first] >= 'T' && bytes[first] <= 'Y';
    bool binary = bytes.substr(0, 16).find('\0') != std::string::npos;
    if (tag && !binary)
        return "text";
    if (!tag)
        return "archive";
    throw Failure{"cannot tell whether the input is text or an archive; give --from"};
}

std::string FromText(std::string const& bytes, Options const& o) {
    auto objects = ReadTextObjects(bytes);
    if (objects.size() != 1)
        throw Failure{o.in + ": holds " + std::to_string(objects.size()) + " objects, not one"};
    CGVObject& obj = *objects.front();
    if (!o.cls.empty() && ClassOf(obj) != o.cls)
        throw Failure{o.in + ": holds a " + ClassOf(obj) + ", not a " + o.cls};
    if (ClassOf(obj) == "date")
        throw Failure{"a date has no archive form"};
    return o.to == "text" ? WriteText(obj) : StoreArchive(obj);
}

std::string FromArchive(std::string const& bytes, Options const& o) {
    if (o.cls.empty())
        throw Failure{"reading an archive needs --class"};
    if (o.cls == "date")
        throw Failure{"a date has no archive form"};
    std::unique_ptr<CGVObject> obj(NewOfClass(o.cls));
    size_t used = LoadArchive(bytes, *obj);
    if (used < bytes.size())
        throw Failure{o.in + ": byte offset " + std::to_string(used) + ": " + std::to_string(bytes.size() - used) +
                      " bytes after the " + o.cls + " were not read; the file holds another class"};
    if (o.to == "text" && o.cls == "array")
        throw Failure{"an array has no text form"};
    return o.to == "text" ? WriteText(*obj) : StoreArchive(*obj);
}

}  // namespace

void AddConvert(CLI::App& app) {
    auto* cmd = app.add_subcommand("convert", "Convert a saved object between the text and the archive form");
    static Options o;
    cmd->add_option("IN", o.in, "The file to read; - reads standard input")->required();
    cmd->add_option("OUT", o.out, "The file to write (replaced only when complete); - writes standard output")
        ->required();
    cmd->add_option("--from", o.from, "The form of IN (detected when unambiguous)")
        ->check(CLI::IsMember({"text", "archive"}));
    cmd->add_option("--to", o.to, "The form to write (the other form by default)")
        ->check(CLI::IsMember({"text", "archive"}));
    cmd->add_option("--class", o.cls, "The class of the object; needed to read an archive")
        ->check(CLI::IsMember({"string", "long", "buffer", "date", "long-array", "string-array", "array"}));
    cmd->callback([] {
        gvplatform::SetStrictLoading(true);
        std::string bytes = ReadInput(o.in, false);
        std::string from = o.from.empty() ? DetectForm(bytes) : o.from;
        if (o.to.empty())
            o.to = from == "text" ? "archive" : "text";
        std::string result = from == "text" ? FromText(bytes, o) : FromArchive(bytes, o);
        std::unique_ptr<Output> file;
        Output& out = o.out == "-" ? Stdout() : *(file = std::make_unique<Output>(o.out));
        out.Write(result);
        out.Commit();
    });
}

}  // namespace gvtool
