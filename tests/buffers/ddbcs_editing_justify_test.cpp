// leftJustify and center of multi-byte text.
#include "tests/buffers/ddbcs_editing_support.h"
#include "tests/characters/multi_byte_support.h"

#include <string>

namespace {

using namespace editing;

// Justify

TEST(MultiByteLeftJustify, NeverEndsInsideACharacter) {
    inBothStates([] {
        forEachCharacter([](string const& c, unsigned int n) {
            for (unsigned int width = 1; width <= n; ++width)
                EXPECT_EQ(leftJustify("a" + c, width, '.'), "a" + string(width - 1, '.'));
            EXPECT_EQ(leftJustify("a" + c + "b", n + 1, '.'), "a" + c);
            EXPECT_EQ(leftJustify("a" + c, n + 3, '.'), "a" + c + "..");
            EXPECT_EQ(leftJustify(c, 1, '.'), ".");
            EXPECT_EQ(leftJustify(c, 0, '.'), "");
            EXPECT_TRUE(returnsItself("a" + c, [&](DBuffer& b) { return b.leftJustify(n + 1, '.'); }));
        });
    });
}

TEST(MultiByteLeftJustify, OfAnEmptyTextIsAllPad) {
    inBothStates([] {
        EXPECT_EQ(leftJustify("", 3, '.'), "...");
        EXPECT_TRUE(returnsItself("", [](DBuffer& b) { return b.leftJustify(0, '.'); }));
    });
}

// Center

TEST(MultiByteCenter, PutsTheOddPadOnTheRight) {
    inBothStates([] {
        forEachCharacter([](string const& c, unsigned int n) {
            EXPECT_EQ(center("a" + c, n + 2, '.'), "a" + c + ".");
            EXPECT_EQ(center("a" + c, n + 4, '.'), ".a" + c + "..");
            EXPECT_TRUE(returnsItself("a" + c, [&](DBuffer& b) { return b.center(n + 1, '.'); }));
            EXPECT_EQ(center("", 3, '.'), "...");
        });
    });
}

TEST(MultiByteCenter, NarrowerWithTheSwitchOffBeginsAtACharacterAndPadsACutEnd) {
    SwitchAt const at(off);
    forEachCharacter([](string const& c, unsigned int n) {
        // One byte less cuts at the end only.
        EXPECT_EQ(center("ab" + c, n + 1, '.'), "ab" + string(n - 1, '.'));
        // The middle of two of the same begins inside of the first, so at its front.
        EXPECT_EQ(center(c + c, n, '.'), c);
        EXPECT_EQ(center("a" + c + "b", 0, '.'), "");
    });
}

TEST(MultiByteCenter, NarrowerWithTheSwitchOnLeavesOutTheLastCharacterByDesign) {
    SwitchAt const at(on);
    EXPECT_EQ(center("abc", 2, '.'), "ab");
    EXPECT_EQ(center("abcd", 3, '.'), "abc");
    EXPECT_EQ(center("abcd", 2, '.'), "bc");
    forEachCharacter([](string const& c, unsigned int n) {
        EXPECT_EQ(center("ab" + c, n + 1, '.'), "ab" + string(n - 1, '.'));
        EXPECT_EQ(center("a" + c + "b", n + 1, '.'), "a" + c);
        EXPECT_EQ(center(c, n - 1, '.'), string(n - 1, '.')); // the only character is the last
        EXPECT_EQ(center("a" + c + "b", 0, '.'), "");
    });
}

} // namespace
