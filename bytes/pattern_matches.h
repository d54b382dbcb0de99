// The matches of a pattern one after the other, those that overlap too. All of them together cost no more
// than in proportion to text plus pattern, and no memory: where matches lie closer together than a quarter of
// a long pattern, they repeat at its period, so that the next one is known by comparing the bytes that it
// adds. Offsets count from 0, and the pattern must not be empty.
#ifndef KELCL_BYTES_PATTERN_MATCHES_H
#define KELCL_BYTES_PATTERN_MATCHES_H

#include "bytes/byte_search.h"

#include <cstddef>
#include <string_view>

namespace kelcl {

/// The smallest period of a pattern if it is at most a quarter of the length: each byte is the same as that
/// so many places earlier. Else 0.
std::size_t shortPeriodOf(std::string_view pattern);

/// What both directions know: the matches found last, `period_` apart from each other.
class MatchChain {
protected:
    MatchChain(std::string_view text, std::string_view pattern) : text_(text), pattern_(pattern) {}

    /// Whether another match may overlap the one at hand so far that the pattern's period decides.
    bool isWorthExtending() {
        constexpr std::size_t longPattern = 64; // a shorter one is compared as fast as its period is known
        if (isExtended_ || pattern_.size() < longPattern) return false;
        isExtended_ = true;
        if (!knowsPeriod_) period_ = shortPeriodOf(pattern_);
        knowsPeriod_ = true;
        return period_ != 0;
    }

    std::string_view text_;
    std::string_view pattern_;
    std::size_t nearest_ = notFound;  ///< The match of the chain that was found.
    std::size_t farthest_ = notFound; ///< The last one of the chain in the direction of the walk.
    std::size_t period_ = 0;
    bool knowsPeriod_ = false;
    bool isExtended_ = true;
};

/// From left to right.
class RisingMatches : private MatchChain {
public:
    RisingMatches(std::string_view text, std::string_view pattern) : MatchChain(text, pattern) {}

    /// The first match at or after `from`, or notFound. `from` must not be less than the time before.
    std::size_t at(std::size_t from) {
        if (nearest_ != notFound) {
            if (from > farthest_ && from - farthest_ < pattern_.size() && isWorthExtending()) extend();
            if (from <= farthest_) return inChain(from);
        }
        return find(from);
    }

private:
    std::size_t find(std::size_t from) {
        std::size_t const found = from < text_.size() ? findPattern(text_.substr(from), pattern_) : notFound;
        nearest_ = farthest_ = found == notFound ? notFound : from + found;
        isExtended_ = false;
        return nearest_;
    }
    std::size_t inChain(std::size_t from) const;
    void extend();
};

/// From right to left.
class FallingMatches : private MatchChain {
public:
    FallingMatches(std::string_view text, std::string_view pattern) : MatchChain(text, pattern) {}

    /// The last match that begins at or before `from`, or notFound. `from` must not be more than the time
    /// before.
    std::size_t at(std::size_t from) {
        if (nearest_ != notFound) {
            if (from < farthest_ && farthest_ - from < pattern_.size() && isWorthExtending()) extend();
            if (from >= farthest_) return inChain(from);
        }
        return find(from);
    }

private:
    std::size_t find(std::size_t from) {
        std::size_t const end = (from < text_.size() ? from : text_.size()) + pattern_.size();
        nearest_ = farthest_ = findLastPattern(text_.substr(0, end), pattern_);
        isExtended_ = false;
        return nearest_;
    }
    std::size_t inChain(std::size_t from) const;
    void extend();
};

} // namespace kelcl

#endif
