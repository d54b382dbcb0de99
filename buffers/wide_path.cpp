// Buffers made of a text's characters.
#include "buffers/wide_path.h"

#include <cstddef>
#include <cstring>

namespace kelcl {

DBuffer* pieceOf(DBuffer const& like, CharacterText& text, CharacterText::Place from,
                 CharacterText::Place to) {
    return written(like, text.roomFor(from, to), [&](char* out) { return text.write(from, to, out); });
}

DBuffer* fitted(DBuffer const& like, unsigned int width, std::initializer_list<CharacterRange> ranges,
                char padCharacter) {
    return written(like, {width, true}, [&](char* out) {
        std::size_t bytes = 0;
        for (CharacterRange range : ranges) {
            bytes += range.text.writeWhole(range.from, range.to, out + bytes, width - bytes);
            if (range.from != range.to) break;
        }
        std::memset(out + bytes, padCharacter, width - bytes);
        return std::size_t{width};
    });
}

} // namespace kelcl
