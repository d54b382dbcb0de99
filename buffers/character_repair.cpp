// Repair of cut characters: where in one a byte is that does not tell by itself.
#include "buffers/character_repair.h"

namespace kelcl {

unsigned int PlacesInCharacters::placeInCharacter(std::size_t at) {
    return static_cast<unsigned int>(at - startOfCharacter(text_.contents(), at, *steps_)) + 1;
}

} // namespace kelcl
