// The places of a text where the first, the middle and the last byte of a pattern stand, told for up to 64
// places at a time, in blocks and in the wider form. Whether the pattern stands there is the caller's
// business. Only the search for patterns includes this.
#ifndef KELCL_BYTES_PATTERN_CANDIDATES_H
#define KELCL_BYTES_PATTERN_CANDIDATES_H

#include "bytes/byte_scan.h"
#include "bytes/dispatch.h"

#include <cstddef>
#include <cstdint>
#include <string_view>

#if KELCL_HAS_BLOCKS

#if KELCL_HAS_WIDE
#include <immintrin.h>
#endif

namespace kelcl {

/// At most 64 places in a row: which is the first, and for each, the first one lowest, whether it is a
/// candidate.
struct Candidates {
    std::size_t at;
    std::uint64_t mask;
};

namespace blocks {

class CandidateTest {
public:
    KELCL_BLOCKS_INLINE CandidateTest(char const* text, std::string_view pattern)
        : text_(text), pattern_(pattern), middle_(pattern.size() / 2) {}

    KELCL_BLOCKS_INLINE std::uint64_t mask64(std::size_t at) const {
        Block const first = of32(at);
        Block const last = of32(at + blockSize);
        if (!(first | last).anyTopBit()) return 0;
        return first.topBits() | std::uint64_t{last.topBits()} << 32U;
    }
    /// The same for the first n places, n at most 64.
    KELCL_BLOCKS_INLINE std::uint64_t maskOfStart(std::size_t n) const {
        if (n >= 64) return mask64(0);
        if (n >= blockSize) // two blocks that overlap
            return of32(0).topBits() | std::uint64_t{of32(n - blockSize).topBits()} << (n - blockSize);
        // of so few the middle would cost more than it saves
        return maskOfFewer(text_, n, EqualTo{pattern_.front()}) &
               maskOfFewer(text_ + pattern_.size() - 1, n, EqualTo{pattern_.back()});
    }

private:
    KELCL_BLOCKS_INLINE Block of32(std::size_t at) const {
        char const* const place = text_ + at;
        return equal(Block::load(place), Block::of(pattern_.front())) &
               equal(Block::load(place + pattern_.size() - 1), Block::of(pattern_.back())) &
               equal(Block::load(place + middle_), Block::of(pattern_[middle_]));
    }

    char const* text_;
    std::string_view pattern_;
    std::size_t middle_;
};

/// The first candidates of a text that has so many places, at least one. Without any the mask is 0.
KELCL_BLOCKS inline Candidates firstCandidates(char const* text, std::size_t places,
                                               std::string_view pattern) {
    CandidateTest const test(text, pattern);
    if (places <= 64) return {0, test.maskOfStart(places)};
    for (std::size_t at = 0; places - at > 64; at += 64)
        if (std::uint64_t const mask = test.mask64(at); mask != 0) return {at, mask};
    return {places - 64, test.mask64(places - 64)};
}

/// The last ones.
KELCL_BLOCKS inline Candidates lastCandidates(char const* text, std::size_t places,
                                              std::string_view pattern) {
    CandidateTest const test(text, pattern);
    for (; places > 64; places -= 64)
        if (std::uint64_t const mask = test.mask64(places - 64); mask != 0) return {places - 64, mask};
    return {0, test.maskOfStart(places)};
}

} // namespace blocks

#if KELCL_HAS_WIDE
namespace wide {

class CandidateTest {
public:
    KELCL_WIDE_INLINE CandidateTest(char const* text, std::string_view pattern)
        : text_(text), toMiddle_(pattern.size() / 2), toLast_(pattern.size() - 1),
          isByThree_(static_cast<signed char>(pattern[toMiddle_] & pattern[toLast_]) >= 0),
          first_(_mm512_set1_epi8(pattern.front())), middle_(_mm512_set1_epi8(pattern[toMiddle_])),
          last_(_mm512_set1_epi8(pattern.back())) {}

    KELCL_WIDE_INLINE std::uint64_t mask64(std::size_t at) const {
        __m512i const difference = differences(at);
        return _mm512_testn_epi8_mask(difference, difference);
    }
    /// The same for the first n places, n from 1 to 64. Nothing after them is read.
    KELCL_WIDE_INLINE std::uint64_t maskOfStart(std::size_t n) const {
        __mmask64 const those = ~std::uint64_t{0} >> (64 - n);
        __m512i const difference = differences(_mm512_maskz_loadu_epi8(those, text_),
                                               _mm512_maskz_loadu_epi8(those, text_ + toMiddle_),
                                               _mm512_maskz_loadu_epi8(those, text_ + toLast_));
        return _mm512_mask_testn_epi8_mask(those, difference, difference);
    }

    /// Up to which place from `at` on, which is 64 at least, there are none, as far as it is told for 128 at
    /// a time. Bytes of characters that are not ASCII are so rare that the middle and the last one tell.
    KELCL_WIDE_INLINE std::size_t passedBy(std::size_t at, std::size_t places) const {
        return isByThree_ ? passedBy<true>(at, places) : passedBy<false>(at, places);
    }

private:
    static constexpr int orXor = 0xF6; // a | (b ^ c)

    /// 0 for each place that is a candidate.
    KELCL_WIDE_INLINE __m512i differences(__m512i firsts, __m512i middles, __m512i lasts) const {
        __m512i const ofFirst = _mm512_xor_si512(firsts, first_);
        return _mm512_ternarylogic_epi64(_mm512_ternarylogic_epi64(ofFirst, middles, middle_, orXor), lasts,
                                         last_, orXor);
    }
    KELCL_WIDE_INLINE __m512i differences(std::size_t at) const {
        char const* const place = text_ + at;
        return differences(_mm512_loadu_si512(place), _mm512_loadu_si512(place + toMiddle_),
                           _mm512_loadu_si512(place + toLast_));
    }
    KELCL_WIDE_INLINE __m512i lastDifferences(std::size_t at) const {
        char const* const place = text_ + at;
        __m512i const ofMiddle = _mm512_xor_si512(_mm512_loadu_si512(place + toMiddle_), middle_);
        return _mm512_ternarylogic_epi64(ofMiddle, _mm512_loadu_si512(place + toLast_), last_, orXor);
    }

    template <bool isByThree>
    KELCL_WIDE_INLINE bool isAnyOf128(std::size_t at) const {
        __m512i const nearest = isByThree ? _mm512_min_epu8(differences(at), differences(at + 64))
                                          : _mm512_min_epu8(lastDifferences(at), lastDifferences(at + 64));
        return _mm512_testn_epi8_mask(nearest, nearest) != 0;
    }
    template <bool isByThree>
    KELCL_WIDE_INLINE std::size_t passedBy(std::size_t at, std::size_t places) const {
        char const* const loaded = text_ + at + (isByThree ? 0 : toMiddle_);
        at -= reinterpret_cast<std::uintptr_t>(loaded) % 64; // one load of each step crosses no cache line
        while (places - at >= 128 && !isAnyOf128<isByThree>(at))
            at += 128;
        return at;
    }

    char const* text_;
    std::size_t toMiddle_;
    std::size_t toLast_;
    bool isByThree_;
    __m512i first_;
    __m512i middle_;
    __m512i last_;
};

/// The same as in blocks.
KELCL_WIDE inline Candidates firstCandidates(char const* text, std::size_t places, std::string_view pattern) {
    CandidateTest const test(text, pattern);
    if (places <= 64) return {0, test.maskOfStart(places)};
    std::uint64_t mask = test.mask64(0);
    if (mask != 0) return {0, mask};
    constexpr std::size_t many = 256;
    std::size_t at = places < many ? 64 : test.passedBy(64, places);
    for (; places - at > 64; at += 64)
        if (mask = test.mask64(at); mask != 0) return {at, mask};
    return {places - 64, test.mask64(places - 64)};
}

KELCL_WIDE inline Candidates lastCandidates(char const* text, std::size_t places, std::string_view pattern) {
    CandidateTest const test(text, pattern);
    for (; places > 64; places -= 64)
        if (std::uint64_t const mask = test.mask64(places - 64); mask != 0) return {places - 64, mask};
    return {0, test.maskOfStart(places)};
}

} // namespace wide
#endif

/// In the form for this processor, which must have what blocks need.
inline Candidates firstCandidates(char const* text, std::size_t places, std::string_view pattern) {
#if KELCL_HAS_WIDE
    if (processorHasWide()) return wide::firstCandidates(text, places, pattern);
#endif
    return blocks::firstCandidates(text, places, pattern);
}
inline Candidates lastCandidates(char const* text, std::size_t places, std::string_view pattern) {
#if KELCL_HAS_WIDE
    if (processorHasWide()) return wide::lastCandidates(text, places, pattern);
#endif
    return blocks::lastCandidates(text, places, pattern);
}

} // namespace kelcl

#endif

#endif
