// What dates and times share: the way through the C library's calendar and formatter. What a date or a time
// puts into the calendar record is theirs.
#ifndef KELCL_DATETIME_FORMATTING_H
#define KELCL_DATETIME_FORMATTING_H

#include <kelcl/dstring.h>

#include <ctime>

namespace kelcl {

/// What `mktime` makes of the record: everything within its range, weekday, day of the year and zone filled
/// in.
void completeCalendar(std::tm& calendar);

/// The text that `strftime` makes, however long; empty where it makes none, and for a null format.
DString formatted(std::tm const& calendar, char const* format);

/// The calendar record of this moment, in the zone of the process.
std::tm localCalendarNow();

} // namespace kelcl

#endif
