// How far a text is plain UTF-8, and how many characters that makes.
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

} // namespace
} // namespace blocks
#endif

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
