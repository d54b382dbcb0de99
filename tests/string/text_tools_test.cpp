// The text tools, in every locale: ranges, letter case and columns against plain forms that ask the C library
// at every byte.
#include "tests/characters/multi_byte_support.h"

#include <kelcl/dtext.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cwchar>
#include <cwctype>
#include <limits>
#include <list>
#include <random>
#include <sstream>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

namespace {

using namespace std::string_literals;
using std::string;

using Strings = std::vector<string>;

template <class Range>
Strings listed(Range&& range) {
    Strings all;
    for (auto const& piece : range)
        all.emplace_back(piece.data(), piece.size());
    return all;
}

std::mt19937& source() {
    static std::mt19937 ours(20261122);
    return ours;
}

string anyText(std::size_t most) { return mb::randomText(source(), mb::parts(), most); }

bool isStart(string const& text, std::size_t at) {
    if (at == text.size()) return true;
    auto const all = mb::charactersOf(text);
    return std::any_of(all.begin(), all.end(),
                       [at](mb::Character const& character) { return character.offset == at; });
}

Strings splitPlainly(string const& text, string const& separator) {
    Strings pieces(1);
    for (std::size_t at = 0; at < text.size();) {
        // From a separator on characters are counted anew.
        std::size_t const length = mb::lengthAt(text, at);
        if (!separator.empty() && text.compare(at, separator.size(), separator) == 0) {
            pieces.emplace_back();
            at += separator.size();
        } else {
            pieces.back() += text.substr(at, length);
            at += std::min(length, text.size() - at);
        }
    }
    return pieces;
}

unsigned int columnsPlainly(string const& text) {
    int columns = 0;
    for (mb::Character const& character : mb::charactersOf(text)) {
        std::mbstate_t state{};
        wchar_t value = 0;
        std::size_t const length =
            std::mbrtowc(&value, character.bytes.data(), character.bytes.size(), &state);
        columns += length == mb::invalidSequence || length == mb::incompleteSequence
                       ? 1
                       : std::max(wcwidth(value), 0);
    }
    return static_cast<unsigned int>(columns);
}

/// What was there before it was padded with dots, at one end.
string withoutDots(DString const& padded) {
    string const text(padded.data(), padded.size());
    std::size_t const first = text.find_first_not_of('.');
    return first == string::npos ? "" : text.substr(first, text.find_last_not_of('.') - first + 1);
}

/// A character with its letter case taken away.
string folded(string const& character) {
    if (!mb::switchIsOn()) {
        bool const isCapital = character.size() == 1 && character[0] >= 'A' && character[0] <= 'Z';
        return isCapital ? string(1, static_cast<char>(character[0] + 32)) : character;
    }
    std::mbstate_t state{};
    wchar_t value = 0;
    std::size_t const length = std::mbrtowc(&value, character.data(), character.size(), &state);
    if (length == mb::invalidSequence || length == mb::incompleteSequence) return character;
    return "value " + std::to_string(std::towlower(static_cast<std::wint_t>(value)));
}

Strings foldedCharacters(string const& text) {
    Strings all;
    for (mb::Character const& character : mb::charactersOf(text))
        all.push_back(folded(character.bytes));
    return all;
}

} // namespace

// Ranges

TEST(Words, AreTheWordsOfDString) {
    for (int trial = 0; trial < 2000; ++trial) {
        string text = anyText(12);
        for (char& c : text)
            if (c == '7') c = "\t\n\v\f\r"[source()() % 5];
        DString const string_(text);
        Strings expected;
        for (unsigned int n = 1; n <= string_.numWords(); ++n) {
            DString const word = string_.word(n);
            expected.emplace_back(word.data(), word.length());
        }
        EXPECT_EQ(listed(kelcl::words(text)), expected) << mb::hex(text);
    }
}

TEST(Split, FindsSeparatorsWhereCharactersStart) {
    for (int trial = 0; trial < 5000; ++trial) {
        string const text = anyText(14);
        string const separator = anyText(2);
        EXPECT_EQ(listed(kelcl::split(text, separator)), splitPlainly(text, separator))
            << mb::hex(text) << "by " << mb::hex(separator);
        if (separator.size() != 1) continue;
        EXPECT_EQ(listed(kelcl::split(text, separator[0])), splitPlainly(text, separator)) << mb::hex(text);
    }
}

TEST(Split, GivesOneMorePieceThanThereAreSeparators) {
    EXPECT_EQ(listed(kelcl::split("1275;Amsterdam;;NL", ';')), (Strings{"1275", "Amsterdam", "", "NL"}));
    EXPECT_EQ(listed(kelcl::split(";", ';')), (Strings{"", ""}));
    EXPECT_EQ(listed(kelcl::split("", ';')), (Strings{""}));
    EXPECT_EQ(listed(kelcl::split(nullptr, ';')), (Strings{""}));
    EXPECT_EQ(listed(kelcl::split("a;b", "")), (Strings{"a;b"}));
    EXPECT_EQ(listed(kelcl::split("a, b, ", DString(", "))), (Strings{"a", "b", ""}));
    EXPECT_EQ(listed(kelcl::split("a\0b\0"s, '\0')), (Strings{"a", "b", ""}));
}

TEST(Characters, AreThoseOfTheMultiByteBuffer) {
    for (int trial = 0; trial < 2000; ++trial) {
        string const text = anyText(14);
        Strings expected;
        for (mb::Character const& character : mb::charactersOf(text))
            expected.push_back(text.substr(character.offset, character.bytes.size()));
        EXPECT_EQ(listed(kelcl::characters(text)), expected) << mb::hex(text);
    }
}

TEST(Characters, ReadsNothingPastTheEndOfAView) {
    for (string const& part : mb::parts())
        for (std::size_t length = 0; length <= part.size(); ++length) {
            mb::AtMemoryEnd const bytes(part.substr(0, length));
            std::string_view const view(bytes.data(), length);
            string joined;
            for (std::string_view const character : kelcl::characters(view))
                joined += character;
            EXPECT_EQ(joined, view);
            EXPECT_LE(kelcl::columns(view), 2 * length);
            EXPECT_TRUE(kelcl::equalsIgnoringCase(view, joined));
            EXPECT_EQ(listed(kelcl::split(view, "\x80\x80")).size(), 1U);
        }
}

TEST(Ranges, KeepTheTextOfAString) {
    DString text("one two");
    auto const words = kelcl::words(text);
    text.upperCase();
    text += " three";
    EXPECT_EQ(listed(words), (Strings{"one", "two"}));
    EXPECT_EQ(listed(words), (Strings{"one", "two"})) << "a second time";
    EXPECT_EQ(listed(kelcl::words(DString("a temporary"))), (Strings{"a", "temporary"}));
    EXPECT_EQ(listed(kelcl::split("a temporary that is longer than sixteen"s, " that "s)),
              (Strings{"a temporary", "is longer than sixteen"}));
}

TEST(Ranges, CopyNoViewAndNoLastingText) {
    string const text = "lasting words";
    auto const words = kelcl::words(text);
    EXPECT_EQ((*words.begin()).data(), text.data());
    EXPECT_EQ(words.begin()->size(), 7U);
    EXPECT_FALSE(words.empty());
    EXPECT_TRUE(kelcl::words(" \t").empty());
    std::string_view const view = text;
    EXPECT_EQ((*kelcl::split(view, ' ').begin()).data(), text.data());
    auto at = words.begin();
    EXPECT_EQ(*at++, "lasting");
    EXPECT_EQ(*at++, "words");
    EXPECT_EQ(at, words.end());
}

TEST(Lines, HasNoEmptyLineAfterTheLastDelimiter) {
    auto const linesOf = [](string const& text, char delimiter) {
        std::istringstream stream(text);
        return listed(kelcl::lines(stream, delimiter));
    };
    EXPECT_EQ(linesOf("first\n\nlast\n", '\n'), (Strings{"first", "", "last"}));
    EXPECT_EQ(linesOf("first\nlast", '\n'), (Strings{"first", "last"}));
    EXPECT_EQ(linesOf("", '\n'), Strings{});
    EXPECT_EQ(linesOf("\n", '\n'), Strings{""});
    EXPECT_EQ(linesOf("a;b\nc;", ';'), (Strings{"a", "b\nc"}));
    EXPECT_EQ(linesOf("a\0b\n"s, '\n'), Strings{"a\0b"s});
}

TEST(Join, PutsASeparatorBetweenTexts) {
    EXPECT_EQ(kelcl::join(std::vector<DString>{"a", "b", "c"}, ", "), "a, b, c");
    EXPECT_EQ(kelcl::join(std::list<string>{"a", "", "c"}, ';'), "a;;c");
    EXPECT_EQ(kelcl::join(std::vector<char const*>{}, ';'), "");
    EXPECT_EQ(kelcl::join(kelcl::words(" the  quick fox "), DString("_")), "the_quick_fox");
    EXPECT_EQ(kelcl::join(std::vector<std::string_view>{"a\0b"}, '-').length(), 1U);
    EXPECT_EQ(kelcl::join(kelcl::split("a-b-c", '-'), "\0"s).length(), 5U);
}

// Letter case

TEST(IgnoringCase, FindsTextsEqualWhoseCharactersAre) {
    for (int trial = 0; trial < 5000; ++trial) {
        string const left = anyText(4);
        string right = anyText(4);
        if (trial % 2 == 0) {
            right = left;
            for (char& c : right)
                if (c == 'a' || c == 'B') c = static_cast<char>(c ^ 0x20);
        }
        EXPECT_EQ(kelcl::equalsIgnoringCase(left, right), foldedCharacters(left) == foldedCharacters(right))
            << mb::hex(left) << "and " << mb::hex(right);
    }
}

TEST(IgnoringCase, KnowsTheLettersOfTheLocaleWithTheSwitchOn) {
    string const capital = mb::bytesOf(0xC4);
    string const small = mb::bytesOf(0xE4);
    if (!capital.empty() && !small.empty() && std::towlower(0xC4) == 0xE4) {
        EXPECT_EQ(kelcl::equalsIgnoringCase(capital, small), mb::switchIsOn());
        EXPECT_EQ(kelcl::indexOfIgnoringCase("in " + capital + "BC", small + "b"),
                  mb::switchIsOn() ? 4U : 0U);
    }
    EXPECT_TRUE(kelcl::equalsIgnoringCase("HELLO, WORLD", "hello, world"));
    EXPECT_FALSE(kelcl::equalsIgnoringCase("[", "{"));
    EXPECT_FALSE(kelcl::equalsIgnoringCase("a", "aa"));
}

TEST(IgnoringCase, FindsTheFirstPlaceWhereTheCharactersStand) {
    for (int trial = 0; trial < 5000; ++trial) {
        string const text = mb::randomText(source(), mb::wholeParts(), 10);
        string const pattern = mb::randomText(source(), mb::wholeParts(), 2);
        auto const start = static_cast<unsigned int>(source()() % (text.size() + 2));
        Strings const wanted = foldedCharacters(pattern);
        Strings const all = foldedCharacters(text);
        unsigned int expected = 0;
        auto const places = mb::charactersOf(text);
        for (std::size_t i = 0; i + wanted.size() <= all.size() && expected == 0; ++i)
            if (!wanted.empty() && places[i].offset + 1 >= start &&
                std::equal(wanted.begin(), wanted.end(), all.begin() + static_cast<std::ptrdiff_t>(i)))
                expected = static_cast<unsigned int>(places[i].offset) + 1;
        EXPECT_EQ(kelcl::indexOfIgnoringCase(text, pattern, start), expected)
            << mb::hex(text) << "for " << mb::hex(pattern) << "from " << start;
    }
}

// The ends

TEST(EndsWith, WantsTheStartOfACharacter) {
    for (int trial = 0; trial < 5000; ++trial) {
        string const text = anyText(8);
        string const suffix = trial % 2 == 0 ? anyText(2) : text.substr(source()() % (text.size() + 1));
        bool const expected = suffix.size() <= text.size() &&
                              text.compare(text.size() - suffix.size(), suffix.size(), suffix) == 0 &&
                              isStart(text, text.size() - suffix.size());
        EXPECT_EQ(kelcl::endsWith(text, suffix), expected) << mb::hex(text) << "with " << mb::hex(suffix);
    }
}

TEST(StartsWith, ComparesBytes) {
    EXPECT_TRUE(kelcl::startsWith(DString("2024-05-17"), "2024-"));
    EXPECT_FALSE(kelcl::startsWith("2024", "2024-"));
    EXPECT_TRUE(kelcl::startsWith("", nullptr));
    EXPECT_TRUE(kelcl::startsWith("a\0b"s, "a\0"s));
    EXPECT_FALSE(kelcl::startsWith("a"s, "b"s));
}

// Columns

TEST(Columns, AreThoseOfTheTerminal) {
    for (int trial = 0; trial < 2000; ++trial) {
        string const text = anyText(10);
        EXPECT_EQ(kelcl::columns(text), columnsPlainly(text)) << mb::hex(text);
    }
}

TEST(Columns, HoldWholeCharactersOfOneSide) {
    for (int trial = 0; trial < 5000; ++trial) {
        string const text = anyText(8);
        auto const width = static_cast<unsigned int>(source()() % 14);
        unsigned int const all = columnsPlainly(text);
        DString const left = kelcl::leftJustifiedInColumns(text, width, '.');
        DString const right = kelcl::rightJustifiedInColumns(text, width, '.');
        DString const middle = kelcl::centeredInColumns(text, width, '.');
        if (all <= width) {
            string const pads(width - all, '.');
            EXPECT_EQ(left, text + pads);
            EXPECT_EQ(right, pads + text);
            EXPECT_EQ(middle, pads.substr(0, pads.size() / 2) + text + pads.substr(pads.size() / 2));
            continue;
        }
        string const context = mb::hex(text) + "in " + std::to_string(width);
        string const front = withoutDots(left);
        EXPECT_EQ(text.substr(0, front.size()), front) << context;
        EXPECT_TRUE(isStart(text, front.size())) << context;
        string const end = withoutDots(right);
        EXPECT_EQ(text.substr(text.size() - end.size()), end) << context;
        EXPECT_TRUE(isStart(text, text.size() - end.size())) << context;
        EXPECT_NE(text.find(withoutDots(middle)), string::npos) << context;
        for (DString const& cut : {left, right, middle})
            EXPECT_EQ(columnsPlainly({cut.data(), cut.size()}), width) << context;
    }
}

TEST(Columns, PadWhereAWideCharacterOnlyHalfFits) {
    if (!mb::samples().wide.exists()) return;
    string const wide = mb::samples().wide.bytes;
    EXPECT_EQ(kelcl::columns(wide + "a"), 3U);
    EXPECT_EQ(kelcl::leftJustifiedInColumns(wide + wide, 3, '.'), wide + ".");
    EXPECT_EQ(kelcl::rightJustifiedInColumns(wide + wide, 3, '.'), "." + wide);
    EXPECT_EQ(kelcl::centeredInColumns(wide + wide + wide, 3, '.'), wide + ".");
    EXPECT_EQ(kelcl::centeredInColumns(wide, 7, '.'), ".." + wide + "...");
}

// Numbers

TEST(ToNumber, TakesAllOfTheTextOrNothing) {
    EXPECT_EQ(kelcl::toNumber<int>("-17"), -17);
    EXPECT_EQ(kelcl::toNumber<unsigned char>("255"), 255);
    EXPECT_EQ(kelcl::toNumber<unsigned char>("256"), std::nullopt);
    EXPECT_EQ(kelcl::toNumber<unsigned int>("-1"), std::nullopt);
    EXPECT_EQ(kelcl::toNumber<long long>(DString("9223372036854775807")), 9223372036854775807);
    EXPECT_EQ(kelcl::toNumber<long long>("9223372036854775808"), std::nullopt);
    EXPECT_EQ(kelcl::toNumber<double>("2.5e3"), 2500.0);
    EXPECT_EQ(kelcl::toNumber<float>("0.5"), 0.5F);
    EXPECT_EQ(kelcl::toNumber<signed char>("-128"), -128);
    EXPECT_EQ(kelcl::toNumber<signed char>("-129"), std::nullopt);
    EXPECT_EQ(kelcl::toNumber<float>("1e39"), std::nullopt);
    EXPECT_EQ(kelcl::toNumber<double>("1e999"), std::nullopt);
    EXPECT_EQ(kelcl::toNumber<double>("-inf"), -std::numeric_limits<double>::infinity());
    EXPECT_TRUE(std::isnan(kelcl::toNumber<double>("nan").value_or(0)));
    EXPECT_EQ(kelcl::toNumber<long double>("-2.5"), -2.5L);
    EXPECT_EQ(kelcl::toNumber<double>("2.5e"), std::nullopt);
    for (char const* const text : {"", " 1", "1 ", "+1", "0x10", "1,5", "one", "--1"}) {
        EXPECT_EQ(kelcl::toNumber<int>(text), std::nullopt) << text;
        EXPECT_EQ(kelcl::toNumber<double>(text), std::nullopt) << text;
    }
    EXPECT_EQ(kelcl::toNumber<int>(nullptr), std::nullopt);
    EXPECT_EQ(kelcl::toNumber<int>("1\0"s), std::nullopt);
}

#if __cplusplus >= 202002L && __has_include(<ranges>)
#include <ranges>

static_assert(std::ranges::forward_range<decltype(kelcl::words(std::string_view()))>);
static_assert(std::ranges::input_range<kelcl::detail::Lines<std::istringstream>>);

TEST(Ranges, AreThoseOfTheStandardLibrary) {
    auto const fields = kelcl::split("b,,a", ',');
    EXPECT_EQ(std::ranges::count(fields, ""), 1);
    EXPECT_EQ(std::ranges::distance(fields), 3);
#if !defined(__clang__) || __clang_major__ >= 16 // earlier ones do not take the views of libstdc++
    auto filled = fields | std::views::filter([](std::string_view field) { return !field.empty(); });
    EXPECT_EQ(listed(filled), (Strings{"b", "a"}));
#endif
}
#endif
