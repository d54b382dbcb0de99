// The walk through a text in search of bytes that match: plain, and 32 bytes at a time. What matches is told
// by a small class with one test for a single byte and one for 32 of them. Only the byte kernels include
// this.
#ifndef KELCL_BYTES_BYTE_SCAN_H
#define KELCL_BYTES_BYTE_SCAN_H

#include "bytes/block.h"
#include "bytes/byte_search.h"
#include "bytes/byte_set.h"
#include "bytes/dispatch.h"

#include <bit>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace kelcl {

// Each matcher's `matches` on a block returns one in which the top bit of each byte gives the answer.

struct EqualTo {
    char byte;
    bool matches(char other) const { return other == byte; }
#if KELCL_HAS_BLOCKS
    KELCL_BLOCKS_INLINE Block matches(Block block) const { return equal(block, Block::of(byte)); }
#endif
};

struct NotAscii {
    bool matches(char byte) const { return static_cast<unsigned char>(byte) > 127; }
#if KELCL_HAS_BLOCKS
    KELCL_BLOCKS_INLINE Block matches(Block block) const { return block; }
#endif
};

struct InRange {
    char first;
    char last;
    bool matches(char byte) const {
        return static_cast<unsigned char>(byte - first) <= static_cast<unsigned char>(last - first);
    }
#if KELCL_HAS_BLOCKS
    KELCL_BLOCKS_INLINE Block matches(Block block) const {
        return atMost(block - Block::of(first), Block::of(last - first));
    }
#endif
};

#if KELCL_HAS_BLOCKS
/// Which bytes are in a set, by its rows in each half of a block. A look-up gives 0 for a byte with the top
/// bit set, so that only one of the two tables counts.
KELCL_BLOCKS_INLINE Block hasBit(Block rows, Block block) {
    Block const bit = lookUp(Block::ofEight(0x8040201008040201U), block.highHalves());
    return equal(rows & bit, bit);
}
KELCL_BLOCKS_INLINE Block isInAsciiRows(Block block, Block lowRows) {
    return hasBit(lookUpByLowHalf(lowRows, block), block);
}
KELCL_BLOCKS_INLINE Block isInRows(Block block, Block lowRows, Block highRows) {
    return hasBit(lookUpByLowHalf(lowRows, block) | lookUpByLowHalf(highRows, block ^ Block::of(0x80)),
                  block);
}
#endif

struct InSet {
    ByteSet const& set;
    bool matches(char byte) const { return set.contains(byte); }
#if KELCL_HAS_BLOCKS
    KELCL_BLOCKS_INLINE Block matches(Block block) const {
        return isInRows(block, Block::twice(set.rows()), Block::twice(set.rows() + 16));
    }
#endif
};

/// The same for a set without members above 127.
struct InAsciiSet {
    ByteSet const& set;
    bool matches(char byte) const { return set.contains(byte); }
#if KELCL_HAS_BLOCKS
    KELCL_BLOCKS_INLINE Block matches(Block block) const {
        return isInAsciiRows(block, Block::twice(set.rows()));
    }
#endif
};

/// In a set that is given by its members, at least one; each of them is compared.
struct AmongFew {
    std::string_view members;
    bool matches(char byte) const {
        for (char const member : members)
            if (member == byte) return true;
        return false;
    }
#if KELCL_HAS_BLOCKS
    KELCL_BLOCKS_INLINE Block matches(Block block) const {
        Block result = equal(block, Block::of(members.back()));
        for (std::size_t i = 0; i + 1 < members.size(); i += 2)
            result = result | (equal(block, Block::of(members[i])) | equal(block, Block::of(members[i + 1])));
        return result;
    }
#endif
};

template <class Matcher>
struct Not {
    Matcher matcher;
    bool matches(char byte) const { return !matcher.matches(byte); }
#if KELCL_HAS_BLOCKS
    KELCL_BLOCKS_INLINE Block matches(Block block) const { return ~matcher.matches(block); }
#endif
};
template <class Matcher>
Not(Matcher) -> Not<Matcher>;

namespace portable {

template <class Matcher>
std::size_t findFirst(std::string_view text, Matcher matcher) {
    for (std::size_t i = 0; i < text.size(); ++i)
        if (matcher.matches(text[i])) return i;
    return notFound;
}

template <class Matcher>
std::size_t findLast(std::string_view text, Matcher matcher) {
    for (std::size_t i = text.size(); i > 0; --i)
        if (matcher.matches(text[i - 1])) return i - 1;
    return notFound;
}

template <class Matcher>
std::size_t count(std::string_view text, Matcher matcher) {
    std::size_t result = 0;
    for (char const byte : text)
        result += matcher.matches(byte) ? 1 : 0;
    return result;
}

template <class Matcher>
std::uint64_t maskOfStart(std::string_view text, Matcher matcher) {
    std::uint64_t mask = 0;
    for (std::size_t i = 0; i < text.size() && i < 64; ++i)
        mask |= std::uint64_t{matcher.matches(text[i])} << i;
    return mask;
}

template <class Matcher>
std::size_t countRuns(std::string_view text, Matcher matcher) {
    std::size_t result = 0;
    bool inside = false;
    for (char const byte : text) {
        bool const before = inside;
        inside = matcher.matches(byte);
        result += inside && !before ? 1 : 0;
    }
    return result;
}

template <class Matcher>
std::size_t findRun(std::string_view text, std::size_t number, Matcher matcher) {
    bool inside = false;
    for (std::size_t i = 0; i < text.size(); ++i) {
        bool const before = inside;
        inside = matcher.matches(text[i]);
        if (inside && !before && --number == 0) return i;
    }
    return notFound;
}

} // namespace portable

#if KELCL_HAS_BLOCKS
namespace blocks {

/// One bit for each of 32 bytes, the first lowest: whether it matches.
template <class Matcher>
KELCL_BLOCKS_INLINE std::uint32_t maskOfBlock(Block block, Matcher matcher) {
    return matcher.matches(block).topBits();
}

template <class Matcher>
KELCL_BLOCKS_INLINE std::uint32_t maskOf32(char const* bytes, Matcher matcher) {
    return maskOfBlock(Block::load(bytes), matcher);
}

template <class Matcher>
KELCL_BLOCKS_INLINE std::uint64_t maskOf64(char const* bytes, Matcher matcher) {
    return maskOf32(bytes, matcher) | std::uint64_t{maskOf32(bytes + 32, matcher)} << 32U;
}

template <class Matcher>
KELCL_BLOCKS_INLINE bool anyOf128(char const* bytes, Matcher matcher) {
    Block const first = matcher.matches(Block::load(bytes)) | matcher.matches(Block::load(bytes + 32));
    Block const last = matcher.matches(Block::load(bytes + 64)) | matcher.matches(Block::load(bytes + 96));
    return (first | last).anyTopBit();
}

/// The mask of n bytes, n less than 32. It reads none beyond them: two loads meet or overlap, and their masks
/// are laid over each other where the bytes lie.
template <class Matcher>
KELCL_BLOCKS_INLINE std::uint32_t maskOfFewer(char const* bytes, std::size_t n, Matcher matcher) {
    if (n >= 16) {
        std::uint32_t const mask = maskOfBlock(Block::loadTwo<16>(bytes, bytes + n - 16), matcher);
        return (mask & 0xFFFFU) | mask >> 16U << (n - 16);
    }
    if (n >= 8) {
        std::uint32_t const mask = maskOfBlock(Block::loadTwo<8>(bytes, bytes + n - 8), matcher);
        return (mask & 0xFFU) | (mask >> 8U & 0xFFU) << (n - 8);
    }
    if (n >= 4) {
        std::uint32_t const mask = maskOfBlock(Block::loadTwo<4>(bytes, bytes + n - 4), matcher);
        return (mask & 0xFU) | (mask >> 4U & 0xFU) << (n - 4);
    }
    std::uint32_t mask = 0;
    for (std::size_t i = 0; i < n; ++i)
        mask |= (matcher.matches(bytes[i]) ? 1U : 0U) << i;
    return mask;
}

template <class Matcher>
KELCL_BLOCKS std::size_t findFirst(std::string_view text, Matcher matcher) {
    char const* const bytes = text.data();
    std::size_t const n = text.size();
    if (n < 32) {
        std::uint32_t const mask = maskOfFewer(bytes, n, matcher);
        return mask != 0 ? lowestBit(mask) : notFound;
    }
    std::size_t i = 0;
    for (; n - i >= 64; i += 64) {
        if (std::uint64_t const mask = maskOf64(bytes + i, matcher); mask != 0) return i + lowestBit(mask);
        while (n - i >= 192 && !anyOf128(bytes + i + 64, matcher))
            i += 128;
    }
    if (n - i >= 32) {
        if (std::uint32_t const mask = maskOf32(bytes + i, matcher); mask != 0) return i + lowestBit(mask);
    }
    std::uint32_t const mask = maskOf32(bytes + n - 32, matcher);
    return mask != 0 ? n - 32 + lowestBit(mask) : notFound;
}

template <class Matcher>
KELCL_BLOCKS std::size_t findLast(std::string_view text, Matcher matcher) {
    char const* const bytes = text.data();
    std::size_t i = text.size();
    if (i < 32) {
        std::uint32_t const mask = maskOfFewer(bytes, i, matcher);
        return mask != 0 ? highestBit(mask) : notFound;
    }
    while (i >= 128 && !anyOf128(bytes + i - 128, matcher))
        i -= 128;
    for (; i >= 64; i -= 64)
        if (std::uint64_t const mask = maskOf64(bytes + i - 64, matcher); mask != 0)
            return i - 64 + highestBit(mask);
    if (i >= 32) {
        if (std::uint32_t const mask = maskOf32(bytes + i - 32, matcher); mask != 0)
            return i - 32 + highestBit(mask);
    }
    std::uint32_t const mask = maskOf32(bytes, matcher);
    return mask != 0 ? highestBit(mask) : notFound;
}

/// The mask of the last n bytes of a text, n less than 32, in the lowest n bits.
template <class Matcher>
KELCL_BLOCKS_INLINE std::uint32_t maskOfEnd(std::string_view text, std::size_t n, Matcher matcher) {
    if (text.size() < 32) return maskOfFewer(text.data() + text.size() - n, n, matcher);
    return n == 0 ? 0 : maskOf32(text.data() + text.size() - 32, matcher) >> (32 - n);
}

template <class Matcher>
KELCL_BLOCKS std::size_t count(std::string_view text, Matcher matcher) {
    if (text.size() < 32) return bitCount(maskOfFewer(text.data(), text.size(), matcher));
    std::size_t result = 0;
    std::size_t i = 0;
    for (; text.size() - i >= 64; i += 64)
        result += bitCount(maskOf64(text.data() + i, matcher));
    if (text.size() - i >= 32) {
        result += bitCount(maskOf32(text.data() + i, matcher));
        i += 32;
    }
    return result + bitCount(maskOfEnd(text, text.size() - i, matcher));
}

template <class Matcher>
KELCL_BLOCKS std::uint64_t maskOfStart(std::string_view text, Matcher matcher) {
    char const* const bytes = text.data();
    std::size_t const n = text.size();
    if (n >= 64) return maskOf64(bytes, matcher);
    if (n < 32) return maskOfFewer(bytes, n, matcher);
    return maskOf32(bytes, matcher) | std::uint64_t{maskOfFewer(bytes + 32, n - 32, matcher)} << 32U;
}

template <class Matcher>
KELCL_BLOCKS std::size_t countRuns(std::string_view text, Matcher matcher) {
    std::size_t result = 0;
    std::size_t i = 0;
    std::uint64_t inside = 0; // the lowest bit: whether the byte before is part of a run
    for (; text.size() - i >= 64; i += 64) {
        std::uint64_t const mask = maskOf64(text.data() + i, matcher);
        result += bitCount(mask & ~(mask << 1U | inside));
        inside = mask >> 63U;
    }
    if (text.size() - i >= 32) {
        std::uint64_t const mask = maskOf32(text.data() + i, matcher);
        result += bitCount(mask & ~(mask << 1U | inside));
        inside = mask >> 31U;
        i += 32;
    }
    std::uint64_t const mask = maskOfEnd(text, text.size() - i, matcher);
    return result + bitCount(mask & ~(mask << 1U | inside));
}

/// Where the run of the given number, counted from 1, begins, or notFound.
template <class Matcher>
KELCL_BLOCKS std::size_t findRun(std::string_view text, std::size_t number, Matcher matcher) {
    std::uint64_t inside = 0; // the lowest bit: whether the byte before is part of a run
    for (std::size_t i = 0; i < text.size(); i += 64) {
        std::size_t const left = text.size() - i;
        std::uint64_t const mask =
            left >= 64 ? maskOf64(text.data() + i, matcher) : blocks::maskOfStart(text.substr(i), matcher);
        std::uint64_t begins = mask & ~(mask << 1U | inside);
        inside = mask >> 63U;
        if (std::size_t const count = bitCount(begins); count < number) {
            number -= count;
            continue;
        }
        while (--number != 0)
            begins &= begins - 1;
        return i + lowestBit(begins);
    }
    return notFound;
}

} // namespace blocks
#endif

template <class Matcher>
std::size_t findFirst(std::string_view text, Matcher matcher) {
    return KELCL_DISPATCH(blocks::findFirst(text, matcher), portable::findFirst(text, matcher));
}

template <class Matcher>
std::size_t findLast(std::string_view text, Matcher matcher) {
    return KELCL_DISPATCH(blocks::findLast(text, matcher), portable::findLast(text, matcher));
}

template <class Matcher>
std::size_t count(std::string_view text, Matcher matcher) {
    return KELCL_DISPATCH(blocks::count(text, matcher), portable::count(text, matcher));
}

template <class Matcher>
std::uint64_t maskOfStart(std::string_view text, Matcher matcher) {
    return KELCL_DISPATCH(blocks::maskOfStart(text, matcher), portable::maskOfStart(text, matcher));
}

template <class Matcher>
std::size_t findRun(std::string_view text, std::size_t number, Matcher matcher) {
    return KELCL_DISPATCH(blocks::findRun(text, number, matcher), portable::findRun(text, number, matcher));
}

template <class Matcher>
std::size_t countRuns(std::string_view text, Matcher matcher) {
    return KELCL_DISPATCH(blocks::countRuns(text, matcher), portable::countRuns(text, matcher));
}

} // namespace kelcl

#endif
