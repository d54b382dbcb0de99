// Edits that keep the length, as plain loops and in blocks. The translation by table is in
// byte_translate.cpp.

#include "bytes/byte_edit.h"

#include "bytes/block_edit.h"
#include "bytes/byte_scan.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <functional>
#include <type_traits>
#include <utility>

namespace kelcl {

namespace {

/// Sets each out[i] to map(in[i]).
template <class Map>
void mapEach(char* out, char const* in, std::size_t n, Map map) {
    for (std::size_t i = 0; i < n; ++i)
        out[i] = map(in[i]);
}

template <class Map>
void mapBytes(char* out, char const* in, std::size_t n, Map map) {
    KELCL_DISPATCH(blocks::write(out, n, blocks::Mapped<Map>{in, map}), mapEach(out, in, n, map));
}

/// A letter from `first` on, one of 26, becomes its other case, which is one bit away.
struct SwapCase {
    char first;
    char operator()(char byte) const {
        bool const isLetter = static_cast<unsigned char>(byte - first) < 26;
        return static_cast<char>(byte ^ (isLetter ? 0x20 : 0));
    }
#if KELCL_HAS_BLOCKS
    KELCL_BLOCKS_INLINE Block operator()(Block block) const {
        return block ^ (atMost(block - Block::of(first), Block::of(25)) & Block::of(0x20));
    }
#endif
};

struct Complement {
    char operator()(char byte) const { return static_cast<char>(~byte); }
#if KELCL_HAS_BLOCKS
    KELCL_BLOCKS_INLINE Block operator()(Block block) const { return ~block; }
#endif
};

/// An operator of the standard library's, for blocks too.
template <class Operator>
struct Bitwise {
    char operator()(char left, char right) const { return static_cast<char>(Operator()(left, right)); }
#if KELCL_HAS_BLOCKS
    KELCL_BLOCKS_INLINE Block operator()(Block left, Block right) const {
        if constexpr (std::is_same_v<Operator, std::bit_and<>>) return left & right;
        if constexpr (std::is_same_v<Operator, std::bit_or<>>) return left | right;
        if constexpr (std::is_same_v<Operator, std::bit_xor<>>) return left ^ right;
    }
#endif
};

/// Sets each out[i] to apply(in[i], operand[i]).
template <class Operator>
void combineEach(char* out, char const* in, char const* operand, std::size_t n, Operator apply) {
    for (std::size_t i = 0; i < n; ++i)
        out[i] = apply(in[i], operand[i]);
}

template <class Operator>
void combineBytes(char* out, char const* in, char const* operand, std::size_t n) {
    Bitwise<Operator> const apply;
    KELCL_DISPATCH(blocks::write(out, n, blocks::Combined<Bitwise<Operator>>{in, operand, apply}),
                   combineEach(out, in, operand, n, apply));
}

void reverseEach(char* out, char const* in, std::size_t n) {
    for (std::size_t i = 0; i < n; ++i)
        out[i] = in[n - 1 - i];
}

void swapEnds(char* text, std::size_t n) {
    for (std::size_t i = 0; i < n / 2; ++i)
        std::swap(text[i], text[n - 1 - i]);
}

void combineStretch(char* out, char const* in, char const* operand, std::size_t n, BitOperation operation) {
    switch (operation) {
    case BitOperation::bitAnd:
        return combineBytes<std::bit_and<>>(out, in, operand, n);
    case BitOperation::bitOr:
        return combineBytes<std::bit_or<>>(out, in, operand, n);
    case BitOperation::bitExclusiveOr:
        return combineBytes<std::bit_xor<>>(out, in, operand, n);
    }
}

} // namespace

std::size_t findLowerCase(std::string_view text) { return findFirst(text, InRange{'a', 'z'}); }

std::size_t findUpperCase(std::string_view text) { return findFirst(text, InRange{'A', 'Z'}); }

void copyUpperCase(char* out, char const* in, std::size_t n) { mapBytes(out, in, n, SwapCase{'a'}); }

void copyLowerCase(char* out, char const* in, std::size_t n) { mapBytes(out, in, n, SwapCase{'A'}); }

void copyComplement(char* out, char const* in, std::size_t n) { mapBytes(out, in, n, Complement{}); }

void copyReversed(char* out, char const* in, std::size_t n) {
    KELCL_DISPATCH(blocks::write(out, n, blocks::Reversed{in, n}), reverseEach(out, in, n));
}

void reverseInPlace(char* text, std::size_t n) {
    KELCL_DISPATCH(blocks::reverseInPlace(text, n), swapEnds(text, n));
}

void fillRepeating(char* out, std::size_t n, std::size_t filled) {
    constexpr std::size_t few = 16; // are faster written than copied
    if (n <= few) {
        for (std::size_t i = filled; i < n; ++i)
            out[i] = out[i - filled];
        return;
    }
    // Doubling stops where the copied stretch would no longer stay in the processor's nearest cache.
    constexpr std::size_t largestCopy = 16384;
    std::size_t stretch = filled;
    while (filled < n) {
        std::size_t const copied = std::min(stretch, n - filled);
        std::memcpy(out + filled, out, copied);
        filled += copied;
        if (stretch < largestCopy) stretch = filled;
    }
}

void combine(char* out, char const* in, std::size_t n, char const* operand, std::size_t m,
             BitOperation operation) {
    // A short operand is first repeated, so that the loops always have a stretch worth their start.
    constexpr std::size_t shortest = 512;
    std::array<char, 2 * shortest> repeated;
    if (m < shortest && m < n) {
        std::size_t const room = n <= shortest ? n : (shortest / m + 1) * m;
        std::memcpy(repeated.data(), operand, m);
        fillRepeating(repeated.data(), room, m);
        operand = repeated.data();
        m = room;
    }
    for (std::size_t i = 0; i < n; i += m)
        combineStretch(out + i, in + i, operand, std::min(m, n - i), operation);
}

} // namespace kelcl
