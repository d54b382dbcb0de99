// The searches of single-byte buffers: positions, starts, sets, tests, and which searches call which others.
// What a string's own front end adds to them is tested with the front end.
#include "tests/buffers/operation_support.h"

#include <cctype>
#include <vector>

namespace {

using ops::bytes;
using ops::farEnd;
using ops::Owned;

Owned abcabc() { return Owned("abcabc"); }

int isDigit(int c) { return c >= '0' && c <= '9'; }
int isVowel(int c) { return c == 'a' || c == 'e' || c == 'i' || c == 'o' || c == 'u' ? 7 : 0; }

std::vector<int> received;
int rememberAndReject(int c) {
    received.push_back(c);
    return 0;
}

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
    EXPECT_EQ(abcabc()->indexOf("c\0", 2, 6), 0u) << "the NUL behind the text is no part of it";
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
    EXPECT_EQ(text->indexOfAnyOf(set.data(), ops::lengthOf(set), 1), 6u);
    EXPECT_EQ(text->indexOfAnyBut(set.data(), ops::lengthOf(set), 6), 0u);
    EXPECT_EQ(text->lastIndexOfAnyBut(set.data(), ops::lengthOf(set), farEnd), 5u);
    EXPECT_EQ(text->lastIndexOfAnyOf(set.data(), ops::lengthOf(set), 5), 0u);
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
    EXPECT_EQ(Owned(bytes("\xA0z\0\xFF\x80"))->indexOfAnyOf(DStringTest(rememberAndReject), 1), 0u);
    EXPECT_EQ(received, (std::vector<int>{-96, 'z', 0, -1, -128}));
    received.clear();
    EXPECT_EQ(Owned(bytes("\xA0z\xFF"))->lastIndexOfAnyOf(DStringTest(rememberAndReject), farEnd), 0u);
    EXPECT_EQ(received, (std::vector<int>{-1, 'z', -96}));
    received.clear();
    EXPECT_EQ(Owned(bytes("\xA0z"))->indexOfAnyBut(DStringTest(rememberAndReject), 1), 1u);
    EXPECT_EQ(received, (std::vector<int>{-96}));
}

TEST(StringTest, AnswersWhatItsFunctionAnswers) {
    EXPECT_EQ(DStringTest(isVowel).test('a'), 7);
    EXPECT_EQ(DStringTest(isVowel).test('x'), 0);
}

class OfAnotherKind : public DStringTest {
public:
    OfAnotherKind() : DStringTest(2, isVowel) {}
};

TEST(StringTest, OfAnotherKindThanAPlainFunctionAcceptsNothing) {
    EXPECT_EQ(OfAnotherKind().test('a'), 0);
    EXPECT_EQ(Owned("aaa")->indexOfAnyOf(OfAnotherKind(), 1), 0u);
    EXPECT_EQ(Owned("aaa")->indexOfAnyBut(OfAnotherKind(), 1), 1u);
}

class HostsOwnTest : public DStringTest {
public:
    explicit HostsOwnTest(int wanted) : DStringTest(nullptr), wanted_(wanted) {}
    int test(int c) const override { return c == wanted_ ? 1 : 0; }

private:
    int wanted_;
};

TEST(StringTest, OfAHostsOwnClassIsAskedVirtually) {
    EXPECT_EQ(abcabc()->indexOf(HostsOwnTest('c'), 1), 3u);
    EXPECT_EQ(abcabc()->lastIndexOf(HostsOwnTest('b'), farEnd), 5u);
    EXPECT_EQ(abcabc()->indexOfAnyBut(HostsOwnTest('a'), 1), 2u);
    EXPECT_EQ(abcabc()->lastIndexOfAnyBut(HostsOwnTest('c'), farEnd), 5u);
}

TEST(StringTest, SaysLikeEveryObjectOfTheTreeWhatItIs) {
    DStringTest const test(isVowel);
    EXPECT_EQ(ops::contentsOf(test.asString()), "DVBase object");
    EXPECT_EQ(ops::contentsOf(test.asDebugInfo()).substr(0, 8), "DVBase(@");
}

/// A host's own buffer class, which answers some searches in its own way.
class HostsBuffer : public DBuffer {
public:
    using DBuffer::DBuffer;
    using DBuffer::indexOf;
    using DBuffer::indexOfAnyBut;
    using DBuffer::indexOfAnyOf;
    using DBuffer::lastIndexOfAnyBut;
    using DBuffer::lastIndexOfAnyOf;

    unsigned int indexOfAnyOf(char const*, unsigned int, unsigned int start) const override {
        return 1000 + start;
    }
    unsigned int indexOfAnyOf(DStringTest const&, unsigned int start) const override { return 2000 + start; }
    unsigned int lastIndexOfAnyOf(DStringTest const&, unsigned int start) const override {
        return 3000 + start;
    }
};

template <class Buffer>
Owned make(std::string_view text) {
    Buffer* const buffer =
        ::new (::operator new[](sizeof(Buffer) + text.size() + 1)) Buffer(ops::lengthOf(text));
    std::memcpy(buffer->contents(), text.data(), text.size());
    return Owned(buffer);
}

TEST(HostsOwnBufferClass, IsAskedForOneBytePatternsAsForASetOfOne) {
    Owned const text = make<HostsBuffer>("abcabc");
    EXPECT_EQ(text->indexOf("c", 1, 4), 1004u);
    EXPECT_EQ(text->indexOf("ca", 2, 1), 3u);
}

TEST(HostsOwnBufferClass, IsAskedForTestsAsForAnyOfTheTest) {
    Owned const text = make<HostsBuffer>("abcabc");
    DStringTest const test(isVowel);
    EXPECT_EQ(text->indexOf(test, 4), 2004u);
    EXPECT_EQ(text->lastIndexOf(test, 4), 3004u);
}

TEST(HostsOwnBufferClass, SaysWhereSearchesStart) {
    class Starts : public DBuffer {
    public:
        using DBuffer::DBuffer;
        unsigned int startSearch(unsigned int start, unsigned int n) const override {
            return DBuffer::startSearch(start + 1, n);
        }
        unsigned int startBackwardsSearch(unsigned int start, unsigned int n) const override {
            return start == 0 ? 0 : DBuffer::startBackwardsSearch(start - 1, n);
        }
    };
    static_assert(sizeof(Starts) == sizeof(DBuffer), "the text stands directly behind a buffer");
    Owned const text = make<Starts>("abcabc");
    DStringTest const vowel(isVowel);
    EXPECT_EQ(text->indexOf("abc", 3, 1), 4u);
    EXPECT_EQ(text->indexOf("a", 1, 1), 4u);
    EXPECT_EQ(text->indexOfAnyOf("ax", 2, 1), 4u);
    EXPECT_EQ(text->indexOfAnyBut("b", 1, 1), 3u);
    EXPECT_EQ(text->indexOfAnyBut("", 0, 1), 2u);
    EXPECT_EQ(text->indexOfAnyOf(vowel, 1), 4u);
    EXPECT_EQ(text->indexOfAnyBut(vowel, 3), 5u);
    EXPECT_EQ(text->lastIndexOf("abc", 3, 4), 1u);
    EXPECT_EQ(text->lastIndexOf("a", 1, 4), 1u);
    EXPECT_EQ(text->lastIndexOfAnyOf("ax", 2, 4), 1u);
    EXPECT_EQ(text->lastIndexOfAnyBut("b", 1, 5), 4u);
    EXPECT_EQ(text->lastIndexOfAnyBut("", 0, 5), 4u);
    EXPECT_EQ(text->lastIndexOfAnyOf(vowel, 4), 1u);
    EXPECT_EQ(text->lastIndexOfAnyBut(vowel, 4), 3u);
}

} // namespace
