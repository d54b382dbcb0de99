// UTF-8 in blocks of 32 bytes with AVX2: the kernels that count and convert plain text. Where a block is not
// all plain they stop, and leave the rest to the plain forms in utf8.cpp.
#ifndef KELCL_NLS_UTF8_AVX2_H
#define KELCL_NLS_UTF8_AVX2_H

#include "nls/utf8.h"
#include "string/byte_scan.h"

#include <algorithm>
#include <array>
#include <utility>

#if KELCL_AVX2_KERNELS

namespace kelcl::avx2 {

inline constexpr std::size_t blockSize = sizeof(__m256i);
static_assert(sizeof(wchar_t) == 4, "four wide characters are 16 bytes");

KELCL_AVX2_INLINE __m128i load16(void const* p) { return _mm_loadu_si128(static_cast<__m128i const*>(p)); }
KELCL_AVX2_INLINE void store16(void* p, __m128i value) { _mm_storeu_si128(static_cast<__m128i*>(p), value); }

using Shuffle = std::array<unsigned char, 16>;
inline constexpr unsigned char noByte = 0x80;

// Validation
//
// Three look-ups tell for each byte and the one in front of it which mistakes the pair could be: by the high
// half of the byte in front, by its low half, and by the high half of the byte. A mistake is one that all
// three allow. What two bytes cannot tell, that a third or fourth byte is due, is compared with the mark for
// two continuations in a row.

inline constexpr unsigned int tooShort = 1;             // a lead or ASCII where a continuation is due
inline constexpr unsigned int tooLong = 2;              // a continuation behind ASCII
inline constexpr unsigned int overlong3 = 4;            // E0 80..9F
inline constexpr unsigned int tooLarge = 8;             // F4 90..BF, F5.. and above
inline constexpr unsigned int surrogate = 16;           // ED A0..BF
inline constexpr unsigned int overlong2 = 32;           // C0, C1
inline constexpr unsigned int tooLargeOrOverlong4 = 64; // F5.. 80..8F, F0 80..8F
inline constexpr unsigned int twoContinuations = 128;

using Nibbles = std::array<unsigned char, 16>;

template <class Possible>
constexpr Nibbles mistakesBy(Possible possible) {
    Nibbles mistakes{};
    for (unsigned int half = 0; half < mistakes.size(); ++half)
        mistakes[half] = static_cast<unsigned char>(possible(half));
    return mistakes;
}

inline constexpr Nibbles byHighOfPrevious = mistakesBy([](unsigned int high) {
    if (high < 8) return tooLong;
    if (high < 12) return twoContinuations;
    if (high == 12) return tooShort | overlong2;
    if (high == 13) return tooShort;
    if (high == 14) return tooShort | overlong3 | surrogate;
    return tooShort | tooLarge | tooLargeOrOverlong4;
});

inline constexpr Nibbles byLowOfPrevious = mistakesBy([](unsigned int low) {
    unsigned int possible = tooShort | tooLong | twoContinuations;
    if (low == 0) possible |= overlong3 | tooLargeOrOverlong4;
    if (low <= 1) possible |= overlong2;
    if (low >= 4) possible |= tooLarge;
    if (low >= 5) possible |= tooLargeOrOverlong4;
    if (low == 13) possible |= surrogate;
    return possible;
});

inline constexpr Nibbles byHigh = mistakesBy([](unsigned int high) {
    constexpr unsigned int ofContinuation = tooLong | overlong2 | twoContinuations;
    if (high < 8 || high > 11) return tooShort;
    if (high == 8) return ofContinuation | overlong3 | tooLargeOrOverlong4;
    if (high == 9) return ofContinuation | overlong3 | tooLarge;
    return ofContinuation | surrogate | tooLarge;
});

KELCL_AVX2_INLINE __m256i lookUp(Nibbles const& table, __m256i halves) {
    __m128i const entries = _mm_loadu_si128(reinterpret_cast<__m128i const*>(table.data()));
    return _mm256_shuffle_epi8(_mm256_broadcastsi128_si256(entries), halves);
}

/// The block `distance` bytes earlier in the text.
template <int distance>
KELCL_AVX2_INLINE __m256i earlier(__m256i block, __m256i previous) {
    return _mm256_alignr_epi8(block, _mm256_permute2x128_si256(previous, block, 0x21), 16 - distance);
}

KELCL_AVX2_INLINE bool isAscii(__m256i block) { return _mm256_movemask_epi8(block) == 0; }
KELCL_AVX2_INLINE bool areAscii(__m256i block, __m256i other) {
    return isAscii(_mm256_or_si256(block, other));
}

/// Whether a block continues the plain text in front of it. A character that the end cuts off is no mistake
/// yet.
KELCL_AVX2_INLINE bool isPlainBlock(__m256i block, __m256i previous) {
    __m256i const low4 = _mm256_set1_epi8(0x0F);
    __m256i const before = earlier<1>(block, previous);
    __m256i const highBefore = _mm256_and_si256(_mm256_srli_epi16(before, 4), low4);
    __m256i const high = _mm256_and_si256(_mm256_srli_epi16(block, 4), low4);
    __m256i const mistakes =
        _mm256_and_si256(_mm256_and_si256(lookUp(byHighOfPrevious, highBefore),
                                          lookUp(byLowOfPrevious, _mm256_and_si256(before, low4))),
                         lookUp(byHigh, high));
    __m256i const third = _mm256_subs_epu8(earlier<2>(block, previous), _mm256_set1_epi8(0xE0 - 0x80));
    __m256i const fourth = _mm256_subs_epu8(earlier<3>(block, previous), _mm256_set1_epi8(0xF0 - 0x80));
    __m256i const due =
        _mm256_and_si256(_mm256_or_si256(third, fourth), _mm256_set1_epi8(static_cast<char>(0x80)));
    __m256i const wrong = _mm256_xor_si256(due, mistakes);
    return _mm256_testz_si256(wrong, wrong) != 0;
}

/// Without the last character if the text cuts it off, its bytes so far being plain.
inline Stretch withoutCutCharacter(char const* p, Stretch run) {
    for (std::size_t back = 1; back <= 3 && back <= run.bytes; ++back) {
        auto const byte = static_cast<unsigned char>(p[run.bytes - back]);
        if (byte < 0x80) break;
        if (byte < 0xC0) continue;
        std::size_t const due = byte < 0xE0 ? 2 : byte < 0xF0 ? 3 : 4;
        return due > back ? Stretch{run.bytes - back, run.characters - 1} : run;
    }
    return run;
}

/// Shuffles of 16 bytes towards the first by the number of bytes at which one is loaded.
inline constexpr auto towardsFirst = [] {
    std::array<unsigned char, 32> table{};
    for (unsigned int i = 0; i < table.size(); ++i)
        table[i] = static_cast<unsigned char>(i < 16 ? i : noByte);
    return table;
}();

/// The last `n` bytes of a text of at least 16, less than a block, and NULs.
KELCL_AVX2_INLINE __m256i loadEnd(char const* p, std::size_t n) {
    std::size_t const surplus = (n < 16 ? 16 : 32) - n;
    __m128i const last = _mm_shuffle_epi8(load16(p + n - 16), load16(&towardsFirst[surplus]));
    return n < 16 ? _mm256_zextsi128_si256(last) : _mm256_set_m128i(last, load16(p));
}

/// One bit for each byte that begins a character.
KELCL_AVX2_INLINE std::uint32_t startsIn(__m256i block) {
    __m256i const highestContinuation = _mm256_set1_epi8(static_cast<char>(0xBF));
    return static_cast<std::uint32_t>(_mm256_movemask_epi8(_mm256_cmpgt_epi8(block, highestContinuation)));
}

/// The offset of the byte that begins character `number`, which counts from 0.
KELCL_AVX2_INLINE std::size_t offsetOf(std::size_t number, std::uint32_t starts) {
    for (; number > 0; --number)
        starts &= starts - 1;
    return lowestBit(starts);
}

/// Adds `size` bytes of plain text to a run, or as many as `most` characters have, which it then returns
/// false for.
KELCL_AVX2_INLINE bool extend(Stretch& run, std::uint32_t starts, std::size_t size, std::size_t most) {
    std::size_t const count = bitCount(starts & ((std::uint64_t{1} << size) - 1));
    std::size_t const left = most - run.characters;
    if (count > left)
        run = {run.bytes + offsetOf(left, starts), most};
    else
        run = {run.bytes + size, run.characters + count};
    return count <= left;
}

KELCL_AVX2 inline Stretch plainBlocks(char const* p, std::size_t n, std::size_t most) {
    __m256i previous = _mm256_setzero_si256();
    Stretch run{0, 0};
    while (n - run.bytes >= blockSize) {
        __m256i const block = loadBlock(p + run.bytes);
        if (!areAscii(block, previous) && !isPlainBlock(block, previous)) return withoutCutCharacter(p, run);
        if (!extend(run, startsIn(block), blockSize, most)) return run;
        previous = block;
    }
    if (run.bytes == n) return withoutCutCharacter(p, run);
    __m256i const end = loadEnd(p + run.bytes, n - run.bytes);
    if (!isPlainBlock(end, previous)) return withoutCutCharacter(p, run);
    extend(run, startsIn(end), n - run.bytes, most);
    return run;
}

// Widening
//
// The characters that begin within a window of four bytes, at most four. Which bytes begin one, there and
// among the next three, tells how long each is, and chooses how their bytes are shuffled into four lanes,
// last byte first; the lanes are then summed up by weight. No window has to wait for the one before it.

inline constexpr int windowSize = 4;
inline constexpr unsigned int allOfWindow =
    (1U << (windowSize + 3)) - 1; ///< The starts in a window and behind.

struct alignas(64) Lanes {
    Shuffle bytes;                      ///< Of each character into its lane, last byte first.
    std::array<std::uint32_t, 4> marks; ///< What the marks of lead and continuation bytes add to each.
    std::size_t count;                  ///< How many lanes have a character.
};

constexpr Lanes lanesBy(unsigned int starts) {
    constexpr std::uint32_t marksBy[] = {0, 0x3080, 0xE2080, 0x3C82080};
    auto const begins = [starts](unsigned int at) { return (starts >> at & 1U) != 0; };
    Lanes lanes{};
    lanes.bytes.fill(noByte);
    unsigned int lane = 0;
    for (unsigned int at = 0; at < windowSize; ++at) {
        if (!begins(at)) continue;
        unsigned int length = 1;
        while (length < 4 && !begins(at + length))
            ++length;
        for (unsigned int i = 0; i < length; ++i)
            lanes.bytes[4 * lane + i] = static_cast<unsigned char>(at + length - 1 - i);
        lanes.marks[lane++] = marksBy[length - 1];
    }
    lanes.count = lane;
    return lanes;
}

inline constexpr auto lanesOf = [] {
    std::array<Lanes, allOfWindow + 1> table{};
    for (unsigned int starts = 0; starts < table.size(); ++starts)
        table[starts] = lanesBy(starts);
    return table;
}();

/// Four code points, as many as there are of characters that begin in the window. Reads 8 bytes.
KELCL_AVX2_INLINE __m128i codePoints(char const* window, Lanes const& lanes) {
    __m128i const text = _mm_loadl_epi64(reinterpret_cast<__m128i const*>(window));
    __m128i const bytes = _mm_shuffle_epi8(text, load16(&lanes.bytes));
    __m128i const pairs = _mm_maddubs_epi16(bytes, _mm_set1_epi16(0x4001)); // byte + 64 next
    __m128i const sums = _mm_madd_epi16(pairs, _mm_set1_epi32(0x10000001)); // pair + 4096 next
    return _mm_sub_epi32(sums, load16(&lanes.marks));
}

template <std::size_t window>
KELCL_AVX2_INLINE wchar_t* widenWindow(wchar_t* out, char const* block, std::uint64_t starts) {
    Lanes const& lanes = lanesOf[starts >> window * windowSize & allOfWindow];
    store16(out, codePoints(block + window * windowSize, lanes));
    return out + lanes.count;
}

/// Widens the characters that begin in a block of plain text. `starts` tells of the next block too. Reads 4
/// bytes and writes up to 4 code points too much.
template <std::size_t... window>
KELCL_AVX2_INLINE void widenWindows(wchar_t* out, char const* block, std::uint64_t starts,
                                    std::index_sequence<window...>) {
    ((out = widenWindow<window>(out, block, starts)), ...);
}

struct Block {
    __m256i bytes;
    std::uint32_t starts;
};

KELCL_AVX2_INLINE void widenAscii(wchar_t* out, char const* block) {
    for (std::size_t i = 0; i < blockSize; i += 8) {
        __m128i const bytes = _mm_loadl_epi64(reinterpret_cast<__m128i const*>(block + i));
        _mm256_storeu_si256(reinterpret_cast<__m256i*>(out + i), _mm256_cvtepu8_epi32(bytes));
    }
}

KELCL_AVX2_INLINE void widenBlock(wchar_t* out, char const* text, Block const& block,
                                  std::uint32_t nextStarts) {
    if (isAscii(block.bytes)) return widenAscii(out, text);
    widenWindows(out, text, block.starts | std::uint64_t{nextStarts} << blockSize,
                 std::make_index_sequence<blockSize / windowSize>());
}

/// Widens the first `count` characters of a block and the next one. Writes nothing too much.
KELCL_AVX2 inline void widenExactly(wchar_t* out, Block const& block, Block const& next, std::size_t count) {
    alignas(blockSize) char text[3 * blockSize] = {};
    _mm256_store_si256(reinterpret_cast<__m256i*>(text), block.bytes);
    _mm256_store_si256(reinterpret_cast<__m256i*>(text + blockSize), next.bytes);
    std::uint64_t starts = block.starts | std::uint64_t{next.starts} << blockSize;
    wchar_t* const stop = out + count;
    for (char const* window = text; out < stop; window += windowSize, starts >>= windowSize) {
        Lanes const& lanes = lanesOf[starts & allOfWindow];
        if (stop - out >= windowSize) {
            store16(out, codePoints(window, lanes));
            out += lanes.count;
            continue;
        }
        wchar_t points[windowSize];
        store16(points, codePoints(window, lanes));
        for (std::size_t i = 0; i < lanes.count && out < stop; ++i)
            *out++ = points[i];
    }
}

/// Widens what is left of a text: `size` bytes in one block or two, of which the last character may be cut
/// off.
KELCL_AVX2_INLINE Stretch widenLast(wchar_t* out, char const* in, Stretch done, std::size_t size,
                                    Block const& block, Block const& next) {
    std::uint64_t const starts = block.starts | std::uint64_t{next.starts} << blockSize;
    std::size_t const count = bitCount(starts & ((std::uint64_t{1} << size) - 1));
    Stretch const end = withoutCutCharacter(in, {done.bytes + size, done.characters + count});
    widenExactly(out + done.characters, block, next, end.characters - done.characters);
    return end;
}

/// For a text of at least 16 bytes. A block is widened once the next one is known, which tells where its last
/// character ends and has room for what is written too much.
KELCL_AVX2 inline Stretch widenBlocks(wchar_t* out, char const* in, std::size_t n) {
    Block const nothing{_mm256_setzero_si256(), ~std::uint32_t{0}};
    Block previous = nothing;
    Stretch done{0, 0};
    for (std::size_t at = 0;; at += blockSize) {
        std::size_t const size = std::min(n - at, blockSize);
        __m256i const bytes = size == blockSize ? loadBlock(in + at) : loadEnd(in + at, size);
        if (!isPlainBlock(bytes, previous.bytes))
            return at == 0 ? done : widenLast(out, in, done, blockSize, previous, nothing);
        Block const block{bytes, startsIn(bytes)};
        if (at != 0) {
            if (size < blockSize / 2) return widenLast(out, in, done, blockSize + size, previous, block);
            widenBlock(out + done.characters, in + done.bytes, previous, block.starts);
            done = {at, done.characters + bitCount(previous.starts)};
        }
        if (n - at <= blockSize) return widenLast(out, in, done, size, block, nothing);
        previous = block;
    }
}

KELCL_AVX2 inline std::size_t widenAsciiBlocks(wchar_t* out, char const* in, std::size_t n) {
    std::size_t at = 0;
    for (; n - at >= blockSize && isAscii(loadBlock(in + at)); at += blockSize)
        widenAscii(out + at, in + at);
    return at;
}

// Narrowing
//
// Code points of up to three bytes, 16 at a time. Each gets its bytes in a lane of its own, first byte
// lowest; the lanes are then moved together, four by four.

inline constexpr std::size_t narrowStep = 16;
inline constexpr std::size_t narrowExcess = 12; ///< Bytes that a step may write too much.

struct Sixteen {
    __m128i first, second, third, fourth;
};

KELCL_AVX2_INLINE Sixteen loadSixteen(wchar_t const* in) {
    return {load16(in), load16(in + 4), load16(in + 8), load16(in + 12)};
}

/// The same of fewer, and NULs.
KELCL_AVX2_INLINE Sixteen loadFewer(wchar_t const* in, std::size_t n) {
    auto const count = static_cast<int>(n);
    __m128i const places = _mm_setr_epi32(0, 1, 2, 3);
    auto const* const p = reinterpret_cast<int const*>(in);
    return {_mm_maskload_epi32(p, _mm_cmpgt_epi32(_mm_set1_epi32(count), places)),
            _mm_maskload_epi32(p + 4, _mm_cmpgt_epi32(_mm_set1_epi32(count - 4), places)),
            _mm_maskload_epi32(p + 8, _mm_cmpgt_epi32(_mm_set1_epi32(count - 8), places)),
            _mm_maskload_epi32(p + 12, _mm_cmpgt_epi32(_mm_set1_epi32(count - 12), places))};
}

KELCL_AVX2_INLINE void storeAscii(char* out, Sixteen const& in) {
    store16(out,
            _mm_packus_epi16(_mm_packus_epi32(in.first, in.second), _mm_packus_epi32(in.third, in.fourth)));
}

inline constexpr auto lanesTogether = [] {
    std::array<Shuffle, 256> table{};
    for (unsigned int lengths = 0; lengths < table.size(); ++lengths) {
        std::size_t to = 0;
        table[lengths].fill(noByte);
        for (unsigned int lane = 0; lane < 4; ++lane) {
            unsigned int const length = 1 + (lengths >> lane & 1U) + (lengths >> (lane + 4) & 1U);
            for (unsigned int i = 0; i < length; ++i)
                table[lengths][to++] = static_cast<unsigned char>(4 * lane + i);
        }
    }
    return table;
}();

/// Which of 16 values are at least `least`, at most 0x8000.
KELCL_AVX2_INLINE __m256i areAtLeast(__m256i values, short least) {
    return _mm256_cmpeq_epi16(_mm256_max_epu16(values, _mm256_set1_epi16(least)), values);
}

/// 16 characters with their bytes in lanes of 32 bits, first byte lowest.
struct Spread {
    __m256i outer; ///< The first and the third four.
    __m256i inner; ///< The second and the fourth.
    std::uint32_t
        longer; ///< Which of eight have at least two bytes, and which have three; then of the others.
};

KELCL_AVX2_INLINE Spread spread(__m256i values) {
    __m256i const last = _mm256_and_si256(values, _mm256_set1_epi16(0x3F));
    __m256i const two =
        _mm256_or_si256(_mm256_set1_epi16(static_cast<short>(0x80C0)),
                        _mm256_or_si256(_mm256_srli_epi16(values, 6), _mm256_slli_epi16(last, 8)));
    __m256i const middle = _mm256_and_si256(_mm256_slli_epi16(values, 2), _mm256_set1_epi16(0x3F00));
    __m256i const three = _mm256_or_si256(_mm256_set1_epi16(static_cast<short>(0x80E0)),
                                          _mm256_or_si256(_mm256_srli_epi16(values, 12), middle));
    __m256i const areTwo = areAtLeast(values, 0x80);
    __m256i const areThree = areAtLeast(values, 0x800);
    __m256i const front = _mm256_blendv_epi8(_mm256_blendv_epi8(values, two, areTwo), three, areThree);
    __m256i const third = _mm256_or_si256(last, _mm256_set1_epi16(0x80));
    auto const longer =
        static_cast<std::uint32_t>(_mm256_movemask_epi8(_mm256_packs_epi16(areTwo, areThree)));
    return {_mm256_unpacklo_epi16(front, third), _mm256_unpackhi_epi16(front, third), longer};
}

/// The characters' bytes of one of the four quarters moved together, and how many they are.
template <unsigned int quarter>
KELCL_AVX2_INLINE __m128i together(Spread const& characters, std::size_t& count) {
    constexpr unsigned int bit = 4 * (quarter % 2) + 16 * (quarter / 2);
    std::uint32_t const lengths =
        (characters.longer >> bit & 0x0FU) | (characters.longer >> (bit + 4) & 0xF0U);
    __m256i const half = quarter % 2 == 0 ? characters.outer : characters.inner;
    __m128i const lanes = _mm256_extracti128_si256(half, quarter / 2);
    count = 4 + bitCount(lengths);
    return _mm_shuffle_epi8(lanes, load16(&lanesTogether[lengths]));
}

template <unsigned int quarter>
KELCL_AVX2_INLINE char* storeQuarter(char* out, Spread const& characters) {
    std::size_t count;
    store16(out, together<quarter>(characters, count));
    return out + count;
}

KELCL_AVX2_INLINE bool areAscii(Sixteen const& in) {
    __m128i const all = _mm_or_si128(_mm_or_si128(in.first, in.second), _mm_or_si128(in.third, in.fourth));
    return _mm_testz_si128(all, _mm_set1_epi32(~0x7F)) != 0;
}

/// The 16 values with 16 bits each.
KELCL_AVX2_INLINE __m256i packed(Sixteen const& in) {
    return _mm256_set_m128i(_mm_packus_epi32(in.third, in.fourth), _mm_packus_epi32(in.first, in.second));
}

/// Whether all are code points of at most three bytes.
KELCL_AVX2_INLINE bool areShort(Sixteen const& in) {
    __m128i const all = _mm_or_si128(_mm_or_si128(in.first, in.second), _mm_or_si128(in.third, in.fourth));
    if (_mm_testz_si128(all, _mm_set1_epi32(~0xFFFF)) == 0) return false;
    __m256i const high = _mm256_and_si256(packed(in), _mm256_set1_epi16(static_cast<short>(0xF800)));
    __m256i const areSurrogates = _mm256_cmpeq_epi16(high, _mm256_set1_epi16(static_cast<short>(0xD800)));
    return _mm256_testz_si256(areSurrogates, areSurrogates) != 0;
}

KELCL_AVX2_INLINE char* storeSpread(char* out, Spread const& characters) {
    out = storeQuarter<0>(out, characters);
    out = storeQuarter<1>(out, characters);
    out = storeQuarter<2>(out, characters);
    return storeQuarter<3>(out, characters);
}

/// The last code points, 16 at most. Returns how many bytes they take, or 0 when they are not all short or
/// have no room. Writes nothing too much.
KELCL_AVX2 inline std::size_t narrowEnd(char* out, std::size_t room, wchar_t const* in, std::size_t n) {
    Sixteen const values = loadFewer(in, n);
    char bytes[3 * narrowStep + narrowExcess];
    std::size_t size = n;
    if (areAscii(values)) {
        storeAscii(bytes, values);
    } else {
        if (!areShort(values)) return 0;
        auto const all = static_cast<std::size_t>(storeSpread(bytes, spread(packed(values))) - bytes);
        size = all - (narrowStep - n); // less the NULs
    }
    if (size > room) return 0;
    std::memcpy(out, bytes, size);
    return size;
}

/// What is written too much lies within what the following characters take.
KELCL_AVX2 inline Stretch narrowBlocks(char* out, std::size_t room, wchar_t const* in, std::size_t n) {
    constexpr std::size_t marginIn = narrowStep + narrowExcess;
    constexpr std::size_t marginOut = 3 * narrowStep + narrowExcess + 4; // one of four bytes may not fit
    Stretch done{0, 0};
    for (; n - done.characters >= marginIn && room - done.bytes >= marginOut; done.characters += narrowStep) {
        Sixteen const values = loadSixteen(in + done.characters);
        if (areAscii(values)) {
            storeAscii(out + done.bytes, values);
            done.bytes += narrowStep;
            continue;
        }
        if (!areShort(values)) return done;
        done.bytes = static_cast<std::size_t>(storeSpread(out + done.bytes, spread(packed(values))) - out);
    }
    while (done.characters < n) {
        std::size_t const count = std::min(n - done.characters, narrowStep);
        std::size_t const size = narrowEnd(out + done.bytes, room - done.bytes, in + done.characters, count);
        if (size == 0) return done;
        done = {done.bytes + size, done.characters + count};
    }
    return done;
}

} // namespace kelcl::avx2

#endif

#endif
