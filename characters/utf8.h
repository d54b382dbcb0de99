// UTF-8 by itself: stepping, counting and converting the sequences that every C library takes alike, called
// plain here: one to four bytes, not overlong, no surrogate, up to U+10FFFF. What to make of anything else,
// and which encoding a text has, is decided elsewhere.
#ifndef KELCL_CHARACTERS_UTF8_H
#define KELCL_CHARACTERS_UTF8_H

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <cwchar>
#include <limits>

namespace kelcl {

constexpr bool isContinuation(char byte) { return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80; }

/// How many bytes at the front of a text are ASCII.
inline std::size_t asciiRun(char const* p, std::size_t n) {
    std::size_t at = 0;
    for (std::uint64_t block; n - at >= sizeof block; at += sizeof block) {
        std::memcpy(&block, p + at, sizeof block);
        if ((block & 0x8080808080808080U) != 0) break;
    }
    while (at < n && static_cast<signed char>(p[at]) >= 0)
        ++at;
    return at;
}

/// Bytes of the character at `p` if it is plain, else 0. Reads no byte after one that cannot be part of the
/// character, and none at or past `available`.
inline std::size_t plainUtf8Length(char const* p, std::size_t available) {
    auto const at = [p](std::size_t i) { return static_cast<unsigned char>(p[i]); };
    unsigned char const lead = at(0);
    if (lead < 0x80) return 1;
    if (lead < 0xC2 || lead > 0xF4 || available < 2) return 0;
    unsigned char const second = at(1);
    if (lead < 0xE0) return isContinuation(p[1]) ? 2 : 0;
    unsigned char const lowest = lead == 0xE0 ? 0xA0 : lead == 0xF0 ? 0x90 : 0x80;
    unsigned char const highest = lead == 0xED ? 0x9F : lead == 0xF4 ? 0x8F : 0xBF;
    if (second < lowest || second > highest || available < 3 || !isContinuation(p[2])) return 0;
    if (lead < 0xF0) return 3;
    return available >= 4 && isContinuation(p[3]) ? 4 : 0;
}

/// The code point of a sequence that plainUtf8Length takes.
inline wchar_t plainUtf8Value(char const* p, std::size_t length) {
    auto const bits = [p](std::size_t i, unsigned int mask) {
        return static_cast<unsigned char>(p[i]) & mask;
    };
    auto const value = [](unsigned int codePoint) { return static_cast<wchar_t>(codePoint); };
    switch (length) {
    case 1:
        return value(bits(0, 0x7F));
    case 2:
        return value(bits(0, 0x1F) << 6 | bits(1, 0x3F));
    case 3:
        return value(bits(0, 0x0F) << 12 | bits(1, 0x3F) << 6 | bits(2, 0x3F));
    default:
        return value(bits(0, 0x07) << 18 | bits(1, 0x3F) << 12 | bits(2, 0x3F) << 6 | bits(3, 0x3F));
    }
}

/// Bytes of the code point in plain UTF-8, 0 for a value that is none.
inline std::size_t utf8LengthOf(wchar_t value) {
    auto const codePoint = static_cast<std::uint32_t>(value); // a negative one is greater than all
    if (codePoint > 0x10FFFF || (codePoint >= 0xD800 && codePoint <= 0xDFFF)) return 0;
    return codePoint < 0x80 ? 1 : codePoint < 0x800 ? 2 : codePoint < 0x10000 ? 3 : 4;
}

/// Bytes of code points in plain UTF-8, fewer than 2^30, all of which must be such.
std::size_t utf8LengthOfAll(wchar_t const* values, std::size_t n);

/// Writes a code point as the `length` bytes that utf8LengthOf tells.
inline void writeUtf8(char* out, wchar_t value, std::size_t length) {
    auto const bits = [value](int position, int mask) { return static_cast<int>(value) >> position & mask; };
    auto const put = [out](std::size_t i, int byte) { out[i] = static_cast<char>(byte); };
    switch (length) {
    case 1:
        put(0, bits(0, 0x7F));
        return;
    case 2:
        put(0, 0xC0 | bits(6, 0x1F));
        put(1, 0x80 | bits(0, 0x3F));
        return;
    case 3:
        put(0, 0xE0 | bits(12, 0x0F));
        put(1, 0x80 | bits(6, 0x3F));
        put(2, 0x80 | bits(0, 0x3F));
        return;
    default:
        put(0, 0xF0 | bits(18, 0x07));
        put(1, 0x80 | bits(12, 0x3F));
        put(2, 0x80 | bits(6, 0x3F));
        put(3, 0x80 | bits(0, 0x3F));
    }
}

/// A piece of text, measured both ways.
struct Extent {
    std::size_t bytes;
    std::size_t characters;
};

/// The plain characters at the front of a text up to the first other one, `n` bytes, or `most` characters.
Extent plainUtf8Run(char const* p, std::size_t n, std::size_t most = std::numeric_limits<std::size_t>::max());

/// Whether all of a text is plain: told faster than how far it is.
bool isPlainUtf8(char const* p, std::size_t n);

/// Converts such characters to their code points. `out` has room for `n`; nothing is written past the last
/// one.
Extent widenUtf8(wchar_t* out, char const* in, std::size_t n);

/// Converts code points to UTF-8 up to the first one that is none or does not fit whole into `room` bytes.
/// Nothing is written at or past `out + room`, nor past the last character unless a value that is no code
/// point follows.
Extent narrowUtf8(char* out, std::size_t room, wchar_t const* in, std::size_t n);

/// Copies `n` bytes of plain text with its characters in reverse order; `out` must not be `in`.
void reverseUtf8(char* out, char const* in, std::size_t n);

} // namespace kelcl

#endif
