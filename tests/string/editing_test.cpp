// The edits of strings: what they return, their short forms and defaults, their static forms, and which
// overload a call means.
#include "tests/buffers/operation_support.h"

#include <functional>

namespace {

using operations::bytes;
using operations::contentsOf;
using operations::fresh;
using operations::isB;
using operations::refsOf;

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

} // namespace
