// What the tests of reading from streams share: streams that give their characters in every way, and the
// comparison of a read with a plain model. No tests are here.
#ifndef KELCL_TESTS_STRING_STREAMS_SUPPORT_H
#define KELCL_TESTS_STRING_STREAMS_SUPPORT_H

#include "tests/buffers/buffer_support.h"

#include <algorithm>
#include <fstream>
#include <functional>
#include <limits>
#include <locale>
#include <memory>
#include <sstream>

namespace support {

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

inline Source over(std::unique_ptr<std::streambuf> buffer) {
    auto stream = std::make_unique<std::istream>(buffer.get());
    return {std::move(buffer), std::move(stream)};
}

inline Source fileWith(std::string const& text) {
    static int number = 0;
    std::string const name = KELCL_TEST_WORK_DIR "/streams-" + std::to_string(number++ % 4) + ".txt";
    std::ofstream(name, std::ios::binary) << text;
    return {nullptr, std::make_unique<std::ifstream>(name, std::ios::binary)};
}

inline std::vector<std::pair<std::string, MakeSource>> const& kindsOfSources() {
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

inline std::string modelLine(std::istream& in, char delimiter) {
    std::string line;
    for (;;) {
        int const c = in.get();
        if (!in || Traits::to_char_type(c) == delimiter) return line;
        line += Traits::to_char_type(c);
    }
}

inline std::string modelWord(std::istream& in) {
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

inline std::ostream& operator<<(std::ostream& out, Outcome const& outcome) {
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
inline std::string rest(std::istream& in) {
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

inline constexpr std::ios::iostate masks[] = {std::ios::goodbit, std::ios::eofbit, std::ios::failbit,
                                              std::ios::badbit};

/// Sets what the stream throws for. A stream without source throws at once, so it keeps throwing nothing.
inline void throwFor(std::istream& in, std::ios::iostate mask) {
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

} // namespace support

#endif
