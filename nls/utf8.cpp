// UTF-8 in blocks: the kernels that count and convert plain text, with their portable forms.
#include "nls/utf8.h"

#include "string/byte_edit.h"
#include "string/multiversion.h"

#include <algorithm>
#include <array>
#include <utility>

#if KELCL_AVX2_KERNELS
#include <immintrin.h>
#endif

namespace kelcl {

namespace {

#if KELCL_AVX2_KERNELS

constexpr std::size_t blockSize = sizeof(__m256i);
static_assert(sizeof(wchar_t) == 4, "four wide characters are 16 bytes");

// Validation
//
// Three look-ups tell for each byte and the one in front of it which mistakes the pair could be: by the high
// half of the byte in front, by its low half, and by the high half of the byte. A mistake is one that all
// three allow. What two bytes cannot tell, that a third or fourth byte is due, is compared with the mark for
// two continuations in a row.

constexpr unsigned int tooShort = 1;             // a lead or ASCII where a continuation is due
constexpr unsigned int tooLong = 2;              // a continuation behind ASCII
constexpr unsigned int overlong3 = 4;            // E0 80..9F
constexpr unsigned int tooLarge = 8;             // F4 90..BF, F5.. and above
constexpr unsigned int surrogate = 16;           // ED A0..BF
constexpr unsigned int overlong2 = 32;           // C0, C1
constexpr unsigned int tooLargeOrOverlong4 = 64; // F5.. 80..8F, F0 80..8F
constexpr unsigned int twoContinuations = 128;

using Nibbles = std::array<unsigned char, 16>;

template <class Possible>
constexpr Nibbles mistakesBy(Possible possible) {
    Nibbles mistakes{};
    for (unsigned int half = 0; half < mistakes.size(); ++half)
        mistakes[half] = static_cast<unsigned char>(possible(half));
    return mistakes;
}

constexpr Nibbles byHighOfPrevious = mistakesBy([](unsigned int high) {
    if (high < 8) return tooLong;
    if (high < 12) return twoContinuations;
    if (high == 12) return tooShort | overlong2;
    if (high == 13) return tooShort;
    if (high == 14) return tooShort | overlong3 | surrogate;
    return tooShort | tooLarge | tooLargeOrOverlong4;
});

constexpr Nibbles byLowOfPrevious = mistakesBy([](unsigned int low) {
    unsigned int possible = tooShort | tooLong | twoContinuations;
    if (low == 0) possible |= overlong3 | tooLargeOrOverlong4;
    if (low <= 1) possible |= overlong2;
    if (low >= 4) possible |= tooLarge;
    if (low >= 5) possible |= tooLargeOrOverlong4;
    if (low == 13) possible |= surrogate;
    return possible;
});

constexpr Nibbles byHigh = mistakesBy([](unsigned int high) {
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

KELCL_AVX2_INLINE __m256i loadBlock(char const* p) {
    return _mm256_loadu_si256(reinterpret_cast<__m256i const*>(p));
}

/// One bit for each byte that begins a character.
KELCL_AVX2_INLINE std::uint32_t startsIn(__m256i block) {
    __m256i const highestContinuation = _mm256_set1_epi8(static_cast<char>(0xBF));
    return static_cast<std::uint32_t>(_mm256_movemask_epi8(_mm256_cmpgt_epi8(block, highestContinuation)));
}

/// Without the last character if the text cuts it off, its bytes so far being plain.
Stretch withoutCutCharacter(char const* p, Stretch run) {
    for (std::size_t back = 1; back <= 3 && back <= run.bytes; ++back) {
        auto const byte = static_cast<unsigned char>(p[run.bytes - back]);
        if (byte < 0x80) break;
        if (byte < 0xC0) continue;
        std::size_t const due = byte < 0xE0 ? 2 : byte < 0xF0 ? 3 : 4;
        return due > back ? Stretch{run.bytes - back, run.characters - 1} : run;
    }
    return run;
}

KELCL_AVX2 Stretch plainBlocks(char const* p, std::size_t n, std::size_t most) {
    __m256i previous = _mm256_setzero_si256();
    Stretch run{0, 0};
    while (n - run.bytes >= blockSize && most - run.characters >= blockSize) {
        __m256i const block = loadBlock(p + run.bytes);
        if (!isPlainBlock(block, previous)) break;
        run.characters += static_cast<std::size_t>(_mm_popcnt_u32(startsIn(block)));
        run.bytes += blockSize;
        previous = block;
    }
    return withoutCutCharacter(p, run);
}

// Widening
//
// Four characters at a time. Which bits of a mask of character ends are set tells their lengths, which choose
// how their bytes are shuffled into four lanes, last byte first; the lanes are then summed up by weight.

struct alignas(4) FourCharacters {
    unsigned char lengths; ///< Two bits for each, less one; the first lowest.
    unsigned char bytes;   ///< Of the characters that end within the mask.
    unsigned char count;   ///< How many do, at most four.
};

constexpr std::size_t endBits = 12;

constexpr FourCharacters fourCharactersBy(unsigned int ends) {
    FourCharacters four{0, 0, 0};
    unsigned int length = 0;
    for (unsigned int bit = 0; bit < endBits && four.count < 4; ++bit) {
        ++length;
        if ((ends >> bit & 1U) == 0) continue;
        four.lengths = static_cast<unsigned char>(four.lengths | (length - 1) % 4 << 2 * four.count);
        four.bytes = static_cast<unsigned char>(four.bytes + length);
        ++four.count;
        length = 0;
    }
    return four;
}

constexpr auto fourCharacters = [] {
    std::array<FourCharacters, std::size_t{1} << endBits> table{};
    for (unsigned int ends = 0; ends < table.size(); ++ends)
        table[ends] = fourCharactersBy(ends);
    return table;
}();

using Shuffle = std::array<unsigned char, 16>;
constexpr unsigned char noByte = 0x80;

struct Lanes {
    Shuffle bytes;                      ///< Of each character into its lane, last byte first.
    std::array<std::uint32_t, 4> marks; ///< What the marks of lead and continuation bytes add to each.
};

constexpr auto lanesOf = [] {
    constexpr std::uint32_t marksBy[] = {0, 0x3080, 0xE2080, 0x3C82080};
    std::array<Lanes, 256> table{};
    for (unsigned int lengths = 0; lengths < table.size(); ++lengths) {
        unsigned int end = 0;
        for (unsigned int lane = 0; lane < 4; ++lane) {
            unsigned int const length = (lengths >> 2 * lane & 3U) + 1;
            end += length;
            for (unsigned int i = 0; i < 4; ++i)
                table[lengths].bytes[4 * lane + i] =
                    static_cast<unsigned char>(i < length ? end - 1 - i : noByte);
            table[lengths].marks[lane] = marksBy[length - 1];
        }
    }
    return table;
}();

KELCL_AVX2_INLINE __m128i load16(void const* p) { return _mm_loadu_si128(static_cast<__m128i const*>(p)); }
KELCL_AVX2_INLINE void store16(void* p, __m128i value) { _mm_storeu_si128(static_cast<__m128i*>(p), value); }

/// The code points of the first four characters of a text.
KELCL_AVX2_INLINE __m128i fourCodePoints(char const* text, Lanes const& lanes) {
    __m128i const bytes = _mm_shuffle_epi8(load16(text), load16(&lanes.bytes));
    __m128i const pairs = _mm_maddubs_epi16(bytes, _mm_set1_epi16(0x4001)); // byte + 64 next
    __m128i const sums = _mm_madd_epi16(pairs, _mm_set1_epi32(0x10000001)); // pair + 4096 next
    return _mm_sub_epi32(sums, load16(&lanes.marks));
}

/// The starts of the characters of plain text, one bit for each byte.
constexpr std::size_t mostBlocks = 64;
using Starts = std::array<std::uint32_t, mostBlocks + 1>; // one more, for looking ahead

/// Fills `starts` for the plain blocks at the front of a text; stops where ASCII goes on for long.
KELCL_AVX2 Stretch markStarts(Starts& starts, char const* p, std::size_t n) {
    __m256i previous = _mm256_setzero_si256();
    Stretch run{0, 0};
    std::size_t const blocks = std::min(n / blockSize, mostBlocks);
    for (std::size_t i = 0; i < blocks; ++i) {
        __m256i const block = loadBlock(p + run.bytes);
        if (!isPlainBlock(block, previous)) break;
        if (_mm256_movemask_epi8(_mm256_or_si256(block, previous)) == 0 && i != 0) break;
        starts[i] = startsIn(block);
        run.characters += static_cast<std::size_t>(_mm_popcnt_u32(starts[i]));
        run.bytes += blockSize;
        previous = block;
    }
    starts[run.bytes / blockSize] = ~std::uint32_t{0};
    return withoutCutCharacter(p, run);
}

/// A part of a text that is widened beside other parts: what one character's length decides about the next
/// one's place takes long to know, so several such chains run at once.
struct Lane {
    std::size_t at;
    std::size_t end;
    wchar_t* out;
};

/// At least 16 bytes of the lane are left, so that all that is written belongs to it.
KELCL_AVX2_INLINE void widenFour(Lane& lane, char const* text, Starts const& starts) {
    std::size_t const next = lane.at + 1; // a character ends where the next one starts
    std::uint32_t bits;
    std::memcpy(&bits, reinterpret_cast<char const*>(starts.data()) + next / 8, sizeof bits);
    FourCharacters const& four = fourCharacters[bits >> next % 8 & ((1U << endBits) - 1)];
    store16(lane.out, fourCodePoints(text + lane.at, lanesOf[four.lengths]));
    lane.at += four.bytes;
    lane.out += four.count;
}

void widenOneByOne(Lane& lane, char const* text) {
    while (lane.at < lane.end) {
        std::size_t const length = plainUtf8Length(text + lane.at, lane.end - lane.at);
        *lane.out++ = plainUtf8Value(text + lane.at, length);
        lane.at += length;
    }
}

constexpr std::size_t laneStep = 16;

/// How many times all lanes can take four characters without looking where they end.
template <std::size_t count>
KELCL_AVX2_INLINE std::size_t safeSteps(std::array<Lane, count> const& lanes) {
    std::size_t least = lanes[0].end - lanes[0].at;
    for (Lane const& lane : lanes)
        least = std::min(least, lane.end - lane.at);
    return least / laneStep;
}

template <std::size_t count>
KELCL_AVX2_INLINE void widenLanes(std::array<Lane, count>& all, char const* text, Starts const& starts) {
    std::array<Lane, count> lanes = all;
    while (std::size_t steps = safeSteps(lanes))
        for (; steps > 0; --steps)
            for (std::size_t i = 0; i < count; ++i)
                widenFour(lanes[i], text, starts);
    for (Lane& lane : lanes) {
        while (lane.end - lane.at >= laneStep)
            widenFour(lane, text, starts);
        widenOneByOne(lane, text);
    }
}

/// Widens some of the plain text at the front.
KELCL_AVX2 Stretch widenBlocks(wchar_t* out, char const* in, std::size_t n) {
    Starts starts;
    Stretch const run = markStarts(starts, in, n);
    constexpr std::size_t laneCount = 4;
    std::size_t const laneBlocks = run.bytes / blockSize / laneCount;
    if (laneBlocks < 2) {
        std::array<Lane, 1> lane{{{0, run.bytes, out}}};
        widenLanes(lane, in, starts);
        return run;
    }
    std::array<Lane, laneCount> lanes{};
    for (std::size_t i = 0; i < laneCount; ++i) {
        std::size_t const block = i * laneBlocks;
        lanes[i].at = block * blockSize + static_cast<std::size_t>(__builtin_ctz(starts[block]));
        lanes[i].out = out;
        if (i > 0) lanes[i - 1].end = lanes[i].at;
        for (std::size_t b = block; b < block + laneBlocks; ++b)
            out += _mm_popcnt_u32(starts[b]);
    }
    lanes[laneCount - 1].end = run.bytes;
    widenLanes(lanes, in, starts);
    return run;
}

KELCL_AVX2 std::size_t widenAsciiBlocks(wchar_t* out, char const* in, std::size_t n) {
    std::size_t at = 0;
    for (; n - at >= blockSize && _mm256_movemask_epi8(loadBlock(in + at)) == 0; at += blockSize)
        for (std::size_t i = at; i < at + blockSize; i += 8) {
            __m128i const bytes = _mm_loadl_epi64(reinterpret_cast<__m128i const*>(in + i));
            _mm256_storeu_si256(reinterpret_cast<__m256i*>(out + i), _mm256_cvtepu8_epi32(bytes));
        }
    return at;
}

// Narrowing
//
// Four code points of up to three bytes at a time: each lane gets its bytes, first byte lowest, and the lanes
// are then moved together.

constexpr auto lanesTogether = [] {
    std::array<Shuffle, 256> table{};
    for (unsigned int lengths = 0; lengths < table.size(); ++lengths) {
        std::size_t to = 0;
        for (unsigned int lane = 0; lane < 4; ++lane) {
            unsigned int const length = 1 + (lengths >> lane & 1U) + (lengths >> (lane + 4) & 1U);
            for (unsigned int i = 0; i < length; ++i)
                table[lengths][to++] = static_cast<unsigned char>(4 * lane + i);
        }
        while (to < 16)
            table[lengths][to++] = noByte;
    }
    return table;
}();

KELCL_AVX2_INLINE __m128i sixBits(__m128i values, int position) {
    return _mm_and_si128(_mm_srli_epi32(values, position), _mm_set1_epi32(0x3F));
}

/// Writes 16 bytes, and returns how many of them count.
KELCL_AVX2_INLINE std::size_t narrowFour(char* out, __m128i values) {
    __m128i const marks2 = _mm_set1_epi32(0x80C0);
    __m128i const marks3 = _mm_set1_epi32(0x8080E0);
    __m128i const last = sixBits(values, 0);
    __m128i const two =
        _mm_or_si128(marks2, _mm_or_si128(_mm_srli_epi32(values, 6), _mm_slli_epi32(last, 8)));
    __m128i const three =
        _mm_or_si128(_mm_or_si128(marks3, _mm_srli_epi32(values, 12)),
                     _mm_or_si128(_mm_slli_epi32(sixBits(values, 6), 8), _mm_slli_epi32(last, 16)));
    __m128i const isLong = _mm_cmpgt_epi32(values, _mm_set1_epi32(0x7F));
    __m128i const isLonger = _mm_cmpgt_epi32(values, _mm_set1_epi32(0x7FF));
    __m128i const lanes = _mm_blendv_epi8(_mm_blendv_epi8(values, two, isLong), three, isLonger);
    auto const lengths = static_cast<unsigned int>(_mm_movemask_ps(_mm_castsi128_ps(isLong)) |
                                                   _mm_movemask_ps(_mm_castsi128_ps(isLonger)) << 4);
    store16(out, _mm_shuffle_epi8(lanes, load16(&lanesTogether[lengths])));
    return 4 + static_cast<std::size_t>(_mm_popcnt_u32(lengths));
}

/// Whether all four are code points of at most three bytes.
KELCL_AVX2_INLINE bool areShort(__m128i values) {
    __m128i const high = _mm_and_si128(values, _mm_set1_epi32(static_cast<int>(0xFFFF0000U)));
    __m128i const isSurrogate =
        _mm_cmpeq_epi32(_mm_and_si128(values, _mm_set1_epi32(0xF800)), _mm_set1_epi32(0xD800));
    __m128i const others = _mm_or_si128(high, isSurrogate);
    return _mm_testz_si128(others, others) != 0;
}

/// Stops early enough for whatever is written too much to lie within what the following characters take.
KELCL_AVX2 Stretch narrowBlocks(char* out, std::size_t room, wchar_t const* in, std::size_t n) {
    constexpr std::size_t most = 8;                      // characters in a step, of three bytes at most
    constexpr std::size_t marginIn = most + 16;          // behind a step up to 16 bytes too much
    constexpr std::size_t marginOut = 3 * most + 16 + 4; // a character of four bytes may then not fit
    Stretch done{0, 0};
    while (n - done.characters >= marginIn && room - done.bytes >= marginOut) {
        wchar_t const* const from = in + done.characters;
        char* const to = out + done.bytes;
        __m128i const first = load16(from);
        __m128i const second = load16(from + 4);
        __m128i const third = load16(from + 8);
        __m128i const fourth = load16(from + 12);
        __m128i const all = _mm_or_si128(_mm_or_si128(first, second), _mm_or_si128(third, fourth));
        if (_mm_testz_si128(all, _mm_set1_epi32(~0x7F)) != 0) {
            store16(to, _mm_packus_epi16(_mm_packus_epi32(first, second), _mm_packus_epi32(third, fourth)));
            done.bytes += 16;
            done.characters += 16;
            continue;
        }
        if (!areShort(first) || !areShort(second)) break;
        std::size_t const bytes = narrowFour(to, first);
        done.bytes += bytes + narrowFour(to + bytes, second);
        done.characters += 8;
    }
    return done;
}

#endif

} // namespace

Stretch plainUtf8Run(char const* p, std::size_t n, std::size_t most) {
    Stretch run{0, 0};
#if KELCL_AVX2_KERNELS
    if (n >= blockSize && processorHasAvx2()) run = plainBlocks(p, n, most);
#endif
    while (run.bytes < n && run.characters < most) {
        std::size_t const length = plainUtf8Length(p + run.bytes, n - run.bytes);
        if (length == 0) break;
        run.bytes += length;
        ++run.characters;
    }
    return run;
}

Stretch widenUtf8(wchar_t* out, char const* in, std::size_t n) {
    Stretch done{0, 0};
    while (done.bytes < n) {
#if KELCL_AVX2_KERNELS
        if (n - done.bytes >= blockSize && processorHasAvx2()) {
            std::size_t const ascii =
                widenAsciiBlocks(out + done.characters, in + done.bytes, n - done.bytes);
            done = {done.bytes + ascii, done.characters + ascii};
            Stretch const more = widenBlocks(out + done.characters, in + done.bytes, n - done.bytes);
            done = {done.bytes + more.bytes, done.characters + more.characters};
        }
#endif
        // A few by themselves: those around what the blocks do not take, or all of a short rest.
        for (std::size_t const stop = std::min(n, done.bytes + 32); done.bytes < stop;) {
            std::size_t const length = plainUtf8Length(in + done.bytes, n - done.bytes);
            if (length == 0) return done;
            out[done.characters++] = plainUtf8Value(in + done.bytes, length);
            done.bytes += length;
        }
    }
    return done;
}

Stretch narrowUtf8(char* out, std::size_t room, wchar_t const* in, std::size_t n) {
    Stretch done{0, 0};
    while (done.characters < n) {
#if KELCL_AVX2_KERNELS
        if (processorHasAvx2()) {
            Stretch const more =
                narrowBlocks(out + done.bytes, room - done.bytes, in + done.characters, n - done.characters);
            done.bytes += more.bytes;
            done.characters += more.characters;
        }
#endif
        // A few by themselves: those that the blocks do not take, or all of a short rest.
        std::size_t const stop = std::min(n, done.characters + 16);
        for (; done.characters < stop; ++done.characters) {
            std::size_t const length = utf8LengthOf(in[done.characters]);
            if (length == 0 || length > room - done.bytes) return done;
            writeUtf8(out + done.bytes, in[done.characters], length);
            done.bytes += length;
        }
    }
    return done;
}

void reverseUtf8(char* out, char const* in, std::size_t n) {
    copyReversed(out, in, n);
    // Now the bytes of each character stand the wrong way round.
    for (std::size_t at = 0; at < n;) {
        char* const p = out + at;
        if (!isContinuation(*p)) {
            at += asciiRun(p, n - at);
        } else if (!isContinuation(p[1])) {
            std::swap(p[0], p[1]);
            at += 2;
        } else if (!isContinuation(p[2])) {
            std::swap(p[0], p[2]);
            at += 3;
        } else {
            std::swap(p[0], p[3]);
            std::swap(p[1], p[2]);
            at += 4;
        }
    }
}

} // namespace kelcl
