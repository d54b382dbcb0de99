// Searches of UTF-8 for a few characters and for many, against a walk from character to character.
#include "characters/value_set.h"
#include "tests/bytes/texts.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>
#include <string_view>
#include <vector>

namespace {

using kelcl::SearchedSoFar;
using kelcl::ValueSet;

/// Characters of one to four bytes, among them NUL and those of equal low bytes.
std::vector<std::string> someCharacters() {
    std::vector<std::string> result = {std::string(1, '\0'),
                                       "a",
                                       "\x7F",
                                       "\xC2\x80",
                                       "\xDF\xBF",
                                       "\xE0\xA0\x80",
                                       "\xEF\xBF\xBF",
                                       "\xF0\x90\x80\x80",
                                       "\xF4\x8F\xBF\xBF"};
    for (char i = 0; i < 60; ++i) {
        auto const last = static_cast<char>('\x80' + i);
        result.push_back(std::string(1, static_cast<char>('!' + i)));
        result.push_back(std::string("\xC3") + last);
        result.push_back(std::string("\xE4\xB8") + last);
        result.push_back(std::string("\xF0\x9F\x98") + last);
    }
    return result;
}

struct Text {
    std::string bytes;
    std::vector<std::string> characters;

    void add(std::string const& character) {
        bytes += character;
        characters.push_back(character);
    }
};

/// The offset of the first character that is (that is not) among the members, or the text's size.
std::size_t byWalk(Text const& text, std::vector<std::string> const& members, bool wanted) {
    std::size_t at = 0;
    for (std::string const& character : text.characters) {
        if ((std::find(members.begin(), members.end(), character) != members.end()) == wanted) break;
        at += character.size();
    }
    return at;
}

void expectSearchesAsByWalk(Text const& text, std::vector<std::string> const& members) {
    static bytes_test::GuardedPages pages(8);
    std::string list;
    for (std::string const& member : members)
        list += member;
    ValueSet set;
    ASSERT_TRUE(set.take(list));
    std::string_view const atEnd = pages.atEnd(text.bytes);
    SearchedSoFar const inside = findFirstIn(atEnd, 0, set);
    EXPECT_TRUE(inside.isEnd);
    EXPECT_EQ(inside.at, byWalk(text, members, true));
    SearchedSoFar const outside = findFirstNotIn(atEnd, 0, set);
    EXPECT_TRUE(outside.isEnd);
    EXPECT_EQ(outside.at, byWalk(text, members, false));
}

TEST(ValueSet, IsSearchedForAsByAWalkFromCharacterToCharacter) {
    std::mt19937 random(20261123);
    std::vector<std::string> characters = someCharacters();
    for (std::size_t const count : {1U, 2U, 5U, 16U, 31U, 32U, 33U, 64U, 129U}) {
        std::shuffle(characters.begin(), characters.end(), random);
        auto const end = characters.begin() + static_cast<std::ptrdiff_t>(count);
        std::vector<std::string> const members(characters.begin(), end);
        std::vector<std::string> const others(end, characters.end());
        for (std::size_t length = 0; length <= bytes_test::longest; ++length)
            for (bool const ofMembers : {true, false}) {
                Text text;
                auto const addFrom = [&](std::vector<std::string> const& from) {
                    text.add(from[random() % from.size()]);
                };
                for (std::size_t i = 0; i < length; ++i)
                    addFrom(ofMembers ? members : others);
                expectSearchesAsByWalk(text, members);
                addFrom(ofMembers ? others : members);
                for (std::size_t after = random() % 20; after > 0; --after)
                    addFrom(random() % 2 == 0 ? members : others);
                expectSearchesAsByWalk(text, members);
            }
    }
}

TEST(ValueSet, IsFoundFarFromTheBeginningOfAText) {
    for (std::size_t const before : {250U, 255U, 256U, 257U, 5000U})
        for (std::string const& filler :
             {std::string("x"), std::string("\xC3\xA4"), std::string("\xE4\xB8\x80")}) {
            Text text;
            for (std::size_t i = 0; i < before; ++i)
                text.add(filler);
            text.add("\xE2\x82\xAC");
            text.add(filler);
            expectSearchesAsByWalk(text, {"#", "\xE2\x82\xAC"});
            expectSearchesAsByWalk(text, {"#", filler});
        }
}

TEST(ValueSet, SearchesStopWhereTheTextIsNotPlain) {
    ValueSet set;
    ASSERT_TRUE(set.take("xy"));
    for (std::size_t before = 0; before <= bytes_test::longest; ++before)
        for (std::string const bad : {"\x80", "\xC0\x80", "\xED\xA0\x80", "\xE4\xB8"}) {
            std::string const none = std::string(before, 'a') + bad;
            EXPECT_EQ(findFirstIn(none, 0, set).at, before);
            EXPECT_FALSE(findFirstIn(none, 0, set).isEnd);
            std::string const all = std::string(before, 'x') + bad;
            EXPECT_EQ(findFirstNotIn(all, 0, set).at, before);
            EXPECT_FALSE(findFirstNotIn(all, 0, set).isEnd);
            EXPECT_EQ(findFirstIn(none + "x", before + bad.size(), set).at, none.size());
        }
}

TEST(ValueSet, TakesPlainTextOnly) {
    for (std::string const bad : {"\x80", "\xC0\x80", "\xED\xA0\x80", "\xE4\xB8", "\xF5\x80\x80\x80"})
        for (std::size_t before = 0; before <= 200; ++before) {
            ValueSet set;
            EXPECT_FALSE(set.take(std::string(before, 'a') + bad)) << before;
        }
}

TEST(ValueSet, ContainsWhatItHasTaken) {
    std::vector<std::string> const characters = someCharacters();
    for (std::size_t const count : {1U, 32U, 33U, 200U}) {
        std::string list;
        for (std::size_t i = 0; i < count; ++i)
            list += static_cast<char>(1 + i % 120);
        ValueSet set;
        ASSERT_TRUE(set.take(list));
        EXPECT_EQ(set.hasFew(), count <= 32);
        for (wchar_t value = 0; value < 300; ++value) {
            wchar_t const values[1 + kelcl::readablePastPiece] = {value};
            bool const isMember =
                value >= 1 && value <= static_cast<wchar_t>(std::min<std::size_t>(count, 120));
            EXPECT_EQ(set.findFirst(values, 1), isMember ? 0u : 1u) << static_cast<int>(value);
            EXPECT_EQ(set.findFirstOther(values, 1), isMember ? 1u : 0u) << static_cast<int>(value);
        }
    }
}

} // namespace
