// Multiplication (schoolbook, and Karatsuba's for long numbers) and division (schoolbook, and the recursive
// one of Burnikel and Ziegler, which makes it a matter of multiplications, for long numbers).

#include "string/decimal_limbs.h"

#include <algorithm>
#include <memory>

namespace kelcl::limbs {

namespace {

// Below these sizes, found by measurement, the plain methods are faster.
constexpr std::size_t karatsubaSize = 32;
constexpr std::size_t recursiveDivisionSize = 48;

using Scratch = std::unique_ptr<Limb[]>;

Scratch scratchOf(std::size_t n) { return std::make_unique_for_overwrite<Limb[]>(n); }

Limb addWithCarry(Limb a, Limb b, Limb& carry) {
    WideLimb const sum = WideLimb{a} + b + carry;
    carry = highLimb(sum);
    return lowLimb(sum);
}

Limb subtractWithBorrow(Limb a, Limb b, Limb& borrow) {
    WideLimb const difference = WideLimb{a} - b - borrow;
    borrow = highLimb(difference) & 1U;
    return lowLimb(difference);
}

/// a[0..n) += b[0..n) * factor; returns the carry.
Limb addProduct(Limb* a, Limb const* b, std::size_t n, Limb factor) {
    Limb carry = 0;
    for (std::size_t i = 0; i < n; ++i) {
        WideLimb const sum = WideLimb{b[i]} * factor + a[i] + carry;
        a[i] = lowLimb(sum);
        carry = highLimb(sum);
    }
    return carry;
}

/// a[0..n) -= b[0..n) * factor; returns the borrow.
Limb subtractProduct(Limb* a, Limb const* b, std::size_t n, Limb factor) {
    Limb borrow = 0;
    for (std::size_t i = 0; i < n; ++i) {
        WideLimb const product = WideLimb{b[i]} * factor + borrow;
        borrow = highLimb(product) + (a[i] < lowLimb(product) ? 1 : 0);
        a[i] -= lowLimb(product);
    }
    return borrow;
}

void multiplySchoolbook(Limb* out, Limb const* a, std::size_t n, Limb const* b, std::size_t m) {
    std::fill_n(out, n, Limb{0});
    for (std::size_t i = 0; i < m; ++i)
        out[n + i] = addProduct(out + i, a, n, b[i]);
}

/// out[0..n) = |a[0..n) - b[0..m)|, m at most n; returns whether the difference is negative.
bool absoluteDifference(Limb* out, Limb const* a, std::size_t n, Limb const* b, std::size_t m) {
    std::copy_n(a, n, out);
    if (subtractFrom(out, n, b, m) == 0) return false;
    Limb carry = 1;
    for (std::size_t i = 0; i < n; ++i)
        out[i] = addWithCarry(~out[i], 0, carry);
    return true;
}

/// The scratch that multiplyKaratsuba needs for n limbs: 4 * half + 1 at each of its levels, summed up.
constexpr std::size_t karatsubaScratch(std::size_t n) { return 4 * n + 8 * bitsOfLimb; }

/// out[0..2n) = a[0..n) * b[0..n) with three products of half the length instead of four.
void multiplyKaratsuba(Limb* out, Limb const* a, Limb const* b, std::size_t n, Limb* scratch) {
    if (n < karatsubaSize) return multiplySchoolbook(out, a, n, b, n);
    std::size_t const half = (n + 1) / 2;
    std::size_t const rest = n - half;
    bool const negative = absoluteDifference(out, a, half, a + half, rest) !=
                          absoluteDifference(out + half, b, half, b + half, rest);
    Limb* const cross = scratch;
    Limb* const middle = scratch + 2 * half;
    multiplyKaratsuba(cross, out, out + half, half, middle);
    multiplyKaratsuba(out, a, b, half, middle);
    multiplyKaratsuba(out + 2 * half, a + half, b + half, rest, middle);

    // The middle is low + high - (low a - high a) * (low b - high b).
    std::copy_n(out, 2 * half, middle);
    middle[2 * half] = addTo(middle, 2 * half, out + 2 * half, 2 * rest);
    if (negative)
        middle[2 * half] += addTo(middle, 2 * half, cross, 2 * half);
    else
        middle[2 * half] -= subtractFrom(middle, 2 * half, cross, 2 * half);
    // Any limbs of the middle beyond the room are 0, since the whole product has that room.
    addTo(out + half, 2 * n - half, middle, std::min(2 * half + 1, 2 * n - half));
}

/// The quotient of a by b limb by limb from the top, each estimated by the top two limbs of b (Knuth's
/// algorithm D).
Limb divideSchoolbook(Limb* q, std::size_t m, Limb* a, Limb const* b, std::size_t n) {
    LimbDivisor const top(b[n - 1]);
    Limb high = 0; // the quotient beyond q
    if (!std::lexicographical_compare(std::reverse_iterator(a + m + n), std::reverse_iterator(a + m),
                                      std::reverse_iterator(b + n), std::reverse_iterator(b))) {
        subtractFrom(a + m, n, b, n);
        high = 1;
    }
    for (std::size_t i = m; i-- > 0;) {
        Limb estimate = ~Limb{0};
        if (a[i + n] < b[n - 1]) {
            auto const [quotient, remainder] = top.divide(a[i + n], a[i + n - 1]);
            estimate = quotient;
            if (n > 1) {
                WideLimb left = WideLimb{remainder} << bitsOfLimb | a[i + n - 2];
                WideLimb const step = WideLimb{b[n - 1]} << bitsOfLimb;
                while (WideLimb{estimate} * b[n - 2] > left) {
                    --estimate;
                    left += step;
                    if (left < step) break;
                }
            }
        }
        Limb const borrow = subtractProduct(a + i, b, n, estimate);
        Limb above = a[i + n] - borrow; // 0, or all ones while the estimate is too large
        while (above != 0) {
            --estimate;
            above += addTo(a + i, n, b, n);
        }
        a[i + n] = 0;
        q[i] = estimate;
    }
    return high;
}

Limb divideBalanced(Limb* q, std::size_t m, Limb* a, Limb const* b, std::size_t n, Limb* product);

/// One half of a recursive division: divides by the upper limbs of b only, all but the lowest k, then takes
/// the lowest ones into account, which makes the quotient smaller by a few at most. Returns its top limb.
Limb divideByUpperLimbs(Limb* q, std::size_t m, Limb* a, Limb const* b, std::size_t n, std::size_t k,
                        Limb* product) {
    Limb top = divideBalanced(q, m, a + k, b + k, n - k, product);
    multiply(product, q, m, b, k);
    Limb borrow = subtractFrom(a, n, product, m + k);
    if (top != 0) borrow += subtractFrom(a + m, n - m, b, k);
    Limb const one = 1;
    while (borrow != 0) {
        top -= subtractFrom(q, m, &one, 1);
        borrow -= addTo(a, n, b, n);
    }
    return top;
}

/// The division for m at most n. `product` has room for m limbs.
Limb divideBalanced(Limb* q, std::size_t m, Limb* a, Limb const* b, std::size_t n, Limb* product) {
    if (m < recursiveDivisionSize) return divideSchoolbook(q, m, a, b, n);
    std::size_t const k = m / 2;
    Limb const top = divideByUpperLimbs(q + k, m - k, a + k, b, n, k, product);
    divideByUpperLimbs(q, k, a, b, n, k, product);
    return top;
}

} // namespace

Limb addTo(Limb* a, std::size_t n, Limb const* b, std::size_t m) {
    Limb carry = 0;
    std::size_t i = 0;
    for (; i < m; ++i)
        a[i] = addWithCarry(a[i], b[i], carry);
    for (; carry != 0 && i < n; ++i)
        a[i] = addWithCarry(a[i], 0, carry);
    return carry;
}

Limb subtractFrom(Limb* a, std::size_t n, Limb const* b, std::size_t m) {
    Limb borrow = 0;
    std::size_t i = 0;
    for (; i < m; ++i)
        a[i] = subtractWithBorrow(a[i], b[i], borrow);
    for (; borrow != 0 && i < n; ++i)
        a[i] = subtractWithBorrow(a[i], 0, borrow);
    return borrow;
}

Limb multiplyBy(Limb* a, std::size_t n, Limb factor, Limb addend) {
    Limb carry = addend;
    for (std::size_t i = 0; i < n; ++i) {
        WideLimb const product = WideLimb{a[i]} * factor + carry;
        a[i] = lowLimb(product);
        carry = highLimb(product);
    }
    return carry;
}

void multiply(Limb* out, Limb const* a, std::size_t n, Limb const* b, std::size_t m) {
    if (n < m) {
        std::swap(a, b);
        std::swap(n, m);
    }
    if (m < karatsubaSize) return multiplySchoolbook(out, a, n, b, m);
    Scratch const scratch = scratchOf(karatsubaScratch(m) + 2 * m);
    multiplyKaratsuba(out, a, b, m, scratch.get());
    if (n == m) return;
    // The longer number in stretches of the shorter one's length, and what is left by the same method.
    Limb* const product = scratch.get() + karatsubaScratch(m);
    std::fill_n(out + 2 * m, n - m, Limb{0});
    std::size_t i = m;
    for (; n - i >= m; i += m) {
        multiplyKaratsuba(product, a + i, b, m, scratch.get());
        addTo(out + i, n + m - i, product, 2 * m);
    }
    if (i < n) {
        multiply(product, b, m, a + i, n - i);
        addTo(out + i, n + m - i, product, n + m - i);
    }
}

Limb divide(Limb* q, std::size_t m, Limb* a, Limb const* b, std::size_t n) {
    if (std::min(m, n) < recursiveDivisionSize) return divideSchoolbook(q, m, a, b, n);
    Scratch const product = scratchOf(n);
    // A quotient longer than the divisor is made in stretches, the odd one first.
    std::size_t const first = m % n != 0 ? m % n : n;
    std::size_t i = m - first;
    Limb const top = divideBalanced(q + i, first, a + i, b, n, product.get());
    while (i > 0) {
        i -= n;
        divideBalanced(q + i, n, a + i, b, n, product.get());
    }
    return top;
}

void shiftLeft(Limb* out, std::size_t m, Limb const* a, std::size_t n, std::size_t bits) {
    std::size_t const whole = bits / bitsOfLimb;
    std::size_t const part = bits % bitsOfLimb;
    auto const limbAt = [=](std::size_t i) { return i >= whole && i - whole < n ? a[i - whole] : 0; };
    Limb below = 0;
    for (std::size_t i = 0; i < m; ++i) {
        Limb const limb = limbAt(i);
        out[i] = part == 0 ? limb : limb << part | below >> (bitsOfLimb - part);
        below = limb;
    }
}

void shiftRight(Limb* out, std::size_t m, Limb const* a, std::size_t n, std::size_t bits) {
    std::size_t const whole = bits / bitsOfLimb;
    std::size_t const part = bits % bitsOfLimb;
    auto const limbAt = [=](std::size_t i) { return i + whole < n ? a[i + whole] : 0; };
    for (std::size_t i = 0; i < m; ++i)
        out[i] = part == 0 ? limbAt(i) : limbAt(i) >> part | limbAt(i + 1) << (bitsOfLimb - part);
}

} // namespace kelcl::limbs
