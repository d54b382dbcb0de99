// The C library's answers for one- and two-byte sequences of an encoding, looked up instead of asked for.
// Which encoding is current, and UTF-8, are not here.
#ifndef KELCL_NLS_ENCODING_TABLE_H
#define KELCL_NLS_ENCODING_TABLE_H

#include "string/byte_set.h"

#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <string>

namespace kelcl {

/// The C library's answers for bytes that are no character.
inline constexpr std::size_t invalidSequence = static_cast<std::size_t>(-1);
inline constexpr std::size_t incompleteSequence = static_cast<std::size_t>(-2);

/// Filled once for each encoding of the process and constant from then on. It lies in memory of its own from
/// std::malloc: what a host's operator new and new-handler see does not depend on the locale.
class EncodingTable {
    using Row = std::array<wchar_t, 256>;

public:
    /// In place of a wide value: the bytes are no character, or more of them must be looked at.
    static constexpr wchar_t invalid = -1;
    static constexpr wchar_t longer = -2;

    /// The table of the encoding that the C library names so, which must be that of the current locale. Null
    /// when characters of the encoding depend on what precedes them, or when there is no memory: the library
    /// has to be asked each time.
    static EncodingTable const* of(char const* name);

    /// By the buffer's rule the length of the character at `p`, of which `available` bytes may be read; 0
    /// when the library has to be asked.
    unsigned int lengthOf(char const* p, std::size_t available) const {
        Row const* const pairs = pairsOf(p[0]);
        if (pairs == nullptr || available < 2) return 1;
        wchar_t const pair = (*pairs)[static_cast<unsigned char>(p[1])];
        if (pair > 0) return 2;
        return pair == invalid ? 1 : 0;
    }

    /// The length and the value of the character at `p`, of which `available` bytes may be read; 0 when there
    /// is none or the library has to be asked.
    std::size_t decode(char const* p, std::size_t available, wchar_t& value) const {
        Row const* const pairs = pairsOf(p[0]);
        if (pairs == nullptr) {
            value = singles_[static_cast<unsigned char>(p[0])];
            return value == invalid ? 0 : 1;
        }
        if (available < 2) return 0;
        value = (*pairs)[static_cast<unsigned char>(p[1])];
        return value > 0 ? 2 : 0;
    }

    /// The smallest byte that stands behind the first one in any character, at most 0x80. A smaller one is a
    /// character of its own wherever it stands.
    unsigned char trailFloor() const { return trailFloor_; }

    /// Whether another byte of the same character can follow this one.
    bool isOpen(char byte) const { return isOpen_[static_cast<unsigned char>(byte)]; }

    /// The bytes below 0x80 that stand for the wide characters of the same value, and those for them.
    ByteSet const& bytesOfTheirOwnValue() const { return ownValues_; }

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
    EncodingTable() = default;

    /// What 256 second bytes make of a byte that begins longer characters; null for another byte.
    Row const* pairsOf(char first) const { return pairs_[static_cast<unsigned char>(first)]; }

    bool fill();
    bool fillSingles();
    bool fillPairs(char first, Row& row);
    void exploreBehind(std::string& prefix);
    void noteTrail(unsigned int byte);

    static constexpr std::size_t longestName = 31;
    static constexpr std::size_t mostLeads = 128; ///< Bytes from 0x80 on.

    std::array<char, longestName + 1> name_{};
    std::array<wchar_t, 256> singles_{};
    std::array<Row const*, 256> pairs_{};
    std::array<Row, mostLeads> rows_;
    std::array<bool, 256> isOpen_{};
    unsigned char trailFloor_ = 0x80;
    ByteSet ownValues_;
    mutable std::array<std::atomic<std::uint16_t>, 0x10000> bytesOf_{}; ///< 0: not asked for yet.
    bool usable_ = false;
    EncodingTable const* next_ = nullptr;
};

} // namespace kelcl

#endif
