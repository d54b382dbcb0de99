// What a programmer writes without looking up: indexes of any type, lambdas, paths, ranges, containers that
// are searched for any text.
#include "tests/buffers/buffer_support.h"
#include "tests/buffers/operation_support.h"

#include <kelcl/dexception.h>
#include <kelcl/dstring.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <iterator>
#include <list>
#include <string>
#include <string_view>
#include <unordered_set>
#include <utility>
#include <vector>

namespace {

using namespace support;

TEST(OrdinaryCode, ReadsAndWritesByAnyIntegerType) {
    DString text("abc");
    DString const other = text;
    EXPECT_EQ(other[std::size_t{1}], 'a');
    EXPECT_EQ(other[0L], 'a') << "as 0 of any type";
    EXPECT_EQ(other[short{2}], 'b');
    EXPECT_EQ(other[std::uint8_t{3}], 'c');
    EXPECT_EQ(other[2ULL], 'b');
    EXPECT_EQ(other[wchar_t{3}], 'c');
    EXPECT_EQ(other[char32_t{1}], 'a');
    text[3L] = 'X';
    text[std::size_t{5}] = 'Y';
    EXPECT_EQ(textOf(text), "abX Y");
    EXPECT_EQ(textOf(other), "abc");
}

TEST(OrdinaryCode, RefusesIndexesThatAreOutsideOfTheTextWhateverTheirType) {
    DString const text("abc");
    EXPECT_THROW(static_cast<void>(text[4L]), DInvalidRequest);
    EXPECT_THROW(static_cast<void>(text[-1L]), DInvalidRequest);
    EXPECT_THROW(static_cast<void>(text[std::size_t{1} << 32U]), DInvalidRequest);
    EXPECT_THROW(static_cast<void>(text[(std::size_t{1} << 32U) + 1]), DInvalidRequest) << "is not 1";
    DString written("abc");
    EXPECT_THROW(static_cast<void>(written[-1LL]), DInvalidRequest);
    EXPECT_THROW(static_cast<void>(written[std::size_t{1} << 40U]), DInvalidRequest);
    EXPECT_EQ(textOf(written), "abc");
}

TEST(OrdinaryCode, TakesFunctionsThatCaptureAsTests) {
    DString text("one 22 three");
    char least = 'r';
    auto const isLate = [least](int c) { return c >= least; };
    auto const isDigit = [](int c) { return c >= '0' && c <= '9'; };
    EXPECT_EQ(text.indexOf(isLate), 8U);
    EXPECT_EQ(text.indexOf(isDigit, 6), 6U);
    EXPECT_EQ(text.indexOfAnyOf(isDigit), 5U);
    EXPECT_EQ(text.indexOfAnyBut(isDigit, 5), 7U);
    EXPECT_EQ(text.lastIndexOf(isDigit), 6U);
    EXPECT_EQ(text.lastIndexOfAnyOf(isLate), 10U);
    EXPECT_EQ(text.lastIndexOfAnyBut(isDigit, 6), 4U);
    EXPECT_EQ(text.occurrencesOf(isDigit), 2U);
    EXPECT_TRUE(text.includes(isLate));
    int calls = 0;
    EXPECT_FALSE(text.includes([&calls](int) { return ++calls == 0; }));
    EXPECT_EQ(calls, 12);
    EXPECT_EQ(textOf(text.strip([](int c) { return c == 'o' || c == 'e'; })), "ne 22 thr");
    EXPECT_EQ(textOf(text.strip(isLate, DStringEnum::trailing)), "ne 22 th");
}

bool isLetterQ(char c) { return c == 'q'; }

TEST(OrdinaryCode, AsksFunctionsOfOneByteAboutBytesAndNoWiderCharacters) {
    DString east("q"); // the low byte of U+6771 is a q
    if (operations::localeModeIs("utf8")) east = "\u6771q";
    unsigned int const wanted = east.length();
    EXPECT_EQ(east.indexOf([](char c) { return c == 'q'; }), wanted);
    EXPECT_EQ(east.indexOf([](char c) noexcept { return c == 'q'; }), wanted);
    EXPECT_EQ(east.indexOf([](unsigned char const& c) { return c == 'q'; }), wanted);
    EXPECT_EQ(east.indexOf([](auto c) { return c == 'q'; }), wanted);
    EXPECT_EQ(east.indexOf(isLetterQ), wanted);
    EXPECT_EQ(east.lastIndexOfAnyOf(&isLetterQ), wanted);
    EXPECT_EQ(east.occurrencesOf(std::function<bool(char)>(isLetterQ)), 1U);
    if (isMultiByte()) return;
    EXPECT_EQ(DString("\xE9").indexOf([](unsigned char c) { return c == 0xE9; }), 1U);
    EXPECT_EQ(DString("\xE9").indexOf([](char c) { return c == '\xE9'; }), 1U);
}

TEST(OrdinaryCode, IsGivenWhereTheStandardLibraryTakesTexts) {
    DString const name("folder/file.txt");
    EXPECT_EQ(std::string(name), "folder/file.txt");
    std::string text = "in ";
    text += name;
    EXPECT_EQ(text, "in folder/file.txt");
    text = name;
    EXPECT_EQ(text, "folder/file.txt");
    std::filesystem::path path = name;
    EXPECT_EQ(path.extension(), ".txt");
    EXPECT_EQ(std::filesystem::path(name).parent_path(), "folder");
    path = DString("other");
    EXPECT_EQ(path / DString("file"), "other/file");
    EXPECT_FALSE(std::filesystem::exists(DString("/no/such/file")));
}

TEST(OrdinaryCode, IsARangeOfBytes) {
    DString const text("abcb");
    EXPECT_EQ(std::count(text.begin(), text.end(), 'b'), 2);
    EXPECT_EQ(std::string(text.rbegin(), text.rend()), "bcba");
    EXPECT_EQ(std::string(text.crbegin(), text.crend()), "bcba");
    EXPECT_EQ(std::string(text.cbegin(), text.cend()), "abcb");
    EXPECT_EQ(std::size(text), 4U);
    EXPECT_EQ(std::data(text), text.c_str());
}

TEST(OrdinaryCode, IsMadeOfARangeOfBytes) {
    std::string const text("hello");
    EXPECT_EQ(textOf(DString(text.begin() + 1, text.end())), "ello");
    EXPECT_EQ(textOf(DString(text.data(), text.data() + 2)), "he");
    std::list<char> const list{'x', '\0', 'y'};
    EXPECT_EQ(textOf(DString(list.begin(), list.end())), std::string("x\0y", 3));
    DString const other("abc");
    EXPECT_EQ(textOf(DString(other.rbegin(), other.rend())), "cba");
    EXPECT_EQ(textOf(DString(other.begin(), other.begin())), "");
    EXPECT_EQ(textOf(DString(nullptr, 3, '*')), "***") << "still a pointer and a length";
    EXPECT_EQ(textOf(DString("abc", 2)), "ab");
}

TEST(OrdinaryCode, IsSwapped) {
    DString first("first");
    DString second("second");
    std::swap(first, second);
    EXPECT_EQ(textOf(first), "second");
    std::vector<DString> texts{"b", "a"};
    std::iter_swap(texts.begin(), texts.begin() + 1);
    EXPECT_EQ(textOf(texts[0]), "a");
}

TEST(OrdinaryCode, HashesAnyTextAsTheStringOfIt) {
    std::hash<DString> const hash;
    for (char const* const text : {"", "a", "some longer text of several words, to be hashed"}) {
        EXPECT_EQ(hash(text), hash(DString(text)));
        EXPECT_EQ(hash(std::string_view(text)), hash(DString(text)));
        EXPECT_EQ(hash(std::string(text)), hash(DString(text)));
    }
}

#if __cplusplus >= 202002L

struct Person {
    DString name;
    int year;
    auto operator<=>(Person const&) const = default;
};

TEST(OrdinaryCode, SearchesUnorderedContainersForAnyText) {
    std::unordered_set<DString, std::hash<DString>, std::equal_to<>> const names{"Ada", "Grace"};
    EXPECT_TRUE(names.contains("Ada"));
    EXPECT_TRUE(names.contains(std::string_view("Grace")));
    EXPECT_FALSE(names.contains(std::string("grace")));
}

TEST(OrdinaryCode, ComparesInThreeWays) {
    DString const text("b");
    EXPECT_TRUE((text <=> DString("a")) > 0);
    EXPECT_TRUE((text <=> "b") == 0);
    EXPECT_TRUE(("a" <=> text) < 0);
    EXPECT_TRUE((std::string("c") <=> text) > 0);
    static_assert(std::is_same_v<decltype(text <=> text), std::weak_ordering>);
    EXPECT_TRUE((Person{"Ada", 1815} < Person{"Grace", 1906}));
    EXPECT_TRUE((Person{"Ada", 1815} < Person{"Ada", 1816}));
    EXPECT_TRUE((Person{"Ada", 1815} == Person{"Ada", 1815}));
}

TEST(OrdinaryCode, IsTakenByTheAlgorithmsOfRanges) {
    DString const text("abcb");
    EXPECT_EQ(std::ranges::count(text, 'b'), 2);
    EXPECT_EQ(*std::ranges::find(text, 'c'), 'c');
    EXPECT_TRUE(std::ranges::equal(text, std::string_view("abcb")));
}

#endif

} // namespace
