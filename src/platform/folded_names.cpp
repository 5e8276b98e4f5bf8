// Case-blind directory lookup without a directory scan per miss: each
// directory's names are folded once into an index, refreshed when the
// directory's modification time changes.
#include "platform/folded_names.h"

#include <dirent.h>
#include <sys/stat.h>
#include <time.h>

#include <unicode/uchar.h>
#include <unicode/ustring.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <map>
#include <mutex>

#include "platform/codepage.h"

namespace gvplatform::detail {
namespace {

// Directories remembered at once; beyond that the index starts over, so that
// walking many directories cannot grow it without bound.
constexpr std::size_t kMaxDirectories = 64;
// A directory changed this recently may change again within the same tick of
// the file system's clock without its times moving: its listing serves only
// the call that made it.
constexpr int64_t kSettledAfterNs = 100'000'000;

void FoldInPlace(std::u16string& text) {
    for (char16_t& unit : text)
        unit = static_cast<char16_t>(u_foldCase(unit, U_FOLD_CASE_DEFAULT));
}

std::u16string FoldHostName(std::string const& host) {
    std::u16string units(host.size(), u'\0');
    int32_t length = 0;
    UErrorCode err = U_ZERO_ERROR;
    u_strFromUTF8WithSub(reinterpret_cast<UChar*>(&units[0]), static_cast<int32_t>(units.size()), &length,
                         host.data(), static_cast<int32_t>(host.size()), 0xFFFD, nullptr, &err);
    units.resize(U_SUCCESS(err) ? static_cast<std::size_t>(length) : 0);
    FoldInPlace(units);
    return units;
}

int64_t Nanoseconds(timespec const& t) { return static_cast<int64_t>(t.tv_sec) * 1'000'000'000 + t.tv_nsec; }

// The status change time moves with every entry added or removed too, and
// unlike the modification time it cannot be set back by a caller.
struct Listing {
    dev_t device = 0;
    ino_t inode = 0;
    int64_t modified = 0;
    int64_t changed = 0;
    std::shared_ptr<FoldedNames const> names;
};

bool SameDirectory(Listing const& l, struct stat const& st) {
    return l.device == st.st_dev && l.inode == st.st_ino && l.modified == Nanoseconds(st.st_mtim) &&
           l.changed == Nanoseconds(st.st_ctim);
}

bool Exists(std::string const& directory, dirent const* entry) {
    if (entry->d_type != DT_LNK && entry->d_type != DT_UNKNOWN)
        return true;
    struct stat st;
    return stat((directory + "/" + entry->d_name).c_str(), &st) == 0;
}

std::shared_ptr<FoldedNames const> Read(std::string const& directory) {
    DIR* dir = opendir(directory.c_str());
    if (dir == nullptr)
        return nullptr;
    auto names = std::make_shared<FoldedNames>();
    while (dirent* entry = readdir(dir)) {
        if (std::strcmp(entry->d_name, ".") != 0 && std::strcmp(entry->d_name, "..") != 0 && Exists(directory, entry))
            names->Add(entry->d_name);
    }
    closedir(dir);
    return names;
}

}  // namespace

std::u16string FoldAnsiName(std::string const& ansi) {
    std::u16string units;
    units.reserve(ansi.size());
    const auto& table = Cp1252ToUtf16Table();
    for (char c : ansi)
        units += table[static_cast<unsigned char>(c)];
    FoldInPlace(units);
    return units;
}

std::string const* FoldedNames::Find(std::string const& ansiName) const {
    auto it = names_.find(FoldAnsiName(ansiName));
    return it == names_.end() ? nullptr : &it->second;
}

void FoldedNames::Add(std::string const& hostName) {
    auto inserted = names_.emplace(FoldHostName(hostName), hostName);
    if (!inserted.second && hostName < inserted.first->second)
        inserted.first->second = hostName;
}

std::shared_ptr<FoldedNames const> ListFoldedNames(std::string const& hostDirectory) {
    static std::mutex mutex;
    static std::map<std::string, Listing> listings;
    struct stat st;
    if (stat(hostDirectory.c_str(), &st) != 0 || !S_ISDIR(st.st_mode))
        return nullptr;
    {
        std::lock_guard<std::mutex> lock(mutex);
        auto it = listings.find(hostDirectory);
        if (it != listings.end() && SameDirectory(it->second, st))
            return it->second.names;
    }
    // The status is taken before reading, so a change while reading moves the
    // time past the one remembered.
    std::shared_ptr<FoldedNames const> names = Read(hostDirectory);
    timespec now{};
    clock_gettime(CLOCK_REALTIME, &now);
    const int64_t latest = std::max(Nanoseconds(st.st_mtim), Nanoseconds(st.st_ctim));
    if (names == nullptr || Nanoseconds(now) - latest < kSettledAfterNs)
        return names;
    std::lock_guard<std::mutex> lock(mutex);
    if (listings.size() >= kMaxDirectories)
        listings.clear();
    listings[hostDirectory] = Listing{st.st_dev, st.st_ino, Nanoseconds(st.st_mtim), Nanoseconds(st.st_ctim), names};
    return names;
}

}  // namespace gvplatform::detail
