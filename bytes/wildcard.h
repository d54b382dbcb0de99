// The match of a whole text against a pattern with wildcards for any run of bytes and for any one byte.
#ifndef KELCL_BYTES_WILDCARD_H
#define KELCL_BYTES_WILDCARD_H

#include <cstdint>
#include <string_view>

namespace kelcl {

/// Whether the whole text matches the pattern. In the pattern `anyString` stands for any run of bytes, an
/// empty one too, and `anyChar` for exactly one byte; when both are the same byte it is an `anyString`. The
/// empty pattern matches the empty text only.
///
/// The time is that of searching the text for the stretches of the pattern between wildcards in turn: without
/// an `anyChar` that is linear in text plus pattern, with them at most the text times the number of stretches
/// that they leave between two runs. Only where such a piece of the pattern nearly matches at many places
/// does it take memory, eight times the piece at most (32 KiB at least), and may throw std::bad_alloc.
///
/// `steps` grows by the number of bytes compared and gone through.
bool matchesWildcard(std::string_view text, std::string_view pattern, char anyString, char anyChar,
                     std::uint64_t& steps);

inline bool matchesWildcard(std::string_view text, std::string_view pattern, char anyString, char anyChar) {
    std::uint64_t steps = 0;
    return matchesWildcard(text, pattern, anyString, anyChar, steps);
}

} // namespace kelcl

#endif
