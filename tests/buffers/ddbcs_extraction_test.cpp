// Extraction from multi-byte text: what becomes of characters that are cut, and how the national-language
// switch changes it.
#include "tests/buffers/ddbcs_search_support.h"

#include <string>

namespace {

using namespace searching;

TEST(MultiByteSubString, TailBlanksTheBytesOfACutCharacterInBothStates) {
    inBothStates([] {
        forEachSandwich([](Sandwich const& text) {
            string const whole = "a" + text.character + "b";
            EXPECT_EQ(subString(text.owned, 0), whole);
            EXPECT_EQ(subString(text.owned, 1), whole);
            EXPECT_EQ(subString(text.owned, 2), text.character + "b");
            for (unsigned int inside = 3; inside < text.after; ++inside)
                EXPECT_EQ(subString(text.owned, inside), string(text.after - inside, ' ') + "b");
            EXPECT_EQ(subString(text.owned, text.after), "b");
            EXPECT_EQ(subString(text.owned, text.after + 1), "");
            EXPECT_EQ(subString(text.owned, farEnd), "");
        });
    });
}

TEST(MultiByteSubString, TailOfAnEmptyTextIsEmpty) {
    inBothStates([] {
        EXPECT_EQ(subString(mb::buffer(""), 0), "");
        EXPECT_EQ(subString(mb::buffer(""), 1), "");
    });
}

TEST(MultiByteSubString, TailInsideTheLastCharacterIsAllBlank) {
    inBothStates([] {
        string const two = mb::samples().two.bytes;
        EXPECT_EQ(subString(mb::buffer("a" + two), 3), " ");
    });
}

TEST(MultiByteSubString, TailOfTextThatIsInvalidBeforeTheStartIsBlank) {
    inBothStates([] { EXPECT_EQ(subString(mb::buffer(mb::samples().invalid + "abc"), 2), "   "); });
}

TEST(MultiByteSubString, TailOfTextThatIsInvalidAfterTheStartFailsInBothStates) {
    inBothStates([] {
        Owned const text = mb::buffer("ab" + mb::samples().invalid + "c");
        EXPECT_EQ(failureOf([&] { subString(text, 1); }), badSequence(725));
        EXPECT_EQ(text->refs, 1U);
        EXPECT_EQ(text.text(), "ab" + mb::samples().invalid + "c");
    });
}

TEST(MultiByteSubString, PieceNeverSplitsACharacterInBothStates) {
    inBothStates([] {
        forEachSandwich([](Sandwich const& text) {
            EXPECT_EQ(subString(text.owned, 1, text.after, '.'), "a" + text.character + "b");
            EXPECT_EQ(subString(text.owned, 0, 1, '.'), "a");
            EXPECT_EQ(subString(text.owned, 2, text.size, '.'), text.character);
            for (unsigned int count = 1; count < text.size; ++count) {
                EXPECT_EQ(subString(text.owned, 2, count, '.'), string(count, '.'));
                EXPECT_EQ(subString(text.owned, 1, count + 1, '.'), "a" + string(count, '.'));
                EXPECT_EQ(subString(text.owned, 2 + count, text.size - count + 1, '.'),
                          string(text.size - count, '.') + "b");
                EXPECT_EQ(subString(text.owned, 2 + count, 1, '.'), ".");
            }
            EXPECT_EQ(subString(text.owned, text.after, 3, '.'), "b..");
            EXPECT_EQ(subString(text.owned, text.after + 1, 3, '.'), "...");
            EXPECT_EQ(subString(text.owned, farEnd, 3, '.'), "...");
            EXPECT_EQ(subString(text.owned, 2, 0, '.'), "");
        });
    });
}

TEST(MultiByteSubString, PieceOfAnEmptyTextIsAllPad) {
    inBothStates([] {
        EXPECT_EQ(subString(mb::buffer(""), 1, 2, '.'), "..");
        EXPECT_EQ(subString(mb::buffer(""), 0, 0, '.'), "");
    });
}

TEST(MultiByteSubString, PieceOfBytesThatAreNoCharacterDependsOnTheSwitch) {
    string const bad = mb::samples().invalid;
    Owned const text = mb::buffer("a" + bad + "b");
    {
        SwitchAt const off(0);
        EXPECT_EQ(subString(text, 2, 2, '.'), bad + "b");
    }
    SwitchAt const on(1);
    EXPECT_EQ(subString(text, 3, 1, '.'), "."); // the start cannot be located
    EXPECT_EQ(failureOf([&] { subString(text, 1, 1, '.'); }), badSequence(725));
    EXPECT_EQ(subString(text, 1, 0, '.'), ""); // nothing is converted
}

TEST(MultiByteSubString, TruncatedCharacterFailsAsIncompleteWithTheSwitchOn) {
    string const lead = mb::samples().lead;
    Owned const text = mb::buffer("ab" + lead);
    {
        SwitchAt const off(0);
        EXPECT_EQ(subString(text, 1, mb::lengthOf(lead) + 2, '.'), "ab" + lead);
    }
    SwitchAt const on(1);
    EXPECT_EQ(failureOf([&] { subString(text, 1, 1, '.'); }), badSequence(760));
    EXPECT_EQ(text->refs, 1U);
}

TEST(MultiByteSubString, EmbeddedNulIsACharacterOfOneByte) {
    inBothStates([] {
        string const two = mb::samples().two.bytes;
        Owned const text = mb::buffer(string("a\0", 2) + two + string("\0b", 2));
        EXPECT_EQ(subString(text, 2), string("\0", 1) + two + string("\0b", 2));
        EXPECT_EQ(subString(text, 4), string(" \0b", 3));
        EXPECT_EQ(subString(text, 2, 2, '.'), string("\0.", 2));
    });
}

} // namespace
