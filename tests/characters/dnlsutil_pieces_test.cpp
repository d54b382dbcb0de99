// Pieces of raw text: remainders from a start on, and fields of a size, with pads in place of cut characters.
#include "tests/characters/dnlsutil_support.h"

#include <kelcl/dnlsutil.h>

#include <optional>

namespace {

using namespace std::string_literals;
using mb::badSequence;
using mb::hex;
using mb::invalidLine;
using mb::lengthOf;
using mb::nothing;

/// What the cutting functions find before they write.
struct Piece {
    unsigned long failure = 0; ///< The line of the exception.
    bool isLocated = false;
    std::size_t pads = 0;
    std::vector<std::string> characters; ///< Converted to wide and back; those of two values as they are.
};
Piece pieceOf(std::string const& text, unsigned int length, unsigned int from) {
    Piece piece;
    mb::Positions const positions(text, length);
    unsigned int const number = positions.nextCharNum(from);
    unsigned int const position = positions.bytePos(number);
    if (position == 0) return piece;
    piece.isLocated = true;
    mb::Conversion const conversion = mb::convertedWithPairs(std::string_view(text).substr(0, length));
    piece.failure = conversion.failure;
    if (piece.failure != 0) return piece;
    piece.pads = position - from;
    for (std::size_t i = number - 1; i < conversion.bytes.size(); ++i)
        piece.characters.push_back(conversion.isPair[i] ? conversion.bytes[i]
                                                        : mb::bytesOf(conversion.wide[i]));
    return piece;
}

std::optional<std::string> expectedRemainder(std::string const& text, unsigned int length, unsigned int start,
                                             unsigned long& failure) {
    if (start > length) return "";
    unsigned int const from = std::max(start, 1u);
    if (from > length) return "";
    Piece const piece = pieceOf(text, length, from);
    failure = piece.failure;
    if (failure != 0) return std::nullopt;
    if (!piece.isLocated) return std::string(length - from + 1, '*');
    std::string remainder(piece.pads, '*');
    for (std::string const& bytes : piece.characters)
        remainder += bytes;
    return remainder;
}

/// Whether the bytes are the expected ones, up to the last that may have been written to.
testing::AssertionResult isExpected(std::string const& bytes, std::string const& expected) {
    if (bytes == expected) return testing::AssertionSuccess();
    return testing::AssertionFailure() << hex(bytes) << ", not " << hex(expected);
}

TEST(Remainder, IsWhatTheCharactersAfterTheStartConvertTo) {
    mb::forRandomTexts(4, 2500, [](std::string const& text, unsigned int length) {
        for (unsigned int start = 0; start <= length + 2; ++start) {
            unsigned long line = 0;
            std::optional<std::string> const expected = expectedRemainder(text, length, start, line);
            std::string out(2 * length + 4, '#');
            unsigned int written = 0;
            operations::Failure const failure = operations::failureOf(
                [&] { written = getRemainString(text.data(), length, start, '*', out.data()); });
            EXPECT_EQ(failure, line == 0 ? nothing() : badSequence(line)) << start;
            std::string const bytes = expected.value_or("");
            EXPECT_EQ(written, bytes.size()) << start;
            EXPECT_TRUE(isExpected(out, bytes + std::string(out.size() - bytes.size(), '#'))) << start;
        }
    });
}

TEST(Remainder, IsTheWholeTextFromZeroAndNothingPastTheEnd) {
    char out[] = "#########";
    EXPECT_EQ(getRemainString("a\0b", 3, 0, '*', out), 3u);
    EXPECT_EQ(std::string(out, 4), "a\0b#"s);
    EXPECT_EQ(getRemainString("abc", 3, 4, '*', out), 0u);
    EXPECT_EQ(getRemainString("", 0, 0, '*', out), 0u);
    EXPECT_EQ(getRemainString(nullptr, 0, 0, '*', out), 0u);
    EXPECT_EQ(std::string(out, 4), "a\0b#"s);
}

TEST(Remainder, OfNoTextIsAllPad) {
    std::string out(5, '#');
    EXPECT_EQ(getRemainString(nullptr, 3, 2, '*', out.data()), 2u);
    EXPECT_EQ(out, "**###");
    EXPECT_EQ(getRemainString(nullptr, 3, 0, '*', out.data()), 3u);
    EXPECT_EQ(out, "***##");
}

TEST(Remainder, BeginsWithPadsInPlaceOfACutCharacter) {
    for (mb::Sample const& sample : mb::samples().longCharacters()) {
        std::string const text = "a" + sample.bytes + "b";
        for (std::size_t place = 1; place < sample.bytes.size(); ++place) {
            std::string out(text.size(), '#');
            std::size_t const pads = sample.bytes.size() - place;
            EXPECT_EQ(getRemainString(text.c_str(), lengthOf(text), static_cast<unsigned int>(2 + place), '*',
                                      out.data()),
                      pads + 1);
            EXPECT_EQ(out.substr(0, pads + 1), std::string(pads, '*') + "b");
        }
    }
}

TEST(Remainder, OfTextWithABadSequenceIsAllPadAfterItAndFailsBeforeIt) {
    if (!mb::isMultiByte()) return;
    std::string const text = "ab" + mb::samples().invalid + "cd";
    std::string out(8, '#');
    EXPECT_EQ(getRemainString(text.c_str(), 5, 4, '*', out.data()), 2u);
    EXPECT_EQ(out, "**######");
    out.assign(8, '#');
    EXPECT_EQ(operations::failureOf([&] { getRemainString(text.c_str(), 5, 1, '*', out.data()); }),
              badSequence(invalidLine));
    EXPECT_EQ(out, "########");
}

TEST(Remainder, NeedsNoMoreThanATerminatingNul) {
    for (mb::Sample const& sample : mb::samples().characters()) {
        mb::AtMemoryEnd const text(sample.bytes + sample.bytes + '\0');
        unsigned int const length = 2 * lengthOf(sample.bytes);
        std::string out(length, '#');
        EXPECT_EQ(getRemainString(text.data(), length, 1, '*', out.data()), length);
        EXPECT_EQ(out, sample.bytes + sample.bytes);
    }
}

/// A field of `count` bytes; `piece` is what is found from its start on.
std::string expectedField(Piece const& piece, unsigned int count) {
    std::string field(std::min<std::size_t>(piece.pads, count), '*');
    for (std::string const& bytes : piece.characters) {
        if (field.size() + bytes.size() > count) break;
        field += bytes;
    }
    field.resize(count, '*');
    return field;
}

TEST(Field, HoldsTheWholeCharactersThatFitAndPads) {
    mb::forRandomTexts(5, 800, [](std::string const& text, unsigned int length) {
        for (unsigned int start = 0; start <= length + 2; ++start) {
            unsigned int const from = std::max(start, 1u);
            Piece const piece = from <= length ? pieceOf(text, length, from) : Piece();
            for (unsigned int count = 0; count <= length + 2; ++count) {
                if (piece.failure != 0 && count > 2) break; // failures are slow
                unsigned long const line = count == 0 ? 0 : piece.failure;
                std::string out(count + 2, '#');
                char* result = out.data();
                operations::Failure const failure = operations::failureOf(
                    [&] { result = getSubString(text.data(), length, start, '*', out.data(), count); });
                EXPECT_EQ(failure, line == 0 ? nothing() : badSequence(line)) << start << ' ' << count;
                EXPECT_EQ(result, out.data());
                EXPECT_TRUE(isExpected(
                    out, (line == 0 ? expectedField(piece, count) : std::string(count, '#')) + "##"))
                    << start << ' ' << count;
            }
        }
    });
}

TEST(Field, OfNoTextAndPastTheEndIsAllPad) {
    std::string out(5, '#');
    EXPECT_EQ(getSubString(nullptr, 3, 1, '*', out.data(), 4), out.data());
    EXPECT_EQ(out, "****#");
    EXPECT_EQ(getSubString("abc", 3, 4, '-', out.data(), 2), out.data());
    EXPECT_EQ(out, "--**#");
    EXPECT_EQ(getSubString("abc", 3, 1, '.', out.data(), 0), out.data());
    EXPECT_EQ(out, "--**#");
    EXPECT_EQ(getSubString("", 0, 0, '+', out.data(), 3), out.data());
    EXPECT_EQ(out, "+++*#");
    EXPECT_EQ(getSubString("a\0bcd", 5, 2, '*', out.data(), 5), out.data());
    EXPECT_EQ(out, "\0bcd*"s);
}

TEST(Field, CutsNoCharacterAtEitherEdge) {
    for (mb::Sample const& sample : mb::samples().longCharacters()) {
        if (sample.bytes.size() != 2) continue;
        std::string const text = "a" + sample.bytes + "b" + sample.bytes;
        std::string out(6, '#');
        getSubString(text.c_str(), 6, 3, '*', out.data(), 3);
        EXPECT_EQ(out, "*b*###");
        getSubString(text.c_str(), 6, 3, '*', out.data(), 4);
        EXPECT_EQ(out, "*b" + sample.bytes + "##");
        getSubString(text.c_str(), 6, 3, '*', out.data(), 1);
        EXPECT_EQ(out, "*b" + sample.bytes + "##");
    }
}

TEST(Field, NeedsNoMoreThanATerminatingNul) {
    for (std::string const& part : mb::wholeParts()) {
        mb::AtMemoryEnd const text(part + '\0');
        std::string out(part.size() + 1, '#');
        getSubString(text.data(), lengthOf(part), 1, '*', out.data(), lengthOf(part) + 1);
        EXPECT_EQ(out, part + '*');
    }
}

} // namespace
