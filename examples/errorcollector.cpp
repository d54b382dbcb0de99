// A host program that takes the error reports of the library, and its own, into its hands: it installs a
// trace function that collects them, and prints a summary at the end. The work that it does meanwhile is to
// check a file of settings. dexception.h says what a report looks like and who writes it by default.
#include <kelcl/kelcl.h>

#include <algorithm>
#include <clocale>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <map>
#include <utility>
#include <vector>

namespace {

char const* const help =
    "Usage: errorcollector [--full] FILE\n"
    "Checks a file of settings and prints a summary of the errors that were reported.\n"
    "\n"
    "Each line is empty, begins with #, or is of the form NAME = VALUE:\n"
    "\n"
    "  port = 8080            a number from 1 to 65535\n"
    "  since = 2024-02-29     a date of the calendar, YYYY-MM-DD\n"
    "  key = 0123cdef         hexadecimal digits, two for each byte\n"
    "  title = any text       characters of the locale\n"
    "\n"
    "  --full  print the reports themselves as well\n"
    "  --help  print this text\n"
    "\n"
    "Exit status: 0 without an error, 1 with errors, 2 when FILE could not be checked.\n";

// Collecting ------------------------------------------------------------------------------------------

struct Report {
    DString place; ///< what the host was at
    DString kind;  ///< name of the exception's class
    DString text;  ///< the newest one
    DString lines; ///< the whole report
};

/// Is the process's trace function for as long as it lives, and keeps every report.
class Collector final : public DException::TraceFn {
public:
    Collector() { DException::setTraceFunction(*this); }
    ~Collector() { DExceptStaticPtr::userFunction = previous_; }
    Collector(Collector const&) = delete;
    Collector& operator=(Collector const&) = delete;

    /// Names the place that reports belong to from now on.
    void setPlace(DString const& place) { place_ = place; }

    std::vector<Report> const& reports() const { return reports_; }

    /// Called with the exception that is about to be thrown. The inherited function makes the lines and gives
    /// them to write(), then calls exceptionLogged().
    TraceFn& logData(DException& exception) override {
        current_ = {place_, exception.name(), exception.text(0), ""};
        return TraceFn::logData(exception);
    }
    /// Called for each line, or a few in one.
    void write(char const* lines) override {
        current_.lines += "    " + DString(lines).change("\n", "\n    ") + '\n';
    }
    void exceptionLogged() override { reports_.push_back(std::move(current_)); }

private:
    DException::TraceFn* previous_ = DExceptStaticPtr::userFunction; // null: that of the library
    DString place_;
    Report current_;
    std::vector<Report> reports_;
};

// Checking --------------------------------------------------------------------------------------------

/// Reports and throws.
/// @throws DInvalidParameter
[[noreturn]] void refuse(DString const& text, DExceptionLocation const& location) {
    DInvalidParameter refusal(text.c_str(), 0, DException::recoverable);
    refusal.addLocation(location).logExceptionData();
    throw DInvalidParameter(refusal);
}

bool isPort(DString const& value) {
    if (!value.isDigits() || value.length() > 5) return false;
    int const port = std::atoi(value.c_str());
    return 1 <= port && port <= 65535;
}

bool isDate(DString const& value) {
    DString digits(value);
    digits.change("-", "");
    if (!value.isLike("####-##-##", '*', '#') || digits.length() != 8 || !digits.isDigits()) return false;
    auto const month = static_cast<DDate::Month>(std::atoi(value.subString(6, 2).c_str()));
    return DDate::isValid(month, std::atoi(value.subString(9).c_str()), std::atoi(value.c_str()));
}

bool isKey(DString const& value) { return value.isHexDigits() && value.length() % 2 == 0; }

void checkSetting(DString const& name, DString const& value) {
    if (name == "port") {
        if (!isPort(value)) refuse("'" + value + "' is no port", DEXCEPTION_LOCATION());
    } else if (name == "since") {
        if (!isDate(value)) refuse("'" + value + "' is no date", DEXCEPTION_LOCATION());
    } else if (name == "key") {
        if (!isKey(value)) refuse("'" + value + "' is no key", DEXCEPTION_LOCATION());
    } else if (name == "title") {
        DWBuffer const characters(value.data(), value.length()); // the library throws by itself
    } else {
        refuse("there is no setting '" + name + "'", DEXCEPTION_LOCATION());
    }
}

/// Checks one line. What is wrong with it is in the reports, and checking continues.
void checkLine(DString line) {
    try {
        line.strip();
        if (line.isEmpty() || line[1] == '#') return;
        unsigned int const equals = line.indexOf('=');
        if (equals == 0) refuse("there is no =", DEXCEPTION_LOCATION());
        checkSetting(line.subString(1, equals - 1).strip(), line.subString(equals + 1).strip());
    } catch (DInvalidParameter const&) { // ours, reported when it was thrown
    } catch (DInvalidRequest const&) {   // the library's
    }
}

/// @throws DAccessError when the file cannot be opened or read.
void checkFile(DString const& name, Collector& collector) {
    std::ifstream in(name.c_str());
    for (unsigned int number = 1; in; ++number) {
        collector.setPlace("line " + DString(number));
        DString const line = DString::lineFrom(in);
        if (!in.bad()) checkLine(line);
    }
    if (!in.is_open() || in.bad())
        DCLibErrorInfo::throwCLibError(name.c_str(), DEXCEPTION_LOCATION(), DBaseErrorInfo::accessError,
                                       DException::unrecoverable);
}

void printSummary(std::vector<Report> const& reports, bool isFull) {
    std::map<DString, unsigned int> counts;
    for (Report const& report : reports) {
        std::cout << report.place << ": " << report.text << '\n';
        if (isFull) std::cout << report.lines;
        ++counts[report.kind];
    }
    std::cout << "Errors: " << reports.size() << '\n';
    for (auto const& [kind, count] : counts)
        std::cout << "  " << kind << ": " << count << '\n';
}

} // namespace

int main(int argumentCount, char** arguments) {
    std::setlocale(LC_ALL, ""); // before the first string is made: the locale decides what a character is
    std::vector<DString> const words(arguments + std::min(1, argumentCount), arguments + argumentCount);
    if (words.size() == 1 && words.front() == "--help") {
        std::cout << help;
        return EXIT_SUCCESS;
    }
    bool const isFull = !words.empty() && words.front() == "--full";
    Collector collector;
    try {
        if (words.size() != (isFull ? 2 : 1) || words.back().isLike("-*"))
            refuse("one file is wanted. Try 'errorcollector --help'.", DEXCEPTION_LOCATION());
        checkFile(words.back(), collector);
    } catch (DException const& failure) {
        std::cerr << "errorcollector: " << (failure.textCount() == 0 ? failure.name() : failure.text(0))
                  << '\n';
        return 2;
    }
    printSummary(collector.reports(), isFull);
    return collector.reports().empty() ? EXIT_SUCCESS : 1;
}
