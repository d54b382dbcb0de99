// Plain UTF-8 to wide characters.
//
// In blocks, a window of four bytes is widened at once: the characters that begin in it, four at most, of
// which the last may run three bytes past it. The starts of the window and of these three bytes, a bit for
// each, tell where each character ends, and choose a row of a table: how to move the bytes of each character
// into a lane of 32 bits, last byte first, and what the marks of lead and continuation bytes add up to there.
// No window has to wait for the one before it.
//
//   text             41    C3    A4    E2  |  82    AC    78
//   starts            1     1     0     1  |   0     0     1          0b1001011, the first byte lowest
//
//   lanes            41 .. .. ..     A4 C3 .. ..     AC 82 E2 ..     .. .. .. ..
//   times weight      1 64 64^2 64^3, in each lane
//   summed up        00000041        00003164        000E412C        00000000
//   less the marks   00000000        00003080        000E2080        00000000
//   code points      U+0041          U+00E4          U+20AC          none: three begin in the window
#include "characters/utf8.h"
#include "characters/utf8_validate.h"
#include "characters/utf8_widen_wide.h"

#include <algorithm>
#include <utility>

namespace kelcl {

#if KELCL_HAS_BLOCKS
namespace blocks {
namespace {

constexpr int windowSize = 4;

/// The starts in a window and in the three bytes after it.
constexpr unsigned int allOfWindow = (1U << (windowSize + 3)) - 1;

struct alignas(64) Lanes {
    Shuffle bytes;                      ///< Of each character into its lane, last byte first.
    std::array<std::uint32_t, 4> marks; ///< What the marks of lead and continuation bytes add to each.
    std::size_t count;                  ///< How many lanes have a character.
};

/// By the length of a character, less 1.
constexpr std::uint32_t marksByLength[] = {
    0,
    0xC0 << 6 | 0x80,
    (0xE0 << 12) + (0x80 << 6) + 0x80,
    (0xF0 << 18) + (0x80 << 12) + (0x80 << 6) + 0x80,
};

constexpr Lanes lanesBy(unsigned int starts) {
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
        lanes.marks[lane++] = marksByLength[length - 1];
    }
    lanes.count = lane;
    return lanes;
}

constexpr auto lanesOf = [] {
    std::array<Lanes, allOfWindow + 1> table{};
    for (unsigned int starts = 0; starts < table.size(); ++starts)
        table[starts] = lanesBy(starts);
    return table;
}();

/// Four code points, as many of which count as characters begin in the window. Reads 8 bytes.
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

/// The starts in two blocks, one after the other.
KELCL_BLOCKS_INLINE std::uint64_t startsOf(std::uint32_t first, std::uint32_t next) {
    return first | std::uint64_t{next} << blockSize;
}

KELCL_BLOCKS_INLINE void widenBlock(wchar_t* out, char const* text, Piece const& piece,
                                    std::uint32_t nextStarts) {
    if (!piece.block.anyTopBit()) return widenAscii(out, text);
    widenWindows(out, text, startsOf(piece.starts, nextStarts),
                 std::make_index_sequence<blockSize / windowSize>());
}

/// Widens the first `count` characters of a block and the next one. Writes nothing too much.
KELCL_BLOCKS inline void widenExactly(wchar_t* out, Piece const& piece, Piece const& next,
                                      std::size_t count) {
    alignas(blockSize) char text[3 * blockSize] = {};
    piece.block.store(text);
    next.block.store(text + blockSize);
    std::uint64_t starts = startsOf(piece.starts, next.starts);
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
KELCL_BLOCKS_INLINE Extent widenLast(wchar_t* out, char const* in, Extent done, std::size_t size,
                                     Piece const& piece, Piece const& next) {
    std::uint64_t const starts = startsOf(piece.starts, next.starts);
    std::size_t const count = bitCount(starts & ((std::uint64_t{1} << size) - 1));
    Extent const end = withoutCutCharacter(in, {done.bytes + size, done.characters + count});
    widenExactly(out + done.characters, piece, next, end.characters - done.characters);
    return end;
}

} // namespace

// A block is widened once the next one is known, which tells where its last character ends and has room for
// what is written too much.
KELCL_BLOCKS Extent widen(wchar_t* out, char const* in, std::size_t n) {
    Piece const nothing{Block::zero(), ~std::uint32_t{0}};
    Piece previous = nothing;
    Extent done{0, 0};
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

namespace {

/// As many whole blocks as are ASCII; returns how many bytes.
KELCL_BLOCKS inline std::size_t widenAsciiBlocks(wchar_t* out, char const* in, std::size_t n) {
    std::size_t at = 0;
    for (; n - at >= blockSize && !Block::load(in + at).anyTopBit(); at += blockSize)
        widenAscii(out + at, in + at);
    return at;
}

/// In the form for this processor, and for so much: only where a text ends soon is the wider one faster.
inline Extent widenByProcessor(wchar_t* out, char const* in, std::size_t n) {
#if KELCL_HAS_WIDE
    constexpr std::size_t most = 2 * wide_utf8::step;
    if (n <= most && processorHasWide()) return wide_utf8::widen(out, in, n);
#endif
    return widen(out, in, n);
}

} // namespace
} // namespace blocks
#endif

Extent widenUtf8(wchar_t* out, char const* in, std::size_t n) {
    Extent done{0, 0};
    while (done.bytes < n) {
        if (n - done.bytes >= shortestForBlocks) {
            std::size_t const ascii = KELCL_DISPATCH(
                blocks::widenAsciiBlocks(out + done.characters, in + done.bytes, n - done.bytes), 0);
            done = {done.bytes + ascii, done.characters + ascii};
        }
        if (n - done.bytes >= shortestForBlocks) {
            Extent const more = KELCL_DISPATCH(
                blocks::widenByProcessor(out + done.characters, in + done.bytes, n - done.bytes), Extent{});
            done = {done.bytes + more.bytes, done.characters + more.characters};
        }
        for (std::size_t const stop = std::min(n, done.bytes + takenWithoutBlocks); done.bytes < stop;) {
            std::size_t const length = plainUtf8Length(in + done.bytes, n - done.bytes);
            if (length == 0) return done;
            out[done.characters++] = plainUtf8Value(in + done.bytes, length);
            done.bytes += length;
        }
    }
    return done;
}

} // namespace kelcl
