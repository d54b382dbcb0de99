// Long numbers take far less time than the square of their length, shown by counts: the compiler puts a call
// in front of every stretch of straight code of the kernels that this program is made of, and the calls are
// counted here.
#include "bytes/decimal.h"

#include <cstddef>
#include <string>

#include <gtest/gtest.h>

namespace {

std::size_t steps = 0;

} // namespace

extern "C" void __sanitizer_cov_trace_pc(); // NOLINT: the name is the compiler's
extern "C" void __sanitizer_cov_trace_pc() { ++steps; }

namespace {

template <class Work>
double stepsOf(Work const& work) {
    std::size_t const before = steps;
    work();
    return static_cast<double>(steps - before);
}

/// For 16 times the input: 16 is linear, 256 quadratic. Products are by transforms up to some 25,000 digits,
/// and from there on by three of half the length: 81, which is 16 to the power of the binary logarithm of 3.
constexpr double byThreeOfHalfTheLength = 85;

std::string digitsOf(std::size_t count) {
    std::string digits;
    for (std::size_t i = 0; i < count; ++i)
        digits += static_cast<char>('1' + i * i % 9);
    return digits;
}

TEST(Growth, OfReadingALongNumberIsFarFromQuadratic) {
    auto const reading = [](std::size_t digits) {
        std::string const text = digitsOf(digits);
        std::string bytes(kelcl::bytesBound(digits), '\0');
        return stepsOf([&] { kelcl::readDecimal(bytes.data(), text); });
    };
    for (std::size_t const digits : {1024U, 4096U, 16384U})
        EXPECT_LT(reading(16 * digits) / reading(digits), byThreeOfHalfTheLength) << digits;
}

TEST(Growth, OfWritingALongNumberIsFarFromQuadratic) {
    auto const writing = [](std::size_t bytes) {
        std::string const number = digitsOf(bytes);
        std::string digits(kelcl::decimalDigitsBound(bytes), '\0');
        return stepsOf([&] { kelcl::writeDecimal(digits.data(), number); });
    };
    for (std::size_t const bytes : {1024U, 4096U, 16384U})
        EXPECT_LT(writing(16 * bytes) / writing(bytes), byThreeOfHalfTheLength) << bytes;
}

} // namespace
