/// @file
/// DTime, a time of day, and DCnrTime, its packed record. Dates are in ddate.h.
#ifndef KELCL_DTIME_H
#define KELCL_DTIME_H

#include <kelcl/dexport.h>
#include <kelcl/dstring.h>

#include <cstdint>
#include <iosfwd>

/// A time of day as a record of four bytes, for files and messages.
///
/// Nothing checks the fields: a DTime made of a record wraps around midnight.
///
/// @code
/// DCnrTime const record = DTime(7, 30).asICnrTime();
/// std::cout << sizeof(record) << ' ' << DTime(record).asString("%H:%M") << '\n'; // 4 07:30
/// @endcode
struct __attribute__((packed)) DCnrTime {
    /// The hour, 0 to 23.
    std::uint8_t hours;
    /// The minute, 0 to 59.
    std::uint8_t minutes;
    /// The second, 0 to 59.
    std::uint8_t seconds;
    /// Not read; 0 in a record made by DTime.
    std::uint8_t reserved;
};
static_assert(sizeof(DCnrTime) == 4, "the record has no gaps");

/// A time of day, held as the seconds since midnight: always 0 to 86399.
///
/// There are no invalid times: values outside a day wrap around midnight. A time is a plain value that owns
/// nothing; copy it freely. Only what makes a text can throw; it reads the process's locale.
///
/// @code
/// DTime const start(1, 2, 3);
/// std::cout << start.asString("%H:%M") << '\n'; // 01:02
/// std::cout << DTime::fromSeconds(start.secondsOfDay() + 23 * 3600L) << '\n'; // 00:02:03
/// @endcode
class KELCL_EXPORT DTime {
public:
    /// @name Construction
    /// @code
    /// std::cout << DTime(9, 5).asString("%H:%M:%S") << '\n';        // 09:05:00
    /// std::cout << DTime(23, 59, 61).asString("%H:%M:%S") << '\n';  // 00:00:01
    /// std::cout << DTime::fromSeconds(-1).asString("%H:%M:%S") << '\n'; // 23:59:59
    /// @endcode
    /// @{

    /// Makes midnight.
    constexpr DTime() noexcept = default;

    /// Makes a time of three values, of any size and sign: they are added up, and the sum wraps around
    /// midnight.
    constexpr DTime(int hours, int minutes, int seconds = 0) noexcept
        : secondsOfDay_(withinDay((hours * 60L + minutes) * 60L + seconds)) {}

    /// Makes the time of a record; 24:00:00 is midnight.
    constexpr DTime(DCnrTime const& time) noexcept : DTime(time.hours, time.minutes, time.seconds) {}

    /// The time `seconds` seconds after midnight, wrapped around; before it if negative.
    [[nodiscard]] static constexpr DTime fromSeconds(long seconds) noexcept {
        DTime time;
        time.secondsOfDay_ = withinDay(seconds);
        return time;
    }

    /// The present time of day in the time zone of the process.
    [[nodiscard]] static DTime now();
    /// @}

    /// @name Reading
    /// @code
    /// DTime const time(15, 4, 5);
    /// std::cout << time.hours() << ' ' << time.minutes() << ' ' << time.seconds() << '\n'; // 15 4 5
    /// std::cout << time.secondsOfDay() << '\n';                                            // 54245
    /// @endcode
    /// @{

    /// The seconds since midnight, 0 to 86399.
    [[nodiscard]] constexpr long secondsOfDay() const noexcept { return secondsOfDay_; }

    /// The hour, 0 to 23.
    [[nodiscard]] constexpr int hours() const noexcept { return static_cast<int>(seconds32() / 3600); }

    /// The minute of the hour, 0 to 59.
    [[nodiscard]] constexpr int minutes() const noexcept { return static_cast<int>(seconds32() / 60 % 60); }

    /// The second of the minute, 0 to 59.
    [[nodiscard]] constexpr int seconds() const noexcept { return static_cast<int>(seconds32() % 60); }

    /// The record of the time.
    [[nodiscard]] constexpr DCnrTime asICnrTime() const noexcept {
        return {static_cast<std::uint8_t>(hours()), static_cast<std::uint8_t>(minutes()),
                static_cast<std::uint8_t>(seconds()), 0};
    }

    /// @}

    /// @name Formatting
    /// @code
    /// std::cout << DTime(15, 4, 5) << '\n';                     // 15:04:05
    /// std::cout << DTime(15, 4, 5).asString("%I:%M %p") << '\n'; // 03:04 PM
    /// @endcode
    /// @{

    /// The time in a `strftime` format, by default the locale's. Null gives the empty string.
    ///
    /// A text of more than 64 MiB comes out empty. The day passed to the C library is the last of 1899:
    /// conversions of the date show that, and in a zone with summer time on that day the hour is one too
    /// high.
    /// @throws DInvalidRequest or DOutOfMemory, as making a string can.
    [[nodiscard]] DString asString(char const* format = "%X") const;

    /// Writes the time in the locale's format, as a DString is written: the stream's width counts.
    friend KELCL_EXPORT std::ostream& operator<<(std::ostream& out, DTime const& time);

    /// @}

    /// @name Difference and order
    /// @code
    /// std::cout << (DTime(9, 30) < DTime(10, 0)) << (DTime(24, 0) == DTime()) << '\n'; // 11
    /// std::cout << DTime(10, 0) - DTime(9, 30) << '\n';                                // 1800
    /// @endcode
    /// @{

    /// The seconds from `right` to `left`; negative when `left` is earlier in the day.
    [[nodiscard]] friend constexpr long operator-(DTime left, DTime right) noexcept {
        return left.secondsOfDay_ - right.secondsOfDay_;
    }

    /// Whether both are the same second of the day.
    [[nodiscard]] friend constexpr bool operator==(DTime left, DTime right) noexcept {
        return left.secondsOfDay_ == right.secondsOfDay_;
    }

    /// Whether they are different seconds of the day.
    [[nodiscard]] friend constexpr bool operator!=(DTime left, DTime right) noexcept {
        return left.secondsOfDay_ != right.secondsOfDay_;
    }

    /// Whether `left` is earlier in the day.
    [[nodiscard]] friend constexpr bool operator<(DTime left, DTime right) noexcept {
        return left.secondsOfDay_ < right.secondsOfDay_;
    }

    /// Whether `left` is not later in the day.
    [[nodiscard]] friend constexpr bool operator<=(DTime left, DTime right) noexcept {
        return left.secondsOfDay_ <= right.secondsOfDay_;
    }

    /// Whether `left` is later in the day.
    [[nodiscard]] friend constexpr bool operator>(DTime left, DTime right) noexcept {
        return left.secondsOfDay_ > right.secondsOfDay_;
    }

    /// Whether `left` is not earlier in the day.
    [[nodiscard]] friend constexpr bool operator>=(DTime left, DTime right) noexcept {
        return left.secondsOfDay_ >= right.secondsOfDay_;
    }
    /// @}

private:
    static constexpr long secondsPerDay = 86400;

    long secondsOfDay_ = 0;

    /// In a type whose divisions are the shortest.
    constexpr std::uint32_t seconds32() const noexcept { return static_cast<std::uint32_t>(secondsOfDay_); }

    static constexpr long withinDay(long seconds) noexcept {
        long const rest = seconds % secondsPerDay;
        return rest < 0 ? rest + secondsPerDay : rest;
    }
};

namespace std {

/// Makes times of day keys of `std::unordered_map` and the like.
template <>
struct hash<DTime> {
    /// Returns a number that is the same for the same second of the day.
    size_t operator()(DTime time) const noexcept { return hash<long>()(time.secondsOfDay()); }
};

} // namespace std

#endif
