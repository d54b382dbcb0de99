// change of single-byte buffers.
#include "tests/buffers/dbuffer_editing_support.h"
#include "tests/buffers/operation_support.h"

namespace {

using namespace editing;
using operations::bytes;

TEST(BufferChange, ReplacesOccurrencesByAShorterText) {
    expectNewBuffer("aaaa", changing("aa", "b", 1, 5), "bb");
    expectNewBuffer("aaaa", changing("aa", "b", 1, 1), "baa");
    expectNewBuffer("aaaa", changing("aa", "b", 2, 5), "aba");
    expectNewBuffer("one two three", changing("t", ""), "one wo hree");
    expectNewBuffer("xay", changing("a", ""), "xy");
    expectNewBuffer("-a-b-", changing("-", ""), "ab");
}

TEST(BufferChange, ReplacesOccurrencesByALongerText) {
    expectNewBuffer("aaaa", changing("aa", "bcd"), "bcdbcd");
    expectNewBuffer("a.b.c", changing(".", "--"), "a--b--c");
    expectNewBuffer(".a.", changing(".", bytes("\0\0")), bytes("\0\0a\0\0"));
}

TEST(BufferChange, ReplacesOccurrencesByATextOfTheSameLengthInPlaceOrInACopy) {
    expectEdited("aaaa", changing("aa", "bc"), "bcbc");
    expectEdited("a.b.c", changing(".", "/"), "a/b/c");
    expectEdited("a.b.c", changing(".", "/", 1, 1), "a/b.c");
    expectEdited("a.b.c", changing(".", "/", 3), "a.b/c");
    expectEdited("abab", changing("ab", "ab"), "abab");
}

TEST(BufferChange, DoesNotFindOverlappingOccurrences) {
    expectNewBuffer("aaaaa", changing("aa", "b"), "bba");
    expectEdited("ababa", changing("aba", "xyz"), "xyzba");
}

TEST(BufferChange, DoesNotSearchInWhatItReplaced) {
    expectNewBuffer("ab", changing("a", "aa"), "aab");
    expectEdited("aab", changing("ab", "ba"), "aba");
}

TEST(BufferChange, TakesAStartOfZeroAsOne) {
    expectNewBuffer("aaaa", changing("aa", "b", 0), "bb");
    expectEdited("abc", changing("a", "x", 0), "xbc");
}

TEST(BufferChange, ReturnsTheReceiverWhereNothingIsFound) {
    expectReceiverBack("abc", changing("x", "y"));
    expectReceiverBack("abc", changing("a", "y", 2));
    expectReceiverBack("abc", changing("c", "yy", 4));
    expectReceiverBack("abc", changing("abcd", "y"));
    expectReceiverBack("", changing("a", "b"));
}

TEST(BufferChange, FindsNothingForAnEmptyPattern) {
    expectReceiverBack("abc", changing("", "x"));
    expectReceiverBack("abc", changing("", ""));
    expectReceiverBack("abc", [](DBuffer& b) { return b.change(nullptr, 0, "x", 1, 1, 5); });
}

TEST(BufferChange, OfAtMostZeroOccurrencesReturnsTheReceiver) {
    expectReceiverBack("aaaa", changing("a", "b", 1, 0));
    expectReceiverBack("aaaa", changing("a", "bb", 1, 0));
}

TEST(BufferChange, ThatLeavesNothingGivesAnEmptyText) {
    Owned const text("abab");
    Owned const result(text->change("ab", 2, "", 0, 1, 9));
    EXPECT_EQ(result->length, 0u);
    EXPECT_EQ(result->contents()[0], '\0');
    EXPECT_EQ(text.text(), "abab");
}

TEST(BufferChange, HandlesManyOccurrences) {
    std::string text;
    std::string shorter;
    std::string same;
    std::string longer;
    for (int i = 0; i < 3000; ++i) {
        text += "ab|";
        shorter += "x|";
        same += "xy|";
        longer += "xyz|";
    }
    expectNewBuffer(text, changing("ab", "x"), shorter);
    expectEdited(text, changing("ab", "xy"), same);
    expectNewBuffer(text, changing("ab", "xyz"), longer);
}

TEST(BufferChange, TakesPatternAndReplacementFromTheReceiverItself) {
    {
        Owned const sole("abcabc");
        Owned const result(sole->change(sole->contents(), 2, sole->contents() + 1, 2, 1, 9));
        EXPECT_EQ(result.text(), "bccbcc");
    }
    {
        Owned const sole("abcabc");
        Owned const result(sole->change(sole->contents() + 1, 1, sole->contents(), 6, 1, 9));
        EXPECT_EQ(result.text(), "aabcabccaabcabcc");
    }
    {
        Owned const sole("abab");
        Owned const result(sole->change(sole->contents() + 2, 2, sole->contents() + 1, 2, 1, 9));
        EXPECT_EQ(result.text(), "baba");
    }
}

} // namespace
