// remove and rightJustify of strings.
#include "tests/buffers/buffer_support.h"
#include "tests/string/string_support.h"

namespace {

using namespace support;

TEST(StringRemoval, TakesOutUpToCountBytes) {
    struct Case {
        unsigned int start, count;
        std::string expected;
    };
    Case const cases[] = {{0, 1, "bc"}, {1, 1, "bc"}, {2, 1, "ac"}, {2, 0xFFFFFFFF, "a"}, {3, 9, "ab"}};
    for (auto const& [start, count, expected] : cases) {
        DString text("abc");
        DString const witness(text);
        EXPECT_EQ(&text.remove(start, count), &text);
        expectOwnText(text, expected);
        expectOwnText(witness, "abc");
        EXPECT_EQ(textOf(DString::remove(witness, start, count)), expected);
        expectOwnText(witness, "abc");
    }
}

TEST(StringRemoval, ToTheEnd) {
    DString text("abcd");
    EXPECT_EQ(&text.remove(3), &text);
    expectOwnText(text, "ab");
    text.remove(0);
    expectSharedEmpty(text);
}

TEST(StringRemoval, WithNothingToDoLeavesTheBufferAlone) {
    DString text("abc");
    DString const witness(text);
    text.remove(4).remove(2, 0).remove(4, 1).remove(0, 0).remove(0xFFFFFFFF, 0xFFFFFFFF).remove(0xFFFFFFFF);
    EXPECT_EQ(text.c_str(), witness.c_str());
    EXPECT_EQ(refsOf(witness), 2U);
    DString empty;
    unsigned int const before = refsOf(empty);
    empty.remove(0).remove(1).remove(0, 5).remove(1, 1);
    expectSharedEmpty(empty);
    EXPECT_EQ(refsOf(empty), before);
}

TEST(StringRemoval, OfASoleOwnerReleasesTheOldBuffer) {
    DString text("abc");
    text.remove(1, 1);
    EXPECT_EQ(refsOf(text), 1U);
    text.remove(1, 2);
    expectSharedEmpty(text);
}

TEST(StringJustification, PadsOrCutsOnTheLeft) {
    DString text("abcd");
    DString const witness(text);
    EXPECT_EQ(&text.rightJustify(6, '.'), &text);
    expectOwnText(text, "..abcd");
    text.rightJustify(2, '.');
    expectOwnText(text, "cd");
    text.rightJustify(3);
    expectOwnText(text, " cd");
    text.rightJustify(0, '.');
    expectSharedEmpty(text);
    text.rightJustify(2, '*');
    expectOwnText(text, "**");
    expectOwnText(witness, "abcd");
}

TEST(StringJustification, ToItsOwnWidthLeavesTheBufferAlone) {
    DString text("abcd");
    DString const witness(text);
    text.rightJustify(4, '.');
    EXPECT_EQ(text.c_str(), witness.c_str());
    EXPECT_EQ(refsOf(witness), 2U);
}

TEST(StringJustification, ThatOverflowsLeavesTheStringAsItWas) {
    DString text("abcd");
    char const* const before = text.c_str();
    for (unsigned int width : {lengthLimit, 0xFFFFFFFEU, 0xFFFFFFFFU})
        expectLengthOverflow([&] { text.rightJustify(width, '.'); });
    EXPECT_EQ(text.c_str(), before);
    EXPECT_EQ(refsOf(text), 1U);
    EXPECT_EQ(textOf(text), "abcd");
}

} // namespace
