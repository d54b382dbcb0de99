// Hexadecimal and binary digits with AVX2, where that is more than twice as fast as what the compiler makes
// of loops. Each function does as many whole blocks as there are; the rest is left to the plain forms in
// digits.cpp.
#ifndef KELCL_STRING_DIGITS_AVX2_H
#define KELCL_STRING_DIGITS_AVX2_H

#include "string/byte_scan.h"

#if KELCL_AVX2_KERNELS

namespace kelcl::avx2 {

KELCL_AVX2_INLINE void storeBlock(char* bytes, __m256i block) {
    _mm256_storeu_si256(reinterpret_cast<__m256i*>(bytes), block);
}

/// 16 values, each as 16 bits, of 32 hexadecimal digits.
KELCL_AVX2_INLINE __m256i hexPairValues(char const* digits) {
    __m256i const codes = loadBlock(digits);
    // The low bits of letters of either case count from 1, where they should from 10.
    __m256i const letters = _mm256_cmpgt_epi8(codes, _mm256_set1_epi8('9'));
    __m256i const raised = _mm256_add_epi8(codes, _mm256_and_si256(letters, _mm256_set1_epi8(9)));
    __m256i const values = _mm256_and_si256(raised, _mm256_set1_epi8(15));
    return _mm256_maddubs_epi16(values,
                                _mm256_set1_epi16(0x0110)); // 16 times the first of two plus the second
}

/// Reads 64 hexadecimal digits at a time into 32 bytes; returns how many digits it has read.
KELCL_AVX2 inline std::size_t readHexBlocks(char* out, char const* in, std::size_t digits) {
    std::size_t i = 0;
    for (; digits - i >= 64; i += 64) {
        __m256i const packed = _mm256_packus_epi16(hexPairValues(in + i), hexPairValues(in + i + 32));
        storeBlock(out + i / 2,
                   _mm256_permute4x64_epi64(packed, 0xD8)); // packing works on each half by itself
    }
    return i;
}

/// Writes 4 bytes at a time as 32 binary digits; returns how many bytes it has written.
KELCL_AVX2 inline std::size_t writeBinaryBlocks(char* out, char const* in, std::size_t n) {
    __m256i const byteOfDigit =
        _mm256_set_epi64x(0x0303030303030303, 0x0202020202020202, 0x0101010101010101, 0);
    __m256i const bitOfDigit = _mm256_set1_epi64x(0x0102040810204080);
    std::size_t i = 0;
    for (; n - i >= 4; i += 4) {
        __m256i const bytes = _mm256_shuffle_epi8(_mm256_set1_epi32(loadWord<int>(in + i)), byteOfDigit);
        __m256i const set = _mm256_cmpeq_epi8(_mm256_and_si256(bytes, bitOfDigit), bitOfDigit);
        storeBlock(out + 8 * i, _mm256_sub_epi8(_mm256_set1_epi8('0'), set)); // set is -1 or 0
    }
    return i;
}

/// Reads 32 binary digits at a time into 4 bytes; returns how many digits it has read.
KELCL_AVX2 inline std::size_t readBinaryBlocks(char* out, char const* in, std::size_t digits) {
    // A mask takes its lowest bit from the first byte, but the first of eight digits is the highest bit.
    __m256i const eachEightReversed =
        _mm256_set_epi64x(0x08090A0B0C0D0E0F, 0x0001020304050607, 0x08090A0B0C0D0E0F, 0x0001020304050607);
    std::size_t i = 0;
    for (; digits - i >= 32; i += 32) {
        __m256i const lowBitsOnTop = _mm256_slli_epi16(loadBlock(in + i), 7);
        int const bits = _mm256_movemask_epi8(_mm256_shuffle_epi8(lowBitsOnTop, eachEightReversed));
        std::memcpy(out + i / 8, &bits, sizeof bits);
    }
    return i;
}

} // namespace kelcl::avx2

#endif

#endif
