// What every locale has in common: the operations of strings on ASCII text, which give the same results in
// single-byte and multi-byte modes. Which buffer comes back is not looked at here.
#include "tests/buffers/operation_support.h"

#include <cctype>

namespace {

using operations::contentsOf;
using operations::fresh;

int isVowel(int c) { return c == 'a' || c == 'e' || c == 'i' || c == 'o' || c == 'u'; }

DStringTest const vowel(isVowel);

std::string after(DString& edited) { return contentsOf(edited); }

TEST(AsciiText, IsSearchedForwards) {
    DString const text("abcabc");
    EXPECT_EQ(text.indexOf("bc"), 2u);
    EXPECT_EQ(text.indexOf("bc", 0), 2u);
    EXPECT_EQ(text.indexOf("bc", 3), 5u);
    EXPECT_EQ(text.indexOf("bc", 6), 0u);
    EXPECT_EQ(text.indexOf(""), 0u);
    EXPECT_EQ(text.indexOf('c', 4), 6u);
    EXPECT_EQ(text.indexOf(vowel, 2), 4u);
    EXPECT_EQ(text.indexOfAnyOf("xc"), 3u);
    EXPECT_EQ(text.indexOfAnyOf(""), 0u);
    EXPECT_EQ(text.indexOfAnyOf('b', 3), 5u);
    EXPECT_EQ(text.indexOfAnyOf(vowel), 1u);
    EXPECT_EQ(text.indexOfAnyBut("ab"), 3u);
    EXPECT_EQ(text.indexOfAnyBut('a', 4), 5u);
    EXPECT_EQ(text.indexOfAnyBut(vowel), 2u);
    EXPECT_EQ(text.indexOfAnyBut("abc"), 0u);
    EXPECT_EQ(text.indexOfAnyBut("", 4), 4u);
}

TEST(AsciiText, IsSearchedBackwards) {
    DString const text("abcabc");
    EXPECT_EQ(text.lastIndexOf("bc"), 5u);
    EXPECT_EQ(text.lastIndexOf("bc", 4), 2u);
    EXPECT_EQ(text.lastIndexOf("bc", 0), 0u);
    EXPECT_EQ(text.lastIndexOf(""), 0u);
    EXPECT_EQ(text.lastIndexOf('a', 3), 1u);
    EXPECT_EQ(text.lastIndexOf(vowel), 4u);
    EXPECT_EQ(text.lastIndexOfAnyOf("ab"), 5u);
    EXPECT_EQ(text.lastIndexOfAnyOf(vowel, 3), 1u);
    EXPECT_EQ(text.lastIndexOfAnyBut("bc"), 4u);
    EXPECT_EQ(text.lastIndexOfAnyBut('c'), 5u);
    EXPECT_EQ(text.lastIndexOfAnyBut(vowel, 4), 3u);
    EXPECT_EQ(text.lastIndexOfAnyBut("", 9), 6u);
}

TEST(AsciiText, IsCounted) {
    EXPECT_EQ(fresh("aaaa").occurrencesOf("aa"), 2u);
    EXPECT_EQ(fresh("aaaa").occurrencesOf('a'), 4u);
    EXPECT_EQ(fresh("aaaa").occurrencesOf("aa", 2), 1u);
    EXPECT_EQ(fresh("banana").occurrencesOf(vowel), 3u);
    EXPECT_EQ(fresh("banana").occurrencesOf(""), 0u);
    EXPECT_TRUE(fresh("banana").includes("nan"));
    EXPECT_FALSE(fresh("banana").includes('x'));
}

TEST(AsciiText, IsCutIntoSubstrings) {
    DString const text("abcdef");
    EXPECT_EQ(contentsOf(text.subString(3)), "cdef");
    EXPECT_EQ(contentsOf(text.subString(6)), "f");
    EXPECT_EQ(contentsOf(text.subString(7)), "");
    EXPECT_EQ(contentsOf(text.subString(100)), "");
    EXPECT_EQ(contentsOf(text.subString(2, 3)), "bcd");
    EXPECT_EQ(contentsOf(text.subString(0, 2)), "ab");
    EXPECT_EQ(contentsOf(text.subString(5, 4, '.')), "ef..");
    EXPECT_EQ(contentsOf(text.subString(9, 2, '.')), "..");
    EXPECT_EQ(contentsOf(text.subString(2, 0)), "");
}

TEST(AsciiText, IsMappedBetweenCases) {
    EXPECT_EQ(after(fresh("aZ-9").upperCase()), "AZ-9");
    EXPECT_EQ(after(fresh("aZ-9").lowerCase()), "az-9");
}

TEST(AsciiText, IsTranslated) {
    EXPECT_EQ(after(fresh("abc").translate("ab", "x", '*')), "x*c");
    EXPECT_EQ(after(fresh("abcab").translate("ba", "12")), "21c21");
    EXPECT_EQ(after(fresh("abc").translate("", "x")), "abc");
}

TEST(AsciiText, IsStripped) {
    EXPECT_EQ(after(fresh(" \t ab \n").strip()), "ab");
    EXPECT_EQ(after(fresh("  ab  ").strip(' ')), "ab");
    EXPECT_EQ(after(fresh("xyabyx").strip("xy", DStringEnum::leading)), "abyx");
    EXPECT_EQ(after(fresh("xyabyx").strip("xy", DStringEnum::trailing)), "xyab");
    EXPECT_EQ(after(fresh("aebce").strip(vowel)), "bc");
    EXPECT_EQ(after(fresh("xxx").strip('x')), "");
    EXPECT_EQ(after(fresh("").strip()), "");
}

TEST(AsciiText, IsReversed) {
    EXPECT_EQ(after(fresh("abc").reverse()), "cba");
    EXPECT_EQ(after(fresh("abcd").reverse()), "dcba");
}

TEST(AsciiText, IsOverlaidAndInsertedInto) {
    EXPECT_EQ(after(fresh("abcdef").overlayWith("XY", 5)), "abcdXY");
    EXPECT_EQ(after(fresh("abcdef").overlayWith("XY", 9, '.')), "abcdef..XY");
    EXPECT_EQ(after(fresh("abcdef").overlayWith("XY", 0)), "XYcdef");
    EXPECT_EQ(after(fresh("abc").overlayWith("", 6, '.')), "abc..");
    EXPECT_EQ(after(fresh("abc").insert("XY")), "XYabc");
    EXPECT_EQ(after(fresh("abc").insert("XY", 3)), "abcXY");
    EXPECT_EQ(after(fresh("abc").insert("XY", 5, '.')), "abc..XY");
}

TEST(AsciiText, IsJustified) {
    EXPECT_EQ(after(fresh("abc").leftJustify(5, '*')), "abc**");
    EXPECT_EQ(after(fresh("abc").leftJustify(2, '*')), "ab");
    EXPECT_EQ(after(fresh("abcd").rightJustify(6, '.')), "..abcd");
    EXPECT_EQ(after(fresh("abcd").rightJustify(2, '.')), "cd");
    EXPECT_EQ(after(fresh("ab").center(5, '*')), "*ab**");
    EXPECT_EQ(after(fresh("abcde").center(2, '*')), "bc");
}

TEST(AsciiText, IsRepeatedAndRemoved) {
    EXPECT_EQ(after(fresh("ab").copy(3)), "ababab");
    EXPECT_EQ(after(fresh("ab").copy(0)), "");
    EXPECT_EQ(after(fresh("abcd").remove(2, 2)), "ad");
    EXPECT_EQ(after(fresh("abcd").remove(0, 1)), "bcd");
    EXPECT_EQ(after(fresh("abcd").remove(3)), "ab");
    EXPECT_EQ(after(fresh("abcd").remove(5, 1)), "abcd");
}

TEST(AsciiText, IsChanged) {
    EXPECT_EQ(after(fresh("aaaa").change("aa", "b", 1, 5)), "bb");
    EXPECT_EQ(after(fresh("aaaa").change("aa", "b", 1, 1)), "baa");
    EXPECT_EQ(after(fresh("aaaa").change("aa", "b", 2)), "aba");
    EXPECT_EQ(after(fresh("a.b").change(".", "--")), "a--b");
    EXPECT_EQ(after(fresh("a.b").change(".", "/")), "a/b");
    EXPECT_EQ(after(fresh("a.b").change("", "x")), "a.b");
}

TEST(AsciiText, IsMatched) {
    EXPECT_TRUE(fresh("abc").isLike("a*"));
    EXPECT_TRUE(fresh("abc").isLike("a?c"));
    EXPECT_FALSE(fresh("abc").isLike("a?"));
    EXPECT_TRUE(fresh("PRI").isAbbrevFor("PRINT", 2));
    EXPECT_FALSE(fresh("PRI").isAbbrevFor("PRINT", 4));
}

TEST(AsciiText, IsClassified) {
    EXPECT_TRUE(fresh("0123").isDigits());
    EXPECT_FALSE(fresh("12a").isDigits());
    EXPECT_FALSE(fresh("").isDigits());
    EXPECT_TRUE(fresh("a1").isAlphanumeric());
    EXPECT_TRUE(fresh("aB").isAlphabetic());
    EXPECT_TRUE(fresh("a!").isGraphics());
    EXPECT_FALSE(fresh("a !").isGraphics());
    EXPECT_TRUE(fresh("a !").isPrintable());
    EXPECT_TRUE(fresh("09afAF").isHexDigits());
    EXPECT_TRUE(fresh("abc").isLowerCase());
    EXPECT_TRUE(fresh("ABC").isUpperCase());
    EXPECT_TRUE(fresh(";:!").isPunctuation());
    EXPECT_TRUE(fresh(" \t\n").isWhiteSpace());
    EXPECT_TRUE(fresh("\x01\x7F").isControl());
    EXPECT_TRUE(fresh("abc").isASCII());
    EXPECT_TRUE(fresh("0101").isBinaryDigits());
    EXPECT_FALSE(fresh("0102").isBinaryDigits());
}

TEST(AsciiText, IsComparedLikeText) {
    EXPECT_TRUE(fresh("abc") < "abd");
    EXPECT_TRUE(fresh("ab") < "abc");
    EXPECT_TRUE(fresh("abc") == "abc");
    EXPECT_TRUE("abd" > fresh("abc"));
    EXPECT_TRUE(fresh("") < "a");
}

TEST(AsciiText, LeavesCopiesOfAStringAloneWhenItIsEdited) {
    DString text("  abc  ");
    DString const copy(text);
    text.strip().upperCase().reverse().change("B", "--").insert(copy).leftJustify(20, '.').translate("-",
                                                                                                     "+");
    EXPECT_EQ(contentsOf(text), "  abc  C++A.........");
    EXPECT_EQ(contentsOf(copy), "  abc  ");
}

} // namespace
