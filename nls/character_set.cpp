// A set of multi-byte characters.
#include "nls/character_set.h"

#include <algorithm>
#include <cstring>

namespace kelcl {

namespace {

std::uint64_t keyOf(char const* character, std::size_t length) {
    std::uint64_t key = 0;
    std::memcpy(&key, character, length);
    return key << 8 | length; // six bytes at the most, so nothing is shifted out
}

} // namespace

CharacterSet::CharacterSet(char const* characters, std::size_t n, bool isUtf8) {
    BufferSteps steps(isUtf8, std::mbstate_t{});
    for (std::size_t at = 0; at < n;) {
        unsigned int const length = steps.lengthWithin(characters + at, n - at);
        if (length == 1)
            single_.insert(characters[at]);
        else
            long_.push_back(keyOf(characters + at, length));
        goesByBytes_ = goesByBytes_ && length == 1 && standsAlone(characters[at], isUtf8);
        at += length;
    }
    std::sort(long_.begin(), long_.end());
}

bool CharacterSet::containsLong(char const* character, std::size_t length) const {
    return std::binary_search(long_.begin(), long_.end(), keyOf(character, length));
}

} // namespace kelcl
