// Whether two stretches of bytes are the same.
#ifndef KELCL_BYTES_BYTE_COMPARE_H
#define KELCL_BYTES_BYTE_COMPARE_H

#include "bytes/dispatch.h"

#include <cstddef>
#include <cstdint>
#include <cstring>

namespace kelcl {

/// Compares n bytes, from the size of a word to twice as many, by two words that meet or overlap.
template <class Word>
KELCL_INLINED bool sameByTwoWords(char const* left, char const* right, std::size_t n) {
    Word leftFirst, leftLast, rightFirst, rightLast;
    std::memcpy(&leftFirst, left, sizeof(Word));
    std::memcpy(&rightFirst, right, sizeof(Word));
    std::memcpy(&leftLast, left + n - sizeof(Word), sizeof(Word));
    std::memcpy(&rightLast, right + n - sizeof(Word), sizeof(Word));
    return ((leftFirst ^ rightFirst) | (leftLast ^ rightLast)) == 0;
}

/// Whether n bytes are the same. A few are compared without a call.
KELCL_INLINED bool sameBytes(char const* left, char const* right, std::size_t n) {
    if (n > 16) return std::memcmp(left, right, n) == 0;
    if (n >= 8) return sameByTwoWords<std::uint64_t>(left, right, n);
    if (n >= 4) return sameByTwoWords<std::uint32_t>(left, right, n);
    if (n >= 2) return sameByTwoWords<std::uint16_t>(left, right, n);
    return n == 0 || *left == *right;
}

} // namespace kelcl

#endif
