// Texts written in blocks, each place from the same place, or the mirrored one, of other texts. Only the byte
// kernels include this.
#ifndef KELCL_BYTES_BLOCK_EDIT_H
#define KELCL_BYTES_BLOCK_EDIT_H

#include "bytes/block.h"

#if KELCL_HAS_BLOCKS

#include <cstddef>
#include <cstdint>

namespace kelcl::blocks {

// What is written is told by a small class. Its `block(i)` gives the bytes from offset i on, its
// `two<size>(i, j)` so many from i and as many from j on, and its `one(i)` a single one.

/// Each byte mapped by itself.
template <class Map>
struct Mapped {
    char const* in;
    Map map;

    KELCL_BLOCKS_INLINE Block block(std::size_t i) const { return map(Block::load(in + i)); }
    template <std::size_t size>
    KELCL_BLOCKS_INLINE Block two(std::size_t i, std::size_t j) const {
        return map(Block::loadTwo<size>(in + i, in + j));
    }
    KELCL_BLOCKS_INLINE char one(std::size_t i) const { return map(in[i]); }
};

/// The bytes of two texts combined.
template <class Operator>
struct Combined {
    char const* left;
    char const* right;
    Operator apply;

    KELCL_BLOCKS_INLINE Block block(std::size_t i) const {
        return apply(Block::load(left + i), Block::load(right + i));
    }
    template <std::size_t size>
    KELCL_BLOCKS_INLINE Block two(std::size_t i, std::size_t j) const {
        return apply(Block::loadTwo<size>(left + i, left + j), Block::loadTwo<size>(right + i, right + j));
    }
    KELCL_BLOCKS_INLINE char one(std::size_t i) const { return static_cast<char>(apply(left[i], right[i])); }
};

/// The bytes of a text of n in reverse order.
struct Reversed {
    char const* in;
    std::size_t n;

    KELCL_BLOCKS_INLINE Block block(std::size_t i) const {
        return reversedEach<blockSize>(Block::load(in + n - blockSize - i));
    }
    template <std::size_t size>
    KELCL_BLOCKS_INLINE Block two(std::size_t i, std::size_t j) const {
        return reversedEach<size>(Block::loadTwo<size>(in + n - size - i, in + n - size - j));
    }
    KELCL_BLOCKS_INLINE char one(std::size_t i) const { return in[n - 1 - i]; }
};

/// Writes n bytes, n less than 32. All of them are made before one is written.
template <class Made>
KELCL_BLOCKS_INLINE void writeFewer(char* out, std::size_t n, Made made) {
    if (n >= 16) {
        made.template two<16>(0, n - 16).template storeTwo<16>(out, out + n - 16);
    } else if (n >= 8) {
        made.template two<8>(0, n - 8).template storeTwo<8>(out, out + n - 8);
    } else if (n >= 4) {
        made.template two<4>(0, n - 4).template storeTwo<4>(out, out + n - 4);
    } else if (n != 0) {
        char const first = made.one(0);
        char const middle = made.one(n / 2);
        char const last = made.one(n - 1);
        out[0] = first;
        out[n / 2] = middle;
        out[n - 1] = last;
    }
}

/// Writes n bytes. The stores between the first and the last block are aligned, as those that touch two cache
/// lines take twice as long. These two may overlap the others where the bytes are made from what stands in
/// their own places: they are made before and written after them.
template <class Made>
KELCL_BLOCKS void write(char* out, std::size_t n, Made made) {
    if (n < blockSize) return writeFewer(out, n, made);
    Block const first = made.block(0);
    Block const last = made.block(n - blockSize);
    if (n <= 2 * blockSize) {
        first.store(out);
        last.store(out + n - blockSize);
        return;
    }
    std::size_t i = blockSize - reinterpret_cast<std::uintptr_t>(out) % blockSize;
    std::size_t const end = n - blockSize;
    for (; i + blockSize < end; i += 2 * blockSize) {
        Block const one = made.block(i);
        Block const other = made.block(i + blockSize);
        one.store(out + i);
        other.store(out + i + blockSize);
    }
    if (i < end) made.block(i).store(out + i);
    first.store(out);
    last.store(out + end);
}

/// Exchanges the ends of a text, from outside to inside.
KELCL_BLOCKS inline void reverseInPlace(char* text, std::size_t n) {
    for (; n >= blockSize; text += blockSize, n -= 2 * blockSize) {
        Block const first = Block::load(text);
        Block const last = Block::load(text + n - blockSize); // may overlap the first
        reversedEach<blockSize>(last).store(text);
        reversedEach<blockSize>(first).store(text + n - blockSize);
        if (n <= 2 * blockSize) return;
    }
    writeFewer(text, n, Reversed{text, n});
}

} // namespace kelcl::blocks

#endif

#endif
