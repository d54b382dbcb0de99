// Reading words with operator>>, held against a plain model that reads one character at a time.
#include "tests/buffers/buffer_support.h"
#include "tests/string/streams_support.h"

#include <iomanip>
#include <locale>
#include <sstream>

namespace {

using namespace support;

std::vector<std::string> const& wordTexts() {
    static std::vector<std::string> const texts = [] {
        std::vector<std::string> made = {"",
                                         " ",
                                         "one",
                                         "  one",
                                         "one two  three\tfour\nfive\vsix\fseven\reight",
                                         "\n\n one \n",
                                         "a\0b c\0"s,
                                         "\0"s,
                                         "\xFF \xA0\x85 \xFE",
                                         "_one_two _ three"};
        for (std::size_t length : {127U, 128U, 129U, 257U, 600U})
            made.push_back(std::string(1, ' ') + std::string(length, 'x') + '\n' + std::string(length, 'y'));
        return made;
    }();
    return texts;
}

std::string readWord(std::istream& in, std::string const& initial) {
    DString word(initial);
    try {
        std::istream& result = in >> word;
        EXPECT_EQ(&result, &in);
    } catch (...) {
        EXPECT_EQ(textOf(word), initial) << "a string that could not be read stays what it was";
        throw;
    }
    return textOf(word);
}

TEST(StringExtraction, ReadsWhatOneCharacterAtATimeWouldRead) {
    for (std::streamsize const width : {0, -1, 1, 2, 3, 129, 5000}) {
        for (std::string const& initial : {""s, std::string(300, 'i')}) {
            for (auto const& [kind, make] : kindsOfSources()) {
                for (std::string const& text : wordTexts()) {
                    SCOPED_TRACE(testing::Message() << kind << ", width " << width << ", "
                                                    << testing::PrintToString(text.substr(0, 40)));
                    auto const withWidth = [width](std::istream& in) -> std::istream& {
                        in.width(width);
                        return in;
                    };
                    expectSameReading(
                        make, text, [&](std::istream& in) { return readWord(withWidth(in), initial); },
                        [&](std::istream& in) { return modelWord(withWidth(in)); }, false);
                    if (HasFatalFailure()) return;
                }
            }
        }
    }
}

/// White space that is not the C locale's: the underscore is, the blank is not.
class Underscores : public std::ctype<char> {
public:
    Underscores() : std::ctype<char>(table()) {}

private:
    static mask const* table() {
        static std::vector<mask> const classes = [] {
            std::vector<mask> made(classic_table(), classic_table() + table_size);
            made['_'] = space;
            made[' '] = print;
            made[0xA0] = space;
            return made;
        }();
        return classes.data();
    }
};

TEST(StringExtraction, SeparatesWordsAsTheLocaleOfTheStreamDoes) {
    std::locale const underscores(std::locale::classic(), new Underscores);
    for (auto const& [kind, make] : kindsOfSources()) {
        for (std::string const& text : wordTexts()) {
            SCOPED_TRACE(kind);
            auto const imbued = [&underscores, make = make](std::string const& bytes) {
                Source source = make(bytes);
                source.stream->imbue(underscores);
                return source;
            };
            expectSameReading(
                imbued, text, [](std::istream& in) { return readWord(in, ""); },
                [](std::istream& in) { return modelWord(in); }, false);
            if (HasFatalFailure()) return;
        }
    }
    std::istringstream in("_one two_\xA0three");
    in.imbue(underscores);
    DString first, second;
    in >> first >> second;
    EXPECT_EQ(textOf(first), "one two");
    EXPECT_EQ(textOf(second), "three");
}

TEST(StringExtraction, LeavesTheDelimitingWhiteSpaceInTheStream) {
    std::istringstream in("  one\ttwo");
    DString word;
    in >> word;
    EXPECT_EQ(textOf(word), "one");
    EXPECT_EQ(in.peek(), '\t');
}

TEST(StringExtraction, ResetsTheWidth) {
    std::istringstream in("abcdef");
    DString word;
    in >> std::setw(4) >> word;
    EXPECT_EQ(textOf(word), "abc");
    EXPECT_EQ(in.width(), 0);
    in >> word;
    EXPECT_EQ(textOf(word), "def");
}

TEST(StringExtractionOddity, AWidthOfOneReadsNothing) {
    std::istringstream in("abc");
    DString word("before");
    in >> std::setw(1) >> word;
    EXPECT_EQ(textOf(word), "");
    EXPECT_TRUE(in.good());
    EXPECT_EQ(in.get(), 'a');
}

TEST(StringExtraction, AtTheEndEmptiesTheString) {
    std::istringstream in("   ");
    DString word("before");
    DString const witness(word);
    EXPECT_FALSE(in >> word);
    EXPECT_EQ(word.c_str(), DString::nullBuf());
    EXPECT_EQ(textOf(witness), "before");
    EXPECT_EQ(in.rdstate(), std::ios::eofbit | std::ios::failbit);
    EXPECT_EQ(in.width(), 0);
}

TEST(StringExtraction, NeverWritesIntoASharedText) {
    std::istringstream in("abc");
    DString word("wxyz");
    DString const witness(word);
    in >> word;
    EXPECT_EQ(textOf(word), "abc");
    EXPECT_EQ(refsOf(word), 1U);
    EXPECT_EQ(textOf(witness), "wxyz");
    EXPECT_EQ(refsOf(witness), 1U);
}

TEST(StringExtraction, ReadsOneWordAfterTheOtherIntoTheSameString) {
    std::string line;
    for (std::size_t i = 0; i < 3000; ++i)
        line += std::string(i * i % 211 + 1, static_cast<char>('a' + i % 26)) + ' ';
    std::istringstream ours(line), theirs(line);
    DString word;
    for (std::string expected; theirs >> expected;) {
        ours >> word;
        ASSERT_EQ(textOf(word), expected);
        ASSERT_EQ(word.c_str()[expected.size()], '\0');
        ASSERT_EQ(word + 'x', expected + 'x') << "the text may grow after it";
    }
    EXPECT_FALSE(ours >> word);
    EXPECT_TRUE(word.isEmpty());
}

TEST(StringExtraction, WritesWordsOfLikeLengthWhereTheTextStands) {
    // Bytes that are a character each in every encoding, so that none is cut.
    std::istringstream in("+++ ----- *********************");
    DString word("begin");
    char const* const place = word.c_str();
    in >> word;
    EXPECT_EQ(textOf(word), "+++");
    EXPECT_EQ(word.c_str(), place);
    in >> word;
    EXPECT_EQ(textOf(word), "-----");
    EXPECT_EQ(word.c_str(), place);
    in >> word;
    EXPECT_EQ(textOf(word), std::string(21, '*'));
    word = DString(nullptr, 1000, 'x');
    char const* const large = word.c_str();
    DString const kept(word);
    std::istringstream("short") >> word;
    EXPECT_EQ(textOf(word), "short");
    EXPECT_NE(word.c_str(), large) << "a short word does not keep a large block";
}

TEST(StringExtraction, ReadsAVeryLongWord) {
    std::string const word(1U << 20, 'w');
    std::istringstream in(" " + word + " rest");
    DString text;
    in >> text;
    EXPECT_EQ(textOf(text), word);
}

} // namespace
