// gvtool dump: a saved object (or several) as readable text or JSON.
#include <iostream>
#include <memory>

#include "gvtool/archive_io.h"
#include "gvtool/commands.h"
#include "gvtool/describe.h"
#include "gvtool/text_io.h"

namespace gvtool {

void Dump(std::string const& bytes, std::string const& archiveClass, bool json, std::ostream& out,
          std::ostream& notes) {
    std::vector<std::unique_ptr<CGVObject>> objects;
    if (archiveClass.empty()) {
        objects = ReadTextObjects(bytes);
    } else {
        objects.emplace_back(NewOfClass(archiveClass));
        size_t used = LoadArchive(bytes, *objects.back());
        if (used < bytes.size())
            notes << "gvtool: note: " << bytes.size() - used << " bytes after the object were not read\n";
    }
    if (json) {
        out << "[";
        for (size_t i = 0; i < objects.size(); ++i)
            out << (i ? ",\n " : "") << DescribeJson(*objects[i]);
        out << "]\n";
    } else {
        for (auto& obj : objects)
            out << Describe(*obj) << '\n';
    }
}

void AddDump(CLI::App& app) {
    auto* cmd = app.add_subcommand("dump", "Decode a saved object into readable text");
    static std::string file, archiveClass;
    static bool json = false;
    cmd->add_option("FILE", file, "A text-stream file (tags T U V W X Y) or, with --archive, a binary archive")
        ->required();
    cmd->add_option("--archive", archiveClass, "Read FILE as the binary archive of CLASS")
        ->check(CLI::IsMember({"string", "long", "buffer", "long-array", "string-array", "array"}));
    cmd->add_flag("--json", json, "Print JSON instead of text");
    cmd->callback([] { Dump(ReadFile(file), archiveClass, json, std::cout, std::cerr); });
}

}  // namespace gvtool
