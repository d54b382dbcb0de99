// translate of multi-byte text.
#include "tests/buffers/ddbcs_editing_support.h"
#include "tests/characters/multi_byte_support.h"

#include <string>

namespace {

using namespace editing;

TEST(MultiByteTranslate, ReplacesWholeCharactersByThoseAtTheSamePlace) {
    inBothStates([] {
        forEachCharacter([](string const& c, unsigned int) {
            EXPECT_EQ(translate("a" + c + "b", "ab", "xy", '.'), "x" + c + "y");
            EXPECT_EQ(translate("a" + c + "b", c, "x", '.'), "axb");
            EXPECT_EQ(translate("a" + c + "b" + c, "b" + c, c + "b", '.'), "ab" + c + "b");
            EXPECT_EQ(translate("a" + c + "a", "a", c, '.'), c + c + c);
        });
    });
}

TEST(MultiByteTranslate, CharactersWithoutACounterpartBecomeThePad) {
    inBothStates([] {
        forEachCharacter([](string const& c, unsigned int) {
            EXPECT_EQ(translate("ab" + c, "ab" + c, "x", '.'), "x..");
            EXPECT_EQ(translate("ab" + c, c + "ab", c, '.'), ".." + c);
            EXPECT_EQ(translate(c + c, c, "", '.'), "..");
        });
    });
}

TEST(MultiByteTranslate, CharacterListedTwiceUsesItsFirstPlace) {
    inBothStates([] {
        forEachCharacter([](string const& c, unsigned int) {
            EXPECT_EQ(translate(c + "a", c + "a" + c + "a", "xyzw", '.'), "xy");
            EXPECT_EQ(translate("a", "ab" + c + "a", c, '.'), c);
        });
    });
}

TEST(MultiByteTranslate, WithoutHitsStillGivesANewBuffer) {
    inBothStates([] {
        string const two = mb::samples().two.bytes;
        EXPECT_FALSE(returnsItself("a" + two, [](DBuffer& b) { return b.translate("xy", 2, "zw", 2, ' '); }));
        EXPECT_FALSE(returnsItself("a" + two, [](DBuffer& b) { return b.translate("", 0, "", 0, ' '); }));
        EXPECT_EQ(translate("a" + two, "xy", "zw", ' '), "a" + two);
        EXPECT_EQ(translate("", "xy", "zw", ' '), "");
    });
}

TEST(MultiByteTranslate, LeadByteAloneInTheSearchSetLeavesCharactersAlone) {
    SwitchAt const at(off);
    forEachCharacter([](string const& c, unsigned int) {
        EXPECT_EQ(translate("a" + c, c.substr(0, 1), "x", '.'), "a" + c);
        EXPECT_EQ(translate("a" + c, "a" + c.substr(0, 1), "xy", '.'), "x" + c);
    });
}

TEST(MultiByteTranslate, TruncatedCharactersAreBytesOfTheirOwnWithTheSwitchOff) {
    SwitchAt const at(off);
    string const bad = mb::samples().invalid;
    EXPECT_EQ(translate("a" + bad, bad, "x", '.'), "ax");
    EXPECT_EQ(translate("ab", "b", bad, '.'), "a" + bad);
}

TEST(MultiByteTranslate, NulIsTranslatedToo) {
    inBothStates([] {
        string const nul(1, '\0');
        string const two = mb::samples().two.bytes;
        EXPECT_EQ(translate("a" + nul + two, nul, two, '.'), "a" + two + two);
        EXPECT_EQ(translate("ab", "b", nul, '.'), "a" + nul);
    });
}

} // namespace
