// Whether a text is plain UTF-8; how far it is, and how many characters that makes.
#include "characters/utf8_validate.h"

#include "characters/utf8.h"

namespace kelcl {

#if KELCL_HAS_BLOCKS
namespace blocks {
namespace {

/// The offset of the byte that begins character `number`, which counts from 0.
KELCL_BLOCKS_INLINE std::size_t offsetOf(std::size_t number, std::uint32_t starts) {
    for (; number > 0; --number)
        starts &= starts - 1;
    return lowestBit(starts);
}

/// Adds `size` bytes of plain text to a run, or as many as `most` characters have, which it then returns
/// false for.
KELCL_BLOCKS_INLINE bool extend(Extent& run, std::uint32_t starts, std::size_t size, std::size_t most) {
    std::size_t const count = bitCount(starts & ((std::uint64_t{1} << size) - 1));
    std::size_t const left = most - run.characters;
    if (count > left)
        run = {run.bytes + offsetOf(left, starts), most};
    else
        run = {run.bytes + size, run.characters + count};
    return count <= left;
}

/// For a text of at least 16 bytes.
KELCL_BLOCKS inline Extent plainRun(char const* p, std::size_t n, std::size_t most) {
    Block previous = Block::zero();
    Extent run{0, 0};
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

/// The mistakes in a block at a place before which there are at least three bytes of the text.
KELCL_BLOCKS_INLINE Block mistakesAt(char const* p) {
    return mistakesIn(Block::load(p), Block::load(p - 1), Block::load(p - 2), Block::load(p - 3));
}

/// Whether a text of at least three bytes, plain but for its end, is cut off inside a character.
inline bool isCutAt(char const* end) {
    auto const byte = [end](int back) { return static_cast<unsigned char>(end[-back]); };
    return byte(1) >= 0xC0 || byte(2) >= 0xE0 || byte(3) >= 0xF0;
}

/// Whether all of a text of at least 16 bytes is plain. What is wrong in four blocks is gathered before it is
/// looked at.
KELCL_BLOCKS inline bool isPlain(char const* p, std::size_t n) {
    constexpr std::size_t turn = 4 * blockSize;
    std::size_t at = 0;
    Block previous = Block::zero();
    if (n >= blockSize) {
        previous = Block::load(p);
        if (previous.anyTopBit() && !isPlainBlock(previous, Block::zero())) return false;
        at = blockSize;
    }
    for (; n - at >= turn; at += turn) {
        char const* const four = p + at;
        // From three bytes earlier on, so that no character reaches into what is ASCII.
        Block const all = Block::load(four - 3) | Block::load(four + 29) | Block::load(four + 61) |
                          Block::load(four + 93) | Block::load(four + 96);
        if (!all.anyTopBit()) continue;
        Block const mistakes = mistakesAt(four) | mistakesAt(four + blockSize) |
                               mistakesAt(four + 2 * blockSize) | mistakesAt(four + 3 * blockSize);
        if (!mistakes.isZero()) return false;
    }
    Block mistakes = Block::zero();
    for (; n - at >= blockSize; at += blockSize)
        mistakes = mistakes | mistakesAt(p + at);
    if (at != 0) previous = Block::load(p + at - blockSize);
    if (at != n) {
        Block const end = Block::loadEnd(p + at, n - at);
        mistakes = mistakes | mistakesIn(end, earlier<1>(end, previous), earlier<2>(end, previous),
                                         earlier<3>(end, previous));
    }
    return mistakes.isZero() && !isCutAt(p + n);
}

} // namespace
} // namespace blocks
#endif

namespace {

bool isPlainByCharacters(char const* p, std::size_t n) {
    for (std::size_t at = 0; at < n;) {
        std::size_t const length = plainUtf8Length(p + at, n - at);
        if (length == 0) return false;
        at += length;
    }
    return true;
}

} // namespace

bool isPlainUtf8(char const* p, std::size_t n) {
    if (n < shortestForBlocks) return isPlainByCharacters(p, n);
    return KELCL_DISPATCH(blocks::isPlain(p, n), isPlainByCharacters(p, n));
}

Extent plainUtf8Run(char const* p, std::size_t n, std::size_t most) {
    Extent run = n < shortestForBlocks ? Extent{} : KELCL_DISPATCH(blocks::plainRun(p, n, most), Extent{});
    while (run.bytes < n && run.characters < most) {
        std::size_t const length = plainUtf8Length(p + run.bytes, n - run.bytes);
        if (length == 0) break;
        run.bytes += length;
        ++run.characters;
    }
    return run;
}

} // namespace kelcl
