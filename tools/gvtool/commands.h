// The subcommands of gvtool, each registering itself on the application.
#pragma once

#include <CLI/CLI.hpp>

#include <iosfwd>
#include <string>

namespace gvtool {

/// Exit statuses: 0 success, 1 a test that answered false or output that could
/// not be written, 2 bad usage or bad input.
enum Status { kOk = 0, kFalse = 1, kError = 2 };

/// Raised by a subcommand for bad input; main prints it and exits with kError.
struct Failure {
    std::string message;
};

/// The status the chosen subcommand sets; main returns it.
Status& Result();

void AddDump(CLI::App& app);
/// What dump prints for the bytes of a file: objects to `out`, remarks to `notes`.
/// An empty class reads a text stream. Bad input raises Failure.
void Dump(std::string const& bytes, std::string const& archiveClass, bool json, std::ostream& out,
          std::ostream& notes);
/// The same, streaming object by object from `in`.
void Dump(std::istream& in, std::string const& archiveClass, bool json, std::ostream& out);
void AddConvert(CLI::App& app);
void AddSort(CLI::App& app);
void AddPath(CLI::App& app);
void AddUrl(CLI::App& app);
void AddDate(CLI::App& app);
void AddMoney(CLI::App& app);

/// Maps the volumes named by --drive LETTER=HOSTDIR[,removable|fixed|remote][,max=N].
void MapDrives(std::vector<std::string> const& drives);

/// A path argument in the library's form: host paths beginning with / become C:\ form.
std::string WindowsForm(std::string const& path);

/// "unknown command 'x'; did you mean 'y'?" for a first word that names no
/// command; empty when the command line is fine so far.
std::string UnknownCommand(CLI::App& app, int argc, char** argv);

}  // namespace gvtool
