// The match of a whole text against a pattern with wildcards for any run of bytes and for any one byte.
#ifndef KELCL_STRING_WILDCARD_H
#define KELCL_STRING_WILDCARD_H

#include <string_view>

namespace kelcl {

/// Whether the whole text matches the pattern. In the pattern `anyString` stands for any run of bytes, an
/// empty one too, and `anyChar` for exactly one byte; when both are the same byte it is an `anyString`. The
/// empty pattern matches the empty text only. Takes no memory; the time is that of searching the text for the
/// literals in turn.
bool matchesWildcard(std::string_view text, std::string_view pattern, char anyString, char anyChar);

} // namespace kelcl

#endif
