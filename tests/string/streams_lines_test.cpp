// lineFrom, held against a plain model that reads one character at a time.
#include "tests/buffers/buffer_support.h"
#include "tests/string/streams_support.h"

#include <sstream>

namespace {

using namespace support;

std::vector<std::string> linesOf(char delimiter) {
    std::string const d(1, delimiter);
    std::vector<std::string> texts = {"",
                                      d,
                                      "ab",
                                      "ab" + d,
                                      d + "ab",
                                      d + d + d,
                                      "one" + d + "two" + d + "three",
                                      "one" + d + d + "three" + d,
                                      "a\0b"s + d + "\0"s + d + "\0\0c"s,
                                      "\xFF\xFE" + d + "\xFF",
                                      "\r\n\t \v" + d + " " + d};
    for (std::size_t length : {127U, 128U, 129U, 256U, 257U, 300U, 1500U})
        texts.push_back(std::string(length, 'x') + d + std::string(length, 'y'));
    return texts;
}

// lineFrom

TEST(LineFrom, ReadsWhatOneCharacterAtATimeWouldRead) {
    for (char const delimiter : {'\n', '\0', '\xFF', 'x', ' '}) {
        for (auto const& [kind, make] : kindsOfSources()) {
            for (std::string const& text : linesOf(delimiter)) {
                SCOPED_TRACE(testing::Message() << kind << ", delimiter " << static_cast<int>(delimiter)
                                                << ", " << testing::PrintToString(text.substr(0, 40)));
                expectSameReading(
                    make, text, [=](std::istream& in) { return textOf(DString::lineFrom(in, delimiter)); },
                    [=](std::istream& in) { return modelLine(in, delimiter); }, true);
                if (HasFatalFailure()) return;
            }
        }
    }
}

TEST(LineFrom, WithoutADelimiterReadsUpToTheNewLine) {
    std::istringstream in("one\ntwo");
    EXPECT_EQ(textOf(DString::lineFrom(in)), "one");
    EXPECT_TRUE(in.good());
    EXPECT_EQ(in.gcount(), 1);
    EXPECT_EQ(textOf(DString::lineFrom(in)), "two");
    EXPECT_TRUE(in.eof());
    EXPECT_TRUE(in.fail());
    EXPECT_FALSE(in.bad());
    EXPECT_EQ(in.gcount(), 0);
    EXPECT_EQ(textOf(DString::lineFrom(in)), "");
}

TEST(LineFrom, AtTheDelimiterGivesTheEmptyStringAndConsumesIt) {
    std::istringstream in("\nab");
    DString const line = DString::lineFrom(in);
    EXPECT_EQ(line.c_str(), DString::nullBuf());
    EXPECT_EQ(in.get(), 'a');
}

TEST(LineFrom, ReadsALineOfThreeHundredCharactersWhole) {
    std::istringstream in(std::string(300, 'x') + "\nrest");
    EXPECT_EQ(textOf(DString::lineFrom(in)), std::string(300, 'x'));
    EXPECT_EQ(textOf(DString::lineFrom(in)), "rest");
}

TEST(LineFrom, GivesATextOfItsOwnInTheClassOfTheLocale) {
    std::istringstream in("one\ntwo\n");
    DString const line = DString::lineFrom(in);
    EXPECT_EQ(refsOf(line), 1U);
    EXPECT_EQ(bufferOf(line)->className(), defaultClass());
}

TEST(LineFrom, ReadsAMegabyteInOneLine) {
    std::string text(1U << 20, ' ');
    for (std::size_t i = 0; i < text.size(); ++i)
        text[i] = static_cast<char>('a' + i % 25);
    std::istringstream in(text + "\n");
    EXPECT_EQ(textOf(DString::lineFrom(in)), text);
}

TEST(LineFrom, TakesNothingFromAStreamThatHasFailed) {
    std::istringstream in("one\ntwo\n");
    in.setstate(std::ios::failbit);
    EXPECT_EQ(textOf(DString::lineFrom(in)), "");
    EXPECT_EQ(in.gcount(), 0);
    EXPECT_EQ(in.rdstate(), std::ios::failbit);
    in.clear();
    EXPECT_EQ(textOf(DString::lineFrom(in)), "one");
}

TEST(LineFrom, AtAnEndSeenBeforeReadsNothing) {
    std::istringstream in("one\n");
    in.setstate(std::ios::eofbit);
    EXPECT_EQ(textOf(DString::lineFrom(in)), "");
    EXPECT_EQ(in.rdstate(), std::ios::eofbit | std::ios::failbit);
}

TEST(LineFrom, ReadsEveryLineOfAnInteractiveStreamAsItComes) {
    std::stringstream both;
    both << "one\n";
    EXPECT_EQ(textOf(DString::lineFrom(both)), "one");
    both << "two\nthr";
    EXPECT_EQ(textOf(DString::lineFrom(both)), "two");
    both << "ee\n";
    EXPECT_EQ(textOf(DString::lineFrom(both)), "three");
}

TEST(LineFrom, FlushesTheTiedStreamBeforeItWaits) {
    struct Flushed : std::stringbuf {
        int flushes = 0;
        int sync() override {
            ++flushes;
            return 0;
        }
    };
    Flushed prompt;
    std::ostream out(&prompt);
    Unbuffered source("one\n");
    std::istream in(&source);
    in.tie(&out);
    (void)DString::lineFrom(in);
    EXPECT_GE(prompt.flushes, 1);
}

} // namespace
