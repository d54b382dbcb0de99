// Decimal notation of long numbers, and the arithmetic under it, against schoolbook code.

#include "kernels_texts.h"
#include "string/decimal.h"
#include "string/decimal_limbs.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

namespace {

using namespace kernels_test;
using kelcl::limbs::Limb;

/// Multiplies by 256 and adds a byte, digit by digit (here: nine digits by nine).
std::string plainDecimal(std::string_view bytes) {
    std::vector<std::uint64_t> groups{0};
    for (char const byte : bytes) {
        std::uint64_t carry = static_cast<unsigned char>(byte);
        for (std::uint64_t& group : groups) {
            carry += group * 256;
            group = carry % 1'000'000'000;
            carry /= 1'000'000'000;
        }
        if (carry != 0) groups.push_back(carry);
    }
    std::string result = std::to_string(groups.back());
    for (std::size_t i = groups.size() - 1; i-- > 0;) {
        std::string const digits = std::to_string(groups[i]);
        result += std::string(9 - digits.size(), '0') + digits;
    }
    return result;
}

/// Multiplies by ten and adds a digit, byte by byte.
std::string plainBytesOf(std::string_view digits) {
    std::string result; // the lowest byte first
    for (char const digit : digits) {
        unsigned int carry = static_cast<unsigned int>(digit - '0');
        for (char& byte : result) {
            carry += static_cast<unsigned char>(byte) * 10U;
            byte = static_cast<char>(carry);
            carry /= 256;
        }
        if (carry != 0) result.push_back(static_cast<char>(carry));
    }
    if (result.empty()) result.push_back('\0');
    return std::string(result.rbegin(), result.rend());
}

std::string decimalOf(std::string_view bytes) {
    std::size_t const room = kelcl::decimalDigitsBound(bytes.size());
    std::string out(room + 1, '#');
    std::size_t const size = kelcl::writeDecimal(out.data(), bytes);
    EXPECT_LE(size, room);
    EXPECT_EQ(out.back(), '#');
    return out.substr(0, size);
}

std::string bytesOf(std::string_view digits) {
    std::size_t const room = kelcl::bytesBound(digits.size());
    std::string out(room + 1, '#');
    std::size_t const size = kelcl::readDecimal(out.data(), digits);
    EXPECT_LE(size, room);
    EXPECT_EQ(out.back(), '#');
    return out.substr(0, size);
}

/// Numbers of every shape that matters: random ones, long runs of ones and of zeros, single bits.
std::string shapedBytes(std::mt19937& random, std::size_t n) {
    std::string bytes = randomBytes(random, n);
    unsigned int const shape = random() % 4;
    if (shape == 1) std::fill(bytes.begin(), bytes.end(), '\xFF');
    if (shape == 2 && n > 0) {
        std::fill(bytes.begin(), bytes.end(), '\0');
        bytes[0] = '\x01';
    }
    if (shape == 3)
        for (char& byte : bytes)
            byte = random() % 16 != 0 ? '\0' : byte;
    return bytes;
}

TEST(Decimal, OfSmallNumbersIsWhatTheyAre) {
    using namespace std::string_literals;
    EXPECT_EQ(decimalOf(""), "0");
    EXPECT_EQ(decimalOf("\0"s), "0");
    EXPECT_EQ(decimalOf(std::string(1000, '\0')), "0");
    EXPECT_EQ(decimalOf("\x01\x00"s), "256");
    EXPECT_EQ(decimalOf("\0\0\0\x07"s), "7");
    EXPECT_EQ(decimalOf("\x8A\xC7\x23\x04\x89\xE7\xFF\xFF"s), "9999999999999999999");
    EXPECT_EQ(decimalOf("\x8A\xC7\x23\x04\x89\xE8\x00\x00"s), "10000000000000000000");
    EXPECT_EQ(decimalOf("\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF"s), "18446744073709551615");
    EXPECT_EQ(decimalOf("\x01\x00\x00\x00\x00\x00\x00\x00\x00"s), "18446744073709551616");
    EXPECT_EQ(bytesOf(""), "\0"s);
    EXPECT_EQ(bytesOf("0"), "\0"s);
    EXPECT_EQ(bytesOf(std::string(1000, '0')), "\0"s);
    EXPECT_EQ(bytesOf("256"), "\x01\x00"s);
    EXPECT_EQ(bytesOf("000255"), "\xFF"s);
    EXPECT_EQ(bytesOf("18446744073709551615"), "\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF"s);
    EXPECT_EQ(bytesOf("18446744073709551616"), "\x01\x00\x00\x00\x00\x00\x00\x00\x00"s);
}

TEST(Decimal, IsWrittenAsSchoolbookCodeDoesForEveryLengthUpTo700) {
    std::mt19937 random(501);
    for (std::size_t n = 0; n <= 700; ++n)
        for (int round = 0; round < 4; ++round) {
            std::string const bytes = shapedBytes(random, n);
            ASSERT_EQ(decimalOf(bytes), plainDecimal(bytes)) << n;
        }
}

TEST(Decimal, IsReadAsSchoolbookCodeDoesForEveryLengthUpTo1500) {
    std::mt19937 random(502);
    for (std::size_t n = 0; n <= 1500; ++n) {
        std::string const digits =
            n % 3 == 0 ? std::string(n, '9') : randomText(random, n, n % 3 == 1 ? "0123456789" : "00000001");
        ASSERT_EQ(bytesOf(digits), plainBytesOf(digits)) << n;
    }
}

TEST(Decimal, OfLongNumbersIsAsSchoolbookCodeHasIt) {
    std::mt19937 random(503);
    for (std::size_t n : {1023U, 1024U, 2047U, 3000U, 4850U, 4851U, 9000U, 16'384U}) {
        std::string const bytes = shapedBytes(random, n);
        std::string const digits = plainDecimal(bytes);
        ASSERT_EQ(decimalOf(bytes), digits) << n;
        std::size_t const zeros = std::min(bytes.find_first_not_of('\0'), n - 1);
        ASSERT_EQ(bytesOf(digits), bytes.substr(zeros)) << n;
    }
}

TEST(Decimal, OfPowersOfTenAndTheirNeighboursIsExact) {
    for (std::size_t zeros = 1; zeros < 6000; zeros = zeros * 5 / 4 + 1) {
        std::string power(zeros + 1, '0');
        power[0] = '1';
        for (std::string const& digits : {power, std::string(zeros, '9')}) {
            std::string const bytes = plainBytesOf(digits);
            ASSERT_EQ(bytesOf(digits), bytes);
            ASSERT_EQ(decimalOf(bytes), digits);
        }
    }
}

TEST(Decimal, StaysWithinItsBoundsForNumbersOfAllOnes) {
    for (std::size_t n = 1; n < 3000; n = n * 9 / 8 + 1) {
        std::string const ones(n, '\xFF');
        std::string const digits = decimalOf(ones);
        EXPECT_LE(digits.size(), kelcl::decimalDigitsBound(n));
        EXPECT_EQ(bytesOf(digits), ones);
        EXPECT_LE(bytesOf(std::string(n, '9')).size(), kelcl::bytesBound(n));
    }
}

std::vector<Limb> randomLimbs(std::mt19937_64& random, std::size_t n) {
    std::vector<Limb> result(n);
    std::uint64_t const shape = random() % 4;
    for (Limb& limb : result)
        limb = shape == 0 ? ~Limb{0} : shape == 1 && random() % 3 != 0 ? 0 : random();
    return result;
}

std::vector<Limb> plainProduct(std::vector<Limb> const& a, std::vector<Limb> const& b) {
    std::vector<Limb> result(a.size() + b.size());
    for (std::size_t i = 0; i < a.size(); ++i) {
        Limb carry = 0;
        for (std::size_t j = 0; j < b.size(); ++j) {
            kelcl::limbs::WideLimb const sum = kelcl::limbs::WideLimb{a[i]} * b[j] + result[i + j] + carry;
            result[i + j] = static_cast<Limb>(sum);
            carry = static_cast<Limb>(sum >> 64U);
        }
        result[i + b.size()] = carry;
    }
    return result;
}

TEST(LimbProducts, AreWhatSchoolbookCodeGives) {
    std::mt19937_64 random(504);
    for (int round = 0; round < 1500; ++round) {
        auto const a = randomLimbs(random, 1 + random() % 200);
        auto const b = randomLimbs(random, 1 + random() % (round % 2 == 0 ? 200 : a.size()));
        std::vector<Limb> product(a.size() + b.size() + 1, 77);
        kelcl::limbs::multiply(product.data(), a.data(), a.size(), b.data(), b.size());
        ASSERT_EQ(product.back(), 77U);
        product.pop_back();
        ASSERT_EQ(product, plainProduct(a, b));
    }
}

TEST(LimbQuotients, TimesTheDivisorPlusASmallerRemainderGiveTheNumberBack) {
    std::mt19937_64 random(505);
    for (int round = 0; round < 1500; ++round) {
        auto divisor = randomLimbs(random, 1 + random() % 150);
        divisor.back() |= Limb{1} << 63U;
        std::size_t const m = random() % 320;
        auto const number = randomLimbs(random, divisor.size() + m);
        std::vector<Limb> quotient(m + 1);
        std::vector<Limb> rest = number;
        quotient[m] = kelcl::limbs::divide(quotient.data(), m, rest.data(), divisor.data(), divisor.size());

        ASSERT_LE(quotient[m], 1U);
        ASSERT_TRUE(std::all_of(rest.begin() + static_cast<std::ptrdiff_t>(divisor.size()), rest.end(),
                                [](Limb limb) { return limb == 0; }));
        rest.resize(divisor.size());
        ASSERT_TRUE(
            std::lexicographical_compare(rest.rbegin(), rest.rend(), divisor.rbegin(), divisor.rend()));
        std::vector<Limb> sum = plainProduct(quotient, divisor);
        kelcl::limbs::WideLimb carry = 0;
        for (std::size_t i = 0; i < sum.size(); ++i) {
            carry += kelcl::limbs::WideLimb{sum[i]} + (i < rest.size() ? rest[i] : 0);
            sum[i] = static_cast<Limb>(carry);
            carry >>= 64U;
        }
        ASSERT_EQ(sum.back(), 0U);
        sum.pop_back();
        ASSERT_EQ(sum, number);
    }
}

} // namespace
