// gvtool path: the members that ask the file system (volumes, legality,
// unique names, relative paths).
#include <gvlib/gvlib.h>

#include "gvtool/answer.h"
#include "gvtool/commands.h"
#include "gvtool/encoding.h"

namespace gvtool {
namespace {

std::string g_path;
std::string g_other;
std::vector<std::string> g_taken, g_reusable;

CGVPath Path() { return CGVPath(FromUser(WindowsForm(g_path), "PATH").c_str()); }
std::string Other() { return FromUser(WindowsForm(g_other), "the second path"); }

CLI::App* AddOp(CLI::App& parent, const char* name, const char* help, void (*action)(),
                const char* other = nullptr, const char* otherHelp = nullptr) {
    auto* op = parent.add_subcommand(name, help);
    op->add_option("PATH", g_path, "A Windows path; a host path beginning with / is read in C:\\ form")->required();
    if (other != nullptr)
        op->add_option(other, g_other, otherHelp)->required();
    op->add_flag("--json", JsonOutput(), "Print the answer as JSON");
    op->callback(action);
    return op;
}

void Fill(CGVStringArray& array, std::vector<std::string> const& names) {
    for (auto const& name : names) {
        CGVString item(FromUser(name, "a name").c_str());
        array.mAdd(&item);
    }
}

bool DirectoryExists(std::string const& dir) { return CGVPath(dir.c_str()).IsAvailable() != 0; }

}  // namespace

void AddPathVolumeOps(CLI::App& cmd) {
    AddOp(cmd, "is-legal", "Whether the path is legal on its volume (exit 1 when not)",
          [] { Answer(Path().IsLegal(nullptr)); });
    AddOp(cmd, "make-legal", "Make every component legal on the path's volume", [] {
        CGVPath p = Path();
        p.MakeLegalPath();
        PrintText(p);
    });
    AddOp(
        cmd, "make-legal-name", "Make a file name legal for a directory",
        [] {
            CGVPath p = Path();
            p.MakeLegalName(Other().c_str());
            PrintText(p);
        },
        "DIR", "The directory whose volume's rules apply");
    auto* unique = AddOp(
        cmd, "unique", "A free name in a directory: the name itself, or numbered",
        [] {
            CGVPath p = Path();
            CGVStringArray taken, reusable;
            Fill(taken, g_taken);
            Fill(reusable, g_reusable);
            if (!p.MakeUnique(Other().c_str(), 0, 0, &taken, &reusable))
                throw Failure{"no free name found"};
            PrintText(p);
            if (!DirectoryExists(Other()))
                Doubtful("the directory " + ToUser(Other()) + " does not exist: every name is free in it");
        },
        "DIR", "The directory that must not hold the name");
    unique->add_option("--taken", g_taken, "A name never to use, even if no file has it");
    unique->add_option("--reusable", g_reusable, "A name to accept even if a file has it");
    AddOp(
        cmd, "relative", "The path relative to the directory BASE",
        [] {
            CGVPath p = Path();
            CGVPath base(Other().c_str());
            CGVString relative = p.GetRelativePath(base.GetString());
            PrintText(relative);
            if (relative.GetLength() != 0)
                return;
            // Empty is right for the directory itself; otherwise nothing leads there.
            CGVString volume = p.GetVolume(), baseVolume = base.GetVolume();
            if (volume.GetLength() == 0 || baseVolume.GetLength() == 0)
                Doubtful("a relative path needs two full paths");
            else if (volume.CompareNoCase(baseVolume.GetString()) != 0)
                Doubtful("no relative path leads from " + ToUser(base.GetString()) + " to another volume");
        },
        "BASE", "The directory to start from");
    AddOp(
        cmd, "url-relative", "The link to the path from a page in the directory BASE",
        [] { PrintText(Path().GetUrlRelativePath(Other().c_str())); }, "BASE", "The directory of the linking page");
    AddOp(cmd, "full", "The full path name", [] { PrintText(Path().GetFullPathNameA(nullptr)); });
    AddOp(cmd, "available", "The path, or its nearest existing ancestor (exit 1 when the path itself is missing)",
          [] {
              CGVPath p = Path();
              PrintText(p.GetAvailable());
              Result() = p.IsAvailable() ? kOk : kFalse;
          });
}

}  // namespace gvtool
