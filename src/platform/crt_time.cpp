// _time32, _localtime32, _gmtime32 and _mktime32 over the host's 64-bit time.
#include "gvlib/platform/crttime.h"

namespace {

bool InRange(int64_t t) { return t >= 0 && t <= _MAX__TIME32_T; }

// The original runtime handed out one block per thread; callers copy it.
thread_local std::tm g_block;

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
    tzset();  // a host or test may have changed TZ since the last call
    const std::time_t value = *t;
    return localtime_r(&value, &g_block);
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
    tzset();
    std::tm work = *tm;
    const std::time_t value = std::mktime(&work);
    // mktime's own -1 is also 1969-12-31 23:59:59 UTC; both lie outside the range.
    if (!InRange(value))
        return -1;
    *tm = work;
    return static_cast<__time32_t>(value);
}
