// The copy of a piece of text to another place, whatever the distance; and pads.
#ifndef KELCL_BYTES_BYTE_COPY_H
#define KELCL_BYTES_BYTE_COPY_H

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>

namespace kelcl {

/// Copies n bytes, from `size` to twice as many, by two moves that meet or overlap.
template <std::size_t size>
inline void copyByTwo(char* out, char const* in, std::size_t n) {
    struct Bytes {
        char bytes[size];
    };
    Bytes first, last;
    std::memcpy(&first, in, size);
    std::memcpy(&last, in + n - size, size);
    std::memcpy(out, &first, size);
    std::memcpy(out + n - size, &last, size);
}

/// The C library copies so much by a loop, and more of it by one instruction.
inline constexpr std::size_t longestCopiedByLoop = 2048;

/// Copies n bytes in parts that are copied by a loop.
[[gnu::noinline]] inline void copyInParts(char* out, char const* in, std::size_t n) {
    for (std::size_t size = 0; n != 0; n -= size, out += size, in += size) {
        size = std::min(n, longestCopiedByLoop);
        // Hides from compilers how large it can be: they would write that instruction themselves.
        asm("" : "+r"(size));
        std::memcpy(out, in, size);
    }
}

/// Copies n bytes, of any number.
///
/// For that one instruction some processors take up to thirty times as long where the target lies a few bytes
/// after the source modulo 4096. Pieces that move by a few bytes, as in an insertion, lie like that often.
/// They are copied in parts; at the very same distance from a page, as in an overlay, the instruction is the
/// fastest copy.
inline void copyLongBytes(char* out, char const* in, std::size_t n) {
    constexpr std::uintptr_t slowDistance = 64;
    auto const distance = reinterpret_cast<std::uintptr_t>(out) - reinterpret_cast<std::uintptr_t>(in);
    if (n > longestCopiedByLoop && (distance - 1) % 4096 < slowDistance - 1) return copyInParts(out, in, n);
    std::memcpy(out, in, n);
}

/// Copies n bytes, to a place that they do not overlap with. A few are copied without a call.
inline void copyBytes(char* out, char const* in, std::size_t n) {
    if (n > 64) return copyLongBytes(out, in, n);
    if (n >= 32) {
        copyByTwo<16>(out, in, 32);
        copyByTwo<16>(out + n - 32, in + n - 32, 32);
        return;
    }
    if (n >= 16) return copyByTwo<16>(out, in, n);
    if (n >= 8) return copyByTwo<8>(out, in, n);
    if (n >= 4) return copyByTwo<4>(out, in, n);
    if (n >= 2) return copyByTwo<2>(out, in, n);
    if (n != 0) *out = *in;
}

/// Sets n bytes, from `size` to twice as many, in two stretches that meet or overlap.
template <std::size_t size>
inline void fillByTwo(char* out, char byte, std::size_t n) {
    std::memset(out, byte, size);
    std::memset(out + n - size, byte, size);
}

/// Sets n bytes. A few are set without a call.
inline void fillBytes(char* out, char byte, std::size_t n) {
    if (n > 64) {
        std::memset(out, byte, n);
        return;
    }
    if (n >= 32) return fillByTwo<32>(out, byte, n);
    if (n >= 16) return fillByTwo<16>(out, byte, n);
    if (n >= 8) return fillByTwo<8>(out, byte, n);
    if (n >= 4) return fillByTwo<4>(out, byte, n);
    if (n >= 2) return fillByTwo<2>(out, byte, n);
    if (n != 0) *out = byte;
}

} // namespace kelcl

#endif
