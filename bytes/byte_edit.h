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

/// A few bytes and what replaces them.
struct FewReplacements {
    static constexpr std::size_t most = 8;
    std::size_t count;
    char from[most];
    char to[most];
};

/// What becomes of the bytes of a text: each one of `from` is replaced by the one at the same place of `to`,
/// or by `pad` where that is shorter. Of a byte that `from` has twice the first place counts.
class Replacements {
public:
    /// For texts of about n bytes.
    Replacements(std::string_view from, std::string_view to, char pad, std::size_t n);

    /// What stands in the place of a byte.
    char of(char byte) const;
    /// The offset of a byte that is replaced, be it by itself, before which there is none that is replaced by
    /// another one; notFound if there is none at all. `from` is the list, which must still be what it was.
    std::size_t findFirst(std::string_view text, std::string_view from) const;
    /// Copies n bytes and replaces. The lists may be part of what is written to.
    void copy(char* out, char const* in, std::size_t n) const;

private:
    bool hasTable_; ///< Else each of a few is compared.
    unsigned char table_[256];
    FewReplacements few_;
};

/// Copies n bytes in reverse order; `out` must not be `in`.
void copyReversed(char* out, char const* in, std::size_t n);

void reverseInPlace(char* text, std::size_t n);

/// The first `filled` of n bytes, at least one, are set: repeats them cyclically up to the end.
void fillRepeating(char* out, std::size_t n, std::size_t filled);

enum class BitOperation { bitAnd, bitOr, bitExclusiveOr };

/// Copies n bytes combined with the m bytes of the operand, at least one, which is repeated cyclically or cut
/// to fit. The operand must not overlap `out`, unless it begins there and m is at least n.
void combine(char* out, char const* in, std::size_t n, char const* operand, std::size_t m,
             BitOperation operation);

/// Copies n bytes with every bit inverted.
void copyComplement(char* out, char const* in, std::size_t n);

} // namespace kelcl

#endif
