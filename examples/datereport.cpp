// Reports on the dates of Debian's releases: weekdays, days between dates, month ends. It shows fields of a
// file of comma-separated values, checked dates from texts, DDate, and the names of days and months in the
// user's language.
//
//   datereport /usr/share/distro-info/debian.csv
#include <kelcl/kelcl.h>

#include <clocale>
#include <cstdint>
#include <exception>
#include <fstream>
#include <iostream>
#include <map>
#include <optional>
#include <vector>

namespace {

char const* const usage =
    "Usage: datereport FILE [YYYY-MM-DD]\n"
    "Tells of the releases in FILE, of the form of /usr/share/distro-info/debian.csv, when they came\n"
    "and how long they were supported, as seen on the given day, or today.\n";

struct Release {
    DString name;
    DDate released;
    std::optional<DDate> ended;
};

/// The date of a text YYYY-MM-DD; nothing if the text has another form or the calendar does not have the
/// date.
std::optional<DDate> dateFrom(DString const& text) {
    if (!text.isLike("####-##-##", '*', '#')) return std::nullopt; // here # is any byte
    auto const year = kelcl::toNumber<std::uint16_t>(text.subString(1, 4));
    auto const month = kelcl::toNumber<std::uint8_t>(text.subString(6, 2));
    auto const day = kelcl::toNumber<std::uint8_t>(text.subString(9, 2));
    if (!year || !month || !day) return std::nullopt;
    DDate const date(DCnrDate{*day, *month, *year});
    if (date.year() != *year || date.monthOfYear() != *month || date.dayOfMonth() != *day)
        return std::nullopt;
    return date;
}

/// The releases that have a date.
/// @throws DAccessError when the file cannot be read.
std::vector<Release> releasesIn(char const* fileName) {
    std::ifstream file(fileName);
    if (!file) throw DAccessError(DCLibErrorInfo(fileName)); // with the text for errno
    file.exceptions(std::ios::badbit);                       // reading fails with an exception, too
    std::vector<Release> releases;
    for (DString const& line : kelcl::lines(file)) {
        auto const pieces = kelcl::split(line, ','); // version,codename,series,created,release,eol,...
        std::vector<DString> fields(pieces.begin(), pieces.end());
        fields.resize(6);
        if (auto const released = dateFrom(fields[4]))
            releases.push_back({fields[0] + ' ' + fields[1], *released, dateFrom(fields[5])});
    }
    return releases;
}

DString lifeOf(Release const& release, DDate const& today) {
    if (today < release.released) return "comes in " + DString(release.released - today) + " days";
    if (!release.ended || today < *release.ended) return DString(today - release.released) + " days so far";
    return DString(*release.ended - release.released) + " days";
}

void printRelease(Release const& release, DDate const& today) {
    DDate const& date = release.released;
    int const left = DDate::daysInMonth(date.monthOfYear(), date.year()) - date.dayOfMonth();
    std::cout << kelcl::leftJustifiedInColumns(release.name, 14)
              << kelcl::leftJustifiedInColumns(date.asString("%Y-%m-%d %A"), 22)
              << kelcl::rightJustifiedInColumns(DString(date.dayOfYear()), 5)
              << kelcl::rightJustifiedInColumns(DString(left), 8) << "  " << lifeOf(release, today) << '\n';
}

/// How many releases came on each day of the week.
void printWeekdays(std::vector<Release> const& releases) {
    std::map<DDate::DayOfWeek, unsigned int> counts;
    for (Release const& release : releases)
        ++counts[release.released.dayOfWeek()];
    std::cout << '\n';
    for (auto const& [day, count] : counts)
        std::cout << kelcl::leftJustifiedInColumns(DDate::dayName(day), 14) << DString('#').copy(count)
                  << '\n';
}

} // namespace

int main(int argumentCount, char** arguments) {
    std::setlocale(LC_ALL, ""); // before the first string is made: for the names of days and months, too
    if (argumentCount != 2 && argumentCount != 3) {
        std::cerr << usage;
        return 2;
    }
    try {
        auto const today = argumentCount == 3 ? dateFrom(arguments[2]) : DDate::today();
        if (!today) throw DInvalidParameter("there is no such date; one is wanted in the form YYYY-MM-DD");
        std::vector<Release> const releases = releasesIn(arguments[1]);
        std::cout << "release       day                   of year  to end  supported\n";
        for (Release const& release : releases)
            printRelease(release, *today);
        printWeekdays(releases);
        return 0;
    } catch (DException const& failure) { // is no std::exception
        std::cerr << "datereport: " << DString(failure.text(0)) << '\n';
    } catch (std::exception const& failure) {
        std::cerr << "datereport: " << failure.what() << '\n';
    }
    return 2;
}
