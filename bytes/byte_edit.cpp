// Edits that keep the length, as loops that the compiler turns into vector code for each kind of processor.
// The translation by table, which needs more than that, is in byte_translate.cpp.

#include "bytes/byte_edit.h"

#include "bytes/byte_scan.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <functional>

namespace kelcl {

namespace {

/// Sets each out[i] to map(in[i]). The two cases are loops of their own, since only a compiler that knows
/// that the two are the same, or that they do not overlap, can do without a test at run time.
template <class Map>
KELCL_INLINED void mapBytes(char* out, char const* in, std::size_t n, Map map) {
    if (out == in) {
        for (std::size_t i = 0; i < n; ++i)
            out[i] = static_cast<char>(map(static_cast<unsigned char>(out[i])));
        return;
    }
    char* const __restrict to = out;
    char const* const __restrict from = in;
    for (std::size_t i = 0; i < n; ++i)
        to[i] = static_cast<char>(map(static_cast<unsigned char>(from[i])));
}

/// A letter from `first` on, one of 26, becomes its other case, which is one bit away.
struct SwapCase {
    unsigned char first;
    KELCL_INLINED unsigned char operator()(unsigned char byte) const {
        bool const isLetter = static_cast<unsigned char>(byte - first) < 26;
        return static_cast<unsigned char>(byte ^ (isLetter ? 0x20U : 0U));
    }
};

struct Complement {
    KELCL_INLINED unsigned char operator()(unsigned char byte) const {
        return static_cast<unsigned char>(~byte);
    }
};

/// Sets each text[i] to apply(text[i], operand[i]).
template <class Operator>
KELCL_INLINED void combineBytes(char* text, char const* operand, std::size_t n, Operator apply) {
    if (text == operand) {
        for (std::size_t i = 0; i < n; ++i)
            text[i] = static_cast<char>(apply(text[i], text[i]));
        return;
    }
    char* const __restrict left = text;
    char const* const __restrict right = operand;
    for (std::size_t i = 0; i < n; ++i)
        left[i] = static_cast<char>(apply(left[i], right[i]));
}

KELCL_INLINED void reverseBytes(char* __restrict out, char const* __restrict in, std::size_t n) {
    for (std::size_t i = 0; i < n; ++i)
        out[i] = in[n - 1 - i];
}

KELCL_INLINED void swapEnds(char* text, std::size_t n) {
    for (std::size_t i = 0; i < n / 2; ++i)
        std::swap(text[i], text[n - 1 - i]);
}

void combineStretch(char* text, char const* operand, std::size_t n, BitOperation operation) {
    switch (operation) {
    case BitOperation::bitAnd:
        return multiversioned<combineBytes<std::bit_and<>>>(text, operand, n, std::bit_and<>());
    case BitOperation::bitOr:
        return multiversioned<combineBytes<std::bit_or<>>>(text, operand, n, std::bit_or<>());
    case BitOperation::bitExclusiveOr:
        return multiversioned<combineBytes<std::bit_xor<>>>(text, operand, n, std::bit_xor<>());
    }
}

} // namespace

std::size_t findLowerCase(std::string_view text) { return findFirst(text, InRange{'a', 'z'}); }

std::size_t findUpperCase(std::string_view text) { return findFirst(text, InRange{'A', 'Z'}); }

void copyUpperCase(char* out, char const* in, std::size_t n) {
    multiversioned<mapBytes<SwapCase>>(out, in, n, SwapCase{'a'});
}

void copyLowerCase(char* out, char const* in, std::size_t n) {
    multiversioned<mapBytes<SwapCase>>(out, in, n, SwapCase{'A'});
}

void copyComplement(char* out, char const* in, std::size_t n) {
    multiversioned<mapBytes<Complement>>(out, in, n, Complement{});
}

void copyReversed(char* out, char const* in, std::size_t n) { multiversioned<reverseBytes>(out, in, n); }

void reverseInPlace(char* text, std::size_t n) { multiversioned<swapEnds>(text, n); }

void fillRepeating(char* out, std::size_t n, std::size_t filled) {
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

void combine(char* text, std::size_t n, char const* operand, std::size_t m, BitOperation operation) {
    // A short operand is first repeated, so that the loops always have a stretch worth their start.
    constexpr std::size_t shortest = 512;
    std::array<char, 2 * shortest> repeated;
    if (m < shortest && m < n) {
        std::size_t const room = std::min((n + m - 1) / m, shortest / m + 1) * m;
        std::memcpy(repeated.data(), operand, m);
        fillRepeating(repeated.data(), room, m);
        operand = repeated.data();
        m = room;
    }
    for (std::size_t i = 0; i < n; i += m)
        combineStretch(text + i, operand, std::min(m, n - i), operation);
}

} // namespace kelcl
