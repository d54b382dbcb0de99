// Decimal notation of long numbers, and the arithmetic under it, against schoolbook code.

#include "bytes/decimal.h"
#include "bytes/decimal_limbs.h"
#include "tests/bytes/texts.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cfenv>
#include <cmath>
#include <vector>

namespace {

using namespace bytes_test;
using kelcl::limbs::Limb;

/// Multiplies by 256 and adds a byte, digit by digit (here: four bytes by four, nine digits by nine).
std::string plainDecimal(std::string_view bytes) {
    std::vector<std::uint32_t> groups{0};
    std::uint64_t factor = 1;
    std::uint64_t added = 0;
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        factor *= 256;
        added = added * 256 + static_cast<unsigned char>(bytes[i]);
        if (i % 4 != 3 && i + 1 != bytes.size()) continue;
        for (std::uint32_t& group : groups) {
            added += group * factor;
            group = static_cast<std::uint32_t>(added % 1'000'000'000);
            added /= 1'000'000'000;
        }
        for (; added != 0; added /= 1'000'000'000)
            groups.push_back(static_cast<std::uint32_t>(added % 1'000'000'000));
        factor = 1;
    }
    std::string result = std::to_string(groups.back());
    for (std::size_t i = groups.size() - 1; i-- > 0;) {
        std::string const digits = std::to_string(groups[i]);
        result += std::string(9 - digits.size(), '0') + digits;
    }
    return result;
}

/// Multiplies by ten and adds a digit, byte by byte (here: nine digits by nine, four bytes by four).
std::string plainBytesOf(std::string_view digits) {
    std::vector<std::uint32_t> groups; // the lowest first
    std::uint64_t factor = 1;
    std::uint64_t added = 0;
    for (std::size_t i = 0; i < digits.size(); ++i) {
        factor *= 10;
        added = added * 10 + static_cast<std::uint64_t>(digits[i] - '0');
        if (i % 9 != 8 && i + 1 != digits.size()) continue;
        for (std::uint32_t& group : groups) {
            added += group * factor;
            group = static_cast<std::uint32_t>(added);
            added >>= 32U;
        }
        if (added != 0) groups.push_back(static_cast<std::uint32_t>(added));
        factor = 1;
        added = 0;
    }
    std::string result; // the lowest byte first
    for (std::uint32_t const group : groups)
        for (unsigned int shift = 0; shift < 32; shift += 8)
            result.push_back(static_cast<char>(group >> shift));
    result.resize(result.find_last_not_of('\0') + 1);
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
    for (std::size_t n : {1023U, 1024U, 2047U, 2118U, 2119U, 2120U, 2121U, 2525U, 2526U, 2527U, 3000U, 4850U,
                          4851U, 9000U, 16'384U}) {
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

/// Limbs below `base` (0 stands for 2^64) of every shape that matters: random ones, the largest, few among
/// zeros, and those whose pieces all are half of a piece's base, or just less.
std::vector<Limb> shapedLimbs(std::mt19937_64& random, std::size_t n, Limb base, Limb halves) {
    std::vector<Limb> result(n);
    std::uint64_t const shape = random() % 6;
    for (Limb& limb : result) {
        Limb const any = base == 0 ? random() : random() % base;
        limb = shape == 0                        ? base - 1
               : shape == 1 && random() % 3 != 0 ? 0
               : shape == 2                      ? halves
               : shape == 3                      ? halves - 1
                                                 : any;
    }
    return result;
}

std::vector<Limb> plainProduct(std::vector<Limb> const& a, std::vector<Limb> const& b, Limb base) {
    using kelcl::limbs::WideLimb;
    std::vector<Limb> result(a.size() + b.size());
    for (std::size_t i = 0; i < a.size(); ++i) {
        Limb carry = 0;
        for (std::size_t j = 0; j < b.size(); ++j) {
            WideLimb const sum = WideLimb{a[i]} * b[j] + result[i + j] + carry;
            carry = base == 0 ? static_cast<Limb>(sum >> 64U) : static_cast<Limb>(sum / base);
            result[i + j] = static_cast<Limb>(sum - WideLimb{carry} * base);
        }
        result[i + b.size()] = carry;
    }
    return result;
}

template <class Base>
std::vector<Limb> productOf(std::vector<Limb> const& a, std::vector<Limb> const& b) {
    kelcl::ExactArithmetic const exact;
    kelcl::limbs::Multiplier<Base> multiplier(a);
    std::vector<Limb> product(2 * a.size() + 1, 77);
    multiplier.multiply(product.data(), b.data());
    EXPECT_EQ(product.back(), 77U);
    product.pop_back();
    return product;
}

// Beyond 1536 limbs a product is made of others.
constexpr std::size_t sizesOfProducts[] = {1,  2,  3,   4,   5,   7,   8,    12,   16,   24,   31,   32,
                                           33, 48, 100, 192, 256, 768, 1000, 1024, 1535, 1536, 1537, 3100};

TEST(LimbProducts, InBothBasesAreWhatSchoolbookCodeGives) {
    std::mt19937_64 random(504);
    for (std::size_t const n : sizesOfProducts)
        for (int round = 0; round < (n < 400 ? 100 : n < 2000 ? 6 : 3); ++round) {
            using kelcl::limbs::Binary;
            using kelcl::limbs::Decimal;
            auto const a = shapedLimbs(random, n, 0, Binary::halfPieces);
            auto const b = shapedLimbs(random, n, 0, Binary::halfPieces);
            ASSERT_TRUE(productOf<Binary>(a, b) == plainProduct(a, b, 0)) << n;
            auto const c = shapedLimbs(random, n, Decimal::base, Decimal::halfPieces);
            auto const d = shapedLimbs(random, n, Decimal::base, Decimal::halfPieces);
            ASSERT_TRUE(productOf<Decimal>(c, d) == plainProduct(c, d, Decimal::base)) << n;
        }
}

TEST(DecimalLimbs, StayBelowElevenTimesTheBaseBeforeTheyAreSettled) {
    using kelcl::limbs::Decimal;
    constexpr std::size_t chunks = 640;
    constexpr Limb largest = (Limb{1} << Decimal::bitsOfChunk) - 1;
    std::mt19937_64 random(509);
    Limb most = 0;
    for (int round = 0; round < 20; ++round) {
        std::vector<Limb> number(chunks);
        for (std::size_t i = 2; i <= chunks; i += 2) {
            Decimal::append(number.data(), i, round == 0 ? largest : random() & largest,
                            round == 0 ? largest : random() & largest);
            most = std::max(most, *std::max_element(number.begin(), number.end()));
        }
        Decimal::settle(number.data(), chunks);
        EXPECT_LT(*std::max_element(number.begin(), number.end()), Decimal::base);
    }
    EXPECT_LT(most, 11 * Decimal::base);
}

/// How far the coefficients of a product of two rows are from whole numbers at most.
double distanceFromWholeNumbers(std::mt19937_64& random, std::size_t n, int shape) {
    kelcl::ExactArithmetic const exact;
    kelcl::Spectrum a(2 * n);
    kelcl::Spectrum b(2 * n);
    for (kelcl::Spectrum* const row : {&a, &b}) {
        std::fill_n(row->coefficients(), row->size(), 0.0);
        for (std::size_t i = 0; i < n; ++i)
            row->coefficients()[i] = shape == 0   ? -32768.0
                                     : shape == 1 ? (random() % 2 != 0 ? -32768.0 : 32767.0)
                                                  : static_cast<double>(random() % 65536) - 32768;
        row->transform();
    }
    a.multiplyBy(b);
    a.transformBack();
    double most = 0;
    for (std::size_t i = 0; i < a.size(); ++i)
        most = std::max(most, std::abs(a.coefficients()[i] - std::nearbyint(a.coefficients()[i])));
    return most;
}

TEST(Spectrum, OfLongestRowsIsFarFromRoundingWrongly) {
    std::mt19937_64 random(506);
    for (std::size_t const n : {kelcl::Spectrum::longest / 2, std::size_t{4096}, std::size_t{3000}})
        for (int shape = 0; shape < 3; ++shape)
            EXPECT_LT(distanceFromWholeNumbers(random, n, shape), 1.0 / 64) << n << ' ' << shape;
}

TEST(Decimal, DoesNotDependOnTheHostsRoundingAndLeavesItsFlagsAlone) {
    std::mt19937 random(507);
    std::string const bytes = shapedBytes(random, 5000);
    std::string const digits = plainDecimal(bytes);
    for (int const mode : {FE_UPWARD, FE_DOWNWARD, FE_TOWARDZERO, FE_TONEAREST}) {
        std::fesetround(mode);
        std::feclearexcept(FE_ALL_EXCEPT);
        std::string const written = decimalOf(bytes);
        std::string const read = bytesOf(written);
        int const flags = std::fetestexcept(FE_ALL_EXCEPT);
        int const modeAfterwards = std::fegetround();
        std::fesetround(FE_TONEAREST);
        EXPECT_TRUE(written == digits) << mode;
        EXPECT_TRUE(read == bytes.substr(std::min(bytes.find_first_not_of('\0'), bytes.size() - 1))) << mode;
        EXPECT_EQ(modeAfterwards, mode);
        EXPECT_EQ(flags, 0);
    }
}

TEST(Decimal, OfNumbersUpTo64KBytesIsAsSchoolbookCodeHasIt) {
    std::mt19937 random(508);
    for (int round = 0; round < 12; ++round) {
        std::string const bytes = shapedBytes(random, 1 + random() % (round < 10 ? 20'000 : 65'536));
        std::string const digits = plainDecimal(bytes);
        ASSERT_TRUE(decimalOf(bytes) == digits) << bytes.size();
        std::size_t const zeros = std::min(bytes.find_first_not_of('\0'), bytes.size() - 1);
        ASSERT_TRUE(bytesOf(digits) == bytes.substr(zeros)) << bytes.size();
    }
}

} // namespace
