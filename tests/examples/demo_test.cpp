// What the demo prints, reports and returns, on small files of ASCII. How it treats characters of several
// bytes is in demo_records_test.cpp; the texts that come with it are in demo_data_test.cpp.
#include "tests/examples/demo_run.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <langinfo.h>
#include <string>
#include <vector>

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;

std::string const prose = "The day and the year\n"
                          "\n"
                          "ten short words\n";

/// What strftime makes of a moment, in the locale.
std::string formatted(std::tm const& moment, std::string const& format) {
    char text[200];
    return {text, std::strftime(text, sizeof text, format.c_str(), &moment)};
}

std::string dateFormat() {
    std::string format = nl_langinfo(D_FMT);
    std::replace(format.begin(), format.end(), 'y', 'Y');
    return format;
}

struct Opening {
    std::string country;
    int year;
    int month;
    int day;
    std::string name;
};

/// The lines of the report; the weekday comes from the C library's calendar.
std::string reportOf(std::vector<Opening> const& openings) {
    std::string report = "\nRecords\n\n";
    std::size_t dayWidth = 0;
    std::vector<std::tm> dates;
    for (Opening const& opening : openings) {
        std::tm date{};
        date.tm_year = opening.year - 1900;
        date.tm_mon = opening.month - 1;
        date.tm_mday = opening.day;
        timegm(&date);
        dates.push_back(date);
        dayWidth = std::max(dayWidth, formatted(date, "%A").size());
    }
    for (std::size_t i = 0; i != openings.size(); ++i) {
        std::string day = formatted(dates[i], "%A");
        std::string name = openings[i].name;
        day.resize(dayWidth, ' ');
        name.resize(16, ' ');
        report += "  " + openings[i].country + "  " + formatted(dates[i], dateFormat()) + "  " + day + "  |" +
                  name + "|\n";
    }
    return report;
}

std::string refusalOf(std::string const& date) {
    return "DInvalidParameter exception thrown.\n"
           "   function: dateFrom\n"
           "   file: demo.cpp\n"
           "   line: #\n"
           "   Error Id is 1\n"
           "   Error Code group is Other Error Group\n"
           "   Exception text is:\n"
           "      The condition does not hold: the date " +
           date + " exists\n";
}

std::string lineRefusalOf(std::string const& condition) {
    return "DInvalidRequest exception thrown.\n"
           "   function: checkLine\n"
           "   file: demo.cpp\n"
           "   line: #\n"
           "   Error Id is 1\n"
           "   Error Code group is Kel Class Library\n"
           "   Exception text is:\n"
           "      The condition does not hold: " +
           condition + "\n";
}

} // namespace

// Listing ---------------------------------------------------------------------------------------------

TEST(DemoListing, EveryLineStandsAfterItsRightJustifiedNumber) {
    ProgramRun const run = runDemo({makeFile(prose)});
    EXPECT_EQ(run.output, "     1  The day and the year\n"
                          "     2  \n"
                          "     3  ten short words\n"
                          "\n"
                          "Summary\n"
                          "\n"
                          "  Lines .............. 3\n"
                          "  Words .............. 8\n"
                          "  Longest line ....... number 1 of 20 bytes\n"
                          "  Records ............ 0\n"
                          "  Refused records .... 0\n"
                          "\n"
                          "Reported on\n");
    EXPECT_EQ(run.errors, "");
    EXPECT_EQ(run.status, 0);
}

TEST(DemoListing, APatternChoosesTheListedLinesAndLeavesTheSummaryAlone) {
    ProgramRun const run = runDemo({makeFile(prose), "t?n*"});
    EXPECT_THAT(run.output, StartsWith("     3  ten short words\n\nSummary\n\n  Lines .............. 3\n"));
    EXPECT_EQ(run.status, 0);
}

TEST(DemoListing, APatternIsComparedWithTheWholeLine) {
    EXPECT_THAT(runDemo({makeFile(prose), "day"}).output, StartsWith("\nSummary\n"));
}

TEST(DemoListing, ALastLineWithoutALineFeedCounts) {
    ProgramRun const run = runDemo({makeFile("one\ntwo")});
    EXPECT_THAT(run.output, StartsWith("     1  one\n     2  two\n\nSummary\n\n  Lines .............. 2\n"));
    EXPECT_EQ(run.status, 0);
}

TEST(DemoListing, AnEmptyFileGivesAnEmptySummary) {
    ProgramRun const run = runDemo({makeFile("")});
    EXPECT_EQ(run.output, "\nSummary\n\n"
                          "  Lines .............. 0\n"
                          "  Words .............. 0\n"
                          "  Records ............ 0\n"
                          "  Refused records .... 0\n\n"
                          "Reported on\n");
    EXPECT_EQ(run.status, 0);
}

TEST(DemoListing, ALineOfAThousandBytesIsTaken) {
    std::string const line(1000, 'x');
    ProgramRun const run = runDemo({makeFile(line + "\n")});
    EXPECT_THAT(run.output, StartsWith("     1  " + line + "\n"));
    EXPECT_THAT(run.output, HasSubstr("  Longest line ....... number 1 of 1000 bytes\n"));
    EXPECT_EQ(run.status, 0);
}

// Records ---------------------------------------------------------------------------------------------

TEST(DemoRecords, ARecordThatIsRefusedIsReportedOnceAndTheRestGoesOn) {
    ProgramRun const run = runDemo({makeFile("Openings\n"
                                             "London;GB;1863-01-10\n"
                                             "A calendar check;GB;1752-09-10\n"
                                             "Buenos Aires;AR;1913-12-01\n"
                                             "Glasgow;GB;1896-12-14\n"),
                                    "Op*"});
    EXPECT_EQ(run.output, "     1  Openings\n" +
                              reportOf({{"GB", 1863, 1, 10, "London"},
                                        {"AR", 1913, 12, 1, "Buenos Aires"},
                                        {"GB", 1896, 12, 14, "Glasgow"}}) +
                              "\nThe bytes of the longest name\n\n"
                              "     1  42 75 65 6E 6F 73 20 41 69 72 65 73\n"
                              "\nSummary\n\n"
                              "  Lines .............. 5\n"
                              "  Words .............. 8\n"
                              "  Longest line ....... number 3 of 30 bytes\n"
                              "  Records ............ 3\n"
                              "  Refused records .... 1\n"
                              "  Commonest country .. GB (2)\n\n"
                              "Reported on\n");
    EXPECT_EQ(run.errors, refusalOf("1752-09-10"));
    EXPECT_EQ(run.status, 0);
}

TEST(DemoRecords, DatesThatDoNotExistAreRefusedAndTheirNeighboursAreTaken) {
    ProgramRun const run = runDemo({makeFile("a;GB;1752-09-02\n"
                                             "b;GB;1752-09-03\n"
                                             "c;GB;1752-09-13\n"
                                             "d;GB;1752-09-14\n"
                                             "e;GB;1900-02-29\n"
                                             "f;GB;2000-02-29\n"
                                             "g;GB;2001-13-01\n"
                                             "h;GB;2001-00-01\n"
                                             "i;GB;2001-04-31\n"
                                             "j;GB;0000-01-01\n")});
    EXPECT_EQ(run.errors, refusalOf("1752-09-03") + refusalOf("1752-09-13") + refusalOf("1900-02-29") +
                              refusalOf("2001-13-01") + refusalOf("2001-00-01") + refusalOf("2001-04-31") +
                              refusalOf("0000-01-01"));
    EXPECT_THAT(run.output, HasSubstr("  Records ............ 3\n  Refused records .... 7\n"));
    EXPECT_EQ(run.status, 0);
}

TEST(DemoRecords, LinesThatOnlyResembleARecordAreProse) {
    ProgramRun const run = runDemo({makeFile(";GB;1863-01-10\n"
                                             "London;GBR;1863-01-10\n"
                                             "London;GB;1863-1-10\n"
                                             "London;GB;1863-ab-10\n"
                                             "Lon;don;GB;1863-01-10\n"
                                             "London;GB;1863-01-10 \n"
                                             "London,GB,1863-01-10\n")});
    EXPECT_THAT(run.output, HasSubstr("  Records ............ 0\n  Refused records .... 0\n"));
    EXPECT_EQ(run.errors, "");
}

TEST(DemoRecords, ANameThatIsTooLongIsCutToItsField) {
    ProgramRun const run = runDemo({makeFile("Newcastle upon Tyne;GB;1980-08-11\n")});
    EXPECT_THAT(run.output, HasSubstr(reportOf({{"GB", 1980, 8, 11, "Newcastle upon T"}}) +
                                      "\nThe bytes of the longest name\n\n"
                                      "     1  4E 65 77 63 61 73 74 6C 65 20 75 70 6F 6E 20 54\n"
                                      "    17  79 6E 65\n"));
}

// Failures --------------------------------------------------------------------------------------------

TEST(DemoFailures, AFileThatIsNotThereIsReportedAndEndsInStatus2) {
    ProgramRun const run = runDemo({"nothing-here.txt"});
    EXPECT_EQ(run.output, "\nStopped. Lines read: 0\n");
    EXPECT_THAT(run.errors, StartsWith("DAccessError exception thrown.\n"
                                       "   function: readFile\n"
                                       "   file: demo.cpp\n"
                                       "   line: #\n"
                                       "   Error Id is 2\n"
                                       "   Error Code group is Standard C Library\n"
                                       "   Exception text is:\n"
                                       "      nothing-here.txt:"));
    EXPECT_EQ(linesOf(run.errors).size(), 8U);
    EXPECT_EQ(run.status, 2);
}

TEST(DemoFailures, AFolderCannotBeReadAndEndsInStatus2) {
    ProgramRun const run = runDemo({"."});
    EXPECT_EQ(run.output, "\nStopped. Lines read: 0\n");
    EXPECT_THAT(run.errors, StartsWith("DAccessError exception thrown.\n"));
    EXPECT_THAT(run.errors, HasSubstr("   Error Id is 21\n"));
    EXPECT_EQ(run.status, 2);
}

TEST(DemoFailures, ALineThatIsTooLongEndsInStatus2AfterWhatWasReadBefore) {
    ProgramRun const run = runDemo({makeFile("one\ntwo\n" + std::string(1001, 'x') + "\nfour\n")});
    EXPECT_EQ(run.output, "     1  one\n     2  two\n\nStopped. Lines read: 2\n");
    EXPECT_EQ(run.errors, lineRefusalOf("line 3 has at most 1000 bytes"));
    EXPECT_EQ(run.status, 2);
}

TEST(DemoFailures, ANulByteEndsInStatus2AfterWhatWasReadBefore) {
    std::string const nul(1, '\0');
    ProgramRun const run = runDemo({makeFile("one\na" + nul + "b\n")});
    EXPECT_EQ(run.output, "     1  one\n\nStopped. Lines read: 1\n");
    EXPECT_EQ(run.errors, lineRefusalOf("line 2 holds no NUL byte"));
    EXPECT_EQ(run.status, 2);
}

TEST(DemoFailures, OnATerminalAReportStandsAfterWhatWasPrintedBeforeIt) {
    std::string const nul(1, '\0');
    ProgramRun const run = runDemoOnTerminal({makeFile("one\nx;GB;2001-02-30\nthree\n" + nul + "\n")});
    EXPECT_EQ(run.output, "     1  one\n     2  x;GB;2001-02-30\n" + refusalOf("2001-02-30") +
                              "     3  three\n" + lineRefusalOf("line 4 holds no NUL byte") +
                              "\nStopped. Lines read: 3\n");
}

TEST(DemoFailures, WithoutAFileTheUsageIsPrintedAndTheStatusIs2) {
    ProgramRun const run = runDemo({});
    EXPECT_EQ(run.output, "");
    EXPECT_EQ(run.errors, "Usage: demo FILE [PATTERN]\nTry 'demo --help'.\n");
    EXPECT_EQ(run.status, 2);
}

TEST(DemoFailures, HelpTellsOfTheArgumentsWhateverTheLocale) {
    ProgramRun const run = runDemo({"--help"});
    EXPECT_EQ(run.output, readFile(KELCL_TEST_EXPECTED_DIR "/demo.help.txt"));
    EXPECT_EQ(run.errors, "");
    EXPECT_EQ(run.status, 0);
}

TEST(DemoFailures, ALocaleThatIsNotInstalledIsToldAndTheFileIsReadAsBytes) {
    std::string const locale = std::getenv("LC_ALL");
    setenv("LC_ALL", "xx_XX.nowhere", 1);
    ProgramRun const run = runDemo({makeFile("caf\xC3\xA9\n")});
    setenv("LC_ALL", locale.c_str(), 1);
    EXPECT_THAT(run.output, StartsWith("     1  caf\xC3\xA9\n"));
    EXPECT_EQ(run.errors,
              "demo: the locale of the environment is not installed, so bytes are taken for characters\n");
    EXPECT_EQ(run.status, 0);
}

// Messages --------------------------------------------------------------------------------------------

TEST(DemoMessages, WithoutACatalogTheReportSaysSo) {
    Environment const environment{{"NLSPATH", "./no-catalogs/%N"}};
    ProgramRun const run = runDemo({makeFile("x;GB;2001-02-30\n")});
    EXPECT_THAT(linesOf(run.errors), testing::Contains("      Unable to load text from message file."));
    EXPECT_EQ(run.status, 0);
}

TEST(DemoMessages, TheLanguageOfTheUserChoosesTheCatalog) {
    Environment const environment{{"NLSPATH", KELCL_TEST_CATALOG_DIR "/%l/LC_MESSAGES/%N"}};
    setenv("LANG", "de_DE.UTF-8", 1);
    ProgramRun const run = runDemo({makeFile("x;GB;2001-02-30\n")});
    setenv("LANG", "C", 1);
    EXPECT_THAT(linesOf(run.errors),
                testing::Contains("      Die Bedingung ist nicht erfüllt: the date 2001-02-30 exists"));
}

TEST(DemoMessages, TheVariableNamesAnotherCatalog) {
    Environment const environment{{"NLSPATH", "./no-catalogs/%N"},
                                  {"KORVA MSGFILE", KELCL_TEST_CATALOG_DIR "/kelcl.cat"}};
    EXPECT_EQ(runDemo({makeFile("x;GB;2001-02-30\n")}).errors, refusalOf("2001-02-30"));
}

// Trace -----------------------------------------------------------------------------------------------

namespace {

/// Trace lines without the numbers in brackets, which are lines of the source.
std::vector<std::string> traceOf(std::string const& text) {
    std::vector<std::string> lines;
    for (std::string const& line : linesOf(text))
        lines.push_back(line.substr(0, line.find('(')));
    return lines;
}

auto const wholeTrace =
    ElementsAre("+main", "  +readFile", "    >2 lines", "  -readFile", "  +printRecords", "  -printRecords",
                "  +printLongestName", "  -printLongestName", "  +printSummary", "  -printSummary", "-main");

} // namespace

TEST(DemoTrace, TheRunIsTracedToStandardErrorOnRequest) {
    Environment const environment{{"KORVA_TRACE", "noprefix"}, {"KORVA_TRACETO", "stderr"}};
    ProgramRun const run = runDemo({makeFile("one\nLondon;GB;1863-01-10\n")});
    EXPECT_THAT(traceOf(run.errors), wholeTrace);
    EXPECT_THAT(run.output, StartsWith("     1  one\n     2  London;GB;1863-01-10\n\nRecords\n"));
}

TEST(DemoTrace, TheRunIsTracedToAFileNamedInUpperCaseOnRequest) {
    std::remove("RUN.LOG");
    Environment const environment{
        {"KORVA TRACE", "noprefix"}, {"KORVA TRACETO", "file"}, {"KORVA TRACEFILE", "run.log"}};
    ProgramRun const run = runDemo({makeFile("one\nLondon;GB;1863-01-10\n")});
    EXPECT_THAT(traceOf(readFile("RUN.LOG")), wholeTrace);
    EXPECT_EQ(run.errors, "");
}

TEST(DemoTrace, OnStandardOutputTraceAndListingKeepTheirOrder) {
    Environment const environment{{"KORVA_TRACE", "noprefix"}, {"KORVA_TRACETO", "stdout"}};
    std::vector<std::string> const lines = traceOf(runDemo({makeFile("x;GB;2001-02-30\nlast\n")}).output);
    ASSERT_GE(lines.size(), 7U);
    EXPECT_THAT((std::vector<std::string>(lines.begin(), lines.begin() + 7)),
                ElementsAre("+main", "  +readFile", "     1  x;GB;2001-02-30",
                            "    >refused: x;GB;2001-02-30", "     2  last", "    >2 lines", "  -readFile"));
}

TEST(DemoTrace, AFailureLeavesTheTracedFunctionsOnItsWay) {
    Environment const environment{{"KORVA_TRACE", "noprefix"}, {"KORVA_TRACETO", "stdout"}};
    EXPECT_THAT(traceOf(runDemo({"nothing-here.txt"}).output),
                ElementsAre("+main", "  +readFile", "  -readFile", "-main", "", "Stopped. Lines read: 0"));
}

// The summary's moment --------------------------------------------------------------------------------

TEST(DemoSummary, EndsWithTheDateAndTimeOfTheRunInTheLocalesForm) {
    std::vector<std::string> candidates;
    std::time_t const start = std::time(nullptr);
    std::string const line = reportedLine(makeFile("one\n"));
    for (std::time_t moment = start; moment <= std::time(nullptr); ++moment) {
        std::tm local{};
        localtime_r(&moment, &local);
        candidates.push_back("Reported on " + formatted(local, dateFormat()) + " at " +
                             formatted(local, "%X"));
    }
    EXPECT_THAT(candidates, testing::Contains(line));
}
