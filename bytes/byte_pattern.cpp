// Searches for patterns. Candidates are the places where the first, the middle and the last byte of the
// pattern stand, looked for 32 places at a time; when many of them come to nothing, the C library's linear
// search takes over.

#include "bytes/byte_scan.h"
#include "bytes/byte_search.h"

#include <algorithm>
#include <cstring>

namespace kelcl {

namespace {

/// Linear in text plus pattern for every input.
std::size_t findLinear(std::string_view text, std::string_view pattern) {
    void const* const found = memmem(text.data(), text.size(), pattern.data(), pattern.size());
    return found != nullptr ? static_cast<std::size_t>(static_cast<char const*>(found) - text.data())
                            : notFound;
}

/// The last match that begins at `first` or later and before `end`, made of forward searches: as long as
/// there is a match in the later half of the places that are left, the places up to it drop out, otherwise
/// that half does. The places are halved each time, so the sum is linear in them, plus the pattern times the
/// logarithm.
std::size_t findLastBetween(std::string_view text, std::string_view pattern, std::size_t first,
                            std::size_t end) {
    std::size_t last = notFound;
    while (first < end) {
        std::size_t const middle = first + (end - first) / 2;
        std::size_t const found = findLinear(text.substr(middle, end - middle + pattern.size() - 1), pattern);
        if (found == notFound) {
            end = middle;
        } else {
            last = middle + found;
            first = last + 1;
        }
    }
    return last;
}

/// Goes back in stretches of growing size, so that the cost depends on how far from the end the match is.
std::size_t findLastLinear(std::string_view text, std::string_view pattern) {
    if (text.size() < pattern.size()) return notFound;
    std::size_t end = text.size() - pattern.size() + 1;
    std::size_t stretch = std::max<std::size_t>(2 * pattern.size(), 64);
    for (; end > 0; stretch *= 4) {
        std::size_t const first = end - std::min(end, stretch);
        std::size_t const found = findLastBetween(text, pattern, first, end);
        if (found != notFound) return found;
        end = first;
    }
    return notFound;
}

#if KELCL_HAS_BLOCKS

/// Looks at candidates, the places where three bytes of the pattern stand, and keeps account of what failed
/// ones cost.
class Candidates {
public:
    explicit Candidates(std::string_view pattern)
        : pattern_(pattern), middle_(pattern.size() / 2), costOfFailure_(1 + pattern.size() / 16) {}

    /// One bit for each of n places, 32 at most: whether the first, the middle and the last byte stand there.
    KELCL_BLOCKS_INLINE std::uint32_t mask(char const* places, std::size_t n) const {
        EqualTo const first{pattern_.front()};
        EqualTo const middle{pattern_[middle_]};
        EqualTo const last{pattern_.back()};
        char const* const middles = places + middle_;
        char const* const ends = places + pattern_.size() - 1;
        if (n < 32)
            return blocks::maskOfFewer(places, n, first) & blocks::maskOfFewer(middles, n, middle) &
                   blocks::maskOfFewer(ends, n, last);
        return (first.matches(Block::load(places)) & last.matches(Block::load(ends)) &
                middle.matches(Block::load(middles)))
            .topBits();
    }

    /// Whether the pattern stands at a candidate.
    bool matches(char const* place) {
        if (pattern_.size() <= 3 || std::memcmp(place + 1, pattern_.data() + 1, pattern_.size() - 2) == 0)
            return true;
        spent_ += costOfFailure_;
        return false;
    }

    /// Whether failed candidates cost so much, measured by the bytes gone through, that the linear search is
    /// faster. For short patterns that never is the case.
    bool tooCostly(std::size_t scanned) const { return spent_ > 4096 + 4 * scanned; }

private:
    std::string_view pattern_;
    std::size_t middle_;
    std::size_t costOfFailure_; // in the time that it takes to compare 16 bytes
    std::size_t spent_ = 0;
};

KELCL_BLOCKS std::size_t findByCandidates(std::string_view text, std::string_view pattern) {
    Candidates candidates(pattern);
    std::size_t const places = text.size() - pattern.size() + 1;
    for (std::size_t i = 0; i < places; i += 32) {
        std::uint32_t mask = candidates.mask(text.data() + i, std::min<std::size_t>(places - i, 32));
        for (; mask != 0; mask &= mask - 1) {
            std::size_t const place = i + blocks::lowestBit(mask);
            if (candidates.matches(text.data() + place)) return place;
            if (candidates.tooCostly(i)) {
                std::size_t const found = findLinear(text.substr(place + 1), pattern);
                return found == notFound ? notFound : place + 1 + found;
            }
        }
    }
    return notFound;
}

KELCL_BLOCKS std::size_t findLastByCandidates(std::string_view text, std::string_view pattern) {
    Candidates candidates(pattern);
    std::size_t const places = text.size() - pattern.size() + 1;
    for (std::size_t end = places; end > 0;) {
        std::size_t const n = std::min<std::size_t>(end, 32);
        end -= n;
        std::uint32_t mask = candidates.mask(text.data() + end, n);
        while (mask != 0) {
            std::size_t const bit = blocks::highestBit(mask);
            if (candidates.matches(text.data() + end + bit)) return end + bit;
            if (candidates.tooCostly(places - end))
                return findLastLinear(text.substr(0, end + bit + pattern.size() - 1), pattern);
            mask &= ~(1U << bit);
        }
    }
    return notFound;
}

#endif

} // namespace

std::size_t findPattern(std::string_view text, std::string_view pattern) {
    if (text.size() < pattern.size()) return notFound;
    if (pattern.size() == 1) return findByte(text, pattern.front());
#if KELCL_HAS_BLOCKS
    if (processorHasBlocks()) return findByCandidates(text, pattern);
#endif
    return findLinear(text, pattern);
}

std::size_t findLastPattern(std::string_view text, std::string_view pattern) {
    if (text.size() < pattern.size()) return notFound;
    if (pattern.size() == 1) return findLastByte(text, pattern.front());
#if KELCL_HAS_BLOCKS
    if (processorHasBlocks()) return findLastByCandidates(text, pattern);
#endif
    return findLastLinear(text, pattern);
}

std::size_t countPattern(std::string_view text, std::string_view pattern) {
    if (pattern.size() == 1) return countByte(text, pattern.front());
    std::size_t result = 0;
    std::size_t found = findPattern(text, pattern);
    while (found != notFound) {
        ++result;
        text.remove_prefix(found + pattern.size());
        found = findPattern(text, pattern);
    }
    return result;
}

} // namespace kelcl
