// Searches for patterns. Candidates are the places where the first, the middle and the last byte of the
// pattern stand, looked for 32 places at a time; when many of them come to nothing, the C library's linear
// search takes over.

#include "bytes/byte_compare.h"
#include "bytes/byte_scan.h"
#include "bytes/byte_search.h"
#include "bytes/wide_search.h"

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

/// Takes the offsets of matches until there is no room.
struct List {
    std::uint32_t* offsets;
    std::size_t most;
    std::size_t count = 0;

    /// Whether another one is wanted.
    KELCL_INLINED bool add(std::size_t offset) {
        offsets[count++] = static_cast<std::uint32_t>(offset);
        return count < most;
    }
};

/// Takes any number of them.
struct Count {
    std::size_t count = 0;
    KELCL_INLINED bool add(std::size_t) {
        ++count;
        return true;
    }
};

/// Adds the matches from left to right that do not overlap.
template <class Found>
void addLinear(std::string_view text, std::string_view pattern, std::size_t from, Found& found) {
    while (text.size() - from >= pattern.size()) {
        std::size_t const next = findLinear(text.substr(from), pattern);
        if (next == notFound || !found.add(from + next)) return;
        from += next + pattern.size();
    }
}

std::size_t listLinear(std::string_view text, std::string_view pattern, List list) {
    addLinear(text, pattern, 0, list);
    return list.count;
}

std::size_t countLinear(std::string_view text, std::string_view pattern) {
    Count count;
    addLinear(text, pattern, 0, count);
    return count.count;
}

#if KELCL_HAS_BLOCKS

/// The places where the first, the middle and the last byte of the pattern stand, and an account of what it
/// costs that the pattern does not.
class Candidates {
public:
    KELCL_BLOCKS_INLINE Candidates(std::string_view text, std::string_view pattern)
        : text_(text.data()), pattern_(pattern), places_(text.size() - pattern.size() + 1),
          middle_(pattern.size() / 2), costOfFailure_(1 + pattern.size() / 16) {}

    /// How many places there are.
    KELCL_BLOCKS_INLINE std::size_t places() const { return places_; }

    /// One bit for each of n places from the one at the offset on, n at most 64: whether it is a candidate.
    KELCL_BLOCKS_INLINE std::uint64_t mask(std::size_t at, std::size_t n) const {
        constexpr std::size_t blockSize = blocks::blockSize;
        if (n >= 64) return mask64(at);
        if (n >= blockSize) // two blocks that overlap
            return of32(at).topBits() | std::uint64_t{of32(at + n - blockSize).topBits()} << (n - blockSize);
        if (n < 4) return (1U << n) - 1;      // so few are compared at once
        char const* const place = text_ + at; // of so few the middle would cost more than it saves
        return blocks::maskOfFewer(place, n, EqualTo{pattern_.front()}) &
               blocks::maskOfFewer(place + pattern_.size() - 1, n, EqualTo{pattern_.back()});
    }

    /// The place up to which the places from the offset on are no candidates, as far as it can be told
    /// without looking at each: that is for long texts.
    std::size_t passedBy(std::size_t at) const {
#if KELCL_HAS_WIDE
        constexpr std::size_t worthTheCall = 256;
        if (places_ - at >= worthTheCall && processorHasWide())
            return wide::passedBy(text_, at, places_, pattern_);
#endif
        return at;
    }

    /// Whether the pattern stands at a candidate.
    KELCL_BLOCKS_INLINE bool matches(std::size_t place) {
        if (sameBytes(text_ + place, pattern_.data(), pattern_.size())) return true;
        spent_ += costOfFailure_;
        return false;
    }

    /// Whether failed candidates cost so much, measured by the bytes gone through, that the linear search is
    /// faster. For short patterns that never is the case.
    KELCL_BLOCKS_INLINE bool areTooCostly(std::size_t scanned) const { return spent_ > 4096 + 4 * scanned; }

private:
    KELCL_BLOCKS_INLINE Block of32(std::size_t at) const {
        char const* const place = text_ + at;
        return equal(Block::load(place), Block::of(pattern_.front())) &
               equal(Block::load(place + pattern_.size() - 1), Block::of(pattern_.back())) &
               equal(Block::load(place + middle_), Block::of(pattern_[middle_]));
    }
    KELCL_BLOCKS_INLINE std::uint64_t mask64(std::size_t at) const {
        Block const first = of32(at);
        Block const last = of32(at + blocks::blockSize);
        if (!(first | last).anyTopBit()) return 0;
        return first.topBits() | std::uint64_t{last.topBits()} << 32U;
    }

    char const* text_;
    std::string_view pattern_;
    std::size_t places_;
    std::size_t middle_;
    std::size_t costOfFailure_; // in the time that it takes to compare 16 bytes
    std::size_t spent_ = 0;
};

/// Takes one.
struct First {
    std::size_t offset = notFound;
    KELCL_INLINED bool add(std::size_t found) {
        offset = found;
        return false;
    }
};

/// Adds the matches as addLinear does, by candidates as long as these are not too many.
template <class Found>
KELCL_BLOCKS_INLINE void addByCandidates(std::string_view text, std::string_view pattern, Found& found) {
    Candidates candidates(text, pattern);
    std::size_t const places = candidates.places();
    std::size_t next = 0;
    for (std::size_t at = 0; at < places; at = std::max(at + 64, next)) {
        std::uint64_t mask = candidates.mask(at, std::min<std::size_t>(places - at, 64));
        if (mask == 0 && places - at > 64) {
            at = candidates.passedBy(at + 64);
            mask = candidates.mask(at, std::min<std::size_t>(places - at, 64));
            while (mask == 0 && places - at > 128)
                mask = candidates.mask(at += 64, 64);
        }
        for (; mask != 0; mask &= mask - 1) {
            std::size_t const place = at + blocks::lowestBit(mask);
            if (place < next) continue;
            if (candidates.matches(place)) {
                if (!found.add(place)) return;
                next = place + pattern.size();
            } else if (candidates.areTooCostly(at)) {
                return addLinear(text, pattern, place + 1, found);
            }
        }
    }
}

KELCL_BLOCKS std::size_t findByCandidates(std::string_view text, std::string_view pattern) {
    First first;
    addByCandidates(text, pattern, first);
    return first.offset;
}

KELCL_BLOCKS std::size_t listByCandidates(std::string_view text, std::string_view pattern, List list) {
    addByCandidates(text, pattern, list);
    return list.count;
}

KELCL_BLOCKS std::size_t countByCandidates(std::string_view text, std::string_view pattern) {
    Count count;
    addByCandidates(text, pattern, count);
    return count.count;
}

KELCL_BLOCKS std::size_t findLastByCandidates(std::string_view text, std::string_view pattern) {
    Candidates candidates(text, pattern);
    for (std::size_t end = candidates.places(); end > 0;) {
        std::size_t const n = std::min<std::size_t>(end, 64);
        end -= n;
        std::uint64_t mask = candidates.mask(end, n);
        while (mask != 0) {
            std::size_t const bit = blocks::highestBit(mask);
            if (candidates.matches(end + bit)) return end + bit;
            if (candidates.areTooCostly(candidates.places() - end))
                return findLastLinear(text.substr(0, end + bit + pattern.size() - 1), pattern);
            mask ^= std::uint64_t{1} << bit;
        }
    }
    return notFound;
}

#endif

} // namespace

std::size_t findPattern(std::string_view text, std::string_view pattern) {
    if (text.size() < pattern.size()) return notFound;
    if (pattern.size() == 1) return findByte(text, pattern.front());
    return KELCL_DISPATCH(findByCandidates(text, pattern), findLinear(text, pattern));
}

std::size_t findLastPattern(std::string_view text, std::string_view pattern) {
    if (text.size() < pattern.size()) return notFound;
    if (pattern.size() == 1) return findLastByte(text, pattern.front());
    return KELCL_DISPATCH(findLastByCandidates(text, pattern), findLastLinear(text, pattern));
}

std::size_t listPattern(std::string_view text, std::string_view pattern, std::uint32_t* offsets,
                        std::size_t most) {
    if (text.size() < pattern.size() || most == 0) return 0;
    List const list{offsets, most};
    return KELCL_DISPATCH(listByCandidates(text, pattern, list), listLinear(text, pattern, list));
}

std::size_t countPattern(std::string_view text, std::string_view pattern) {
    if (text.size() < pattern.size()) return 0;
    if (pattern.size() == 1) return countByte(text, pattern.front());
    return KELCL_DISPATCH(countByCandidates(text, pattern), countLinear(text, pattern));
}

} // namespace kelcl
