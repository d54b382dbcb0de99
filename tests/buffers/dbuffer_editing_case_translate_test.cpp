// upperCase, lowerCase and translate of single-byte buffers.
#include "tests/buffers/dbuffer_editing_support.h"
#include "tests/buffers/operation_support.h"

namespace {

using namespace editing;
using operations::bytes;

// Case

TEST(BufferCase, UpperCaseChangesSmallAsciiLettersInPlaceOrInACopy) {
    expectEdited("abc", upper, "ABC");
    expectEdited("A1z-", upper, "A1Z-");
    expectEdited("@`az{[", upper, "@`AZ{[");
    expectEdited(bytes("x\0y"), upper, bytes("X\0Y"));
}

TEST(BufferCase, LowerCaseChangesCapitalAsciiLettersInPlaceOrInACopy) {
    expectEdited("ABC", lower, "abc");
    expectEdited("a1Z-", lower, "a1z-");
    expectEdited("@`AZ{[", lower, "@`az{[");
    expectEdited(bytes("X\0Y"), lower, bytes("x\0y"));
}

TEST(BufferCase, LeavesLettersOutsideAsciiAloneWhateverTheLocale) {
    expectEdited("abc-\xE9", upper, "ABC-\xE9");
    expectEdited("ABC-\xC9", lower, "abc-\xC9");
    for (int c = 128; c < 256; ++c) {
        std::string const text(3, static_cast<char>(c));
        expectReceiverBack(text, upper);
        expectReceiverBack(text, lower);
    }
}

TEST(BufferCase, ReturnsTheReceiverWhereNothingChanges) {
    for (char const* const text : {"", "ABC", "123 -", "\xE9\xFC"})
        expectReceiverBack(text, upper);
    for (char const* const text : {"", "abc", "123 -", "\xC9\xDC"})
        expectReceiverBack(text, lower);
}

TEST(BufferCase, ChangesEveryLetterOfLongTexts) {
    std::string text;
    std::string expected;
    for (int i = 0; i < 1000; ++i) {
        text += static_cast<char>(i);
        expected += static_cast<char>((i & 255) >= 'a' && (i & 255) <= 'z' ? i - 32 : i);
    }
    expectEdited(text, upper, expected);
}

// translate

TEST(BufferTranslate, ReplacesEachByteByTheOneAtTheSamePlace) {
    expectEdited("abc", translating("ab", "xy"), "xyc");
    expectEdited("hello", translating("lo", "01"), "he001");
    expectEdited(bytes("a\0b"), translating(bytes("\0"), "-"), "a-b");
    expectEdited("\xFF\x80z", translating("\x80\xFF", bytes("\0\1")), bytes("\1\0z"));
}

TEST(BufferTranslate, FillsAShorterOutputWithThePad) {
    expectEdited("abc", translating("ab", "x", '*'), "x*c");
    expectEdited("abc", translating("abc", "", '.'), "...");
}

TEST(BufferTranslate, IgnoresWhatAnOutputHasMoreThanTheInput) {
    expectEdited("abc", translating("a", "xyz"), "xbc");
}

TEST(BufferTranslate, LetsTheFirstPlaceOfARepeatedByteDecide) {
    expectEdited("aba", translating("aab", "123"), "131");
    expectEdited("aba",
                 translating("ba"
                             "a",
                             "1", '.'),
                 ".1.");
}

TEST(BufferTranslate, DoesNotTranslateTwice) { expectEdited("ab", translating("ab", "ba"), "ba"); }

TEST(BufferTranslate, ReturnsTheReceiverWhereNoByteIsFound) {
    expectReceiverBack("abc", translating("xyz", "123"));
    expectReceiverBack("abc", translating("", "123"));
    expectReceiverBack("", translating("a", "b"));
}

TEST(BufferTranslate, CountsATranslationOfAByteToItselfAsAChange) {
    expectEdited("abc", translating("b", "b"), "abc");
}

TEST(BufferTranslate, TakesItsSetsFromTheReceiverItself) {
    Owned const sole("abcab");
    Owned const result(sole->translate(sole->contents(), 2, sole->contents() + 1, 2, ' '));
    EXPECT_EQ(result.text(), "bccbc");
}

} // namespace
