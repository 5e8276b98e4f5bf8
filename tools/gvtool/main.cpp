// gvtool: reads, checks and converts what a host program saved with the
// library, sorts text as it collates, and answers questions about paths.
#include <unicode/uversion.h>

#include <iostream>

#include <gvlib/gvlib.h>

#include "gvtool/commands.h"
#include "gvtool/encoding.h"
#include "gvtool/output.h"

namespace {

std::string VersionText() {
    UVersionInfo icu;
    u_getVersion(icu);
    char icuText[U_MAX_VERSION_STRING_LENGTH];
    u_versionToString(icu, icuText);
    return std::string("gvtool ") + GVTOOL_VERSION + " (gvlib " + GVTOOL_VERSION + ", ICU " + icuText + ")";
}

int Fail(std::string const& message, int status) {
    std::cerr << "gvtool: " << message << '\n';
    return status;
}

// Parses and runs the command; what it printed is committed by the caller.
int Parse(CLI::App& app, int argc, char** argv) {
    try {
        if (std::string unknown = gvtool::UnknownCommand(app, argc, argv); !unknown.empty())
            return Fail(unknown, gvtool::kError);
        app.parse(argc, argv);
    } catch (CLI::Success const& e) {
        // Help and version texts go through the checked writer as well.
        gvtool::OutputStream out(gvtool::Stdout());
        app.exit(e, out, std::cerr);
        return gvtool::kOk;
    } catch (CLI::ParseError const& e) {
        return Fail(std::string(e.what()) + " (see gvtool --help)", gvtool::kError);
    } catch (gvtool::Failure const& f) {
        return Fail(f.message, gvtool::kError);
    } catch (CException const& e) {
        return Fail(e.what(), gvtool::kError);
    }
    return gvtool::Result();
}

int Run(CLI::App& app, int argc, char** argv) {
    try {
        int status = Parse(app, argc, argv);
        gvtool::Stdout().Commit();
        return status;
    } catch (gvtool::WriteFailure const& f) {
        return Fail(f.message, gvtool::kFalse);
    }
}

}  // namespace

int main(int argc, char** argv) {
    CLI::App app{"gvtool: read, check and convert saved value objects; sort text; work with paths and URLs"};
    app.name("gvtool");
    app.require_subcommand(1);
    app.set_version_flag("--version", VersionText());
    std::vector<std::string> drives;
    app.add_option("--drive", drives,
                   "Map a drive letter onto a host directory for this run: LETTER=HOSTDIR[,removable|fixed|remote]"
                   "[,max=N]; max=12 makes an 8.3 short-name volume")
        ->take_all();
    std::string encoding;
    app.add_option("--encoding", encoding,
                   "The encoding of files, arguments and output text (default: the locale's, UTF-8 when unset)")
        ->check(CLI::IsMember({"utf-8", "cp1252"}));
    gvtool::AddDump(app);
    gvtool::AddConvert(app);
    gvtool::AddSort(app);
    gvtool::AddPath(app);
    gvtool::AddUrl(app);
    gvtool::AddDate(app);
    gvtool::AddMoney(app);
    app.parse_complete_callback([&drives, &encoding] {
        if (!encoding.empty())
            gvtool::UserEncoding() = encoding == "cp1252" ? gvtool::Encoding::kCp1252 : gvtool::Encoding::kUtf8;
        gvtool::MapDrives(drives);
    });
    int status = Run(app, argc, argv);
    gvtool::WarnUndefinedBytes();
    return status;
}
