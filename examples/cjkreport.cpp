// Prints a table of texts in several languages, and what the longest of each takes: bytes, characters,
// columns on a terminal. It shows splitting into fields, characters, and columns in which Chinese and Latin
// letters line up.
//
//   cjkreport /var/lib/dpkg/info/tzdata.templates ja ko ru
#include <kelcl/kelcl.h>

#include <algorithm>
#include <clocale>
#include <cstddef>
#include <exception>
#include <fstream>
#include <iostream>
#include <iterator>
#include <vector>

namespace {

char const* const usage =
    "Usage: cjkreport FILE LANGUAGE...\n"
    "Prints the choices of the first question in FILE, of the form that Debian's packages have\n"
    "their questions in, in English and in LANGUAGEs. FILE is in the encoding of the locale.\n";

struct Column {
    DString heading;
    std::vector<DString> texts;
};

/// The column of "Choices: Africa, America" or "Choices-ja.UTF-8: アフリカ, アメリカ".
Column columnFrom(DString const& line, DString const& language) {
    auto const fields = kelcl::split(line.subString(line.indexOf(": ") + 2), ", ");
    return {language, {fields.begin(), fields.end()}};
}

/// @throws DAccessError when the file cannot be read, DInvalidParameter when a language is not in it.
std::vector<Column> columnsOf(char const* fileName, std::vector<DString> const& languages) {
    std::ifstream file(fileName);
    if (!file) throw DAccessError(DCLibErrorInfo(fileName)); // with the text for errno
    file.exceptions(std::ios::badbit);                       // reading fails with an exception, too
    std::vector<DString> choices;
    for (DString const& line : kelcl::lines(file)) {
        if (line.isEmpty() && !choices.empty()) break; // the end of the question
        if (line.isLike("Choices*")) choices.push_back(line);
    }
    std::vector<Column> columns;
    for (DString const& language : languages) {
        DString const pattern = language == "en" ? "Choices:*" : "Choices-" + language + ".*:*";
        auto const found = std::find_if(choices.begin(), choices.end(),
                                        [&](DString const& line) { return line.isLike(pattern); });
        if (found == choices.end())
            throw DInvalidParameter("the file has no choices in one of the languages");
        columns.push_back(columnFrom(*found, language));
    }
    return columns;
}

/// The text of a column that is the widest on a terminal.
DString const& widestOf(Column const& column) {
    return *std::max_element(column.texts.begin(), column.texts.end(),
                             [](DString const& left, DString const& right) {
                                 return kelcl::columns(left) < kelcl::columns(right);
                             });
}

void printRow(std::vector<Column> const& columns, std::size_t row) {
    DString line;
    for (Column const& column : columns) {
        DString const text = row == 0                     ? column.heading
                             : row <= column.texts.size() ? column.texts[row - 1]
                                                          : "";
        line += kelcl::leftJustifiedInColumns(text, kelcl::columns(widestOf(column)) + 2);
    }
    std::cout << line.strip(' ', DStringEnum::trailing) << '\n';
}

void printWidest(std::vector<Column> const& columns) {
    std::cout << "\nthe widest            bytes  characters  columns\n";
    for (Column const& column : columns) {
        DString const& text = widestOf(column);
        auto const characters = kelcl::characters(text);
        std::cout << kelcl::leftJustifiedInColumns(text, 20)
                  << kelcl::rightJustifiedInColumns(DString(text.length()), 7)
                  << kelcl::rightJustifiedInColumns(
                         DString(std::distance(characters.begin(), characters.end())), 12)
                  << kelcl::rightJustifiedInColumns(DString(kelcl::columns(text)), 9) << '\n';
    }
}

} // namespace

int main(int argumentCount, char** arguments) {
    std::setlocale(LC_ALL, ""); // before the first string is made: the locale decides what a character is
    if (argumentCount < 2) {
        std::cerr << usage;
        return 2;
    }
    try {
        std::vector<DString> languages(arguments + 2, arguments + argumentCount);
        languages.insert(languages.begin(), "en");
        std::vector<Column> const columns = columnsOf(arguments[1], languages);
        for (std::size_t row = 0; row <= columns.front().texts.size(); ++row)
            printRow(columns, row);
        printWidest(columns);
        return 0;
    } catch (DException const& failure) { // is no std::exception
        std::cerr << "cjkreport: " << DString(failure.text(0)) << '\n';
    } catch (std::exception const& failure) {
        std::cerr << "cjkreport: " << failure.what() << '\n';
    }
    return 2;
}
