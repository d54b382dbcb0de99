// The search of UTF-8 by the values of its characters: a piece of the text is widened after the other,
// without an allocation.
#ifndef KELCL_CHARACTERS_WIDENED_PIECES_H
#define KELCL_CHARACTERS_WIDENED_PIECES_H

#include "characters/utf8.h"

#include <algorithm>
#include <cstddef>
#include <cwchar>
#include <string_view>

namespace kelcl {

/// How far a search of a text came, and whether it ended there: at what was looked for, or at the end.
/// Otherwise it stopped at a character that is not plain.
struct SearchedSoFar {
    std::size_t at;
    bool isEnd;
};

/// How many values past the last one of a piece a search may read; they are NULs.
inline constexpr std::size_t readablePastPiece = 16;

/// Goes on from the start of a character until `find(values, n)`, which tells the first of some values that
/// is wanted or `n`, finds one.
template <class Find>
SearchedSoFar findInPieces(std::string_view text, std::size_t at, Find find) {
    constexpr std::size_t most = 256;
    wchar_t values[most + readablePastPiece];
    for (std::size_t size = most / 4; at < text.size(); size = most) { // what is wanted is often near
        Extent const piece = widenUtf8(values, text.data() + at, std::min(text.size() - at, size));
        if (piece.bytes == 0) return {at, false};
        std::fill_n(values + piece.characters, readablePastPiece, L'\0');
        std::size_t const found = find(static_cast<wchar_t const*>(values), piece.characters);
        if (found != piece.characters) return {at + utf8LengthOfAll(values, found), true};
        at += piece.bytes;
    }
    return {at, true};
}

} // namespace kelcl

#endif
