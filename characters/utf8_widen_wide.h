// Plain UTF-8 to wide characters, 64 bytes at a time, on processors that move the bytes chosen by a mask
// together: the first bytes of all characters, their second ones, and so on. As many characters stand then at
// the same places of four rows.
#ifndef KELCL_CHARACTERS_UTF8_WIDEN_WIDE_H
#define KELCL_CHARACTERS_UTF8_WIDEN_WIDE_H

#include "characters/utf8_validate_wide.h"

#if KELCL_HAS_WIDE

#include <algorithm>
#include <bit>

namespace kelcl::wide_utf8 {

/// The bytes of up to 64 characters, by their places in these; what a character has not is any byte.
struct Rows {
    __m512i first, second, third, fourth;
};

/// 16 bytes of a row as numbers. Here and below, the compiler's forms of operations without a mask begin with
/// a register that is not set, which it then warns of.
constexpr __mmask16 allOfThem = 0xFFFF;
template <int sixteen>
KELCL_WIDE_INLINE __m512i numbersOf(__m512i row) {
    return _mm512_maskz_cvtepu8_epi32(allOfThem, _mm512_maskz_extracti32x4_epi32(0xF, row, sixteen));
}

/// 16 values with six more bits of those that have another byte, less what its mark and that of the lead
/// make.
KELCL_WIDE_INLINE __m512i appended(__m512i value, __mmask16 those, __m512i bytes, int marks) {
    __m512i const shifted = _mm512_add_epi32(_mm512_maskz_slli_epi32(allOfThem, value, 6), bytes);
    return _mm512_mask_sub_epi32(value, those, shifted, _mm512_set1_epi32(marks));
}

/// 16 code points.
template <int sixteen>
KELCL_WIDE_INLINE __m512i codePoints(Rows const& rows) {
    __m512i const first = numbersOf<sixteen>(rows.first);
    __mmask16 const ofTwo = _mm512_cmpge_epi32_mask(first, _mm512_set1_epi32(0xC0));
    __mmask16 const ofThree = _mm512_cmpge_epi32_mask(first, _mm512_set1_epi32(0xE0));
    __mmask16 const ofFour = _mm512_cmpge_epi32_mask(first, _mm512_set1_epi32(0xF0));
    __m512i const two = appended(first, ofTwo, numbersOf<sixteen>(rows.second), (0xC0 << 6) + 0x80);
    __m512i const three = appended(two, ofThree, numbersOf<sixteen>(rows.third), (0x20 << 12) + 0x80);
    return appended(three, ofFour, numbersOf<sixteen>(rows.fourth), (0x10 << 18) + 0x80);
}

/// Stores `count` of the code points, from number 16 * sixteen on.
template <int sixteen>
KELCL_WIDE_INLINE void storeCodePoints(wchar_t* out, Rows const& rows, std::size_t count) {
    constexpr std::size_t most = 16;
    if (count <= most * sixteen) return;
    std::size_t const n = std::min(count - most * sixteen, most);
    auto const those = static_cast<__mmask16>((1U << n) - 1);
    _mm512_mask_storeu_epi32(out + most * sixteen, those, codePoints<sixteen>(rows));
}

/// Widens the characters of a step: at most 64 bytes, which begin with a character. Only those that are whole
/// count; a mistake anywhere leaves all of them out.
KELCL_WIDE_INLINE Extent widenStep(wchar_t* out, char const* in, std::size_t size, Mistakes const& mistakes) {
    std::uint64_t const those = ~std::uint64_t{0} >> (step - size);
    auto const earlier = [in, those](int places)
                             KELCL_WIDE { return _mm512_maskz_loadu_epi8(those << places, in - places); };
    auto const later = [in, those](int places)
                           KELCL_WIDE { return _mm512_maskz_loadu_epi8(those >> places, in + places); };
    __m512i const bytes = earlier(0);
    __m512i const found = mistakes.in(bytes, earlier(1), earlier(2), earlier(3));
    if (_mm512_mask_test_epi8_mask(those, found, found) != 0) return {0, 0};
    __m512i const highestContinuation = _mm512_set1_epi8(static_cast<char>(0xBF));
    std::uint64_t const starts = _mm512_mask_cmpgt_epi8_mask(those, bytes, highestContinuation);
    Extent const whole =
        blocks::withoutCutCharacter(in, {size, static_cast<std::size_t>(std::popcount(starts))});
    Rows const rows{_mm512_maskz_compress_epi8(starts, bytes), _mm512_maskz_compress_epi8(starts, later(1)),
                    _mm512_maskz_compress_epi8(starts, later(2)),
                    _mm512_maskz_compress_epi8(starts, later(3))};
    storeCodePoints<0>(out, rows, whole.characters);
    storeCodePoints<1>(out, rows, whole.characters);
    storeCodePoints<2>(out, rows, whole.characters);
    storeCodePoints<3>(out, rows, whole.characters);
    return whole;
}

/// Widens the characters at the front of a text up to a step with a mistake. Reads and writes nothing too
/// much.
KELCL_WIDE inline Extent widen(wchar_t* out, char const* in, std::size_t n) {
    Mistakes const mistakes;
    Extent done{0, 0};
    while (done.bytes < n) {
        Extent const more =
            widenStep(out + done.characters, in + done.bytes, std::min(n - done.bytes, step), mistakes);
        if (more.bytes == 0) break;
        done = {done.bytes + more.bytes, done.characters + more.characters};
    }
    return done;
}

} // namespace kelcl::wide_utf8

#endif

#endif
