// Array inserts at the front, deletes, and saving and loading strings (100,000
// together, then each alone at several sizes), against std::vector and the
// standard string streams on the same work; and the heap a loaded string costs.
#include <benchmark/benchmark.h>
#include <malloc.h>

#include <cstdio>

#include <sstream>
#include <string>
#include <vector>

#include "gvlib/array/GVLongArray.h"
#include "gvlib/array/GVStringArray.h"
#include "gvlib/platform/allocator.h"
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

CGVStringArray Strings(int64_t n) {
    CGVStringArray a;
    for (int64_t i = 0; i < n; ++i) {
        CGVString s(Word(static_cast<int32_t>(i)).c_str());
        a.mAdd(&s);
    }
    return a;
}

std::vector<std::string> PeerStrings(int64_t n) {
    std::vector<std::string> v;
    for (int64_t i = 0; i < n; ++i)
        v.push_back(Word(static_cast<int32_t>(i)));
    return v;
}

std::string PeerSave(std::vector<std::string> const& source) {
    std::ostringstream os;
    os << "XU" << source.size() << ' ';
    for (auto const& s : source) {
        os << 'T' << s.size() << ' ';
        os.write(s.data(), static_cast<std::streamsize>(s.size()));
        os << ' ';
    }
    return os.str();
}

std::vector<std::string> PeerLoad(std::string const& text) {
    std::istringstream is(text);
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
    return back;
}

// The same text written with ostringstream and read back with istringstream.
void SaveLoad_peer(benchmark::State& state) {
    std::vector<std::string> source = PeerStrings(kStrings);
    for (auto _ : state) {
        std::vector<std::string> back = PeerLoad(PeerSave(source));
        benchmark::DoNotOptimize(back.data());
    }
}

void Save_gvlib(benchmark::State& state) {
    CGVStringArray source = Strings(state.range(0));
    for (auto _ : state) {
        CGVBuffer saved;
        source.mSave(saved);
        benchmark::DoNotOptimize(saved.ContentLength());
    }
}

void Save_peer(benchmark::State& state) {
    std::vector<std::string> source = PeerStrings(state.range(0));
    for (auto _ : state)
        benchmark::DoNotOptimize(PeerSave(source).size());
}

void Load_gvlib(benchmark::State& state) {
    CGVBuffer saved;
    Strings(state.range(0)).mSave(saved);
    for (auto _ : state) {
        CGVStringArray back;
        back.mLoad(saved);
        benchmark::DoNotOptimize(back.mGetNumItems());
    }
}

void Load_peer(benchmark::State& state) {
    std::string saved = PeerSave(PeerStrings(state.range(0)));
    for (auto _ : state)
        benchmark::DoNotOptimize(PeerLoad(saved).size());
}

// Heap bytes per loaded string of 15 characters, the text's own 16 bytes included
// (the counter "beyond_text" leaves them out): the string object, its block's
// header and the array's slot.
constexpr int32_t kCounted = 1000000;

std::string Short(int32_t i) {
    char text[16];
    std::snprintf(text, sizeof text, "item%011d", i);
    return text;
}

// Small blocks and the large ones the C library maps on their own (the
// slots), and the slabs the library maps for its value objects.
size_t HeapInUse() {
    struct mallinfo2 m = mallinfo2();
    return m.uordblks + m.hblkhd + gvplatform::detail::ObjectPoolBytes();
}

void ReportHeap(benchmark::State& state, size_t before, size_t after) {
    double each = (static_cast<double>(after) - static_cast<double>(before)) / kCounted;
    state.counters["bytes_per_item"] = each;
    state.counters["beyond_text"] = each - 16;
}

void LoadedBytes_gvlib(benchmark::State& state) {
    CGVStringArray source;
    for (int32_t i = 0; i < kCounted; ++i) {
        CGVString s(Short(i).c_str());
        source.mAdd(&s);
    }
    CGVBuffer saved;
    source.mSave(saved);
    source.mClear();
    for (auto _ : state) {
        size_t before = HeapInUse();
        CGVStringArray back;
        back.mLoad(saved);
        size_t after = HeapInUse();
        ReportHeap(state, before, after);
        benchmark::DoNotOptimize(back.mGetNumItems());
    }
}

void LoadedBytes_peer(benchmark::State& state) {
    std::vector<std::string> source;
    for (int32_t i = 0; i < kCounted; ++i)
        source.push_back(Short(i));
    std::string saved = PeerSave(source);
    source = {};
    for (auto _ : state) {
        size_t before = HeapInUse();
        std::vector<std::string> back = PeerLoad(saved);
        size_t after = HeapInUse();
        ReportHeap(state, before, after);
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
BENCHMARK(Save_gvlib)->Name("SaveStrings/gvlib")->RangeMultiplier(10)->Range(10000, 1000000)->Unit(benchmark::kMillisecond);
BENCHMARK(Save_peer)->Name("SaveStrings/peer")->RangeMultiplier(10)->Range(10000, 1000000)->Unit(benchmark::kMillisecond);
BENCHMARK(Load_gvlib)->Name("LoadStrings/gvlib")->RangeMultiplier(10)->Range(10000, 1000000)->Unit(benchmark::kMillisecond);
BENCHMARK(Load_peer)->Name("LoadStrings/peer")->RangeMultiplier(10)->Range(10000, 1000000)->Unit(benchmark::kMillisecond);
BENCHMARK(LoadedBytes_gvlib)->Name("LoadedBytes1M/gvlib")->Iterations(1)->Unit(benchmark::kMillisecond);
BENCHMARK(LoadedBytes_peer)->Name("LoadedBytes1M/peer")->Iterations(1)->Unit(benchmark::kMillisecond);
