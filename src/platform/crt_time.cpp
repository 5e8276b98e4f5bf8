// _time32, _localtime32, _gmtime32 and _mktime32 over the host's 64-bit time.
#include "gvlib/platform/crttime.h"

#include <cstdlib>
#include <cstring>
#include <string>

#include "platform/crt_time.h"

extern char** environ;

namespace {

bool InRange(int64_t t) { return t >= 0 && t <= _MAX__TIME32_T; }

// The original runtime handed out one block per thread; callers copy it.
thread_local std::tm g_block;

// The time zone must be read again on every conversion (a host may change TZ
// at any time), yet a getenv scan costs more than the field read a getter
// wants. The environment entry that held TZ last time is remembered: while the
// environment array, that entry's pointer and its text are all unchanged, TZ
// is what it was. setenv and putenv replace the entry's pointer, unsetenv
// shifts the entries, and growing the array moves it; each of these sends us
// back to getenv.
class ZoneWatch {
public:
    // True when the zone differs from the one of the last call.
    bool Changed() {
        if (entry_ != nullptr && environ == env_ && env_[index_] == entry_ && SameText())
            return false;
        return Reread();
    }

private:
    // The entry is the very block whose text was remembered, so it still holds
    // at least that many bytes (terminator included) and all of them may be
    // read: comparing them all finds a text rewritten in place, shorter or
    // longer. Zone texts are a few bytes, and two overlapping loads per side
    // cost less than a loop over them or a call to memcmp.
    bool SameText() const {
        const char* a = entry_;
        const char* b = text_.c_str();
        const std::size_t n = text_.size() + 1;
        if (n >= 8 && n <= 16)
            return Load<uint64_t>(a) == Load<uint64_t>(b) && Load<uint64_t>(a + n - 8) == Load<uint64_t>(b + n - 8);
        if (n >= 4 && n < 8)
            return Load<uint32_t>(a) == Load<uint32_t>(b) && Load<uint32_t>(a + n - 4) == Load<uint32_t>(b + n - 4);
        return std::memcmp(a, b, n) == 0;
    }
    template <typename Word>
    static Word Load(const char* p) {
        Word w;
        std::memcpy(&w, p, sizeof w);
        return w;
    }

    [[gnu::noinline]] bool Reread() {
        const char* tz = std::getenv("TZ");
        const bool changed =
            !known_ || set_ != (tz != nullptr) || (tz != nullptr && text_.compare(3, std::string::npos, tz) != 0);
        known_ = true;
        set_ = tz != nullptr;
        text_ = std::string("TZ=") + (tz ? tz : "");
        Locate(tz);
        return changed;
    }
    // Finds the entry getenv answered from; without one (TZ unset, or an
    // environment built by hand) every call goes back to getenv.
    void Locate(const char* tz) {
        entry_ = nullptr;
        env_ = environ;
        if (tz == nullptr || env_ == nullptr)
            return;
        for (int i = 0; env_[i] != nullptr; ++i) {
            if (env_[i] + 3 == tz) {
                index_ = i;
                entry_ = env_[i];
                return;
            }
        }
    }

    char** env_ = nullptr;
    char* entry_ = nullptr;
    int index_ = 0;
    bool known_ = false;
    bool set_ = false;
    std::string text_;
};

// A few recent answers, newest first in the search; a changed zone forgets them.
template <typename Key>
struct Memo {
    static constexpr unsigned kSize = 4;
    struct Entry {
        bool used = false;
        Key key{};
        std::tm fields{};
        __time32_t value = 0;
    };
    Entry entries[kSize];
    unsigned last = 0;

    void Clear() {
        for (Entry& e : entries)
            e.used = false;
    }
    Entry* Find(Key const& key) {
        if (entries[last].used && entries[last].key == key)  // a date asks for several fields in a row
            return &entries[last];
        for (unsigned n = 0, i = last; n < kSize; ++n, i = (i + kSize - 1) % kSize)
            if (entries[i].used && entries[i].key == key)
                return &entries[i];
        return nullptr;
    }
    Entry& Slot() {
        last = (last + 1) % kSize;
        Entry& e = entries[last];
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

// Everything a thread remembers, in one block so a call reaches it once.
struct TimeState {
    ZoneWatch zone;
    Memo<__time32_t> local;
    Memo<FieldsKey> normalised;

    void Check() {
        if (zone.Changed())
            Forget();
    }
    [[gnu::noinline]] void Forget() {
        local.Clear();
        normalised.Clear();
        tzset();
    }
    void RememberLocal(__time32_t t, std::tm const& fields) {
        auto& slot = local.Slot();
        slot.key = t;
        slot.fields = fields;
    }
};

// The general dynamic model costs a __tls_get_addr call per access, too much
// for a getter; the initial-exec model is one load, but draws on the small
// static TLS reserve that a library loaded late (dlopen) must fit in. So the
// state itself stays general dynamic and only a pointer to it is initial-exec.
thread_local TimeState g_stateStorage;
thread_local TimeState* g_state __attribute__((tls_model("initial-exec"))) = nullptr;

TimeState& State() {
    TimeState* state = g_state;
    if (state == nullptr)
        state = g_state = &g_stateStorage;
    return *state;
}

// Kept out of line: the call into the C library needs registers saved that
// the remembered answer does not.
[[gnu::noinline]] const std::tm* Convert(TimeState& state, __time32_t t) {
    // Converted straight into the slot that remembers it; the slot counts only
    // once the conversion has succeeded.
    auto& slot = state.local.Slot();
    slot.used = false;
    const std::time_t value = t;
    if (localtime_r(&value, &slot.fields) == nullptr)
        return nullptr;
    slot.key = t;
    slot.used = true;
    return &slot.fields;
}

const std::tm* Local(TimeState& state, __time32_t t) {
    if (auto* e = state.local.Find(t))
        return &e->fields;
    return Convert(state, t);
}

}  // namespace

namespace gvplatform::detail {

const std::tm* LocalFieldsOf(__time32_t t) {
    if (!InRange(t))
        return nullptr;
    TimeState& state = State();
    state.Check();
    return Local(state, t);
}

}  // namespace gvplatform::detail

__time32_t _time32(__time32_t* t) {
    const std::time_t now = std::time(nullptr);
    // Past the 32-bit limit the original answered -1, as for any failure.
    const __time32_t value = InRange(now) ? static_cast<__time32_t>(now) : -1;
    if (t != nullptr)
        *t = value;
    return value;
}

std::tm* _localtime32(const __time32_t* t) {
    if (t == nullptr)
        return nullptr;
    const std::tm* fields = gvplatform::detail::LocalFieldsOf(*t);
    if (fields == nullptr)
        return nullptr;
    g_block = *fields;
    return &g_block;
}

std::tm* _gmtime32(const __time32_t* t) {
    if (t == nullptr || !InRange(*t))
        return nullptr;
    const std::time_t value = *t;
    return gmtime_r(&value, &g_block);
}

// The normalised fields are those of the local conversion of the answer, so a
// getter that follows a setter finds them remembered.
__time32_t _mktime32(std::tm* tm) {
    if (tm == nullptr)
        return -1;
    TimeState& state = State();
    state.Check();
    const FieldsKey key = KeyOf(*tm);
    if (auto* e = state.normalised.Find(key)) {
        *tm = e->fields;
        return e->value;
    }
    std::tm work = *tm;
    const std::time_t value = std::mktime(&work);
    // mktime's own -1 is also 1969-12-31 23:59:59 UTC; both lie outside the range.
    if (!InRange(value))
        return -1;
    *tm = work;
    auto& slot = state.normalised.Slot();
    slot.key = key;
    slot.fields = work;
    slot.value = static_cast<__time32_t>(value);
    if (state.local.Find(slot.value) == nullptr)
        state.RememberLocal(slot.value, work);
    return slot.value;
}
