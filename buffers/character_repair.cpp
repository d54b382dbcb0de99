// Repair of cut characters: where the encoding, or a host's class, is asked.
#include "buffers/character_repair.h"

namespace kelcl {

unsigned int PlacesInCharacters::placeOf(unsigned int position) {
    if (!isMultiByteClass(text_)) return text_.charType(position);
    if (!steps_) steps_.emplace();
    std::size_t const at = position - 1;
    return static_cast<unsigned int>(at - startOfCharacter(text_.contents(), at, *steps_)) + 1;
}

} // namespace kelcl
