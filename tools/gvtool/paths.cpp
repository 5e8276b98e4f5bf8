// gvtool path and gvtool url: the path members users reach for.
#include <gvlib/gvlib.h>

#include "gvtool/answer.h"
#include "gvtool/commands.h"
#include "gvtool/encoding.h"

namespace gvtool {
namespace {

std::string g_path;
std::string g_other;

CGVPath Path() { return CGVPath(FromUser(WindowsForm(g_path), "PATH").c_str()); }

using Action = void (*)();

void AddOp(CLI::App& parent, const char* name, const char* help, Action action, const char* other = nullptr,
           const char* otherHelp = nullptr) {
    auto* op = parent.add_subcommand(name, help);
    op->add_option("PATH", g_path, "A Windows path or URL; a host path beginning with / is read in C:\\ form")
        ->required();
    if (other != nullptr)
        op->add_option(other, g_other, otherHelp)->required();
    op->add_flag("--json", JsonOutput(), "Print the answer as JSON");
    op->callback(action);
}

}  // namespace

void AddPathVolumeOps(CLI::App& cmd);  // the members that ask the file system

void AddPath(CLI::App& app) {
    auto* cmd = app.add_subcommand("path", "Take apart, check and build file paths");
    cmd->require_subcommand(1);
    AddOp(*cmd, "name", "The last component (empty for a path ending in a delimiter)",
          [] { PrintText(Path().GetName()); });
    AddOp(*cmd, "ext", "The extension, without its full stop", [] { PrintText(Path().GetExtension()); });
    AddOp(*cmd, "dir", "Everything before the last component, without a trailing delimiter",
          [] { PrintText(Path().GetDirectory()); });
    AddOp(*cmd, "parent", "The parent directory", [] { PrintText(Path().GetParentDirectory()); });
    AddOp(*cmd, "volume", "The volume (drive, share or URL host)", [] { PrintText(Path().GetVolume()); });
    AddOp(*cmd, "explode", "The volume and each component on a line of its own", [] {
        CGVPath volume;
        CGVStringArray parts;
        Path().Explode(volume, parts);
        std::vector<std::string> items{std::string(JsonOutput() ? "" : "volume: ") + volume.GetString()};
        for (int32_t i = 0; i < parts.mGetNumItems(); ++i) {
            CGVString part;
            parts.mGetArrayItem(&part, i);
            items.emplace_back(part.GetString());
        }
        PrintList(items);
    });
    AddPathVolumeOps(*cmd);
}

void AddUrl(CLI::App& app) {
    auto* cmd = app.add_subcommand("url", "Take apart, check and build URLs");
    cmd->require_subcommand(1);
    AddOp(*cmd, "scheme", "The scheme, such as http", [] { PrintText(Path().GetURLScheme()); });
    AddOp(*cmd, "host", "The host", [] { PrintText(Path().GetURLHost()); });
    AddOp(*cmd, "is-legal", "Whether every character is legal in a URL (exit 1 when not)",
          [] { Answer(Path().IsLegalURL(nullptr)); });
    AddOp(*cmd, "make-legal", "Replace what a URL may not hold", [] {
        CGVPath p = Path();
        p.MakeLegalURL(nullptr, 0);
        PrintText(p);
    });
    AddOp(*cmd, "file-url", "The file: URL of a path", [] { PrintText(Path().CreateFileScheme()); });
    AddOp(
        *cmd, "compare", "Whether two URLs are the same, the default scheme assumed (exit 1 when not)",
        [] { Answer(Path().CompareURL(FromUser(g_other, "OTHER").c_str()) == 0); }, "OTHER",
        "The URL to compare with");
}

}  // namespace gvtool
