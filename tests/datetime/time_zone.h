// Test helper: sets TZ for the length of a scope, and the zones the date suites run under.
#pragma once

#include <cstdlib>
#include <ctime>
#include <optional>
#include <string>

class ScopedTimeZone {
public:
    explicit ScopedTimeZone(const char* zone) {
        if (const char* old = std::getenv("TZ"))
            old_ = old;
        Set(zone);
    }
    ~ScopedTimeZone() { Set(old_ ? old_->c_str() : nullptr); }

private:
    static void Set(const char* zone) { zone ? setenv("TZ", zone, 1) : unsetenv("TZ"), tzset(); }
    std::optional<std::string> old_;
};

// A zone without daylight saving and one whose rule needs no zone database.
inline const char* const kTestZones[] = {"UTC0", "EST5EDT,M3.2.0,M11.1.0"};
