// The conversions whose text the C standard fixes for every locale, and the formats of the locale that may be
// made up of them.
#include "datetime/number_format.h"

#include "bytes/digit_pairs.h"

#include <cstring>

#include <langinfo.h>

namespace {

constexpr int yearZero = 1900; // of tm_year
constexpr std::ptrdiff_t longestNumber = 4;

// Each of these returns the end of what it has written, or null where strftime is to write it.

char* writeTwoDigits(char* out, int number) {
    if (number < 0 || number > 99) return nullptr;
    std::memcpy(out, &kelcl::digitPairs[2 * static_cast<std::size_t>(number)], 2);
    return out + 2;
}

/// C libraries differ in how they fill up a year of fewer digits.
char* writeYear(char* out, int sinceYearZero) {
    if (sinceYearZero < 1000 - yearZero || sinceYearZero > 9999 - yearZero) return nullptr;
    int const year = sinceYearZero + yearZero;
    return writeTwoDigits(writeTwoDigits(out, year / 100), year % 100);
}

char* writeNumbers(char* out, char const* end, char const* format, std::tm const& calendar);

/// A format that stands for others, or a conversion that is none to a number.
char* writeRest(char* out, char const* end, char conversion, std::tm const& calendar) {
    switch (conversion) {
    case 'D':
        return writeNumbers(out, end, "%m/%d/%y", calendar);
    case 'F':
        return writeNumbers(out, end, "%Y-%m-%d", calendar);
    case 'R':
        return writeNumbers(out, end, "%H:%M", calendar);
    case 'T':
        return writeNumbers(out, end, "%H:%M:%S", calendar);
    case 'x':
        return writeNumbers(out, end, ::nl_langinfo(D_FMT), calendar);
    case 'X':
        return writeNumbers(out, end, ::nl_langinfo(T_FMT), calendar);
    default:
        return nullptr;
    }
}

char* writeConversion(char* out, char const* end, char conversion, std::tm const& calendar) {
    switch (conversion) {
    case 'Y':
        return writeYear(out, calendar.tm_year);
    case 'm':
        return writeTwoDigits(out, calendar.tm_mon + 1);
    case 'd':
        return writeTwoDigits(out, calendar.tm_mday);
    case 'H':
        return writeTwoDigits(out, calendar.tm_hour);
    case 'M':
        return writeTwoDigits(out, calendar.tm_min);
    case 'S':
        return writeTwoDigits(out, calendar.tm_sec);
    case 'y':
        return writeTwoDigits(out, (calendar.tm_year % 100 + 100) % 100);
    case '%':
        *out = '%';
        return out + 1;
    default:
        return writeRest(out, end, conversion, calendar);
    }
}

char* writeNumbers(char* out, char const* end, char const* format, std::tm const& calendar) {
    for (; *format != '\0'; ++format) {
        if (end - out < longestNumber) return nullptr;
        if (*format != '%')
            *out++ = *format;
        else if ((out = writeConversion(out, end, *++format, calendar)) == nullptr)
            return nullptr;
    }
    return out;
}

} // namespace

namespace kelcl {

std::size_t formatNumbers(char* room, std::size_t size, char const* format, std::tm const& calendar) {
    char const* const end = writeNumbers(room, room + size, format, calendar);
    return end == nullptr ? 0 : static_cast<std::size_t>(end - room);
}

} // namespace kelcl
