// Tests of raw bytes, whatever the encoding: digits, and the first byte that is another one.
#include "tests/characters/multi_byte_support.h"

#include <kelcl/dnlsutil.h>

namespace {

TEST(DigitTests, KnowTheDigitsOfAsciiOnly) {
    for (int value = 0; value < 256; ++value) {
        auto const byte = static_cast<char>(value);
        bool const digit = value >= '0' && value <= '9';
        bool const hexDigit = digit || (value >= 'a' && value <= 'f') || (value >= 'A' && value <= 'F');
        EXPECT_EQ(isAllDigits(&byte, 1), digit ? 1 : 0) << value;
        EXPECT_EQ(isAllHexDigits(&byte, 1), hexDigit ? 1 : 0) << value;
    }
}

TEST(DigitTests, AreTrueOfNoBytes) {
    EXPECT_EQ(isAllDigits("x", 0), 1);
    EXPECT_EQ(isAllHexDigits("x", 0), 1);
    EXPECT_EQ(isAllDigits(nullptr, 0), 1);
    EXPECT_EQ(isAllHexDigits(nullptr, 0), 1);
}

TEST(DigitTests, LookAtEveryByteAndAtNonePastTheEnd) {
    for (std::size_t size = 1; size <= 70; ++size) {
        mb::AtMemoryEnd const text(std::string(size, '7'));
        unsigned int const n = static_cast<unsigned int>(size);
        EXPECT_EQ(isAllDigits(text.data(), n), 1);
        EXPECT_EQ(isAllHexDigits(text.data(), n), 1);
        for (std::size_t at = 0; at < size; ++at) {
            text.data()[at] = 'f';
            EXPECT_EQ(isAllDigits(text.data(), n), 0);
            EXPECT_EQ(isAllHexDigits(text.data(), n), 1);
            text.data()[at] = '\0';
            EXPECT_EQ(isAllHexDigits(text.data(), n), 0);
            text.data()[at] = '7';
        }
    }
}

TEST(OtherByte, IsTheFirstThatDiffers) {
    EXPECT_EQ(indexThatIsNot("   x", 4, ' '), 4u);
    EXPECT_EQ(indexThatIsNot("   x", 3, ' '), 0u);
    EXPECT_EQ(indexThatIsNot("x", 0, ' '), 0u);
    EXPECT_EQ(indexThatIsNot(nullptr, 0, ' '), 0u);
    EXPECT_EQ(indexThatIsNot("\0\0a", 3, '\0'), 3u);
    for (std::size_t size = 1; size <= 70; ++size) {
        mb::AtMemoryEnd const text(std::string(size, '\xE4'));
        for (std::size_t at = 0; at < size; ++at) {
            text.data()[at] = 'd';
            EXPECT_EQ(indexThatIsNot(text.data(), static_cast<unsigned int>(size), '\xE4'), at + 1);
            text.data()[at] = '\xE4';
        }
        EXPECT_EQ(indexThatIsNot(text.data(), static_cast<unsigned int>(size), '\xE4'), 0u);
    }
}

} // namespace
