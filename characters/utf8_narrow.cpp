// Wide characters to UTF-8.
//
// In blocks, 16 code points of up to three bytes at a time. First each gets its bytes in a lane of 32 bits,
// the first byte lowest, made of two words of 16 bits:
//
//   code point           front word            third word
//   00000000 0aaaaaaa    00000000 0aaaaaaa     not used               one byte
//   00000bbb bbaaaaaa    10aaaaaa 110bbbbb     not used               two bytes
//   ccccbbbb bbaaaaaa    10bbbbbb 1110cccc     00000000 10aaaaaa      three bytes
//
// Then the lanes are moved together, four at a time. Which have at least two bytes, a bit for each, and which
// have three choose the row of a table that tells where each byte comes from:
//
//   code points          U+0041          U+00E4          U+20AC          U+0042
//   lanes                41 .. .. ..     C3 A4 .. ..     E2 82 AC ..     42 .. .. ..
//   two or more, three    0  0            1  0            1  1            0  0         0b0100'0110
//   moved together       41 C3 A4 E2 82 AC 42
#include "characters/utf8.h"
#include "characters/utf8_blocks.h"
#include "characters/utf8_narrow_wide.h"

#include <algorithm>
#include <cstring>

namespace kelcl {

#if KELCL_HAS_BLOCKS
namespace blocks {
namespace {

constexpr std::size_t narrowStep = 16;
constexpr std::size_t narrowExcess = 12; ///< Bytes that a step may write too much.

constexpr auto lanesTogether = [] {
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

/// 16 characters with their bytes in lanes.
struct Spread {
    Block outer;          ///< The first and the third four.
    Block inner;          ///< The second and the fourth.
    std::uint32_t longer; ///< Eight bits for those of two bytes or more among the first eight characters,
                          ///< eight for those of three; then the same of the other eight.
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

KELCL_BLOCKS_INLINE char* storeSpread(char* out, Spread const& characters) {
    out = storeQuarter<0>(out, characters);
    out = storeQuarter<1>(out, characters);
    out = storeQuarter<2>(out, characters);
    return storeQuarter<3>(out, characters);
}

KELCL_BLOCKS_INLINE bool areAscii(Sixteen const& in) { return in.haveOnly(0x7F); }

/// Whether all are code points of at most three bytes: no more than 16 bits, and none of 11011xxx xxxxxxxx.
KELCL_BLOCKS_INLINE bool areShort(Sixteen const& in) {
    return in.haveOnly(0xFFFF) && equal(in.words() & Words::of(0xF800), Words::of(0xD800)).isZero();
}

/// The last code points, 16 at most. Returns how many bytes they take, or 0 if they are not all short or have
/// no room. Writes nothing too much.
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

} // namespace

// What is written too much lies within what the following characters take.
KELCL_BLOCKS Extent narrow(char* out, std::size_t room, wchar_t const* in, std::size_t n) {
    constexpr std::size_t marginIn = narrowStep + narrowExcess;
    constexpr std::size_t marginOut = 3 * narrowStep + narrowExcess + 4; // one of four bytes may not fit
    Extent done{0, 0};
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

namespace {

/// In the form for this processor.
inline Extent narrowByProcessor(char* out, std::size_t room, wchar_t const* in, std::size_t n) {
#if KELCL_HAS_WIDE
    if (processorHasWide()) return wide_utf8::narrow(out, room, in, n);
#endif
    return narrow(out, room, in, n);
}

} // namespace
} // namespace blocks
#endif

namespace {

KELCL_INLINED std::size_t lengthOfAll(wchar_t const* values, std::size_t n) {
    std::uint32_t bytes = 0;
    for (std::size_t i = 0; i < n; ++i) {
        auto const value = static_cast<std::uint32_t>(values[i]);
        bytes += 1U + (value > 0x7F) + (value > 0x7FF) + (value > 0xFFFF);
    }
    return bytes;
}

} // namespace

std::size_t utf8LengthOfAll(wchar_t const* values, std::size_t n) {
#if KELCL_HAS_WIDE
    if (processorHasWide()) return wide_utf8::lengthOfAll(values, n);
#endif
    return multiversioned<lengthOfAll>(values, n);
}

Extent narrowUtf8(char* out, std::size_t room, wchar_t const* in, std::size_t n) {
    Extent done{0, 0};
    while (done.characters < n) {
        Extent const more =
            KELCL_DISPATCH(blocks::narrowByProcessor(out + done.bytes, room - done.bytes,
                                                     in + done.characters, n - done.characters),
                           Extent{});
        done = {done.bytes + more.bytes, done.characters + more.characters};
        for (std::size_t const stop = std::min(n, done.characters + takenWithoutBlocks);
             done.characters < stop; ++done.characters) {
            std::size_t const length = utf8LengthOf(in[done.characters]);
            if (length == 0 || length > room - done.bytes) return done;
            writeUtf8(out + done.bytes, in[done.characters], length);
            done.bytes += length;
        }
    }
    return done;
}

} // namespace kelcl
