// Calendar records and their texts; the only place where the C library's clock, zones and formatter are used.
#include "datetime/formatting.h"

#include <cstdlib>
#include <cstring>
#include <ctime>
#include <string>

namespace {

/// Whether local time is UTC, as far as that can be told without looking at the zone file. `mktime` looks at
/// it in each call while TZ is not set, which takes many times as long as all the rest. The name is read
/// once: another thread may be setting it.
bool isLocalTimeUtc() {
    if (std::getenv("TZ") != nullptr || daylight != 0 || timezone != 0) return false;
    char const* const name = tzname[0];
    return name != nullptr && std::strcmp(name, "UTC") == 0;
}

/// Formats into ever more room. The mark in front of the text tells an empty text from one that did not fit,
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
        ::timegm(&calendar);
        calendar.tm_zone = tzname[0];
    } else {
        std::mktime(&calendar);
    }
}

DString formatted(std::tm const& calendar, char const* format) {
    if (format == nullptr) return DString();
    char room[256];
    std::size_t const length = std::strftime(room, sizeof room, format, &calendar);
    if (length != 0) return DString(room, static_cast<unsigned int>(length));
    return formattedLong(calendar, format, 2 * sizeof room);
}

std::tm localCalendarNow() {
    std::time_t const now = std::time(nullptr);
    std::tm calendar{};
    ::localtime_r(&now, &calendar);
    return calendar;
}

} // namespace kelcl
