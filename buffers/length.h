// Lengths of texts: the limit, and sums and products that raise the overflow failure.
#ifndef KELCL_BUFFERS_LENGTH_H
#define KELCL_BUFFERS_LENGTH_H

#include <kelcl/detail/library_buffers.h>

#include <cstddef>
#include <cstdint>

namespace kelcl {

static_assert(sizeof(std::size_t) == 8, "kelcl needs a 64-bit machine: it adds lengths of 32 bits in "
                                        "std::size_t, and its objects have the sizes that "
                                        "they have there");

/// A length that cannot be told from "to the end".
inline constexpr unsigned int unboundedLength = 0xFFFFFFFF;

/// Raises DInvalidRequest, message 1010: a text would become too long.
[[noreturn]] void raiseLengthOverflow();

/// The sum, where it stays below 0xFFFFFFFF.
inline unsigned int lengthSum(unsigned int left, unsigned int right) {
    if (left >= unboundedLength - right) raiseLengthOverflow();
    return left + right;
}

/// The product, where it stays below 0xFFFFFFFF.
inline unsigned int lengthProduct(unsigned int left, unsigned int right) {
    std::uint64_t const product = std::uint64_t{left} * right;
    if (product >= unboundedLength) raiseLengthOverflow();
    return static_cast<unsigned int>(product);
}

} // namespace kelcl

#endif
