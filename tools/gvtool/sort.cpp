// gvtool sort: lines in the order of the library's string comparison.
#include <fstream>
#include <iostream>
#include <sstream>

#include <gvlib/gvlib.h>

#include "gvtool/commands.h"

namespace gvtool {

void AddSort(CLI::App& app) {
    auto* cmd = app.add_subcommand("sort", "Sort lines as the library's string comparison orders them");
    static std::string file;
    static uint32_t lcid = 1033;
    static bool reverse = false;
    cmd->add_option("FILE", file, "The file to sort (standard input when not given)");
    cmd->add_option("--lcid", lcid, "The Windows locale identifier to collate by")->capture_default_str();
    cmd->add_flag("--reverse", reverse, "Sort in descending order");
    cmd->callback([] {
        std::string text = file.empty() ? std::string(std::istreambuf_iterator<char>(std::cin), {}) : ReadFile(file);
        std::istringstream lines(text);
        CGVStringArray array;
        for (std::string line; std::getline(lines, line);) {
            if (!line.empty() && line.back() == '\r')
                line.pop_back();
            CGVString item(line.c_str());
            array.mAdd(&item);
        }
        GVSetSortLCID(lcid);
        CGVString probe("a");
        if (probe.mCompare(&probe) == -2)
            throw Failure{"locale " + std::to_string(lcid) + " is not known"};
        array.mSort(reverse ? SORT_DESCENDING : SORT_ASCENDING);
        for (int32_t i = 0; i < array.mGetNumItems(); ++i) {
            CGVString item;
            array.mGetArrayItem(&item, i);
            std::cout << item.GetString() << '\n';
        }
    });
}

}  // namespace gvtool
