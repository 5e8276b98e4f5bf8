// gvtool sort: lines in the order of the library's string comparison.
#include <sstream>

#include <gvlib/gvlib.h>

#include "gvtool/answer.h"
#include "gvtool/commands.h"
#include "gvtool/encoding.h"
#include "gvtool/input.h"
#include "gvtool/output.h"

namespace gvtool {

void AddSort(CLI::App& app) {
    auto* cmd = app.add_subcommand("sort", "Sort lines as the library's string comparison orders them");
    static std::string file = "-";
    static uint32_t lcid = 1033;
    static bool reverse = false;
    cmd->add_option("FILE", file, "The text to sort, in the --encoding; - or none reads standard input");
    cmd->add_option("--lcid", lcid, "The Windows locale identifier to collate by (1053 Swedish, 1031 German...)")
        ->capture_default_str();
    cmd->add_flag("--reverse", reverse, "Sort in descending order");
    cmd->add_flag("--json", JsonOutput(), "Print the sorted lines as a JSON array");
    cmd->callback([] {
        std::istringstream lines(ReadInput(file, true));
        CGVStringArray array;
        size_t number = 0;
        for (std::string line; std::getline(lines, line);) {
            ++number;
            if (!line.empty() && line.back() == '\r')
                line.pop_back();
            std::string where = (file == "-" ? std::string("standard input") : file) + ": line " +
                                std::to_string(number);
            CGVString item(FromUser(line, where).c_str());
            array.mAdd(&item);
        }
        GVSetSortLCID(lcid);
        CGVString probe("a");
        if (probe.mCompare(&probe) == -2)
            throw Failure{"locale " + std::to_string(lcid) + " is not known"};
        array.mSort(reverse ? SORT_DESCENDING : SORT_ASCENDING);
        std::vector<std::string> sorted;
        for (int32_t i = 0; i < array.mGetNumItems(); ++i) {
            CGVString item;
            array.mGetArrayItem(&item, i);
            sorted.emplace_back(item.GetString(), static_cast<size_t>(item.GetLength()));
        }
        PrintList(sorted);
    });
}

}  // namespace gvtool
