// gvtool path and gvtool url: the path members users reach for.
#include <iostream>

#include <gvlib/gvlib.h>

#include "gvtool/commands.h"

namespace gvtool {
namespace {

std::string g_path;
std::vector<std::string> g_args;

// A test's answer: printed, and the exit status 1 when it is false.
void Answer(int yes) {
    std::cout << (yes ? "yes" : "no") << '\n';
    Result() = yes ? kOk : kFalse;
}

void Print(CGVString const& text) { std::cout << text.GetString() << '\n'; }

CGVPath Path() { return CGVPath(WindowsForm(g_path).c_str()); }

using Action = void (*)();

void AddOp(CLI::App& parent, const char* name, const char* help, Action action, const char* extra = nullptr) {
    auto* op = parent.add_subcommand(name, help);
    op->add_option("PATH", g_path, "The path (a host path beginning with / is shown in C:\\ form)")->required();
    if (extra != nullptr)
        op->add_option("ARGS", g_args, extra)->required();
    op->callback(action);
}

}  // namespace

void AddPathVolumeOps(CLI::App& cmd);  // the members that ask the file system

void AddPath(CLI::App& app) {
    auto* cmd = app.add_subcommand("path", "Take apart, check and build file paths");
    cmd->require_subcommand(1);
    AddOp(*cmd, "name", "The last component", [] { Print(Path().GetName()); });
    AddOp(*cmd, "ext", "The extension, without its full stop", [] { Print(Path().GetExtension()); });
    AddOp(*cmd, "dir", "The directory, with its trailing delimiter", [] { Print(Path().GetDirectory()); });
    AddOp(*cmd, "parent", "The parent directory", [] { Print(Path().GetParentDirectory()); });
    AddOp(*cmd, "volume", "The volume (drive, share or URL host)", [] { Print(Path().GetVolume()); });
    AddOp(*cmd, "explode", "The volume and each component on a line of its own", [] {
        CGVPath volume;
        CGVStringArray parts;
        Path().Explode(volume, parts);
        std::cout << "volume: " << volume.GetString() << '\n';
        for (int32_t i = 0; i < parts.mGetNumItems(); ++i) {
            CGVString part;
            parts.mGetArrayItem(&part, i);
            std::cout << part.GetString() << '\n';
        }
    });
    AddPathVolumeOps(*cmd);
}

void AddUrl(CLI::App& app) {
    auto* cmd = app.add_subcommand("url", "Take apart, check and build URLs");
    cmd->require_subcommand(1);
    AddOp(*cmd, "scheme", "The scheme, such as http", [] { Print(Path().GetURLScheme()); });
    AddOp(*cmd, "host", "The host", [] { Print(Path().GetURLHost()); });
    AddOp(*cmd, "is-legal", "Whether every character is legal in a URL (exit 1 when not)",
          [] { Answer(Path().IsLegalURL(nullptr)); });
    AddOp(*cmd, "make-legal", "Replace what a URL may not hold", [] {
        CGVPath p = Path();
        p.MakeLegalURL(nullptr, 0);
        Print(p);
    });
    AddOp(*cmd, "file-url", "The file: URL of a path", [] { Print(Path().CreateFileScheme()); });
    AddOp(
        *cmd, "compare", "Whether two URLs are the same, the default scheme assumed (exit 1 when not)",
        [] { Answer(Path().CompareURL(g_args.at(0).c_str()) == 0); }, "OTHER");
}

}  // namespace gvtool
