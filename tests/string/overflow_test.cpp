// Texts that would become too long: every sum and product of lengths at the 32-bit limit. None of these
// touches as much memory as it asks for; texts that really are so long have a test of their own.
#include "tests/buffers/operation_support.h"

#include <cstdlib>
#include <cstring>
#include <functional>
#include <string_view>

namespace {

using operations::contentsOf;
using operations::failureOf;
using operations::lengthOverflow;
using operations::Owned;
using operations::refsOf;

constexpr unsigned int limit = 0xFFFFFFE7; ///< The shortest length that is too long.
constexpr unsigned int maximum = 0xFFFFFFFF;

/// The operation fails on a sole owner's and on a shared text, and changes neither.
void expectOverflow(std::string_view start, std::function<void(DString&)> const& operation,
                    unsigned int value) {
    DString text(start);
    char const* const data = text.data();
    EXPECT_EQ(failureOf([&] { operation(text); }), lengthOverflow()) << value;
    EXPECT_EQ(text.data(), data) << value;
    EXPECT_EQ(contentsOf(text), start) << value;
    DString const copy(text);
    unsigned int const refs = refsOf(text);
    EXPECT_EQ(failureOf([&] { operation(text); }), lengthOverflow()) << value;
    EXPECT_EQ(text.data(), data) << value;
    EXPECT_EQ(contentsOf(copy), start) << value;
    EXPECT_EQ(refsOf(text), refs) << value;
}

void expectBufferOverflow(std::string_view start, std::function<DBuffer*(DBuffer&)> const& operation) {
    Owned const buffer(start);
    unsigned int const refs = buffer->refs;
    EXPECT_EQ(failureOf([&] { Owned const result(operation(*buffer)); }), lengthOverflow());
    EXPECT_EQ(buffer.text(), start);
    EXPECT_EQ(buffer->refs, refs);
}

TEST(LengthOverflow, HasATextAndOneLocationWithoutAFunctionName) {
    operations::LogOfExceptions const log;
    try {
        DString("ab").copy(maximum);
        FAIL();
    } catch (DInvalidRequest const& thrown) {
        ASSERT_NE(thrown.text(0), nullptr);
        EXPECT_STRNE(thrown.text(0), "");
        EXPECT_EQ(thrown.textCount(), 1u);
        EXPECT_STREQ(thrown.locationAtIndex(0)->functionName(), "Unknown");
    }
}

TEST(LengthOverflow, IsRaisedByTheBufferItself) {
    expectBufferOverflow("abc", [](DBuffer& b) -> DBuffer* { b.overflow(); });
    expectBufferOverflow("abc", [](DBuffer& b) { return b.allocate(limit); });
    expectBufferOverflow("abc", [](DBuffer& b) { return b.allocate(maximum); });
}

TEST(LengthOverflow, IsRaisedByCopy) {
    for (std::string_view const text : {"a", "ab", "abc", "abcde", "abcdefghijklmnopq"}) {
        unsigned int const quotient = maximum / operations::lengthOf(text);
        for (unsigned int const times :
             {quotient, quotient + (quotient == maximum ? 0 : 1), maximum, maximum - 1}) {
            expectOverflow(
                text, [=](DString& s) { s.copy(times); }, times);
            expectBufferOverflow(text, [=](DBuffer& b) { return b.copy(times); });
        }
    }
    // Products that would be small in 32 bits.
    expectOverflow(
        "0123456789ABCDEF", [](DString& s) { s.copy(0x10000001); }, 0x10000001);
    expectOverflow(
        "ab", [](DString& s) { s.copy(0x80000000); }, 0x80000000);
    expectOverflow(
        "ab", [](DString& s) { s.copy(0x80000001); }, 0x80000001);
    expectOverflow(
        "abcd", [](DString& s) { s.copy(0xC0000001); }, 0xC0000001);
    expectOverflow(
        "a", [](DString& s) { s.copy(limit); }, limit);
}

TEST(LengthOverflow, IsRaisedByWidthsAtTheLimit) {
    for (unsigned int const width : {limit, limit + 1, maximum - 1, maximum}) {
        expectOverflow(
            "abc", [=](DString& s) { s.leftJustify(width); }, width);
        expectOverflow(
            "abc", [=](DString& s) { s.rightJustify(width); }, width);
        expectOverflow(
            "abc", [=](DString& s) { s.center(width); }, width);
        expectOverflow(
            "abc", [=](DString& s) { s.subString(1, width); }, width);
        expectOverflow(
            "abc", [=](DString& s) { s.subString(9, width); }, width);
        expectOverflow(
            "", [=](DString& s) { s.leftJustify(width); }, width);
        expectOverflow(
            "", [=](DString& s) { s.center(width); }, width);
        expectBufferOverflow("abc", [=](DBuffer& b) { return b.leftJustify(width, '.'); });
        expectBufferOverflow("abc", [=](DBuffer& b) { return b.rightJustify(width, '.'); });
        expectBufferOverflow("abc", [=](DBuffer& b) { return b.center(width, '.'); });
        expectBufferOverflow("abc", [=](DBuffer& b) { return b.subString(1, width, '.'); });
    }
}

TEST(LengthOverflow, IsRaisedByTheBuffersSubStringFromBeyondTheEndInSingleByteLocalesOnly) {
    for (std::string_view const text : {"abc", ""})
        for (unsigned int const start : {operations::lengthOf(text) + 2, 100u, 0x80000000u, maximum}) {
            auto const tail = [start](DBuffer& b) { return b.subString(start); };
            if (MB_CUR_MAX == 1)
                expectBufferOverflow(text, tail);
            else
                EXPECT_EQ(Owned(tail(*Owned(text))).text(), "");
        }
}

TEST(LengthOverflow, IsRaisedByInsertingFarBeyondTheEnd) {
    for (unsigned int const position : {limit - 2, limit, maximum - 2, maximum - 1, maximum}) {
        expectOverflow(
            "abc", [=](DString& s) { s.insert("xy", position); }, position);
        expectOverflow(
            "", [=](DString& s) { s.insert("xy", position); }, position);
    }
    expectOverflow(
        "abc", [](DString& s) { s.insert("", limit); }, limit);
    expectOverflow(
        "abc", [](DString& s) { s.insert("", maximum); }, maximum);
}

TEST(LengthOverflow, IsRaisedByInsertingAVeryLongText) {
    for (unsigned int const length : {limit - 3, maximum - 3, maximum - 2, maximum})
        for (unsigned int const position : {0u, 2u, 3u, 5u})
            expectOverflow(
                "abc", [=](DString& s) { s.insert("", length, position); }, length);
    expectOverflow(
        "", [](DString& s) { s.insert("", limit, 0); }, limit);
}

TEST(LengthOverflow, IsRaisedByOverlayingFarBeyondTheEnd) {
    for (unsigned int const position : {limit - 1, limit, maximum - 2, maximum - 1, maximum}) {
        expectOverflow(
            "abc", [=](DString& s) { s.overlayWith("xy", position); }, position);
        expectOverflow(
            "", [=](DString& s) { s.overlayWith("xy", position); }, position);
    }
    expectOverflow(
        "abc", [](DString& s) { s.overlayWith("", limit + 1); }, limit + 1);
    expectOverflow(
        "abc", [](DString& s) { s.overlayWith("", maximum); }, maximum);
}

TEST(LengthOverflow, IsRaisedByOverlayingWithAVeryLongText) {
    for (unsigned int const length : {limit, maximum - 1, maximum})
        for (unsigned int const position : {0u, 1u, 3u, 4u, 6u})
            expectOverflow(
                "abc", [=](DString& s) { s.overlayWith("", length, position); }, length);
    expectOverflow(
        "abc", [](DString& s) { s.overlayWith("", limit - 3, 4); }, limit - 3);
}

/// Changes every `pattern` into a text of so many bytes, of which none is looked at.
void expectChangeOverflow(std::string_view text, std::string_view pattern, unsigned int length) {
    expectOverflow(
        text,
        [=](DString& s) { s.change(pattern.data(), operations::lengthOf(pattern), "", length, 1, maximum); },
        length);
}

TEST(LengthOverflow, IsRaisedByChangesThatGrow) {
    // One occurrence: the new length alone.
    for (unsigned int const length : {limit, maximum - 1, maximum})
        expectChangeOverflow("a", "a", length);
    expectChangeOverflow("abc", "b", limit - 2);
    expectChangeOverflow("abc", "abc", limit);
    // The difference times the count: at and around a quotient, and where 32 bits would make it small again.
    expectChangeOverflow("aa", "a", 0x7FFFFFFF);
    expectChangeOverflow("aa", "a", 0x80000000);
    expectChangeOverflow("aa", "a", 0x80000001);
    expectChangeOverflow("aaa", "a", 0x55555555);
    expectChangeOverflow("aaa", "a", 0x55555556);
    expectChangeOverflow("aaa", "a", 0x55555557);
    expectChangeOverflow("aaaa", "a", 0x40000001);
    expectChangeOverflow("a.a.a.a.", "a.", 0xC0000002);
    expectChangeOverflow("aaaaaaaaaaaaaaaa", "a", 0x10000001);
    expectChangeOverflow("aaaaaaaaaaaaaaaa", "a", 0xF0000001);
}

TEST(LengthOverflow, IsRaisedBySpaceWithVeryManyFillCharacters) {
    for (unsigned int const n : {limit - 2, limit, maximum - 2, maximum - 1, maximum})
        expectOverflow(
            " a b ", [=](DString& s) { s.space(n, '-'); }, n);
    for (unsigned int const n : {0x7FFFFFF2u, 0x7FFFFFFEu, 0x7FFFFFFFu, 0x80000000u, maximum})
        expectOverflow(
            "a b c", [=](DString& s) { s.space(n, '-'); }, n);
    for (unsigned int const n : {0x3FFFFFFFu, 0x40000000u, 0x80000000u, 0xC0000000u})
        expectOverflow(
            "a b c d e", [=](DString& s) { s.space(n, '-'); }, n);
}

TEST(LengthOverflow, IsRaisedByWritingToAnElementFarBeyondTheEnd) {
    for (unsigned int const index : {limit, limit + 1, maximum - 1, maximum}) {
        expectOverflow(
            "abc", [=](DString& s) { s[index] = 'x'; }, index);
        expectOverflow(
            "", [=](DString& s) { s[index] = 'x'; }, index);
    }
}

TEST(LengthOverflow, IsRaisedForATextArgumentOf4GiBAndMore) {
    for (std::size_t const size : {std::size_t{1} << 32, (std::size_t{1} << 32) + 3, std::size_t{1} << 40}) {
        std::string_view const tooLong("", size);
        expectOverflow(
            "abc", [=](DString& s) { (void)s.indexOf(tooLong); }, 0);
        expectOverflow(
            "abc", [=](DString& s) { s.insert(tooLong); }, 0);
        expectOverflow(
            "abc", [=](DString& s) { s.change(tooLong, "x"); }, 0);
        expectOverflow(
            "abc", [=](DString& s) { s.change("a", tooLong); }, 0);
        expectOverflow(
            "abc", [=](DString& s) { s += tooLong; }, 0);
        expectOverflow(
            "abc", [=](DString& s) { s = DString(tooLong); }, 0);
        expectOverflow(
            "abc", [=](DString& s) { (void)(s == tooLong); }, 0);
        expectOverflow(
            "abc", [=](DString& s) { (void)s.isLike(tooLong); }, 0);
        expectOverflow(
            "abc", [=](DString& s) { s ^= tooLong; }, 0);
    }
}

/// The longest text, whose bytes nobody has written: its memory is not there before it is touched. There is
/// one for all tests, as AddressSanitizer takes a second to note down a block of this size.
DString& untouched() {
    static DString text(DBuffer::defaultBuffer()->allocate(limit - 1));
    return text;
}

/// The operation fails on a text of the given length, with `front` as its first bytes, before it touches it.
void expectOverflowOf(unsigned int length, std::function<void(DString&)> const& operation,
                      std::string_view front = {"\0\0\0\0", 4}) {
    DString& text = untouched();
    char const* const data = text.data();
    std::memcpy(operations::bufferOf(text)->contents(), front.data(), front.size());
    operations::bufferOf(text)->length = length;
    EXPECT_EQ(failureOf([&] { operation(text); }), lengthOverflow()) << length;
    EXPECT_EQ(text.data(), data);
    EXPECT_EQ(text.length(), length);
    EXPECT_EQ(refsOf(text), 1u);
}

TEST(LengthOverflow, IsRaisedByHexadecimalDigitsOfHalfTheLimit) {
    expectOverflowOf(0x7FFFFFF4, [](DString& s) { s.c2x(); });
    expectOverflowOf(0x80000000, [](DString& s) { s.c2x(); });
    expectOverflowOf(0x80000001, [](DString& s) { s.c2x(); });
}

TEST(LengthOverflow, IsRaisedByBinaryDigitsOfAnEighthOfTheLimit) {
    expectOverflowOf(0x1FFFFFFD, [](DString& s) { s.c2b(); });
    expectOverflowOf(0x1FFFFFFE, [](DString& s) { s.c2b(); });
    expectOverflowOf(0x1FFFFFFF, [](DString& s) { s.c2b(); });
    expectOverflowOf(0x20000001, [](DString& s) { s.c2b(); });
    expectOverflowOf(0xFFFFFFE6, [](DString& s) { s.c2b(); });
}

TEST(LengthOverflow, IsRaisedByDecimalDigitsOfAThirdOfTheLimit) {
    expectOverflowOf(0x55555555 + 4, [](DString& s) { s.c2d(); });
    expectOverflowOf(0x55555556 + 4, [](DString& s) { s.c2d(); });
    expectOverflowOf(0xAAAAAAAB + 4, [](DString& s) { s.c2d(); });
    expectOverflowOf(0xFFFFFFE6, [](DString& s) { s.c2d(); });
    expectOverflowOf(
        0x55555554 + 4, [](DString& s) { s.c2d(); }, "\xFF\xFF\xFF\xFF");
}

TEST(LengthOverflow, IsRaisedByDecimalDigitsThatNeedMoreRoomThanThereIsBeforeLeadingZerosGo) {
    for (unsigned int const tail : {0x5555554Du, 0x55555550u, 0x55555554u})
        expectOverflowOf(tail + 4, [](DString& s) { s.c2d(); }, {"\0\0\0\x07", 4});
}

TEST(LengthOverflow, IsRaisedByGrowingAVeryLongText) {
    expectOverflowOf(0x80000000, [](DString& s) { s.copy(2); });
    expectOverflowOf(0xFFFFFFE6, [](DString& s) { s.insert("a", 1); });
    expectOverflowOf(0xFFFFFFE6, [](DString& s) { s.overlayWith("a", 0xFFFFFFE7); });
    expectOverflowOf(0xFFFFFFE6, [](DString& s) { s += "a"; });
    expectOverflowOf(0x80000000, [](DString& s) { s += s; });
    expectOverflowOf(0x80000000, [](DString& s) { s.insert(s); });
    expectOverflowOf(0xFFFFFFE6, [](DString& s) { s.leftJustify(0xFFFFFFE7); });
    expectOverflowOf(0xFFFFFFE6, [](DString& s) { s[0xFFFFFFE7] = 'a'; });
}

} // namespace
