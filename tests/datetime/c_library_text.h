// What the C library alone makes of dates and times, and the zone of the process for a while.
#ifndef KELCL_TESTS_DATETIME_C_LIBRARY_TEXT_H
#define KELCL_TESTS_DATETIME_C_LIBRARY_TEXT_H

#include <kelcl/ddate.h>
#include <kelcl/dtime.h>

#include <array>
#include <cstdlib>
#include <ctime>
#include <optional>
#include <string>

/// Sets the zone of the process for a while, or takes it away.
class ZoneForNow {
public:
    explicit ZoneForNow(char const* zone) {
        if (char const* const before = std::getenv("TZ")) before_ = before;
        set(zone);
    }
    ZoneForNow(ZoneForNow const&) = delete;
    ZoneForNow& operator=(ZoneForNow const&) = delete;
    ~ZoneForNow() {
        set(before_ ? before_->c_str() : nullptr);
        tzset();
    }

private:
    static void set(char const* zone) { zone == nullptr ? unsetenv("TZ") : setenv("TZ", zone, 1); }

    std::optional<std::string> before_;
};

/// The text of the record by `mktime` and `strftime`.
inline std::string cLibraryText(std::tm calendar, char const* format) {
    std::mktime(&calendar);
    std::array<char, 1024> text{};
    return {text.data(), std::strftime(text.data(), text.size(), format, &calendar)};
}

/// The same of a date; the year is counted from `yearZero`.
inline std::string cLibraryText(DDate const& date, char const* format, long yearZero = 1900) {
    std::tm calendar{};
    calendar.tm_year = static_cast<int>(date.year() - yearZero);
    calendar.tm_mon = date.monthOfYear() - 1;
    calendar.tm_mday = date.dayOfMonth();
    return cLibraryText(calendar, format);
}

inline std::string cLibraryText(DTime const& time, char const* format) {
    std::tm calendar{};
    calendar.tm_hour = time.hours();
    calendar.tm_min = time.minutes();
    calendar.tm_sec = time.seconds();
    return cLibraryText(calendar, format);
}

#endif
