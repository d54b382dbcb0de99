// What the library does, on one screen: characters in three encodings, records, errors in five languages, the
// calendar of 1752, numbers of any size. Each scene is one function, made of what an installation has.
//
// It needs locales, catalogs and a text of this source tree; ./dev demo makes them and starts it.
#include <kelcl/kelcl.h>

#include <clocale>
#include <cstdint>
#include <cstdlib>
#include <cwchar>
#include <exception>
#include <fstream>
#include <iostream>
#include <string>
#include <unistd.h>
#include <vector>

namespace {

// Printing --------------------------------------------------------------------------------------------

/// Whether standard output is a terminal whose user wants colours.
bool isColourful() {
    char const* const terminal = std::getenv("TERM");
    return isatty(STDOUT_FILENO) == 1 && std::getenv("NO_COLOR") == nullptr && DString(terminal) != "dumb";
}

DString inColour(char const* code, DString const& text) {
    return isColourful() ? DString("\033[") + code + 'm' + text + "\033[0m" : text;
}
DString title(DString const& text) { return inColour("1;36", text); }
DString good(DString const& text) { return inColour("32", text); }
DString bad(DString const& text) { return inColour("31", text); }

void printScene(char const* number, DString const& text) {
    std::cout << '\n' << title(DString(number) + "  " + text) << '\n';
}

DString inColumns(DString const& text, unsigned int width) {
    return kelcl::leftJustifiedInColumns(text, width);
}

/// @throws DInvalidRequest when there is no such locale.
void enterLocale(char const* name) {
    if (std::setlocale(LC_ALL, name) == nullptr)
        throw DInvalidRequest("a locale is missing: start the tour by ./dev demo, which makes it");
}

// Characters ------------------------------------------------------------------------------------------

/// The characters in the encoding of the locale.
DString encoded(std::wstring const& characters) {
    char bytes[100] = {};
    std::wcstombs(bytes, characters.c_str(), sizeof bytes - 1);
    return bytes;
}

/// The characters of a text, with U+FFFD for each byte that belongs to none.
std::wstring decoded(DString const& text) {
    std::wstring characters;
    for (std::string_view const character : kelcl::characters(text)) {
        wchar_t wide = 0;
        std::mbstate_t state{};
        bool const isCharacter =
            std::mbrtowc(&wide, character.data(), character.size(), &state) == character.size();
        characters += isCharacter ? wide : L'\uFFFD';
    }
    return characters;
}

/// The bytes in hexadecimal, with blanks between.
DString hexadecimal(DString const& text) {
    DString digits;
    for (char const byte : text)
        digits += DString(byte).c2x() + ' ';
    return digits.strip();
}

void printCut(char const* locale, char const* encoding, std::wstring const& name) {
    constexpr unsigned int width = 7;
    enterLocale(locale);
    DString field = encoded(name);
    DString const cut(field.data(), width); // as a program cuts that knows of no characters
    field.leftJustify(width, '.');
    std::wstring const cutCharacters = decoded(cut);
    std::wstring const fieldCharacters = decoded(field);
    enterLocale("en_US.UTF-8"); // that of the screen
    std::cout << "   " << inColumns(encoding, 9) << bad(inColumns(encoded(cutCharacters), 9))
              << hexadecimal(cut) << "    " << good(inColumns(encoded(fieldCharacters), 9))
              << hexadecimal(field) << '\n';
}

void showCharacters() {
    std::wstring const name = L"東京メトロ";
    printScene("1", "The name " + encoded(name) + " in a field of 7 bytes");
    std::cout << "            cut by bytes                    cut by DString\n";
    printCut("en_US.UTF-8", "UTF-8", name);
    printCut("ja_JP.EUC-JP", "EUC-JP", name);
    printCut("zh_CN.GB18030", "GB18030", name);
}

// Records ---------------------------------------------------------------------------------------------

/// The date of a text such as 1927-12-30.
DDate dateFrom(DString const& text) {
    return DDate(DCnrDate{kelcl::toNumber<std::uint8_t>(text.subString(9, 2)).value_or(1),
                          kelcl::toNumber<std::uint8_t>(text.subString(6, 2)).value_or(1),
                          kelcl::toNumber<std::uint16_t>(text.subString(1, 4)).value_or(1)});
}

/// Prints a record such as 東京;JP;1927-12-30.
void printRecord(DString const& record) {
    auto const pieces = kelcl::split(record, ';');
    std::vector<DString> const fields(pieces.begin(), pieces.end());
    std::cout << "   " << inColumns(fields[0], 17) << fields[1] << "   "
              << dateFrom(fields[2]).asString("%d %B %Y, a %A") << '\n';
}

/// @throws DAccessError when the file cannot be read.
void showRecords(char const* fileName) {
    std::ifstream file(fileName);
    if (!file) throw DAccessError(DCLibErrorInfo(fileName));
    unsigned int lines = 0;
    unsigned int words = 0;
    std::vector<DString> found;
    for (DString const& line : kelcl::lines(file)) {
        ++lines;
        words += line.numWords();
        if (line.isLike("*;*-15")) found.push_back(line);
    }
    printScene("2", DString(lines) + " lines of " + DString(words) +
                        " words, and the records among them like *;*-15");
    for (DString const& record : found)
        printRecord(record);
}

// Errors ----------------------------------------------------------------------------------------------

/// Takes the reports of exceptions, which go to standard error otherwise.
class Reports final : public DException::TraceFn {
public:
    void write(char const* text) override {
        for (std::string_view const line : kelcl::split(text, '\n'))
            lines.emplace_back(line);
    }
    std::vector<DString> lines;
};

/// The text of an error in the language of LANG.
DString textOfError(char const* language) {
    setenv("LANG", language, 1);
    try {
        DString const text("kelcl");
        return text[9];
    } catch (DInvalidRequest const& error) { // reported when it was thrown
        return error.text(0);
    }
}

void showErrors() {
    static Reports reports;
    DException::setTraceFunction(reports);
    textOfError("en");
    std::vector<DString> report = reports.lines;
    auto line = report.begin();
    for (char const* const language : {"de", "es", "fr", "ja"}) { // to the right of the report
        ++line;
        *line = inColumns(*line, 26) + language + "  " + good(textOfError(language));
    }
    printScene("3", "The ninth byte of \"kelcl\": an error in five languages, and its report");
    for (DString const& text : report)
        std::cout << "   " << text << '\n';
}

// Dates and numbers -----------------------------------------------------------------------------------

/// The week that begins on a Monday, without the days of other months.
DString weekFrom(DDate const& monday, DDate::Month month) {
    DString week;
    for (DDate day = monday; day < monday + 7; day = day + 1)
        week += (day.monthOfYear() == month ? DString(day.dayOfMonth()) : DString()).rightJustify(2) + ' ';
    return week;
}

void showDates() {
    DDate const last(DDate::September, 2, 1752);
    DDate monday = last - last.dayOfWeek();
    DDate const next = last + 1;
    DString const facts[] = {
        "The day after " + DString(last.dayOfMonth()) + last.asString(" %B was ") +
            next.asString("%A the %dth."),
        "The month had " + DString(DDate::daysInMonth(DDate::September, 1752)) + " days, the year " +
            DString(DDate::daysInYear(1752)) + '.',
        DDate::isValid(DDate::September, 10, 1752) ? "" : "There was no 10 September.",
    };
    printScene("4", "September 1752, when Great Britain changed its calendar");
    std::cout << "   Mo Tu We Th Fr Sa Su\n";
    for (DString const& fact : facts) {
        std::cout << "   " << good(weekFrom(monday, DDate::September)) << "   " << fact << '\n';
        monday = monday + 7;
    }
}

void showNumbers() {
    DString const number = "314159265358979323846264338327950288419716939937510582097494";
    DString const digits = DString(number).d2c().c2x();
    bool const isSame = DString(digits).x2c().c2d() == number;
    printScene("5", "A number of " + DString(number.length()) + " digits, to hexadecimal and back");
    std::cout << "   " << number << "\n   " << digits << "   "
              << (isSame ? good("and back: the same") : bad("and back: another")) << '\n';
}

} // namespace

int main(int argumentCount, char** arguments) {
    if (argumentCount != 2) {
        std::cerr << "Usage: tour FILE, where FILE is examples/data/journal.txt; ./dev demo starts it.\n";
        return 2;
    }
    try {
        enterLocale("en_US.UTF-8"); // before the first string is made: the locale decides what a character is
        std::cout << title("kelcl in a minute") << '\n';
        showCharacters();
        showRecords(arguments[1]);
        showErrors();
        showDates();
        showNumbers();
        std::cout << '\n'
                  << title("Read on")
                  << "   docs/guide/    the guide          ./dev docs       the reference\n"
                  << "          examples/      programs to copy   ./dev demo FILE  a report on yours\n";
        return 0;
    } catch (DException const& failure) { // is no std::exception
        std::cerr << "tour: " << DString(failure.text(0)) << '\n';
    } catch (std::exception const& failure) {
        std::cerr << "tour: " << failure.what() << '\n';
    }
    return 2;
}
