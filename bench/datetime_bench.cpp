// Dates and money against the C library's calendar calls and plain integers.
#include <benchmark/benchmark.h>

#include <cstdint>
#include <cstdlib>
#include <ctime>
#include <memory>

#include <unistd.h>

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

// The least the contract forces: one conversion per new value, and per
// getter a check that the TZ entry of the environment is the one seen last
// plus a field read.
void Getters_limit(benchmark::State& state) {
    time_t t = kStart;
    char* const* const env = environ;
    const char* const entry = std::getenv("TZ");
    for (auto _ : state) {
        std::tm fields;
        localtime_r(&t, &fields);
        t += 3601;
        int sum = 0;
        for (int field : {fields.tm_year, fields.tm_mon, fields.tm_mday, fields.tm_hour, fields.tm_min,
                          fields.tm_sec}) {
            benchmark::DoNotOptimize(environ == env && entry != nullptr && entry[0] == 'U');
            sum += field;
        }
        benchmark::DoNotOptimize(sum);
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

// The library's arithmetic returns each result as a new heap object that the
// caller owns; the peer is what a C++ user writes for the same contract: a
// polymorphic amount in hundredths, each result from std::make_unique.
struct PeerMoney {
    explicit PeerMoney(int64_t h) : hundredths(h) {}
    virtual ~PeerMoney() = default;
    int64_t hundredths;
};

// The least the contract forces: one allocation of the two 32-bit fields and
// the carry arithmetic on them.
struct Fields {
    int32_t whole;
    int32_t fraction;
};

void MoneyAdd_gvlib(benchmark::State& state) {
    CGVMoney total(1234.56);
    CGVMoney step(12.34);
    for (auto _ : state) {
        std::unique_ptr<CGVMoney> sum(&(total + step));
        benchmark::DoNotOptimize(sum->mGetWholeAmount());
        benchmark::DoNotOptimize(total);
    }
}

void MoneyAdd_peer(benchmark::State& state) {
    PeerMoney total(123456);
    PeerMoney step(1234);
    for (auto _ : state) {
        auto sum = std::make_unique<PeerMoney>(total.hundredths + step.hundredths);
        benchmark::DoNotOptimize(sum->hundredths);
        benchmark::DoNotOptimize(total);
    }
}

void MoneyAdd_limit(benchmark::State& state) {
    Fields total{1234, 56};
    Fields step{12, 34};
    for (auto _ : state) {
        auto* sum = new Fields{total.whole + step.whole, total.fraction + step.fraction};
        if (sum->fraction >= 100) {
            ++sum->whole;
            sum->fraction -= 100;
        }
        benchmark::DoNotOptimize(sum->whole);
        delete sum;
        benchmark::DoNotOptimize(total);
    }
}

void MoneyMulDiv_gvlib(benchmark::State& state) {
    CGVMoney amount(1234.56);
    int32_t factor = 3, divisor = 7;
    for (auto _ : state) {
        benchmark::DoNotOptimize(factor);
        benchmark::DoNotOptimize(divisor);
        std::unique_ptr<CGVMoney> product(&(amount * factor));
        std::unique_ptr<CGVMoney> quotient(&(*product / divisor));
        benchmark::DoNotOptimize(quotient->mGetFractionalAmount());
        benchmark::DoNotOptimize(amount);
    }
}

void MoneyMulDiv_peer(benchmark::State& state) {
    PeerMoney amount(123456);
    int64_t factor = 3, divisor = 7;  // the library's operands arrive at run time
    for (auto _ : state) {
        benchmark::DoNotOptimize(factor);
        benchmark::DoNotOptimize(divisor);
        auto product = std::make_unique<PeerMoney>(amount.hundredths * factor);
        auto quotient = std::make_unique<PeerMoney>(product->hundredths / divisor);
        benchmark::DoNotOptimize(quotient->hundredths % 100);
        benchmark::DoNotOptimize(amount);
    }
}

void MoneyMulDiv_limit(benchmark::State& state) {
    Fields amount{1234, 56};
    int32_t factor = 3, divisor = 7;
    benchmark::DoNotOptimize(amount);
    for (auto _ : state) {
        benchmark::DoNotOptimize(factor);
        benchmark::DoNotOptimize(divisor);
        const int32_t f = amount.fraction * factor;
        auto* product = new Fields{amount.whole * factor + f / 100, f % 100};
        const int32_t q = (product->whole * 100 + product->fraction) / divisor;
        auto* quotient = new Fields{q / 100, q % 100};
        benchmark::DoNotOptimize(quotient->fraction);
        delete product;
        delete quotient;
        benchmark::DoNotOptimize(amount);
    }
}

}  // namespace

BENCHMARK(Getters_gvlib)->Name("DateGetters/gvlib");
BENCHMARK(Getters_peer)->Name("DateGetters/peer");
BENCHMARK(Getters_limit)->Name("DateGetters/limit");
BENCHMARK(SetDay_gvlib)->Name("DateSetDay/gvlib");
BENCHMARK(SetDay_peer)->Name("DateSetDay/peer");
BENCHMARK(WeekOf_gvlib)->Name("WeekOf/gvlib");
BENCHMARK(WeekOf_peer)->Name("WeekOf/peer");
BENCHMARK(MoneyAdd_gvlib)->Name("MoneyAdd/gvlib");
BENCHMARK(MoneyAdd_peer)->Name("MoneyAdd/peer");
BENCHMARK(MoneyAdd_limit)->Name("MoneyAdd/limit");
BENCHMARK(MoneyMulDiv_gvlib)->Name("MoneyMulDiv/gvlib");
BENCHMARK(MoneyMulDiv_peer)->Name("MoneyMulDiv/peer");
BENCHMARK(MoneyMulDiv_limit)->Name("MoneyMulDiv/limit");
