// UTF-8 in blocks of 32 bytes: the kernels that count and convert plain text. Where a block is not
// all plain they stop, and leave the rest to the plain forms in utf8.cpp.
#ifndef KELCL_CHARACTERS_UTF8_BLOCKS_H
#define KELCL_CHARACTERS_UTF8_BLOCKS_H

#include "bytes/byte_scan.h"
#include "characters/utf8.h"

#include <algorithm>
#include <array>
#include <utility>

#if KELCL_HAS_BLOCKS

namespace kelcl::blocks {

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

KELCL_BLOCKS_INLINE Block mistakesOf(Nibbles const& table, Block halves) {
    return lookUp(Block::twice(table.data()), halves);
}

/// Whether a block continues the plain text in front of it. A character that the end cuts off is no mistake
/// yet.
KELCL_BLOCKS_INLINE bool isPlainBlock(Block block, Block previous) {
    Block const before = earlier<1>(block, previous);
    Block const mistakes = mistakesOf(byHighOfPrevious, before.highHalves()) &
                           mistakesOf(byLowOfPrevious, before.lowHalves()) &
                           mistakesOf(byHigh, block.highHalves());
    // The top bit stays with leads of three bytes and more, with those of four.
    Block const third = minusDownTo0(earlier<2>(block, previous), Block::of(0xE0 - 0x80));
    Block const fourth = minusDownTo0(earlier<3>(block, previous), Block::of(0xF0 - 0x80));
    Block const due = (third | fourth) & Block::of(twoContinuations);
    return (due ^ mistakes).isZero();
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

/// One bit for each byte that begins a character.
KELCL_BLOCKS_INLINE std::uint32_t startsIn(Block block) {
    constexpr int highestContinuation = 0xBF;
    return greaterSigned(block, Block::of(highestContinuation)).topBits();
}

/// The offset of the byte that begins character `number`, which counts from 0.
KELCL_BLOCKS_INLINE std::size_t offsetOf(std::size_t number, std::uint32_t starts) {
    for (; number > 0; --number)
        starts &= starts - 1;
    return lowestBit(starts);
}

/// Adds `size` bytes of plain text to a run, or as many as `most` characters have, which it then returns
/// false for.
KELCL_BLOCKS_INLINE bool extend(Stretch& run, std::uint32_t starts, std::size_t size, std::size_t most) {
    std::size_t const count = bitCount(starts & ((std::uint64_t{1} << size) - 1));
    std::size_t const left = most - run.characters;
    if (count > left)
        run = {run.bytes + offsetOf(left, starts), most};
    else
        run = {run.bytes + size, run.characters + count};
    return count <= left;
}

KELCL_BLOCKS inline Stretch plainBlocks(char const* p, std::size_t n, std::size_t most) {
    Block previous = Block::zero();
    Stretch run{0, 0};
    while (n - run.bytes >= blockSize) {
        Block const block = Block::load(p + run.bytes);
        if ((block | previous).anyTopBit() && !isPlainBlock(block, previous))
            return withoutCutCharacter(p, run);
        if (!extend(run, startsIn(block), blockSize, most)) return run;
        previous = block;
    }
    if (run.bytes == n) return withoutCutCharacter(p, run);
    Block const end = Block::loadEnd(p + run.bytes, n - run.bytes);
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
KELCL_BLOCKS_INLINE Half codePoints(char const* window, Lanes const& lanes) {
    Half const bytes = lookUp(Half::loadEight(window), Half::load(&lanes.bytes));
    return minusFour(sumsToBase64(bytes), Half::load(&lanes.marks));
}

template <std::size_t window>
KELCL_BLOCKS_INLINE wchar_t* widenWindow(wchar_t* out, char const* block, std::uint64_t starts) {
    Lanes const& lanes = lanesOf[starts >> window * windowSize & allOfWindow];
    codePoints(block + window * windowSize, lanes).store(out);
    return out + lanes.count;
}

/// Widens the characters that begin in a block of plain text. `starts` tells of the next block too. Reads 4
/// bytes and writes up to 4 code points too much.
template <std::size_t... window>
KELCL_BLOCKS_INLINE void widenWindows(wchar_t* out, char const* block, std::uint64_t starts,
                                      std::index_sequence<window...>) {
    ((out = widenWindow<window>(out, block, starts)), ...);
}

struct Piece {
    Block block;
    std::uint32_t starts;
};

KELCL_BLOCKS_INLINE void widenBlock(wchar_t* out, char const* text, Piece const& piece,
                                    std::uint32_t nextStarts) {
    if (!piece.block.anyTopBit()) return widenAscii(out, text);
    widenWindows(out, text, piece.starts | std::uint64_t{nextStarts} << blockSize,
                 std::make_index_sequence<blockSize / windowSize>());
}

/// Widens the first `count` characters of a block and the next one. Writes nothing too much.
KELCL_BLOCKS inline void widenExactly(wchar_t* out, Piece const& piece, Piece const& next,
                                      std::size_t count) {
    alignas(blockSize) char text[3 * blockSize] = {};
    piece.block.store(text);
    next.block.store(text + blockSize);
    std::uint64_t starts = piece.starts | std::uint64_t{next.starts} << blockSize;
    wchar_t* const stop = out + count;
    for (char const* window = text; out < stop; window += windowSize, starts >>= windowSize) {
        Lanes const& lanes = lanesOf[starts & allOfWindow];
        if (stop - out >= windowSize) {
            codePoints(window, lanes).store(out);
            out += lanes.count;
            continue;
        }
        wchar_t points[windowSize];
        codePoints(window, lanes).store(points);
        for (std::size_t i = 0; i < lanes.count && out < stop; ++i)
            *out++ = points[i];
    }
}

/// Widens what is left of a text: `size` bytes in one block or two, of which the last character may be cut
/// off.
KELCL_BLOCKS_INLINE Stretch widenLast(wchar_t* out, char const* in, Stretch done, std::size_t size,
                                      Piece const& piece, Piece const& next) {
    std::uint64_t const starts = piece.starts | std::uint64_t{next.starts} << blockSize;
    std::size_t const count = bitCount(starts & ((std::uint64_t{1} << size) - 1));
    Stretch const end = withoutCutCharacter(in, {done.bytes + size, done.characters + count});
    widenExactly(out + done.characters, piece, next, end.characters - done.characters);
    return end;
}

/// For a text of at least 16 bytes. A block is widened once the next one is known, which tells where its last
/// character ends and has room for what is written too much.
KELCL_BLOCKS inline Stretch widenBlocks(wchar_t* out, char const* in, std::size_t n) {
    Piece const nothing{Block::zero(), ~std::uint32_t{0}};
    Piece previous = nothing;
    Stretch done{0, 0};
    for (std::size_t at = 0;; at += blockSize) {
        std::size_t const size = std::min(n - at, blockSize);
        Block const block = size == blockSize ? Block::load(in + at) : Block::loadEnd(in + at, size);
        if (!isPlainBlock(block, previous.block))
            return at == 0 ? done : widenLast(out, in, done, blockSize, previous, nothing);
        Piece const piece{block, startsIn(block)};
        if (at != 0) {
            if (size < blockSize / 2) return widenLast(out, in, done, blockSize + size, previous, piece);
            widenBlock(out + done.characters, in + done.bytes, previous, piece.starts);
            done = {at, done.characters + bitCount(previous.starts)};
        }
        if (n - at <= blockSize) return widenLast(out, in, done, size, piece, nothing);
        previous = piece;
    }
}

KELCL_BLOCKS inline std::size_t widenAsciiBlocks(wchar_t* out, char const* in, std::size_t n) {
    std::size_t at = 0;
    for (; n - at >= blockSize && !Block::load(in + at).anyTopBit(); at += blockSize)
        widenAscii(out + at, in + at);
    return at;
}

// Narrowing
//
// Code points of up to three bytes, 16 at a time. Each gets its bytes in a lane of its own, first byte
// lowest; the lanes are then moved together, four by four.

inline constexpr std::size_t narrowStep = 16;
inline constexpr std::size_t narrowExcess = 12; ///< Bytes that a step may write too much.

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

/// 16 characters with their bytes in lanes of 32 bits, first byte lowest.
struct Spread {
    Block outer; ///< The first and the third four.
    Block inner; ///< The second and the fourth.
    std::uint32_t
        longer; ///< Which of eight have at least two bytes, and which have three; then of the others.
};

KELCL_BLOCKS_INLINE Spread spread(Words values) {
    Words const last = values & Words::of(0x3F);
    Words const two = Words::of(0x80C0) | values.shiftedRight<6>() | last.shiftedLeft<8>();
    Words const middle = values.shiftedLeft<2>() & Words::of(0x3F00);
    Words const three = Words::of(0x80E0) | values.shiftedRight<12>() | middle;
    Words const areTwo = atMost(Words::of(0x80), values);
    Words const areThree = atMost(Words::of(0x800), values);
    Words const front = chosen(areThree, three, chosen(areTwo, two, values));
    Words const third = last | Words::of(0x80);
    return {interleavedFirst(front, third), interleavedLast(front, third),
            shortened(areTwo, areThree).topBits()};
}

/// The characters' bytes of one of the four quarters moved together, and how many they are.
template <unsigned int quarter>
KELCL_BLOCKS_INLINE Half together(Spread const& characters, std::size_t& count) {
    constexpr unsigned int bit = 4 * (quarter % 2) + 16 * (quarter / 2);
    std::uint32_t const lengths =
        (characters.longer >> bit & 0x0FU) | (characters.longer >> (bit + 4) & 0xF0U);
    Block const lanes = quarter % 2 == 0 ? characters.outer : characters.inner;
    count = 4 + bitCount(lengths);
    return lookUp(lanes.half<quarter / 2>(), Half::load(&lanesTogether[lengths]));
}

template <unsigned int quarter>
KELCL_BLOCKS_INLINE char* storeQuarter(char* out, Spread const& characters) {
    std::size_t count;
    together<quarter>(characters, count).store(out);
    return out + count;
}

KELCL_BLOCKS_INLINE bool areAscii(Sixteen const& in) { return in.haveOnly(0x7F); }

/// Whether all are code points of at most three bytes.
KELCL_BLOCKS_INLINE bool areShort(Sixteen const& in) {
    return in.haveOnly(0xFFFF) && equal(in.words() & Words::of(0xF800), Words::of(0xD800)).isZero();
}

KELCL_BLOCKS_INLINE char* storeSpread(char* out, Spread const& characters) {
    out = storeQuarter<0>(out, characters);
    out = storeQuarter<1>(out, characters);
    out = storeQuarter<2>(out, characters);
    return storeQuarter<3>(out, characters);
}

/// The last code points, 16 at most. Returns how many bytes they take, or 0 when they are not all short or
/// have no room. Writes nothing too much.
KELCL_BLOCKS inline std::size_t narrowEnd(char* out, std::size_t room, wchar_t const* in, std::size_t n) {
    Sixteen const values = Sixteen::loadFewer(in, n);
    char bytes[3 * narrowStep + narrowExcess];
    std::size_t size = n;
    if (areAscii(values)) {
        values.ascii().store(bytes);
    } else {
        if (!areShort(values)) return 0;
        auto const all = static_cast<std::size_t>(storeSpread(bytes, spread(values.words())) - bytes);
        size = all - (narrowStep - n); // less the NULs
    }
    if (size > room) return 0;
    std::memcpy(out, bytes, size);
    return size;
}

/// What is written too much lies within what the following characters take.
KELCL_BLOCKS inline Stretch narrowBlocks(char* out, std::size_t room, wchar_t const* in, std::size_t n) {
    constexpr std::size_t marginIn = narrowStep + narrowExcess;
    constexpr std::size_t marginOut = 3 * narrowStep + narrowExcess + 4; // one of four bytes may not fit
    Stretch done{0, 0};
    for (; n - done.characters >= marginIn && room - done.bytes >= marginOut; done.characters += narrowStep) {
        Sixteen const values = Sixteen::load(in + done.characters);
        if (areAscii(values)) {
            values.ascii().store(out + done.bytes);
            done.bytes += narrowStep;
            continue;
        }
        if (!areShort(values)) return done;
        done.bytes = static_cast<std::size_t>(storeSpread(out + done.bytes, spread(values.words())) - out);
    }
    while (done.characters < n) {
        std::size_t const count = std::min(n - done.characters, narrowStep);
        std::size_t const size = narrowEnd(out + done.bytes, room - done.bytes, in + done.characters, count);
        if (size == 0) return done;
        done = {done.bytes + size, done.characters + count};
    }
    return done;
}

} // namespace kelcl::blocks

#endif

#endif
