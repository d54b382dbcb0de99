// The demo on names in several scripts, each mode with the records in its own encoding: nothing is cut in the
// middle of a character. Everything that does not depend on the encoding is in demo_test.cpp.
#include "tests/examples/demo_run.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <cstdlib>
#include <cwchar>
#include <map>

namespace {

using testing::HasSubstr;
using testing::StartsWith;

/// Three records as the report shows them in one mode.
struct Expected {
    char const* london; ///< from the country to the name's field, in UTF-8
    char const* petersburg;
    char const* tokyo;
    char const* petersburgField; ///< the name in 16 columns: where its letters take two, not all of them
    char const* petersburgBytes;
    char const* file; ///< the records in this mode's encoding
};

std::string const japaneseLondon = "  GB  1863年01月10日  土曜日  |";
std::string const japanesePetersburg = "  RU  1955年11月15日  火曜日  |";
std::string const japaneseTokyo = "  JP  1927年12月30日  金曜日  |";

char const* const eucBytes = "     1  A7 B3 A7 D1 A7 DF A7 DC A7 E4 2D A7 B1 A7 D6 A7\n"
                             "    17  E4 A7 D6 A7 E2 A7 D2 A7 E5 A7 E2 A7 D4\n";

Expected const& expected() {
    static std::map<std::string, Expected> const table{
        {"en_US.UTF-8",
         {"  GB  01/10/1863  Saturday  |", "  RU  11/15/1955  Tuesday   |", "  JP  12/30/1927  Friday    |",
          "Санкт-Петербург ",
          "     1  D0 A1 D0 B0 D0 BD D0 BA D1 82 2D D0 9F D0 B5 D1\n"
          "    17  82 D0 B5 D1 80 D0 B1 D1 83 D1 80 D0 B3\n",
          "records.utf8.txt"}},
        {"ja_JP.EUC-JP",
         {japaneseLondon.c_str(), japanesePetersburg.c_str(), japaneseTokyo.c_str(), "Санкт-Пе ", eucBytes,
          "records.eucjp.txt"}},
        {"ja_JP.SJIS",
         {japaneseLondon.c_str(), japanesePetersburg.c_str(), japaneseTokyo.c_str(), "Санкт-Пе ",
          "     1  84 52 84 70 84 7E 84 7B 84 84 2D 84 50 84 75 84\n"
          "    17  84 84 75 84 82 84 71 84 85 84 82 84 73\n",
          "records.sjis.txt"}},
        {"zh_CN.GB18030",
         {"  GB  1863年01月10日  星期六  |", "  RU  1955年11月15日  星期二  |",
          "  JP  1927年12月30日  星期五  |", "Санкт-Пе ", eucBytes, "records.gb18030.txt"}},
    };
    return table.at(std::getenv("KELCL_TEST_LOCALE"));
}

/// The columns of a text in the locale's encoding.
int columnsOf(std::string const& text) {
    std::array<wchar_t, 100> wide{};
    return wcswidth(wide.data(), std::mbstowcs(wide.data(), text.c_str(), wide.size()));
}

std::string blanks(std::size_t count) { return std::string(count, ' '); }

} // namespace

TEST(DemoCharacters, NamesAreCutAndPaddedToTheColumnsOfTheirFieldWithoutABrokenCharacter) {
    ProgramRun const run = runDemo({makeFile(localeText("London;GB;1863-01-10\n"
                                                        "Санкт-Петербург;RU;1955-11-15\n"
                                                        "東京;JP;1927-12-30\n")),
                                    "no such line"});
    Expected const& values = expected();
    EXPECT_EQ(run.output, localeText("\nRecords\n\n" +                                            //
                                     std::string(values.london) + "London" + blanks(10) + "|\n" + //
                                     values.petersburg + values.petersburgField + "|\n" +         //
                                     values.tokyo + "東京" + blanks(12) + "|\n" +
                                     "\nThe bytes of the longest name\n\n" + values.petersburgBytes +
                                     "\nSummary\n\n"
                                     "  Lines .............. 3\n"
                                     "  Words .............. 3\n"
                                     "  Longest line ....... number 2 of 43 bytes\n"
                                     "  Records ............ 3\n"
                                     "  Refused records .... 0\n"
                                     "  Commonest country .. GB (1)\n\n"
                                     "Reported on\n"));
    EXPECT_EQ(run.errors, "");
    EXPECT_EQ(run.status, 0);
}

TEST(DemoCharacters, TheReportOfTheWholeFileHasNoBrokenCharacterAndFieldsOfOneWidth) {
    ProgramRun const run = runDemo({dataFile(expected().file)});
    EXPECT_EQ(run.status, 0);
    converted(run.output, localeCodeset(), "UTF-8");
    unsigned int fields = 0;
    for (std::string const& line : linesOf(run.output)) {
        std::string const text = converted(line, localeCodeset(), "UTF-8");
        std::size_t const start = text.find("  |");
        if (start == std::string::npos) continue;
        ++fields;
        ASSERT_EQ(text.back(), '|') << text;
        EXPECT_EQ(columnsOf(localeText(text.substr(start + 3))), 17) << text;
    }
    EXPECT_EQ(fields, 50U);
    EXPECT_THAT(run.output, HasSubstr("  Records ............ 50\n  Refused records .... 1\n"
                                      "  Commonest country .. JP (9)\n"));
}

TEST(DemoCharacters, APatternInTheLocalesEncodingChoosesLines) {
    ProgramRun const run = runDemo({dataFile(expected().file), localeText("*京;JP*")});
    EXPECT_THAT(run.output, StartsWith(localeText("    15  東京;JP;1927-12-30\n"
                                                  "\nRecords\n")));
}

TEST(DemoCharacters, ALineThatEndsInHalfACharacterIsRefusedWithTheCatalogsTextAndWhatToDo) {
    std::string line = localeText("東京");
    line.pop_back();
    ProgramRun const run = runDemo({makeFile("one\n" + line + "\n")});
    EXPECT_EQ(run.output, "     1  one\n\nStopped. Lines read: 1\n");
    EXPECT_THAT(run.errors, StartsWith("DInvalidRequest exception thrown.\n"));
    EXPECT_THAT(linesOf(run.errors),
                testing::IsSupersetOf(
                    {"   file: dnlsutil", "   Error Id is 1012",
                     "      The text holds bytes that are no character of the locale's encoding."}));
    std::string const encoding = localeCodeset();
    EXPECT_THAT(run.errors,
                testing::EndsWith("\ndemo: line 2 of input.txt is not in " + encoding +
                                  ".\n"
                                  "Convert the file, and take what comes out:\n"
                                  "   iconv -f ENCODING -t " +
                                  encoding +
                                  " input.txt >converted.txt\n"
                                  "ENCODING is that of the file, such as ISO-8859-1, SHIFT_JIS or "
                                  "GB18030.\n"));
    EXPECT_EQ(linesOf(run.errors).size(), 12U) << "one report, and what to do";
    EXPECT_EQ(run.status, 2);
}

TEST(DemoCharacters, ARefusedRecordIsNamedInTheTraceAsItStandsInTheFile) {
    Environment const environment{{"KORVA_TRACE", "noprefix"}, {"KORVA_TRACETO", "stdout"}};
    ProgramRun const run = runDemo({makeFile(localeText("東京;JP;1927-02-30\n")), "no such line"});
    EXPECT_THAT(linesOf(run.output), testing::Contains(localeText("    >refused: 東京;JP;1927-02-30")));
}
