// strip of single-byte buffers.
#include "tests/buffers/dbuffer_editing_support.h"
#include "tests/buffers/operation_support.h"

namespace {

using namespace editing;
using operations::bytes;

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

} // namespace
