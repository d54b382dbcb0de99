// Positions in raw text by bytes and by characters.
#include "tests/characters/dnlsutil_support.h"

#include <kelcl/dnlsutil.h>

#include <climits>

namespace {

using mb::lengthOf;
using mb::Positions;

/// `n` as the number of a character and as a position.
void expectPositions(char const* s, unsigned int length, unsigned int n, Positions const& model) {
    EXPECT_EQ(findBytePos(s, length, n), model.bytePos(n)) << n;
    EXPECT_EQ(findCharNum(s, length, n), model.charNum(n)) << n;
    EXPECT_EQ(findCurPos(s, length, n), model.curPos(n)) << n;
    EXPECT_EQ(findNextPos(s, length, n), model.nextPos(n)) << n;
    EXPECT_EQ(findNextCharNum(s, length, n), model.nextCharNum(n)) << n;
}

TEST(Positions, AreThoseOfAWalkThroughTheCharacters) {
    mb::forRandomTexts(1, 4000, [](std::string const& text, unsigned int length) {
        Positions const model(text, length);
        for (unsigned int n = 0; n <= length + 2; ++n)
            expectPositions(text.data(), length, n, model);
    });
}

TEST(Positions, OfSingleByteTextAreTheNumbersOfItsBytes) {
    EXPECT_EQ(findBytePos("abc", 3, 3), 3u);
    EXPECT_EQ(findBytePos("abc", 3, 4), 0u);
    EXPECT_EQ(findCharNum("abc", 3, 2), 2u);
    EXPECT_EQ(findCurPos("abc", 3, 2), 2u);
    EXPECT_EQ(findNextPos("abc", 3, 2), 3u);
    EXPECT_EQ(findNextPos("abc", 3, 3), 0u);
    EXPECT_EQ(findNextCharNum("abc", 3, 3), 3u);
}

TEST(Positions, CountANulInsideTheTextAsACharacterOfOneByte) {
    EXPECT_EQ(findBytePos("a\0b", 3, 3), 3u);
    EXPECT_EQ(findCharNum("a\0b", 3, 3), 3u);
    EXPECT_EQ(findCurPos("a\0b", 3, 2), 2u);
    EXPECT_EQ(findNextPos("a\0b", 3, 2), 3u);
    EXPECT_EQ(findNextCharNum("a\0b", 3, 2), 2u);
}

TEST(Positions, InsideATwoByteCharacterAreThoseOfTheCharacter) {
    for (mb::Sample const& two : {mb::samples().two, mb::samples().wide}) {
        if (two.bytes.size() != 2) continue;
        std::string const text = "a" + two.bytes + "bc";
        char const* const s = text.c_str();
        EXPECT_EQ(findCurPos(s, 5, 3), 2u);
        EXPECT_EQ(findNextPos(s, 5, 2), 4u);
        EXPECT_EQ(findNextPos(s, 5, 3), 4u);
        EXPECT_EQ(findCharNum(s, 5, 3), 2u);
        EXPECT_EQ(findNextCharNum(s, 5, 3), 3u);
        EXPECT_EQ(findNextCharNum(s, 5, 2), 2u);
        EXPECT_EQ(findBytePos(s, 5, 3), 4u);
        EXPECT_EQ(findNextCharNum(s, 3, 3), 0u) << "no character follows";
        EXPECT_EQ(findNextPos(s, 3, 2), 0u) << "no character follows";
    }
}

TEST(Positions, OfTextOfOneByteAreOneWhateverTheByteIs) {
    for (int value = 0; value < 256; ++value) {
        char const text[2] = {static_cast<char>(value), '\0'};
        EXPECT_EQ(findBytePos(text, 1, 1), 1u) << value;
        EXPECT_EQ(findBytePos(text, 1, 2), 0u) << value;
    }
}

TEST(Positions, OfNoTextAndOfPositionsOutsideAreZero) {
    for (auto* const find : {findBytePos, findCharNum, findCurPos, findNextPos, findNextCharNum}) {
        EXPECT_EQ(find(nullptr, 3, 1), 0u);
        EXPECT_EQ(find("abc", 3, 0), 0u);
        EXPECT_EQ(find("abc", 3, 4), 0u);
        EXPECT_EQ(find("abc", 3, UINT_MAX), 0u);
        EXPECT_EQ(find("", 0, 1), 0u);
        EXPECT_EQ(find("", 0, 0), 0u);
    }
}

TEST(Positions, AfterAnInvalidByteAreZeroAndThoseBeforeItAreKnown) {
    if (!mb::isMultiByte()) {
        EXPECT_EQ(findCharNum("abc", 3, 3), 3u);
        return;
    }
    std::string const text = "ab" + mb::samples().invalid + "cd";
    char const* const s = text.c_str();
    EXPECT_EQ(findCharNum(s, 5, 2), 2u);
    EXPECT_EQ(findBytePos(s, 5, 3), 3u) << "its start is known without looking at it";
    EXPECT_EQ(findNextPos(s, 5, 2), 3u);
    EXPECT_EQ(findBytePos(s, 5, 4), 0u);
    for (unsigned int position : {3u, 4u, 5u}) {
        EXPECT_EQ(findCharNum(s, 5, position), 0u);
        EXPECT_EQ(findCurPos(s, 5, position), 0u);
        EXPECT_EQ(findNextPos(s, 5, position), 0u);
        EXPECT_EQ(findNextCharNum(s, 5, position), 0u);
    }
}

TEST(Positions, LookPastTheTextToCompleteItsLastCharacterByDesign) {
    for (mb::Sample const& sample : mb::samples().longCharacters()) {
        std::string const text = "a" + sample.bytes;
        unsigned int const cut = lengthOf(text) - 1;
        EXPECT_EQ(findCharNum(text.c_str(), cut, 2), 2u);
        EXPECT_EQ(findCurPos(text.c_str(), cut, cut), 2u);
        EXPECT_EQ(findNextPos(text.c_str(), cut, 2), 0u);
    }
}

TEST(Positions, NeedNoMoreThanATerminatingNul) {
    for (std::string const& part : mb::parts())
        for (std::size_t size = 1; size <= part.size(); ++size) {
            std::string const bytes = "a" + part.substr(0, size);
            mb::AtMemoryEnd const text(bytes + '\0');
            unsigned int const length = lengthOf(bytes);
            Positions const model(bytes + std::string(16, '\0'), length);
            for (unsigned int n = 1; n <= length; ++n)
                expectPositions(text.data(), length, n, model);
        }
}

} // namespace
