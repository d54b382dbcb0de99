// Whether a text is plain UTF-8; how far it is, and how many characters that makes.
#include "characters/utf8_validate.h"

#include "bytes/byte_search.h"
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

/// Whether a text of 16 to 34 bytes is plain.
KELCL_BLOCKS inline bool isPlainShort(char const* p, std::size_t n) {
    Block const begin = n < blockSize ? Block::loadEnd(p, n) : Block::load(p);
    if (n > blockSize) {
        Block const end = Block::loadEnd(p + blockSize, n - blockSize);
        if (!isPlainBlock(end, begin)) return false;
    }
    return isPlainBlock(begin, Block::zero()) && !isCutAt(p + n);
}

/// Whether all of a text of at least 32 bytes is ASCII. For short texts.
KELCL_BLOCKS_INLINE bool isAscii(char const* p, char const* end) {
    Block all = Block::load(end - blockSize);
    for (; static_cast<std::size_t>(end - p) > blockSize; p += blockSize)
        all = all | Block::load(p);
    return !all.anyTopBit();
}

/// How much of a long text is looked through in turns of four blocks, the mistakes in all four gathered
/// before they are looked at; or notFound if there are any.
KELCL_BLOCKS inline std::size_t plainTurns(char const* p, std::size_t n) {
    constexpr std::size_t turn = 4 * blockSize;
    if (!isPlainBlock(Block::load(p), Block::zero())) return notFound;
    std::size_t at = blockSize;
    for (; n - at >= turn; at += turn) {
        char const* const four = p + at;
        // From three bytes earlier on, so that no character reaches into what is ASCII.
        Block const all = Block::load(four - 3) | Block::load(four + 29) | Block::load(four + 61) |
                          Block::load(four + 93) | Block::load(four + 96);
        if (!all.anyTopBit()) continue;
        Block const mistakes = mistakesAt(four) | mistakesAt(four + blockSize) |
                               mistakesAt(four + 2 * blockSize) | mistakesAt(four + 3 * blockSize);
        if (!mistakes.isZero()) return notFound;
    }
    return at;
}

/// Whether all of a text of at least 16 bytes is plain. The last block overlaps the one before it.
KELCL_BLOCKS inline bool isPlain(char const* p, std::size_t n) {
    constexpr std::size_t worthTurns = 5 * blockSize;
    if (n < blockSize + 3) return isPlainShort(p, n);
    std::size_t at = n < worthTurns ? 0 : plainTurns(p, n);
    if (at == notFound) return false;
    if (isAscii(p + (at == 0 ? 0 : at - 3), p + n)) return true;
    Block mistakes = Block::zero();
    if (at == 0) {
        mistakes = mistakesAfter(Block::zero(), Block::load(p));
        at = blockSize;
    }
    for (; n - at > blockSize; at += blockSize)
        mistakes = mistakes | mistakesAt(p + at);
    mistakes = mistakes | mistakesAt(p + n - blockSize);
    return mistakes.isZero() && !isCutAt(p + n);
}

} // namespace
} // namespace blocks
#endif

namespace {

bool isPlainByCharacters(char const* p, std::size_t n) {
    for (std::size_t at = asciiRun(p, n); at < n;) {
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
