// Texts of floating-point numbers, compared with those of printf.
#include "bytes/real_number.h"

#include <gtest/gtest.h>

#include <bit>
#include <cfenv>
#include <cfloat>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <limits>
#include <random>
#include <string>

namespace {

std::string printed(double number) {
    char text[64];
    std::snprintf(text, sizeof text, "%.15g", number);
    return text;
}

std::string written(double number) {
    char text[kelcl::realTextSpace];
    return {text, kelcl::writeReal(text, number).length};
}

/// The same as printf, also about the point, or nothing. Returns whether it was written.
bool expectAsPrinted(double number) {
    char text[kelcl::realTextSpace];
    auto const [length, hasPoint] = kelcl::writeReal(text, number);
    if (length == 0) return false;
    std::string const result(text, length), expected = printed(number);
    if (result != expected) {
        ADD_FAILURE() << result << " for " << expected << ", " << std::bit_cast<std::uint64_t>(number);
    }
    EXPECT_EQ(hasPoint, expected.find('.') != std::string::npos) << expected;
    return true;
}

TEST(RealNumber, IsWrittenWithUpToFifteenDigits) {
    EXPECT_EQ(written(0.0), "0");
    EXPECT_EQ(written(-0.0), "-0");
    EXPECT_EQ(written(1.0), "1");
    EXPECT_EQ(written(-1.5), "-1.5");
    EXPECT_EQ(written(100.0), "100");
    EXPECT_EQ(written(1.0 / 3), "0.333333333333333");
    EXPECT_EQ(written(2.0 / 3), "0.666666666666667");
    EXPECT_EQ(written(0.0001), "0.0001");
    EXPECT_EQ(written(0.00001), "1e-05");
    EXPECT_EQ(written(123456789012345.0), "123456789012345");
    EXPECT_EQ(written(999999999999999.0), "999999999999999");
    EXPECT_EQ(written(1e15), "1e+15");
    EXPECT_EQ(written(1e-300), "1e-300");
    EXPECT_EQ(written(-1.7976931348623157e308), "-1.79769313486232e+308");
    EXPECT_EQ(written(0.1 + 0.2), "0.3") << "0.30000000000000004";
    EXPECT_EQ(written(0.99999999999999989), "1") << "the nines run over";
    EXPECT_EQ(written(9.9999999999999982e22), "1e+23");
}

TEST(RealNumber, IsLeftToPrintfWhereItIsNotFiniteOrVerySmall) {
    EXPECT_EQ(written(std::numeric_limits<double>::infinity()), "");
    EXPECT_EQ(written(std::numeric_limits<double>::quiet_NaN()), "");
    EXPECT_EQ(written(5e-324), "");
    EXPECT_EQ(written(-DBL_MIN / 2), "");
    EXPECT_EQ(written(DBL_MIN), "2.2250738585072e-308");
}

TEST(RealNumber, IsLeftToPrintfAtATie) {
    EXPECT_EQ(written(1234567890.123455), "") << "its shortest text is a tie, the number is none";
    EXPECT_EQ(written(1000000000000000.5), "1e+15");
    EXPECT_EQ(written(100000000000000.5), "") << "a tie that goes to the even digit";
    EXPECT_EQ(written(100000000000001.5), "");
}

TEST(RealNumber, IsLeftToPrintfWhereRoundingIsNotToTheNearest) {
    for (int const mode : {FE_UPWARD, FE_DOWNWARD, FE_TOWARDZERO}) {
        ASSERT_EQ(std::fesetround(mode), 0);
        std::string const text = written(1.0 / 3);
        std::fesetround(FE_TONEAREST);
        EXPECT_EQ(text, "") << mode;
    }
}

TEST(RealNumber, OfAnyBitsIsAsPrinted) {
    std::mt19937_64 random(20260314); // NOLINT: the same numbers each time
    int writtenOnes = 0;
    constexpr int count = 300000;
    for (int i = 0; i < count; ++i)
        writtenOnes += expectAsPrinted(std::bit_cast<double>(std::uint64_t{random()})) ? 1 : 0;
    EXPECT_GT(writtenOnes, count * 9 / 10) << "few are left to printf";
}

TEST(RealNumber, OfFewDigitsIsAsPrinted) {
    std::mt19937_64 random(20260315); // NOLINT: the same numbers each time
    for (int i = 0; i < 300000; ++i) {
        auto const whole = static_cast<double>(static_cast<std::int64_t>(random() >> (random() % 60)));
        double const scale = std::pow(10.0, static_cast<double>(random() % 40) - 20);
        expectAsPrinted(whole * scale);
        expectAsPrinted(-whole / scale);
        expectAsPrinted(whole + 0.5);
        expectAsPrinted(whole / 1024);
    }
}

/// All powers of two and of ten with their neighbours, where digits and exponents change.
TEST(RealNumber, BesidePowersIsAsPrinted) {
    auto const around = [](double number) {
        double const infinity = std::numeric_limits<double>::infinity();
        double below = number, above = number;
        for (int i = 0; i < 50; ++i) {
            expectAsPrinted(below);
            expectAsPrinted(above);
            below = std::nextafter(below, 0.0);
            above = std::nextafter(above, infinity);
        }
    };
    for (int exponent = -1022; exponent <= 1023; ++exponent)
        around(std::ldexp(1.0, exponent));
    for (int exponent = -307; exponent <= 308; ++exponent)
        around(std::stod("1e" + std::to_string(exponent)));
}

} // namespace
