// A log filter: prints the lines of files that are like a wildcard pattern, as grep does for expressions. It
// shows matching, reading by lines, failures that are reported in one line, and tracing.
//
// logfilter --help tells how it is used. To see what it does, let it trace:
//   KORVA_TRACE=ON KORVA_TRACETO=stderr logfilter '*error*' server.log
#include <kelcl/kelcl.h>

#include <algorithm>
#include <clocale>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <vector>

namespace {

char const* const help =
    "Usage: logfilter [OPTION]... PATTERN [FILE]...\n"
    "Prints the lines of each FILE, or of standard input, that are like PATTERN.\n"
    "\n"
    "PATTERN is compared with the whole line. In it * stands for any run of bytes and\n"
    "? for one byte: '*error*' finds the lines that have the word anywhere.\n"
    "\n"
    "  -e PATTERN  a pattern; given several times, a line need be like one of them only\n"
    "  -i          take upper-case and lower-case letters for the same\n"
    "  -v          print the lines that are like none of the patterns\n"
    "  -c          print only how many lines there are in each FILE\n"
    "  --help      print this text\n"
    "\n"
    "A FILE named - is standard input. With several, each line has its FILE before it.\n"
    "What follows -- is not an option.\n"
    "\n"
    "KORVA_TRACE=ON KORVA_TRACETO=stderr in the environment shows what is done.\n"
    "Exit status: 0 when a line was found, 1 when none was, 2 when something failed.\n";

/// What the command line asks for.
struct Task {
    std::vector<DString> patterns; ///< in upper case if case does not matter
    std::vector<DString> files;
    bool ignoresCase = false;
    bool isInverted = false;
    bool countsOnly = false;
};

/// Reports an exception in one line, after what the program has printed so far.
class OneLineReports final : public DException::TraceFn {
public:
    TraceFn& logData(DException& exception) override {
        std::cout.flush();
        std::cerr << "logfilter: " << (exception.textCount() == 0 ? exception.name() : exception.text(0))
                  << '\n';
        return *this;
    }
};

// The command line ------------------------------------------------------------------------------------

/// @throws DInvalidParameter
[[noreturn]] void refuse(DString const& text, DExceptionLocation const& location) {
    DInvalidParameter refusal((text + ". Try 'logfilter --help'.").c_str());
    refusal.addLocation(location).logExceptionData();
    throw DInvalidParameter(refusal);
}

/// Takes a word such as -i or -vc.
void takeLetters(DString const& word, Task& task) {
    if (unsigned int const unknown = word.indexOfAnyBut("ivc", 2))
        refuse("there is no option -" + word.subString(unknown), DEXCEPTION_LOCATION());
    task.ignoresCase = task.ignoresCase || word.includes('i');
    task.isInverted = task.isInverted || word.includes('v');
    task.countsOnly = task.countsOnly || word.includes('c');
}

Task taskFrom(std::vector<DString> const& words) {
    Task task;
    bool mayBeOption = true;
    for (auto word = words.begin(); word != words.end(); ++word) {
        if (!mayBeOption || !word->isLike("-?*")) {
            task.files.push_back(*word);
        } else if (*word == "--") {
            mayBeOption = false;
        } else if (*word == "-e") {
            if (++word == words.end()) refuse("-e stands without a pattern", DEXCEPTION_LOCATION());
            task.patterns.push_back(*word);
        } else {
            takeLetters(*word, task);
        }
    }
    if (task.patterns.empty()) { // then the first of the other words is the pattern
        if (task.files.empty()) refuse("there is no pattern", DEXCEPTION_LOCATION());
        task.patterns.push_back(task.files.front());
        task.files.erase(task.files.begin());
    }
    if (task.files.empty()) task.files.emplace_back("-");
    if (task.ignoresCase)
        for (DString& pattern : task.patterns)
            pattern.upperCase();
    return task;
}

// Filtering -------------------------------------------------------------------------------------------

bool isWanted(DString const& line, Task const& task) {
    DString const text = task.ignoresCase ? DString::upperCase(line) : line;
    bool const isLikeAny = std::any_of(task.patterns.begin(), task.patterns.end(),
                                       [&](DString const& pattern) { return text.isLike(pattern); });
    return isLikeAny != task.isInverted;
}

void print(DString const& line, DString const& file, Task const& task) {
    if (task.files.size() > 1) std::cout << file << ':';
    std::cout.write(line.data(), line.length()) << '\n'; // << would end at the first NUL
}

/// Prints what is wanted of one file and returns the number of lines found.
/// @throws DAccessError when the file cannot be opened or read.
unsigned int filter(DString const& file, Task const& task) {
    DTrace const trace("filter", __LINE__);
    DTrace::write("file " + file);
    bool const isStandardInput = file == "-";
    std::ifstream opened;
    if (!isStandardInput) opened.open(file.c_str());
    std::istream& in = isStandardInput ? std::cin : opened;
    bool const isOpen = isStandardInput || opened.is_open();
    unsigned int lines = 0;
    unsigned int found = 0;
    while (isOpen && in) {
        DString const line = DString::lineFrom(in);
        if (in.bad() || (in.eof() && line.isEmpty())) break;
        ++lines;
        if (!isWanted(line, task)) continue;
        ++found;
        if (!task.countsOnly) print(line, file, task);
    }
    if (!isOpen || in.bad())
        DCLibErrorInfo::throwCLibError(file.c_str(), DEXCEPTION_LOCATION(), DBaseErrorInfo::accessError,
                                       DException::recoverable);
    if (task.countsOnly) print(DString(found), file, task);
    DTrace::write(DString(found) + " of " + DString(lines) + " lines");
    return found;
}

/// Filters all files. One that fails does not keep the others from being read.
int filterAll(Task const& task) {
    DTrace const trace("filterAll", __LINE__);
    bool isFound = false;
    bool hasFailed = false;
    for (DString const& file : task.files) {
        try {
            isFound = filter(file, task) != 0 || isFound;
        } catch (DException const& failure) { // reported when it was thrown
            if (!failure.isRecoverable()) throw;
            hasFailed = true;
        }
    }
    if (!std::cout.flush())
        DCLibErrorInfo::throwCLibError("standard output", DEXCEPTION_LOCATION(), DBaseErrorInfo::accessError,
                                       DException::unrecoverable);
    return hasFailed ? 2 : isFound ? 0 : 1;
}

} // namespace

int main(int argumentCount, char** arguments) {
    std::setlocale(LC_ALL, ""); // before the first string is made: the locale decides what a character is
    static OneLineReports reports;
    DException::setTraceFunction(reports);
    try {
        std::vector<DString> const words(arguments + std::min(1, argumentCount), arguments + argumentCount);
        if (words.size() == 1 && words.front() == "--help") {
            std::cout << help;
            return EXIT_SUCCESS;
        }
        return filterAll(taskFrom(words));
    } catch (DException const&) { // reported when it was thrown
        return 2;
    }
}
