// Integer array appends and the index sort against the standard library on the same work.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdint>
#include <random>
#include <vector>

#include <malloc.h>

#include "gvlib/array/GVLongArray.h"
#include "gvlib/array/GVSort.h"
#include "support/reference_sort.h"

namespace {

constexpr int32_t kCount = 1000000;

// glibc maps big blocks afresh until a freed one raises its threshold, so a
// vector's doublings cost page faults early in a run and none later. Blocks
// of this suite's sizes stay in the heap from the start: both sides run in
// that steady state in every order.
struct SteadyHeap {
    SteadyHeap() {
        mallopt(M_MMAP_THRESHOLD, 64 << 20);
        mallopt(M_TRIM_THRESHOLD, 256 << 20);
    }
} const g_steadyHeap;

void BM_Append_LongArray(benchmark::State& state) {
    for (auto _ : state) {
        CGVLongArray a;
        for (int32_t v = 0; v < kCount; ++v)
            a.mAdd(&v);
        benchmark::DoNotOptimize(a.mItemPtr(0));
    }
    state.SetItemsProcessed(state.iterations() * kCount);
}

void BM_Append_Vector(benchmark::State& state) {
    for (auto _ : state) {
        std::vector<int32_t> v;
        for (int32_t x = 0; x < kCount; ++x)
            v.push_back(x);
        benchmark::DoNotOptimize(v.data());
    }
    state.SetItemsProcessed(state.iterations() * kCount);
}

std::vector<int32_t> RandomValues() {
    std::mt19937 rng(2024);
    std::vector<int32_t> values(kCount);
    for (auto& v : values)
        v = static_cast<int32_t>(rng());
    return values;
}

// The callbacks of the index sort: plain accesses to one vector, counted.
std::vector<int32_t> g_values;
uint64_t g_compares = 0;
uint64_t g_swaps = 0;

int32_t CompareAt(uint32_t i, uint32_t j) {
    ++g_compares;
    return g_values[i] < g_values[j] ? -1 : (g_values[i] > g_values[j] ? 1 : 0);
}

void SwapAt(uint32_t i, uint32_t j) {
    ++g_swaps;
    std::swap(g_values[i], g_values[j]);
}

void BM_Sort_QSortPlusPlus(benchmark::State& state) {
    std::vector<int32_t> input = RandomValues();
    g_compares = g_swaps = 0;
    for (auto _ : state) {
        state.PauseTiming();
        g_values = input;
        state.ResumeTiming();
        qsortplusplus(kCount, SwapAt, CompareAt);
    }
    double sorts = static_cast<double>(state.iterations()) * kCount;
    state.counters["compares/elem"] = static_cast<double>(g_compares) / sorts;
    state.counters["swaps/elem"] = static_cast<double>(g_swaps) / sorts;
}

// The limit: the same steps written as plain recursion (the tests' reference),
// the floor for the specified call sequence, branch mispredictions included.
void BM_Sort_RecursiveFloor(benchmark::State& state) {
    std::vector<int32_t> input = RandomValues();
    GVSWAPPROC swap = SwapAt;
    GVCOMPAREPROC compare = CompareAt;
    for (auto _ : state) {
        state.PauseTiming();
        g_values = input;
        state.ResumeTiming();
        gvtest::ReferenceRange(0, kCount - 1, compare, swap);
    }
}

// std::sort through a comparison callback reached by a function pointer, as the
// index sort reaches its callbacks; it moves the elements itself.
int32_t CompareValues(int32_t a, int32_t b) {
    ++g_compares;
    return a < b ? -1 : (a > b ? 1 : 0);
}
int32_t (*volatile g_compareValues)(int32_t, int32_t) = CompareValues;

void BM_Sort_StdSort(benchmark::State& state) {
    std::vector<int32_t> input = RandomValues();
    std::vector<int32_t> values;
    auto compare = g_compareValues;
    g_compares = 0;
    for (auto _ : state) {
        state.PauseTiming();
        values = input;
        state.ResumeTiming();
        std::sort(values.begin(), values.end(), [compare](int32_t a, int32_t b) { return compare(a, b) < 0; });
        benchmark::DoNotOptimize(values.data());
    }
    const double sorts = static_cast<double>(state.iterations()) * kCount;
    state.counters["compares/elem"] = static_cast<double>(g_compares) / sorts;
}

}  // namespace

BENCHMARK(BM_Append_LongArray)->Name("Append1M/gvlib")->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Append_Vector)->Name("Append1M/peer")->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Sort_QSortPlusPlus)->Name("Sort1M/gvlib")->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Sort_RecursiveFloor)->Name("Sort1M/limit")->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Sort_StdSort)->Name("Sort1M/peer")->Unit(benchmark::kMillisecond);
