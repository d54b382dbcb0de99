// isAbbrevFor and isLike.
#include "tests/buffers/operation_support.h"

namespace {

using operations::bytes;
using operations::farEnd;
using operations::fresh;

TEST(IsAbbrevFor, HoldsForABeginningOfAtLeastTheGivenLength) {
    EXPECT_TRUE(fresh("PRI").isAbbrevFor("PRINT", 2));
    EXPECT_TRUE(fresh("PRI").isAbbrevFor("PRINT", 3));
    EXPECT_FALSE(fresh("PRI").isAbbrevFor("PRINT", 4));
    EXPECT_TRUE(fresh("PRI").isAbbrevFor("PRINT"));
    EXPECT_TRUE(fresh("PRI").isAbbrevFor("PRINT", 0));
    EXPECT_TRUE(fresh("PRINT").isAbbrevFor("PRINT", 5));
    EXPECT_FALSE(fresh("PRX").isAbbrevFor("PRINT", 2));
    EXPECT_FALSE(fresh("PRI").isAbbrevFor("PRINT", farEnd));
}

TEST(IsAbbrevFor, IsFalseForAStringLongerThanTheText) {
    EXPECT_FALSE(fresh("PRINTER").isAbbrevFor("PRINT", 2));
    EXPECT_FALSE(fresh("PRI").isAbbrevFor("PRINT", 2, 1)) << "only the counted bytes are the text";
    EXPECT_FALSE(fresh("P").isAbbrevFor(nullptr));
    EXPECT_FALSE(fresh("P").isAbbrevFor(nullptr, 0, 0));
}

TEST(IsAbbrevFor, OfTheEmptyStringHoldsForAnythingWithoutALeastLength) {
    EXPECT_TRUE(DString().isAbbrevFor("PRINT", 0));
    EXPECT_TRUE(DString().isAbbrevFor("", 0));
    EXPECT_TRUE(DString().isAbbrevFor(nullptr, 0, 0));
    EXPECT_TRUE(DString().isAbbrevFor(nullptr));
    EXPECT_FALSE(DString().isAbbrevFor("PRINT", 1));
}

TEST(IsAbbrevFor, ComparesWithTheFirstCharactersOnly) {
    EXPECT_TRUE(fresh(bytes("a\0b")).isAbbrevFor(bytes("a\0bc")));
    EXPECT_FALSE(fresh(bytes("a\0b")).isAbbrevFor(bytes("a\0cc")));
}

TEST(IsLike, MatchesRunsAndSingleCharacters) {
    for (char const* const pattern : {"a*", "*c", "a?c", "*", "abc", "???", "*b*", "a*c", "a**c", "**",
                                      "abc*", "*abc", "a*b*c", "?*", "*?", "***???***", "?b?"})
        EXPECT_TRUE(fresh("abc").isLike(pattern)) << pattern;
    for (char const* const pattern :
         {"a?", "ab", "", "????", "b*", "*b", "a*d", "abcd", "ABC", "a*bb*c", "?", "abc?", "*????", "a*c?"})
        EXPECT_FALSE(fresh("abc").isLike(pattern)) << pattern;
}

TEST(IsLike, MatchesTheEmptyString) {
    EXPECT_TRUE(DString().isLike("*"));
    EXPECT_TRUE(DString().isLike(""));
    EXPECT_TRUE(DString().isLike("**"));
    EXPECT_TRUE(DString().isLike(nullptr));
    EXPECT_TRUE(DString().isLike(nullptr, 0));
    EXPECT_FALSE(DString().isLike("?"));
    EXPECT_FALSE(DString().isLike("*?"));
    EXPECT_FALSE(DString().isLike("a"));
    EXPECT_FALSE(fresh("a").isLike(nullptr));
}

TEST(IsLike, ComesBackToTheLastRunOnAMismatch) {
    EXPECT_TRUE(fresh("mississippi").isLike("*issip*"));
    EXPECT_TRUE(fresh("mississippi").isLike("m*i*s*p?"));
    EXPECT_FALSE(fresh("mississippi").isLike("m*issi?x*"));
    EXPECT_TRUE(fresh("aaab").isLike("*ab"));
    EXPECT_TRUE(fresh("abab").isLike("*ab"));
    EXPECT_FALSE(fresh("aba").isLike("*ab"));
    EXPECT_TRUE(fresh("ab_ab").isLike("ab*ab"));
    EXPECT_FALSE(fresh("aba").isLike("ab*ba")) << "ends do not overlap";
}

TEST(IsLike, TakesOtherWildcards) {
    EXPECT_TRUE(fresh("abc").isLike("a%", '%'));
    EXPECT_FALSE(fresh("abc").isLike("a*", '%'));
    EXPECT_TRUE(fresh("abc").isLike("a_%", '%', '_'));
    EXPECT_TRUE(fresh("a*c").isLike("a*c", '%', '_'));
    EXPECT_FALSE(fresh("abc").isLike("a*c", '%', '_'));
    EXPECT_TRUE(fresh("a\xFF"
                      "b")
                    .isLike("a\x80"
                            "b",
                            '*', '\x80'));
    EXPECT_TRUE(fresh("abc").isLike(std::string_view("a\0", 2), '\0'));
    EXPECT_TRUE(fresh("abc").isLike("a##", 3, '#', '#')) << "a wildcard of both kinds is a run";
    EXPECT_TRUE(fresh("a").isLike("a#", 2, '#', '#'));
}

TEST(IsLike, MatchesByteByByte) {
    EXPECT_TRUE(fresh(bytes("a\0b")).isLike("a?b"));
    EXPECT_TRUE(fresh(bytes("a\0b")).isLike("a*"));
    EXPECT_FALSE(fresh("\xE4").isLike("??"));
    EXPECT_TRUE(fresh("\xE4").isLike("?"));
    EXPECT_FALSE(fresh("\xC4").isLike("\xE4"));
}

TEST(IsLike, WithManyRunsStaysFastWithoutRecursion) {
    std::string const text(20000, 'a');
    std::string pattern;
    for (int i = 0; i < 300; ++i)
        pattern += "a*";
    EXPECT_FALSE(fresh(text).isLike(pattern + "b"));
    EXPECT_TRUE(fresh(text).isLike(pattern + "a"));
    EXPECT_TRUE(fresh(text).isLike(std::string(100000, '*')));
    EXPECT_FALSE(fresh(text).isLike(std::string(100000, '*') + "?" + std::string(20000, '?')));
}

} // namespace
