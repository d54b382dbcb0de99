// subString of strings: its defaults, and what is one blank or nothing.
#include "tests/buffers/operation_support.h"

namespace {

using operations::contentsOf;
using operations::farEnd;
using operations::fresh;
using operations::switchIsOn;

TEST(SubString, RunsToTheEndOfTheText) {
    DString const text("abc");
    EXPECT_EQ(contentsOf(text.subString(1)), "abc");
    EXPECT_EQ(contentsOf(text.subString(2)), "bc");
    EXPECT_EQ(contentsOf(text.subString(3)), "c");
    EXPECT_EQ(contentsOf(text.subString(4)), "");
    EXPECT_EQ(contentsOf(text.subString(5)), "");
    EXPECT_EQ(contentsOf(text.subString(farEnd)), "");
    EXPECT_EQ(contentsOf(DString().subString(1)), "");
}

TEST(SubString, FromZeroHasOneBlankMoreThanTheTextWhenTheSwitchIsOff) {
    EXPECT_EQ(contentsOf(fresh("abc").subString(0)), switchIsOn() ? "abc" : "abc ");
    EXPECT_EQ(contentsOf(DString().subString(0)), switchIsOn() ? "" : " ");
}

TEST(SubString, OfACountHasExactlySoManyCharacters) {
    DString const text("abc");
    EXPECT_EQ(contentsOf(text.subString(2, 1)), "b");
    EXPECT_EQ(contentsOf(text.subString(2, 5, '.')), "bc...");
    EXPECT_EQ(contentsOf(text.subString(0, 2)), "ab");
    EXPECT_EQ(contentsOf(text.subString(9, 2, '.')), "..");
    EXPECT_EQ(contentsOf(text.subString(2, 4)), "bc  ") << "blanks unless told otherwise";
    EXPECT_EQ(contentsOf(text.subString(1, 0, '.')), "");
    EXPECT_EQ(contentsOf(text.subString(farEnd, 1, '.')), ".");
    EXPECT_EQ(contentsOf(text), "abc");
}

} // namespace
