// A calculator of dates: weekdays, the days between two dates, and the date some days later. It knows the
// eleven days that the calendar of 1752 left out. It shows DDate, and reading numbers that a user has typed.
#include <kelcl/kelcl.h>

#include <algorithm>
#include <clocale>
#include <cstdlib>
#include <iostream>
#include <vector>

namespace {

char const* const help =
    "Usage: datecalculator DATE             the weekday, and which day of its year it is\n"
    "       datecalculator DATE DATE        the days from the first to the second\n"
    "       datecalculator DATE +DAYS       the date so many days later\n"
    "       datecalculator DATE -DAYS       the date so many days earlier\n"
    "Calculates with dates as they were counted in Great Britain: the day after\n"
    "2 September 1752 was the 14th, and before it every fourth year was a leap year.\n"
    "\n"
    "DATE is YYYY-MM-DD, -YYYY-MM-DD for a year before 1 (-0001 is the year before 0001),\n"
    "or today. DAYS has at most seven digits. Weekdays are in the language of LC_TIME.\n"
    "Exit status: 0 when there is an answer, 2 when there is none.\n";

/// Reports an exception in one line.
class OneLineReports final : public DException::TraceFn {
public:
    TraceFn& logData(DException& exception) override {
        std::cerr << "datecalculator: " << (exception.textCount() == 0 ? exception.name() : exception.text(0))
                  << '\n';
        return *this;
    }
};

/// @throws DInvalidParameter
[[noreturn]] void refuse(DString const& text, DExceptionLocation const& location) {
    DInvalidParameter refusal(text.c_str());
    refusal.addLocation(location).logExceptionData();
    throw DInvalidParameter(refusal);
}

// Reading ---------------------------------------------------------------------------------------------

int numberAt(DString const& text, unsigned int start, unsigned int count) {
    return std::atoi(text.subString(start, count).c_str());
}

/// The date, or the next one that there is when the calendar does not have it. DDate::isValid would ask the
/// rules of the calendar, which do not agree with the arithmetic about leap years before 1; so what was made
/// is compared.
bool makeDate(DDate::Month month, int day, int year, DDate& date) {
    date.initialize(month, day, year);
    return date.monthOfYear() == month && date.dayOfMonth() == day && date.year() == year;
}

/// @throws DInvalidParameter before the first day that has a weekday.
DDate checked(DDate const& date) {
    if (date < DDate()) refuse("there are no weekdays before -4713-01-01", DEXCEPTION_LOCATION());
    return date;
}

/// @throws DInvalidParameter when the text is no date of the calendar.
DDate dateFrom(DString const& text) {
    if (text == "today") return DDate::today();
    bool const isBefore1 = text.isLike("-*");
    DString const positive = isBefore1 ? text.subString(2) : text;
    DString digits(positive);
    digits.change("-", "");
    if (!positive.isLike("####-##-##", '*', '#') || digits.length() != 8 || !digits.isDigits())
        refuse("'" + text + "' is not of the form YYYY-MM-DD. Try 'datecalculator --help'.",
               DEXCEPTION_LOCATION());
    int const year = numberAt(positive, 1, 4);
    auto const month = static_cast<DDate::Month>(numberAt(positive, 6, 2));
    DDate date;
    if (!makeDate(month, numberAt(positive, 9, 2), isBefore1 ? -year : year, date)) {
        bool const isLeftOut = DString("1752-09-02") < text && text < DString("1752-09-14");
        refuse("there is no " + text + (isLeftOut ? ": 1752-09-02 was followed by 1752-09-14" : ""),
               DEXCEPTION_LOCATION());
    }
    return checked(date);
}

bool isDays(DString const& text) {
    DString const digits = text.subString(2);
    return (text.isLike("+*") || text.isLike("-*")) && digits.isDigits() && digits.length() <= 7;
}

// Answering -------------------------------------------------------------------------------------------

/// YYYY-MM-DD. The C library, which DDate::asString asks, has no 29 February 1700.
DString textOf(DDate const& date) {
    DString const sign = date.year() < 0 ? "-" : "";
    return sign + DString(std::abs(date.year())).rightJustify(4, '0') + '-' +
           DString(static_cast<int>(date.monthOfYear())).rightJustify(2, '0') + '-' +
           DString(date.dayOfMonth()).rightJustify(2, '0');
}

DString countOf(long days) { return DString(days) + (days == 1 || days == -1 ? " day" : " days"); }

/// Tells of the days that are missing between the two dates, in whatever order they are.
void tellOfLeftOutDays(DDate const& one, DDate const& other) {
    DDate const last(DDate::September, 2, 1752);
    if (std::min(one, other) <= last && last < std::max(one, other))
        std::cout << "Eleven days were left out in between: 1752-09-02 was followed by 1752-09-14.\n";
}

void tellDay(DDate const& date) {
    std::cout << textOf(date) << ": " << date.dayName() << ", day " << date.dayOfYear() << " of its year\n";
}

void tellDistance(DDate const& from, DDate const& to) {
    std::cout << textOf(from) << " to " << textOf(to) << ": " << countOf(to - from) << '\n';
    tellOfLeftOutDays(from, to);
}

/// @throws DInvalidParameter when the sum is before the first day.
void tellSum(DDate const& date, DString const& days) {
    long const count = std::atol(days.c_str());
    DDate const sum = checked(date + count);
    std::cout << textOf(date) << ' ' << days.subString(1, 1) << ' ' << countOf(std::labs(count)) << ": "
              << textOf(sum) << ", " << sum.dayName() << '\n';
    tellOfLeftOutDays(date, sum);
}

void answer(std::vector<DString> const& words) {
    if (words.empty() || words.size() > 2)
        refuse("one or two arguments are wanted. Try 'datecalculator --help'.", DEXCEPTION_LOCATION());
    DDate const date = dateFrom(words[0]);
    if (words.size() == 1)
        tellDay(date);
    else if (isDays(words[1]))
        tellSum(date, words[1]);
    else
        tellDistance(date, dateFrom(words[1]));
}

} // namespace

int main(int argumentCount, char** arguments) {
    std::setlocale(LC_ALL, ""); // before the first string is made
    static OneLineReports reports;
    DException::setTraceFunction(reports);
    try {
        std::vector<DString> const words(arguments + std::min(1, argumentCount), arguments + argumentCount);
        if (words.size() == 1 && words.front() == "--help")
            std::cout << help;
        else
            answer(words);
        return EXIT_SUCCESS;
    } catch (DException const&) { // reported when it was thrown
        return 2;
    }
}
