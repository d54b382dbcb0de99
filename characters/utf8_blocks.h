// What the kernels of UTF-8 share that go through a text in blocks of 32 bytes. Where a block is not all
// plain they stop, and the plain forms beside them take over for some characters.
#ifndef KELCL_CHARACTERS_UTF8_BLOCKS_H
#define KELCL_CHARACTERS_UTF8_BLOCKS_H

#include "bytes/block.h"
#include "characters/utf8.h"

#include <array>
#include <cstddef>

namespace kelcl {

/// Texts of fewer bytes are not worth the start of a kernel in blocks, which may read 16 bytes at once.
inline constexpr std::size_t shortestForBlocks = 16;

/// How many bytes or characters the plain forms take by themselves before blocks are tried again.
inline constexpr std::size_t takenWithoutBlocks = 32;

#if KELCL_HAS_BLOCKS
namespace blocks {

/// Where each of 16 bytes comes from among 16 others, for lookUp.
using Shuffle = std::array<unsigned char, 16>;
inline constexpr unsigned char noByte = 0x80; ///< Gives 0.

/// widenUtf8() in blocks: for a text of at least 16 bytes, up to a block with a mistake.
KELCL_BLOCKS Extent widen(wchar_t* out, char const* in, std::size_t n);

/// narrowUtf8() in blocks: up to 16 values that are not all code points of at most three bytes, or have no
/// room.
KELCL_BLOCKS Extent narrow(char* out, std::size_t room, wchar_t const* in, std::size_t n);

} // namespace blocks
#endif

} // namespace kelcl

#endif
