// The two calendars of DDate in closed formulas, which hosts compile in. Included by ddate.h; not for hosts
// to include themselves.
//
// Years n are counted from -4713 (n = 0), so that there is no gap between -1 and 1 and n is divisible by 4
// exactly in the Julian leap years.
#ifndef KELCL_DETAIL_CALENDAR_H
#define KELCL_DETAIL_CALENDAR_H

#include <cstdint>

namespace kelcl {

/// The days before each month; the thirteenth entry is the year's length.
inline constexpr short daysBeforeMonth[2][13] = {
    {0, 31, 59, 90, 120, 151, 181, 212, 243, 273, 304, 334, 365},
    {0, 31, 60, 91, 121, 152, 182, 213, 244, 274, 305, 335, 366},
};

inline constexpr std::int64_t lastJulianDay = 2361221; ///< 2 September 1752.
inline constexpr int daysDropped = 11;

struct CalendarDate {
    int year;
    int month;
    int day;
};

/// The day number of a date.
///
/// Before year n there are 365 n days and one for each of the leap years 0, 4, 8 ... below n, floor((n + 3) /
/// 4) of them (the shift rounds down). After the switch the leap days of the centuries since 1700 that are
/// none in the Gregorian calendar are taken away, and the days dropped.
constexpr std::int64_t dayNumber(int month, int day, int year) noexcept {
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

/// The inverse of `dayNumber`.
///
/// First a Gregorian day becomes the day of that date in a Julian calendar that goes on: 10 days later in
/// March 1600, and one more for each century since that did not bring a 29 February. Centuries of March years
/// have 36524 days, every fourth one more: century k begins at floor(146097 k / 4).
///
/// Then years are taken to begin in March, so that a leap day is the last one of its year, and in cycles of
/// four. Month m of a year, of 153 days in five, begins at floor((153 m + 2) / 5). A start at floor((a k + b)
/// / c) inverts to k = floor((c day + c - 1 - b) / a).
///
/// Every day number gives a month and a day that exist; a year that does not fit an `int` loses its high
/// bits.
constexpr CalendarDate calendarDate(std::int64_t dayNumber) noexcept {
    auto const number = static_cast<std::uint64_t>(dayNumber);
    std::uint64_t const centuries = (4 * (number - 2305508) + 3) / 146097; // Since 1 March 1600.
    std::uint64_t const julian = dayNumber > lastJulianDay ? number + 10 + centuries - centuries / 4 : number;

    // Counted from a first of March so early that nothing is negative.
    constexpr std::uint64_t cyclesBefore = std::uint64_t{1} << 30;
    std::uint64_t const sinceFirstMarch = julian - 60 + 1461 * cyclesBefore;
    auto const cycle = static_cast<std::int64_t>(sinceFirstMarch / 1461 - cyclesBefore);
    auto const dayOfCycle = static_cast<unsigned int>(sinceFirstMarch % 1461);
    unsigned int const yearOfCycle = (4 * dayOfCycle + 3) / 1461;
    unsigned int const dayOfYear = dayOfCycle - 365 * yearOfCycle;
    unsigned int const month = (5 * dayOfYear + 2) / 153; // 0 is March.
    unsigned int const day = (5 * dayOfYear + 2) % 153 / 5 + 1;

    // Without a gap: year 0 is the one before year 1, and cycle 0 begins in -4712.
    std::int64_t const year = 4 * cycle + yearOfCycle + (month >= 10 ? 1 : 0) - 4712;
    return {static_cast<int>(year - (year > 0 ? 0 : 1)),
            static_cast<int>(month >= 10 ? month - 9 : month + 3), static_cast<int>(day)};
}

} // namespace kelcl

#endif
