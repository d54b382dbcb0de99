// The copy of a piece of text to another place, whatever the distance.
#ifndef KELCL_BYTES_BYTE_COPY_H
#define KELCL_BYTES_BYTE_COPY_H

#include <cstddef>
#include <cstdint>
#include <cstring>

namespace kelcl {

/// Copies n bytes; the two stretches must not overlap.
///
/// From a certain size on the C library copies by one instruction, and some processors take up to thirty
/// times as long for that where the target lies a few bytes after the source modulo 4096. Pieces that move by
/// a few bytes, as in an insertion, lie like that often. They are copied in parts that are too short for the
/// instruction.
inline void copyBytes(char* out, char const* in, std::size_t n) {
    constexpr std::size_t part = 2048;
    constexpr std::uintptr_t slowDistance = 64;
    auto const distance = reinterpret_cast<std::uintptr_t>(out) - reinterpret_cast<std::uintptr_t>(in);
    if (n > part && distance % 4096 < slowDistance) {
        for (; n > part; n -= part, out += part, in += part)
            std::memcpy(out, in, part);
    }
    std::memcpy(out, in, n);
}

} // namespace kelcl

#endif
