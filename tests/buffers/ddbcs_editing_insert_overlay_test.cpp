// insert and overlayWith of multi-byte text: what comes in place of cut characters.
#include "tests/buffers/ddbcs_editing_support.h"
#include "tests/characters/multi_byte_support.h"

#include <string>

namespace {

using namespace editing;

// Overlay

TEST(MultiByteOverlay, WithTheSwitchOffTheHeadOfACutCharacterBecomesBlanksAndItsTailPadsByDesign) {
    SwitchAt const at(off);
    forEachCharacter([](string const& c, unsigned int n) {
        EXPECT_EQ(overlay("a" + c + "b", "X", 2, '.'), "aX" + string(n - 1, '.') + "b");
        EXPECT_EQ(overlay("a" + c + "b", "X", n + 1, '.'), "a" + string(n - 1, ' ') + "Xb");
        if (n > 2) {
            EXPECT_EQ(overlay("a" + c + "b", "X", 3, '.'), "a X" + string(n - 2, '.') + "b");
        }
        EXPECT_EQ(overlay(c + "a" + c, "XY", n, '.'), string(n - 1, ' ') + "XY" + c);
    });
}

TEST(MultiByteOverlay, WithTheSwitchOnBothPartsOfACutCharacterBecomePads) {
    SwitchAt const at(on);
    forEachCharacter([](string const& c, unsigned int n) {
        EXPECT_EQ(overlay("a" + c + "b", "X", 2, '.'), "aX" + string(n - 1, '.') + "b");
        EXPECT_EQ(overlay("a" + c + "b", "X", n + 1, '.'), "a" + string(n - 1, '.') + "Xb");
    });
}

TEST(MultiByteOverlay, AtCharacterStartsAndBeyondTheEndIsPlain) {
    inBothStates([] {
        forEachCharacter([](string const& c, unsigned int n) {
            EXPECT_EQ(overlay("a" + c + "b", string(n, 'X'), 2, '.'), "a" + string(n, 'X') + "b");
            EXPECT_EQ(overlay("a" + c, "X", 0, '.'), "X" + c);
            EXPECT_EQ(overlay("a" + c, "X", n + 2, '.'), "a" + c + "X");
            EXPECT_EQ(overlay("a" + c, "X", n + 4, '.'), "a" + c + "..X");
            EXPECT_EQ(overlay("ab", "X" + c + c, 2, '.'), "aX" + c + c);
            EXPECT_EQ(overlay("a" + c, "", n + 3, '.'), "a" + c + ".");
            EXPECT_EQ(overlay("", c, 0, '.'), c);
            EXPECT_EQ(overlay("", c, 3, '.'), ".." + c);
        });
    });
}

TEST(MultiByteOverlay, WithNothingGivesTheReceiver) {
    inBothStates([] {
        string const two = mb::samples().two.bytes;
        for (unsigned int const position : {0U, 1U, 3U})
            EXPECT_TRUE(
                returnsItself("a" + two, [&](DBuffer& b) { return b.overlayWith("", 0, position, '.'); }));
    });
}

// Insert

TEST(MultiByteInsert, InsideACharacterIsPutBeforeItWithTheSwitchOffAndAfterItWithTheSwitchOnByDesign) {
    forEachCharacter([](string const& c, unsigned int n) {
        for (unsigned int inside = 2; inside <= n; ++inside) {
            SwitchAt const at(off);
            EXPECT_EQ(insert("a" + c + "b", "Z", inside, '.'), "aZ" + c + "b");
        }
        for (unsigned int inside = 2; inside <= n; ++inside) {
            SwitchAt const at(on);
            EXPECT_EQ(insert("a" + c + "b", "Z", inside, '.'), "a" + c + "Zb");
        }
    });
}

TEST(MultiByteInsert, InsideTheFirstCharacterWithTheSwitchOffIsPutInFront) {
    SwitchAt const at(off);
    forEachCharacter([](string const& c, unsigned int) { EXPECT_EQ(insert(c, "Z", 1, '.'), "Z" + c); });
}

TEST(MultiByteInsert, BetweenCharactersAndBeyondTheEndIsPlain) {
    inBothStates([] {
        forEachCharacter([](string const& c, unsigned int n) {
            EXPECT_EQ(insert("a" + c, c, 0, '.'), c + "a" + c);
            EXPECT_EQ(insert("a" + c, c, 1, '.'), "a" + c + c);
            EXPECT_EQ(insert("a" + c, c, n + 1, '.'), "a" + c + c);
            EXPECT_EQ(insert("a" + c, c, n + 3, '.'), "a" + c + ".." + c);
            EXPECT_EQ(insert("a" + c, "", n + 3, '.'), "a" + c + "..");
            EXPECT_EQ(insert("", c, 0, '.'), c);
            EXPECT_TRUE(returnsItself("a" + c, [&](DBuffer& b) { return b.insert("", 0, n, '.'); }));
        });
    });
}

} // namespace
