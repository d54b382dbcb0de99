// The two calendars of DDate in closed formulas, which hosts compile in. Included by ddate.h; not for hosts
// to include themselves.
//
// Years n are counted from -4713 (n = 0), so that there is no gap between -1 and 1 and n is divisible by 4
// exactly in the Julian leap years.
#ifndef KELCL_DETAIL_CALENDAR_H
#define KELCL_DETAIL_CALENDAR_H

#include <cstdint>
#include <type_traits>

namespace kelcl {

/// The days before each month; the thirteenth entry is the year's length.
inline constexpr short daysBeforeMonth[2][13] = {
    {0, 31, 59, 90, 120, 151, 181, 212, 243, 273, 304, 334, 365},
    {0, 31, 60, 91, 121, 152, 182, 213, 244, 274, 305, 335, 366},
};

inline constexpr std::int64_t lastJulianDay = 2361221; ///< 2 September 1752.
inline constexpr int daysDropped = 11;
inline constexpr std::int64_t firstDayOfClock = 2440588; ///< 1 January 1970.

struct CalendarDate {
    int year;
    int month;
    int day;
};

/// The day number of a date, whatever its numbers are.
///
/// Before year n there are 365 n days and one for each of the leap years 0, 4, 8 ... below n, floor((n + 3) /
/// 4) of them (the shift rounds down). After the switch the leap days of the centuries since 1700 that are
/// none in the Gregorian calendar are taken away, and the days dropped.
constexpr std::int64_t anyDayNumber(int month, int day, int year) noexcept {
    std::int64_t const wideYear = year;
    std::int64_t const n = wideYear - (year > 0 ? 1 : 0) + 4713;
    // Of the centuries those divisible by 16 are those divisible by 400.
    bool const isLeap = (n & 3) == 0 && (year <= 1752 || year % 100 != 0 || (year & 15) == 0);
    int const monthIndex = month < 1 ? 0 : month > 13 ? 12 : month - 1;
    std::int64_t const count =
        365 * n + ((n + 3) >> 2) + day + daysBeforeMonth[isLeap ? 1 : 0][monthIndex] - 1;
    std::int64_t const corrected = count + (wideYear - 1601) / 400 - (wideYear - 1701) / 100 - daysDropped;
    if (count <= lastJulianDay) return count;
    // What lies within the dropped days becomes the last day before them.
    return corrected <= lastJulianDay ? lastJulianDay : corrected;
}

/// The years and days that `dayNumber` takes the short way for: from the year after the switch on, and days
/// from the first of the month on.
constexpr bool isNearDay(int month, int day, int year) noexcept {
    return month >= 1 && month <= 12 && day >= 1 && year > 1752 && year < 1 << 15;
}

/// The same in the Gregorian calendar, by numbers of 32 bits. The year is taken to begin in March, so that a
/// leap day is the last one of its year, and its months begin at floor((979 m - 2919) / 32), m from 3 to 14.
constexpr std::int64_t nearDayNumber(int month, int day, int year) noexcept {
    constexpr std::int64_t dayBefore = 1721119; // the day before 1 March of a Gregorian year 0
    bool const isInNextYear = month <= 2;
    auto const marchYear = static_cast<std::uint32_t>(year - (isInNextYear ? 1 : 0));
    auto const marchMonth = static_cast<std::uint32_t>(month + (isInNextYear ? 12 : 0));
    std::uint32_t const century = marchYear / 100;
    return dayBefore + (1461 * marchYear / 4 - century + century / 4 + (979 * marchMonth - 2919) / 32) + day;
}

/// The day number of a date.
constexpr std::int64_t dayNumber(int month, int day, int year) noexcept {
    return isNearDay(month, day, year) ? nearDayNumber(month, day, year) : anyDayNumber(month, day, year);
}

/// The month and day of a day in a year taken to begin in March, so that a leap day is the last one of its
/// year. There month m, of 153 days in five, begins at floor((153 m + 2) / 5).
struct DayFromMarch {
    /// `day` counts from 0 to 365.
    constexpr explicit DayFromMarch(std::uint32_t day) noexcept
        : scaled(2141 * day + 197913), isInNextYear(day >= 306) {}

    constexpr int month() const noexcept { return static_cast<int>(scaled >> 16) - (isInNextYear ? 12 : 0); }
    constexpr int day() const noexcept { return static_cast<int>((scaled & 0xFFFF) / 2141) + 1; }

    std::uint32_t scaled; ///< The month with the part of it that has passed, in units of 1/65536.
    bool isInNextYear;    ///< January or February of it.
};

/// The inverse of `dayNumber`, for every day number.
///
/// First a Gregorian day becomes the day of that date in a Julian calendar that goes on: 10 days later in
/// March 1600, and one more for each century since that did not bring a 29 February. Centuries of March years
/// have 36524 days, every fourth one more: century k begins at floor(146097 k / 4). Then years are taken in
/// cycles of four. A start at floor(a k / 4) inverts to k = floor((4 day + 3) / a).
///
/// Every day number gives a month and a day that exist; a year that does not fit an `int` loses its high
/// bits.
constexpr CalendarDate anyCalendarDate(std::int64_t dayNumber) noexcept {
    auto const number = static_cast<std::uint64_t>(dayNumber);
    std::uint64_t const centuries = (4 * (number - 2305508) + 3) / 146097; // Since 1 March 1600.
    std::uint64_t const julian = dayNumber > lastJulianDay ? number + 10 + centuries - centuries / 4 : number;

    // Counted from a first of March so early that nothing is negative.
    constexpr std::uint64_t cyclesBefore = std::uint64_t{1} << 30;
    std::uint64_t const sinceFirstMarch = julian - 60 + 1461 * cyclesBefore;
    auto const cycle = static_cast<std::int64_t>(sinceFirstMarch / 1461 - cyclesBefore);
    std::uint32_t const quarters = 4 * static_cast<std::uint32_t>(sinceFirstMarch % 1461) + 3;
    DayFromMarch const day(quarters % 1461 / 4);

    // Without a gap: year 0 is the one before year 1, and cycle 0 begins in -4712.
    std::int64_t const year = 4 * cycle + quarters / 1461 + (day.isInNextYear ? 1 : 0) - 4712;
    return {static_cast<int>(year - (year > 0 ? 0 : 1)), day.month(), day.day()};
}

/// The days that `calendarDate` takes the short way for: 45,000 years from the switch on.
inline constexpr std::uint64_t nearDays = std::uint64_t{1} << 24;

/// The same in the Gregorian calendar, by numbers of 32 bits: centuries, then years of the century.
///
/// Here the quotient by 1461 comes from a product: 2939745 is 2^32 / 1461, rounded up, which is exact
/// enough for the days of a century; the low half of the product holds the remainder.
constexpr CalendarDate nearCalendarDate(std::uint32_t daysSinceSwitch) noexcept {
    constexpr std::uint32_t marchBefore = lastJulianDay + 1 - 1721120; // 1 March of a Gregorian year 0
    std::uint32_t const quarters = 4 * (daysSinceSwitch + marchBefore) + 3;
    std::uint32_t const century = quarters / 146097;
    std::uint64_t const scaled = std::uint64_t{2939745} * (quarters % 146097 | 3);
    std::uint32_t const year = 100 * century + static_cast<std::uint32_t>(scaled >> 32);
    DayFromMarch const day(static_cast<std::uint32_t>(scaled) / 2939745 / 4);
    return {static_cast<int>(year + (day.isInNextYear ? 1 : 0)), day.month(), day.day()};
}

/// The inverse of `dayNumber`.
constexpr CalendarDate calendarDate(std::int64_t dayNumber) noexcept {
    std::uint64_t const sinceSwitch = static_cast<std::uint64_t>(dayNumber) - (lastJulianDay + 1);
    return sinceSwitch < nearDays ? nearCalendarDate(static_cast<std::uint32_t>(sinceSwitch))
                                  : anyCalendarDate(dayNumber);
}

struct CalendarMonth {
    int year;
    int month;
};

/// The month `months` months later. There is no year 0 between -1 and 1.
constexpr CalendarMonth monthAfter(CalendarMonth from, int months) noexcept {
    std::int64_t const years = std::int64_t{from.year} + (from.year > 0 ? 0 : 1);
    std::int64_t const count = 12 * years + (from.month - 1) + months;
    std::int64_t const inYear = count % 12 < 0 ? count % 12 + 12 : count % 12;
    std::int64_t const year = (count - inYear) / 12;
    return {static_cast<int>(year - (year > 0 ? 0 : 1)), static_cast<int>(inYear + 1)};
}

/// `std::chrono::sys_days`, known by what only it has, as its header costs a compiler much: its clock tells
/// the time of C, and its unit is the day.
template <class SysDays>
using IfSysDays = std::enable_if_t<SysDays::period::num == 86400 && SysDays::period::den == 1,
                                   decltype(&SysDays::clock::to_time_t)>;

} // namespace kelcl

#endif
