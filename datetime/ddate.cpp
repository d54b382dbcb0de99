// DDate's names and texts, and the date of today. The arithmetic is in the header.
#include <kelcl/ddate.h>

#include "datetime/formatting.h"

#include <algorithm>
#include <cstring>
#include <ostream>
#include <string>
#include <string_view>

#include <langinfo.h>

namespace {

/// Whether the format has a small y, and not merely a byte of a character that looks like one.
bool hasSmallY(char const* format) {
    return std::strchr(format, 'y') != nullptr && DString(format).includes('y');
}

/// The format with every small y turned into a large one.
std::string withFourDigitYear(char const* format) {
    auto const isAscii = [](char byte) { return static_cast<unsigned char>(byte) < 0x80; };
    std::string text(format);
    if (!std::all_of(text.begin(), text.end(), isAscii)) // a byte is not always a character
        return std::string(std::string_view(DString(text).change("y", "Y")));
    std::replace(text.begin(), text.end(), 'y', 'Y');
    return text;
}

} // namespace

static_assert(MON_12 - MON_1 == 11 && DAY_7 - DAY_1 == 6, "the items of names follow one another");

DString DDate::monthName(Month month) {
    if (month >= January && month <= December) return DString(::nl_langinfo(MON_1 + (month - January)));
    std::tm calendar{};
    calendar.tm_mon = static_cast<int>(std::int64_t{month} - 1);
    return kelcl::formatted(calendar, "%B");
}

DString DDate::dayName(DayOfWeek day) {
    std::int64_t const sinceSunday = (std::int64_t{day} + 1) % 7;
    if (sinceSunday >= 0) return DString(::nl_langinfo(DAY_1 + static_cast<int>(sinceSunday)));
    std::tm calendar{};
    calendar.tm_wday = static_cast<int>(sinceSunday);
    return kelcl::formatted(calendar, "%A");
}

DDate DDate::today() {
    std::tm const now = kelcl::localCalendarNow();
    return DDate(static_cast<Month>(now.tm_mon + 1), now.tm_mday, now.tm_year + 1900);
}

DString DDate::monthName() const { return monthName(monthOfYear()); }

DString DDate::dayName() const { return dayName(dayOfWeek()); }

DString DDate::asString(YearFormat format) const {
    char const* const text = ::nl_langinfo(D_FMT);
    return format == fourDigitYear ? asString(withFourDigitYear(text).c_str()) : asString(text);
}

DString DDate::asString(char const* format) const {
    if (format == nullptr) return DString();
    kelcl::CalendarDate const date = kelcl::calendarDate(signedDay());
    // The C library takes the last two digits of tm_year + 1900, which for early years are not everywhere
    // those of the year.
    bool const isYearItself = date.year < 1900 && hasSmallY(format);
    std::tm calendar{};
    calendar.tm_mday = date.day;
    calendar.tm_mon = date.month - 1;
    calendar.tm_year = isYearItself ? date.year : static_cast<int>(std::int64_t{date.year} - 1900);
    kelcl::completeCalendar(calendar);
    return kelcl::formatted(calendar, format);
}

std::ostream& operator<<(std::ostream& out, DDate const& date) { return out << date.asString(); }
