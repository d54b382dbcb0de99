// Reading strings from streams and writing them: held against plain models that read one character at a time
// with get and peek, on streams of many kinds.
#include "tests/buffers/buffer_support.h"

#include <algorithm>
#include <fstream>
#include <functional>
#include <iomanip>
#include <limits>
#include <locale>
#include <memory>
#include <sstream>

namespace {

using namespace core;

using Traits = std::char_traits<char>;

// Kinds of streams

struct SourceFailure {};

/// A source that has no buffer at all: every character is asked for.
class Unbuffered : public std::streambuf {
public:
    explicit Unbuffered(std::string text) : text_(std::move(text)) {}

protected:
    int_type underflow() override {
        return next_ < text_.size() ? Traits::to_int_type(text_[next_]) : Traits::eof();
    }
    int_type uflow() override {
        return next_ < text_.size() ? Traits::to_int_type(text_[next_++]) : Traits::eof();
    }

private:
    std::string text_;
    std::size_t next_ = 0;
};

/// A source that has a few characters ready at a time and, where asked to, fails instead of reaching its end.
class Chunked : public std::streambuf {
public:
    Chunked(std::string text, std::size_t chunk, bool failsAtEnd)
        : text_(std::move(text)), chunk_(chunk), failsAtEnd_(failsAtEnd) {}

protected:
    int_type underflow() override {
        if (next_ == text_.size()) {
            if (failsAtEnd_) throw SourceFailure();
            return Traits::eof();
        }
        std::size_t const count = std::min(chunk_, text_.size() - next_);
        setg(text_.data() + next_, text_.data() + next_, text_.data() + next_ + count);
        next_ += count;
        return Traits::to_int_type(*gptr());
    }

private:
    std::string text_;
    std::size_t chunk_;
    bool failsAtEnd_;
    std::size_t next_ = 0;
};

/// A stream with whatever it reads from.
struct Source {
    std::unique_ptr<std::streambuf> buffer;
    std::unique_ptr<std::istream> stream;
};

using MakeSource = std::function<Source(std::string const&)>;

Source over(std::unique_ptr<std::streambuf> buffer) {
    auto stream = std::make_unique<std::istream>(buffer.get());
    return {std::move(buffer), std::move(stream)};
}

Source fileWith(std::string const& text) {
    static int number = 0;
    std::string const name = KELCL_TEST_WORK_DIR "/streams-" + std::to_string(number++ % 4) + ".txt";
    std::ofstream(name, std::ios::binary) << text;
    return {nullptr, std::make_unique<std::ifstream>(name, std::ios::binary)};
}

std::vector<std::pair<std::string, MakeSource>> const& kindsOfSources() {
    static std::vector<std::pair<std::string, MakeSource>> const kinds = {
        {"a string stream",
         [](std::string const& text) {
             return Source{nullptr, std::make_unique<std::istringstream>(text)};
         }},
        {"a file", fileWith},
        {"an unbuffered source",
         [](std::string const& text) { return over(std::make_unique<Unbuffered>(text)); }},
        {"one byte at a time",
         [](std::string const& text) { return over(std::make_unique<Chunked>(text, 1, false)); }},
        {"three bytes at a time",
         [](std::string const& text) { return over(std::make_unique<Chunked>(text, 3, false)); }},
        {"a source that fails",
         [](std::string const& text) { return over(std::make_unique<Chunked>(text, 5, true)); }},
        {"a source that fails at once",
         [](std::string const&) { return over(std::make_unique<Chunked>("", 5, true)); }},
        {"a stream without source",
         [](std::string const&) { return Source{nullptr, std::make_unique<std::istream>(nullptr)}; }},
    };
    return kinds;
}

// Models

std::string modelLine(std::istream& in, char delimiter) {
    std::string line;
    for (;;) {
        int const c = in.get();
        if (!in || Traits::to_char_type(c) == delimiter) return line;
        line += Traits::to_char_type(c);
    }
}

std::string modelWord(std::istream& in) {
    std::streamsize const width = in.width();
    in.width(0);
    std::istream::sentry const sentry(in);
    std::string word;
    if (!sentry) return word;
    std::locale const locale = in.getloc();
    auto const& characters = std::use_facet<std::ctype<char>>(locale);
    auto const most =
        width < 1 ? std::numeric_limits<std::size_t>::max() : static_cast<std::size_t>(width) - 1;
    while (word.size() < most) {
        int const c = in.peek();
        if (c == Traits::eof() || characters.is(std::ctype_base::space, Traits::to_char_type(c))) break;
        word += Traits::to_char_type(in.get());
    }
    return word;
}

/// What a read came to: its text or the kind of exception, and the state of the stream.
struct Outcome {
    std::string text;
    std::string thrown;
    std::ios::iostate state;
    std::streamsize width;

    bool operator==(Outcome const& other) const {
        return text == other.text && thrown == other.thrown && state == other.state && width == other.width;
    }
};

std::ostream& operator<<(std::ostream& out, Outcome const& outcome) {
    return out << testing::PrintToString(outcome.text) << " thrown '" << outcome.thrown << "' state "
               << static_cast<int>(outcome.state) << " width " << outcome.width;
}

template <class Read>
Outcome outcomeOf(std::istream& in, Read read) {
    Outcome outcome{"", "", {}, 0};
    try {
        outcome.text = read(in);
    } catch (std::ios::failure const&) {
        outcome.thrown = "ios failure";
    } catch (SourceFailure const&) {
        outcome.thrown = "source failure";
    }
    outcome.state = in.rdstate();
    outcome.width = in.width();
    return outcome;
}

/// What is left in the stream, whatever its state.
std::string rest(std::istream& in) {
    std::string left;
    in.exceptions(std::ios::goodbit);
    in.clear();
    if (in.rdbuf() == nullptr) return left;
    try {
        for (int c = in.rdbuf()->sbumpc(); c != Traits::eof(); c = in.rdbuf()->sbumpc())
            left += Traits::to_char_type(c);
    } catch (SourceFailure const&) {
        left += "<failed>";
    }
    return left;
}

constexpr std::ios::iostate masks[] = {std::ios::goodbit, std::ios::eofbit, std::ios::failbit,
                                       std::ios::badbit};

/// Sets what the stream throws for. A stream without source throws at once, so it keeps throwing nothing.
void throwFor(std::istream& in, std::ios::iostate mask) {
    if (in.good()) in.exceptions(mask);
}

/// Reads both ways from two streams over the same text until neither gives anything, then compares what is
/// left.
template <class Read, class Model>
void expectSameReading(MakeSource const& make, std::string const& text, Read read, Model model,
                       bool sameCount) {
    for (std::ios::iostate const mask : masks) {
        for (bool const skip : {true, false}) {
            SCOPED_TRACE(testing::Message()
                         << "throwing for " << static_cast<int>(mask) << ", skipws " << skip);
            Source const tested = make(text);
            Source const plain = make(text);
            throwFor(*tested.stream, mask);
            throwFor(*plain.stream, mask);
            if (!skip) {
                tested.stream->unsetf(std::ios::skipws);
                plain.stream->unsetf(std::ios::skipws);
            }
            for (int i = 0; i < 9; ++i) {
                Outcome const expected = outcomeOf(*plain.stream, model);
                Outcome const actual = outcomeOf(*tested.stream, read);
                ASSERT_EQ(actual, expected) << "read " << i;
                if (sameCount) {
                    ASSERT_EQ(tested.stream->gcount(), plain.stream->gcount()) << "read " << i;
                }
            }
            ASSERT_EQ(rest(*tested.stream), rest(*plain.stream));
        }
    }
}

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

// operator>>

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

TEST(StringExtraction, ReadsAVeryLongWord) {
    std::string const word(1U << 20, 'w');
    std::istringstream in(" " + word + " rest");
    DString text;
    in >> text;
    EXPECT_EQ(textOf(text), word);
}

// operator<<

TEST(StringInsertion, WritesTheTextUpToItsFirstNul) {
    std::ostringstream out;
    std::ostream& result = out << DString("abc") << '|' << DString() << '|' << DString("a\0b"s) << '|'
                               << DString('\0') << '|';
    EXPECT_EQ(&result, &out);
    EXPECT_EQ(out.str(), "abc||a||");
}

TEST(StringInsertion, PadsToTheWidthAsACharacterPointerDoes) {
    for (std::string const& text : {""s, "abc"s, "a\0bcd"s, "abcdefgh"s, std::string(200, 'x')}) {
        for (int width : {0, 1, 3, 5, 8, 150}) {
            for (auto const adjust : {std::ios::left, std::ios::right, std::ios::internal}) {
                std::ostringstream expected, actual;
                expected << std::setw(width) << std::setfill('*');
                actual << std::setw(width) << std::setfill('*');
                expected.setf(adjust, std::ios::adjustfield);
                actual.setf(adjust, std::ios::adjustfield);
                expected << text.c_str() << '|';
                actual << DString(text) << '|';
                EXPECT_EQ(actual.str(), expected.str());
                EXPECT_EQ(actual.width(), 0);
            }
        }
    }
}

TEST(StringInsertion, IntoAStreamThatHasFailedWritesNothing) {
    std::ostringstream out;
    out.setstate(std::ios::failbit);
    out << DString("abc");
    EXPECT_EQ(out.str(), "");
    std::ostream nowhere(nullptr);
    nowhere << DString("abc");
    EXPECT_TRUE(nowhere.bad());
}

TEST(StringInsertion, SetsTheStateOfAStreamThatTakesNoMore) {
    struct Full : std::streambuf {
        std::streamsize xsputn(char const*, std::streamsize) override { return 1; }
    };
    Full full;
    std::ostream expected(&full), actual(&full);
    expected << "abc";
    actual << DString("abc");
    EXPECT_EQ(actual.rdstate(), expected.rdstate());
}

} // namespace
