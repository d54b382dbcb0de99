// Which overload a call on a string means.
#include "tests/buffers/buffer_support.h"

namespace {

using namespace support;

TEST(StringOverloads, ZeroIsTheNumber) {
    DString const text = 0;
    EXPECT_EQ(textOf(text), "0");
    DString const direct(0);
    EXPECT_EQ(textOf(direct), "0");
    DString assigned("abc");
    assigned = 0;
    EXPECT_EQ(textOf(assigned), "0");
    DString const zeroLong = 0L;
    EXPECT_EQ(textOf(zeroLong), "0");
    DString const zeroUnsigned = 0U;
    EXPECT_EQ(textOf(zeroUnsigned), "0");
}

TEST(StringOverloads, NullptrIsTheEmptyText) {
    DString const text = nullptr;
    EXPECT_TRUE(text.isEmpty());
    EXPECT_TRUE(DString{}.isEmpty());
    EXPECT_TRUE(DString{nullptr}.isEmpty());
}

TEST(StringOverloads, TheNulCharacterIsOneByte) {
    DString const text = '\0';
    EXPECT_EQ(text.length(), 1U);
}

TEST(StringOverloads, CharactersAndSmallNumbersKeepApart) {
    EXPECT_EQ(textOf(DString('7')), "7");
    EXPECT_EQ(textOf(DString(7)), "7");
    EXPECT_EQ(textOf(DString(static_cast<short>('7'))), "55");
    EXPECT_EQ(textOf(DString(true)), "1");
}

TEST(StringOverloads, PlusANumberAddsItsDigits) {
    DString const text("abc");
    EXPECT_EQ(textOf(text + 5), "abc5");
    EXPECT_EQ(textOf(5 + text), "5abc");
    EXPECT_EQ(textOf(text + 0), "abc0");
    EXPECT_EQ(textOf(text + -1L), "abc-1");
    EXPECT_EQ(textOf(text + 18446744073709551615ULL), "abc18446744073709551615");
    DString grown("abc");
    grown += 5;
    grown += 0;
    grown += 0U;
    EXPECT_EQ(textOf(grown), "abc500");
}

TEST(StringOverloads, PlusACharacterAddsIt) {
    DString text("abc");
    EXPECT_EQ(textOf(text + 'd'), "abcd");
    EXPECT_EQ(textOf('z' + text), "zabc");
    text += 'd';
    text += '\0';
    EXPECT_EQ(textOf(text), "abcd\0"s);
}

TEST(StringOverloads, PlusAssignTakesStandardStringsWhole) {
    DString text("a");
    text += std::string("x");
    text += std::string("\0y"s);
    text += std::string_view("z\0"sv);
    EXPECT_EQ(textOf(text), "ax\0yz\0"s);
}

TEST(StringOverloads, ChainsOfDifferentTextsMix) {
    DString const name("x");
    DString const line = "[" + name + "] = " + std::string("y") + ", " + std::string_view("z") + ';' + 12;
    EXPECT_EQ(textOf(line), "[x] = y, z;12");
}

TEST(StringOverloads, OverlayWithATextAndACharacterPadsUpToThePosition) {
    DString text("abc");
    EXPECT_EQ(&text.overlayWith("XY", 9, '.'), &text);
    EXPECT_EQ(textOf(text), "abc.....XY");
    DString counted("abc");
    counted.overlayWith("XY", 1U, 3U, '.');
    EXPECT_EQ(textOf(counted), "abX");
    DString plain("abc");
    plain.overlayWith("XY");
    EXPECT_EQ(textOf(plain), "XYc");
}

TEST(StringOverloads, InsertOfATextAndACharacterPadsUpToThePosition) {
    DString text("abc");
    EXPECT_EQ(&text.insert("XY", 5, '.'), &text);
    EXPECT_EQ(textOf(text), "abc..XY");
    DString front("abc");
    front.insert("XY");
    EXPECT_EQ(textOf(front), "XYabc");
    DString counted("abc");
    counted.insert("XY", 1U, 1U, '.');
    EXPECT_EQ(textOf(counted), "aXbc");
}

TEST(StringOverloads, IsLikeWithACharacterTakesItForAnyString) {
    DString const text("abc");
    EXPECT_TRUE(text.isLike("a%", '%'));
    EXPECT_FALSE(text.isLike("a*", '%'));
    EXPECT_TRUE(text.isLike("a*"));
    EXPECT_TRUE(text.isLike("a??"));
    EXPECT_TRUE(text.isLike("a__", '%', '_'));
}

TEST(StringOverloads, SearchForANullTextFindsNothing) {
    DString const text("abc");
    EXPECT_EQ(text.indexOf(nullptr), 0U);
    EXPECT_EQ(text.indexOf(static_cast<char const*>(nullptr)), 0U);
    EXPECT_EQ(text.lastIndexOf(nullptr), 0U);
    EXPECT_EQ(text.indexOfAnyOf(nullptr), 0U);
    EXPECT_FALSE(text.includes(nullptr));
    EXPECT_EQ(text.occurrencesOf(nullptr), 0U);
}

TEST(StringOverloads, SearchTakesEveryKindOfText) {
    DString const text("abcabc");
    EXPECT_EQ(text.indexOf('b'), 2U);
    EXPECT_EQ(text.indexOf("bc", 3), 5U);
    EXPECT_EQ(text.indexOf("bc"s), 2U);
    EXPECT_EQ(text.indexOf("bc"sv, 3U), 5U);
    EXPECT_EQ(text.indexOf(DString("bc")), 2U);
    EXPECT_EQ(text.lastIndexOf('b'), 5U);
    EXPECT_EQ(text.lastIndexOf("bc"s), 5U);
    EXPECT_EQ(text.indexOf(DStringTest([](int c) { return c == 'c' ? 1 : 0; })), 3U);
    EXPECT_TRUE(text.includes('c'));
    EXPECT_TRUE(text.includes("ca"sv));
    EXPECT_EQ(text.occurrencesOf("bc"), 2U);
    EXPECT_EQ(text.occurrencesOf('a', 2), 1U);
}

TEST(StringOverloads, MembersNeverMeanAStaticFormThatLeavesTheStringAlone) {
    DString text("xxabcxx");
    text.strip("x");
    EXPECT_EQ(textOf(text), "abc");
    text.strip(DString("c"));
    EXPECT_EQ(textOf(text), "ab");
    text.strip('a');
    EXPECT_EQ(textOf(text), "b");
    text.strip("b"s, DStringEnum::trailing);
    EXPECT_EQ(textOf(text), "");
    DString changed("aXa");
    changed.change(DString("a"), DString("b"));
    EXPECT_EQ(textOf(changed), "bXb");
    changed.change("b", "c", 0);
    EXPECT_EQ(textOf(changed), "cXc");
    changed.change(DString("c"), "d", 2);
    EXPECT_EQ(textOf(changed), "cXd");
    DString removed("abc");
    removed.remove(0, 1);
    EXPECT_EQ(textOf(removed), "bc");
    removed.center(4);
    EXPECT_EQ(textOf(removed), " bc ");
    removed.upperCase();
    EXPECT_EQ(textOf(removed), " BC ");
}

} // namespace
