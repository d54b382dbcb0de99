// Mapping the characters of a text by their wide values, for changes of case and translation.
#ifndef KELCL_BUFFERS_MAPPING_H
#define KELCL_BUFFERS_MAPPING_H

#include "buffers/owned_buffer.h"
#include "buffers/wide_path.h"
#include "characters/character_text.h"

#include <algorithm>
#include <cstddef>
#include <iterator>

namespace kelcl {

/// Plain UTF-8 text with each character mapped in its place. Null when the text is not plain, or a character
/// becomes one of another length.
template <class Mapped>
DBuffer* mappedInPlaces(DBuffer const& buffer, Mapped mapped) {
    if (!isUtf8Locale()) return nullptr;
    OwnedBuffer result(allocateLike(buffer, buffer.length));
    for (std::size_t at = 0; at < buffer.length;) {
        wchar_t values[256];
        std::size_t const bytes = std::min(buffer.length - at, std::size(values));
        Stretch const from = widenUtf8(values, buffer.contents() + at, bytes);
        if (from.bytes == 0) return nullptr;
        std::transform(values, values + from.characters, values, mapped);
        Stretch const to = narrowUtf8(result->contents() + at, from.bytes, values, from.characters);
        if (to.bytes != from.bytes || to.characters != from.characters) return nullptr;
        at += from.bytes;
    }
    return result.release();
}

/// A new buffer with each character of a text of at least one byte mapped. `mapped(value)` must give the same
/// each time.
/// @throws DInvalidRequest at a text that does not convert.
template <class Mapped>
DBuffer* mapped(DBuffer const& buffer, Mapped mapped) {
    if (DBuffer* const result = mappedInPlaces(buffer, mapped)) return result;
    CharacterText text(bytesOf(buffer));
    Room const room = text.roomForMapped();
    return written(buffer, room, [&](char* out) { return text.writeMapped(mapped, out, room.bytes); });
}

} // namespace kelcl

#endif
