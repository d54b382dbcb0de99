// Arithmetic on unsigned numbers of any length in two bases, as far as the conversion of decimal notation
// needs it. A number is a stretch of limbs, the lowest first. Nothing here knows of text.
#ifndef KELCL_BYTES_DECIMAL_LIMBS_H
#define KELCL_BYTES_DECIMAL_LIMBS_H

#include "bytes/spectrum.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace kelcl::limbs {

using Limb = std::uint64_t;
__extension__ using WideLimb = unsigned __int128;

constexpr Limb lowLimb(WideLimb value) { return static_cast<Limb>(value); }
constexpr Limb highLimb(WideLimb value) { return static_cast<Limb>(value >> 64U); }

/// All ones for what a subtraction has made negative, otherwise 0.
constexpr Limb maskOfNegative(Limb value) { return 0 - (value >> 63U); }

/// Limbs of 64 bits, and what they are read from: 19 decimal digits at a time.
struct Binary {
    static constexpr std::size_t digitsOfChunk = 19;
    static constexpr Limb piece = 1U << 16U; ///< Four pieces make a limb.
    static constexpr Limb halfPieces = 0x8000'8000'8000'8000;

    static Limb add(Limb a, Limb b, Limb& carry) {
        WideLimb const sum = WideLimb{a} + b + carry;
        carry = highLimb(sum);
        return lowLimb(sum);
    }
    static Limb subtract(Limb a, Limb b, Limb& borrow) {
        WideLimb const difference = WideLimb{a} - b - borrow;
        borrow = highLimb(difference) & 1U;
        return lowLimb(difference);
    }
    /// a[0..n) = (a * 10^19 + first) * 10^19 + second, which has room.
    static void append(Limb* a, std::size_t n, Limb first, Limb second);
    static void settle(Limb*, std::size_t) {}
};

/// Limbs of 16 decimal digits, and what they are read from: 53 bits at a time.
struct Decimal {
    static constexpr std::size_t bitsOfChunk = 53;
    static constexpr std::size_t digitsOfLimb = 16;
    static constexpr Limb base = 10'000'000'000'000'000;
    static constexpr Limb piece = 10'000; ///< Four pieces make a limb.
    static constexpr Limb halfPieces = 5000'5000'5000'5000;

    static Limb add(Limb a, Limb b, Limb& carry) {
        Limb const sum = a + b + carry - base;
        Limb const isNegative = maskOfNegative(sum);
        carry = 1 + isNegative;
        return sum + (base & isNegative);
    }
    static Limb subtract(Limb a, Limb b, Limb& borrow) {
        Limb const difference = a - b - borrow;
        Limb const isNegative = maskOfNegative(difference);
        borrow = 0 - isNegative;
        return difference + (base & isNegative);
    }
    /// a[0..n) = (a * 2^53 + first) * 2^53 + second, which has room. Limbs may be above the base until they
    /// are settled.
    static void append(Limb* a, std::size_t n, Limb first, Limb second);
    static void settle(Limb* a, std::size_t n);
};

/// a[0..n) += b[0..m), m at most n; returns the carry.
template <class Base>
Limb addTo(Limb* a, std::size_t n, Limb const* b, std::size_t m);

/// a[0..n) -= b[0..m), m at most n; returns the borrow.
template <class Base>
Limb subtractFrom(Limb* a, std::size_t n, Limb const* b, std::size_t m);

/// Multiplies by one and the same factor. An ExactArithmetic must live meanwhile. May throw std::bad_alloc.
template <class Base>
class Multiplier {
public:
    explicit Multiplier(std::vector<Limb> factor);

    /// out[0..2n) = factor * b[0..n), for the n limbs of the factor.
    void multiply(Limb* out, Limb const* b);
    std::vector<Limb> square();

private:
    bool isTransformed() const { return factor_.size() <= longestTransformed; }

    static constexpr std::size_t longestTransformed = Spectrum::longest / 8;

    std::vector<Limb> factor_;
    Spectrum ofFactor_;
    Spectrum work_;
    std::vector<Limb> scratch_;
};

} // namespace kelcl::limbs

#endif
