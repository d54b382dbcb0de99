// What depends on the day, and on where the sources are, in the demo's output.
#include "tests/examples/demo_run.h"

#include <cstddef>
#include <regex>

namespace {

/// The texts are bytes of any encoding, but the expressions match only what is ASCII in all of them.
std::string withoutMoment(std::string const& output) {
    std::size_t const start = output.find("\nReported on ");
    if (start == std::string::npos) return output;
    std::size_t const end = output.find('\n', start + 1);
    return output.substr(0, start + 12) + output.substr(end);
}

std::string withoutPlace(std::string const& errors) {
    std::string const named = std::regex_replace(errors, std::regex("   file: [^\n]*/"), "   file: ");
    return std::regex_replace(named, std::regex("   line: [1-9][0-9]*"), "   line: #");
}

} // namespace

ProgramRun runDemo(std::vector<std::string> const& arguments) {
    ProgramRun const run = runProgram(KELCL_TEST_DEMO, arguments);
    return {run.status, withoutMoment(run.output), withoutPlace(run.errors), run.process};
}

ProgramRun runDemoOnTerminal(std::vector<std::string> const& arguments) {
    ProgramRun const run = runProgramOnTerminal(KELCL_TEST_DEMO, arguments);
    return {run.status, withoutPlace(withoutMoment(run.output)), "", run.process};
}

std::string reportedLine(std::string const& fileName) {
    std::vector<std::string> const lines = linesOf(runProgram(KELCL_TEST_DEMO, {fileName}).output);
    return lines.empty() ? "" : lines.back();
}

std::string dataFile(std::string const& name) { return KELCL_TEST_DATA_DIR "/" + name; }

std::string readData(std::string const& name) { return readFile(dataFile(name)); }
