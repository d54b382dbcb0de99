// Whether a block of 32 bytes is plain UTF-8, for the kernels that count and widen.
//
// Most mistakes show in two bytes, one and the byte before it. Each kind has a bit:
//
//   byte before   byte         bit                  why it is refused
//   11xxxxxx      0xxxxxxx     tooShort             a lead where a continuation must follow
//   11xxxxxx      11xxxxxx     tooShort
//   0xxxxxxx      10xxxxxx     tooLong              a continuation after ASCII
//   1100000x      10xxxxxx     overlong2            C0, C1: below U+0080
//   11100000      100xxxxx     overlong3            E0 80..9F: below U+0800
//   11101101      101xxxxx     surrogate            ED A0..BF: U+D800 to U+DFFF
//   11110100      1001xxxx     tooLarge             F4 90..BF: above U+10FFFF
//   11110100      101xxxxx     tooLarge
//   F5 to FF      1001xxxx     tooLarge
//   F5 to FF      101xxxxx     tooLarge
//   F5 to FF      1000xxxx     tooLargeOrOverlong4
//   11110000      1000xxxx     tooLargeOrOverlong4  F0 80..8F: below U+10000
//   10xxxxxx      10xxxxxx     twoContinuations     unless a third or fourth byte is due
//
// A row needs no more than three halves of bytes: the high and the low one of the byte before, and the high
// one of the byte. Each of them is looked up in a table of 16 entries that has the bits of all rows it could
// belong to, and what all three allow is the mistake. The pair E0 9F, for one:
//
//   before 1110....   tooShort            overlong3 surrogate
//   before ....0000   tooShort overlong2  overlong3           tooLargeOrOverlong4 tooLong twoContinuations
//   byte   1001....            overlong2  overlong3           tooLarge            tooLong twoContinuations
//   all three                             overlong3
//
// What two bytes cannot tell is whether a third and a fourth one are due: they are where the byte two places
// earlier is E0 or above, or that three places earlier F0 or above. There, and nowhere else, two
// continuations must stand in a row:
//
//   text              F0   9F   98   80   41
//   two earlier                 F0   9F   98
//   three earlier                    F0   9F
//   due                .    .    x    x    .
//   twoContinuations   .    .    x    x    .    the same, and no other bit: all is plain
#ifndef KELCL_CHARACTERS_UTF8_VALIDATE_H
#define KELCL_CHARACTERS_UTF8_VALIDATE_H

#include "characters/utf8.h"
#include "characters/utf8_blocks.h"

#if KELCL_HAS_BLOCKS

namespace kelcl::blocks {

inline constexpr unsigned int tooShort = 1;
inline constexpr unsigned int tooLong = 2;
inline constexpr unsigned int overlong3 = 4;
inline constexpr unsigned int tooLarge = 8;
inline constexpr unsigned int surrogate = 16;
inline constexpr unsigned int overlong2 = 32;
inline constexpr unsigned int tooLargeOrOverlong4 = 64;
inline constexpr unsigned int twoContinuations = 128; // the top bit, which differences below have too

using MistakesOfHalf = std::array<unsigned char, 16>;

template <class Possible>
constexpr MistakesOfHalf mistakesBy(Possible possible) {
    MistakesOfHalf mistakes{};
    for (unsigned int half = 0; half < mistakes.size(); ++half)
        mistakes[half] = static_cast<unsigned char>(possible(half));
    return mistakes;
}

inline constexpr MistakesOfHalf byHighOfPrevious = mistakesBy([](unsigned int high) {
    if (high < 8) return tooLong;
    if (high < 12) return twoContinuations;
    if (high == 12) return tooShort | overlong2;
    if (high == 13) return tooShort;
    if (high == 14) return tooShort | overlong3 | surrogate;
    return tooShort | tooLarge | tooLargeOrOverlong4;
});

inline constexpr MistakesOfHalf byLowOfPrevious = mistakesBy([](unsigned int low) {
    unsigned int possible = tooShort | tooLong | twoContinuations;
    if (low == 0) possible |= overlong3 | tooLargeOrOverlong4;
    if (low <= 1) possible |= overlong2;
    if (low >= 4) possible |= tooLarge;
    if (low >= 5) possible |= tooLargeOrOverlong4;
    if (low == 13) possible |= surrogate;
    return possible;
});

inline constexpr MistakesOfHalf byHigh = mistakesBy([](unsigned int high) {
    constexpr unsigned int ofContinuation = tooLong | overlong2 | twoContinuations;
    if (high < 8 || high > 11) return tooShort;
    if (high == 8) return ofContinuation | overlong3 | tooLargeOrOverlong4;
    if (high == 9) return ofContinuation | overlong3 | tooLarge;
    return ofContinuation | surrogate | tooLarge;
});

KELCL_BLOCKS_INLINE Block mistakesOf(MistakesOfHalf const& table, Block halves) {
    return lookUp(Block::twice(table.data()), halves);
}

/// What is wrong in a block: bits that are all 0 where it continues plain text. Given the same text from one
/// byte, two, and three bytes before it on. A character that its end cuts off is no mistake yet.
KELCL_BLOCKS_INLINE Block mistakesIn(Block block, Block oneEarlier, Block twoEarlier, Block threeEarlier) {
    Block const mistakes = mistakesOf(byHighOfPrevious, oneEarlier.highHalves()) &
                           mistakesOf(byLowOfPrevious, oneEarlier.lowHalves()) &
                           mistakesOf(byHigh, block.highHalves());
    // The differences that keep the top bit are those of leads of three bytes or four, and those of four.
    Block const third = minusDownTo0(twoEarlier, Block::of(0xE0 - 0x80));
    Block const fourth = minusDownTo0(threeEarlier, Block::of(0xF0 - 0x80));
    Block const due = (third | fourth) & Block::of(twoContinuations);
    return due ^ mistakes;
}

/// The same, given the block before it.
KELCL_BLOCKS_INLINE Block mistakesAfter(Block previous, Block block) {
    return mistakesIn(block, earlier<1>(block, previous), earlier<2>(block, previous),
                      earlier<3>(block, previous));
}

KELCL_BLOCKS_INLINE bool isPlainBlock(Block block, Block previous) {
    return mistakesAfter(previous, block).isZero();
}

/// One bit for each byte of plain text that begins a character: for all but 10xxxxxx.
KELCL_BLOCKS_INLINE std::uint32_t startsIn(Block block) {
    constexpr int highestContinuation = 0xBF;
    return greaterSigned(block, Block::of(highestContinuation)).topBits();
}

/// Without the last character if the text cuts it off, its bytes so far being plain.
inline Extent withoutCutCharacter(char const* p, Extent run) {
    for (std::size_t back = 1; back <= 3 && back <= run.bytes; ++back) {
        auto const byte = static_cast<unsigned char>(p[run.bytes - back]);
        if (byte < 0x80) break;
        if (byte < 0xC0) continue;
        std::size_t const due = byte < 0xE0 ? 2 : byte < 0xF0 ? 3 : 4;
        return due > back ? Extent{run.bytes - back, run.characters - 1} : run;
    }
    return run;
}

} // namespace kelcl::blocks

#endif

#endif
