// Texts of every short length at every place, as inline members copy and compare them.
#include "tests/bytes/texts.h"

#include <kelcl/dstring.h>

#include <gtest/gtest.h>

#include <string>
#include <string_view>

namespace {

using bytes_test::longest;

std::string lettersOf(std::size_t length) {
    std::string text;
    while (text.size() < length)
        text += static_cast<char>('!' + text.size() % 90);
    return text;
}

TEST(ShortTexts, AreAppendedFromWhereverTheyStand) {
    for (std::size_t length = 0; length <= longest; ++length) {
        std::string const text = lettersOf(length);
        bytes_test::atEveryPlace(text, 'x', [&](std::string_view piece) {
            DString appended("front");
            appended += piece;
            appended += piece;
            EXPECT_EQ(std::string_view(appended), "front" + text + text);
        });
    }
}

TEST(ShortTexts, AreAppendedFromTheSameTextWithItsEnd) {
    for (unsigned int start = 0; start <= 40; ++start) {
        for (unsigned int length = 1; length <= 41 - start; ++length) {
            std::string expected = lettersOf(40);
            DString text(expected);
            text += "the next block has room for as many bytes again";
            text.remove(41);
            ASSERT_EQ(std::string_view(text), expected);
            text += std::string_view(text.c_str() + start, length); // up to the NUL that ends the text
            expected += (expected + '\0').substr(start, length);
            EXPECT_EQ(std::string_view(text), expected) << length << " bytes from " << start;
        }
    }
}

TEST(ShortTexts, AreComparedByBytes) {
    for (std::size_t length = 0; length <= longest; ++length) {
        std::string const text = lettersOf(length);
        DString const left(text);
        bytes_test::atEveryPlace(text, 'x', [&](std::string_view right) {
            EXPECT_TRUE(left == right);
            EXPECT_FALSE(left < right || left > right);
        });
        for (std::size_t at = 0; at < length; ++at) {
            std::string other = text;
            other[at] = '\xFF'; // above all letters, as bytes are unsigned
            EXPECT_FALSE(left == other);
            EXPECT_TRUE(left < other && left <= other && other > left);
            EXPECT_TRUE(left != DString(other) && left < DString(other));
        }
        EXPECT_TRUE(left < text + '\0' && left != text + '\0')
            << "a text that begins another sorts before it";
    }
}

} // namespace
