// What may be made of the answers that a virtual search gives: a class that a host derived may answer
// anything. An answer that would lead out of the text, or back to where a walk has been, counts as finding
// nothing.
#ifndef KELCL_STRING_VIRTUAL_ANSWERS_H
#define KELCL_STRING_VIRTUAL_ANSWERS_H

#include "string/buffer_block.h"

#include <kelcl/dbuffer.h>

#include <algorithm>
#include <cstring>
#include <string>
#include <string_view>

namespace kelcl {

/// The position that was answered where it is from `lowest` to `highest`, else 0.
constexpr unsigned int positionWithin(unsigned int answer, unsigned int lowest, unsigned int highest) {
    return answer >= lowest && answer <= highest ? answer : 0;
}

/// The matches that a virtual search finds from left to right, none reaching into the one before it.
template <class Find>
class FoundMatches {
public:
    /// `find(start)` is the search for a match of `bytes` bytes; the first one begins at `start`.
    FoundMatches(DBuffer const& text, unsigned int bytes, unsigned int start, Find find)
        : find_(find), bytes_(bytes), start_(start) {
        if (bytes <= text.length) last_ = std::min(text.length, text.length - bytes + 1);
    }

    /// The position of the next match, 0 when there are no more.
    unsigned int next() {
        unsigned int const position = positionWithin(find_(start_), lowest_, last_);
        start_ = position + bytes_;
        lowest_ = std::max(start_, position + 1);
        return position;
    }

private:
    Find find_;
    unsigned int bytes_;
    unsigned int start_;
    unsigned int lowest_ = 1;
    unsigned int last_ = 0; ///< Where the last match may stand that ends in the text.
};

/// Calls `change(byte, position)` for each byte of a copy of the text that the virtual search for any of the
/// characters finds, one after the other, and puts the copy in the text's place or into a new buffer. So a
/// search that throws leaves the text what it was.
template <class Change>
DBuffer* editFound(DBuffer& buffer, std::string_view characters, Change change) {
    auto const count = static_cast<unsigned int>(characters.size());
    auto const next = [&](unsigned int from) {
        return positionWithin(buffer.indexOfAnyOf(characters.data(), count, from), from, buffer.length);
    };
    unsigned int position = next(1);
    if (position == 0) return shared(buffer);
    std::string text(buffer.contents(), buffer.length);
    for (; position != 0; position = next(position + 1))
        change(text[position - 1], position);
    if (!buffer.hasOneOwner()) return copyLike(buffer, text.data(), buffer.length);
    std::memcpy(buffer.contents(), text.data(), text.size());
    return shared(buffer);
}

} // namespace kelcl

#endif
