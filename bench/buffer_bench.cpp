// Buffer and string-stream throughput against the standard library on the same work.
#include <benchmark/benchmark.h>

#include <sstream>
#include <string>

#include "gvlib/buffer/GVBuffer.h"
#include "gvlib/core/QXStringStream.h"

namespace {

constexpr size_t kReplaceBytes = 8u << 20;
constexpr size_t kGrowBytes = 64u << 20;

// The peer: one pass that rebuilds into a std::string.
std::string RebuildReplaced(std::string const& in, std::string const& find, std::string const& repl) {
    std::string out;
    out.reserve(in.size());
    size_t read = 0;
    for (size_t at = in.find(find); at != std::string::npos; at = in.find(find, read)) {
        out.append(in, read, at - read);
        out.append(repl);
        read = at + find.size();
    }
    out.append(in, read, std::string::npos);
    return out;
}

std::string Pattern(char const* unit) {
    std::string text;
    while (text.size() < kReplaceBytes)
        text += unit;
    return text;
}

void BM_ReplaceAllGrowing_Buffer(benchmark::State& state) {
    std::string text = Pattern("a");
    for (auto _ : state) {
        state.PauseTiming();
        CGVBuffer b;
        b.mInit(text.data(), static_cast<int32_t>(text.size()));
        state.ResumeTiming();
        benchmark::DoNotOptimize(b.mReplaceAll("a", "aa"));
    }
}

void BM_ReplaceAllGrowing_String(benchmark::State& state) {
    std::string text = Pattern("a");
    for (auto _ : state)
        benchmark::DoNotOptimize(RebuildReplaced(text, "a", "aa"));
}

void BM_ReplaceAllShrinking_Buffer(benchmark::State& state) {
    std::string text = Pattern("ab");
    for (auto _ : state) {
        state.PauseTiming();
        CGVBuffer b;
        b.mInit(text.data(), static_cast<int32_t>(text.size()));
        state.ResumeTiming();
        benchmark::DoNotOptimize(b.mReplaceAll("ab", ""));
    }
}

void BM_ReplaceAllShrinking_String(benchmark::State& state) {
    std::string text = Pattern("ab");
    for (auto _ : state)
        benchmark::DoNotOptimize(RebuildReplaced(text, "ab", ""));
}

void BM_Concat100_Buffer(benchmark::State& state) {
    std::string chunk(100, 'c');
    for (auto _ : state) {
        CGVBuffer b;
        for (size_t n = 0; n < kGrowBytes; n += chunk.size())
            b.mConcat(chunk.data(), 100);
        benchmark::DoNotOptimize(b.mGetBuffer());
    }
}

void BM_Concat100_String(benchmark::State& state) {
    std::string chunk(100, 'c');
    for (auto _ : state) {
        std::string s;
        for (size_t n = 0; n < kGrowBytes; n += chunk.size())
            s.append(chunk);
        benchmark::DoNotOptimize(s.data());
    }
}

void BM_PutChar_QXStringStream(benchmark::State& state) {
    for (auto _ : state) {
        TQXStringStream s;
        for (size_t n = 0; n < kGrowBytes; ++n)
            s.put('s');
        benchmark::DoNotOptimize(static_cast<TQXStringStreamBuf*>(s.rdbuf())->mWrittenData());
    }
}

void BM_PutChar_OStringStream(benchmark::State& state) {
    for (auto _ : state) {
        std::ostringstream s;
        for (size_t n = 0; n < kGrowBytes; ++n)
            s.put('s');
        benchmark::DoNotOptimize(s.tellp());
    }
}

}  // namespace

BENCHMARK(BM_ReplaceAllGrowing_Buffer)->Name("ReplaceAll_a_by_aa_8MiB/gvlib")->Unit(benchmark::kMillisecond);
BENCHMARK(BM_ReplaceAllGrowing_String)->Name("ReplaceAll_a_by_aa_8MiB/peer")->Unit(benchmark::kMillisecond);
BENCHMARK(BM_ReplaceAllShrinking_Buffer)->Name("ReplaceAll_ab_by_empty_8MiB/gvlib")->Unit(benchmark::kMillisecond);
BENCHMARK(BM_ReplaceAllShrinking_String)->Name("ReplaceAll_ab_by_empty_8MiB/peer")->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Concat100_Buffer)->Name("Concat_100B_to_64MiB/gvlib")->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Concat100_String)->Name("Concat_100B_to_64MiB/peer")->Unit(benchmark::kMillisecond);
BENCHMARK(BM_PutChar_QXStringStream)->Name("StreamPut_64MiB/gvlib")->Unit(benchmark::kMillisecond);
BENCHMARK(BM_PutChar_OStringStream)->Name("StreamPut_64MiB/peer")->Unit(benchmark::kMillisecond);
