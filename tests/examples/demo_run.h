// Runs the demo as a child process and puts what it printed into a form that does not depend on the day or on
// where the sources are; and small readers of texts. What is expected of the demo is in the tests.
#ifndef KELCL_TESTS_EXAMPLES_DEMO_RUN_H
#define KELCL_TESTS_EXAMPLES_DEMO_RUN_H

#include <initializer_list>
#include <string>
#include <vector>

struct DemoRun {
    int status;
    std::string output; ///< standard output; the line "Reported on …" ends behind these two words
    std::string errors; ///< standard error; a source file without its folder, "line: #" for its line
};

/// Runs the demo with `arguments`. The English catalog of the build tree is found along NLSPATH, unless the
/// test has set NLSPATH itself.
DemoRun runDemo(std::vector<std::string> const& arguments);

/// The same with both streams in one, as on a terminal; `errors` is empty.
DemoRun runDemoOnTerminal(std::vector<std::string> const& arguments);

/// The line that runDemo shortens, whole.
std::string reportedLine(std::string const& fileName);

/// Writes a file into the test's scratch folder and returns its name.
std::string makeFile(std::string const& contents);

/// The bytes of a file of the examples' data.
std::string readData(std::string const& name);
std::string readFile(std::string const& name);
std::string dataFile(std::string const& name);

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
    Environment(std::initializer_list<Variable> variables);
    ~Environment();
    Environment(Environment const&) = delete;
    Environment& operator=(Environment const&) = delete;

private:
    std::vector<std::string> names_;
};

#endif
