// Overlapping matches of a pattern. Two matches that overlap by a stretch of at least the pattern's period
// lie a multiple of it apart, and all multiples in between are matches. So beyond the end of such a chain the
// next match is at least three quarters of the pattern away, and where the pattern has no short period any
// next match is at least a quarter away: either pays for searching anew.
#include "bytes/pattern_matches.h"

#include <algorithm>

namespace kelcl {

std::size_t shortPeriodOf(std::string_view pattern) {
    // A period that short brings the front of the pattern back within it; the first place where the front
    // comes back is the only one that can be the smallest period.
    std::size_t const quarter = pattern.size() / 4;
    if (quarter == 0) return 0;
    std::size_t const found = findPattern(pattern.substr(1), pattern.substr(0, pattern.size() - quarter));
    if (found == notFound) return 0;
    std::size_t const period = found + 1;
    return pattern.substr(period) == pattern.substr(0, pattern.size() - period) ? period : 0;
}

std::size_t RisingMatches::inChain(std::size_t from) const {
    if (from <= nearest_) return nearest_;
    return nearest_ + (from - nearest_ + period_ - 1) / period_ * period_;
}

void RisingMatches::extend() {
    std::string_view const rest = text_.substr(farthest_ + pattern_.size());
    auto const* const earlier = rest.data() - period_;
    auto const same = std::mismatch(rest.begin(), rest.end(), earlier).first - rest.begin();
    farthest_ += static_cast<std::size_t>(same) / period_ * period_;
}

std::size_t FallingMatches::inChain(std::size_t from) const {
    if (from >= nearest_) return nearest_;
    return nearest_ - (nearest_ - from + period_ - 1) / period_ * period_;
}

void FallingMatches::extend() {
    std::string_view const head = text_.substr(0, farthest_);
    auto const later = text_.rend() - static_cast<std::ptrdiff_t>(farthest_ + period_);
    auto const same = std::mismatch(head.rbegin(), head.rend(), later).first - head.rbegin();
    farthest_ -= static_cast<std::size_t>(same) / period_ * period_;
}

} // namespace kelcl
