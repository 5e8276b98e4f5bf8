// Path members that touch the disk or walk text, against the standard peer on
// the same work: numbering a name past N existing ones (and against the least
// that work needs, one look-up per candidate in the directory's names),
// relative paths, and the legality test once the volume answer is cached.
#include <benchmark/benchmark.h>

#include <stdlib.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <unordered_set>

#include "gvlib/path/GVPath.h"
#include "gvlib/platform/volumes.h"

namespace {

namespace fs = std::filesystem;

// A temporary directory holding report.txt and report (2).txt to report (N).txt
// (or another base, in UTF-8), mapped as the fixed long-name drive B:. Removed
// when the process ends.
class NumberedDirectory {
public:
    explicit NumberedDirectory(int count, std::string const& base = "report") {
        std::string root = (fs::temp_directory_path() / "gvlib_bench_XXXXXX").string();
        if (mkdtemp(&root[0]) == nullptr)
            std::abort();
        root_ = root;
        Touch(base + ".txt");
        for (int n = 2; n <= count; ++n)
            Touch(base + " (" + std::to_string(n) + ").txt");
        gvplatform::VolumeOptions options;
        options.maxComponentLength = 255;
        gvplatform::MapDrive('B', root_.string(), options);
    }
    ~NumberedDirectory() {
        gvplatform::UnmapDrive('B');
        std::error_code ignored;
        fs::remove_all(root_, ignored);
    }
    fs::path const& Root() const { return root_; }

private:
    void Touch(std::string const& name) const { std::ofstream(root_ / name) << "x"; }
    fs::path root_;
};

void MakeUnique_gvlib(benchmark::State& state) {
    NumberedDirectory dir(static_cast<int>(state.range(0)));
    for (auto _ : state) {
        CGVPath path("report.txt");
        benchmark::DoNotOptimize(path.MakeUnique("B:\\", 0, 0, nullptr, nullptr));
    }
}

// The names on disk in lower case with a letter beyond ASCII, asked for in
// upper case: no candidate exists as written. No standard peer matches names
// without case; MakeUnique/gvlib is the same work with the case matching.
void MakeUniqueOtherCase_gvlib(benchmark::State& state) {
    NumberedDirectory dir(static_cast<int>(state.range(0)), "\xC3\xA4rende");  // "ärende"
    for (auto _ : state) {
        CGVPath path("\xC4RENDE.TXT");
        benchmark::DoNotOptimize(path.MakeUnique("B:\\", 0, 0, nullptr, nullptr));
    }
}

// The same candidates, asked of the file system directly.
void MakeUnique_peer(benchmark::State& state) {
    NumberedDirectory dir(static_cast<int>(state.range(0)));
    for (auto _ : state) {
        fs::path candidate = dir.Root() / "report.txt";
        for (int n = 2; fs::exists(candidate); ++n)
            candidate = dir.Root() / ("report (" + std::to_string(n) + ").txt");
        benchmark::DoNotOptimize(candidate);
    }
}

// The least the contract forces: the directory's names in a set, listed once,
// and one look-up per candidate.
void MakeUnique_limit(benchmark::State& state) {
    NumberedDirectory dir(static_cast<int>(state.range(0)));
    std::unordered_set<std::string> names;
    for (auto const& entry : fs::directory_iterator(dir.Root()))
        names.insert(entry.path().filename().string());
    for (auto _ : state) {
        std::string candidate = "report.txt";
        for (int n = 2; names.count(candidate) != 0; ++n)
            candidate = "report (" + std::to_string(n) + ").txt";
        benchmark::DoNotOptimize(candidate);
    }
}

void RelativePath_gvlib(benchmark::State& state) {
    CGVPath target("C:\\site\\pages\\deep\\a.htm");
    for (auto _ : state)
        benchmark::DoNotOptimize(target.GetRelativePath("C:\\site\\img\\x\\y"));
}

void RelativePath_peer(benchmark::State& state) {
    fs::path target("/site/pages/deep/a.htm");
    for (auto _ : state)
        benchmark::DoNotOptimize(target.parent_path().lexically_relative("/site/img/x/y") / target.filename());
}

// The first call fills the volume cache; the loop measures the text rules.
void IsLegal_gvlib(benchmark::State& state) {
    CGVPath path("C:\\My Documents\\reports\\a.b.c.txt");
    path.IsLegal(nullptr);
    for (auto _ : state)
        benchmark::DoNotOptimize(path.IsLegal(nullptr));
}

}  // namespace

BENCHMARK(MakeUnique_gvlib)->Name("MakeUnique/gvlib")->Arg(1000)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK(MakeUnique_peer)->Name("MakeUnique/peer")->Arg(1000)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK(MakeUnique_limit)->Name("MakeUnique/limit")->Arg(1000)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK(MakeUniqueOtherCase_gvlib)->Name("MakeUniqueOtherCase/gvlib")->Arg(1000)->Unit(benchmark::kMillisecond);
BENCHMARK(RelativePath_gvlib)->Name("RelativePath/gvlib");
BENCHMARK(RelativePath_peer)->Name("RelativePath/peer");
BENCHMARK(IsLegal_gvlib)->Name("IsLegalWarmCache/gvlib");
