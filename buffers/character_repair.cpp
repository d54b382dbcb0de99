// Repair of cut characters.
#include "buffers/character_repair.h"

#include <algorithm>
#include <cstring>

namespace kelcl {

namespace {

/// The place of byte `cut` in its character: 2 or more inside one, less at its start and outside of the text.
unsigned int placeInCharacter(DBuffer const& text, unsigned int cut) {
    return cut == 0 || cut > text.length ? 0 : text.charType(cut);
}

} // namespace

void blankCutHead(DBuffer const& old, unsigned int cut, DBuffer& result, unsigned int last,
                  char padCharacter) {
    unsigned int const place = placeInCharacter(old, cut);
    if (place < 2) return;
    unsigned int const end = std::min(last, result.length);
    unsigned int const count = std::min(place - 1, end);
    std::memset(result.contents() + end - count, padCharacter, count);
}

void blankCutTail(DBuffer const& old, unsigned int cut, DBuffer& result, unsigned int first,
                  char padCharacter) {
    for (; first <= result.length && placeInCharacter(old, cut) >= 2; ++cut, ++first)
        result.contents()[first - 1] = padCharacter;
}

} // namespace kelcl
