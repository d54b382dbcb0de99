// Searches of multi-byte text for patterns: where they begin, and where they find what they search for.
#include "tests/buffers/ddbcs_search_support.h"

#include <kelcl/dnlsutil.h>
#include <kelcl/dstring.h>

#include <string>
#include <vector>

namespace {

using namespace searching;

// Start positions

TEST(MultiByteStart, ForwardSearchInsideACharacterBeginsAtTheNextOne) {
    forEachSandwich([](Sandwich const& text) {
        EXPECT_EQ(text->startSearch(0, 1), 1U);
        EXPECT_EQ(text->startSearch(1, 1), 1U);
        EXPECT_EQ(text->startSearch(2, 1), 2U);
        for (unsigned int inside = 3; inside < text.after; ++inside)
            EXPECT_EQ(text->startSearch(inside, 1), text.after);
        EXPECT_EQ(text->startSearch(text.after, 1), text.after);
        EXPECT_EQ(text->startSearch(text.after + 1, 1), 0U);
        EXPECT_EQ(text->startSearch(farEnd, 1), 0U);
    });
}

TEST(MultiByteStart, ForwardSearchInsideTheLastCharacterBeginsNowhere) {
    for (mb::Sample const& sample : mb::samples().longCharacters()) {
        Owned const text = mb::buffer("a" + sample.bytes);
        EXPECT_EQ(text->startSearch(2, 1), 2U);
        EXPECT_EQ(text->startSearch(3, 1), 0U);
    }
}

TEST(MultiByteStart, ForwardSearchNeedsRoomForThePatternBeforeItMoves) {
    forEachSandwich([](Sandwich const& text) {
        EXPECT_EQ(text->startSearch(2, text.size + 1), 2U);
        EXPECT_EQ(text->startSearch(2, text.size + 2), 0U);
        EXPECT_EQ(text->startSearch(3, text.size), text.after); // room at 3, though none is left after it
        EXPECT_EQ(text->startSearch(1, farEnd), 0U);
    });
}

TEST(MultiByteStart, BackwardSearchInsideACharacterBeginsAtItsFirstByte) {
    forEachSandwich([](Sandwich const& text) {
        EXPECT_EQ(text->startBackwardsSearch(0, 1), 0U);
        EXPECT_EQ(text->startBackwardsSearch(1, 1), 1U);
        for (unsigned int inside = 2; inside < text.after; ++inside)
            EXPECT_EQ(text->startBackwardsSearch(inside, 1), 2U);
        EXPECT_EQ(text->startBackwardsSearch(farEnd, 1), text.after);
        EXPECT_EQ(text->startBackwardsSearch(farEnd, 2), 2U);
        EXPECT_EQ(text->startBackwardsSearch(farEnd, text.size + 2), 1U);
        EXPECT_EQ(text->startBackwardsSearch(farEnd, text.size + 3), 0U);
    });
}

TEST(MultiByteStart, EmptyTextHasNoStart) {
    Owned const text = mb::buffer("");
    EXPECT_EQ(text->startSearch(0, 0), 0U);
    EXPECT_EQ(text->startSearch(1, 1), 0U);
    EXPECT_EQ(text->startBackwardsSearch(1, 0), 0U);
}

TEST(MultiByteStart, BytesThatAreNoCharacterAreStartsOfTheirOwn) {
    Owned const text = mb::buffer("a" + mb::samples().invalid + mb::samples().invalid + "b");
    for (unsigned int at = 1; at <= 4; ++at) {
        EXPECT_EQ(text->startSearch(at, 1), at);
        EXPECT_EQ(text->startBackwardsSearch(at, 1), at);
    }
}

// Patterns

TEST(MultiBytePattern, IsFoundAtCharacterStartsOnly) {
    forEachSandwich([](Sandwich const& text) {
        EXPECT_EQ(indexOf(text.owned, text.character, 1), 2U);
        EXPECT_EQ(indexOf(text.owned, text.character + "b", 0), 2U);
        EXPECT_EQ(indexOf(text.owned, text.character, 3), 0U);
        string const tail = text.character.substr(1) + "b";
        EXPECT_EQ(indexOf(text.owned, tail, 1), 0U);
        EXPECT_EQ(lastIndexOf(text.owned, tail, farEnd), 0U);
        EXPECT_EQ(lastIndexOf(text.owned, text.character, farEnd), 2U);
        EXPECT_EQ(lastIndexOf(text.owned, text.character, 3), 2U);
        EXPECT_EQ(lastIndexOf(text.owned, text.character, 1), 0U);
        EXPECT_EQ(lastIndexOf(text.owned, "b", farEnd), text.after);
    });
}

TEST(MultiBytePattern, MayEndInsideACharacter) {
    forEachSandwich([](Sandwich const& text) {
        string const cut = "a" + text.character.substr(0, 1);
        EXPECT_EQ(indexOf(text.owned, cut, 1), 1U);
        EXPECT_EQ(lastIndexOf(text.owned, cut, farEnd), 1U);
    });
}

TEST(MultiBytePattern, OfOneByteIsAnyCharacterThatBeginsWithIt) {
    forEachSandwich([](Sandwich const& text) {
        string const lead = text.character.substr(0, 1);
        EXPECT_EQ(indexOf(text.owned, lead, 1), 2U);
        EXPECT_EQ(indexOfAnyOf(text.owned, lead, 1), 2U);
        EXPECT_EQ(lastIndexOf(text.owned, lead, farEnd), 2U);
        EXPECT_EQ(lastIndexOfAnyOf(text.owned, lead, farEnd), 2U);
    });
}

TEST(MultiBytePattern, OneByteThatIsOnlyTheTailOfACharacterIsNotFound) {
    mb::Sample const& sample =
        mb::samples().asciiTrail.exists() ? mb::samples().asciiTrail : mb::samples().two;
    Sandwich const text(sample);
    string const tail = sample.bytes.substr(1, 1);
    EXPECT_EQ(indexOf(text.owned, tail, 1), 0U);
    EXPECT_EQ(indexOfAnyOf(text.owned, tail + "z", 1), 0U);
    EXPECT_EQ(lastIndexOf(text.owned, tail, farEnd), 0U);
    EXPECT_EQ(lastIndexOfAnyOf(text.owned, tail + "z", farEnd), 0U);
}

TEST(MultiBytePattern, WithoutBytesOrWithoutRoomIsNotFound) {
    forEachSandwich([](Sandwich const& text) {
        EXPECT_EQ(indexOf(text.owned, "", 1), 0U);
        EXPECT_EQ(lastIndexOf(text.owned, "", farEnd), 0U);
        EXPECT_EQ(indexOf(text.owned, "b+", text.after), 0U);
        EXPECT_EQ(indexOf(text.owned, "a" + text.character + "b+", 1), 0U);
        EXPECT_EQ(lastIndexOf(text.owned, "a" + text.character + "b+", farEnd), 0U);
        EXPECT_EQ(indexOf(text.owned, "ab", 3), 0U); // after the move to b there is no room
        EXPECT_EQ(indexOf(text.owned, "a", farEnd), 0U);
        EXPECT_EQ(lastIndexOf(text.owned, "a", 0), 0U);
    });
}

TEST(MultiBytePattern, RepeatedCharactersGiveTheFirstAndTheLast) {
    for (mb::Sample const& sample : mb::samples().longCharacters()) {
        string const c = sample.bytes;
        unsigned int const n = mb::lengthOf(c);
        Owned const text = mb::buffer(c + c + c);
        EXPECT_EQ(indexOf(text, c + c, 1), 1U);
        EXPECT_EQ(indexOf(text, c + c, 2), n + 1);
        EXPECT_EQ(indexOf(text, c + c, n + 2), 0U);
        EXPECT_EQ(lastIndexOf(text, c + c, farEnd), n + 1);
        EXPECT_EQ(lastIndexOf(text, c + c, n), 1U);
        EXPECT_EQ(lastIndexOf(text, c, farEnd), 2 * n + 1);
    }
}

// Strings

TEST(MultiByteString, SearchesGoThroughTheMultiByteBuffer) {
    forEachSandwich([](Sandwich const& sandwich) {
        DString const text("a" + sandwich.character + "b");
        EXPECT_EQ(text.indexOf(sandwich.character), 2U);
        EXPECT_EQ(text.indexOf(sandwich.character, 3), 0U);
        EXPECT_EQ(text.indexOf('b', 3), sandwich.after);
        EXPECT_EQ(text.indexOfAnyOf("xb" + sandwich.character, 3), sandwich.after);
        EXPECT_EQ(text.indexOfAnyBut("ab"), 2U);
        EXPECT_EQ(text.lastIndexOf(sandwich.character), 2U);
        EXPECT_EQ(text.lastIndexOfAnyOf('a', 3), 1U);
        EXPECT_EQ(text.lastIndexOfAnyBut("b" + sandwich.character), 1U);
        EXPECT_EQ(text.subString(3), DString(string(sandwich.size - 1, ' ') + "b"));
    });
}

TEST(MultiByteWords, EndAfterAllBytesOfTheLastCharacter) {
    string const words = "a  b" + mb::samples().wide.bytes;
    DString const text(" " + words + " ");
    EXPECT_EQ(operations::contentsOf(text.words(1, 2)), words);
    EXPECT_EQ(operations::contentsOf(text.words(2, 9)), "b" + mb::samples().wide.bytes);
}

TEST(CharLength, GoesOnWithinACharacterThatItsStateHasBegun) {
    string const character = mb::samples().wide.bytes;
    std::mbstate_t state{};
    ASSERT_EQ(std::mbrlen(character.data(), 1, &state), mb::incompleteSequence);
    EXPECT_EQ(DDBCSBuffer::charLength(character.c_str() + 1, &state), static_cast<int>(character.size()) - 1);
    EXPECT_NE(std::mbsinit(&state), 0) << "the character is over";
}

TEST(WideStrip, OfWhiteSpaceAsksTheLocaleAboutWideCharacters) {
    SwitchAt const on(1);
    string const kept = mb::samples().wide.bytes + "a" + mb::samples().wide.bytes;
    DString text(" \t" + kept + "\n ");
    EXPECT_EQ(operations::contentsOf(text.strip()), kept);
    if (!mb::isUtf8()) return;
    DString spaced("\xE3\x80\x80 a \xE3\x80\x80"); // ideographic spaces
    EXPECT_EQ(operations::contentsOf(spaced.strip()), "a");
}

TEST(WideOccurrences, OfATestAskItOnceForEachCharacter) {
    SwitchAt const on(1);
    static std::vector<int> asked;
    DStringTest const notTheLetter([](int c) {
        asked.push_back(c);
        return c == 'a' ? 0 : 1;
    });
    mb::Sample const& two = mb::samples().two;
    std::vector<int> const values{static_cast<int>(two.value), 'a', static_cast<int>(two.value), 'b'};
    DString const text(two.bytes + "a" + two.bytes + "b");
    asked.clear();
    EXPECT_EQ(text.occurrencesOf(notTheLetter), 3u);
    EXPECT_EQ(asked, values);
    asked.clear();
    EXPECT_EQ(text.occurrencesOf(notTheLetter, 2), 2u) << "from within the first character";
    EXPECT_EQ(asked.size(), 3u);
    EXPECT_EQ(text.occurrencesOf(notTheLetter, 7), 0u) << "from past the end";
}

// Where a walk from far in front would be needed to tell characters apart, searching on after each of many
// matches must not begin that walk anew: this would take minutes.
TEST(ManyMatches, AreFoundInTextWithoutAscii) {
    SwitchAt const off(0);
    constexpr unsigned int count = 200000;
    string const two = mb::samples().two.bytes;
    string text;
    for (unsigned int i = 0; i < count; ++i)
        text += two;
    DString subject(text);
    EXPECT_EQ(subject.occurrencesOf(two), count);
    subject.change(two, "x");
    EXPECT_TRUE(operations::contentsOf(subject) == string(count, 'x'));
}

TEST(WidePattern, IsFoundInTextFullOfAlmostMatches) {
    constexpr unsigned int half = 200000;
    string const text(2 * half, 'a');
    DWBuffer const wide((text + "b").data(), 2 * half + 1);
    DWBuffer const ended((text.substr(half) + "b").data(), half + 1);
    DWBuffer const begun(("b" + text.substr(half)).data(), half + 1);
    EXPECT_EQ(wide.positionOf(ended, 1), half + 1);
    EXPECT_EQ(wide.positionOf(begun, 1), 0U);
    EXPECT_EQ(wide.lastPositionOf(ended, 2 * half), half + 1);
    EXPECT_EQ(wide.lastPositionOf(begun, 2 * half), 0U);
}

} // namespace
