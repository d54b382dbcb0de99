// Some calls of the host program, and the lines that they trace. No tests are here.
#ifndef KELCL_TESTS_TRACE_TRACE_CALLS_H
#define KELCL_TESTS_TRACE_TRACE_CALLS_H

#include "tests/trace/trace_support.h"

#include <clocale>
#include <fstream>
#include <sstream>
#include <string>
#include <string_view>

#include <gtest/gtest.h>

namespace tracing {

inline std::string digits(unsigned long number, std::size_t width) {
    std::string const all = std::string(width, '0') + std::to_string(number);
    return all.substr(all.size() - width);
}

/// What stands in front of every line with the number `sequence` of the run.
inline std::string prefix(ProgramRun const& run, unsigned long sequence) {
    return digits(sequence, 8) + ' ' + digits(static_cast<unsigned long>(run.process), 6) + ":01 ";
}

/// Some calls with lines between them; without line numbers or prefix where tracing is off.
inline std::vector<std::string> const someCalls = {"enter:12:f", "write:text", "enter:30:g", "leave",
                                                   "leave"};

inline std::string linesOfSomeCalls(ProgramRun const& run) {
    return prefix(run, 0) + "+f(12)\n" + prefix(run, 1) + "  >text\n" + prefix(run, 2) + "  +g(30)\n" +
           prefix(run, 3) + "  -g\n" + prefix(run, 4) + "-f\n";
}

inline std::string contentsOf(char const* file) {
    std::ifstream in(file, std::ios::binary);
    std::ostringstream text;
    text << in.rdbuf();
    return text.str();
}

inline bool isTurkishWithTheSwitchOn() {
    return std::string_view(std::setlocale(LC_ALL, nullptr)) == "tr_TR.UTF-8" && DString::fgI18NState == 1;
}

} // namespace tracing

#endif
