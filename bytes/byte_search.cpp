// Searches for single bytes that the C library does not have, by the walks of byte_scan.h. The searches for
// patterns are in byte_pattern.cpp.

#include "bytes/byte_search.h"

#include "bytes/byte_scan.h"

namespace kelcl {

std::size_t findByteOtherThan(std::string_view text, char byte) {
    return findFirst(text, Not{EqualTo{byte}});
}

std::size_t findLastByteOtherThan(std::string_view text, char byte) {
    return findLast(text, Not{EqualTo{byte}});
}

std::size_t countByte(std::string_view text, char byte) { return count(text, EqualTo{byte}); }

std::uint64_t maskOfStart(std::string_view text, char byte) { return maskOfStart(text, EqualTo{byte}); }

bool isAscii(std::string_view text) { return findFirst(text, NotAscii{}) == notFound; }

} // namespace kelcl
