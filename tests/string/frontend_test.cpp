// What the string adds to its buffer's operations: element access, substrings, counting, matching, the short
// forms and their defaults, and the protocol of editing: copies stay what they are, a sole owner's text is
// edited in place, arguments may be part of the text, and a test that throws or changes the very string harms
// nothing.
#include "tests/buffers/operation_support.h"

#include <functional>
#include <memory>
#include <optional>
#include <stdexcept>
#include <type_traits>
#include <vector>

namespace {

using ops::bytes;
using ops::contentsOf;
using ops::failureOf;
using ops::farEnd;
using ops::fresh;
using ops::invalidRequest;
using ops::refsOf;
using ops::switchIsOn;

// Element access

TEST(ElementAccess, CountsFromOneAndTakesZeroAsOneToo) {
    DString text("abc");
    EXPECT_EQ(text[0], 'a');
    EXPECT_EQ(text[1], 'a');
    EXPECT_EQ(text[3], 'c');
    EXPECT_EQ(text[0u], 'a');
    EXPECT_EQ(text[1u], 'a');
    EXPECT_EQ(text[3u], 'c');
    DString const constant("abc");
    EXPECT_EQ(constant[0], 'a');
    EXPECT_EQ(constant[1], 'a');
    EXPECT_EQ(constant[3], 'c');
    EXPECT_EQ(constant[0u], 'a');
    EXPECT_EQ(constant[2u], 'b');
    static_assert(std::is_same_v<decltype(text[1]), char&>);
    static_assert(std::is_same_v<decltype(constant[1]), char const&>);
}

TEST(ElementAccess, RefersIntoTheTextOfASoleOwner) {
    DString text("abc");
    char const* const data = text.data();
    EXPECT_EQ(&text[2], data + 1);
    EXPECT_EQ(&text[2u], data + 1);
    text[2] = 'X';
    EXPECT_EQ(contentsOf(text), "aXc");
    EXPECT_EQ(text.data(), data);
}

TEST(ElementAccess, ForWritingGivesASharedStringItsOwnCopy) {
    DString text("abc");
    DString const copy(text);
    text[2] = 'X';
    EXPECT_EQ(contentsOf(text), "aXc");
    EXPECT_EQ(contentsOf(copy), "abc");
    EXPECT_EQ(refsOf(copy), 1u);
    EXPECT_EQ(refsOf(text), 1u);
    DString other(copy);
    other[3u] = 'Y';
    EXPECT_EQ(contentsOf(other), "abY");
    EXPECT_EQ(contentsOf(copy), "abc");
}

TEST(ElementAccess, ForReadingLeavesSharingAlone) {
    DString const text("abc");
    DString const copy(text);
    EXPECT_EQ(&text[1], copy.data());
    EXPECT_EQ(refsOf(text), 2u);
}

TEST(ElementAccess, ForWritingPastTheEndLengthensTheStringWithBlanks) {
    DString text("abc");
    DString const copy(text);
    char& last = text[5];
    EXPECT_EQ(contentsOf(text), "abc  ");
    EXPECT_EQ(&last, text.data() + 4);
    EXPECT_EQ(last, ' ');
    last = 'X';
    EXPECT_EQ(contentsOf(text), "abc X");
    EXPECT_EQ(contentsOf(copy), "abc");
    text[6u] = 'Y';
    EXPECT_EQ(contentsOf(text), "abc XY");
}

TEST(ElementAccess, ForWritingLengthensAnEmptyStringEvenAtZero) {
    DString text;
    EXPECT_EQ(text[0], ' ');
    EXPECT_EQ(contentsOf(text), " ");
    DString other;
    other[1u] = 'x';
    EXPECT_EQ(contentsOf(other), "x");
    EXPECT_EQ(DString().length(), 0u) << "the shared empty buffer stays empty";
}

TEST(ElementAccess, PastTheEndOrNegativeFailsEachWithItsOwnLine) {
    DString text("abc");
    DString const copy(text);
    DString const& constant = text;
    EXPECT_EQ(failureOf([&] { (void)constant[4u]; }), invalidRequest(1011, "dstring5", 130));
    EXPECT_EQ(failureOf([&] { (void)constant[farEnd]; }), invalidRequest(1011, "dstring5", 130));
    EXPECT_EQ(failureOf([&] { (void)constant[-1]; }), invalidRequest(1011, "dstring5", 174));
    EXPECT_EQ(failureOf([&] { (void)constant[-2147483647 - 1]; }), invalidRequest(1011, "dstring5", 174));
    EXPECT_EQ(failureOf([&] { (void)constant[4]; }), invalidRequest(1011, "dstring5", 184));
    EXPECT_EQ(failureOf([&] { (void)constant[2147483647]; }), invalidRequest(1011, "dstring5", 184));
    EXPECT_EQ(failureOf([&] { text[-1] = 'x'; }), invalidRequest(1011, "dstring5", 197));
    EXPECT_EQ(text.data(), copy.data());
    EXPECT_EQ(refsOf(text), 2u);
    EXPECT_EQ(contentsOf(text), "abc");
}

TEST(ElementAccess, ForReadingAnEmptyStringFails) {
    DString const text;
    EXPECT_EQ(failureOf([&] { (void)text[0]; }), invalidRequest(1011, "dstring5", 184));
    EXPECT_EQ(failureOf([&] { (void)text[0u]; }), invalidRequest(1011, "dstring5", 130));
    EXPECT_EQ(failureOf([&] { (void)text[1u]; }), invalidRequest(1011, "dstring5", 130));
}

TEST(ElementAccess, FailsWithATextAndWithoutAFunctionName) {
    ops::LogOfExceptions const log;
    try {
        (void)static_cast<DString const&>(fresh("abc"))[9];
        FAIL();
    } catch (DInvalidRequest const& thrown) {
        ASSERT_NE(thrown.text(0), nullptr);
        EXPECT_STRNE(thrown.text(0), "");
        EXPECT_STREQ(thrown.locationAtIndex(0)->functionName(), "Unknown");
    }
}

// Substrings

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

// Searching and counting

int isB(int c) { return c == 'b'; }

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

// Matching

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

// Editing: results and short forms

TEST(Editing, ReturnsTheStringItself) {
    DString text("abc");
    EXPECT_EQ(&text.upperCase(), &text);
    EXPECT_EQ(&text.lowerCase(), &text);
    EXPECT_EQ(&text.reverse(), &text);
    EXPECT_EQ(&text.translate("a", "b"), &text);
    EXPECT_EQ(&text.strip(), &text);
    EXPECT_EQ(&text.strip("x"), &text);
    EXPECT_EQ(&text.strip('x'), &text);
    EXPECT_EQ(&text.strip(DStringTest(isB)), &text);
    EXPECT_EQ(&text.overlayWith("x"), &text);
    EXPECT_EQ(&text.insert("x"), &text);
    EXPECT_EQ(&text.leftJustify(9), &text);
    EXPECT_EQ(&text.rightJustify(8), &text);
    EXPECT_EQ(&text.center(7), &text);
    EXPECT_EQ(&text.copy(2), &text);
    EXPECT_EQ(&text.change("x", "y"), &text);
    EXPECT_EQ(&text.remove(1), &text);
}

std::string edited(char const* text, std::function<void(DString&)> const& operation) {
    DString string(text);
    operation(string);
    return contentsOf(string);
}

TEST(Editing, TakesDefaults) {
    EXPECT_EQ(edited("abc", [](DString& s) { s.translate("abc", "x"); }), "x  ");
    EXPECT_EQ(edited("abc", [](DString& s) { s.translate("abc", 3, "x", 1); }), "x  ");
    EXPECT_EQ(edited("xax", [](DString& s) { s.strip("x"); }), "a");
    EXPECT_EQ(edited("xax", [](DString& s) { s.strip('x'); }), "a");
    EXPECT_EQ(edited("bab", [](DString& s) { s.strip(DStringTest(isB)); }), "a");
    EXPECT_EQ(edited("abc", [](DString& s) { s.overlayWith("X"); }), "Xbc");
    EXPECT_EQ(edited("abc", [](DString& s) { s.overlayWith("X", 6); }), "abc  X");
    EXPECT_EQ(edited("abc", [](DString& s) { s.insert("X"); }), "Xabc");
    EXPECT_EQ(edited("abc", [](DString& s) { s.insert("X", 5); }), "abc  X");
    EXPECT_EQ(edited("abc", [](DString& s) { s.leftJustify(5); }), "abc  ");
    EXPECT_EQ(edited("abc", [](DString& s) { s.rightJustify(5); }), "  abc");
    EXPECT_EQ(edited("abc", [](DString& s) { s.center(5); }), " abc ");
    EXPECT_EQ(edited("abab", [](DString& s) { s.change("a", "x"); }), "xbxb");
}

TEST(Editing, TakesCountedAndShortForms) {
    EXPECT_EQ(edited("abc", [](DString& s) { s.translate("abX", 2, "xyZ", 2, '.'); }), "xyc");
    EXPECT_EQ(edited("abc", [](DString& s) { s.translate(std::string("ab"), DString("x"), '.'); }), "x.c");
    EXPECT_EQ(edited("xyaxy", [](DString& s) { s.strip("xyz", 2, DStringEnum::leading); }), "axy");
    EXPECT_EQ(edited("xaxx", [](DString& s) { s.strip('x', DStringEnum::trailing); }), "xa");
    EXPECT_EQ(edited("abc", [](DString& s) { s.overlayWith("XYZ", 2, 3, '.'); }), "abXY");
    EXPECT_EQ(edited("abc", [](DString& s) { s.overlayWith(std::string("XY"), 2); }), "aXY");
    EXPECT_EQ(edited("abc", [](DString& s) { s.insert("XYZ", 2, 3, '.'); }), "abcXY");
    EXPECT_EQ(edited("abc", [](DString& s) { s.insert(std::string_view("XY"), 1); }), "aXYbc");
    EXPECT_EQ(edited("aXbXc", [](DString& s) { s.change("X!", 1, "--!", 2, 3, 1); }), "aXb--c");
    EXPECT_EQ(edited("aXbX", [](DString& s) { s.change(DString("X"), std::string("-"), 1, 1); }), "a-bX");
    EXPECT_EQ(edited("abc", [](DString& s) { s.change("b", nullptr); }), "ac");
    EXPECT_EQ(edited("abc", [](DString& s) { s.insert(nullptr, 5, '.'); }), "abc..");
    EXPECT_EQ(edited("abc", [](DString& s) { s.strip(nullptr); }), "abc");
}

TEST(Editing, StripWithoutArgumentsStripsWhiteSpaceFromBothEnds) {
    EXPECT_EQ(edited(" \t\n\v\f\r a b \t\n\v\f\r ", [](DString& s) { s.strip(); }), "a b");
    EXPECT_EQ(edited(" \t", [](DString& s) { s.strip(); }), "");
    EXPECT_EQ(edited("\xA0"
                     "a\xA0",
                     [](DString& s) { s.strip(); }),
              "\xA0"
              "a\xA0");
    DString nul(bytes(" \0 "));
    EXPECT_EQ(contentsOf(nul.strip()), bytes("\0"));
}

// Overload traps: each of these must mean the obvious thing.
TEST(OverloadTraps, TakeAPositionAndAPadCharacterForWhatTheyAre) {
    EXPECT_EQ(edited("abcdef", [](DString& s) { s.overlayWith("XY", 9, '.'); }), "abcdef..XY");
    EXPECT_EQ(edited("abc", [](DString& s) { s.insert("XY", 5, '.'); }), "abc..XY");
    EXPECT_EQ(edited("a", [](DString& s) { s += std::string("x"); }), "ax");
    EXPECT_EQ(fresh("abc").indexOf(nullptr), 0u);
    EXPECT_TRUE(fresh("abc").isLike("a%", '%'));
    DString number = 0;
    EXPECT_EQ(contentsOf(number), "0");
}

TEST(OverloadTraps, StripAndChangeNeverPickAStaticFormThatLeavesTheStringAlone) {
    EXPECT_EQ(edited("xax", [](DString& s) { s.strip(DString("x")); }), "a");
    EXPECT_EQ(edited("xax", [](DString& s) { s.strip(DString("x"), DStringEnum::leading); }), "ax");
    EXPECT_EQ(edited("aaa", [](DString& s) { s.change("a", "b", 0); }), "bbb");
    EXPECT_EQ(edited("aaa", [](DString& s) { s.change("a", "b", 0, 2); }), "bba");
    EXPECT_EQ(edited("aaa", [](DString& s) { s.change(DString("a"), DString("b")); }), "bbb");
    EXPECT_EQ(edited("aaa", [](DString& s) { s.change(DString("a"), DString("b"), 2); }), "abb");
    EXPECT_EQ(edited("aaa", [](DString& s) { s.change(DString("a"), DString("b"), 2, 1); }), "aba");
    EXPECT_EQ(edited("abc", [](DString& s) { s.upperCase(); }), "ABC");
    EXPECT_EQ(edited("abc", [](DString& s) { s.center(5, '*'); }), "*abc*");
    EXPECT_EQ(edited("abc", [](DString& s) { s.insert(DString("X"), 1); }), "aXbc");
    EXPECT_EQ(edited("abc", [](DString& s) { s.overlayWith(DString("X"), 2); }), "aXc");
}

TEST(OverloadTraps, LeaveAHostsOwnComparisonsUnambiguous) {
    std::string const string("a");
    std::string_view const view("a");
    EXPECT_TRUE(view == string);
    EXPECT_TRUE(string == view);
    EXPECT_TRUE(string == "a");
    EXPECT_TRUE(DString("a") == string);
    EXPECT_TRUE(string == DString("a"));
}

// Editing: static forms

TEST(StaticForms, ReturnANewStringAndLeaveTheirArgumentAlone) {
    DString const source("abca");
    EXPECT_EQ(contentsOf(DString::upperCase(source)), "ABCA");
    EXPECT_EQ(contentsOf(DString::center(source, 6, '*')), "*abca*");
    EXPECT_EQ(contentsOf(DString::center(source, 6)), " abca ");
    EXPECT_EQ(contentsOf(DString::change(source, "a", "xy", 1, 9)), "xybcxy");
    EXPECT_EQ(contentsOf(DString::change(source, "a", "x", 2, 9)), "abcx");
    EXPECT_EQ(contentsOf(DString::change(source, DString("a"), DString("x"), 1, 1)), "xbca");
    EXPECT_EQ(contentsOf(DString::remove(source, 2, 2)), "aa");
    EXPECT_EQ(contentsOf(source), "abca");
    EXPECT_EQ(refsOf(source), 1u);
}

TEST(StaticForms, CountANullTextAsEmpty) {
    DString const source("abc");
    char const* const none = nullptr;
    EXPECT_EQ(contentsOf(DString::change(source, "b", none, 1, 9)), "ac");
    EXPECT_EQ(contentsOf(DString::change(source, none, "x", 1, 9)), "abc");
}

TEST(StaticForms, ShareTheTextWhereNothingChanges) {
    DString const source("ABC");
    DString const result = DString::upperCase(source);
    EXPECT_EQ(result.data(), source.data());
    EXPECT_EQ(refsOf(source), 2u);
}

// Editing: sharing and place

using Edit = std::function<void(DString&)>;

struct NamedEdit {
    char const* name;
    Edit edit;
    bool inPlace; ///< Whether a sole owner's text is changed where it is.
};

std::vector<NamedEdit> const changes = {
    {"upperCase", [](DString& s) { s.upperCase(); }, true},
    {"lowerCase", [](DString& s) { s.lowerCase(); }, true},
    {"reverse", [](DString& s) { s.reverse(); }, true},
    {"translate", [](DString& s) { s.translate("abc", "xyz"); }, true},
    {"change to the same length", [](DString& s) { s.change("ab", "xy"); }, true},
    {"change to another length", [](DString& s) { s.change("ab", "x"); }, false},
    {"strip of white space", [](DString& s) { s.strip(); }, false},
    {"strip of a set", [](DString& s) { s.strip(' '); }, false},
    {"strip by a test", [](DString& s) { s.strip(DStringTest([](int c) -> int { return c == ' '; })); },
     false},
    {"overlayWith", [](DString& s) { s.overlayWith("xy", 2); }, false},
    {"insert", [](DString& s) { s.insert("xy", 2); }, false},
    {"leftJustify", [](DString& s) { s.leftJustify(30); }, false},
    {"rightJustify", [](DString& s) { s.rightJustify(30); }, false},
    {"center", [](DString& s) { s.center(30); }, false},
    {"copy", [](DString& s) { s.copy(2); }, false},
    {"remove", [](DString& s) { s.remove(2, 1); }, false},
    {"remove to the end", [](DString& s) { s.remove(2); }, false},
};

constexpr char const* changeable = " abcABC ab ";

TEST(Editing, OfASoleOwnerChangesTheTextWhereItIsIfTheBufferCan) {
    for (NamedEdit const& change : changes) {
        DString text(changeable);
        char const* const data = text.data();
        change.edit(text);
        EXPECT_NE(contentsOf(text), changeable) << change.name;
        EXPECT_TRUE(!change.inPlace || text.data() == data) << change.name;
        EXPECT_EQ(refsOf(text), 1u) << change.name;
    }
}

TEST(Editing, LeavesCopiesOfTheStringAlone) {
    for (NamedEdit const& change : changes) {
        DString text(changeable);
        DString const copy(text);
        change.edit(text);
        EXPECT_NE(contentsOf(text), changeable) << change.name;
        EXPECT_EQ(contentsOf(copy), changeable) << change.name;
        EXPECT_NE(text.data(), copy.data()) << change.name;
        EXPECT_EQ(refsOf(copy), 1u) << change.name;
        EXPECT_EQ(refsOf(text), 1u) << change.name;
    }
}

TEST(Editing, ThatChangesNothingKeepsTheBufferAndItsCount) {
    std::vector<NamedEdit> const idle = {
        {"upperCase", [](DString& s) { s.upperCase(); }, true},
        {"strip", [](DString& s) { s.strip().strip('x').strip(DStringTest(isB)); }, true},
        {"overlayWith", [](DString& s) { s.overlayWith("", 3); }, true},
        {"insert", [](DString& s) { s.insert("", 5); }, true},
        {"justify", [](DString& s) { s.leftJustify(5).rightJustify(5).center(5); }, true},
        {"copy", [](DString& s) { s.copy(1); }, true},
        {"change", [](DString& s) { s.change("", "x").change("A", "x", 1, 0).change("z", "x"); }, true},
        {"translate", [](DString& s) { s.translate("", "x").translate("z", "x"); }, true},
        {"remove", [](DString& s) { s.remove(1, 0).remove(6).remove(6, 3); }, true},
    };
    for (NamedEdit const& nothing : idle) {
        DString text("A12-Z");
        char const* const data = text.data();
        nothing.edit(text);
        EXPECT_EQ(text.data(), data) << nothing.name;
        EXPECT_EQ(refsOf(text), 1u) << nothing.name;
        DString const copy(text);
        nothing.edit(text);
        EXPECT_EQ(text.data(), data) << nothing.name;
        EXPECT_EQ(refsOf(text), 2u) << nothing.name;
    }
}

TEST(Remove, OfNothingReturnsTheStringUnchangedWhereTheBufferWouldMakeANewOne) {
    DString text("abcd");
    char const* const data = text.data();
    text.remove(2, 0);
    EXPECT_EQ(text.data(), data);
    ops::Owned const result(ops::bufferOf(text)->remove(2, 0));
    EXPECT_NE(result->contents(), data);
    EXPECT_EQ(result.text(), "abcd");
}

TEST(Editing, TakesArgumentsThatPointIntoTheString) {
    using String = std::string;
    auto const alias = [](String const& start, auto edit) {
        DString text(start);
        edit(text, text.data());
        return contentsOf(text);
    };
    EXPECT_EQ(alias("abcabc", [](DString& s, char const* p) { s.insert(p + 1, 3, 2); }), "abbcacabc");
    EXPECT_EQ(alias("abcabc", [](DString& s, char const* p) { s.overlayWith(p + 2, 4, 1); }), "cabcbc");
    EXPECT_EQ(alias("abcabc", [](DString& s, char const* p) { s.change(p, 1, p + 1, 2); }), "bcbcbcbc");
    EXPECT_EQ(alias("abcabc", [](DString& s, char const* p) { s.change(p, 2, p + 1, 2); }), "bccbcc");
    EXPECT_EQ(alias("abcabc", [](DString& s, char const* p) { s.change(p + 3, 3, p, 3); }), "abcabc");
    EXPECT_EQ(alias("abcabc", [](DString& s, char const* p) { s.translate(p, 3, p + 1, 3); }), "bcabca");
    EXPECT_EQ(alias("xyaxx", [](DString& s, char const* p) { s.strip(p, 2, DStringEnum::both); }), "a");
    EXPECT_EQ(alias("ab", [](DString& s, char const*) { s.insert(s, 1); }), "aabb");
    EXPECT_EQ(alias("ab", [](DString& s, char const*) { s.overlayWith(s, 2); }), "aab");
    EXPECT_EQ(alias("ab", [](DString& s, char const*) { s.change(s, s); }), "ab");
    EXPECT_EQ(alias("ab", [](DString& s, char const*) { s.change("a", s); }), "abb");
    EXPECT_EQ(alias("ab", [](DString& s, char const*) { s.strip(s); }), "");
    EXPECT_EQ(alias("ab", [](DString& s, char const*) { s.translate(s, s); }), "ab");
    EXPECT_EQ(alias("abc", [](DString& s, char const* p) { s.insert(std::string_view(p + 1, 2)); }), "bcabc");
    DString const text("abc");
    EXPECT_TRUE(text.isLike(text));
    EXPECT_TRUE(text.isAbbrevFor(text));
    EXPECT_EQ(text.indexOf(text), 1u);
    EXPECT_EQ(text.occurrencesOf(std::string_view(text).substr(1)), 1u);
}

// Tests that harm

int callsBeforeHarm = 0;
std::function<void()> harm;

int harmful(int c) {
    if (callsBeforeHarm-- == 0) harm();
    return c == 'b' || c == ' ';
}

struct TestUser {
    char const* name;
    std::function<unsigned int(DString&, DStringTest const&)> use;
    unsigned int onOriginal; ///< The answer for "bbxbb bb".
};

std::vector<TestUser> const readers = {
    {"indexOf", [](DString& s, DStringTest const& t) { return s.indexOf(t, 3); }, 4},
    {"indexOfAnyOf", [](DString& s, DStringTest const& t) { return s.indexOfAnyOf(t, 3); }, 4},
    {"indexOfAnyBut", [](DString& s, DStringTest const& t) { return s.indexOfAnyBut(t); }, 3},
    {"lastIndexOf", [](DString& s, DStringTest const& t) { return s.lastIndexOf(t, 3); }, 2},
    {"lastIndexOfAnyOf", [](DString& s, DStringTest const& t) { return s.lastIndexOfAnyOf(t, 3); }, 2},
    {"lastIndexOfAnyBut", [](DString& s, DStringTest const& t) { return s.lastIndexOfAnyBut(t); }, 3},
    {"occurrencesOf", [](DString& s, DStringTest const& t) { return s.occurrencesOf(t); }, 7},
    {"includes", [](DString& s, DStringTest const& t) { return s.includes(t) ? 1u : 0u; }, 1},
};

constexpr char const* original = "bbxbb bb";

struct Harm {
    char const* name;
    std::function<void(DString&)> change;
};

std::vector<Harm> const harms = {
    {"assigns another text", [](DString& s) { s = DString("something else that is rather longer"); }},
    {"clears", [](DString& s) { s = DString(); }},
    {"moves away", [](DString& s) { DString const gone(std::move(s)); }},
    {"edits in place", [](DString& s) { s.reverse().upperCase(); }},
    {"writes through an element", [](DString& s) { s[1] = 'q'; }},
    {"appends", [](DString& s) { s += "0123456789012345678901234567890123456789"; }},
    {"appends a little", [](DString& s) { s += "+"; }},
    {"removes", [](DString& s) { s.remove(1); }},
};

TEST(HarmfulTest, ThatChangesTheStringItSearchesStillSeesTheTextThereWas) {
    for (TestUser const& reader : readers) {
        for (Harm const& kind : harms) {
            for (int calls = 0; calls < 3; ++calls) {
                DString text(original);
                callsBeforeHarm = calls;
                harm = [&] { kind.change(text); };
                EXPECT_EQ(reader.use(text, DStringTest(harmful)), reader.onOriginal)
                    << reader.name << " with a test that " << kind.name << " at call " << calls;
            }
        }
    }
}

TEST(HarmfulTest, ThatDestroysTheStringItSearchesHarmsNothing) {
    for (TestUser const& reader : readers) {
        auto text = std::make_optional<DString>(original);
        callsBeforeHarm = 0;
        harm = [&] { text.reset(); };
        EXPECT_EQ(reader.use(*text, DStringTest(harmful)), reader.onOriginal) << reader.name;
        EXPECT_FALSE(text.has_value());
    }
}

TEST(HarmfulTest, ThatThrowsLeavesTheStringItSearchesAlone) {
    for (TestUser const& reader : readers) {
        for (int calls = 0; calls < 2; ++calls) {
            DString text(original);
            DString const copy(text);
            callsBeforeHarm = calls;
            bool thrown = false;
            harm = [&] {
                thrown = true;
                throw std::runtime_error("harm");
            };
            DStringTest const test(harmful);
            try {
                reader.use(text, test);
                EXPECT_FALSE(thrown) << reader.name;
            } catch (std::runtime_error const&) {
            }
            EXPECT_EQ(text.data(), copy.data()) << reader.name;
            EXPECT_EQ(refsOf(text), 2u) << reader.name;
        }
    }
}

TEST(HarmfulTest, ThatChangesTheStringItStripsGivesTheStrippedTextThereWas) {
    for (auto const mode : {DStringEnum::leading, DStringEnum::trailing, DStringEnum::both}) {
        char const* const expected = mode == DStringEnum::leading    ? "xbb bb"
                                     : mode == DStringEnum::trailing ? "bbx"
                                                                     : "x";
        for (Harm const& kind : harms) {
            for (int calls = 0; calls < 3; ++calls) {
                DString text(original);
                DString const untouched = calls == 1 ? text : DString();
                callsBeforeHarm = calls;
                harm = [&] { kind.change(text); };
                text.strip(DStringTest(harmful), mode);
                EXPECT_EQ(contentsOf(text), expected) << "with a test that " << kind.name;
                EXPECT_EQ(refsOf(text), 1u) << "with a test that " << kind.name;
                EXPECT_EQ(contentsOf(untouched), calls == 1 ? original : "");
            }
        }
    }
}

TEST(HarmfulTest, ThatThrowsLeavesTheStringItStripsAlone) {
    for (bool const shared : {false, true}) {
        DString text(original);
        DString const copy = shared ? text : DString();
        callsBeforeHarm = 1;
        harm = [] { throw std::runtime_error("harm"); };
        char const* const data = text.data();
        EXPECT_THROW(text.strip(DStringTest(harmful)), std::runtime_error);
        EXPECT_EQ(text.data(), data);
        EXPECT_EQ(contentsOf(text), original);
        EXPECT_EQ(refsOf(text), shared ? 2u : 1u);
    }
}

TEST(HarmfulTest, ThatChangesTheStringAndThenThrowsLeavesTheChange) {
    DString text(original);
    callsBeforeHarm = 1;
    harm = [&] {
        text = DString("changed");
        throw std::runtime_error("harm");
    };
    EXPECT_THROW(text.strip(DStringTest(harmful)), std::runtime_error);
    EXPECT_EQ(contentsOf(text), "changed");
    EXPECT_EQ(refsOf(text), 1u);
}

} // namespace
