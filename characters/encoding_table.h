// The C library's answers for one- and two-byte sequences of an encoding, looked up instead of asked for,
// and which bytes stand next to each other in a character.
// Which encoding is current, and UTF-8, are not here.
#ifndef KELCL_CHARACTERS_ENCODING_TABLE_H
#define KELCL_CHARACTERS_ENCODING_TABLE_H

#include "bytes/byte_set.h"

#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>

namespace kelcl {

/// Filled once for each encoding of the process and constant from then on. It lies in memory of its own from
/// std::malloc: what a host's operator new and new-handler see does not depend on the locale.
class EncodingTable {
    /// A wide value, or one of the marks below. Not a wchar_t, which has no negative values on some machines.
    using Cell = std::int32_t;
    using Row = std::array<Cell, 256>;

    /// The bytes are no character, more of them must be looked at, or they give more than one wide character.
    static constexpr Cell invalid = -1;
    static constexpr Cell longer = -2;
    static constexpr Cell severalValues = -3;

public:
    /// The table of the encoding that the C library names so, which must be that of the current locale. Null
    /// when ASCII bytes are no characters in it, or when there is no memory: the library has to be asked each
    /// time.
    static EncodingTable const* of(char const* name);

    /// By the buffer's rule the length of the character at `p`, of which `available` bytes may be read; 0
    /// when the library has to be asked.
    unsigned int lengthOf(char const* p, std::size_t available) const {
        Row const* const pairs = pairsOf(p[0]);
        if (pairs == nullptr || available < 2) return 1;
        Cell const pair = (*pairs)[static_cast<unsigned char>(p[1])];
        if (pair > 0 || pair == severalValues) return 2;
        return pair == invalid ? 1 : 0;
    }

    /// The length and the value of the character at `p`, of which `available` bytes may be read; 0, and no
    /// value, when there is none or the library has to be asked.
    std::size_t decode(char const* p, std::size_t available, wchar_t& value) const {
        Row const* const pairs = pairsOf(p[0]);
        if (pairs == nullptr) {
            Cell const single = singles_[static_cast<unsigned char>(p[0])];
            if (single < 0) return 0;
            value = static_cast<wchar_t>(single);
            return 1;
        }
        if (available < 2) return 0;
        Cell const pair = (*pairs)[static_cast<unsigned char>(p[1])];
        if (pair < 0) return 0;
        value = static_cast<wchar_t>(pair);
        return 2;
    }

    /// Whether there are characters of more than one byte.
    bool hasLongCharacters() const { return pairs_ != decltype(pairs_){}; }

    /// The smallest byte that follows the first one in any character, at most 0x80. A smaller one is a
    /// character of its own wherever it stands.
    unsigned char trailFloor() const { return trailFloor_; }

    /// Whether another byte of the same character can follow this one.
    bool mayContinue(char byte) const { return mayContinue_[static_cast<unsigned char>(byte)]; }

    /// Whether there are characters in which two bytes below 0x80 stand next to each other.
    bool hasAsciiNeighbours() const { return hasAsciiNeighbours_; }

    /// The bytes below 0x80 that stand for the wide characters of the same value, and those for them.
    ByteSet const& identityBytes() const { return ownValues_; }

    /// The same the other way: writes the one or two bytes of a character that noteBytes was told of, else
    /// returns 0.
    std::size_t encode(wchar_t value, char* out) const {
        auto const index = static_cast<std::uint32_t>(value);
        if (index >= bytesOf_.size()) return 0;
        unsigned int const bytes = bytesOf_[index].load(std::memory_order_relaxed);
        if (bytes == 0) return 0;
        std::size_t const length = bytes > 0xFF ? 2 : 1;
        if (length == 2) *out++ = static_cast<char>(bytes >> 8U);
        *out = static_cast<char>(bytes & 0xFFU);
        return length;
    }
    /// Keeps what the C library says that a character becomes.
    void noteBytes(wchar_t value, char const* bytes, std::size_t length) const;

private:
    class Continuations;

    EncodingTable() = default;

    /// What 256 second bytes make of a byte that begins longer characters; null for another byte.
    Row const* pairsOf(char first) const { return pairs_[static_cast<unsigned char>(first)]; }

    bool fill();
    bool fillSingles();
    bool fillPairs(char first, Row& row, Continuations& continuations);
    void noteTrail(unsigned int byte);
    void noteEveryByteAsPartOfCharacters();

    static constexpr std::size_t longestName = 31;
    static constexpr std::size_t maxLeads = 128; ///< Bytes from 0x80 on.

    std::array<char, longestName + 1> name_{};
    Row singles_{};
    std::array<Row const*, 256> pairs_{};
    std::array<Row, maxLeads> rows_;
    std::array<bool, 256> mayContinue_{};
    unsigned char trailFloor_ = 0x80;
    bool hasAsciiNeighbours_ = false;
    ByteSet ownValues_;
    mutable std::array<std::atomic<std::uint16_t>, 0x10000> bytesOf_{}; ///< 0: not asked for yet.
    bool usable_ = false;
    EncodingTable const* next_ = nullptr;
};

} // namespace kelcl

#endif
