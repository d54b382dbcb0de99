// Words read into a string that holds a text: its buffer is the work space, which keeps its class, and the
// removal after the word repairs what it takes for a cut character.
#include "tests/buffers/buffer_support.h"

#include <sstream>

#include <gtest/gtest.h>

namespace {

using namespace support;

/// The text of `before` after a word was read into it.
std::string afterReading(DString before, std::string const& word) {
    std::istringstream in(word);
    in >> before;
    return textOf(before);
}

bool modeIs(std::string_view name) {
    char const* const mode = std::getenv("KELCL_TEST_MODE");
    return mode != nullptr && std::string_view(mode).starts_with(name);
}

TEST(ReadingIntoAText, RepairsWhatTheWordAndTheOldTextAfterItMakeACharacterByDesign) {
    // The word ends in the first byte of a character, and the old text goes on with its second byte.
    bool const isLeadOfTwo = modeIs("utf8") || modeIs("eucjp");
    EXPECT_EQ(afterReading(DString("ab\xA4"), "x\xC3"), isLeadOfTwo ? "x " : "x\xC3");
    EXPECT_EQ(afterReading(DString("ab\xA4 and more"), "x\xC3"), isLeadOfTwo ? "x " : "x\xC3");
    bool const isSjis = modeIs("sjis");
    EXPECT_EQ(afterReading(DString("abA"), "x\x83"), isSjis ? "x " : "x\x83");
    bool const isEucJp = modeIs("eucjp");
    EXPECT_EQ(afterReading(DString("ab\xA2"), "x\xA4"), isEucJp ? "x " : "x\xA4");
}

TEST(ReadingIntoAText, RepairsNothingWhereTheWorkSpaceEndsWithTheWordOrGoesOnWithBlanks) {
    for (char const* const word : {"x\xC3", "x\x83", "x\xA4"}) {
        EXPECT_EQ(afterReading(DString("ab"), word), word);
        EXPECT_EQ(afterReading(DString("a"), word), word);
        EXPECT_EQ(afterReading(DString(), word), word);
        EXPECT_EQ(afterReading(DString("a"), std::string("xyz") + word), std::string("xyz") + word);
    }
}

TEST(ReadingIntoAText, KeepsItsBufferWhereTheWordFillsIt) {
    DString text(plainBuffer("abc").giveUp());
    char const* const before = text.c_str();
    std::istringstream in("xyz");
    in >> text;
    EXPECT_EQ(textOf(text), "xyz");
    EXPECT_STREQ(bufferOf(text)->className(), "DBuffer") << "whatever the locale";
    EXPECT_EQ(text.c_str(), before);
}

TEST(ReadingIntoAText, GivesTheClassThatTheOldBufferMakes) {
    for (char const* const word : {"x", "abcdefg"}) {
        DString text(plainBuffer("abc").giveUp());
        std::istringstream in(word);
        in >> text;
        EXPECT_EQ(textOf(text), word);
        EXPECT_EQ(bufferOf(text)->className(), defaultClass()) << "a plain buffer makes those of the locale";
    }
}

TEST(ReadingIntoAText, LeavesWhatSharesItAlone) {
    DString text("abc\xA4");
    DString const sharer(text);
    std::istringstream in("x y\xC3");
    in >> text;
    EXPECT_EQ(textOf(text), "x");
    EXPECT_EQ(textOf(sharer), "abc\xA4");
    in >> text;
    EXPECT_EQ(textOf(text), "y\xC3");
}

} // namespace
