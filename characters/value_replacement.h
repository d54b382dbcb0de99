// Replacing a few characters, given by their values, in an array of wide characters.
#ifndef KELCL_CHARACTERS_VALUE_REPLACEMENT_H
#define KELCL_CHARACTERS_VALUE_REPLACEMENT_H

#include <array>
#include <cstddef>
#include <cwchar>
#include <string_view>

namespace kelcl {

/// Which values become which. As long as they are few, it is faster to compare them all with each value of a
/// text, many of these at once, than to look each one up.
class ValueReplacement {
public:
    /// Takes the characters of plain UTF-8 at the same places of both texts; those of `from` past the end of
    /// `to` become the pad character, which is ASCII. Of one that is listed twice the first place counts.
    /// Whether the texts are plain and have few characters; if not, the object is of no use.
    bool take(std::string_view from, std::string_view to, char padCharacter);

    /// Whether any of the values became another.
    bool replace(wchar_t* values, std::size_t n) const;

private:
    static constexpr std::size_t most = 32;

    std::size_t count_ = 0;
    std::array<wchar_t, 4 * most> from_; ///< Room for as many as `most` characters have bytes.
    std::array<wchar_t, 4 * most> to_;
};

} // namespace kelcl

#endif
