// Searches for single bytes that the C library does not have, by the walks of byte_scan.h, and those of long
// texts. The searches for patterns are in byte_pattern.cpp.

#include "bytes/byte_search.h"

#include "bytes/byte_scan.h"
#include "bytes/wide_search.h"

namespace kelcl {

std::size_t findByteInLong(std::string_view text, char byte) {
    std::size_t passed = 0;
#if KELCL_HAS_WIDE
    if (processorHasWide()) passed = wide::countBefore(text, byte);
#endif
    std::size_t const found = findByteByLibrary(text.substr(passed), byte);
    return found == notFound ? notFound : passed + found;
}

std::size_t findLastByteInLong(std::string_view text, char byte) {
#if KELCL_HAS_WIDE
    if (processorHasWide()) text = text.substr(0, wide::countUpTo(text, byte));
#endif
    return findLastByteByLibrary(text, byte);
}

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
