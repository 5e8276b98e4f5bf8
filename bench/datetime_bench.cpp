// Dates and money against the C library's calendar calls and plain integers.
#include <benchmark/benchmark.h>

#include <cstdint>
#include <cstdlib>
#include <ctime>
#include <memory>

#include "gvlib/datetime/GVDate.h"
#include "gvlib/datetime/GVMoney.h"

namespace {

// Every case runs in UTC, the zone in which both sides do the least.
struct Utc {
    Utc() {
        setenv("TZ", "UTC", 1);
        tzset();
    }
} const g_utc;

constexpr int32_t kStart = 1700000000;

void Getters_gvlib(benchmark::State& state) {
    CGVDate date;
    int32_t t = kStart;
    for (auto _ : state) {
        date = t;
        t += 3601;
        benchmark::DoNotOptimize(date.mGetYear() + date.mGetMonth() + date.mGetDay() + date.mGetHour() +
                                 date.mGetMinute() + date.mGetSecond());
    }
}

void Getters_peer(benchmark::State& state) {
    time_t t = kStart;
    for (auto _ : state) {
        std::tm fields;
        localtime_r(&t, &fields);
        t += 3601;
        benchmark::DoNotOptimize(fields.tm_year + fields.tm_mon + fields.tm_mday + fields.tm_hour + fields.tm_min +
                                 fields.tm_sec);
    }
}

void SetDay_gvlib(benchmark::State& state) {
    CGVDate date(2024, 3, 5, 14, 7, 9);
    uint16_t day = 1;
    for (auto _ : state) {
        date.mSetDay(day);
        day = static_cast<uint16_t>(day % 28 + 1);
        benchmark::DoNotOptimize(date.mGetDateAsLong());
    }
}

void SetDay_peer(benchmark::State& state) {
    time_t t = kStart;
    std::tm fields;
    localtime_r(&t, &fields);
    int day = 1;
    for (auto _ : state) {
        fields.tm_mday = day;
        fields.tm_isdst = -1;
        day = day % 28 + 1;
        benchmark::DoNotOptimize(mktime(&fields));
    }
}

void WeekOf_gvlib(benchmark::State& state) {
    CGVDate date;
    int32_t t = kStart;
    for (auto _ : state) {
        date = t;
        t += 86400;
        if (t > 2100000000)
            t = kStart;
        benchmark::DoNotOptimize(date.mWeekOf());
    }
}

// ISO 8601 week from the broken-down time, as a C++ user would compute it.
int IsoWeek(std::tm const& f) {
    int wday = (f.tm_wday + 6) % 7;  // Monday 0
    int week = (f.tm_yday - wday + 10) / 7;
    return week < 1 ? 52 : week;
}

void WeekOf_peer(benchmark::State& state) {
    time_t t = kStart;
    for (auto _ : state) {
        std::tm fields;
        localtime_r(&t, &fields);
        t += 86400;
        if (t > 2100000000)
            t = kStart;
        benchmark::DoNotOptimize(IsoWeek(fields));
    }
}

void MoneyAdd_gvlib(benchmark::State& state) {
    CGVMoney total(0.0);
    CGVMoney step(12.34);
    for (auto _ : state) {
        total += step;
        benchmark::DoNotOptimize(total.mGetWholeAmount());
    }
}

void MoneyAdd_peer(benchmark::State& state) {
    int64_t total = 0;
    int64_t step = 1234;
    for (auto _ : state) {
        total += step;
        benchmark::DoNotOptimize(total);
    }
}

void MoneyMulDiv_gvlib(benchmark::State& state) {
    CGVMoney amount(1234.56);
    for (auto _ : state) {
        std::unique_ptr<CGVMoney> product(&(amount * 3));
        std::unique_ptr<CGVMoney> quotient(&(*product / 7));
        benchmark::DoNotOptimize(quotient->mGetFractionalAmount());
    }
}

void MoneyMulDiv_peer(benchmark::State& state) {
    int64_t amount = 123456;
    for (auto _ : state) {
        benchmark::DoNotOptimize(amount);
        int64_t product = amount * 3;
        benchmark::DoNotOptimize(product / 7);
    }
}

}  // namespace

BENCHMARK(Getters_gvlib)->Name("DateGetters/gvlib");
BENCHMARK(Getters_peer)->Name("DateGetters/peer");
BENCHMARK(SetDay_gvlib)->Name("DateSetDay/gvlib");
BENCHMARK(SetDay_peer)->Name("DateSetDay/peer");
BENCHMARK(WeekOf_gvlib)->Name("WeekOf/gvlib");
BENCHMARK(WeekOf_peer)->Name("WeekOf/peer");
BENCHMARK(MoneyAdd_gvlib)->Name("MoneyAdd/gvlib");
BENCHMARK(MoneyAdd_peer)->Name("MoneyAdd/peer");
BENCHMARK(MoneyMulDiv_gvlib)->Name("MoneyMulDiv/gvlib");
BENCHMARK(MoneyMulDiv_peer)->Name("MoneyMulDiv/peer");
