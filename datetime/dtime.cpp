// DTime's texts and the time of the moment. The arithmetic is in the header.
#include <kelcl/dtime.h>

#include "datetime/formatting.h"

#include <ostream>

DTime DTime::now() {
    std::tm const now = kelcl::localCalendarNow();
    return DTime(now.tm_hour, now.tm_min, now.tm_sec);
}

DString DTime::asString(char const* format) const {
    // A record with a time and nothing else has day 0 of January 1900.
    std::tm calendar{};
    calendar.tm_mday = 31;
    calendar.tm_mon = 11;
    calendar.tm_year = -1;
    calendar.tm_hour = hours();
    calendar.tm_min = minutes();
    calendar.tm_sec = seconds();
    kelcl::completeCalendar(calendar);
    return kelcl::formatted(calendar, format);
}

std::ostream& operator<<(std::ostream& out, DTime const& time) { return out << time.asString(); }
