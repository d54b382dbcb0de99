// Searches of single-byte buffers for patterns, and where searches start.
#include "tests/buffers/dbuffer_search_support.h"
#include "tests/buffers/operation_support.h"

namespace {

using namespace searching;
using operations::bytes;
using operations::farEnd;

TEST(BufferStartSearch, TakesAStartOfZeroAsOne) {
    EXPECT_EQ(abcabc()->startSearch(0, 1), 1u);
    EXPECT_EQ(abcabc()->startSearch(0, 6), 1u);
    EXPECT_EQ(abcabc()->startSearch(0, 0), 1u);
}

TEST(BufferStartSearch, ReturnsTheStartWhereThePatternHasRoom) {
    EXPECT_EQ(abcabc()->startSearch(1, 6), 1u);
    EXPECT_EQ(abcabc()->startSearch(3, 4), 3u);
    EXPECT_EQ(abcabc()->startSearch(6, 1), 6u);
    EXPECT_EQ(abcabc()->startSearch(6, 0), 6u);
}

TEST(BufferStartSearch, ReturnsZeroWithoutRoomForThePattern) {
    EXPECT_EQ(abcabc()->startSearch(7, 1), 0u);
    EXPECT_EQ(abcabc()->startSearch(7, 0), 0u);
    EXPECT_EQ(abcabc()->startSearch(3, 5), 0u);
    EXPECT_EQ(abcabc()->startSearch(1, 7), 0u);
    EXPECT_EQ(abcabc()->startSearch(0, 7), 0u);
    EXPECT_EQ(abcabc()->startSearch(farEnd, 1), 0u);
    EXPECT_EQ(abcabc()->startSearch(1, farEnd), 0u);
    EXPECT_EQ(abcabc()->startSearch(farEnd, farEnd), 0u);
}

TEST(BufferStartSearch, FindsNoRoomInAnEmptyBuffer) {
    EXPECT_EQ(Owned("")->startSearch(0, 0), 0u);
    EXPECT_EQ(Owned("")->startSearch(1, 0), 0u);
    EXPECT_EQ(Owned("")->startSearch(1, 1), 0u);
}

TEST(BufferStartBackwardsSearch, TakesTheSmallestOfStartLengthAndLastRoom) {
    EXPECT_EQ(abcabc()->startBackwardsSearch(100, 2), 5u);
    EXPECT_EQ(abcabc()->startBackwardsSearch(5, 2), 5u);
    EXPECT_EQ(abcabc()->startBackwardsSearch(4, 2), 4u);
    EXPECT_EQ(abcabc()->startBackwardsSearch(farEnd, 1), 6u);
    EXPECT_EQ(abcabc()->startBackwardsSearch(farEnd, 6), 1u);
}

TEST(BufferStartBackwardsSearch, NeverPassesTheLengthForAnEmptyPattern) {
    EXPECT_EQ(abcabc()->startBackwardsSearch(7, 0), 6u);
    EXPECT_EQ(abcabc()->startBackwardsSearch(farEnd, 0), 6u);
    EXPECT_EQ(abcabc()->startBackwardsSearch(3, 0), 3u);
}

TEST(BufferStartBackwardsSearch, ReturnsZeroForAPatternLongerThanTheText) {
    EXPECT_EQ(abcabc()->startBackwardsSearch(100, 7), 0u);
    EXPECT_EQ(abcabc()->startBackwardsSearch(1, farEnd), 0u);
    EXPECT_EQ(Owned("")->startBackwardsSearch(1, 1), 0u);
    EXPECT_EQ(Owned("")->startBackwardsSearch(1, 0), 0u);
}

TEST(BufferStartBackwardsSearch, UnlikeTheForwardRuleLeavesAStartOfZeroAtNothing) {
    EXPECT_EQ(abcabc()->startBackwardsSearch(0, 1), 0u);
    EXPECT_EQ(abcabc()->startBackwardsSearch(0, 0), 0u);
}

TEST(BufferIndexOf, FindsTheFirstOccurrenceAtOrAfterTheStart) {
    EXPECT_EQ(abcabc()->indexOf("bc", 2, 1), 2u);
    EXPECT_EQ(abcabc()->indexOf("bc", 2, 2), 2u);
    EXPECT_EQ(abcabc()->indexOf("bc", 2, 3), 5u);
    EXPECT_EQ(abcabc()->indexOf("bc", 2, 5), 5u);
    EXPECT_EQ(abcabc()->indexOf("abcabc", 6, 1), 1u);
    EXPECT_EQ(abcabc()->indexOf("c", 1, 4), 6u);
}

TEST(BufferIndexOf, TakesAStartOfZeroAsOne) {
    EXPECT_EQ(abcabc()->indexOf("bc", 2, 0), 2u);
    EXPECT_EQ(abcabc()->indexOf("a", 1, 0), 1u);
}

TEST(BufferIndexOf, FindsOnlyMatchesThatLieWhollyInsideTheText) {
    EXPECT_EQ(abcabc()->indexOf("bc", 2, 6), 0u);
    EXPECT_EQ(abcabc()->indexOf("bcx", 3, 5), 0u);
    EXPECT_EQ(abcabc()->indexOf("c\0", 2, 6), 0u) << "the terminating NUL is no part of it";
    EXPECT_EQ(abcabc()->indexOf("abcabca", 7, 1), 0u);
    EXPECT_EQ(abcabc()->indexOf("a", 1, 7), 0u);
    EXPECT_EQ(abcabc()->indexOf("a", 1, farEnd), 0u);
}

TEST(BufferIndexOf, FindsNothingForAnEmptyPattern) {
    EXPECT_EQ(abcabc()->indexOf("", 0, 1), 0u);
    EXPECT_EQ(abcabc()->indexOf("", 0, 0), 0u);
    EXPECT_EQ(abcabc()->indexOf("", 0, 6), 0u);
    EXPECT_EQ(abcabc()->indexOf(nullptr, 0, 1), 0u);
}

TEST(BufferIndexOf, FindsNothingInAnEmptyText) {
    EXPECT_EQ(Owned("")->indexOf("a", 1, 1), 0u);
    EXPECT_EQ(Owned("")->indexOf("ab", 2, 0), 0u);
    EXPECT_EQ(Owned("")->indexOf("", 0, 0), 0u);
}

TEST(BufferIndexOf, TreatsEmbeddedNulsAndHighBytesLikeAnyByte) {
    Owned const text(bytes("a\0b\0\xFF\0c"));
    EXPECT_EQ(text->indexOf("\0", 1, 1), 2u);
    EXPECT_EQ(text->indexOf("\0", 1, 3), 4u);
    EXPECT_EQ(text->indexOf("\xFF\0", 2, 1), 5u);
    EXPECT_EQ(text->indexOf("\0c", 2, 1), 6u);
}

TEST(BufferIndexOf, FindsAPatternAfterPartialMatches) {
    EXPECT_EQ(Owned("aaaaab")->indexOf("aab", 3, 1), 4u);
    EXPECT_EQ(Owned("ababac")->indexOf("abac", 4, 1), 3u);
    EXPECT_EQ(Owned("ababac")->indexOf("abad", 4, 1), 0u);
}

TEST(BufferLastIndexOf, FindsTheLastOccurrenceThatBeginsAtOrBeforeTheStart) {
    EXPECT_EQ(abcabc()->lastIndexOf("bc", 2, farEnd), 5u);
    EXPECT_EQ(abcabc()->lastIndexOf("bc", 2, 6), 5u);
    EXPECT_EQ(abcabc()->lastIndexOf("bc", 2, 5), 5u);
    EXPECT_EQ(abcabc()->lastIndexOf("bc", 2, 4), 2u);
    EXPECT_EQ(abcabc()->lastIndexOf("bc", 2, 2), 2u);
    EXPECT_EQ(abcabc()->lastIndexOf("bc", 2, 1), 0u);
    EXPECT_EQ(abcabc()->lastIndexOf("a", 1, 3), 1u);
    EXPECT_EQ(abcabc()->lastIndexOf("a", 1, 4), 4u);
    EXPECT_EQ(abcabc()->lastIndexOf("abcabc", 6, 1), 1u);
    EXPECT_EQ(abcabc()->lastIndexOf("abcabcx", 7, 9), 0u);
}

TEST(BufferLastIndexOf, UnlikeTheForwardSearchFindsNothingFromZero) {
    EXPECT_EQ(abcabc()->lastIndexOf("bc", 2, 0), 0u);
    EXPECT_EQ(abcabc()->lastIndexOf("a", 1, 0), 0u);
    EXPECT_EQ(abcabc()->indexOf("a", 1, 0), 1u);
}

TEST(BufferLastIndexOf, FindsNothingForAnEmptyPattern) {
    EXPECT_EQ(abcabc()->lastIndexOf("", 0, farEnd), 0u);
    EXPECT_EQ(abcabc()->lastIndexOf(nullptr, 0, 3), 0u);
    EXPECT_EQ(Owned("")->lastIndexOf("", 0, 1), 0u);
}

TEST(BufferLastIndexOf, TreatsEmbeddedNulsLikeAnyByte) {
    Owned const text(bytes("a\0b\0a\0c"));
    EXPECT_EQ(text->lastIndexOf("a\0", 2, farEnd), 5u);
    EXPECT_EQ(text->lastIndexOf("\0", 1, 5), 4u);
}

} // namespace
