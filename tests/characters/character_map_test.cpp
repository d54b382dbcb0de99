// The map of characters against the standard library's, from one member to many.
#include "characters/character_map.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <unordered_map>
#include <vector>

namespace {

using kelcl::CharacterMap;

TEST(CharacterMap, IsEmptyAtFirst) {
    CharacterMap map;
    EXPECT_EQ(map.size(), 0u);
    EXPECT_FALSE(map.contains(CharacterMap::keyOf(L'\0')));
    EXPECT_FALSE(map.contains(CharacterMap::keyOf("ab", 2)));
}

TEST(CharacterMap, GivesTheNumberOfTheFirstPlace) {
    CharacterMap map;
    EXPECT_EQ(map.add(CharacterMap::keyOf(L'a')), 0u);
    EXPECT_EQ(map.add(CharacterMap::keyOf(L'\0')), 1u);
    EXPECT_EQ(map.add(CharacterMap::keyOf(L'a')), 0u);
    EXPECT_EQ(map.add(CharacterMap::keyOf(L'b')), 2u);
    EXPECT_EQ(map.find(CharacterMap::keyOf(L'\0')), 1u);
    EXPECT_EQ(map.find(CharacterMap::keyOf(L'c')), CharacterMap::none);
    EXPECT_EQ(map.size(), 3u);
}

TEST(CharacterMap, TellsCharactersOfDifferentBytesApart) {
    // Pairs that differ in one byte, or in the length only.
    std::vector<std::string> texts;
    for (std::size_t length = 2; length <= 6; ++length) {
        texts.push_back(std::string(length, 'x'));
        for (std::size_t at = 0; at < length; ++at) {
            texts.push_back(std::string(length, 'x'));
            texts.back()[at] = '\xFF';
        }
    }
    CharacterMap map;
    for (std::size_t i = 0; i < texts.size(); ++i)
        EXPECT_EQ(map.add(CharacterMap::keyOf(texts[i].data(), texts[i].size())), i) << i;
    for (std::size_t i = 0; i < texts.size(); ++i)
        EXPECT_EQ(map.find(CharacterMap::keyOf(texts[i].data(), texts[i].size())), i) << i;
}

TEST(CharacterMap, FindsAsTheStandardMapDoesAtEverySize) {
    std::mt19937 random(20261122);
    for (std::size_t const count : {1U, 2U, 31U, 32U, 33U, 64U, 127U, 128U, 129U, 1000U, 20000U}) {
        CharacterMap map;
        std::unordered_map<wchar_t, CharacterMap::Number> expected;
        while (expected.size() < count) {
            auto const value = static_cast<wchar_t>(random() % (4 * count));
            auto const next = static_cast<CharacterMap::Number>(expected.size());
            ASSERT_EQ(map.add(CharacterMap::keyOf(value)), expected.emplace(value, next).first->second);
        }
        ASSERT_EQ(map.size(), count);
        for (std::size_t i = 0; i < 4 * count; ++i) {
            auto const value = static_cast<wchar_t>(i);
            auto const found = expected.find(value);
            ASSERT_EQ(map.find(CharacterMap::keyOf(value)),
                      found == expected.end() ? CharacterMap::none : found->second)
                << count << ", " << i;
        }
    }
}

} // namespace
