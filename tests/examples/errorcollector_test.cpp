// What the program that collects reports prints of them.
#include "tests/support/program_run.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <cstring>
#include <regex>

namespace {

ProgramRun runCollector(std::vector<std::string> const& arguments) {
    return runProgram(KELCL_TEST_EXAMPLES_DIR "/errorcollector", arguments);
}

/// The reports without the folder of the source and the number of its line.
std::string withoutPlace(std::string const& text) {
    std::string const named = std::regex_replace(text, std::regex("file: [^\n]*/"), "file: ");
    return std::regex_replace(named, std::regex("line: [1-9][0-9]*"), "line: #");
}

} // namespace

TEST(ErrorCollector, FindsNothingInSettingsThatAreRight) {
    ProgramRun const run = runCollector({makeFile("# what is set\n"
                                                  "\n"
                                                  "port = 65535\n"
                                                  "  since=1752-09-02\n"
                                                  "key = 0123cdEF\n"
                                                  "title = a = b\n"
                                                  "title =")});
    EXPECT_EQ(run.output, "Errors: 0\n");
    EXPECT_EQ(run.errors, "");
    EXPECT_EQ(run.status, 0);
}

TEST(ErrorCollector, CollectsWhatIsWrongAndSumsItUp) {
    ProgramRun const run = runCollector({makeFile("port = 65536\n"
                                                  "port = 8o\n"
                                                  "title = right\n"
                                                  "since = 1752-09-03\n"
                                                  "since = 2024-2-29\n"
                                                  "key = 123\n"
                                                  "colour = red\n"
                                                  "no setting\n")});
    EXPECT_EQ(run.output, "line 1: '65536' is no port\n"
                          "line 2: '8o' is no port\n"
                          "line 4: '1752-09-03' is no date\n"
                          "line 5: '2024-2-29' is no date\n"
                          "line 6: '123' is no key\n"
                          "line 7: there is no setting 'colour'\n"
                          "line 8: there is no =\n"
                          "Errors: 7\n"
                          "  DInvalidParameter: 7\n");
    EXPECT_EQ(run.errors, "") << "nothing but the collector gets the reports";
    EXPECT_EQ(run.status, 1);
}

TEST(ErrorCollector, CollectsWhatTheLibraryReportsByItselfToo) {
    std::string const codeset = localeCodeset();
    bool const isText = codeset == "ISO-8859-1" || codeset == "SHIFT_JIS"; // the byte C3 is a character
    ProgramRun const run = runCollector({makeFile("port = 0\ntitle = \xC3(\n")});
    EXPECT_EQ(run.output,
              isText ? "line 1: '0' is no port\n"
                       "Errors: 1\n"
                       "  DInvalidParameter: 1\n"
                     : "line 1: '0' is no port\n"
                       "line 2: The text holds bytes that are no character of the locale's encoding.\n"
                       "Errors: 2\n"
                       "  DInvalidParameter: 1\n"
                       "  DInvalidRequest: 1\n");
    EXPECT_EQ(run.errors, "");
    EXPECT_EQ(run.status, 1);
}

TEST(ErrorCollector, PrintsTheReportsInFullOnRequest) {
    ProgramRun const run = runCollector({"--full", makeFile("key = xyz\n")});
    EXPECT_EQ(withoutPlace(run.output), "line 1: 'xyz' is no key\n"
                                        "    DInvalidParameter exception thrown.\n"
                                        "       function: checkSetting\n"
                                        "       file: errorcollector.cpp\n"
                                        "       line: #\n"
                                        "       Error Id is unavailable.\n"
                                        "       Error Code group is Kel Class Library\n"
                                        "       Exception text is:\n"
                                        "          'xyz' is no key\n"
                                        "Errors: 1\n"
                                        "  DInvalidParameter: 1\n");
    EXPECT_EQ(run.status, 1);
}

TEST(ErrorCollector, FailsOnAFileThatCannotBeRead) {
    ProgramRun const run = runCollector({"nothing-here"});
    EXPECT_EQ(run.output, "");
    EXPECT_EQ(run.errors, "errorcollector: nothing-here:" + std::string(std::strerror(ENOENT)) + "\n");
    EXPECT_EQ(run.status, 2);
    EXPECT_EQ(runCollector({"."}).errors, "errorcollector: .:" + std::string(std::strerror(EISDIR)) + "\n");
}

TEST(ErrorCollector, RefusesACommandLineThatItDoesNotUnderstand) {
    std::vector<std::vector<std::string>> const commandLines{{}, {"--full"}, {"--brief"}, {"a", "b"}};
    for (std::vector<std::string> const& arguments : commandLines) {
        ProgramRun const run = runCollector(arguments);
        EXPECT_EQ(run.output, "");
        EXPECT_EQ(run.errors, "errorcollector: one file is wanted. Try 'errorcollector --help'.\n");
        EXPECT_EQ(run.status, 2);
    }
}
