// Runs the trace tests' host program as a child and gives what it has written. What it should have written is
// not known here.
#ifndef KELCL_TESTS_TRACE_HOST_RUN_H
#define KELCL_TESTS_TRACE_HOST_RUN_H

#include <string>
#include <utility>
#include <vector>

#include <sys/types.h>

struct HostRun {
    std::string output;
    std::string errors;
    pid_t process = 0;
    bool succeeded = false;
};

using Variables = std::vector<std::pair<std::string, std::string>>;

/// Runs the program with `variables` added to this process's environment and `commands` as its arguments.
HostRun runHost(Variables const& variables, std::vector<std::string> const& commands);

#endif
