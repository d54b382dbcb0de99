// Searches of single-byte buffers for members of a set.
#include "tests/buffers/dbuffer_search_support.h"
#include "tests/buffers/operation_support.h"

namespace {

using namespace searching;
using operations::bytes;
using operations::farEnd;

TEST(BufferIndexOfAnyOf, FindsTheFirstByteOfTheSet) {
    EXPECT_EQ(abcabc()->indexOfAnyOf("xc", 2, 1), 3u);
    EXPECT_EQ(abcabc()->indexOfAnyOf("xc", 2, 0), 3u);
    EXPECT_EQ(abcabc()->indexOfAnyOf("xc", 2, 4), 6u);
    EXPECT_EQ(abcabc()->indexOfAnyOf("cb", 2, 1), 2u);
    EXPECT_EQ(abcabc()->indexOfAnyOf("c", 1, 6), 6u);
    EXPECT_EQ(abcabc()->indexOfAnyOf("xyz", 3, 1), 0u);
    EXPECT_EQ(abcabc()->indexOfAnyOf("abc", 3, 7), 0u);
    EXPECT_EQ(abcabc()->indexOfAnyOf("abc", 3, farEnd), 0u);
}

TEST(BufferIndexOfAnyOf, FindsNothingForAnEmptySet) {
    EXPECT_EQ(abcabc()->indexOfAnyOf("", 0, 1), 0u);
    EXPECT_EQ(abcabc()->indexOfAnyOf(nullptr, 0, 0), 0u);
}

TEST(BufferIndexOfAnyOf, TakesNulsAndHighBytesAsMembers) {
    Owned const text(bytes("ab\0\x80\xFF"));
    EXPECT_EQ(text->indexOfAnyOf("\xFF\x80", 2, 1), 4u);
    EXPECT_EQ(text->indexOfAnyOf("\xFF", 1, 1), 5u);
    EXPECT_EQ(text->indexOfAnyOf("z\0", 2, 1), 3u);
}

TEST(BufferIndexOfAnyOf, LooksForAllMembersOfALargeSet) {
    std::string set;
    for (int c = 1; c < 256; c += 2)
        set += static_cast<char>(c);
    Owned const text(bytes("\2\4\6\x80\xFE\xFD"));
    EXPECT_EQ(text->indexOfAnyOf(set.data(), operations::lengthOf(set), 1), 6u);
    EXPECT_EQ(text->indexOfAnyBut(set.data(), operations::lengthOf(set), 6), 0u);
    EXPECT_EQ(text->lastIndexOfAnyBut(set.data(), operations::lengthOf(set), farEnd), 5u);
    EXPECT_EQ(text->lastIndexOfAnyOf(set.data(), operations::lengthOf(set), 5), 0u);
}

TEST(BufferIndexOfAnyBut, FindsTheFirstByteOutsideTheSet) {
    EXPECT_EQ(abcabc()->indexOfAnyBut("ab", 2, 1), 3u);
    EXPECT_EQ(abcabc()->indexOfAnyBut("ab", 2, 0), 3u);
    EXPECT_EQ(abcabc()->indexOfAnyBut("ab", 2, 4), 6u);
    EXPECT_EQ(abcabc()->indexOfAnyBut("a", 1, 1), 2u);
    EXPECT_EQ(abcabc()->indexOfAnyBut("a", 1, 4), 5u);
    EXPECT_EQ(abcabc()->indexOfAnyBut("abc", 3, 1), 0u);
    EXPECT_EQ(abcabc()->indexOfAnyBut("x", 1, 7), 0u);
    EXPECT_EQ(Owned("aaaa")->indexOfAnyBut("a", 1, 1), 0u);
}

TEST(BufferIndexOfAnyBut, WithAnEmptySetAnswersWithTheStart) {
    EXPECT_EQ(abcabc()->indexOfAnyBut("", 0, 4), 4u);
    EXPECT_EQ(abcabc()->indexOfAnyBut("", 0, 0), 1u);
    EXPECT_EQ(abcabc()->indexOfAnyBut(nullptr, 0, 6), 6u);
    EXPECT_EQ(abcabc()->indexOfAnyBut("", 0, 7), 0u);
    EXPECT_EQ(Owned("")->indexOfAnyBut("", 0, 1), 0u);
}

TEST(BufferLastIndexOfAnyOf, FindsTheLastByteOfTheSet) {
    EXPECT_EQ(abcabc()->lastIndexOfAnyOf("ax", 2, farEnd), 4u);
    EXPECT_EQ(abcabc()->lastIndexOfAnyOf("ax", 2, 3), 1u);
    EXPECT_EQ(abcabc()->lastIndexOfAnyOf("c", 1, 5), 3u);
    EXPECT_EQ(abcabc()->lastIndexOfAnyOf("c", 1, 6), 6u);
    EXPECT_EQ(abcabc()->lastIndexOfAnyOf("xy", 2, farEnd), 0u);
    EXPECT_EQ(abcabc()->lastIndexOfAnyOf("abc", 3, 0), 0u);
    EXPECT_EQ(abcabc()->lastIndexOfAnyOf("a", 1, 0), 0u);
    EXPECT_EQ(Owned("")->lastIndexOfAnyOf("a", 1, farEnd), 0u);
}

TEST(BufferLastIndexOfAnyOf, FindsNothingForAnEmptySet) {
    EXPECT_EQ(abcabc()->lastIndexOfAnyOf("", 0, farEnd), 0u);
    EXPECT_EQ(abcabc()->lastIndexOfAnyOf(nullptr, 0, 3), 0u);
}

TEST(BufferLastIndexOfAnyBut, FindsTheLastByteOutsideTheSet) {
    EXPECT_EQ(abcabc()->lastIndexOfAnyBut("bc", 2, farEnd), 4u);
    EXPECT_EQ(abcabc()->lastIndexOfAnyBut("bc", 2, 3), 1u);
    EXPECT_EQ(abcabc()->lastIndexOfAnyBut("c", 1, farEnd), 5u);
    EXPECT_EQ(abcabc()->lastIndexOfAnyBut("abc", 3, farEnd), 0u);
    EXPECT_EQ(abcabc()->lastIndexOfAnyBut("x", 1, 0), 0u);
    EXPECT_EQ(abcabc()->lastIndexOfAnyBut("xy", 2, 0), 0u);
}

TEST(BufferLastIndexOfAnyBut, WithAnEmptySetAnswersWithTheStartBroughtIntoTheText) {
    EXPECT_EQ(abcabc()->lastIndexOfAnyBut("", 0, 9), 6u);
    EXPECT_EQ(abcabc()->lastIndexOfAnyBut("", 0, 4), 4u);
    EXPECT_EQ(abcabc()->lastIndexOfAnyBut(nullptr, 0, farEnd), 6u);
    EXPECT_EQ(abcabc()->lastIndexOfAnyBut("", 0, 0), 0u);
    EXPECT_EQ(Owned("")->lastIndexOfAnyBut("", 0, farEnd), 0u);
}

} // namespace
