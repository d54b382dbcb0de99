// DString as a host's source text sees it: which overload a call means, what converts to what, comparison
// with every kind of text on both sides. Compiled in the oldest and in the newest dialect that hosts use.
#include "tests/buffers/buffer_support.h"

#include <algorithm>
#include <functional>
#include <iterator>
#include <map>
#include <numeric>
#include <set>
#include <sstream>
#include <type_traits>
#include <unordered_map>
#include <unordered_set>

namespace {

using namespace core;

// Conversions

TEST(StringConversion, ToAStringViewIsImplicitAndKeepsNuls) {
    static_assert(std::is_convertible_v<DString, std::string_view>);
    auto const lengthOf = [](std::string_view view) { return view.size(); };
    DString const text("a\0b"s);
    EXPECT_EQ(lengthOf(text), 3U);
    std::string_view const view = text;
    EXPECT_EQ(view, "a\0b"sv);
    EXPECT_EQ(view.data(), text.c_str()) << "nothing is copied";
}

TEST(StringConversion, ToACharacterPointerIsExplicitOnly) {
    static_assert(!std::is_convertible_v<DString, char const*>);
    static_assert(std::is_constructible_v<char const*, DString const&>);
    static_assert(!std::is_convertible_v<DString, bool>);
    static_assert(!std::is_convertible_v<DString, void const*>);
    DString const text("abc");
    EXPECT_EQ(static_cast<char const*>(text), text.c_str());
}

TEST(StringConversion, ToAStandardStringCopiesTheBytes) {
    DString const text("a\0b"s);
    std::string const copy(text);
    EXPECT_EQ(copy, "a\0b"s);
    std::string assigned;
    assigned = text;
    EXPECT_EQ(assigned, "a\0b"s);
    assigned += text;
    EXPECT_EQ(assigned, "a\0ba\0b"s);
}

TEST(StringConversion, FromEveryTextAndNumberIsImplicit) {
    static_assert(std::is_convertible_v<char const*, DString>);
    static_assert(std::is_convertible_v<char*, DString>);
    static_assert(std::is_convertible_v<signed char const*, DString>);
    static_assert(std::is_convertible_v<unsigned char const*, DString>);
    static_assert(std::is_convertible_v<std::string, DString>);
    static_assert(std::is_convertible_v<std::string_view, DString>);
    static_assert(std::is_convertible_v<std::nullptr_t, DString>);
    static_assert(std::is_convertible_v<char, DString>);
    static_assert(std::is_convertible_v<int, DString>);
    static_assert(std::is_convertible_v<long long, DString>);
    static_assert(std::is_convertible_v<unsigned long long, DString>);
    static_assert(std::is_convertible_v<double, DString>);
    static_assert(std::is_convertible_v<std::size_t, DString>);
    auto const lengthOf = [](DString const& text) { return text.length(); };
    char array[] = "abcd";
    EXPECT_EQ(lengthOf(array), 4U);
    EXPECT_EQ(lengthOf("ab"), 2U);
    EXPECT_EQ(lengthOf("abc"s), 3U);
    EXPECT_EQ(lengthOf(nullptr), 0U);
    EXPECT_EQ(lengthOf(12345), 5U);
}

// Overload traps

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

// Reading

TEST(StringReading, LengthAndSizeCountBytes) {
    DString const text("a\0\xE3\x81\x82"s);
    static_assert(std::is_same_v<decltype(text.length()), unsigned int>);
    EXPECT_EQ(text.length(), 5U);
    EXPECT_EQ(text.size(), 5U);
    EXPECT_FALSE(text.isEmpty());
    EXPECT_FALSE(text.empty());
    EXPECT_TRUE(DString().isEmpty());
    EXPECT_TRUE(DString().empty());
    EXPECT_EQ(DString().size(), 0U);
    EXPECT_FALSE(DString('\0').isEmpty());
}

TEST(StringReading, CharactersAreTerminatedByANul) {
    DString const text("a\0b"s);
    EXPECT_EQ(text.c_str(), text.data());
    EXPECT_EQ(std::memcmp(text.data(), "a\0b\0", 4), 0);
    EXPECT_STREQ(DString().c_str(), "");
}

TEST(StringReading, ARangeForSeesEveryByte) {
    DString const text("a\0b"s);
    std::string seen;
    for (char const c : text)
        seen += c;
    EXPECT_EQ(seen, "a\0b"s);
    for (char const c : DString())
        ADD_FAILURE() << c;
    EXPECT_EQ(std::distance(text.begin(), text.end()), 3);
    EXPECT_EQ(std::count(text.begin(), text.end(), '\0'), 1);
    EXPECT_EQ(std::size(text), 3U);
    EXPECT_EQ(std::data(text), text.c_str());
    static_assert(std::is_same_v<decltype(DString("x").begin()), char const*>);
}

// Comparison

/// Checks all six operators in both directions; `order` is negative, 0 or positive.
template <class Left, class Right>
void expectOrder(Left const& left, Right const& right, int order) {
    EXPECT_EQ(left == right, order == 0);
    EXPECT_EQ(left != right, order != 0);
    EXPECT_EQ(left < right, order < 0);
    EXPECT_EQ(left <= right, order <= 0);
    EXPECT_EQ(left > right, order > 0);
    EXPECT_EQ(left >= right, order >= 0);
    EXPECT_EQ(right == left, order == 0);
    EXPECT_EQ(right != left, order != 0);
    EXPECT_EQ(right > left, order < 0);
    EXPECT_EQ(right >= left, order <= 0);
    EXPECT_EQ(right<left, order> 0);
    EXPECT_EQ(right <= left, order >= 0);
}

/// The same with `other` as every kind of text.
void expectOrderWithEveryText(DString const& text, char const* other, int order) {
    expectOrder(text, DString(other), order);
    expectOrder(text, other, order);
    expectOrder(text, std::string(other), order);
    expectOrder(text, std::string_view(other), order);
    std::string buffer(other);
    buffer += '\0';
    expectOrder(text, static_cast<char*>(buffer.data()), order);
}

TEST(StringComparison, MeansTheSameForEveryTextOnEitherSide) {
    expectOrderWithEveryText(DString("abc"), "abc", 0);
    expectOrderWithEveryText(DString("abc"), "abd", -1);
    expectOrderWithEveryText(DString("abd"), "abc", 1);
    expectOrderWithEveryText(DString("ab"), "abc", -1);
    expectOrderWithEveryText(DString("abc"), "ab", 1);
    expectOrderWithEveryText(DString(), "", 0);
    expectOrderWithEveryText(DString(), "a", -1);
    expectOrderWithEveryText(DString("a"), "", 1);
}

TEST(StringComparison, WithALiteralOrAnArray) {
    DString const text("abc");
    EXPECT_TRUE(text == "abc");
    EXPECT_TRUE("abc" == text);
    EXPECT_TRUE("abb" < text);
    EXPECT_TRUE(text <= "abc");
    char array[8] = "abc";
    EXPECT_TRUE(text == array);
    EXPECT_FALSE(array != text);
}

TEST(StringComparison, NullCountsAsEmpty) {
    char const* const none = nullptr;
    expectOrder(DString(), none, 0);
    expectOrder(DString("a"), none, 1);
    expectOrder(DString(), nullptr, 0);
    expectOrder(DString("a"), nullptr, 1);
    expectOrder(DString(), std::string_view(), 0);
    expectOrder(DString("a"), std::string_view(), 1);
}

TEST(StringComparison, LooksBehindNuls) {
    DString const text("a\0b"s);
    EXPECT_TRUE(text == "a\0b"s);
    EXPECT_TRUE(text == "a\0b"sv);
    EXPECT_TRUE(text != "a\0c"s);
    EXPECT_TRUE("a\0c"sv != text);
    EXPECT_TRUE(text != "a") << "a character pointer ends at its NUL";
    EXPECT_TRUE(text == DString("a\0b"s));
}

TEST(StringComparison, GoesThroughTheBuffersCompareWithTheStringAsReceiver) {
    class Scripted : public DBuffer {
    public:
        using DBuffer::DBuffer;
        int compare(void const* other, unsigned int otherLength) const override {
            std::string_view const text(static_cast<char const*>(other), otherLength);
            return text == "same" ? 0 : text == "before" ? 1 : 2;
        }
    };
    DString const text(makeIn<Scripted>("anything", guardSize));
    auto const expect = [&text](char const* other, int order) {
        expectOrder(text, other, order);
        expectOrder(text, std::string(other), order);
        expectOrder(text, std::string_view(other), order);
    };
    expect("same", 0);
    expect("before", 1);
    expect("other", -1);
    EXPECT_TRUE(text > DString("before"));
    EXPECT_TRUE(text < DString("other"));
    EXPECT_TRUE("before" < text) << "the result is mirrored";
    EXPECT_FALSE("before" > text);
    EXPECT_TRUE("other"s > text);
}

TEST(StringComparison, LeavesAHostsOwnComparisonsAlone) {
    std::string const standard("abc");
    EXPECT_TRUE(std::string_view("abc") == standard);
    EXPECT_TRUE(standard == std::string_view("abc"));
    EXPECT_TRUE(standard == "abc");
    EXPECT_TRUE("abc" == standard);
    EXPECT_FALSE(std::string_view("abc") < standard);
    EXPECT_FALSE("abc"sv != standard);
    EXPECT_TRUE("abc"sv == "abc");
    EXPECT_EQ(standard + "d", "abcd");
}

/// A host's own string, with nothing of its own about comparing.
class HostString : public DString {
public:
    using DString::DString;
};

TEST(StringComparison, WorksForClassesDerivedFromIt) {
    HostString const left("abc");
    HostString const right("abd");
    expectOrder(left, DString("abd"), -1);
    expectOrder(left, "abd", -1);
    expectOrder(left, "abc"s, 0);
    expectOrder(left, right, -1);
    EXPECT_EQ(textOf(left + right), "abcabd");
    EXPECT_EQ(textOf(left + "x"), "abcx");
    EXPECT_EQ(textOf(DString("x") + left), "xabc");
    HostString grown("abc");
    grown += right;
    EXPECT_EQ(textOf(grown), "abcabd");
    EXPECT_EQ(std::string_view(left), "abc");
}

/// A host's class that is text to whoever asks.
struct ConvertsToView {
    operator std::string_view() const { return "abc"; }
};

TEST(StringComparison, TakesAnythingThatConvertsToAView) {
    expectOrder(DString("abc"), ConvertsToView(), 0);
    EXPECT_EQ(textOf(DString("x") + ConvertsToView()), "xabc");
}

// In the standard library

TEST(StringHash, GoesByTheBytes) {
    std::hash<DString> const hash;
    EXPECT_EQ(hash(DString("abc")), hash(DString("abc")));
    EXPECT_EQ(hash(DString("a\0b"s)), hash(DString("a\0b"sv)));
    EXPECT_NE(hash(DString("a\0b"s)), hash(DString("a\0c"s))) << "bytes behind a NUL count";
    EXPECT_NE(hash(DString("abc")), hash(DString("abd")));
    EXPECT_EQ(hash(DString()), hash(DString("")));
    static_assert(std::is_same_v<decltype(hash(DString())), std::size_t>);
}

TEST(StringHash, ServesUnorderedContainers) {
    std::unordered_map<DString, int> counts;
    for (char const* word : {"one", "two", "one", "three", "one"})
        ++counts[word];
    EXPECT_EQ(counts.size(), 3U);
    EXPECT_EQ(counts["one"], 3);
    std::unordered_set<DString> const words{"a", "b", "a"};
    EXPECT_EQ(words.count("a"), 1U);
    EXPECT_EQ(words.size(), 2U);
}

TEST(StringInContainers, SortsAndMoves) {
    std::vector<DString> words{"pear", "apple", "fig", "banana"};
    std::sort(words.begin(), words.end());
    EXPECT_EQ(words, (std::vector<DString>{"apple", "banana", "fig", "pear"}));
    words.erase(words.begin());
    words.insert(words.begin(), "avocado");
    EXPECT_TRUE(std::is_sorted(words.begin(), words.end()));
    std::map<DString, int> const byName{{"one", 1}, {"two", 2}};
    EXPECT_EQ(byName.at("two"), 2);
    std::set<DString, std::less<>> const names{"one", "two"};
    EXPECT_EQ(names.count("one"sv), 1U);
    EXPECT_EQ(names.count("three"s), 0U);
    DString const joined = std::accumulate(words.begin(), words.end(), DString());
    EXPECT_EQ(textOf(joined), "avocadobananafigpear");
}

TEST(StringInStreams, IsReadAndWrittenThroughTheOperators) {
    std::stringstream stream;
    stream << DString("one") << ' ' << DString(2);
    DString first, second;
    stream >> first >> second;
    EXPECT_EQ(first, "one");
    EXPECT_EQ(second, "2");
    std::ostringstream plain;
    plain << "text" << std::string("standard") << std::string_view("view") << 'c' << 1;
    EXPECT_EQ(plain.str(), "textstandardviewc1") << "the operators of the library are not in the way";
}

// Queries

TEST(StringQueries, AskTheBufferThroughItsVirtualOperations) {
    class Yes : public DBuffer {
    public:
        using DBuffer::DBuffer;
        bool isAlphanumeric() const override { return says("isAlphanumeric"); }
        bool isAlphabetic() const override { return says("isAlphabetic"); }
        bool isASCII() const override { return says("isASCII"); }
        bool isControl() const override { return says("isControl"); }
        bool isDigits() const override { return says("isDigits"); }
        bool isGraphics() const override { return says("isGraphics"); }
        bool isHexDigits() const override { return says("isHexDigits"); }
        bool isLowerCase() const override { return says("isLowerCase"); }
        bool isPrintable() const override { return says("isPrintable"); }
        bool isPunctuation() const override { return says("isPunctuation"); }
        bool isUpperCase() const override { return says("isUpperCase"); }
        bool isWhiteSpace() const override { return says("isWhiteSpace"); }
        bool isMBCS() const override { return says("isMBCS"); }
        bool isDBCS() const override { return says("isDBCS"); }
        bool isSBCS() const override { return says("isSBCS"); }
        bool isValidMBCS() const override { return says("isValidMBCS"); }
        bool isValidDBCS() const override { return says("isValidDBCS"); }
        bool includesMBCS() const override { return says("includesMBCS"); }
        bool includesDBCS() const override { return says("includesDBCS"); }
        bool includesSBCS() const override { return says("includesSBCS"); }
        unsigned int charType(unsigned int index) const override { return index + 40; }

    private:
        bool says(std::string_view query) const { return query == std::string_view(contents(), length); }
    };
    std::vector<std::pair<std::string, bool (DString::*)() const>> const queries = {
        {"isAlphanumeric", &DString::isAlphanumeric},
        {"isAlphabetic", &DString::isAlphabetic},
        {"isASCII", &DString::isASCII},
        {"isControl", &DString::isControl},
        {"isDigits", &DString::isDigits},
        {"isGraphics", &DString::isGraphics},
        {"isHexDigits", &DString::isHexDigits},
        {"isLowerCase", &DString::isLowerCase},
        {"isPrintable", &DString::isPrintable},
        {"isPunctuation", &DString::isPunctuation},
        {"isUpperCase", &DString::isUpperCase},
        {"isWhiteSpace", &DString::isWhiteSpace},
        {"isMBCS", &DString::isMBCS},
        {"isDBCS", &DString::isDBCS},
        {"isSBCS", &DString::isSBCS},
        {"isValidMBCS", &DString::isValidMBCS},
        {"isValidDBCS", &DString::isValidDBCS},
        {"includesMBCS", &DString::includesMBCS},
        {"includesDBCS", &DString::includesDBCS},
        {"includesSBCS", &DString::includesSBCS}};
    for (auto const& [name, query] : queries) {
        DString const asked(makeIn<Yes>(name, guardSize));
        EXPECT_TRUE((asked.*query)()) << name;
        DString const other(makeIn<Yes>("another", guardSize));
        EXPECT_FALSE((other.*query)()) << name;
        EXPECT_EQ(asked.charType(2), 42U);
    }
}

} // namespace
