// A set of multi-byte characters.
#include "nls/character_set.h"

#include "string/byte_search.h"

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

namespace {

/// How many characters to look at one by one before the byte kernels search on for a first byte of a member:
/// where such bytes are dense they find one at every turn.
constexpr int charactersInTurn = 32;

} // namespace

std::size_t CharacterSet::findFirst(std::string_view text, std::size_t from, BufferSteps& steps) const {
    if (goesByBytes_) {
        std::size_t const found = findFirstIn(text.substr(from), single_);
        return found == notFound ? notFound : from + found;
    }
    RisingStarts starts(text.data(), from, steps);
    for (std::size_t at = from; at < text.size();) {
        std::size_t const found = findFirstIn(text.substr(at), first_);
        if (found == notFound) return notFound;
        at += found;
        if (!starts.isStart(at)) {
            ++at;
            continue;
        }
        for (int turn = 0; turn < charactersInTurn && at < text.size(); ++turn) {
            unsigned int const bytes = steps.length(text.data() + at);
            if (contains(text.data() + at, bytes)) return at;
            at += bytes;
        }
    }
    return notFound;
}

std::size_t CharacterSet::findLast(std::string_view text, std::size_t end, BufferSteps& steps) const {
    if (goesByBytes_) return findLastIn(text.substr(0, end), single_);
    FallingStarts starts(text.data(), steps);
    for (;;) {
        std::size_t at = findLastIn(text.substr(0, end), first_);
        if (at == notFound) return notFound;
        end = at;
        if (starts.startOf(at) != at) continue;
        for (int turn = 0; turn < charactersInTurn; ++turn) {
            if (contains(text.data() + at, steps.length(text.data() + at))) return at;
            if (at == 0) return notFound;
            end = at;
            at = starts.startOf(at - 1);
        }
    }
}

} // namespace kelcl
