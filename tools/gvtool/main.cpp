// gvtool: reads, checks and converts what a host program saved with the
// library, sorts text as it collates, and answers questions about paths.
#include <iostream>

#include <gvlib/gvlib.h>

#include "gvtool/commands.h"

int main(int argc, char** argv) {
    CLI::App app{"gvtool: read, check and convert saved value objects; sort text; work with paths and URLs"};
    app.require_subcommand(1);
    std::vector<std::string> drives;
    app.add_option("--drive", drives, "Map a volume for the run: LETTER=HOSTDIR[,removable|fixed|remote][,max=N]")
        ->take_all();
    gvtool::AddDump(app);
    gvtool::AddConvert(app);
    gvtool::AddSort(app);
    gvtool::AddPath(app);
    gvtool::AddUrl(app);
    gvtool::AddDate(app);
    gvtool::AddMoney(app);
    app.parse_complete_callback([&drives] { gvtool::MapDrives(drives); });
    try {
        app.parse(argc, argv);
    } catch (CLI::ParseError const& e) {
        int code = app.exit(e);
        return code == 0 ? gvtool::kOk : gvtool::kError;
    } catch (gvtool::Failure const& f) {
        std::cerr << "gvtool: " << f.message << '\n';
        return gvtool::kError;
    } catch (CException const& e) {
        std::cerr << "gvtool: " << e.what() << '\n';
        return gvtool::kError;
    }
    return gvtool::Result();
}
