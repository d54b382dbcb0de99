// Searches of single-byte buffers with a test of the host.
#include "tests/buffers/dbuffer_search_support.h"
#include "tests/buffers/operation_support.h"

#include <vector>

namespace {

using namespace searching;
using operations::bytes;
using operations::farEnd;

std::vector<int> received;
int recordAndReject(int c) {
    received.push_back(c);
    return 0;
}

TEST(BufferSearchByTest, FindsTheFirstByteThatTheTestAccepts) {
    Owned const text("ab12cd34");
    DStringTest const digit(isDigit);
    EXPECT_EQ(text->indexOfAnyOf(digit, 1), 3u);
    EXPECT_EQ(text->indexOfAnyOf(digit, 0), 3u);
    EXPECT_EQ(text->indexOfAnyOf(digit, 5), 7u);
    EXPECT_EQ(text->indexOfAnyOf(digit, 9), 0u);
    EXPECT_EQ(text->indexOf(digit, 1), 3u);
    EXPECT_EQ(text->indexOf(digit, 5), 7u);
    EXPECT_EQ(Owned("xyz")->indexOf(digit, 1), 0u);
    EXPECT_EQ(Owned("")->indexOfAnyOf(digit, 1), 0u);
}

TEST(BufferSearchByTest, FindsTheFirstByteThatTheTestRejects) {
    Owned const text("12ab34");
    DStringTest const digit(isDigit);
    EXPECT_EQ(text->indexOfAnyBut(digit, 1), 3u);
    EXPECT_EQ(text->indexOfAnyBut(digit, 0), 3u);
    EXPECT_EQ(text->indexOfAnyBut(digit, 5), 0u);
    EXPECT_EQ(text->indexOfAnyBut(digit, 7), 0u);
}

/// Has a function, but is of a kind of its own.
class OtherKind : public DStringTest {
public:
    OtherKind() : DStringTest(plainFunction + 1, isDigit) {}
};

TEST(BufferSearchByTest, OfAnotherKindAcceptsNothingEvenWithoutItsClass) {
    DStringTest const copied = OtherKind(); // of exactly the base
    Owned const text("12");
    EXPECT_EQ(text->indexOfAnyOf(copied, 1), 0u);
    EXPECT_EQ(text->indexOfAnyBut(copied, 1), 1u);
    EXPECT_EQ(text->lastIndexOfAnyOf(copied, farEnd), 0u);
    EXPECT_EQ(text->lastIndexOfAnyBut(copied, farEnd), 2u);
}

TEST(BufferSearchByTest, FindsTheLastByteThatTheTestAccepts) {
    Owned const text("ab12cd34e");
    DStringTest const digit(isDigit);
    EXPECT_EQ(text->lastIndexOfAnyOf(digit, farEnd), 8u);
    EXPECT_EQ(text->lastIndexOfAnyOf(digit, 6), 4u);
    EXPECT_EQ(text->lastIndexOfAnyOf(digit, 2), 0u);
    EXPECT_EQ(text->lastIndexOf(digit, 6), 4u);
    EXPECT_EQ(text->lastIndexOf(digit, 100), 8u);
}

TEST(BufferSearchByTest, FindsTheLastByteThatTheTestRejects) {
    Owned const text("12ab34");
    DStringTest const digit(isDigit);
    EXPECT_EQ(text->lastIndexOfAnyBut(digit, farEnd), 4u);
    EXPECT_EQ(text->lastIndexOfAnyBut(digit, 3), 3u);
    EXPECT_EQ(text->lastIndexOfAnyBut(digit, 2), 0u);
}

TEST(BufferSearchByTest, BackwardsFromZeroFindsNothing) {
    DStringTest const digit(isDigit);
    EXPECT_EQ(Owned("123")->lastIndexOf(digit, 0), 0u);
    EXPECT_EQ(Owned("123")->lastIndexOfAnyOf(digit, 0), 0u);
    EXPECT_EQ(Owned("abc")->lastIndexOfAnyBut(digit, 0), 0u);
}

TEST(BufferSearchByTest, AcceptsWhateverIsNotZero) {
    EXPECT_EQ(Owned("xyu")->indexOfAnyOf(DStringTest(isVowel), 1), 3u);
    EXPECT_EQ(Owned("aue")->indexOfAnyBut(DStringTest(isVowel), 1), 0u);
}

TEST(BufferSearchByTest, GivesTheTestEachByteSignExtended) {
    received.clear();
    EXPECT_EQ(Owned(bytes("\xA0z\0\xFF\x80"))->indexOfAnyOf(DStringTest(recordAndReject), 1), 0u);
    EXPECT_EQ(received, (std::vector<int>{-96, 'z', 0, -1, -128}));
    received.clear();
    EXPECT_EQ(Owned(bytes("\xA0z\xFF"))->lastIndexOfAnyOf(DStringTest(recordAndReject), farEnd), 0u);
    EXPECT_EQ(received, (std::vector<int>{-1, 'z', -96}));
    received.clear();
    EXPECT_EQ(Owned(bytes("\xA0z"))->indexOfAnyBut(DStringTest(recordAndReject), 1), 1u);
    EXPECT_EQ(received, (std::vector<int>{-96}));
}

} // namespace
