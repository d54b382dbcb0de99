// Searches for patterns. Candidates are the places where the first, the middle and the last byte of the
// pattern stand, looked for 64 places at a time; when many of them come to nothing, the C library's linear
// search takes over.

#include "bytes/byte_compare.h"
#include "bytes/byte_search.h"
#include "bytes/dispatch.h"
#include "bytes/pattern_candidates.h"

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
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

/// Compares the pattern at candidates, with an account of what it costs that it does not stand there.
class Comparison {
public:
    KELCL_INLINED explicit Comparison(std::string_view pattern)
        : pattern_(pattern), costOfFailure_(1 + pattern.size() / 16) {}

    KELCL_INLINED bool matches(char const* place) {
        if (sameBytes(place, pattern_.data(), pattern_.size())) return true;
        spent_ += costOfFailure_;
        return false;
    }

    /// Whether failed candidates cost so much, measured by the bytes gone through, that the linear search is
    /// faster. For short patterns that never is the case.
    KELCL_INLINED bool isTooCostly(std::size_t scanned) const { return spent_ > 4096 + 4 * scanned; }

private:
    std::string_view pattern_;
    std::size_t costOfFailure_; // in the time that it takes to compare 16 bytes
    std::size_t spent_ = 0;
};

/// So few places that all of them are taken for candidates.
constexpr std::size_t fewPlaces = 3;
constexpr Candidates allOf(std::size_t few) { return {0, (std::uint64_t{1} << few) - 1}; }

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
KELCL_INLINED void addByCandidates(std::string_view text, std::string_view pattern, Found& found) {
    Comparison comparison(pattern);
    char const* const bytes = text.data();
    std::size_t const places = text.size() - pattern.size() + 1;
    for (std::size_t at = 0, next = 0; at < places;) {
        std::size_t const left = places - at;
        auto const [offset, mask] =
            left <= fewPlaces ? allOf(left) : firstCandidates(bytes + at, left, pattern);
        at += offset;
        for (std::uint64_t candidates = mask; candidates != 0; candidates &= candidates - 1) {
            std::size_t const place = at + static_cast<std::size_t>(std::countr_zero(candidates));
            if (place < next) continue;
            if (comparison.matches(bytes + place)) {
                if (!found.add(place)) return;
                next = place + pattern.size();
            } else if (comparison.isTooCostly(at)) {
                return addLinear(text, pattern, place + 1, found);
            }
        }
        at += 64;
        if (next > at) at = next;
    }
}

std::size_t findByCandidates(std::string_view text, std::string_view pattern) {
    First first;
    addByCandidates(text, pattern, first);
    return first.offset;
}

std::size_t listByCandidates(std::string_view text, std::string_view pattern, List list) {
    addByCandidates(text, pattern, list);
    return list.count;
}

std::size_t countByCandidates(std::string_view text, std::string_view pattern) {
    Count count;
    addByCandidates(text, pattern, count);
    return count.count;
}

std::size_t findLastByCandidates(std::string_view text, std::string_view pattern) {
    Comparison comparison(pattern);
    std::size_t const places = text.size() - pattern.size() + 1;
    for (std::size_t end = places; end > 0;) {
        auto const [at, mask] = end <= fewPlaces ? allOf(end) : lastCandidates(text.data(), end, pattern);
        for (std::uint64_t candidates = mask; candidates != 0;) {
            auto const bit = static_cast<std::size_t>(63 - std::countl_zero(candidates));
            if (comparison.matches(text.data() + at + bit)) return at + bit;
            if (comparison.isTooCostly(places - at))
                return findLastLinear(text.substr(0, at + bit + pattern.size() - 1), pattern);
            candidates ^= std::uint64_t{1} << bit;
        }
        end = at;
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
