// Edits that keep the length of a text: case, translation, reversal, cyclic filling, bitwise combination.
// They write where they are told; whether a buffer may be written in place is decided elsewhere.
#ifndef KELCL_BYTES_BYTE_EDIT_H
#define KELCL_BYTES_BYTE_EDIT_H

#include <cstddef>
#include <string_view>

namespace kelcl {

// Where a function takes `out` and `in`, they may be the same pointer (the edit is then done in place) unless
// it says otherwise; beyond that the two stretches of bytes must not overlap.

/// The offset of the first letter a to z (A to Z), or notFound. Only ASCII letters count, in every locale.
std::size_t findLowerCase(std::string_view text);
std::size_t findUpperCase(std::string_view text);

/// Copies n bytes and turns a to z into A to Z (A to Z into a to z). No other byte changes, in any locale.
void copyUpperCase(char* out, char const* in, std::size_t n);
void copyLowerCase(char* out, char const* in, std::size_t n);

/// Copies n bytes, each replaced by its entry of the table.
void copyTranslated(char* out, char const* in, std::size_t n, unsigned char const (&table)[256]);

/// Copies n bytes in reverse order; `out` must not be `in`.
void copyReversed(char* out, char const* in, std::size_t n);

void reverseInPlace(char* text, std::size_t n);

/// The first `filled` of n bytes, at least one, are set: repeats them cyclically up to the end.
void fillRepeating(char* out, std::size_t n, std::size_t filled);

enum class BitOperation { bitAnd, bitOr, bitExclusiveOr };

/// Combines n bytes of text, in place, with the m bytes of the operand, at least one, which is repeated
/// cyclically or cut to fit. The operand must not overlap the text, unless it begins where the text does and
/// m is at least n.
void combine(char* text, std::size_t n, char const* operand, std::size_t m, BitOperation operation);

/// Copies n bytes with every bit inverted.
void copyComplement(char* out, char const* in, std::size_t n);

} // namespace kelcl

#endif
