// Hexadecimal and binary notation of bytes, both ways, and the checks for plain digits.
// Decimal notation, which needs arithmetic of any length, is in decimal.h.
#ifndef KELCL_BYTES_DIGITS_H
#define KELCL_BYTES_DIGITS_H

#include <cstddef>
#include <string_view>

namespace kelcl {

/// Whether every byte is one of 0-9, a-f, A-F (of 0-9, of 0 and 1); true for the empty text.
bool isHexDigits(std::string_view text);
bool isDecimalDigits(std::string_view text);
bool isBinaryDigits(std::string_view text);

/// Writes 2n upper-case digits for n bytes, the high half of each byte first. No overlap.
void writeHex(char* out, char const* in, std::size_t n);

/// Writes the (digits + 1) / 2 bytes that so many digits stand for; an odd number is read as if led by a '0'.
/// No overlap. All of the input must be hexadecimal digits.
void readHex(char* out, char const* in, std::size_t digits);

/// Writes 8n digits '0' and '1' for n bytes, the highest bit of each byte first. No overlap.
void writeBinary(char* out, char const* in, std::size_t n);

/// Writes the (digits + 7) / 8 bytes that so many digits stand for, where a short group of digits comes
/// first. No overlap. All of the input must be '0' or '1'.
void readBinary(char* out, char const* in, std::size_t digits);

} // namespace kelcl

#endif
