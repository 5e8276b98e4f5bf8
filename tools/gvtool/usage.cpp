// An unknown command named as the user typed it, with the nearest known one.
#include <algorithm>
#include <vector>

#include "gvtool/commands.h"

namespace gvtool {
namespace {

size_t Distance(std::string const& a, std::string const& b) {
    std::vector<size_t> row(b.size() + 1);
    for (size_t j = 0; j <= b.size(); ++j)
        row[j] = j;
    for (size_t i = 1; i <= a.size(); ++i) {
        size_t diagonal = row[0];
        row[0] = i;
        for (size_t j = 1; j <= b.size(); ++j) {
            size_t next = std::min({row[j] + 1, row[j - 1] + 1, diagonal + (a[i - 1] == b[j - 1] ? 0 : 1)});
            diagonal = row[j];
            row[j] = next;
        }
    }
    return row[b.size()];
}

}  // namespace

std::string UnknownCommand(CLI::App& app, int argc, char** argv) {
    for (int i = 1; i < argc; ++i) {
        std::string arg = argv[i];
        if (arg == "--drive" || arg == "--encoding") {
            ++i;  // its value
            continue;
        }
        if (!arg.empty() && arg[0] == '-')
            continue;
        std::string nearest;
        size_t best = 3;  // farther than this is no suggestion
        for (CLI::App* sub : app.get_subcommands({})) {
            if (sub->get_name() == arg)
                return "";
            size_t d = Distance(arg, sub->get_name());
            if (d < best)
                best = d, nearest = sub->get_name();
        }
        return "unknown command '" + arg + "'" + (nearest.empty() ? "" : "; did you mean '" + nearest + "'?");
    }
    return "";
}

}  // namespace gvtool
