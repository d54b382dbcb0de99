// Assignment, moving and swapping of strings: which buffer each then has, and how many owners that has.
#include "tests/buffers/buffer_support.h"
#include "tests/string/string_support.h"

namespace {

using namespace support;

TEST(StringAssignment, SharesTheOthersBufferAndReleasesItsOwn) {
    DString text("abc");
    DString const witness(text);
    DString const other("def");
    DString& result = text = other;
    EXPECT_EQ(&result, &text);
    EXPECT_EQ(text.c_str(), other.c_str());
    EXPECT_EQ(refsOf(other), 2U);
    EXPECT_EQ(refsOf(witness), 1U);
}

TEST(StringAssignment, ToItselfKeepsTextAndCount) {
    DString text("abc");
    DString& same = text;
    text = same;
    EXPECT_EQ(textOf(text), "abc");
    EXPECT_EQ(refsOf(text), 1U);
    DString const copy(text);
    text = same;
    EXPECT_EQ(refsOf(text), 2U);
    text = copy;
    EXPECT_EQ(refsOf(text), 2U) << "the buffer was shared already";
}

TEST(StringAssignment, FromTextsAndNumbersGoesThroughConstruction) {
    DString text("abc");
    text = "def";
    EXPECT_EQ(textOf(text), "def");
    text = "a\0b"s;
    EXPECT_EQ(textOf(text), "a\0b"s);
    text = "g\0h"sv;
    EXPECT_EQ(textOf(text), "g\0h"s);
    text = 'c';
    EXPECT_EQ(textOf(text), "c");
    text = 12;
    EXPECT_EQ(textOf(text), "12");
    text = nullptr;
    expectSharedEmpty(text);
}

TEST(StringAssignment, FromItsOwnCharactersCopiesThemFirst) {
    DString text("abcdef");
    text = text.c_str() + 2;
    EXPECT_EQ(textOf(text), "cdef");
}

TEST(StringMove, TakesTheBufferAndLeavesAnEmptyString) {
    DString source("abc");
    char const* const characters = source.c_str();
    DString const target(std::move(source));
    EXPECT_EQ(target.c_str(), characters);
    EXPECT_EQ(refsOf(target), 1U);
    expectSharedEmpty(source);
    source += "again";
    EXPECT_EQ(textOf(source), "again") << "the moved-from string is usable";
}

TEST(StringMove, OfASharedStringKeepsTheCount) {
    DString source("abc");
    DString const witness(source);
    DString const target(std::move(source));
    EXPECT_EQ(refsOf(witness), 2U);
    EXPECT_EQ(target.c_str(), witness.c_str());
    expectSharedEmpty(source);
}

TEST(StringMove, ByAssignmentReleasesTheOldBuffer) {
    DString source("abc");
    char const* const characters = source.c_str();
    DString target("def");
    DString const witness(target);
    DString& result = target = std::move(source);
    EXPECT_EQ(&result, &target);
    EXPECT_EQ(target.c_str(), characters);
    EXPECT_EQ(refsOf(target), 1U);
    EXPECT_EQ(refsOf(witness), 1U);
    expectSharedEmpty(source);
}

TEST(StringMove, CountsTheEmptyBufferRight) {
    unsigned int const before = DBuffer::defaultBuffer()->refs;
    {
        DString source("abc");
        DString target(std::move(source));
        EXPECT_EQ(DBuffer::defaultBuffer()->refs, before + 1);
        DString empty(std::move(source));
        EXPECT_EQ(DBuffer::defaultBuffer()->refs, before + 2);
        target = std::move(empty);
        EXPECT_EQ(DBuffer::defaultBuffer()->refs, before + 3);
    }
    EXPECT_EQ(DBuffer::defaultBuffer()->refs, before);
}

TEST(StringMove, ToItselfLeavesAValidString) {
    DString text("abc");
    DString& same = text;
    text = std::move(same);
    EXPECT_TRUE(textOf(text) == "abc" || text.isEmpty());
    text = "def";
    EXPECT_EQ(textOf(text), "def");
}

TEST(StringMove, NeverThrows) {
    static_assert(std::is_nothrow_move_constructible_v<DString>);
    static_assert(std::is_nothrow_move_assignable_v<DString>);
    static_assert(std::is_nothrow_swappable_v<DString>);
}

TEST(StringSwap, ExchangesTheBuffersWithoutCounting) {
    DString left("abc");
    DString right("def");
    DString const shared(right);
    char const* const leftText = left.c_str();
    char const* const rightText = right.c_str();
    using std::swap;
    swap(left, right);
    EXPECT_EQ(left.c_str(), rightText);
    EXPECT_EQ(right.c_str(), leftText);
    EXPECT_EQ(refsOf(left), 2U);
    EXPECT_EQ(refsOf(right), 1U);
    std::swap(left, right);
    EXPECT_EQ(left.c_str(), leftText);
    EXPECT_EQ(right.c_str(), rightText);
    swap(left, left);
    EXPECT_EQ(textOf(left), "abc");
}

TEST(StringSharing, PassingByValueCostsACount) {
    DString const text("abc");
    auto const refsDuring = [](DString byValue) { return refsOf(byValue); };
    EXPECT_EQ(refsDuring(text), 2U);
    EXPECT_EQ(refsOf(text), 1U);
}

} // namespace
