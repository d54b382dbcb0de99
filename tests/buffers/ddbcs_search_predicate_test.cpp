// Searches of multi-byte text with a test of the host: what the test sees, by the national-language switch.
#include "tests/buffers/ddbcs_search_support.h"

#include <kelcl/dstring.h>

#include <string>
#include <vector>

namespace {

using namespace searching;

int isLetterB(int c) { return c == 'b'; }
int isLetterA(int c) { return c == 'a'; }
int isNegative(int c) { return c < 0; }
int isAbove127(int c) { return c > 0x7F; }
int isNul(int c) { return c == 0; }
int isAnything(int) { return 1; }
int isNothing(int) { return 0; }
int throwsOut(int) { throw 5; }

TEST(MultiByteTest, WithTheSwitchOffAnyOfSeesEveryByteAndAnyButOnlyFirstBytesByDesign) {
    SwitchAt const off(0);
    mb::Sample const& trail = mb::samples().asciiTrail;
    string const two = trail.exists() ? trail.bytes : mb::samples().two.bytes;
    Owned const text = mb::buffer("a" + two + "b");
    static int wanted;
    wanted = static_cast<signed char>(two[1]);
    DStringTest const isTail([](int c) -> int { return c == wanted; });
    DStringTest const isNotTail([](int c) -> int { return c != wanted; });
    EXPECT_EQ(text->indexOfAnyOf(isTail, 1), 3U);
    EXPECT_EQ(text->indexOf(isTail, 1), 3U);
    EXPECT_EQ(text->indexOfAnyBut(isNotTail, 1), 0U);
    EXPECT_EQ(text->lastIndexOfAnyOf(isTail, farEnd), 0U);
    EXPECT_EQ(text->lastIndexOfAnyBut(isNotTail, farEnd), 0U);
}

/// Has a function, but is of a kind of its own.
class OtherKind : public DStringTest {
public:
    OtherKind() : DStringTest(plainFunction + 1, isAnything) {}
};

TEST(MultiByteTest, OfAnotherKindAcceptsNothingEvenWithoutItsClass) {
    DStringTest const copied = OtherKind(); // of exactly the base
    for (int const state : {0, 1}) {
        SwitchAt const switched(state);
        Owned const text = mb::buffer("abc");
        for (DStringTest const& test : {copied, DStringTest(nullptr)}) {
            EXPECT_EQ(text->indexOfAnyOf(test, 1), 0U);
            EXPECT_EQ(text->indexOfAnyBut(test, 1), 1U);
            EXPECT_EQ(text->lastIndexOfAnyOf(test, farEnd), 0U);
            EXPECT_EQ(text->lastIndexOfAnyBut(test, farEnd), 3U);
        }
    }
}

TEST(MultiByteTest, WithTheSwitchOffAnyOfFindsAContinuationByteAfterARefusedLead) {
    SwitchAt const off(0);
    mb::Sample const& sample = mb::samples().asciiTrail;
    if (!sample.exists()) {
        // Where all trail bytes are high, they are still bytes of their own to the test.
        Owned const text = mb::buffer("a" + mb::samples().two.bytes);
        EXPECT_EQ(text->indexOfAnyOf(DStringTest(isNegative), 1), 2U);
        return;
    }
    Owned const text = mb::buffer("z" + sample.bytes);
    static int tail;
    tail = sample.bytes[1];
    DStringTest const isTail([](int c) -> int { return c == tail; });
    EXPECT_EQ(text->indexOfAnyOf(isTail, 1), 3U);
    EXPECT_EQ(text->lastIndexOfAnyOf(isTail, farEnd), 0U); // backwards only first bytes are seen
}

TEST(MultiByteTest, BytesArriveAsSignedValuesWithTheSwitchOff) {
    SwitchAt const off(0);
    forEachSandwich([](Sandwich const& text) {
        DStringTest const negative(isNegative);
        DStringTest const above(isAbove127);
        EXPECT_EQ(text->indexOfAnyOf(negative, 1), 2U);
        EXPECT_EQ(text->indexOfAnyOf(above, 1), 0U);
        EXPECT_EQ(text->indexOfAnyBut(negative, 2), text.after);
        EXPECT_EQ(text->lastIndexOf(negative, farEnd), 2U);
        EXPECT_EQ(text->lastIndexOfAnyOf(negative, farEnd), 2U);
        EXPECT_EQ(text->lastIndexOfAnyBut(negative, 3), 1U);
        EXPECT_EQ(text->lastIndexOfAnyOf(above, farEnd), 0U);
    });
}

TEST(MultiByteTest, CharactersArriveAsWideValuesWithTheSwitchOn) {
    SwitchAt const on(1);
    for (mb::Sample const& sample : mb::samples().longCharacters()) {
        Sandwich const text(sample);
        static int value;
        value = static_cast<int>(sample.value);
        DStringTest const isIt([](int c) -> int { return c == value; });
        DStringTest const isNotIt([](int c) -> int { return c != value; });
        EXPECT_EQ(text->indexOf(isIt, 1), 2U);
        EXPECT_EQ(text->indexOfAnyOf(isIt, 0), 2U);
        EXPECT_EQ(text->indexOfAnyOf(isIt, 3), 0U);
        EXPECT_EQ(text->indexOfAnyBut(isNotIt, 1), 2U);
        EXPECT_EQ(text->indexOfAnyBut(isIt, 2), text.after);
        EXPECT_EQ(text->lastIndexOf(isIt, farEnd), 2U);
        EXPECT_EQ(text->lastIndexOfAnyOf(isIt, 3), 2U);
        EXPECT_EQ(text->lastIndexOfAnyOf(isIt, 1), 0U);
        EXPECT_EQ(text->lastIndexOfAnyBut(isNotIt, farEnd), 2U);
        EXPECT_EQ(text->lastIndexOfAnyBut(isIt, 2), 1U);
    }
}

TEST(MultiByteTest, BeginAtCharactersInBothStates) {
    inBothStates([] {
        forEachSandwich([](Sandwich const& text) {
            DStringTest const anything(isAnything);
            DStringTest const nothing(isNothing);
            DStringTest const letterA(isLetterA);
            DStringTest const letterB(isLetterB);
            EXPECT_EQ(text->indexOfAnyOf(anything, 3), text.after);
            EXPECT_EQ(text->indexOfAnyBut(nothing, 3), text.after);
            EXPECT_EQ(text->lastIndexOfAnyOf(anything, 3), 2U);
            EXPECT_EQ(text->lastIndexOfAnyBut(nothing, 3), 2U);
            EXPECT_EQ(text->indexOfAnyOf(letterB, 1), text.after);
            EXPECT_EQ(text->lastIndexOfAnyOf(letterA, farEnd), 1U);
            EXPECT_EQ(text->indexOfAnyOf(nothing, 1), 0U);
            EXPECT_EQ(text->lastIndexOfAnyOf(nothing, farEnd), 0U);
            EXPECT_EQ(text->indexOfAnyBut(anything, 1), 0U);
            EXPECT_EQ(text->lastIndexOfAnyBut(anything, farEnd), 0U);
            EXPECT_EQ(text->indexOfAnyOf(anything, text.after + 1), 0U);
            EXPECT_EQ(text->lastIndexOfAnyOf(anything, 0), 0U);
            EXPECT_EQ(text->indexOf(anything, 0), 1U);
            EXPECT_EQ(text->lastIndexOf(anything, farEnd), text.after);
        });
    });
}

TEST(MultiByteTest, EmptyTextHasNothingToTest) {
    inBothStates([] {
        Owned const text = mb::buffer("");
        DStringTest const anything(isAnything);
        EXPECT_EQ(text->indexOfAnyOf(anything, 1), 0U);
        EXPECT_EQ(text->indexOfAnyBut(anything, 0), 0U);
        EXPECT_EQ(text->lastIndexOfAnyOf(anything, farEnd), 0U);
        EXPECT_EQ(text->lastIndexOfAnyBut(anything, farEnd), 0U);
        EXPECT_EQ(mb::asMultiByte(text).windexOfAnyBut(anything, 1), 0U);
    });
}

TEST(MultiByteTest, NulIsTestedLikeAnyOtherCharacter) {
    inBothStates([] {
        string const two = mb::samples().two.bytes;
        Owned const text = mb::buffer("a" + two + string("\0b", 2));
        DStringTest const nul(isNul);
        EXPECT_EQ(text->indexOfAnyOf(nul, 1), 4U);
        EXPECT_EQ(text->lastIndexOfAnyOf(nul, farEnd), 4U);
        EXPECT_EQ(text->indexOfAnyBut(nul, 4), 5U);
        EXPECT_EQ(text->lastIndexOfAnyBut(nul, 4), 2U);
    });
}

TEST(MultiByteTest, TextThatDoesNotConvertFailsWithTheSwitchOn) {
    SwitchAt const on(1);
    string const whole = "ab" + mb::samples().invalid + "c";
    Owned const text = mb::buffer(whole);
    DStringTest const nothing(isNothing);
    for (auto const search :
         {static_cast<unsigned int (DBuffer::*)(DStringTest const&, unsigned int) const>(&DBuffer::indexOf),
          &DBuffer::indexOfAnyOf, &DBuffer::indexOfAnyBut})
        EXPECT_EQ(failureOf([&] { (void)(*text.*search)(nothing, 1); }), badSequence(725));
    for (auto const search : {static_cast<unsigned int (DBuffer::*)(DStringTest const&, unsigned int) const>(
                                  &DBuffer::lastIndexOf),
                              &DBuffer::lastIndexOfAnyOf, &DBuffer::lastIndexOfAnyBut}) {
        EXPECT_EQ(failureOf([&] { (void)(*text.*search)(nothing, 2); }), badSequence(725));
        EXPECT_EQ((*text.*search)(nothing, 4), 0U); // the start cannot be located after it
    }
    EXPECT_EQ(text->indexOfAnyOf(nothing, 4), 0U);
    EXPECT_EQ(text->indexOfAnyOf(nothing, 5), 0U);
    EXPECT_EQ(text.text(), whole);
    EXPECT_EQ(text->refs, 1U);
}

TEST(MultiByteTest, TextThatDoesNotConvertIsSearchedByBytesWithTheSwitchOff) {
    SwitchAt const off(0);
    Owned const text = mb::buffer("ab" + mb::samples().invalid + "c");
    EXPECT_EQ(text->indexOfAnyOf(DStringTest(isNegative), 1), 3U);
    EXPECT_EQ(text->lastIndexOfAnyOf(DStringTest(isNegative), farEnd), 3U);
    EXPECT_EQ(text->indexOfAnyBut(DStringTest(isNegative), 3), 4U);
    EXPECT_EQ(text->lastIndexOfAnyBut(DStringTest(isNegative), 3), 2U);
}

TEST(MultiByteTest, ThatThrowsLeavesTheTextAsItWas) {
    inBothStates([] {
        forEachSandwich([](Sandwich const& text) {
            DStringTest const thrower(throwsOut);
            EXPECT_THROW((void)text->indexOfAnyOf(thrower, 1), int);
            EXPECT_THROW((void)text->indexOfAnyBut(thrower, 1), int);
            EXPECT_THROW((void)text->lastIndexOfAnyOf(thrower, farEnd), int);
            EXPECT_THROW((void)text->lastIndexOfAnyBut(thrower, farEnd), int);
            EXPECT_THROW((void)mb::asMultiByte(text.owned).windexOfAnyBut(thrower, 1), int);
            EXPECT_EQ(text.owned.text(), "a" + text.character + "b");
            EXPECT_EQ(text->refs, 1U);
        });
    });
}

TEST(MultiByteWideTest, SeesWideValuesWhateverTheSwitch) {
    inBothStates([] {
        for (mb::Sample const& sample : mb::samples().longCharacters()) {
            Sandwich const text(sample);
            DDBCSBuffer const& buffer = mb::asMultiByte(text.owned);
            static int value;
            value = static_cast<int>(sample.value);
            DStringTest const isNotIt([](int c) -> int { return c != value; });
            DStringTest const isIt([](int c) -> int { return c == value; });
            EXPECT_EQ(buffer.windexOfAnyBut(isNotIt, 0), 2U);
            EXPECT_EQ(buffer.windexOfAnyBut(isNotIt, 3), 0U);
            EXPECT_EQ(buffer.windexOfAnyBut(isIt, 2), text.after);
            EXPECT_EQ(buffer.windexOfAnyBut(isIt, text.after + 1), 0U);
            EXPECT_EQ(buffer.windexOfAnyBut(DStringTest(isAnything), 1), 0U);
        }
    });
}

TEST(MultiByteWideTest, TestsBytesThatAreNoCharacterAsSignedValuesAndGoesOn) {
    inBothStates([] {
        string const bad = mb::samples().invalid;
        string const two = mb::samples().two.bytes;
        Owned const text = mb::buffer("a" + bad + two + "b");
        DDBCSBuffer const& buffer = mb::asMultiByte(text);
        static int badValue;
        badValue = static_cast<signed char>(bad[0]);
        EXPECT_EQ(buffer.windexOfAnyBut(DStringTest([](int c) -> int { return c != badValue; }), 1), 2U);
        EXPECT_EQ(
            buffer.windexOfAnyBut(DStringTest([](int c) -> int { return c == badValue || c == 'a'; }), 1),
            3U);
        EXPECT_EQ(
            buffer.windexOfAnyBut(DStringTest([](int c) -> int { return c == badValue || c > 0x7F; }), 2),
            5U);
    });
}

TEST(MultiByteTest, AsciiBytesHaveTheValuesOfTheLocale) {
    SwitchAt const on(1);
    // In Shift JIS a backslash byte is the yen sign, a tilde byte the overline.
    bool const isShiftJis = mb::hasYenSign();
    static int backslash;
    static int tilde;
    backslash = isShiftJis ? 0xA5 : 0x5C;
    tilde = isShiftJis ? 0x203E : 0x7E;
    Owned const text = mb::buffer("a\\~");
    EXPECT_EQ(text->indexOfAnyOf(DStringTest([](int c) -> int { return c == backslash; }), 1), 2U);
    EXPECT_EQ(text->indexOfAnyOf(DStringTest([](int c) -> int { return c == tilde; }), 1), 3U);
    EXPECT_EQ(mb::asMultiByte(text).windexOfAnyBut(DStringTest([](int c) -> int { return c != tilde; }), 1),
              3U);
}

} // namespace
