// The map of Windows drives and shares onto host directories, and the
// translation of paths between the two worlds.
#include "platform/volume_map.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cctype>
#include <map>
#include <mutex>
#include <string>

#include "gvlib/platform/winnls.h"
#include "platform/crt_text.h"
#include "platform/folded_names.h"

namespace gvplatform::detail {
namespace {

struct VolumeMap {
    std::mutex lock;
    std::vector<MappedVolume> volumes;
    std::map<char, std::string> driveDirectories;  // per-drive current directory, upper-case letter
    uint32_t queries = 0;

    VolumeMap() { Reset(); }
    void Reset() {
        volumes.clear();
        volumes.push_back(MappedVolume{"C:", "/", VolumeOptions()});
        driveDirectories.clear();
    }
};

VolumeMap& Map() {
    static VolumeMap* map = new VolumeMap;  // never destroyed: usable during static teardown
    return *map;
}

bool SameRoot(std::string const& a, std::string const& b) { return ByteCompareNoCase(a.c_str(), b.c_str()) == 0; }

std::string StripTrailingSlashes(std::string host) {
    while (host.size() > 1 && host.back() == '/')
        host.pop_back();
    return host;
}

// The host's current directory as an absolute path, or empty.
std::string HostCurrentDirectory() {
    char buf[4096];
    return getcwd(buf, sizeof buf) ? std::string(buf) : std::string();
}

// Lexical normalisation of a host path, made absolute from the current directory.
std::string NormaliseHost(std::string const& given) {
    std::string path = (given.empty() || given[0] != '/') ? HostCurrentDirectory() + "/" + given : given;
    std::vector<std::string> parts;
    size_t i = 0;
    while (i <= path.size()) {
        size_t j = path.find('/', i);
        if (j == std::string::npos)
            j = path.size();
        std::string part = path.substr(i, j - i);
        if (part == "..") {
            if (!parts.empty())
                parts.pop_back();
        } else if (!part.empty() && part != ".") {
            parts.push_back(part);
        }
        i = j + 1;
    }
    std::string out;
    for (auto const& part : parts)
        out += "/" + part;
    return out.empty() ? "/" : out;
}

bool IsDriveLetter(char c) { return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z'); }

// "C:" rather than a UNC root; the bare UNC prefix \\ is two characters long too.
bool IsDriveRoot(std::string const& root) { return root.size() == 2 && root[1] == ':'; }

std::string Join(std::vector<std::string> const& parts, char delimiter) {
    std::string out;
    for (size_t i = 0; i < parts.size(); ++i) {
        if (i)
            out += delimiter;
        out += parts[i];
    }
    return out;
}

// Splits the part of a path after its root into resolved components.
void AddComponents(std::string const& rest, WindowsPath& out) {
    size_t i = 0;
    while (i < rest.size()) {
        size_t j = rest.find('\\', i);
        if (j == std::string::npos)
            j = rest.size();
        std::string part = rest.substr(i, j - i);
        i = j + 1;
        if (part.empty() || part == ".")
            continue;
        if (part == "..") {
            if (!out.components.empty())
                out.components.pop_back();
            continue;
        }
        // A component ending in one period loses it ("a." is "a"); "..." stays.
        if (part.size() > 1 && part.back() == '.' && part[part.size() - 2] != '.')
            part.pop_back();
        out.components.push_back(part);
    }
    out.trailingDelimiter = !rest.empty() && rest.back() == '\\';
    if (!out.trailingDelimiter && !out.components.empty()) {
        std::string& last = out.components.back();
        while (!last.empty() && (last.back() == '.' || last.back() == ' '))
            last.pop_back();
        if (last.empty())
            out.components.pop_back();
    }
}

bool CurrentWindowsPath(WindowsPath& out) {
    std::string windows = HostToWindowsPath(HostCurrentDirectory());
    return !windows.empty() && FullWindowsPath(windows, out);
}

}  // namespace

std::string WindowsPath::Text() const {
    std::string text = root;
    if (IsDriveRoot(root) || !components.empty())
        text += '\\';
    text += Join(components, '\\');
    if (trailingDelimiter && !components.empty())
        text += '\\';
    return text;
}

bool FullWindowsPath(std::string const& input, WindowsPath& out) {
    std::string s = input;
    std::replace(s.begin(), s.end(), '/', '\\');
    if (s.empty())
        return false;
    out = WindowsPath();
    if (s.size() >= 2 && s[0] == '\\' && s[1] == '\\') {
        // \\server\share\rest: the first two components form the root.
        size_t server = s.find('\\', 2);
        size_t share = server == std::string::npos ? std::string::npos : s.find('\\', server + 1);
        out.root = s.substr(0, share);
        AddComponents(share == std::string::npos ? std::string() : s.substr(share), out);
        return true;
    }
    if (s.size() >= 2 && s[1] == ':' && IsDriveLetter(s[0])) {
        if (s.size() >= 3 && s[2] == '\\') {
            out.root = s.substr(0, 2);
            AddComponents(s.substr(2), out);
            return true;
        }
        // X:name is relative to that drive's current directory.
        char letter = ToUpper(s[0]);
        WindowsPath current;
        std::string base;
        if (CurrentWindowsPath(current) && IsDriveRoot(current.root) && ToUpper(current.root[0]) == letter) {
            base = current.Text();
        } else {
            std::lock_guard<std::mutex> guard(Map().lock);
            auto it = Map().driveDirectories.find(letter);
            base = it != Map().driveDirectories.end() ? it->second : std::string(1, s[0]) + ":\\";
        }
        return FullWindowsPath(base + "\\" + s.substr(2), out);
    }
    WindowsPath current;
    if (!CurrentWindowsPath(current))
        return false;
    if (s[0] == '\\')
        return FullWindowsPath(current.root + s, out);  // \name: the current drive's root
    return FullWindowsPath(current.Text() + "\\" + s, out);
}

bool FindVolume(std::string const& root, MappedVolume& out) {
    VolumeMap& map = Map();
    std::lock_guard<std::mutex> guard(map.lock);
    for (auto const& v : map.volumes) {
        if (SameRoot(v.root, root)) {
            out = v;
            return true;
        }
    }
    return false;
}

std::string AnsiToHostName(std::string const& ansi) {
    if (ansi.empty())
        return ansi;
    int n = MultiByteToWideChar(CP_ACP, 0, ansi.data(), static_cast<int>(ansi.size()), nullptr, 0);
    std::wstring wide(static_cast<size_t>(n), L'\0');
    MultiByteToWideChar(CP_ACP, 0, ansi.data(), static_cast<int>(ansi.size()), &wide[0], n);
    int m = WideCharToMultiByte(CP_UTF8, 0, wide.data(), n, nullptr, 0, nullptr, nullptr);
    std::string out(static_cast<size_t>(m), '\0');
    WideCharToMultiByte(CP_UTF8, 0, wide.data(), n, &out[0], m, nullptr, nullptr);
    return out;
}

std::string HostNameToAnsi(std::string const& host) {
    if (host.empty())
        return host;
    int n = MultiByteToWideChar(CP_UTF8, 0, host.data(), static_cast<int>(host.size()), nullptr, 0);
    std::wstring wide(static_cast<size_t>(n), L'\0');
    MultiByteToWideChar(CP_UTF8, 0, host.data(), static_cast<int>(host.size()), &wide[0], n);
    int m = WideCharToMultiByte(CP_ACP, 0, wide.data(), n, nullptr, 0, nullptr, nullptr);
    std::string out(static_cast<size_t>(m), '\0');
    WideCharToMultiByte(CP_ACP, 0, wide.data(), n, &out[0], m, nullptr, nullptr);
    return out;
}

namespace {

// The entry of `directory` whose name matches `ansiName` without regard to case;
// the first in byte order when several do. The directory's folded index answers,
// so a miss costs no scan of a directory that has not changed.
bool FindEntryNoCase(std::string const& directory, std::string const& ansiName, std::string& found) {
    std::shared_ptr<FoldedNames const> names = ListFoldedNames(directory);
    return names != nullptr && names->Find(ansiName, &found);
}

std::string ChildPath(std::string const& parent, std::string const& name) {
    return parent == "/" ? "/" + name : parent + "/" + name;
}

}  // namespace

bool ResolveHostPath(WindowsPath const& path, std::string& host, std::vector<std::string>* onDisk, bool* exists) {
    MappedVolume volume;
    if (!FindVolume(path.root, volume))
        return false;
    host = StripTrailingSlashes(volume.host);
    struct stat st;
    // The common case first: the path exists as written, which one query tells.
    std::string exact = host;
    std::vector<std::string> names;
    for (std::string const& component : path.components) {
        names.push_back(AnsiToHostName(component));
        exact = ChildPath(exact, names.back());
    }
    if (stat(exact.c_str(), &st) == 0) {
        host = exact;
        if (onDisk != nullptr)
            for (std::string const& name : names)
                onDisk->push_back(HostNameToAnsi(name));
        if (exists != nullptr)
            *exists = true;
        return true;
    }
    bool present = stat(host.c_str(), &st) == 0;
    for (std::string const& component : path.components) {
        std::string name = AnsiToHostName(component);
        std::string candidate = ChildPath(host, name);
        if (present && lstat(candidate.c_str(), &st) != 0) {
            std::string found;
            if (FindEntryNoCase(host, component, found))
                candidate = ChildPath(host, found), name = found;
            else
                present = false;
        }
        host = candidate;
        if (onDisk != nullptr)
            onDisk->push_back(present ? HostNameToAnsi(name) : component);
    }
    if (exists != nullptr)
        *exists = present && stat(host.c_str(), &st) == 0;
    return true;
}

std::shared_ptr<FoldedNames const> ListDirectoryNames(WindowsPath const& directory) {
    std::string host;
    bool exists = false;
    if (!ResolveHostPath(directory, host, nullptr, &exists) || !exists)
        return nullptr;
    return ListFoldedNames(host);
}

void NoteDriveDirectory(WindowsPath const& path) {
    if (!IsDriveRoot(path.root))
        return;
    std::lock_guard<std::mutex> guard(Map().lock);
    Map().driveDirectories[ToUpper(path.root[0])] = path.Text();
}

uint32_t CountVolumeQuery() {
    std::lock_guard<std::mutex> guard(Map().lock);
    return ++Map().queries;
}

}  // namespace gvplatform::detail

namespace gvplatform {

using detail::Map;

void MapDrive(char letter, std::string const& hostDirectory, VolumeOptions const& options) {
    if (!detail::IsDriveLetter(letter))
        return;
    UnmapDrive(letter);
    std::string root = {detail::ToUpper(letter), ':'};
    std::lock_guard<std::mutex> guard(Map().lock);
    Map().volumes.push_back(detail::MappedVolume{root, detail::NormaliseHost(hostDirectory), options});
}

void UnmapDrive(char letter) {
    std::string root = {letter, ':'};
    std::lock_guard<std::mutex> guard(Map().lock);
    auto& v = Map().volumes;
    v.erase(std::remove_if(v.begin(), v.end(), [&](auto const& m) { return detail::SameRoot(m.root, root); }),
            v.end());
    Map().driveDirectories.erase(detail::ToUpper(letter));
}

void MapShare(std::string const& uncRoot, std::string const& hostDirectory, VolumeOptions const& options) {
    std::string root = uncRoot;
    std::replace(root.begin(), root.end(), '/', '\\');
    while (root.size() > 2 && root.back() == '\\')
        root.pop_back();
    std::lock_guard<std::mutex> guard(Map().lock);
    auto& v = Map().volumes;
    v.erase(std::remove_if(v.begin(), v.end(), [&](auto const& m) { return detail::SameRoot(m.root, root); }),
            v.end());
    v.push_back(detail::MappedVolume{root, detail::NormaliseHost(hostDirectory), options});
}

void ResetVolumes() {
    std::lock_guard<std::mutex> guard(Map().lock);
    Map().Reset();
}

uint32_t VolumeQueryCount() {
    std::lock_guard<std::mutex> guard(Map().lock);
    return Map().queries;
}

std::string HostToWindowsPath(std::string const& hostPath) {
    if (hostPath.empty())
        return std::string();
    std::string absolute = hostPath[0] == '/' ? hostPath : detail::HostCurrentDirectory() + "/" + hostPath;
    absolute = detail::NormaliseHost(absolute);
    detail::MappedVolume best;
    size_t bestLength = 0;
    bool any = false;
    {
        std::lock_guard<std::mutex> guard(Map().lock);
        for (auto const& v : Map().volumes) {
            std::string const& h = v.host;
            bool inside = h == "/" || absolute == h || (absolute.compare(0, h.size(), h) == 0 && absolute[h.size()] == '/');
            if (inside && (!any || h.size() > bestLength)) {
                best = v;
                bestLength = h.size();
                any = true;
            }
        }
    }
    if (!any)
        return std::string();
    std::string rest = best.host == "/" ? absolute : absolute.substr(best.host.size());
    std::replace(rest.begin(), rest.end(), '/', '\\');
    if (rest.empty() || rest == "\\")
        rest = detail::IsDriveRoot(best.root) ? "\\" : "";
    return best.root + detail::HostNameToAnsi(rest);
}

std::string WindowsToHostPath(std::string const& windowsPath) {
    if (!windowsPath.empty() && windowsPath[0] == '/')
        return detail::NormaliseHost(windowsPath);
    detail::WindowsPath path;
    std::string host;
    if (!detail::FullWindowsPath(windowsPath, path) || !detail::ResolveHostPath(path, host, nullptr, nullptr))
        return std::string();
    return host;
}

}  // namespace gvplatform
