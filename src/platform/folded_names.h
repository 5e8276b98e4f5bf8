// Internal: the names of a host directory folded for case-blind lookup, kept
// per directory until the directory changes.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace gvplatform::detail {

/// A name folded as the platform's file systems compare names: every letter of
/// the code page without regard to case (simple case folding of its Unicode),
/// as UTF-8.
std::string FoldAnsiName(std::string const& ansi);

/// The names of one directory by their folded form, kept flat (two blocks of
/// text and one table) so that a directory of many thousands of names is
/// indexed without an allocation per name.
class FoldedNames {
public:
    /// Whether an entry spells `ansiName` without regard to case; `stored`
    /// receives it as stored on the host (the first in byte order when
    /// several do).
    bool Find(std::string const& ansiName, std::string* stored) const;
    bool Contains(std::string const& ansiName) const { return Find(ansiName, nullptr); }

    /// Adds a host (UTF-8) entry name; Index makes the names found.
    void Add(std::string_view hostName);
    void Index();

private:
    static constexpr uint32_t kSameAsKey = UINT32_MAX;
    struct Entry {
        uint32_t key, keyLength;
        uint32_t stored, storedLength;  // kSameAsKey: the name is its key
    };
    std::string_view Key(Entry const& e) const;
    std::string_view Stored(Entry const& e) const;

    std::string keys_;    // folded names, back to back
    std::string stored_;  // names whose stored spelling is not their key
    std::vector<Entry> entries_;
    std::vector<uint32_t> slots_;  // entry number + 1; 0 is free
};

/// The folded names of the existing entries of a host directory (dangling
/// links left out, as they do not exist); null when it cannot be read. A
/// directory listed before is listed again only when its modification or
/// status change time has moved, so a lookup costs one status query and one hash.
std::shared_ptr<FoldedNames const> ListFoldedNames(std::string const& hostDirectory);

}  // namespace gvplatform::detail
