// What the tests of DTrace share: the host program that they run.
#ifndef KELCL_TESTS_TRACE_TRACE_SUPPORT_H
#define KELCL_TESTS_TRACE_TRACE_SUPPORT_H

#include "tests/support/program_run.h"

#include <sys/stat.h>

using Variables = std::vector<Environment::Variable>;

/// Runs the host program with `variables` added to the environment and `commands` as its arguments.
inline ProgramRun runHost(Variables const& variables, std::vector<std::string> const& commands) {
    Environment const environment(variables);
    return runProgram(KELCL_TEST_TRACE_HOST, commands);
}

inline bool exists(char const* file) {
    struct stat status {};
    return ::stat(file, &status) == 0;
}

#endif
