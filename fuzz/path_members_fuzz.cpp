// Applies every public CGVPath member to arbitrary text. The input is a path,
// a NUL, then an argument text; the first byte of the argument also picks the
// numbers (positions, string-table ids, delimiters) the members take. The
// file-system members see only a small temporary tree mapped as L: (long names),
// S: (short names) and \\server\share; C: is unmapped, so no other host
// directory can be reached.
#include <gvlib/gvlib.h>

#include <stdlib.h>
#include <unistd.h>

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <string>

namespace {

gvplatform::VolumeOptions Options(uint32_t type, uint32_t maxComponent) {
    gvplatform::VolumeOptions options;
    options.driveType = type;
    options.maxComponentLength = maxComponent;
    return options;
}

// The temporary volume, made once per process and removed at exit.
struct Volume {
    std::string root;
    Volume() {
        root = std::filesystem::temp_directory_path().string() + "/gvlib_fuzz_XXXXXX";
        if (mkdtemp(&root[0]) == nullptr)
            abort();
        for (char const* dir : {"long/dir/sub", "long/Report (2)", "short/DIR", "share/docs"})
            std::filesystem::create_directories(root + "/" + dir);
        for (char const* file : {"long/a.txt", "long/dir/report.txt", "long/dir/report (2).txt", "long/index.HTM",
                                 "short/REPORT.TXT", "short/DIR/A.B", "share/docs/x.url", "share/f"})
            std::ofstream(root + "/" + file) << "x";
        gvplatform::ResetVolumes();
        gvplatform::UnmapDrive('C');
        gvplatform::MapDrive('L', root + "/long", Options(gvplatform::kDriveFixed, 255));
        gvplatform::MapDrive('S', root + "/short", Options(gvplatform::kDriveFixed, 12));
        gvplatform::MapShare("\\\\server\\share", root + "/share", Options(gvplatform::kDriveRemote, 255));
        // Relative paths resolve inside the volume too (fuzz/run hands libFuzzer
        // absolute paths, so its corpus stays reachable).
        if (chdir((root + "/long").c_str()) != 0)
            abort();
    }
    ~Volume() {
        std::error_code ignored;
        std::filesystem::remove_all(root, ignored);
    }
};

struct Input {
    CGVPath path;
    std::string arg;  // cut at its first NUL, as the members read it
    int number = 0;
    char delimiter = 0;
};

void Model(Input const& in) {
    CGVPath p(in.path);
    char const* a = in.arg.c_str();
    CGVPath::IsCharPathDelimiter(in.delimiter);
    CGVPath::IsLegalDriveLetter(in.delimiter);
    p.FormatFilePathDelimiters();
    p.IsUNCSpecified();
    p.IsDriveSpecified();
    p.IsFullPathName();
    p.IsURL();
    p.IsQualified();
    p.GetDriveLetter();
    p.GetUNCVolume();
    p.IsType(a);
    p.IsType(in.number);
    p.IsTypeShortcut();
    p.IsHTMLFile();
    p.MakeDelimitersCanonical();
}

void Components(Input const& in) {
    char const* a = in.arg.c_str();
    CGVPath p(in.path);
    p.GetName();
    p.GetNameOnly();
    p.GetExtension();
    p.GetDirectory();
    p.GetParentDirectory();
    p.GetVolume();
    CGVPath volume;
    CGVStringArray parts;
    p.Explode(volume, parts);
    CGVPath joined;
    joined.Implode(volume, parts);
    joined.Implode(a, parts);
    for (auto edit : {+[](CGVPath& q, Input const& i) { q.AppendExtension(i.arg.c_str()); },
                      +[](CGVPath& q, Input const& i) { q.SetExtension(i.arg.c_str()); },
                      +[](CGVPath& q, Input const& i) { q.SetExtension(i.number); },
                      +[](CGVPath& q, Input const&) { q.TrimExtension(); },
                      +[](CGVPath& q, Input const& i) { q.AppendPath(i.arg.c_str(), i.delimiter, i.number & 1); },
                      +[](CGVPath& q, Input const& i) { q.AppendPath(i.number, i.delimiter, i.number & 2); },
                      +[](CGVPath& q, Input const& i) { q.AppendDelimiter(i.arg.c_str()); },
                      +[](CGVPath& q, Input const&) { q.AppendWildcard(); },
                      +[](CGVPath& q, Input const&) { q.TrimRightPath(); },
                      +[](CGVPath& q, Input const&) { q.TrimVolume(); },
                      +[](CGVPath& q, Input const& i) { q.SetVolume(i.arg.c_str()); }}) {
        CGVPath copy(p);
        edit(copy, in);
    }
}

void Trims(Input const& in) {
    char const* a = in.arg.c_str();
    int n = in.path.GetLength();
    for (int q : {in.number, -in.number, n, -n, n + 1, 0}) {
        CGVPath left(in.path), right(in.path);
        left.TrimLeft(q);
        right.TrimRight(q);
    }
    for (int flag : {0, 1}) {
        CGVPath p1(in.path), p2(in.path), p3(in.path), p4(in.path), p5(in.path);
        p1.TrimLeftCharacters(a, flag);
        p2.TrimRightCharacters(a, flag);
        p3.TrimCharacters(a, flag);
        p4.TrimLeftDelimiters(flag);
        p5.TrimRightDelimiters(flag);
    }
    CGVPath p1(in.path), p2(in.path), p3(in.path), p4(in.path), p5(in.path);
    p1.Trim();
    p2.TrimDelimiters();
    p3.TrimQuotes(in.number);
    p4.AddQuotes();
    p5.Capitalize();
}

void URLs(Input const& in) {
    char const* a = in.arg.c_str();
    CGVPath const& p = in.path;
    p.GetLegalURLCharacters();
    p.IsLegalURL(a);
    p.GetURLScheme();
    p.GetURLHost();
    p.GetURLName();
    p.GetURLDirectory();
    p.CompareURL(a);
    p.CompareURL(p);
    CGVPath legal(p), schemed(p), trimmed(p), file(p);
    legal.MakeLegalURL(nullptr, in.number);
    if (!legal.IsLegalURL(nullptr))
        abort();  // a made-legal URL must pass its own test
    schemed.MakeLegalURL(a, 0);
    trimmed.TrimURLScheme();
    file.CreateFileScheme();
}

void Volumes(Input const& in) {
    char const* a = in.arg.c_str();
    CGVPath const& p = in.path;
    p.GetVolumeMaxPath();
    p.GetVolumeMaxComponent();
    p.GetVolumeMaxExtension();
    p.IsVolumeLongFileNameEnabled();
    p.IsVolume();
    p.IsFile();
    p.IsDirectory();
    p.IsAvailable();
    p.IsBaseAvailable();
    CGVPath(p).GetAvailable();
    CGVPath(p).GetFullPathNameA(nullptr);
    CGVPath(p).GetFullPathNameA(a);
    CGVPath::CompareFiles(p, a);
    p.CompareFile(a);
    p.CompareVolume(a);
    p.IsInDirectoryOf(a);
    CGVPath(p).MakeUNCSpecified();
}

void Legality(Input const& in) {
    char const* a = in.arg.c_str();
    CGVPath const& p = in.path;
    p.GetBadPathCharacters(in.number & 1);
    p.GetBadNameCharacters(in.number & 1);
    p.IsLegal(nullptr);
    p.IsLegal(a);
    p.IsLegalLength(-1);
    p.IsLegalLength(in.number);
    p.IsLegalComponentLength(-1);
    p.IsLegalComponentLength(in.number);
    p.IsLegalExtensionLength(-1);
    p.IsLegalExtensionLength(in.number);
    CGVPath name(p), path(p);
    name.MakeLegalName(a);
    path.MakeLegalPath();
}

void Uniqueness(Input const& in) {
    char const* a = in.arg.c_str();
    CGVPath const& p = in.path;
    p.IsUnique(nullptr);
    p.IsUnique(a);
    // The taken names are the argument's lines.
    CGVStringArray taken, reusable;
    size_t start = 0;
    while (start <= in.arg.size()) {
        size_t end = in.arg.find('\n', start);
        if (end == std::string::npos)
            end = in.arg.size();
        CGVString line(in.arg.substr(start, end - start).c_str());
        taken.mAdd(&line);
        start = end + 1;
    }
    reusable.mAdd(&p);
    int first = in.number & 0x7F, numbered = (in.number >> 7) & 0x7F;
    CGVPath u1(p), u2(p), u3(p), u4(p);
    u1.MakeUnique(first, numbered, &taken, &reusable);
    u2.MakeUnique(a, first, numbered, &taken, nullptr);
    u3.MakeUniqueLegalURL(first, numbered, nullptr, &reusable);
    u4.MakeUniqueLegalURL(a, first, numbered, &taken, &reusable);
}

void Relative(Input const& in) {
    in.path.GetRelativePath(in.arg.c_str());
    in.path.GetUrlRelativePath(in.arg.c_str());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(uint8_t const* data, size_t size) {
    static Volume volume;
    std::string text(reinterpret_cast<char const*>(data), size);
    size_t nul = text.find('\0');
    Input in;
    // The path keeps any NULs after the first one out: the members read it as text.
    in.path = text.substr(0, nul).c_str();
    if (nul != std::string::npos) {
        in.arg = text.substr(nul + 1).c_str();
        if (!in.arg.empty()) {
            unsigned char code = static_cast<unsigned char>(in.arg[0]);
            in.number = static_cast<int8_t>(code) * 3;
            in.delimiter = "\0\\/:.\xE4 "[code % 7];
        }
    }
    // Members must not change the path they were asked about.
    CGVPath const before(in.path);
    Model(in);
    Components(in);
    Trims(in);
    URLs(in);
    Volumes(in);
    Legality(in);
    Uniqueness(in);
    Relative(in);
    if (in.path.Compare(before) != 0)
        abort();
    return 0;
}
