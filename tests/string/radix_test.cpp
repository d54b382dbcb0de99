// Conversions between bytes and hexadecimal, binary and decimal digits, checked against literals and against
// plain long-hand arithmetic over std::string.
#include "tests/buffers/operation_support.h"

#include <algorithm>
#include <random>

namespace {

using operations::bytes;
using operations::contentsOf;
using operations::fresh;
using operations::refsOf;
using operations::switchIsOn;

std::string c2x(std::string_view text) { return contentsOf(fresh(text).c2x()); }
std::string x2c(std::string_view text) { return contentsOf(fresh(text).x2c()); }
std::string c2b(std::string_view text) { return contentsOf(fresh(text).c2b()); }
std::string b2c(std::string_view text) { return contentsOf(fresh(text).b2c()); }
std::string c2d(std::string_view text) { return contentsOf(fresh(text).c2d()); }
std::string d2c(std::string_view text) { return contentsOf(fresh(text).d2c()); }

std::string joined(std::string_view left, std::string_view right) {
    std::string text(left);
    text.append(right);
    return text;
}

// Long-hand arithmetic

/// The decimal digits of big-endian bytes, without leading zeros; "0" for zero.
std::string decimalOf(std::string const& number) {
    std::string digits = "0"; // least significant first
    for (char const byte : number) {
        unsigned int carry = static_cast<unsigned char>(byte);
        for (char& digit : digits) {
            unsigned int const value = static_cast<unsigned int>(digit - '0') * 256 + carry;
            digit = static_cast<char>('0' + value % 10);
            carry = value / 10;
        }
        for (; carry != 0; carry /= 10)
            digits += static_cast<char>('0' + carry % 10);
    }
    std::reverse(digits.begin(), digits.end());
    return digits;
}

/// The big-endian bytes of decimal digits, without leading zero bytes; one zero byte for zero.
std::string bytesOf(std::string const& digits) {
    std::string number; // least significant first
    for (char const digit : digits) {
        unsigned int carry = static_cast<unsigned int>(digit - '0');
        for (char& byte : number) {
            unsigned int const value = static_cast<unsigned char>(byte) * 10U + carry;
            byte = static_cast<char>(value % 256);
            carry = value / 256;
        }
        if (carry != 0) number += static_cast<char>(carry);
    }
    if (number.empty()) number = std::string(1, '\0');
    std::reverse(number.begin(), number.end());
    return number;
}

std::string randomBytes(std::mt19937& random, std::size_t n) {
    std::string text(n, '\0');
    for (char& c : text)
        c = static_cast<char>(random());
    return text;
}

std::string randomDigits(std::mt19937& random, std::size_t n, unsigned int radix = 10) {
    std::string text(n, '\0');
    for (char& c : text)
        c = "0123456789ABCDEF"[random() % radix];
    return text;
}

// Hexadecimal

TEST(C2x, WritesTwoCapitalDigitsForEachByte) {
    EXPECT_EQ(c2x("\x01\xAB"), "01AB");
    EXPECT_EQ(c2x("A"), "41");
    EXPECT_EQ(c2x(bytes("\0\xFF")), "00FF");
    EXPECT_EQ(c2x(""), "");
}

TEST(C2x, KnowsEveryByte) {
    for (int c = 0; c < 256; ++c) {
        char expected[3];
        std::snprintf(expected, sizeof expected, "%02X", static_cast<unsigned int>(c));
        EXPECT_EQ(c2x(std::string(1, static_cast<char>(c))), expected);
    }
}

TEST(X2c, ReadsDigitsOfBothCases) {
    EXPECT_EQ(x2c("01AB"), "\x01\xAB");
    EXPECT_EQ(x2c("ab"), "\xAB");
    EXPECT_EQ(x2c("aBcD"), "\xAB\xCD");
    EXPECT_EQ(x2c("00"), bytes("\0"));
    EXPECT_EQ(x2c(""), "");
}

TEST(X2c, AssumesALeadingZeroForAnOddCount) {
    EXPECT_EQ(x2c("1AB"), "\x01\xAB");
    EXPECT_EQ(x2c("F"), "\x0F");
    EXPECT_EQ(x2c("0"), bytes("\0"));
    EXPECT_EQ(x2c("12345"), "\x01\x23\x45");
}

TEST(X2c, OfAnythingElseThanDigitsGivesTheNullString) {
    for (std::string_view const text : {"xy", "0x12", "12 ", " 12", "1G", "-1", "g"})
        EXPECT_EQ(x2c(text), "") << text;
    EXPECT_EQ(x2c(bytes("12\0")), "");
    std::string text(100, '7');
    for (std::size_t at = 0; at < text.size(); ++at) {
        std::string changed = text;
        changed[at] = 'g';
        EXPECT_EQ(x2c(changed), "") << at;
    }
}

TEST(X2c, TurnsBackWhatC2xMade) {
    std::mt19937 random(1);
    for (std::size_t n = 0; n < 300; ++n) {
        std::string const text = randomBytes(random, n);
        EXPECT_EQ(x2c(c2x(text)), text);
    }
}

// Binary

TEST(C2b, WritesEightDigitsForEachByteMostSignificantFirst) {
    EXPECT_EQ(c2b("A"), "01000001");
    EXPECT_EQ(c2b("\x80\x01"), "1000000000000001");
    EXPECT_EQ(c2b(bytes("\0\xFF")), "0000000011111111");
    EXPECT_EQ(c2b(""), "");
}

TEST(B2c, ReadsAShortFirstGroup) {
    EXPECT_EQ(b2c("101"), "\x05");
    EXPECT_EQ(b2c("1000000001"), "\x02\x01");
    EXPECT_EQ(b2c("01000001"), "A");
    EXPECT_EQ(b2c("0"), bytes("\0"));
    EXPECT_EQ(b2c("1"), "\x01");
    EXPECT_EQ(b2c("000000001"), bytes("\0\x01"));
    EXPECT_EQ(b2c("1111111"), "\x7F");
    EXPECT_EQ(b2c("11111111"), "\xFF");
}

TEST(B2c, OfAnythingElseThanBinaryDigitsGivesTheNullString) {
    for (std::string_view const text : {"12", "", "0 1", " 01", "0b1", "2"})
        EXPECT_EQ(b2c(text), "") << text;
    std::string const text(100, '1');
    for (std::size_t at = 0; at < text.size(); ++at) {
        std::string changed = text;
        changed[at] = '2';
        EXPECT_EQ(b2c(changed), "") << at;
    }
}

TEST(B2c, TurnsBackWhatC2bMade) {
    std::mt19937 random(2);
    for (std::size_t n = 1; n < 200; ++n) {
        std::string const text = randomBytes(random, n);
        EXPECT_EQ(b2c(c2b(text)), text);
        EXPECT_EQ(b2c(joined("1", c2b(text))), joined("\x01", text));
    }
}

TEST(IsBinaryDigits, HoldsForTextsOfZerosAndOnes) {
    EXPECT_TRUE(fresh("0").isBinaryDigits());
    EXPECT_TRUE(fresh("0110").isBinaryDigits());
    EXPECT_FALSE(fresh("").isBinaryDigits());
    EXPECT_FALSE(fresh("012").isBinaryDigits());
    EXPECT_FALSE(fresh("01 ").isBinaryDigits());
    EXPECT_FALSE(fresh(bytes("01\0")).isBinaryDigits());
    EXPECT_FALSE(fresh("/").isBinaryDigits());
}

// Decimal

TEST(C2d, WritesTheNumberWithoutLeadingZeros) {
    EXPECT_EQ(c2d("\x01"), "1");
    EXPECT_EQ(c2d(bytes("\x01\0")), "256");
    EXPECT_EQ(c2d("\xFF\xFF\xFF\xFF"), "4294967295");
    EXPECT_EQ(c2d(bytes("\x01\0\0\0\0")), "4294967296");
    EXPECT_EQ(c2d("\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF"), "18446744073709551615");
    EXPECT_EQ(c2d(bytes("\x01\0\0\0\0\0\0\0\0")), "18446744073709551616");
    EXPECT_EQ(c2d(bytes("\0\0\0\0\0\x07")), "7");
    EXPECT_EQ(c2d(""), "");
}

TEST(C2d, OfUpToFourZeroBytesGivesOneZero) {
    EXPECT_EQ(c2d(bytes("\0")), "0");
    EXPECT_EQ(c2d(bytes("\0\0")), "0");
    EXPECT_EQ(c2d(bytes("\0\0\0")), "0");
    EXPECT_EQ(c2d(bytes("\0\0\0\0")), "0");
}

TEST(C2d, OfFiveAndMoreZeroBytesKeepsThreeZerosAByteLessEleven) {
    EXPECT_EQ(c2d(bytes("\0\0\0\0\0")), "0000");
    for (std::size_t n = 5; n < 60; ++n)
        EXPECT_EQ(c2d(std::string(n, '\0')), std::string(3 * n - 11, '0'));
}

TEST(C2d, AgreesWithLongHandArithmetic) {
    std::mt19937 random(3);
    for (std::size_t n = 1; n < 150; ++n) {
        std::string text = randomBytes(random, n);
        text.back() = '\x01';
        EXPECT_EQ(c2d(text), decimalOf(text)) << n;
        EXPECT_EQ(c2d(std::string(n, '\xFF')), decimalOf(std::string(n, '\xFF'))) << n;
        EXPECT_EQ(c2d(std::string(n, '\0') + text), decimalOf(text)) << n;
        std::string power(n, '\0');
        power.front() = '\x01';
        EXPECT_EQ(c2d(power), decimalOf(power)) << n;
    }
    for (std::size_t const n : {1000u, 3001u}) {
        std::string text = randomBytes(random, n);
        text.front() = '\x10';
        EXPECT_EQ(c2d(text), decimalOf(text)) << n;
    }
}

TEST(D2c, WritesTheBytesOfTheNumber) {
    EXPECT_EQ(d2c("256"), bytes("\x01\0"));
    EXPECT_EQ(d2c("0"), bytes("\0"));
    EXPECT_EQ(d2c("1"), "\x01");
    EXPECT_EQ(d2c("007"), "\x07");
    EXPECT_EQ(d2c("000"), bytes("\0"));
    EXPECT_EQ(d2c("999999999999999999"), "\x0D\xE0\xB6\xB3\xA7\x63\xFF\xFF");
    EXPECT_EQ(d2c("18446744073709551615"), "\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF");
    EXPECT_EQ(d2c("18446744073709551616"), bytes("\x01\0\0\0\0\0\0\0\0"));
    EXPECT_EQ(d2c(""), "");
}

TEST(D2c, OfNothingButZerosGivesOneZeroByte) {
    for (std::size_t n = 1; n < 80; ++n)
        EXPECT_EQ(d2c(std::string(n, '0')), bytes("\0"));
}

TEST(D2c, AcceptsNeitherSignNorBlankNorPoint) {
    for (std::string_view const text : {"-1", "+1", " 1", "1 ", "1.0", "1e3", "0x1", "a"})
        EXPECT_EQ(d2c(text), "") << text;
    EXPECT_EQ(d2c(bytes("1\0")), "");
    std::string const text(100, '1');
    for (std::size_t at = 0; at < text.size(); ++at) {
        std::string changed = text;
        changed[at] = 'a';
        EXPECT_EQ(d2c(changed), "") << at;
    }
}

TEST(D2c, AgreesWithLongHandArithmetic) {
    std::mt19937 random(4);
    for (std::size_t n = 1; n < 200; ++n) {
        std::string const digits = randomDigits(random, n);
        EXPECT_EQ(d2c(digits), bytesOf(digits)) << digits;
        std::string const nines(n, '9');
        EXPECT_EQ(d2c(nines), bytesOf(nines)) << nines;
        std::string const power = joined("1", std::string(n, '0'));
        EXPECT_EQ(d2c(power), bytesOf(power)) << power;
        EXPECT_EQ(d2c(joined("000", digits)), bytesOf(digits)) << digits;
    }
    for (std::size_t const n : {1000u, 5003u}) {
        std::string const digits = joined("1", randomDigits(random, n));
        EXPECT_EQ(d2c(digits), bytesOf(digits)) << n;
    }
}

TEST(D2c, TurnsBackWhatC2dMadeOfBytesWithoutLeadingZeros) {
    std::mt19937 random(5);
    for (std::size_t n = 1; n < 3000; n = n * 3 / 2 + 1) {
        std::string text = randomBytes(random, n);
        text.front() = static_cast<char>(1 + random() % 255);
        EXPECT_EQ(d2c(c2d(text)), text) << n;
    }
}

TEST(Conversions, OfTwentyThousandBytesAndDigitsAgreeWithEachOther) {
    std::mt19937 random(6);
    std::string text = randomBytes(random, 20000);
    text.front() = '\x55';
    std::string const digits = c2d(text);
    EXPECT_EQ(digits.size(), 48165u);
    EXPECT_EQ(d2c(digits), text);
}

// One step

std::string decimalStep(char const* number, unsigned char byte) {
    return contentsOf(fresh(number).decimalMath(byte));
}

TEST(DecimalMath, MultipliesBy256AndAddsTheByte) {
    EXPECT_EQ(decimalStep("1", 0), "0256");
    EXPECT_EQ(decimalStep("1", 5), "0261");
    EXPECT_EQ(decimalStep("99", 255), "25599");
    EXPECT_EQ(decimalStep("12345", 67), "03160387");
}

TEST(DecimalMath, AddsThreeDigitsLessTheLeadingZerosThereAre) {
    EXPECT_EQ(decimalStep("0", 7), "007");
    EXPECT_EQ(decimalStep("0", 255), "255");
    EXPECT_EQ(decimalStep("00", 255), "255");
    EXPECT_EQ(decimalStep("000", 255), "255");
    EXPECT_EQ(decimalStep("0000", 255), "0255");
    EXPECT_EQ(decimalStep("09", 255), "2559");
    EXPECT_EQ(decimalStep("009", 0), "2304");
    EXPECT_EQ(decimalStep("0009", 0), "2304");
    EXPECT_EQ(decimalStep("00009", 0), "02304");
    EXPECT_EQ(decimalStep("", 255), "255");
    EXPECT_EQ(decimalStep("", 0), "000");
}

TEST(DecimalMath, LeavesCopiesAlone) {
    DString text("12");
    DString const copy(text);
    EXPECT_EQ(&text.decimalMath(1), &text);
    EXPECT_EQ(contentsOf(text), "03073");
    EXPECT_EQ(contentsOf(copy), "12");
    EXPECT_EQ(refsOf(copy), 1u);
}

std::string binaryStep(std::string const& number, unsigned char digit) {
    return contentsOf(fresh(number).binaryMath(digit));
}

TEST(BinaryMath, MultipliesByTenAndAddsTheDigit) {
    EXPECT_EQ(binaryStep("\x01", 2), bytes("\0\x0C"));
    EXPECT_EQ(binaryStep("\xFF", 9), bytes("\x09\xFF"));
    EXPECT_EQ(binaryStep("\xFF\xFF", 9), bytes("\x09\xFF\xFF"));
    EXPECT_EQ(binaryStep("\x19\x99", 6), bytes("\x01\0\0")); // 6553 * 10 + 6
}

TEST(BinaryMath, WithTheSwitchOffGrowsByAByteAlsoAfterALeadingZero) {
    if (switchIsOn()) {
        EXPECT_EQ(binaryStep(bytes("\0"), 5), bytes("\x05"));
        EXPECT_EQ(binaryStep(bytes("\0\x05"), 5), bytes("\0\x37"));
        EXPECT_EQ(binaryStep(bytes("\0\xFF"), 9), bytes("\x09\xFF"));
    } else {
        EXPECT_EQ(binaryStep(bytes("\0"), 5), bytes("\0\x05"));
        EXPECT_EQ(binaryStep(bytes("\0\x05"), 5), bytes("\0\0\x37"));
        EXPECT_EQ(binaryStep(bytes("\0\xFF"), 9), bytes("\0\x09\xFF"));
    }
}

TEST(BinaryMath, OfAnEmptyStringHasNoPlaceForTheDigit) { EXPECT_EQ(binaryStep("", 5), ""); }

TEST(BinaryMath, LeavesCopiesAlone) {
    DString text("\x01");
    DString const copy(text);
    EXPECT_EQ(&text.binaryMath(1), &text);
    EXPECT_EQ(contentsOf(text), bytes("\0\x0B"));
    EXPECT_EQ(contentsOf(copy), "\x01");
    EXPECT_EQ(refsOf(copy), 1u);
}

// All of them

using Conversion = DString& (DString::*)();

TEST(Conversions, ReturnTheStringItselfAndLeaveCopiesAlone) {
    for (Conversion const convert :
         {&DString::c2x, &DString::x2c, &DString::c2b, &DString::b2c, &DString::c2d, &DString::d2c}) {
        DString text("1001");
        DString const copy(text);
        EXPECT_EQ(&(text.*convert)(), &text);
        EXPECT_NE(contentsOf(text), "1001");
        EXPECT_EQ(contentsOf(copy), "1001");
        EXPECT_EQ(refsOf(text), 1u);
        EXPECT_EQ(refsOf(copy), 1u);
        EXPECT_EQ(text.c_str()[text.length()], '\0');
    }
}

TEST(Conversions, LeaveTheEmptyStringEmpty) {
    for (Conversion const convert :
         {&DString::c2x, &DString::x2c, &DString::c2b, &DString::b2c, &DString::c2d, &DString::d2c}) {
        DString text;
        (text.*convert)();
        EXPECT_TRUE(text.isEmpty());
        EXPECT_EQ(text.data(), DString::nullBuf());
    }
}

TEST(Conversions, OfWrongNotationLeaveCopiesAlone) {
    for (Conversion const convert : {&DString::x2c, &DString::b2c, &DString::d2c}) {
        DString text("x");
        DString const copy(text);
        (text.*convert)();
        EXPECT_TRUE(text.isEmpty());
        EXPECT_EQ(contentsOf(copy), "x");
        EXPECT_EQ(refsOf(copy), 1u);
    }
}

} // namespace
