// Hexadecimal and binary digits and the checks for digits, against plain forms.

#include "bytes/digits.h"
#include "tests/bytes/texts.h"

#include <gtest/gtest.h>

namespace {

using namespace bytes_test;

constexpr std::string_view hexAlphabet = "0123456789ABCDEFabcdef";

std::string plainHex(std::string_view bytes) {
    std::string result;
    for (char const byte : bytes) {
        result.push_back("0123456789ABCDEF"[static_cast<unsigned char>(byte) / 16]);
        result.push_back("0123456789ABCDEF"[static_cast<unsigned char>(byte) % 16]);
    }
    return result;
}

std::string plainBinary(std::string_view bytes) {
    std::string result;
    for (char const byte : bytes)
        for (int bit = 7; bit >= 0; --bit)
            result.push_back((static_cast<unsigned char>(byte) >> bit) % 2 != 0 ? '1' : '0');
    return result;
}

unsigned int plainValue(char digit) {
    if (digit <= '9') return static_cast<unsigned int>(digit - '0');
    return static_cast<unsigned int>(digit - (digit >= 'a' ? 'a' : 'A') + 10);
}

/// Reads digits to a base of 2 or 16, so many for each byte, where the first byte may have fewer.
std::string plainBytes(std::string digits, std::size_t digitsOfByte, unsigned int base) {
    while (digits.size() % digitsOfByte != 0)
        digits.insert(digits.begin(), '0');
    std::string result;
    for (std::size_t i = 0; i < digits.size(); i += digitsOfByte) {
        unsigned int value = 0;
        for (std::size_t j = 0; j < digitsOfByte; ++j)
            value = value * base + plainValue(digits[i + j]);
        result.push_back(static_cast<char>(value));
    }
    return result;
}

/// Checks a conversion from every alignment and beside guard pages, and that it writes nothing else.
template <class Convert>
void expectConverts(std::string_view text, std::string const& wanted, Convert convert) {
    static GuardedPages pages;
    atEveryPlace(text, '5', [&](std::string_view placed) {
        std::string out(wanted.size() + 80, '#');
        convert(out.data() + 40, placed.data(), placed.size());
        ASSERT_EQ(out, std::string(40, '#') + wanted + std::string(40, '#'));
        convert(pages.roomAtEnd(wanted.size()), placed.data(), placed.size());
        ASSERT_EQ(std::string_view(pages.roomAtEnd(wanted.size()), wanted.size()), wanted);
        convert(pages.roomAtBegin(), placed.data(), placed.size());
        ASSERT_EQ(std::string_view(pages.roomAtBegin(), wanted.size()), wanted);
    });
}

TEST(HexDigits, AreWrittenInUpperCaseForEveryByteLengthAndAlignment) {
    std::mt19937 random(401);
    std::string const all = allBytes();
    std::string out(512, '\0');
    kelcl::writeHex(out.data(), all.data(), 256);
    EXPECT_EQ(out, plainHex(all));
    for (std::size_t n = 0; n <= longest; ++n) {
        std::string const bytes = randomBytes(random, n);
        expectConverts(bytes, plainHex(bytes), kelcl::writeHex);
    }
}

TEST(HexDigits, AreReadInBothCasesWithAZeroAssumedBeforeAnOddNumber) {
    std::mt19937 random(402);
    for (std::size_t n = 0; n <= longest; ++n) {
        std::string const digits = randomText(random, n, hexAlphabet);
        expectConverts(digits, plainBytes(digits, 2, 16), kelcl::readHex);
    }
    for (char const high : hexAlphabet)
        for (char const low : hexAlphabet) {
            std::string digits;
            for (int i = 0; i < 40; ++i)
                digits += {high, low};
            std::string out(40, '\0');
            kelcl::readHex(out.data(), digits.data(), 80);
            ASSERT_EQ(out, std::string(40, static_cast<char>(plainValue(high) * 16 + plainValue(low))));
        }
}

TEST(BinaryDigits, AreWrittenForEveryByteLengthAndAlignment) {
    std::mt19937 random(403);
    std::string const all = allBytes();
    std::string out(2048, '\0');
    kelcl::writeBinary(out.data(), all.data(), 256);
    EXPECT_EQ(out, plainBinary(all));
    for (std::size_t n = 0; n <= longest; ++n) {
        std::string const bytes = randomBytes(random, n);
        expectConverts(bytes, plainBinary(bytes), kelcl::writeBinary);
    }
}

TEST(BinaryDigits, AreReadWithAShortGroupInFront) {
    std::mt19937 random(404);
    for (std::size_t n = 0; n <= longest; ++n) {
        std::string const digits = randomText(random, n, "01");
        expectConverts(digits, plainBytes(digits, 8, 2), kelcl::readBinary);
    }
    std::string const all = allBytes();
    std::string out(256, '\0');
    kelcl::readBinary(out.data(), plainBinary(all).data(), 2048);
    EXPECT_EQ(out, all);
}

template <class Check>
void expectAllowsOnly(std::string_view allowed, Check check) {
    std::mt19937 random(405);
    EXPECT_TRUE(check(std::string_view()));
    for (std::size_t n = 0; n <= longest; ++n) {
        std::string const good = randomText(random, n, allowed);
        atEveryPlace(good, '?', [&](std::string_view text) { ASSERT_TRUE(check(text)); });
        for (std::size_t bad = 0; bad < n; ++bad) {
            std::string text = good;
            text[bad] = '?';
            ASSERT_FALSE(check(text));
        }
    }
    for (char const byte : allBytes())
        for (std::size_t n : {1U, 20U, 40U})
            ASSERT_EQ(check(std::string(n, allowed.front()) + byte), allowed.find(byte) != std::string::npos);
}

TEST(DigitChecks, AllowPlainDigitsOfTheirKindOnly) {
    expectAllowsOnly(hexAlphabet, kelcl::isHexDigits);
    expectAllowsOnly("0123456789", kelcl::isDecimalDigits);
    expectAllowsOnly("01", kelcl::isBinaryDigits);
}

} // namespace
