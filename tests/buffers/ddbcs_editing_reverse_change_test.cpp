// reverse and change of multi-byte text.
#include "tests/buffers/ddbcs_editing_support.h"
#include "tests/characters/multi_byte_support.h"

#include <string>

namespace {

using namespace editing;

// Reverse

TEST(MultiByteReverse, KeepsTheBytesOfACharacterInTheirOrder) {
    inBothStates([] {
        forEachCharacter([](string const& c, unsigned int) {
            EXPECT_EQ(reverse("a" + c + "b"), "b" + c + "a");
            EXPECT_EQ(reverse(c + "a"), "a" + c);
            EXPECT_EQ(reverse(c), c);
            EXPECT_EQ(reverse(string("a\0", 2) + c), c + string("\0a", 2));
        });
    });
}

TEST(MultiByteReverse, NeverChangesTheReceiver) {
    inBothStates([] {
        EXPECT_TRUE(returnsItself("", [](DBuffer& b) { return b.reverse(); }));
        EXPECT_TRUE(returnsItself("a", [](DBuffer& b) { return b.reverse(); }));
        Owned const text = mb::buffer("a" + mb::samples().two.bytes);
        Owned const result(text->reverse());
        EXPECT_NE(result.get(), text.get());
        EXPECT_EQ(text.text(), "a" + mb::samples().two.bytes);
        EXPECT_EQ(text->refs, 1U);
    });
}

TEST(MultiByteReverse, TakesBytesThatAreNoCharacterOneByOneWithTheSwitchOff) {
    SwitchAt const at(off);
    string const bad = mb::samples().invalid;
    string const two = mb::samples().two.bytes;
    EXPECT_EQ(reverse("a" + bad + two), two + bad + "a");
    EXPECT_EQ(reverse(two + bad), bad + two);
}

TEST(MultiByteReverse, BackslashAndTildeKeepTheirBytesWithTheSwitchOn) {
    SwitchAt const at(on);
    EXPECT_EQ(reverse("a\\~"), "~\\a");
    if (mb::hasYenSign()) {
        EXPECT_EQ(reverse("a\x81\x5F"), "\x81\x5F"
                                        "a");
        EXPECT_EQ(upper("\x81\x5F\\"), "\x81\x5F\\");
    }
}

// Change

TEST(MultiByteChange, ReplacesPatternsAtCharacterStartsOnly) {
    inBothStates([] {
        forEachCharacter([](string const& c, unsigned int n) {
            EXPECT_EQ(change("a" + c + "b" + c, c, "x", 1, 9), "axbx");
            EXPECT_EQ(change("a" + c + "b" + c, c, "xyz", 1, 1), "axyzb" + c);
            EXPECT_EQ(change("a" + c + "b" + c, c, "", 3, 9), "a" + c + "b");
            EXPECT_EQ(change("a" + c + "b", c.substr(1) + "b", "xx", 1, 9), "a" + c + "b");
            EXPECT_EQ(change("ab", "b", c, 1, 9), "a" + c);
            EXPECT_TRUE(
                returnsItself("a" + c, [&](DBuffer& b) { return b.change("a", 1, "b", 1, n + 1, 9); }));
            EXPECT_TRUE(returnsItself("a" + c, [&](DBuffer& b) { return b.change("a", 1, "b", 1, 1, 0); }));
            EXPECT_TRUE(returnsItself("a" + c, [&](DBuffer& b) { return b.change("", 0, "b", 1, 1, 9); }));
        });
    });
}

TEST(MultiByteChange, OfTheSameLengthIsDoneInPlaceForASoleOwnerInBothStates) {
    inBothStates([] {
        string const two = mb::samples().two.bytes;
        Owned const sole = mb::buffer(two + "a");
        Owned const result(sole->change("a", 1, "b", 1, 1, 9));
        EXPECT_EQ(result.get(), sole.get());
        EXPECT_EQ(sole.text(), two + "b");
        Owned const other(sole->change("b", 1, "c", 1, 1, 9)); // two owners by now
        EXPECT_NE(other.get(), sole.get());
        EXPECT_EQ(sole.text(), two + "b");
        EXPECT_EQ(other.text(), two + "c");
    });
}

} // namespace
