// reverse and copy of single-byte buffers.
#include "tests/buffers/dbuffer_editing_support.h"
#include "tests/buffers/operation_support.h"

namespace {

using namespace editing;
using operations::bytes;

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

} // namespace
