// A host program that shows the library at work on a text file in the locale's encoding: a numbered listing,
// a report of the records in it, what is refused and how, a summary. It uses nothing but the public headers.
//
// demo --help tells how it is used.
//
// The texts of failures come from the library's message catalog, kelcl.cat, which the C library looks for
// along NLSPATH in the language of LANG. ./dev demo sets NLSPATH to the catalogs of the build tree; after an
// installation it is
//   NLSPATH=<prefix>/share/locale/%l/LC_MESSAGES/%N:<prefix>/share/locale/en/LC_MESSAGES/%N
// A host that has its catalog elsewhere names it with DBase::setMessageFile, its user with the environment
// variable "KORVA MSGFILE". With KORVA_TRACETO=stderr (or stdout, or file and KORVA_TRACEFILE) the run is
// traced.
#include <kelcl/kelcl.h>

#include <algorithm>
#include <clocale>
#include <cstdint>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <langinfo.h>
#include <map>
#include <vector>

namespace {

char const* const help =
    "Usage: demo FILE [PATTERN]\n"
    "Lists the lines of FILE that are like PATTERN (all without one), and reports on its records.\n"
    "\n"
    "FILE is a text in the encoding of the locale. In it a record is a line of the form\n"
    "name;country;YYYY-MM-DD; all other lines are prose. PATTERN is compared with whole\n"
    "lines; * stands for any run of bytes, ? for one byte.\n"
    "\n"
    "KORVA_TRACETO=stderr in the environment shows what is done.\n"
    "Exit status: 0 when FILE was read to its end, 2 when it was not.\n";

unsigned int const longestLineAllowed = 1000; // bytes
unsigned int const nameWidth = 16;            // columns of the name's field in the report
unsigned long const notInEncoding = 1012;     // id of the library's error for bytes that are no character

struct Record {
    DString name;
    DString country;
    DDate date;
};

/// What was found in the file.
struct Contents {
    unsigned int lines = 0;
    unsigned int words = 0;
    unsigned int refusedRecords = 0;
    DString longestLine;
    unsigned int longestLineNumber = 0;
    std::vector<Record> records;
};

/// Writes the reports of exceptions, after what the program has printed so far.
class ReportBehindOutput final : public DException::TraceFn {
public:
    void write(char const* line) override {
        std::cout.flush();
        DException::TraceFn::write(line);
    }
};

// Records ---------------------------------------------------------------------------------------------

bool isRecord(DString const& line) {
    if (!line.isLike("#*;##;####-##-##", '*', '#') || line.occurrencesOf(';') != 2) return false;
    DString digits = line.subString(line.lastIndexOf(';') + 1);
    return digits.change("-", "").length() == 8 && digits.isDigits();
}

/// The date of a text YYYY-MM-DD.
/// @throws DInvalidParameter when the calendar has no such date.
DDate dateFrom(DString const& text) {
    DCnrDate const record{kelcl::toNumber<std::uint8_t>(text.subString(9, 2)).value_or(0),
                          kelcl::toNumber<std::uint8_t>(text.subString(6, 2)).value_or(0),
                          kelcl::toNumber<std::uint16_t>(text.subString(1, 4)).value_or(0)};
    DDate const date(record); // the nearest one if the calendar does not have it
    if (date.year() != record.year || date.monthOfYear() != record.month || date.dayOfMonth() != record.day) {
        DString const condition = "the date " + text + " exists";
        DExcept__assertParameter(condition.c_str(), DEXCEPTION_LOCATION());
    }
    return date;
}

Record recordFrom(DString const& line) {
    auto const pieces = kelcl::split(line, ';');
    std::vector<DString> const fields(pieces.begin(), pieces.end());
    return {fields[0], fields[1], dateFrom(fields[2])};
}

/// Adds the record to the contents. One with a wrong date is refused, and reading continues.
void takeRecord(DString const& line, Contents& contents) {
    try {
        contents.records.push_back(recordFrom(line));
    } catch (DInvalidParameter const& refusal) { // reported when it was thrown
        if (!refusal.isRecoverable()) throw;
        ++contents.refusedRecords;
        DTrace::write("refused: " + line);
    }
}

// Reading ---------------------------------------------------------------------------------------------

/// Refuses lines that a text file cannot have, and with them the file.
/// @throws DInvalidRequest, which is unrecoverable.
void checkLine(DString const& line, unsigned int number) {
    DString condition;
    if (line.length() > longestLineAllowed)
        condition = "line " + DString(number) + " has at most " + DString(longestLineAllowed) + " bytes";
    else if (line.includes('\0'))
        condition = "line " + DString(number) + " holds no NUL byte";
    if (!condition.isEmpty())
        DExcept__throwLibraryError(1, DEXCEPTION_LOCATION(), DBaseErrorInfo::invalidRequest,
                                   DBase::unrecoverable, condition.c_str());
    // Bytes that are no characters of the locale do not convert: the library raises message 1012 by itself.
    if (MB_CUR_MAX > 1) DWBuffer const characters(line.data(), line.length());
}

void takeLine(DString const& line, DString const& pattern, Contents& contents) {
    checkLine(line, contents.lines + 1);
    ++contents.lines;
    contents.words += line.numWords();
    if (line.length() > contents.longestLine.length()) {
        contents.longestLine = line;
        contents.longestLineNumber = contents.lines;
    }
    if (line.isLike(pattern)) std::cout << DString(contents.lines).rightJustify(6) << "  " << line << '\n';
    if (isRecord(line)) takeRecord(line, contents);
}

/// Lists the lines like `pattern` and collects the contents of the file.
/// @throws DAccessError when the file cannot be opened or read, and what checkLine throws.
void readFile(char const* fileName, DString const& pattern, Contents& contents) {
    DTrace const trace("readFile", __LINE__);
    std::ifstream in(fileName);
    for (DString const& line : kelcl::lines(in))
        takeLine(line, pattern, contents);
    if (!in.is_open() || in.bad())
        DCLibErrorInfo::throwCLibError(fileName, DEXCEPTION_LOCATION(), DBaseErrorInfo::accessError,
                                       DException::unrecoverable);
    DTrace::write(DString(contents.lines) + " lines");
}

// Reporting -------------------------------------------------------------------------------------------

void printHeading(char const* text) { std::cout << '\n' << text << "\n\n"; }

/// The records in columns of one width on a terminal, whatever their script.
void printRecords(std::vector<Record> const& records) {
    DTrace const trace("printRecords", __LINE__);
    unsigned int dateWidth = 0;
    unsigned int dayWidth = 0;
    for (Record const& record : records) {
        dateWidth = std::max(dateWidth, kelcl::columns(record.date.asString(DDate::fourDigitYear)));
        dayWidth = std::max(dayWidth, kelcl::columns(record.date.dayName()));
    }
    printHeading("Records");
    for (Record const& record : records)
        std::cout << "  " << record.country << "  "
                  << kelcl::rightJustifiedInColumns(record.date.asString(DDate::fourDigitYear), dateWidth)
                  << "  " << kelcl::leftJustifiedInColumns(record.date.dayName(), dayWidth) << "  |"
                  << kelcl::leftJustifiedInColumns(record.name, nameWidth) << "|\n";
}

/// The bytes in hexadecimal, sixteen to a line, after the position of the first.
void printBytes(DString const& text) {
    for (unsigned int position = 1; position <= text.length(); position += 16) {
        unsigned int const count = std::min(16U, text.length() - position + 1);
        // Made of raw bytes: subString would not leave a cut character as it is.
        DString digits = DString(text.data() + position - 1, count).c2x();
        for (unsigned int pair = count - 1; pair > 0; --pair)
            digits.insert(" ", 2 * pair);
        std::cout << DString(position).rightJustify(6) << "  " << digits << '\n';
    }
}

void printLongestName(std::vector<Record> const& records) {
    DTrace const trace("printLongestName", __LINE__);
    auto const longest =
        std::max_element(records.begin(), records.end(), [](Record const& left, Record const& right) {
            return left.name.length() < right.name.length();
        });
    printHeading("The bytes of the longest name");
    printBytes(longest->name);
}

/// The country with the most records and their number, in brackets.
DString mostFrequentCountry(std::vector<Record> const& records) {
    std::map<DString, unsigned int> counts;
    for (Record const& record : records)
        ++counts[record.country];
    auto const most = std::max_element(counts.begin(), counts.end(), [](auto const& left, auto const& right) {
        return left.second < right.second;
    });
    return most->first + " (" + DString(most->second) + ")";
}

void printFigure(char const* label, DString const& value) {
    std::cout << "  " << DString(label).leftJustify(20, '.') << ' ' << value << '\n';
}

void printSummary(Contents const& contents) {
    DTrace const trace("printSummary", __LINE__);
    printHeading("Summary");
    printFigure("Lines ", contents.lines);
    printFigure("Words ", contents.words);
    if (contents.longestLineNumber != 0)
        printFigure("Longest line ", "number " + DString(contents.longestLineNumber) + " of " +
                                         DString(contents.longestLine.length()) + " bytes");
    printFigure("Records ", contents.records.size());
    printFigure("Refused records ", contents.refusedRecords);
    if (!contents.records.empty()) printFigure("Commonest country ", mostFrequentCountry(contents.records));
    std::cout << "\nReported on " << DDate::today().asString(DDate::fourDigitYear) << " at " << DTime::now()
              << '\n';
}

void report(Contents const& contents) {
    if (!contents.records.empty()) {
        printRecords(contents.records);
        printLongestName(contents.records);
    }
    printSummary(contents);
}

/// Tells what to do about the line after those that were read, which has bytes that are no character.
void tellOfEncoding(char const* fileName, unsigned int linesRead) {
    char const* const encoding = nl_langinfo(CODESET);
    std::cerr << "demo: line " << linesRead + 1 << " of " << fileName << " is not in " << encoding << ".\n"
              << "Convert the file, and take what comes out:\n"
              << "   iconv -f ENCODING -t " << encoding << ' ' << fileName << " >converted.txt\n"
              << "ENCODING is that of the file, such as ISO-8859-1, SHIFT_JIS or GB18030.\n";
}

} // namespace

int main(int argumentCount, char** arguments) {
    // Before the first string is made: the locale decides what a character is.
    if (std::setlocale(LC_ALL, "") == nullptr)
        std::cerr
            << "demo: the locale of the environment is not installed, so bytes are taken for characters\n";
    if (argumentCount == 2 && DString(arguments[1]) == "--help") {
        std::cout << help;
        return EXIT_SUCCESS;
    }
    if (argumentCount != 2 && argumentCount != 3) {
        std::cerr << "Usage: demo FILE [PATTERN]\nTry 'demo --help'.\n";
        return 2;
    }
    static ReportBehindOutput reports;
    DException::setTraceFunction(reports);

    Contents contents;
    try {
        DTrace const trace("main", __LINE__);
        readFile(arguments[1], argumentCount == 3 ? arguments[2] : "*", contents);
        report(contents);
        return 0;
    } catch (DException const& failure) { // reported when it was thrown
        std::cout << "\nStopped. Lines read: " << contents.lines << '\n' << std::flush;
        if (failure.errorId() == notInEncoding) tellOfEncoding(arguments[1], contents.lines);
        return 2;
    }
}
