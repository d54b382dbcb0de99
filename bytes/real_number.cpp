// Numbers with 15 significant digits, by one multiplication with a power of ten.
//
// A number is m * 2^e with an m of 53 bits. Its first 15 or 16 digits are the whole part of m * 2^e * 10^k,
// where k follows from e. 10^k is 10^b, which is exact, times a power of 10^16, of which 128 bits are kept.
// So the product is too small by less than 2^-77, of which the first 64 bits of its fraction show whether it
// is close to where digits are rounded up. There, and at ties, the answer is left to printf.
#include "bytes/real_number.h"

#include <array>
#include <bit>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>

namespace kelcl {

namespace {

constexpr int significant = std::numeric_limits<double>::digits10;

/// Whether sums are rounded to the nearest number; `fegetround` costs more than all of these.
bool roundsToNearest() {
    volatile double const one = 1.0, little = 0x1p-60;
    return one + little == 1.0 && one - little == 1.0;
}

// Powers of ten
// ----------------------------------------------------------------------------------------------------

/// The first 128 bits of a power.
struct Bits {
    std::uint64_t high, low;
};

constexpr int powerStep = 16;    // from one power to the next
constexpr int lowestPower = -19; // 10^-304
constexpr int powerCount = 40;   // up to 10^320

/// The first bits of 10^(16 n), from the whole number, or from the reciprocal with a high power of two.
constexpr Bits bitsOfPower(int n) {
    constexpr std::uint64_t eightDigits = 100000000;
    constexpr int limbCount = 40;
    std::uint32_t limbs[limbCount] = {}; // the lowest first
    limbs[n < 0 ? limbCount - 1 : 0] = n < 0 ? 1U << 31 : 1;
    for (int i = 0; i < n * powerStep / 8; ++i) {
        std::uint64_t carry = 0;
        for (std::uint32_t& limb : limbs) {
            carry += limb * eightDigits;
            limb = static_cast<std::uint32_t>(carry);
            carry >>= 32;
        }
    }
    for (int i = 0; i < -n * powerStep / 8; ++i) {
        std::uint64_t remainder = 0;
        for (int at = limbCount - 1; at >= 0; --at) {
            remainder = remainder << 32 | limbs[at];
            limbs[at] = static_cast<std::uint32_t>(remainder / eightDigits);
            remainder %= eightDigits;
        }
    }
    int top = limbCount - 1;
    while (limbs[top] == 0)
        --top;
    auto const limb = [&](int below) { return top >= below ? limbs[top - below] : 0; };
    auto const pair = [&](int below) { return std::uint64_t{limb(below)} << 32 | limb(below + 1); };
    int const shift = std::countl_zero(limbs[top]);
    std::uint64_t const high = pair(0), low = pair(2);
    if (shift == 0) return {high, low};
    return {high << shift | low >> (64 - shift), low << shift | limb(4) >> (32 - shift)};
}

constexpr auto powers = [] {
    std::array<Bits, powerCount> result{};
    for (int i = 0; i < powerCount; ++i)
        result[static_cast<std::size_t>(i)] = bitsOfPower(lowestPower + i);
    return result;
}();

constexpr auto smallPowers = [] {
    std::array<std::uint64_t, powerStep> result{};
    std::uint64_t power = 1;
    for (std::uint64_t& place : result) {
        place = power;
        power *= 10;
    }
    return result;
}();

/// floor(log2(10^n)) and floor(log10(2^n)), for all n that occur.
constexpr int log2OfPowerOf10(int n) { return n * 1741647 >> 19; }
constexpr int log10OfPowerOf2(int n) { return n * 315653 >> 20; }

// Digits
// ----------------------------------------------------------------------------------------------------

/// The digits d of a number d.ddd... * 10^exponent, the last of which is not 0 unless it is the only one.
struct Digits {
    char digits[2 * significant]; // so that as many as there may be can be read from each of them on
    int count;
    int exponent;
};

struct Product {
    std::uint64_t whole, fraction; ///< The fraction in units of 2^-64.
};

/// m * 2^e * 10^k, as far as 64 bits on each side of the point show it.
Product product(std::uint64_t m, int e, int k) {
    __extension__ using Wide = unsigned __int128;
    int const n = (k + 1024 * powerStep) / powerStep - 1024; // rounded down
    auto const [high, low] = powers[static_cast<std::size_t>(n - lowestPower)];
    Wide const front = Wide{m} * smallPowers[static_cast<std::size_t>(k - n * powerStep)];
    auto const frontLow = static_cast<std::uint64_t>(front),
               frontHigh = static_cast<std::uint64_t>(front >> 64);
    Wide const lowest = Wide{frontLow} * low;
    Wide const middle = Wide{frontHigh} * low + static_cast<std::uint64_t>(lowest >> 64);
    Wide const other = Wide{frontLow} * high + static_cast<std::uint64_t>(middle);
    Wide const highest = Wide{frontHigh} * high + static_cast<std::uint64_t>(middle >> 64) +
                         static_cast<std::uint64_t>(other >> 64);
    std::uint64_t const words[] = {static_cast<std::uint64_t>(lowest), static_cast<std::uint64_t>(other),
                                   static_cast<std::uint64_t>(highest),
                                   static_cast<std::uint64_t>(highest >> 64)};
    // The point is so many bits from the end of the product.
    auto const point = static_cast<unsigned int>(127 - log2OfPowerOf10(n * powerStep) - e);
    std::size_t const word = point / 64 - 1;
    unsigned int const shift = point % 64;
    if (shift == 0) return {words[word + 1], words[word]};
    return {words[word + 1] >> shift | words[word + 2] << (64 - shift),
            words[word] >> shift | words[word + 1] << (64 - shift)};
}

/// The digits of a number that is neither 0 nor very small; returns false where it is close to a tie.
bool findDigits(double number, Digits& result) {
    constexpr std::uint64_t half = std::uint64_t{1} << 63, all = ~std::uint64_t{0};
    constexpr std::uint64_t leastOfSixteen = 1000000000000000; // digits
    auto const bits = std::bit_cast<std::uint64_t>(number);
    constexpr int fractionBits = std::numeric_limits<double>::digits - 1;
    int const e = static_cast<int>(bits >> fractionBits & 0x7FF) - 1023 - fractionBits;
    constexpr std::uint64_t firstBit = std::uint64_t{1} << fractionBits; // which is not stored
    std::uint64_t const m = (bits & (firstBit - 1)) | firstBit;
    result.exponent = log10OfPowerOf2(e + fractionBits); // or one more
    auto [whole, fraction] = product(m, e, significant - 1 - result.exponent);
    if (whole < leastOfSixteen) {
        if (fraction == half || fraction == half - 1) return false;
        whole += fraction > half ? 1 : 0;
    } else {
        ++result.exponent;
        std::uint64_t const last = whole % 10;
        if ((last == 5 && fraction == 0) || (last == 4 && fraction == all)) return false;
        whole = whole / 10 + (last >= 5 ? 1 : 0);
    }
    if (whole == leastOfSixteen) { // all nines were rounded up
        whole /= 10;
        ++result.exponent;
    }
    std::to_chars(result.digits, result.digits + significant, whole);
    result.count = significant;
    while (result.digits[result.count - 1] == '0')
        --result.count;
    return true;
}

// The text
// ----------------------------------------------------------------------------------------------------

// Always as many bytes as there may be, which needs no call; those past `count` are written over, or not
// used.

char* copy(char* out, char const* digits, int count) {
    std::memcpy(out, digits, significant);
    return out + count;
}

char* fill(char* out, int count) {
    std::memset(out, '0', significant);
    return out + count;
}

/// Digits, and a point after the first `whole` of them if there are more.
char* writeWithPoint(char* out, Digits const& number, int whole) {
    out = copy(out, number.digits, whole);
    if (number.count == whole) return out;
    *out++ = '.';
    return copy(out, number.digits + whole, number.count - whole);
}

char* writeExponent(char* out, int exponent) {
    *out++ = 'e';
    *out++ = exponent < 0 ? '-' : '+';
    if (std::abs(exponent) < 10) *out++ = '0';
    return std::to_chars(out, out + 3, std::abs(exponent)).ptr;
}

} // namespace

RealText writeReal(char* out, double number) {
    bool const isSmall = std::fabs(number) < std::numeric_limits<double>::min() && number != 0;
    if (isSmall || !std::isfinite(number) || !roundsToNearest()) return {0, false};
    Digits digits{{'0'}, 1, 0};
    if (number != 0 && !findDigits(number, digits)) return {0, false};

    char* at = out;
    if (std::signbit(number)) *at++ = '-';
    int const exponent = digits.exponent;
    bool hasPoint = digits.count > 1;
    if (exponent < -4 || exponent >= significant) {
        at = writeExponent(writeWithPoint(at, digits, 1), exponent);
    } else if (exponent < 0) {
        *at++ = '0';
        *at++ = '.';
        at = copy(fill(at, -1 - exponent), digits.digits, digits.count);
        hasPoint = true;
    } else if (exponent < digits.count) {
        at = writeWithPoint(at, digits, exponent + 1);
        hasPoint = exponent + 1 < digits.count;
    } else {
        at = fill(copy(at, digits.digits, digits.count), exponent + 1 - digits.count);
        hasPoint = false;
    }
    return {static_cast<std::size_t>(at - out), hasPoint};
}

} // namespace kelcl
