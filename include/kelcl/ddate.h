/// @file
/// DDate, a calendar date, and DCnrDate, its packed record. Times of day are in dtime.h.
#ifndef KELCL_DDATE_H
#define KELCL_DDATE_H

#include <kelcl/detail/calendar.h>
#include <kelcl/dexport.h>
#include <kelcl/dstring.h>

#include <cstdint>
#include <iosfwd>

/// A date as a record of four bytes, for files and messages.
///
/// Nothing checks the fields; ask DDate::isValid() about a record that comes from elsewhere. The year is in
/// the byte order of the machine and ranges from 0 to 65535.
///
/// @code
/// DCnrDate const record = DDate(DDate::March, 1, 2024).asICnrDate();
/// std::cout << sizeof(record) << ' ' << DDate(record).asString("%Y-%m-%d") << '\n'; // 4 2024-03-01
/// @endcode
struct __attribute__((packed)) DCnrDate {
    /// The day of the month, from 1.
    std::uint8_t day;
    /// The month, 1 to 12.
    std::uint8_t month;
    /// The year; of one that needs more than 16 bits only the low 16.
    std::uint16_t year;
};
static_assert(sizeof(DCnrDate) == 4, "the record has no gaps");

/// A calendar date, held as one day number.
///
/// Up to 2 September 1752 (day number 2361221) the Julian calendar applies, from 14 September 1752 (2361222)
/// the Gregorian one; the days between do not exist. Year -1 is the year before year 1. Day number 0 is 1
/// January -4713, a Monday. Earlier days have negative numbers, kept as `unsigned long` keeps them.
///
/// A date is a plain value that owns nothing: copy it freely, pass it by value. Making and comparing dates
/// takes a few arithmetic operations and is done at compile time where the arguments are constants. Years are
/// exact as long as they fit an `int`. Only what makes a text can throw; it reads the process's locale.
///
/// @code
/// DDate const due = DDate(DDate::January, 31, 2024) + 30;
/// std::cout << due.asString("%d.%m.%Y") << '\n'; // 01.03.2024
/// std::cout << DDate(DDate::September, 14, 1752) - DDate(DDate::September, 2, 1752) << '\n'; // 1
/// // To be asked before a date is made of numbers that come from elsewhere:
/// std::cout << DDate::isValid(DDate::February, 30, 2024) << '\n'; // 0
/// @endcode
class KELCL_EXPORT DDate {
public:
    /// The months by the numbers that people give them.
    enum Month : int {
        /// Month 1.
        January = 1,
        /// Month 2.
        February,
        /// Month 3.
        March,
        /// Month 4.
        April,
        /// Month 5.
        May,
        /// Month 6.
        June,
        /// Month 7.
        July,
        /// Month 8.
        August,
        /// Month 9.
        September,
        /// Month 10.
        October,
        /// Month 11.
        November,
        /// Month 12.
        December
    };

    /// The days of the week, counted from Monday: julianDay() modulo 7, from day number 0 on.
    enum DayOfWeek : int {
        /// Day 0 of the week.
        Monday = 0,
        /// Day 1 of the week.
        Tuesday,
        /// Day 2 of the week.
        Wednesday,
        /// Day 3 of the week.
        Thursday,
        /// Day 4 of the week.
        Friday,
        /// Day 5 of the week.
        Saturday,
        /// Day 6 of the week.
        Sunday
    };

    /// How asString() shows the year.
    enum YearFormat : int {
        /// The locale's date format as it stands.
        localeYear = 0,
        /// The locale's date format with every `y` turned into `Y`.
        fourDigitYear = 1
    };

    /// @name Rules of the calendar
    /// Ask isValid() before a date is made of numbers that come from elsewhere.
    /// @code
    /// std::cout << DDate::isLeapYear(1900) << DDate::isLeapYear(2000) << '\n'; // 01
    /// std::cout << DDate::daysInMonth(DDate::February, 2024) << '\n';  // 29
    /// std::cout << DDate::daysInYear(1752) << '\n';                    // 355
    /// std::cout << DDate::isValid(DDate::September, 10, 1752) << '\n'; // 0
    /// std::cout << DDate::monthName(DDate::May) << '\n';               // May
    /// std::cout << DDate::dayName(DDate::Sunday) << '\n';              // Sunday
    /// @endcode
    /// @{

    /// Whether `year` has a 29 February: divisible by 4 and, from 1752 on, by 400 or not by 100.
    ///
    /// The rule holds for years before 1 as well, although the day arithmetic has other leap years there: -1,
    /// -5, -9 and so on.
    [[nodiscard]] static constexpr bool isLeapYear(int year) noexcept;

    /// The number of days in `year`: 355 for 1752, else 366 or 365.
    [[nodiscard]] static constexpr int daysInYear(int year) noexcept;

    /// The number of days in a month: 19 for September 1752. 0 when `month` is not one of the twelve.
    [[nodiscard]] static constexpr int daysInMonth(Month month, int year) noexcept;

    /// Whether there is such a date. There is no year 0, and no 3 to 13 September 1752.
    [[nodiscard]] static constexpr bool isValid(Month month, int day, int year) noexcept;

    /// The locale's full name of `month`; for what is no month, what the C library writes.
    [[nodiscard]] static DString monthName(Month month);

    /// The locale's full name of `day`; from 7 on days are counted further.
    [[nodiscard]] static DString dayName(DayOfWeek day);
    /// @}

    /// @name Construction
    /// Nothing is refused: what is no date becomes one, by the rules of initialize().
    /// @code
    /// std::cout << DDate(DDate::February, 30, 2024).asString("%Y-%m-%d") << '\n'; // 2024-03-01
    /// std::cout << DDate(60, 2024).asString("%Y-%m-%d") << '\n';                  // 2024-02-29
    /// std::cout << DDate::fromJulianDay(0).year() << '\n';                        // -4713
    /// @endcode
    /// @{

    /// Makes the date with day number 0, 1 January -4713.
    constexpr DDate() noexcept = default;

    /// Makes a date from three values, which are not validated; see initialize().
    constexpr DDate(Month month, int day, int year) noexcept { initialize(month, day, year); }

    /// Makes the date of day `dayOfYear` of `year`, from 1; 1752 has 355.
    ///
    /// A day that the year does not have is taken as a day of January and so reaches into other years; in
    /// year 0 every day is.
    constexpr DDate(int dayOfYear, int year) noexcept;
    /// Not made: a month and a year are no date.
    DDate(Month, int) = delete;

    /// Makes the date of a record, whose fields are not validated; see initialize().
    constexpr DDate(DCnrDate const& date) noexcept
        : DDate(static_cast<Month>(date.month), date.day, date.year) {}

    /// The date with the given day number.
    [[nodiscard]] static constexpr DDate fromJulianDay(unsigned long julianDay) noexcept;

    /// Today's date in the time zone of the process.
    [[nodiscard]] static DDate today();

    /// Makes this the date of three values, which are not validated, and returns `*this`.
    ///
    /// Days past the end of a month reach into the following ones (across September 1752 without counting the
    /// dropped days); 3 to 13 September 1752 become the 2nd. A month below 1 counts as January, one above 12
    /// as the month after December. Year 0 counts as year 1 does.
    constexpr DDate& initialize(Month month, int day, int year) noexcept;
    /// @}

    /// @name Reading
    /// @code
    /// DDate const date(DDate::March, 1, 2024);
    /// std::cout << date.year() << '-' << date.monthOfYear() << '-' << date.dayOfMonth() << '\n'; // 2024-3-1
    /// std::cout << date.dayOfYear() << ' ' << date.julianDay() << '\n'; // 61 2460371
    /// std::cout << date.dayName() << " in " << date.monthName() << '\n'; // Friday in March
    /// @endcode
    /// @{

    /// The day number: the days since 1 January -4713. Modulo 7 it is the DayOfWeek, from day number 0 on.
    [[nodiscard]] constexpr unsigned long julianDay() const noexcept { return julianDay_; }

    /// The year; never 0, -1 is the year before 1.
    [[nodiscard]] constexpr int year() const noexcept;

    /// The month.
    [[nodiscard]] constexpr Month monthOfYear() const noexcept;

    /// The day of the month, from 1.
    [[nodiscard]] constexpr int dayOfMonth() const noexcept;

    /// The day of the year, from 1. 14 September 1752 follows the 2nd here too.
    [[nodiscard]] constexpr int dayOfYear() const noexcept;

    /// The day of the week, on days before day number 0 too.
    [[nodiscard]] constexpr DayOfWeek dayOfWeek() const noexcept;

    /// The record of the date, with only the low 16 bits of the year.
    [[nodiscard]] constexpr DCnrDate asICnrDate() const noexcept;

    /// The locale's full name of the date's month.
    [[nodiscard]] DString monthName() const;

    /// The locale's full name of the date's weekday.
    [[nodiscard]] DString dayName() const;
    /// @}

    /// @name Formatting
    /// @code
    /// DDate const date(DDate::March, 7, 1985);
    /// std::cout << date << ' ' << date.asString(DDate::fourDigitYear) << '\n'; // 03/07/85 03/07/1985
    /// std::cout << date.asString("%A, %d %B %Y") << '\n';                      // Thursday, 07 March 1985
    /// @endcode
    /// @{

    /// The date in the locale's date format.
    ///
    /// The text comes from `strftime`, after `mktime` has filled in what the date does not say. The C library
    /// knows only the Gregorian calendar, so 29 February 1700 comes out as 1 March. If the format has a `y`
    /// anywhere, a year before 1900 is passed so that a two-digit year comes out right; other conversions of
    /// the year are then 1900 too high.
    /// @throws DInvalidRequest or DOutOfMemory, as making a string can.
    [[nodiscard]] DString asString(YearFormat format = localeYear) const;

    /// The date in a `strftime` format, with the same limits. Null gives the empty string.
    ///
    /// A text of more than 64 MiB comes out empty.
    /// @throws DInvalidRequest or DOutOfMemory, as making a string can.
    [[nodiscard]] DString asString(char const* format) const;

    /// Writes the date in the locale's date format, as a DString is written: the stream's width counts.
    friend KELCL_EXPORT std::ostream& operator<<(std::ostream& out, DDate const& date);
    /// @}

    /// @name The clock's days
    /// A date and the `std::chrono::sys_days` of the same day convert to each other, whichever calendar names
    /// the day: 2 September 1752 is the one that `std::chrono` calls 13 September. This header does not
    /// include `<chrono>`.
    ///
    /// @code
    /// // From C++20 on these are std::chrono::days and std::chrono::sys_days.
    /// using Days = std::chrono::duration<int, std::ratio<86400>>;
    /// using SysDays = std::chrono::time_point<std::chrono::system_clock, Days>;
    ///
    /// SysDays const day = DDate(DDate::January, 1, 2024);
    /// std::cout << day.time_since_epoch().count() << '\n'; // 19723
    /// std::cout << DDate(day + Days(1)).asString("%Y-%m-%d") << '\n'; // 2024-01-02
    /// @endcode
    /// @{

    /// Makes the date of a day of the system's clock.
    template <class SysDays, class = kelcl::IfSysDays<SysDays>>
    constexpr DDate(SysDays day) noexcept
        : julianDay_(static_cast<unsigned long>(kelcl::firstDayOfClock) +
                     static_cast<unsigned long>(day.time_since_epoch().count())) {}

    /// Makes the day of the system's clock.
    template <class SysDays, class = kelcl::IfSysDays<SysDays>>
    constexpr operator SysDays() const noexcept {
        using Days = typename SysDays::duration;
        return SysDays(Days(static_cast<typename Days::rep>(signedDay() - kelcl::firstDayOfClock)));
    }
    /// @}

    /// @name Arithmetic and order, in days
    /// @code
    /// DDate const due = DDate(DDate::January, 31, 2024) + 30;
    /// std::cout << due.asString("%d.%m.%Y") << '\n';                              // 01.03.2024
    /// std::cout << due - DDate(DDate::January, 1, 2024) << '\n';                  // 60
    /// std::cout << (due < DDate(DDate::March, 2, 2024)) << (due == due) << '\n'; // 11
    /// @endcode
    /// @{

    /// The date `months` months later, earlier if negative; the last day of a month that is shorter.
    ///
    /// In September 1752, days that do not exist become the 2nd. This date stays as it is.
    ///
    /// @code
    /// DDate const end(DDate::January, 31, 2024);
    /// std::cout << end.addMonths(1).asString("%d.%m.%Y") << '\n'; // 29.02.2024
    /// std::cout << end.addMonths(-2).asString("%d.%m.%Y") << '\n'; // 30.11.2023
    /// @endcode
    [[nodiscard]] constexpr DDate addMonths(int months) const noexcept;

    /// The date `days` days later; earlier if negative.
    [[nodiscard]] friend constexpr DDate operator+(DDate date, long days) noexcept {
        return fromJulianDay(date.julianDay_ + static_cast<unsigned long>(days));
    }

    /// The date `days` days earlier; later if negative.
    [[nodiscard]] friend constexpr DDate operator-(DDate date, long days) noexcept {
        return fromJulianDay(date.julianDay_ - static_cast<unsigned long>(days));
    }

    /// The days from `right` to `left`; negative when `left` is the earlier date.
    [[nodiscard]] friend constexpr long operator-(DDate left, DDate right) noexcept {
        return static_cast<long>(left.julianDay_ - right.julianDay_);
    }

    /// Whether both are the same day.
    [[nodiscard]] friend constexpr bool operator==(DDate left, DDate right) noexcept {
        return left.signedDay() == right.signedDay();
    }

    /// Whether they are different days.
    [[nodiscard]] friend constexpr bool operator!=(DDate left, DDate right) noexcept {
        return left.signedDay() != right.signedDay();
    }

    /// Whether `left` is earlier.
    [[nodiscard]] friend constexpr bool operator<(DDate left, DDate right) noexcept {
        return left.signedDay() < right.signedDay();
    }

    /// Whether `left` is not later.
    [[nodiscard]] friend constexpr bool operator<=(DDate left, DDate right) noexcept {
        return left.signedDay() <= right.signedDay();
    }

    /// Whether `left` is later.
    [[nodiscard]] friend constexpr bool operator>(DDate left, DDate right) noexcept {
        return left.signedDay() > right.signedDay();
    }

    /// Whether `left` is not earlier.
    [[nodiscard]] friend constexpr bool operator>=(DDate left, DDate right) noexcept {
        return left.signedDay() >= right.signedDay();
    }
    /// @}

private:
    unsigned long julianDay_ = 0;

    constexpr std::int64_t signedDay() const noexcept { return static_cast<std::int64_t>(julianDay_); }
};

// Implementation details only past this point.

/// @cond

constexpr bool DDate::isLeapYear(int year) noexcept {
    return year % 4 == 0 && (year < 1752 || year % 100 != 0 || year % 400 == 0);
}

constexpr int DDate::daysInYear(int year) noexcept {
    int const days = isLeapYear(year) ? 366 : 365;
    return year == 1752 ? days - kelcl::daysDropped : days;
}

constexpr int DDate::daysInMonth(Month month, int year) noexcept {
    if (month < January || month > December) return 0;
    short const* const before = kelcl::daysBeforeMonth[isLeapYear(year) ? 1 : 0];
    int const days = before[month] - before[month - 1];
    return month == September && year == 1752 ? days - kelcl::daysDropped : days;
}

constexpr bool DDate::isValid(Month month, int day, int year) noexcept {
    if (month < January || month > December || day < 1 || year == 0) return false;
    if (month == September && year == 1752) return day <= 2 || (day >= 14 && day <= 30);
    return day <= daysInMonth(month, year);
}

constexpr DDate::DDate(int dayOfYear, int year) noexcept {
    if (year == 0 || dayOfYear < 1 || dayOfYear > daysInYear(year)) {
        initialize(January, dayOfYear, year);
        return;
    }
    int const day = year == 1752 && dayOfYear > 246 ? dayOfYear + kelcl::daysDropped : dayOfYear;
    bool const isLeap = isLeapYear(year);
    // With a February of 30 days, which the days from March on are moved up for, the months begin at
    // ceil((367 m - 373) / 12) for m = 1 to 12.
    int const moved = day <= kelcl::daysBeforeMonth[isLeap ? 1 : 0][2] ? day : day + (isLeap ? 1 : 2);
    int const month = (12 * (moved - 1) + 373) / 367;
    initialize(static_cast<Month>(month), day - kelcl::daysBeforeMonth[isLeap ? 1 : 0][month - 1], year);
}

constexpr DDate DDate::fromJulianDay(unsigned long julianDay) noexcept {
    DDate date;
    date.julianDay_ = julianDay;
    return date;
}

constexpr DDate& DDate::initialize(Month month, int day, int year) noexcept {
    julianDay_ = static_cast<unsigned long>(kelcl::dayNumber(month, day, year));
    return *this;
}

constexpr int DDate::year() const noexcept { return kelcl::calendarDate(signedDay()).year; }

constexpr DDate::Month DDate::monthOfYear() const noexcept {
    return static_cast<Month>(kelcl::calendarDate(signedDay()).month);
}

constexpr int DDate::dayOfMonth() const noexcept { return kelcl::calendarDate(signedDay()).day; }

constexpr int DDate::dayOfYear() const noexcept {
    return static_cast<int>(*this - DDate(January, 1, year()) + 1);
}

constexpr DDate::DayOfWeek DDate::dayOfWeek() const noexcept {
    std::int64_t const day = signedDay() % 7;
    return static_cast<DayOfWeek>(day < 0 ? day + 7 : day);
}

constexpr DCnrDate DDate::asICnrDate() const noexcept {
    kelcl::CalendarDate const date = kelcl::calendarDate(signedDay());
    return {static_cast<std::uint8_t>(date.day), static_cast<std::uint8_t>(date.month),
            static_cast<std::uint16_t>(date.year)};
}

constexpr DDate DDate::addMonths(int months) const noexcept {
    kelcl::CalendarDate const date = kelcl::calendarDate(signedDay());
    kelcl::CalendarMonth const month = kelcl::monthAfter({date.year, date.month}, months);
    DDate const last = DDate(static_cast<Month>(month.month + 1), 1, month.year) - 1;
    return date.day > last.dayOfMonth() ? last : DDate(static_cast<Month>(month.month), date.day, month.year);
}

/// @endcond

namespace std {

/// Makes dates keys of `std::unordered_map` and the like.
template <>
struct hash<DDate> {
    /// Returns a number that is the same for the same day.
    size_t operator()(DDate date) const noexcept { return hash<unsigned long>()(date.julianDay()); }
};

} // namespace std

#endif
