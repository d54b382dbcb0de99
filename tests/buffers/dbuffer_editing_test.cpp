// The editing operations of single-byte buffers: their results, which buffer comes back, with how many
// references, and whether the bytes were changed in place. Lengths at the limit have a test of their own.
#include "tests/buffers/operation_support.h"

#include <cctype>
#include <functional>
#include <vector>

namespace {

using ops::bytes;
using ops::Owned;
using ops::SharedWith;

int isBlank(int c) { return c == ' '; }
int isHighByte(int c) { return c < 0; }

/// Runs an operation that changes nothing and checks that the receiver comes back with one more reference.
template <class Operation>
void expectReceiverBack(std::string const& text, Operation operation) {
    Owned const buffer(text);
    unsigned int const refs = buffer->refs;
    Owned const result(operation(*buffer));
    EXPECT_EQ(result.get(), buffer.get());
    EXPECT_EQ(buffer->refs, refs + 1);
    EXPECT_EQ(buffer.text(), text);
}

template <class Operation>
void expectNewBufferFrom(Owned const& buffer, Operation operation, std::string const& expected) {
    std::string const text = buffer.text();
    unsigned int const refs = buffer->refs;
    Owned const result(operation(*buffer));
    EXPECT_NE(result.get(), buffer.get()) << "with " << refs << " references";
    EXPECT_EQ(result.text(), expected) << "with " << refs << " references";
    EXPECT_EQ(result->refs, 1u);
    EXPECT_EQ(result->contents()[result->length], '\0');
    EXPECT_EQ(buffer.text(), text);
    EXPECT_EQ(buffer->refs, refs);
}

/// Runs an operation that makes a new buffer, on a receiver with one reference and on one with more.
template <class Operation>
void expectNewBuffer(std::string const& text, Operation operation, std::string const& expected) {
    Owned const buffer(text);
    expectNewBufferFrom(buffer, operation, expected);
    SharedWith const other(buffer);
    expectNewBufferFrom(buffer, operation, expected);
}

/// Runs an operation that may edit in place: a receiver with one reference is changed and comes back with
/// two, a shared one stays what it was.
template <class Operation>
void expectEdited(std::string const& text, Operation operation, std::string const& expected) {
    {
        Owned const sole(text);
        Owned const result(operation(*sole));
        EXPECT_EQ(result.get(), sole.get()) << "a sole owner's buffer is edited in place";
        EXPECT_EQ(sole->refs, 2u);
        EXPECT_EQ(sole.text(), expected);
        EXPECT_EQ(sole->contents()[sole->length], '\0');
    }
    Owned const shared(text);
    SharedWith const other(shared);
    Owned const result(operation(*shared));
    EXPECT_NE(result.get(), shared.get()) << "a shared buffer is copied";
    EXPECT_EQ(result->refs, 1u);
    EXPECT_EQ(result.text(), expected);
    EXPECT_EQ(result->contents()[result->length], '\0');
    EXPECT_EQ(shared.text(), text);
    EXPECT_EQ(shared->refs, 2u);
}

/// Runs an operation whose result is empty and checks that it is the shared empty buffer.
template <class Operation>
void expectSharedEmpty(std::string const& text, Operation operation) {
    Owned const buffer(text);
    DBuffer* const empty = DBuffer::defaultBuffer();
    unsigned int const refs = empty->refs;
    Owned const result(operation(*buffer));
    EXPECT_EQ(result.get(), empty);
    EXPECT_EQ(empty->refs, refs + 1);
    EXPECT_EQ(buffer.text(), text);
}

DBuffer* upper(DBuffer& b) { return b.upperCase(); }
DBuffer* lower(DBuffer& b) { return b.lowerCase(); }
DBuffer* reversed(DBuffer& b) { return b.reverse(); }

auto translating(std::string from, std::string to, char pad = ' ') {
    return [=](DBuffer& b) {
        return b.translate(from.data(), ops::lengthOf(from), to.data(), ops::lengthOf(to), pad);
    };
}
auto stripping(std::string set, DStringEnum::StripMode mode) {
    return [=](DBuffer& b) { return b.strip(set.data(), ops::lengthOf(set), mode); };
}
auto strippingBlanks(DStringEnum::StripMode mode) {
    return [=](DBuffer& b) { return b.strip(DStringTest(isBlank), mode); };
}
auto overlaying(std::string text, unsigned int position, char pad = ' ') {
    return [=](DBuffer& b) { return b.overlayWith(text.data(), ops::lengthOf(text), position, pad); };
}
auto inserting(std::string text, unsigned int position, char pad = ' ') {
    return [=](DBuffer& b) { return b.insert(text.data(), ops::lengthOf(text), position, pad); };
}
auto changing(std::string from, std::string to, unsigned int start = 1, unsigned int most = 0xFFFFFFFF) {
    return [=](DBuffer& b) {
        return b.change(from.data(), ops::lengthOf(from), to.data(), ops::lengthOf(to), start, most);
    };
}
auto leftJustifying(unsigned int width, char pad) {
    return [=](DBuffer& b) { return b.leftJustify(width, pad); };
}
auto centering(unsigned int width, char pad) {
    return [=](DBuffer& b) { return b.center(width, pad); };
}
auto copying(unsigned int times) {
    return [=](DBuffer& b) { return b.copy(times); };
}

constexpr auto bothByAnotherValue = static_cast<DStringEnum::StripMode>(77);

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

// strip

TEST(BufferStrip, RemovesBytesOfTheSetFromTheEndsThatTheModeNames) {
    expectNewBuffer("  ab  ", stripping(" ", DStringEnum::leading), "ab  ");
    expectNewBuffer("  ab  ", stripping(" ", DStringEnum::trailing), "  ab");
    expectNewBuffer("  ab  ", stripping(" ", DStringEnum::both), "ab");
    expectNewBuffer("xyaxbyx", stripping("xy", DStringEnum::both), "axb");
    expectNewBuffer(bytes("\0a\0"), stripping(bytes("\0"), DStringEnum::both), "a");
}

TEST(BufferStrip, TakesAnyOtherModeAsBothEnds) {
    expectNewBuffer("  ab  ", stripping(" ", bothByAnotherValue), "ab");
    expectNewBuffer("  ab  ", strippingBlanks(bothByAnotherValue), "ab");
    expectSharedEmpty("    ", stripping(" ", bothByAnotherValue));
}

TEST(BufferStrip, RemovesBytesThatTheTestAccepts) {
    expectNewBuffer("  ab  ", strippingBlanks(DStringEnum::leading), "ab  ");
    expectNewBuffer("  ab  ", strippingBlanks(DStringEnum::trailing), "  ab");
    expectNewBuffer("  ab  ", strippingBlanks(DStringEnum::both), "ab");
    expectNewBuffer(
        "\x80z\xFF", [](DBuffer& b) { return b.strip(DStringTest(isHighByte), DStringEnum::both); }, "z");
}

TEST(BufferStrip, OfNothingButSetBytesGivesTheEmptyBufferInEveryMode) {
    for (auto const mode : {DStringEnum::leading, DStringEnum::trailing, DStringEnum::both}) {
        expectSharedEmpty("    ", stripping(" ", mode));
        expectSharedEmpty("    ", strippingBlanks(mode));
        expectSharedEmpty("x", stripping("xyz", mode));
    }
}

TEST(BufferStrip, ReturnsTheReceiverWhereNothingIsStripped) {
    for (auto const mode : {DStringEnum::leading, DStringEnum::trailing, DStringEnum::both}) {
        expectReceiverBack("a  b", stripping(" ", mode));
        expectReceiverBack("a  b", strippingBlanks(mode));
        expectReceiverBack("", stripping(" ", mode));
        expectReceiverBack("", strippingBlanks(mode));
    }
    expectReceiverBack("ab  ", stripping(" ", DStringEnum::leading));
    expectReceiverBack("  ab", stripping(" ", DStringEnum::trailing));
}

TEST(BufferStrip, WithAnEmptySetStripsNothing) {
    for (auto const mode : {DStringEnum::leading, DStringEnum::trailing, DStringEnum::both})
        expectReceiverBack("  ab  ", stripping("", mode));
}

// reverse

TEST(BufferReverse, TurnsTheBytesRoundInPlaceOrInACopy) {
    expectEdited("ab", reversed, "ba");
    expectEdited("abc", reversed, "cba");
    expectEdited("aa", reversed, "aa");
    expectEdited(bytes("a\0\xFFz"), reversed, bytes("z\xFF\0a"));
}

TEST(BufferReverse, ReturnsAReceiverShorterThanTwoBytes) {
    expectReceiverBack("", reversed);
    expectReceiverBack("a", reversed);
}

TEST(BufferReverse, TurnsTextsOfEveryLengthRound) {
    std::string text;
    for (int n = 0; n < 200; ++n) {
        text += static_cast<char>(n * 7 + 1);
        std::string const expected(text.rbegin(), text.rend());
        if (text.size() > 1) expectEdited(text, reversed, expected);
    }
}

// overlayWith

TEST(BufferOverlay, WritesTheTextAtThePosition) {
    expectNewBuffer("abcdef", overlaying("XY", 1), "XYcdef");
    expectNewBuffer("abcdef", overlaying("XY", 3), "abXYef");
    expectNewBuffer("abcdef", overlaying("XY", 5), "abcdXY");
    expectNewBuffer("abcdef", overlaying("XYZ", 5), "abcdXYZ");
    expectNewBuffer("abc", overlaying("UVWXYZ", 1), "UVWXYZ");
    expectNewBuffer("abc", overlaying(bytes("\0"), 2), bytes("a\0c"));
}

TEST(BufferOverlay, TakesAPositionOfZeroAsOne) { expectNewBuffer("abcdef", overlaying("XY", 0), "XYcdef"); }

TEST(BufferOverlay, PadsUpToAPositionBeyondTheEnd) {
    expectNewBuffer("abcdef", overlaying("XY", 7, '.'), "abcdefXY");
    expectNewBuffer("abcdef", overlaying("XY", 8, '.'), "abcdef.XY");
    expectNewBuffer("abcdef", overlaying("XY", 9, '.'), "abcdef..XY");
    expectNewBuffer("", overlaying("XY", 3, '.'), "..XY");
    expectNewBuffer("", overlaying("XY", 0, '.'), "XY");
}

TEST(BufferOverlay, WithNothingInsideTheTextReturnsTheReceiver) {
    expectReceiverBack("abc", overlaying("", 0));
    expectReceiverBack("abc", overlaying("", 1));
    expectReceiverBack("abc", overlaying("", 3));
    expectReceiverBack("", overlaying("", 0));
}

TEST(BufferOverlay, WithNothingBeyondTheEndPads) {
    expectNewBuffer("abc", overlaying("", 4, '.'), "abc");
    expectNewBuffer("abc", overlaying("", 6, '.'), "abc..");
    expectNewBuffer("", overlaying("", 3, '.'), "..");
    expectSharedEmpty("", overlaying("", 1, '.'));
}

// insert

TEST(BufferInsert, PutsTheTextAfterThePosition) {
    expectNewBuffer("abc", inserting("XY", 0), "XYabc");
    expectNewBuffer("abc", inserting("XY", 1), "aXYbc");
    expectNewBuffer("abc", inserting("XY", 3), "abcXY");
    expectNewBuffer("", inserting("XY", 0), "XY");
    expectNewBuffer("abc", inserting(bytes("\0\xFF"), 2),
                    bytes("ab\0\xFF"
                          "c"));
}

TEST(BufferInsert, InsertsAfterThePositionWhereOverlayWithWritesAtIt) {
    expectNewBuffer("abcdef", inserting("X", 3), "abcXdef");
    expectNewBuffer("abcdef", overlaying("X", 3), "abXdef");
    expectNewBuffer("abc", inserting("X", 5, '.'), "abc..X");
    expectNewBuffer("abc", overlaying("X", 5, '.'), "abc.X");
}

TEST(BufferInsert, PadsUpToAPositionBeyondTheEnd) {
    expectNewBuffer("abc", inserting("XY", 4, '.'), "abc.XY");
    expectNewBuffer("abc", inserting("XY", 5, '.'), "abc..XY");
    expectNewBuffer("", inserting("XY", 2, '.'), "..XY");
    expectNewBuffer("abc", inserting("", 5, '.'), "abc..");
    expectNewBuffer("", inserting("", 1, '.'), ".");
}

TEST(BufferInsert, OfNothingInsideTheTextReturnsTheReceiver) {
    expectReceiverBack("abc", inserting("", 0));
    expectReceiverBack("abc", inserting("", 3));
    expectReceiverBack("", inserting("", 0));
}

// leftJustify, center

TEST(BufferLeftJustify, PadsOrCutsOnTheRight) {
    expectNewBuffer("abc", leftJustifying(5, '*'), "abc**");
    expectNewBuffer("abc", leftJustifying(2, '*'), "ab");
    expectNewBuffer("", leftJustifying(2, '*'), "**");
    expectSharedEmpty("abc", leftJustifying(0, '*'));
    expectReceiverBack("abc", leftJustifying(3, '*'));
    expectReceiverBack("", leftJustifying(0, '*'));
}

TEST(BufferCenter, PutsAnOddPadByteOnTheRight) {
    expectNewBuffer("ab", centering(5, '*'), "*ab**");
    expectNewBuffer("ab", centering(3, '*'), "ab*");
    expectNewBuffer("ab", centering(6, '*'), "**ab**");
    expectNewBuffer("", centering(3, '*'), "***");
}

TEST(BufferCenter, CutsAnOddByteOnTheRight) {
    expectNewBuffer("abcde", centering(2, '*'), "bc");
    expectNewBuffer("abcde", centering(3, '*'), "bcd");
    expectNewBuffer("abcde", centering(4, '*'), "abcd");
    expectNewBuffer("abcd", centering(1, '*'), "b");
    expectSharedEmpty("abcde", centering(0, '*'));
}

TEST(BufferCenter, OfTheTextsOwnWidthReturnsTheReceiver) {
    expectReceiverBack("abc", centering(3, '*'));
    expectReceiverBack("", centering(0, '*'));
}

// copy

TEST(BufferCopy, RepeatsTheText) {
    expectNewBuffer("ab", copying(2), "abab");
    expectNewBuffer("ab", copying(3), "ababab");
    expectNewBuffer("abc", copying(5), "abcabcabcabcabc");
    expectNewBuffer("x", copying(7), "xxxxxxx");
    expectNewBuffer(bytes("a\0"), copying(2), bytes("a\0a\0"));
}

TEST(BufferCopy, ZeroTimesGivesTheEmptyBuffer) { expectSharedEmpty("ab", copying(0)); }

TEST(BufferCopy, OfAnEmptyTextOrOnceReturnsTheReceiver) {
    expectReceiverBack("ab", copying(1));
    expectReceiverBack("", copying(1));
    expectReceiverBack("", copying(0));
    expectReceiverBack("", copying(5));
    expectReceiverBack("", copying(0xFFFFFFFF));
}

TEST(BufferCopy, RepeatsTextsOfEveryLengthAnyNumberOfTimes) {
    std::string text;
    for (unsigned int n = 1; n < 40; ++n) {
        text += static_cast<char>('A' + n);
        std::string expected = text;
        for (unsigned int times = 2; times < 20; ++times) {
            expected += text;
            expectNewBuffer(text, copying(times), expected);
        }
    }
}

// change

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

// A host's own class

/// Finds nothing in any set; its empty texts and copies are its own, too.
class SetBlindBuffer : public DBuffer {
public:
    using DBuffer::DBuffer;
    using DBuffer::indexOf;
    using DBuffer::indexOfAnyBut;
    using DBuffer::indexOfAnyOf;
    using DBuffer::lastIndexOfAnyBut;

    DBuffer* allocate(unsigned int size) const override {
        return ::new (::operator new[](sizeof(SetBlindBuffer) + size + 1)) SetBlindBuffer(size);
    }
    char const* className() const override { return "SetBlindBuffer"; }
    unsigned int indexOfAnyOf(char const*, unsigned int, unsigned int) const override { return 0; }
    unsigned int indexOfAnyBut(char const*, unsigned int, unsigned int) const override { return 2; }
    unsigned int lastIndexOfAnyBut(char const*, unsigned int, unsigned int) const override { return 3; }
    unsigned int indexOfAnyBut(DStringTest const&, unsigned int) const override { return 3; }
    unsigned int lastIndexOfAnyBut(DStringTest const&, unsigned int) const override { return 4; }
    unsigned int indexOf(char const*, unsigned int, unsigned int start) const override {
        return start <= 2 ? 2 : 0;
    }
};

Owned setBlind(std::string_view text) {
    auto* const buffer = ::new (::operator new[](sizeof(SetBlindBuffer) + text.size() + 1))
        SetBlindBuffer(ops::lengthOf(text));
    std::memcpy(buffer->contents(), text.data(), text.size());
    return Owned(buffer);
}

TEST(HostsOwnBufferClass, IsAskedWhatStripAndChangeLookFor) {
    Owned const text = setBlind("abcdef");
    EXPECT_EQ(Owned(text->strip("x", 1, DStringEnum::both)).text(), "bc");
    EXPECT_EQ(Owned(text->strip("x", 1, DStringEnum::leading)).text(), "bcdef");
    EXPECT_EQ(Owned(text->strip("x", 1, DStringEnum::trailing)).text(), "abc");
    EXPECT_EQ(Owned(text->strip(DStringTest(isBlank), DStringEnum::both)).text(), "cd");
    EXPECT_EQ(Owned(text->change("??", 2, "-", 1, 1, 9)).text(), "a-def");
}

TEST(HostsOwnBufferClass, IsAskedForTheLettersOfUpperAndLowerCase) {
    Owned const text = setBlind("abcDEF");
    EXPECT_EQ(Owned(text->upperCase()).text(), "abcDEF");
    EXPECT_EQ(Owned(text->lowerCase()).text(), "abcDEF");
}

TEST(HostsOwnBufferClass, IsAskedForTheBytesToTranslate) {
    Owned const text = setBlind("abc");
    EXPECT_EQ(Owned(text->translate("a", 1, "x", 1, ' ')).text(), "abc");
}

TEST(HostsOwnBufferClass, MakesTheBuffersOfResults) {
    Owned const text = setBlind("abcdef");
    char const* const name = text->className();
    for (auto const& operation : std::vector<std::function<DBuffer*(DBuffer&)>>{
             overlaying("XY", 2), inserting("XY", 2), leftJustifying(9, '.'), centering(9, '.'), copying(3),
             changing("??", "x"), stripping("x", DStringEnum::both),
             [](DBuffer& b) { return b.remove(2, 1); }, [](DBuffer& b) { return b.rightJustify(9, '.'); }}) {
        Owned const result(operation(*text));
        EXPECT_EQ(result->className(), name);
    }
    SharedWith const other(text);
    EXPECT_EQ(Owned(text->reverse())->className(), name);
}

} // namespace
