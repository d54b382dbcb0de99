// The decimal text of a floating-point number, as `printf` writes it with `%.15g`.
#ifndef KELCL_BYTES_REAL_NUMBER_H
#define KELCL_BYTES_REAL_NUMBER_H

#include <cstddef>

namespace kelcl {

/// Space for every text that `writeReal` writes, and for what it writes past the end.
inline constexpr std::size_t realTextSpace = 48;

/// A text that was written; its length is 0 where it is left to `printf`.
struct RealText {
    std::size_t length;
    bool hasPoint; ///< Whether there is a decimal point in it, as ".".
};

/// Writes the number with up to 15 significant digits into `realTextSpace` bytes, without a NUL.
///
/// Left to `printf` are numbers that are not finite or are very small, ties, and any rounding but to the
/// nearest.
RealText writeReal(char* out, double number);

} // namespace kelcl

#endif
