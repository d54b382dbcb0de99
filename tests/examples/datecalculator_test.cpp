// What the date calculator answers and refuses. The expected weekdays are those of history.
#include "tests/support/program_run.h"

#include <gtest/gtest.h>

#include <cstdlib>

namespace {

ProgramRun runCalculator(std::vector<std::string> const& arguments) {
    return runProgram(KELCL_TEST_EXAMPLES_DIR "/datecalculator", arguments);
}

/// The answer.
std::string answer(std::vector<std::string> const& arguments) {
    ProgramRun const run = runCalculator(arguments);
    EXPECT_EQ(run.errors, "");
    EXPECT_EQ(run.status, 0);
    return run.output;
}

/// What is told on standard error when there is no answer.
std::string refusal(std::vector<std::string> const& arguments) {
    ProgramRun const run = runCalculator(arguments);
    EXPECT_EQ(run.output, "");
    EXPECT_EQ(run.status, 2);
    return run.errors;
}

std::string inLanguage(char const* english, char const* german, char const* japanese) {
    std::string const locale = std::getenv("KELCL_TEST_LOCALE");
    if (locale.compare(0, 2, "de") == 0) return german;
    if (locale.compare(0, 2, "ja") == 0) return localeText(japanese);
    return english;
}

std::string wednesday() { return inLanguage("Wednesday", "Mittwoch", "水曜日"); }
std::string thursday() { return inLanguage("Thursday", "Donnerstag", "木曜日"); }

std::string const leftOut = "Eleven days were left out in between: 1752-09-02 was followed by 1752-09-14.\n";
std::string const formHint = " is not of the form YYYY-MM-DD. Try 'datecalculator --help'.\n";

} // namespace

TEST(DateCalculator, TellsTheWeekdayInTheLanguageOfTheLocale) {
    EXPECT_EQ(answer({"1752-09-02"}), "1752-09-02: " + wednesday() + ", day 246 of its year\n");
    EXPECT_EQ(answer({"1752-09-14"}), "1752-09-14: " + thursday() + ", day 247 of its year\n");
    EXPECT_EQ(answer({"2024-02-29"}), "2024-02-29: " + thursday() + ", day 60 of its year\n");
    EXPECT_EQ(answer({"-0044-03-15"}), "-0044-03-15: " + wednesday() + ", day 74 of its year\n");
}

TEST(DateCalculator, CountsTheDaysBetweenTwoDatesInBothDirections) {
    EXPECT_EQ(answer({"2000-01-01", "2001-01-01"}), "2000-01-01 to 2001-01-01: 366 days\n");
    EXPECT_EQ(answer({"2001-01-01", "2000-12-31"}), "2001-01-01 to 2000-12-31: -1 day\n");
    EXPECT_EQ(answer({"2001-01-01", "2001-01-01"}), "2001-01-01 to 2001-01-01: 0 days\n");
    EXPECT_EQ(answer({"-0001-12-31", "0001-01-01"}), "-0001-12-31 to 0001-01-01: 1 day\n");
}

TEST(DateCalculator, TellsOfTheElevenDaysWhenTheyAreInBetween) {
    EXPECT_EQ(answer({"1752-09-01", "1752-09-15"}), "1752-09-01 to 1752-09-15: 3 days\n" + leftOut);
    EXPECT_EQ(answer({"1752-09-14", "1752-09-02"}), "1752-09-14 to 1752-09-02: -1 day\n" + leftOut);
    EXPECT_EQ(answer({"1752-08-02", "1752-09-02"}), "1752-08-02 to 1752-09-02: 31 days\n");
    EXPECT_EQ(answer({"1752-09-14", "1752-09-30"}), "1752-09-14 to 1752-09-30: 16 days\n");
}

TEST(DateCalculator, AddsAndSubtractsDays) {
    EXPECT_EQ(answer({"1752-09-02", "+1"}), "1752-09-02 + 1 day: 1752-09-14, " + thursday() + "\n" + leftOut);
    EXPECT_EQ(answer({"1752-09-14", "-1"}),
              "1752-09-14 - 1 day: 1752-09-02, " + wednesday() + "\n" + leftOut);
    EXPECT_EQ(answer({"2024-02-28", "+1"}), "2024-02-28 + 1 day: 2024-02-29, " + thursday() + "\n");
    EXPECT_EQ(answer({"2024-03-07", "-0000007"}), "2024-03-07 - 7 days: 2024-02-29, " + thursday() + "\n");
}

TEST(DateCalculator, ShowsALeapDayThatOnlyTheOldCalendarHas) {
    EXPECT_EQ(answer({"1700-02-28", "+1"}), "1700-02-28 + 1 day: 1700-02-29, " + thursday() + "\n");
    EXPECT_EQ(refusal({"1900-02-29"}), "datecalculator: there is no 1900-02-29\n");
}

TEST(DateCalculator, RefusesTheDaysThatWereLeftOutAndSaysWhy) {
    for (char const* const date : {"1752-09-03", "1752-09-13"})
        EXPECT_EQ(refusal({date}), "datecalculator: there is no " + std::string(date) +
                                       ": 1752-09-02 was followed by 1752-09-14\n");
}

TEST(DateCalculator, RefusesDatesThatTheCalendarDoesNotHave) {
    for (char const* const date :
         {"2001-02-29", "2001-04-31", "2001-00-01", "2001-13-01", "2001-01-00", "0000-01-01", "-0004-02-29"})
        EXPECT_EQ(refusal({date}), "datecalculator: there is no " + std::string(date) + "\n");
    EXPECT_EQ(refusal({"-4713-01-02", "-2"}), "datecalculator: there are no weekdays before -4713-01-01\n");
    EXPECT_EQ(refusal({"-4714-12-31"}), "datecalculator: there are no weekdays before -4713-01-01\n");
}

TEST(DateCalculator, RefusesACommandLineThatItDoesNotUnderstand) {
    for (char const* const text :
         {"2024-1-1", "", "20240101", "2024-01-011", "-", "2024/01/01", "20a4-01-01"})
        EXPECT_EQ(refusal({text}), "datecalculator: '" + std::string(text) + "'" + formHint);
    EXPECT_EQ(refusal({"2024-01-01", "7"}), "datecalculator: '7'" + formHint);
    EXPECT_EQ(refusal({"2024-01-01", "+"}), "datecalculator: '+'" + formHint);
    EXPECT_EQ(refusal({"2024-01-01", "+12345678"}), "datecalculator: '+12345678'" + formHint);
    std::string const hint =
        "datecalculator: one or two arguments are wanted. Try 'datecalculator --help'.\n";
    EXPECT_EQ(refusal({}), hint);
    EXPECT_EQ(refusal({"a", "b", "c"}), hint);
}
