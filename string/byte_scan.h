// The walk through a text in search of bytes that match: plain, and 32 bytes at a time. What matches is told
// by a small class with one test for a single byte and one for 32 of them. Only the byte kernels include
// this.
#ifndef KELCL_STRING_BYTE_SCAN_H
#define KELCL_STRING_BYTE_SCAN_H

#include "string/byte_search.h"
#include "string/byte_set.h"
#include "string/multiversion.h"

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

#if KELCL_AVX2_KERNELS
#include <immintrin.h>
#endif

namespace kelcl {

// Each matcher's `matches` on 32 bytes returns a vector in which the top bit of each byte gives the answer.

struct EqualTo {
    char byte;
    bool matches(char other) const { return other == byte; }
#if KELCL_AVX2_KERNELS
    KELCL_AVX2_INLINE __m256i matches(__m256i block) const {
        return _mm256_cmpeq_epi8(block, _mm256_set1_epi8(byte));
    }
#endif
};

struct NotAscii {
    bool matches(char byte) const { return static_cast<unsigned char>(byte) > 127; }
#if KELCL_AVX2_KERNELS
    KELCL_AVX2_INLINE __m256i matches(__m256i block) const { return block; }
#endif
};

struct InRange {
    char first;
    char last;
    bool matches(char byte) const {
        return static_cast<unsigned char>(byte - first) <= static_cast<unsigned char>(last - first);
    }
#if KELCL_AVX2_KERNELS
    KELCL_AVX2_INLINE __m256i matches(__m256i block) const {
        __m256i const distance = _mm256_sub_epi8(block, _mm256_set1_epi8(first));
        return _mm256_cmpeq_epi8(_mm256_min_epu8(distance, _mm256_set1_epi8(static_cast<char>(last - first))),
                                 distance);
    }
#endif
};

struct InSet {
    ByteSet const& set;
    bool matches(char byte) const { return set.contains(byte); }
#if KELCL_AVX2_KERNELS
    KELCL_AVX2_INLINE __m256i matches(__m256i block) const {
        auto const* const rows = reinterpret_cast<__m128i const*>(set.rows());
        __m256i const lowRows = _mm256_broadcastsi128_si256(_mm_loadu_si128(rows));
        __m256i const highRows = _mm256_broadcastsi128_si256(_mm_loadu_si128(rows + 1));
        __m256i const bits = _mm256_set1_epi64x(static_cast<long long>(0x8040201008040201ULL));
        // A shuffle gives 0 for an index with the top bit set, so that only one of the two tables has a say.
        __m256i const row =
            _mm256_or_si256(_mm256_shuffle_epi8(lowRows, block),
                            _mm256_shuffle_epi8(highRows, _mm256_xor_si256(block, _mm256_set1_epi8(-128))));
        __m256i const nibble = _mm256_and_si256(_mm256_srli_epi16(block, 4), _mm256_set1_epi8(7));
        __m256i const bit = _mm256_shuffle_epi8(bits, nibble);
        return _mm256_cmpeq_epi8(_mm256_and_si256(row, bit), bit);
    }
#endif
};

template <class Matcher>
struct Not {
    Matcher matcher;
    bool matches(char byte) const { return !matcher.matches(byte); }
#if KELCL_AVX2_KERNELS
    KELCL_AVX2_INLINE __m256i matches(__m256i block) const {
        return _mm256_xor_si256(matcher.matches(block), _mm256_set1_epi8(-1));
    }
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

} // namespace portable

#if KELCL_AVX2_KERNELS
namespace avx2 {

template <class Word>
KELCL_AVX2_INLINE Word loadWord(char const* bytes) {
    Word word;
    std::memcpy(&word, bytes, sizeof word);
    return word;
}

KELCL_AVX2_INLINE __m256i loadBlock(char const* bytes) {
    return _mm256_loadu_si256(reinterpret_cast<__m256i const*>(bytes));
}

/// One bit for each of 32 bytes, the first lowest: whether it matches.
template <class Matcher>
KELCL_AVX2_INLINE std::uint32_t maskOfBlock(__m256i block, Matcher matcher) {
    return static_cast<std::uint32_t>(_mm256_movemask_epi8(matcher.matches(block)));
}

template <class Matcher>
KELCL_AVX2_INLINE std::uint32_t maskOf32(char const* bytes, Matcher matcher) {
    return maskOfBlock(loadBlock(bytes), matcher);
}

template <class Matcher>
KELCL_AVX2_INLINE std::uint64_t maskOf64(char const* bytes, Matcher matcher) {
    return maskOf32(bytes, matcher) | std::uint64_t{maskOf32(bytes + 32, matcher)} << 32U;
}

template <class Matcher>
KELCL_AVX2_INLINE bool anyOf128(char const* bytes, Matcher matcher) {
    __m256i const first =
        _mm256_or_si256(matcher.matches(loadBlock(bytes)), matcher.matches(loadBlock(bytes + 32)));
    __m256i const last =
        _mm256_or_si256(matcher.matches(loadBlock(bytes + 64)), matcher.matches(loadBlock(bytes + 96)));
    return _mm256_movemask_epi8(_mm256_or_si256(first, last)) != 0;
}

/// The mask of n bytes, n less than 32. It reads none beyond them: two loads meet or overlap, and their masks
/// are laid over each other where the bytes lie.
template <class Matcher>
KELCL_AVX2_INLINE std::uint32_t maskOfFewer(char const* bytes, std::size_t n, Matcher matcher) {
    if (n >= 16) {
        auto const* const first = reinterpret_cast<__m128i const*>(bytes);
        auto const* const last = reinterpret_cast<__m128i const*>(bytes + n - 16);
        std::uint32_t const mask =
            maskOfBlock(_mm256_set_m128i(_mm_loadu_si128(last), _mm_loadu_si128(first)), matcher);
        return (mask & 0xFFFFU) | mask >> 16U << (n - 16);
    }
    if (n >= 8) {
        __m128i const words = _mm_set_epi64x(loadWord<long long>(bytes + n - 8), loadWord<long long>(bytes));
        std::uint32_t const mask = maskOfBlock(_mm256_castsi128_si256(words), matcher);
        return (mask & 0xFFU) | (mask >> 8U & 0xFFU) << (n - 8);
    }
    if (n >= 4) {
        __m128i const words = _mm_set_epi32(0, 0, loadWord<int>(bytes + n - 4), loadWord<int>(bytes));
        std::uint32_t const mask = maskOfBlock(_mm256_castsi128_si256(words), matcher);
        return (mask & 0xFU) | (mask >> 4U & 0xFU) << (n - 4);
    }
    std::uint32_t mask = 0;
    for (std::size_t i = 0; i < n; ++i)
        mask |= (matcher.matches(bytes[i]) ? 1U : 0U) << i;
    return mask;
}

KELCL_AVX2_INLINE std::size_t lowestBit(std::uint64_t mask) {
    return static_cast<std::size_t>(std::countr_zero(mask));
}
KELCL_AVX2_INLINE std::size_t highestBit(std::uint64_t mask) {
    return static_cast<std::size_t>(63 - std::countl_zero(mask));
}
KELCL_AVX2_INLINE std::size_t bitCount(std::uint64_t mask) {
    return static_cast<std::size_t>(_mm_popcnt_u64(mask));
}

template <class Matcher>
KELCL_AVX2 std::size_t findFirst(std::string_view text, Matcher matcher) {
    char const* const bytes = text.data();
    std::size_t const n = text.size();
    if (n < 32) {
        std::uint32_t const mask = maskOfFewer(bytes, n, matcher);
        return mask != 0 ? lowestBit(mask) : notFound;
    }
    std::size_t i = 0;
    for (; n - i >= 64; i += 64)
        if (std::uint64_t const mask = maskOf64(bytes + i, matcher); mask != 0) return i + lowestBit(mask);
    if (n - i >= 32) {
        if (std::uint32_t const mask = maskOf32(bytes + i, matcher); mask != 0) return i + lowestBit(mask);
    }
    std::uint32_t const mask = maskOf32(bytes + n - 32, matcher);
    return mask != 0 ? n - 32 + lowestBit(mask) : notFound;
}

template <class Matcher>
KELCL_AVX2 std::size_t findLast(std::string_view text, Matcher matcher) {
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
KELCL_AVX2_INLINE std::uint32_t maskOfEnd(std::string_view text, std::size_t n, Matcher matcher) {
    if (text.size() < 32) return maskOfFewer(text.data() + text.size() - n, n, matcher);
    return n == 0 ? 0 : maskOf32(text.data() + text.size() - 32, matcher) >> (32 - n);
}

template <class Matcher>
KELCL_AVX2 std::size_t count(std::string_view text, Matcher matcher) {
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
KELCL_AVX2 std::uint64_t maskOfStart(std::string_view text, Matcher matcher) {
    char const* const bytes = text.data();
    std::size_t const n = text.size();
    if (n >= 64) return maskOf64(bytes, matcher);
    if (n < 32) return maskOfFewer(bytes, n, matcher);
    return maskOf32(bytes, matcher) | std::uint64_t{maskOfFewer(bytes + 32, n - 32, matcher)} << 32U;
}

template <class Matcher>
KELCL_AVX2 std::size_t countRuns(std::string_view text, Matcher matcher) {
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

} // namespace avx2
#endif

template <class Matcher>
std::size_t findFirst(std::string_view text, Matcher matcher) {
#if KELCL_AVX2_KERNELS
    if (processorHasAvx2()) return avx2::findFirst(text, matcher);
#endif
    return portable::findFirst(text, matcher);
}

template <class Matcher>
std::size_t findLast(std::string_view text, Matcher matcher) {
#if KELCL_AVX2_KERNELS
    if (processorHasAvx2()) return avx2::findLast(text, matcher);
#endif
    return portable::findLast(text, matcher);
}

template <class Matcher>
std::size_t count(std::string_view text, Matcher matcher) {
#if KELCL_AVX2_KERNELS
    if (processorHasAvx2()) return avx2::count(text, matcher);
#endif
    return portable::count(text, matcher);
}

template <class Matcher>
std::uint64_t maskOfStart(std::string_view text, Matcher matcher) {
#if KELCL_AVX2_KERNELS
    if (processorHasAvx2()) return avx2::maskOfStart(text, matcher);
#endif
    return portable::maskOfStart(text, matcher);
}

template <class Matcher>
std::size_t countRuns(std::string_view text, Matcher matcher) {
#if KELCL_AVX2_KERNELS
    if (processorHasAvx2()) return avx2::countRuns(text, matcher);
#endif
    return portable::countRuns(text, matcher);
}

} // namespace kelcl

#endif
