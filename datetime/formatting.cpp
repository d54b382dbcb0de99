// Calendar records and their texts; the only place where the C library's clock, zones and formatter are used.
#include "datetime/formatting.h"

#include "datetime/number_format.h"

#include <kelcl/detail/calendar.h>

#include <atomic>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <string>
#include <string_view>

namespace {

constexpr char const* utc = "UTC";

/// Whether the zone that the C library uses at the moment could be UTC. Looks at numbers only: the zone's
/// name belongs to the C library, which other threads may be calling.
bool mayZoneBeUtc() { return daylight == 0 && timezone == 0; }

/// Whether the machine's zone, which holds while TZ is not set, is UTC by its name too.
bool findOutWhetherMachineZoneIsUtc() {
    std::time_t const anyTime = 0;
    std::tm calendar{};
    char name[8] = "";
    ::tzset();
    ::localtime_r(&anyTime, &calendar);
    std::strftime(name, sizeof name, "%Z", &calendar);
    return mayZoneBeUtc() && std::strcmp(name, utc) == 0;
}

/// The same, found out once, by whichever thread comes first: `tzset` looks at the zone file each time, which
/// takes many times as long as all the rest.
bool isMachineZoneUtc() {
    enum Known : signed char { notYet, isUtc, isAnother };
    static std::atomic<Known> known = notYet;
    if (known == notYet) known = findOutWhetherMachineZoneIsUtc() ? isUtc : isAnother;
    return known == isUtc;
}

/// Whether local time is UTC, as far as that can be told without looking at the zone file, as `mktime` does
/// in each call while TZ is not set. The C library may still use a TZ that was set before.
bool isLocalTimeUtc() { return std::getenv("TZ") == nullptr && isMachineZoneUtc() && mayZoneBeUtc(); }

/// Fills in what `timegm` would, if the record already is a day of the Gregorian calendar in years of up to
/// four digits. If it is not, as 29 February 1700, it stays as it is.
bool completeWithinRange(std::tm& calendar) {
    constexpr int yearZero = 1900;
    if (calendar.tm_year < 1 - yearZero || calendar.tm_year > 9999 - yearZero) return false;
    int const year = calendar.tm_year + yearZero;
    bool const isLeap = year % 4 == 0 && (year % 100 != 0 || year % 400 == 0);
    short const* const before = kelcl::daysBeforeMonth[isLeap ? 1 : 0] + calendar.tm_mon;
    if (calendar.tm_mday < 1 || calendar.tm_mday > before[1] - before[0]) return false;
    int const passed = year - 1; // since 1 January of year 1, a Monday
    calendar.tm_yday = before[0] + calendar.tm_mday - 1;
    calendar.tm_wday = (1 + passed * 365 + passed / 4 - passed / 100 + passed / 400 + calendar.tm_yday) % 7;
    return true;
}

/// Formats into ever more room. The mark before the text tells an empty text from one that did not fit,
/// so that the room grows only as long as it helps; the limit is for C libraries that refuse a conversion.
DString formattedLong(std::tm const& calendar, char const* format, std::size_t size) {
    constexpr std::size_t longest = std::size_t{64} << 20;
    std::string const marked = std::string(1, '|') + format;
    std::string room;
    for (; size <= longest + marked.size(); size *= 2) {
        room.resize(size);
        std::size_t const length = std::strftime(room.data(), room.size(), marked.c_str(), &calendar);
        if (length != 0) return DString(room.data() + 1, static_cast<unsigned int>(length - 1));
    }
    return DString();
}

} // namespace

namespace kelcl {

void completeCalendar(std::tm& calendar) {
    if (isLocalTimeUtc()) {
        if (!completeWithinRange(calendar)) ::timegm(&calendar);
        calendar.tm_zone = utc;
    } else {
        std::mktime(&calendar);
    }
}

DString formatted(std::tm const& calendar, char const* format) {
    if (format == nullptr) return DString();
    char room[256];
    std::size_t length = formatNumbers(room, sizeof room, format, calendar);
    if (length == 0) length = std::strftime(room, sizeof room, format, &calendar);
    if (length != 0) return DString(std::string_view(room, length));
    return formattedLong(calendar, format, 2 * sizeof room);
}

std::tm localCalendarNow() {
    std::time_t const now = std::time(nullptr);
    std::tm calendar{};
    if (isLocalTimeUtc()) {
        ::gmtime_r(&now, &calendar);
    } else {
        ::tzset(); // which localtime_r, unlike mktime, does not do by itself
        ::localtime_r(&now, &calendar);
    }
    return calendar;
}

} // namespace kelcl
