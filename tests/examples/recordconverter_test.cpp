// What the record converter writes and tells. It takes its locales from its arguments: that of the test must
// not matter.
#include "tests/support/program_run.h"

#include <gtest/gtest.h>

namespace {

/// Names of eight characters, countries of two, years of four.
std::string const openings = "London  GB1863\n"
                             "東京      JP1927\n"
                             "ロンドン    GB1863\n"
                             "Санкт-ПеRU1955\n";

std::string inEucJp(std::string const& utf8) { return converted(utf8, "UTF-8", "EUC-JP"); }

ProgramRun convert(std::vector<std::string> const& arguments, std::string const& input = "") {
    return runProgram(KELCL_TEST_EXAMPLES_DIR "/recordconverter", arguments, input);
}

/// What is told on standard error when nothing can be done.
std::string refusal(std::vector<std::string> const& arguments) {
    ProgramRun const run = convert(arguments);
    EXPECT_EQ(run.output, "");
    EXPECT_EQ(run.status, 2);
    return run.errors;
}

std::string const formHint =
    " is not of the form CHARACTERS:BYTES, from 1 to 9999. Try 'recordconverter --help'.\n";

} // namespace

TEST(RecordConverter, WritesFieldsPaddedToTheirBytesInTheNewEncoding) {
    ProgramRun const run = convert({"ja_JP.EUC-JP", "en_US.UTF-8", "8:15,2,4:6"}, inEucJp(openings));
    EXPECT_EQ(run.output, "London         GB1863  \n"
                          "東京         JP1927  \n"
                          "ロンドン   GB1863  \n"
                          "Санкт-ПеRU1955  \n");
    EXPECT_EQ(run.errors, "");
    EXPECT_EQ(run.status, 0);
}

TEST(RecordConverter, ConvertsBetweenTwoEncodingsOtherThanUtf8) {
    ProgramRun const run = convert({"ja_JP.EUC-JP", "zh_CN.GB18030", "8:16,2,4"}, inEucJp(openings));
    EXPECT_EQ(converted(run.output, "GB18030", "UTF-8"), "London          GB1863\n"
                                                         "東京            JP1927\n"
                                                         "ロンドン        GB1863\n"
                                                         "Санкт-Пе RU1955\n");
    EXPECT_EQ(run.status, 0);
}

TEST(RecordConverter, ConvertsFromAndToLocalesOfSingleBytes) {
    ProgramRun const run = convert({"de_DE.ISO-8859-1", "en_US.UTF-8", "6:8,2"}, "Z\xFCrichCH\n");
    EXPECT_EQ(run.output, "Zürich CH\n");
    EXPECT_EQ(convert({"en_US.UTF-8", "de_DE.ISO-8859-1", "6:8,2"}, "ZürichCH\n").output, "Z\xFCrich  CH\n");
}

TEST(RecordConverter, LeavesOutWholeCharactersOfAFieldThatIsTooLongAndTellsIt) {
    ProgramRun const run = convert({"ja_JP.EUC-JP", "en_US.UTF-8", "8:7,2,4"}, inEucJp(openings));
    EXPECT_EQ(run.output, "London GB1863\n"
                          "東京 JP1927\n"
                          "ロン GB1863\n"
                          "Сан RU1955\n");
    EXPECT_EQ(run.errors, "recordconverter: line 3: characters that do not fit are left out\n"
                          "recordconverter: line 4: characters that do not fit are left out\n");
    EXPECT_EQ(run.status, 1);
}

TEST(RecordConverter, ReportsRecordsThatCannotBeConvertedAndGoesOn) {
    std::string const input = "first1\n"
                              "\xE6\x9D\xB1\xE4\n"
                              "tokyo東\n"
                              "东  2\n"
                              "too long\n"
                              "last 6";
    ProgramRun const run = convert({"en_US.UTF-8", "ja_JP.EUC-JP", "5,1:2"}, input);
    EXPECT_EQ(converted(run.output, "EUC-JP", "UTF-8"), "first1 \n"
                                                        "tokyo東\n"
                                                        "last 6 \n");
    EXPECT_EQ(run.errors, "recordconverter: line 2: bytes that are no character of en_US.UTF-8\n"
                          "recordconverter: line 4: field 1 has a character that is not in ja_JP.EUC-JP\n"
                          "recordconverter: line 5: more characters than the fields have\n");
    EXPECT_EQ(run.status, 1);
}

TEST(RecordConverter, FillsUpRecordsThatAreTooShort) {
    EXPECT_EQ(convert({"C", "C", "2,2"}, "abc\n\n").output, "abc \n    \n");
}

TEST(RecordConverter, ReadsAFile) {
    ProgramRun const run = convert({"C", "C", "3:4", makeFile("abc\n")});
    EXPECT_EQ(run.output, "abc \n");
    EXPECT_EQ(run.status, 0);
}

TEST(RecordConverter, FailsOnAFileThatCannotBeRead) {
    EXPECT_EQ(refusal({"C", "C", "3", "nothing-here"}),
              "recordconverter: nothing-here:No such file or directory\n");
    EXPECT_EQ(refusal({"C", "C", "3", "."}), "recordconverter: .:Is a directory\n");
}

TEST(RecordConverter, RefusesALocaleThatIsNotThere) {
    std::string const hint = "recordconverter: there is no locale xx_XX. 'locale -a' lists those that are "
                             "installed.\n";
    EXPECT_EQ(refusal({"C", "xx_XX", "3"}), hint);
    EXPECT_EQ(refusal({"xx_XX", "C", "3"}), hint);
}

TEST(RecordConverter, RefusesFieldsThatItDoesNotUnderstand) {
    for (char const* const field : {"x", "0", "1:", ":1", "1:2:3", "10000", "-1", ""})
        EXPECT_EQ(refusal({"C", "C", "3," + std::string(field)}),
                  "recordconverter: the field '" + std::string(field) + "'" + formHint);
    EXPECT_EQ(refusal({"C", "C"}),
              "recordconverter: three or four arguments are wanted. Try 'recordconverter --help'.\n");
}
