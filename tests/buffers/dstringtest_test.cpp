// DStringTest and what hosts derive from it.
#include "tests/buffers/dbuffer_search_support.h"
#include "tests/buffers/operation_support.h"

namespace {

using namespace searching;
using operations::farEnd;

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
    EXPECT_EQ(operations::contentsOf(test.asString()), "DVBase object");
    EXPECT_EQ(operations::contentsOf(test.asDebugInfo()).substr(0, 8), "DVBase(@");
}

} // namespace
