// Texts near the limit of 4 GiB, with their memory. Needs up to 9 GiB, so the test has a label that an
// ordinary run leaves out.
#include "tests/buffers/operation_support.h"

namespace {

using operations::failureOf;
using operations::lengthOverflow;
using operations::refsOf;

constexpr unsigned int longest = 0xFFFFFFE6;

bool isAll(DString const& text, std::size_t from, std::size_t to, char c) {
    for (std::size_t at = from; at < to; ++at)
        if (text.data()[at] != c) return false;
    return true;
}

TEST(HugeText, OfTheLongestLengthIsMadeSearchedAndCut) {
    DString text("ab");
    text.leftJustify(longest, '.');
    ASSERT_EQ(text.length(), longest);
    EXPECT_EQ(text.data()[longest], '\0');
    EXPECT_TRUE(isAll(text, 2, longest, '.'));
    EXPECT_EQ(text.indexOf('x'), 0u);
    EXPECT_EQ(text.indexOfAnyBut("ab."), 0u);
    EXPECT_EQ(text.indexOf("..", longest - 1), longest - 1);
    EXPECT_EQ(text.indexOf("..", longest), 0u);
    EXPECT_EQ(text.lastIndexOf("ab"), 1u);
    EXPECT_EQ(text.lastIndexOf('.'), longest);
    EXPECT_EQ(text.lastIndexOfAnyOf("ab"), 2u);
    EXPECT_EQ(text.occurrencesOf("ab"), 1u);
    EXPECT_EQ(operations::contentsOf(text.subString(longest)), ".");
    EXPECT_EQ(operations::contentsOf(text.subString(longest, 3, '-')), ".--");
    EXPECT_EQ(text.numWords(), 1u);
    EXPECT_EQ(text.lengthOfWord(1), longest);

    text[longest] = 'z'; // in place
    EXPECT_EQ(text.indexOf('z'), longest);
    EXPECT_EQ(text.lastIndexOf('z'), longest);
    EXPECT_EQ(text.indexOf(".z"), longest - 1);
    text.reverse();
    EXPECT_EQ(operations::contentsOf(text.subString(1, 3)), "z..");
    EXPECT_EQ(operations::contentsOf(text.subString(longest - 2)), ".ba");
    text.upperCase();
    EXPECT_EQ(text[1], 'Z');
    EXPECT_EQ(text[longest], 'A');
    text.strip("Z.", DStringEnum::leading);
    EXPECT_EQ(operations::contentsOf(text), "BA");
}

TEST(HugeText, ThatWouldPassTheLimitFailsAndStaysWhatItWas) {
    DString text(nullptr, longest, 'a');
    char const* const data = text.data();
    EXPECT_EQ(failureOf([&] { text.insert("b"); }), lengthOverflow());
    EXPECT_EQ(failureOf([&] { text += "b"; }), lengthOverflow());
    EXPECT_EQ(failureOf([&] { text.overlayWith("bc", longest); }), lengthOverflow());
    EXPECT_EQ(failureOf([&] { text.copy(2); }), lengthOverflow());
    EXPECT_EQ(failureOf([&] { text.center(longest + 1); }), lengthOverflow());
    EXPECT_EQ(failureOf([&] { text.change("a", "bc", longest, 1); }), lengthOverflow());
    EXPECT_EQ(failureOf([&] { text.c2x(); }), lengthOverflow());
    EXPECT_EQ(failureOf([&] { text.c2b(); }), lengthOverflow());
    EXPECT_EQ(failureOf([&] { text.c2d(); }), lengthOverflow());
    EXPECT_EQ(failureOf([&] { text.decimalMath(1); }), lengthOverflow());
    EXPECT_EQ(failureOf([&] { text.binaryMath(1); }), lengthOverflow());
    EXPECT_EQ(failureOf([&] { text[longest + 1] = 'b'; }), lengthOverflow());
    EXPECT_EQ(text.data(), data);
    EXPECT_EQ(text.length(), longest);
    EXPECT_EQ(refsOf(text), 1u);
    EXPECT_TRUE(isAll(text, 0, longest, 'a'));
}

TEST(HugeText, IsInsertedChangedAndOverlaidUpToTheLimit) {
    DString text("abc");
    text.insert("xy", longest - 2, '.');
    ASSERT_EQ(text.length(), longest);
    EXPECT_EQ(operations::contentsOf(text.subString(longest - 2)), ".xy");
    text.change("xy", "-", longest - 1);
    ASSERT_EQ(text.length(), longest - 1);
    EXPECT_EQ(operations::contentsOf(text.subString(longest - 2)), ".-");
    text.overlayWith("++", longest - 1);
    ASSERT_EQ(text.length(), longest);
    EXPECT_EQ(operations::contentsOf(text.subString(longest - 2)), ".++");
    text.remove(2, longest - 2);
    EXPECT_EQ(operations::contentsOf(text), "a+");
}

TEST(HugeText, IsCopiedAndJustifiedToTheLimit) {
    DString text("0123456789ABCDE");
    text.copy(longest / 15); // 286331151 times
    ASSERT_EQ(text.length(), longest / 15 * 15);
    EXPECT_EQ(operations::contentsOf(text.subString(text.length() - 15)), "E0123456789ABCDE");
    EXPECT_EQ(text.indexOf("EE"), 0u);
    text.rightJustify(longest, '>');
    ASSERT_EQ(text.length(), longest);
    EXPECT_EQ(operations::contentsOf(text.subString(longest - 2)), "CDE");
    text.center(5);
    EXPECT_EQ(text.length(), 5u);
}

TEST(HugeText, BecomesHexadecimalAndBinaryDigitsAndBack) {
    DString text(nullptr, 0x7FFFFFF3, '\x5A');
    text.c2x();
    ASSERT_EQ(text.length(), longest);
    EXPECT_EQ(operations::contentsOf(text.subString(longest - 3)), "5A5A");
    text.x2c();
    ASSERT_EQ(text.length(), 0x7FFFFFF3u);
    EXPECT_TRUE(isAll(text, 0, text.length(), '\x5A'));
    text.remove(0x1FFFFFFC + 1);
    text.c2b();
    ASSERT_EQ(text.length(), 8 * 0x1FFFFFFCu);
    EXPECT_EQ(operations::contentsOf(text.subString(text.length() - 7)), "01011010");
    text.b2c();
    ASSERT_EQ(text.length(), 0x1FFFFFFCu);
    EXPECT_TRUE(isAll(text, 0, text.length(), '\x5A'));
}

TEST(HugeText, OfManyWordsIsJoinedUpToTheLimit) {
    DString text("a b");
    text.space(longest - 2, '-');
    ASSERT_EQ(text.length(), longest);
    EXPECT_EQ(text.lastIndexOf('b'), longest);
    EXPECT_TRUE(isAll(text, 1, longest - 1, '-'));
    EXPECT_EQ(text.isLike("a*b"), true);
    text ^= "\x01";
    EXPECT_EQ(text[1], '`');
    EXPECT_EQ(text[longest], 'c');
}

} // namespace
