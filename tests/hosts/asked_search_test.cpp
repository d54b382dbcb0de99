// What the searches and counting ask a class that a host derived, and that they do what it answers. The
// questions are those of the steps that each operation is defined by: fast ways that ask less are for the
// library's own classes.
#include "tests/hosts/asked_support.h"

#include <gtest/gtest.h>

#include <climits>
#include <cstdlib>
#include <optional>
#include <string>
#include <vector>

namespace {

using namespace hosts;

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

} // namespace
