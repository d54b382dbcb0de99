// The block of block.h in two registers of NEON, for little-endian machines.
#ifndef KELCL_BYTES_BLOCK_NEON_H
#define KELCL_BYTES_BLOCK_NEON_H

#include <arm_neon.h>

namespace kelcl::blocks {

struct Half {
    uint8x16_t bytes;

    static KELCL_BLOCKS_INLINE Half load(void const* p) {
        return {vld1q_u8(static_cast<std::uint8_t const*>(p))};
    }
    /// 8 bytes, then zeros.
    static KELCL_BLOCKS_INLINE Half loadEight(void const* p) {
        return {vcombine_u8(vld1_u8(static_cast<std::uint8_t const*>(p)), vdup_n_u8(0))};
    }
    KELCL_BLOCKS_INLINE void store(void* p) const { vst1q_u8(static_cast<std::uint8_t*>(p), bytes); }
    KELCL_BLOCKS_INLINE bool isZero() const { return vmaxvq_u8(bytes) == 0; }
};

KELCL_BLOCKS_INLINE Half operator^(Half a, Half b) { return {a.bytes ^ b.bytes}; }

KELCL_BLOCKS_INLINE Half lookUp(Half table, Half index) { return {vqtbl1q_u8(table.bytes, index.bytes)}; }

/// Each four bytes as one number of 32 bits: the first, 64 times the second, 64 times 64 times the third and
/// so on. Of the weight that a part has in the number as it lies in memory, the surplus is taken away.
KELCL_BLOCKS_INLINE Half sumsToBase64(Half digits) {
    uint16x8_t pairs = vreinterpretq_u16_u8(digits.bytes);
    pairs = vmlsq_n_u16(pairs, vshrq_n_u16(pairs, 8), 256 - 64);
    uint32x4_t sums = vreinterpretq_u32_u16(pairs);
    sums = vmlsq_n_u32(sums, vshrq_n_u32(sums, 16), 65536 - 4096);
    return {vreinterpretq_u8_u32(sums)};
}

/// The differences of four numbers of 32 bits.
KELCL_BLOCKS_INLINE Half minusFour(Half a, Half b) {
    return {vreinterpretq_u8_u32(vreinterpretq_u32_u8(a.bytes) - vreinterpretq_u32_u8(b.bytes))};
}

struct Block {
    uint8x16_t first, last;

    static KELCL_BLOCKS_INLINE Block load(void const* p) {
        auto const* const bytes = static_cast<std::uint8_t const*>(p);
        return {vld1q_u8(bytes), vld1q_u8(bytes + 16)};
    }
    /// `size` bytes from one place, as many from another, then any.
    template <std::size_t size>
    static KELCL_BLOCKS_INLINE Block loadTwo(char const* first, char const* last) {
        if constexpr (size == 16) return {Half::load(first).bytes, Half::load(last).bytes};
        if constexpr (size == 8)
            return {vcombine_u8(vcreate_u8(loadWord<std::uint64_t>(first)),
                                vcreate_u8(loadWord<std::uint64_t>(last))),
                    vdupq_n_u8(0)};
        if constexpr (size == 4)
            return {vcombine_u8(vcreate_u8(loadWord<std::uint32_t>(first) |
                                           std::uint64_t{loadWord<std::uint32_t>(last)} << 32U),
                                vdup_n_u8(0)),
                    vdupq_n_u8(0)};
    }
    /// The last `n` bytes of a text of at least 16, fewer than a block, and zeros.
    static KELCL_BLOCKS_INLINE Block loadEnd(char const* p, std::size_t n) {
        std::size_t const surplus = (n < 16 ? 16 : 32) - n;
        uint8x16_t const end = lookUp(Half::load(p + n - 16), Half::load(&towardsFirst[surplus])).bytes;
        return n < 16 ? Block{end, vdupq_n_u8(0)} : Block{Half::load(p).bytes, end};
    }
    static KELCL_BLOCKS_INLINE Block of(int byte) {
        uint8x16_t const half = vdupq_n_u8(static_cast<std::uint8_t>(byte));
        return {half, half};
    }
    static KELCL_BLOCKS_INLINE Block twice(void const* half) {
        uint8x16_t const bytes = Half::load(half).bytes;
        return {bytes, bytes};
    }
    static KELCL_BLOCKS_INLINE Block twice(Half half) { return {half.bytes, half.bytes}; }
    /// Four bytes, eight times over.
    static KELCL_BLOCKS_INLINE Block ofFour(char const* p) {
        uint8x16_t const half = vreinterpretq_u8_u32(vdupq_n_u32(loadWord<std::uint32_t>(p)));
        return {half, half};
    }
    /// Eight bytes, the lowest of the number first, four times over.
    static KELCL_BLOCKS_INLINE Block ofEight(std::uint64_t eight) {
        uint8x16_t const half = vreinterpretq_u8_u64(vdupq_n_u64(eight));
        return {half, half};
    }
    static KELCL_BLOCKS_INLINE Block zero() { return of(0); }

    KELCL_BLOCKS_INLINE void store(void* p) const {
        auto* const bytes = static_cast<std::uint8_t*>(p);
        vst1q_u8(bytes, first);
        vst1q_u8(bytes + 16, last);
    }
    /// What loadTwo of this size has loaded.
    template <std::size_t size>
    KELCL_BLOCKS_INLINE void storeTwo(char* to, char* toLast) const {
        if constexpr (size == 16) {
            half<0>().store(to);
            half<1>().store(toLast);
        } else {
            std::uint64_t const low = vgetq_lane_u64(vreinterpretq_u64_u8(first), 0);
            std::uint64_t const high =
                size == 8 ? vgetq_lane_u64(vreinterpretq_u64_u8(first), 1) : low >> 32U;
            std::memcpy(to, &low, size);
            std::memcpy(toLast, &high, size);
        }
    }
    template <int number>
    KELCL_BLOCKS_INLINE Half half() const {
        return {number == 0 ? first : last};
    }

    KELCL_BLOCKS_INLINE std::uint32_t topBits() const {
        return Block{spread(first), spread(last)}.maskOfAnswers();
    }
    KELCL_BLOCKS_INLINE std::uint32_t lowBits() const { return Block{first << 7, last << 7}.topBits(); }
    KELCL_BLOCKS_INLINE bool anyTopBit() const { return vmaxvq_u8(first | last) >= 0x80; }
    KELCL_BLOCKS_INLINE bool isZero() const { return vmaxvq_u8(first | last) == 0; }

    KELCL_BLOCKS_INLINE Block lowHalves() const {
        uint8x16_t const low = vdupq_n_u8(15);
        return {first & low, last & low};
    }
    KELCL_BLOCKS_INLINE Block highHalves() const { return {first >> 4, last >> 4}; }

private:
    /// The top bit of each byte in all of its bits.
    static KELCL_BLOCKS_INLINE uint8x16_t spread(uint8x16_t bytes) {
        return vreinterpretq_u8_s8(vshrq_n_s8(vreinterpretq_s8_u8(bytes), 7));
    }
    /// Each byte is left with the bit of its place among eight, and the sums of eight are the bytes of the
    /// mask.
    KELCL_BLOCKS_INLINE std::uint32_t maskOfAnswers() const {
        uint8x16_t const places = vreinterpretq_u8_u64(vdupq_n_u64(0x8040201008040201U));
        uint8x16_t const twos = vpaddq_u8(first & places, last & places);
        uint8x16_t const fours = vpaddq_u8(twos, twos);
        return vgetq_lane_u32(vreinterpretq_u32_u8(vpaddq_u8(fours, fours)), 0);
    }
};

KELCL_BLOCKS_INLINE Block operator&(Block a, Block b) { return {a.first & b.first, a.last & b.last}; }
KELCL_BLOCKS_INLINE Block operator|(Block a, Block b) { return {a.first | b.first, a.last | b.last}; }
KELCL_BLOCKS_INLINE Block operator^(Block a, Block b) { return {a.first ^ b.first, a.last ^ b.last}; }
KELCL_BLOCKS_INLINE Block operator~(Block a) { return {~a.first, ~a.last}; }
KELCL_BLOCKS_INLINE Block operator+(Block a, Block b) { return {a.first + b.first, a.last + b.last}; }
KELCL_BLOCKS_INLINE Block operator-(Block a, Block b) { return {a.first - b.first, a.last - b.last}; }
KELCL_BLOCKS_INLINE Block minusDownTo0(Block a, Block b) {
    return {vqsubq_u8(a.first, b.first), vqsubq_u8(a.last, b.last)};
}

KELCL_BLOCKS_INLINE Block equal(Block a, Block b) {
    return {vceqq_u8(a.first, b.first), vceqq_u8(a.last, b.last)};
}
KELCL_BLOCKS_INLINE uint8x16_t equalFours(uint8x16_t a, uint8x16_t b) {
    return vreinterpretq_u8_u32(vceqq_u32(vreinterpretq_u32_u8(a), vreinterpretq_u32_u8(b)));
}
KELCL_BLOCKS_INLINE Block equalFours(Block a, Block b) {
    return {equalFours(a.first, b.first), equalFours(a.last, b.last)};
}
KELCL_BLOCKS_INLINE Block atMost(Block a, Block b) {
    return {vcleq_u8(a.first, b.first), vcleq_u8(a.last, b.last)};
}
KELCL_BLOCKS_INLINE uint8x16_t greaterSigned(uint8x16_t a, uint8x16_t b) {
    return vcgtq_s8(vreinterpretq_s8_u8(a), vreinterpretq_s8_u8(b));
}
KELCL_BLOCKS_INLINE Block greaterSigned(Block a, Block b) {
    return {greaterSigned(a.first, b.first), greaterSigned(a.last, b.last)};
}

/// Those of `a` where the answer is yes, else those of `b`.
KELCL_BLOCKS_INLINE Block chosen(Block answer, Block a, Block b) {
    return {vbslq_u8(answer.first, a.first, b.first), vbslq_u8(answer.last, a.last, b.last)};
}

KELCL_BLOCKS_INLINE Block lookUpOrZero(Block table, Block index) {
    return {vqtbl1q_u8(table.first, index.first), vqtbl1q_u8(table.last, index.last)};
}
KELCL_BLOCKS_INLINE Block lookUp(Block table, Block index) { return lookUpOrZero(table, index); }
KELCL_BLOCKS_INLINE Block lookUpByLowHalf(Block table, Block index) {
    return lookUp(table, index & Block::of(0x8F));
}

template <int distance>
KELCL_BLOCKS_INLINE Block earlier(Block block, Block previous) {
    return {vextq_u8(previous.last, block.first, 16 - distance),
            vextq_u8(block.first, block.last, 16 - distance)};
}

/// Each 32, 16, 8 or 4 bytes in reverse order.
template <std::size_t size>
KELCL_BLOCKS_INLINE Block reversedEach(Block block) {
    if constexpr (size == blockSize) return reversedEach<16>(Block{block.last, block.first});
    return lookUp(block, Block::twice(reversedPlaces<size>.data()));
}

/// The 64 values of two blocks, each below 16, as 32 bytes of two: the first of two is the high half.
KELCL_BLOCKS_INLINE Block joinedHalves(Block first, Block last) {
    return {vsliq_n_u8(vuzp2q_u8(first.first, first.last), vuzp1q_u8(first.first, first.last), 4),
            vsliq_n_u8(vuzp2q_u8(last.first, last.last), vuzp1q_u8(last.first, last.last), 4)};
}

KELCL_BLOCKS_INLINE void widenAsciiEight(wchar_t* out, uint8x8_t bytes) {
    uint16x8_t const words = vmovl_u8(bytes);
    Half{vreinterpretq_u8_u32(vmovl_u16(vget_low_u16(words)))}.store(out);
    Half{vreinterpretq_u8_u32(vmovl_high_u16(words))}.store(out + 4);
}

/// Stores 32 ASCII characters as wide characters.
KELCL_BLOCKS_INLINE void widenAscii(wchar_t* out, char const* in) {
    for (std::size_t i = 0; i < blockSize; i += 8)
        widenAsciiEight(out + i, vcreate_u8(loadWord<std::uint64_t>(in + i)));
}

struct Words {
    uint16x8_t first, last;

    static KELCL_BLOCKS_INLINE Words of(int word) {
        uint16x8_t const half = vdupq_n_u16(static_cast<std::uint16_t>(word));
        return {half, half};
    }
    template <int bits>
    KELCL_BLOCKS_INLINE Words shiftedLeft() const {
        return {first << bits, last << bits};
    }
    template <int bits>
    KELCL_BLOCKS_INLINE Words shiftedRight() const {
        return {first >> bits, last >> bits};
    }
    KELCL_BLOCKS_INLINE bool isZero() const { return vmaxvq_u16(first | last) == 0; }
};

KELCL_BLOCKS_INLINE Words operator&(Words a, Words b) { return {a.first & b.first, a.last & b.last}; }
KELCL_BLOCKS_INLINE Words operator|(Words a, Words b) { return {a.first | b.first, a.last | b.last}; }
KELCL_BLOCKS_INLINE Words equal(Words a, Words b) {
    return {vceqq_u16(a.first, b.first), vceqq_u16(a.last, b.last)};
}
KELCL_BLOCKS_INLINE Words atMost(Words a, Words b) {
    return {vcleq_u16(a.first, b.first), vcleq_u16(a.last, b.last)};
}
/// Those of `a` where the answer is yes, else those of `b`.
KELCL_BLOCKS_INLINE Words chosen(Words answer, Words a, Words b) {
    return {vbslq_u16(answer.first, a.first, b.first), vbslq_u16(answer.last, a.last, b.last)};
}

/// A word of each in turn: of the first four of each half, and of the last four.
KELCL_BLOCKS_INLINE Block interleavedFirst(Words a, Words b) {
    return {vreinterpretq_u8_u16(vzip1q_u16(a.first, b.first)),
            vreinterpretq_u8_u16(vzip1q_u16(a.last, b.last))};
}
KELCL_BLOCKS_INLINE Block interleavedLast(Words a, Words b) {
    return {vreinterpretq_u8_u16(vzip2q_u16(a.first, b.first)),
            vreinterpretq_u8_u16(vzip2q_u16(a.last, b.last))};
}

/// Answers with a byte instead of a word for each: 8 of the first, 8 of the second, and so for the other
/// half.
KELCL_BLOCKS_INLINE Block shortened(Words first, Words second) {
    return {vcombine_u8(vmovn_u16(first.first), vmovn_u16(second.first)),
            vcombine_u8(vmovn_u16(first.last), vmovn_u16(second.last))};
}

/// 16 wide characters.
struct Sixteen {
    uint32x4_t first, second, third, fourth;

    static KELCL_BLOCKS_INLINE Sixteen load(wchar_t const* in) {
        return {four(in), four(in + 4), four(in + 8), four(in + 12)};
    }
    /// Fewer of them, and zeros.
    static KELCL_BLOCKS_INLINE Sixteen loadFewer(wchar_t const* in, std::size_t n) {
        wchar_t values[16] = {};
        std::memcpy(values, in, n * sizeof *in);
        return load(values);
    }
    /// Whether none of them has other bits than these.
    KELCL_BLOCKS_INLINE bool haveOnly(unsigned int bits) const {
        uint32x4_t const all = first | second | third | fourth;
        return vmaxvq_u32(all & vdupq_n_u32(~bits)) == 0;
    }
    /// Their low 16 bits, where they have no others.
    KELCL_BLOCKS_INLINE Words words() const {
        return {vcombine_u16(vmovn_u32(first), vmovn_u32(second)),
                vcombine_u16(vmovn_u32(third), vmovn_u32(fourth))};
    }
    /// Their low 7 bits, where they have no others.
    KELCL_BLOCKS_INLINE Half ascii() const {
        Words const all = words();
        return {vcombine_u8(vmovn_u16(all.first), vmovn_u16(all.last))};
    }

private:
    static KELCL_BLOCKS_INLINE uint32x4_t four(wchar_t const* in) {
        return vreinterpretq_u32_u8(Half::load(in).bytes);
    }
};

} // namespace kelcl::blocks

#endif
