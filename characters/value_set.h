// A set of characters of UTF-8, looked for by their values: a few are compared with many of a text's at once,
// and only more than these get a table.
#ifndef KELCL_CHARACTERS_VALUE_SET_H
#define KELCL_CHARACTERS_VALUE_SET_H

#include "characters/character_map.h"
#include "characters/widened_pieces.h"

#include <array>
#include <cstddef>
#include <cwchar>
#include <string_view>

namespace kelcl {

class ValueSet {
public:
    /// Takes the characters of a list that is not empty. Whether it is plain UTF-8; if not, the object is of
    /// no use.
    bool take(std::string_view list);

    /// Whether they are few enough to need no table.
    bool hasFew() const { return count_ <= few; }

    /// Where the first value is that is (that is not) a member, or `n`. May read `readablePastPiece` values
    /// past the last one.
    std::size_t findFirst(wchar_t const* values, std::size_t n) const;
    std::size_t findFirstOther(wchar_t const* values, std::size_t n) const;

private:
    static constexpr std::size_t few = 32;

    bool takeMany(std::string_view list);

    std::size_t count_ = 0; ///< Of what is in `values_`: more than a few if they are in the table instead.
    std::array<wchar_t, 4 * few> values_; ///< Room for as many as a few characters have bytes.
    CharacterMap table_;
};

/// Where the first character from the start `at` on is that is (that is not) a member, or the text's end.
SearchedSoFar findFirstIn(std::string_view text, std::size_t at, ValueSet const& set);
SearchedSoFar findFirstNotIn(std::string_view text, std::size_t at, ValueSet const& set);

} // namespace kelcl

#endif
