// What the wide paths of DDBCSBuffer share: buffers made of a text's characters.
#ifndef KELCL_BUFFERS_WIDE_PATH_H
#define KELCL_BUFFERS_WIDE_PATH_H

#include "buffers/length.h"
#include "buffers/owned_buffer.h"
#include "buffers/wide_mode.h"
#include "characters/character_text.h"

#include <kelcl/dbuffer.h>

#include <initializer_list>
#include <memory>
#include <string_view>

namespace kelcl {

/// A new buffer of bytes that may be too many for one.
inline DBuffer* newBufferOf(DBuffer const& like, std::string_view bytes) {
    if (bytes.size() >= unboundedLength) raiseLengthOverflow();
    return like.newBuffer(bytes.data(), static_cast<unsigned int>(bytes.size()));
}

/// A new buffer of what `write(out)` writes and counts, which has the given room for it.
template <class Write>
DBuffer* written(DBuffer const& like, Room room, Write write) {
    if (room.bytes == 0) return like.newBuffer(nullptr, 0);
    if (!room.isExact) {
        std::unique_ptr<char[]> const scratch(new char[room.bytes]);
        return newBufferOf(like, {scratch.get(), write(scratch.get())});
    }
    if (room.bytes >= unboundedLength) raiseLengthOverflow();
    OwnedBuffer result(allocateLike(like, static_cast<unsigned int>(room.bytes)));
    write(result->contents());
    return result.release();
}

/// A new buffer of the characters between two places.
DBuffer* pieceOf(DBuffer const& like, CharacterText& text, CharacterText::Place from,
                 CharacterText::Place to);

struct CharacterRange {
    CharacterText& text;
    CharacterText::Place from, to;
};

/// A new buffer of exactly `width` bytes: as many whole characters of the ranges as fit, padded.
DBuffer* fitted(DBuffer const& like, unsigned int width, std::initializer_list<CharacterRange> ranges,
                char padCharacter);

} // namespace kelcl

#endif
