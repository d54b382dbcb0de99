// DDate's names and texts, and the date of today. The arithmetic is in the header.
#include <kelcl/ddate.h>

#include "datetime/formatting.h"

#include <ostream>

#include <langinfo.h>

namespace {

DString weekdayName(std::int64_t daysSinceSunday) {
    std::tm calendar{};
    calendar.tm_wday = static_cast<int>(daysSinceSunday);
    return kelcl::formatted(calendar, "%A");
}

DString localeFormat() { return DString(::nl_langinfo(D_FMT)); }

} // namespace

DString DDate::monthName(Month month) {
    std::tm calendar{};
    calendar.tm_mon = static_cast<int>(std::int64_t{month} - 1);
    return kelcl::formatted(calendar, "%B");
}

DString DDate::dayName(DayOfWeek day) { return weekdayName((std::int64_t{day} + 1) % 7); }

DDate DDate::today() {
    std::tm const now = kelcl::localCalendarNow();
    return DDate(static_cast<Month>(now.tm_mon + 1), now.tm_mday, now.tm_year + 1900);
}

DString DDate::monthName() const { return monthName(monthOfYear()); }

DString DDate::dayName() const {
    std::int64_t const day = signedDay() % 7;
    return dayName(static_cast<DayOfWeek>(day < 0 ? day + 7 : day));
}

DString DDate::asString(YearFormat format) const {
    DString text = localeFormat();
    if (format == fourDigitYear) text.change("y", "Y");
    return asString(text.c_str());
}

DString DDate::asString(char const* format) const {
    if (format == nullptr) return DString();
    kelcl::CalendarDate const date = kelcl::calendarDate(signedDay());
    // The C library takes the last two digits of tm_year + 1900, which for early years are not everywhere
    // those of the year.
    bool const isYearItself = date.year < 1900 && DString(format).includes('y');
    std::tm calendar{};
    calendar.tm_mday = date.day;
    calendar.tm_mon = date.month - 1;
    calendar.tm_year = isYearItself ? date.year : static_cast<int>(std::int64_t{date.year} - 1900);
    kelcl::completeCalendar(calendar);
    return kelcl::formatted(calendar, format);
}

std::ostream& operator<<(std::ostream& out, DDate const& date) { return out << date.asString(); }
