// Whether a text is plain UTF-8; how far it is, and how many characters that makes.
#include "characters/utf8_validate.h"

#include "characters/utf8.h"
#include "characters/utf8_validate_wide.h"

namespace kelcl {

#if KELCL_HAS_BLOCKS
namespace blocks {
namespace {

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

constexpr std::size_t turn = 4 * blockSize;
constexpr std::size_t worthTurns = blockSize + turn;
constexpr std::size_t notShort = blockSize + 3;

/// How many characters begin in a block.
KELCL_BLOCKS_INLINE std::size_t countStarts(char const* p) { return bitCount(startsIn(Block::load(p))); }

/// Goes through a text of at least 160 bytes in turns of four blocks, the mistakes in all four gathered
/// before they are looked at: up to a turn with mistakes, one that is not whole, or one that may have more
/// characters than `most` leaves.
template <bool counts>
KELCL_BLOCKS_INLINE Extent plainTurns(char const* p, std::size_t n, std::size_t most) {
    if (!isPlainBlock(Block::load(p), Block::zero())) return {0, 0};
    Extent run{blockSize, counts ? countStarts(p) : 0};
    for (; n - run.bytes >= turn && most - run.characters >= turn; run.bytes += turn) {
        char const* const four = p + run.bytes;
        // From three bytes earlier on, so that no character reaches into what is ASCII.
        Block const all = Block::load(four - 3) | Block::load(four + 29) | Block::load(four + 61) |
                          Block::load(four + 93) | Block::load(four + 96);
        if (!all.anyTopBit()) {
            if (counts) run.characters += turn;
            continue;
        }
        Block const mistakes = mistakesAt(four) | mistakesAt(four + blockSize) |
                               mistakesAt(four + 2 * blockSize) | mistakesAt(four + 3 * blockSize);
        if (!mistakes.isZero()) break;
        if (counts)
            for (std::size_t i = 0; i < turn; i += blockSize)
                run.characters += countStarts(four + i);
    }
    return run;
}

/// Goes through a text of at least 160 bytes up to less than a turn before its end. How far that is, or 0 if
/// there is a mistake.
KELCL_BLOCKS_INLINE std::size_t plainFront(char const* p, std::size_t n) {
#if KELCL_HAS_WIDE
    constexpr std::size_t worthTheStart = 1024;
    if (n >= worthTheStart && processorHasWide()) {
        if (!isPlainBlock(Block::load(p), Block::zero())) return 0;
        std::size_t const front = wide_utf8::plainTurns(p, blockSize, n);
        return n - front < wide_utf8::turn ? front : 0;
    }
#endif
    std::size_t const front = plainTurns<false>(p, n, n).bytes;
    return n - front < turn ? front : 0;
}

/// Takes the rest of a text of at least 35 bytes, all of it or nothing. The last block overlaps the one
/// before it.
template <bool counts>
KELCL_BLOCKS_INLINE bool takeRest(char const* p, std::size_t n, Extent& run) {
    std::size_t at = run.bytes;
    if (isAscii(p + (at == 0 ? 0 : at - 3), p + n)) {
        run = {n, run.characters + (n - at)};
        return true;
    }
    Block mistakes = Block::zero();
    std::size_t count = 0;
    if (at == 0) {
        mistakes = mistakesAfter(Block::zero(), Block::load(p));
        if (counts) count = countStarts(p);
        at = blockSize;
    }
    for (; n - at > blockSize; at += blockSize) {
        mistakes = mistakes | mistakesAt(p + at);
        if (counts) count += countStarts(p + at);
    }
    char const* const last = p + n - blockSize;
    mistakes = mistakes | mistakesAt(last);
    if (counts) count += bitCount(std::uint64_t{startsIn(Block::load(last))} << (n - at) >> blockSize);
    if (!mistakes.isZero() || isCutAt(p + n)) return false;
    run = {n, run.characters + count};
    return true;
}

/// Whether all of a text of at least 16 bytes is plain.
KELCL_BLOCKS inline bool isPlain(char const* p, std::size_t n) {
    if (n < notShort) return isPlainShort(p, n);
    Extent run{0, 0};
    if (n >= worthTurns) {
        run.bytes = plainFront(p, n);
        if (run.bytes == 0) return false;
    }
    return takeRest<false>(p, n, run);
}

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
    Extent run{0, 0};
    if (n >= worthTurns && most >= worthTurns) run = plainTurns<true>(p, n, most);
    if (n >= notShort && most >= n && n - run.bytes < worthTurns && takeRest<true>(p, n, run)) return run;
    Block previous = run.bytes == 0 ? Block::zero() : Block::load(p + run.bytes - blockSize);
    while (n - run.bytes >= blockSize) {
        Block const block = Block::load(p + run.bytes);
        if ((block | previous).anyTopBit() && !isPlainBlock(block, previous))
            return withoutCutCharacter(p, run);
        if (!extend(run, startsIn(block), blockSize, most)) return run;
        previous = block;
    }
    std::size_t const whole = withoutCutCharacter(p, {n, 1}).bytes; // a cut end would count as a mistake
    if (whole <= run.bytes || whole < shortestForBlocks) return withoutCutCharacter(p, run);
    Block const end = Block::loadEnd(p + run.bytes, whole - run.bytes);
    if (!isPlainBlock(end, previous)) return withoutCutCharacter(p, run);
    extend(run, startsIn(end), whole - run.bytes, most);
    return run;
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
