// DTime, a time of day, and DCnrTime, its packed record. Dates are in ddate.h.
#ifndef KELCL_DTIME_H
#define KELCL_DTIME_H

#include <kelcl/dexport.h>
#include <kelcl/dstring.h>

#include <cstdint>
#include <iosfwd>

/// A time of day as a record of four bytes.
struct __attribute__((packed)) DCnrTime {
    std::uint8_t hours;
    std::uint8_t minutes;
    std::uint8_t seconds;
    std::uint8_t reserved; ///< Not read; 0 in a record made by DTime.
};
static_assert(sizeof(DCnrTime) == 4, "the record has no gaps");

/// A time of day, held as the seconds since midnight: always 0 to 86399.
///
/// Only what makes a text can throw, as strings do.
///
/// @code
/// DTime const start(1, 2, 3);
/// std::cout << start.asString("%H:%M") << '\n'; // 01:02
/// std::cout << DTime::fromSeconds(start.secondsOfDay() + 23 * 3600L) << '\n'; // 00:02:03
/// @endcode
class KELCL_EXPORT DTime {
public:
    /// Midnight.
    constexpr DTime() noexcept = default;
    /// Values beyond a day, or negative ones, wrap around midnight.
    constexpr DTime(int hours, int minutes, int seconds = 0) noexcept
        : secondsOfDay_(withinDay((hours * 60L + minutes) * 60L + seconds)) {}
    /// 24:00:00 is midnight.
    constexpr DTime(DCnrTime const& time) noexcept : DTime(time.hours, time.minutes, time.seconds) {}
    /// Seconds since midnight; values beyond a day, or negative ones, wrap around.
    static constexpr DTime fromSeconds(long seconds) noexcept {
        DTime time;
        time.secondsOfDay_ = withinDay(seconds);
        return time;
    }
    /// The time of the moment in the zone of the process.
    static DTime now();

    constexpr long secondsOfDay() const noexcept { return secondsOfDay_; }
    constexpr int hours() const noexcept { return static_cast<int>(secondsOfDay_ / 3600); }
    constexpr int minutes() const noexcept { return static_cast<int>(secondsOfDay_ % 3600 / 60); }
    constexpr int seconds() const noexcept { return static_cast<int>(secondsOfDay_ % 60); }
    constexpr DCnrTime asICnrTime() const noexcept {
        return {static_cast<std::uint8_t>(hours()), static_cast<std::uint8_t>(minutes()),
                static_cast<std::uint8_t>(seconds()), 0};
    }

    /// The time in a `strftime` format; null gives the empty string. A text of more than 64 MiB comes out
    /// empty. The day given to the C library is the last of 1899: conversions of the date show that, and in a
    /// zone whose rules have summer time on that day the hour is one too high.
    DString asString(char const* format = "%X") const;
    /// Writes the time in the locale's representation, as a DString is written.
    friend KELCL_EXPORT std::ostream& operator<<(std::ostream& out, DTime const& time);

    friend constexpr bool operator==(DTime left, DTime right) noexcept {
        return left.secondsOfDay_ == right.secondsOfDay_;
    }
    friend constexpr bool operator!=(DTime left, DTime right) noexcept {
        return left.secondsOfDay_ != right.secondsOfDay_;
    }
    friend constexpr bool operator<(DTime left, DTime right) noexcept {
        return left.secondsOfDay_ < right.secondsOfDay_;
    }
    friend constexpr bool operator<=(DTime left, DTime right) noexcept {
        return left.secondsOfDay_ <= right.secondsOfDay_;
    }
    friend constexpr bool operator>(DTime left, DTime right) noexcept {
        return left.secondsOfDay_ > right.secondsOfDay_;
    }
    friend constexpr bool operator>=(DTime left, DTime right) noexcept {
        return left.secondsOfDay_ >= right.secondsOfDay_;
    }

private:
    static constexpr long secondsPerDay = 86400;

    long secondsOfDay_ = 0;

    static constexpr long withinDay(long seconds) noexcept {
        long const rest = seconds % secondsPerDay;
        return rest < 0 ? rest + secondsPerDay : rest;
    }
};

#endif
