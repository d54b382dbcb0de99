// Runs a program as a child process and gives what it printed; with small makers and readers of texts. What
// is expected of a program is in the tests.
#ifndef KELCL_TESTS_SUPPORT_PROGRAM_RUN_H
#define KELCL_TESTS_SUPPORT_PROGRAM_RUN_H

#include <initializer_list>
#include <string>
#include <sys/types.h>
#include <vector>

struct ProgramRun {
    int status;
    std::string output; ///< standard output
    std::string errors; ///< standard error
    pid_t process = 0;
};

/// Runs `program` with `input` as its standard input. The English catalog of the build tree is found along
/// NLSPATH, unless the test has set NLSPATH itself.
ProgramRun runProgram(std::string const& program, std::vector<std::string> const& arguments,
                      std::string const& input = "");

/// The same with both streams in one, as on a terminal; `errors` is empty.
ProgramRun runProgramOnTerminal(std::string const& program, std::vector<std::string> const& arguments);

/// Writes a file into the test's scratch folder and returns its name.
std::string makeFile(std::string const& contents, std::string const& name = "input.txt");

/// The bytes of a file.
std::string readFile(std::string const& name);

/// Converts UTF-8 to the locale's encoding, and any text between two encodings; fails the test on text that
/// does not convert.
std::string localeText(std::string const& utf8);
std::string converted(std::string const& text, char const* from, char const* to);

/// The codeset of the locale.
char const* localeCodeset();

std::vector<std::string> linesOf(std::string const& text);

/// Sets variables of the environment for as long as it lives.
class Environment {
public:
    struct Variable {
        std::string name;
        std::string value;
    };
    explicit Environment(std::vector<Variable> const& variables);
    Environment(std::initializer_list<Variable> variables) : Environment(std::vector<Variable>(variables)) {}
    ~Environment();
    Environment(Environment const&) = delete;
    Environment& operator=(Environment const&) = delete;

private:
    std::vector<std::string> names_;
};

#endif
