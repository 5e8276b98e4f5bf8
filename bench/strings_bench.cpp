// Strings against std::string on copying and modifying, and mCompare under
// locale 1033 against an ICU collator used directly on the same words, and
// against the least a comparison must do: one table look-up per byte.
#include <benchmark/benchmark.h>
#include <unicode/ucol.h>
#include <unicode/ustring.h>
#include <malloc.h>
#include <sys/single_threaded.h>

#include <algorithm>
#include <atomic>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include "gvlib/string/GVString.h"

namespace {

// glibc's dynamic mmap threshold makes the cost of a large block depend on
// which blocks were freed before it (fresh pages fault in, reused heap does
// not), so large appends measured the history of the process more than the
// case. Fixed thresholds give every side the same allocator.
struct FixedAllocator {
    FixedAllocator() {
        mallopt(M_MMAP_THRESHOLD, 64 << 20);
        mallopt(M_TRIM_THRESHOLD, 128 << 20);
    }
} const g_fixedAllocator;

void Copy_gvlib(benchmark::State& state) {
    CGVString source(CGVString('x', static_cast<int>(state.range(0))));
    for (auto _ : state) {
        CGVString copy(source);  // shares the block
        benchmark::DoNotOptimize(copy.GetString());
    }
}

void Copy_peer(benchmark::State& state) {
    std::string source(static_cast<size_t>(state.range(0)), 'x');
    for (auto _ : state) {
        std::string copy(source);
        benchmark::DoNotOptimize(copy.data());
    }
}

void CopyModify_gvlib(benchmark::State& state) {
    CGVString source(CGVString('x', static_cast<int>(state.range(0))));
    for (auto _ : state) {
        CGVString copy(source);
        copy.SetAt(0, 'y');  // the first change takes a block of its own
        benchmark::DoNotOptimize(copy.GetString());
    }
}

void CopyModify_peer(benchmark::State& state) {
    std::string source(static_cast<size_t>(state.range(0)), 'x');
    for (auto _ : state) {
        std::string copy(source);
        copy[0] = 'y';
        benchmark::DoNotOptimize(copy.data());
    }
}

// The least a modified copy needs: one block, one copy of the text, one free,
// and the reference the copy takes and gives back on its first change. Shared
// between threads those are two locked operations; in a process that has one
// thread (as here) they are plain arithmetic, as in the library.
void CopyModify_limit(benchmark::State& state) {
    const size_t n = static_cast<size_t>(state.range(0));
    std::string source(n, 'x');
    std::atomic<int32_t> references{1};
    for (auto _ : state) {
        if (__libc_single_threaded)
            references.store(references.load(std::memory_order_relaxed) + 1, std::memory_order_relaxed);
        else
            references.fetch_add(1);
        char* copy = static_cast<char*>(std::malloc(n + 1));
        std::memcpy(copy, source.c_str(), n + 1);
        if (__libc_single_threaded)
            references.store(references.load(std::memory_order_relaxed) - 1, std::memory_order_relaxed);
        else
            references.fetch_sub(1);
        copy[0] = 'y';
        benchmark::DoNotOptimize(copy);
        std::free(copy);
    }
}

void Append_gvlib(benchmark::State& state) {
    for (auto _ : state) {
        CGVString s;
        for (int64_t i = 0; i < state.range(0); ++i)
            s += 'x';
        benchmark::DoNotOptimize(s.GetString());
    }
}

void Append_peer(benchmark::State& state) {
    for (auto _ : state) {
        std::string s;
        for (int64_t i = 0; i < state.range(0); ++i)
            s += 'x';
        benchmark::DoNotOptimize(s.data());
    }
}

// The least appending needs: a byte stored and a terminator kept per call,
// and a block that doubles with realloc.
void Append_limit(benchmark::State& state) {
    for (auto _ : state) {
        size_t capacity = 8, length = 0;
        char* text = static_cast<char*>(std::malloc(capacity + 1));
        for (int64_t i = 0; i < state.range(0); ++i) {
            if (length == capacity)
                text = static_cast<char*>(std::realloc(text, (capacity *= 2) + 1));
            text[length++] = 'x';
            text[length] = '\0';
        }
        benchmark::DoNotOptimize(text);
        std::free(text);
    }
}

// Short words with the mixes the word sort cares about: case, hyphens, digits, accents.
std::vector<std::string> Words() {
    std::mt19937 random(42);
    const char letters[] = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789-'\xE4\xE9";
    std::vector<std::string> words(2048);
    for (auto& w : words) {
        size_t n = 3 + random() % 8;
        for (size_t i = 0; i < n; ++i)
            w += letters[random() % (sizeof letters - 1)];
    }
    return words;
}

void Compare1033_gvlib(benchmark::State& state) {
    GVSetSortLCID(1033);
    std::vector<CGVString> words;
    for (auto const& w : Words())
        words.emplace_back(w.c_str());
    size_t i = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(words[i & 2047].mCompare(&words[(i * 7 + 1) & 2047]));
        ++i;
    }
}

void Compare1033_peer(benchmark::State& state) {
    UErrorCode err = U_ZERO_ERROR;
    std::unique_ptr<UCollator, void (*)(UCollator*)> collator(ucol_open("en_US", &err), ucol_close);
    std::vector<std::u16string> words;
    for (auto const& w : Words()) {
        std::u16string u;
        for (char c : w)
            u.push_back(static_cast<char16_t>(static_cast<unsigned char>(c)));  // Latin-1 part of 1252
        words.push_back(u);
    }
    size_t i = 0;
    for (auto _ : state) {
        auto const& a = words[i & 2047];
        auto const& b = words[(i * 7 + 1) & 2047];
        benchmark::DoNotOptimize(ucol_strcoll(collator.get(), a.data(), static_cast<int32_t>(a.size()), b.data(),
                                              static_cast<int32_t>(b.size())));
        ++i;
    }
}

// The floor: the words compared byte by byte through a rank table of the
// collator's primary order, with no case or accent levels and no word sort.
void Compare1033_limit(benchmark::State& state) {
    UErrorCode err = U_ZERO_ERROR;
    std::unique_ptr<UCollator, void (*)(UCollator*)> collator(ucol_open("en_US", &err), ucol_close);
    ucol_setStrength(collator.get(), UCOL_PRIMARY);
    std::vector<UChar> bytes(256);
    for (int b = 0; b < 256; ++b)
        bytes[static_cast<size_t>(b)] = static_cast<UChar>(b);
    std::vector<int> order(256);
    for (int b = 0; b < 256; ++b)
        order[static_cast<size_t>(b)] = b;
    std::sort(order.begin(), order.end(), [&](int x, int y) {
        return ucol_strcoll(collator.get(), &bytes[static_cast<size_t>(x)], 1, &bytes[static_cast<size_t>(y)], 1) ==
               UCOL_LESS;
    });
    unsigned char rank[256];
    for (int i = 0; i < 256; ++i)
        rank[order[static_cast<size_t>(i)]] = static_cast<unsigned char>(i);
    const std::vector<std::string> words = Words();
    size_t i = 0;
    for (auto _ : state) {
        auto const& a = words[i & 2047];
        auto const& b = words[(i * 7 + 1) & 2047];
        size_t k = 0;
        const size_t n = std::min(a.size(), b.size());
        while (k < n && rank[static_cast<unsigned char>(a[k])] == rank[static_cast<unsigned char>(b[k])])
            ++k;
        int r = k < n ? rank[static_cast<unsigned char>(a[k])] - rank[static_cast<unsigned char>(b[k])]
                      : static_cast<int>(a.size()) - static_cast<int>(b.size());
        benchmark::DoNotOptimize(r);
        ++i;
    }
}

}  // namespace

BENCHMARK(Copy_gvlib)->Name("Copy/gvlib")->Arg(1 << 10)->Arg(1 << 20);
BENCHMARK(Copy_peer)->Name("Copy/peer")->Arg(1 << 10)->Arg(1 << 20);
BENCHMARK(CopyModify_gvlib)->Name("CopyModify/gvlib")->Arg(1 << 10)->Arg(1 << 20);
BENCHMARK(CopyModify_peer)->Name("CopyModify/peer")->Arg(1 << 10)->Arg(1 << 20);
BENCHMARK(CopyModify_limit)->Name("CopyModify/limit")->Arg(1 << 10)->Arg(1 << 20);
BENCHMARK(Append_gvlib)->Name("AppendChar/gvlib")->Arg(1 << 10)->Arg(1 << 20);
BENCHMARK(Append_peer)->Name("AppendChar/peer")->Arg(1 << 10)->Arg(1 << 20);
BENCHMARK(Append_limit)->Name("AppendChar/limit")->Arg(1 << 10)->Arg(1 << 20);
BENCHMARK(Compare1033_gvlib)->Name("Compare1033/gvlib");
BENCHMARK(Compare1033_peer)->Name("Compare1033/peer");
BENCHMARK(Compare1033_limit)->Name("Compare1033/limit");
