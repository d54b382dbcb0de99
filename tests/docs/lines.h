// Lines of pages and headers, as what reads them shares it.
#ifndef KELCL_TESTS_DOCS_LINES_H
#define KELCL_TESTS_DOCS_LINES_H

#include <cstddef>
#include <fstream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

using Lines = std::vector<std::string>;

inline bool startsWith(std::string_view text, std::string_view start) {
    return text.substr(0, start.size()) == start;
}

inline bool endsWith(std::string_view text, std::string_view end) {
    return text.size() >= end.size() && text.substr(text.size() - end.size()) == end;
}

[[noreturn]] inline void fail(std::string const& file, std::size_t line, std::string const& message) {
    throw std::runtime_error(file + ":" + std::to_string(line) + ": " + message);
}

inline Lines readLines(std::string const& path) {
    std::ifstream in(path);
    if (!in) throw std::runtime_error(path + ": cannot be read");
    Lines lines;
    for (std::string line; std::getline(in, line);)
        lines.push_back(line);
    return lines;
}

#endif
