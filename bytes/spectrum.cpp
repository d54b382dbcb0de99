// The transform. A row of 2n real coefficients is one of n complex ones, since t^2n + 1, modulo which rows
// are multiplied, has the factor t^n - i: coefficient k + n is the imaginary part beside coefficient k. Then
// the modulus is split again and again,
//
//     t^2m - r^2 = (t^m - r) (t^m + r),
//
// until what is left of the row are its values at n points. A value comes to stand where the coefficients
// were that it was made of, so nothing is sorted; transforming back undoes the steps in reverse order.
//
// Why rounding is exact: a step multiplies by a root, whose own error is below 0.8 eps, with eps = 2^-53,
// which costs sqrt(5) eps, and adds, which costs eps, relative to the norm of the row, where norms are
// preserved. Rows of 12288 coefficients take 13 steps, counting the threefold one as two; three transforms
// and the product in between stay below 41 * 4.1 eps < 2^-45.6 of the product of both norms. With 6144
// coefficients of up to 2^15 in each row that product is 6144 * 2^30 < 2^42.6, so each coefficient is off by
// less than 2^-3.

#include "bytes/spectrum.h"

#include "bytes/dispatch.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <bit>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <new>

namespace kelcl {

namespace {

struct Root {
    double real;
    double imaginary;
};

/// The roots by which t^n - e^(i phi) is split, for all n up to `size` that are powers of two: roots[1] is
/// e^(i phi / 2); below t^m - roots[k]^2, (t^m - roots[k]) is split by roots[2k], (t^m + roots[k]) by
/// roots[2k + 1].
template <std::size_t size>
class Roots {
public:
    /// phi is so many twelfths of the circle.
    explicit Roots(int twelfths) {
        std::array<double, size> turns; // in circles, in [0, 1/2)
        turns[1] = twelfths / 24.0;
        for (std::size_t k = 2; k < size; ++k)
            turns[k] = turns[k / 2] / 2 + (k % 2 != 0 ? 0.25 : 0);
        constexpr double circle = 6.283185307179586476925;
        for (std::size_t k = 1; k < size; ++k)
            roots_[k] = {std::cos(turns[k] * circle), std::sin(turns[k] * circle)};
    }
    Root const* data() const { return roots_.data(); }

private:
    std::array<Root, size> roots_{};
};

/// Splitting ends with rows of so many coefficients, which are multiplied in longhand: their short loops are
/// over the coefficients, where further splittings would have none.
constexpr std::size_t blockSize = 4;

constexpr std::size_t maxBlocks = Spectrum::longest / 2 / blockSize;

/// Made when first needed, by whichever thread comes first, and kept. Published without a lock, as a process
/// may fork at any time; from std::malloc, as a host may still use strings while static objects are
/// destroyed.
template <std::size_t size, int twelfths>
Root const* roots() {
    static std::atomic<Roots<size> const*> known = nullptr;
    if (Roots<size> const* const made = known.load(std::memory_order_acquire)) return made->data();
    void* const memory = std::malloc(sizeof(Roots<size>));
    if (memory == nullptr) throw std::bad_alloc();
    auto const* const own = ::new (memory) Roots<size>(twelfths);
    Roots<size> const* winner = nullptr;
    if (known.compare_exchange_strong(winner, own)) return own->data();
    std::free(memory);
    return winner->data();
}

Root const* rootsOfQuarter() { return roots<std::bit_floor(maxBlocks), 3>(); }

/// Where the modulus t^3m - i is split first into t^m - e^(i phi), with phi a twelfth of the circle, five,
/// nine.
std::array<Root const*, 3> rootsOfThirds() {
    constexpr std::size_t size = maxBlocks / 3;
    return {roots<size, 1>(), roots<size, 5>(), roots<size, 9>()};
}

// The loops take each stretch of a row by itself: so the compiler knows that they do not overlap.
#define KELCL_STRETCH double* __restrict

/// One splitting, of 2m coefficients.
KELCL_INLINED void splitInTwo(KELCL_STRETCH re0, KELCL_STRETCH im0, KELCL_STRETCH re1, KELCL_STRETCH im1,
                              std::size_t m, Root r) {
    for (std::size_t j = 0; j < m; ++j) {
        double const re = re1[j] * r.real - im1[j] * r.imaginary;
        double const im = re1[j] * r.imaginary + im1[j] * r.real;
        re1[j] = re0[j] - re;
        im1[j] = im0[j] - im;
        re0[j] += re;
        im0[j] += im;
    }
}

KELCL_INLINED void joinTwo(KELCL_STRETCH re0, KELCL_STRETCH im0, KELCL_STRETCH re1, KELCL_STRETCH im1,
                           std::size_t m, Root r) {
    for (std::size_t j = 0; j < m; ++j) {
        double const re = re0[j] - re1[j];
        double const im = im0[j] - im1[j];
        re0[j] += re1[j];
        im0[j] += im1[j];
        re1[j] = re * r.real + im * r.imaginary;
        im1[j] = im * r.real - re * r.imaginary;
    }
}

/// Two splittings at once, of 4m coefficients: by the root `outer`, then the halves by `inner` and i * inner.
KELCL_INLINED void splitInFour(KELCL_STRETCH re0, KELCL_STRETCH im0, KELCL_STRETCH re1, KELCL_STRETCH im1,
                               KELCL_STRETCH re2, KELCL_STRETCH im2, KELCL_STRETCH re3, KELCL_STRETCH im3,
                               std::size_t m, Root outer, Root inner) {
    for (std::size_t j = 0; j < m; ++j) {
        double const a2re = re2[j] * outer.real - im2[j] * outer.imaginary;
        double const a2im = re2[j] * outer.imaginary + im2[j] * outer.real;
        double const a3re = re3[j] * outer.real - im3[j] * outer.imaginary;
        double const a3im = re3[j] * outer.imaginary + im3[j] * outer.real;
        double const b0re = re0[j] + a2re;
        double const b0im = im0[j] + a2im;
        double const b1re = re1[j] + a3re;
        double const b1im = im1[j] + a3im;
        double const b2re = re0[j] - a2re;
        double const b2im = im0[j] - a2im;
        double const b3re = re1[j] - a3re;
        double const b3im = im1[j] - a3im;
        double const c1re = b1re * inner.real - b1im * inner.imaginary;
        double const c1im = b1re * inner.imaginary + b1im * inner.real;
        double const c3re = b3re * inner.real - b3im * inner.imaginary;
        double const c3im = b3re * inner.imaginary + b3im * inner.real;
        re0[j] = b0re + c1re;
        im0[j] = b0im + c1im;
        re1[j] = b0re - c1re;
        im1[j] = b0im - c1im;
        re2[j] = b2re - c3im;
        im2[j] = b2im + c3re;
        re3[j] = b2re + c3im;
        im3[j] = b2im - c3re;
    }
}

KELCL_INLINED void joinFour(KELCL_STRETCH re0, KELCL_STRETCH im0, KELCL_STRETCH re1, KELCL_STRETCH im1,
                            KELCL_STRETCH re2, KELCL_STRETCH im2, KELCL_STRETCH re3, KELCL_STRETCH im3,
                            std::size_t m, Root outer, Root inner) {
    for (std::size_t j = 0; j < m; ++j) {
        double const b0re = re0[j] + re1[j];
        double const b0im = im0[j] + im1[j];
        double const c1re = re0[j] - re1[j];
        double const c1im = im0[j] - im1[j];
        double const b2re = re2[j] + re3[j];
        double const b2im = im2[j] + im3[j];
        double const c3re = im2[j] - im3[j];
        double const c3im = re3[j] - re2[j];
        double const b1re = c1re * inner.real + c1im * inner.imaginary;
        double const b1im = c1im * inner.real - c1re * inner.imaginary;
        double const b3re = c3re * inner.real + c3im * inner.imaginary;
        double const b3im = c3im * inner.real - c3re * inner.imaginary;
        double const a2re = b0re - b2re;
        double const a2im = b0im - b2im;
        double const a3re = b1re - b3re;
        double const a3im = b1im - b3im;
        re0[j] = b0re + b2re;
        im0[j] = b0im + b2im;
        re1[j] = b1re + b3re;
        im1[j] = b1im + b3im;
        re2[j] = a2re * outer.real + a2im * outer.imaginary;
        im2[j] = a2im * outer.real - a2re * outer.imaginary;
        re3[j] = a3re * outer.real + a3im * outer.imaginary;
        im3[j] = a3im * outer.real - a3re * outer.imaginary;
    }
}

constexpr double rootOf3 = 1.732050807568877293527;

/// The splitting of t^3m - i by the cube roots of i, which are (sqrt(3) + i) / 2, (-sqrt(3) + i) / 2 and -i.
KELCL_INLINED void splitInThree(KELCL_STRETCH re0, KELCL_STRETCH im0, KELCL_STRETCH re1, KELCL_STRETCH im1,
                                KELCL_STRETCH re2, KELCL_STRETCH im2, std::size_t m) {
    for (std::size_t j = 0; j < m; ++j) {
        double const tre = re2[j] - im1[j]; // i * a1 + a2
        double const tim = im2[j] + re1[j];
        double const dre = rootOf3 / 2 * (re1[j] - im2[j]); // sqrt(3) / 2 * (a1 + i * a2)
        double const dim = rootOf3 / 2 * (im1[j] + re2[j]);
        double const sre = re0[j] + tre / 2;
        double const sim = im0[j] + tim / 2;
        re2[j] = re0[j] - tre;
        im2[j] = im0[j] - tim;
        re0[j] = sre + dre;
        im0[j] = sim + dim;
        re1[j] = sre - dre;
        im1[j] = sim - dim;
    }
}

/// Gives three times the coefficients, as the others give two and four times.
KELCL_INLINED void joinThree(KELCL_STRETCH re0, KELCL_STRETCH im0, KELCL_STRETCH re1, KELCL_STRETCH im1,
                             KELCL_STRETCH re2, KELCL_STRETCH im2, std::size_t m) {
    for (std::size_t j = 0; j < m; ++j) {
        double const sre = re0[j] + re1[j];
        double const sim = im0[j] + im1[j];
        double const tre = sre - 2 * re2[j]; // 3 * (i * a1 + a2)
        double const tim = sim - 2 * im2[j];
        double const vre = rootOf3 * (re0[j] - re1[j]); // 3 * (a1 + i * a2)
        double const vim = rootOf3 * (im0[j] - im1[j]);
        re0[j] = sre + re2[j];
        im0[j] = sim + im2[j];
        re1[j] = (vre + tim) / 2;
        im1[j] = (vim - tre) / 2;
        re2[j] = (tre + vim) / 2;
        im2[j] = (tim - vre) / 2;
    }
}

/// Takes splitInFour or joinFour as a step for each of `blocks` blocks, which share out n coefficients.
template <auto step>
KELCL_INLINED void eachInFour(double* re, double* im, std::size_t n, std::size_t blocks, Root const* roots) {
    std::size_t const m = n / blocks / 4;
    for (std::size_t b = 0; b < blocks; ++b) {
        double* const r = re + b * 4 * m;
        double* const i = im + b * 4 * m;
        step(r, i, r + m, i + m, r + 2 * m, i + 2 * m, r + 3 * m, i + 3 * m, m, roots[blocks + b],
             roots[2 * (blocks + b)]);
    }
}

/// Splits down to blocks of four, where n is a power of two.
KELCL_INLINED void splitAll(double* re, double* im, std::size_t n, Root const* roots) {
    std::size_t blocks = 1;
    if (std::countr_zero(n) % 2 != 0) {
        splitInTwo(re, im, re + n / 2, im + n / 2, n / 2, roots[1]);
        blocks = 2;
    }
    for (; n / blocks > blockSize; blocks *= 4)
        eachInFour<splitInFour>(re, im, n, blocks, roots);
}

KELCL_INLINED void joinAll(double* re, double* im, std::size_t n, Root const* roots) {
    for (std::size_t blocks = n / blockSize / 4; blocks > 0; blocks /= 4)
        eachInFour<joinFour>(re, im, n, blocks, roots);
    if (std::countr_zero(n) % 2 != 0) joinTwo(re, im, re + n / 2, im + n / 2, n / 2, roots[1]);
}

/// The coefficients of a block. Named as one, since compilers make of loops over arrays, whose stretches
/// overlap, stores and loads that wait for each other.
using Four __attribute__((vector_size(blockSize * sizeof(double)))) = double;

KELCL_INLINED void load(Four& to, double const* from) { std::memcpy(&to, from, sizeof to); }

/// The coefficients times t, t^2 and t^3 modulo t^4 - r, where `wrapped` are those times r.
struct Shifted {
    Four by0, by1, by2, by3;

    KELCL_INLINED Shifted(Four const& b, Four const& wrapped)
        : by0(b), by1(__builtin_shufflevector(wrapped, b, 3, 4, 5, 6)),
          by2(__builtin_shufflevector(wrapped, b, 2, 3, 4, 5)),
          by3(__builtin_shufflevector(wrapped, b, 1, 2, 3, 4)) {}
};

/// out = a * b modulo t^4 - r, all times `scale`.
KELCL_INLINED void multiplyBlock(double* re, double* im, double const* otherRe, double const* otherIm, Root r,
                                 double scale) {
    Four bRe, bIm, aRe, aIm;
    load(bRe, otherRe);
    load(bIm, otherIm);
    load(aRe, re);
    load(aIm, im);
    aRe *= scale;
    aIm *= scale;
    Shifted const real(bRe, bRe * r.real - bIm * r.imaginary);
    Shifted const imaginary(bIm, bRe * r.imaginary + bIm * r.real);
    Four const sumRe =
        aRe[0] * real.by0 - aIm[0] * imaginary.by0 + (aRe[1] * real.by1 - aIm[1] * imaginary.by1) +
        (aRe[2] * real.by2 - aIm[2] * imaginary.by2) + (aRe[3] * real.by3 - aIm[3] * imaginary.by3);
    Four const sumIm =
        aRe[0] * imaginary.by0 + aIm[0] * real.by0 + (aRe[1] * imaginary.by1 + aIm[1] * real.by1) +
        (aRe[2] * imaginary.by2 + aIm[2] * real.by2) + (aRe[3] * imaginary.by3 + aIm[3] * real.by3);
    std::memcpy(re, &sumRe, sizeof sumRe);
    std::memcpy(im, &sumIm, sizeof sumIm);
}

KELCL_INLINED void multiplyAll(double* re, double* im, double const* otherRe, double const* otherIm,
                               std::size_t n, Root const* roots, double scale) {
    std::size_t const blocks = n / blockSize;
    for (std::size_t b = 0; b < blocks; ++b) {
        Root r = roots[(blocks + b) / 2];
        if (b % 2 != 0) r = {-r.real, -r.imaginary};
        std::size_t const at = b * blockSize;
        multiplyBlock(re + at, im + at, otherRe + at, otherIm + at, r, scale);
    }
}

KELCL_INLINED void splitAllOfThirds(double* re, double* im, std::size_t n,
                                    std::array<Root const*, 3> const* roots) {
    std::size_t const m = n / 3;
    splitInThree(re, im, re + m, im + m, re + 2 * m, im + 2 * m, m);
    for (std::size_t k = 0; k < 3; ++k)
        splitAll(re + k * m, im + k * m, m, (*roots)[k]);
}

KELCL_INLINED void joinAllOfThirds(double* re, double* im, std::size_t n,
                                   std::array<Root const*, 3> const* roots) {
    std::size_t const m = n / 3;
    for (std::size_t k = 0; k < 3; ++k)
        joinAll(re + k * m, im + k * m, m, (*roots)[k]);
    joinThree(re, im, re + m, im + m, re + 2 * m, im + 2 * m, m);
}

#undef KELCL_STRETCH

std::size_t pointsFor(std::size_t coefficients) {
    std::size_t const power = std::max(std::bit_ceil((coefficients + 1) / 2), 8 * blockSize);
    std::size_t const less = power / 4 * 3;
    return 2 * less >= coefficients ? less : power;
}

} // namespace

Spectrum::Spectrum(std::size_t coefficients)
    : points_(pointsFor(coefficients)), values_(std::make_unique_for_overwrite<double[]>(2 * points_)) {}

void Spectrum::transform() {
    if (std::has_single_bit(points_))
        return multiversioned<splitAll>(real(), imaginary(), points_, rootsOfQuarter());
    auto const roots = rootsOfThirds();
    multiversioned<splitAllOfThirds>(real(), imaginary(), points_, &roots);
}

void Spectrum::multiplyBy(Spectrum const& other) {
    double const* const re = other.values_.get();
    double const* const im = re + points_;
    // Joining two makes values twice as large as they are, and so on.
    double const scale = static_cast<double>(blockSize) / static_cast<double>(points_);
    if (std::has_single_bit(points_))
        return multiversioned<multiplyAll>(real(), imaginary(), re, im, points_, rootsOfQuarter(), scale);
    std::size_t const m = points_ / 3;
    auto const roots = rootsOfThirds();
    for (std::size_t k = 0; k < 3; ++k)
        multiversioned<multiplyAll>(real() + k * m, imaginary() + k * m, re + k * m, im + k * m, m, roots[k],
                                    scale);
}

void Spectrum::transformBack() {
    if (std::has_single_bit(points_))
        return multiversioned<joinAll>(real(), imaginary(), points_, rootsOfQuarter());
    auto const roots = rootsOfThirds();
    multiversioned<joinAllOfThirds>(real(), imaginary(), points_, &roots);
}

} // namespace kelcl
