// Products of long rows of small whole numbers, by way of a fast Fourier transform of doubles that is exact
// once its results are rounded. Of numbers with digits, and of carries, nothing is known here.
#ifndef KELCL_BYTES_SPECTRUM_H
#define KELCL_BYTES_SPECTRUM_H

#include <cfenv>
#include <cstddef>
#include <memory>

namespace kelcl {

/// A row of coefficients, of a polynomial that is, or what the transform has made of it. The product of two
/// rows is that of their transforms, place by place, transformed back:
///
///     Spectrum a(n + m), b(n + m);
///     // set coefficients [0, n) of a and [0, m) of b, and all others to 0
///     a.transform();
///     b.transform();
///     a.multiplyBy(b);
///     a.transformBack();   // a's coefficients are those of the product, each to be rounded
///
/// Every coefficient of the product is less than 1/4 away from a whole number if no row has more than half of
/// `longest` coefficients other than 0, all of them at most 2^15 in absolute value but for one of up to 2^16,
/// and if an ExactArithmetic lives meanwhile. spectrum.cpp tells why.
class Spectrum {
public:
    /// The most coefficients that a product may have.
    static constexpr std::size_t longest = 12288;

    /// Room for a product of up to so many coefficients. May throw std::bad_alloc.
    explicit Spectrum(std::size_t coefficients);

    /// How many coefficients there are: as many as asked for, or some more.
    std::size_t size() const { return 2 * points_; }
    double* coefficients() { return values_.get(); }
    double const* coefficients() const { return values_.get(); }

    void transform();
    void multiplyBy(Spectrum const& other);
    void transformBack();

private:
    double* real() { return values_.get(); }
    double* imaginary() { return values_.get() + points_; }

    std::size_t points_;               ///< 2^k or 3 * 2^k: half the coefficients.
    std::unique_ptr<double[]> values_; ///< After the transform: the real parts, then the imaginary parts.
};

/// For its life, arithmetic of doubles rounds to the nearest and never traps, whatever the host has set; that
/// holds again afterwards, and the host sees no flags of ours.
class ExactArithmetic {
public:
    ExactArithmetic() {
        std::feholdexcept(&ofHost_);
        std::fesetround(FE_TONEAREST);
    }
    ExactArithmetic(ExactArithmetic const&) = delete;
    ExactArithmetic& operator=(ExactArithmetic const&) = delete;
    ~ExactArithmetic() { std::fesetenv(&ofHost_); }

private:
    std::fenv_t ofHost_;
};

} // namespace kelcl

#endif
