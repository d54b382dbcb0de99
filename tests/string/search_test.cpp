// The searches of strings: every kind of text and test that they take, their defaults, and counting.
#include "tests/buffers/operation_support.h"

namespace {

using operations::bytes;
using operations::farEnd;
using operations::fresh;
using operations::isB;

template <class Text>
void expectFound(DString const& text, Text const& wanted) {
    EXPECT_EQ(text.indexOf(wanted), 2u);
    EXPECT_EQ(text.indexOf(wanted, 0), 2u);
    EXPECT_EQ(text.indexOf(wanted, 3), 5u);
    EXPECT_EQ(text.indexOf(wanted, 6), 0u);
    EXPECT_EQ(text.lastIndexOf(wanted), 5u);
    EXPECT_EQ(text.lastIndexOf(wanted, 4), 2u);
    EXPECT_EQ(text.lastIndexOf(wanted, 0), 0u);
    EXPECT_EQ(text.indexOfAnyOf(wanted), 2u);
    EXPECT_EQ(text.indexOfAnyOf(wanted, 3), 5u);
    EXPECT_EQ(text.lastIndexOfAnyOf(wanted), 5u);
    EXPECT_EQ(text.lastIndexOfAnyOf(wanted, 4), 2u);
    EXPECT_EQ(text.indexOfAnyBut(wanted), 1u);
    EXPECT_EQ(text.indexOfAnyBut(wanted, 2), 3u);
    EXPECT_EQ(text.lastIndexOfAnyBut(wanted), 6u);
    EXPECT_EQ(text.lastIndexOfAnyBut(wanted, 5), 4u);
    EXPECT_EQ(text.occurrencesOf(wanted), 2u);
    EXPECT_EQ(text.occurrencesOf(wanted, 0), 2u);
    EXPECT_EQ(text.occurrencesOf(wanted, 3), 1u);
    EXPECT_EQ(text.occurrencesOf(wanted, 6), 0u);
    EXPECT_EQ(text.occurrencesOf(wanted, farEnd), 0u);
    EXPECT_TRUE(text.includes(wanted));
    EXPECT_FALSE(fresh("xyz").includes(wanted));
}

TEST(Searching, TakesACharacterAnyKindOfTextOrATest) {
    DString const text("abcabc");
    char const* const pointer = "b";
    expectFound(text, 'b');
    expectFound(text, "b");
    expectFound(text, pointer);
    expectFound(text, DString("b"));
    expectFound(text, std::string("b"));
    expectFound(text, std::string_view("abc").substr(1, 1));
    expectFound(text, DStringTest(isB));
}

TEST(Searching, FindsNothingForANullOrEmptyTextButAnswersAnyButWithTheStart) {
    DString const text("abc");
    char const* const none = nullptr;
    EXPECT_EQ(text.indexOf(nullptr), 0u);
    EXPECT_EQ(text.indexOf(none), 0u);
    EXPECT_EQ(text.indexOf(""), 0u);
    EXPECT_EQ(text.indexOf(std::string_view()), 0u);
    EXPECT_EQ(text.lastIndexOf(nullptr), 0u);
    EXPECT_EQ(text.indexOfAnyOf(nullptr), 0u);
    EXPECT_EQ(text.lastIndexOfAnyOf(none), 0u);
    EXPECT_EQ(text.indexOfAnyBut(nullptr), 1u);
    EXPECT_EQ(text.indexOfAnyBut("", 3), 3u);
    EXPECT_EQ(text.lastIndexOfAnyBut(nullptr), 3u);
    EXPECT_EQ(text.occurrencesOf(nullptr), 0u);
    EXPECT_EQ(text.occurrencesOf("", 0, 1), 0u);
    EXPECT_FALSE(text.includes(""));
}

TEST(Searching, CountsEmbeddedNulsInAllButACharacterPointer) {
    std::string const wanted = bytes("\0b");
    DString const text(bytes("a\0b"));
    EXPECT_EQ(text.indexOf(wanted), 2u);
    EXPECT_EQ(text.indexOf(std::string_view(wanted)), 2u);
    EXPECT_EQ(text.indexOf(DString(wanted)), 2u);
    EXPECT_EQ(text.indexOf(wanted.c_str()), 0u);
    EXPECT_EQ(text.indexOf('\0'), 2u);
}

TEST(Counting, FindsMatchesThatDoNotOverlap) {
    EXPECT_EQ(fresh("aaaa").occurrencesOf("aa"), 2u);
    EXPECT_EQ(fresh("aaaaa").occurrencesOf("aa"), 2u);
    EXPECT_EQ(fresh("aaaa").occurrencesOf("aa", 2, 2), 1u);
    EXPECT_EQ(fresh("aaaa").occurrencesOf('a'), 4u);
    EXPECT_EQ(fresh("aaaa").occurrencesOf('a', 2), 3u);
    EXPECT_EQ(fresh("abab").occurrencesOf("abab"), 1u);
    EXPECT_EQ(fresh("bbb").occurrencesOf(DStringTest(isB)), 3u);
    EXPECT_EQ(fresh(bytes("\0\0\0")).occurrencesOf('\0'), 3u);
    EXPECT_EQ(DString().occurrencesOf('a'), 0u);
}

} // namespace
