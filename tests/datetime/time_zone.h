// Test helper: sets TZ for the length of a scope and the zones the date suites run under.
#pragma once

#include <cstdlib>
#include <ctime>
#include <string>

class ScopedTimeZone {
public:
    explicit ScopedTimeZone(const char* zone) {
        const char* old = std::getenv("TZ");
        hadOld_ = old != nullptr;
        if (hadOld_)
            old_ = old;
        setenv("TZ", zone, 1);
        tzset();
    }
    ~ScopedTimeZone() {
        if (hadOld_)
            setenv("TZ", old_.c_str(), 1);
        else
            unsetenv("TZ");
        tzset();
    }
    ScopedTimeZone(const ScopedTimeZone&) = delete;
    ScopedTimeZone& operator=(const ScopedTimeZone&) = delete;

private:
    bool hadOld_ = false;
    std::string old_;
};

// A zone without daylight saving and one whose rule needs no zone database.
inline const char* const kTestZones[] = {"UTC0", "EST5EDT,M3.2.0,M11.1.0"};
