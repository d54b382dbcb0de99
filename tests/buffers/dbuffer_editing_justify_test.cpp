// leftJustify and center of single-byte buffers.
#include "tests/buffers/dbuffer_editing_support.h"
#include "tests/buffers/operation_support.h"

namespace {

using namespace editing;

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

} // namespace
