// What the log filter prints, tells and returns.
#include "tests/support/program_run.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <regex>

namespace {

std::string const lines = "09:00 start\n"
                          "09:01 Error: disk full\n"
                          "09:02 retry\n"
                          "09:03 error again\n";

ProgramRun runFilter(std::vector<std::string> const& arguments, std::string const& input = "") {
    return runProgram(KELCL_TEST_EXAMPLES_DIR "/logfilter", arguments, input);
}

std::string const helpHint = " Try 'logfilter --help'.\n";

} // namespace

TEST(LogFilter, PrintsTheLinesOfStandardInputThatMatchAsAWhole) {
    EXPECT_EQ(runFilter({"*error*"}, lines).output, "09:03 error again\n");
    EXPECT_EQ(runFilter({"??:?? r*"}, lines).output, "09:02 retry\n");
    EXPECT_EQ(runFilter({"*error*"}, lines).status, 0);
}

TEST(LogFilter, ReturnsOneWhenNoLineMatches) {
    ProgramRun const run = runFilter({"error"}, lines);
    EXPECT_EQ(run.output + run.errors, "");
    EXPECT_EQ(run.status, 1);
}

TEST(LogFilter, IgnoresCaseInvertsAndCountsOnRequest) {
    EXPECT_EQ(runFilter({"-i", "*ERROR*"}, lines).output, "09:01 Error: disk full\n09:03 error again\n");
    EXPECT_EQ(runFilter({"-iv", "*ERROR*"}, lines).output, "09:00 start\n09:02 retry\n");
    EXPECT_EQ(runFilter({"-c", "*error*"}, lines).output, "1\n");
    EXPECT_EQ(runFilter({"-v", "-c", "*error*"}, lines).output, "3\n");
}

TEST(LogFilter, TakesSeveralPatternsAndPatternsThatLookLikeOptions) {
    EXPECT_EQ(runFilter({"-e", "*start", "-e", "*retry"}, lines).output, "09:00 start\n09:02 retry\n");
    EXPECT_EQ(runFilter({"--", "-i*"}, "-i is set\n").output, "-i is set\n");
}

TEST(LogFilter, NamesTheFileBeforeEachLineOfSeveral) {
    ProgramRun const run = runFilter({"*r*", makeFile("first\nsecond\n"), "-"}, "third");
    EXPECT_EQ(run.output, "input.txt:first\n-:third\n");
    EXPECT_EQ(run.status, 0);
}

TEST(LogFilter, GoesOnAfterAFileThatCannotBeRead) {
    ProgramRun const run = runFilter({"*", "nothing-here", ".", makeFile("one\n")});
    EXPECT_EQ(run.output, "input.txt:one\n");
    EXPECT_EQ(run.errors, std::string("logfilter: nothing-here:") + std::strerror(ENOENT) +
                              "\nlogfilter: .:" + std::strerror(EISDIR) + "\n");
    EXPECT_EQ(run.status, 2);
}

TEST(LogFilter, LinesMayHoldNulBytesAndBytesThatAreNoCharacters) {
    std::string const line("a\0b\xFF\n", 5);
    EXPECT_EQ(runFilter({"a*"}, line).output, line);
}

TEST(LogFilter, MatchesTextInTheEncodingOfTheLocale) {
    bool const isJapanese = std::strncmp(std::getenv("KELCL_TEST_LOCALE"), "ja", 2) == 0;
    std::string const word = isJapanese ? localeText("東京") : "Tokio";
    EXPECT_EQ(runFilter({"-i", "*" + word + "*"}, "in " + word + " today\n").output,
              "in " + word + " today\n");
}

TEST(LogFilter, RefusesACommandLineThatItDoesNotUnderstand) {
    EXPECT_EQ(runFilter({}).errors, "logfilter: there is no pattern." + helpHint);
    EXPECT_EQ(runFilter({"-e"}).errors, "logfilter: -e stands without a pattern." + helpHint);
    EXPECT_EQ(runFilter({"-ix", "a"}).errors, "logfilter: there is no option -x." + helpHint);
    ProgramRun const run = runFilter({"--count", "a"});
    EXPECT_EQ(run.errors, "logfilter: there is no option --count." + helpHint);
    EXPECT_EQ(run.output, "");
    EXPECT_EQ(run.status, 2);
}

TEST(LogFilter, TracesWhatItDoes) {
    Environment const environment{{"KORVA_TRACE", "noprefix"}, {"KORVA_TRACETO", "stderr"}};
    ProgramRun const run = runFilter({"*error*", "-", "nothing-here"}, lines);
    EXPECT_EQ(run.output, "-:09:03 error again\n");
    EXPECT_EQ(std::regex_replace(run.errors, std::regex("\\([1-9][0-9]*\\)"), "(#)"),
              "+filterAll(#)\n"
              "  +filter(#)\n"
              "    >file -\n"
              "    >1 of 4 lines\n"
              "  -filter\n"
              "  +filter(#)\n"
              "    >file nothing-here\n"
              "logfilter: nothing-here:" +
                  std::string(std::strerror(ENOENT)) + "\n  -filter\n-filterAll\n");
    EXPECT_EQ(run.status, 2);
}
