// The block of block.h in a register of AVX2.
#ifndef KELCL_BYTES_BLOCK_AVX2_H
#define KELCL_BYTES_BLOCK_AVX2_H

#include <immintrin.h>

namespace kelcl::blocks {

struct Half {
    __m128i bytes;

    static KELCL_BLOCKS_INLINE Half load(void const* p) {
        return {_mm_loadu_si128(static_cast<__m128i const*>(p))};
    }
    /// 8 bytes, then zeros.
    static KELCL_BLOCKS_INLINE Half loadEight(void const* p) {
        return {_mm_loadl_epi64(static_cast<__m128i const*>(p))};
    }
    KELCL_BLOCKS_INLINE void store(void* p) const { _mm_storeu_si128(static_cast<__m128i*>(p), bytes); }
    KELCL_BLOCKS_INLINE bool isZero() const { return _mm_testz_si128(bytes, bytes) != 0; }
};

KELCL_BLOCKS_INLINE Half operator^(Half a, Half b) { return {a.bytes ^ b.bytes}; }

KELCL_BLOCKS_INLINE Half lookUp(Half table, Half index) {
    return {_mm_shuffle_epi8(table.bytes, index.bytes)};
}

/// Each four bytes as one number of 32 bits: the first, 64 times the second, 64 times 64 times the third and
/// so on.
KELCL_BLOCKS_INLINE Half sumsToBase64(Half digits) {
    __m128i const pairs = _mm_maddubs_epi16(digits.bytes, _mm_set1_epi16(0x4001));
    return {_mm_madd_epi16(pairs, _mm_set1_epi32(0x10000001))};
}

/// The differences of four numbers of 32 bits.
KELCL_BLOCKS_INLINE Half minusFour(Half a, Half b) { return {_mm_sub_epi32(a.bytes, b.bytes)}; }

struct Block {
    __m256i bytes;

    static KELCL_BLOCKS_INLINE Block load(void const* p) {
        return {_mm256_loadu_si256(static_cast<__m256i const*>(p))};
    }
    /// `size` bytes from one place, as many from another, then any.
    template <std::size_t size>
    static KELCL_BLOCKS_INLINE Block loadTwo(char const* first, char const* last) {
        if constexpr (size == 16) return {_mm256_set_m128i(Half::load(last).bytes, Half::load(first).bytes)};
        if constexpr (size == 8)
            return {_mm256_castsi128_si256(
                _mm_set_epi64x(loadWord<long long>(last), loadWord<long long>(first)))};
        if constexpr (size == 4)
            return {_mm256_castsi128_si256(_mm_set_epi32(0, 0, loadWord<int>(last), loadWord<int>(first)))};
    }
    /// The last `n` bytes of a text of at least 16, fewer than a block, and zeros.
    static KELCL_BLOCKS_INLINE Block loadEnd(char const* p, std::size_t n) {
        std::size_t const surplus = (n < 16 ? 16 : 32) - n;
        __m128i const last = lookUp(Half::load(p + n - 16), Half::load(&towardsFirst[surplus])).bytes;
        return {n < 16 ? _mm256_zextsi128_si256(last) : _mm256_set_m128i(last, Half::load(p).bytes)};
    }
    static KELCL_BLOCKS_INLINE Block of(int byte) { return {_mm256_set1_epi8(static_cast<char>(byte))}; }
    static KELCL_BLOCKS_INLINE Block twice(void const* half) {
        return {_mm256_broadcastsi128_si256(Half::load(half).bytes)};
    }
    static KELCL_BLOCKS_INLINE Block twice(Half half) { return {_mm256_broadcastsi128_si256(half.bytes)}; }
    /// Four bytes, eight times over.
    static KELCL_BLOCKS_INLINE Block ofFour(char const* p) { return {_mm256_set1_epi32(loadWord<int>(p))}; }
    /// Eight bytes, the lowest of the number first, four times over.
    static KELCL_BLOCKS_INLINE Block ofEight(std::uint64_t eight) {
        return {_mm256_set1_epi64x(static_cast<long long>(eight))};
    }
    static KELCL_BLOCKS_INLINE Block zero() { return {_mm256_setzero_si256()}; }

    KELCL_BLOCKS_INLINE void store(void* p) const { _mm256_storeu_si256(static_cast<__m256i*>(p), bytes); }
    /// What loadTwo of this size has loaded.
    template <std::size_t size>
    KELCL_BLOCKS_INLINE void storeTwo(char* first, char* last) const {
        if constexpr (size == 16) {
            half<0>().store(first);
            half<1>().store(last);
        } else {
            long long const low = _mm_cvtsi128_si64(half<0>().bytes);
            long long const high = size == 8 ? _mm_extract_epi64(half<0>().bytes, 1) : low >> 32;
            std::memcpy(first, &low, size);
            std::memcpy(last, &high, size);
        }
    }
    template <int number>
    KELCL_BLOCKS_INLINE Half half() const {
        return {_mm256_extracti128_si256(bytes, number)};
    }

    KELCL_BLOCKS_INLINE std::uint32_t topBits() const {
        return static_cast<std::uint32_t>(_mm256_movemask_epi8(bytes));
    }
    KELCL_BLOCKS_INLINE std::uint32_t lowBits() const {
        return static_cast<std::uint32_t>(_mm256_movemask_epi8(_mm256_slli_epi16(bytes, 7)));
    }
    KELCL_BLOCKS_INLINE bool anyTopBit() const { return _mm256_movemask_epi8(bytes) != 0; }
    KELCL_BLOCKS_INLINE bool isZero() const { return _mm256_testz_si256(bytes, bytes) != 0; }

    KELCL_BLOCKS_INLINE Block lowHalves() const { return {bytes & of(15).bytes}; }
    KELCL_BLOCKS_INLINE Block highHalves() const { return {_mm256_srli_epi16(bytes, 4) & of(15).bytes}; }
};

KELCL_BLOCKS_INLINE Block operator&(Block a, Block b) { return {a.bytes & b.bytes}; }
KELCL_BLOCKS_INLINE Block operator|(Block a, Block b) { return {a.bytes | b.bytes}; }
KELCL_BLOCKS_INLINE Block operator^(Block a, Block b) { return {a.bytes ^ b.bytes}; }
KELCL_BLOCKS_INLINE Block operator~(Block a) { return a ^ Block::of(-1); }
KELCL_BLOCKS_INLINE Block operator+(Block a, Block b) { return {_mm256_add_epi8(a.bytes, b.bytes)}; }
KELCL_BLOCKS_INLINE Block operator-(Block a, Block b) { return {_mm256_sub_epi8(a.bytes, b.bytes)}; }
KELCL_BLOCKS_INLINE Block minusDownTo0(Block a, Block b) { return {_mm256_subs_epu8(a.bytes, b.bytes)}; }

KELCL_BLOCKS_INLINE Block equal(Block a, Block b) { return {_mm256_cmpeq_epi8(a.bytes, b.bytes)}; }
KELCL_BLOCKS_INLINE Block equalFours(Block a, Block b) { return {_mm256_cmpeq_epi32(a.bytes, b.bytes)}; }
KELCL_BLOCKS_INLINE Block atMost(Block a, Block b) {
    return {_mm256_cmpeq_epi8(_mm256_min_epu8(a.bytes, b.bytes), a.bytes)};
}
KELCL_BLOCKS_INLINE Block greaterSigned(Block a, Block b) { return {_mm256_cmpgt_epi8(a.bytes, b.bytes)}; }

/// Those of `a` where the answer is yes, else those of `b`.
KELCL_BLOCKS_INLINE Block chosen(Block answer, Block a, Block b) {
    return {_mm256_blendv_epi8(b.bytes, a.bytes, answer.bytes)};
}

KELCL_BLOCKS_INLINE Block lookUp(Block table, Block index) {
    return {_mm256_shuffle_epi8(table.bytes, index.bytes)};
}
/// Adding 0x70 leaves the low four bits of an index below 16, and sets the top bit of all others.
KELCL_BLOCKS_INLINE Block lookUpOrZero(Block table, Block index) {
    return {_mm256_shuffle_epi8(table.bytes, _mm256_adds_epu8(index.bytes, Block::of(0x70).bytes))};
}
KELCL_BLOCKS_INLINE Block lookUpByLowHalf(Block table, Block index) { return lookUp(table, index); }

template <int distance>
KELCL_BLOCKS_INLINE Block earlier(Block block, Block previous) {
    return {_mm256_alignr_epi8(block.bytes, _mm256_permute2x128_si256(previous.bytes, block.bytes, 0x21),
                               16 - distance)};
}

/// Each 32, 16, 8 or 4 bytes in reverse order.
template <std::size_t size>
KELCL_BLOCKS_INLINE Block reversedEach(Block block) {
    if constexpr (size == blockSize)
        return reversedEach<16>(Block{_mm256_permute4x64_epi64(block.bytes, 0x4E)});
    return lookUp(block, Block::twice(reversedPlaces<size>.data()));
}

/// The 64 values of two blocks, each below 16, as 32 bytes of two: the first of two is the high half.
KELCL_BLOCKS_INLINE Block joinedHalves(Block first, Block last) {
    __m256i const weights = _mm256_set1_epi16(0x0110); // 16 times the first plus the second
    __m256i const packed = _mm256_packus_epi16(_mm256_maddubs_epi16(first.bytes, weights),
                                               _mm256_maddubs_epi16(last.bytes, weights));
    return {_mm256_permute4x64_epi64(packed, 0xD8)}; // packing works on each half by itself
}

/// Stores 32 ASCII characters as wide characters.
KELCL_BLOCKS_INLINE void widenAscii(wchar_t* out, char const* in) {
    for (std::size_t i = 0; i < blockSize; i += 8)
        _mm256_storeu_si256(reinterpret_cast<__m256i*>(out + i),
                            _mm256_cvtepu8_epi32(Half::loadEight(in + i).bytes));
}

struct Words {
    __m256i words;

    static KELCL_BLOCKS_INLINE Words of(int word) { return {_mm256_set1_epi16(static_cast<short>(word))}; }
    template <int bits>
    KELCL_BLOCKS_INLINE Words shiftedLeft() const {
        return {_mm256_slli_epi16(words, bits)};
    }
    template <int bits>
    KELCL_BLOCKS_INLINE Words shiftedRight() const {
        return {_mm256_srli_epi16(words, bits)};
    }
    KELCL_BLOCKS_INLINE bool isZero() const { return _mm256_testz_si256(words, words) != 0; }
};

KELCL_BLOCKS_INLINE Words operator&(Words a, Words b) { return {a.words & b.words}; }
KELCL_BLOCKS_INLINE Words operator|(Words a, Words b) { return {a.words | b.words}; }
KELCL_BLOCKS_INLINE Words equal(Words a, Words b) { return {_mm256_cmpeq_epi16(a.words, b.words)}; }
KELCL_BLOCKS_INLINE Words atMost(Words a, Words b) {
    return {_mm256_cmpeq_epi16(_mm256_max_epu16(b.words, a.words), b.words)};
}
/// Those of `a` where the answer is yes, else those of `b`.
KELCL_BLOCKS_INLINE Words chosen(Words answer, Words a, Words b) {
    return {_mm256_blendv_epi8(b.words, a.words, answer.words)};
}

/// A word of each in turn: of the first four of each half, and of the last four.
KELCL_BLOCKS_INLINE Block interleavedFirst(Words a, Words b) {
    return {_mm256_unpacklo_epi16(a.words, b.words)};
}
KELCL_BLOCKS_INLINE Block interleavedLast(Words a, Words b) {
    return {_mm256_unpackhi_epi16(a.words, b.words)};
}

/// Answers with a byte instead of a word for each: 8 of the first, 8 of the second, and so for the other
/// half.
KELCL_BLOCKS_INLINE Block shortened(Words first, Words second) {
    return {_mm256_packs_epi16(first.words, second.words)};
}

/// 16 wide characters.
struct Sixteen {
    __m128i first, second, third, fourth;

    static KELCL_BLOCKS_INLINE Sixteen load(wchar_t const* in) {
        return {Half::load(in).bytes, Half::load(in + 4).bytes, Half::load(in + 8).bytes,
                Half::load(in + 12).bytes};
    }
    /// Fewer of them, and zeros.
    static KELCL_BLOCKS_INLINE Sixteen loadFewer(wchar_t const* in, std::size_t n) {
        auto const count = static_cast<int>(n);
        return {four(in, count), four(in + 4, count - 4), four(in + 8, count - 8), four(in + 12, count - 12)};
    }
    /// Whether none of them has other bits than these.
    KELCL_BLOCKS_INLINE bool haveOnly(unsigned int bits) const {
        __m128i const all = first | second | third | fourth;
        return _mm_testz_si128(all, _mm_set1_epi32(static_cast<int>(~bits))) != 0;
    }
    /// Their low 16 bits, where they have no others.
    KELCL_BLOCKS_INLINE Words words() const {
        return {_mm256_set_m128i(_mm_packus_epi32(third, fourth), _mm_packus_epi32(first, second))};
    }
    /// Their low 7 bits, where they have no others.
    KELCL_BLOCKS_INLINE Half ascii() const {
        return {_mm_packus_epi16(_mm_packus_epi32(first, second), _mm_packus_epi32(third, fourth))};
    }

private:
    /// The first `count` of four, and zeros. Reads no others.
    static KELCL_BLOCKS_INLINE __m128i four(wchar_t const* in, int count) {
        __m128i const places = _mm_setr_epi32(0, 1, 2, 3);
        return _mm_maskload_epi32(reinterpret_cast<int const*>(in),
                                  _mm_cmpgt_epi32(_mm_set1_epi32(count), places));
    }
};

} // namespace kelcl::blocks

#endif
