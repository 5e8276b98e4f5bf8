// Internal: the names of a host directory folded for case-blind lookup, kept
// per directory until the directory changes.
#pragma once

#include <memory>
#include <string>
#include <unordered_map>

namespace gvplatform::detail {

/// A name folded as the platform's file systems compare names: every letter of
/// the code page without regard to case (simple case folding of its Unicode),
/// as UTF-8.
std::string FoldAnsiName(std::string const& ansi);

class FoldedNames {
public:
    /// The entry spelling `ansiName` without regard to case, as stored on the
    /// host (the first in byte order when several do); null when none does.
    std::string const* Find(std::string const& ansiName) const;
    bool Contains(std::string const& ansiName) const { return Find(ansiName) != nullptr; }

    /// Adds a host (UTF-8) entry name.
    void Add(std::string const& hostName);

private:
    // Folded key to the name as stored; empty when that is the key itself.
    std::unordered_map<std::string, std::string> names_;
};

/// The folded names of the existing entries of a host directory (dangling
/// links left out, as they do not exist); null when it cannot be read. A
/// directory listed before is listed again only when its modification or
/// status change time has moved, so a lookup costs one status query and one hash.
std::shared_ptr<FoldedNames const> ListFoldedNames(std::string const& hostDirectory);

}  // namespace gvplatform::detail
