// Array inserts at the front, deletes, and saving and loading 100,000 strings,
// against std::vector and the standard string streams on the same work.
#include <benchmark/benchmark.h>

#include <sstream>
#include <string>
#include <vector>

#include "gvlib/array/GVLongArray.h"
#include "gvlib/array/GVStringArray.h"
#include "gvlib/buffer/GVBuffer.h"

namespace {

constexpr int32_t kEdits = 10000;
constexpr int32_t kStrings = 100000;

void InsertFront_gvlib(benchmark::State& state) {
    for (auto _ : state) {
        CGVLongArray a;
        int32_t first = 0;
        a.mAdd(&first);
        for (int32_t v = 1; v < kEdits; ++v)
            a.mInsertAtIndex(&v, 0);
        benchmark::DoNotOptimize(a.mGetNumItems());
    }
}

void InsertFront_peer(benchmark::State& state) {
    for (auto _ : state) {
        std::vector<int32_t> v{0};
        for (int32_t x = 1; x < kEdits; ++x)
            v.insert(v.begin(), x);
        benchmark::DoNotOptimize(v.data());
    }
}

void DeleteFront_gvlib(benchmark::State& state) {
    for (auto _ : state) {
        state.PauseTiming();
        CGVLongArray a;
        for (int32_t v = 0; v < kEdits; ++v)
            a.mAdd(&v);
        state.ResumeTiming();
        while (a.mGetNumItems() > 0)
            a.mDeleteItem(0);
        benchmark::DoNotOptimize(a.mGetNumItems());
    }
}

void DeleteFront_peer(benchmark::State& state) {
    for (auto _ : state) {
        state.PauseTiming();
        std::vector<int32_t> v;
        for (int32_t x = 0; x < kEdits; ++x)
            v.push_back(x);
        state.ResumeTiming();
        while (!v.empty())
            v.erase(v.begin());
        benchmark::DoNotOptimize(v.data());
    }
}

std::string Word(int32_t i) { return "name number " + std::to_string(i) + (i % 3 ? " of the list" : ""); }

void SaveLoad_gvlib(benchmark::State& state) {
    CGVStringArray source;
    for (int32_t i = 0; i < kStrings; ++i) {
        CGVString s(Word(i).c_str());
        source.mAdd(&s);
    }
    for (auto _ : state) {
        CGVBuffer saved;
        source.mSave(saved);
        CGVStringArray back;
        back.mLoad(saved);
        benchmark::DoNotOptimize(back.mGetNumItems());
    }
}

// The same text written with ostringstream and read back with istringstream.
void SaveLoad_peer(benchmark::State& state) {
    std::vector<std::string> source;
    for (int32_t i = 0; i < kStrings; ++i)
        source.push_back(Word(i));
    for (auto _ : state) {
        std::ostringstream os;
        os << "XU" << source.size() << ' ';
        for (auto const& s : source) {
            os << 'T' << s.size() << ' ';
            os.write(s.data(), static_cast<std::streamsize>(s.size()));
            os << ' ';
        }
        std::istringstream is(os.str());
        char tag;
        size_t count = 0;
        is >> tag >> tag >> count;
        is.get();
        std::vector<std::string> back;
        for (size_t i = 0; i < count; ++i) {
            size_t n = 0;
            is >> tag >> n;
            is.get();
            std::string s(n, '\0');
            is.read(&s[0], static_cast<std::streamsize>(n));
            is.get();
            back.push_back(std::move(s));
        }
        benchmark::DoNotOptimize(back.data());
    }
}

}  // namespace

BENCHMARK(InsertFront_gvlib)->Name("InsertFront10k/gvlib")->Unit(benchmark::kMillisecond);
BENCHMARK(InsertFront_peer)->Name("InsertFront10k/peer")->Unit(benchmark::kMillisecond);
BENCHMARK(DeleteFront_gvlib)->Name("DeleteFront10k/gvlib")->Unit(benchmark::kMillisecond);
BENCHMARK(DeleteFront_peer)->Name("DeleteFront10k/peer")->Unit(benchmark::kMillisecond);
BENCHMARK(SaveLoad_gvlib)->Name("SaveLoad100kStrings/gvlib")->Unit(benchmark::kMillisecond);
BENCHMARK(SaveLoad_peer)->Name("SaveLoad100kStrings/peer")->Unit(benchmark::kMillisecond);
