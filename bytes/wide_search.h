// How much of a long text a search can pass by, told 64 bytes at a time on processors that can: for one byte,
// and for the members of a set, by tables of 128 entries. What is for patterns stands in
// pattern_candidates.h.
#ifndef KELCL_BYTES_WIDE_SEARCH_H
#define KELCL_BYTES_WIDE_SEARCH_H

#include "bytes/byte_scan.h"
#include "bytes/byte_set.h"
#include "bytes/dispatch.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

#if KELCL_HAS_WIDE

#include <immintrin.h>

namespace kelcl::wide {

inline constexpr std::size_t step = 64;
inline constexpr std::size_t turn = 4;

inline constexpr auto firstBytes = [] {
    std::array<unsigned char, blocks::blockSize> result{};
    for (unsigned int i = 0; i < result.size(); ++i)
        result[i] = static_cast<unsigned char>(i);
    return result;
}();

/// Writes for each of 128 byte values whether it is in a set (is not in it), by the set's rows for them.
template <bool wanted>
KELCL_BLOCKS inline void fill(unsigned char* entries, unsigned char const* rows) {
    Block const ownRows = Block::twice(rows);
    Block const first = Block::load(firstBytes.data());
    for (std::size_t i = 0; i < 2 * step; i += blocks::blockSize) {
        Block const members = isInAsciiRows(first + Block::of(static_cast<int>(i)), ownRows);
        (wanted ? members : ~members).store(entries + i);
    }
}

/// The entries of 128 byte values, in two registers.
struct Table {
    __m512i low;
    __m512i high;

    template <bool wanted>
    static KELCL_WIDE_INLINE Table of(unsigned char const* rows) {
        alignas(step) unsigned char entries[2 * step];
        fill<wanted>(entries, rows);
        return {_mm512_load_si512(entries), _mm512_load_si512(entries + step)};
    }
    /// The entries for the low seven bits of each byte.
    KELCL_WIDE_INLINE __m512i at(__m512i bytes) const { return _mm512_permutex2var_epi8(low, bytes, high); }
};

/// One byte: a difference of 0 says where it is.
class OneByte {
public:
    KELCL_WIDE_INLINE explicit OneByte(char byte) : byte_(_mm512_set1_epi8(byte)) {}
    static KELCL_WIDE_INLINE __m512i nothing() { return _mm512_set1_epi8(-1); }
    KELCL_WIDE_INLINE __m512i withFoundIn(__m512i bytes, __m512i found) const {
        return _mm512_min_epu8(_mm512_xor_si512(bytes, byte_), found);
    }
    static KELCL_WIDE_INLINE bool isAny(__m512i found) { return _mm512_testn_epi8_mask(found, found) != 0; }

private:
    __m512i byte_;
};

/// What the tests for sets have in common: the top bit says that a byte is found.
struct ByTopBit {
    static KELCL_WIDE_INLINE __m512i nothing() { return _mm512_setzero_si512(); }
    static KELCL_WIDE_INLINE bool isAny(__m512i found) { return _mm512_movepi8_mask(found) != 0; }
};

/// In a set of any bytes (outside of it).
template <bool wanted>
class Anywhere : public ByTopBit {
public:
    KELCL_WIDE_INLINE explicit Anywhere(ByteSet const& set)
        : lower_(Table::of<wanted>(set.rows())), upper_(Table::of<wanted>(set.rows() + 16)) {}
    KELCL_WIDE_INLINE __m512i withFoundIn(__m512i bytes, __m512i found) const {
        constexpr int chosenByFirst = 0xCA; // a bit of b where that of a is set, else of c
        return found | _mm512_ternarylogic_epi64(bytes, upper_.at(bytes), lower_.at(bytes), chosenByFirst);
    }

private:
    Table lower_;
    Table upper_;
};

/// The same for a set of ASCII characters.
template <bool wanted>
class InAscii : public ByTopBit {
public:
    KELCL_WIDE_INLINE explicit InAscii(ByteSet const& set) : table_(Table::of<wanted>(set.rows())) {}
    KELCL_WIDE_INLINE __m512i withFoundIn(__m512i bytes, __m512i found) const {
        constexpr int firstOrSecondNotThird = 0xF4; // a | (b & ~c)
        constexpr int anyOfThree = 0xFE;            // a | b | c
        return _mm512_ternarylogic_epi64(found, table_.at(bytes), bytes,
                                         wanted ? firstOrSecondNotThird : anyOfThree);
    }

private:
    Table table_;
};

/// What a turn of some steps finds.
template <class Test>
KELCL_WIDE_INLINE bool isInTurn(char const* at, Test const& test) {
    __m512i found = Test::nothing();
    for (std::size_t i = 0; i < turn; ++i)
        found = test.withFoundIn(_mm512_loadu_si512(at + i * step), found);
    return Test::isAny(found);
}

/// Whether one step at a place finds nothing.
template <class Test>
KELCL_WIDE_INLINE bool isPassedBy(char const* at, Test const& test) {
    return !Test::isAny(test.withFoundIn(_mm512_loadu_si512(at), Test::nothing()));
}

/// How many bytes at the front of a text of at least one step are passed by without finding one, as far as
/// whole turns go. The steps but the first one are aligned, as no load that crosses a line of the cache would
/// be.
template <class Test>
KELCL_WIDE_INLINE std::size_t countBefore(std::string_view text, Test const& test) {
    if (!isPassedBy(text.data(), test)) return 0;
    std::size_t at = step - reinterpret_cast<std::uintptr_t>(text.data()) % step;
    while (text.size() - at >= turn * step && !isInTurn(text.data() + at, test))
        at += turn * step;
    return at;
}

/// The same from the end on: how many bytes are left to look at.
template <class Test>
KELCL_WIDE_INLINE std::size_t countUpTo(std::string_view text, Test const& test) {
    if (!isPassedBy(text.data() + text.size() - step, test)) return text.size();
    std::size_t end = text.size() - reinterpret_cast<std::uintptr_t>(text.data() + text.size()) % step;
    while (end >= turn * step && !isInTurn(text.data() + end - turn * step, test))
        end -= turn * step;
    return end;
}

/// By a set.
template <template <bool> class Test, bool wanted>
KELCL_WIDE inline std::size_t countBefore(std::string_view text, ByteSet const& set) {
    return countBefore(text, Test<wanted>(set));
}

/// For one byte.
KELCL_WIDE inline std::size_t countBefore(std::string_view text, char byte) {
    return countBefore(text, OneByte(byte));
}
KELCL_WIDE inline std::size_t countUpTo(std::string_view text, char byte) {
    return countUpTo(text, OneByte(byte));
}

} // namespace kelcl::wide

#endif

#endif
