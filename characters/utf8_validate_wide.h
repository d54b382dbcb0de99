// The check of long texts of UTF-8 by 64 bytes at a time, on processors that look up 128 entries at once: one
// table tells what a byte, if it is not ASCII, allows as mistakes in the next one. The rows are those of
// utf8_validate.h.
#ifndef KELCL_CHARACTERS_UTF8_VALIDATE_WIDE_H
#define KELCL_CHARACTERS_UTF8_VALIDATE_WIDE_H

#include "characters/utf8_validate.h"

#if KELCL_HAS_WIDE

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <immintrin.h>

namespace kelcl::wide_utf8 {

inline constexpr std::size_t step = 64;
inline constexpr std::size_t turn = 4 * step;

/// By a byte from 0x80 on: what both of its halves allow.
inline constexpr auto byPrevious = [] {
    std::array<unsigned char, 128> mistakes{};
    for (std::size_t i = 0; i < mistakes.size(); ++i)
        mistakes[i] = blocks::byHighOfPrevious[8 + i / 16] & blocks::byLowOfPrevious[i % 16];
    return mistakes;
}();

/// By the high half of a byte, four times over, as each quarter of a register looks up in its own.
inline constexpr auto byHigh = [] {
    std::array<unsigned char, step> mistakes{};
    for (std::size_t i = 0; i < mistakes.size(); ++i)
        mistakes[i] = blocks::byHigh[i % 16];
    return mistakes;
}();

class Mistakes {
public:
    KELCL_WIDE_INLINE Mistakes()
        : lowRows_(_mm512_loadu_si512(byPrevious.data())),
          highRows_(_mm512_loadu_si512(byPrevious.data() + step)),
          rowsOfHigh_(_mm512_loadu_si512(byHigh.data())) {}

    /// What is wrong in the 64 bytes at a place, which three bytes stand before: bits that are all 0 where
    /// they continue plain text.
    KELCL_WIDE_INLINE __m512i at(char const* p) const {
        return in(load(p), load(p - 1), load(p - 2), load(p - 3));
    }

    /// The same, given the bytes and those one, two and three places earlier.
    KELCL_WIDE_INLINE __m512i in(__m512i bytes, __m512i oneEarlier, __m512i twoEarlier,
                                 __m512i threeEarlier) const {
        constexpr int orAnd = 0xA8; // (a | b) & c
        __m512i const third = _mm512_subs_epu8(twoEarlier, repeated(0xE0 - 0x80));
        __m512i const fourth = _mm512_subs_epu8(threeEarlier, repeated(0xF0 - 0x80));
        __m512i const due =
            _mm512_ternarylogic_epi64(third, fourth, repeated(blocks::twoContinuations), orAnd);
        __m512i const high = _mm512_and_si512(_mm512_srli_epi16(bytes, 4), repeated(0x0F));
        constexpr int andXor = 0x6A; // (a & b) ^ c
        return _mm512_ternarylogic_epi64(after(oneEarlier), _mm512_shuffle_epi8(rowsOfHigh_, high), due,
                                         andXor);
    }

    static KELCL_WIDE_INLINE __m512i load(char const* p) { return _mm512_loadu_si512(p); }

private:
    static KELCL_WIDE_INLINE __m512i repeated(unsigned int byte) {
        return _mm512_set1_epi8(static_cast<char>(byte));
    }
    /// What each byte allows in the one after it.
    KELCL_WIDE_INLINE __m512i after(__m512i bytes) const {
        return _mm512_mask_mov_epi8(repeated(blocks::tooLong), _mm512_movepi8_mask(bytes),
                                    _mm512_permutex2var_epi8(lowRows_, bytes, highRows_));
    }

    __m512i lowRows_;
    __m512i highRows_;
    __m512i rowsOfHigh_;
};

/// Whether a turn and the four bytes before it are ASCII.
KELCL_WIDE_INLINE bool isAsciiTurn(char const* four) {
    std::uint32_t before;
    std::memcpy(&before, four - sizeof before, sizeof before);
    __m512i const all = Mistakes::load(four) | Mistakes::load(four + step) | Mistakes::load(four + 2 * step) |
                        Mistakes::load(four + 3 * step);
    return (before & 0x80808080) == 0 && _mm512_movepi8_mask(all) == 0;
}

KELCL_WIDE_INLINE bool isPlainTurn(char const* four, Mistakes const& mistakes) {
    __m512i const found = mistakes.at(four) | mistakes.at(four + step) | mistakes.at(four + 2 * step) |
                          mistakes.at(four + 3 * step);
    return _mm512_test_epi8_mask(found, found) == 0;
}

/// Goes on from `at`, which four bytes of plain text stand before, by whole turns without a mistake, and
/// returns how far. The text has at least a step from there on; the steps after it are aligned.
KELCL_WIDE inline std::size_t plainTurns(char const* p, std::size_t at, std::size_t n) {
    Mistakes const mistakes;
    __m512i const first = mistakes.at(p + at);
    if (_mm512_test_epi8_mask(first, first) != 0) return at;
    at += step - reinterpret_cast<std::uintptr_t>(p + at) % step;
    while (n - at >= turn && (isAsciiTurn(p + at) || isPlainTurn(p + at, mistakes)))
        at += turn;
    return at;
}

} // namespace kelcl::wide_utf8

#endif

#endif
