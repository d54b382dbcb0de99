// The table of texts in several languages, each mode with the file in its own encoding.
#include "tests/support/program_run.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>

namespace {

ProgramRun runReport(std::vector<std::string> const& arguments) {
    return runProgram(KELCL_TEST_EXAMPLES_DIR "/cjkreport", arguments);
}

/// The English and the Japanese line of the questions, in the locale's encoding.
std::string japaneseQuestions() {
    std::string questions;
    for (std::string const& line : linesOf(readFile(KELCL_TEST_DATA_DIR "/areas.templates")))
        if (line.find("Choices: ") == 0 || line.find("Choices-ja.") == 0) questions += line + '\n';
    return makeFile(localeText(questions));
}

} // namespace

TEST(CjkReport, LinesUpWideAndNarrowLettersInTheEncodingOfTheLocale) {
    std::size_t const bytes = localeText("オーストラリア").size();
    ProgramRun const run = runReport({japaneseQuestions(), "ja"});
    EXPECT_EQ(run.output, localeText("en          ja\n"
                                     "Africa      アフリカ\n"
                                     "America     アメリカ\n"
                                     "Antarctica  南極大陸\n"
                                     "Arctic      北極\n"
                                     "Asia        アジア\n"
                                     "Atlantic    大西洋側\n"
                                     "Australia   オーストラリア\n"
                                     "Europe      ヨーロッパ\n"
                                     "Indian      インド地方\n"
                                     "Pacific     太平洋側\n"
                                     "US          US\n"
                                     "Etc         その他\n"
                                     "\n"
                                     "the widest            bytes  characters  columns\n"
                                     "Antarctica               10          10       10\n"
                                     "オーストラリア           " +
                                     std::to_string(bytes) + "           7       14\n"));
    EXPECT_EQ(run.errors, "");
    EXPECT_EQ(run.status, 0);
}

TEST(CjkReport, TellsOfALanguageThatTheFileDoesNotHave) {
    ProgramRun const run = runReport({japaneseQuestions(), "ja", "tlh"});
    EXPECT_EQ(run.output, "");
    EXPECT_EQ(run.errors, "cjkreport: the file has no choices in one of the languages\n");
    EXPECT_EQ(run.status, 2);
}

TEST(CjkReport, ShowsScriptsOfFiveLanguagesSideBySideInUtf8) {
    std::string const locale = std::getenv("LC_ALL");
    setenv("LC_ALL", "en_US.UTF-8", 1);
    ProgramRun const run = runReport({KELCL_TEST_DATA_DIR "/areas.templates", "ja", "ko", "ru", "de"});
    setenv("LC_ALL", locale.c_str(), 1);
    EXPECT_EQ(run.output, readFile(KELCL_TEST_EXPECTED_DIR "/cjkreport.txt"));
    EXPECT_EQ(run.errors, "");
    EXPECT_EQ(run.status, 0);
}
