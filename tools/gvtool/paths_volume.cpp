// gvtool path: the members that ask the file system (volumes, legality,
// unique names, relative paths).
#include <gvlib/gvlib.h>

#include <iostream>

#include "gvtool/commands.h"

namespace gvtool {
namespace {

std::string g_path;
std::string g_other;
std::vector<std::string> g_taken, g_reusable;

CGVPath Path() { return CGVPath(WindowsForm(g_path).c_str()); }
std::string Other() { return WindowsForm(g_other); }

void Print(CGVString const& text) { std::cout << text.GetString() << '\n'; }

void Answer(int yes) {
    std::cout << (yes ? "yes" : "no") << '\n';
    Result() = yes ? kOk : kFalse;
}

CLI::App* AddOp(CLI::App& parent, const char* name, const char* help, void (*action)(),
                const char* other = nullptr) {
    auto* op = parent.add_subcommand(name, help);
    op->add_option("PATH", g_path, "The path (a host path beginning with / is shown in C:\\ form)")->required();
    if (other != nullptr)
        op->add_option(other, g_other, std::string("The ") + other)->required();
    op->callback(action);
    return op;
}

void Fill(CGVStringArray& array, std::vector<std::string> const& names) {
    for (auto const& name : names) {
        CGVString item(name.c_str());
        array.mAdd(&item);
    }
}

}  // namespace

void AddPathVolumeOps(CLI::App& cmd) {
    AddOp(cmd, "is-legal", "Whether the path is legal on its volume (exit 1 when not)",
          [] { Answer(Path().IsLegal(nullptr)); });
    AddOp(cmd, "make-legal", "Make every component legal on the path's volume", [] {
        CGVPath p = Path();
        p.MakeLegalPath();
        Print(p);
    });
    AddOp(
        cmd, "make-legal-name", "Make a file name legal for a directory",
        [] {
            CGVPath p = Path();
            p.MakeLegalName(Other().c_str());
            Print(p);
        },
        "DIR");
    auto* unique = AddOp(
        cmd, "unique", "A free name in a directory: the name itself, or numbered",
        [] {
            CGVPath p = Path();
            CGVStringArray taken, reusable;
            Fill(taken, g_taken);
            Fill(reusable, g_reusable);
            if (!p.MakeUnique(Other().c_str(), 0, 0, &taken, &reusable))
                throw Failure{"no free name found"};
            Print(p);
        },
        "DIR");
    unique->add_option("--taken", g_taken, "A name never to use, even if no file has it");
    unique->add_option("--reusable", g_reusable, "A name to accept even if a file has it");
    AddOp(
        cmd, "relative", "The path relative to the directory of BASE",
        [] { Print(Path().GetRelativePath(Other().c_str())); }, "BASE");
    AddOp(
        cmd, "url-relative", "The link to the path from the page BASE",
        [] { Print(Path().GetUrlRelativePath(Other().c_str())); }, "BASE");
    AddOp(cmd, "full", "The full path name", [] { Print(Path().GetFullPathNameA(nullptr)); });
    AddOp(cmd, "available", "The path, or its nearest existing ancestor (exit 1 when the path itself is missing)",
          [] {
              CGVPath p = Path();
              Print(p.GetAvailable());
              Result() = p.IsAvailable() ? kOk : kFalse;
          });
}

}  // namespace gvtool
