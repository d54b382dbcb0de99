// What the operations on words ask a class that a host derived, and that they do what it answers. The
// questions are those of the steps that each operation is defined by: fast ways that ask less are for the
// library's own classes.
#include "tests/hosts/asked_support.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <optional>
#include <string>

namespace {

using namespace hosts;
using testing::ElementsAre;
using testing::IsEmpty;

TYPED_TEST(AnyHost, IsAskedForWordsUpToWhereTheRequestedOneStarts) {
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

} // namespace
