// What the searches of DDBCSBuffer share: where they begin, the walks from character to character, and the
// search for bytes that stand where a character begins.
#ifndef KELCL_BUFFERS_DDBCS_SEARCH_H
#define KELCL_BUFFERS_DDBCS_SEARCH_H

#include "buffers/buffer_block.h"
#include "buffers/host_classes.h"
#include "bytes/byte_search.h"
#include "characters/stepping.h"

#include <kelcl/ddbcsbuffer.h>

#include <algorithm>
#include <string_view>

namespace kelcl {

/// The offset of the first character from `from` on, which is a character start, that `wanted(p, length)`
/// wants.
template <class Wanted>
std::size_t firstCharacter(DBuffer const& text, std::size_t from, BufferSteps& steps, Wanted wanted) {
    for (std::size_t at = from; at < text.length;) {
        unsigned int const bytes = steps.length(text.contents() + at);
        if (wanted(text.contents() + at, bytes)) return at;
        at += bytes;
    }
    return notFound;
}

/// The offset of the last character up to the one that contains the byte at `from` that `wanted(p, length)`
/// wants.
template <class Wanted>
std::size_t lastCharacter(DBuffer const& text, std::size_t from, BufferSteps& steps, Wanted wanted) {
    FallingStarts starts(text.contents(), steps);
    for (std::size_t at = starts.startOf(from);; at = starts.startOf(at - 1)) {
        if (wanted(text.contents() + at, steps.length(text.contents() + at))) return at;
        if (at == 0) return notFound;
    }
}

/// The position of the first character from `start` on, of the last one at or before `start`, with which some
/// bytes begin. In the library's own class `start` may be inside of a character.
unsigned int firstText(DBuffer const& buffer, unsigned int start, std::string_view wanted);
unsigned int lastText(DBuffer const& buffer, unsigned int start, std::string_view wanted);

// Where searches begin. In the library's own class those that find the beginnings of characters may start at
// any byte of one: nothing else of it is found.

inline unsigned int forwardStart(DDBCSBuffer const& text, unsigned int start) {
    return isMultiByteClass(text) ? text.DBuffer::startSearch(start, 1) : text.startSearch(start, 1);
}

inline unsigned int backwardStart(DDBCSBuffer const& text, unsigned int start) {
    unsigned int const last = isMultiByteClass(text) ? start : text.startBackwardsSearch(start, 1);
    return std::min(last, text.length);
}

// A class that a host derived may begin a search inside of a character, and say what its characters are. Its
// searches go from there character by character.

/// Whether a scan may go on from the position without asking the text about its characters: always in the
/// library's own class.
bool beginsCharacter(DDBCSBuffer const& text, unsigned int position);

/// The same for a scan backwards, which steps by what the text says of its characters.
bool mayStepBack(DDBCSBuffer const& text, unsigned int position);

/// The position of the first character from the one at `from` on that `wanted(p, length)` wants.
template <class Wanted>
unsigned int firstByOwnSteps(DBuffer const& text, unsigned int from, Wanted wanted) {
    BufferSteps steps;
    return positionOf(firstCharacter(text, from - 1, steps, wanted));
}

/// The position of the last character at or before the one at `from` that `wanted(p, length)` wants, stepping
/// back by the lengths that the text itself gives.
template <class Wanted>
unsigned int lastByOwnSteps(DDBCSBuffer const& text, unsigned int from, Wanted wanted) {
    BufferSteps steps;
    for (unsigned int at = from; at != 0;) {
        char const* const p = text.contents() + at - 1;
        if (wanted(p, steps.length(p))) return at;
        at -= std::min(at, text.prevCharLength(at));
    }
    return 0;
}

/// The same where the fast walk may be taken as well.
template <class Wanted>
unsigned int lastWanted(DDBCSBuffer const& text, unsigned int from, BufferSteps& steps, Wanted wanted) {
    if (!mayStepBack(text, from)) return lastByOwnSteps(text, from, wanted);
    return positionOf(lastCharacter(text, from - 1, steps, wanted));
}

/// Wants the characters at which some bytes stand.
inline auto beginsWith(DBuffer const& text, std::string_view bytes) {
    return [&text, bytes](char const* p, unsigned int) {
        auto const at = static_cast<std::size_t>(p - text.contents());
        return std::string_view(p, text.length - at).starts_with(bytes);
    };
}

} // namespace kelcl

#endif
