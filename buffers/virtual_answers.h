// What may be made of the answers that a virtual search gives: a class that a host derived may answer
// anything. An answer that would lead out of the text, or back to where a walk has been, counts as finding
// nothing.
#ifndef KELCL_BUFFERS_VIRTUAL_ANSWERS_H
#define KELCL_BUFFERS_VIRTUAL_ANSWERS_H

#include "buffers/buffer_block.h"

#include <kelcl/dbuffer.h>

#include <cstring>
#include <string>
#include <string_view>

namespace kelcl {

/// The position that was answered where it is from `lowest` to `highest`, else 0.
constexpr unsigned int positionWithin(unsigned int answer, unsigned int lowest, unsigned int highest) {
    return answer >= lowest && answer <= highest ? answer : 0;
}

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
