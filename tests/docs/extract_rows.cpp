// Turns the rows of the cheat-sheet's tables into one source of tests. What a row is, tests/docs/README.md
// tells; what is done with it, rows.h.
#include "tests/docs/lines.h"

#include <cstdlib>
#include <fstream>
#include <iostream>
#include <sstream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace {

/// What stands in a cell between backquotes.
Lines codeOf(std::string_view cell) {
    Lines code;
    for (std::size_t open = cell.find('`'); open != std::string_view::npos; open = cell.find('`', open)) {
        std::size_t const close = cell.find('`', open + 1);
        code.emplace_back(cell.substr(open + 1, close - open - 1));
        open = close + 1;
    }
    return code;
}

/// The cells of a line `| cell | cell |`, each with its blanks.
Lines cellsOf(std::string_view line) {
    Lines cells;
    bool isCode = false;
    for (char const c : line.substr(1)) {
        if (cells.empty()) cells.emplace_back();
        if (c == '`') isCode = !isCode;
        if (c == '|' && !isCode)
            cells.emplace_back();
        else
            cells.back() += c;
    }
    cells.pop_back(); // what follows the last bar
    return cells;
}

bool contains(std::string_view text, std::string_view part) {
    return text.find(part) != std::string_view::npos;
}

/// Code that the other library's cell is and nothing else. An ellipsis stands for what has no room in a
/// table.
bool isOneCall(std::string_view cell) {
    return codeOf(cell).size() == 1 && cell == " `" + codeOf(cell).front() + "` " && !contains(cell, "…");
}

class Writer {
public:
    explicit Writer(std::string page) : page_(std::move(page)) {}

    void add(Lines const& cells, std::size_t line, bool isStandard) {
        Lines const ours = codeOf(cells.at(1));
        if (ours.empty()) fail(page_, line, "the row has no code of ours");
        std::string const name = "Line" + std::to_string(line);
        bool const isCompared = isStandard && isOneCall(cells[0]);
        tests_ << "\nTEST(CheatSheet, TheRowOf" << name << (isCompared ? "DoesTheSame" : "Runs") << ") {\n";
        if (isCompared) addTheirs(codeOf(cells[0]).front(), line);
        for (std::string const& code : ours)
            addOurs(code, line, isCompared ? "expectSame<TheirRow, OurRow" : "expectRuns<OurRow");
        for (std::size_t i = 2; i < cells.size(); ++i)
            for (std::string const& code : codeOf(cells[i]))
                addOurs(code, line, "expectRuns<OurRow");
        tests_ << "}\n";
        number_ = 0;
        compared_ += isCompared;
        ++rows_;
    }

    std::string source() const {
        if (rows_ == 0 || compared_ == 0) throw std::runtime_error(page_ + ": there are no rows to compare");
        return "#include \"tests/docs/rows.h\"\n" + includes_ + tests_.str();
    }

private:
    void addTheirs(std::string const& code, std::size_t line) {
        bool const isPosition = contains(code, "find") && !contains(code, "npos");
        addCode(code, "TheirRow", isPosition ? "TheirPosition" : "Theirs", line);
    }

    void addOurs(std::string const& code, std::size_t line, std::string const& check) {
        if (startsWith(code, "<")) {
            std::string const include = "#include " + code + "\n";
            if (!contains(includes_, include)) includes_ += include;
            return;
        }
        addCode(code, "OurRow" + std::to_string(++number_), "Ours", line);
        tests_ << "    " << check << number_ << ">();\n";
    }

    /// A loop counts its rounds.
    void addCode(std::string const& code, std::string const& name, std::string const& base,
                 std::size_t line) {
        bool const isLoop = startsWith(code, "for ");
        tests_ << "    struct " << name << " : " << base << " {\n        using " << base << "::" << base
               << ";\n        decltype(auto) run() {\n#line " << line << " \"" << page_ << "\"\n"
               << (isLoop ? "rounds = 0; " + code + " ++rounds; return (rounds);" : "return (" + code + ");")
               << "\n        }\n    };\n";
    }

    std::string page_;
    std::ostringstream tests_;
    std::string includes_;
    unsigned number_ = 0;
    unsigned rows_ = 0;
    unsigned compared_ = 0;
};

void extract(std::string const& output, std::string const& page) {
    Lines const lines = readLines(page);
    Writer writer(page);
    Lines heading;
    for (std::size_t i = 0; i < lines.size(); ++i) {
        if (!startsWith(lines[i], "|"))
            heading.clear();
        else if (heading.empty())
            heading = cellsOf(lines[i]);
        else if (!startsWith(lines[i], "|---"))
            writer.add(cellsOf(lines[i]), i + 1, heading[0] == " std::string " || heading[0] == " from 0 ");
    }
    std::ofstream file(output);
    file << writer.source();
    if (!file.flush()) throw std::runtime_error(output + ": cannot be written");
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 3) {
        std::cerr << "usage: extract_rows OUTPUT.cpp PAGE.md\n";
        return EXIT_FAILURE;
    }
    try {
        extract(argv[1], argv[2]);
    } catch (std::exception const& problem) {
        std::cerr << problem.what() << '\n';
        return EXIT_FAILURE;
    }
    return EXIT_SUCCESS;
}
