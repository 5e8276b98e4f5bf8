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

bool IsAscii(std::string_view text) {
    for (char c : text)
        if (static_cast<unsigned char>(c) >= 0x80)
            return false;
    return true;
}

std::string AsciiLower(std::string text) {
    for (char& c : text)
        if (c >= 'A' && c <= 'Z')
            c = static_cast<char>(c - 'A' + 'a');
    return text;
}

// Folds UTF-16 and gives it back as UTF-8, the form of the index's keys.
std::string FoldToUtf8(std::u16string& units) {
    for (char16_t& unit : units)
        unit = static_cast<char16_t>(u_foldCase(unit, U_FOLD_CASE_DEFAULT));
    std::string key(units.size() * 3, '\0');
    int32_t length = 0;
    UErrorCode err = U_ZERO_ERROR;
    u_strToUTF8WithSub(&key[0], static_cast<int32_t>(key.size()), &length, reinterpret_cast<const UChar*>(units.data()),
                       static_cast<int32_t>(units.size()), 0xFFFD, nullptr, &err);
    key.resize(U_SUCCESS(err) ? static_cast<std::size_t>(length) : 0);
    return key;
}

// The key of a host (UTF-8) name. Names of plain ASCII, most of them, fold
// byte by byte: a large directory is indexed without a conversion per entry.
std::string FoldHostName(std::string const& host) {
    if (IsAscii(host))
        return AsciiLower(host);
    std::u16string units(host.size(), u'\0');
    int32_t length = 0;
    UErrorCode err = U_ZERO_ERROR;
    u_strFromUTF8WithSub(reinterpret_cast<UChar*>(&units[0]), static_cast<int32_t>(units.size()), &length,
                         host.data(), static_cast<int32_t>(host.size()), 0xFFFD, nullptr, &err);
    units.resize(U_SUCCESS(err) ? static_cast<std::size_t>(length) : 0);
    return FoldToUtf8(units);
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
    names->Index();
    return names;
}

}  // namespace

std::string FoldAnsiName(std::string const& ansi) {
    if (IsAscii(ansi))
        return AsciiLower(ansi);
    std::u16string units;
    units.reserve(ansi.size());
    const auto& table = Cp1252ToUtf16Table();
    for (char c : ansi)
        units += table[static_cast<unsigned char>(c)];
    return FoldToUtf8(units);
}

std::string_view FoldedNames::Key(Entry const& e) const { return std::string_view(keys_).substr(e.key, e.keyLength); }

std::string_view FoldedNames::Stored(Entry const& e) const {
    return e.stored == kSameAsKey ? Key(e) : std::string_view(stored_).substr(e.stored, e.storedLength);
}

bool FoldedNames::Find(std::string const& ansiName, std::string* stored) const {
    if (slots_.empty())
        return false;
    const std::string key = FoldAnsiName(ansiName);
    const std::size_t mask = slots_.size() - 1;
    for (std::size_t slot = std::hash<std::string_view>()(key) & mask; slots_[slot] != 0; slot = (slot + 1) & mask) {
        Entry const& e = entries_[slots_[slot] - 1];
        if (Key(e) == key) {
            if (stored != nullptr)
                stored->assign(Stored(e));
            return true;
        }
    }
    return false;
}

void FoldedNames::Add(std::string_view hostName) {
    Entry e{static_cast<uint32_t>(keys_.size()), 0, kSameAsKey, 0};
    bool same = true;
    if (IsAscii(hostName)) {
        for (char c : hostName) {
            const char lower = c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
            same = same && lower == c;
            keys_ += lower;
        }
    } else {
        const std::string key = FoldHostName(std::string(hostName));
        same = key == hostName;
        keys_ += key;
    }
    e.keyLength = static_cast<uint32_t>(keys_.size() - e.key);
    // A name stored as its key keeps no second copy.
    if (!same) {
        e.stored = static_cast<uint32_t>(stored_.size());
        e.storedLength = static_cast<uint32_t>(hostName.size());
        stored_ += hostName;
    }
    entries_.push_back(e);
}

// One open-addressed table of entry numbers, at most half full; of names
// that fold alike the first in byte order answers.
void FoldedNames::Index() {
    std::size_t size = 16;
    while (size < entries_.size() * 2)
        size *= 2;
    slots_.assign(size, 0);
    const std::size_t mask = size - 1;
    for (uint32_t i = 0; i < entries_.size(); ++i) {
        std::size_t slot = std::hash<std::string_view>()(Key(entries_[i])) & mask;
        for (; slots_[slot] != 0; slot = (slot + 1) & mask) {
            uint32_t& other = slots_[slot];
            if (Key(entries_[other - 1]) == Key(entries_[i])) {
                if (Stored(entries_[i]) < Stored(entries_[other - 1]))
                    other = i + 1;
                break;
            }
        }
        if (slots_[slot] == 0)
            slots_[slot] = i + 1;
    }
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
