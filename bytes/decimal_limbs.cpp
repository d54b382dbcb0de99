// Multiplication: numbers are cut into pieces of a quarter of a limb, whose rows are multiplied with a
// Fourier transform; those that are too long for that are cut in two, with three products of the halves
// instead of four (Karatsuba's method).

#include "bytes/decimal_limbs.h"

#include <algorithm>
#include <bit>

namespace kelcl::limbs {

namespace {

constexpr std::size_t piecesOfLimb = 4;

/// Sets the coefficients to the pieces of a number, those above half of their base taken as negative ones,
/// with one more of the next: so the coefficients of products stay small. For that, half of a base is added
/// to all pieces, with carries, and then taken off each. Only the last one may be larger.
template <class Base>
void setToPieces(Spectrum& spectrum, Limb const* a, std::size_t n) {
    constexpr auto half = static_cast<std::int64_t>(Base::piece / 2);
    double* out = spectrum.coefficients();
    Limb carry = 0;
    for (std::size_t i = 0; i < n; ++i) {
        Limb rest = Base::add(a[i], Base::halfPieces, carry);
        for (std::size_t k = 0; k < piecesOfLimb; ++k) {
            *out++ = static_cast<double>(static_cast<std::int64_t>(rest % Base::piece) - half);
            rest /= Base::piece;
        }
    }
    out[-1] += static_cast<double>(carry * Base::piece);
    std::fill(out, spectrum.coefficients() + spectrum.size(), 0.0);
}

/// The nearest whole number of up to 51 bits: adding 1.5 * 2^52 leaves no bits for a fraction.
std::int64_t rounded(double value) {
    constexpr double shift = 6755399441055744;
    return std::bit_cast<std::int64_t>(value + shift) - std::bit_cast<std::int64_t>(shift);
}

/// The value of four coefficients, as a number that carries add up in.
template <class Base>
struct Carry;

template <>
struct Carry<Binary> {
    __extension__ using Wide = __int128;
    Wide carry = 0;

    Limb add(double const* pieces) {
        carry += rounded(pieces[0]) + (rounded(pieces[1]) * 0x10000);
        carry += Wide{rounded(pieces[2]) + rounded(pieces[3]) * 0x10000} * 0x1'0000'0000;
        auto const limb = static_cast<Limb>(carry);
        carry >>= 64U;
        return limb;
    }
};

template <>
struct Carry<Decimal> {
    std::int64_t carry = 0;

    Limb add(double const* pieces) {
        Limb const low = nextHalf(pieces);
        return low + nextHalf(pieces + 2) * half;
    }

private:
    static constexpr Limb half = 100'000'000;

    /// Two pieces; the carry may be negative, which the division of an unsigned number does not see.
    Limb nextHalf(double const* pieces) {
        constexpr std::int64_t least = std::int64_t{1} << 34U;
        constexpr auto offset = least * static_cast<std::int64_t>(half);
        auto const sum = static_cast<Limb>(rounded(pieces[0]) + rounded(pieces[1]) * 10'000 + carry + offset);
        carry = static_cast<std::int64_t>(sum / half) - least;
        return sum % half;
    }
};

template <class Base>
void setToCoefficients(Limb* out, std::size_t n, Spectrum const& spectrum) {
    Carry<Base> carry;
    for (std::size_t i = 0; i < n; ++i)
        out[i] = carry.add(spectrum.coefficients() + i * piecesOfLimb);
}

/// out[0..2n) = the number that `factor` was transformed from * b[0..n).
template <class Base>
void multiplyTransformed(Limb* out, Spectrum const& factor, Limb const* b, std::size_t n, Spectrum& work) {
    setToPieces<Base>(work, b, n);
    work.transform();
    work.multiplyBy(factor);
    work.transformBack();
    setToCoefficients<Base>(out, 2 * n, work);
}

/// out[0..n) = |a[0..n) - b[0..m)|, m at most n; returns whether the difference is negative.
template <class Base>
bool absoluteDifference(Limb* out, Limb const* a, std::size_t n, Limb const* b, std::size_t m) {
    std::copy_n(a, n, out);
    if (subtractFrom<Base>(out, n, b, m) == 0) return false;
    Limb borrow = 0;
    for (std::size_t i = 0; i < n; ++i)
        out[i] = Base::subtract(0, out[i], borrow);
    return true;
}

/// The scratch that multiplyHalves needs for n limbs: 4 * half + 1 at each of its levels, summed up.
constexpr std::size_t scratchOfHalves(std::size_t n) { return 4 * n + 512; }

/// out[0..2n) = a[0..n) * b[0..n).
template <class Base>
void multiplyHalves(Limb* out, Limb const* a, Limb const* b, std::size_t n, Limb* scratch, Spectrum& ofFactor,
                    Spectrum& work) {
    if (2 * n * piecesOfLimb <= work.size()) {
        setToPieces<Base>(ofFactor, a, n);
        ofFactor.transform();
        return multiplyTransformed<Base>(out, ofFactor, b, n, work);
    }
    std::size_t const half = (n + 1) / 2;
    std::size_t const rest = n - half;
    bool const negative = absoluteDifference<Base>(out, a, half, a + half, rest) !=
                          absoluteDifference<Base>(out + half, b, half, b + half, rest);
    Limb* const cross = scratch;
    Limb* const middle = scratch + 2 * half;
    multiplyHalves<Base>(cross, out, out + half, half, middle, ofFactor, work);
    multiplyHalves<Base>(out, a, b, half, middle, ofFactor, work);
    multiplyHalves<Base>(out + 2 * half, a + half, b + half, rest, middle, ofFactor, work);

    // The middle is low + high - (low a - high a) * (low b - high b).
    std::copy_n(out, 2 * half, middle);
    middle[2 * half] = addTo<Base>(middle, 2 * half, out + 2 * half, 2 * rest);
    if (negative)
        middle[2 * half] += addTo<Base>(middle, 2 * half, cross, 2 * half);
    else
        middle[2 * half] -= subtractFrom<Base>(middle, 2 * half, cross, 2 * half);
    // Any limbs of the middle beyond the room are 0, since the whole product has that room.
    addTo<Base>(out + half, 2 * n - half, middle, std::min(2 * half + 1, 2 * n - half));
}

/// A walk through the limbs of a number, which appends a chunk to it.
template <class Base>
class Appending;

template <>
class Appending<Binary> {
public:
    explicit Appending(Limb chunk) : carry_(chunk) {}

    Limb next(Limb limb) {
        constexpr Limb factor = 10'000'000'000'000'000'000U;
        WideLimb const product = WideLimb{limb} * factor + carry_;
        carry_ = highLimb(product);
        return lowLimb(product);
    }

private:
    Limb carry_;
};

/// Leaves limbs above the base, as nothing then waits for a carry. The quotient by the base is estimated by
/// less than 1.01 too low, so what is left is below 1.01 times the base; the carry that is added is below
/// 0.91 times the limb that it came from. So limbs stay below 11 times the base, far from the end of a word.
template <>
class Appending<Decimal> {
public:
    explicit Appending(Limb chunk) : carry_(chunk) {}

    Limb next(Limb limb) {
        constexpr Limb estimateFactor = lowLimb((WideLimb{1} << (Decimal::bitsOfChunk + 64)) / Decimal::base);
        Limb const quotient = highLimb(WideLimb{limb} * estimateFactor);
        Limb const result = (limb << Decimal::bitsOfChunk) - quotient * Decimal::base + carry_;
        carry_ = quotient;
        return result;
    }

private:
    Limb carry_;
};

/// Two walks at once, as the carries of one do not wait for those of the other.
template <class Base>
void appendBoth(Limb* a, std::size_t n, Limb first, Limb second) {
    Appending<Base> one(first);
    Appending<Base> other(second);
    for (std::size_t i = 0; i < n; ++i)
        a[i] = other.next(one.next(a[i]));
}

} // namespace

void Binary::append(Limb* a, std::size_t n, Limb first, Limb second) {
    appendBoth<Binary>(a, n, first, second);
}

void Decimal::append(Limb* a, std::size_t n, Limb first, Limb second) {
    appendBoth<Decimal>(a, n, first, second);
}

void Decimal::settle(Limb* a, std::size_t n) {
    Limb carry = 0;
    for (std::size_t i = 0; i < n; ++i) {
        Limb const limb = a[i] + carry;
        carry = limb / base;
        a[i] = limb % base;
    }
}

template <class Base>
Limb addTo(Limb* a, std::size_t n, Limb const* b, std::size_t m) {
    Limb carry = 0;
    std::size_t i = 0;
    for (; i < m; ++i)
        a[i] = Base::add(a[i], b[i], carry);
    for (; carry != 0 && i < n; ++i)
        a[i] = Base::add(a[i], 0, carry);
    return carry;
}

template <class Base>
Limb subtractFrom(Limb* a, std::size_t n, Limb const* b, std::size_t m) {
    Limb borrow = 0;
    std::size_t i = 0;
    for (; i < m; ++i)
        a[i] = Base::subtract(a[i], b[i], borrow);
    for (; borrow != 0 && i < n; ++i)
        a[i] = Base::subtract(a[i], 0, borrow);
    return borrow;
}

template <class Base>
Multiplier<Base>::Multiplier(std::vector<Limb> factor)
    : factor_(std::move(factor)), ofFactor_(std::min(2 * piecesOfLimb * factor_.size(), Spectrum::longest)),
      work_(ofFactor_.size()), scratch_(isTransformed() ? 0 : scratchOfHalves(factor_.size())) {
    if (!isTransformed()) return;
    setToPieces<Base>(ofFactor_, factor_.data(), factor_.size());
    ofFactor_.transform();
}

template <class Base>
void Multiplier<Base>::multiply(Limb* out, Limb const* b) {
    if (isTransformed()) return multiplyTransformed<Base>(out, ofFactor_, b, factor_.size(), work_);
    multiplyHalves<Base>(out, factor_.data(), b, factor_.size(), scratch_.data(), ofFactor_, work_);
}

template <class Base>
std::vector<Limb> Multiplier<Base>::square() {
    std::vector<Limb> result(2 * factor_.size());
    multiply(result.data(), factor_.data());
    return result;
}

template Limb addTo<Binary>(Limb*, std::size_t, Limb const*, std::size_t);
template Limb addTo<Decimal>(Limb*, std::size_t, Limb const*, std::size_t);
template Limb subtractFrom<Binary>(Limb*, std::size_t, Limb const*, std::size_t);
template Limb subtractFrom<Decimal>(Limb*, std::size_t, Limb const*, std::size_t);
template class Multiplier<Binary>;
template class Multiplier<Decimal>;

} // namespace kelcl::limbs
