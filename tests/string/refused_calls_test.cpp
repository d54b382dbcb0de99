// Calls with a `char` where a number is meant: they do not compile, and their neighbours do.
#include <kelcl/dstring.h>

#include <gtest/gtest.h>

#include <cctype>
#include <type_traits>
#include <utility>

namespace {

template <class Call, class = decltype(std::declval<Call>()(std::declval<DString&>()))>
constexpr bool compiles(Call&&, int) {
    return true;
}
template <class Call>
constexpr bool compiles(Call&&, ...) {
    return false;
}

/// Whether a call of a member of DString compiles.
#define COMPILES(call) compiles([](auto& text) -> decltype(text.call) { return text.call; }, 0)
#define EXPECT_REFUSED(call) EXPECT_FALSE(COMPILES(call))
#define EXPECT_ACCEPTED(call) EXPECT_TRUE(COMPILES(call))

TEST(RefusedCalls, CountsAndPositionsOfPieces) {
    EXPECT_REFUSED(subString('1'));
    EXPECT_REFUSED(subString(1, 'x'));
    EXPECT_ACCEPTED(subString(1));
    EXPECT_ACCEPTED(subString(1, 2));
    EXPECT_ACCEPTED(subString(1U, 2L, 'x'));
    EXPECT_REFUSED(remove('-'));
    EXPECT_REFUSED(remove(1, '-'));
    EXPECT_REFUSED(remove(DString("a"), '-', 1));
    EXPECT_REFUSED(remove("a", 1, '-'));
    EXPECT_ACCEPTED(remove(1));
    EXPECT_ACCEPTED(remove(1, 2U));
    EXPECT_ACCEPTED(remove("a", 1, 2));
    EXPECT_REFUSED(copy('3'));
    EXPECT_ACCEPTED(copy(3));
    EXPECT_REFUSED(charType('1'));
    EXPECT_ACCEPTED(charType(1));
}

TEST(RefusedCalls, LengthsOfWhatAStringIsMadeFrom) {
    EXPECT_FALSE((std::is_constructible_v<DString, char const*, char>));
    EXPECT_FALSE((std::is_constructible_v<DString, char const(&)[4], char, int>));
    EXPECT_TRUE((std::is_constructible_v<DString, char const*, int>));
    EXPECT_TRUE((std::is_constructible_v<DString, char const*, unsigned int, char>));
    EXPECT_TRUE((std::is_constructible_v<DString, void*, int, char const*, int, char>));
    EXPECT_TRUE((std::is_constructible_v<DString, char>));
}

TEST(RefusedCalls, WideCharactersWhichAreNoNumbers) {
    EXPECT_FALSE((std::is_convertible_v<wchar_t, DString>));
    EXPECT_FALSE((std::is_convertible_v<char16_t, DString>));
    EXPECT_FALSE((std::is_convertible_v<char32_t, DString>));
    EXPECT_TRUE((std::is_convertible_v<int, DString>));
}

TEST(RefusedCalls, Widths) {
    EXPECT_REFUSED(leftJustify('.'));
    EXPECT_REFUSED(leftJustify('.', 10));
    EXPECT_ACCEPTED(leftJustify(10));
    EXPECT_ACCEPTED(leftJustify(10, '.'));
    EXPECT_REFUSED(rightJustify('.', 10));
    EXPECT_ACCEPTED(rightJustify(10, '.'));
    EXPECT_REFUSED(center('.', 10));
    EXPECT_REFUSED(center(DString("a"), '.'));
    EXPECT_REFUSED(center("a", '.', 10));
    EXPECT_ACCEPTED(center(10, '.'));
    EXPECT_ACCEPTED(center("a", 10, '.'));
}

TEST(RefusedCalls, PositionsToEditAt) {
    EXPECT_REFUSED(insert("x", '.'));
    EXPECT_REFUSED(insert(DString("x"), '.', '.'));
    EXPECT_ACCEPTED(insert("x"));
    EXPECT_ACCEPTED(insert("x", 1));
    EXPECT_ACCEPTED(insert("x", 1, '.'));
    EXPECT_ACCEPTED(insert("xy", 2, 1U, '.'));
    EXPECT_REFUSED(overlayWith("x", '.'));
    EXPECT_ACCEPTED(overlayWith("x", 1, '.'));
    EXPECT_ACCEPTED(overlayWith("xy", 2, 1U, '.'));
    EXPECT_REFUSED(change("a", "b", 'c'));
    EXPECT_REFUSED(change("a", "b", 1, 'c'));
    EXPECT_ACCEPTED(change("a", "b"));
    EXPECT_ACCEPTED(change("a", "b", 1, 2));
    EXPECT_ACCEPTED(change("a", 1, "b", 1));
}

TEST(RefusedCalls, PositionsToSearchFrom) {
    EXPECT_REFUSED(indexOf('a', 'b'));
    EXPECT_REFUSED(indexOf("a", 'b'));
    EXPECT_REFUSED(indexOf(DStringTest(std::isalpha), 'b'));
    EXPECT_ACCEPTED(indexOf('a', 2));
    EXPECT_ACCEPTED(indexOf("a"));
    EXPECT_ACCEPTED(indexOf(nullptr));
    EXPECT_REFUSED(indexOfAnyOf("a", 'b'));
    EXPECT_REFUSED(indexOfAnyBut('a', 'b'));
    EXPECT_REFUSED(lastIndexOf('a', 'b'));
    EXPECT_REFUSED(lastIndexOfAnyOf("a", 'b'));
    EXPECT_REFUSED(lastIndexOfAnyBut("a", 'b'));
    EXPECT_ACCEPTED(lastIndexOf('a', 2));
    EXPECT_REFUSED(occurrencesOf('a', 'b'));
    EXPECT_ACCEPTED(occurrencesOf('a', 2));
    EXPECT_REFUSED(isAbbrevFor("abc", 'b'));
    EXPECT_ACCEPTED(isAbbrevFor("abc", 1));
    EXPECT_ACCEPTED(isLike("a%", '%', '_'));
}

TEST(RefusedCalls, NumbersOfWords) {
    EXPECT_REFUSED(word('1'));
    EXPECT_ACCEPTED(word(1));
    EXPECT_REFUSED(words(1, '2'));
    EXPECT_ACCEPTED(words(1, 2));
    EXPECT_REFUSED(removeWords('1'));
    EXPECT_ACCEPTED(removeWords(1));
    EXPECT_REFUSED(indexOfWord(1, '2'));
    EXPECT_ACCEPTED(indexOfWord(1, 2, 3));
    EXPECT_REFUSED(lengthOfWord('1'));
    EXPECT_REFUSED(findPhrase("a b", '1'));
    EXPECT_ACCEPTED(findPhrase("a b", 1));
    EXPECT_REFUSED(space(','));
    EXPECT_ACCEPTED(space(1, ','));
    EXPECT_ACCEPTED(space());
}

} // namespace
