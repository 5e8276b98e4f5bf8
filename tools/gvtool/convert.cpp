// gvtool convert: between the text-stream form and the binary archive form.
#include <memory>

#include "gvtool/archive_io.h"
#include "gvtool/commands.h"
#include "gvtool/describe.h"
#include "gvtool/text_io.h"

namespace gvtool {

void AddConvert(CLI::App& app) {
    auto* cmd = app.add_subcommand("convert", "Convert a saved object between the text and the archive form");
    static std::string in, out, to, cls;
    cmd->add_option("IN", in, "The file to read")->required();
    cmd->add_option("OUT", out, "The file to write")->required();
    cmd->add_option("--to", to, "The form to write")->required()->check(CLI::IsMember({"text", "archive"}));
    cmd->add_option("--class", cls, "The class of the object (needed to read an archive)")
        ->check(CLI::IsMember({"string", "long", "buffer", "date", "long-array", "string-array", "array"}));
    cmd->callback([] {
        std::string bytes = ReadFile(in);
        std::unique_ptr<CGVObject> obj;
        if (to == "archive") {
            auto objects = ReadTextObjects(bytes);
            if (objects.size() != 1)
                throw Failure{in + ": holds " + std::to_string(objects.size()) + " objects, not one"};
            obj = std::move(objects.front());
            if (!cls.empty() && ClassOf(*obj) != cls)
                throw Failure{in + ": holds a " + ClassOf(*obj) + ", not a " + cls};
            if (ClassOf(*obj) == "date")
                throw Failure{"a date has no archive form"};
            WriteFile(out, StoreArchive(*obj));
        } else {
            if (cls.empty())
                throw Failure{"reading an archive needs --class"};
            if (cls == "date" || cls == "array")
                throw Failure{"a " + cls + " has no " + (cls == "date" ? "archive" : "text") + " form"};
            obj.reset(NewOfClass(cls));
            LoadArchive(bytes, *obj);
            WriteFile(out, WriteText(*obj));
        }
    });
}

}  // namespace gvtool
