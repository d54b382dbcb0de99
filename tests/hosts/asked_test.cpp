// What the operations ask a class that a host derived, and that they do what it answers. The questions are
// those of the steps that each operation is defined by: fast ways that ask less are for the library's own
// classes.
#include "tests/hosts/host_buffer.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <climits>
#include <cstdlib>
#include <new>
#include <optional>
#include <random>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

namespace {

using hosts::bytesOf;
using hosts::Host;
using hosts::HostsMultiByte;
using hosts::HostsPlain;
using hosts::isHosts;
using hosts::Questions;
using hosts::SwitchAt;
using testing::ElementsAre;
using testing::IsEmpty;

template <class Buffer>
class AnyHost : public testing::Test {
protected:
    static DString text(std::string_view bytes) { return DString(Buffer::make(bytes)); }

    SwitchAt const off{0};
    Host host;
};
using Bases = testing::Types<HostsPlain, HostsMultiByte>;
TYPED_TEST_SUITE(AnyHost, Bases);

/// With `question` it answers from the list, else as the library.
auto answers(std::string const& question, std::vector<unsigned int> list) {
    return [=, next = std::size_t{0}](std::string const& asked, unsigned int) mutable {
        return asked == question && next < list.size() ? std::optional(list[next++]) : std::nullopt;
    };
}

Questions only(std::string const& question, Questions const& asked) {
    Questions result;
    for (std::string const& one : asked)
        if (one.starts_with(question + " ")) result.push_back(one);
    return result;
}

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

// Searches

TEST(MultiByteHost, SaysHowFarBackTheCharacterInFrontBegins) {
    SwitchAt const off(0);
    Host host;
    // Characters of two bytes each.
    host.position = [](std::string const& question, unsigned int start) -> std::optional<unsigned int> {
        return question == "charType" ? std::optional(2 - start % 2) : std::nullopt;
    };
    DString const text(HostsMultiByte::make("abbaab"));
    EXPECT_EQ(text.lastIndexOf('a'), 5U);
    EXPECT_EQ(text.lastIndexOf('a', 4), 1U);
    EXPECT_EQ(text.lastIndexOf("ba"), 3U);
    EXPECT_EQ(text.lastIndexOf("bb"), 0U);
    EXPECT_EQ(text.lastIndexOfAnyOf("bx"), 3U);
    EXPECT_EQ(text.lastIndexOfAnyBut("ax"), 3U);
    EXPECT_EQ(text.lastIndexOfAnyBut('a'), 3U);
    DStringTest const isA([](int c) { return c == 'a' ? 1 : 0; });
    EXPECT_EQ(text.lastIndexOfAnyBut(isA), 3U);
    EXPECT_EQ(text.lastIndexOfAnyOf(isA, 4), 1U);
}

TEST(MultiByteHost, SaysWhereSearchesBeginAlsoInsideOfACharacter) {
    SwitchAt const off(0);
    Host host;
    char character[MB_LEN_MAX + 1] = "xy"; // two characters, where there are none of several bytes
    if (MB_CUR_MAX >= 2) {
        ASSERT_GE(std::wcstombs(character, L"\x3042", sizeof character), 2U);
    }
    std::string const bytes = std::string(character) + "ab";
    DString const text(HostsMultiByte::make(bytes));
    host.position = [](std::string const& question, unsigned int) -> std::optional<unsigned int> {
        return question == "startSearch" || question == "startBackwardsSearch" ? std::optional(2U)
                                                                               : std::nullopt;
    };
    std::string const tail = bytes.substr(1, 2);
    EXPECT_EQ(text.indexOf(tail), 2U);
    EXPECT_EQ(text.indexOf(bytes[1]), 2U);
    EXPECT_EQ(text.lastIndexOf(bytes[1]), 2U);
    EXPECT_EQ(text.lastIndexOf(tail), 2U);
}

TYPED_TEST(AnyHost, MayLetSearchesBeginOutsideOfTheTextWhereTheyFindNothing) {
    for (unsigned int const start : {5U, 7U, 0x80000000U, 0xFFFFFFFFU}) {
        this->host.position = [start](std::string const& question,
                                      unsigned int) -> std::optional<unsigned int> {
            return question == "startSearch" ? std::optional(start) : std::nullopt;
        };
        DString const text = this->text("abab");
        EXPECT_EQ(text.indexOf("ab"), 0U) << start;
        EXPECT_EQ(text.indexOf('a'), 0U) << start;
        EXPECT_EQ(text.indexOfAnyOf("ab"), 0U) << start;
        EXPECT_EQ(text.indexOfAnyBut("xy"), 0U) << start;
    }
}

TYPED_TEST(AnyHost, MayLetBackwardSearchesBeginPastTheEndAsAtTheEnd) {
    this->host.position = [](std::string const& question, unsigned int) -> std::optional<unsigned int> {
        return question == "startBackwardsSearch" ? std::optional(900U) : std::nullopt;
    };
    DString const text = this->text("abab");
    EXPECT_EQ(text.lastIndexOf("ab"), 3U);
    EXPECT_EQ(text.lastIndexOf('a'), 3U);
    EXPECT_EQ(text.lastIndexOfAnyOf("ax"), 3U);
    EXPECT_EQ(text.lastIndexOfAnyBut("ax"), 4U);
}

// Occurrences

TYPED_TEST(AnyHost, IsNotBelievedWhereAnOccurrenceWouldReachBackOrOutOfTheText) {
    struct Case {
        std::vector<unsigned int> answers;
        unsigned int count;
        char const* changed;
    };
    for (Case const& c : {Case{{2, 4, 0}, 2, "a!!"}, Case{{2, 3}, 1, "a!de"}, Case{{2, 2}, 1, "a!de"},
                          Case{{4, 1}, 1, "abc!"}, Case{{5}, 0, "abcde"}, Case{{0xFFFFFFFF}, 0, "abcde"}}) {
        this->host.position = answers("indexOf 2", c.answers);
        EXPECT_EQ(this->text("abcde").occurrencesOf("??"), c.count);
        this->host.position = answers("indexOf 2", c.answers);
        EXPECT_EQ(bytesOf(this->text("abcde").change("??", "!")), c.changed);
        this->host.position = answers("indexOf 2", c.answers);
        std::string sameLength = c.changed;
        for (std::size_t at = 0; (at = sameLength.find('!', at)) != std::string::npos; at += 2)
            sameLength.insert(at, 1, '!');
        EXPECT_EQ(bytesOf(this->text("abcde").change("??", "!!")), sameLength);
    }
}

// Words

TYPED_TEST(AnyHost, IsAskedForWordsUpToWhereTheOneThatIsWantedStarts) {
    DString const text = this->text("a bc d");
    EXPECT_EQ(text.indexOfWord(2), 3U);
    EXPECT_THAT(this->host.asked, ElementsAre("indexOfAnyBut 6 1", "indexOfAnyOf 6 1", "indexOfAnyBut 6 2"));
    this->host.asked.clear();
    EXPECT_EQ(bytesOf(text.word(2)), "bc");
    EXPECT_THAT(this->host.asked,
                ElementsAre("indexOfAnyBut 6 1", "indexOfAnyOf 6 1", "indexOfAnyBut 6 2", "indexOfAnyOf 6 4"))
        << "the end is looked for from the second byte on";
    this->host.asked.clear();
    EXPECT_EQ(text.lengthOfWord(1), 1U);
    EXPECT_THAT(this->host.asked, ElementsAre("indexOfAnyBut 6 1", "indexOfAnyOf 6 2"));
}

TYPED_TEST(AnyHost, IsAskedForAllWordsWhereTheyAreCounted) {
    DString const text = this->text("a bc");
    EXPECT_EQ(text.numWords(), 2U);
    EXPECT_THAT(this->host.asked, ElementsAre("indexOfAnyBut 6 1", "indexOfAnyOf 6 1", "indexOfAnyBut 6 2",
                                              "indexOfAnyOf 6 3"));
}

TYPED_TEST(AnyHost, IsAskedOnceForTheWordsThatAreSpaced) {
    DString text = this->text("a bc");
    EXPECT_EQ(bytesOf(text.space(2, '-')), "a--bc");
    EXPECT_THAT(this->host.asked, ElementsAre("indexOfAnyBut 6 1", "indexOfAnyOf 6 1", "indexOfAnyBut 6 2",
                                              "indexOfAnyOf 6 3"));
}

TYPED_TEST(AnyHost, IsAskedFromTheFrontAgainForTheLastOfSeveralWords) {
    DString const text = this->text("a bc d");
    EXPECT_EQ(bytesOf(text.words(2, 2)), "bc d");
    EXPECT_THAT(only("indexOfAnyBut", this->host.asked),
                ElementsAre("indexOfAnyBut 6 1", "indexOfAnyBut 6 2", "indexOfAnyBut 6 1",
                            "indexOfAnyBut 6 2", "indexOfAnyBut 6 5"));
    EXPECT_THAT(only("lastIndexOfAnyBut", this->host.asked), IsEmpty());
    this->host.asked.clear();
    EXPECT_EQ(bytesOf(text.words(2, 9)), "bc d");
    EXPECT_THAT(only("lastIndexOfAnyBut", this->host.asked), ElementsAre("lastIndexOfAnyBut 6 4294967295"));
}

TYPED_TEST(AnyHost, SaysWhereWordsAre) {
    this->host.position = answers("indexOfAnyBut 6", {2, 5});
    EXPECT_EQ(this->text("abcdef").numWords(), 1U) << "no separator ends the first";
    this->host.position = [](std::string const& question, unsigned int start) -> std::optional<unsigned int> {
        if (question == "indexOfAnyBut 6") return start;
        if (question == "indexOfAnyOf 6") return start + 2; // words of two bytes
        return std::nullopt;
    };
    EXPECT_EQ(this->text("abcdef").numWords(), 3U);
    EXPECT_EQ(bytesOf(this->text("abcdef").space(1, '-')), "ab-cd-ef");
    EXPECT_EQ(bytesOf(this->text("abcdef").removeWords(2)), "abef");
}

TYPED_TEST(AnyHost, FindsNoMoreWordsWhereTheSearchGoesBackOrOutOfTheText) {
    for (unsigned int const answer : {1U, 7U, 0xFFFFFFFFU}) {
        this->host.position = [answer](std::string const& question,
                                       unsigned int) -> std::optional<unsigned int> {
            return question == "indexOfAnyBut 6" ? std::optional(answer) : std::nullopt;
        };
        DString text = this->text("ab cd ");
        EXPECT_EQ(text.numWords(), answer == 1 ? 1U : 0U);
        EXPECT_EQ(bytesOf(text.word(1)), answer == 1 ? "ab" : "");
        EXPECT_EQ(bytesOf(text.space(1, '-')), answer == 1 ? "ab" : "");
    }
}

// Radix conversion

TYPED_TEST(AnyHost, MayCallAnyTextDigitsAndTheStatedArithmeticHolds) {
    this->host.truth = [](std::string const&) { return std::optional(true); };
    struct Case {
        std::string text;
        std::string_view bytes;
    };
    using namespace std::string_view_literals;
    std::string const seventeenZeros(17, '0');
    for (Case const& c : {Case{"\x2F", "\0"sv}, Case{"\x20\x31", "\x01"}, Case{"12x", "\x0C"},
                          Case{"-5", "\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFB"}, Case{"x", "\0"sv}, Case{"", ""},
                          Case{seventeenZeros + "1F", "\x20"}, // 1 * 10 + 22
                          Case{seventeenZeros + " /", "\xFF"}, Case{"256", "\x01\x00"sv}}) {
        DString text = this->text(c.text);
        EXPECT_EQ(bytesOf(text.d2c()), c.bytes) << c.text;
    }
    for (Case const& c : {Case{"\x09\x30", "\x20"}, Case{"1AB", "\x01\xAB"}, Case{"Zz", "\x73"},
                          Case{"\xFF", "\xC8"}, Case{"/", "\xF8"}, Case{"", ""}}) {
        DString text = this->text(c.text);
        EXPECT_EQ(bytesOf(text.x2c()), c.bytes) << c.text;
    }
}

/// The steps of d2c, one digit after the other.
std::string plainBytes(std::string const& text) {
    auto const head = static_cast<unsigned long>(std::strtol(text.substr(0, 18).c_str(), nullptr, 10));
    std::string bytes;
    for (int shift = 56; shift >= 0; shift -= 8)
        bytes += static_cast<char>(head >> shift & 0xFF);
    for (std::size_t i = 18; i < text.size(); ++i) {
        unsigned int carry = static_cast<unsigned char>(text[i] - '0');
        for (std::size_t j = bytes.size(); j-- > 0;) {
            carry += static_cast<unsigned char>(bytes[j]) * 10U;
            bytes[j] = static_cast<char>(carry & 0xFF);
            carry >>= 8;
        }
        if (carry != 0) bytes.insert(0, 1, static_cast<char>(carry));
    }
    std::size_t const first = bytes.find_first_not_of('\0');
    return first == std::string::npos ? std::string(1, '\0') : bytes.substr(first);
}

TYPED_TEST(AnyHost, MayCallAnyLongTextDigits) {
    this->host.truth = [](std::string const&) { return std::optional(true); };
    std::mt19937 random(1);
    for (int round = 0; round < 2000; ++round) {
        std::string text(random() % 60, '\0');
        for (char& c : text)
            c = static_cast<char>(random() % 3 == 0 ? random() % 256 : '0' + random() % 10);
        if (text.empty()) continue;
        ASSERT_EQ(bytesOf(this->text(text).d2c()), plainBytes(text)) << testing::PrintToString(text);
    }
}

TYPED_TEST(AnyHost, MayDenyThatDigitsAreDigits) {
    this->host.truth = [](std::string const&) { return std::optional(false); };
    EXPECT_EQ(bytesOf(this->text("12").d2c()), "");
    EXPECT_EQ(bytesOf(this->text("12").x2c()), "");
    SwitchAt const on(1);
    EXPECT_EQ(bytesOf(this->text("12").d2c()), "\x0C") << "then it is not asked";
    EXPECT_EQ(bytesOf(this->text("12").x2c()), "\x12");
}

// Empty texts

TYPED_TEST(AnyHost, KeepsItsEmptyTextInD2cUnlessItSaysThatThatIsNoNumber) {
    DString denied = this->text("");
    EXPECT_FALSE(isHosts(denied.d2c())) << "an empty text is not of digits";
    this->host.truth = [](std::string const&) { return std::optional(true); };
    DString accepted = this->text("");
    EXPECT_TRUE(isHosts(accepted.d2c()));
    SwitchAt const on(1);
    DString notAsked = this->text("");
    EXPECT_TRUE(isHosts(notAsked.d2c()));
}

TYPED_TEST(AnyHost, HasAnEmptyComplementOfTheDefaultClass) {
    DString const complement = ~this->text("");
    EXPECT_TRUE(complement.isEmpty());
    EXPECT_FALSE(isHosts(complement));
    EXPECT_EQ(bytesOf(~this->text("a")), "\x9E");
}

TYPED_TEST(AnyHost, IsAskedWhetherItsEmptyTextIsEqualToNothing) {
    EXPECT_TRUE(this->text("").isAbbrevFor("PRINT"));
    EXPECT_TRUE(this->text("").isAbbrevFor(nullptr));
    std::vector<std::string> others;
    this->host.order = [&others](std::string_view other) {
        others.emplace_back(other);
        return std::optional(2);
    };
    EXPECT_FALSE(this->text("").isAbbrevFor("PRINT"));
    EXPECT_FALSE(this->text("").isAbbrevFor(nullptr));
    EXPECT_THAT(others, ElementsAre("", ""));
}

// Making buffers

TYPED_TEST(AnyHost, MayMakeABufferThatIsTooLong) {
    this->host.lengthMade = [](unsigned int size) { return std::optional(size + 5); };
    DString text = this->text("abc");
    EXPECT_EQ(bytesOf(text.leftJustify(5, '.')), "abc..");
    EXPECT_EQ(bytesOf(text += "de"), "abc..de");
    EXPECT_EQ(bytesOf(text.reverse()), "ed..cba");
    EXPECT_EQ(text.c_str()[7], '\0');
}

TYPED_TEST(AnyHost, MakesNoBufferWhereItMakesOneThatIsTooShort) {
    DString text = this->text("abc");
    this->host.lengthMade = [](unsigned int size) { return std::optional(size - 1); };
    EXPECT_THROW(text.leftJustify(5, '.'), std::bad_alloc);
    EXPECT_THROW(text += "de", std::bad_alloc);
    EXPECT_THROW(text.copy(2), std::bad_alloc);
    EXPECT_EQ(bytesOf(text), "abc");
}

// Streams

TYPED_TEST(AnyHost, KeepsItsClassWhenAWordIsReadIntoItsText) {
    for (char const* const word : {"x", "xyz", "xyzuv", "a longer one"}) {
        DString text = this->text("abc");
        std::istringstream in(word);
        in >> text;
        EXPECT_EQ(bytesOf(text), std::string(word).substr(0, std::string(word).find(' ')));
        EXPECT_TRUE(isHosts(text)) << word;
    }
    DString empty = this->text("");
    std::istringstream in("word");
    in >> empty;
    EXPECT_FALSE(isHosts(empty)) << "the work space of an empty text is one of the default class";
}

TYPED_TEST(AnyHost, LeavesTheTextAloneWhenAWordReadCannotBeCut) {
    DString text = this->text("abcd");
    this->host.lengthMade = [](unsigned int) { return std::optional(0U); };
    std::istringstream in("xy");
    EXPECT_THROW(in >> text, std::bad_alloc);
    EXPECT_EQ(bytesOf(text), "abcd");
}

} // namespace
