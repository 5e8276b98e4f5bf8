// Distinct value objects used from threads at once, and copies of one string changed in each; run under tsan.
#include <gtest/gtest.h>

#include <atomic>
#include <functional>
#include <string>
#include <thread>
#include <vector>

#include "gvlib/array/GVLongArray.h"
#include "gvlib/array/GVStringArray.h"
#include "gvlib/buffer/GVBuffer.h"
#include "gvlib/datetime/GVDate.h"
#include "gvlib/datetime/GVMoney.h"
#include "gvlib/string/GVString.h"

namespace {

constexpr int kThreads = 4;
constexpr int kRounds = 300;

// Runs `work(thread, round)` on kThreads threads at once; counts the rounds that found a wrong result.
int32_t Concurrently(std::function<bool(int, int)> const& work) {
    std::atomic<int32_t> wrong{0};
    std::atomic<bool> go{false};
    std::vector<std::thread> threads;
    for (int t = 0; t < kThreads; ++t) {
        threads.emplace_back([&, t] {
            while (!go.load())
                std::this_thread::yield();
            for (int r = 0; r < kRounds; ++r)
                wrong += !work(t, r);
        });
    }
    go = true;
    for (std::thread& t : threads)
        t.join();
    return wrong.load();
}

std::string S(CString const& s) { return std::string(s.GetString(), static_cast<size_t>(s.GetLength())); }

}  // namespace

TEST(Threads, CopiesOfOneSharedStringChangeIndependently) {
    CGVString const shared("shared text that every thread copies");
    std::string const original = S(shared);
    EXPECT_EQ(0, Concurrently([&](int t, int r) {
        CGVString copy(shared), other(copy);  // shares the block: the count is touched by all threads
        copy += static_cast<char>('a' + t);
        other.SetAt(0, 'X');
        CString tail = shared.Mid(r % 10);
        return S(copy) == original + static_cast<char>('a' + t) && other.GetAt(0) == 'X' &&
               S(tail) == original.substr(static_cast<size_t>(r % 10)) && S(shared) == original;
    }));
}

TEST(Threads, IndependentArraysSaveAndLoad) {
    EXPECT_EQ(0, Concurrently([](int t, int r) {
        CGVStringArray strings, back;
        CGVLongArray longs, longsBack;
        for (int32_t i = 0; i < 20; ++i) {
            CGVString s(std::to_string(t * 1000 + r + i).c_str());
            strings.mAdd(&s);
            longs.mAdd(&i);
        }
        CGVBuffer saved;
        strings.mSave(saved);
        back.mLoad(saved);
        longs.mSave(saved);
        longsBack.mLoad(saved);
        return back.mGetNumItems() == 20 && longsBack[19] == 19 && S(back[0]) == std::to_string(t * 1000 + r) &&
               S(back[19]) == std::to_string(t * 1000 + r + 19);
    }));
}

TEST(Threads, DatesAndMoneyFormat) {
    EXPECT_EQ(0, Concurrently([](int t, int r) {
        CGVDate date(static_cast<uint16_t>(1990 + t), static_cast<uint16_t>(1 + r % 12), 15, 12, 30, 0);
        CGVString text, month;
        date.mGetStr(text);
        date.mGetMonthDateStr(month);
        CGVString amount = static_cast<CGVString>(CGVMoney(t * 100 + r % 100 + 0.25));
        return text.GetLength() == 17 && month.GetLength() > 4 && S(amount) == std::to_string(t * 100 + r % 100) + ".25";
    }));
}
