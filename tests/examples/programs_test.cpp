// What the example programs print of files of a Debian machine, and what they say of what they cannot use.
// The texts in expected/ were checked against awk, sort and Python when they were made.
#include "tests/support/program_run.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <cerrno>
#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <map>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

namespace {

using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;

std::string programFile(std::string const& name) { return KELCL_TEST_EXAMPLES_DIR "/" + name; }

ProgramRun runExample(std::string const& name, std::vector<std::string> const& arguments,
                      std::string const& input = "") {
    return runProgram(programFile(name), arguments, input);
}

/// Puts a file of the examples' data where the program runs, and returns its name.
std::string dataFile(std::string const& name) {
    return makeFile(readFile(KELCL_TEST_DATA_DIR "/" + name), name);
}

std::string expected(std::string const& name) { return readFile(KELCL_TEST_EXPECTED_DIR "/" + name); }

void expectSuccess(ProgramRun const& run, std::string const& output) {
    EXPECT_EQ(run.output, output);
    EXPECT_EQ(run.errors, "");
    EXPECT_EQ(run.status, 0);
}

std::string noSuchFile() { return std::string(": nothing-here.txt:") + std::strerror(ENOENT) + '\n'; }

/// Changes LC_ALL for as long as it lives.
class UserLocale {
public:
    explicit UserLocale(char const* locale) : previous_(std::getenv("LC_ALL")) {
        setenv("LC_ALL", locale, 1);
    }
    ~UserLocale() { setenv("LC_ALL", previous_.c_str(), 1); }
    UserLocale(UserLocale const&) = delete;
    UserLocale& operator=(UserLocale const&) = delete;

private:
    std::string previous_;
};

} // namespace

TEST(ExamplePrograms, TellOfAFileThatIsNotThereInOneLine) {
    for (std::string const name :
         {"cjkreport", "configparser", "datereport", "hexconverter", "loganalyser", "wordcounter"}) {
        ProgramRun const run = runExample(name, {"nothing-here.txt"});
        EXPECT_EQ(run.output, "") << name;
        EXPECT_EQ(run.errors, name + noSuchFile());
        EXPECT_EQ(run.status, 2) << name;
    }
}

TEST(ExamplePrograms, TellOfAFileThatCannotBeRead) {
    for (std::string const name :
         {"cjkreport", "configparser", "datereport", "hexconverter", "loganalyser", "wordcounter"}) {
        ProgramRun const run = runExample(name, {"."});
        EXPECT_EQ(run.output, "") << name;
        EXPECT_THAT(run.errors, StartsWith(name + ": "));
        EXPECT_THAT(run.errors, HasSubstr(std::strerror(EISDIR)));
        EXPECT_EQ(linesOf(run.errors).size(), 1U) << name;
        EXPECT_EQ(run.status, 2) << name;
    }
}

TEST(ExamplePrograms, TellHowTheyAreUsedWhenArgumentsAreMissing) {
    for (std::string const name :
         {"cjkreport", "configparser", "datereport", "hexconverter", "loganalyser", "wordcounter"}) {
        ProgramRun const run = runExample(name, {});
        EXPECT_EQ(run.output, "") << name;
        EXPECT_THAT(run.errors, StartsWith("Usage: " + name + " "));
        EXPECT_EQ(run.status, 2) << name;
    }
}

// loganalyser -----------------------------------------------------------------------------------------

TEST(LogAnalyser, CountsWhatWasDoneOnEachDay) {
    expectSuccess(runExample("loganalyser", {dataFile("dpkg.log")}), expected("loganalyser.days.txt"));
}

TEST(LogAnalyser, ListsTheChangesOfThePackagesThatAreLikeAPattern) {
    expectSuccess(runExample("loganalyser", {dataFile("dpkg.log"), "libc*"}),
                  expected("loganalyser.packages.txt"));
}

// configparser ----------------------------------------------------------------------------------------

TEST(ConfigParser, PrintsTheSettingsByName) {
    expectSuccess(runExample("configparser", {dataFile("login.defs")}), expected("configparser.txt"));
}

TEST(ConfigParser, TellsOfEachWrongLineAndEndsInStatus1) {
    ProgramRun const run = runExample("configparser", {makeFile("UID_MIN\t10x0\n"
                                                                "# UID_MIN ten\n"
                                                                "UMASK 0778\n"
                                                                "FAILLOG_ENAB perhaps\n"
                                                                "MAIL_DIR var/mail\n"
                                                                "ENV_PATH PATH=/bin:usr/bin\n"
                                                                "TTYGROUP tty and more\n"
                                                                "COLOUR blue\n"
                                                                "SU_NAME\n"
                                                                "UID_MAX 60000\n",
                                                                "wrong.defs")});
    EXPECT_EQ(run.output, "wrong.defs:1: '10x0' is not a number\n"
                          "wrong.defs:3: '0778' is not an octal number, which begins with 0\n"
                          "wrong.defs:4: 'perhaps' is neither yes nor no\n"
                          "wrong.defs:5: 'var/mail' is not the name of a file, which begins with /\n"
                          "wrong.defs:6: 'PATH=/bin:usr/bin' is not of the form PATH=/folder:/folder\n"
                          "wrong.defs:7: 'tty and more' is more than one word\n"
                          "wrong.defs:8: there is no setting COLOUR\n"
                          "wrong.defs:9: SU_NAME has no value\n"
                          "UID_MAX           60000\n");
    EXPECT_EQ(run.errors, "");
    EXPECT_EQ(run.status, 1);
}

TEST(ConfigParser, SpeaksTheUsersLanguageByItsOwnCatalog) {
    Environment const environment{{"NLSPATH", KELCL_TEST_EXAMPLES_DIR "/catalog/%l/%N"}};
    std::string const file = makeFile("COLOUR blue\nUID_MIN ten\nSU_NAME\n", "wrong.defs");
    std::map<std::string, std::string> const outputs{
        {"en_GB.UTF-8", "wrong.defs:1: there is no setting COLOUR\n"
                        "wrong.defs:2: 'ten' is not a number\n"
                        "wrong.defs:3: SU_NAME has no value\n"},
        {"de_DE.UTF-8", "wrong.defs:1: es gibt keine Einstellung COLOUR\n"
                        "wrong.defs:2: „ten“ ist keine Zahl\n"
                        "wrong.defs:3: SU_NAME hat keinen Wert\n"},
        {"ja_JP.UTF-8", "wrong.defs:1: 設定 COLOUR はありません\n"
                        "wrong.defs:2: 「ten」は数値ではありません\n"
                        "wrong.defs:3: SU_NAME に値がありません\n"},
    };
    for (auto const& [language, output] : outputs) {
        setenv("LANG", language.c_str(), 1);
        EXPECT_EQ(runExample("configparser", {file}).output, output);
    }
    setenv("LANG", "C", 1);
}

// wordcounter -----------------------------------------------------------------------------------------

namespace {

std::string const licences[] = {"/usr/share/common-licenses/Artistic", "/usr/share/common-licenses/BSD",
                                "/usr/share/common-licenses/GPL-2"};

/// The words of an ASCII text in small letters, without the punctuation around them.
std::map<std::string, int> countsIn(std::string const& text) {
    std::map<std::string, int> counts;
    std::istringstream in(text);
    for (std::string word; in >> word;) {
        std::string const punctuation = ".,;:!?'`\"()[]<>*=-_";
        std::size_t const first = word.find_first_not_of(punctuation);
        if (first == std::string::npos) continue;
        word = word.substr(first, word.find_last_not_of(punctuation) - first + 1);
        std::transform(word.begin(), word.end(), word.begin(),
                       [](unsigned char letter) { return static_cast<char>(std::tolower(letter)); });
        ++counts[word];
    }
    return counts;
}

} // namespace

TEST(WordCounter, CountsTheWordsOfSeveralFilesTogether) {
    std::string text;
    for (std::string const& file : licences)
        text += readFile(file) + '\n';
    std::map<std::string, int> const counts = countsIn(text);
    std::vector<std::pair<int, std::string>> words;
    for (auto const& [word, count] : counts)
        words.emplace_back(-count, word);
    std::sort(words.begin(), words.end());
    std::string output = std::to_string(words.size()) + " different words\n";
    for (std::size_t i = 0; i != 10; ++i) {
        auto const& [negative, word] = words.at(i);
        std::string const number = std::to_string(-negative);
        std::string field = word;
        field.resize(12, ' ');
        auto const bar = static_cast<std::size_t>(50 * negative / words.front().first);
        output += std::string(8 - number.size(), ' ') + number + "  " + field + std::string(bar, '#') + '\n';
    }
    EXPECT_GT(-words.at(9).first, 20) << "files with too few words";
    expectSuccess(runExample("wordcounter", {licences[0], licences[1], licences[2]}), output);
}

TEST(WordCounter, TellsOfAnExceptionOfAThread) {
    ProgramRun const run = runExample("wordcounter", {licences[0], "nothing-here.txt", licences[1]});
    EXPECT_EQ(run.output, "");
    EXPECT_EQ(run.errors, "wordcounter" + noSuchFile());
    EXPECT_EQ(run.status, 2);
}

TEST(WordCounter, SaysOfAFileWithoutWordsThatThereAreNone) {
    expectSuccess(runExample("wordcounter", {makeFile(" ... \n")}), "0 different words\n");
}

// hexconverter ----------------------------------------------------------------------------------------

TEST(HexConverter, ShowsSixteenBytesInALine) {
    std::string const bytes("kelcl: bytes\0\x01\xFF\x80\nend", 20);
    expectSuccess(runExample("hexconverter", {makeFile(bytes)}),
                  "00000000  6B 65 6C 63 6C 3A 20 62 79 74 65 73 00 01 FF 80  kelcl: bytes....\n"
                  "00000010  0A 65 6E 64                                      .end\n");
}

TEST(HexConverter, MakesTheFileAgain) {
    for (std::string const& file : {licences[0], std::string(KELCL_TEST_DATA_DIR "/records.sjis.txt"),
                                    std::string(KELCL_TEST_LIBRARY_FILE)}) {
        std::string const bytes = readFile(file).substr(0, 100000);
        ProgramRun const text = runExample("hexconverter", {"-"}, bytes);
        EXPECT_EQ(text.status, 0);
        ProgramRun const back = runExample("hexconverter", {"--back", "-"}, text.output);
        EXPECT_TRUE(back.output == bytes) << file;
        EXPECT_EQ(back.status, 0);
    }
}

TEST(HexConverter, RefusesATextWithoutBytes) {
    ProgramRun const run = runExample("hexconverter", {"--back", makeFile("00000000  6B\nnothing\n")});
    EXPECT_EQ(run.output, "k");
    EXPECT_EQ(run.errors, "hexconverter: a line has no bytes in hexadecimal\n");
    EXPECT_EQ(run.status, 2);
}

TEST(HexConverter, ConvertsNumbersOfAnySize) {
    expectSuccess(runExample("hexconverter", {"123456789012345678901234567890"}),
                  "0x018EE90FF6C373E0EE4E3F0AD2\n");
    expectSuccess(runExample("hexconverter", {"0x018ee90ff6c373e0ee4e3f0ad2"}),
                  "123456789012345678901234567890\n");
    expectSuccess(runExample("hexconverter", {"0"}), "0x00\n");
}

// datereport ------------------------------------------------------------------------------------------

TEST(DateReport, TellsOfEachReleaseAsSeenOnADay) {
    UserLocale const locale("en_US.UTF-8");
    expectSuccess(runExample("datereport", {dataFile("debian.csv"), "2026-11-22"}),
                  expected("datereport.txt"));
}

TEST(DateReport, NamesDaysInTheUsersLanguage) {
    UserLocale const locale("ja_JP.UTF-8");
    ProgramRun const run = runExample("datereport", {dataFile("debian.csv"), "2026-11-22"});
    EXPECT_THAT(run.output, EndsWith("\n月曜日        ##\n"
                                     "火曜日        ##\n"
                                     "木曜日        ##\n"
                                     "金曜日        ##\n"
                                     "土曜日        #######\n"
                                     "日曜日        ###\n"));
    EXPECT_EQ(run.status, 0);
}

TEST(DateReport, CountsFromTheDayGiven) {
    std::string const file = makeFile("1,One,one,2024-01-01,2024-02-29,2025-02-28\n"
                                      "2,Two,two,2024-01-01,2024-02-30\n");
    EXPECT_THAT(runExample("datereport", {file, "2024-02-28"}).output, HasSubstr("  comes in 1 days\n"));
    EXPECT_THAT(runExample("datereport", {file, "2024-02-29"}).output, HasSubstr("  0 days so far\n"));
    EXPECT_THAT(runExample("datereport", {file, "2025-03-01"}).output, HasSubstr("  365 days\n"));
    EXPECT_THAT(runExample("datereport", {file, "2025-03-01"}).output, testing::Not(HasSubstr("Two")));
}

TEST(DateReport, RefusesADayThatTheCalendarDoesNotHave) {
    for (std::string const day :
         {"2026-02-29", "1752-09-10", "2026-13-01", "2026-11-0x", "yesterday", "+026-01-01"}) {
        ProgramRun const run = runExample("datereport", {dataFile("debian.csv"), day});
        EXPECT_EQ(run.output, "") << day;
        EXPECT_EQ(run.errors, "datereport: there is no such date; one is wanted in the form YYYY-MM-DD\n");
        EXPECT_EQ(run.status, 2) << day;
    }
}
