// Numbers with 15 significant digits from their shortest decimal text, which is much faster to find.
//
// The shortest text has the fewest digits of all decimals that are read as the same number, and of those it
// is the nearest to it.
// - Has it at most 15 digits, it is the text wanted: each decimal of 15 digits is read as a number that gives
// it
//   back (DBL_DIG), and the number is not a very small one, for which that does not hold.
// - Else it is rounded to 15 digits. That gives the same as rounding the number itself. For if a tie (a
// decimal of
//   16 digits that ends in 5) lay between the two, it would be read as the same number, and be shorter or
//   nearer. The shortest text may be a tie itself; then it does not tell on which side of it the number is.
#include "bytes/real_number.h"

#include <charconv>
#include <cmath>
#include <cstring>
#include <limits>

namespace kelcl {

namespace {

constexpr int significant = std::numeric_limits<double>::digits10;
constexpr int most = std::numeric_limits<double>::max_digits10;

/// Whether sums are rounded to the nearest number; `fegetround` costs more than all of these.
bool roundsToNearest() {
    volatile float const one = 1.0F, little = 0x1p-30F;
    return one + little == 1.0F && one - little == 1.0F;
}

/// The digits d of a number d.ddd... * 10^exponent, the last of which is not 0 unless it is the only one.
struct Digits {
    char digits[2 * most]; // so that as many as there may be can be read from each of them on
    int count;
    int exponent;
};

/// Reads "d.ddde+dd", which ends at `end`.
Digits read(char const* text, char const* end) {
    Digits result{};
    char const* const sign = end[-4] == 'e' ? end - 3 : end - 4;
    int exponent = 0;
    for (char const* at = sign + 1; at != end; ++at)
        exponent = exponent * 10 + (*at - '0');
    result.exponent = *sign == '-' ? -exponent : exponent;
    result.digits[0] = text[0];
    result.count = 1;
    if (text[1] == '.') {
        std::memcpy(result.digits + 1, text + 2, most);
        result.count += static_cast<int>(sign - 1 - (text + 2));
    }
    return result;
}

/// Rounds to the significant digits; returns false for a tie.
bool round(Digits& number) {
    if (number.count <= significant) return true;
    char const next = number.digits[significant];
    if (next == '5' && number.count == significant + 1) return false;
    number.count = significant;
    if (next >= '5') {
        while (number.count != 0 && number.digits[number.count - 1] == '9')
            --number.count;
        if (number.count == 0) {
            number = {{'1'}, 1, number.exponent + 1};
            return true;
        }
        ++number.digits[number.count - 1];
    }
    while (number.count > 1 && number.digits[number.count - 1] == '0')
        --number.count;
    return true;
}

// Always as many bytes as there may be, which needs no call; those past `count` are written over, or not
// used.

char* copy(char* out, char const* digits, int count) {
    std::memcpy(out, digits, most);
    return out + count;
}

char* fill(char* out, int count) {
    std::memset(out, '0', most);
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
    char shortest[realTextSpace] = {};
    char const* const end =
        std::to_chars(shortest, shortest + sizeof shortest, number, std::chars_format::scientific).ptr;
    bool const isNegative = shortest[0] == '-';
    Digits digits = read(shortest + (isNegative ? 1 : 0), end);
    if (!round(digits)) return {0, false};

    char* at = out;
    if (isNegative) *at++ = '-';
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
