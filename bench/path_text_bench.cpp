// Path text work against plain std::string code doing the same: taking a path
// apart and putting it together, and making every component legal.
#include <benchmark/benchmark.h>

#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

#include "gvlib/array/GVStringArray.h"
#include "gvlib/path/GVPath.h"

namespace {

const char kPath[] = "C:\\Users\\me\\Documents\\Projects\\2024\\reports\\quarterly\\draft\\final\\summary.txt";

void ExplodeImplode_gvlib(benchmark::State& state) {
    CGVPath path(kPath);
    for (auto _ : state) {
        CGVPath volume;
        CGVStringArray parts;
        path.Explode(volume, parts);
        CGVPath joined;
        joined.Implode(volume, parts);
        benchmark::DoNotOptimize(joined.GetString());
    }
}

void ExplodeImplode_peer(benchmark::State& state) {
    std::string path(kPath);
    for (auto _ : state) {
        std::string volume = path.substr(0, 2);
        std::vector<std::string> parts;
        size_t at = 3;
        while (at < path.size()) {
            size_t next = path.find('\\', at);
            if (next == std::string::npos)
                next = path.size();
            parts.push_back(path.substr(at, next - at));
            at = next + 1;
        }
        std::string joined = volume;
        for (auto const& part : parts)
            joined += "\\" + part;
        benchmark::DoNotOptimize(joined.data());
    }
}

// The least the contract forces: every component in a heap block of its own
// (the array's strings), the result in one more, and nothing else.
void ExplodeImplode_limit(benchmark::State& state) {
    const size_t length = sizeof kPath - 1;
    std::vector<char*> parts;
    parts.reserve(16);
    for (auto _ : state) {
        size_t at = 3;
        while (at < length) {
            const char* end = static_cast<const char*>(std::memchr(kPath + at, '\\', length - at));
            const size_t next = end != nullptr ? static_cast<size_t>(end - kPath) : length;
            char* part = static_cast<char*>(std::malloc(next - at + 1));
            std::memcpy(part, kPath + at, next - at);
            part[next - at] = '\0';
            parts.push_back(part);
            at = next + 1;
        }
        char* joined = static_cast<char*>(std::malloc(length + 1));
        size_t n = 2;
        std::memcpy(joined, kPath, 2);
        for (char* part : parts) {
            joined[n++] = '\\';
            const size_t size = std::strlen(part);
            std::memcpy(joined + n, part, size);
            n += size;
            std::free(part);
        }
        joined[n] = '\0';
        parts.clear();
        benchmark::DoNotOptimize(joined);
        std::free(joined);
    }
}

const char kDirty[] = "C:\\dir:x\\my file?.name.html \\a*b<c>.txt";

void MakeLegalPath_gvlib(benchmark::State& state) {
    CGVPath dirty(kDirty);
    dirty.MakeLegalPath();  // fills the volume cache
    for (auto _ : state) {
        CGVPath path(kDirty);
        path.MakeLegalPath();
        benchmark::DoNotOptimize(path.GetString());
    }
}

// The peer drops the characters a long-name volume refuses from each component.
void MakeLegalPath_peer(benchmark::State& state) {
    const std::string bad = "\\/:*?\"<>|";
    for (auto _ : state) {
        std::string path(kDirty);
        std::string out = path.substr(0, 2);
        size_t at = 3;
        while (at <= path.size()) {
            size_t next = path.find('\\', at);
            if (next == std::string::npos)
                next = path.size();
            std::string part;
            for (size_t i = at; i < next; ++i)
                if (bad.find(path[i]) == std::string::npos)
                    part += path[i];
            while (!part.empty() && (part.back() == ' ' || part.back() == '.'))
                part.pop_back();
            out += "\\" + part;
            at = next + 1;
        }
        benchmark::DoNotOptimize(out.data());
    }
}

}  // namespace

BENCHMARK(ExplodeImplode_gvlib)->Name("ExplodeImplode/gvlib");
BENCHMARK(ExplodeImplode_peer)->Name("ExplodeImplode/peer");
BENCHMARK(ExplodeImplode_limit)->Name("ExplodeImplode/limit");
BENCHMARK(MakeLegalPath_gvlib)->Name("MakeLegalPath/gvlib");
BENCHMARK(MakeLegalPath_peer)->Name("MakeLegalPath/peer");
