// Decimal notation of unsigned numbers of any length, held as big-endian bytes, both ways.
// It knows numbers only: how many zeros a user wants to see in front is not decided here.
#ifndef KELCL_BYTES_DECIMAL_H
#define KELCL_BYTES_DECIMAL_H

#include <cstddef>
#include <string_view>

namespace kelcl {

/// The room that writeDecimal needs for a number of so many bytes: at least its digits, few more.
std::size_t decimalDigitsBound(std::size_t bytes);

/// Writes the digits of the big-endian number without leading zeros ("0" for zero, and for no bytes at all)
/// and returns how many. `out` has decimalDigitsBound(bytes.size()) room and does not overlap the bytes.
/// Throws std::bad_alloc, or what the new-handler throws, when a long number's scratch memory cannot be had.
std::size_t writeDecimal(char* out, std::string_view bytes);

/// The room that readDecimal needs for so many digits: at least the bytes of the number, few more.
std::size_t bytesBound(std::size_t digits);

/// Writes the big-endian bytes of the number without leading zero bytes (one zero byte for zero, and for no
/// digits at all) and returns how many. All of the input must be '0' to '9'. `out` has
/// bytesBound(digits.size()) room and does not overlap the digits. Throws as writeDecimal does.
std::size_t readDecimal(char* out, std::string_view digits);

} // namespace kelcl

#endif
