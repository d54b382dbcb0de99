// Runs the demo and puts what it printed into a form that does not depend on the day or on where the sources
// are. What is expected of the demo is in the tests.
#ifndef KELCL_TESTS_EXAMPLES_DEMO_RUN_H
#define KELCL_TESTS_EXAMPLES_DEMO_RUN_H

#include "tests/support/program_run.h"

/// Runs the demo with `arguments`. In its output the line "Reported on …" ends after these two words; in its
/// reports a source file stands without its folder, and "line: #" for its line.
ProgramRun runDemo(std::vector<std::string> const& arguments);

/// The same with both streams in one, as on a terminal; `errors` is empty.
ProgramRun runDemoOnTerminal(std::vector<std::string> const& arguments);

/// The line that runDemo shortens, whole.
std::string reportedLine(std::string const& fileName);

/// A file of the examples' data, and its bytes.
std::string dataFile(std::string const& name);
std::string readData(std::string const& name);

#endif
