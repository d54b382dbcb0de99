// Dates and times beside a calendar that goes from day to day, and their texts beside strftime's in as much
// room as they may take.
#include "fuzz/target.h"
#include "tests/datetime/plain_calendar.h"

#include <kelcl/ddate.h>
#include <kelcl/dtime.h>

#include <cstring>
#include <ctime>
#include <vector>

namespace {

using std::string;

/// The dates of each thousandth day, from which the calendar walks on.
class Calendar {
public:
    Calendar() {
        PlainDate date;
        for (long day = 0; day < step * steps; ++day, date.goToNextDay())
            if (day % step == 0) marks_.push_back(date);
    }
    static constexpr long last = 4'000'000; // in the year 6239

    PlainDate dateOf(long day) const {
        PlainDate date = marks_[static_cast<std::size_t>(day / step)];
        for (long i = 0; i < day % step; ++i)
            date.goToNextDay();
        return date;
    }

private:
    static constexpr long step = 1000;
    static constexpr long steps = last / step + 1;
    std::vector<PlainDate> marks_;
};

void checkDate(Calendar const& calendar, long day) {
    PlainDate const plain = calendar.dateOf(day);
    DDate const date = DDate::fromJulianDay(static_cast<unsigned long>(day));
    auto const month = static_cast<DDate::Month>(plain.month);
    fuzz::same("year", date.year(), plain.year, day);
    fuzz::same("monthOfYear", static_cast<int>(date.monthOfYear()), plain.month, day);
    fuzz::same("dayOfMonth", date.dayOfMonth(), plain.day, day);
    fuzz::same("dayOfYear", date.dayOfYear(), plain.dayOfYear, day);
    fuzz::same("the date of three numbers", DDate(month, plain.day, plain.year) - DDate(), day);
    if (plain.year > 0) {
        fuzz::same("the date of a day of a year", DDate(plain.dayOfYear, plain.year) - DDate(), day);
        fuzz::holds("isValid", DDate::isValid(month, plain.day, plain.year), day);
        fuzz::same("the date of a record", DDate(date.asICnrDate()) - DDate(), day);
    }
    static constexpr char const* names[] = {"Monday", "Tuesday",  "Wednesday", "Thursday",
                                            "Friday", "Saturday", "Sunday"};
    fuzz::same("dayName", string(std::string_view(date.dayName())), string(names[day % 7]), day);
}

void checkOrder(long left, long right) {
    DDate const a = DDate() + left;
    DDate const b = DDate() + right;
    fuzz::same("the difference", a - b, left - right, left, right);
    fuzz::same("the sum", (b + (left - right)) == a, true, left, right);
    fuzz::same("<", a < b, left < right, left, right);
    fuzz::same("<=", a <= b, left <= right, left, right);
    fuzz::same("==", a == b, left == right, left, right);
}

/// Any numbers give a date that exists, and the same one again when taken apart and put together.
void checkAnyNumbers(int month, int day, int year) {
    DDate const date(static_cast<DDate::Month>(month), day, year);
    DDate::Month const ofYear = date.monthOfYear();
    fuzz::holds("the month exists", ofYear >= 1 && ofYear <= 12, month, day, year);
    fuzz::holds("the day exists", date.dayOfMonth() >= 1 && date.dayOfMonth() <= 31, month, day, year);
    if (date.year() >= -0x70000000 && date.year() <= 0x70000000)
        fuzz::holds("taken apart and put together", DDate(ofYear, date.dayOfMonth(), date.year()) == date,
                    month, day, year);
    if (DDate::isValid(static_cast<DDate::Month>(month), day, year) && year > 0) {
        fuzz::same("the day", date.dayOfMonth(), day, month, day, year);
        fuzz::same("the month", static_cast<int>(ofYear), month, month, day, year);
        fuzz::same("the year", date.year(), year, month, day, year);
    }
}

/// What strftime says, in room for whatever the formats here can give. A mark in front tells nothing from no
/// room.
string formatted(std::tm const& calendar, string const& format) {
    static std::vector<char> room(1 << 20);
    string const marked = '|' + format;
    std::size_t const n = std::strftime(room.data(), room.size(), marked.c_str(), &calendar);
    return n == 0 ? "" : string(room.data() + 1, n - 1);
}

void checkTexts(PlainDate const& plain, DDate date, DTime time, string const& format) {
    std::tm calendar{};
    calendar.tm_mday = plain.day;
    calendar.tm_mon = plain.month - 1;
    calendar.tm_year = format.find('y') != string::npos && plain.year < 1900 ? plain.year : plain.year - 1900;
    std::mktime(&calendar);
    fuzz::same("the text of a date", string(std::string_view(date.asString(format.c_str()))),
               formatted(calendar, format), format, plain.year, plain.month, plain.day);

    std::tm clock{};
    clock.tm_hour = static_cast<int>(time.secondsOfDay() / 3600);
    clock.tm_min = static_cast<int>(time.secondsOfDay() % 3600 / 60);
    clock.tm_sec = static_cast<int>(time.secondsOfDay() % 60);
    std::mktime(&clock);
    fuzz::same("the text of a time", string(std::string_view(time.asString(format.c_str()))),
               formatted(clock, format), format, time.secondsOfDay());
}

void checkTime(long seconds) {
    long const expected = (seconds % 86400 + 86400) % 86400;
    DTime const time = DTime::fromSeconds(seconds);
    fuzz::same("secondsOfDay", time.secondsOfDay(), expected, seconds);
    fuzz::same("the time of its parts", DTime(time.hours(), time.minutes(), time.seconds()).secondsOfDay(),
               expected, seconds);
    fuzz::same("the time of its record", DTime(time.asICnrTime()).secondsOfDay(), expected, seconds);
}

/// A format with at most three digits in a row, so that no text becomes longer than the room there is.
string format(ByteChoices& choices) {
    static constexpr std::string_view signs = "aAbBcCdDeEfFgGhHiIjJkKlLmMnNOpPqrRsStTuUvVwWxXyYzZ%%_-0^#+123";
    string result;
    for (std::uint32_t count = choices.below(24); count > 0; --count) {
        if (choices.oneIn(3)) result += '%';
        result += choices.oneIn(6) ? static_cast<char>(1 + choices.below(255))
                                   : signs[choices.below(static_cast<std::uint32_t>(signs.size()))];
        std::size_t const n = result.size();
        if (n >= 4 && result.find_first_not_of("0123456789", n - 4) == string::npos) result.back() = '.';
    }
    return result;
}

} // namespace

int LLVMFuzzerInitialize(int*, char***) {
    setenv("TZ", "UTC0", 1);
    return 0;
}

int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    static Calendar const calendar;
    ByteChoices choices(data, size);
    while (!choices.isAtEnd()) {
        // Often near the change of the calendars, on 2361221.
        long const day = choices.oneIn(4) ? 2361000 + static_cast<long>(choices.below(500))
                                          : static_cast<long>(choices.below(Calendar::last));
        checkDate(calendar, day);
        checkOrder(day, static_cast<int>(choices.any()));
        checkAnyNumbers(static_cast<int>(choices.below(16)) - 1, static_cast<int>(choices.below(400)) - 20,
                        static_cast<int>(choices.any()));
        auto const seconds = static_cast<std::int64_t>(choices.any()) * (choices.oneIn(2) ? 1 : -100'000);
        checkTime(seconds);
        checkTexts(calendar.dateOf(day), DDate() + day, DTime::fromSeconds(seconds), format(choices));
    }
    return 0;
}
