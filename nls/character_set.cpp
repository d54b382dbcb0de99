// A set of multi-byte characters.
#include "nls/character_set.h"

#include <algorithm>

namespace kelcl {

namespace {

std::uint64_t keyOf(char const* character, std::size_t length) {
    std::uint64_t key = length;
    for (std::size_t i = 0; i < length; ++i) // six bytes at the most, so nothing is shifted out
        key = key << 8 | static_cast<unsigned char>(character[i]);
    return key;
}

} // namespace

CharacterSet::CharacterSet(char const* characters, std::size_t n, Encoding const& encoding) {
    BufferSteps steps(encoding);
    for (std::size_t at = 0; at < n;) {
        unsigned int const length = steps.lengthWithin(characters + at, n - at);
        first_.insert(characters[at]);
        last_.insert(characters[at + length - 1]);
        if (length == 1)
            single_.insert(characters[at]);
        else
            long_.push_back(keyOf(characters + at, length));
        goesByBytes_ = goesByBytes_ && length == 1 && steps.standsAlone(characters[at]);
        at += length;
    }
    std::sort(long_.begin(), long_.end());
}

bool CharacterSet::containsLong(char const* character, std::size_t length) const {
    return std::binary_search(long_.begin(), long_.end(), keyOf(character, length));
}

} // namespace kelcl
