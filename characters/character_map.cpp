// The table of a map of characters where there are many.
#include "characters/character_map.h"

#include <utility>

namespace kelcl {

void CharacterMap::grow() {
    std::size_t const slots = mask_ + 1;
    std::size_t const moreSlots = 4 * slots;
    std::vector<Key> keys(moreSlots, unused);
    std::vector<Number> numbers(moreSlots);
    Key const* const oldKeys = keys_;
    Number const* const oldNumbers = numbers_;
    keys_ = keys.data();
    numbers_ = numbers.data();
    mask_ = moreSlots - 1;
    shift_ -= 2;
    for (std::size_t i = 0; i < slots; ++i) {
        if (oldKeys[i] == unused) continue;
        std::size_t const slot = slotOf(oldKeys[i]);
        keys_[slot] = oldKeys[i];
        numbers_[slot] = oldNumbers[i];
    }
    moreRoom_ = std::move(keys);
    moreNumbersRoom_ = std::move(numbers);
}

} // namespace kelcl
