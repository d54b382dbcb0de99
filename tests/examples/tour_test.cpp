// The tour that ./dev demo shows: one screen, aligned, with colours on a terminal only.
#include "tests/support/program_run.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <cstdlib>
#include <cwchar>
#include <fcntl.h>
#include <poll.h>
#include <regex>
#include <sys/wait.h>
#include <unistd.h>

namespace {

std::string const tour = KELCL_TEST_EXAMPLES_DIR "/tour";
std::string const journal = KELCL_TEST_DATA_DIR "/journal.txt";

/// The catalogs of the build tree, in all languages.
Environment catalogs() {
    return Environment{
        {"NLSPATH", KELCL_TEST_CATALOG_DIR "/%l/LC_MESSAGES/%N:" KELCL_TEST_CATALOG_DIR "/%N"}};
}

/// The columns of a text in UTF-8, which the locale of these tests is.
int columnsOf(std::string const& text) {
    std::array<wchar_t, 200> wide{};
    std::size_t const characters = std::mbstowcs(wide.data(), text.c_str(), wide.size());
    return wcswidth(wide.data(), characters);
}

/// What the tour writes to a terminal with so many columns, without the terminal's carriage returns.
std::string outputOnTerminal() {
    int const master = posix_openpt(O_RDWR | O_NOCTTY);
    EXPECT_EQ(grantpt(master), 0);
    EXPECT_EQ(unlockpt(master), 0);
    pid_t const child = fork();
    if (child == 0) {
        int const terminal = open(ptsname(master), O_RDWR | O_NOCTTY);
        dup2(terminal, STDOUT_FILENO);
        execl(tour.c_str(), tour.c_str(), journal.c_str(), nullptr);
        _exit(127);
    }
    std::string output;
    std::array<char, 4096> bytes{};
    int status = 0;
    bool hasEnded = false;
    fcntl(master, F_SETFL, O_NONBLOCK); // the last owner's end is an error here, which may come too early
    while (true) {
        pollfd readable{master, POLLIN, 0};
        poll(&readable, 1, 10);
        ssize_t const count = read(master, bytes.data(), bytes.size());
        if (count > 0)
            output.append(bytes.data(), static_cast<std::size_t>(count));
        else if (hasEnded)
            break;
        else
            hasEnded = waitpid(child, &status, WNOHANG) == child;
    }
    close(master);
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0);
    return std::regex_replace(output, std::regex("\r"), "");
}

} // namespace

TEST(Tour, ShowsItsScenes) {
    Environment const environment = catalogs();
    ProgramRun const run = runProgram(tour, {journal});
    EXPECT_EQ(run.output, readFile(KELCL_TEST_EXPECTED_DIR "/tour.txt"));
    EXPECT_EQ(run.errors, "");
    EXPECT_EQ(run.status, 0);
}

TEST(Tour, FitsAScreenOf80ColumnsAnd39LinesAndALineOfTheBuildsProgress) {
    Environment const environment = catalogs();
    std::vector<std::string> const lines = linesOf(runProgram(tour, {journal}).output);
    EXPECT_LE(lines.size(), 39U);
    EXPECT_GT(lines.size(), 30U);
    for (std::string const& line : lines) {
        EXPECT_GE(columnsOf(line), 0) << line;
        EXPECT_LE(columnsOf(line), 80) << line;
    }
}

TEST(Tour, HasColoursOnATerminalAndTheSameTextWithoutThem) {
    Environment const environment = catalogs();
    setenv("TERM", "xterm", 1);
    std::string const output = outputOnTerminal();
    EXPECT_THAT(output, testing::StartsWith("\033[1;36mkelcl in a minute\033[0m\n"));
    EXPECT_EQ(std::regex_replace(output, std::regex("\033\\[[0-9;]*m"), ""),
              readFile(KELCL_TEST_EXPECTED_DIR "/tour.txt"));
}

TEST(Tour, HasNoColoursForWhoDoesNotWantThem) {
    Environment const environment = catalogs();
    setenv("TERM", "dumb", 1);
    EXPECT_EQ(outputOnTerminal(), readFile(KELCL_TEST_EXPECTED_DIR "/tour.txt"));
    setenv("TERM", "xterm", 1);
    setenv("NO_COLOR", "1", 1);
    EXPECT_EQ(outputOnTerminal(), readFile(KELCL_TEST_EXPECTED_DIR "/tour.txt"));
    unsetenv("NO_COLOR");
}

TEST(Tour, TellsOfALocaleThatIsMissing) {
    std::string const locales = std::getenv("LOCPATH");
    setenv("LOCPATH", "./no-locales", 1);
    ProgramRun const run = runProgram(tour, {journal});
    setenv("LOCPATH", locales.c_str(), 1);
    EXPECT_EQ(run.output, "");
    EXPECT_EQ(run.errors, "tour: a locale is missing: start the tour by ./dev demo, which makes it\n");
    EXPECT_EQ(run.status, 2);
}
