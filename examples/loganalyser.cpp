// Analyses the log of Debian's package manager: what was done on each day, and to which packages. It shows
// reading by lines, words, wildcard patterns, texts as keys of a map, and columns of one width.
//
//   loganalyser /var/log/dpkg.log            what was done on each day
//   loganalyser /var/log/dpkg.log 'libc*'    the same for some packages, and each of them
#include <kelcl/kelcl.h>

#include <clocale>
#include <exception>
#include <fstream>
#include <iostream>
#include <map>
#include <vector>

namespace {

char const* const usage =
    "Usage: loganalyser FILE [PATTERN]\n"
    "Counts what the package manager did on each day, by its log FILE. With a PATTERN for names of\n"
    "packages, in which * stands for any text and ? for one byte, it lists their changes as well.\n";

char const* const actions[] = {"install", "upgrade", "remove", "configure"};

struct Change {
    DString day;
    DString action;
    DString package; ///< name:architecture
    DString version;
};

struct Analysis {
    unsigned int lines = 0;
    std::map<DString, std::map<DString, unsigned int>> countsByDay; ///< of each action
    std::vector<Change> changes;
};

/// Takes a line such as "2025-06-24 14:36:25 upgrade libudev1:amd64 252.36-1 252.38-1".
void takeLine(DString const& line, DString const& pattern, Analysis& analysis) {
    DString const package = line.word(4);
    if (!package.isLike(pattern)) return;
    for (DString const action : actions) {
        if (line.word(3) != action) continue;
        ++analysis.countsByDay[line.word(1)][action];
        if (action != "configure")
            analysis.changes.push_back(
                {line.word(1), action, package, line.word(action == "remove" ? 5 : 6)});
    }
}

/// @throws DAccessError when the file cannot be read.
Analysis analyse(char const* fileName, DString const& pattern) {
    std::ifstream log(fileName);
    if (!log) throw DAccessError(DCLibErrorInfo(fileName)); // with the text for errno
    log.exceptions(std::ios::badbit);                       // reading fails with an exception, too
    Analysis analysis;
    for (DString const& line : kelcl::lines(log)) {
        ++analysis.lines;
        takeLine(line, pattern, analysis);
    }
    return analysis;
}

void printDays(Analysis const& analysis) {
    std::cout << kelcl::leftJustifiedInColumns("day", 10);
    for (DString const action : actions)
        std::cout << kelcl::rightJustifiedInColumns(action, 11);
    std::cout << '\n';
    for (auto [day, counts] : analysis.countsByDay) {
        std::cout << day;
        for (DString const action : actions)
            std::cout << kelcl::rightJustifiedInColumns(DString(counts[action]), 11);
        std::cout << '\n';
    }
}

void printChanges(std::vector<Change> const& changes) {
    std::cout << '\n';
    for (Change const& change : changes)
        std::cout << change.day << "  " << kelcl::leftJustifiedInColumns(change.action, 9)
                  << kelcl::leftJustifiedInColumns(change.package, 30) << change.version << '\n';
}

} // namespace

int main(int argumentCount, char** arguments) {
    std::setlocale(LC_ALL, ""); // before the first string is made: the locale decides what a character is
    if (argumentCount != 2 && argumentCount != 3) {
        std::cerr << usage;
        return 2;
    }
    try {
        Analysis const analysis = analyse(arguments[1], argumentCount == 3 ? arguments[2] : "*");
        std::cout << arguments[1] << ": " << analysis.lines << " lines\n\n";
        printDays(analysis);
        if (argumentCount == 3) printChanges(analysis.changes);
        return 0;
    } catch (DException const& failure) { // is no std::exception
        std::cerr << "loganalyser: " << DString(failure.text(0)) << '\n';
    } catch (std::exception const& failure) {
        std::cerr << "loganalyser: " << failure.what() << '\n';
    }
    return 2;
}
