// A set of multi-byte characters, made once of a counted string and then asked for each character of a text.
#ifndef KELCL_CHARACTERS_CHARACTER_SET_H
#define KELCL_CHARACTERS_CHARACTER_SET_H

#include "bytes/byte_set.h"
#include "characters/stepping.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory_resource>
#include <string_view>
#include <vector>

namespace kelcl {

class CharacterSet {
public:
    /// The characters of the counted string by the buffer's rule; bytes behind it are never read. It must
    /// stay as long as the set.
    CharacterSet(char const* characters, std::size_t n, Encoding const& encoding);

    bool contains(char const* character, std::size_t length) const {
        if (length == 1) return single_.contains(*character);
        return first_.contains(*character) && last_.contains(character[length - 1]) &&
               containsLong(character, length);
    }
    /// The offset of the first member from the character start `from` on, or notFound.
    std::size_t findFirst(std::string_view text, std::size_t from, BufferSteps& steps) const;
    /// The offset of the last member that begins before the offset `end`, or notFound.
    std::size_t findLast(std::string_view text, std::size_t end, BufferSteps& steps) const;

    /// The members of one byte.
    ByteSet const& singleBytes() const { return single_; }
    /// Whether all members are single bytes that can never be part of a longer character, so that a search
    /// may go by bytes.
    bool goesByBytes() const { return long_.empty() && singlesStandAlone_; }

private:
    bool containsLong(char const* character, std::size_t length) const;

    /// Whether members are looked for as byte patterns, which is worth it for a few.
    bool goesByPatterns() const { return long_.size() <= patterns_.size() && singlesStandAlone_; }
    std::size_t firstMatch(std::string_view text, std::size_t from) const;
    std::size_t lastMatch(std::string_view text, std::size_t end) const;
    std::size_t walkToFirst(std::string_view text, std::size_t from, BufferSteps& steps) const;
    std::size_t walkToLast(std::string_view text, std::size_t end, BufferSteps& steps) const;

    static constexpr std::size_t mostPatterns = 4;
    static constexpr std::size_t commonSize = 32;

    ByteSet single_;
    ByteSet first_;
    ByteSet last_; // together they tell most other characters apart
    bool hasSingles_ = false;
    bool singlesStandAlone_ = true;
    std::array<std::string_view, mostPatterns> patterns_; ///< The first longer members.
    std::array<std::uint64_t, commonSize> room_;
    std::pmr::monotonic_buffer_resource memory_{room_.data(), sizeof room_};
    std::pmr::vector<std::uint64_t> long_{&memory_}; ///< Sorted; each a character's bytes and its length.
};

} // namespace kelcl

#endif
