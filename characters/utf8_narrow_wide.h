// Wide characters to UTF-8, 16 at a time, on processors that take any eight bits of a number as a byte, and
// move the bytes chosen by a mask together.
#ifndef KELCL_CHARACTERS_UTF8_NARROW_WIDE_H
#define KELCL_CHARACTERS_UTF8_NARROW_WIDE_H

#include "bytes/dispatch.h"
#include "characters/utf8.h"

#if KELCL_HAS_WIDE

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <immintrin.h>

namespace kelcl::wide_utf8 {

/// Which of 16 values have at least so many bytes.
struct Lengths {
    __mmask16 one, two, three, four;
};

KELCL_WIDE_INLINE __m512i numbers(unsigned int number) { return _mm512_set1_epi32(static_cast<int>(number)); }

/// A number for each value, by its length, and 0 for those that do not count.
KELCL_WIDE_INLINE __m512i byLength(Lengths const& lengths, unsigned int one, unsigned int two,
                                   unsigned int three, unsigned int four) {
    __m512i result = _mm512_maskz_mov_epi32(lengths.one, numbers(one));
    result = _mm512_mask_mov_epi32(result, lengths.two, numbers(two));
    result = _mm512_mask_mov_epi32(result, lengths.three, numbers(three));
    return _mm512_mask_mov_epi32(result, lengths.four, numbers(four));
}

/// Whether all are code points.
KELCL_WIDE_INLINE bool areCodePoints(__m512i values) {
    __m512i const tops = _mm512_and_si512(values, numbers(0xFFFFF800));
    return (_mm512_cmpgt_epu32_mask(values, numbers(0x10FFFF)) |
            _mm512_cmpeq_epi32_mask(tops, numbers(0xD800))) == 0;
}

/// Writes n code points, from 1 to 16. Returns how many bytes they take, or 0 if they are not all such or
/// have no room. Reads and writes nothing too much.
KELCL_WIDE_INLINE std::size_t narrowStep(char* out, std::size_t room, wchar_t const* in, std::size_t n) {
    auto const those = static_cast<__mmask16>((1U << n) - 1);
    __m512i const values = _mm512_maskz_loadu_epi32(those, in);
    if (_mm512_cmpge_epu32_mask(values, numbers(0x80)) == 0) {
        if (n > room) return 0;
        __m128i const ascii = _mm512_maskz_cvtepi32_epi8(those, values);
        if (n == 16)
            _mm_storeu_si128(reinterpret_cast<__m128i*>(out), ascii);
        else
            _mm512_mask_storeu_epi8(out, those, _mm512_zextsi128_si512(ascii));
        return n;
    }
    if (!areCodePoints(values)) return 0;
    Lengths const lengths{those, _mm512_cmpge_epu32_mask(values, numbers(0x80)),
                          _mm512_cmpge_epu32_mask(values, numbers(0x800)),
                          _mm512_cmpge_epu32_mask(values, numbers(0x10000))};
    // Where the bits of each byte begin, the first byte lowest, in two values that are one number of 64 bits.
    __m512i const begins =
        _mm512_or_si512(byLength(lengths, 0, 0x06, 0x060C, 0x060C12), _mm512_set1_epi64(0x2020202000000000));
    __m512i const bits = byLength(lengths, 0x7F, 0x3F3F, 0x3F3F3F, 0x3F3F3F3F);
    __m512i const marks = byLength(lengths, 0, 0x80C0, 0x8080E0, 0x808080F0);
    constexpr std::uint64_t all = ~std::uint64_t{0};
    constexpr int andOr = 0xEA; // (a & b) | c
    __m512i const bytes = _mm512_ternarylogic_epi64(_mm512_maskz_multishift_epi64_epi8(all, begins, values),
                                                    bits, marks, andOr);
    std::uint64_t const used = _mm512_test_epi8_mask(bits, bits);
    auto const count = static_cast<std::size_t>(std::popcount(used));
    if (count > room) return 0;
    _mm512_mask_storeu_epi8(out, all >> (64 - count), _mm512_maskz_compress_epi8(used, bytes));
    return count;
}

/// What n code points take.
KELCL_WIDE inline std::size_t lengthOfAll(wchar_t const* values, std::size_t n) {
    std::size_t bytes = n;
    for (std::size_t at = 0; at < n; at += 16) {
        auto const those = static_cast<__mmask16>((1U << std::min<std::size_t>(n - at, 16)) - 1);
        __m512i const some = _mm512_maskz_loadu_epi32(those, values + at);
        for (unsigned int const least : {0x80U, 0x800U, 0x10000U})
            bytes += static_cast<std::size_t>(
                std::popcount(unsigned{_mm512_cmpge_epu32_mask(some, numbers(least))}));
    }
    return bytes;
}

/// Writes ASCII characters 64 at a time, as long as there are so many. Returns how many.
KELCL_WIDE_INLINE std::size_t narrowAscii(char* out, std::size_t room, wchar_t const* in, std::size_t n) {
    constexpr std::size_t turn = 64;
    constexpr __mmask16 all = 0xFFFF;
    std::size_t at = 0;
    for (std::size_t const most = std::min(n, room); most - at >= turn; at += turn) {
        __m512i const first = _mm512_loadu_si512(in + at);
        __m512i const second = _mm512_loadu_si512(in + at + 16);
        __m512i const third = _mm512_loadu_si512(in + at + 32);
        __m512i const fourth = _mm512_loadu_si512(in + at + 48);
        if (_mm512_cmpge_epu32_mask(first | second | third | fourth, numbers(0x80)) != 0) break;
        auto* const to = reinterpret_cast<__m128i*>(out + at);
        _mm_storeu_si128(to, _mm512_maskz_cvtepi32_epi8(all, first));
        _mm_storeu_si128(to + 1, _mm512_maskz_cvtepi32_epi8(all, second));
        _mm_storeu_si128(to + 2, _mm512_maskz_cvtepi32_epi8(all, third));
        _mm_storeu_si128(to + 3, _mm512_maskz_cvtepi32_epi8(all, fourth));
    }
    return at;
}

/// As far as all 16, or those that are left, are code points and have room.
KELCL_WIDE inline Extent narrow(char* out, std::size_t room, wchar_t const* in, std::size_t n) {
    constexpr std::size_t most = 16;
    Extent done{0, 0};
    while (done.characters < n) {
        std::size_t const count = std::min(n - done.characters, most);
        std::size_t const size = narrowStep(out + done.bytes, room - done.bytes, in + done.characters, count);
        if (size == 0) break;
        done = {done.bytes + size, done.characters + count};
        if (size != count) continue;
        std::size_t const ascii =
            narrowAscii(out + done.bytes, room - done.bytes, in + done.characters,
                        n - done.characters); // where there is some, there is often more
        done = {done.bytes + ascii, done.characters + ascii};
    }
    return done;
}

} // namespace kelcl::wide_utf8

#endif

#endif
