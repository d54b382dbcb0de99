// Hexadecimal and binary digits in blocks, where that is more than twice as fast as what the compiler makes
// of loops. Each function does as many whole blocks as there are; the rest is left to the plain forms in
// digits.cpp.
#ifndef KELCL_BYTES_DIGITS_BLOCKS_H
#define KELCL_BYTES_DIGITS_BLOCKS_H

#include "bytes/block.h"

#if KELCL_HAS_BLOCKS

namespace kelcl::blocks {

KELCL_BLOCKS_INLINE Block hexValues(Block digits) {
    // The low bits of letters of either case count from 1, where they should from 10.
    Block const letters = greaterSigned(digits, Block::of('9'));
    return (digits + (letters & Block::of(9))).lowHalves();
}

/// Reads 64 hexadecimal digits at a time into 32 bytes; returns how many digits it has read.
KELCL_BLOCKS inline std::size_t readHexBlocks(char* out, char const* in, std::size_t digits) {
    std::size_t i = 0;
    for (; digits - i >= 64; i += 64)
        joinedHalves(hexValues(Block::load(in + i)), hexValues(Block::load(in + i + 32))).store(out + i / 2);
    return i;
}

using Bytes = std::array<unsigned char, blockSize>;

inline constexpr auto byteOfDigit = [] {
    Bytes bytes{};
    for (unsigned int i = 0; i < bytes.size(); ++i)
        bytes[i] = static_cast<unsigned char>(i / 8);
    return bytes;
}();

/// The first of eight digits is the highest bit.
inline constexpr auto bitOfDigit = [] {
    Bytes bits{};
    for (unsigned int i = 0; i < bits.size(); ++i)
        bits[i] = static_cast<unsigned char>(0x80U >> i % 8);
    return bits;
}();

/// Writes 4 bytes at a time as 32 binary digits; returns how many bytes it has written.
KELCL_BLOCKS inline std::size_t writeBinaryBlocks(char* out, char const* in, std::size_t n) {
    Block const ofDigit = Block::load(byteOfDigit.data());
    Block const bit = Block::load(bitOfDigit.data());
    std::size_t i = 0;
    for (; n - i >= 4; i += 4) {
        Block const isOne = equal(lookUp(Block::ofFour(in + i), ofDigit) & bit, bit);
        (Block::of('0') - isOne).store(out + 8 * i); // yes is -1
    }
    return i;
}

inline constexpr auto eachEightReversed = [] {
    Bytes places{};
    for (unsigned int i = 0; i < places.size(); ++i)
        places[i] = static_cast<unsigned char>((i ^ 7U) % 16);
    return places;
}();

/// Reads 32 binary digits at a time into 4 bytes; returns how many digits it has read.
KELCL_BLOCKS inline std::size_t readBinaryBlocks(char* out, char const* in, std::size_t digits) {
    // A mask takes its lowest bit from the first byte, but the first of eight digits is the highest bit.
    Block const reversed = Block::load(eachEightReversed.data());
    std::size_t i = 0;
    for (; digits - i >= 32; i += 32) {
        std::uint32_t const bits = lookUp(Block::load(in + i), reversed).lowBits();
        std::memcpy(out + i / 8, &bits, sizeof bits);
    }
    return i;
}

} // namespace kelcl::blocks

#endif

#endif
