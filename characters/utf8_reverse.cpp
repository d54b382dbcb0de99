// Plain UTF-8 with its characters in reverse order.
//
// In blocks, the bytes of each character are first put the other way round in their places, and then all
// bytes of the block. Where a byte of a character comes from, the characters' first bytes tell: each of the
// byte itself, the one before it, and the two before that is looked up in a table of its own for what it
// adds, which is something for first bytes only, and 0 where the character does not reach so far.
//
//   text             41    C3   A4    E2   82   AC    F0   9F   98   80
//   the byte          0    +1    0    +2    0    0    +3    0    0    0
//   one earlier             0   -1     0    0    0     0   +1    0    0
//   two earlier                        0    0   -2     0    0   -1    0
//   three earlier                                      0    0    0   -3
//   comes from        0    +1   -1    +2    0   -2    +3   +1   -1   -3   places further on
//   so              41    A4   C3    AC   82   E2    80   98   9F   F0
//   reversed        F0   9F   98   80   E2   82   AC   C3   A4   41
#include "characters/utf8.h"
#include "characters/utf8_blocks.h"

#include <cstring>

namespace kelcl {

namespace {

/// The characters from `at` on, of which the last one begins before `stop`, at their places in the result of
/// `n` bytes.
void reverseCharacters(char* out, char const* in, std::size_t n, std::size_t at, std::size_t stop) {
    while (at < stop) {
        auto const lead = static_cast<unsigned char>(in[at]);
        std::size_t const length = lead < 0x80 ? 1 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
        for (std::size_t i = 0; i < length; ++i)
            out[n - at - length + i] = in[at + i];
        at += length;
    }
}

} // namespace

#if KELCL_HAS_BLOCKS
namespace blocks {
namespace {

/// What first bytes add, by their high halves: those of characters of two bytes, three and four.
constexpr Shuffle addedBy(int two, int three, int four) {
    Shuffle table{};
    table[0xC] = table[0xD] = static_cast<unsigned char>(two);
    table[0xE] = static_cast<unsigned char>(three);
    table[0xF] = static_cast<unsigned char>(four);
    return table;
}
constexpr Shuffle byByte = addedBy(1, 2, 3);
constexpr Shuffle byOneEarlier = addedBy(-1, 0, 1);
constexpr Shuffle byTwoEarlier = addedBy(0, -2, -1);
constexpr Shuffle byThreeEarlier = addedBy(0, 0, -3);

/// Where the eight first (last) of 16 bytes lie among those from four places earlier (later) on, which
/// have all that their characters reach to. The others stay without a byte, whatever is added.
constexpr unsigned char stillNoByte = noByte + 8;
constexpr Shuffle firstEight = [] {
    Shuffle places{};
    for (unsigned int i = 0; i < 16; ++i)
        places[i] = static_cast<unsigned char>(i < 8 ? i + 4 : stillNoByte);
    return places;
}();
constexpr Shuffle lastEight = [] {
    Shuffle places{};
    for (unsigned int i = 0; i < 16; ++i)
        places[i] = static_cast<unsigned char>(i < 8 ? stillNoByte : i - 4);
    return places;
}();
constexpr Shuffle lastToFirst = {15, 14, 13, 12, 11, 10, 9, 8, 7, 6, 5, 4, 3, 2, 1, 0};

constexpr std::size_t margin = 4; ///< Bytes before and after a block that are looked at.

KELCL_BLOCKS_INLINE Block added(Shuffle const& table, char const* bytes) {
    return lookUp(Block::twice(&table), Block::load(bytes).highHalves());
}

/// The bytes of a block with those of each character the other way round.
KELCL_BLOCKS_INLINE Block withCharactersTurned(char const* p) {
    Block const distance = added(byByte, p) + added(byOneEarlier, p - 1) + added(byTwoEarlier, p - 2) +
                           added(byThreeEarlier, p - 3);
    return lookUp(Block::load(p - margin), distance + Block::twice(&firstEight)) |
           lookUp(Block::load(p + margin), distance + Block::twice(&lastEight));
}

KELCL_BLOCKS_INLINE void storeReversed(char* out, Block block) {
    Block const reversed = lookUp(block, Block::twice(&lastToFirst));
    reversed.half<1>().store(out);
    reversed.half<0>().store(out + blockSize / 2);
}

/// For a text that has a block with its margins. The first and the last bytes are left to their characters,
/// and the last block overlaps the one before it.
KELCL_BLOCKS inline void reverse(char* out, char const* in, std::size_t n) {
    constexpr std::size_t turn = 4 * blockSize;
    reverseCharacters(out, in, n, 0, margin);
    std::size_t at = margin;
    auto const target = [out, n](std::size_t from) { return out + n - from - blockSize; };
    while (n - at >= turn + margin) {
        char const* const p = in + at;
        Block const all = Block::load(p - margin) | Block::load(p + 28) | Block::load(p + 60) |
                          Block::load(p + 92) | Block::load(p + 100);
        if (all.anyTopBit())
            for (std::size_t const stop = at + turn; at < stop; at += blockSize)
                storeReversed(target(at), withCharactersTurned(in + at));
        else
            for (std::size_t const stop = at + turn; at < stop; at += blockSize)
                storeReversed(target(at), Block::load(in + at));
    }
    std::size_t const last = n - blockSize - margin;
    for (; at < last; at += blockSize)
        storeReversed(target(at), withCharactersTurned(in + at));
    storeReversed(target(last), withCharactersTurned(in + last));
    at = n - margin;
    while (isContinuation(in[at]))
        --at;
    reverseCharacters(out, in, n, at, n);
}

} // namespace
} // namespace blocks
#endif

void reverseUtf8(char* out, char const* in, std::size_t n) {
    constexpr std::size_t shortest = 40; // a block with its margins
    if (n >= shortest && KELCL_DISPATCH((blocks::reverse(out, in, n), true), false)) return;
    reverseCharacters(out, in, n, 0, n);
}

} // namespace kelcl
