// insert and overlayWith of single-byte buffers.
#include "tests/buffers/dbuffer_editing_support.h"
#include "tests/buffers/operation_support.h"

namespace {

using namespace editing;
using operations::bytes;

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

} // namespace
