// A set of multi-byte characters.
#include "characters/character_set.h"

#include "bytes/byte_search.h"

#include <algorithm>

namespace kelcl {

std::size_t CharacterSet::walkToFirst(std::string_view text, std::size_t from, BufferSteps& steps) const {
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

std::size_t CharacterSet::walkToLast(std::string_view text, std::size_t end, BufferSteps& steps) const {
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

namespace {

/// How far to look for one member before it is another one's turn, first and from one time to the next: none
/// is looked for much beyond the place where another one stands.
constexpr std::size_t firstWindow = 64;
constexpr std::size_t growth = 4;

} // namespace

/// The first place from `from` on where the bytes of a member stand.
std::size_t CharacterSet::firstMatch(std::string_view text, std::size_t from) const {
    for (std::size_t window = firstWindow; from < text.size(); from += window, window *= growth) {
        std::size_t first = window;
        if (hasSingles_) first = std::min(first, findFirstIn(text.substr(from, first), single_));
        for (std::size_t i = 0; i < long_.size(); ++i) {
            std::string_view const pattern = patterns_[i];
            first = std::min(first, findPattern(text.substr(from, first + pattern.size() - 1), pattern));
        }
        if (first != window) return from + first;
    }
    return notFound;
}

/// The last place before `end` where the bytes of a member stand.
std::size_t CharacterSet::lastMatch(std::string_view text, std::size_t end) const {
    for (std::size_t window = firstWindow; end > 0; window *= growth) {
        std::size_t const begin = end - std::min(window, end);
        std::size_t from = begin; // after the last one that was found
        std::size_t found = hasSingles_ ? findLastIn(text.substr(from, end - from), single_) : notFound;
        if (found != notFound) from += found + 1;
        for (std::size_t i = 0; i < long_.size(); ++i) {
            std::string_view const pattern = patterns_[i];
            found = findLastPattern(text.substr(from, end - from + pattern.size() - 1), pattern);
            if (found != notFound) from += found + 1;
        }
        if (from != begin) return from - 1;
        end = begin;
    }
    return notFound;
}

std::size_t CharacterSet::findFirst(std::string_view text, std::size_t from, BufferSteps& steps) const {
    if (isByteSearchable()) {
        std::size_t const found = findFirstIn(text.substr(from), single_);
        return found == notFound ? notFound : from + found;
    }
    if (!arePatterns()) return walkToFirst(text, from, steps);
    RisingStarts starts(text.data(), from, steps);
    std::size_t at = firstMatch(text, from);
    while (at != notFound && !starts.isStart(at))
        at = firstMatch(text, at + 1);
    return at;
}

std::size_t CharacterSet::findLast(std::string_view text, std::size_t end, BufferSteps& steps) const {
    if (isByteSearchable()) return findLastIn(text.substr(0, end), single_);
    if (!arePatterns()) return walkToLast(text, end, steps);
    FallingStarts starts(text.data(), steps);
    std::size_t at = lastMatch(text, end);
    while (at != notFound && starts.startOf(at) != at)
        at = lastMatch(text, at);
    return at;
}

} // namespace kelcl
