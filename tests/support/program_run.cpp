// The child process, its streams and its environment.
#include "tests/support/program_run.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdlib>
#include <fcntl.h>
#include <fstream>
#include <iconv.h>
#include <langinfo.h>
#include <spawn.h>
#include <sstream>
#include <sys/wait.h>
#include <unistd.h>

namespace {

/// Runs the program with its streams in the files output.txt and errors.txt, or both in the first. The status
/// is -1 when it did not exit by itself. No shell is between: some drop variables whose name has a blank.
ProgramRun run(std::string const& program, std::vector<std::string> const& arguments, bool isOnTerminal) {
    setenv("NLSPATH", KELCL_TEST_CATALOG_DIR "/%N", 0);

    std::vector<std::string> words{program};
    words.insert(words.end(), arguments.begin(), arguments.end());
    std::vector<char*> vector;
    for (std::string& word : words)
        vector.push_back(word.data());
    vector.push_back(nullptr);

    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    int const flags = O_WRONLY | O_CREAT | O_TRUNC;
    posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "stdin.txt", O_RDONLY, 0);
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "output.txt", flags, 0666);
    if (isOnTerminal)
        posix_spawn_file_actions_adddup2(&actions, STDOUT_FILENO, STDERR_FILENO);
    else
        posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, "errors.txt", flags, 0666);
    pid_t child = 0;
    int const failure = posix_spawn(&child, vector.front(), &actions, nullptr, vector.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    EXPECT_EQ(failure, 0) << words.front();
    int status = 0;
    if (failure != 0 || waitpid(child, &status, 0) != child) return {-1, "", "", 0};
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, readFile("output.txt"),
            isOnTerminal ? "" : readFile("errors.txt"), child};
}

} // namespace

ProgramRun runProgram(std::string const& program, std::vector<std::string> const& arguments,
                      std::string const& input) {
    makeFile(input, "stdin.txt");
    return run(program, arguments, false);
}

ProgramRun runProgramOnTerminal(std::string const& program, std::vector<std::string> const& arguments) {
    makeFile("", "stdin.txt");
    return run(program, arguments, true);
}

std::string makeFile(std::string const& contents, std::string const& name) {
    std::ofstream(name, std::ios::binary) << contents;
    return name;
}

std::string readFile(std::string const& name) {
    std::ifstream in(name, std::ios::binary);
    EXPECT_TRUE(in.is_open()) << name;
    std::ostringstream text;
    text << in.rdbuf();
    return text.str();
}

char const* localeCodeset() { return nl_langinfo(CODESET); }

std::string localeText(std::string const& utf8) { return converted(utf8, "UTF-8", localeCodeset()); }

std::string converted(std::string const& text, char const* from, char const* to) {
    iconv_t const converter = iconv_open(to, from);
    if (converter == reinterpret_cast<iconv_t>(-1)) {
        ADD_FAILURE() << "no conversion from " << from << " to " << to;
        return {};
    }
    std::string source = text;
    std::string result(4 * text.size() + 16, '\0');
    char* in = source.data();
    char* out = result.data();
    std::size_t inLeft = source.size();
    std::size_t outLeft = result.size();
    EXPECT_EQ(iconv(converter, &in, &inLeft, &out, &outLeft), 0U) << "byte " << source.size() - inLeft + 1;
    iconv_close(converter);
    result.resize(result.size() - outLeft);
    return result;
}

std::vector<std::string> linesOf(std::string const& text) {
    std::vector<std::string> lines;
    std::istringstream in(text);
    for (std::string line; std::getline(in, line);)
        lines.push_back(line);
    return lines;
}

Environment::Environment(std::vector<Variable> const& variables) {
    for (Variable const& variable : variables) {
        setenv(variable.name.c_str(), variable.value.c_str(), 1);
        names_.push_back(variable.name);
    }
}

Environment::~Environment() {
    for (std::string const& name : names_)
        unsetenv(name.c_str());
}
