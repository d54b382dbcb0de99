// Arithmetic on unsigned numbers of any length, as far as the conversion of decimal notation needs it.
// A number is a stretch of limbs, 64 bits each, the lowest first. Nothing here knows of digits.
#ifndef KELCL_STRING_DECIMAL_LIMBS_H
#define KELCL_STRING_DECIMAL_LIMBS_H

#include <cstddef>
#include <cstdint>

namespace kelcl::limbs {

using Limb = std::uint64_t;
__extension__ using WideLimb = unsigned __int128;

inline constexpr unsigned int bitsOfLimb = 64;

constexpr Limb lowLimb(WideLimb value) { return static_cast<Limb>(value); }
constexpr Limb highLimb(WideLimb value) { return static_cast<Limb>(value >> bitsOfLimb); }

/// Divides by a fixed limb whose top bit is set, with multiplications by its reciprocal in place of the slow
/// division (Möller and Granlund, "Improved division by invariant integers", algorithm 4).
class LimbDivisor {
public:
    constexpr explicit LimbDivisor(Limb divisor)
        : divisor_(divisor), reciprocal_(lowLimb(~WideLimb{0} / divisor)) {}

    struct Result {
        Limb quotient;
        Limb remainder;
    };

    /// `high` is less than the divisor.
    constexpr Result divide(Limb high, Limb low) const {
        WideLimb const estimate =
            WideLimb{reciprocal_} * high + (WideLimb{high} << bitsOfLimb | low) + (WideLimb{1} << bitsOfLimb);
        Limb quotient = highLimb(estimate);
        Limb remainder = low - quotient * divisor_;
        if (remainder > lowLimb(estimate)) {
            --quotient;
            remainder += divisor_;
        }
        if (remainder >= divisor_) [[unlikely]] {
            ++quotient;
            remainder -= divisor_;
        }
        return {quotient, remainder};
    }

private:
    Limb divisor_;
    Limb reciprocal_; // less 2^64, which every such reciprocal contains
};

/// a[0..n) += b[0..m), m at most n; returns the carry.
Limb addTo(Limb* a, std::size_t n, Limb const* b, std::size_t m);

/// a[0..n) -= b[0..m), m at most n; returns the borrow.
Limb subtractFrom(Limb* a, std::size_t n, Limb const* b, std::size_t m);

/// a[0..n) = a * factor + addend; returns the carry.
Limb multiplyBy(Limb* a, std::size_t n, Limb factor, Limb addend);

/// out[0..n + m) = a[0..n) * b[0..m), n and m at least 1. No overlap. May throw std::bad_alloc.
void multiply(Limb* out, Limb const* a, std::size_t n, Limb const* b, std::size_t m);

/// Divides a[0..n + m) by b[0..n), n at least 1, whose top bit is set. The quotient is in q[0..m) and, above
/// that, in the limb returned, which is 0 or 1; the remainder is in a[0..n), and the rest of a is 0. May
/// throw std::bad_alloc.
Limb divide(Limb* q, std::size_t m, Limb* a, Limb const* b, std::size_t n);

/// out[0..m) = a[0..n) shifted by `bits`, from 0 on: as much of it as there is room for, with zeros where a
/// has none.
void shiftLeft(Limb* out, std::size_t m, Limb const* a, std::size_t n, std::size_t bits);
void shiftRight(Limb* out, std::size_t m, Limb const* a, std::size_t n, std::size_t bits);

} // namespace kelcl::limbs

#endif
