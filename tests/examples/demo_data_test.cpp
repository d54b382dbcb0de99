// The texts that come with the demo: the journal in UTF-8, and its records in four encodings.
#include "tests/examples/demo_run.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstddef>
#include <sstream>
#include <string>
#include <vector>

namespace {

/// Lines name;country;YYYY-MM-DD, told apart by hand.
std::vector<std::string> recordsIn(std::string const& text) {
    std::vector<std::string> records;
    for (std::string const& line : linesOf(text)) {
        std::size_t const size = line.size();
        if (size > 14 && line[size - 14] == ';' && line[size - 11] == ';' && line[size - 6] == '-' &&
            line[size - 3] == '-')
            records.push_back(line);
    }
    return records;
}

} // namespace

TEST(DemoData, TheFourFilesOfRecordsHoldTheSameText) {
    std::string const text = readData("records.utf8.txt");
    EXPECT_EQ(converted(readData("records.eucjp.txt"), "EUC-JP", "UTF-8"), text);
    EXPECT_EQ(converted(readData("records.sjis.txt"), "SHIFT_JIS", "UTF-8"), text);
    EXPECT_EQ(converted(readData("records.gb18030.txt"), "GB18030", "UTF-8"), text);
}

TEST(DemoData, TheJournalHasTheRecordsOfTheFilesAndProseAroundThem) {
    std::string const journal = readData("journal.txt");
    EXPECT_EQ(recordsIn(journal), linesOf(readData("records.utf8.txt")));
    EXPECT_GE(linesOf(journal).size(), 4 * recordsIn(journal).size());
}

TEST(DemoData, TheDemoListsEveryLineOfTheJournalAndRefusesItsCalendarCheckOnly) {
    ProgramRun const run = runDemo({dataFile("journal.txt")});
    std::string listing;
    unsigned int number = 0;
    unsigned int words = 0;
    for (std::string const& line : linesOf(readData("journal.txt"))) {
        std::string const digits = std::to_string(++number);
        listing.append(6 - digits.size(), ' ').append(digits).append("  ").append(line).append("\n");
        std::istringstream in(line);
        for (std::string word; in >> word;)
            ++words;
    }
    EXPECT_THAT(run.output, testing::StartsWith(listing + "\nRecords\n\n"));
    EXPECT_THAT(run.output, testing::HasSubstr("  Lines .............. " + std::to_string(number) +
                                               "\n  Words .............. " + std::to_string(words) + "\n"));
    EXPECT_THAT(run.output, testing::HasSubstr("  Records ............ 50\n  Refused records .... 1\n"));
    EXPECT_THAT(run.errors,
                testing::EndsWith("      The condition does not hold: the date 1752-09-10 exists\n"));
    EXPECT_EQ(linesOf(run.errors).size(), 8U) << "one report";
    EXPECT_EQ(run.status, 0);
}

TEST(DemoData, TheLinesOfTheJournalAreValidUtf8OfAtMostNinetyCharacters) {
    for (std::string const& line : linesOf(readData("journal.txt")))
        EXPECT_LE(converted(line, "UTF-8", "UTF-32LE").size() / 4, 90U) << line;
}
