// What the edits, and the queries of classes, ask a class that a host derived, and that they do what it
// answers. The questions are those of the steps that each operation is defined by: fast ways that ask less
// are for the library's own classes.
#include "tests/hosts/asked_support.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

namespace {

using namespace hosts;
using testing::ElementsAre;
using testing::IsEmpty;

// Case

TYPED_TEST(AnyHost, IsAskedForTheNextLetterAfterEachOne) {
    DString text = this->text("ab-cD");
    EXPECT_EQ(bytesOf(text.upperCase()), "AB-CD");
    EXPECT_THAT(
        only("indexOfAnyOf", this->host.asked),
        ElementsAre("indexOfAnyOf 26 1", "indexOfAnyOf 26 2", "indexOfAnyOf 26 3", "indexOfAnyOf 26 5"));
    this->host.asked.clear();
    EXPECT_EQ(bytesOf(text.lowerCase()), "ab-cd");
    EXPECT_THAT(only("indexOfAnyOf", this->host.asked),
                ElementsAre("indexOfAnyOf 26 1", "indexOfAnyOf 26 2", "indexOfAnyOf 26 3",
                            "indexOfAnyOf 26 5", "indexOfAnyOf 26 6"));
}

TYPED_TEST(AnyHost, SaysWhichBytesCaseMappingMovesBy32WhateverTheyAre) {
    this->host.position = answers("indexOfAnyOf 26", {1, 4, 0});
    DString text = this->text("0a-cd");
    EXPECT_EQ(bytesOf(text.upperCase()), "\x10"
                                         "a-Cd");
    this->host.position = answers("indexOfAnyOf 26", {2, 3, 0});
    EXPECT_EQ(bytesOf(text.lowerCase()), "\x10"
                                         "\x81"
                                         "MCd");
}

TYPED_TEST(AnyHost, IsNotBelievedAboutPlacesOutsideOfTheTextOrBeforeWhereItWasAsked) {
    for (std::vector<unsigned int> const& list :
         {std::vector<unsigned int>{6}, {0xFFFFFFFF}, {2, 2}, {2, 1}, {2, 6}}) {
        this->host.position = answers("indexOfAnyOf 26", list);
        DString text = this->text("abcde");
        EXPECT_EQ(bytesOf(text.upperCase()), list.size() == 1 ? "abcde" : "aBcde");
    }
}

TYPED_TEST(AnyHost, LeavesTheTextAloneWhenItsSearchThrows) {
    this->host.position = [](std::string const& question, unsigned int start) -> std::optional<unsigned int> {
        if (question == "indexOfAnyOf 26" && start == 3) throw start;
        return std::nullopt;
    };
    DString text = this->text("abcde");
    EXPECT_THROW(text.upperCase(), unsigned int);
    EXPECT_EQ(bytesOf(text), "abcde");
}

TEST(MultiByteHost, SaysWhichLettersAreWholeCharacters) {
    SwitchAt const off(0);
    Host host;
    host.position = [](std::string const& question, unsigned int start) -> std::optional<unsigned int> {
        return question == "charType" ? std::optional(start == 2 ? 1U : 0U) : std::nullopt;
    };
    DString text(HostsMultiByte::make("abc"));
    EXPECT_EQ(bytesOf(text.upperCase()), "AbC");
}

// Translation

TYPED_TEST(AnyHost, IsAskedForTheNextCharacterToTranslateAfterEachOne) {
    DString text = this->text("abcab");
    EXPECT_EQ(bytesOf(text.translate("ab", "xy")), "xycxy");
    EXPECT_THAT(only("indexOfAnyOf", this->host.asked),
                ElementsAre("indexOfAnyOf 2 1", "indexOfAnyOf 2 2", "indexOfAnyOf 2 3", "indexOfAnyOf 2 5",
                            "indexOfAnyOf 2 6"));
}

TYPED_TEST(AnyHost, SaysWhatIsTranslatedAndWhatEqualsNothingInTheTableStays) {
    this->host.position = answers("indexOfAnyOf 2", {2, 3, 4, 0});
    DString text = this->text("abcab");
    EXPECT_EQ(bytesOf(text.translate("ab", "xy")), "aycxb");
    this->host.position = answers("indexOfAnyOf 2", {2, 0});
    DString empty = this->text("");
    EXPECT_EQ(bytesOf(empty.translate("ab", "xy")), "");
}

// Classes

TEST(MultiByteHost, SaysWhereClassificationBegins) {
    SwitchAt const off(0);
    Host host;
    DString const text(HostsMultiByte::make("ab12"));
    EXPECT_FALSE(text.isPunctuation());
    EXPECT_THAT(host.asked, ElementsAre("startSearch 1"));
    host.position = [](std::string const&, unsigned int) { return std::optional(3U); };
    EXPECT_TRUE(text.isDigits());
    EXPECT_FALSE(text.isAlphabetic());
    for (unsigned int const nowhere : {0U, 5U, 0xFFFFFFFFU}) {
        host.position = [nowhere](std::string const&, unsigned int) { return std::optional(nowhere); };
        EXPECT_TRUE(text.isPunctuation()) << nowhere;
    }
    EXPECT_FALSE(DString(HostsMultiByte::make("")).isPunctuation());
}

TEST(PlainHost, IsAskedForWhatIsOfNoClass) {
    SwitchAt const off(0);
    Host host;
    EXPECT_TRUE(DString(HostsPlain::make("ab")).isAlphabetic());
    EXPECT_THAT(host.asked, ElementsAre("indexOfAnyBut test 1"));
}

// Strip and insert

TYPED_TEST(AnyHost, IsAskedWhatStripLeaves) {
    DString text = this->text("--a--");
    EXPECT_EQ(bytesOf(text.strip('-')), "a");
    EXPECT_THAT(only("indexOfAnyBut", this->host.asked), ElementsAre("indexOfAnyBut 1 1"));
    EXPECT_THAT(only("lastIndexOfAnyBut", this->host.asked), ElementsAre("lastIndexOfAnyBut 1 5"));
}

TYPED_TEST(AnyHost, SaysWhatStripLeavesAsFarAsThatIsPartOfTheText) {
    struct Case {
        unsigned int first, last;
        char const* left;
    };
    for (Case const& c :
         {Case{2, 4, "bcd"}, Case{3, 3, "c"}, Case{4, 2, ""}, Case{6, 6, ""}, Case{2, 9, "bcde"},
          Case{0xFFFFFFFF, 0xFFFFFFFF, ""}, Case{1, 0, ""}, Case{0, 3, ""}}) {
        this->host.position = [&c](std::string const& question, unsigned int) -> std::optional<unsigned int> {
            if (question == "indexOfAnyBut 1") return c.first;
            if (question == "lastIndexOfAnyBut 1") return c.last;
            return std::nullopt;
        };
        EXPECT_EQ(bytesOf(this->text("abcde").strip('-')), c.left) << c.first << " to " << c.last;
    }
}

TEST(MultiByteHost, IsAskedNothingWithTheSwitchOn) {
    SwitchAt const on(1);
    Host host;
    EXPECT_EQ(bytesOf(DString(HostsMultiByte::make("--a--")).strip("-+", DStringEnum::both)), "a");
    EXPECT_EQ(bytesOf(DString(HostsMultiByte::make(" a ")).strip()), "a");
    EXPECT_EQ(bytesOf(DString(HostsMultiByte::make("abc")).insert("xy", 2)), "abxyc");
    EXPECT_EQ(bytesOf(DString(HostsMultiByte::make("abc")).upperCase()), "ABC");
    EXPECT_EQ(bytesOf(DString(HostsMultiByte::make("abc")).translate("b", "x")), "axc");
    EXPECT_EQ(bytesOf(DString(HostsMultiByte::make("abc")).reverse()), "cba");
    EXPECT_EQ(bytesOf(DString(HostsMultiByte::make("abc")).overlayWith("x", 2)), "axc");
    EXPECT_EQ(bytesOf(DString(HostsMultiByte::make("abc")).leftJustify(2)), "ab");
    EXPECT_THAT(host.asked, IsEmpty());
}

} // namespace
