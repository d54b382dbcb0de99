// The character classes of bytes: the searches from both ends against asking about each byte.
#include "characters/character_classes.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <random>
#include <string>
#include <string_view>

namespace {

using kelcl::CharacterClass;

CharacterClass const* const allClasses[] = {&kelcl::alphanumeric, &kelcl::alphabetic, &kelcl::control,
                                            &kelcl::digits,       &kelcl::graphics,   &kelcl::hexDigits,
                                            &kelcl::lowerCase,    &kelcl::printable,  &kelcl::punctuation,
                                            &kelcl::upperCase,    &kelcl::whiteSpace};

bool isMember(CharacterClass const& which, char byte) {
    return which.test(static_cast<signed char>(byte)) != 0;
}

std::size_t plainFirst(std::string_view text, CharacterClass const& which) {
    for (std::size_t i = 0; i < text.size(); ++i)
        if (!isMember(which, text[i])) return i;
    return kelcl::notFound;
}

std::size_t plainLast(std::string_view text, CharacterClass const& which) {
    for (std::size_t i = text.size(); i > 0; --i)
        if (!isMember(which, text[i - 1])) return i - 1;
    return kelcl::notFound;
}

TEST(CharacterClass, IsKnownByItsTest) {
    for (CharacterClass const* const each : allClasses)
        EXPECT_EQ(kelcl::classOf(each->test), each);
    EXPECT_EQ(kelcl::classOf(nullptr), nullptr);
}

TEST(CharacterClass, SearchesFromBothEndsForTheOneByteOutside) {
    for (CharacterClass const* const each : allClasses) {
        std::string members;
        std::string others;
        for (int value = 0; value < 256; ++value)
            (isMember(*each, static_cast<char>(value)) ? members : others) += static_cast<char>(value);
        ASSERT_FALSE(members.empty());
        std::mt19937 random(401);
        for (std::size_t n = 0; n <= 600; n += n < 140 ? 1 : 37) {
            std::string text(n, '\0');
            for (char& byte : text)
                byte = members[random() % members.size()];
            ASSERT_EQ(kelcl::findFirstNotIn(text, *each), kelcl::notFound);
            ASSERT_EQ(kelcl::findLastNotIn(text, *each), kelcl::notFound);
            for (int round = 0; round < 4 && n != 0; ++round) {
                text[random() % n] = others[random() % others.size()];
                ASSERT_EQ(kelcl::findFirstNotIn(text, *each), plainFirst(text, *each));
                ASSERT_EQ(kelcl::findLastNotIn(text, *each), plainLast(text, *each));
            }
        }
    }
}

} // namespace
