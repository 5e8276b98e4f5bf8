// Internal: the map of Windows volumes onto host directories, and the lexical
// Windows path rules the kernel applies before it looks at any disk.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "gvlib/platform/volumes.h"

namespace gvplatform::detail {

struct MappedVolume {
    std::string root;  // "C:" or "\\server\share", as the map knows it
    std::string host;  // absolute host directory
    VolumeOptions options;
};

/// A full Windows path split into its root ("C:", "\\server\share") and components.
struct WindowsPath {
    std::string root;
    std::vector<std::string> components;
    bool trailingDelimiter = false;

    std::string Text() const;
};

/// The kernel's lexical full-path rules: slashes become backslashes, runs of
/// delimiters collapse, "." and ".." resolve (".." stops at the root), trailing
/// dots and spaces of the last component go; relative forms are completed from
/// the current directories. False when the text cannot be completed.
bool FullWindowsPath(std::string const& text, WindowsPath& out);

/// The volume a root names; false when it is not mapped.
bool FindVolume(std::string const& root, MappedVolume& out);

/// The host path of a full Windows path, each component matched without regard
/// to case when its exact spelling does not exist. `onDisk` receives the
/// components as spelled on disk (as far as they exist); `exists` whether the
/// whole path exists. False when the root is not mapped.
bool ResolveHostPath(WindowsPath const& path, std::string& host, std::vector<std::string>* onDisk, bool* exists);

class FoldedNames;

/// The names in a Windows directory, folded for case-blind lookup and listed
/// only when the directory has changed; null when the path is not an existing
/// directory on a mapped volume.
std::shared_ptr<FoldedNames const> ListDirectoryNames(WindowsPath const& directory);

/// Windows-1252 text to the host's UTF-8 file names and back ('?' for what the
/// code page lacks).
std::string AnsiToHostName(std::string const& ansi);
std::string HostNameToAnsi(std::string const& host);

/// Counts one volume-information query; answers the new count.
uint32_t CountVolumeQuery();

/// Remembers the current directory of a drive, as the kernel keeps one per drive.
void NoteDriveDirectory(WindowsPath const& path);

}  // namespace gvplatform::detail
