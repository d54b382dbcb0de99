// A set of multi-byte characters, made once of a counted string and then asked for each character of a text.
#ifndef KELCL_CHARACTERS_CHARACTER_SET_H
#define KELCL_CHARACTERS_CHARACTER_SET_H

#include "bytes/byte_set.h"
#include "characters/character_map.h"
#include "characters/stepping.h"

#include <array>
#include <cstddef>
#include <string_view>

namespace kelcl {

/// Takes the characters of a counted string one after the other, by the buffer's rule. Bytes past its end are
/// never read.
class ListedCharacters {
public:
    ListedCharacters(std::string_view text, Encoding const& encoding) : rest_(text), steps_(encoding) {}

    bool isUsedUp() const { return rest_.empty(); }
    std::string_view next() {
        std::string_view const character = rest_.substr(0, steps_.lengthWithin(rest_.data(), rest_.size()));
        rest_.remove_prefix(character.size());
        return character;
    }

private:
    std::string_view rest_;
    BufferSteps steps_;
};

class CharacterSet {
public:
    /// How many characters to look at one by one before the byte kernels search on for a first byte of a
    /// member: where such bytes are dense they find one at every turn.
    static constexpr int charactersInTurn = 32;

    explicit CharacterSet(Encoding const& encoding) : steps_(encoding) {}
    /// Of the characters of a counted string, which must stay as long as the set.
    CharacterSet(char const* characters, std::size_t n, Encoding const& encoding) : CharacterSet(encoding) {
        for (ListedCharacters listed({characters, n}, encoding); !listed.isUsedUp();)
            add(listed.next());
    }

    /// Adds a character, whose bytes must stay as long as the set. Whether it is new.
    bool add(std::string_view character) {
        if (character.size() == 1) {
            if (single_.contains(character.front())) return false;
            single_.insert(character.front());
            hasSingles_ = true;
            singlesStandAlone_ = singlesStandAlone_ && steps_.standsAlone(character.front());
        } else {
            CharacterMap::Number const next = long_.size();
            if (long_.add(CharacterMap::keyOf(character.data(), character.size())) != next) return false;
            if (next < patterns_.size()) patterns_[next] = character;
        }
        first_.insert(character.front());
        last_.insert(character.back());
        return true;
    }

    bool contains(char const* character, std::size_t length) const {
        if (length == 1) return single_.contains(*character);
        return numberOf(character, length) != CharacterMap::none;
    }
    /// The number of a character of more than one byte, in the order in which these were added.
    CharacterMap::Number numberOf(char const* character, std::size_t length) const {
        if (!first_.contains(*character) || !last_.contains(character[length - 1])) return CharacterMap::none;
        return long_.find(CharacterMap::keyOf(character, length));
    }
    /// The offset of the first member from the character start `from` on, or notFound.
    std::size_t findFirst(std::string_view text, std::size_t from, BufferSteps& steps) const;
    /// The offset of the last member that begins before the offset `end`, or notFound.
    std::size_t findLast(std::string_view text, std::size_t end, BufferSteps& steps) const;

    Encoding const& encoding() const { return steps_.encoding(); }
    /// The members of one byte.
    ByteSet const& singleBytes() const { return single_; }
    /// Whether all members are single bytes that can never be part of a longer character, so that a search
    /// may go by bytes.
    bool isByteSearchable() const { return long_.size() == 0 && singlesStandAlone_; }

private:
    /// Whether members are looked for as byte patterns, which is worth it for a few.
    bool arePatterns() const { return long_.size() <= patterns_.size() && singlesStandAlone_; }
    std::size_t firstMatch(std::string_view text, std::size_t from) const;
    std::size_t lastMatch(std::string_view text, std::size_t end) const;
    std::size_t walkToFirst(std::string_view text, std::size_t from, BufferSteps& steps) const;
    std::size_t walkToLast(std::string_view text, std::size_t end, BufferSteps& steps) const;

    static constexpr std::size_t maxPatterns = 4;

    BufferSteps steps_;
    ByteSet single_;
    ByteSet first_;
    ByteSet last_; // together they tell most other characters apart
    bool hasSingles_ = false;
    bool singlesStandAlone_ = true;
    std::array<std::string_view, maxPatterns> patterns_; ///< The first longer members.
    CharacterMap long_;
};

} // namespace kelcl

#endif
