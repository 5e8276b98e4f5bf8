// _time32, _localtime32, _gmtime32 and _mktime32 over the host's 64-bit time.
#include "gvlib/platform/crttime.h"

#include <cstdlib>
#include <string>

namespace {

bool InRange(int64_t t) { return t >= 0 && t <= _MAX__TIME32_T; }

// The original runtime handed out one block per thread; callers copy it.
thread_local std::tm g_block;

// The time zone is read again on every call, and conversions are costly: a
// date asks for its fields once per getter. A few recent answers are kept per
// thread, keyed by the value and by the TZ text they were made under, so a
// changed TZ is never answered from the memory of another.
template <typename Key>
struct Memo {
    static constexpr int kSize = 4;
    struct Entry {
        bool used = false;
        Key key{};
        std::tm fields{};
        __time32_t value = 0;
    };
    std::string zone;
    bool zoneSet = false;
    Entry entries[kSize];
    int next = 0;

    // Forgets everything when TZ differs from the one the answers were made under.
    void Check() {
        const char* tz = std::getenv("TZ");
        if (zoneSet != (tz != nullptr) || (tz != nullptr && zone != tz)) {
            for (Entry& e : entries)
                e.used = false;
            zoneSet = tz != nullptr;
            zone = tz ? tz : "";
            tzset();
        }
    }
    Entry* Find(Key const& key) {
        for (Entry& e : entries)
            if (e.used && e.key == key)
                return &e;
        return nullptr;
    }
    Entry& Slot() {
        Entry& e = entries[next];
        next = (next + 1) % kSize;
        e.used = true;
        return e;
    }
};

struct FieldsKey {
    int sec, min, hour, mday, mon, year, isdst;
    bool operator==(FieldsKey const& o) const {
        return sec == o.sec && min == o.min && hour == o.hour && mday == o.mday && mon == o.mon &&
               year == o.year && isdst == o.isdst;
    }
};

FieldsKey KeyOf(std::tm const& t) {
    return {t.tm_sec, t.tm_min, t.tm_hour, t.tm_mday, t.tm_mon, t.tm_year, t.tm_isdst};
}

thread_local Memo<__time32_t> g_localMemo;
thread_local Memo<FieldsKey> g_mktimeMemo;

}  // namespace

__time32_t _time32(__time32_t* t) {
    const std::time_t now = std::time(nullptr);
    // Past the 32-bit limit the original answered -1, as for any failure.
    const __time32_t value = InRange(now) ? static_cast<__time32_t>(now) : -1;
    if (t != nullptr)
        *t = value;
    return value;
}

std::tm* _localtime32(const __time32_t* t) {
    if (t == nullptr || !InRange(*t))
        return nullptr;
    g_localMemo.Check();  // a host or test may have changed TZ since the last call
    if (auto* e = g_localMemo.Find(*t)) {
        g_block = e->fields;
        return &g_block;
    }
    const std::time_t value = *t;
    if (localtime_r(&value, &g_block) == nullptr)
        return nullptr;
    auto& slot = g_localMemo.Slot();
    slot.key = *t;
    slot.fields = g_block;
    return &g_block;
}

std::tm* _gmtime32(const __time32_t* t) {
    if (t == nullptr || !InRange(*t))
        return nullptr;
    const std::time_t value = *t;
    return gmtime_r(&value, &g_block);
}

__time32_t _mktime32(std::tm* tm) {
    if (tm == nullptr)
        return -1;
    g_mktimeMemo.Check();
    const FieldsKey key = KeyOf(*tm);
    if (auto* e = g_mktimeMemo.Find(key)) {
        *tm = e->fields;
        return e->value;
    }
    std::tm work = *tm;
    const std::time_t value = std::mktime(&work);
    // mktime's own -1 is also 1969-12-31 23:59:59 UTC; both lie outside the range.
    if (!InRange(value))
        return -1;
    *tm = work;
    auto& slot = g_mktimeMemo.Slot();
    slot.key = key;
    slot.fields = work;
    slot.value = static_cast<__time32_t>(value);
    return slot.value;
}
