// The numbers 0 to 99 in two decimal digits, for writing two digits at once.
#ifndef KELCL_BYTES_DIGIT_PAIRS_H
#define KELCL_BYTES_DIGIT_PAIRS_H

#include <array>
#include <cstddef>

namespace kelcl {

/// The digits of n at 2 n.
inline constexpr auto digitPairs = [] {
    std::array<char, 200> pairs{};
    for (std::size_t i = 0; i < 100; ++i) {
        pairs[2 * i] = static_cast<char>('0' + i / 10);
        pairs[2 * i + 1] = static_cast<char>('0' + i % 10);
    }
    return pairs;
}();

} // namespace kelcl

#endif
