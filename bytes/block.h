// A block of 32 bytes with named operators, for the kernels that go through texts in blocks. What an operator
// does on each machine stands in one file for each, block_avx2.h and block_neon.h, and nowhere else.
//
// Half is 16 bytes, Block two halves, Words a block seen as 16 numbers of 16 bits, and Sixteen 16 wide
// characters. An operator works on each byte (or number) by itself unless told otherwise; what answers yes or
// no sets all bits of the byte, or none.
//
// Blocks and halves:
//   load, loadTwo, loadEnd            from memory of any alignment
//   store, storeTwo                   to it
//   of, ofFour, ofEight, twice        a block of one byte, four, eight, or 16 over and over
//   & | ^ ~ + -                       without carry from byte to byte
//   minusDownTo0                      the difference, or 0 where it is negative
//   equal, atMost                     comparisons of bytes from 0 to 255
//   equalFours                        of each four bytes as one
//   greaterSigned                     the same of signed ones
//   chosen(answer, a, b)              a where the answer is yes, else b
//   lowHalves, highHalves             the four low or high bits, as values from 0 to 15
//   lookUp(table, index)              the entry for an index below 16, 0 for one of 128 or more
//   lookUpOrZero(table, index)        the same for any index, 0 for those of 16 or more
//   lookUpByLowHalf(table, index)     the entry for the four low bits, 0 for an index of 128 or more
//                                     (in all three, each half of a block has a table of its own)
//   earlier<n>(block, previous)       each byte is the one n places earlier in a text that runs on from the
//                                     previous block
//   reversedEach<n>                   each n bytes in reverse order
//   joinedHalves, sumsToBase64        neighbours made one: see there
//   topBits, lowBits                  a mask of one bit of each byte, the first byte's lowest
//   isZero, anyTopBit                 of the whole block
//
// Words, and what lies between them and the others:
//   & | equal, atMost, chosen, isZero  as for bytes
//   shiftedLeft<n>, shiftedRight<n>   without carry from number to number
//   interleavedFirst, …Last           two Words made one Block, a number of each in turn
//   shortened                         answers of 16 bits as answers of 8
//   widenAscii                        a block of ASCII stored as wide characters
//   Sixteen: load, loadFewer, haveOnly, words, ascii
#ifndef KELCL_BYTES_BLOCK_H
#define KELCL_BYTES_BLOCK_H

#include "bytes/dispatch.h"

#if KELCL_HAS_BLOCKS

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>

namespace kelcl::blocks {

inline constexpr std::size_t blockSize = 32;
static_assert(sizeof(wchar_t) == 4, "four wide characters are one half of a block");

/// Indices that move 16 bytes towards the first, by the number at which one loads them: those that come after
/// are 0.
inline constexpr auto towardsFirst = [] {
    std::array<unsigned char, 32> table{};
    for (unsigned int i = 0; i < table.size(); ++i)
        table[i] = static_cast<unsigned char>(i < 16 ? i : 0x80);
    return table;
}();

/// Indices that put each so many of 16 bytes in reverse order.
template <std::size_t size>
inline constexpr auto reversedPlaces = [] {
    std::array<unsigned char, 16> table{};
    for (unsigned int i = 0; i < table.size(); ++i)
        table[i] = static_cast<unsigned char>(i ^ (size - 1));
    return table;
}();

/// Bits of a mask: where the lowest and the highest one are, of which there must be one, and how many.
KELCL_BLOCKS_INLINE std::size_t lowestBit(std::uint64_t mask) {
    return static_cast<std::size_t>(std::countr_zero(mask));
}
KELCL_BLOCKS_INLINE std::size_t highestBit(std::uint64_t mask) {
    return static_cast<std::size_t>(63 - std::countl_zero(mask));
}
KELCL_BLOCKS_INLINE std::size_t bitCount(std::uint64_t mask) {
    return static_cast<std::size_t>(__builtin_popcountll(mask));
}

template <class Word>
KELCL_BLOCKS_INLINE Word loadWord(char const* bytes) {
    Word word;
    std::memcpy(&word, bytes, sizeof word);
    return word;
}

} // namespace kelcl::blocks

#if defined(__x86_64__)
#include "bytes/block_avx2.h"
#else
#include "bytes/block_neon.h"
#endif

namespace kelcl {
using blocks::Block;
using blocks::Half;
} // namespace kelcl

#endif

#endif
