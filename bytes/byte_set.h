// Sets of byte values, and the searches of a text for the first or last byte inside or outside of a set.
// Offsets count from 0; notFound is that of byte_search.h. What an empty set means to a user is the callers'
// business.
#ifndef KELCL_BYTES_BYTE_SET_H
#define KELCL_BYTES_BYTE_SET_H

#include "bytes/byte_search.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <type_traits>

namespace kelcl {

/// A set of byte values. It is 32 bytes in size and made without allocation, in half a nanosecond for each
/// member.
///
/// The members are kept as two tables of 16 rows, one for the values below 0x80 and one for the others. The
/// low four bits of a value choose the row and the next three the bit in it, as a vector table look-up of 16
/// entries needs it.
class ByteSet {
public:
    constexpr ByteSet() = default;

    constexpr explicit ByteSet(std::string_view members) {
        constexpr std::size_t many = 8;
        if (!std::is_constant_evaluated() && members.size() >= many) {
            insertAll(members);
        } else {
            for (char const member : members)
                insert(member);
        }
    }

    /// The set of all values for which `predicate`, called with an unsigned char, is true.
    template <class Predicate>
    static constexpr ByteSet where(Predicate predicate) {
        ByteSet result;
        for (unsigned int value = 0; value < 256; ++value)
            if (predicate(static_cast<unsigned char>(value))) result.insert(static_cast<char>(value));
        return result;
    }

    constexpr bool contains(char byte) const { return (rows_[rowOf(byte)] >> bitOf(byte) & 1U) != 0; }

    constexpr void insert(char byte) {
        rows_[rowOf(byte)] = static_cast<unsigned char>(rows_[rowOf(byte)] | 1U << bitOf(byte));
    }

    /// The 32 rows, those of the values below 0x80 first.
    constexpr unsigned char const* rows() const { return rows_.data(); }

private:
    void insertAll(std::string_view members);

    static constexpr std::size_t rowOf(char byte) {
        auto const value = static_cast<unsigned char>(byte);
        return (value >> 7U) * 16U + (value & 15U);
    }
    static constexpr unsigned int bitOf(char byte) { return static_cast<unsigned char>(byte) >> 4U & 7U; }

    std::array<unsigned char, 32> rows_{};
};

/// The offset of the first (last) byte that is in the set (that is not in it), or notFound.
std::size_t findFirstIn(std::string_view text, ByteSet const& set);
std::size_t findFirstNotIn(std::string_view text, ByteSet const& set);
std::size_t findLastIn(std::string_view text, ByteSet const& set);
std::size_t findLastNotIn(std::string_view text, ByteSet const& set);

/// The same for the set of the given members, of which there is at least one. It is made only where the text
/// is worth it.
std::size_t findFirstIn(std::string_view text, std::string_view members);
std::size_t findFirstNotIn(std::string_view text, std::string_view members);
std::size_t findLastIn(std::string_view text, std::string_view members);
std::size_t findLastNotIn(std::string_view text, std::string_view members);

/// How many runs of bytes outside of the set the text has: outside of the separators, its number of words.
std::size_t countRunsNotIn(std::string_view text, ByteSet const& set);

/// Where the run of the given number, counted from 1, begins, or notFound.
std::size_t findRunNotIn(std::string_view text, std::size_t number, ByteSet const& set);

/// How many bytes are in the set.
std::size_t countIn(std::string_view text, ByteSet const& set);

/// One bit for each of the first 64 bytes, or for fewer, the first one lowest: whether it is outside of the
/// set.
std::uint64_t maskOfStartNotIn(std::string_view text, ByteSet const& set);

} // namespace kelcl

#endif
